#pragma once  // geometryAlgo/ShapeApp/PointsBasicAlgo.h

#include "geometryAlgo/VedaType/Circle.h"
#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

/// Measures of point sets. Raises nothing.
class TPointsBasicAlgo {
 public:
  /// The smallest circle that holds every point. No point: centre (0, 0), radius 0; one point, or
  /// all in one place: radius 0 there. Points that are not finite are ignored.
  /// Tolerance: every point lies within the radius times 1 + 1e-9.
  /// Cost: O(n) for each of a few passes; the point farthest out joins the two or three that carry
  /// the circle, until none is out.
  static TVCircle2D FindMinCircle(const TVPoint2DList& Points);
  /// The circle on the diameter from `P1` to `P2`.
  static TVCircle2D FindMinCircleOf2Point(const TPoint2D& P1, const TPoint2D& P2);
  /// The smallest circle of three points: the one on the longest side when the triangle is right,
  /// obtuse or flat, else the circumcircle.
  static TVCircle2D FindMinCircleOf3Point(const TPoint2D& P1, const TPoint2D& P2,
                                          const TPoint2D& P3);
};

}  // namespace tarnalgo
