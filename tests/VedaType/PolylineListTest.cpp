#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <random>
#include <sstream>

#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using TPoints = std::vector<TPoint2D>;

TVPolyline2DList TwoSquares() {
  TVPolyline2DList List;
  List.Add(std::make_unique<TVPolyline2D>(TVRect2D({0, 0}, {10, 10})));
  List.Add(std::make_unique<TVPolyline2D>(TVRect2D({2, 2}, {4, 4})));
  List[1]->SetIsClockwise(true);
  return List;
}

TEST(TVPolyline2DList, SumsSignedAreasAndUnitesBoxes) {
  TVPolyline2DList List = TwoSquares();
  EXPECT_EQ(96.0, List.Area());
  List.Add(std::make_unique<TVPolyline2D>());
  EXPECT_EQ(TVRect2D({0, 0}, {10, 10}), List.BoundBox());
  EXPECT_FALSE(TVPolyline2DList().BoundBox().IsValid());
  List.Translate({1, 2});
  List.YMirror();
  EXPECT_EQ(TVRect2D({-11, 2}, {-1, 12}), List.BoundBox());
  EXPECT_EQ(-96.0, List.Area());
}

TEST(TVPolyline2DList, ClonesItsMembersAndItsClass) {
  const TVPolyline2DList List = TwoSquares();
  const IVGeometry2D& Shape = List;
  const auto Copy = Shape.Clone();
  const auto* Cloned = dynamic_cast<TVPolyline2DList*>(Copy.get());
  ASSERT_NE(nullptr, Cloned);
  ASSERT_EQ(2, Cloned->Count());
  EXPECT_NE(List[1], (*Cloned)[1]);
  EXPECT_EQ(List[1]->Points(), (*Cloned)[1]->Points());
  EXPECT_TRUE(List.New()->IsEmpty());

  TVPolyline2DList Referring(false);  // a clone must own what it made
  Referring.Add(List[0]);
  EXPECT_TRUE(Referring.Clone()->OwnsObjects());
}

TEST(TVPolyline2DList, MeasuresToTheNearestMember) {
  const TVPolyline2DList List = TwoSquares();
  TPoint2D Nearest;
  EXPECT_DOUBLE_EQ(0.5, List.DistanceTo({4.5, 3}, Nearest));
  EXPECT_EQ(TPoint2D(4, 3), Nearest);
  EXPECT_EQ(kStartOfMinimum, TVPolyline2DList().DistanceTo({4.5, 3}, Nearest));
  EXPECT_EQ(TPoint2D::FZero, Nearest);
}

TEST(TVPolyline2DList, ConvertsEveryMemberToAPath) {
  const TPaths Paths = TwoSquares().ToPaths(1000.0);
  ASSERT_EQ(2U, Paths.size());
  EXPECT_EQ(100e6, ClipperLib::Area(Paths[0]));
  EXPECT_EQ(-4e6, ClipperLib::Area(Paths[1]));
}

TVPolyline2DList ListOf(const std::vector<TVPolyline2D>& Items) {
  TVPolyline2DList List;
  for (const TVPolyline2D& Item : Items) List.Add(Item.Clone());
  return List;
}

std::vector<TPoints> PointsOf(const TVPolyline2DList& List) {
  std::vector<TPoints> Result;
  for (const TVPolyline2D* Item : List) Result.push_back(Item->Points());
  return Result;
}

