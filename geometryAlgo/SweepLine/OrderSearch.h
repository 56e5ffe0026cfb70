#pragma once  // geometryAlgo/SweepLine/OrderSearch.h

#include <functional>
#include <vector>

#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

/// Candidates for the meetings of many long segments whose boxes all overlap, where no search by
/// boxes helps. Internal to the pages of this unit.
///
/// A sweep that keeps the segments in their exact order, so that segments which cross become
/// neighbours first. Where two neighbours change places is only estimated, never later than it
/// happens; whether they have done so is decided at each end that the sweep comes to, by the exact
/// sides on which that end lies. So every end finds its place among the segments, and a crossing is
/// found at the latest when one of its segments ends: nothing rests on a rounded point.
///
/// What comes near an end is what stands near it in that order, which holds for gentle segments
/// (at most 45°) only: steep ones are looked for by a second sweep with X and Y exchanged. Ends
/// near one another are compared besides, for the segments that stop just short of an end.
/// Cost: O((n + k) log n) time, O(n + k) memory, k = pairs that meet or come within a few reaches.
class TOrderSearch {
 public:
  using TVisitor = std::function<void(int A, int B)>;

  /// Calls `Visit` for every pair of `Lines` that crosses, or where an end of one comes within
  /// `Reach` of the other, and some others. A pair may come several times. The segments run
  /// forward by X, then Y.
  static void VisitPairs(const std::vector<TVLine2D>& Lines, double Reach, const TVisitor& Visit);
};

}  // namespace tarnalgo
