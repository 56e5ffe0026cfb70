#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "examples/sheet_planner/Contours.h"
#include "examples/sheet_planner/LooseEnds.h"
#include "examples/sheet_planner/Nesting.h"
#include "examples/sheet_planner/Tracing.h"
#include "tests/planner/PlanChecks.h"
#include "tests/support/Generate.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

struct TTraced {
  TTraceStats Stats;
  TDrawing Drawing;
  TSheet Sheet;

  explicit TTraced(const TDrawing& Drawn, double Gap = 0.1)
      : Drawing(TraceDrawing(Drawn, {Gap, 1e-4}, Stats)), Sheet(PrepareSheet(Drawing, {})) {}

  TLABHPolygonList Regions() const { return TNesting(Sheet).Regions(); }
};

/// A slot of two lines and two half circles, its ends pushed apart, a little off and too long.
TDrawing MessySlot(std::mt19937& Random, double Push) {
  const auto Pushed = [&](const TPoint2D& P) {
    return P + tarnalgo::test::RandomPoint(Random, -Push, Push);
  };
  TDrawing Drawing = test::DrawingOf(
      {TLine2D{Pushed({0, 0}), Pushed({20, 0})}, TLine2D{Pushed({20, 10}), Pushed({0, 10})}});
  Drawing.Arcs.push_back({TArc2D::CreateBulge(Pushed({20, 0}), Pushed({20, 10}), 1.0), 0});
  Drawing.Arcs.push_back({TArc2D::CreateBulge(Pushed({0, 0}), Pushed({0, 10}), -1.0), 0});
  return Drawing;
}

TEST(TraceDrawing, ClosesOutlinesAndKeepsArcs) {
  std::mt19937 Random(6464);
  for (int Round = 0; Round < 50; ++Round) {
    SCOPED_TRACE(Round);
    TDrawing Drawing = MessySlot(Random, 0.03);
    Drawing.Circles.push_back({{{10, 5}, 2.0}, 0});
    const TTraced Traced(Drawing);
    EXPECT_EQ(2u, Traced.Drawing.Edges.size());
    EXPECT_EQ(2u, Traced.Drawing.Arcs.size());
    EXPECT_EQ(1u, Traced.Drawing.Circles.size());
    EXPECT_TRUE(FindLooseEnds(Traced.Sheet).Loose.empty());
    const TLABHPolygonList Regions = Traced.Regions();
    ASSERT_EQ(1, Regions.Count());
    EXPECT_EQ(2, Regions[0]->Count());
    EXPECT_NEAR(200 + 25 * kPi - 4 * kPi, Regions[0]->Area(), 3.0);
  }
}

TEST(TraceDrawing, CutsWhatCrosses) {
  // A plate whose sides run on beyond the corners, and a circle across its edge.
  TDrawing Drawing = test::DrawingOf(std::vector<TLine2D>{
      {{-5, 0}, {25, 0}}, {{20, -5}, {20, 15}}, {{25, 10}, {-5, 10}}, {{0, 15}, {0, -5}}});
  Drawing.Circles.push_back({{{20, 5}, 2.0}, 0});
  const TTraced Traced(Drawing, 0.0);
  EXPECT_EQ(3, Traced.Stats.Faces);
  EXPECT_EQ(1, Traced.Stats.Outsides);
  EXPECT_EQ(8, Traced.Stats.Dangling);
  EXPECT_EQ(2u, Traced.Drawing.Arcs.size());
  for (const TDrawnArc& Arc : Traced.Drawing.Arcs) {
    EXPECT_NEAR(2.0, Arc.Arc.Radius, 1e-3);
    EXPECT_NEAR(kPi, std::abs(Arc.Arc.SweepAngle), 1e-3);
  }
  const TLooseEnds Ends = FindLooseEnds(Traced.Sheet);
  EXPECT_EQ(8u, Ends.Loose.size());
  EXPECT_EQ(6u, Ends.Branches.size());
}

// Cut twice in almost one place, a circle leaves an arc whose ends lie close together: swung about
// them it would miss the circle by a hundred times the error of its ends.
TEST(TraceDrawing, LargeArcsStayWhereTheyWereDrawn) {
  std::mt19937 Random(6666);
  for (int Round = 0; Round < 50; ++Round) {
    SCOPED_TRACE(Round);
    const TPoint2D Out = TPoint2D(1, 0).RotateBy(tarnalgo::test::RandomPoint(Random, 0, 6).X);
    TDrawing Drawing = test::DrawingOf(std::vector<TLine2D>{
        {Out * 15, Out * 25}, {Out.RotateBy(0.005) * 15, Out.RotateBy(0.005) * 25}});
    Drawing.Circles.push_back({{{0, 0}, 20.0}, 0});
    const TTraced Traced(Drawing, 0.0);
    double Sweep = 0.0;
    for (const TDrawnArc& Arc : Traced.Drawing.Arcs) {
      Sweep += std::abs(Arc.Arc.SweepAngle);
      for (const double T : {0.25, 0.5, 0.75}) {
        EXPECT_NEAR(20.0, Arc.Arc.PointAtParam(T).Mag(), 5e-3);
      }
    }
    EXPECT_NEAR(kFullTurn, Sweep, 1e-6);
  }
}

// Their chords once crossed each other all along, and a circle came back in hundreds of pieces. At
// an end of an arc its chord may still leave the circle's by less than the chord error.
TEST(TraceDrawing, ArcsDrawnOverACircleDoNotWeaveAboutIt) {
  TDrawing Drawing;
  Drawing.Circles.push_back({{{3, 4}, 25.0}, Drawing.LayerIndex("0")});
  for (const double Sweep : {1.3, -2.9, 4.0}) {
    Drawing.Arcs.push_back({TArc2D({3, 4}, 25.0, 0.2 * Sweep, Sweep), 0});
  }
  const TTraced Traced(Drawing);
  EXPECT_LE(Traced.Stats.Faces, 1 + 6);
  EXPECT_EQ(0, Traced.Stats.Dangling);
  EXPECT_LE(Traced.Sheet.Chains.size(), 6u + 6u);
  ASSERT_EQ(1, Traced.Regions().Count());
  EXPECT_NEAR(625 * kPi, Traced.Regions()[0]->Area(), 0.1);
}

// What no chain crosses comes back piece by piece.
TEST(TraceDrawing, LeavesSoundDrawingsAsTheyAre) {
  std::mt19937 Random(6565);
  TDrawing Drawing = MessySlot(Random, 0.0);
  Drawing.Circles.push_back({{{10, 5}, 2.0}, 0});
  Drawing.Curves.push_back({{{40, 0}, {45, 1}, {42, 6}, {40, 0}}, Drawing.LayerIndex("other")});
  const TTraced Traced(Drawing);
  EXPECT_EQ(6, Traced.Stats.Pieces);
  EXPECT_EQ(3, Traced.Stats.Outsides);
  EXPECT_EQ(Drawing.Circles[0].Circle.Center, Traced.Drawing.Circles[0].Circle.Center);
  // Outsides run clockwise.
  const TVPolyline2D Curve(Traced.Drawing.Curves[0].Points);
  EXPECT_TRUE(Curve.IsEqualToReverse(TVPolyline2D(Drawing.Curves[0].Points), 0.0));
  EXPECT_EQ(Drawing.Curves[0].Layer, Traced.Drawing.Curves[0].Layer);
  for (const TDrawnArc& Arc : Traced.Drawing.Arcs) EXPECT_NEAR(5.0, Arc.Arc.Radius, 1e-12);
  test::ExpectSoundPlan(Traced.Drawing, {});
}

}  // namespace

}  // namespace sheet_planner
