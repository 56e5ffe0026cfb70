#pragma once  // geometryAlgo/ShapeApp/ConvexRing.h

#include <vector>

#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

/// The strict convex hull of the finite points, counter-clockwise without a closing repeat, no
/// vertex left out or moved: signs of turns in extended precision. A single place gives one point,
/// points on a line its two ends. Internal to the pages of this unit.
/// Cost: O(n log n).
std::vector<TPoint2D> StrictHull(std::vector<TPoint2D> Points);
/// The same as a ring closed by an exact repeat; of a single place that point.
TVPolyline2D ClosedStrictHull(const TVPoint2DList& Points);

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
