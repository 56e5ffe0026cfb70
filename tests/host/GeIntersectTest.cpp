#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "host/Cadgeometry.h"
#include "host/Cadgeometry/BernsteinRoots.h"
#include "host/Cadgeometry/CurvePiece.h"
#include "host/Cadtypes/Numeric.h"
#include "tests/support/Curves.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using test::kCurveKindCount;
using test::kCurveKinds;
using test::TCurveMaker;
using TCurve = std::unique_ptr<TGeCurve2D>;

std::vector<TIntersect2D> Meet(const TGeCurve2D& A, const TGeCurve2D& B,
                               const TGeTolerance& Tol = DefTol) {
  std::vector<TIntersect2D> Results;
  A.IntersectCurve(B, Results, Tol);
  return Results;
}

// --- The oracle: chords of a dense sampling, then Newton steps on differences ---

/// Settles on a crossing from near it; false when there is none or it is too flat to be sure of.
bool Settle(const TGeCurve2D& A, const TGeCurve2D& B, double& TA, double& TB) {
  for (int Step = 0; Step < 20; ++Step) {
    constexpr double kStep = 1e-7;
    const TPoint2D Gap = B.PointAtParam(TB) - A.PointAtParam(TA);
    const TPoint2D WayA = (A.PointAtParam(TA + kStep) - A.PointAtParam(TA - kStep)) / (2 * kStep);
    const TPoint2D WayB = (B.PointAtParam(TB + kStep) - B.PointAtParam(TB - kStep)) / (2 * kStep);
    const double Sine = WayA.CrossMul(WayB);
    if (std::abs(Sine) < 0.02 * WayA.Mag() * WayB.Mag()) return false;
    TA += Gap.CrossMul(WayB) / Sine;
    TB += Gap.CrossMul(WayA) / Sine;
  }
  return A.PointAtParam(TA).Equals(B.PointAtParam(TB), 1e-9) && TA > 0 && TA < A.ParamTo() &&
         TB > 0 && TB < B.ParamTo();
}

std::vector<TPoint2D> DenseCrossings(const TGeCurve2D& A, const TGeCurve2D& B) {
  constexpr int kSamples = 240;  // a unit of parameter
  const int CountA = static_cast<int>(A.ParamTo()) * kSamples;
  const int CountB = static_cast<int>(B.ParamTo()) * kSamples;
  std::vector<TPoint2D> OnA;
  std::vector<TPoint2D> OnB;
  for (int I = 0; I <= CountA; ++I) OnA.push_back(A.PointAtParam(I * (1.0 / kSamples)));
  for (int I = 0; I <= CountB; ++I) OnB.push_back(B.PointAtParam(I * (1.0 / kSamples)));
  std::vector<TPoint2D> Found;
  for (std::size_t I = 0; I + 1 < OnA.size(); ++I) {
    const TPoint2D WayA = OnA[I + 1] - OnA[I];
    for (std::size_t J = 0; J + 1 < OnB.size(); ++J) {
      const TPoint2D Between = OnB[J] - OnA[I];
      const TPoint2D WayB = OnB[J + 1] - OnB[J];
      if (WayA.CrossMul(Between) * WayA.CrossMul(Between + WayB) > 0.0) continue;
      if (WayB.CrossMul(Between) * WayB.CrossMul(Between - WayA) > 0.0) continue;
      double TA = (static_cast<double>(I) + 0.5) / kSamples;
      double TB = (static_cast<double>(J) + 0.5) / kSamples;
      if (Settle(A, B, TA, TB)) Found.push_back(A.PointAtParam(TA));
    }
  }
  return Found;
}

double DistanceTo(const TGeCurve2D& Curve, const TPoint2D& P) {
  double Distance = 0.0;
  Curve.NearestParam(P, Distance);
  return Distance;
}

bool HoldsPoint(const std::vector<TIntersect2D>& Results, const TPoint2D& P, double Eps) {
  return std::any_of(Results.begin(), Results.end(),
                     [&](const TIntersect2D& R) { return R.Point().Equals(P, Eps); });
}

/// What holds for whatever two curves answer.
void ExpectSound(const TGeCurve2D& A, const TGeCurve2D& B,
                 const std::vector<TIntersect2D>& Results) {
  for (std::size_t I = 0; I < Results.size(); ++I) {
    const TIntersect2D& R = Results[I];
    for (const auto& [P, Q] :
         {std::pair(R.OnFirst, R.OnSecond), std::pair(R.EndOnFirst, R.EndOnSecond)}) {
      EXPECT_TRUE(P.Point.Equals(Q.Point, 1.1e-6)) << I;
      EXPECT_TRUE(A.PointAtParam(P.Param).Equals(P.Point, 1e-9)) << I;
      EXPECT_TRUE(B.PointAtParam(Q.Param).Equals(Q.Point, 1e-9)) << I;
    }
    if (I > 0) {
      EXPECT_LE(Results[I - 1].OnFirst.Param, R.OnFirst.Param);
    }
    if (R.IsOverlap) {
      EXPECT_LT(R.OnFirst.Param, R.EndOnFirst.Param);
      for (int Step = 1; Step < 8; ++Step) {
        const double T = std::lerp(R.OnFirst.Param, R.EndOnFirst.Param, Step / 8.0);
        EXPECT_LE(DistanceTo(B, A.PointAtParam(T)), 1.1e-6);
      }
    }
    for (std::size_t J = 0; J < I; ++J) {
      if (R.IsOverlap || Results[J].IsOverlap) continue;
      EXPECT_FALSE(R.Point().Equals(Results[J].Point()));
    }
  }
}

class TEveryPair : public testing::TestWithParam<int> {};

