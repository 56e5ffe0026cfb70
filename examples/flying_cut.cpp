// Flying cut: collinear edges of many windows become passes; gaps over a hole are told apart.
#include <cstdio>
#include <memory>
#include <vector>

#include "examples/Svg.h"
#include "geometryAlgo/flyscanAlgo.h"

using namespace tarnalgo;

int main(int argc, char** argv) {
  // A sheet: windows in rows and columns, and two round holes between them.
  TFlyCurve Part(nullptr, 0.0, false, 1, 0);
  TLinearSegments Edges;
  for (int Row = 0; Row < 3; ++Row) {
    for (int Column = 0; Column < 6; ++Column) {
      const TVPolyline2D Window(
          TVRect2D({Column * 16.0, Row * 14.0}, {Column * 16.0 + 10, Row * 14.0 + 8}));
      for (int I = 0; I < 4; ++I) Edges.AddLine(&Part, Window.Line(I).ToLine2D());
    }
  }
  TFlyHoles Holes;
  for (const TPoint2D& Centre : {TPoint2D(45, 8), TPoint2D(74, 25)}) {
    Holes.AddHole(std::make_unique<TGeCircularArc2D>(Centre, 2.2, 0.0, kFullTurn));
  }

  // Runs: neighbours of equal key in the sorted list. A pass for each.
  Edges.SortByAngleIntercept();
  std::vector<TOwningFlyCurves> Passes;
  for (int First = 0, Last = 0; First < Edges.Count(); First = Last) {
    TLinearSegmentList Run(Edges[First]->LineAngle, Edges[First]->Intercept);
    while (Last < Edges.Count() &&
           TLinearSegments::CompareAngleIntercept(*Edges[First], *Edges[Last]) == 0) {
      Run.Add(Edges[Last++]);
    }
    Passes.emplace_back();
    Run.BuildResult(Passes.back());
  }

  examples::TSvg Svg({{-6, -6}, {96, 42}});
  int Cuts = 0;
  int Gaps = 0;
  int Crossing = 0;
  for (const TOwningFlyCurves& Pass : Passes) {
    for (const TFlyCurve* Piece : Pass) {
      if (!Piece->IsFlyGap()) {
        ++Cuts;
        Svg.Draw(*Piece->GeCurve(), {examples::kBlue, 3.5});
        continue;
      }
      TGeCompositeCurve2D Gap;
      Gap.AddCurve(Piece->GeCurve()->Clone());
      const bool Crosses = TCrossTool::CheckCrossWithHoles(Gap, Holes.RTree());
      ++(Crosses ? Crossing : Gaps);
      if (Crosses)
        Svg.Draw(Gap, {examples::kRed, 3.5});
      else
        Svg.Draw(Gap, {examples::kSky, 2, "3 3"});
    }
  }
  for (const TGeCurve2D* Hole : Holes.RTree().GetAllData()) Svg.Draw(*Hole, {examples::kInk, 1.6});
  std::printf("%d edges in %zu passes: %d cuts, %d gaps flown over, %d over a hole\n",
              Edges.Count(), Passes.size(), Cuts, Gaps, Crossing);
  Svg.Legend({examples::kBlue, 3.5}, "edges, cut in flight");
  Svg.Legend({examples::kSky, 2, "3 3"}, "gaps flown over, beam off");
  Svg.Legend({examples::kInk, 1.6}, "holes");
  Svg.Legend({examples::kRed, 3.5}, "gap over a hole: split the pass here");
  return Svg.Save(argc, argv);
}
