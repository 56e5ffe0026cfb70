#include "host/Cadtypes/Numeric.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

std::vector<double> Roots(double A, double B, double C, double D) {
  std::vector<double> Result;
  const int Count = TNumeric::CubicRoot(A, B, C, D, Result);
  EXPECT_EQ(Count, static_cast<int>(Result.size()));
  return Result;
}

TEST(TNumeric, FindsDistinctRootsAscending) {
  const struct {
    const char* Name;
    double A, B, C, D;
    std::vector<double> Expected;
  } Cases[] = {
      {"three", 1, -6, 11, -6, {1, 2, 3}},
      {"double and single", 1, -5, 7, -3, {1, 3}},
      {"single and double", 1, -7, 15, -9, {1, 3}},
      {"triple", 1, -3, 3, -1, {1}},
      {"triple, coefficients rounded", 1, -0.3, 0.03, -0.001, {0.1}},
      {"triple in zero", 2, 0, 0, 0, {0}},
      {"double in zero", 1, -2, 0, 0, {0, 2}},
      {"zero among three", 1, 0, -4, 0, {-2, 0, 2}},
      {"one", 1, 0, 0, -8, {2}},
      {"one beside a far pair", 1, -3, 4, -2, {1}},
      {"quadratic", 0, 1, -3, 2, {1, 2}},
      {"quadratic, double", 0, 1, -2, 1, {1}},
      {"quadratic, none", 0, 1, 0, 1, {}},
      {"linear", 0, 0, 2, -1, {0.5}},
      {"constant", 0, 0, 0, 3, {}},
      {"nothing at all", 0, 0, 0, 0, {}},
      {"sizes far apart", 1, -1e9 - 1 - 1e-9, 1e9 + 1 + 1e-9, -1, {1e-9, 1, 1e9}},
      {"huge coefficients", 1e300, -6e300, 11e300, -6e300, {1, 2, 3}},
      {"tiny coefficients", 1e-300, -6e-300, 11e-300, -6e-300, {1, 2, 3}},
      {"a vanishing leading coefficient", 0x1p-900, 1, 0, -1, {-0x1p900, -1, 1}},
      {"roots out of range are left out", 5e-324, 1e300, 0, -1e300, {-1, 1}},
      {"NaN", 1, kNaN, 0, 0, {}},
      {"infinite", kInf, 1, 0, 0, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const std::vector<double> Found = Roots(Case.A, Case.B, Case.C, Case.D);
    ASSERT_EQ(Case.Expected.size(), Found.size());
    for (std::size_t I = 0; I < Found.size(); ++I) {
      EXPECT_NEAR(Case.Expected[I], Found[I], 1e-15 * (1 + std::abs(Case.Expected[I])));
    }
  }
}

// Newton steps that start far out leave their rounding behind: here 2e-13 of the root.
TEST(TNumeric, ATinyRootIsAsExactAsALargeOne) {
  const double C = 41500534.0;
  const double D = 2.1731858216948282e-05;
  const std::vector<double> Found = Roots(0.003, -3.5e-8, C, D);
  ASSERT_EQ(1U, Found.size());
  EXPECT_DOUBLE_EQ(-D / C, Found[0]);  // what the higher terms add is below 1e-27 of it
}

TEST(TNumeric, AppendsToTheList) {
  std::vector<double> Result{7};
  EXPECT_EQ(2, TNumeric::CubicRoot(0, 1, 0, -49, Result));
  EXPECT_EQ((std::vector<double>{7, -7, 7}), Result);
}

// With integer coefficients the discriminant is exact and tells how many roots there are.
TEST(TNumeric, CountsTheRootsThatTheDiscriminantTells) {
  std::mt19937 Random(107);
  for (int Round = 0; Round < 20000; ++Round) {
    const std::int64_t A = test::RandomInt(Random, 1, 9);
    const std::int64_t B = test::RandomInt(Random, -30, 30);
    const std::int64_t C = test::RandomInt(Random, -30, 30);
    const std::int64_t D = test::RandomInt(Random, -30, 30);
    const std::int64_t Discriminant = 18 * A * B * C * D - 4 * B * B * B * D + B * B * C * C -
                                      4 * A * C * C * C - 27 * A * A * D * D;
    std::size_t Expected = Discriminant > 0 ? 3 : 1;
    if (Discriminant == 0 && B * B != 3 * A * C) Expected = 2;
    const auto ToDouble = [](std::int64_t I) { return static_cast<double>(I); };
    const std::vector<double> Found = Roots(ToDouble(A), ToDouble(B), ToDouble(C), ToDouble(D));
    ASSERT_EQ(Expected, Found.size()) << A << " " << B << " " << C << " " << D;
    for (std::size_t I = 0; I < Found.size(); ++I) {
      const long double X = Found[I];
      const long double Value = ((A * X + B) * X + C) * X + D;
      const long double Slope = (3 * A * X + 2 * B) * X + C;
      // Half an ulp away, or where a double root is flat, as near as rounding leaves it.
      EXPECT_LE(std::abs(Value), std::abs(Slope * X) * 2e-16L + 1e-15L);
      if (I > 0) {
        EXPECT_LT(Found[I - 1], Found[I]);
      }
    }
  }
}

TEST(FloatComparisons, ToleranceDecidesInBothPrecisions) {
  EXPECT_TRUE(fEqual(1.0, 1.5, 0.5));
  EXPECT_FALSE(fEqual(1.0, 1.75, 0.5));
  EXPECT_FALSE(fGreat(1.5, 1.0, 0.5));
  EXPECT_TRUE(fGreat(1.75, 1.0, 0.5));
  EXPECT_FALSE(fSmall(1.0, 1.5, 0.5));
  EXPECT_TRUE(fSmall(1.0, 1.75, 0.5));
  EXPECT_TRUE(fEqual(kInf, kInf, 0.0));
  EXPECT_FALSE(fEqual(kNaN, kNaN, 1.0));
  const long double Hair = 1.0L + 0x1p-60L;  // no double
  EXPECT_FALSE(fEqual(Hair, 1.0L, 0.0L));
  EXPECT_TRUE(fGreat(Hair, 1.0L, 0.0L));
  EXPECT_TRUE(fSmall(1.0L, Hair, 0.0L));
  EXPECT_TRUE(fEqual(Hair, 1.0L, 0x1p-60L));
}

TEST(NormalAngle, TheFlagChoosesTheClosedEnd) {
  EXPECT_EQ(0.0L, NormalAngle(0.0L, false, 0.0L));
  EXPECT_EQ(kFullTurn, NormalAngle(0.0L, true, 0.0L));
  EXPECT_EQ(0.0L, NormalAngle(kFullTurn, false, 0.0L));
  EXPECT_EQ(kFullTurn, NormalAngle(kFullTurn, true, 0.0L));
  EXPECT_EQ(0.0L, NormalAngle(-1e-30L, false, 0.0L));  // never the open end
  EXPECT_EQ(kFullTurn, NormalAngle(-1e-30L, true, 0.0L));
  // A rest that is lost when the base is added must not leave the open end.
  EXPECT_EQ(8.0L + kFullTurn, NormalAngle(8.0L - kFullTurn + 0x1p-61L, true, 8.0L));
  EXPECT_EQ(-kPi, NormalAngle(kPi, false, -kPi));
  EXPECT_EQ(kPi, NormalAngle(-kPi, true, -kPi));
  EXPECT_TRUE(std::isnan(NormalAngle(kNaN, false, 0.0L)));
  std::mt19937 Random(109);
  for (int Round = 0; Round < 2000; ++Round) {
    const double A = test::RandomDouble(Random, -100, 100);
    const double Base = test::RandomDouble(Random, -10, 10);
    for (const bool Flag : {false, true}) {
      const long double Normal = NormalAngle(A, Flag, Base);
      EXPECT_TRUE(Normal >= Base && Normal <= static_cast<long double>(Base) + kFullTurn);
      const long double Turns = (Normal - A) / kFullTurn;
      EXPECT_NEAR(0.0, static_cast<double>(Turns - std::round(Turns)), 1e-17);
    }
  }
}

TEST(TTriangle2D, CircumCenterIsAsFarFromEveryCorner) {
  std::mt19937 Random(113);
  for (int Round = 0; Round < 1000; ++Round) {
    const TPoint2D Far = test::RandomPoint(Random, -1e6, 1e6);
    const TPoint2D P1 = Far + test::RandomPoint(Random, -10, 10);
    const TPoint2D P2 = Far + test::RandomPoint(Random, -10, 10);
    const TPoint2D P3 = Far + test::RandomPoint(Random, -10, 10);
    const TPoint2D Center = TTriangle2D(P1, P2, P3).CircumCenter();
    const double Radius = Center.DistanceTo(P1);
    if (Radius > 1e3) continue;  // a needle
    EXPECT_NEAR(Radius, Center.DistanceTo(P2), 1e-9);
    EXPECT_NEAR(Radius, Center.DistanceTo(P3), 1e-9);
  }
  EXPECT_EQ(TPoint2D(1.5, 2), TTriangle2D({0, 0}, {3, 0}, {0, 4}).CircumCenter());
  const std::string Message = "[Error] TTriangle2D.CircumCenter: 三点共线";
  const TTriangle2D Bad[] = {{{0, 0}, {1, 1}, {3, 3}},
                             {{0, 0}, {0, 0}, {3, 4}},
                             {{2, 2}, {2, 2}, {2, 2}},
                             {{0, 0}, {1, kNaN}, {3, 4}},
                             {{0, 0}, {1, 9e-13}, {2, 0}}};
  for (const TTriangle2D& Triangle : Bad) {
    test::ExpectRaises<EGeometry>([&] { (void)Triangle.CircumCenter(); }, Message);
  }
}

}  // namespace
}  // namespace tarnalgo
