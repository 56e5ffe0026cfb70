#pragma once  // geometryAlgo/flyscanAlgo/LinearSegmentList.h

#include "geometryAlgo/flyscanAlgo/FlyCurves.h"
#include "geometryAlgo/flyscanAlgo/LinearSegment.h"

namespace tarnalgo {

/// One run: edges of one channel on one line, which become one pass.
///
///     TLinearSegmentList Run(Segments[0]->LineAngle, Segments[0]->Intercept);
///     Run.Add(Segments[0]);  // ... and its neighbours of equal key
///     TOwningFlyCurves Pass;
///     Run.BuildResult(Pass);
///
/// Ownership: refers to its segments, which stay with `TLinearSegments`; but it turns their `Line`
/// round as the pass needs it.
class TLinearSegmentList : public TObjectList<TLinearSegment> {
 public:
  /// Direction (radians) and intercept of the run, set by whoever makes it.
  double Angle = 0.0;
  double Intercept = 0.0;  ///< As `TLinearSegment::Intercept`.
  /// Unit direction of the run: the zero vector until `BuildResult` derives it from `Angle`.
  TPoint2D AngVec;

  TLinearSegmentList() : TObjectList<TLinearSegment>(false) {}
  /// An empty run of that direction and intercept.
  TLinearSegmentList(double AAngle, double AIntercept)
      : TObjectList<TLinearSegment>(false), Angle(AAngle), Intercept(AIntercept) {}

  /// Turns every edge against `AngVec`, so that its end is its low end (an edge across `AngVec`
  /// stays as it is), and sorts by `CompareSegmentDM`.
  /// Ties: the order of the run.
  void SortByDM();
  /// Order by how far along `AngVec` the end point lies. Exact signs.
  int CompareSegmentDM(const TLinearSegment& Left, const TLinearSegment& Right) const;

  /// Along `AngVec`, `ALine` meets some edge of the run. Touching counts; with `AngVec` still zero
  /// everything meets. Directions of the lines do not matter. Across `AngVec` nothing is compared.
  /// Tolerance: 1e-6, a length along the run.
  bool CheckOverlap(const TLine2D& ALine) const;

  /// The pass that cuts the run: every edge from its low to its high end along `Angle`, in
  /// ascending order, with a connection from the high end of one to the low end of the next where
  /// `TFlyscanTool::GetSmoothBezierSeg` offers a joint or the gap along the line is longer than
  /// `CamSampleLen`. Across a shorter gap the next cut simply starts. The gap is a distance without
  /// sign: edges that overlap by more than that are joined by a line that runs backwards.
  ///
  /// `Result` is cleared first and holds a `TFlyLine` on a new `TGeLine2D` for each cut and each
  /// gap line, a `TFlyCurve` on a new `TGePolyBezier2D` for each joint. All carry the channel of
  /// the first edge. Sets `AngVec`; more than one edge is sorted by `SortByDM`. A single edge is
  /// neither turned nor sorted: it is cut from its end to its start, as it is stored.
  /// Tolerance: 1e-6 on the length of a gap.
  /// Errors: when memory runs out, `Result` is as it was; the run may be sorted already.
  /// Ownership: the host curves in `Result` belong to the caller, who frees them before clearing
  /// the list or passes a `TOwningFlyCurves`, which does.
  void BuildResult(TFlyCurves& Result);
};

}  // namespace tarnalgo