TEST_P(TEveryPair, AgreesWithDenseSamplingThroughAllSymmetries) {
  const int KindA = GetParam() / kCurveKindCount;
  const int KindB = GetParam() % kCurveKindCount;
  SCOPED_TRACE(testing::Message() << kCurveKinds[KindA] << " against " << kCurveKinds[KindB]);
  int Crossings = 0;
  for (unsigned Round = 0; Round < 40; ++Round) {
    SCOPED_TRACE(testing::Message() << "round " << Round);
    TCurveMaker Maker(1000 * Round + static_cast<unsigned>(GetParam()), false);
    const TCurve A = Maker.Make(KindA);
    const TCurve B = Maker.Make(KindB);
    const auto Results = Meet(*A, *B);
    ExpectSound(*A, *B, Results);
    const auto Expected = DenseCrossings(*A, *B);
    for (const TPoint2D& P : Expected)
      EXPECT_TRUE(HoldsPoint(Results, P, 1e-7)) << P.X << " " << P.Y;
    Crossings += static_cast<int>(Expected.size());

    const auto ExpectSame = [&](const std::vector<TIntersect2D>& Other, double SignX) {
      EXPECT_EQ(Results.size(), Other.size());
      for (const TIntersect2D& R : Results) {
        EXPECT_TRUE(HoldsPoint(Other, {SignX * R.Point().X, R.Point().Y}, 1e-7));
      }
    };
    ExpectSame(Meet(*B, *A), 1.0);
    const TCurve ReversedA = A->Clone();
    ReversedA->Reverse();
    ExpectSame(Meet(*ReversedA, *B), 1.0);
    const TCurve ReversedB = B->Clone();
    ReversedB->Reverse();
    ExpectSame(Meet(*A, *ReversedB), 1.0);
    TCurveMaker Mirror(1000 * Round + static_cast<unsigned>(GetParam()), true);
    const TCurve MirroredA = Mirror.Make(KindA);
    const TCurve MirroredB = Mirror.Make(KindB);
    ExpectSame(Meet(*MirroredA, *MirroredB), -1.0);
  }
  EXPECT_GT(Crossings, 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, TEveryPair, testing::Range(0, kCurveKindCount* kCurveKindCount));

// A curve against its own copy, and against what follows from cutting it, overlaps as a whole.
TEST(IntersectCurve, ACurveOverlapsItsCopyAndItsReversal) {
  for (int Kind = 0; Kind < kCurveKindCount; ++Kind) {
    for (unsigned Round = 0; Round < 10; ++Round) {
      SCOPED_TRACE(testing::Message() << kCurveKinds[Kind] << " round " << Round);
      TCurveMaker Maker(77 + Round, false);
      const TCurve A = Maker.Make(Kind);
      for (const bool IsReversed : {false, true}) {
        const TCurve B = A->Clone();
        if (IsReversed) B->Reverse();
        const auto Results = Meet(*A, *B);
        ExpectSound(*A, *B, Results);
        const auto Overlap = std::find_if(Results.begin(), Results.end(),
                                          [](const TIntersect2D& R) { return R.IsOverlap; });
        ASSERT_NE(Results.end(), Overlap);
        EXPECT_EQ(0.0, Overlap->OnFirst.Param);
        EXPECT_EQ(A->ParamTo(), Overlap->EndOnFirst.Param);
        EXPECT_EQ(IsReversed ? B->ParamTo() : 0.0, Overlap->OnSecond.Param);
        EXPECT_EQ(IsReversed ? 0.0 : B->ParamTo(), Overlap->EndOnSecond.Param);
        EXPECT_EQ(1, std::count_if(Results.begin(), Results.end(),
                                   [](const TIntersect2D& R) { return R.IsOverlap; }));
      }
    }
  }
}

TGePolyBezier2D OneBezier(const TBezierSegment2D& Segment) {
  TGePolyBezier2D Curve;
  Curve.AddBezier(Segment);
  return Curve;
}

TEST(IntersectCurve, PartsOfOneBezierOverlapWhereBothAre) {
  std::mt19937 Random(5);
  for (int Round = 0; Round < 60; ++Round) {
    SCOPED_TRACE(Round);
    const TBezierSegment2D Whole(test::RandomPoint(Random, -5, 5), test::RandomPoint(Random, -5, 5),
                                 test::RandomPoint(Random, -5, 5),
                                 test::RandomPoint(Random, -5, 5));
    TBezierSegment2D Head;
    TBezierSegment2D Tail;
    TBezierSegment2D Dropped;
    Whole.Split(0.7, Head, Dropped);
    Whole.Split(0.4, Dropped, Tail);
    if (Round % 2 == 1) Tail = Tail.Reversed();
    const TGePolyBezier2D A = OneBezier(Head);
    const TGePolyBezier2D B = OneBezier(Tail);
    const auto Results = Meet(A, B);
    ExpectSound(A, B, Results);
    int Overlaps = 0;
    for (const TIntersect2D& R : Results) {
      if (!R.IsOverlap) continue;
      ++Overlaps;
      EXPECT_NEAR(0.4 / 0.7, R.OnFirst.Param, 1e-6);
      EXPECT_EQ(1.0, R.EndOnFirst.Param);
      EXPECT_EQ(Round % 2 == 1 ? 1.0 : 0.0, R.OnSecond.Param);
      EXPECT_NEAR(0.5, R.EndOnSecond.Param, 1e-6);  // the rest of 0.4 .. 1 up to 0.7
    }
    EXPECT_EQ(1, Overlaps);
  }
}

// --- Places that count once, or not at all ---

TGeLine2D Line(double X1, double Y1, double X2, double Y2) {
  return {TPoint2D(X1, Y1), TPoint2D(X2, Y2)};
}

TGeCircularArc2D Circle(double X, double Y, double Radius, double StartAngle = 0.0,
                        double Sweep = kFullTurn) {
  return {TPoint2D(X, Y), Radius, StartAngle, Sweep};
}

TGePolyline2D Polyline(TDynPoints2D Points) {
  return TGePolyline2D(std::move(Points));
}

/// A line, then an arc that leaves it tangentially.
TGeCompositeCurve2D LineAndFillet() {
  TGeCompositeCurve2D Curve;
  Curve.AddCurve(Line(0, 0, 10, 0).Clone());
  Curve.AddCurve(
      std::make_unique<TGeCircularArc2D>(TPoint2D(10, 0), std::tan(kPi / 8), TPoint2D(12, 2)));
  return Curve;
}

struct TMeetingCase {
  const char* Name;
  TCurve A;
  TCurve B;
  TDynPoints2D Points;
  int Overlaps;
};

std::vector<TMeetingCase> MeetingCases() {
  const TBezierSegment2D Arch({0, 0}, {0, 1}, {1, 1}, {1, 0});  // its top is (0.5, 0.75)
  const TBezierSegment2D Bowl({0, 1.5}, {0, 0.5}, {1, 0.5}, {1, 1.5});
  const TBezierSegment2D UnevenLine({0, 0}, {8, 0}, {9, 0}, {10, 0});
  const TBezierSegment2D BackAndForth({0, 0}, {14, 0}, {14, 0}, {10, 0});
  const TGePolyline2D Square = Polyline({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}});
  std::vector<TMeetingCase> Cases;
  const auto Add = [&](const char* Name, const TGeCurve2D& A, const TGeCurve2D& B,
                       TDynPoints2D Points, int Overlaps) {
    Cases.push_back({Name, A.Clone(), B.Clone(), std::move(Points), Overlaps});
  };
  // Tangents, and the tolerance on both sides of them.
  Add("line touches circle", Line(-5, 1, 5, 1), Circle(0, 0, 1), {{0, 1}}, 0);
  Add("line just beyond", Line(-5, 1 + 9e-7, 5, 1 + 9e-7), Circle(0, 0, 1), {{0, 1}}, 0);
  Add("line beyond the band", Line(-5, 1 + 2e-6, 5, 1 + 2e-6), Circle(0, 0, 1), {}, 0);
  Add("a lens thinner than the tolerance", Line(-5, 1 - 5e-7, 5, 1 - 5e-7), Circle(0, 0, 1),
      {{0, 1}}, 0);
  Add("circles touch outside", Circle(0, 0, 1), Circle(3, 0, 2, 1), {{1, 0}}, 0);
  Add("circles touch inside", Circle(0, 0, 3), Circle(2, 0, 1, 1), {{3, 0}}, 0);
  Add("one circle in another", Circle(0, 0, 3), Circle(1, 0, 1), {}, 0);
  Add("circles of one centre", Circle(0, 0, 3), Circle(0, 0, 2), {}, 0);
  Add("line touches Bezier", Line(-1, 0.75, 2, 0.75), OneBezier(Arch), {{0.5, 0.75}}, 0);
  Add("Beziers touch", OneBezier(Arch), OneBezier(Bowl), {{0.5, 0.75}}, 0);
  Add("circle touches Bezier", Circle(0.5, 1.75, 1), OneBezier(Arch), {{0.5, 0.75}}, 0);
  // Shared ends and joints.
  Add("ends meet", Line(0, 0, 1, 1), Line(1, 1, 2, 0), {{1, 1}}, 0);
  Add("ends meet in one direction", Line(0, 0, 1, 0), Line(1, 0, 2, 0), {{1, 0}}, 0);
  Add("ends within the tolerance", Line(0, 0, 1, 0), Line(1 + 9e-7, 0, 2, 0), {{1, 0}}, 0);
  Add("ends beyond it", Line(0, 0, 1, 0), Line(1 + 2e-6, 0, 2, 0), {}, 0);
  Add("through a vertex", Line(3, 5, 5, 3), Square, {{4, 4}}, 0);
  Add("through the seam of a contour", Line(-1, -1, 1, 1), Square, {{0, 0}}, 0);
  Add("through two vertices", Line(-1, -1, 5, 5), Square, {{0, 0}, {4, 4}}, 0);
  Add("through the seam of a circle", Line(0, 0, 2, 0), Circle(0, 0, 1), {{1, 0}}, 0);
  Add("seam on seam", Circle(2, 0, 1, kPi), Circle(0, 0, 1), {{1, 0}}, 0);
  Add("through a tangential joint", Line(10, -1, 10, 1), LineAndFillet(), {{10, 0}}, 0);
  Add("vertex on vertex", Polyline({{0, 0}, {1, 1}, {2, 0}}), Polyline({{0, 2}, {1, 1}, {2, 2}}),
      {{1, 1}}, 0);
  Add("halves of one circle", Circle(0, 0, 1, 0, kPi), Circle(0, 0, 1, kPi, kPi), {{1, 0}, {-1, 0}},
      0);
  // Overlaps.
  Add("line within line", Line(0, 0, 10, 0), Line(7, 0, 3, 0), {{3, 0}, {7, 0}}, 1);
  Add("line beside line", Line(0, 0, 10, 0), Line(4, 9e-7, 20, 9e-7), {{4, 0}, {10, 0}}, 1);
  Add("line along two edges", Line(-1, 0, 9, 0), Polyline({{0, 0}, {2, 0}, {4, 0}, {4, 4}}),
      {{0, 0}, {4, 0}}, 1);
  Add("line along the side of a contour", Line(1, 0, 9, 0), Square, {{1, 0}, {4, 0}}, 1);
  Add("edges cut differently", Polyline({{0, 0}, {1, 0}, {3, 0}, {6, 0}}),
      Polyline({{5, 0}, {2, 0}, {1.5, 0}, {0.5, 0}}), {{0.5, 0}, {5, 0}}, 1);
  Add("line into a fillet", Line(5, 0, 15, 0), LineAndFillet(), {{5, 0}, {10, 0}}, 1);
  Add("arc on a circle", Circle(0, 0, 1, 1, 1), Circle(0, 0, 1),
      {{std::cos(1), std::sin(1)}, {std::cos(2), std::sin(2)}}, 1);
  Add("arc across the seam", Circle(0, 0, 1, 1, -2), Circle(0, 0, 1, 0, -kFullTurn),
      {{std::cos(1), std::sin(1)}, {1, 0}, {std::cos(1), -std::sin(1)}}, 2);
  Add("arcs common at both ends", Circle(0, 0, 1, 0, 4), Circle(0, 0, 1, 3, 4),
      {{1, 0}, {std::cos(7), std::sin(7)}, {std::cos(3), std::sin(3)}, {std::cos(4), std::sin(4)}},
      2);
  Add("one circle, two seams", Circle(0, 0, 1, 0), Circle(0, 0, 1, kPi, -kFullTurn),
      {{1, 0}, {-1, 0}}, 2);
  Add("an arc as flat as its chord", TGeCircularArc2D(TPoint2D(0, 0), 1e-6, TPoint2D(1, 0)),
      Line(0, 0, 1, 0), {{0, 0}, {1, 0}}, 1);
  Add("straight Bezier along a line", OneBezier(UnevenLine), Line(5, 0, 20, 0), {{5, 0}, {10, 0}},
      1);
  // Once two records, a few 1e-6 apart: the cubic is cut, to be monotone, where it turns through
  // the line's direction.
  Add("inflexion along a line", Line(4, 4, 4, 2), OneBezier({{1, 6}, {7, 2}, {1, 0}, {7, 5}}),
      {{4, 2.125}}, 0);
  // y = x² - x / 1000, which turns within the tolerance: nothing ends there, so nothing overlaps.
  Add("from a common end, hardly apart", Line(0, 0, 1, 0),
      OneBezier({{0, 0}, {1.0 / 3, -1e-3 / 3}, {2.0 / 3, 1.0 / 3 - 2e-3 / 3}, {1, 1 - 1e-3}}),
      {{0, 0}}, 0);
  // Once dropped as if it were the start of the overlap, from which the way is within the
  // tolerance.
  TGeCompositeCurve2D Apart;
  Apart.AddCurve(Line(2, 7, 7, 3).Clone());
  Apart.AddCurve(Polyline({{4, 6}, {4, 5}, {8, 5}}).Clone());
  Add("crossing within an overlap", Polyline({{0, 6}, {4, 6}, {4, 1}}), Apart,
      {{3.25, 6}, {4, 6}, {4, 5.4}, {4, 5}}, 1);
  // Both curves turn back in the same spike: they go through it together from (1, 0) to (3, 0), and
  // against each other from (3, 0) to (2, 0).
  Add("spike on spike", Polyline({{0, 0}, {4, 0}, {2, 0}}), Polyline({{1, 0}, {4, 0}, {3, 0}}),
      {{1, 0}, {2, 0}, {3, 0}}, 2);
  // Degenerate curves.
  Add("point on a line", Line(3, 0, 3, 0), Line(0, 0, 9, 0), {{3, 0}}, 0);
  Add("point off a line", Line(3, 1, 3, 1), Line(0, 0, 9, 0), {}, 0);
  Add("point on a circle", Polyline({{1, 0}}), Circle(0, 0, 1), {{1, 0}}, 0);
  Add("circle of no radius", Circle(3, 0, 0), Line(0, 0, 9, 0), {{3, 0}}, 0);
  Add("arc of no sweep", Circle(2, 0, 1, 0, 0), Line(0, 0, 9, 0), {{3, 0}}, 0);
  Add("vertices repeated", Polyline({{0, 0}, {0, 0}, {1, 1}, {1, 1}, {1, 1}, {2, 0}}),
      Line(1, 0, 1, 5), {{1, 1}}, 0);
  Add("Bezier that is a point", OneBezier({{3, 0}, {3, 0}, {3, 0}, {3, 0}}), Line(0, 0, 9, 0),
      {{3, 0}}, 0);
  Add("Bezier that turns back on itself", OneBezier(BackAndForth), Line(5, -1, 5, 1), {{5, 0}}, 0);
  Add("nothing", TGePolyline2D(), Line(0, 0, 9, 0), {}, 0);
  Add("an infinite vertex", Polyline({{0, 0}, {2, 0}, {INFINITY, 0}, {4, 0}, {6, 0}}),
      Polyline({{1, -1}, {1, 1}, {5, 1}, {5, -1}}), {{1, 0}, {5, 0}}, 0);
  return Cases;
}

