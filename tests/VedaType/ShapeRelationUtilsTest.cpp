#include "geometryAlgo/VedaType/ShapeRelationUtils.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/CADExtendUtils.h"

namespace tarnalgo {
namespace {

using TSquares = std::vector<std::pair<double, double>>;  // low and high corner on the diagonal

TVHPolygon Region(const TSquares& Squares) {
  TVHPolygon Result;
  for (const auto& [Low, High] : Squares) {
    Result.Add(std::make_unique<TVPolyline2D>(TVRect2D({Low, Low}, {High, High})));
  }
  return Result;
}

TEST(TShapeRelationUtils, TellsRegionsByOutlinesAndHoles) {
  const struct {
    const char* Name;
    TSquares First;
    TSquares Second;
    TShapeRelation Expected;
    TShapeRelation Swapped;
  } Cases[] = {
      {"nothing", {}, {{0, 1}}, srDeviate, srDeviate},
      {"apart", {{0, 1}}, {{2, 3}}, srDeviate, srDeviate},
      {"touching", {{0, 1}}, {{1, 3}}, srOn, srOn},
      {"crossing", {{0, 2}}, {{1, 3}}, srCross, srCross},
      {"inside", {{0, 9}}, {{1, 3}}, srContained, srContain},
      {"beside a hole", {{0, 9}, {4, 6}}, {{1, 3}}, srContained, srContain},
      {"touching a hole", {{0, 9}, {3, 6}}, {{1, 3}}, srContained, srContain},
      {"in a hole", {{0, 9}, {1, 8}}, {{3, 4}}, srDeviate, srDeviate},
      {"in a hole, touching it", {{0, 9}, {1, 8}}, {{1, 4}}, srOn, srOn},
      {"filling a hole", {{0, 9}, {1, 8}}, {{1, 8}}, srOn, srOn},
      {"over a hole", {{0, 9}, {3, 4}}, {{2, 6}}, srCross, srCross},
      {"partly over a hole", {{0, 9}, {3, 6}}, {{2, 5}}, srCross, srCross},
      {"over a hole, with a wider hole",
       {{0, 9}, {3, 4}},
       {{1, 7}, {2, 5}},
       srContained,
       srContain},
      {"over a hole, with a narrower hole", {{0, 9}, {2, 5}}, {{1, 7}, {3, 4}}, srCross, srCross},
      {"one outline, more holes",
       {{0, 9}, {1, 2}},
       {{0, 9}, {5, 6}, {1, 2}},
       srContained,
       srContain},
      {"one outline, other holes", {{0, 9}, {1, 2}}, {{0, 9}, {5, 6}}, srCross, srCross},
      {"equal", {{0, 9}, {1, 2}, {5, 6}}, {{0, 9}, {5, 6}, {1, 2}}, srEqual, srEqual},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TVHPolygon First = Region(Case.First);
    const TVHPolygon Second = Region(Case.Second);
    EXPECT_EQ(Case.Expected, TShapeRelationUtils::CalcRegionRelation(First, Second));
    EXPECT_EQ(Case.Swapped, TShapeRelationUtils::CalcRegionRelation(Second, First));
  }
  const TShapeRelationUtils::TParts Ragged = {{srContained, srDeviate}, {srDeviate}};
  EXPECT_THROW(TShapeRelationUtils::CalcRegionRelation(Ragged), EParamError);
}

TEST(TCADExtendUtils, CalcAreaIsSignedAndKnowsNoClosingRepeat) {
  std::vector<TPoint2D> Square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
  EXPECT_EQ(1.0, TCADExtendUtils::CalcArea(Square));
  Square.push_back(Square.front());
  EXPECT_EQ(1.0, TCADExtendUtils::CalcArea(Square));
  EXPECT_EQ(-1.0, TCADExtendUtils::CalcArea({Square.rbegin(), Square.rend()}));
  EXPECT_EQ(0.0, TCADExtendUtils::CalcArea({{0, 0}, {1, 1}, {3, 3}}));
  EXPECT_EQ(0.0, TCADExtendUtils::CalcArea({{0, 0}, {1, 7}}));
}

}  // namespace
}  // namespace tarnalgo
