#pragma once  // geometryAlgo/VedaType/StrictHull.h

#include <vector>

#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

/// The strict convex hull of the finite points, counter-clockwise from the leftmost (of several the
/// lowest) without a closing repeat, no vertex left out or moved: signs of turns in extended
/// precision. A single place gives one point, points on a line its two ends. Internal to the
/// library.
/// Cost: O(n log n).
std::vector<TPoint2D> StrictHull(std::vector<TPoint2D> Points);
/// The same as a ring closed by an exact repeat; of a single place that point.
TVPolyline2D ClosedStrictHull(const TVPoint2DList& Points);

}  // namespace tarnalgo
