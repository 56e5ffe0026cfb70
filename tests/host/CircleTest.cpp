#include "host/Cadtypes/Circle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

TEST(TCircle2D, CountsCommonPointsOfCircles) {
  const struct {
    const char* Name;
    TCircle2D A, B;
    int Count;
  } Cases[] = {
      {"crossing", {{0, 0}, 5}, {{6, 0}, 5}, 2},
      {"outside", {{0, 0}, 5}, {{11, 0}, 5}, 0},
      {"inside", {{0, 0}, 5}, {{1, 0}, 2}, 0},
      {"touching from outside", {{0, 0}, 5}, {{0, 8}, 3}, 1},
      {"touching from outside, gap in the band", {{0, 0}, 5}, {{8 + 9e-7, 0}, 3}, 1},
      {"touching from outside, depth in the band", {{0, 0}, 5}, {{8 - 9e-7, 0}, 3}, 1},
      {"gap beyond the band", {{0, 0}, 5}, {{8 + 2e-6, 0}, 3}, 0},
      {"depth beyond the band", {{0, 0}, 5}, {{8 - 2e-6, 0}, 3}, 2},
      {"touching from inside", {{0, 0}, 5}, {{2, 0}, 3}, 1},
      {"touching from inside, in the band", {{0, 0}, 5}, {{2 - 9e-7, 0}, 3}, 1},
      {"inside beyond the band", {{0, 0}, 5}, {{2 - 2e-6, 0}, 3}, 0},
      {"the same", {{1, 2}, 5}, {{1, 2}, 5}, 0},
      {"the same within the tolerance", {{1, 2}, 5}, {{1, 2 + 5e-7}, 5 + 3e-7}, 0},
      {"concentric", {{1, 2}, 5}, {{1, 2}, 4}, 0},
      {"a point on the rim", {{0, 0}, 5}, {{3, 4}, 0}, 1},
      {"a negative radius", {{0, 0}, 5}, {{6, 0}, -5}, 0},
      {"a negative radius within the tolerance of a point", {{0, 0}, 5}, {{5, 0}, -5e-7}, 0},
      {"a negative radius beyond all digits of the other", {{0, 0}, 1e300}, {{1e300, 0}, -5}, 0},
      {"NaN", {{0, kNaN}, 5}, {{6, 0}, 5}, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TIntersectPoint2D I1;
    TIntersectPoint2D I2;
    EXPECT_EQ(Case.Count, Case.A.Intersect(Case.B, I1, I2));
    EXPECT_EQ(Case.Count, Case.B.Intersect(Case.A, I1, I2));
  }
}

// Whatever the formula: a common point lies at the radius from both centres, its parameters name
// it, and the first one lies on the right of the way from centre to centre.
TEST(TCircle2D, CommonPointsLieOnBothCircles) {
  std::mt19937 Random(41);
  int Pairs = 0;
  for (int Round = 0; Round < 5000; ++Round) {
    const double Ratio = std::pow(10.0, test::RandomDouble(Random, -4, 4));
    const TCircle2D A(test::RandomPoint(Random, -10, 10), test::RandomDouble(Random, 1, 10));
    const TCircle2D B(A.PointAtAngle(test::RandomDouble(Random, 0, 7)) +
                          test::RandomPoint(Random, -1, 1).Normal() * A.Radius * Ratio,
                      A.Radius * Ratio * test::RandomDouble(Random, 0.8, 1.2));
    TIntersectPoint2D I[2];
    const int Count = A.Intersect(B, I[0], I[1]);
    if (Count != 2) continue;
    ++Pairs;
    const double Allowed = 1e-14 * (A.Radius + B.Radius + 20);
    for (const auto& Point : I) {
      EXPECT_NEAR(A.Radius, Point.Point.DistanceTo(A.Center), Allowed);
      EXPECT_NEAR(B.Radius, Point.Point.DistanceTo(B.Center), Allowed);
      EXPECT_TRUE(A.PointAtAngle(Point.Param1).Equals(Point.Point, 1e-9 * (1 + A.Radius)));
      EXPECT_TRUE(B.PointAtAngle(Point.Param2).Equals(Point.Point, 1e-9 * (1 + B.Radius)));
    }
    EXPECT_LT((B.Center - A.Center).CrossMul(I[0].Point - A.Center), 0.0);
    EXPECT_GT((B.Center - A.Center).CrossMul(I[1].Point - A.Center), 0.0);
  }
  EXPECT_GT(Pairs, 1000);
}

TEST(TCircle2D, CountsCommonPointsWithALine) {
  const TCircle2D Circle({1, 2}, 5);
  const struct {
    const char* Name;
    double Y;
    int Count;
  } Cases[] = {
      {"through the centre", 2, 2},
      {"above", 8, 0},
      {"touching", 7, 1},
      {"gap in the band", 7 + 9e-7, 1},
      {"depth in the band", 7 - 9e-7, 1},
      {"gap beyond the band", 7 + 2e-6, 0},
      {"depth beyond the band", 7 - 2e-6, 2},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    for (const TLine2D& Line : {TLine2D({-50, Case.Y}, {-49, Case.Y}),  // infinite: far beside it
                                TLine2D({50, Case.Y}, {-7, Case.Y})}) {
      TIntersectPoint2D I1;
      TIntersectPoint2D I2;
      ASSERT_EQ(Case.Count, Circle.Intersect(Line, I1, I2));
      if (Case.Count > 0) {
        EXPECT_NEAR(5.0, I1.Point.DistanceTo(Circle.Center), 1.1e-6);
        EXPECT_TRUE(I1.Point.Equals(Line.PointAt(I1.Param2), 1e-9));
      }
      if (Case.Count == 2) {
        EXPECT_LT(I1.Param2, I2.Param2);
      }
    }
  }
  TIntersectPoint2D I1;
  TIntersectPoint2D I2;
  EXPECT_EQ(1, Circle.Intersect(TLine2D({4, 6}, {4, 6}), I1, I2));
  EXPECT_EQ(TPoint2D(4, 6), I1.Point);
  EXPECT_EQ(0, Circle.Intersect(TLine2D({1, 2}, {1, 2}), I1, I2));
  EXPECT_EQ(1, TCircle2D({1, 2}, 0).Intersect(TLine2D({0, 2}, {9, 2}), I1, I2));
  EXPECT_EQ(TPoint2D(1, 2), I1.Point);
}

TEST(TCircle2D, CutsOfALineKeepTheirDigitsNearTheTangent) {
  // Half the chord of a line at depth 1e-5 under the top of a circle of radius 1e4.
  const TCircle2D Circle({0, 0}, 1e4);
  TIntersectPoint2D I1;
  TIntersectPoint2D I2;
  const double Y = 1e4 - 0x1p-17;  // exact in binary
  ASSERT_EQ(2, Circle.Intersect(TLine2D({-3, Y}, {2, Y}), I1, I2));
  const long double Half = std::sqrt(0x1p-17L * (2e4L - 0x1p-17L));
  EXPECT_NEAR(static_cast<double>(Half), I2.Point.X, 1e-15);
  EXPECT_NEAR(static_cast<double>(-Half), I1.Point.X, 1e-15);
}

TEST(TCircle2D, HostileCirclesEndQuietly) {
  const double Values[] = {0.0, 1.0, -1.0, 1e300, 5e-324, kInf, kNaN};
  for (const double X : Values) {
    for (const double R1 : Values) {
      for (const double R2 : Values) {
        TIntersectPoint2D I1;
        TIntersectPoint2D I2;
        const int Count = TCircle2D({0, 0}, R1).Intersect(TCircle2D({X, 0}, R2), I1, I2);
        EXPECT_TRUE(Count >= 0 && Count <= 2);
        TCircle2D({0, 0}, R1).Intersect(TLine2D({X, 0}, {R2, 1}), I1, I2);
        TCircle2D({X, 0}, R1).GetBoundBox();
      }
    }
  }
  TIntersectPoint2D I1;
  TIntersectPoint2D I2;
  ASSERT_EQ(2, TCircle2D({0, 0}, 1e300).Intersect(TCircle2D({1e300, 0}, 1e300), I1, I2));
  EXPECT_TRUE((I2.Point / 1e300).Equals({0.5, std::sqrt(0.75)}, 1e-14));
}

}  // namespace
}  // namespace tarnalgo
