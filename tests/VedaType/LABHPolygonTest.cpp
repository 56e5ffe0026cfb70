#include "geometryAlgo/VedaType/LABHPolygon.h"

#include <gtest/gtest.h>

#include <memory>

namespace tarnalgo {
namespace {

TEST(TLABHPolygon, MeasuresARegionWithTrueArcs) {
  TLABHPolygon Region;  // the left half of a disc of radius 2, a circular hole in it
  Region.Add(std::make_unique<TLABPolyline>(
      TLABPolyline{{{0, 2}, {0, -2}, {0, 0}, 1.0}, {{0, -2}, {0, 2}}}));
  Region.Add(
      std::make_unique<TLABPolyline>(TLABPolyline{{{-0.75, 0}, {-0.75, 0}, {-1, 0}, -3.3e38}}));
  const double Hole = kPi / 16;
  EXPECT_NEAR(2 * kPi - Hole, Region.Area(), 1e-14);
  // The centroid of half a disc lies at 4 r / 3 π.
  EXPECT_NEAR((-8 / (3 * kPi) * 2 * kPi + Hole) / (2 * kPi - Hole), Region.Gravity().X, 1e-14);
  const struct {
    TPoint2D P;
    TShapeRelation Expected;
  } Cases[] = {
      {{-1.999, 0}, srIn}, {{-2 - 9e-7, 0}, srOn}, {{-1.5, 1.5}, srOut}, {{-1, 0.2}, srOut},
      {{-1, 0.25}, srOn},  {{-1, 0.26}, srIn},     {{0, 1}, srOn},       {{1e-3, 0}, srOut},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(testing::Message() << Case.P.X << ", " << Case.P.Y);
    EXPECT_EQ(Case.Expected, Region.RelationWithPoint(Case.P));
  }
  const auto Copy = Region.Clone();
  Copy->YMirror();
  EXPECT_NEAR(-Region.Gravity().X, Copy->Gravity().X, 1e-14);
  EXPECT_EQ(srOut, TLABHPolygon().RelationWithPoint({0, 0}));
}

TEST(TLABHPolygonList, TakesOverRegionsOfPolylinesAndSmoothsThem) {
  TVHPolygonList Source;
  Source.Add(std::make_unique<TVHPolygon>(true));
  Source[0]->Add(std::make_unique<TVPolyline2D>(TVRect2D({0, 0}, {9, 9})));
  Source[0]->Add(
      std::make_unique<TVPolyline2D>(TVPolyline2D{{2, 2}, {3, 2}, {4, 2}, {4, 4}, {2, 4}, {2, 2}}));
  TLABHPolygonList Regions(Source);
  ASSERT_EQ(2, Regions[0]->Count());
  EXPECT_TRUE((*Regions[0])[0]->GetIsClockwise());
  EXPECT_FALSE((*Regions[0])[1]->GetIsClockwise());
  EXPECT_EQ(Source.Area(), Regions.Area());
  EXPECT_EQ(5, (*Regions[0])[1]->Count());
  Regions.CollinearSmooth();
  EXPECT_EQ(4, (*Regions[0])[1]->Count());
  EXPECT_EQ(77.0, Regions.Area());
}

}  // namespace
}  // namespace tarnalgo
