#pragma once  // host/Cadtypes/Circle.h

#include "host/Cadtypes/Line.h"

namespace tarnalgo {

/// The host's circle. Parameter of a point on it: its polar angle in [0, 2π).
struct TCircle2D {
  TPoint2D Center;      ///< Centre.
  double Radius = 0.0;  ///< Radius, a length.

  constexpr TCircle2D() = default;
  /// Takes the numbers as they are.
  constexpr TCircle2D(const TPoint2D& ACenter, double ARadius) : Center(ACenter), Radius(ARadius) {}

  friend constexpr bool operator==(const TCircle2D&, const TCircle2D&) = default;

  /// Box that the circle touches on all four sides.
  TRect2D GetBoundBox() const;
  /// The point in direction `A` (radians) from the centre.
  TPoint2D PointAtAngle(double A) const;

  /// Common points: 0, 1 (tangent within `Eps`) or 2; coincident circles have none to name: 0.
  /// Ties: of two points `I1` lies on the right of the way from this centre to the other.
  int Intersect(const TCircle2D& Circle, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                double Eps = kLinearTolerance) const;
  /// Common points with the infinite line, `I1` first along the line: 0, 1 (tangent within `Eps`)
  /// or 2. `Param2` is the parameter on `Line`.
  int Intersect(const TLine2D& Line, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                double Eps = kLinearTolerance) const;
};

}  // namespace tarnalgo
