#pragma once  // geometryAlgo/ShapeApp/ConvexHull.h

#include <vector>

#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

/// Convex hulls of straight-edged input by Melkman's deque algorithm: of a simple polyline as it
/// runs, of any point set after sorting it.
///
/// Turns are exact signs of `TPoint2DUtils::IsLeft` in doubles, without a tolerance. Results belong
/// to the caller. Raises nothing. For a hull that keeps neither noise nor moved points see
/// `TVPolyline2D::ConvexHull`.
class TConvexHullCalculator {
 public:
  /// The hull of a simple polyline, open or closed, in either sense: positions of its vertices,
  /// counter-clockwise, the first one repeated at the end; which one comes first is open. One or
  /// two points (not counting an exact closing repeat) come back plain: [0], [0, 1].
  ///
  /// Where the first three points are collinear, the second one is moved by (`kCollinearShiftX`,
  /// `kCollinearShiftY`), in the caller's polyline itself: the hull may leave the shape by that
  /// much. Vertex 0 always counts as a hull vertex. A polyline that does not begin on its hull, or
  /// that crosses itself, gets positions of its own vertices that need not be a hull.
  /// Cost: O(n).
  static std::vector<int> CalcSimplePolylineConvexHull(TVPolyline2D& Polyline);

  /// The hull of any points: its vertices counter-clockwise from the lowest of the leftmost on (or
  /// the vertex after it), closed by an exact repeat. A single place comes back as one point, two
  /// places as two, not closed. Points that are not finite are ignored.
  /// Tolerance: in the order of X, then Y, a point within 1e-6 of the one kept before it is
  /// dropped. Of three collinear leading points the second one moves as above, so that a hull can
  /// hold one point that is not in the list, and that a set on a line has a thin triangle as hull;
  /// where it would bar the way of the points that follow, it is left out.
  /// Cost: O(n log n) at worst, O(n) where most points lie well inside the hull.
  static TVPolyline2D CalcConvexHull(const TVPoint2DList& Points);

  /// As `CalcConvexHull`, but positions in the list, and no point is dropped for being near
  /// another. The position of a moved point is that of the point itself.
  /// Ties: of equal points any one may be named.
  /// Cost: O(n log n).
  static std::vector<int> CalcConvexHullPtIds(const TVPoint2DList& Points);
};

}  // namespace tarnalgo
