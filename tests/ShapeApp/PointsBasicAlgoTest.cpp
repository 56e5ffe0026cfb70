#include <gtest/gtest.h>

#include <cmath>

#include "geometryAlgo/ShapeApp.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

double Reach(const TPoint2D& Center, const TVPoint2DList& Points) {
  double Result = 0.0;
  for (const TPoint2D& P : Points) Result = std::max(Result, P.DistanceTo(Center));
  return Result;
}

/// The reach is convex in the centre: nested ternary searches find its least value.
double LeastReach(const TVPoint2DList& Points) {
  const auto Least = [](auto Of) {
    double Low = -10.0;
    double High = 10.0;
    for (int I = 0; I < 100; ++I) {
      const double A = Low + (High - Low) / 3.0;
      const double B = High - (High - Low) / 3.0;
      (Of(A) < Of(B) ? High : Low) = Of(A) < Of(B) ? B : A;
    }
    return Of(Low);
  };
  return Least([&](double X) { return Least([&](double Y) { return Reach({X, Y}, Points); }); });
}

TEST(TPointsBasicAlgo, SmallestCircleHoldsAllAndNoneIsSmaller) {
  std::mt19937 Random(513);
  for (int Round = 0; Round < 60; ++Round) {
    TVPoint2DList Points;
    for (int I = 1 + Round % 15; I > 0; --I) {
      Points.Add(Round % 2 == 0 ? test::RandomGridPoint(Random, -3, 3)
                                : test::RandomPoint(Random, -9, 9));
    }
    const TVCircle2D Circle = TPointsBasicAlgo::FindMinCircle(Points);
    EXPECT_LE(Reach(Circle.Center, Points), Circle.Radius * (1 + 1e-9));
    EXPECT_NEAR(LeastReach(Points), Circle.Radius, 1e-6);
  }
}

TEST(TPointsBasicAlgo, SmallestCircleOfManyOnOneCircle) {
  TVPoint2DList Points{{NAN, 0}, {0, INFINITY}};
  for (int I = 0; I < 100000; ++I) Points.Add(TPoint2D(1e3, 0).RotateBy(I) + TPoint2D(1e6, 0));
  const TVCircle2D Circle = TPointsBasicAlgo::FindMinCircle(Points);
  EXPECT_NEAR(1e3, Circle.Radius, 1e-6);
  EXPECT_NEAR(1e6, Circle.Center.X, 1e-6);
  EXPECT_EQ(0.0, TPointsBasicAlgo::FindMinCircle({}).Radius);
  EXPECT_EQ(TPoint2D(3, 4), TPointsBasicAlgo::FindMinCircle({{3, 4}, {3, 4}}).Center);
  EXPECT_EQ(TPoint2D(5e-324, 4), TPointsBasicAlgo::FindMinCircle({{5e-324, 4}}).Center);
}

// A triangle with right angle at the first corner, scaled and moved.
TEST(TPointsBasicAlgo, SmallestCircleOfAnySizeAnywhere) {
  const struct {
    double Size;
    TPoint2D Place;
  } Cases[] = {{1e300, {}}, {1e-300, {}}, {1e-3, {1e6, -1e6}}, {1.0, {1e12, 1e12}}};
  for (const auto& [Size, Place] : Cases) {
    SCOPED_TRACE(Size);
    TVPoint2DList Points;
    for (const TPoint2D& P : {TPoint2D(0, 0), TPoint2D(4, 0), TPoint2D(0, 3), TPoint2D(1, 1)}) {
      Points.Add(Place + P * Size);
    }
    const TVCircle2D Circle = TPointsBasicAlgo::FindMinCircle(Points);
    EXPECT_NEAR(2.5, Circle.Radius / Size, 1e-3);
    EXPECT_LE(Reach(Circle.Center, Points), Circle.Radius * (1 + 1e-9));
  }
}

TEST(TPointsBasicAlgo, CircleOfThreePoints) {
  const auto Of = TPointsBasicAlgo::FindMinCircleOf3Point;
  EXPECT_DOUBLE_EQ(5.0, Of({0, 0}, {6, 0}, {0, 8}).Radius);  // right
  EXPECT_DOUBLE_EQ(4.0, Of({1, 1}, {0, 0}, {8, 0}).Radius);  // obtuse
  EXPECT_DOUBLE_EQ(2.0, Of({0, 0}, {4, 0}, {1, 0}).Radius);  // flat
  EXPECT_DOUBLE_EQ(0.0, Of({2, 2}, {2, 2}, {2, 2}).Radius);
  const TVCircle2D Acute = Of({-3, 4}, {3, 4}, {0, -5});
  EXPECT_DOUBLE_EQ(5.0, Acute.Radius);
  EXPECT_NEAR(0.0, Acute.Center.Mag(), 1e-15);
}

}  // namespace
}  // namespace tarnalgo
