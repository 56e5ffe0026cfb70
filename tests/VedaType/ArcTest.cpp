#include "geometryAlgo/VedaType/Arc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <concepts>
#include <random>
#include <vector>

#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

template <class... TArgs>
constexpr bool kMakesArc = std::constructible_from<TVArc2D, TArgs...>;

// Flags and numbers do not stand in for each other.
static_assert(kMakesArc<TPoint2D, TPoint2D, double>);
static_assert(kMakesArc<TPoint2D, TPoint2D, bool>);
static_assert(!kMakesArc<TPoint2D, TPoint2D, int>);
static_assert(!kMakesArc<TPoint2D, TPoint2D, float>);
static_assert(kMakesArc<TPoint2D, TPoint2D, TPoint2D, bool>);
static_assert(!kMakesArc<TPoint2D, TPoint2D, TPoint2D, int>);
static_assert(!kMakesArc<TPoint2D, TPoint2D, TPoint2D, double>);
static_assert(kMakesArc<TPoint2D, TPoint2D, double, bool, bool>);
static_assert(kMakesArc<TPoint2D, TPoint2D, int, bool, bool>);  // a radius may be any number
static_assert(!kMakesArc<TPoint2D, TPoint2D, double, int, bool>);
static_assert(!kMakesArc<TPoint2D, TPoint2D, double, bool, double>);
static_assert(kMakesArc<TVLine2D, double, bool, bool>);
static_assert(!kMakesArc<TVLine2D, double, bool, int>);

// The upper half of the circle of radius 5 about (1, 2), from right to left.
const TVArc2D kUpper({1, 2}, {6, 2}, {-4, 2}, false);

/// Arcs with every sense, sweep and start; no full circles.
TVArc2D RandomArc(std::mt19937& Random) {
  const double Sweep = test::RandomDouble(Random, 0.05, kFullTurn - 0.05);
  return {test::RandomPoint(Random, -5, 5), test::RandomDouble(Random, 0.5, 5),
          test::RandomDouble(Random, -7, 7), test::RandomInt(Random, 0, 1) != 0 ? Sweep : -Sweep};
}

bool SameArc(const TVArc2D& A, const TVArc2D& B, double Eps) {
  return A.Center.Equals(B.Center, Eps) && A.StartPoint.Equals(B.StartPoint, Eps) &&
         A.EndPoint.Equals(B.EndPoint, Eps) && A.IsClockwise == B.IsClockwise;
}

// --- Constructors ---

TEST(TVArc2D, AngleFormReducesTheSweepByItsRules) {
  const struct {
    const char* Name;
    double Sweep;
    double Range;
  } Cases[] = {
      {"quarter", kPi / 2, kPi / 2},
      {"clockwise quarter", -kPi / 2, -kPi / 2},
      {"full turn", kFullTurn, kFullTurn},
      {"more than a full turn", kFullTurn + 1, kFullTurn},
      {"no sweep reads as a full turn", 0, kFullTurn},
      {"clockwise full turn", -kFullTurn, -kFullTurn},
      {"more than a clockwise full turn wraps", -kFullTurn - 1, -1},
      {"so near a full turn that the ends coincide", kFullTurn - 1e-8, kFullTurn},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TVArc2D Arc({1, 2}, 5, 0.3, Case.Sweep);
    EXPECT_NEAR(Case.Range, Arc.AngleRange(), 1e-12);
    EXPECT_EQ(Case.Sweep < 0, Arc.IsClockwise);
    EXPECT_NEAR(5, Arc.Radius(), 1e-12);
    EXPECT_NEAR(std::abs(Case.Range) * 5, Arc.Length(), 1e-11);
  }
  const TVArc2D Full({1, 2}, 5, 0.3, kFullTurn);
  EXPECT_EQ(Full.StartPoint, Full.EndPoint);  // not recomputed
}

