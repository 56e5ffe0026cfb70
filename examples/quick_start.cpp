#include <cstdio>

#include "geometryAlgo/flyscanAlgo.h"

int main() {  // three collinear edges, given in any order, become one pass
  tarnalgo::TFlyCurve Part(nullptr, 0.0, false, 1, 0);
  tarnalgo::TLinearSegments Edges;
  for (double X : {30.0, 0.0, 15.0}) Edges.AddLine(&Part, {{X, 5}, {X + 10, 5}});
  Edges.SortByAngleIntercept();
  tarnalgo::TLinearSegmentList Run(Edges[0]->LineAngle, Edges[0]->Intercept);
  for (tarnalgo::TLinearSegment* Edge : Edges) Run.Add(Edge);
  tarnalgo::TOwningFlyCurves Pass;
  Run.BuildResult(Pass);
  for (tarnalgo::TFlyCurve* Piece : Pass) {
    std::printf("%s %g mm\n", Piece->IsFlyGap() ? "gap" : "cut", Piece->GeCurve()->CurveLength());
  }
}
