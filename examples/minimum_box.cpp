// What a part needs of a sheet: hull, smallest rectangle, width, diameter, smallest circle.
#include <cmath>
#include <cstdio>

#include "examples/Svg.h"
#include "geometryAlgo/ShapeApp.h"

using namespace tarnalgo;

namespace {

/// A lever at an angle: two eyes, an arm between them and a hook.
TVPolyline2D Lever() {
  TVPolyline2D Part{{0, -30},  {90, -12}, {170, -34}, {214, -20}, {222, 16},
                    {190, 30}, {184, 8},  {150, 2},   {96, 14},   {60, 58},
                    {22, 64},  {30, 34},  {-14, 26},  {-28, -8},  {0, -30}};
  Part.Rotate(0.4, {100, 0});
  return Part;
}

}  // namespace

int main(int argc, char** argv) {
  const TVPolyline2D Part = Lever();
  const TVPolyline2D Hull = TConvexHullCalculator::CalcConvexHull(Part);
  TVPoint2DList Corners;
  const double Area = TPolygonBasicAlgo::SimpleMABB(Part, Corners);
  TPoint2D Direction;
  const double Width = TPolygonBasicAlgo::SimpleWidth(Part, Direction);
  int I = 0;
  int J = 0;
  const double Diameter = TPolygonBasicAlgo::ConvexDiameter(Hull, I, J);
  const TVCircle2D Circle = TPointsBasicAlgo::FindMinCircle(Part);

  TVPolyline2D Rectangle(Corners);
  Rectangle.ConnectHeadTail();
  std::printf("part %.1f, hull %.1f, smallest rectangle %.1f, upright box %.1f mm2\n", Part.Area(),
              Hull.Area(), Area, Part.BoundBox().Area());
  std::printf("rectangle %.2f x %.2f mm, at %.1f degrees\n", Rectangle.Line(0).Length(),
              Rectangle.Line(1).Length(),
              std::remainder(Rectangle.Line(0).Vector().Angle(), kPi) * 180 / kPi);
  std::printf("width %.2f mm, diameter %.2f mm, circle of radius %.2f mm\n", Width, Diameter,
              Circle.Radius);

  examples::TSvg Svg(Circle.Boundbox());
  Svg.Draw(Part, {examples::kInk, 2, {}, examples::kPale});
  Svg.Draw(Hull, {examples::kBlue, 2.5, "9 5"});
  Svg.Draw(Rectangle, {examples::kRed, 2.5});
  Svg.Draw(TVArc2D(Circle.Center, Circle.CalcPointByRadian(0.0), false).SampleToPolyline(0.05),
           {examples::kGreen, 2});
  Svg.Draw(TVLine2D(Hull[I], Hull[J]), {examples::kPink, 2, "2 4"});
  Svg.Legend({examples::kInk, 2, {}, examples::kPale}, "part");
  Svg.Legend({examples::kBlue, 2.5, "9 5"}, "convex hull");
  Svg.Legend({examples::kRed, 2.5}, "smallest rectangle");
  Svg.Legend({examples::kGreen, 2}, "smallest circle");
  Svg.Legend({examples::kPink, 2, "2 4"}, "diameter: the vertices farthest apart");
  return Svg.Save(argc, argv);
}
