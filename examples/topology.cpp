// From a drawing's loose curves to outlines: ends snapped, curves cut where they meet, faces
// traced.
// The first argument names the picture, the second a drawing: a curve a line, "x y x y ...".
#include <cstdio>
#include <fstream>
#include <polyclipping/clipper.hpp>  // the table of the outlines' nodes holds its points
#include <sstream>
#include <string>

#include "examples/Svg.h"
#include "geometryAlgo/UPolygonGetter.h"

using namespace tarnalgo;

namespace {

constexpr const char* kDrawing =
    "0 0 101.5 0\n"                    // the lower side, a little too long
    "100 -1.5 100 58.7\n"              // the right one, too long below, short of the corner above
    "100 60 1.2 60\n"                  // the upper one, short of the corner
    "0 60 0 0\n"                       //
    "0 0 60 0\n"                       // drawn again
    "60 0.8 60 59.2\n"                 // a divider that stops short at both ends
    "15 15 45 15 45 45 15 45 15 15\n"  // a window
    "45 30 60 30\n"                    // joins window and divider: a bridge
    "68 60 80 38 92 60\n"              // a notch on the upper side
    "72 14 88 24\n100 30 108 36\n";    // leader lines

TVPolyline2DList ReadCurves(std::istream& Drawing) {
  TVPolyline2DList Curves;
  for (std::string Row; std::getline(Drawing, Row);) {
    std::istringstream Numbers(Row);
    auto Curve = std::make_unique<TVPolyline2D>();
    for (TPoint2D P; Numbers >> P.X >> P.Y;) Curve->Add(P);
    Curves.Add(std::move(Curve));
  }
  return Curves;
}

}  // namespace

int main(int argc, char** argv) {
  std::ifstream File(argc > 2 ? argv[2] : "");
  if (argc > 2 && !File) {
    std::fprintf(stderr, "cannot read %s\n", argv[2]);
    return 1;
  }
  std::istringstream BuiltIn(kDrawing);
  const TVPolyline2DList Curves = ReadCurves(argc > 2 ? static_cast<std::istream&>(File) : BuiltIn);

  TMChainsScatter Scatter(2.0);  // the gap: ends go to what is this near to them
  for (const TVPolyline2D* Curve : Curves) Scatter.AddCurve(*Curve);
  TTopoLinks Links = TTopoLinks::CreateTopoLink(Scatter.GetChains());
  const TTopoLinks Dangling = Links.GetDanglingTopo();
  const TTopoLinks Bridges = Links.GetBridgeTopo();
  TVPolyline2DList Outlines;
  TPointsOfOutline PointsOf;
  TChainsOfOutline ChainsOf;
  Links.GetPolygons(PointsOf, ChainsOf, Outlines);
  Outlines.SortByArea();

  const TScatterStats& Stats = Scatter.Stats();
  std::printf("%d curves: %d ends moved, %d cuts, %d repeated, %d stubs\n", Curves.Count(),
              Stats.EndsMoved, Stats.Cuts, Stats.Repeated, Stats.Stubs);
  const TVRect2D Box = Curves.BoundBox();
  const TPoint2D Aside(Box.Width() + 8, 0);
  examples::TSvg Svg(TVRect2D(Box.GetBottomLeft(), Box.GetTopRight() + Aside));
  for (const TVPolyline2D* Curve : Curves) Svg.Draw(*Curve, {examples::kInk, 1.6});
  const std::string_view Fills[] = {examples::kSky, examples::kYellow, examples::kGreen,
                                    examples::kPink};
  int Faces = 0;
  for (TVPolyline2D* Outline : Outlines) {
    std::printf("%s of %d vertices, %.1f mm2\n", Outline->IsClockwise() ? "outside" : "face",
                Outline->Count() - 1, Outline->Area());
    if (Outline->IsClockwise()) continue;
    Outline->Translate(Aside);
    Svg.Draw(*Outline, {examples::kInk, 1.6, {}, Fills[Faces++ % 4]});
  }
  const auto DrawRest = [&](const TTopoLinks& Rest, const examples::TPen& Pen) {
    for (const TMChainExtends& Group : Rest.GetGroupByDic()) {
      for (TMChainExtend* Chain : Group) {
        Chain->Translate(Aside);
        Svg.Draw(*Chain, Pen);
      }
    }
  };
  DrawRest(Dangling, {examples::kRed, 2.5, "7 4"});
  DrawRest(Bridges, {examples::kBlue, 2.5});
  Svg.Legend({examples::kInk, 1.6}, "as drawn: loose curves");
  Svg.Legend({examples::kInk, 1.6, {}, examples::kSky}, "outlines of faces");
  Svg.Legend({examples::kRed, 2.5, "7 4"}, "leads to a loose end");
  Svg.Legend({examples::kBlue, 2.5}, "bridge: only joins outlines");
  return Svg.Save(argc, argv);
}
