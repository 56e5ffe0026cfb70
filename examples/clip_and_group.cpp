// Integer paths: contours to the clipping library and back, outers grouped with their holes.
#include <cstdio>
#include <polyclipping/clipper.hpp>

#include "examples/Svg.h"
#include "geometryAlgo/GeometryExtend.h"

using namespace tarnalgo;

namespace {

TVPolyline2D Disc(const TPoint2D& Centre, double Radius) {
  return TVArc2D(Centre, Centre + TPoint2D(Radius, 0), false).SampleToPolyline(0.01);
}

/// Union of the plates less the union of the cuts.
TVHPolygonList Subtract(const TVPolyline2DList& Plates, const TVPolyline2DList& Cuts) {
  ClipperLib::Clipper Clipper;
  Clipper.AddPaths(TPathUtils::CreatePaths(Plates, kIntegerScale), ClipperLib::ptSubject, true);
  Clipper.AddPaths(TPathUtils::CreatePaths(Cuts, kIntegerScale), ClipperLib::ptClip, true);
  TPolyTree Result;
  Clipper.Execute(ClipperLib::ctDifference, Result, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
  return TVHPolygonList(Result, kIntegerScale);
}

}  // namespace

int main(int argc, char** argv) {
  TVPolyline2DList Plates;
  Plates.Add(std::make_unique<TVPolyline2D>(TVRect2D({10, 30}, {130, 110})));
  Plates.Add(std::make_unique<TVPolyline2D>(TVRect2D({100, 10}, {200, 80})));
  Plates.Add(std::make_unique<TVPolyline2D>(Disc({175, 95}, 35)));
  TVPolyline2DList Cuts;
  Cuts.Add(std::make_unique<TVPolyline2D>(Disc({55, 70}, 28)));
  Cuts.Add(std::make_unique<TVPolyline2D>(TVRect2D({108, 20}, {118, 120})));
  Cuts.Add(std::make_unique<TVPolyline2D>(Disc({175, 95}, 14)));
  Cuts.Add(std::make_unique<TVPolyline2D>(TVRect2D({160, 24}, {190, 44})));

  TVHPolygonList Regions = Subtract(Plates, Cuts);
  Regions.SortByArea();
  // The contours alone, as a file would bring them: which are outers, which are their holes?
  TVPolyline2DList Loose;
  for (const TVHPolygon* Region : Regions) {
    for (const TVPolyline2D* Contour : *Region) Loose.Add(Contour->Clone());
  }
  Loose.Add(std::make_unique<TVPolyline2D>(Disc({55, 70}, 16)));  // an island in the round hole
  Loose.SortByArea();  // an outer has to stand before its holes
  TPathsList Groups;
  TPathUtils::NormalizeTPaths(TPathUtils::CreatePaths(Loose, kIntegerScale), Groups);

  examples::TSvg Svg({{0, 0}, {430, 140}});
  Svg.Draw(Plates, {examples::kBlue, 2});
  Svg.Draw(Cuts, {examples::kRed, 2, "7 4"});
  for (std::size_t I = 0; I < Groups.size(); ++I) {
    const TVPolyline2DList Contours = TPathUtils::CreatePolylines(Groups[I], kIntegerScale);
    TVHPolygon Region;
    for (const TVPolyline2D* Contour : Contours) Region.Add(Contour->Clone());
    std::printf("region %zu: %d holes, %.1f mm2\n", I, Region.Count() - 1, Region.Area());
    Region.Translate({215, 0});
    Svg.Draw(Region, {examples::kInk, 1.6, {}, I == 0 ? examples::kSky : examples::kOrange});
  }
  Svg.Legend({examples::kBlue, 2}, "plates: their union ...");
  Svg.Legend({examples::kRed, 2, "7 4"}, "... less these cuts ...");
  Svg.Legend({examples::kInk, 1.6, {}, examples::kSky}, "... gives regions with holes,");
  Svg.Legend({examples::kInk, 1.6, {}, examples::kOrange}, "and an island is a region again");
  return Svg.Save(argc, argv);
}
