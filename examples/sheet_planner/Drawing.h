#pragma once  // examples/sheet_planner/Drawing.h

#include <map>
#include <string>
#include <vector>

#include "host/Cadtypes.h"

namespace sheet_planner {

/// How many of each kind, by a name for the user. Ordered, so that reports do not vary. Blocks
/// placed over and over multiply what they leave out beyond an int.
using TCensus = std::map<std::string, long long>;

/// A straight edge as drawn. `Layer` is an index into `TDrawing::Layers`, here and below.
struct TDrawnEdge {
  tarnalgo::TLine2D Line;
  int Layer = 0;
};

struct TDrawnArc {
  tarnalgo::TArc2D Arc;  // less than a full turn
  int Layer = 0;
};

struct TDrawnCircle {
  tarnalgo::TCircle2D Circle;
  int Layer = 0;
};

/// A spline or an ellipse, flattened. Closed when the last point repeats the first.
struct TDrawnCurve {
  std::vector<tarnalgo::TPoint2D> Points;
  int Layer = 0;
};

/// What there is to cut, free of the format it came in: blocks are expanded, polylines taken apart.
/// All coordinates are finite and at most `kLargestCoordinate`.
struct TDrawing {
  std::string Name;
  std::string Unit = "units";       // of all lengths, for the user
  std::vector<std::string> Layers;  // in order of first use

  std::vector<TDrawnEdge> Edges;
  std::vector<TDrawnArc> Arcs;
  std::vector<TDrawnCircle> Circles;
  std::vector<TDrawnCurve> Curves;

  TCensus Read;                    // entities by kind, block references expanded
  TCensus Skipped;                 // the same for what cannot be cut, with the reason where needed
  std::vector<std::string> Notes;  // remarks on the file

  bool HasGeometry() const {
    return !Edges.empty() || !Arcs.empty() || !Circles.empty() || !Curves.empty();
  }
  /// Index of the layer of that name, appended when new.
  int LayerIndex(const std::string& LayerName);

  void AddEdge(const tarnalgo::TPoint2D& From, const tarnalgo::TPoint2D& To, int Layer) {
    Edges.push_back({{From, To}, Layer});
  }

 private:
  std::map<std::string, int> FLayerIndices;
};

/// Coordinates beyond this are damage, not geometry; squares and crosses of lesser ones stay exact
/// enough to plan with.
inline constexpr double kLargestCoordinate = 1e9;

}  // namespace sheet_planner
