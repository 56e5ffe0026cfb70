// A part with its true curves: lines, arcs and Beziers as chains, chains as a region with holes.
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

#include "examples/Svg.h"
#include "geometryAlgo/VedaType.h"

using namespace tarnalgo;

namespace {

/// A plate with one round end and one end bent like an S.
TLABPolyline Rim() {
  TLABPolyline Chain;
  Chain.Add({{20, 10}, {120, 10}});
  Chain.Add({{120, 10}, {120, 70}, {120, 40}, 1.0});  // half a circle about (120, 40)
  Chain.Add({{120, 70}, {20, 70}});
  Chain.Add({{20, 70}, {-5, 50}, {45, 30}, {20, 10}});  // a Bezier, two control points
  return Chain;
}

TLABPolyline Slot() {
  TLABPolyline Chain;
  Chain.Add({{50, 26}, {95, 26}});
  Chain.Add({{95, 26}, {95, 42}, {95, 34}, 1.0});
  Chain.Add({{95, 42}, {50, 42}});
  Chain.Add({{50, 42}, {50, 26}, {50, 34}, 1.0});
  return Chain;
}

}  // namespace

int main(int argc, char** argv) {
  TLABHPolygon Region;  // item 0 is the outline, the others are holes
  Region.Add(std::make_unique<TLABPolyline>(Rim()));
  Region.Add(std::make_unique<TLABPolyline>(Slot()));
  std::printf("area %.6f, of the rim sampled with a chord error of 0.1: %.6f\n", Region[0]->Area(),
              Region[0]->Sample(0.1).Area());
  const TPoint2D Gravity = Region.Gravity();
  std::printf("region %.3f mm2 about (%.3f, %.3f)\n", Region.Area(), Gravity.X, Gravity.Y);

  examples::TSvg Svg({{5, 0}, {155, 80}});
  Svg.Draw(Region, {examples::kInk, 2, {}, examples::kPale});
  std::array<int, 3> Counts{};  // srOn, srIn, srOut
  for (double X = 10; X <= 150; X += 5) {
    for (double Y = 5; Y <= 75; Y += 5) {
      const TShapeRelation Place = Region.RelationWithPoint({X, Y});
      ++Counts[static_cast<std::size_t>(Place)];
      Svg.Dot({X, Y},
              Place == srIn    ? examples::kGreen
              : Place == srOut ? examples::kGrey
                               : examples::kPink,
              Place == srOn ? 5 : 3);
    }
  }
  std::printf("of the grid %d points lie in, %d out, %d on the edge\n", Counts[1], Counts[2],
              Counts[0]);

  const TVLine2D Cut({12, 20}, {152, 66});
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Stretches;
  for (const TLABPolyline* Chain : Region) Chain->CrossWithSegLine(Cut, Points, Stretches);
  Svg.Draw(Cut, {examples::kOrange, 2});
  for (const TPoint2D& P : Points) Svg.Dot(P, examples::kBlue, 5.5);
  std::printf("the line crosses it %zu times\n", Points.size());
  Svg.Legend({examples::kGreen}, "in the region", true);
  Svg.Legend({examples::kGrey}, "outside, or in the slot", true);
  Svg.Legend({examples::kPink}, "on the edge, within 1e-6", true);
  Svg.Legend({examples::kBlue}, "crossings with the line", true);
  return Svg.Save(argc, argv);
}
