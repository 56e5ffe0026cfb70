#pragma once  // host/Cadgeometry/Intersect.h

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// A point of a curve with its parameter.
struct TPointOnCurve2D {
  TPoint2D Point;
  double Param = 0.0;
};

/// One meeting of two curves, as the place on each of them. The two points agree within the
/// tolerance; at an end or a vertex of a curve its own point is that vertex exactly.
///
/// An overlap is the stretch from `OnFirst` to `EndOnFirst`, along the direction of the first
/// curve, and from `OnSecond` to `EndOnSecond` on the second, against its direction where the
/// parameters fall. Of a single point both ends are the same.
struct TIntersect2D {
  TPointOnCurve2D OnFirst;
  TPointOnCurve2D OnSecond;
  bool IsOverlap = false;
  TPointOnCurve2D EndOnFirst;
  TPointOnCurve2D EndOnSecond;

  /// The meeting point on the first curve; the start of an overlap.
  const TPoint2D& Point() const { return OnFirst.Point; }
};

}  // namespace tarnalgo
