#include "host/Cadtypes/Line.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "host/Cadutils.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

const TLine2D kFlat({0, 0}, {10, 0});

TEST(TLine2D, EndsAreExactAndReversingSwapsThem) {
  std::mt19937 Random(3);
  for (int Round = 0; Round < 500; ++Round) {
    const TLine2D Line(test::RandomPoint(Random, -1e3, 1e3), test::RandomPoint(Random, -1e3, 1e3));
    EXPECT_EQ(Line.StartPoint, Line.PointAt(0.0));
    EXPECT_EQ(Line.EndPoint, Line.PointAt(1.0));
    EXPECT_EQ(Line.EndPoint, Line.PointAtX(Line.EndPoint.X));
    EXPECT_EQ(Line.EndPoint, Line.PointAtY(Line.EndPoint.Y));
    EXPECT_EQ(Line, Line.ReverseParam().ReverseParam());
    const TPoint2D P = test::RandomPoint(Random, -1e3, 1e3);
    EXPECT_NEAR(Line.DistanceDirect(P), -Line.ReverseParam().DistanceDirect(P), 1e-9);
  }
}

TEST(TLine2D, TellsTheSideByTheSignOfTheDistance) {
  EXPECT_EQ(2.0, kFlat.DistanceDirect({50, 2}));
  EXPECT_EQ(-2.0, kFlat.DistanceDirect({-50, -2}));
  EXPECT_EQ(5.0, TLine2D({1, 1}, {1, 1}).DistanceDirect({4, 5}));  // no direction: from the point
  // Near the far end of a long line a product reckoned from its start has lost all digits.
  const TLine2D Long({-1e9, -1e9 / 3}, {1, 1.0 / 3});
  EXPECT_NEAR(1e-9, Long.DistanceDirect(Long.EndPoint + TPoint2D(-1, 3).Normal() * 1e-9), 1e-15);
}

TEST(TLine2D, ParameterSnapsToTheEndsWithinTheLength) {
  EXPECT_EQ(0.0, kFlat.ParamOfPoint({9e-7, 3}));
  EXPECT_NE(0.0, kFlat.ParamOfPoint({2e-6, 3}));
  EXPECT_EQ(1.0, kFlat.ParamOfPoint({10 - 9e-7, 3}));
  EXPECT_DOUBLE_EQ(-0.5, kFlat.ParamOfPoint({-5, 7}));
  EXPECT_EQ(0.0, TLine2D({1, 1}, {1, 1}).ParamOfPoint({4, 5}));
  EXPECT_EQ(0.5, TLine2D({-1e300, 0}, {1e300, 0}).ParamOfPoint({0, 1e300}));
  // Too long for a double: any place was as near to the end as the end itself.
  EXPECT_EQ(0.75, TLine2D({-0x1p1023, 0}, {0x1p1023, 0}).ParamOfPoint({0x1p1022, 0}));
}

