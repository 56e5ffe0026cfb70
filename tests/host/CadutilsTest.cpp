#include "host/Cadutils.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

TEST(TMathUtils, ToleranceDecidesAtItsEdge) {
  EXPECT_TRUE(TMathUtils::IsInFloatRange(1.0000005, 0, 1, true, true, 1e-6));
  EXPECT_FALSE(TMathUtils::IsInFloatRange(1.0000005, 0, 1, true, false, 1e-6));
  EXPECT_FALSE(TMathUtils::IsInFloatRange(0.9999995, 0, 1, true, false, 1e-6));
  EXPECT_TRUE(TMathUtils::IsInFloatRange(0.999998, 0, 1, true, false, 1e-6));
  EXPECT_TRUE(TMathUtils::FloatGreaterEquals(1.0, 1.5, 0.5));
  EXPECT_FALSE(TMathUtils::FloatGreaterEquals(std::nextafter(1.0, 0.0), 1.5, 0.5));
  for (const double X : {-1.0, 0.0, 0.5, 1.0, 2.0}) {
    const bool IsInside = X == 0.5;
    EXPECT_EQ(IsInside, TMathUtils::IsInRange(X, 0, 1, false, false));
    EXPECT_EQ(IsInside || X == 0.0, TMathUtils::IsInRange(X, 0, 1, true, false));
    EXPECT_EQ(IsInside || X == 1.0, TMathUtils::IsInRange(X, 0, 1, false, true));
  }
  EXPECT_EQ(0, TMathUtils::CompareFloat(1.0, 1.0 + 9e-7));
  EXPECT_EQ(-1, TMathUtils::CompareFloat(1.0, 1.0 + 2e-6));
  EXPECT_EQ(1, TMathUtils::CompareFloat(kInf, 0.0));
  EXPECT_EQ(0, TMathUtils::CompareFloat(kInf, kInf));
  EXPECT_EQ(0, TMathUtils::CompareFloat(kNaN, 0.0));
  EXPECT_FALSE(TMathUtils::FloatEquals(kNaN, kNaN));
}

TEST(TMathUtils, CyclicIncrementStaysBelowThePeriod) {
  EXPECT_EQ(0, TMathUtils::CycInc(6, 1, 7));
  EXPECT_EQ(6, TMathUtils::CycInc(0, -1, 7));
  EXPECT_EQ(1, TMathUtils::CycInc(std::numeric_limits<int>::max(), 1, 2147483647));
  EXPECT_EQ(0, TMathUtils::CycInc(3, 1, 0));
  EXPECT_EQ(0.0, TMathUtils::CycInc(0.0, -1e-20, kFullTurn));
  EXPECT_EQ(0.0, TMathUtils::CycInc(1.0, kInf, kFullTurn));
  std::mt19937 Random(7);
  for (int Round = 0; Round < 2000; ++Round) {
    const double X = test::RandomDouble(Random, -50, 50);
    const double Step = test::RandomDouble(Random, -50, 50);
    const double Turned = TMathUtils::CycInc(X, Step, kFullTurn);
    EXPECT_TRUE(Turned >= 0.0 && Turned < kFullTurn) << X << " " << Step;
    const double Turns = (X + Step - Turned) / kFullTurn;
    EXPECT_NEAR(Turns, std::round(Turns), 1e-12);
  }
}

TEST(TMathUtils, ForwardDistanceForgivesAHairBehind) {
  EXPECT_DOUBLE_EQ(3.0, TMathUtils::CycDist(9.0, 2.0, 10.0));
  EXPECT_EQ(0.0, TMathUtils::CycDist(2.0, 2.0 - 5e-7, 10.0));
  EXPECT_NEAR(10.0, TMathUtils::CycDist(2.0, 2.0 - 2e-6, 10.0), 3e-6);
}

TEST(TMathUtils, CircleRangeWrapsAndKeepsItsSlack) {
  const struct {
    const char* Name;
    double X, Low, High;
    bool Expected;
  } Cases[] = {
      {"plain", 1.0, 0.5, 2.0, true},
      {"other side", 3.0, 0.5, 2.0, false},
      {"across zero", 0.1, 6.0, 0.5, true},
      {"across zero, outside", 1.0, 6.0, 0.5, false},
      {"slack before the low end over the wrap", kFullTurn - 5e-7, 0.0, 1.0, true},
      {"slack past the high end", 1.0 + 5e-7, 0.0, 1.0, true},
      {"single angle", 1.0, 1.0, 1.0, true},
      {"beside the single angle", 1.1, 1.0, 1.0, false},
      {"full turn", 4.0, 1.0, 1.0 + kFullTurn, true},
      {"NaN", kNaN, 0.0, 1.0, false},
      {"from NaN", 0.0, kNaN, 1.0, false},
      {"to NaN", 0.0, 0.0, kNaN, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, TMathUtils::IsInFloatCircleRange(Case.X, Case.Low, Case.High));
  }
}

TEST(TMathUtils, DistanceToRangeIsZeroWithinTheSlack) {
  EXPECT_EQ(0.0, TMathUtils::DistToRange(2.0 + 5e-7, 1.0, 2.0));
  EXPECT_DOUBLE_EQ(1.0, TMathUtils::DistToRange(3.0, 1.0, 2.0));
  EXPECT_DOUBLE_EQ(4.0, TMathUtils::DistToRange(-3.0, 1.0, 2.0));
}

TEST(TMathUtils, QuadraticKeepsTheSmallRoot) {
  double X1 = 77;
  double X2 = 78;
  EXPECT_EQ(0, TMathUtils::CalcQuadraticEquation(1, 0, 1, X1, X2));
  EXPECT_EQ(0, TMathUtils::CalcQuadraticEquation(0, 0, 1, X1, X2));
  EXPECT_EQ(0, TMathUtils::CalcQuadraticEquation(1, kNaN, -1, X1, X2));
  EXPECT_EQ(0, TMathUtils::CalcQuadraticEquation(1, 0, kNaN, X1, X2));
  EXPECT_EQ(77, X1);
  EXPECT_EQ(1, TMathUtils::CalcQuadraticEquation(0, 2, -1, X1, X2));
  EXPECT_EQ(0.5, X1);
  EXPECT_EQ(1, TMathUtils::CalcQuadraticEquation(1, -4, 4, X1, X2));
  EXPECT_EQ(2.0, X1);
  EXPECT_EQ(2.0, X2);
  // x² − 1e9 x + 1: the textbook formula answers 0 for the root 1e-9.
  EXPECT_EQ(2, TMathUtils::CalcQuadraticEquation(1, -1e9, 1, X1, X2));
  EXPECT_NEAR(1e-9, X1, 1e-24);
  EXPECT_EQ(2, TMathUtils::CalcQuadraticEquation(-1, 0, 4, X1, X2));
  EXPECT_EQ(-2.0, X1);
  EXPECT_EQ(2.0, X2);
  // Roots beyond the range of a double are no answer.
  EXPECT_EQ(1, TMathUtils::CalcQuadraticEquation(1e-320, 1, 1, X1, X2));
  EXPECT_EQ(-1.0, X1);
  EXPECT_EQ(-1.0, X2);
  EXPECT_EQ(0, TMathUtils::CalcQuadraticEquation(1e-320, 0, -1e308, X1, X2));
  EXPECT_EQ(0, TMathUtils::CalcQuadraticEquation(0, 1e-300, 1e300, X1, X2));
  EXPECT_EQ(-1.0, X1);
}

}  // namespace
}  // namespace tarnalgo
