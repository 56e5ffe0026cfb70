#pragma once  // examples/sheet_planner/RunFinder.h

#include <memory>
#include <vector>

#include "geometryAlgo/flyscanAlgo.h"

namespace sheet_planner {

/// The runs of a sheet: edges of one port that one movement can cut.
struct TRuns {
  /// Refer to segments of the list they were found in; angle and intercept are set. Runs of one
  /// port whose first edges are parallel (1e-7) have the same bits in `Angle`.
  std::vector<std::unique_ptr<tarnalgo::TLinearSegmentList>> Runs;
  /// Where a run ended although collinear edges go on beyond `MaxConnectDistance`.
  int GapsTooLong = 0;
};

/// Cuts sorted segments into runs.
///
/// The keys of the segments say where to look, not what belongs together: half a degree of angle is
/// a tie to them, near-vertical edges of one line have different intercepts, and far from the
/// origin a hair of angle moves the intercept by millimetres. So edges of one port and nearly one
/// direction are swept along that direction, and an edge joins an open run only when
/// - it starts where the run ends or up to `MaxConnectDistance` beyond;
/// - one straight line from the start of the run passes all ends of its edges, the new ones
///   included, within half of `InterceptTolerance`.
/// Ties: the run that reaches furthest, then the one to the right.
/// Cost: O(n log n) where lines of one direction keep `InterceptTolerance` apart.
TRuns FindRuns(const tarnalgo::TLinearSegments& Sorted);

}  // namespace sheet_planner