TEST(TLine2D, IsOnHasSlackOfALengthAsideAndOfAParameterAlong) {
  const struct {
    const char* Name;
    TPoint2D P;
    bool Expected;
  } Cases[] = {
      {"inside", {5, 0}, true},
      {"aside, in the band", {5, 9e-7}, true},
      {"aside, beyond the band", {5, -2e-6}, false},
      {"past the end by less than Tol times the length", {10 + 9e-6, 0}, true},
      {"past the end by more", {10 + 2e-5, 0}, false},
      {"before the start", {-2e-5, 0}, false},
      {"NaN", {kNaN, 0}, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    double T = 0.0;
    EXPECT_EQ(Case.Expected, kFlat.IsOn(Case.P, 1e-6, T));
    EXPECT_EQ(Case.Expected, kFlat.ReverseParam().IsOn(Case.P, 1e-6, T));
  }
  double T = 77;
  EXPECT_FALSE(kFlat.IsOn({20, 5}, 1e-6, T));
  EXPECT_EQ(2.0, T);  // handed out although the point is off the segment
}

TEST(TLine2D, CoordinatesNeverReachedAnswerTheStart) {
  EXPECT_EQ(TPoint2D(3, 7), TLine2D({2, 7}, {2, 9}).PointAtX(3));
  EXPECT_EQ(TPoint2D(2, 3), TLine2D({2, 7}, {5, 7}).PointAtY(3));
  EXPECT_EQ(TPoint2D(4, 9), TLine2D({2, 7}, {3, 8}).PointAtX(4));
}

TEST(TLine2D, ParallelLinesDoNotCross) {
  TPoint2D P(7, 7);
  EXPECT_FALSE(kFlat.Cross({{0, 1}, {10, 1}}, P));
  EXPECT_FALSE(kFlat.Cross({{0, 1}, {10, 1 + 9e-12}}, P));
  EXPECT_FALSE(kFlat.Cross({{3, 3}, {3, 3}}, P));
  EXPECT_FALSE(kFlat.Cross({{kNaN, 3}, {3, 4}}, P));
  EXPECT_FALSE(kFlat.Cross({{0, 1e300}, {1e300, 1e300 - 1e290}}, P));                    // at 1e310
  EXPECT_FALSE(TLine2D({0, 0}, {0, 9}).Cross({{1e300, 0}, {1e300 - 1e290, 1e300}}, P));  // the same
  EXPECT_EQ(TPoint2D(7, 7), P);
  EXPECT_TRUE(kFlat.Cross({{0, 1}, {10, 1 - 1e-9}}, P));
  EXPECT_NEAR(1e10, P.X, 1e-6 * 1e10);
  EXPECT_TRUE(TLine2D({-1e300, 0}, {1e300, 0}).Cross({{1e299, -1e300}, {1e299, 1e300}}, P));
  EXPECT_DOUBLE_EQ(1e299, P.X);
  EXPECT_EQ(0.0, P.Y);
}

// Lines through a chosen point with integer directions: the crossing is known without a formula.
TEST(TLine2D, CrossingOfIntegerLinesIsExact) {
  std::mt19937 Random(17);
  for (int Round = 0; Round < 3000; ++Round) {
    const TPoint2D Meet = test::RandomGridPoint(Random, -1000, 1000);
    const TPoint2D D1 = test::RandomGridPoint(Random, -30, 30);
    const TPoint2D D2 = test::RandomGridPoint(Random, -30, 30);
    if (D1.CrossMul(D2) == 0.0) continue;
    const int K = test::RandomInt(Random, -9, 9);
    const TLine2D A(Meet + D1 * K, Meet + D1 * (K + 3));
    const TLine2D B(Meet - D2 * 7, Meet - D2 * K);
    if (K == 7) continue;
    TPoint2D P;
    ASSERT_TRUE(A.Cross(B, P));
    EXPECT_TRUE(P.Equals(Meet, 1e-12)) << P.X - Meet.X << " " << P.Y - Meet.Y;
  }
}

struct TMeetingCase {
  const char* Name;
  TLine2D A, B;
  int Count;
  TPoint2D First, Last;
};

const TMeetingCase kMeetings[] = {
    {"crossing", kFlat, {{3, -3}, {3, 3}}, 1, {3, 0}, {3, 0}},
    {"apart", kFlat, {{3, 1}, {3, 3}}, 0, {}, {}},
    {"foot on the segment", kFlat, {{3, 0}, {3, 3}}, 1, {3, 0}, {3, 0}},
    {"foot short by less than the tolerance", kFlat, {{3, 9e-7}, {3, 3}}, 1, {3, 0}, {3, 0}},
    {"foot short by more", kFlat, {{3, 2e-6}, {3, 3}}, 0, {}, {}},
    // Nearer to the segment than to its end, which is beyond the tolerance.
    {"foot short beside the end", kFlat, {{10 - 9e-7, 9e-7}, {10, 5}}, 1, {10, 0}, {10, 0}},
    {"end to end, in line", kFlat, {{10, 0}, {20, 0}}, 1, {10, 0}, {10, 0}},
    {"end to end, in line, small gap", kFlat, {{10 + 9e-7, 0}, {20, 0}}, 1, {10, 0}, {10, 0}},
    {"end to end, in line, gap", kFlat, {{10 + 2e-6, 0}, {20, 0}}, 0, {}, {}},
    {"corner", kFlat, {{10, 0}, {10, 5}}, 1, {10, 0}, {10, 0}},
    {"overlap", kFlat, {{4, 0}, {12, 0}}, 2, {4, 0}, {10, 0}},
    {"contained", kFlat, {{4, 0}, {7, 0}}, 2, {4, 0}, {7, 0}},
    {"the same", kFlat, kFlat, 2, {0, 0}, {10, 0}},
    {"parallel within the tolerance", kFlat, {{4, 9e-7}, {12, 9e-7}}, 2, {4, 0}, {10, 0}},
    {"parallel beyond the tolerance", kFlat, {{4, 2e-6}, {12, 2e-6}}, 0, {}, {}},
    {"overlap shorter than the tolerance", kFlat, {{10 - 5e-7, 0}, {12, 0}}, 1, {10, 0}, {10, 0}},
    {"sharing an end at a flat angle", kFlat, {{0, 0}, {10, 1e-4}}, 1, {0, 0}, {0, 0}},
    {"ends a hair apart at an angle", kFlat, {{10 + 9e-7, 0}, {12, 3}}, 1, {10, 0}, {10, 0}},
    {"a point on the segment", kFlat, {{4, 0}, {4, 0}}, 1, {4, 0}, {4, 0}},
    {"a point off the segment", kFlat, {{4, 1}, {4, 1}}, 0, {}, {}},
    {"two points, the same", {{4, 1}, {4, 1}}, {{4, 1}, {4, 1}}, 1, {4, 1}, {4, 1}},
    {"a short one across, both ends in the band",
     kFlat,
     {{4, -8e-7}, {4, 8e-7}},
     1,
     {4, 0},
     {4, 0}},
    {"flat crossing far from the touching end",
     kFlat,
     {{2, -5e-7}, {5, 2e-6}},
     1,
     {2.6, 0},
     {2.6, 0}},
};

TEST(TLine2D, SegmentsMeetTheSameFromEveryView) {
  for (const auto& Case : kMeetings) {
    for (int View = 0; View < 8; ++View) {
      SCOPED_TRACE(testing::Message() << Case.Name << ", view " << View);
      TLine2D A = View & 1 ? Case.A.ReverseParam() : Case.A;
      TLine2D B = View & 2 ? Case.B.ReverseParam() : Case.B;
      if (View & 4) std::swap(A, B);
      TIntersectPoint2D I1;
      TIntersectPoint2D I2;
      ASSERT_EQ(Case.Count, A.Intersect(B, I1, I2));
      if (Case.Count == 0) continue;
      for (const auto* I : {&I1, &I2}) {
        EXPECT_TRUE(I->Point.Equals(A.PointAt(I->Param1), 1e-6));
        EXPECT_TRUE(I->Point.Equals(B.PointAt(I->Param2), 1e-6));
        if (Case.Count == 1) break;
      }
      const bool IsTurned = (Case.Last - Case.First).DotMul(A.GetDirection()) < 0.0;
      EXPECT_TRUE(I1.Point.Equals(IsTurned ? Case.Last : Case.First, 2e-6));
      if (Case.Count == 2) {
        EXPECT_TRUE(I2.Point.Equals(IsTurned ? Case.First : Case.Last, 2e-6));
      }
    }
  }
}

TEST(TLine2D, SegmentsMeetWithinTheToleranceAskedFor) {
  TIntersectPoint2D I1;
  TIntersectPoint2D I2;
  // All ends lie within the default tolerance of each other in pairs, none within the given one.
  const TLine2D Shorter({5e-7, 0}, {10 - 5e-7, 0});
  ASSERT_EQ(2, kFlat.Intersect(Shorter, I1, I2, 1e-9));
  EXPECT_EQ(Shorter, TLine2D(I1.Point, I2.Point));
  ASSERT_EQ(2, Shorter.Intersect(kFlat, I1, I2, 0.0));
  EXPECT_EQ(Shorter, TLine2D(I1.Point, I2.Point));
  EXPECT_EQ(0, kFlat.Intersect({{3, 5e-7}, {3, 5}}, I1, I2, 1e-9));
  EXPECT_EQ(1, kFlat.Intersect({{3, 0.4}, {3, 5}}, I1, I2, 0.5));
}

TEST(TLine2D, HostileSegmentsEndQuietly) {
  const double Values[] = {0.0, 1.0, -1e300, 1e300, 5e-324, kInf, -kInf, kNaN};
  std::mt19937 Random(1);
  const auto Pick = [&] { return Values[test::RandomInt(Random, 0, 7)]; };
  for (int Round = 0; Round < 5000; ++Round) {
    const TLine2D A({Pick(), Pick()}, {Pick(), Pick()});
    const TLine2D B({Pick(), Pick()}, {Pick(), Pick()});
    TIntersectPoint2D I1;
    TIntersectPoint2D I2;
    const int Count = A.Intersect(B, I1, I2);
    EXPECT_TRUE(Count >= 0 && Count <= 2);
    TPoint2D P;
    A.Cross(B, P);
    A.PointAtX(B.StartPoint.X);
    A.ParamOfPoint(B.StartPoint);
    A.GetBoundBox();
  }
}

}  // namespace
}  // namespace tarnalgo
