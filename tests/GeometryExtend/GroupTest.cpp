#include <gmock/gmock.h>

#include <algorithm>
#include <polyclipping/clipper.hpp>
#include <random>

#include "geometryAlgo/GeometryExtend.h"
#include "geometryAlgo/GeometryExtend/RingLoops.h"
#include "tests/support/Generate.h"
#include "tests/support/IntegerPaths.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using test::Box;
using test::Hole;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// `Count` boxes with a hole each, the outers first or last.
TPaths BoxesWithHoles(int Count, bool OutersFirst) {
  TPaths Outers;
  TPaths Holes;
  for (int I = 0; I < Count; ++I) {
    Outers.push_back(Box(20 * I, 0, 10));
    Holes.push_back(Hole(20 * I + 2, 2, 3));
  }
  TPaths Paths = OutersFirst ? Outers : Holes;
  TPathUtils::PathsAddRange(Paths, OutersFirst ? Holes : Outers);
  return Paths;
}

TPathsList Normalized(const TPaths& Paths) {
  TPathsList List{{Box(1, 1, 1)}};  // what was in the list is gone
  TPathUtils::NormalizeTPaths(Paths, List);
  return List;
}

TEST(NormalizeTPaths, TrustsTheOrderOfUpToTwelvePaths) {
  const TPathsList Grouped = Normalized(BoxesWithHoles(6, true));
  EXPECT_THAT(Grouped, SizeIs(6));
  for (int I = 0; I < 6; ++I) {
    EXPECT_EQ((TPaths{Box(20 * I, 0, 10), Hole(20 * I + 2, 2, 3)}),
              Grouped[static_cast<std::size_t>(I)]);
  }
  EXPECT_THAT(Normalized(BoxesWithHoles(6, false)), SizeIs(12));
  EXPECT_THAT(Normalized({}), IsEmpty());
}

TEST(NormalizeTPaths, LooksBackToTheNearestPathThatHoldsTheFirstVertex) {
  // The island's nearest earlier path around it is a hole; that ends the search.
  EXPECT_THAT(Normalized({Box(0, 0, 20), Box(2, 2, 10), Box(4, 4, 2), {}}),
              ElementsAre(TPaths{Box(0, 0, 20), Box(2, 2, 10)}, TPaths{Box(4, 4, 2)}, TPaths{{}}));
}

TEST(NormalizeTPaths, UnitesThirteenPathsInAnyOrder) {
  TPaths Paths = BoxesWithHoles(6, false);
  Paths.push_back(Box(105, 5, 10));  // overlaps the last outer
  const TPathsList Grouped = Normalized(Paths);
  EXPECT_THAT(Grouped, SizeIs(6));
  double Sum = 0.0;
  for (const TPaths& Region : Grouped) {
    EXPECT_THAT(Region, SizeIs(2));
    for (const TPath& Path : Region) Sum += TPathUtils::Area(Path, false);
  }
  EXPECT_EQ(6 * (100 - 9) + 75, Sum);
}

TEST(NormalizeTPaths, DropsIslandsOnTheUnionRoute) {
  TPaths Paths = BoxesWithHoles(6, true);
  Paths.push_back(Box(3, 3, 1));
  EXPECT_THAT(Normalized(Paths), SizeIs(6));
}

TEST(NormalizeTPaths, TranslatesFailuresOfTheLibraryAndKeepsTheList) {
  TPaths Paths = BoxesWithHoles(7, true);
  Paths.push_back({{0, 0}, {INT64_MAX, 0}, {0, INT64_MAX}});
  TPathsList List{{Box(1, 1, 1)}};
  test::ExpectRaises([&] { TPathUtils::NormalizeTPaths(Paths, List); },
                     "[Error] TPathUtils.NormalizeTPaths: Coordinate outside allowed range");
  EXPECT_THAT(List, SizeIs(1));
}

TEST(ExtractHoles, TakesWhatRunsAgainstTheOuter) {
  const TPaths Paths{Box(0, 0, 20), Hole(1, 1, 2), Box(5, 5, 2), Hole(9, 9, 2)};
  EXPECT_THAT(TPathUtils::ExtractHoles(Paths, true), ElementsAre(Hole(1, 1, 2), Hole(9, 9, 2)));
  EXPECT_THAT(TPathUtils::ExtractHoles(Paths, false), ElementsAre(Box(5, 5, 2)));
  EXPECT_THAT(TPathUtils::ExtractHoles({Box(0, 0, 1)}, false), IsEmpty());
}

