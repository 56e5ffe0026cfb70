#pragma once  // geometryAlgo/UPolygonGetter/NodePoint.h

#include <vector>

#include "geometryAlgo/ClipperAdditions.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Nodes in an order that means something.
using TIntPointList = std::vector<TIntPoint>;

/// The node that a chain ending at `P` hangs on: each coordinate rounded to 5 decimals, times 1000,
/// taken up to the next integer.
///
/// Points that agree to 5 decimals always share a node. Points a hair apart on either side of a
/// line of the grid do not, on purpose: whoever wants them joined moves them together first.
/// All steps are plain double operations (the rounded value is the integer divided by 100000), so
/// the result is the same on every machine: −1.001 gives −1000, because −1.001 · 1000 is −1000.99…
/// in doubles.
/// A node beyond 32 bits goes on in 64, held at ±4.6e18; NaN gives 0.
TIntPoint TransToInt(const TPoint2D& P);

/// The model point of a node: each coordinate divided by 1000.
TPoint2D TransToTVPoint(const TIntPoint& P);

}  // namespace tarnalgo
