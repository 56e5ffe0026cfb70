#pragma once  // geometryAlgo/SweepLine/StripSearch.h

#include <functional>
#include <vector>

#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

/// Candidates for the meetings of many long segments whose boxes all overlap,
/// where no search by boxes helps. Internal to the pages of this unit.
///
/// The plane is halved into upright strips at the median end (after Balaban
/// 1995). Segments that run right through a strip and keep one order on both
/// its sides are stairs: they do not cross there, whatever else is in the strip
/// finds its place among them by bisection, and strips within need not know
/// them. Nothing rests on an order at a crossing, so rounding loses nothing:
/// orders are taken at the sides of strips only, with a margin of a few
/// tolerances.
///
/// Segments steeper than 45° are sought among the others, then, with X and Y
/// exchanged, among themselves; so the tolerance is never stretched by the
/// slope.
/// Cost: O((n + c) log² n) time, O(n) memory, c = candidates: pairs that cross or come within about
/// ten tolerances.
class TStripSearch {
 public:
  using TVisitor = std::function<void(int A, int B)>;

  /// Calls `Visit` for every pair of `Segments` that comes within `Reach`, and
  /// some others. A pair may come several times.
  static void VisitPairs(const std::vector<TVLine2D>& Lines, const std::vector<int>& Segments,
                         double Reach, const TVisitor& Visit);
};

}  // namespace tarnalgo
