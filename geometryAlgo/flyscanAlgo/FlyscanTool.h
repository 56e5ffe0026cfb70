#pragma once  // geometryAlgo/flyscanAlgo/FlyscanTool.h

#include <memory>

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

  /// The curve as a polyline whose chords deviate from it by at most `ChordEps`, ends exact.
  static TVPolyline2D GetPolyline2D(const TGeCurve2D& GeCurve, double ChordEps);

  // --- Connections (FlyscanToolConnect.cpp) ---
  //
  // Each leaves `PtOut` along `VecOut` and enters `PtIn` along `VecIn`. Its straight leads are
  // `ScanConnectSegLength` long.

  /// The connection with straight leads of length `D` and control points `BezierControlLength`
  /// beyond them has a corner sharper than `MaxSharpAngle`. Corners are measured as the angle left
  /// between the legs, π for going straight on.
  /// Tolerance: none; a corner of exactly `MaxSharpAngle` passes.
  static bool AngleTooSharp(const TPoint2D& PtOut, const TPoint2D& VecOut, const TPoint2D& PtIn,
                            const TPoint2D& VecIn, double D);

  /// A single cubic Bezier that joins the two smoothly; false, `BezierSeg` untouched, where the
  /// ends are less than 0.3 apart or it would turn by more than 60.12 degrees at one of them. Its
  /// control points are the ends of the leads, drawn in where they reach beyond a quarter of the
  /// way to the control point of the other end: first that of the leaving end, then the other.
  /// Tolerance: 1e-6, on the turn and on the place of the control point; none on the distance.
  static bool GetSmoothBezierSeg(const TPoint2D& PtOut, const TPoint2D& VecOut,
                                 const TPoint2D& PtIn, const TPoint2D& VecIn,
                                 TBezierSegment2D& BezierSeg);

  /// The smooth joint; where there is none `CreateTriBezierConnect`, or `CreateTriLineConnect` when
  /// `ConnectStyle` is 1 or the former would have too sharp a corner.
  static std::unique_ptr<TGeCurve2D> CreateConnectCurve(const TPoint2D& PtOut,
                                                        const TPoint2D& VecOut,
                                                        const TPoint2D& PtIn,
                                                        const TPoint2D& VecIn);

  /// Lead, cubic, lead, as Bezier segments; the directions agree where they meet. Where the leads
  /// face each other on nearly one line the middle is two cubics and passes 0.5 beside that line,
  /// on the left of `VecOut`.
  static std::unique_ptr<TGePolyBezier2D> CreateTriBezierConnect(const TPoint2D& PtOut,
                                                                 const TPoint2D& VecOut,
                                                                 const TPoint2D& PtIn,
                                                                 const TPoint2D& VecIn);

  /// Lead, straight line, lead.
  static std::unique_ptr<TGePolyline2D> CreateTriLineConnect(const TPoint2D& PtOut,
                                                             const TPoint2D& VecOut,
                                                             const TPoint2D& PtIn,
                                                             const TPoint2D& VecIn);

  /// The straight line that leaves `CircleA`, run in its sense, and enters `CircleB` in its sense:
  /// the polar angles in [0, 2π) of its tangent points. Unequal senses give an inner tangent.
  /// Errors: centres less than 1e-4 apart, circles that cross (inner) or lie in one another, and
  /// anything that is not finite, "Connect calculate tangent".
  static void CalcTangentLine(const TCircle2D& CircleA, const TCircle2D& CircleB, bool IsClockwiseA,
                              bool IsClockwiseB, double& AngleA, double& AngleB);
};

}  // namespace tarnalgo
