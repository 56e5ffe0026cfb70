#include "geometryAlgo/VedaType/Line.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <utility>

#include "tests/support/Generate.h"
#include "tests/support/GridGeometry.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

const TVLine2D kFlat({0, 0}, {10, 0});

TVLine2D RandomGridLine(std::mt19937& Random) {
  const TPoint2D Start = test::RandomGridPoint(Random, 0, 5);
  return {Start, test::RandomGridPoint(Random, 0, 5)};
}

TEST(TVLine2D, SegmentDistanceTellsTheNearestParameter) {
  const struct {
    const char* Name;
    TPoint2D P;
    double Dist;
    double T;
  } Cases[] = {
      {"above the inside", {4, 3}, 3, 0.4},
      {"before the start", {-3, 4}, 5, 0},
      {"beyond the end", {13, -4}, 5, 1},
      {"beside the end itself", {10, 2}, 2, 1},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    double T = -1;
    EXPECT_DOUBLE_EQ(Case.Dist, kFlat.SegmentDistanceTo(Case.P, T));
    EXPECT_EQ(Case.T, T);
    EXPECT_DOUBLE_EQ(std::abs(Case.P.Y), kFlat.LineDistanceTo(Case.P));
    EXPECT_DOUBLE_EQ(std::abs(Case.P.Y), kFlat.LineDistanceTo(Case.P, T));
    EXPECT_DOUBLE_EQ(Case.P.X / 10, T);
  }
}

TEST(TVLine2D, ADegenerateSegmentIsItsPoint) {
  const TVLine2D Point({2, 3}, {2, 3});
  double T = -1;
  EXPECT_EQ(5.0, Point.SegmentDistanceTo({5, 7}, T));
  EXPECT_EQ(0.0, T);
  EXPECT_EQ(5.0, Point.LineDistanceTo({5, 7}));
  EXPECT_EQ(5.0, Point.LineDistanceTo({5, 7}, T));
  EXPECT_EQ(0.0, T);
  EXPECT_TRUE(Point.IsPointOnSegLine({2, 3 + 9e-7}));
  EXPECT_EQ(0.0, Point.Slope());
  for (const TVLine2D& Same : {Point.Stretch(4), Point.BiStretch(4), Point.Offset(4)}) {
    EXPECT_EQ(Point.StartPoint, Same.StartPoint);
    EXPECT_EQ(Point.EndPoint, Same.EndPoint);
  }
}

TEST(TVLine2D, DistancesSurviveExtremeCoordinates) {
  const TVLine2D Huge({0, 0}, {1e200, 1e200});
  EXPECT_DOUBLE_EQ(1e200 / std::sqrt(2.0), Huge.SegmentDistanceTo({1e200, 0}));
  EXPECT_DOUBLE_EQ(0.5, Huge.CalcParamByPointProjection({1e200, 0}));
  // The square of the length overflows, its product with the point does not.
  const TVLine2D Long({0, 0}, {1e155, 0});
  EXPECT_DOUBLE_EQ(1e-3, Long.CalcParamByPointProjection({1e152, 0}));
  EXPECT_DOUBLE_EQ(0.0, Long.SegmentDistanceTo({1e152, 0}));
  const TVLine2D Tiny({0, 0}, {1e-320, 0});
  EXPECT_DOUBLE_EQ(0.4, Tiny.LineDistanceTo({0, 0.4}));
  EXPECT_DOUBLE_EQ(0.4, Tiny.SegmentDistanceTo({0, 0.4}));
  for (const double Odd : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    EXPECT_FALSE(std::isnan(kFlat.CalcParamByPointProjection({Odd, Odd})));
    EXPECT_FALSE(std::isnan(TVLine2D({Odd, 0}, {1, Odd}).CalcParamByPointProjection({1, 2})));
  }
}

TEST(TVLine2D, TheSlackOfOnGrowsWithTheLengthThatOfNearDoesNot) {
  const TPoint2D Beyond(10 + 5e-6, 0);
  EXPECT_TRUE(kFlat.IsPointOnSegLine(Beyond));  // 5e-7 of the length
  EXPECT_FALSE(kFlat.IsPointNearBySegment(Beyond));
  EXPECT_FALSE(kFlat.IsPointOnSegLine({10 + 2e-5, 0}));
  EXPECT_TRUE(kFlat.IsPointOnSegLine({5, 9e-7}));
  EXPECT_FALSE(kFlat.IsPointOnSegLine({5, 2e-6}));
  EXPECT_TRUE(kFlat.IsPointOnSegLine({5, 2}, 2.0));
}