void ExpectMeeting(const TMeetingCase& Case, const TGeCurve2D& A, const TGeCurve2D& B) {
  const auto Results = Meet(A, B);
  ExpectSound(A, B, Results);
  int Overlaps = 0;
  TDynPoints2D Points;
  for (const TIntersect2D& R : Results) {
    if (R.IsOverlap) ++Overlaps;
    for (const TPoint2D& P : {R.OnFirst.Point, R.EndOnFirst.Point}) {
      if (std::none_of(Points.begin(), Points.end(), [&](auto& Q) { return Q.Equals(P); })) {
        Points.push_back(P);
      }
    }
  }
  EXPECT_EQ(Case.Overlaps, Overlaps);
  EXPECT_EQ(Case.Points.size(), Points.size());
  for (const TPoint2D& P : Case.Points) {
    EXPECT_TRUE(
        std::any_of(Points.begin(), Points.end(), [&](auto& Q) { return Q.Equals(P, 1.1e-6); }))
        << P.X << " " << P.Y;
  }
}

TEST(IntersectCurve, EveryPlaceCountsOnce) {
  for (const TMeetingCase& Case : MeetingCases()) {
    SCOPED_TRACE(Case.Name);
    for (int Variant = 0; Variant < 4; ++Variant) {
      SCOPED_TRACE(Variant);
      const TCurve A = Case.A->Clone();
      const TCurve B = Case.B->Clone();
      if (Variant & 1) A->Reverse();
      if (Variant & 2) B->Reverse();
      ExpectMeeting(Case, *A, *B);
      ExpectMeeting(Case, *B, *A);
      // Inside a composite nothing changes.
      TGeCompositeCurve2D Outer;
      Outer.AddCurve(B->Clone());
      ExpectMeeting(Case, *A, Outer);
      ExpectMeeting(Case, Outer, *A);
    }
  }
}

