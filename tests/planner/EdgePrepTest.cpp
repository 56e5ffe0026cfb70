#include "examples/sheet_planner/EdgePrep.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

#include "tests/planner/PlanChecks.h"
#include "tests/support/Generate.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

using test::DrawingOf;
using test::TotalLength;

TEST(PrepareSheet, CutsEachStretchOnce) {
  const struct {
    const char* Name;
    std::vector<TLine2D> Lines;
    int Edges;
    double Length;
  } Cases[] = {
      {"nothing", {}, 0, 0},
      {"repeated, the other way round", {{{0, 0}, {10, 0}}, {{10, 0}, {0, 0}}}, 1, 10},
      {"a part drawn again", {{{2, 0}, {5, 0}}, {{0, 0}, {10, 0}}}, 1, 10},
      {"overlap", {{{0, 0}, {6, 0}}, {{4, 0}, {10, 0}}}, 2, 10},
      {"three on top of each other",
       {{{0, 0}, {6, 0}}, {{5, 0}, {7, 0}}, {{1, 0}, {10, 0}}},
       2,
       10},
      {"touching stays two", {{{0, 0}, {5, 0}}, {{5, 0}, {10, 0}}}, 2, 10},
      {"apart", {{{0, 0}, {4, 0}}, {{5, 0}, {10, 0}}}, 2, 9},
      {"side by side beyond the gap", {{{0, 0}, {10, 0}}, {{0, 0.011}, {10, 0.011}}}, 2, 20},
      {"side by side within the gap", {{{0, 0}, {10, 0}}, {{2, 0.009}, {8, 0.009}}}, 1, 10},
      {"crossing", {{{0, -1}, {0, 1}}, {{-1, 0}, {1, 0}}}, 2, 4},
      {"crossing at a hair of an angle", {{{0, 0}, {100, 0}}, {{0, -0.1}, {100, 0.1}}}, 2, 200},
      {"no length", {{{3, 3}, {3, 3}}, {{0, 0}, {0.009, 0}}}, 0, 0},
      {"vertical overlap", {{{0, 0}, {0, 6}}, {{0, 10}, {0, 4}}}, 2, 10},
      {"across half a turn", {{{0, 0}, {10, 1e-9}}, {{12, -1e-9}, {5, 0}}}, 2, 12},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TSheet Sheet = PrepareSheet(DrawingOf(Case.Lines), {});
    EXPECT_EQ(Case.Edges, static_cast<int>(Sheet.Edges.size()));
    EXPECT_NEAR(Case.Length, TotalLength(Sheet), 1e-3);
  }
}

TEST(PrepareSheet, SnapsToTheFirstPointAndNeverMeltsAChain) {
  TPrepOptions Options;
  Options.Snap = 0.1;
  std::vector<TLine2D> Lines{
      {{0, 0}, {10, 0}}, {{10.06, 0.05}, {10, 10}}, {{9.95, 10.05}, {0, 0.09}}};
  const TSheet Loop = PrepareSheet(DrawingOf(Lines), Options);
  ASSERT_EQ(3U, Loop.Edges.size());
  EXPECT_EQ(3, Loop.Stats.EndsMoved);
  std::multiset<int> Ends;
  for (const TSheetEdge& Edge : Loop.Edges) Ends.insert({Edge.FromAnchor, Edge.ToAnchor});
  for (const int End : Ends) EXPECT_EQ(2U, Ends.count(End));

  // A circle of chords half as long as the gap: still a circle, of fewer chords.
  Lines.clear();
  for (int I = 0; I < 1256; ++I) {
    const auto At = [](int K) { return TPoint2D(10, 0).RotateBy(K * kFullTurn / 1256); };
    Lines.push_back({At(I), At((I + 1) % 1256)});
  }
  const TSheet Circle = PrepareSheet(DrawingOf(Lines), Options);
  EXPECT_GT(Circle.Edges.size(), 400U);
  EXPECT_NEAR(kFullTurn * 10, TotalLength(Circle), 0.5);
}

