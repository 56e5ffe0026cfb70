#pragma once  // geometryAlgo/ShapeApp/SimpleRing.h

#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Whether a closed ring (no closing repeat) comes back to a place where it has been: a point that
/// repeats, a vertex on an edge, a crossing, a way back over itself. By exact signs; stops at the
/// first such place. For coordinates below 2^400. Internal to the pages of this unit.
/// Cost: O(n log n).
bool TouchesItself(const std::vector<TPoint2D>& Corners);

}  // namespace tarnalgo