// The cubic runs through the top of the arc within the first 2e-7 of its parameter. The values at
// the ends of that search differ by 1e12 times; it once gave up 0.09 beside the second crossing.
TEST(IntersectCurve, ACubicThatLeavesFarBehindCrossesWhereItDoes) {
  TGePolyBezier2D Cubic;
  Cubic.AddBezier({{10, 8}, {6e6, 5e-7}, {5e-7, 5e-7}, {5e-7, 5e-7}});
  const TGeCircularArc2D Arc({12, 6}, 2.0, -kQuarterTurn, -7 * kPi / 4);
  const auto Results = Meet(Arc, Cubic);
  ASSERT_EQ(2U, Results.size());
  for (const TIntersect2D& Result : Results) EXPECT_LT(DistanceTo(Cubic, Result.Point()), 1e-8);
}

// Straight, and at rest at the ends of their monotone pieces: steps that begin there stay there.
TEST(IntersectCurve, StraightCubicsCrossHoweverTheyRun) {
  TGePolyBezier2D Rests;
  Rests.AddBezier({{15, 15}, {15, 15}, {15, 15}, {1, 3.98828125}});
  TGePolyBezier2D Turns;
  Turns.AddBezier(
      {{8, 9}, {12.89453125, 7.000002}, {-6.68359375, 14.999994}, {3.10546875, 10.999998}});
  const auto Results = Meet(Rests, Turns);
  ASSERT_EQ(1U, Results.size());
  EXPECT_LT(DistanceTo(Turns, Results[0].Point()), 1e-12);
}

