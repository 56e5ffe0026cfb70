#include "host/Cadtypes/Bezier.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

const TBezierSegment2D kArch({0, 0}, {0, 4}, {6, 4}, {6, 0});
const TBezierSegment2D kCusp({0, 0}, {4, 4}, {0, 4}, {4, 0});  // comes to rest at t = 1/2
/// y = x² over [−2, 2], raised to degree 3.
const TBezierSegment2D kParabola({-2, 4}, {-2.0 / 3, -4.0 / 3}, {2.0 / 3, -4.0 / 3}, {2, 4});

TBezierSegment2D RandomCurve(std::mt19937& Random) {
  const auto P = [&] { return test::RandomPoint(Random, -10, 10); };
  const TPoint2D P0 = P();
  const TPoint2D P1 = P();
  const TPoint2D P2 = P();
  return {P0, P1, P2, P()};
}

/// A curve on a small grid: coinciding controls, straight runs, cusps and loops are common.
TBezierSegment2D GridCurve(std::mt19937& Random) {
  const auto P = [&] { return test::RandomGridPoint(Random, 0, 3); };
  const TPoint2D P0 = P();
  const TPoint2D P1 = P();
  const TPoint2D P2 = P();
  return {P0, P1, P2, P()};
}

TEST(TBezierSegment2D, TheStraightSegmentRunsEvenly) {
  const TBezierSegment2D Line({1, 2}, {7, -4});
  for (int I = 0; I <= 12; ++I) {
    EXPECT_TRUE(Line.EvalPoint(I / 12.0).Equals({1 + I * 0.5, 2 - I * 0.5}, 1e-14));
    EXPECT_TRUE(Line.Derivative(I / 12.0).Equals({6, -6}, 1e-13));
  }
}

TEST(TBezierSegment2D, PartsOfASplitFollowTheWhole) {
  std::mt19937 Random(71);
  for (int Round = 0; Round < 500; ++Round) {
    const TBezierSegment2D Curve = RandomCurve(Random);
    EXPECT_EQ(Curve.P0, Curve.EvalPoint(0.0));
    EXPECT_EQ(Curve.P3, Curve.EvalPoint(1.0));
    const double T = test::RandomDouble(Random, 0, 1);
    TBezierSegment2D Left;
    TBezierSegment2D Right;
    Curve.Split(T, Left, Right);
    EXPECT_EQ(Curve.P0, Left.P0);
    EXPECT_EQ(Left.P3, Right.P0);
    EXPECT_EQ(Curve.P3, Right.P3);
    for (const double S : {0.1, 0.5, 0.8}) {
      EXPECT_TRUE(Left.EvalPoint(S).Equals(Curve.EvalPoint(T * S), 1e-13));
      EXPECT_TRUE(Right.EvalPoint(S).Equals(Curve.EvalPoint(T + (1 - T) * S), 1e-13));
    }
    EXPECT_NEAR(Curve.CurveLength(), Left.CurveLength() + Right.CurveLength(), 1e-10);
    TBezierSegment2D Self = Curve;  // a result may be the curve itself
    TBezierSegment2D Rest;
    Self.Split(T, Self, Rest);
    EXPECT_EQ(Left, Self);
    EXPECT_EQ(Right, Rest);
  }
}

TEST(TBezierSegment2D, DerivativesAreTheSlopesOfTheCurve) {
  std::mt19937 Random(73);
  constexpr double kStep = 1e-5;
  for (int Round = 0; Round < 200; ++Round) {
    const TBezierSegment2D Curve = RandomCurve(Random);
    const double T = test::RandomDouble(Random, 0, 1);
    const TPoint2D Slope = (Curve.EvalPoint(T + kStep) - Curve.EvalPoint(T - kStep)) / (2 * kStep);
    EXPECT_TRUE(Curve.Derivative(T).Equals(Slope, 1e-6));
    const TPoint2D Bend = (Curve.Derivative(T + kStep) - Curve.Derivative(T - kStep)) / (2 * kStep);
    EXPECT_TRUE(Curve.SecondDerivative(T).Equals(Bend, 1e-6));
  }
}