TEST(TVArc2D, EveryFormMakesTheSameArc) {
  std::mt19937 Random(31);
  for (int Round = 0; Round < 500; ++Round) {
    const TVArc2D Arc = RandomArc(Random);
    const TPoint2D& Start = Arc.StartPoint;
    const TPoint2D& End = Arc.EndPoint;
    if (Start.DistanceTo(End) < 0.01) continue;  // such a chord says little about the centre
    const bool IsLarge = std::abs(Arc.AngleRange()) > kPi;
    // A radius that is hardly more than half the chord says little about the centre as well.
    const bool IsHalf = std::abs(std::abs(Arc.AngleRange()) - kPi) < 0.05;
    EXPECT_TRUE(SameArc(Arc, TVArc2D(Start, End, Arc.Bulge()), 1e-9));
    if (IsHalf) continue;
    EXPECT_TRUE(SameArc(Arc, TVArc2D(Start, End, Arc.Radius(), IsLarge, Arc.IsClockwise), 1e-9));
    EXPECT_TRUE(
        SameArc(Arc, TVArc2D(TVLine2D(Start, End), Arc.Radius(), Arc.IsClockwise, IsLarge), 1e-9));
  }
}

TEST(TVArc2D, BulgeFormOverEqualPoints) {
  const TVArc2D Degenerate({3, 4}, {3, 4}, 0.0);
  EXPECT_EQ(TPoint2D::FZero, Degenerate.Center);
  EXPECT_EQ(kFullTurn, Degenerate.AngleRange());
  EXPECT_NEAR(kFullTurn * 5, Degenerate.Length(), 1e-12);
  EXPECT_TRUE(TVArc2D({3, 4}, {3, 4 + 9e-7}, -5e-7).IsClockwise);
  for (const double Bulge : {0.5, -2e-6, std::nan("")}) {
    test::ExpectRaises(
        [&] {
          TVArc2D({3, 4}, {3, 4 + 9e-7}, Bulge);
        },
        "[Error] TVArc2D.Create: 参数错误");
  }
  EXPECT_NO_THROW(TVArc2D({3, 4}, {3, 4 + 2e-6}, 0.5));
  EXPECT_FALSE(std::isfinite(TVArc2D({0, 0}, {3, 4}, 0.0).Center.X));  // a line has no centre
}

TEST(TVArc2D, BulgeFormKnowsTheQuarterAndTheHugeArc) {
  EXPECT_TRUE(TVArc2D({1, 0}, {0, 1}, std::tan(kPi / 8)).Center.Equals({0, 0}, 1e-15));
  EXPECT_TRUE(TVArc2D({1, 0}, {0, 1}, -std::tan(kPi / 8)).Center.Equals({1, 1}, 1e-15));
  EXPECT_TRUE(TVArc2D({0, 0}, {2, 0}, 1.0).Center.Equals({1, 0}, 0));
  EXPECT_TRUE(std::isfinite(TVArc2D({0, 0}, {2, 0}, 1e200).Center.Y));
}

TEST(TVArc2D, RadiusFormRefusesAnyRadiusBelowHalfTheChord) {
  try {
    TVArc2D({0, 0}, {6, 8}, 5 - 1e-12, false, false);
    ADD_FAILURE() << "nothing raised";
  } catch (const EAssertionFailed& Error) {
    const std::string Text = Error.what();
    EXPECT_EQ(0U, Text.find("Assertion failure: [Error] TVArc2D.Create: 直径 < 弦长。 "
                            "(geometryAlgo/VedaType, line "));
  }
  EXPECT_EQ(TPoint2D(3, 4), TVArc2D({0, 0}, {6, 8}, 5, false, false).Center);
  EXPECT_EQ(TPoint2D(3, 4), TVArc2D({3, 4}, {3, 4}, 5, true, false).Center);
  EXPECT_THROW(TVArc2D({0, 0}, {6, 8}, std::nan(""), false, false), EAssertionFailed);
}

TEST(TVArc2D, ChordFormRefusesARadiusOfHalfTheChord) {
  const TVLine2D Chord({0, 0}, {6, 8});
  for (const double Radius : {5.0, 5 + 9e-7, 4.0, -9.0}) {
    test::ExpectRaises([&] { TVArc2D(Chord, Radius, false, true); },
                       "[Error]TVArc2D.Create: 不存在此参数对应的圆");
  }
  EXPECT_TRUE(TVArc2D(Chord, 5 + 2e-6, false, true).Center.Equals({3, 4}, 0.01));
}

// --- Measures ---

TEST(TVArc2D, AngleRangeOfEndsInOneDirectionIsZero) {
  const TVArc2D Spoke({0, 0}, {1, 0}, {2, 0}, true);
  EXPECT_EQ(0.0, Spoke.AngleRange());
  EXPECT_EQ(-kFullTurn, TVArc2D({0, 0}, TPoint2D(1, 0), true).AngleRange());
  test::ExpectRaises(
      [&] {
        Spoke.CalcParamByPoint({0, 1});
      },
      "[Error] TVArc2D.CalcParamByPoint: 圆弧退化为点");
}

