#pragma once  // examples/sheet_planner/EdgePrep.h

#include <string>
#include <vector>

#include "examples/sheet_planner/Drawing.h"
#include "geometryAlgo/VedaType/LABPolyline.h"

namespace sheet_planner {

struct TPrepOptions {
  /// Length: ends this near to each other are one place, and edges that run this near to each other
  /// are one cut. At least 1e-6.
  double Snap = 0.01;
  /// Each layer gets its own channel port, in order of first use; else everything is on port 0.
  bool LayersAsPorts = false;
};

/// A piece to cut between two anchors (numbers of places on the sheet). Pieces meet where they
/// share an anchor.
struct TSheetPiece {
  int FromAnchor = 0;
  int ToAnchor = 0;
  int Port = 0;
};

/// Its ends are the places of its anchors.
struct TSheetEdge : TSheetPiece {
  tarnalgo::TLine2D Line;
};

/// What is no single edge: an arc, or a flattened curve as lines. As drawn, the ends up to the snap
/// gap off the anchors.
struct TSheetChain : TSheetPiece {
  tarnalgo::TLABPolyline Chain;

  bool IsArc() const { return Chain.First().SegType == tarnalgo::stArc; }
};

struct TSheetCircle {
  tarnalgo::TCircle2D Circle;
  int Port = 0;
};

/// What the preparation found, for the report. Lengths in model units.
struct TPrepStats {
  int EdgesRead = 0;
  int EndsMoved = 0;           // ends of edges that were not on their anchor
  int TooShort = 0;            // edges, arcs, circles and curves that the snap gap swallows
  int Repeated = 0;            // edges drawn again
  int Covered = 0;             // edges wholly within longer cuts
  int Trimmed = 0;             // edges of which a part was cut already
  int RepeatedOther = 0;       // arcs, circles and curves drawn again
  double DroppedLength = 0.0;  // of edges: drawn, but cut already
};

/// The sheet to plan: every stretch of it once.
struct TSheet {
  std::vector<TSheetEdge> Edges;
  std::vector<TSheetChain> Chains;
  std::vector<TSheetCircle> Circles;
  std::vector<std::string> PortLayers;  // the layer of each port; empty when all is on port 0
  TPrepStats Stats;
};

/// Snaps the ends of the drawing and drops what is drawn more than once.
///
/// Straight edges: of collinear edges that overlap, the one that starts first along their line
/// stays whole, and each later one keeps what is left of it; so the edges' total length is the
/// length of the union of all that was drawn. Edges that only touch stay apart. Arcs, circles and
/// curves are dropped when they repeat another one whole; overlapping arcs are not taken apart.
/// Tolerance: `Snap`.
/// Ties: the first in the drawing stays, on its own port.
/// Cost: O(n log n) where edges of nearly one direction keep apart; a window of edges that are not
/// quite parallel adds what it holds.
TSheet PrepareSheet(const TDrawing& Drawing, const TPrepOptions& Options);

/// The box of all that is cut; invalid when that is nothing.
tarnalgo::TRect2D BoundsOf(const TSheet& Sheet);

}  // namespace sheet_planner
