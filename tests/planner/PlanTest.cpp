#include <gtest/gtest.h>

#include <cmath>

#include "examples/sheet_planner/GapCheck.h"
#include "examples/sheet_planner/LooseEnds.h"
#include "examples/sheet_planner/NearestEnds.h"
#include "examples/sheet_planner/Planner.h"
#include "examples/sheet_planner/Report.h"
#include "examples/sheet_planner/RunFinder.h"
#include "examples/sheet_planner/SampleSheets.h"
#include "examples/sheet_planner/SvgWriter.h"
#include "tests/planner/PlanChecks.h"
#include "tests/support/Generate.h"
#include "tests/support/Restore.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

TSheet SheetOf(const std::vector<TLine2D>& Lines) {
  TPrepOptions Options;
  Options.Snap = 1e-6;
  return PrepareSheet(test::DrawingOf(Lines), Options);
}

// Each list is two edges; moved, turned and reversed they are one run or two as before.
TEST(FindRuns, ChainsWhatOneMovementCanCut) {
  const struct {
    const char* Name;
    TLine2D First;
    TLine2D Second;
    bool IsOneRun;
  } Cases[] = {
      {"a gap of exactly the limit", {{0, 0}, {10, 0}}, {{30, 0}, {40, 0}}, true},
      {"a longer gap", {{0, 0}, {10, 0}}, {{30.001, 0}, {40, 0}}, false},
      {"touching", {{0, 0}, {10, 0}}, {{10, 0}, {20, 0}}, true},
      {"a little aside", {{0, 0}, {10, 0}}, {{12, 0.049}, {20, 0.049}}, true},
      {"too far aside", {{0, 0}, {10, 0}}, {{12, 0.2}, {20, 0.2}}, false},
      {"side by side", {{0, 0}, {10, 0}}, {{9, 0.01}, {20, 0.01}}, false},
      {"half a degree off, but near", {{0, 0}, {10, 0}}, {{11, 0}, {13, 0.017}}, true},
      {"a degree off, and long", {{0, 0}, {10, 0}}, {{11, 0}, {50, 0.7}}, false},
      {"another direction", {{0, 0}, {10, 0}}, {{11, 0}, {11.6, 0.03}}, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    for (const double Turn : {0.0, 0.4, 1.5207, 1.57079, 1.6, 3.1, 3.1412, 3.14159}) {
      for (const TPoint2D& Shift : {TPoint2D(), TPoint2D(1e5, -2e5)}) {
        for (int Way = 0; Way < 4; ++Way) {
          SCOPED_TRACE(testing::Message()
                       << "turned by " << Turn << ", X + " << Shift.X << ", direction " << Way);
          const auto Place = [&](const TLine2D& Line, bool IsReversed) {
            const TLine2D Placed{Line.StartPoint.RotateBy(Turn) + Shift,
                                 Line.EndPoint.RotateBy(Turn) + Shift};
            return IsReversed ? Placed.ReverseParam() : Placed;
          };
          const TSheet Sheet =
              SheetOf({Place(Case.Second, (Way & 1) != 0), Place(Case.First, (Way & 2) != 0)});
          EXPECT_EQ(Case.IsOneRun ? 1 : 2, GroupSheet(Sheet, TNesting(Sheet)).Stats.Runs);
        }
      }
    }
  }
}

TEST(FindRuns, FollowsNoBend) {
  // Chords of a large circle: each is in line with the next, all together are not.
  std::vector<TLine2D> Lines;
  for (int I = 0; I < 60; ++I) {
    const auto At = [](double A) { return TPoint2D(2000, 0).RotateBy(A); };
    Lines.push_back({At(0.01 * I), At(0.01 * I + 0.005)});
  }
  const TSheet Sheet = SheetOf(Lines);
  const TPlan Plan = PlanSheet(Sheet);
  EXPECT_GT(Plan.Stats.Runs, 20);
  test::ExpectSound(Sheet, Plan, 1e-6);
}

TEST(PlanSheet, FliesStretchesWithinTheScanLengths) {
  const struct {
    const char* Name;
    std::vector<TLine2D> Lines;
    int Flown;
    int Short;
    int Long;
  } Cases[] = {
      {"just too short", {{{0, 0}, {0.499, 0}}}, 0, 1, 0},
      {"just long enough", {{{0, 0}, {0.5, 0}}}, 1, 0, 0},
      {"as long as allowed", {{{0, 0}, {50, 0}}}, 1, 0, 0},
      {"too long", {{{0, 0}, {50.001, 0}}}, 0, 0, 1},
      {"bits at both ends",
       {{{0, 0}, {10, 0}}, {{10.004, 0}, {10, 0}}, {{-0.1, 0}, {0, 0}}},
       3,
       0,
       0},
      {"bits only", {{{0, 0}, {0.2, 0}}, {{0.2, 0}, {0.3, 0}}, {{0.6, 0}, {0.3, 0}}}, 3, 0, 0},
      {"a bit beside a corner",
       {{{0, 0}, {10, 0}}, {{10, 0}, {10.1, 0}}, {{10, 0}, {10, 9}}},
       3,
       0,
       0},
      {"a bit that bends off", {{{0, 0}, {10, 0}}, {{10, 0}, {10.1, 0.001}}}, 1, 1, 0},
      {"a bit that turns back", {{{0, 0}, {10, 0}}, {{10, 0}, {9.9, 0.001}}}, 1, 1, 0},
      {"a bit that is apart", {{{0, 0}, {10, 0}}, {{10.01, 0}, {10.1, 0}}}, 1, 1, 0},
      {"a bit of an edge too long", {{{0, 0}, {60, 0}}, {{60, 0}, {60.1, 0}}}, 0, 1, 1},
  };
  for (const auto& Case : Cases) {
    // 3.1406 is where the angle of a line jumps.
    for (const double Turn : {0.0, 0.4, 1.5707, 3.1406}) {
      if (Turn != 0.0 && Case.Lines.size() == 1) continue;  // exact limits, as they stand
      SCOPED_TRACE(testing::Message() << Case.Name << ", turned by " << Turn);
      std::vector<TLine2D> Lines;
      for (const TLine2D& Line : Case.Lines) {
        Lines.push_back({Line.StartPoint.RotateBy(Turn), Line.EndPoint.RotateBy(Turn)});
      }
      const TSheet Sheet = SheetOf(Lines);
      const TPlan Plan = PlanSheet(Sheet);
      EXPECT_EQ(Case.Flown, Plan.Stats.FlownEdges);
      EXPECT_EQ(Case.Short, Plan.Stats.ShortEdges);
      EXPECT_EQ(Case.Long, Plan.Stats.LongEdges);
      test::ExpectSound(Sheet, Plan, 1e-6);
    }
  }
}

TEST(PlanSheet, SplitsAPassWhereItWouldCrossACut) {
  const std::vector<TLine2D> Squares{{{0, 0}, {10, 0}},  {{0, 0}, {0, 9}},   {{10, 0}, {10, 9}},
                                     {{14, 0}, {24, 0}}, {{14, 0}, {14, 9}}, {{24, 0}, {24, 9}}};
  const struct {
    const char* Name;
    std::vector<TLine2D> Between;
    int Rejected;
  } Cases[] = {
      {"nothing between: the corners only touch", {}, 0},
      // A flattened corner may begin with a bit that lies in the way of the gap.
      {"a bit that goes on from the corner", {{{10, 0}, {10.004, 0}}}, 0},
      {"a cut across", {{{12, -1}, {12, 1}}}, 1},
      {"a cut that ends on the gap", {{{12, 0}, {12, 5}}}, 1},
      {"a cut that ends on the middle of the gap from below", {{{11, 0}, {12, -5}}}, 1},
      {"a cut that stops short of it", {{{12, 0.01}, {12, 5}}}, 0},
      {"a cut through the corner where it starts", {{{9, -3}, {11, 3}}}, 0},
      {"a cut through the corner where it ends", {{{15, 3}, {13, -3}}}, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    std::vector<TLine2D> Lines = Squares;
    Lines.insert(Lines.end(), Case.Between.begin(), Case.Between.end());
    const TSheet Sheet = SheetOf(Lines);
    const TPlan Plan = PlanSheet(Sheet);
    EXPECT_EQ(Case.Rejected, Plan.Stats.GapsCrossing);
    EXPECT_EQ(1 - Case.Rejected, Plan.Stats.GapsAccepted);
    test::ExpectSound(Sheet, Plan, 1e-6);
  }
}

TEST(PlanSheet, FliesAcrossNoCircleArcOrCurve) {
  for (int Kind = 0; Kind < 3; ++Kind) {
    for (const double Aside : {0.0, 0.9, 1.1}) {
      SCOPED_TRACE(testing::Message() << "kind " << Kind << ", " << Aside << " aside");
      TDrawing Drawing;
      Drawing.AddEdge({0, 0}, {10, 0}, 0);
      Drawing.AddEdge({16, 0}, {26, 0}, 0);
      const TPoint2D Center{13, Aside};
      if (Kind == 0) Drawing.Circles.push_back({{Center, 1}, 0});
      if (Kind == 1) Drawing.Arcs.push_back({TArc2D(Center, 1, 3, 3.5), 0});
      if (Kind == 2) {
        Drawing.Curves.push_back({{Center + TPoint2D(-1, 0), Center + TPoint2D(0, -1),
                                   Center + TPoint2D(1, 0), Center + TPoint2D(2, 3)},
                                  0});
      }
      EXPECT_EQ(Aside < 1 ? 1 : 0, test::ExpectSoundPlan(Drawing, {}).Stats.GapsCrossing);
    }
  }
}

TEST(PlanSheet, IsSoundOnTheSamples) {
  for (const TDrawing& Drawing :
       {PerforatedPlate(16, 12), BracketNest(2, 2), SquareGrid(12, 9), PerforatedPlate(1, 1)}) {
    SCOPED_TRACE(Drawing.Name);
    test::ExpectSoundPlan(Drawing, {});
  }
}

TEST(PlanSheet, MakesOnePassOfARowOfSquares) {
  const TPlan Plan = PlanSheet(PrepareSheet(SquareGrid(20, 3), {}));
  EXPECT_EQ(6U + 40U, Plan.Passes.size());  // two a row, two a column
  EXPECT_EQ(6 * 19 + 40 * 2, Plan.Stats.GapsAccepted);
  EXPECT_EQ(2, Plan.Stats.Groups);
}

// Grids of squares, turned, with duplicates, stray lines across and a circle here and there.
TEST(PlanSheet, IsSoundOnRandomSheets) {
  std::mt19937 Random(7);
  for (int Round = 0; Round < 25; ++Round) {
    SCOPED_TRACE(Round);
    TDrawing Drawing;
    const int Parts = tarnalgo::test::RandomInt(Random, 1, 4);
    for (int Part = 0; Part < Parts; ++Part) {
      const TDrawing Squares = SquareGrid(tarnalgo::test::RandomInt(Random, 1, 6), 3);
      const double Turn = 0.05 * tarnalgo::test::RandomInt(Random, 0, 62);
      const TPoint2D Shift = tarnalgo::test::RandomPoint(Random, -60, 60);
      for (const TDrawnEdge& Edge : Squares.Edges) {
        const TPoint2D From = Edge.Line.StartPoint.RotateBy(Turn) + Shift;
        const TPoint2D To = Edge.Line.EndPoint.RotateBy(Turn) + Shift;
        Drawing.AddEdge(From, To, Part);
        if (tarnalgo::test::RandomInt(Random, 0, 3) == 0)
          Drawing.AddEdge(Lerp(From, To, 0.3), To, Part);
      }
      Drawing.AddEdge(tarnalgo::test::RandomPoint(Random, -60, 60),
                      tarnalgo::test::RandomPoint(Random, -60, 60), Part);
      Drawing.Circles.push_back({{tarnalgo::test::RandomPoint(Random, -60, 60), 3.0}, Part});
    }
    TPrepOptions Options;
    Options.Snap = 1e-5;
    test::ExpectSoundPlan(Drawing, Options);
  }
}

TEST(PlanSheet, TakesAnySheet) {
  for (const std::vector<TLine2D>& Lines : {std::vector<TLine2D>{},
                                            {{{0, 0}, {1, 0}}},
                                            {{{-1e9, -1e9}, {1e9, 1e9}}},
                                            {{{1e9, 0}, {1e9, 1}}, {{1e9, 3}, {1e9, 4}}},
                                            {{{0, 0}, {0, 1e-5}}}}) {
    const TDrawing Drawing = test::DrawingOf(Lines);
    const TSheet Sheet = PrepareSheet(Drawing, {});
    const TPlan Plan = PlanSheet(Sheet);
    EXPECT_NE(std::string::npos, PlanSvg(Drawing, Sheet, Plan).find("</svg>"));
    EXPECT_EQ(std::string::npos, PlanSvg(Drawing, Sheet, Plan).find("nan"));
  }
}

TEST(PlanSheet, ReadsTheTunables) {
  const TSheet Sheet = PrepareSheet(SquareGrid(5, 5), {});
  const tarnalgo::test::TRestore Distance(MaxConnectDistance);
  MaxConnectDistance = 3.9;  // the squares stand 4 apart
  const TPlan Plan = PlanSheet(Sheet);
  EXPECT_EQ(100U, Plan.Passes.size());
  EXPECT_EQ(80, Plan.Stats.GapsTooLong);
}

// The chord of the joint keeps clear where the joint itself bows into the cut, and the reverse.
TEST(TGapCheck, FollowsTheBowOfAJoint) {
  TGePolyBezier2D Joint;  // reaches Y = 3 in its middle
  Joint.AddBezier({{0, 0}, {0, 4}, {10, 4}, {10, 0}});
  const struct {
    const char* Name;
    TLine2D Cut;
    bool IsClear;
  } Cases[] = {{"across its top", {{5, 2.9}, {5, 6}}, false},
               {"just above its top", {{5, 3.1}, {5, 6}}, true},
               {"across its chord alone", {{5, -1}, {5, 2.9}}, true},
               {"across it near its end", {{9, 1}, {11, 1}}, false},
               {"touching both ends", {{0, 0}, {10, 0}}, true}};
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.IsClear, TGapCheck(SheetOf({Case.Cut})).IsClear(Joint));
  }
}

