#pragma once  // host/Cadtypes/Intersection.h

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// One intersection of two curves: the point and its parameter on each of them.
struct TIntersectPoint2D {
  TPoint2D Point;
  double Param1 = 0.0;
  double Param2 = 0.0;
};

}  // namespace tarnalgo
