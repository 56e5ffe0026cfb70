#pragma once  // geometryAlgo/ShapeApp/PolygonBasicAlgo.h

#include <cstdint>

#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

/// Measures of straight-edged polygons given as point lists.
///
///     TVPoint2DList Corners;
///     const double Area = TPolygonBasicAlgo::SimpleMABB(Part, Corners);  // smallest sheet for it
///
/// Polygons are open or closed (last point = first), in either sense; arguments are never changed.
/// A convex polygon may have vertices on its sides.
/// Errors: only `IsSimple` and `PolygonSimplify` raise. Degenerate input gives the neutral result
/// that each operation names.
class TPolygonBasicAlgo {
 public:
  // --- Directions and extents (PolygonMeasure.cpp) ---

  /// Twice the signed area of the triangle, positive when the points turn counter-clockwise.
  static constexpr double Area(const TPoint2D& P1, const TPoint2D& P2, const TPoint2D& P3) {
    return (P2.X - P1.X) * (P3.Y - P1.Y) - (P2.Y - P1.Y) * (P3.X - P1.X);
  }
  ///@{
  /// Extent of the points along `D` (any length); `MaxPt` and `MinPt` are the positions of the
  /// points farthest along it and against it. 0 when all project alike or there is no point; both
  /// positions are 0 then.
  /// Ties: the first point, exactly.
  static double ExtremePoints(const TVPoint2DList& PtList, const TPoint2D& D, int& MaxPt,
                              int& MinPt);
  static double ProjectionLength(const TVPoint2DList& PtList, const TPoint2D& D);
  ///@}
  /// The same for an integer path of the standard scale 100000, in model units.
  static double ProjectionLength(const TPath& Path, const TPoint2D& D);

  // --- Smallest rectangle (MinRectangle.cpp) ---

  /// Area of the smallest rectangle about a convex polygon; `MABB` receives its corners,
  /// counter-clockwise, the first two on the line of a polygon edge. 0 and an empty list for fewer
  /// than three points, points that fall together, and coordinates that are not finite. Points on a
  /// line have four corners and an area of 0.
  /// Tolerance: edges shorter than 1e-8 are dropped. The rectangle holds every vertex within 1e-6
  /// of the polygon's size, and none is smaller by more than 1e-9 of its area.
  /// Ties: the rectangle met first by the calipers, which set out from the first edge (of the
  /// reversed list for a clockwise polygon).
  /// Cost: O(n); O(n log n) for a polygon that is not convex, which gets its hull's rectangle.
  static double ConvexMABB(const TVPolyline2D& ConvexPoly, TVPoint2DList& MABB);
  /// The same about any simple polygon, through its strict hull (`TVPolyline2D::ConvexHull` without
  /// the slack of 1.1e-5), and about any points, through `TConvexHullCalculator::CalcConvexHull`.
  /// Cost: O(n log n).
  static double SimpleMABB(const TVPolyline2D& SimplePoly, TVPoint2DList& MABB);
  /// The same about any points.
  static double PointSetMABB(const TVPolyline2D& Points, TVPoint2DList& MABB);

  // --- Width, diameter, tangents, angles (PolygonMeasure.cpp) ---

  /// The least distance of two parallel lines that hold a convex polygon between them; `Direct` is
  /// the edge, as a vector, that lies on one of them. −1, `Direct` untouched, for fewer than three
  /// points; 0 for points on a line, `Direct` untouched where no edge has a length.
  /// Ties: the edge that closes the ring, then the first (after a clockwise list is reversed).
  /// Cost: O(n).
  static double ConvexWidth(const TVPolyline2D& ConvexPoly, TPoint2D& Direct);
  static double ConvexWidth(const TVPolyline2D& ConvexPoly);  ///< The width alone.
  /// The same of the strict hull of a simple polygon. O(n log n).
  static double SimpleWidth(const TVPolyline2D& SimplePoly, TPoint2D& Direct);
  static double SimpleWidth(const TVPolyline2D& SimplePoly);  ///< The width alone.

  /// The greatest distance of two vertices of a convex polygon, `I` < `J` their positions (a
  /// closing repeat is never named). 0 for fewer than two points, both positions 0 then.
  /// Ties: the first pair, by `I`, then by `J`.
  /// Cost: O(n).
  static double ConvexDiameter(const TVPolyline2D& ConvexPoly, int& I, int& J);
  static double ConvexDiameter(const TVPolyline2D& ConvexPoly);  ///< The distance alone.
  /// The greatest distance of two vertices of any polygon. O(n log n).
  static double SimpleDiameter(const TVPolyline2D& SimplePoly);