TEST(FindLooseEnds, TellsEndsFromBranchesAndCorners) {
  const TSheet Sheet =
      SheetOf({{{0, 0}, {9, 0}}, {{9, 0}, {9, 9}}, {{9, 9}, {0, 0}}, {{9, 9}, {20, 9}}});
  const TLooseEnds Ends = FindLooseEnds(Sheet);
  EXPECT_EQ((std::vector<TPoint2D>{{20, 9}}), Ends.Loose);
  EXPECT_EQ((std::vector<TPoint2D>{{9, 9}}), Ends.Branches);
}

TEST(TNearestEnds, FindsTheNearestOfThoseThatAreOn) {
  std::mt19937 Random(11);
  std::vector<TPoint2D> Places;
  for (int I = 0; I < 60; ++I) Places.push_back(tarnalgo::test::RandomGridPoint(Random, 0, 9));
  TNearestEnds Ends(Places);
  std::vector<char> IsOn(Places.size(), 0);
  for (int Round = 0; Round < 600; ++Round) {
    const int Changed = tarnalgo::test::RandomInt(Random, 0, 59);
    char& State = IsOn[static_cast<std::size_t>(Changed)];
    State = Round < 60 || !State;
    Ends.Switch(Changed, State);
    const TPoint2D P = tarnalgo::test::RandomGridPoint(Random, -3, 12);
    int Nearest = -1;
    for (int I = 0; I < 60; ++I) {
      const auto At = [&](int Place) { return Places[static_cast<std::size_t>(Place)]; };
      if (!IsOn[static_cast<std::size_t>(I)]) continue;
      if (Nearest < 0 || P.DistanceTo(At(I)) < P.DistanceTo(At(Nearest))) Nearest = I;
    }
    EXPECT_EQ(Nearest, Ends.Nearest(P));
  }
}

