#pragma once  // examples/sheet_planner/Tracing.h

#include "examples/sheet_planner/Drawing.h"
#include "geometryAlgo/UPolygonGetter.h"

namespace sheet_planner {

struct TTraceOptions {
  /// Length: loose ends go to what is this near to them.
  double Gap = 0.1;
  /// Length: chord error with which arcs and circles are laid out to find where they meet.
  double ChordError = 0.001;
};

/// What the tracing found, for the report.
struct TTraceStats {
  tarnalgo::TScatterStats Scatter;
  int Curves = 0;    // edges, arcs, circles and curves as drawn
  int Pieces = 0;    // what they were cut into
  int Faces = 0;     // areas bounded by an outline of their own
  int Outsides = 0;  // connected figures that bound areas
  int Dangling = 0;  // chains that lead to loose ends
  int Bridges = 0;   // chains that only join figures
};

/// A drawing whose pieces meet at their ends only: edges, arcs and curves are cut where they meet,
/// loose ends are snapped within the gap, what is drawn again is left out. Arcs stay arcs, circles
/// that nothing meets stay circles, every piece keeps its layer.
///
/// The pieces stand in the order in which the outlines run, outsides first, so that joining pieces
/// by their order gives whole outlines where they branch.
/// Cost: O((n + k) log² n), n chords, k meetings.
TDrawing TraceDrawing(const TDrawing& Drawing, const TTraceOptions& Options, TTraceStats& Stats);

}  // namespace sheet_planner
