#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/LABSegline.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

struct TFound {
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  std::vector<TVArc2D> Arcs;
  std::vector<TBezierSegment2D> Beziers;

  TFound(const TLABSegline& A, const TLABSegline& B, double Eps = kLinearTolerance) {
    const bool IsAny = A.CrossWithLABSegline(B, Points, Lines, Arcs, Beziers, Eps);
    EXPECT_EQ(IsAny, !Points.empty() || !Lines.empty() || !Arcs.empty() || !Beziers.empty());
  }
  bool Holds(const TPoint2D& P, double Eps) const {
    return std::any_of(Points.begin(), Points.end(),
                       [&](const TPoint2D& Q) { return Q.Equals(P, Eps); });
  }
};

TLABSegline ArcBetween(const TPoint2D& From, const TPoint2D& To, double Bulge) {
  return {From, To, TVArc2D(From, To, Bulge).Center, Bulge};
}

TLABSegline RandomSegment(std::mt19937& Random, int Kind) {
  const TPoint2D From = test::RandomPoint(Random, -5, 5);
  const TPoint2D To = test::RandomPoint(Random, -5, 5);
  if (Kind == 0) return {From, To};
  if (Kind == 1) return ArcBetween(From, To, test::RandomDouble(Random, 0.05, 3.0));
  const TPoint2D Control = test::RandomPoint(Random, -5, 5);
  return {From, Control, test::RandomPoint(Random, -5, 5), To};
}

/// How far `P` is from the infinite line or the full circle, with a sign.
double SideOf(const TLABSegline& Seg, const TPoint2D& P) {
  if (Seg.SegType == stArc) return P.DistanceTo(Seg.P2) - Seg.P1.DistanceTo(Seg.P2);
  return (Seg.P4 - Seg.P1).Normal().CrossMul(P - Seg.P1);
}

/// The place beside which a line or an arc lies on `P`: 0 inside the piece, else the distance from
/// its nearer end.
double BeyondEnds(const TLABSegline& Seg, const TPoint2D& P) {
  const bool IsInside = Seg.SegType == stArc
                            ? Seg.ToArc().TurnTo(P) <= std::abs(Seg.ToArc().AngleRange())
                            : (P - Seg.P1).DotMul(P - Seg.P4) <= 0.0;
  return IsInside ? 0.0 : std::min(P.DistanceTo(Seg.P1), P.DistanceTo(Seg.P4));
}

// Walking along one piece and bisecting where the side of the other changes shares nothing with
// the closed forms and the subdivision.
TEST(TLABSeglineCross, EveryKindAgreesWithAWalkAlongTheFirstPiece) {
  std::mt19937 Random(77);
  for (int Round = 0; Round < 600; ++Round) {
    const TLABSegline A = RandomSegment(Random, Round % 3);
    const TLABSegline B = RandomSegment(Random, Round / 3 % 2);
    SCOPED_TRACE(testing::Message() << "round " << Round);
    const TFound Found(A, B);
    const TFound Swapped(B, A);
    EXPECT_EQ(Found.Points.size(), Swapped.Points.size());
    for (std::size_t I = 0; I < Found.Points.size(); ++I) {
      EXPECT_NO_THROW(A.ParamByPoint(Found.Points[I]));
      EXPECT_NO_THROW(B.ParamByPoint(Found.Points[I]));
      EXPECT_TRUE(Swapped.Holds(Found.Points[I], 1e-6));
      for (std::size_t J = 0; J < I; ++J) EXPECT_FALSE(Found.Points[J].Equals(Found.Points[I]));
    }
    std::size_t Walked = 0;
    for (int Step = 0; Step < 2000; ++Step) {
      double Low = Step / 2000.0;
      double High = (Step + 1) / 2000.0;
      const bool IsLeft = SideOf(B, A.PointByParam(Low)) > 0.0;
      if (IsLeft == (SideOf(B, A.PointByParam(High)) > 0.0)) continue;
      for (int I = 0; I < 60; ++I) {
        const double Middle = (Low + High) / 2;
        ((SideOf(B, A.PointByParam(Middle)) > 0.0) == IsLeft ? Low : High) = Middle;
      }
      const TPoint2D P = A.PointByParam(Low);
      if (BeyondEnds(B, P) > 1e-6) continue;
      ++Walked;
      EXPECT_TRUE(Found.Holds(P, 1e-6)) << P.X << ", " << P.Y;
    }
    EXPECT_EQ(Walked, Found.Points.size());
  }
}

