#pragma once  // geometryAlgo/ShapeApp/HullFilter.h

#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Sorts out the points of a large set that lie so deep inside that the steps of
/// `TConvexHullCalculator::CalcConvexHull` end alike without them. Internal to the pages of this
/// unit.
///
/// A convex core is spanned by points that lie far out in 16 directions. A point deeper in it than
/// the margin is dropped. The margin is wide against three things: the 1e-6 within which repeats
/// are dropped, so that no dropped point drops one outside the core; what a hull in doubles can
/// stray by rounding, so that no dropped point undoes a hull vertex; and the rounding of the test
/// itself. The three points at which the steps begin are kept wherever they lie.
class THullFilter {
 public:
  /// Looks at a sample of the points.
  explicit THullFilter(const std::vector<TPoint2D>& Points);

  /// The sample has a core, and the coordinates are of a size that no product overflows.
  bool IsUseful() const { return !FSides.empty(); }
  /// The points that may decide the hull, in their order; none that is not finite.
  std::vector<TPoint2D> Candidates() const;
  /// Up to this X no point was dropped.
  double CompleteTo() const { return FCompleteTo; }

 private:
  /// A half-plane: `Normal` · P >= `Least`.
  struct TSide {
    TPoint2D Normal;
    double Least;
  };

  std::vector<TPoint2D> SampledCore(const std::vector<TPoint2D>& Sample) const;
  bool IsDeep(const TPoint2D& P) const;

  const std::vector<TPoint2D>& FPoints;
  std::vector<TSide> FSides;
  double FCompleteTo = 0.0;
};

}  // namespace tarnalgo