  /// The vertices where the lines from `P` touch a convex polygon: all of it lies on the right of
  /// the way from `P` to vertex `LeftId`, on the left of the way to `RightId`. False, both −1, when
  /// `P` lies inside or on the polygon, or it has fewer than three corners.
  /// Tolerance: on the polygon means within 1e-6 of it.
  /// Ties: of several vertices on one line the nearest to `P`, of those in one place the first.
  /// Cost: O(n).
  static bool PointTangants(const TVPolyline2D& ConvexPoly, const TPoint2D& P, int& LeftId,
                            int& RightId);

  /// The least interior angle, in (0, 2π), of a simple polygon; `Index` is the position of its
  /// vertex. 0 and −1 for fewer than three corners.
  /// Tolerance: edges shorter than 1e-8 are passed over.
  /// Ties: the first vertex, exactly.
  /// Cost: O(n).
  static double MinInternalAngle(const TVPolyline2D& Poly, int& Index);
  static double MinInternalAngle(const TVPolyline2D& Poly);  ///< The angle alone.

  // --- Simplicity and regions (PolygonClip.cpp) ---
  //
  // Through integer paths and the clipping library. Coordinates beyond its range are held at its
  // greatest one; a failure of the library itself comes as "[Error] TPolygonBasicAlgo.NAME: " with
  // its text.
  // Cost: O((n + k) log n), k crossings, as a rule.

  /// The ring does not cross itself and has an area: resolved by the clipping library at a scale of
  /// 10^6 it stays one outline of the same area. Decided by area alone: a spike or slit without
  /// area, a vertex on an edge and corners that touch are simple.
  /// Tolerance: areas below 1e-12 are none; 1e-9 (at most 1e-12 of the area) may get lost.
  /// Errors: fewer than three points, or three whose last is the first within 1e-6, "Error In
  /// FUNC[IsSimple]".
  static bool IsSimple(const TVPolyline2D& Poly);
  /// The outlines without self-intersections, open, that the ring encloses (non-zero rule), the
  /// largest first, the others in the library's order. Outers run counter-clockwise, holes
  /// clockwise, but of loops that touch one another the library turns some the wrong way. `Coeff`
  /// is the scale of the integer path.
  /// Ties: of equal areas the first that the library names.
  /// Errors: as `IsSimple`, "Error In FUNC[PolygonSimplify]".
  static TVPolyline2DList PolygonSimplify(const TVPolyline2D& Poly, double Coeff);
  /// The contours, open, of the common region (non-zero rule), to five decimals: outers
  /// counter-clockwise, holes clockwise, the largest first. Empty where the polygons only touch,
  /// are apart or have no area.
  static TVPolyline2DList PolygonIntersection(const TVPolyline2D& PolyA, const TVPolyline2D& PolyB);
  /// `PolyB` lies in `PolyA`: the area of B outside A is at most `AbsTol` (an area) + `RelTol`
  /// times the area of B, both taken as regions (non-zero rule). A B without area lies in A when
  /// every vertex of it does, within 1e-6; nothing lies in an A without area, and an empty B in
  /// none.
  static bool PolyContains(const TVPolyline2D& PolyA, const TVPolyline2D& PolyB, double AbsTol,
                           double RelTol);

  // --- Triangles (Triangulation.cpp) ---

  /// A simple polygon of n corners cut into n − 2 triangles, each three points counter-clockwise,
  /// between its own corners, without overlap. Vertices on a straight way may give triangles
  /// without area. Empty for fewer than three corners and for polygons that are not simple
  /// (`IsSimple`) or, simple by area alone, cannot be cut up.
  /// Cost: O(n²) at worst, near O(n log n) for contours as they occur, combs and spirals too; that
  /// of `IsSimple` more where the ring touches itself.
  static TVPolyline2DList TriangleDivide(const TVPolyline2D& Poly);

  // --- Distance (PolygonDistance.cpp) ---

  /// The least distance of two closed regions: 0 where their boundaries meet or one lies in the
  /// other. A point and a stroke count as regions. −1 when either is empty. Points that are not
  /// finite are ignored.
  /// Cost: near O(n + m) by boxes over runs of edges, for contours as they occur.
  static double MinPolyDistance(const TVPolyline2D& Poly1, const TVPolyline2D& Poly2);

  // --- Random polygons (ConvexGenerate.cpp) ---

  /// A closed, counter-clockwise, strictly convex ring of `Count` random corners in the disc, the
  /// same for the same `Seed`. `Fast` sets all corners on the circle; otherwise the ring is made of
  /// random steps (after Valtr) and touches the circle. Empty for `Count` < 3 or beyond
  /// `kMostItems`, a radius that is not positive, and arguments that are not finite. Strict as far
  /// as doubles are dense enough about `Center` for so many corners.
  /// Cost: O(n log n).
  static TVPolyline2D GenerateConvexPolyOnDisc(const TPoint2D& Center, double Radius, int Count,
                                               std::uint32_t Seed, bool Fast);
};

}  // namespace tarnalgo
