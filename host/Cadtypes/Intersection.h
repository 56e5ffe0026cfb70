#pragma once  // host/Cadtypes/Intersection.h

#include "host/Cadtypes/Constants.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// One intersection of two curves: the point and its parameter on each of them.
struct TIntersectPoint2D {
  TPoint2D Point;       ///< The place, on the first curve.
  double Param1 = 0.0;  ///< Parameter on the first curve.
  double Param2 = 0.0;  ///< Parameter on the second curve.
};

/// The points alone of `A.Intersect(B, I1, I2, Eps)` and their count; a point beyond the count
/// stays what it is.
template <class TA, class TB>
int IntersectInPoints(const TA& A, const TB& B, TPoint2D& P1, TPoint2D& P2,
                      double Eps = kLinearTolerance) {
  TIntersectPoint2D I1{P1, 0.0, 0.0};
  TIntersectPoint2D I2{P2, 0.0, 0.0};
  const int Count = A.Intersect(B, I1, I2, Eps);
  P1 = I1.Point;
  P2 = I2.Point;
  return Count;
}

}  // namespace tarnalgo