/// A box with a hole, an island in the hole, and a box apart.
class TreeConversion : public testing::Test {
 protected:
  TreeConversion() {
    ClipperLib::Clipper Clipper;
    Clipper.AddPaths({Box(0, 0, 20), Hole(2, 2, 10), Box(4, 4, 2), Box(50, 0, 5)},
                     ClipperLib::ptSubject, true);
    Clipper.Execute(ClipperLib::ctUnion, Tree, ClipperLib::pftNonZero);
  }
  TPolyTree Tree;
};

TEST_F(TreeConversion, KeepsIslandsAsRegionsOfTheirOwn) {
  const TPathsList List = TPathUtils::PolyTreeToPathsList(Tree);
  double Areas[3] = {};
  ASSERT_THAT(List, SizeIs(3));
  for (std::size_t I = 0; I < 3; ++I) {
    for (const TPath& Path : List[I]) Areas[I] += TPathUtils::Area(Path, false);
  }
  EXPECT_THAT(Areas, testing::UnorderedElementsAre(300, 4, 25));
  const TVHPolygonList Regions = TPathUtils::CreateHPolygons(Tree, 2.0);
  ASSERT_EQ(3, Regions.Count());
  for (int I = 0; I < 3; ++I) {
    EXPECT_EQ(Areas[I] / 4.0, Regions[I]->Area());
    EXPECT_FALSE(Regions[I]->First()->IsClockwise());
  }
}

TEST_F(TreeConversion, KeepsTheNestingAsTrees) {
  const auto Trees = TPathUtils::CreatePolylineTreeList(Tree, 10.0);
  ASSERT_EQ(2, Trees.Count());
  TMultiTree<TVPolyline2D>* Nested = Trees[0]->Root()->IsLeaf() ? Trees[1] : Trees[0];
  std::vector<double> Areas;
  for (auto* Node : Nested->PreorderTraversal()) Areas.push_back(Node->Data().Area());
  EXPECT_THAT(Areas,
              ElementsAre(testing::DoubleEq(4), testing::DoubleEq(-1), testing::DoubleEq(0.04)));
}

TEST(PolyTrees, AreReadWithoutOpenPathsAndNodesWithoutContour) {
  TPolyTree Tree;
  ClipperLib::Clipper Clipper;
  Clipper.AddPath({{-5, 5}, {30, 5}}, ClipperLib::ptSubject, false);
  for (const auto Role : {ClipperLib::ptSubject, ClipperLib::ptClip}) {
    Clipper.AddPath(Box(0, 0, 20), Role, true);
  }
  Clipper.Execute(ClipperLib::ctIntersection, Tree);
  ASSERT_EQ(2, Tree.ChildCount());
  TPolyNode Bare;
  TPolyNode* const Outer = Tree.Childs[Tree.Childs[0]->IsOpen() ? 1 : 0];
  Bare.Parent = Outer;
  Outer->Childs.push_back(&Bare);
  EXPECT_THAT(TPathUtils::PolyTreeToPathsList(Tree), ElementsAre(SizeIs(1)));
  ASSERT_EQ(1, TPathUtils::CreateHPolygons(Tree, 1.0).Count());
  EXPECT_EQ(1, TPathUtils::CreateHPolygons(Tree, 1.0)[0]->Count());
  EXPECT_EQ(1, TVHPolygonList(Tree, 1.0)[0]->Count());
  TPolyTree OfNothing;
  Bare.Parent = &OfNothing;
  OfNothing.Childs.push_back(&Bare);
  EXPECT_THAT(TPathUtils::PolyTreeToPathsList(OfNothing), IsEmpty());
  EXPECT_TRUE(TPathUtils::CreateHPolygons(OfNothing, 1.0).IsEmpty());
  EXPECT_TRUE(TVHPolygonList(OfNothing, 1.0).IsEmpty());
}

