#include "geometryAlgo/VedaType/Rect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

const double kNaN = std::nan("");

// Left, Right, Top, Bottom: boxes that stand for "empty" in every way a caller can make them.
const TVRect2D kEmptyBoxes[] = {
    {},
    {1, 0, 1, 0},
    {0, 1, 0, 1},
    {kNaN, 1, 1, 0},
    {0, 1, kNaN, 0},
    TVRect2D(TPoint2D(kNaN, 0), {1, 1}),
};

TVRect2D RandomBox(std::mt19937& Random) {
  return {test::RandomGridPoint(Random, 0, 6), test::RandomGridPoint(Random, 0, 6)};
}

TEST(TVRect2D, FieldsStandInTheirOrder) {
  const TVRect2D Box(1, 2, 4, 3);
  EXPECT_EQ(Box, TVRect2D(TPoint2D(2, 3), TPoint2D(1, 4)));
  EXPECT_EQ(Box, TVRect2D(TRect2D({1, 3}, {2, 4})));
  const double Sides[] = {1, 2, 4, 3};
  for (int I = 0; I < 4; ++I) EXPECT_EQ(Sides[I], Box.GetCoor(I));
  for (const int Bad : {-1, 4}) {
    test::ExpectRaises([&] { static_cast<void>(Box.GetCoor(Bad)); },
                       "[Error] TVRect2D.GetCoor: 参数错误");
  }
  EXPECT_EQ(TPoint2D(1, 4), Box.GetTopLeft());
  EXPECT_EQ(TPoint2D(2, 3), Box.GetBottomRight());
  EXPECT_EQ(TPoint2D(1, 3.5), Box.GetLeftCenter());
  EXPECT_EQ(TPoint2D(1.5, 4), Box.GetTopCenter());
  EXPECT_EQ(TVRect2D(), TVRect2D(TRect2D::FNull));
}

TEST(TVRect2D, MovedCornersLeaveTheOppositeOne) {
  TVRect2D Box(1, 2, 4, 3);
  Box.SetTopLeft({0, 9});
  EXPECT_EQ(TVRect2D(0, 2, 9, 3), Box);
  Box.SetBottomRight({-1, 5});
  EXPECT_EQ(TVRect2D(0, -1, 9, 5), Box);
  EXPECT_FALSE(Box.IsValid());
}

TEST(TVRect2D, EveryEmptyBoxIsTheIdentityOfExpand) {
  const TVRect2D Box(1, 2, 4, 3);
  for (const TVRect2D& Empty : kEmptyBoxes) {
    EXPECT_FALSE(Empty.IsValid());
    EXPECT_EQ(Box, Box.Expand(Empty));
    EXPECT_EQ(Box, Empty.Expand(Box));
    EXPECT_FALSE(Empty.Expand(TVRect2D()).IsValid());
    EXPECT_FALSE(Box.Intersect(Empty).IsValid());
    EXPECT_FALSE(Empty.Intersect(Box).IsValid());
  }
  EXPECT_EQ(Box, Box.Expand(TPoint2D(kNaN, 3)));
  EXPECT_EQ(TVRect2D(5, 5, 6, 6), TVRect2D().Expand(TPoint2D(5, 6)));
}

TEST(TVRect2D, MeasuresOfEmptyBoxesAreNeutral) {
  for (const TVRect2D& Empty : kEmptyBoxes) {
    EXPECT_EQ(-1.0, Empty.Area());
    EXPECT_EQ(0.0, Empty.GeneralArea());
    EXPECT_EQ(0.0, Empty.GeneralPerimeter());
    EXPECT_EQ(0.0, Empty.HypotLength());
    EXPECT_EQ(0.0, Empty.Ratio());
    EXPECT_EQ(TPoint2D::FZero, Empty.Center());
  }
  EXPECT_EQ(0.0, TVRect2D(1, 1, 5, 3).Area());  // without width, yet valid
  EXPECT_EQ(0.0, TVRect2D(1, 5, 3, 3).Ratio());
  EXPECT_EQ(2.0, TVRect2D(1, 5, 3, 1).Ratio());
  EXPECT_EQ(5.0, TVRect2D(0, 3, 4, 0).HypotLength());
}

TEST(TVRect2D, EmptyBoxesStayEmptyWhateverIsDoneToThem) {
  for (const TVRect2D& Empty : kEmptyBoxes) {
    for (const TVRect2D& Result :
         {Empty.Inflate(10), Empty.Offset(1e300, 1e300), Empty.Zoom(-2), Empty.Rotate(2)}) {
      EXPECT_FALSE(Result.IsValid());
    }
  }
  EXPECT_FALSE(TVRect2D(0, 2, 2, 0).Inflate(-2).IsValid());
}

// Boxes with corners on even numbers are told apart by the lattice points they hold; the odd ones
// lie inside of whatever holds them.
TEST(TVRect2D, SetOperationsAgreeWithTheLatticePointsTheyHold) {
  std::mt19937 Random(3);
  for (int Round = 0; Round < 500; ++Round) {
    const TVRect2D A = RandomBox(Random).Zoom(2);
    const TVRect2D B = RandomBox(Random).Zoom(2);
    const TVRect2D Common = A * B;
    TVRect2D Hull;
    int OnlyA = 0;
    int OnlyB = 0;
    int Both = 0;
    int Inside = 0;
    for (int X = 0; X <= 12; ++X) {
      for (int Y = 0; Y <= 12; ++Y) {
        const TPoint2D P(X, Y);
        const bool InA = A.IsPointIn(P, 0.0);
        const bool InB = B.IsPointIn(P, 0.0);
        EXPECT_EQ(InA && InB, Common.IsPointIn(P, 0.0));
        if (InA || InB) Hull.ExpandInPlace(P);
        OnlyA += InA && !InB;
        OnlyB += InB && !InA;
        Both += InA && InB;
        Inside += InA && InB && X % 2 != 0 && Y % 2 != 0;
      }
    }
    EXPECT_EQ(Hull, A.Expand(B));
    EXPECT_EQ(Hull, B.Expand(A));
    if (A.Area() == 0.0 || B.Area() == 0.0) continue;  // no inside to judge a touch by
    const TShapeRelation Expected = Both == 0                  ? srDeviate
                                    : OnlyA == 0 && OnlyB == 0 ? srEqual
                                    : OnlyB == 0               ? srContained
                                    : OnlyA == 0               ? srContain
                                    : Inside == 0              ? srOn
                                                               : srCross;
    EXPECT_EQ(Expected, A.RelationWith(B));
    EXPECT_EQ(Expected, A.RelationWithRectangle(B));
  }
}

