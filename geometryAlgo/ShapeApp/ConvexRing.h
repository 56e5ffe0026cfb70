#pragma once  // geometryAlgo/ShapeApp/ConvexRing.h

#include "geometryAlgo/VedaType/StrictHull.h"
#include "host/Cadtypes/Constants.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// The smallest rectangle found so far about a ring: its base edge starts in `Origin`, along `U`.
struct TFramedBox {
  TPoint2D Origin;
  TPoint2D U;
  double MinU = 0.0;
  double MaxU = 0.0;
  double MaxV = 0.0;
  double Area = kStartOfMinimum;  // unless something is found

  bool Exists() const { return Area < kStartOfMinimum; }
  TPoint2D V() const { return U.RotateCcw90(); }
  TPoint2D Corner(double A, double B) const { return Origin + V() * B + U * A; }
};

}  // namespace tarnalgo
