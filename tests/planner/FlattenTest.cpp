#include "examples/sheet_planner/Flatten.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>

#include "tests/planner/PlanChecks.h"
#include "tests/support/Generate.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// Cox and de Boor's recursion, slow and plainly the definition.
double Basis(const TSplineCurve& Curve, std::size_t I, int Degree, double T) {
  const std::vector<double>& U = Curve.Knots;
  if (Degree == 0) return U[I] <= T && T < U[I + 1] ? 1.0 : 0.0;
  const auto P = static_cast<std::size_t>(Degree);
  double Sum = 0.0;
  if (U[I + P] > U[I]) Sum += (T - U[I]) / (U[I + P] - U[I]) * Basis(Curve, I, Degree - 1, T);
  if (U[I + P + 1] > U[I + 1]) {
    Sum += (U[I + P + 1] - T) / (U[I + P + 1] - U[I + 1]) * Basis(Curve, I + 1, Degree - 1, T);
  }
  return Sum;
}

TPoint2D PointAt(const TSplineCurve& Curve, double T) {
  TPoint2D Sum;
  double Weights = 0.0;
  for (std::size_t I = 0; I < Curve.Controls.size(); ++I) {
    const double Weight = Curve.Weights.empty() ? 1.0 : Curve.Weights[I];
    const double Share = Basis(Curve, I, Curve.Degree, T) * Weight;
    Sum = Sum + Curve.Controls[I] * Share;
    Weights += Share;
  }
  return Sum / Weights;
}

TEST(FlattenSpline, StaysWithinTheChordError) {
  std::mt19937 Random(11);
  for (int Round = 0; Round < 40; ++Round) {
    SCOPED_TRACE(Round);
    TSplineCurve Curve;
    Curve.Degree = tarnalgo::test::RandomInt(Random, 1, 5);
    const int Count = Curve.Degree + 1 + tarnalgo::test::RandomInt(Random, 0, 6);
    for (int I = 0; I < Count; ++I) {
      Curve.Controls.push_back(tarnalgo::test::RandomPoint(Random, -50, 50));
      if (Round % 2 == 1) {
        Curve.Weights.push_back(tarnalgo::test::RandomDouble(Random, 0.2, 5));
      }
    }
    double Knot = 0.0;
    for (int I = 0; I < Count + Curve.Degree + 1; ++I) {
      // Steps of 0 too: repeated knots, clamped ends.
      const bool IsClamped = Round % 3 == 0 && (I <= Curve.Degree || I > Count);
      if (!IsClamped) Knot += tarnalgo::test::RandomInt(Random, 0, 3);
      Curve.Knots.push_back(Knot);
    }
    if (!Curve.IsSound()) continue;
    const double From = Curve.Knots[static_cast<std::size_t>(Curve.Degree)];
    const double To = Curve.Knots[static_cast<std::size_t>(Count)];
    for (const double Error : {1.0, 0.01}) {
      const std::vector<TPoint2D> Points = Flatten(Curve, Error);
      EXPECT_TRUE(Points.front().Equals(PointAt(Curve, From), 1e-9));
      for (int I = 0; I < 300; ++I) {
        EXPECT_LE(test::Distance(PointAt(Curve, From + (To - From) * I / 300), Points),
                  Error + 1e-9);
      }
    }
  }
}