TEST(TVArc2D, ParameterRunsInTheArcsDirection) {
  EXPECT_DOUBLE_EQ(0.5, kUpper.CalcParamByPoint({1, 9}));
  EXPECT_DOUBLE_EQ(1.5, kUpper.CalcParamByPoint({1, 0}));
  EXPECT_NEAR(2.0, kUpper.CalcParamByPoint({6, 2 - 1e-9}), 1e-9);  // a hair before the start
  EXPECT_TRUE(kUpper.CalcDerivative(0.5).Equals({-5, 0}, 1e-14));
  EXPECT_TRUE(kUpper.Reverse().CalcDerivative(0.5).Equals({5, 0}, 1e-14));
  std::mt19937 Random(32);
  for (int Round = 0; Round < 300; ++Round) {
    const TVArc2D Arc = RandomArc(Random);
    const double T = test::RandomDouble(Random, 0.001, 0.999);
    const TPoint2D P = Arc.CalcPointByParam(T);
    EXPECT_NEAR(T, Arc.CalcParamByPoint(P), 1e-12);
    EXPECT_NEAR(1 - T, Arc.Reverse().CalcParamByPoint(P), 1e-12);
    EXPECT_TRUE(Arc.IsPointOn(P));
    EXPECT_TRUE(Arc.CalcPointByParam(1).Equals(Arc.EndPoint, 1e-12));
    TVArc2D Left;
    TVArc2D Right;
    Arc.SplitByParam(T, Left, Right);
    EXPECT_NEAR(Arc.Length() * T, Left.Length(), 1e-9);
    EXPECT_NEAR(Arc.Length() * (1 - T), Right.Length(), 1e-9);
  }
}

TEST(TVArc2D, SplitMayOverwriteItself) {
  TVArc2D Left = kUpper;
  TVArc2D Right;
  Left.SplitByParam(0.5, Left, Right);
  EXPECT_TRUE(SameArc(TVArc2D({1, 2}, {6, 2}, {1, 7}, false), Left, 1e-14));
  EXPECT_TRUE(SameArc(TVArc2D({1, 2}, {1, 7}, {-4, 2}, false), Right, 1e-14));
}

TEST(TVArc2D, PointsAreOnTheArcWithinTheToleranceRoundItsEnds) {
  EXPECT_TRUE(kUpper.IsPointOn({1, 7 + 9e-7}));
  EXPECT_FALSE(kUpper.IsPointOn({1, 7 + 2e-6}));
  EXPECT_TRUE(kUpper.IsPointOn({6, 2 - 9e-7}));  // before the start
  EXPECT_FALSE(kUpper.IsPointOn({6, 2 - 2e-6}));
  EXPECT_FALSE(kUpper.IsPointOn({1, -3}));
}

// Every point that a dense walk along the arc meets.
std::vector<TPoint2D> Walk(const TVArc2D& Arc) {
  std::vector<TPoint2D> Points;
  const double From = Arc.StartAngle();
  for (int I = 0; I <= 20000; ++I) {
    const double A = From + Arc.AngleRange() * I / 20000;
    Points.push_back(Arc.Center + TPoint2D(std::cos(A), std::sin(A)) * Arc.Radius());
  }
  return Points;
}

TEST(TVArc2D, BoxAndFarthestPointAgreeWithADenseWalk) {
  std::mt19937 Random(33);
  for (int Round = 0; Round < 60; ++Round) {
    const TVArc2D Arc = RandomArc(Random);
    const TPoint2D P = test::RandomPoint(Random, -9, 9);
    TVRect2D Box;
    double Farthest = 0;
    for (const TPoint2D& Q : Walk(Arc)) {
      Box.ExpandInPlace(Q);
      Farthest = std::max(Farthest, P.DistanceTo(Q));
    }
    EXPECT_TRUE(Box.SameAs(Arc.BoundBox(), 1e-6));
    EXPECT_NEAR(Farthest, P.DistanceTo(Arc.FarthestPt(P)), 1e-6);
    EXPECT_TRUE(Arc.IsPointOn(Arc.FarthestPt(P)));
  }
  EXPECT_EQ(TPoint2D(6, 2), kUpper.FarthestPt({1, 2}));  // all equally far: the start
  EXPECT_EQ(TVRect2D(-4, 6, 7, -3), TVArc2D({1, 2}, TPoint2D(6, 2), true).BoundBox());
}

