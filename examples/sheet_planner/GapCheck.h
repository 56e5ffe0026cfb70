#pragma once  // examples/sheet_planner/GapCheck.h

#include "examples/sheet_planner/EdgePrep.h"
#include "geometryAlgo/flyscanAlgo.h"

namespace sheet_planner {

/// Tells whether a gap piece keeps clear of everything that is cut on a sheet.
class TGapCheck {
 public:
  /// Cost: O(n log n), an R-tree of all cuts.
  explicit TGapCheck(const TSheet& Sheet);

  /// Nothing but the two ends of `Gap` meets a cut.
  ///
  /// The library forgives a connection what it meets at its start, not at its end. So the two
  /// halves of the gap are tested, each from its own end towards the middle.
  /// Tolerance: 1e-4 round the ends.
  /// Cost: O(log n + k), k = cuts whose boxes the gap meets.
  bool IsClear(const tarnalgo::TGeCurve2D& Gap) const;

 private:
  tarnalgo::TFlyHoles FHoles;
};

}  // namespace sheet_planner