TEST(TVRect2D, RelationsChangeAtTheEdgesOfTheToleranceBand) {
  const TVRect2D Box(0, 10, 4, 0);
  EXPECT_EQ(srEqual, Box.RelationWith(TVRect2D(9e-7, 10, 4, 0)));
  EXPECT_EQ(srContained, Box.RelationWith(TVRect2D(2e-6, 10, 4, 0)));
  EXPECT_EQ(srContained, Box.RelationWith(TVRect2D(-9e-7, 5, 4, 0)));
  EXPECT_EQ(srCross, Box.RelationWith(TVRect2D(-2e-6, 5, 4, 0)));
  EXPECT_EQ(srOn, Box.RelationWith(TVRect2D(10 + 9e-7, 15, 4, 0)));
  EXPECT_EQ(srOn, Box.RelationWith(TVRect2D(10, 15, 9, 4)));    // in a corner
  EXPECT_EQ(srCross, Box.RelationWith(TVRect2D(5, 15, 2, 2)));  // a line through the side
  EXPECT_EQ(srOn, Box.RelationWith(TVRect2D(5, 15, 4, 4)));     // a line along the side
  EXPECT_EQ(srDeviate, Box.RelationWith(TVRect2D(10 + 2e-6, 15, 4, 0)));
  EXPECT_EQ(srDeviate, Box.RelationWith(TVRect2D()));

  EXPECT_EQ(srIn, Box.RelationWith(TPoint2D(2e-6, 1)));
  EXPECT_EQ(srOn, Box.RelationWith(TPoint2D(9e-7, 1)));
  EXPECT_EQ(srOn, Box.RelationWith(TPoint2D(10, 4 + 9e-7)));
  EXPECT_EQ(srOn, Box.RelationWith(TPoint2D(5, 4)));
  EXPECT_EQ(srOut, Box.RelationWith(TPoint2D(10, 4 + 2e-6)));
  EXPECT_EQ(srOut, TVRect2D().RelationWith(TPoint2D(0, 0)));
  EXPECT_EQ(srOut, Box.RelationWith(TPoint2D(kNaN, 1)));
}

TEST(TVRect2D, HoldsAsksForSizesNotPlaces) {
  const TVRect2D Sheet(0, 10, 4, 0);
  const TVRect2D Far(100, 104, 210, 200);  // 4 wide, 10 high
  EXPECT_FALSE(Sheet.Holds(Far));
  EXPECT_TRUE(Sheet.Holds90(Far));
  EXPECT_FALSE(Sheet.Holds90(Sheet));  // the turned box only
  EXPECT_TRUE(Sheet.Holds(Sheet.Inflate(4e-7)));
  EXPECT_FALSE(Sheet.Holds(Sheet.Inflate(1e-6)));
  EXPECT_TRUE(Sheet.Holds(TVRect2D()));
  EXPECT_FALSE(TVRect2D().Holds(Sheet));
}

TEST(TVRect2D, SameAsTellsPlacesApartSizeEqualsDoesNot) {
  const TVRect2D Box(0, 10, 4, 0);
  EXPECT_TRUE(Box.SizeEquals(Box.Offset(5, 6)));
  EXPECT_FALSE(Box.SizeEquals(TVRect2D(0, 10, 5, 0)));
  EXPECT_FALSE(Box.SameAs(Box.Offset(5, 6)));
  EXPECT_TRUE(Box.SameAs(Box.Offset(9e-7, 0)));
  for (const TVRect2D& Empty : kEmptyBoxes) {
    EXPECT_TRUE(Empty.SameAs(TVRect2D()));
    EXPECT_FALSE(Empty.SameAs(Box));
    EXPECT_FALSE(Box.SizeEquals(Empty));
  }
  EXPECT_FALSE(TVRect2D(0, 0, 0, 0).SizeEquals(TVRect2D(0, -1e-7, 0, 0)));  // nearly, yet empty
}

TEST(TVRect2D, RotateCoversTheTurnedCorners) {
  const TVRect2D Box(1, 3, 2, 1);
  EXPECT_TRUE(Box.Rotate(kPi / 2).SameAs(TVRect2D(-2, -1, 3, 1), 1e-14));
  EXPECT_TRUE(Box.Rotate(kPi / 4, Box.Center())
                  .SizeEquals(TVRect2D(0, 1.5 * std::sqrt(2), 1.5 * std::sqrt(2), 0), 1e-14));
  EXPECT_EQ(TVRect2D(-6, -2, -2, -4), Box.Zoom(-2));
  EXPECT_EQ(TVRect2D(1, 5, 3, 1), Box.Zoom(2, {1, 1}));
  EXPECT_EQ(Box.Translate({2, 3}), Box.Offset(2, 3));
}

}  // namespace
}  // namespace tarnalgo
