#pragma once  // examples/sheet_planner/Planner.h

#include <memory>
#include <string>
#include <vector>

#include "examples/sheet_planner/EdgePrep.h"
#include "examples/sheet_planner/Nesting.h"
#include "geometryAlgo/VedaType/LABHPolygon.h"
#include "geometryAlgo/VedaType/LABPolyline.h"
#include "geometryAlgo/flyscanAlgo.h"

namespace sheet_planner {

/// A piece of an ordinary contour: in which list of the sheet it stands, where there, and whether
/// it is cut backwards.
struct TContourPiece {
  enum class TKind { Edge, Chain };

  TKind Kind = TKind::Edge;
  int Index = 0;
  bool IsReversed = false;
};

/// Pieces that flying cut cannot serve, joined end to end.
struct TOrdinaryContour {
  std::vector<TContourPiece> Pieces;  // in the order they are cut
  tarnalgo::TLABPolyline Chain;       // their segments as they are cut, arcs as arcs
  bool IsClosed = false;              // at a common place: the chain may miss it by the snap gap
  int Port = 0;

  double Length() const;
};

/// A gap that the head must not fly across: the pass was split there.
struct TRejectedGap {
  tarnalgo::TLine2D Line;
};

/// What is cut next: the item of that number in the plan's list of the kind.
struct TPlanStep {
  enum class TKind { Pass, Circle, Contour };

  TKind Kind = TKind::Pass;
  int Index = 0;
};

/// What the planner did, for the report. Lengths in model units.
struct TPlanStats {
  int FlownEdges = 0;
  double FlownLength = 0.0;
  int ShortEdges = 0;       // of stretches below MinScanLineLength
  int LongEdges = 0;        // above MaxScanLineLength
  int EdgesBesideArcs = 0;  // of the right length, in contours that hold an arc or a curve
  int Runs = 0;
  int Groups = 0;  // directions, each port apart
  int GapsAccepted = 0;
  double GapLength = 0.0;
  int GapsTooLong = 0;   // collinear edges further apart than MaxConnectDistance
  int GapsCrossing = 0;  // rejected: they cross another cut
  int RunsSplit = 0;     // between edges of which one has more inside than the other
};

/// What became of the ways from one pass or circle to the next.
struct TConnectStats {
  int Smooth = 0;
  int ThreePiece = 0;
  int Transitions = 0;
  int TooFar = 0;    // rejected, here and below: beyond MaxConnectDistance
  int Crossing = 0;  // every curve crosses a cut
  int NoCurve = 0;   // none within the limits
};

/// How the sheet is cut.
struct TPlan {
  /// Each owns its curves. Lists are in cutting order, as `Order` mixes them.
  std::vector<tarnalgo::TOwningFlyCurves> Passes;
  std::vector<int> GroupOfPass;        // passes of one port, level of nesting and direction
  tarnalgo::TOwningFlyCurves Circles;  // a `TFlyCircle` each
  std::vector<TOrdinaryContour> Contours;
  tarnalgo::TLABHPolygonList Regions;  // of the material, as `TNesting::Regions`
  std::vector<TPlanStep> Order;
  /// The curve that leads to each step of the order without a halt, empty where there is none; the
  /// whole list may be missing.
  std::vector<std::unique_ptr<tarnalgo::TGeCurve2D>> Connections;
  TConnectStats Joints;
  std::vector<TRejectedGap> Rejected;
  TPlanStats Stats;
};

/// Plans a prepared sheet with the library's tunables as they are: `GroupSheet`, then
/// `RejectCrossingGaps`, then `OrderPlan`, which tells `Progress` how far it is.
TPlan PlanSheet(const TSheet& Sheet, const tarnalgo::TProgressEvent& Progress = {});

/// The sheet contour by contour, nothing flown, in the order of `OrderPlan`: what flying cut has to
/// beat.
TPlan PlanContours(const TSheet& Sheet);

/// The runs of collinear edges and their passes; arcs, curves and the other edges as contours.
///
/// Edges of up to `MaxScanLineLength` are flown when the straight stretch that they are part of
/// (`StretchLengths`) has `MinScanLineLength`: less is not worth the movement, longer edges are
/// outlines, which want the lead-ins and the speed of an ordinary contour. Contours that hold an
/// arc or a curve are cut whole. A run is split where the level of nesting changes, so that what
/// lies inside can be cut first.
TPlan GroupSheet(const TSheet& Sheet, const TNesting& Nesting);

/// Splits each pass where a gap piece would cross another cut of the sheet.
///
/// "Another cut" is every edge, arc, circle and curve, of parts and of cut-outs alike: what was cut
/// loose may have tipped up, and a head that crosses its outline hits it. A gap may touch the cuts
/// it joins, at its two ends. Gaps so short that they have no piece (`CamSampleLen`) are not
/// tested.
void RejectCrossingGaps(const TSheet& Sheet, TPlan& Plan);

}  // namespace sheet_planner