// Rings in rings, a ring beside them and a loose line within: levels by the depth below.
TEST(TNesting, TellsWhatLiesInside) {
  TDrawing Drawing;
  const auto AddSquare = [&Drawing](double Low, double High) {
    Drawing.AddEdge({Low, Low}, {High, Low}, 0);
    Drawing.AddEdge({High, High}, {High, Low}, 0);
    Drawing.AddEdge({High, High}, {Low, High}, 0);
    Drawing.AddEdge({Low, High}, {Low, Low}, 0);
  };
  AddSquare(0, 100);  // figure 0
  AddSquare(10, 60);
  AddSquare(70, 80);
  Drawing.AddEdge({20, 30}, {50, 30}, 0);  // 3: a line has no inside
  Drawing.AddEdge({5, 5}, {10, 10}, 0);    // hangs on 1, outside of it
  Drawing.Circles.push_back({{{30, 40}, 5}, 0});
  Drawing.Circles.push_back({{{30, 40}, 4}, 0});
  Drawing.Circles.push_back({{{200, 50}, 4}, 0});
  const TNesting Nesting(PrepareSheet(Drawing, {}));
  const int Parents[] = {-1, 0, 0, 1, 1, 4, -1};
  const int Levels[] = {3, 2, 0, 0, 1, 0, 0};
  ASSERT_EQ(7, Nesting.Count());
  for (int I = 0; I < 7; ++I) {
    EXPECT_EQ(Parents[I], Nesting.Parent(I)) << I;
    EXPECT_EQ(Levels[I], Nesting.Level(I)) << I;
  }
  // 0 with two holes, the ring of 4 and 5, 6.
  const TLABHPolygonList Regions = Nesting.Regions();
  EXPECT_EQ(3, Regions.Count());
  EXPECT_NEAR(100 * 100 - 50 * 50 - 10 * 10 + kPi * (25 - 16 + 16), Regions.Area(), 1e-9);
}

