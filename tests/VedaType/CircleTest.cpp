#include "geometryAlgo/VedaType/Circle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

const TVCircle2D kRound({1, 2}, 5);

TEST(TVCircle2D, PointRelationChangesAtTheEdgesOfTheToleranceBand) {
  const struct {
    const char* Name;
    double Dist;
    TShapeRelation Expected;
  } Cases[] = {
      {"centre", 0, srIn},
      {"beyond the band, inside", 5 - 2e-6, srIn},
      {"in the band, inside", 5 - 9e-7, srOn},
      {"in the band, outside", 5 + 9e-7, srOn},
      {"beyond the band, outside", 5 + 2e-6, srOut},
      {"not a number", std::nan(""), srOut},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, kRound.RelationWithPoint({1, 2 - Case.Dist}));
  }
  EXPECT_EQ(srOut, TVCircle2D({1, 2}, -5).RelationWithPoint({1, 2}));
}

TEST(TVCircle2D, CircleRelationHasTheOtherCircleAsItsSubject) {
  const struct {
    const char* Name;
    TVCircle2D Other;
    TShapeRelation Expected;
    TShapeRelation Swapped;
  } Cases[] = {
      {"equal", {{1, 2 + 9e-7}, 5}, srEqual, srEqual},
      {"concentric", {{1, 2}, 3}, srContained, srContain},
      {"touching from inside", {{3 + 9e-7, 2}, 3}, srContained, srContain},
      {"a hair through", {{3 + 2e-6, 2}, 3}, srCross, srCross},
      {"a hair short of touching from outside", {{9 - 2e-6, 2}, 3}, srCross, srCross},
      {"touching from outside", {{9 + 9e-7, 2}, 3}, srOn, srOn},
      {"apart", {{9 + 2e-6, 2}, 3}, srDeviate, srDeviate},
      {"no radius", {{1, 2}, std::nan("")}, srDeviate, srDeviate},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, kRound.RelationWithCircle(Case.Other));
    EXPECT_EQ(Case.Swapped, Case.Other.RelationWithCircle(kRound));
  }
}

TEST(TVCircle2D, LinesMeetTheRim) {
  TPoint2D P1;
  TPoint2D P2;
  EXPECT_EQ(2, kRound.RelationWithLine({{0, 2}, {1, 2}}, P1, P2));
  EXPECT_TRUE(P1.Equals({-4, 2}, 1e-14));
  EXPECT_TRUE(P2.Equals({6, 2}, 1e-14));
  EXPECT_EQ(0, kRound.RelationWithSegLine({{0, 2}, {1, 2}}, P1, P2));
  EXPECT_EQ(1, kRound.RelationWithSegLine({{0, 2}, {9, 2}}, P1, P2));
  EXPECT_TRUE(P1.Equals({6, 2}, 1e-14));  // the second on the line is the first on the segment
  EXPECT_EQ(1, kRound.RelationWithLine({{9, 7 + 9e-7}, {0, 7 + 9e-7}}, P1, P2));
  EXPECT_TRUE(P1.Equals({1, 7}, 1e-6));
  EXPECT_EQ(0, kRound.RelationWithLine({{9, 7 + 2e-6}, {0, 7 + 2e-6}}, P1, P2));
}

TEST(TVCircle2D, CirclesMeetInPointsOfBoth) {
  std::mt19937 Random(21);
  for (int Round = 0; Round < 300; ++Round) {
    const TVCircle2D A(test::RandomPoint(Random, 0, 5), test::RandomDouble(Random, 0.5, 4));
    const TVCircle2D B(test::RandomPoint(Random, 0, 5), test::RandomDouble(Random, 0.5, 4));
    TPoint2D P[2];
    const int Count = A.CrossWithCircle(B, P[0], P[1]);
    EXPECT_EQ(A.RelationWithCircle(B) == srCross ? 2 : 0, Count);
    for (int I = 0; I < Count; ++I) {
      EXPECT_NEAR(A.Radius, P[I].DistanceTo(A.Center), 1e-12);
      EXPECT_NEAR(B.Radius, P[I].DistanceTo(B.Center), 1e-12);
      EXPECT_EQ(I == 1, (B.Center - A.Center).CrossMul(P[I] - A.Center) > 0);  // right one first
    }
  }
  TPoint2D P1;
  TPoint2D P2;
  EXPECT_EQ(1, kRound.CrossWithCircle({{9, 2}, 3}, P1, P2));
  EXPECT_EQ(0, kRound.CrossWithCircle(kRound, P1, P2));
}

TEST(TVCircle2D, ParameterRunsOnceRoundCounterClockwise) {
  EXPECT_TRUE(kRound.CalcPointByParam(0).Equals({6, 2}, 1e-14));
  EXPECT_TRUE(kRound.CalcPointByParam(0.25).Equals({1, 7}, 1e-14));
  EXPECT_TRUE(kRound.CalcPointByParam(-0.5).Equals({-4, 2}, 1e-14));
  EXPECT_EQ(TVRect2D(-4, 6, 7, -3), kRound.Boundbox());
}

TEST(TVCircle2D, SamplesAreClosedCounterClockwiseAndNearTheRim) {
  for (const double ChordError : {1.0, 0.1, 1e-4}) {
    const TVPolyline2D Samples = kRound.SampleToPolyline(ChordError);
    EXPECT_EQ(Samples.First(), Samples.Last());
    EXPECT_EQ(TPoint2D(6, 2), Samples.First());
    EXPECT_FALSE(Samples.IsClockwise());
    for (int I = 0; I + 1 < Samples.Count(); ++I) {
      EXPECT_GE(Samples.Line(I).Center().DistanceTo({1, 2}), 5 - ChordError - 1e-12);
    }
  }
}

}  // namespace
}  // namespace tarnalgo
