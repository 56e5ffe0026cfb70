#include "geometryAlgo/VedaType/GeometryUtils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <vector>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

struct TFound {
  std::vector<TPoint2D> Points;
  std::vector<double> Params;
  std::vector<TVLine2D> Lines;
  std::vector<TBezierSegment2D> Overlaps;

  bool Covers(const TPoint2D& P) const {
    double T = 0.0;
    TPoint2D Foot;
    for (const TPoint2D& Q : Points) {
      if (P.Equals(Q, 2e-6)) return true;
    }
    for (const TVLine2D& Line : Lines) {
      if (Line.SegmentDistanceTo(P) <= 2e-6) return true;
    }
    for (const TBezierSegment2D& Part : Overlaps) {
      if (Part.DistanceTo(P, 0.0, T, Foot) <= 2e-6) return true;
    }
    return false;
  }
};

TFound Cross(const TBezierSegment2D& A, const TBezierSegment2D& B) {
  TFound Found;
  TGeometryUtils::BezierCrossWithBezier(A, B, 1e-6, Found.Points, Found.Lines, Found.Overlaps);
  return Found;
}
TFound Cross(const TBezierSegment2D& A, const TVLine2D& Line) {
  TFound Found;
  TGeometryUtils::BezierCrossWithSegline(A, Line, 1e-6, Found.Points, Found.Lines, &Found.Params);
  return Found;
}
TFound Cross(const TBezierSegment2D& A, const TVArc2D& Arc) {
  TFound Found;
  TGeometryUtils::BezierCrossWithArc(A, Arc, 1e-6, Found.Points, Found.Params);
  return Found;
}

using TCurve = std::function<TPoint2D(double)>;

/// Where chords of two curves cross, halved and crossed again until nothing is left of them.
void RefineCrossings(const TCurve& A, double FromA, double ToA, const TCurve& B, double FromB,
                     double ToB, int Pieces, std::vector<TPoint2D>& Places) {
  std::vector<TPoint2D> PointsA;
  std::vector<TPoint2D> PointsB;
  for (int I = 0; I <= Pieces; ++I) {
    PointsA.push_back(A(FromA + (ToA - FromA) * I / Pieces));
    PointsB.push_back(B(FromB + (ToB - FromB) * I / Pieces));
  }
  for (int I = 0; I < Pieces; ++I) {
    for (int J = 0; J < Pieces; ++J) {
      const TVLine2D ChordA(PointsA[static_cast<std::size_t>(I)],
                            PointsA[static_cast<std::size_t>(I) + 1]);
      const TVLine2D ChordB(PointsB[static_cast<std::size_t>(J)],
                            PointsB[static_cast<std::size_t>(J) + 1]);
      const auto Side = [](const TVLine2D& L, const TPoint2D& P) {
        return L.Vector().CrossMul(P - L.StartPoint) > 0.0;
      };
      if (Side(ChordA, ChordB.StartPoint) == Side(ChordA, ChordB.EndPoint) ||
          Side(ChordB, ChordA.StartPoint) == Side(ChordB, ChordA.EndPoint)) {
        continue;
      }
      if (ToA - FromA < 1e-9) return Places.push_back(ChordA.StartPoint);
      const double StepA = (ToA - FromA) / Pieces;
      const double StepB = (ToB - FromB) / Pieces;
      RefineCrossings(A, FromA + StepA * (I - 0.5), FromA + StepA * (I + 1.5), B,
                      FromB + StepB * (J - 0.5), FromB + StepB * (J + 1.5), 6, Places);
    }
  }
}

/// What dense chords find is there, what is there lies on both curves, and nothing is there twice.
template <class TIsOnB>
void CheckAgainstChords(const TFound& Found, const TCurve& A, const TCurve& B, TIsOnB IsOnB) {
  std::vector<TPoint2D> Places;
  RefineCrossings(A, 0.0, 1.0, B, 0.0, 1.0, 100, Places);
  for (const TPoint2D& P : Places) EXPECT_TRUE(Found.Covers(P)) << P.X << ", " << P.Y;
  for (std::size_t I = 0; I < Found.Points.size(); ++I) {
    EXPECT_TRUE(IsOnB(Found.Points[I]));
    if (!Found.Params.empty()) {
      EXPECT_TRUE(A(Found.Params[I]).Equals(Found.Points[I], 1e-12));
    }
    for (std::size_t J = 0; J < I; ++J) EXPECT_FALSE(Found.Points[I].Equals(Found.Points[J]));
  }
}