TEST(TVLine2D, BordersAreTheEndsAndTheSidesOfABox) {
  EXPECT_TRUE(kFlat.OnBorder(TPoint2D(10, 9e-7)));
  EXPECT_FALSE(kFlat.OnBorder(TPoint2D(5, 0)));
  EXPECT_TRUE(kFlat.OnBorder(TVRect2D(-1, 11, 5, 0)));
  EXPECT_TRUE(kFlat.OnBorder(TVRect2D(0, 10, 9e-7, -5)));
  EXPECT_FALSE(kFlat.OnBorder(TVRect2D(-1, 11, 5, -5)));
  EXPECT_FALSE(kFlat.OnBorder(TVRect2D(0, 9, 5, 0)));  // leaves the box
  EXPECT_FALSE(kFlat.OnBorder(TVRect2D()));
}

TEST(TVLine2D, DerivedSegmentsKeepWhatTheyPromise) {
  const TVLine2D Line({1, 2}, {4, 6});
  EXPECT_EQ(TPoint2D(1, 2), Line.Stretch(10).StartPoint);
  EXPECT_TRUE(Line.Stretch(10).EndPoint.Equals({7, 10}, 1e-14));
  EXPECT_TRUE(Line.Stretch(-5).EndPoint.Equals({-2, -2}, 1e-14));
  EXPECT_TRUE(Line.BiStretch(10).StartPoint.Equals({-0.5, 0}, 1e-14));
  EXPECT_TRUE(Line.BiStretch(10).EndPoint.Equals({5.5, 8}, 1e-14));
  EXPECT_TRUE(kFlat.Offset(2).StartPoint.Equals({0, 2}, 0));  // the left is above
  EXPECT_EQ(TPoint2D(5, -5), kFlat.PerpendicularBisector().StartPoint);
  EXPECT_EQ(TPoint2D(5, 5), kFlat.PerpendicularBisector().EndPoint);
  EXPECT_TRUE(Line.Rotate(kPi / 2, {1, 2}).EndPoint.Equals({-3, 5}, 1e-14));
  EXPECT_TRUE(Line.Rotate(kPi).EndPoint.Equals({-4, -6}, 1e-14));
  EXPECT_EQ(Line.EndPoint, Line.EvalPoint(1.0));
  EXPECT_DOUBLE_EQ(4.0 / 3.0, Line.Slope());
  EXPECT_EQ(-HUGE_VAL, TVLine2D({0, 1}, {0, 0}).Slope());
}

TEST(TVLine2D, CoordinatesOfTheInfiniteLine) {
  const TVLine2D Line({1, 2}, {4, 6});
  EXPECT_DOUBLE_EQ(-2, Line.CalculateX(-2));
  EXPECT_DOUBLE_EQ(6, Line.CalculateY(4));
  EXPECT_EQ(TPoint2D(4, 6), Line.PointOfLineAtX(4));
  EXPECT_EQ(TPoint2D(0, 7), kFlat.PointOfLineAtY(7));  // never there: the start's X
  EXPECT_EQ(TPoint2D(7, 1), TVLine2D({3, 1}, {3, 5}).PointOfLineAtX(7));
}

TEST(TVLine2D, ParallelTestIsNotNormalised) {
  const TVLine2D Short({0, 0}, {5e-4, 0});
  EXPECT_EQ(2, Short.RelationWithLine({{5e-4, 0}, {5e-4, 5e-4}}));  // perpendicular, 2.5e-7
  EXPECT_EQ(1, kFlat.RelationWithLine({{0, 1}, {10, 1 + 2e-7}}));   // product 2e-6
  EXPECT_EQ(0, kFlat.RelationWithLine({{0, 1}, {10, 1 + 9e-8}}));
  EXPECT_EQ(2, kFlat.RelationWithLine({{20, 0}, {30, 0}}));
  EXPECT_EQ(2, kFlat.RelationWithLine({{20, 7}, {20, 7}}));  // a degenerate other, anywhere
  EXPECT_EQ(0, TVLine2D({20, 7}, {20, 7}).RelationWithLine(kFlat));
  EXPECT_EQ(0, kFlat.RelationWithLine({{0, 1}, {10, 1 + 2e-7}}, 1e-5, 1e-6));
}