TEST(TVPolyline2DList, JoinsEndsThatMeet) {
  const struct {
    const char* Name;
    std::vector<TVPolyline2D> Before;
    std::vector<TPoints> Connected;
    std::vector<TPoints> ByOrder;
  } Cases[] = {
      {"in a row",
       {{{0, 0}, {1, 0}}, {{1, 5e-7}, {2, 1}}, {{2, 1}, {3, 0}}},
       {{{0, 0}, {1, 0}, {2, 1}, {3, 0}}},
       {{{0, 0}, {1, 0}, {2, 1}, {3, 0}}}},
      {"turned round, before and behind",
       {{{0, 0}, {1, 0}}, {{2, 1}, {1, 0}}, {{0, 0}, {-1, 1}}},
       {{{-1, 1}, {0, 0}, {1, 0}, {2, 1}}},
       {{{-1, 1}, {0, 0}, {1, 0}, {2, 1}}}},
      {"a stranger between",
       {{{0, 0}, {1, 0}}, {{7, 7}, {8, 8}}, {{1, 0}, {2, 1}}},
       {{{0, 0}, {1, 0}, {2, 1}}, {{7, 7}, {8, 8}}},
       {{{0, 0}, {1, 0}}, {{7, 7}, {8, 8}}, {{1, 0}, {2, 1}}}},
      {"a ring, closed exactly",
       {{{0, 0}, {4, 0}}, {{4, 4}, {4, 5e-7}}, {{4, 4}, {5e-7, 0}}},
       {{{0, 0}, {4, 0}, {4, 4}, {0, 0}}},
       {{{0, 0}, {4, 0}, {4, 4}, {0, 0}}}},
      {"closed ones and points stay",
       {{{0, 0}, {1, 0}, {1, 1}, {0, 0}}, {{0, 0}, {-1, 0}}, {{0, 0}}, {}},
       {{{0, 0}, {1, 0}, {1, 1}, {0, 0}}, {{0, 0}, {-1, 0}}, {{0, 0}}, {}},
       {{{0, 0}, {1, 0}, {1, 1}, {0, 0}}, {{0, 0}, {-1, 0}}, {{0, 0}}, {}}},
      {"nothing", {}, {}, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const int Before = static_cast<int>(Case.Before.size());
    TVPolyline2DList List = ListOf(Case.Before);
    EXPECT_EQ(Before - static_cast<int>(Case.Connected.size()), List.Connect());
    EXPECT_EQ(Case.Connected, PointsOf(List));
    List = ListOf(Case.Before);
    EXPECT_EQ(Before - static_cast<int>(Case.Connected.size()), List.ConnectOptimize());
    EXPECT_EQ(Case.Connected, PointsOf(List));
    List = ListOf(Case.Before);
    EXPECT_EQ(Before - static_cast<int>(Case.ByOrder.size()), List.TryConnectByOrder());
    EXPECT_EQ(Case.ByOrder, PointsOf(List));
  }
  // A ring that is complete takes nothing more, though the next polyline begins at its joint.
  TVPolyline2DList List = ListOf({{{0, 0}, {4, 0}}, {{4, 0}, {4, 4}, {0, 0}}, {{0, 0}, {-1, 0}}});
  EXPECT_EQ(1, List.TryConnectByOrder());
  EXPECT_EQ((std::vector<TPoints>{{{0, 0}, {4, 0}, {4, 4}, {0, 0}}, {{0, 0}, {-1, 0}}}),
            PointsOf(List));
}

TEST(TVPolyline2DList, OptimizedJoinsGoStraightOnAtACrossing) {
  const std::vector<TVPolyline2D> Cross{
      {{-5, 0}, {0, 0}}, {{0, -5}, {0, 0}}, {{0, 0}, {5, 0}}, {{0, 0}, {0, 5}}};
  TVPolyline2DList List = ListOf(Cross);
  List.ConnectOptimize();
  EXPECT_EQ((std::vector<TPoints>{{{-5, 0}, {0, 0}, {5, 0}}, {{0, -5}, {0, 0}, {0, 5}}}),
            PointsOf(List));
  List = ListOf(Cross);
  List.Connect();  // takes them as they come; the third keeps its direction
  EXPECT_EQ((std::vector<TPoints>{{{-5, 0}, {0, 0}, {0, -5}}, {{0, 5}, {0, 0}, {5, 0}}}),
            PointsOf(List));
}

TEST(TVPolyline2DList, PiecesOfAContourFindTogetherAgain) {
  std::mt19937 Random(15);
  for (int Round = 0; Round < 50; ++Round) {
    TVPolyline2D Contour;
    for (int I = 0; I < 40; ++I) Contour.Add(test::RandomPoint(Random, 0, 100));
    if (Round % 2 == 0) Contour.Add(Contour.First());
    TVPolyline2DList Pieces;
    for (int I = 0; I + 1 < Contour.Count(); ++I) {
      Pieces.Add(std::make_unique<TVPolyline2D>(Contour.Line(I)));
      if (test::RandomInt(Random, 0, 1) == 1) Pieces[I]->Negative();
      Pieces.Exchange(I, test::RandomInt(Random, 0, I));
    }
    TVPolyline2DList Straightest;
    for (const TVPolyline2D* Piece : Pieces) Straightest.Add(Piece->Clone());
    EXPECT_EQ(Contour.Count() - 2, Pieces.Connect());
    ASSERT_EQ(1, Pieces.Count());
    EXPECT_TRUE(Pieces[0]->IsEqualTo(Contour, 0.0) || Pieces[0]->IsEqualToReverse(Contour, 0.0));
    EXPECT_EQ(Contour.Count() - 2, Straightest.ConnectOptimize());
    EXPECT_TRUE(Straightest[0]->IsEqualTo(*Pieces[0], 0.0) ||
                Straightest[0]->IsEqualToReverse(*Pieces[0], 0.0));
  }
}

TEST(TVPolyline2DList, JoinsWhatItOnlyRefersTo) {
  TVPolyline2D A{{0, 0}, {1, 0}};
  TVPolyline2D Stranger{{7, 7}, {8, 8}};
  TVPolyline2D B{{1, 0}, {2, 0}};
  TVPolyline2DList List(false);
  for (TVPolyline2D* Item : {&A, &B, &Stranger}) List.Add(Item);
  EXPECT_EQ(1, List.Connect());
  ASSERT_EQ(2, List.Count());
  EXPECT_EQ(&A, List[0]);
  EXPECT_EQ(3, A.Count());
  EXPECT_EQ(&Stranger, List[1]);
}

TEST(TVPolyline2DList, JoinsThousandsOfEndsInOnePlace) {
  TVPolyline2DList List;
  for (int I = 0; I < 40000; ++I) {
    List.Add(std::make_unique<TVPolyline2D>(TVLine2D({0, 0}, TPoint2D(1, 0).RotateBy(I * 1e-4))));
  }
  auto Copy = List.Clone();
  EXPECT_EQ(20000, List.Connect());
  const int Joined = Copy->ConnectOptimize();
  EXPECT_GT(Joined, 10000);
  EXPECT_LE(Joined, 20000);
}

// All in one cell of the grid that finds ends again, or never found at all: once a square.
TEST(TVPolyline2DList, EndsBeyondTheGridAreNoNeighbours) {
  for (const double X : {std::nan(""), std::numeric_limits<double>::infinity(), 1e305}) {
    TVPolyline2DList List;
    for (int I = 0; I < 100000; ++I) {
      const double Far = X * (1.0 + I * 1e-6);
      List.Add(std::make_unique<TVPolyline2D>(TVLine2D({Far, 1.0 * I}, {-Far, 1.0 * I})));
    }
    EXPECT_EQ(0, List.Connect());
    EXPECT_EQ(0, List.ConnectOptimize());
    EXPECT_EQ(0, List.DeleteRepeat());
  }
}

TEST(TVPolyline2DList, TellsNestedContoursWithOneCornerApart) {
  TVPolyline2DList List;
  for (int I = 1; I <= 50000; ++I) {
    List.Add(std::make_unique<TVPolyline2D>(TVRect2D({0, 0}, {I * 1.0, I * 1.0})));
  }
  EXPECT_EQ(0, List.DeleteRepeat());
}

TEST(TVPolyline2DList, BridgesGapsInOrder) {
  TVPolyline2DList List = ListOf({{{0, 0}, {1, 0}}, {{1, 5e-7}, {2, 1}}, {}, {{9, 9}}});
  EXPECT_EQ((TPoints{{0, 0}, {1, 0}, {2, 1}, {9, 9}}), List.ConnectPolylines().Points());
  EXPECT_EQ(4, List.Count());
  EXPECT_TRUE(TVPolyline2DList().ConnectPolylines().IsEmpty());
}

TEST(TVPolyline2DList, DeletesRepetitions) {
  const TVPolyline2D Ring(TVRect2D({0, 0}, {4, 4}));
  TVPolyline2D Moved{{0, 0}, {4, 0}, {4, 4}, {5e-7, 4}, {0, 0}};  // begins elsewhere
  TVPolyline2D Reverse = Ring;
  Reverse.Negative();
  const std::vector<TVPolyline2D> Items{Ring,
                                        {{0, 0}, {1, 1}},
                                        Moved,
                                        {},
                                        Reverse,
                                        {{0, 0}, {1, 1 + 2e-6}},
                                        {{1, 1}, {0, 0}},
                                        {{0, 0}, {1, 1 - 5e-7}},
                                        {}};
  TVPolyline2DList List = ListOf(Items);
  EXPECT_EQ(5, List.DeleteRepeat());
  EXPECT_EQ((std::vector<TPoints>{Items[0].Points(), Items[1].Points(), {}, Items[5].Points()}),
            PointsOf(List));
  List = ListOf(Items);
  EXPECT_EQ(3, List.DeleteRepeat(rkSameDirection));
  EXPECT_EQ(6, List.Count());
  EXPECT_EQ(0, TVPolyline2DList().DeleteRepeat());
}

TEST(TVPolyline2DList, SortsByAbsoluteAreaAndKeepsTies) {
  TVPolyline2D Hole(TVRect2D({0, 0}, {3, 3}));
  Hole.SetIsClockwise(true);
  const TVPolyline2D Small(TVRect2D({0, 0}, {1, 1}));
  const TVPolyline2D Twin(TVRect2D({5, 5}, {6, 6}));
  const TVPolyline2D Large(TVRect2D({0, 0}, {9, 9}));
  TVPolyline2DList List = ListOf({Small, {}, Hole, Twin, Large});
  List.SortByArea();
  EXPECT_EQ(
      (std::vector<TPoints>{Large.Points(), Hole.Points(), Small.Points(), Twin.Points(), {}}),
      PointsOf(List));
}

TEST(TVPolyline2DList, DumpsColourAndPoints) {
  TVPolyline2DList List;
  List.Add(std::make_unique<TVPolyline2D>(TVLine2D({0, 1}, {2, 3})));
  List.Add(std::make_unique<TVPolyline2D>(TPoint2D(4, 5)));
  const std::string FileName = testing::TempDir() + "polylines.txt";
  List.WriteToFile(FileName);
  std::ostringstream Text;
  Text << std::ifstream(FileName).rdbuf();
  EXPECT_EQ(
      "#000000\n(0.0000000000000000, 1.0000000000000000)\n"
      "(2.0000000000000000, 3.0000000000000000)\n"
      "#000000\n(4.0000000000000000, 5.0000000000000000)\n",
      Text.str());
  EXPECT_THROW(List.WriteToFile(testing::TempDir() + "no/such/folder/x.txt"), EInOutError);
}

}  // namespace
}  // namespace tarnalgo
