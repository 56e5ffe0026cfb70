#include "host/Cadtypes/Tolerance.h"

#include <gtest/gtest.h>

#include <cmath>

#include "host/Cadtypes/Rect.h"

namespace tarnalgo {
namespace {

TEST(TGeTolerance, EqualPointsFollowTheFirstMember) {
  TGeTolerance Tol(0.5, 1e-3);
  EXPECT_TRUE(Tol.PointEquals({0, 0}, {0.3, 0.4}));
  EXPECT_FALSE(Tol.PointEquals(0, 0, 0.3, 0.41));
  Tol.SetEqualPoint(1.0);
  EXPECT_TRUE(Tol.PointEquals(0, 0, 0.3, 0.41));
  EXPECT_TRUE(DefTol.PointEquals({0, 0}, {5e-7, 0}));
  EXPECT_FALSE(DefTol.PointEquals({0, 0}, {2e-6, 0}));
}

TEST(TGeInterval, MeetsAcrossAGapOfUpToTheLargerTolerance) {
  const struct {
    const char* Name;
    TGeInterval A, B;
    bool Meets;
    double Lower, Upper;
  } Cases[] = {
      {"overlap", {0, 5, 1e-6}, {3, 9, 1e-6}, true, 3, 5},
      {"contained", {0, 9, 1e-6}, {3, 5, 1e-6}, true, 3, 5},
      {"touching", {0, 3, 0}, {3, 5, 0}, true, 3, 3},
      {"bounds the other way round", {5, 0, 1e-6}, {9, 3, 1e-6}, true, 3, 5},
      {"gap within one tolerance", {0, 3, 0}, {3.25, 5, 0.5}, true, 3.125, 3.125},
      {"gap of just the tolerance", {0, 3, 0}, {3.5, 5, 0.5}, true, 3.25, 3.25},
      {"gap beyond", {0, 3, 0.125}, {3.25, 5, 0.125}, false, 0, 0},
      {"a single value", {3, 3, 0}, {3, 3, 0}, true, 3, 3},
      {"NaN", {std::nan(""), 3, 0}, {0, 9, 0}, false, 0, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    for (const bool Swapped : {false, true}) {
      TGeInterval Result(77, 78, 0);
      const bool Meets =
          Swapped ? Case.B.IntersectWith(Case.A, Result) : Case.A.IntersectWith(Case.B, Result);
      ASSERT_EQ(Case.Meets, Meets);
      EXPECT_EQ(Meets ? Case.Lower : 77, Result.Lower);
      EXPECT_EQ(Meets ? Case.Upper : 78, Result.Upper);
    }
  }
}

TEST(TRect2D, TheEmptyBoxAddsNothing) {
  const TRect2D Box({1, 2}, {3, 4});
  EXPECT_EQ(Box, Box.Union(TRect2D::FNull));
  EXPECT_EQ(Box, TRect2D::FNull.Union(Box));
  EXPECT_EQ(Box, Box.Union(TRect2D({5, 5}, {4, 9})));  // any invalid box is empty
  EXPECT_EQ(Box, TRect2D({5, 5}, {4, 9}).Union(Box));
  EXPECT_EQ(Box, Box.Union(TRect2D({std::nan(""), 0}, {9, 9})));
  EXPECT_FALSE(TRect2D::FNull.Inflate(1e300, 1e300).IsValid());
  EXPECT_TRUE(Box.Contains(TRect2D::FNull));
  EXPECT_FALSE(TRect2D::FNull.Contains(Box));
  EXPECT_EQ(TRect2D({1, 0}, {3, 4}), Box.Union(TPoint2D(2, 0)));
}

TEST(TRect2D, ContainsWithSlackOnEverySide) {
  const TRect2D Box({0, 0}, {10, 10});
  EXPECT_TRUE(Box.Contains(TRect2D({-9e-7, 0}, {10, 10 + 9e-7})));
  EXPECT_FALSE(Box.Contains(TRect2D({-2e-6, 0}, {10, 10})));
  EXPECT_FALSE(Box.Contains(TRect2D({0, 0}, {10, 10 + 2e-6})));
  EXPECT_EQ(TRect2D({-1, -2}, {11, 12}), Box.Inflate(1, 2));
}

TEST(TRect2D, ABoxTheWrongWayRoundIsNothing) {
  const TRect2D Box({1, 2}, {3, 4});
  const TRect2D Nothing({9, 9}, {0, 0});
  EXPECT_EQ(Box, Box.Union(Nothing));
  EXPECT_EQ(Box, Nothing.Union(Box));
  EXPECT_FALSE(Nothing.Inflate(10, 10).IsValid());
  EXPECT_TRUE(Box.Contains(Nothing));
}

}  // namespace
}  // namespace tarnalgo
