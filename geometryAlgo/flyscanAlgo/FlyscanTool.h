#pragma once  // geometryAlgo/flyscanAlgo/FlyscanTool.h

#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadgeometry.h"

namespace tarnalgo {

/// Tests and helpers of flying-cut planning. Directions are unit vectors.
class TFlyscanTool {
 public:
  /// The cam can follow the corner `PtLast`, `Pt`, `PtNext`: it turns by less than 1 radian, or by
  /// less than 0.5 when the dominant axis changes. A leg on an exact diagonal has no dominant axis,
  /// which counts as a change; a leg of no length does not turn.
  /// Tolerance: 1e-6, on the coordinates of the legs and on the angle.
  static bool AngleCamValid(const TPoint2D& PtLast, const TPoint2D& Pt, const TPoint2D& PtNext);

  /// The connection that leaves `PtOut` along `VecOut` and enters `PtIn` along `VecIn`, each with a
  /// straight lead of length `D` and a control point `BezierControlLength` beyond it, has a corner
  /// sharper than `MaxSharpAngle`. Corners are measured as the angle left between the legs, π for
  /// going straight on.
  /// Tolerance: none; a corner of exactly `MaxSharpAngle` passes.
  static bool AngleTooSharp(const TPoint2D& PtOut, const TPoint2D& VecOut, const TPoint2D& PtIn,
                            const TPoint2D& VecIn, double D);

  /// The curve as a polyline whose chords deviate from it by at most `ChordEps`, ends exact.
  static TVPolyline2D GetPolyline2D(const TGeCurve2D& GeCurve, double ChordEps);

  /// Whether a single smooth Bezier joins `PtOut`, left along `VecOut`, to `PtIn`, entered along
  /// `VecIn`. No joint is offered yet: answers false and leaves `BezierSeg` alone, so that
  /// `TLinearSegmentList::BuildResult` falls back to gap lines.
  static bool GetSmoothBezierSeg(const TPoint2D& PtOut, const TPoint2D& VecOut,
                                 const TPoint2D& PtIn, const TPoint2D& VecIn,
                                 TBezierSegment2D& BezierSeg);
};

}  // namespace tarnalgo