TEST(TGeometryUtils, CrossingsAgreeWithDenseChords) {
  std::mt19937 Random(20);
  for (int Round = 0; Round < 120; ++Round) {
    SCOPED_TRACE(testing::Message() << "round " << Round);
    const auto Point = [&] {
      return Round % 2 ? test::RandomGridPoint(Random, -3, 3) : test::RandomPoint(Random, -3, 3);
    };
    TBezierSegment2D Curves[2];
    for (TBezierSegment2D& Curve : Curves) {
      for (TPoint2D* P : {&Curve.P0, &Curve.P1, &Curve.P2, &Curve.P3}) *P = Point();
    }
    const TBezierSegment2D& A = Curves[0];  // Clang 14 lets no lambda capture a structured binding
    const TBezierSegment2D& B = Curves[1];
    const auto OnA = [&](double T) { return A.EvalPoint(T); };
    const TFound Found = Cross(A, B);
    CheckAgainstChords(
        Found, OnA, [&](double T) { return B.EvalPoint(T); },
        [&](const TPoint2D& P) {
          double T = 0.0;
          TPoint2D Foot;
          return B.DistanceTo(P, 0.0, T, Foot) <= 1.01e-6;
        });
    const TFound Swapped = Cross(B.Reversed(), A);
    EXPECT_EQ(Found.Points.size(), Swapped.Points.size());
    EXPECT_EQ(Found.Overlaps.size() + Found.Lines.size(),
              Swapped.Overlaps.size() + Swapped.Lines.size());
    const TVLine2D Line(B.P0, B.P3);
    CheckAgainstChords(
        Cross(A, Line), OnA, [&](double T) { return Line.EvalPoint(T); },
        [&](const TPoint2D& P) { return Line.SegmentDistanceTo(P) <= 1.01e-6; });
    const TVArc2D Arc(B.P0, 1.0 + Round % 3, 0.5 * Round, Round % 5 ? 1.3 * (Round % 5) : -4.0);
    CheckAgainstChords(
        Cross(A, Arc), OnA, [&](double T) { return Arc.CalcPointByParam(T); },
        [&](const TPoint2D& P) { return Arc.IsPointOn(P, 1.01e-6); });
  }
}

