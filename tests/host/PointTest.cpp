#include "host/Cadtypes/Point.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

TEST(TPoint2D, EqualsWithinTheTolerance) {
  EXPECT_TRUE(TPoint2D(1, 1).Equals({1 + 5e-7, 1}, 1e-6));
  EXPECT_FALSE(TPoint2D(1, 1).Equals({1 + 2e-6, 1}, 1e-6));
  EXPECT_FALSE(TPoint2D(0, 0).Equals({9e-7, 9e-7}, 1e-6));  // the distance decides, not each axis
  EXPECT_TRUE(TPoint2D(3, 4).Equals({3, 4}, 0.0));
  EXPECT_FALSE(TPoint2D(0, 0).Equals({5e-324, 0}, 0.0));  // whose square is 0
  EXPECT_FALSE(TPoint2D(std::nan(""), 0).Equals({std::nan(""), 0}));
}

TEST(TPoint2D, AngleFromItselfIsExactlyZero) {
  std::mt19937 Random(11);
  for (int Round = 0; Round < 5000; ++Round) {
    const TPoint2D V = test::RandomPoint(Random, -1e3, 1e3);
    EXPECT_EQ(0.0, V.AngleFrom(V));
    const TPoint2D W = test::RandomPoint(Random, -1e3, 1e3);
    const double Angle = W.AngleFrom(V);
    EXPECT_TRUE(Angle >= 0.0 && Angle < kFullTurn);
    EXPECT_TRUE(V.RotateBy(Angle).IsParallelTo(W, 1e-12));
    EXPECT_GT(V.RotateBy(Angle).DotMul(W), 0.0);
  }
}

TEST(TPoint2D, AnglesStayBelowAFullTurn) {
  EXPECT_EQ(0.0, TPoint2D(1, -1e-30).Angle());
  EXPECT_EQ(0.0, TPoint2D(1, -1e-30).AngleFrom({1, 0}));
  EXPECT_EQ(0.0, TPoint2D(0, 0).Angle());
  EXPECT_DOUBLE_EQ(1.5 * kPi, TPoint2D(0, -2).Angle());
  EXPECT_DOUBLE_EQ(kPi, TPoint2D(1, 0).AngleBetween({-3, 0}));
}

TEST(TPoint2D, AVectorWithoutDirectionHasAngleZero) {
  for (const double X : {0.0, -0.0}) {
    for (const double Y : {0.0, -0.0}) {
      const TPoint2D Zero(X, Y);  // the signs must not make a direction of it
      EXPECT_EQ(0.0, Zero.Angle());
      for (const TPoint2D& V : {TPoint2D(-1, -1), TPoint2D(-3, 0), Zero}) {
        EXPECT_EQ(0.0, V.AngleFrom(Zero));
        EXPECT_EQ(0.0, Zero.AngleFrom(V));
        EXPECT_EQ(0.0, Zero.AngleBetween(V));
      }
    }
  }
  EXPECT_EQ(0.0, TPoint2D(1, std::nan("")).AngleFrom({-1, 0}));
  EXPECT_EQ(0.0, TPoint2D(-1, 0).AngleBetween({1, std::nan("")}));
  EXPECT_EQ(0.0, TPoint2D(-1, HUGE_VAL).Angle());
}

TEST(TPoint2D, LengthAndDirectionSurviveExtremeCoordinates) {
  EXPECT_DOUBLE_EQ(5e200, TPoint2D(3e200, 4e200).Mag());
  EXPECT_DOUBLE_EQ(5e-200, TPoint2D(3e-200, 4e-200).Mag());
  EXPECT_TRUE(TPoint2D(3e200, 4e200).Normal().Equals({0.6, 0.8}, 1e-15));
  EXPECT_TRUE(TPoint2D(3e-310, 4e-310).Normal().Equals({0.6, 0.8}, 1e-12));
  EXPECT_EQ(TPoint2D::FZero, TPoint2D(0, 0).Normal());
}

// Whose products overflow, or are 0.
TEST(TPoint2D, AnglesBetweenVectorsOfAnyLength) {
  for (const double Scale : {1e200, 1e-200}) {
    const TPoint2D Long = TPoint2D(3, 4) * Scale;
    EXPECT_DOUBLE_EQ(TPoint2D(3, 4).AngleFrom({5, -2}), Long.AngleFrom(TPoint2D(5, -2) * Scale));
    EXPECT_DOUBLE_EQ(kQuarterTurn, Long.AngleBetween(TPoint2D(8, -6) * Scale));
    EXPECT_EQ(0.0, Long.AngleFrom(Long));
  }
  EXPECT_EQ(0.0, TPoint2D(3, 4).AngleFrom({0, 0}));
}

TEST(TPoint2D, RoundsHalvesToEvenAndLeavesHugeValues) {
  EXPECT_EQ(TPoint2D(0.12, -0.12), TPoint2D(0.125, -0.125).RoundTo(2));
  EXPECT_EQ(TPoint2D(2, 4), TPoint2D(2.5, 3.5).RoundTo(0));
  EXPECT_EQ(TPoint2D(1e300, 0), TPoint2D(1e300, 0.4).RoundTo(0));
  EXPECT_EQ(TPoint2D(100, 300), TPoint2D(149, 251).RoundTo(-2));
  EXPECT_EQ(TPoint2D(1e300, 0), TPoint2D(1e300, 0).RoundTo(400));
  EXPECT_EQ(TPoint2D(0, 0), TPoint2D(1e300, -3).RoundTo(-400));
  EXPECT_EQ(TPoint2D(1.7e308, 1e308), TPoint2D(1.7e308, 1.2e308).RoundTo(-308));
  // The reciprocal of 10^5 is no double: multiplying by it missed whole multiples and halves.
  for (int K = 0; K < 1000; ++K) {
    const int Even = K % 2 == 0 ? K : K + 1;
    EXPECT_EQ(TPoint2D(K * 1e5, Even * 1e5), TPoint2D(K * 1e5, K * 1e5 + 5e4).RoundTo(-5));
  }
}

}  // namespace
}  // namespace tarnalgo
