#pragma once  // geometryAlgo/SweepLine/SegmentEnds.h

#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// An end of a segment, which `Id` tells. Internal to the pages of this unit.
struct TSegmentEnd {
  TPoint2D P;
  int Id = 0;
};

/// Sorts by X, Y, `Id`, all by exact signs: the order of events of one kind. Coordinates are
/// finite.
/// Cost: O(n log n), O(n) where X is spread evenly.
void SortSegmentEnds(std::vector<TSegmentEnd>& Ends);

}  // namespace tarnalgo
