#include "geometryAlgo/flyscanAlgo/LinearSegment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "tests/support/Generate.h"
#include "tests/support/Restore.h"

namespace tarnalgo {
namespace {

constexpr double kDegree = kPi / 180.0;

TLine2D EdgeAt(double Angle, const TPoint2D& Start = {3, 2}, double Length = 10.0) {
  return {Start, Start + TPoint2D(std::cos(Angle), std::sin(Angle)) * Length};
}

TEST(TLinearSegment, DirectionsBeyondTheTurnRoundAngleAreTurnedRound) {
  const struct {
    const char* Name;
    double Angle;
    double Expected;
    bool IsTurned;
  } Cases[] = {
      {"along X", 0.0, 0.0, false},
      {"a quarter turn", 90 * kDegree, 90 * kDegree, false},
      {"179.94 degrees, below the margin", 179.94 * kDegree, 179.94 * kDegree, false},
      {"179.95 degrees, within the margin", 179.95 * kDegree, -0.05 * kDegree, true},
      {"against X", kPi, 0.0, true},
      {"downwards", 270 * kDegree, 90 * kDegree, true},
      {"0.05 degrees below X: turned once, and left in the margin", -0.05 * kDegree,
       179.95 * kDegree, true},
      {"a hair below X is X", -9e-7, 0.0, false},
      {"more than a hair below X", -2e-6, kPi - 2e-6, true},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TLine2D Edge = EdgeAt(Case.Angle);
    const TLinearSegment Segment(nullptr, Edge);
    EXPECT_NEAR(Case.Expected, Segment.LineAngle, 1e-12);
    EXPECT_EQ(Case.IsTurned ? Edge.ReverseParam() : Edge, Segment.Line);
  }
}

TEST(TLinearSegment, TheInterceptOfAVerticalLineIsTheXOfTheGivenEnd) {
  const struct {
    const char* Name;
    double Degrees;
    bool IsVertical;
  } Cases[] = {
      {"upright", 90, true},
      {"within 3 degrees, right", 87.01, true},
      {"within, left", 92.99, true},
      {"beyond, right", 86.99, false},
      {"beyond, left", 93.01, false},
      {"downwards, within", 267.01, true},
      {"flat", 10, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TLine2D Edge = EdgeAt(Case.Degrees * kDegree);
    const TLine2D Back = Edge.ReverseParam();
    if (Case.IsVertical) {
      EXPECT_EQ(Edge.EndPoint.X, TLinearSegment(nullptr, Edge).Intercept);
      EXPECT_EQ(Back.EndPoint.X, TLinearSegment(nullptr, Back).Intercept);  // another intercept
    } else {
      const double AtZero = 2.0 - 3.0 * std::tan(Case.Degrees * kDegree);
      EXPECT_NEAR(AtZero, TLinearSegment(nullptr, Edge).Intercept, 1e-9);
      EXPECT_NEAR(AtZero, TLinearSegment(nullptr, Back).Intercept, 1e-9);
    }
  }
}

TEST(TLinearSegment, ReadsTheAngleToleranceAtEachCall) {
  const test::TRestore Restore(AngleTolerance);
  const TLine2D Steep = EdgeAt(80 * kDegree);
  EXPECT_NE(Steep.EndPoint.X, TLinearSegment(nullptr, Steep).Intercept);
  AngleTolerance = 11 * kDegree;
  EXPECT_EQ(Steep.EndPoint.X, TLinearSegment(nullptr, Steep).Intercept);
}

TEST(TLinearSegment, TakesEdgesWithoutADirection) {
  const TLinearSegment Point(nullptr, TLine2D({3, 2}, {3, 2}));
  EXPECT_EQ(0.0, Point.LineAngle);
  EXPECT_EQ(2.0, Point.Intercept);
  TLinearSegments Odd;
  for (const double Value : {std::nan(""), std::numeric_limits<double>::infinity(), 1e300}) {
    Odd.AddLine(nullptr, TLine2D({-Value, Value}, {Value, 1}));
    Odd.AddLine(nullptr, TLine2D({0, 0}, {0, Value}));
  }
  Odd.SortByAngleIntercept();
  EXPECT_EQ(6, Odd.Count());
}

/// A segment with the given keys.
TLinearSegment Keyed(TFlyCurve& Ref, double Angle, double Intercept) {
  TLinearSegment Result(&Ref, TLine2D());
  Result.LineAngle = Angle;
  Result.Intercept = Intercept;
  return Result;
}

TEST(TLinearSegments, ChannelBeforeAngleBeforeIntercept) {
  const double Half = AngleTolerance * 0.5;
  const double BeyondHalf = std::nextafter(Half, 1.0);
  const std::int32_t Low = std::numeric_limits<std::int32_t>::min();
  const std::int32_t High = std::numeric_limits<std::int32_t>::max();
  struct TKeys {
    std::int32_t Port;
    double Angle;
    double Intercept;
  };
  const struct {
    const char* Name;
    TKeys Left;
    TKeys Right;
    int Expected;
  } Cases[] = {
      {"the channels' difference itself", {7, 0, 0}, {2, 1, 9}, 5},
      {"a difference beyond the range of the result", {High, 0, 0}, {Low, 0, 0}, High},
      {"the other way round", {Low, 0, 0}, {High, 0, 0}, Low},
      {"angle before intercept", {1, 1.0, 5}, {1, 0.5, 9}, 1},
      {"half the tolerance apart still ties", {1, Half, 0}, {1, 0.0, 0}, 0},
      {"in the band the intercept decides", {1, Half, 3}, {1, 0.0, 4}, -1},
      {"beyond half the tolerance", {1, BeyondHalf, 0}, {1, 0.0, 5}, 1},
      {"a small negative angle is near 0", {1, -0.0009, 0}, {1, 0.02, 0}, 0},
      {"intercepts in the band", {1, 0, 1.0000009}, {1, 0, 1.0}, 0},
      {"intercepts beyond the band", {1, 0, 1.0000011}, {1, 0, 1.0}, 1},
      {"NaN ties", {1, std::nan(""), std::nan("")}, {1, 0, 0}, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TFlyCurve LeftRef(nullptr, 0.0, false, Case.Left.Port, 0);
    TFlyCurve RightRef(nullptr, 0.0, false, Case.Right.Port, 0);
    const TLinearSegment Left = Keyed(LeftRef, Case.Left.Angle, Case.Left.Intercept);
    const TLinearSegment Right = Keyed(RightRef, Case.Right.Angle, Case.Right.Intercept);
    EXPECT_EQ(Case.Expected, TLinearSegments::CompareAngleIntercept(Left, Right));
    if (std::abs(static_cast<double>(Case.Expected)) < 2.0) {
      EXPECT_EQ(-Case.Expected, TLinearSegments::CompareAngleIntercept(Right, Left));
    }
  }
}

TEST(TLinearSegments, EdgesOneAndAHalfDegreesApartFallIntoDifferentRuns) {
  const TLinearSegment Flat(nullptr, EdgeAt(0.0, {0, 0}));
  const TLinearSegment Near(nullptr, EdgeAt(1.499 * kDegree, {0, 0}));
  const TLinearSegment Far(nullptr, EdgeAt(1.501 * kDegree, {0, 0}));
  const TLinearSegment Turned(nullptr, EdgeAt(179.95 * kDegree, {0, 0}));
  EXPECT_EQ(0, TLinearSegments::CompareAngleIntercept(Flat, Near));
  EXPECT_EQ(-1, TLinearSegments::CompareAngleIntercept(Flat, Far));
  EXPECT_EQ(0, TLinearSegments::CompareAngleIntercept(Flat, Turned));
}

// Chains of keys half a band apart: each ties with its neighbour and not with the one beyond.
TEST(TLinearSegments, SortsAsTheMergeSortWithTheComparerWould) {
  std::mt19937 Random(20240612);
  for (int Round = 0; Round < 20; ++Round) {
    TLinearSegments Segments;
    TFlyCurve Ports[2];
    Ports[1].SetChannelPort(3);
    for (int I = 0; I < 300; ++I) {
      TLinearSegment* const Segment =
          Segments.AddLine(&Ports[test::RandomInt(Random, 0, 1)], TLine2D());
      Segment->LineAngle = test::RandomInt(Random, 0, 40) * AngleTolerance * 0.3;
      Segment->Intercept = test::RandomInt(Random, 0, 20) * 6e-7;
    }
    std::vector<TLinearSegment*> Expected(Segments.begin(), Segments.end());
    MergeSort(Expected, [](const TLinearSegment* A, const TLinearSegment* B) {
      return TLinearSegments::CompareAngleIntercept(*A, *B);
    });
    Segments.SortByAngleIntercept();
    EXPECT_EQ(Expected, std::vector<TLinearSegment*>(Segments.begin(), Segments.end()));
  }
}

}  // namespace
}  // namespace tarnalgo