// The first runs straight out and back; the second starts 2e-6 beside it and crosses it where their
// slopes differ by 4e-11: parts as flat as 1e-10 of their size once passed each other by. The place
// is the root of the exact cubics.
TEST(IntersectCurve, LongCubicsCrossAtAHairsAngle) {
  const TBezierSegment2D Straight({13000000, 8}, {8.62890625, 14}, {-12999982.7421875, 20},
                                  {8.62890625, 14});
  const TBezierSegment2D Beside({12.999998, 14}, {13000000, 8}, {9.171875, 13.875}, {0, 0});
  for (const TBezierSegment2D& A : {Straight, Straight.Reversed()}) {
    for (const TBezierSegment2D& B : {Beside, Beside.Reversed()}) {
      for (const auto& Results :
           {Meet(OneBezier(A), OneBezier(B)), Meet(OneBezier(B), OneBezier(A))}) {
        ASSERT_EQ(1u, Results.size());
        EXPECT_TRUE(Results[0].Point().Equals({86349.253518, 13.960150454}, 1e-3));
      }
    }
  }
}

// A short stretch before the crossing is as near as the tolerance, and its end was once taken for
// the place.
TEST(IntersectCurve, CubicsThatNearEachOtherSlowlyCrossWhereTheyDo) {
  const TGePolyBezier2D A =
      OneBezier({{-0.31722, 0.17216}, {0.25227, 0.24235}, {0.17147, 0.66546}, {0.29386, 0.9783}});
  const TGePolyBezier2D B =
      OneBezier({{-0.31721, 0.17216}, {0.25227, 0.24235}, {0.17143, 0.66548}, {0.29366, 0.97841}});
  const auto Results = Meet(A, B);
  ASSERT_EQ(1u, Results.size());
  EXPECT_LT(Results[0].OnFirst.Point.DistanceTo(Results[0].OnSecond.Point), 1e-12);
}

// Both run out, bend back within 1.0002e-6 and return beside themselves: a piece of the bend lies
// along three pieces of the other, and the overlap once got lost among them.
TEST(IntersectCurve, AnOverlapGoesOnThroughABendOfTheTolerance) {
  const TBezierSegment2D Whole({9, 5e-7}, {12000000, 7}, {5e-7, 5e-7}, {5e-7, 5e-7});
  TBezierSegment2D Half;
  TBezierSegment2D Rest;
  Whole.Split(0.5, Half, Rest);
  for (const TBezierSegment2D& B : {Half, Half.Reversed()}) {
    const auto Results = Meet(OneBezier(Whole), OneBezier(B));
    EXPECT_TRUE(std::any_of(Results.begin(), Results.end(), [](const TIntersect2D& Result) {
      return Result.IsOverlap && Result.OnFirst.Param == 0.0 && Result.EndOnFirst.Param > 0.499999;
    }));
  }
}

TEST(IntersectCurve, TwoCubicsCrossNineTimes) {
  // y = T3(x) and x = T3(y), T3 the Chebyshev polynomial: at the nine roots of T9(x) = x.
  const TGePolyBezier2D A = OneBezier({{-1, -1}, {-1.0 / 3, 5}, {1.0 / 3, -5}, {1, 1}});
  const TGePolyBezier2D B = OneBezier({{-1, -1}, {5, -1.0 / 3}, {-5, 1.0 / 3}, {1, 1}});
  const auto Results = Meet(A, B);
  ExpectSound(A, B, Results);
  ASSERT_EQ(9u, Results.size());
  for (int K = 0; K < 9; ++K) {
    // T9(cos a) = cos 9a = cos a where a is a multiple of a quarter or of a fifth of π.
    const double Angle = K < 5 ? K * kPi / 4 : (K - 4) * kPi / 5;
    const double X = std::cos(Angle);
    EXPECT_TRUE(HoldsPoint(Results, {X, std::cos(3 * Angle)}, 1e-12)) << K;
  }
}

