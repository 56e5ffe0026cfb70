#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <sstream>

#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

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