TEST(CreateHPolygon, KeepsTheFirstSenseAndTurnsTheOthersAgainstIt) {
  for (const bool Clockwise : {false, true}) {
    TPaths Paths{Box(0, 0, 20), Box(2, 2, 3), Hole(9, 9, 3)};
    TPathUtils::SetIsClockwise(Paths[0], Clockwise);
    const TVHPolygon Polygon = TPathUtils::CreateHPolygon(Paths, 2.0);
    ASSERT_EQ(3, Polygon.Count());
    EXPECT_EQ(Clockwise, Polygon.IsClockwise());
    EXPECT_EQ(Paths[0], TPathUtils::CreatePath(Polygon[0], 2.0));  // not closed, not turned
    EXPECT_EQ(!Clockwise, Polygon[1]->IsClockwise());
    EXPECT_EQ(!Clockwise, Polygon[2]->IsClockwise());
    TVHPolygonList List;
    List.Add(Polygon.Clone());
    List.Add(Polygon.Clone());
    const TPaths Flat = TPathUtils::CreatePaths(List, 2.0);
    ASSERT_THAT(Flat, SizeIs(6));
    EXPECT_EQ(Paths[0], Flat[3]);
  }
  EXPECT_TRUE(TPathUtils::CreateHPolygon(TPaths{}, 1.0).IsEmpty());
}

TEST(CreateStrictSimpleHPolygon, SplitsWhereContoursTouchAndSharesOutTheHoles) {
  // Two squares joined at (100, 100), each with a hole; the hole of the second touches its outline.
  TPolyNode Holes[2];
  TPolyNode Node;
  Node.Contour = {{0, 0},     {100, 0},   {100, 100}, {300, 100},
                  {300, 300}, {100, 300}, {100, 100}, {0, 100}};
  Holes[0].Contour = Hole(20, 20, 30);
  Holes[1].Contour = {{100, 100}, {120, 180}, {180, 120}};
  for (TPolyNode& Child : Holes) Node.Childs.push_back(&Child);
  TVHPolygonList Pieces = TPathUtils::CreateStrictSimpleHPolygon(Node, 10.0);
  Pieces.SortByArea();
  ASSERT_EQ(2, Pieces.Count());
  EXPECT_DOUBLE_EQ(400.0 - 0.01 * TPathUtils::Area(Holes[1].Contour, true), Pieces[0]->Area());
  EXPECT_DOUBLE_EQ(100.0 - 9.0, Pieces[1]->Area());
  EXPECT_EQ(2, Pieces[0]->Count());
  EXPECT_EQ(0, TPathUtils::CreateStrictSimpleHPolygon(TPolyNode()).Count());
}

TEST(CreateStrictSimpleHPolygon, AHoleWithAllItsVerticesOnAnOutlineBelongsWhereItsEdgesRun) {
  const struct {
    TPath Contour;
    TPath Hole;
    double Area;
  } Cases[] = {
      {Box(0, 0, 10), {{5, 0}, {0, 5}, {5, 10}, {10, 5}}, 50},
      {{{0, 0}, {9, 0}, {9, 9}, {6, 9}, {6, 3}, {3, 3}, {3, 9}, {0, 9}},  // fills the notch
       {{3, 3}, {3, 9}, {6, 9}, {6, 3}},
       63},
      {Box(0, 0, 10), Box(0, 0, 10), 0}};
  for (const auto& Case : Cases) {
    TPolyNode Child;
    TPolyNode Node;
    Child.Contour = Case.Hole;
    Node.Contour = Case.Contour;
    Node.Childs.push_back(&Child);
    const TVHPolygonList Pieces = TPathUtils::CreateStrictSimpleHPolygon(Node, 1.0);
    ASSERT_EQ(1, Pieces.Count());
    EXPECT_EQ(Case.Area, Pieces[0]->Area());
  }
}

/// A ray to the right from (X, Y), on which no vertex lies, meets an odd number of edges.
bool IsInside(const TPaths& Rings, double X, double Y) {
  bool Result = false;
  for (const TPath& Ring : Rings) {
    for (std::size_t I = 0; I < Ring.size(); ++I) {
      const TPoint2D A = TPathUtils::CreatePoint2D(Ring[I], 1.0);
      const TPoint2D B = TPathUtils::CreatePoint2D(Ring[(I + 1) % Ring.size()], 1.0);
      const bool Spans = (A.Y > Y) != (B.Y > Y);
      if (Spans && X < A.X + (B.X - A.X) * (Y - A.Y) / (B.Y - A.Y)) Result = !Result;
    }
  }
  return Result;
}