// With even steps in X a cubic is the graph of a polynomial. Two whose difference is a multiple of
// (x - R0)(x - R1)(x - R2) meet at the roots and nowhere else, however near they run beside each
// other.
TEST(IntersectCurve, CubicsThatBraidMeetAtTheRootsOfTheirDifference) {
  std::mt19937 Random(41);
  enum { kCrossing, kTouching, kAtASmallAngle, kKindCount };
  const double kLeast[] = {-2.0, -2.0, -4.0};
  constexpr double kNear = 5e-7;  // where they touch, they come as near
  for (int Round = 0; Round < 1500; ++Round) {
    SCOPED_TRACE(Round);
    const int Kind = Round % kKindCount;
    std::array<double, 3> R;
    R[0] = test::RandomDouble(Random, -0.3, 0.5);
    R[1] = R[0] + (Kind == kTouching ? 0.0 : test::RandomDouble(Random, 0.1, 0.4));
    R[2] = R[1] + test::RandomDouble(Random, 0.1, 0.4);
    if (Kind == kAtASmallAngle) R = {-0.5, -0.5, R[2]};
    const auto IsNearAnEnd = [](double T) { return std::abs(std::abs(T - 0.5) - 0.5) < 0.1; };
    if (std::any_of(R.begin(), R.end(), IsNearAnEnd)) continue;
    // Size: between two roots, and at the ends, the gap is wider than the tolerance.
    const double Size = std::pow(10.0, test::RandomDouble(Random, kLeast[Kind], 2));
    TMatrix2D M;
    if (Round % 5 > 0) M.Rotate(test::RandomDouble(Random, 0, kFullTurn));
    TPoint2D OnA[4];
    TPoint2D OnB[4];
    for (int I = 0; I < 4; ++I) {
      const double Y = test::RandomDouble(Random, -0.5, 0.5);
      double Gap = Kind == kTouching
                       ? -kNear
                       : 0.0;  // and the blossom of the difference at I ones and 3 - I zeros
      for (int Order = 0; Order < 6; ++Order, std::next_permutation(R.begin(), R.end())) {
        Gap += Size / 6 * ((I > 0) - R[0]) * ((I > 1) - R[1]) * ((I > 2) - R[2]);
      }
      OnA[I] = M.Transform({I / 3.0, Y});
      OnB[I] = M.Transform({I / 3.0, Y + Gap});
    }
    const TGePolyBezier2D A = OneBezier({OnA[0], OnA[1], OnA[2], OnA[3]});
    TBezierSegment2D Head;
    TBezierSegment2D Tail;
    const double Cut = std::clamp((R[1] + R[2]) / 2, 0.0, 0.99);  // apart from the meetings
    TBezierSegment2D(OnB[0], OnB[1], OnB[2], OnB[3]).Split(Cut, Head, Tail);
    TGePolyBezier2D B = OneBezier(Head);
    B.AddBezier(Tail);
    const auto Results = Meet(A, B);
    ExpectSound(A, B, Results);
    std::size_t Count = 0;
    for (std::size_t I = Kind == kTouching ? 1 : 0; I < 3; ++I) {
      if (R[I] < 0.0 || R[I] > 1.0) continue;
      ++Count;
      EXPECT_TRUE(HoldsPoint(Results, A.PointAtParam(R[I]), Kind == kTouching ? 3e-2 : 1e-9))
          << R[I];
    }
    EXPECT_EQ(Count, Results.size());
    for (const TIntersect2D& Result : Results) {
      const double Gap = Result.OnFirst.Point.DistanceTo(Result.OnSecond.Point);
      EXPECT_LT(Gap, Kind == kTouching ? 1.01 * kNear : 1e-12);
    }
  }
}

// Beside a cubic, as near as the tolerance, where it turns back or bends the other way: there it is
// cut into pieces, and what is found on both of them is one.
TEST(IntersectCurve, LinesAlongACubicMeetItOnceAtEachPlace) {
  std::mt19937 Random(43);
  for (int Round = 0; Round < 300; ++Round) {
    SCOPED_TRACE(Round);
    TPoint2D P[4];
    for (TPoint2D& Control : P) Control = test::RandomGridPoint(Random, 0, 7);
    const TBezierSegment2D Cubic(P[0], P[1], P[2], P[3]);
    if (TLine2D Chord; P[0] == P[3] || Cubic.IsLinear(Chord, 0.0)) continue;
    std::vector<double> Places = Cubic.CurvatureChangedPlaces();
    const TPoint2D Bend = P[3] - 3 * (P[2] - P[1]) - P[0];
    const TPoint2D Turn = 2 * (P[2] - 2 * P[1] + P[0]);
    TNumeric::CubicRoot(0, Bend.X, Turn.X, P[1].X - P[0].X, Places);
    TNumeric::CubicRoot(0, Bend.Y, Turn.Y, P[1].Y - P[0].Y, Places);
    for (const double T : Places) {
      const auto Hair = [&] {
        return std::pow(10, test::RandomDouble(Random, -9, -5)) *
               (test::RandomInt(Random, 0, 1) == 0 ? 1 : -1);
      };
      const TPoint2D Way = Cubic.Derivative(T).RotateBy(Hair() * 100).Normal();
      const TPoint2D Middle = Cubic.EvalPoint(T) + Way.RotateCcw90() * Hair();
      const TGePolyBezier2D A = OneBezier(Cubic);
      const TGeLine2D B(Middle - Way * 3, Middle + Way * test::RandomDouble(Random, 1, 9));
      ExpectSound(B, A, Meet(B, A));
      const auto Results = Meet(A, B);
      ExpectSound(A, B, Results);
      for (std::size_t I = 1; I < Results.size(); ++I) {
        double Most = 0.0;
        for (int Step = 1; Step < 16; ++Step) {
          const double Param =
              std::lerp(Results[I - 1].EndOnFirst.Param, Results[I].OnFirst.Param, Step / 16.0);
          Most = std::max(Most, DistanceTo(B, A.PointAtParam(Param)));
        }
        EXPECT_GT(Most, 0.9e-6);
      }
    }
  }
}