// On a small grid collinear and overlapping edges come by themselves. Cells of unit steps along the
// edge's own direction are counted in integers.
TEST(PrepareSheet, KeepsTheLengthOfTheUnionOnAGrid) {
  std::mt19937 Random(20240917);
  const TPoint2D Directions[] = {{1, 0}, {0, 1}, {1, 1}, {1, -1}, {2, 1}, {1, 3}};
  for (int Round = 0; Round < 60; ++Round) {
    SCOPED_TRACE(Round);
    // Turned and far from the origin in every other round: nothing depends on the frame.
    const double Turn = Round % 2 == 0 ? 0.0 : Round * 0.1;
    const TPoint2D Shift = Round % 2 == 0 ? TPoint2D() : TPoint2D(4e5, -3e5);
    std::vector<TLine2D> Lines;
    std::set<std::array<int, 3>> Steps;  // direction, start of the step
    double Length = 0.0;
    for (int I = 0; I < 40 + Round * 5; ++I) {
      const int Which = tarnalgo::test::RandomInt(Random, 0, 5);
      const TPoint2D Way = Directions[Which];
      const TPoint2D Start = tarnalgo::test::RandomGridPoint(Random, -6, 6);
      const int Count = tarnalgo::test::RandomInt(Random, 1, 7);
      for (int K = 0; K < Count; ++K) {
        const TPoint2D At = Start + Way * K;
        const std::array<int, 3> Step{Which, static_cast<int>(At.X), static_cast<int>(At.Y)};
        if (Steps.insert(Step).second) Length += Way.Mag();
      }
      TLine2D Line{(Start.RotateBy(Turn)) + Shift, (Start + Way * Count).RotateBy(Turn) + Shift};
      Lines.push_back(tarnalgo::test::RandomInt(Random, 0, 1) == 0 ? Line : Line.ReverseParam());
    }
    TPrepOptions Options;
    Options.Snap = 1e-4;
    const TSheet Sheet = PrepareSheet(DrawingOf(Lines), Options);
    EXPECT_NEAR(Length, TotalLength(Sheet), Length * 1e-6);
    const TPrepStats& Stats = Sheet.Stats;
    EXPECT_EQ(static_cast<int>(Lines.size()) - Stats.Repeated - Stats.Covered,
              static_cast<int>(Sheet.Edges.size()));
  }
}

TEST(PrepareSheet, FindsWhatIsDrawnAgainInAnyDirection) {
  // A fan of directions, each edge drawn again in part and a hair off: no class of directions may
  // end between the two.
  std::vector<TLine2D> Lines;
  for (int I = 0; I < 600; ++I) {
    const TPoint2D Way = TPoint2D(1, 0).RotateBy(I * kPi / 600);
    const TPoint2D Side = Way.RotateCcw90() * (I % 2 == 0 ? 5e-3 : -5e-3);
    Lines.push_back({Way * 100, Way * 140});
    Lines.push_back({Way * 105 - Side, Way * 130 + Side});
  }
  EXPECT_EQ(600, PrepareSheet(DrawingOf(Lines), {}).Stats.Covered);
}

TEST(PrepareSheet, TakesHeapsOfEdgesOnOneLine) {
  constexpr int kCount = 50000;
  std::vector<TLine2D> Equal(kCount, TLine2D({0, 0}, {5, 5}));
  EXPECT_EQ(kCount - 1, PrepareSheet(DrawingOf(Equal), {}).Stats.Repeated);
  std::vector<TLine2D> Nested;
  std::vector<TLine2D> Staggered;
  for (int I = 0; I < kCount; ++I) {
    Nested.push_back({{0.1 * I, 0}, {20000 - 0.1 * I, 0}});
    Staggered.push_back({{0.1 * I, 0}, {0.1 * I + 300, 0}});
  }
  const TSheet OneCut = PrepareSheet(DrawingOf(Nested), {});
  EXPECT_EQ(1U, OneCut.Edges.size());
  const TSheet Chain = PrepareSheet(DrawingOf(Staggered), {});
  EXPECT_NEAR(0.1 * (kCount - 1) + 300, TotalLength(Chain), 1e-3);
}

TEST(PrepareSheet, DropsRepeatedArcsCirclesAndCurves) {
  TDrawing Drawing;
  const TArc2D Arc({0, 0}, 5, 0.3, 1.2);
  const TArc2D Back({0, 0}, 5, 1.5, -1.2);
  const TArc2D Other({0, 0}, 5, 0.3, 1.2 - kFullTurn);  // the same ends, round the other side
  for (const TArc2D& Item : {Arc, Back, Other}) Drawing.Arcs.push_back({Item, 0});
  for (const double Radius : {2.0, 2.001, 3.0}) Drawing.Circles.push_back({{{1, 1}, Radius}, 0});
  Drawing.Arcs.push_back({TArc2D({1, 1}, 3, 0, kFullTurn - 1e-4), 0});  // a circle but for a hair
  const std::vector<TPoint2D> Points{{0, 0}, {1, 1}, {2, 0}, {3, 1}};
  Drawing.Curves.push_back({Points, 0});
  Drawing.Curves.push_back({{Points.rbegin(), Points.rend()}, 0});
  const TSheet Sheet = PrepareSheet(Drawing, {});
  ASSERT_EQ(3U, Sheet.Chains.size());
  EXPECT_TRUE(Sheet.Chains[0].IsArc() && Sheet.Chains[1].IsArc() && !Sheet.Chains[2].IsArc());
  EXPECT_NEAR(kFullTurn * 5, Sheet.Chains[0].Chain[0].Length() + Sheet.Chains[1].Chain[0].Length(),
              1e-9);
  EXPECT_EQ(2U, Sheet.Circles.size());
  EXPECT_EQ(4, Sheet.Stats.RepeatedOther);
}

}  // namespace

}  // namespace sheet_planner
