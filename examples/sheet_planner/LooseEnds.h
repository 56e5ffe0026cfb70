#pragma once  // examples/sheet_planner/LooseEnds.h

#include <vector>

#include "examples/sheet_planner/EdgePrep.h"

namespace sheet_planner {

/// Where contours of the drawing do not simply go on, on whatever ports: places in the order of the
/// anchors.
struct TLooseEnds {
  std::vector<tarnalgo::TPoint2D> Loose;     // one piece ends there
  std::vector<tarnalgo::TPoint2D> Branches;  // three or more do
};

/// An end that only touches the middle of another piece is loose.
/// Cost: O(n log n).
TLooseEnds FindLooseEnds(const TSheet& Sheet);

}  // namespace sheet_planner