TEST(IntersectCurve, AppendsAndKeepsWhatIsThere) {
  std::vector<TIntersect2D> Results(1);
  Line(0, 0, 2, 2).IntersectCurve(Line(0, 2, 2, 0), Results, DefTol);
  Line(0, 0, 2, 2).IntersectCurve(Line(0, 4, 2, 4), Results, DefTol);
  ASSERT_EQ(2u, Results.size());
  EXPECT_EQ(TPoint2D(1, 1), Results[1].Point());
  EXPECT_EQ(0.5, Results[1].OnFirst.Param);
  EXPECT_EQ(0.5, Results[1].OnSecond.Param);
}

TEST(IntersectCurve, WiderToleranceMeetsWhatItReaches) {
  const TGeTolerance Wide(0.1, 0.1);
  EXPECT_TRUE(Meet(Line(0, 0, 1, 0), Line(1.05, 0, 2, 1)).empty());
  const auto Ends = Meet(Line(0, 0, 1, 0), Line(1.05, 0, 2, 1), Wide);
  ASSERT_EQ(1u, Ends.size());
  EXPECT_EQ(TPoint2D(1, 0), Ends[0].OnFirst.Point);
  EXPECT_EQ(TPoint2D(1.05, 0), Ends[0].OnSecond.Point);
  const auto Beside = Meet(Line(0, 0, 5, 0), Line(1, 0.05, 3, -0.05), Wide);
  ASSERT_EQ(1u, Beside.size());
  EXPECT_TRUE(Beside[0].IsOverlap);
}

TEST(IntersectCurve, ACubicThatComesBackToItsStartIsNoPoint) {
  TGePolyBezier2D Curve;
  Curve.AddBezier({{0, 0}, {1, 0}, {2, 0}, {3, 0}});
  Curve.AddBezier({{3, 0}, {6, 3}, {0, 3}, {3, 0}});
  EXPECT_EQ(2u, Meet(Curve, Line(0, 1, 9, 1)).size());
}

TEST(TGePolyBezier2D, APlaceBeforeAGapIsNotTheOneBehindIt) {
  TGePolyBezier2D Curve;
  for (const double X : {0, 5}) Curve.AddBezier({{X, 0}, {X + 1, 0}, {X + 2, 0}, {X + 3, 0}});
  EXPECT_EQ(std::nextafter(1.0, 0.0), Curve.ParamOfPoint({3.5, 0}));
  EXPECT_EQ(1.0, Curve.ParamOfPoint({4.5, 0}));
}

TEST(IntersectCurve, CrossingsOnBothSidesOfAJointAreOneWhenNothingWiderLiesBetween) {
  for (const double Depth : {5e-7, 2e-6}) {
    for (const double Joint : {1e-3, -1e-3}) {
      TGePolyline2D A = Polyline({{-10, 1e-3}, {0, -Depth}, {10, 1e-3}});
      TGePolyline2D B = Polyline({{-10, 0}, {Joint, 0}, {10, 0}});
      for (int Variant = 0; Variant < 4; ++Variant) {
        (Variant % 2 == 0 ? A : B).Reverse();
        for (const auto& Results : {Meet(A, B), Meet(B, A)}) {
          EXPECT_EQ(Depth < 1e-6 ? 1u : 2u, Results.size());
          for (const TIntersect2D& R : Results) EXPECT_LT(std::abs(R.Point().X), 0.03);
        }
      }
    }
  }
}

TEST(IntersectCurve, ManyPiecesMeetInEveryCrossing) {
  constexpr int kTeeth = 10000;
  TDynPoints2D Zigzag;
  TDynPoints2D Steps;
  for (int I = 0; I <= kTeeth; ++I) {
    Zigzag.push_back({static_cast<double>(I), I % 2 == 0 ? -1.0 : 1.0});
    Steps.push_back({I + 0.25, 0.0});
  }
  const auto Results = Meet(Polyline(Zigzag), Polyline(Steps));
  ASSERT_EQ(static_cast<std::size_t>(kTeeth), Results.size());
  for (int I = 0; I < kTeeth; ++I) {
    EXPECT_NEAR(I + 0.5, Results[static_cast<std::size_t>(I)].OnFirst.Param, 1e-9);
    EXPECT_NEAR(I + 0.25, Results[static_cast<std::size_t>(I)].OnSecond.Param, 1e-9);
  }
  // A long run of collinear edges joins to one overlap.
  const auto Along = Meet(Polyline(Steps), Line(0, 0, kTeeth, 0));
  ASSERT_EQ(1u, Along.size());
  EXPECT_TRUE(Along[0].IsOverlap);
  EXPECT_NEAR(kTeeth - 0.25, Along[0].EndOnFirst.Param, 1e-9);
}

// To the right along one zigzag and back along another one beside it.
TEST(IntersectCurve, PlacesPassedTwiceCountOnceByTheDozen) {
  for (const bool Turned : {false, true}) {
    for (const double Apart : {4e-7, 3e-6}) {
      TDynPoints2D Zigzag;
      for (int I = -40; I < 40; ++I) {
        const double Tooth = I < 0 ? I + 20.5 : 19.5 - I;
        const TPoint2D P(Tooth + (I < 0 ? Apart : -Apart) / 2, I % 2 == 0 ? 0.5 : -0.5);
        Zigzag.push_back(Turned ? TPoint2D(P.Y, P.X) : P);
      }
      const auto Axis = Turned ? Line(0, -30, 0, 30) : Line(-30, 0, 30, 0);
      EXPECT_EQ(Apart < 1e-6 ? 40u : 79u, Meet(Polyline(Zigzag), Axis).size());
    }
  }
}

TEST(IntersectCurve, EqualPointsByTheMillionAreOne) {
  const TGePolyline2D Heap = Polyline(TDynPoints2D(1000000, TPoint2D(2, 3)));
  EXPECT_EQ(1u, Meet(Heap, Heap).size());
  EXPECT_EQ(1u, Meet(Line(0, 3, 5, 3), Heap).size());
  EXPECT_TRUE(Meet(Line(0, 4, 5, 4), Heap).empty());
}