TEST(TBezierSegment2D, TangentsAreTheLimitDirectionsOfTheEnds) {
  std::mt19937 Random(79);
  for (int Round = 0; Round < 3000; ++Round) {
    const TBezierSegment2D Curve = GridCurve(Random);
    const bool IsPoint = Curve.P0 == Curve.P1 && Curve.P0 == Curve.P2 && Curve.P0 == Curve.P3;
    EXPECT_EQ(IsPoint, Curve.TangentStart() == TPoint2D::FZero);
    EXPECT_EQ(IsPoint, Curve.TangentEnd() == TPoint2D::FZero);
    if (IsPoint) continue;
    const TPoint2D Leaving = (Curve.EvalPoint(1e-3) - Curve.P0).Normal();
    EXPECT_TRUE(Curve.TangentStart().Normal().Equals(Leaving, 0.05));
    const TPoint2D Arriving = (Curve.P3 - Curve.EvalPoint(1 - 1e-3)).Normal();
    EXPECT_TRUE(Curve.TangentEnd().Normal().Equals(Arriving, 0.05));
    EXPECT_EQ(-Curve.TangentEnd(), Curve.Reversed().TangentStart());
  }
}

TEST(TBezierSegment2D, IsLinearMeasuresControlsAgainstTheChord) {
  const struct {
    const char* Name;
    TBezierSegment2D Curve;
    bool Expected;
  } Cases[] = {
      {"straight", {{0, 0}, {1, 0}, {2, 0}, {3, 0}}, true},
      {"a control beyond the end, on the line", {{0, 0}, {9, 0}, {2, 0}, {3, 0}}, true},
      {"in the band", {{0, 0}, {1, 9e-7}, {2, -9e-7}, {3, 0}}, true},
      {"beyond the band", {{0, 0}, {1, 2e-6}, {2, 0}, {3, 0}}, false},
      {"no chord, controls near the point", {{1, 1}, {1, 1 + 9e-7}, {1, 1}, {1, 1}}, true},
      {"no chord, a hairpin", {{1, 1}, {5, 1}, {5, 1}, {1, 1}}, false},
      {"NaN", {{0, 0}, {1, kNaN}, {2, 0}, {3, 0}}, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TLine2D Chord;
    EXPECT_EQ(Case.Expected, Case.Curve.IsLinear(Chord, 1e-6));
    EXPECT_EQ(TLine2D(Case.Curve.P0, Case.Curve.P3), Chord);
  }
}

TEST(TBezierSegment2D, InflexionsWhereTheTurningChangesSides) {
  const struct {
    const char* Name;
    TBezierSegment2D Curve;
    std::vector<double> Places;
  } Cases[] = {
      {"S", {{0, 0}, {1, 1}, {2, -1}, {3, 0}}, {0.5}},
      {"arch", kArch, {}},
      {"parabola", kParabola, {}},
      {"straight", {{0, 0}, {1, 0}, {3, 0}, {4, 0}}, {}},
      {"cusp", kCusp, {}},
      {"cusp resolved into two inflexions", {{0, 0}, {3.9, 4}, {0.1, 4}, {4, 0}}, {0.42, 0.58}},
      {"loop", {{0, 0}, {5, 4}, {-1, 4}, {4, 0}}, {}},
      {"inflexion at the start is left out", {{0, 0}, {1, 0}, {2, 0}, {3, 1}}, {}},
      {"inflexion at the end is left out", {{0, 1}, {1, 0}, {2, 0}, {3, 0}}, {}},
      {"control on the start", {{0, 0}, {0, 0}, {2, 2}, {3, 0}}, {}},
      {"a point", {{1, 1}, {1, 1}, {1, 1}, {1, 1}}, {}},
      {"NaN", {{0, 0}, {1, kNaN}, {2, -1}, {3, 0}}, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const std::vector<double> Places = Case.Curve.CurvatureChangedPlaces();
    ASSERT_EQ(Case.Places.size(), Places.size());
    for (std::size_t I = 0; I < Places.size(); ++I) EXPECT_NEAR(Case.Places[I], Places[I], 0.05);
    EXPECT_EQ(Places.size(), Case.Curve.Reversed().CurvatureChangedPlaces().size());
  }
}

// Turned and moved, a curve keeps its inflexions although the rounding of its controls bends it.
TEST(TBezierSegment2D, InflexionsDoNotComeFromRoundedControls) {
  const struct {
    const char* Name;
    TBezierSegment2D Curve;
    std::size_t Count;
  } Cases[] = {
      {"S", {{0, 0}, {1, 1}, {2, -1}, {3, 0}}, 1},
      {"straight", {{0, 0}, {1, 0}, {3, 0}, {4, 0}}, 0},
      {"straight, in thirds", {{0, 0}, {3, 1}}, 0},
      {"cusp", kCusp, 0},
      {"cusp resolved into two inflexions", {{0, 0}, {3.999, 4}, {0.001, 4}, {4, 0}}, 2},
      {"inflexion at the start", {{0, 0}, {1, 0}, {2, 0}, {3, 1}}, 0},
      {"inflexion at the end", {{0, 1}, {1, 0}, {2, 0}, {3, 0}}, 0},
  };
  std::mt19937 Random(82);
  for (int Round = 0; Round < 300; ++Round) {
    TMatrix2D M;
    M.Rotate(test::RandomDouble(Random, 0, kFullTurn));
    M.Translate(test::RandomDouble(Random, -1e4, 1e4), test::RandomDouble(Random, -10, 10));
    for (const auto& Case : Cases) {
      SCOPED_TRACE(Case.Name);
      TBezierSegment2D Moved = Case.Curve;
      Moved.TransformBy(M);
      ASSERT_EQ(Case.Count, Moved.CurvatureChangedPlaces().size());
    }
  }
}

// Walks along the curve and watches the side to which it turns.
TEST(TBezierSegment2D, InflexionsAreThoseThatAWalkFinds) {
  std::mt19937 Random(83);
  int Found = 0;
  for (int Round = 0; Round < 1500; ++Round) {
    const TBezierSegment2D Curve = RandomCurve(Random);
    std::vector<double> Walked;
    double Last = 0.0;
    for (int I = 0; I < 4000; ++I) {
      const double T = (I + 0.5) / 4000;
      const double Turn = Curve.Derivative(T).CrossMul(Curve.SecondDerivative(T));
      if (Turn * Last < 0.0) Walked.push_back(I / 4000.0);
      Last = Turn;
    }
    const std::vector<double> Places = Curve.CurvatureChangedPlaces();
    if (Places.size() == 2 && Places[1] - Places[0] < 1e-3) continue;  // between two steps
    if (!Places.empty() && (Places.front() < 1e-3 || Places.back() > 1 - 1e-3)) continue;
    ASSERT_EQ(Walked.size(), Places.size());
    for (std::size_t I = 0; I < Places.size(); ++I) {
      EXPECT_NEAR(Walked[I], Places[I], 1e-3);
      ++Found;
    }
  }
  EXPECT_GT(Found, 300);
}

/// The least distance over samples, each neighbourhood of a low one searched by sections.
double SampledDistance(const TBezierSegment2D& Curve, const TPoint2D& P) {
  constexpr int kSamples = 1000;
  const auto Dist = [&](double T) { return P.DistanceTo(Curve.EvalPoint(T)); };
  double Least = kStartOfMinimum;
  for (int I = 0; I <= kSamples; ++I) {
    const double T = static_cast<double>(I) / kSamples;
    double Low = std::max(T - 1.0 / kSamples, 0.0);
    double High = std::min(T + 1.0 / kSamples, 1.0);
    const double Here = Dist(T);
    Least = std::min(Least, Here);
    if (Here > Dist(Low) || Here > Dist(High)) continue;
    for (int Step = 0; Step < 80; ++Step) {
      const double A = Low + (High - Low) / 3;
      const double B = High - (High - Low) / 3;
      (Dist(A) < Dist(B) ? High : Low) = Dist(A) < Dist(B) ? B : A;
    }
    Least = std::min(Least, Dist(Low));
  }
  return Least;
}

TEST(TBezierSegment2D, DistanceAgreesWithAnExhaustiveSearch) {
  std::mt19937 Random(89);
  for (int Round = 0; Round < 600; ++Round) {
    SCOPED_TRACE(Round);
    const bool OnGrid = Round % 2 == 0;
    const TBezierSegment2D Curve = OnGrid ? GridCurve(Random) : RandomCurve(Random);
    const TPoint2D P =
        OnGrid ? test::RandomGridPoint(Random, -1, 4) : test::RandomPoint(Random, -12, 12);
    double T = -1.0;
    TPoint2D Foot;
    const double Dist = Curve.DistanceTo(P, 0.0, T, Foot);
    ASSERT_TRUE(T >= 0.0 && T <= 1.0);
    EXPECT_EQ(Curve.EvalPoint(T), Foot);
    EXPECT_NEAR(Dist, Foot.DistanceTo(P), 1e-13);
    const double Searched = SampledDistance(Curve, P);
    EXPECT_LE(Dist, Searched + 1e-14);
    EXPECT_NEAR(Searched, Dist, 1e-9);
    if (T > 0.0 && T < 1.0) {  // the way to an inner foot is perpendicular
      EXPECT_NEAR(0.0, (Foot - P).DotMul(Curve.Derivative(T)), 1e-11);
    }
  }
}

TEST(TBezierSegment2D, PointsOfTheCurveHaveNoDistance) {
  std::mt19937 Random(97);
  for (int Round = 0; Round < 3000; ++Round) {
    const TBezierSegment2D Curve = RandomCurve(Random);
    const TPoint2D P = Curve.EvalPoint(test::RandomDouble(Random, 0, 1));
    double T = 0.0;
    TPoint2D Foot;
    EXPECT_LE(Curve.DistanceTo(P, 0.0, T, Foot), 5e-15);  // what the rounding of P leaves
  }
}

TEST(TBezierSegment2D, DistanceToAParabolaIsTheTextbookOne) {
  // From (0, c) with c > 1/2 the feet are x = ∓√(c − 1/2), at √(c − 1/4).
  for (const double C : {0.5 + 1e-6, 0.75, 1.0, 2.5, 4.0}) {
    double T = 0.0;
    TPoint2D Foot;
    EXPECT_NEAR(std::sqrt(C - 0.25), kParabola.DistanceTo({0, C}, 0.0, T, Foot), 1e-15);
    EXPECT_NEAR(-std::sqrt(C - 0.5), Foot.X, 1e-9);  // of two equal feet the first
  }
  // In the centre of curvature three feet fall into one.
  double T = 0.0;
  TPoint2D Foot;
  EXPECT_DOUBLE_EQ(0.5, kParabola.DistanceTo({0, 0.5}, 0.0, T, Foot));
  EXPECT_NEAR(0.5, T, 1e-4);
}

TEST(TBezierSegment2D, AFootWithinTheToleranceEndsTheSearch) {
  const TBezierSegment2D Hairpin({0, 0}, {9, 0}, {9, 0}, {0, 5e-4});  // comes back nearly to P0
  double T = 0.0;
  TPoint2D Foot;
  EXPECT_DOUBLE_EQ(5e-4, Hairpin.DistanceTo({0, 5e-4}, 1e-3, T, Foot));
  EXPECT_EQ(0.0, T);
  EXPECT_EQ(0.0, Hairpin.DistanceTo({0, 5e-4}, 1e-4, T, Foot));
  EXPECT_EQ(1.0, T);
}

TEST(TBezierSegment2D, BoundBoxIsTight) {
  std::mt19937 Random(101);
  for (int Round = 0; Round < 300; ++Round) {
    const TBezierSegment2D Curve = Round % 2 == 0 ? GridCurve(Random) : RandomCurve(Random);
    TRect2D Sampled;
    for (int I = 0; I <= 4000; ++I) Sampled = Sampled.Union(Curve.EvalPoint(I / 4000.0));
    EXPECT_TRUE(Curve.GetBoundBox().Contains(Sampled, 1e-14));
    EXPECT_TRUE(Sampled.Contains(Curve.GetBoundBox(), 1e-5));
  }
  EXPECT_EQ(TRect2D({0, 0}, {6, 3}), kArch.GetBoundBox());
}

TEST(TBezierSegment2D, LengthOfCurvesKnownInClosedForm) {
  EXPECT_NEAR(5.0, TBezierSegment2D({1, 1}, {4, 5}).CurveLength(), 1e-14);
  // Twice the way up y = x² to 2: 2·(√17 + asinh(4) / 4).
  EXPECT_NEAR(2 * std::sqrt(17.0) + std::asinh(4.0) / 2, kParabola.CurveLength(), 1e-12);
  // (t³, t²): ∫ t·√(9t² + 4) dt = (13√13 − 8) / 27, at rest at the start.
  const TBezierSegment2D Semicubic({0, 0}, {0, 0}, {0, 1.0 / 3}, {1, 1});
  EXPECT_NEAR((13 * std::sqrt(13.0) - 8) / 27, Semicubic.CurveLength(), 1e-13);
  // There and back: x = 3t(1 − t)·3, to 9/4 and home again, turning inside the interval.
  EXPECT_NEAR(4.5, TBezierSegment2D({0, 0}, {3, 0}, {3, 0}, {0, 0}).CurveLength(), 1e-12);
  // The same shape, 3t(1 − t)(2t − 1) + t³ times three: each cut leaves a turn inside a part.
  const TBezierSegment2D BackAndForth({0, 0}, {-3, 0}, {-3, 0}, {1, 0});
  for (int I = 1; I < 100; ++I) {
    TBezierSegment2D Left;
    TBezierSegment2D Right;
    BackAndForth.Split(I / 100.0, Left, Right);
    EXPECT_NEAR(BackAndForth.CurveLength(), Left.CurveLength() + Right.CurveLength(), 1e-11) << I;
  }
  EXPECT_NEAR(kCusp.CurveLength(), kCusp.Reversed().CurveLength(), 1e-12);
  EXPECT_EQ(0.0, TBezierSegment2D({1, 1}, {1, 1}).CurveLength());
}

TEST(TBezierSegment2D, LengthIsTheLimitOfChords) {
  std::mt19937 Random(103);
  for (int Round = 0; Round < 60; ++Round) {
    const TBezierSegment2D Curve = Round % 2 == 0 ? GridCurve(Random) : RandomCurve(Random);
    const auto Chords = [&](int Count) {
      double Sum = 0.0;
      for (int I = 0; I < Count; ++I) {
        Sum += Curve.EvalPoint(static_cast<double>(I) / Count)
                   .DistanceTo(Curve.EvalPoint((I + 1.0) / Count));
      }
      return Sum;
    };
    EXPECT_NEAR(Chords(20000), Curve.CurveLength(), 2e-7);
  }
}

TEST(TBezierSegment2D, TransformMovesEveryPoint) {
  TMatrix2D M;
  M.Scale(2, -1);
  M.Rotate(0.7, {3, 1});
  TBezierSegment2D Moved = kArch;
  Moved.TransformBy(M);
  for (const double T : {0.0, 0.3, 0.9}) {
    EXPECT_TRUE(Moved.EvalPoint(T).Equals(M.Transform(kArch.EvalPoint(T)), 1e-14));
  }
}

TEST(TBezierSegment2D, HostileCurvesEndQuietly) {
  const double Values[] = {0.0, 1.0, -1e300, 1e300, 1.7e308, 5e-324, kInf, kNaN};
  std::mt19937 Random(1);
  const auto Pick = [&] { return Values[test::RandomInt(Random, 0, 7)]; };
  for (int Round = 0; Round < 3000; ++Round) {
    const TBezierSegment2D Curve({Pick(), Pick()}, {Pick(), Pick()}, {Pick(), Pick()},
                                 {Pick(), Pick()});
    double T = -1.0;
    TPoint2D Foot;
    Curve.DistanceTo({Pick(), Pick()}, 0.0, T, Foot);
    EXPECT_TRUE(T >= 0.0 && T <= 1.0);
    for (const double Place : Curve.CurvatureChangedPlaces()) EXPECT_TRUE(Place > 0 && Place < 1);
    Curve.CurveLength();
    Curve.GetBoundBox();
  }
  // Far out the answer is as good as near: everything scaled by 2^900.
  double Near = 0.0;
  double Far = 0.0;
  TPoint2D Foot;
  constexpr double kScale = 0x1p900;
  TMatrix2D M;
  M.Scale(kScale, kScale);
  TBezierSegment2D Large = kArch;
  Large.TransformBy(M);
  const double Dist = kArch.DistanceTo({2, 1}, 0.0, Near, Foot);
  EXPECT_DOUBLE_EQ(Dist * kScale, Large.DistanceTo(TPoint2D(2, 1) * kScale, 0.0, Far, Foot));
  EXPECT_NEAR(Near, Far, 1e-15);
  EXPECT_NEAR(kArch.CurveLength(), Large.CurveLength() / kScale, 1e-12);
}

}  // namespace
}  // namespace tarnalgo