TEST(LoopsOfRings, HaveNoPlaceTwiceAndCoverWhatTheRingsCover) {
  std::mt19937 Random(12);
  for (int Round = 0; Round < 500; ++Round) {
    SCOPED_TRACE(Round);
    TPaths Rings(2);
    for (TPath& Ring : Rings) {
      for (int I = test::RandomInt(Random, 0, 12); I > 0; --I) {
        const int X = test::RandomInt(Random, 0, 3);
        Ring.emplace_back(X, test::RandomInt(Random, 0, 3));
      }
    }
    TPaths Loops = LoopsOfRings(Rings);
    for (int I = 0; I < 20; ++I) {
      const TPoint2D P = test::RandomPoint(Random, 0, 3);
      EXPECT_EQ(IsInside(Rings, P.X, P.Y), IsInside(Loops, P.X, P.Y));
    }
    for (TPath& Loop : Loops) {
      EXPECT_LE(3U, Loop.size());
      std::sort(Loop.begin(), Loop.end(), [](const TIntPoint& A, const TIntPoint& B) {
        return A.X != B.X ? A.X < B.X : A.Y < B.Y;
      });
      EXPECT_EQ(Loop.end(), std::adjacent_find(Loop.begin(), Loop.end()));
    }
  }
}

TEST(CreateStrictSimpleHPolygon, PartsWhatTheLibraryLeavesTogether) {
  const struct {
    const char* Name;
    TPath Contour;
    std::vector<double> Areas;  // largest first
  } Cases[] = {
      {"vertex within an edge", {{0, 0}, {10, 0}, {10, 10}, {5, 0}, {0, 12}}, {30, 25}},
      {"hole that hangs on a vertex",
       {{0, 0}, {20, 0}, {20, 20}, {0, 20}, {0, 10}, {5, 15}, {5, 5}, {0, 10}},
       {400 - 25}},
      {"two vertices at one place of an edge",
       {{0, 0}, {20, 0}, {20, 10}, {10, 0}, {12, 12}, {8, 12}, {10, 0}, {0, 10}},
       {50, 50, 24}},
      // The library names the loop of (0, 110) a hole.
      {"loop the wrong way round",
       {{45, 80},   {15, 80},  {6, 99},   {13, 110}, {0, 110}, {6, 99},   {0, 90},   {0, 130},
        {27, 130},  {13, 110}, {60, 110}, {45, 80},  {60, 80}, {60, 130}, {27, 130}, {40, 150},
        {-40, 150}, {0, 90},   {0, 80},   {15, 80},  {25, 60}, {30, 60},  {28, 53},  {30, 50}},
       {1870, 800, 435, 225, 172.5, 71.5}},
      // The library's parts run along each other from (2, 4) to (2, 5) and from (3, 5) to (3, 4).
      {"parts that overlap",
       {{3, 4},  {3, 6},   {4, 6},  {4, 8},  {5, 8},  {5, 5},  {3, 5},  {3, 4},  {5, 4},
        {5, 1},  {8, 1},   {8, 2},  {13, 2}, {13, 6}, {8, 6},  {8, 9},  {9, 9},  {9, 6},
        {12, 6}, {12, 13}, {9, 13}, {9, 10}, {8, 10}, {8, 13}, {4, 13}, {4, 12}, {1, 12},
        {1, 2},  {2, 2},   {2, 8},  {3, 8},  {3, 5},  {2, 5},  {2, 4}},
       {116 - 7 - 3}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TPolyNode Node;
    Node.Contour = Case.Contour;
    std::vector<double> Areas;
    for (const TVHPolygon* Piece : TPathUtils::CreateStrictSimpleHPolygon(Node, 1.0)) {
      Areas.push_back(Piece->Area());
      for (TVPolyline2D* Contour : *Piece) {
        Contour->Add(Contour->First());
        EXPECT_FALSE(Contour->IsSelfIntersect());
      }
    }
    EXPECT_EQ(Case.Areas, Areas);
  }
}

}  // namespace
}  // namespace tarnalgo