TEST(IntersectCurve, AFlatTouchIsNamedWhereItIs) {
  constexpr double kSize = 1e6;  // within a rounding of the top the arch is thousands of units wide
  for (int I = 1; I < 40; ++I) {
    SCOPED_TRACE(I);
    const TGePolyBezier2D Arch =
        OneBezier({{0, 0}, {kSize * I / 7, 4 * kSize}, {2 * kSize, 4 * kSize}, {kSize * I / 3, 0}});
    for (const double From : {-20.0, 20.0}) {
      const auto Results = Meet(Arch, Line(From * kSize, 3 * kSize, -From * kSize, 3 * kSize));
      ASSERT_EQ(1u, Results.size());
      EXPECT_NEAR(0.5, Results[0].OnFirst.Param, 1e-12);
    }
  }
}

TEST(IntersectCurve, PointsAsGoodAsEqualByTheHundredThousandAreOne) {
  std::mt19937 Random(7);
  const auto Heap = [&] {
    TDynPoints2D Points(100000);
    for (TPoint2D& P : Points) P = test::RandomPoint(Random, -3e-7, 3e-7);
    return Polyline(Points);
  };
  EXPECT_EQ(1u, Meet(Heap(), Heap()).size());
}

TEST(IntersectCurve, BeziersJustBesideEachOtherEndInBoundedWork) {
  const TBezierSegment2D Base({0, 0}, {3, 5}, {7, -5}, {10, 0});
  for (const double Offset : {1.5e-6, 1e-5, 1e-3}) {
    TBezierSegment2D Beside = Base;
    for (TPoint2D* P : {&Beside.P0, &Beside.P1, &Beside.P2, &Beside.P3}) P->Y += Offset;
    const TGePolyBezier2D A = OneBezier(Base);
    const TGePolyBezier2D B = OneBezier(Beside);
    ExpectSound(A, B, Meet(A, B));
    EXPECT_LE(Meet(A, B, {0.0, 0.0}).size(), 64u);
  }
}

TEST(IntersectCurve, SurvivesWhateverItIsGiven) {
  const double kInf = std::numeric_limits<double>::infinity();
  const double Values[] = {0.0,   1.0,   -1.0,    5e-324, 1e-200,
                           1e150, 1e300, 1.7e308, kInf,   std::nan("")};
  std::mt19937 Random(3);
  const auto Value = [&] { return Values[test::RandomInt(Random, 0, 9)]; };
  const auto Point = [&] {
    const double X = Value();
    return TPoint2D(X, Value());
  };
  const auto Curve = [&]() -> TCurve {
    switch (test::RandomInt(Random, 0, 3)) {
      case 0:
        return std::make_unique<TGeLine2D>(Point(), Point());
      case 1:
        return std::make_unique<TGeCircularArc2D>(Point(),
                                                  std::abs(Values[test::RandomInt(Random, 0, 7)]),
                                                  1.0, test::RandomInt(Random, -7, 7));
      case 2:
        return std::make_unique<TGePolyline2D>(TDynPoints2D{Point(), Point(), Point(), Point()});
      default:
        return OneBezier({Point(), Point(), Point(), Point()}).Clone();
    }
  };
  for (int Round = 0; Round < 4000; ++Round) {
    const TCurve A = Curve();
    const TCurve B = Curve();
    for (const double Tol : {1e-6, 0.0, -1.0, std::nan(""), kInf, 1e300}) {
      const auto Results = Meet(*A, *B, {Tol, Tol});
      EXPECT_LE(Results.size(), 200u);
    }
  }
}

TEST(IntersectCurve, ScalesFromTheTinyToTheHuge) {
  for (const double Scale : {1e-150, 1e-3, 1.0, 1e100, 1e300}) {
    SCOPED_TRACE(Scale);
    const TPoint2D Middle = TPoint2D(1, 1) * Scale;
    const auto Lines =
        Meet(TGeLine2D({0, 0}, TPoint2D(2, 2) * Scale),
             TGeLine2D(TPoint2D(0, 2) * Scale, TPoint2D(2, 0) * Scale), {1e-9 * Scale, 0});
    ASSERT_EQ(1u, Lines.size());
    EXPECT_TRUE(Lines[0].Point().Equals(Middle, 1e-12 * Scale));
    EXPECT_EQ(2u, Meet(TGeLine2D(TPoint2D(-2, 0) * Scale, TPoint2D(2, 0) * Scale),
                       TGeCircularArc2D(TPoint2D(0, 0), Scale, 1.0, kFullTurn), {1e-9 * Scale, 0})
                      .size());
  }
}

// t·(t − 0.3)·(t + 1) and its mirror image: at one end the value is exactly 0.
TEST(TBernsteinRoots, OneRootBesideAnExactOneAtAnEnd) {
  const std::array<double, 4> Cubic{0.0, -0.1, 1.0 / 30.0, 1.4};
  for (const bool IsMirrored : {false, true}) {
    std::array<double, 4> C = Cubic;
    if (IsMirrored) std::reverse(C.begin(), C.end());
    const TBernsteinRoots<3> Roots(C);
    ASSERT_EQ(1, Roots.end() - Roots.begin());
    EXPECT_NEAR(IsMirrored ? 0.7 : 0.3, *Roots.begin(), 1e-15);
  }
}

TEST(TCurvePiece, ArcsKeepTheirGivenEndsAndArePointsOnlyWithoutLength) {
  const TPoint2D Start(5e-4, 1e-9);
  const auto Piece = [&](double Radius, double Sweep) {
    return TCurvePiece::OfArc(TArc2D({0, 0}, Radius, 0.0, Sweep), Start, Start, 0.0, 1.0);
  };
  EXPECT_EQ(Start, Piece(5e-4, kFullTurn).Eval(1.0));
  EXPECT_FALSE(Piece(5e-4, kFullTurn).IsPoint());
  EXPECT_TRUE(Piece(0.0, kFullTurn).IsPoint());
  EXPECT_TRUE(Piece(5e-4, 0.0).IsPoint());
}

}  // namespace
}  // namespace tarnalgo