TEST(TVArc2D, SamplesKeepTheEndsAndTheChordError) {
  std::mt19937 Random(34);
  for (int Round = 0; Round < 100; ++Round) {
    const TVArc2D Arc = RandomArc(Random);
    const double ChordError = std::pow(10, test::RandomDouble(Random, -5, 0));
    const TVPolyline2D Samples = Arc.SampleToPolyline(ChordError);
    EXPECT_EQ(Arc.StartPoint, Samples.First());
    EXPECT_EQ(Arc.EndPoint, Samples.Last());
    for (int I = 0; I + 1 < Samples.Count(); ++I) {
      EXPECT_GE(Samples.Line(I).Center().DistanceTo(Arc.Center), Arc.Radius() - ChordError - 1e-12);
      EXPECT_TRUE(Arc.IsPointOn(Samples[I]));
    }
  }
}

TEST(TVArc2D, HostArcIsTheSameCurve) {
  std::mt19937 Random(35);
  for (int Round = 0; Round < 100; ++Round) {
    const TVArc2D Arc = RandomArc(Random);
    const double T = test::RandomDouble(Random, 0, 1);
    EXPECT_TRUE(Arc.ToArc2D().PointAtParam(T).Equals(Arc.CalcPointByParam(T), 1e-12));
    EXPECT_TRUE(SameArc(Arc.Rotate(1, {3, 4}).Rotate(-1, {3, 4}), Arc, 1e-12));
    EXPECT_TRUE(Arc.Rotate(2).Center.Equals(Arc.Center.RotateBy(2), 0));
  }
}

// --- Crossings ---