TEST(TNesting, IsTrueToArcsAndEdges) {
  const struct {
    const char* Name;
    TLine2D Line;
    int Parent;
  } Cases[] = {
      {"nearer to the arc than its chords", TLine2D{{-999.9995, 0}, {-999, 0}}, 0},
      {"a hair outside", TLine2D{{-1000.0005, 0}, {-1001, 0}}, -1},
      {"from edge to edge", TLine2D{{0, 1000}, {0, -1000}}, 0},
      {"touching from outside", TLine2D{{0, 1000}, {5, 1001}}, -1},
  };
  for (const auto& Case : Cases) {
    for (const double Turn : {0.0, 0.001, 0.002, 0.003, 0.004, 0.005, 0.006}) {
      SCOPED_TRACE(testing::Message() << Case.Name << ", turned by " << Turn);
      TDrawing Drawing;
      Drawing.Arcs.push_back({TArc2D({0, 0}, 1000, 1, 2), 0});
      Drawing.Arcs.push_back({TArc2D({0, 0}, 1000, 3, kFullTurn - 2), 0});
      const TNesting Alone(PrepareSheet(Drawing, {}));
      EXPECT_NEAR(kPi * 1e6, Alone.Regions().Area(), 1e-6);
      Drawing.AddEdge(Case.Line.StartPoint.RotateBy(Turn), Case.Line.EndPoint.RotateBy(Turn), 0);
      const TNesting Nesting(PrepareSheet(Drawing, {}));
      const int Line = Nesting.OfEdgeEnd(Drawing.Edges[0].Line.EndPoint);
      EXPECT_EQ(Case.Parent < 0 ? -1 : 1 - Line, Nesting.Parent(Line));
    }
  }
}

