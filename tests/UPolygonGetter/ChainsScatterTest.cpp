#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <polyclipping/clipper.hpp>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "geometryAlgo/UPolygonGetter.h"
#include "tests/support/Generate.h"
#include "tests/support/GridGeometry.h"

namespace tarnalgo {
namespace {

using TCourses = std::vector<std::vector<TPoint2D>>;

TMChainExtends Scattered(const TCourses& Curves, double Gap, TScatterStats* Stats = nullptr) {
  TMChainsScatter Scatter(Gap);
  for (const auto& Points : Curves) Scatter.AddCurve(TVPolyline2D(Points));
  TMChainExtends Chains = Scatter.GetChains();
  if (Stats) *Stats = Scatter.Stats();
  return Chains;
}

/// How many ends of chains meet at each node.
std::map<std::pair<std::int64_t, std::int64_t>, int> Degrees(const TMChainExtends& Chains) {
  std::map<std::pair<std::int64_t, std::int64_t>, int> Result;
  for (const TMChainExtend* Chain : Chains) {
    for (const TPoint2D& P : {Chain->First(), Chain->Last()}) {
      const TIntPoint Node = TransToInt(P);
      ++Result[{Node.X, Node.Y}];
    }
  }
  return Result;
}

TEST(TMChainsScatter, OfTwoNodesNearAnEndTheFirstTakesIt) {
  const std::vector<TPoint2D> Left{{0, 0}, {-5, 0}};
  const std::vector<TPoint2D> Right{{0.0024, 0}, {5, 0}};
  for (const auto& [First, Second] : {std::pair(Left, Right), std::pair(Right, Left)}) {
    const TMChainExtends Chains = Scattered({First, Second, {{0.0012, 0}, {0, 5}}}, 0.0);
    ASSERT_EQ(3, Chains.Count());
    EXPECT_EQ(First.front(), Chains[2]->First());
  }
}

TEST(TMChainsScatter, CutsSnapsAndDropsWhatRepeats) {
  const std::vector<TPoint2D> Square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};
  const struct {
    const char* Name;
    TCourses Curves;
    int Chains;
    int LooseEnds;
    int Outlines;
  } Cases[] = {
      {"nothing", {}, 0, 0, 0},
      {"a closed curve stays whole", {Square}, 1, 0, 2},
      {"a cross", {{{-5, 0}, {5, 0}}, {{0, -5}, {0, 5}}}, 4, 4, 0},
      {"a loop of a curve through itself", {{{-5, 0}, {5, 0}, {5, 5}, {0, 5}, {0, -5}}}, 3, 2, 2},
      {"a curve over its own start", {{{0, 0}, {5, 0}, {5, 5}, {0, 5}, {0, -5}}}, 2, 1, 2},
      {"a curve drawn again backwards", {Square, {{0, 0}, {0, 10}, {10, 10}}}, 3, 0, 2},
      {"a curve that goes back on itself", {{{0, 0}, {9, 0}, {4, 0}}}, 2, 2, 0},
      {"ends a gap apart", {{{0, 0}, {5, 0}, {5, 5}}, {{5.05, 5.05}, {0, 5}, {0, -0.08}}}, 2, 0, 2},
      {"ends further apart", {{{0, 0}, {5, 0}, {5, 5}}, {{5.2, 5.2}, {0, 5}, {0, 0}}}, 2, 2, 0},
      {"one end near another curve, one beyond it", {Square, {{5, 0.09}, {5, 10.09}}}, 4, 0, 3},
      {"three ends near each other",
       {{{0, 0}, {5, 5}}, {{10, 0}, {5.05, 5}}, {{5, 10}, {5, 5.07}}},
       3,
       3,
       0},
      {"a curve closed within the gap", {{{0, 0}, {5, 0}, {5, 5}, {0, 0.06}}}, 1, 0, 2},
      {"an edge shorter than the gap keeps its ends", {{{0, 0}, {0.08, 0}}}, 1, 2, 0},
      {"nearest first", {{{0, 0}, {5, 0}}, {{5.09, 0}, {9, 0}}, {{5, 0.01}, {5, 9}}}, 3, 3, 0},
      {"a gap on exact ends that touch a curve",
       {Square, {{5, 0}, {5, -5}}, {{5.05, 0}, {6, -5}}},
       5,
       2,
       2},
      {"an end set on a line whose own end is snapped afterwards",
       {{{10, 0}, {10, 9.91}}, {{10, 10}, {0, 10}, {0, 0}, {10, 0}}, {{5, 0}, {5, 9.96}}},
       5,
       0,
       3},
      {"a touch from below of a line whose end is snapped upwards",
       {{{10, 0.09}, {10, 5}, {0, 5}, {0, 0}},
        {{2, 0}, {2, -3}, {6, -3}, {6, 0}},
        {{0, 0}, {10, 0}}},
       5,
       0,
       3},
      {"two ends that meet on a line whose end is snapped",
       {{{10, 0.09}, {10, 5}, {0, 5}, {0, 0}},
        {{2, 0}, {2, -3}},
        {{2, 0}, {3, -3}},
        {{2, -3}, {3, -3}},
        {{0, 0}, {10, 0}}},
       6,
       0,
       3},
      {"a ring that runs back along its seam", {{{0, 0}, {9, 0}, {9, 5}, {5, 0}, {0, 0}}}, 2, 1, 2},
      {"a short curve to a joint",
       {{{0, 0}, {5, 0}}, {{5, 0}, {9, 0}}, {{5, 0.05}, {5, 0.19}}},
       3,
       3,
       0},
      {"a stub does not go to its own other end",
       {{{0, 0}, {5, 0}}, {{5, 0}, {9, 0}}, {{5, 0}, {5, 0.05}}},
       2,
       2,
       0},
      {"a joint nearer than another end",
       {{{0, 0}, {5, 0}}, {{5, 0}, {0, 1}}, {{5.06, 0}, {4, 5}}, {{5.14, 0}, {9, -5}}},
       4,
       5,
       0},
      {"no larger than a node", {{{0, 0}, {0.0005, 0}, {0, 0}}}, 0, 0, 0},
      {"an end within the tolerance of a line cuts it", {Square, {{5, -8e-7}, {5, -5}}}, 3, 1, 2},
      {"an end near the last point of a ring that is closed within the tolerance",
       {{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, -5e-7}}, {{-0.05, -0.05}, {-5, -5}}},
       2,
       1,
       2},
      {"the first of two joints beside each other is beyond the gap",
       {{{5.09, 0}, {9, 0}},
        {{5.09, 0}, {9, -5}},
        {{5.06, 0}, {6, 5}},
        {{5.06, 0}, {6, -5}},
        {{0, 0}, {4.97, 0}}},
       5,
       5,
       0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TMChainExtends Chains = Scattered(Case.Curves, 0.1);
    EXPECT_EQ(Case.Chains, Chains.Count());
    int LooseEnds = 0;
    for (const auto& [Node, Degree] : Degrees(Chains)) LooseEnds += Degree == 1 ? 1 : 0;
    EXPECT_EQ(Case.LooseEnds, LooseEnds);
    TTopoLinks Links = TTopoLinks::CreateTopoLink(Chains);
    TPointsOfOutline PointsOf;
    TChainsOfOutline ChainsOf;
    TVPolyline2DList Outlines;
    Links.GetPolygons(PointsOf, ChainsOf, Outlines);
    EXPECT_EQ(Case.Outlines, Outlines.Count());
  }
}

// Each chain runs along the stretch that its source names; the stretches of a curve follow each
// other from its start to its end where nothing is drawn twice.
TEST(TMChainsScatter, ChainsRememberTheirStretchOfTheCurve) {
  std::mt19937 Random(6262);
  for (int Round = 0; Round < 50; ++Round) {
    TCourses Curves(4);
    for (auto& Points : Curves) {
      for (int I = 0; I < 5; ++I) Points.push_back(test::RandomPoint(Random, 0, 100));
    }
    std::vector<double> Reached(Curves.size(), 0.0);
    TScatterStats Stats;
    const TMChainExtends Chains = Scattered(Curves, 0.0, &Stats);
    if (Stats.Repeated > 0) continue;  // a spike narrower than a node, run there and back
    for (const TMChainExtend* Chain : Chains) {
      const TChainSource& Source = Chain->Source();
      const TVPolyline2D Curve(Curves[static_cast<std::size_t>(Source.Curve)]);
      EXPECT_EQ(Reached[static_cast<std::size_t>(Source.Curve)], Source.From);
      Reached[static_cast<std::size_t>(Source.Curve)] = Source.To;
      EXPECT_TRUE(Chain->IsEqualTo(Curve.SubCurve(Source.From, Source.To), 2 * kNodeReach));
    }
    EXPECT_THAT(Reached, testing::Each(4.0));
  }
}

// Segments between points of a small grid, cut by exact integers: touches, overlaps and repeats
// come by themselves.
TEST(TMChainsScatter, AgreesWithExactCutsOnAGrid) {
  std::mt19937 Random(6363);
  for (int Round = 0; Round < 200; ++Round) {
    SCOPED_TRACE(Round);
    TCourses Curves;
    std::vector<test::TGridSegment> Segments;
    for (int I = 0; I < 6; ++I) {
      const TPoint2D P = test::RandomGridPoint(Random, 0, 6);
      const TPoint2D Q = test::RandomGridPoint(Random, 0, 6);
      if (P == Q) continue;
      Curves.push_back({P, Q});
      Segments.push_back({test::TGridPoint(P), test::TGridPoint(Q)});
    }
    std::set<std::pair<test::TGridPlace, test::TGridPlace>> Expected;
    for (const test::TGridSegment& S : Segments) {
      std::set<test::TGridPlace> Cuts = {test::TGridPlace(S.A), test::TGridPlace(S.B)};
      for (const test::TGridSegment& T : Segments) {
        const test::TGridMeeting Meeting = test::Meet(S, T);
        if (Meeting.Place) Cuts.insert(*Meeting.Place);
        for (const test::TGridPoint& P : {T.A, T.B}) {
          if (test::IsOnSegment(P, S)) Cuts.insert(test::TGridPlace(P));
        }
      }
      // Places of one line in the order of X, then Y.
      std::vector<test::TGridPlace> Sorted(Cuts.begin(), Cuts.end());
      std::sort(Sorted.begin(), Sorted.end(), [](const auto& A, const auto& B) {
        return std::pair(A.X * B.W, A.Y * B.W) < std::pair(B.X * A.W, B.Y * A.W);
      });
      for (std::size_t I = 1; I < Sorted.size(); ++I) Expected.insert({Sorted[I - 1], Sorted[I]});
    }
    const TMChainExtends Chains = Scattered(Curves, 0.0);
    EXPECT_EQ(static_cast<int>(Expected.size()), Chains.Count());
  }
}

TEST(TMChainsScatter, SnapsToTheFirstAddedOfTwoJointsAsNear) {
  for (const double X : {0.0625, -0.0625}) {
    const TMChainExtends Chains = Scattered({{{X, 0}, {X, -5}},
                                             {{X, 0}, {2 * X, -5}},
                                             {{-X, 0}, {-X, -5}},
                                             {{-X, 0}, {-2 * X, -5}},
                                             {{0, 0}, {0, 5}}},
                                            0.1);
    EXPECT_EQ(TPoint2D(X, 0), Chains.Last()->First());
  }
}

// Ends that become one node turn their chains, so that these may meet once more.
TEST(TMChainsScatter, LeavesNothingToCut) {
  std::mt19937 Random(6464);
  for (int Round = 0; Round < 300; ++Round) {
    SCOPED_TRACE(Round);
    TCourses Curves(6);
    for (auto& Points : Curves) {
      for (int I = 0; I < 3; ++I) {
        const TPoint2D P = test::RandomGridPoint(Random, 0, 3);
        Points.push_back(P * 0.01 + test::RandomPoint(Random, -2, 2) * kNodeReach);
      }
    }
    TCourses Courses;
    for (const TMChainExtend* Chain : Scattered(Curves, 0.0)) Courses.push_back(Chain->Points());
    TScatterStats Stats;
    EXPECT_EQ(static_cast<int>(Courses.size()), Scattered(Courses, 0.0, &Stats).Count());
    EXPECT_EQ(0, Stats.Cuts);
    EXPECT_EQ(0, Stats.Repeated);
  }
}

TEST(TMChainsScatter, EndsOnAnyInput) {
  const double Infinity = std::numeric_limits<double>::infinity();
  const TCourses Curves = {{{std::nan(""), 0}, {1, 0}},
                           {{0, 0}, {Infinity, 0}},
                           {{-1e300, 0}, {1e300, 1e300}},
                           {{0, -1e300}, {1e-300, 1e300}},
                           {{1, 1}},
                           {},
                           {{2, 2}, {2, 2}}};
  for (const double Gap : {0.0, 0.1, 1e300, Infinity, -1.0, std::nan("")}) {
    for (const TMChainExtend* Chain : Scattered(Curves, Gap)) EXPECT_LE(2, Chain->Count());
  }
  // Nothing is in reach of its ends, however far that is.
  EXPECT_EQ(1, Scattered({{{0, 0}, {1, 0}}}, Infinity).Count());
  TScatterStats Stats;
  const TCourses Equal(20000, {{0, 0}, {1, 0}});
  EXPECT_EQ(1, Scattered(Equal, 0.1, &Stats).Count());
  EXPECT_EQ(19999, Stats.Repeated);
}

}  // namespace
}  // namespace tarnalgo
