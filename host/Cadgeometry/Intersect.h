#pragma once  // host/Cadgeometry/Intersect.h

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// A point of a curve with its parameter.
struct TPointOnCurve2D {
  TPoint2D Point;      ///< The place.
  double Param = 0.0;  ///< The curve's own parameter there.
};

/// One meeting of two curves, as the place on each of them. The two points agree within the
/// tolerance; at an end or a vertex of a curve its own point is that vertex exactly.
///
/// An overlap is the stretch from `OnFirst` to `EndOnFirst`, along the direction of the first
/// curve, and from `OnSecond` to `EndOnSecond` on the second, against its direction where the
/// parameters fall. Of a single point both ends are the same.
struct TIntersect2D {
  TPointOnCurve2D OnFirst;      ///< The meeting, or where an overlap begins, on the first curve.
  TPointOnCurve2D OnSecond;     ///< The same place on the second curve.
  bool IsOverlap = false;       ///< A stretch rather than a point.
  TPointOnCurve2D EndOnFirst;   ///< Where an overlap ends, on the first curve.
  TPointOnCurve2D EndOnSecond;  ///< The same place on the second curve.

  /// The meeting point on the first curve; the start of an overlap.
  const TPoint2D& Point() const { return OnFirst.Point; }
};

}  // namespace tarnalgo