TEST(TLABSeglineCross, LinesAndArcsTakeNoMemory) {
  std::mt19937 Random(5);
  std::vector<TLABSegline> Segs;
  for (int I = 0; I < 100; ++I) Segs.push_back(RandomSegment(Random, I % 2));
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  std::vector<TVArc2D> Arcs;
  std::vector<TBezierSegment2D> Beziers;
  Points.reserve(20000);
  Arcs.reserve(100);
  Lines.reserve(100);
  const int Before = test::AllocationCount();
  for (const TLABSegline& A : Segs) {
    for (const TLABSegline& B : Segs) {
      A.CrossWithLABSegline(B, Points, Lines, Arcs, Beziers);
      if (B.SegType == stLine) A.CrossWithSegLine(B.ToLine(), Points, Lines);
    }
  }
  EXPECT_EQ(0, test::AllocationCount() - Before);
  EXPECT_GT(Points.size(), 1000U);
}

TEST(TLABSeglineCross, AddsBothStretchesOfTwoArcsToWhatIsThere) {
  const TLABSegline A(TArc2D({0, 0}, 2.0, 0.0, 5.0));
  const TLABSegline B(TArc2D({0, 0}, 2.0, 4.0, 5.0));  // both cover 4 .. 5 and 0 .. 9 - 2π
  TFound Found(A, B);
  ASSERT_EQ(2U, Found.Arcs.size());
  EXPECT_NEAR(1.0 + 9.0 - kFullTurn,
              std::abs(Found.Arcs[0].AngleRange()) + std::abs(Found.Arcs[1].AngleRange()), 1e-9);
  Found.Lines.resize(1);
  Found.Beziers.resize(1);
  for (const double Y : {3.0, -1.0}) {
    const TLABSegline Line({0, Y}, {-5, Y});  // beside the circle, across it
    EXPECT_EQ(Y < 0.0,
              Line.CrossWithLABSegline(A, Found.Points, Found.Lines, Found.Arcs, Found.Beziers));
  }
}

