// A dense outline thinned: within a tolerance, never cutting into the part, never leaving it.
#include <cmath>
#include <cstdio>
#include <vector>

#include "examples/Svg.h"
#include "geometryAlgo/NestOptimizeAlgo.h"
#include "geometryAlgo/ShapeApp.h"

using namespace tarnalgo;

namespace {

/// A closed counter-clockwise outline of 360 points, as a scan or a sampled curve brings it.
std::vector<TPoint2D> DenseOutline() {
  std::vector<TPoint2D> Points;
  constexpr int kCount = 360;
  for (int I = 0; I < kCount; ++I) {
    const double Angle = I * 2 * kPi / kCount;
    const double Radius = 38 + 7 * std::sin(3 * Angle) + 2.2 * std::sin(11 * Angle + 1);
    Points.push_back(TPoint2D(1.7 * std::cos(Angle), std::sin(Angle)) * Radius);
  }
  Points.push_back(Points.front());  // closed: the last point is the first, exactly
  return Points;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<TPoint2D> Dense = DenseOutline();
  const TVPolyline2D Outline(Dense);
  TPolyDecimator Decimator(Dense, 3.0);  // large, so that the picture shows what it does
  const struct {
    const char* Name;
    std::string_view Colour;
    std::string_view Dash;
    std::vector<TPoint2D> Points;
  } Forms[] = {
      {"outer: PlateSimplify", examples::kRed, {}, Decimator.PlateSimplify()},
      {"inner: GetInscribedHull", examples::kGreen, {}, Decimator.GetInscribedHull()},
      {"Douglas-Peucker, both sides", examples::kBlue, "8 4", Decimator.DouglasPeucker(true)},
  };

  examples::TSvg Svg(Outline.BoundBox());
  Svg.Draw(Outline, {examples::kInk, 0.8, {}, examples::kPale});
  Svg.Legend({examples::kInk, 0.8, {}, examples::kPale}, "the outline, 361 points");
  std::printf("%d points, %.1f mm2\n", Outline.Count(), Outline.Area());
  for (const auto& Form : Forms) {
    const TVPolyline2D Thin(Form.Points);
    const bool IsAround = TPolygonBasicAlgo::PolyContains(Thin, Outline, 1e-6, 0.0);
    const bool IsWithin = TPolygonBasicAlgo::PolyContains(Outline, Thin, 1e-6, 0.0);
    std::printf("%-28s %3d points, %.1f mm2%s\n", Form.Name, Thin.Count(), Thin.Area(),
                IsAround   ? ", holds the outline"
                : IsWithin ? ", lies in the outline"
                           : "");
    Svg.Draw(Thin, {Form.Colour, 2.5, Form.Dash});
    Svg.Legend({Form.Colour, 2.5, Form.Dash}, Form.Name);
  }
  return Svg.Save(argc, argv);
}
