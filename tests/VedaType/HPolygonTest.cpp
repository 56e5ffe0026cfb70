#include "geometryAlgo/VedaType/HPolygon.h"

#include <gtest/gtest.h>

#include <memory>
#include <polyclipping/clipper.hpp>
#include <random>
#include <string>
#include <vector>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

std::unique_ptr<TVPolyline2D> Square(double Low, double High, bool Clockwise = false) {
  auto Contour = std::make_unique<TVPolyline2D>(TVRect2D({Low, Low}, {High, High}));
  Contour->SetIsClockwise(Clockwise);
  return Contour;
}

std::unique_ptr<TVPolyline2D> OpenSquare(double Low, double High, bool Clockwise) {
  auto Contour = Square(Low, High, Clockwise);
  Contour->Delete(Contour->Count() - 1);
  return Contour;
}

/// The sense of each contour: + counter-clockwise, - clockwise.
std::string Senses(const TVHPolygon& Region) {
  std::string Text;
  for (const TVPolyline2D* Item : Region) Text += Item->IsClockwise() ? '-' : '+';
  return Text;
}

TEST(TVHPolygon, TurnsContoursAsTheyComeAndGo) {
  TVHPolygon Region(true);
  Region.Add(OpenSquare(0, 10, false));
  EXPECT_EQ("+", Senses(Region)) << "an open first contour stays";
  Region.SetItem(0, Square(0, 10, false));
  EXPECT_EQ("-", Senses(Region)) << "a closed one is turned";
  Region.Add(Square(1, 2, true));
  Region.Insert(1, OpenSquare(3, 4, true));
  EXPECT_EQ("--+", Senses(Region)) << "closed holes are turned, open ones stay";
  Region.Exchange(1, 2);
  Region.Insert(0, OpenSquare(-5, 20, false));
  EXPECT_EQ("-++-", Senses(Region)) << "a new outline turns even when open, and the former one";
  Region.Delete(0);
  EXPECT_EQ("-+-", Senses(Region)) << "the next contour becomes the outline";
  Region[0]->Negative();
  Region[1]->Negative();
  EXPECT_EQ("+--", Senses(*Region.Clone())) << "a copy is true";
  Region.Extract(2);
  EXPECT_EQ("--", Senses(Region)) << "a hole leaves: the outline is turned, the other hole stays";
  Region.SetIsClockwise(true);
  EXPECT_EQ("-+", Senses(Region));
  Region.YMirror();
  EXPECT_EQ("-+", Senses(Region));
  TMatrix2D Upside;
  Upside.Scale(1.0, -1.0);
  Region.Transform(Upside);
  EXPECT_EQ("-+", Senses(Region));
  Region.Clear();
  EXPECT_TRUE(Region.IsEmpty());
  Region.Add(Square(0, 10, false));
  EXPECT_EQ("-", Senses(Region)) << "a cleared region turns what comes";
}

TEST(TVHPolygon, LetsTheFirstContourThatTellsDecideWhereAPointLies) {
  TVHPolygon Region;
  EXPECT_EQ(srOut, Region.RelationWithPoint({0, 0}));
  Region.Add(Square(0, 100));
  Region.Add(Square(10, 20));
  Region.Add(Square(15, 30));
  const struct {
    TPoint2D P;
    TShapeRelation Expected;
  } Cases[] = {
      {{50, 50}, srIn},        {{100, 50}, srOn}, {{101, 50}, srOut}, {{12, 12}, srOut},
      {{10, 15}, srOn},        {{30, 20}, srOn},  {{15, 17}, srOut},  // in one, on the next
      {{10 - 9e-7, 15}, srOn}, {{10, 50}, srIn},  // level with corners of a hole
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(testing::Message() << Case.P.X << ", " << Case.P.Y);
    EXPECT_EQ(Case.Expected, Region.RelationWithPoint(Case.P));
  }
}

TEST(TVHPolygon, MeasuresTheRegion) {
  TVHPolygon Region;
  EXPECT_EQ(0.0, Region.Area());
  EXPECT_EQ(TPoint2D::FZero, Region.Gravity());
  const double Far = 1e9;  // the corners stay exact
  Region.Add(Square(Far, Far + 8));
  Region.Add(Square(Far, Far + 4));
  EXPECT_EQ(48.0, Region.Area());
  EXPECT_EQ(10, Region.PtCount());
  // Three of four equal quarters, with their centroids at 2 and 6.
  EXPECT_NEAR(14.0 / 3.0, Region.XGravity() - Far, 1e-6);
  EXPECT_TRUE(Region.CheckClosed());
  Region.Add(OpenSquare(Far - 20, Far, false));
  EXPECT_EQ(-352.0, Region.Area());
  EXPECT_FALSE(Region.CheckClosed());
}