TEST(TLABSeglineCross, HostilePairsAreToldOnce) {
  const TLABSegline Quarter({2, 0}, {0, 2}, {0, 0}, std::tan(kPi / 8));
  const TLABSegline Circle({2, 0}, {2, 0}, {0, 0}, 3.3e38);
  const TLABSegline Arch({0, 0}, {0, 4}, {6, 4}, {6, 0});
  TBezierSegment2D Head;
  TBezierSegment2D Tail;
  Arch.ToBezierSegment().Split(0.5, Head, Tail);
  const TLABSegline ArchHead(Head.P0, Head.P1, Head.P2, Head.P3);
  const TLABSegline ArchMiddle = [&] {
    TBezierSegment2D Left;
    TBezierSegment2D Right;
    Arch.ToBezierSegment().Split(0.75, Left, Right);
    Left.Split(1.0 / 3, Right, Left);
    return TLABSegline(Left.P0, Left.P1, Left.P2, Left.P3);
  }();
  const struct {
    const char* Name;
    TLABSegline A;
    TLABSegline B;
    std::size_t Points, Lines, Arcs, Beziers;
  } Cases[] = {
      {"line tangent to a circle", Circle, {{-3, 2}, {3, 2}}, 1, 0, 0, 0},
      {"line 1e-7 off the tangent", Circle, {{-3, 2 + 1e-7}, {3, 2 + 1e-7}}, 1, 0, 0, 0},
      {"line beyond the tolerance", Circle, {{-3, 2 + 1e-5}, {3, 2 + 1e-5}}, 0, 0, 0, 0},
      {"line ends just before the arc", Quarter, {{3, 0}, {2 + 5e-7, 0}}, 1, 0, 0, 0},
      {"short line ends just before the arc", Quarter, {{1.99, 0}, {2 - 5e-7, 0}}, 1, 0, 0, 0},
      {"tangent line ends where it touches", Circle, {{-3, 2}, {0, 2}}, 1, 0, 0, 0},
      {"flat touch of an end", Circle, {{-1e-3, 2 + 5e-7}, {-1, 2.5}}, 1, 0, 0, 0},
      {"line and arc share an end", Quarter, {{0, 2}, {-5, 2}}, 1, 0, 0, 0},
      {"line without length on the arc", Quarter, {{0, 2}, {0, 2}}, 1, 0, 0, 0},
      {"lines in part", {{0, 0}, {6, 0}}, {{9, 0}, {4, 0}}, 0, 1, 0, 0},
      {"lines end to end", {{0, 0}, {6, 0}}, {{6, 0}, {9, 0}}, 1, 0, 0, 0},
      {"equal arcs", Quarter, Quarter, 0, 0, 1, 0},
      {"arc and its reverse", Quarter, Quarter.Reverse(), 0, 0, 1, 0},
      {"arc on its circle", Quarter, Circle, 0, 0, 1, 0},
      {"two large arcs share both ends' stretches",
       ArcBetween({2, 0}, {2 * std::cos(5.5), 2 * std::sin(5.5)}, std::tan(5.5 / 4)),
       ArcBetween({-2, 0}, {2 * std::cos(2.5), 2 * std::sin(2.5)}, std::tan((2.5 + kPi) / 4)), 0, 0,
       2, 0},
      {"circles 5e-7 apart", Circle, {{4 + 5e-7, 0}, {4 + 5e-7, 0}, {3, 0}, 3.3e38}, 1, 0, 0, 0},
      {"circles beyond the tolerance", Circle, {{4, 0}, {4, 0}, {3 + 1e-5, 0}, 3.3e38}, 0, 0, 0, 0},
      {"arc ends just before a circle",
       Quarter,
       {{0, 2 + 5e-7}, {-3, 2}, {-1.5, 2}, 1.0},
       1,
       0,
       0,
       0},
      {"arc 5e-7 off an equal one", Quarter, Quarter.Translate({5e-7, 0}), 0, 0, 1, 0},
      {"circles touch", Circle, {{4, 0}, {4, 0}, {3, 0}, 3.3e38}, 1, 0, 0, 0},
      {"arcs of one circle touch",
       Quarter,
       {{0, 2}, {-2, 0}, {0, 0}, std::tan(kPi / 8)},
       1,
       0,
       0,
       0},
      {"equal Beziers", Arch, Arch, 0, 0, 0, 1},
      {"Bezier and its reverse", Arch, Arch.Reverse(), 0, 0, 0, 1},
      {"Bezier and its half", Arch, ArchHead, 0, 0, 0, 1},
      {"halves that overlap in part", ArchHead, ArchMiddle, 0, 0, 0, 1},
      {"Bezier touches a line", Arch, {{0, 3}, {6, 3}}, 1, 0, 0, 0},
      {"straight Bezier on a line", {{0, 0}, {1, 0}, {2, 0}, {6, 0}}, {{3, 0}, {9, 0}}, 0, 1, 0, 0},
      {"not a number", Quarter, {{std::nan(""), 0}, {1, 1}}, 0, 0, 0, 0},
  };
  for (const auto& Case : Cases) {
    const std::pair<TLABSegline, TLABSegline> Pairs[] = {
        {Case.A, Case.B},
        {Case.B, Case.A},
        {Case.A.Reverse(), Case.B},
        {Case.A.YMirror(), Case.B.YMirror()},
        {Case.A.RotateBy90(), Case.B.RotateBy90()}};
    for (const auto& [Drawn, Other] : Pairs) {
      for (const double Scale : {1.0, 1024.0, 1.0 / 1024}) {
        SCOPED_TRACE(testing::Message() << Case.Name << ", scaled by " << Scale);
        TMatrix2D Scaling;
        Scaling.Scale(Scale, Scale);
        const TLABSegline A = Drawn.Transform(Scaling);
        const TLABSegline B = Other.Transform(Scaling);
        const TFound Found(A, B, kLinearTolerance * Scale);
        EXPECT_EQ(Case.Points, Found.Points.size());
        EXPECT_EQ(Case.Lines, Found.Lines.size());
        EXPECT_EQ(Case.Arcs, Found.Arcs.size());
        EXPECT_EQ(Case.Beziers, Found.Beziers.size());
        for (const TBezierSegment2D& Part : Found.Beziers) {
          EXPECT_NO_THROW(A.ParamByPoint(Part.EvalPoint(0.3)));
          EXPECT_NO_THROW(B.ParamByPoint(Part.EvalPoint(0.3)));
        }
      }
    }
  }
}

}  // namespace
}  // namespace tarnalgo