TEST(FlattenSpline, RefusesWhatIsNoSpline) {
  const TSplineCurve Sound{1, {0, 0, 1, 1}, {{0, 0}, {1, 0}}, {}};
  EXPECT_TRUE(Sound.IsSound());
  const struct {
    const char* Name;
    TSplineCurve Curve;
  } Cases[] = {
      {"too few controls", {3, {0, 0, 0, 1, 1, 1}, {{0, 0}, {1, 0}}, {}}},
      {"too few knots", {1, {0, 1, 1}, {{0, 0}, {1, 0}}, {}}},
      {"falling knots", {1, {0, 1, 0, 1}, {{0, 0}, {1, 0}}, {}}},
      {"a jump", {1, {0, 0, 1, 1, 2, 2}, {{0, 0}, {1, 0}, {5, 0}, {6, 0}}, {}}},
      {"an empty domain", {1, {0, 1, 1, 2}, {{0, 0}, {1, 0}}, {}}},
      {"knots that are no numbers", {1, {0, std::nan(""), 1, 1}, {{0, 0}, {1, 0}}, {}}},
      {"weight 0", {1, {0, 0, 1, 1}, {{0, 0}, {1, 0}}, {1, 0}}},
      {"degree 1000000", {1000000, {0, 0, 1, 1}, {{0, 0}, {1, 0}}, {}}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_FALSE(Case.Curve.IsSound());
  }
}

TEST(SplineThrough, MeetsItsPointsSmoothly) {
  const std::vector<TPoint2D> Open{{0, 0}, {3, 1}, {3, 1}, {4, 5}, {9, 2}, {10, 10}};
  const std::vector<TPoint2D> Closed{{0, 0}, {8, -1}, {9, 6}, {2, 5}, {0, 0}};
  for (const auto& Points : {Open, Closed}) {
    const TSplineCurve Curve = SplineThrough(Points);
    ASSERT_TRUE(Curve.IsSound());
    for (const TPoint2D& P : Points) EXPECT_LE(test::Distance(P, Flatten(Curve, 1e-4)), 1e-9);
    // First and second derivative by differences on both sides of each inner knot.
    constexpr double H = 1e-3;
    for (std::size_t K = 4; K + 4 < Curve.Knots.size(); K += 3) {
      const double T = Curve.Knots[K];
      const auto At = [&](double Step) { return PointAt(Curve, T + Step * H); };
      EXPECT_TRUE(((At(0) - At(-1)) / H).Equals((At(1) - At(0)) / H, 0.02));
      const TPoint2D Before = (At(-3) - At(-2) * 2 + At(-1)) / (H * H);
      const TPoint2D After = (At(1) - At(2) * 2 + At(3)) / (H * H);
      EXPECT_TRUE(Before.Equals(After, 0.05));
    }
  }
  EXPECT_FALSE(SplineThrough({}).IsSound());
  EXPECT_FALSE(SplineThrough({{1, 1}, {1, 1}}).IsSound());
}

TEST(FlattenEllipse, StaysWithinTheChordErrorAndCloses) {
  const TEllipseArc Full{{3, 4}, {10, 2}, {-1, 5}, 0.3, 0.3 + kFullTurn};
  for (const double Error : {1.0, 0.05, 1e-4}) {
    const std::vector<TPoint2D> Points = Flatten(Full, Error);
    EXPECT_EQ(Points.front(), Points.back());
    for (int I = 0; I < 1000; ++I) {
      const double T = kFullTurn * I / 1000;
      const TPoint2D P = Full.Center + Full.A * std::cos(T) + Full.B * std::sin(T);
      EXPECT_LE(test::Distance(P, Points), Error + 1e-9);
    }
  }
  const TEllipseArc Part{{0, 0}, {2, 0}, {0, 1}, 0.0, kPi};
  EXPECT_TRUE(Flatten(Part, 0.01).front().Equals({2, 0}));
  EXPECT_TRUE(Flatten(Part, 0.01).back().Equals({-2, 0}));
  EXPECT_LE(Flatten(TEllipseArc{{0, 0}, {1e9, 0}, {0, 1e9}}, 1e-6).size(), 5000U);
  EXPECT_GE(Flatten(TEllipseArc{{0, 0}, {0, 0}, {0, 0}}, 0.01).size(), 2U);
}

TEST(IsStraight, WantsOneWayOnOneLine) {
  EXPECT_TRUE(IsStraight({{0, 0}, {1, 1e-6}, {2, 0}}));
  EXPECT_FALSE(IsStraight({{0, 0}, {1, 1e-3}, {2, 0}}));
  EXPECT_FALSE(IsStraight({{0, 0}, {3, 0}, {2, 0}}));
  EXPECT_FALSE(IsStraight({{0, 0}, {0, 0}}));
}

}  // namespace

}  // namespace sheet_planner