TEST(TVHPolygon, EqualsARegionWithItsHolesInAnotherOrder) {
  std::mt19937 Random(7);
  TVHPolygon A(false);
  TVHPolygon B(true);
  A.Add(Square(0, 1000));
  B.Add(Square(0, 1000));
  for (int I = 0; I < 60; ++I) {
    const double Low = test::RandomInt(Random, 1, 20);
    A.Add(Square(Low, Low + 1 + I % 3));
    B.Insert(1, Square(Low + 5e-7, Low + 1 + I % 3));
  }
  EXPECT_TRUE(A.IsEqualTo(B));
  B[30]->Translate({2e-6, 0});
  EXPECT_FALSE(A.IsEqualTo(B));
  B[30]->Translate({-2e-6, 0});
  B[0]->Translate({1, 0});
  EXPECT_FALSE(A.IsEqualTo(B)) << "another outline";
  A.Add(std::make_unique<TVPolyline2D>());
  EXPECT_TRUE(A.IsEqualTo(*A.Clone())) << "a hole without points has no box to be found by";
}

TEST(TVHPolygonList, MakesARegionOfEachOuterNode) {
  ClipperLib::Clipper Union;
  const auto AddSquare = [&](ClipperLib::cInt Low, ClipperLib::cInt High) {
    Union.AddPath({{Low, Low}, {High, Low}, {High, High}, {Low, High}}, ClipperLib::ptSubject,
                  true);
  };
  AddSquare(0, 100);
  AddSquare(10, 90);
  AddSquare(20, 80);  // an island in the hole
  AddSquare(200, 290);
  ClipperLib::PolyTree Tree;
  Union.Execute(ClipperLib::ctUnion, Tree, ClipperLib::pftEvenOdd);
  TVHPolygonList Regions(Tree, 10.0);
  ASSERT_EQ(3, Regions.Count());
  EXPECT_TRUE(Regions.CheckClosed());
  EXPECT_EQ(20, Regions.PtCount());
  EXPECT_EQ(100.0 - 64.0 + 36.0 + 81.0, Regions.Area());
  EXPECT_EQ(srOut, Regions.RelationWithPoint({1.5, 1.5}));
  EXPECT_EQ(srOn, Regions.RelationWithPoint({2, 5}));
  EXPECT_EQ(srIn, Regions.RelationWithPoint({5, 5}));
  Regions.SetIsClockwise(true);
  for (const TVHPolygon* Region : Regions) {
    EXPECT_EQ(Region->Count() == 2 ? "-+" : "-", Senses(*Region));
  }
  // Areas 72 at 5, 81 at 24.5; outlines 136 and 81.
  EXPECT_NEAR((72 * 5 + 81 * 24.5) / 153.0, Regions.XGravity(), 1e-12);
  EXPECT_NEAR((136 * 5 + 81 * 24.5) / 217.0, Regions.XGravityOutline(), 1e-12);
  using TCounts = std::vector<int>;
  const auto Counts = [&] {
    TCounts Result;
    for (const TVHPolygon* Region : Regions) Result.push_back(Region->Count());
    return Result;
  };
  Regions.SortByArea();  // 81, then the ring and the island in it, both 36
  EXPECT_EQ((TCounts{1, 2, 1}), Counts());
  EXPECT_EQ(20.0, Regions[0]->BoundBox().Left);
  Regions.SortByRegArea();  // 100, 81, 36
  EXPECT_EQ((TCounts{2, 1, 1}), Counts());
}

TEST(TVHPolygonList, IntersectsItselfWhereTwoContoursMeet) {
  const auto Make = [](double Low, double High) {
    auto Region = std::make_unique<TVHPolygon>();
    Region->Add(Square(Low, High));
    return Region;
  };
  TVHPolygonList Regions;
  Regions.Add(Make(0, 10));
  Regions.Add(Make(2, 8));  // inside, apart
  Regions.Add(Make(20, 30));
  EXPECT_FALSE(Regions.IntersectSelf());
  EXPECT_TRUE(Regions.IsCrossWith(TVLine2D({9, 9}, {11, 9})));
  EXPECT_FALSE(Regions.IsCrossWith(TVLine2D({3, 3}, {7, 7})));
  Regions.Add(Make(30 + 1e-7, 40));  // touches a corner
  EXPECT_TRUE(Regions.IntersectSelf());
  EXPECT_FALSE(Regions[0]->IsCrossWith(*Regions[2]));
  EXPECT_TRUE(Regions[2]->IsCrossWith(*Regions[3]));
  EXPECT_TRUE(Regions[2]->IsCrossWith(TVLine2D({25, 25}, {35, 25})));
  EXPECT_FALSE(Regions[2]->IsCrossWith(TVLine2D({25, 25}, {27, 25})));
  EXPECT_TRUE(Regions.IsCrossWith(*Make(39, 50)));
  EXPECT_FALSE(Regions.IsCrossWith(*Make(50, 60)));
  TVHPolygonList Others;
  Others.Add(Make(-20, -10));
  EXPECT_FALSE(Regions.IsCrossWith(Others));
  Others.Add(Make(4, 9));
  EXPECT_TRUE(Regions.IsCrossWith(Others));
}

}  // namespace
}  // namespace tarnalgo