TEST(TVArc2D, SegmentsMeetTheArc) {
  const struct {
    const char* Name;
    TVLine2D Segment;
    int Count;
    TPoint2D P1;
    TPoint2D P2;
  } Cases[] = {
      {"through both sides", {{-9, 5}, {9, 5}}, 2, {-3, 5}, {5, 5}},
      {"ending inside: the second one is moved up", {{9, 5}, {1, 5}}, 1, {5, 5}, {}},
      {"starting inside: only the second", {{1, 5}, {9, 5}}, 1, {5, 5}, {}},
      {"inside", {{0, 5}, {1, 5}}, 0, {}, {}},
      {"below, where the arc is not", {{1, -9}, {1, 2}}, 0, {}, {}},
      {"along the diameter: both ends", {{-9, 2}, {9, 2}}, 2, {-4, 2}, {6, 2}},
      {"a hair below the ends", {{-9, 2 - 9e-7}, {9, 2 - 9e-7}}, 2, {-4, 2}, {6, 2}},
      {"beyond the tolerance below", {{-9, 2 - 2e-6}, {9, 2 - 2e-6}}, 0, {}, {}},
      {"tangent", {{-9, 7}, {9, 7}}, 1, {1, 7}, {}},
      {"beside", {{-9, 8}, {9, 8}}, 0, {}, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TPoint2D P1;
    TPoint2D P2;
    EXPECT_EQ(Case.Count, kUpper.CrossWithSegline(Case.Segment, P1, P2));
    EXPECT_TRUE(Case.P1.Equals(P1));
    EXPECT_TRUE(Case.P2.Equals(P2));
    EXPECT_EQ(Case.Count, kUpper.Reverse().CrossWithSegline(Case.Segment, P1, P2));
    EXPECT_EQ(Case.Count, kUpper.CrossWithSegline(Case.Segment.ReverseDirection(), P1, P2));
  }
}

TEST(TVArc2D, CircleCrossingsAreThoseOfTheArcPart) {
  TPoint2D P1;
  TPoint2D P2;
  EXPECT_EQ(1, kUpper.CrossWithCircle({{6, 2}, 5}, P1, P2));
  EXPECT_TRUE(P1.Equals({3.5, 2 + std::sqrt(18.75)}, 1e-12));
  EXPECT_EQ(2, kUpper.CrossWithCircle({{1, 7}, 5}, P1, P2));
  EXPECT_GT(P1.X, P2.X);  // in the order of the arc
  EXPECT_EQ(0, kUpper.CrossWithCircle({{1, -3}, 4}, P1, P2));
  EXPECT_EQ(0, kUpper.CrossWithCircle(kUpper.Circle(), P1, P2));
}

TEST(TVArc2D, ArcsOfDifferentCirclesCrossInPoints) {
  TPoint2D P1;
  TPoint2D P2;
  TVArc2D Overlap;
  const TVArc2D Lower({1, 7}, {-4, 7}, {6, 7}, false);  // the lower half of a circle higher up
  EXPECT_EQ(2, kUpper.CrossWithArc(Lower, P1, P2, Overlap, Overlap));
  EXPECT_TRUE(P1.Equals({1 + std::sqrt(18.75), 4.5}, 1e-12));
  EXPECT_TRUE(P2.Equals({1 - std::sqrt(18.75), 4.5}, 1e-12));
  // Arcs that share only an end point.
  const TVArc2D Next({8, 2}, {10, 2}, {6, 2}, true);
  EXPECT_EQ(1, kUpper.CrossWithArc(Next, P1, P2, Overlap, Overlap));
  EXPECT_TRUE(P1.Equals({6, 2}));
}

TEST(TVArc2D, ArcsOfOneCircle) {
  const auto Piece = [](double From, double To) { return TVArc2D({1, 2}, 5, From, To - From); };
  const TVArc2D Base = Piece(0, 3);
  const struct {
    const char* Name;
    TVArc2D Other;
    int Code;
    double Overlap;  // radians that both cover
  } Cases[] = {
      {"apart", Piece(4, 5), 0, 0},
      {"touching at the end", Piece(3, 5), 1, 0},
      {"touching at the start", Piece(-1, 0), 1, 0},
      {"touching at both ends", Piece(3, kFullTurn), 2, 0},
      {"inside", Piece(1, 2), 4, 1},
      {"around", Piece(-1, 4), 4, 3},
      {"equal", Base, 4, 3},
      {"from before into it", Piece(-1, 1), 4, 1},
      {"over both ends", Piece(2, kFullTurn + 1), 8, 2},
      {"over one end, touching the other", Piece(2, kFullTurn), 5, 1},
      {"full circle", TVArc2D({1, 2}, TPoint2D(1, 7), true), 4, 3},
      {"apart by more than the tolerance", Piece(3 + 1e-6, 5), 0, 0},
  };
  for (const auto& Case : Cases) {
    for (const TVArc2D& Other : {Case.Other, Case.Other.Reverse()}) {
      for (const TVArc2D& This : {Base, Base.Reverse()}) {
        SCOPED_TRACE(Case.Name);
        TPoint2D P[2];
        TVArc2D Arcs[2];
        const int Code = This.CrossWithArc(Other, P[0], P[1], Arcs[0], Arcs[1]);
        ASSERT_EQ(Case.Code, Code);
        double Length = 0;
        for (int I = 0; I < Code >> 2; ++I) {
          EXPECT_EQ(This.IsClockwise, Arcs[I].IsClockwise);
          EXPECT_TRUE(Other.IsPointOn(Arcs[I].CalcPointByParam(0.5)));
          Length += Arcs[I].Length();
        }
        EXPECT_NEAR(Case.Overlap * 5, Length, 1e-9);
        for (int I = 0; I < (Code & 3); ++I) {
          EXPECT_TRUE(This.IsPointOn(P[I]) && Other.IsPointOn(P[I]));
        }
        TVArc2D Swapped[2];
        EXPECT_EQ(Case.Code, Other.CrossWithArc(This, P[0], P[1], Swapped[0], Swapped[1]));
      }
    }
  }
}

// Longer than the tolerance along the arc, shorter from end to end: as an arc it would read as the
// full circle.
TEST(TVArc2D, AStretchWhoseEndsCoincideIsATouch) {
  const TVArc2D Small({0, 0}, 5e-6, 0, 3);
  const TVArc2D Next({0, 0}, 5e-6, 3 - 0.2001, 2);
  ASSERT_GT(0.2001 * 5e-6, 1e-6);
  TPoint2D P1;
  TPoint2D P2;
  TVArc2D Overlap;
  EXPECT_EQ(1, Small.CrossWithArc(Next, P1, P2, Overlap, Overlap));
  EXPECT_EQ(Next.StartPoint, P1);
}

}  // namespace
}  // namespace tarnalgo
