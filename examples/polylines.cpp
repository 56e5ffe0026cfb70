// Contours as point polylines: what two of them have in common, and where others lie.
#include <cstdio>
#include <memory>
#include <vector>

#include "examples/Svg.h"
#include "geometryAlgo/VedaType.h"

using namespace tarnalgo;

namespace {

const char* NameOf(TShapeRelation Relation) {
  switch (Relation) {
    case srOn:
      return "srOn";
    case srContain:
      return "srContain";
    case srContained:
      return "srContained";
    case srCross:
      return "srCross";
    case srDeviate:
      return "srDeviate";
    case srEqual:
      return "srEqual";
    default:
      return "";
  }
}

}  // namespace

int main(int argc, char** argv) {
  const TVPolyline2D Part{{20, 20}, {120, 20}, {120, 60}, {80, 60}, {80, 90}, {20, 90}, {20, 20}};
  const TVPolyline2D Cutter{{100, 60}, {150, 60}, {150, 100}, {60, 100},
                            {60, 40},  {100, 75}, {100, 60}};
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Stretches;
  Part.CrossWith(Cutter, Points, Stretches);
  std::printf("part: %.0f mm2, %.0f mm round; cutter meets it in %zu points and %zu stretch\n",
              Part.Area(), Part.TotalLength(), Points.size(), Stretches.size());

  examples::TSvg Svg({{0, 0}, {215, 110}});
  Svg.Draw(Part, {examples::kInk, 2, {}, examples::kPale});
  Svg.Draw(Cutter, {examples::kOrange, 2, "8 4"});
  const TVPolyline2D Others[] = {
      TVPolyline2D(TVRect2D({28, 26}, {52, 38})),    // inside
      TVPolyline2D(TVRect2D({120, 24}, {150, 44})),  // shares an edge from outside
      TVPolyline2D(TVRect2D({165, 24}, {205, 44})),  // apart
      TVPolyline2D(TVRect2D({6, 6}, {158, 104})),    // around
  };
  for (const TVPolyline2D& Other : Others) {
    const TShapeRelation Relation = Part.RelationWith(Other);
    Svg.Draw(Other, {examples::kGreen, 2});
    const TPoint2D Corner = Other.BoundBox().GetBottomLeft();
    Svg.Text(Corner + TPoint2D(1, -5), NameOf(Relation));
    std::printf("the box at (%g, %g): %s\n", Corner.X, Corner.Y, NameOf(Relation));
  }
  for (const TVLine2D& Stretch : Stretches) Svg.Draw(Stretch, {examples::kPink, 6});
  for (const TPoint2D& P : Points) {
    Svg.Dot(P, examples::kBlue);
    std::printf("crossing (%.2f, %.2f) at parameter %.3f\n", P.X, P.Y,
                Part.CalcFirstParamByPoint(P));
  }
  Svg.Legend({examples::kInk, 2, {}, examples::kPale}, "part");
  Svg.Legend({examples::kOrange, 2, "8 4"}, "cutter");
  Svg.Legend({examples::kBlue}, "single common points", true);
  Svg.Legend({examples::kPink, 6}, "common stretch");
  Svg.Legend({examples::kGreen, 2}, "other contours and their relation");
  return Svg.Save(argc, argv);
}