TEST(TVLine2D, SegmentAgainstLineTakesItsEndsExactly) {
  TPoint2D P(-7, -7);
  EXPECT_EQ(1, kFlat.RelationSeglineWithLine({{10, 5}, {10, 8}}, P));
  EXPECT_EQ(TPoint2D(10, 0), P);
  P = {-7, -7};
  EXPECT_EQ(0, kFlat.RelationSeglineWithLine({{10 + 1e-9, 5}, {10 + 1e-9, 8}}, P));
  EXPECT_EQ(TPoint2D(-7, -7), P);
  EXPECT_FALSE(kFlat.InternalCrossWithLine({{10 - 9e-6, 5}, {10 - 9e-6, 8}}, P));
  EXPECT_EQ(TPoint2D(-7, -7), P);
  EXPECT_TRUE(kFlat.InternalCrossWithLine({{10 - 2e-5, 5}, {10 - 2e-5, 8}}, P));
  EXPECT_EQ(2, kFlat.RelationSeglineWithLine({{50, 0}, {60, 0}}, P));
}

// Which end stands for a meeting that the tolerance decides.
TEST(TVLine2D, SegmentsMeet) {
  const struct {
    const char* Name;
    TVLine2D Other;
    int Code;
    TPoint2D P1;
    TPoint2D P2;
  } Cases[] = {
      {"an end short of it, within the tolerance", {{4, 9e-7}, {4, 3}}, 1, {4, 9e-7}, {}},
      {"an end near this end, its foot not yet there",
       {{10 - 8e-7, 9e-7}, {10 - 8e-7, 3}},
       1,
       {10 - 8e-7, 9e-7},
       {}},
      {"ends a hair apart: this end", {{10 + 9e-7, 0}, {12, 3}}, 1, {10, 0}, {}},
      {"collinear, overlapping, run backwards", {{15, 0}, {7, 0}}, 2, {7, 0}, {10, 0}},
      {"parallel within the tolerance", {{5, 9e-7}, {15, 9e-7}}, 2, {5, 9e-7}, {10, 0}},
      {"a hair beyond the tolerance", {{4, 2e-6}, {4, 3}}, 0, {}, {}},
      {"not a number", {{std::nan(""), 0}, {5, 0}}, 0, {}, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TPoint2D P1;
    TPoint2D P2;
    EXPECT_EQ(Case.Code, kFlat.RelationWithSegLine(Case.Other, P1, P2));
    EXPECT_EQ(Case.P1, P1);
    EXPECT_EQ(Case.P2, P2);
    EXPECT_EQ(Case.Code == 1, kFlat.CrossWithSegLine(Case.Other, P1));
    EXPECT_EQ(Case.Code, Case.Other.RelationWithSegLine(kFlat, P1, P2));
    EXPECT_EQ(Case.Code, kFlat.ReverseDirection().RelationWithSegLine(Case.Other, P1, P2));
  }
}

test::TGridSegment OnGrid(const TVLine2D& Line) {
  return {test::TGridPoint(Line.StartPoint), test::TGridPoint(Line.EndPoint)};
}

TEST(TVLine2D, SegmentsOfAGridMeetWhereIntegersSaySo) {
  std::mt19937 Random(14);
  for (int Round = 0; Round < 20000; ++Round) {
    const TVLine2D A = RandomGridLine(Random);
    const TVLine2D B = RandomGridLine(Random);
    const test::TGridMeeting Expected = test::Meet(OnGrid(A), OnGrid(B));
    TIntersectPoint2D I[2];
    const int Count = A.RelationWithSegLine2(B, I[0], I[1]);
    ASSERT_EQ(Expected.Stretch ? 2 : int{Expected.Place.has_value()}, Count) << "round " << Round;
    for (int K = 0; K < Count; ++K) {
      EXPECT_TRUE(A.EvalPoint(I[K].Param1).Equals(I[K].Point, 1e-12));
      EXPECT_TRUE(B.EvalPoint(I[K].Param2).Equals(I[K].Point, 1e-12));
    }
    if (Expected.Place) {
      EXPECT_TRUE(I[0].Point.Equals(Expected.Place->Point(), 1e-12));
    }
    if (!Expected.Stretch) continue;
    EXPECT_LT(I[0].Param1, I[1].Param1);
    test::TGridSegment Found = OnGrid({I[0].Point, I[1].Point});
    if (Found.B < Found.A) std::swap(Found.A, Found.B);
    EXPECT_EQ(*Expected.Stretch, Found) << "round " << Round;
  }
}

TEST(TVLine2D, ClippedPartIsWhatLiesInTheBox) {
  const TVRect2D Box(2, 8, 3, -1);
  const auto Inside = kFlat.ClipBy(Box);
  ASSERT_TRUE(Inside);
  EXPECT_EQ(TPoint2D(2, 0), Inside->StartPoint);
  EXPECT_EQ(TPoint2D(8, 0), Inside->EndPoint);
  EXPECT_FALSE(kFlat.ClipBy(TVRect2D(2, 8, 3, 1)));
  EXPECT_FALSE(kFlat.ClipBy(TVRect2D()));
  const auto Corner = TVLine2D({0, 1}, {4, 5}).ClipBy(Box);  // through the corner (2, 3)
  ASSERT_TRUE(Corner);
  EXPECT_EQ(TPoint2D(2, 3), Corner->StartPoint);
  EXPECT_EQ(TPoint2D(2, 3), Corner->EndPoint);
  const auto Huge = TVLine2D({-1.7e308, 0}, {1.7e308, 0}).ClipBy(Box);
  ASSERT_TRUE(Huge);
  EXPECT_EQ(TPoint2D(2, 0), Huge->StartPoint);
  EXPECT_EQ(TPoint2D(8, 0), Huge->EndPoint);
}

TEST(TVLine2D, ClippingAgreesWithSampledPoints) {
  std::mt19937 Random(15);
  for (int Round = 0; Round < 500; ++Round) {
    const TVLine2D Line(test::RandomPoint(Random, -5, 5), test::RandomPoint(Random, -5, 5));
    const TVRect2D Box(test::RandomPoint(Random, -5, 5), test::RandomPoint(Random, -5, 5));
    const auto Clipped = Line.ClipBy(Box);
    if (Clipped) {
      EXPECT_TRUE(Box.IsPointIn(Clipped->StartPoint, 0.0));
      EXPECT_TRUE(Box.IsPointIn(Clipped->EndPoint, 0.0));
      EXPECT_GE(Clipped->Vector().DotMul(Line.Vector()), 0.0);
    }
    for (int I = 0; I <= 50; ++I) {
      const TPoint2D P = Line.EvalPoint(I / 50.0);
      const TShapeRelation Where = Box.RelationWith(P, 1e-9);
      if (Where == srOn) continue;
      EXPECT_EQ(Where == srIn, Clipped && Clipped->SegmentDistanceTo(P) < 1e-9);
    }
  }
}

TEST(TVLine2D, DebugTextHasItsFixedForms) {
  EXPECT_EQ("(0.1000000000000000, -2.0000000000000000)", DebugText(TPoint2D(0.1, -2)));
  EXPECT_EQ(" ((0.100000, -2.000000), (3.000000, 4.500000))",
            DebugText(TPoint2D(0.1, -2), TPoint2D(3, 4.5), ddShort));
  EXPECT_EQ(1 + 310 + 17 + 2 + 18 + 1U, DebugText(TPoint2D(-1.7e308, 0)).size());
}

TEST(TVLine2D, WritesItsDebugTextOrSaysThatItCannot) {
  const std::string Name = testing::TempDir() + "LineTest.txt";
  TVLine2D({0, 1}, {2, 3}).WriteToFile(Name, "#ff0000");
  std::stringstream Contents;
  Contents << std::ifstream(Name).rdbuf();
  std::filesystem::remove(Name);
  EXPECT_EQ(
      "#ff0000\n"
      " ((0.0000000000000000, 1.0000000000000000), (2.0000000000000000, 3.0000000000000000))\n",
      Contents.str());
  const std::string Nowhere = testing::TempDir() + "no such folder/LineTest.txt";
  test::ExpectRaises<EInOutError>([&] { kFlat.WriteToFile(Nowhere); },
                                  "[Error] TVLine2D.WriteToFile: 无法写入文件 " + Nowhere);
}

}  // namespace
}  // namespace tarnalgo