TEST(TGeometryUtils, CrossingsOfHostilePairs) {
  const TBezierSegment2D Wave({0, 0}, {1, 5}, {2, -5}, {3, 1});
  const TBezierSegment2D Loop({0, 0}, {4, 4}, {-2, 4}, {2, 0});
  const TBezierSegment2D Cusp({0, 0}, {2, 2}, {0, 2}, {2, 0});
  const TBezierSegment2D Straight({0, 0}, {5, 0}, {-2, 0}, {3, 0});
  const TBezierSegment2D Bowl({-1, 1}, {-1.0 / 3, -1.0 / 3}, {1.0 / 3, -1.0 / 3}, {1, 1});
  const TBezierSegment2D Cap({-1, -1}, {-1.0 / 3, 1.0 / 3}, {1.0 / 3, 1.0 / 3}, {1, -1});
  const auto Part = [](const TBezierSegment2D& Curve, double From, double To) {
    return TGeometryUtils::SplitBezier(Curve, {From, To})[From > 0.0 ? 1 : 0];
  };
  const auto Moved = [](const TBezierSegment2D& B, const TPoint2D& Way) {
    return TBezierSegment2D(B.P0 + Way, B.P1 + Way, B.P2 + Way, B.P3 + Way);
  };
  const TBezierSegment2D Large({4836, 9709}, {5623, 4119}, {2171, 8439}, {2974, 4956});
  const TBezierSegment2D Knot({3.968, 3.555}, {9.3226, 8.6291}, {9.7499, 4.5076}, {7.5361, 6.9794});
  const TBezierSegment2D Hook({8.437, 6.904}, {6.2244, 1.6525}, {1.5147, 9.5477}, {3.5832, 6.666});
  const double Nan = std::nan("");
  const struct {
    const char* Name;
    TBezierSegment2D A;
    TBezierSegment2D B;
    std::size_t Points;
    std::size_t Lines;
    std::size_t Overlaps;
  } Cases[] = {
      {"equal", Wave, Wave, 0, 0, 1},
      {"reversed", Wave, Wave.Reversed(), 0, 0, 1},
      {"partly coincident", Part(Wave, 0, 0.6), Part(Wave, 0.3, 1), 0, 0, 1},
      {"part of the whole", Wave, Part(Wave, 0, 0.6).Reversed(), 0, 0, 1},
      {"a shared end", Part(Wave, 0, 0.6), Part(Wave, 0.6, 1), 1, 0, 0},
      {"loops, partly coincident", Part(Loop, 0, 0.7), Part(Loop, 0.2, 1), 1, 0, 1},
      {"cusps, partly coincident", Part(Cusp, 0, 0.8), Part(Cusp, 0.1, 1), 0, 0, 1},
      {"at a cusp", Cusp, {{0, 1.5}, {2, 1.5}}, 1, 0, 0},
      {"straight, turning back, along a line", Straight, {{1, 0}, {6, 0}}, 0, 1, 0},
      {"straight, across three times", Straight, {{1.5, -1}, {1.5, 1}}, 1, 0, 0},
      {"touching", Bowl, {{-1, 0}, {1, 0}}, 1, 0, 0},
      {"touching back to back", Bowl, Cap, 1, 0, 0},
      {"nine times",
       {{0, 0}, {1, 3.2}, {0.2, -2.4}, {1, 1}},
       {{0, 1}, {3.2, 0}, {-2.4, 0.8}, {1, 0}},
       9,
       0,
       0},
      // Curves moved a little cross where they run in the direction of the move, and in loops.
      {"too many flat parts beside each other", Large, Moved(Large, {-1.33e-5, -9.91e-5}), 2, 0, 0},
      {"the loop comes back to where they touch", Knot, Moved(Knot, {-2.65e-6, -1.4e-6}), 4, 0, 0},
      {"apart in a narrow bend only", Hook, Moved(Hook, {1.85e-6, -2.36e-6}), 3, 0, 0},
      {"a point on a curve", {{1, 1}, {1, 1}, {1, 1}, {1, 1}}, {{0, 0}, {2, 2}}, 1, 0, 0},
      {"not finite", Wave, {{0, Nan}, {1, 1}, {2, 0}, {3, 3}}, 0, 0, 0},
      {"beyond the range of squares",
       {{0, 0}, {1e300, 3.2e300}, {0.2e300, -2.4e300}, {1e300, 1e300}},
       {{0, 1e300}, {3.2e300, 0}, {-2.4e300, 0.8e300}, {1e300, 0}},
       9,
       0,
       0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    for (const auto& A : {Case.A, Case.A.Reversed()}) {
      const TFound Found = Cross(A, Case.B);
      EXPECT_EQ(Case.Points, Found.Points.size());
      EXPECT_EQ(Case.Lines, Found.Lines.size());
      EXPECT_EQ(Case.Overlaps, Found.Overlaps.size());
      const TFound Swapped = Cross(Case.B, A);
      EXPECT_EQ(Case.Points, Swapped.Points.size());
    }
  }
}

TEST(TGeometryUtils, OverlapsSpanWhatIsShared) {
  const TBezierSegment2D Straight({0, 0}, {5, 0}, {-2, 0}, {3, 0});
  EXPECT_EQ(1u, Cross({{0, 0}, {1, 0}, {5, 0}, {0, 0}}, TVLine2D({-9, 0}, {9, 0})).Lines.size());
  const TFound Along = Cross(Straight, TVLine2D({2, 0}, {1, 0}));
  ASSERT_EQ(1U, Along.Lines.size());
  EXPECT_TRUE(Along.Lines[0].StartPoint.Equals({1, 0}));
  EXPECT_TRUE(Along.Lines[0].EndPoint.Equals({2, 0}));
  EXPECT_TRUE(Along.Points.empty());
  const TBezierSegment2D Wave({0, 0}, {1, 5}, {2, -5}, {3, 1});
  const auto Parts = TGeometryUtils::SplitBezier(Wave, {0.7, 0.4});
  const TFound Curved = Cross(Wave, Parts[1]);
  ASSERT_EQ(1U, Curved.Overlaps.size());
  EXPECT_TRUE(Curved.Overlaps[0].P0.Equals(Wave.EvalPoint(0.4), 1e-9));
  EXPECT_TRUE(Curved.Overlaps[0].P2.Equals(Parts[1].P2, 1e-6));
  EXPECT_TRUE(Curved.Overlaps[0].P3.Equals(Wave.EvalPoint(0.7), 1e-9));
}

// In the least denormals every part of a cubic seems to turn back.
TEST(TGeometryUtils, AWorkerStopsWhereACubicHasNoMoreTurns) {
  const double D = std::numeric_limits<double>::denorm_min();
  std::vector<TGeometryUtils::TCrossRec> List;
  std::vector<TGeometryUtils::TStretch> Stretches;
  TGeometryUtils::DoBezierCrossWithSegline({{0, D}, {D, -D}, {0, D}, {-D, -D}}, 0.0, 1.0,
                                           {{-1, 0}, {1, 0}}, 100000000, kLinearTolerance, List,
                                           Stretches);
  EXPECT_LE(List.size() + Stretches.size(), 2U * 16U);  // of four levels of halves
}

TEST(TGeometryUtils, CloseRecordsBecomeTheNearestOne) {
  std::vector<TGeometryUtils::TCrossRec> List;
  TGeometryUtils::AddCrossPt(List, {1, 0}, 0.9, 0.0);
  TGeometryUtils::AddCrossPt(List, {0, 0}, 0.2, 3e-7);
  TGeometryUtils::AddCrossPt(List, {5e-7, 0}, 0.3, 1e-7);
  TGeometryUtils::AddCrossPt(List, {1, 5e-7}, 0.1, 0.0);
  std::vector<TPoint2D> Points;
  std::vector<double> Params;
  TGeometryUtils::RemoveCloseCrossPts(List, Points, Params, 1e-6);
  EXPECT_EQ((std::vector<double>{0.1, 0.3}), Params);
  EXPECT_EQ((std::vector<TPoint2D>{{1, 5e-7}, {5e-7, 0}}), Points);
}

TEST(TGeometryUtils, FindsTheMotionBetweenEqualLists) {
  std::mt19937 Random(3);
  for (int Round = 0; Round < 50; ++Round) {
    std::vector<TPoint2D> From;
    std::vector<TPoint2D> To;
    const double Turn = test::RandomDouble(Random, -3.1, 3.1);
    const TPoint2D Way = test::RandomPoint(Random, -1e4, 1e4);
    for (int I = 0; I < 2 + Round % 5; ++I) {
      From.push_back(test::RandomPoint(Random, -10, 10));
      To.push_back(From.back().RotateBy(Turn) + Way);
    }
    double Angle = 0.0;
    TPoint2D Trans;
    ASSERT_TRUE(TGeometryUtils::CalcEqualRotateAndTrans(From, To, Angle, Trans));
    EXPECT_NEAR(Turn, Angle, 1e-9);
    EXPECT_TRUE(Trans.Equals(Way, 1e-7));
    To[0].X += 1e-4;
    EXPECT_FALSE(TGeometryUtils::CalcEqualRotateAndTrans(From, To, Angle, Trans));
  }
  double Angle = 0.0;
  TPoint2D Trans;
  ASSERT_TRUE(TGeometryUtils::CalcEqualRotateAndTrans({{1, 0}, {-1, 1e-20}}, {{-1, 0}, {1, 1e-17}},
                                                      Angle, Trans));
  EXPECT_EQ(kPi, Angle) << "half a turn with a sine a hair below 0";
}

TEST(TGeometryUtils, BisectorHalvesTheSmallerAngle) {
  const double Half = std::sqrt(0.5);
  EXPECT_TRUE(TGeometryUtils::CalcAngleBisector({5, 0}, {0, 0}, {0, 2}).Equals({Half, Half}));
  EXPECT_TRUE(TGeometryUtils::CalcAngleBisector({-1, 0}, {0, 0}, {9, 0}).Equals({0, 1}));
  EXPECT_TRUE(TGeometryUtils::CalcAngleBisector({1, 0}, {0, 0}, {-9, 0}).Equals({0, -1}));
  EXPECT_TRUE(TGeometryUtils::CalcAngleBisector({-1, 0}, {0, 0}, {1, -1e-9}).Equals({0, -1}));
  EXPECT_EQ(TPoint2D::FZero, TGeometryUtils::CalcAngleBisector({1, 1}, {1, 1}, {2, 1}));
}

}  // namespace
}  // namespace tarnalgo