TEST(OrderPlan, GoesThroughRowsToAndFro) {
  const TPlan Plan = PlanSheet(PrepareSheet(SquareGrid(20, 30), {}));
  int Far = 0;
  for (std::size_t I = 1; I < Plan.Passes.size(); ++I) {
    if (Plan.Passes[I - 1].EndPoint().DistanceTo(Plan.Passes[I].StartPoint()) > 12.0) ++Far;
  }
  EXPECT_LE(Far, 1);  // from the rows to the columns
}

TEST(OrderPlan, TellsItsProgress) {
  int Last = 0;
  const TSheet Sheet = PrepareSheet(SquareGrid(9, 9), {});
  const TPlan Plan = PlanSheet(Sheet, [&Last](void*, int Total, int Current) {
    EXPECT_EQ(36, Total);
    EXPECT_GT(Current, Last);
    Last = Current;
  });
  EXPECT_EQ(36, Last);
}

TEST(Output, NamesAreSafeInThePicture) {
  TDrawing Drawing = SquareGrid(1, 1);
  Drawing.Name = "<a & \"b\">\n\xFF\xE5\x9B\xBE\xEF\xBF\xBF";
  const TSheet Sheet = PrepareSheet(Drawing, {});
  const std::string Svg = PlanSvg(Drawing, Sheet, PlanSheet(Sheet));
  EXPECT_NE(std::string::npos, Svg.find("<title>&lt;a &amp; &quot;b&quot;&gt;??\xE5\x9B\xBE???"
                                        "</title>"));
}

TEST(Output, LegendNamesWhatIsDrawnAndNothingElse) {
  const TDrawing Drawing = test::DrawingOf(
      std::vector<TLine2D>{{{0, 0}, {9, 0}}, {{9, 0}, {18, 5}}, {{9, 0}, {18, -5}}});
  const TSheet Sheet = PrepareSheet(Drawing, {});
  const std::string Svg = PlanSvg(Drawing, Sheet, PlanSheet(Sheet));
  for (const char* Entry : {">3 loose ends<", ">1 branch point<"}) {
    EXPECT_NE(std::string::npos, Svg.find(Entry)) << Entry;
  }
  for (const char* Entry : {" circle", " gap", " ordinary contours<"}) {
    EXPECT_EQ(std::string::npos, Svg.find(Entry, Svg.find("id=\"order\""))) << Entry;
  }
}

}  // namespace

}  // namespace sheet_planner
