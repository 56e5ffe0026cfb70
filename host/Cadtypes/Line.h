#pragma once  // host/Cadtypes/Line.h

#include "host/Cadtypes/Intersection.h"
#include "host/Cadtypes/Point.h"
#include "host/Cadtypes/Rect.h"

namespace tarnalgo {

/// The host's directed segment; its parameter runs from 0 at the start to 1 at the end and beyond
/// on the infinite line.
struct TLine2D {
  TPoint2D StartPoint;  ///< Where the parameter is 0.
  TPoint2D EndPoint;    ///< Where the parameter is 1.

  constexpr TLine2D() = default;
  /// From one point to the other, which may coincide.
  constexpr TLine2D(const TPoint2D& P1, const TPoint2D& P2) : StartPoint(P1), EndPoint(P2) {}

  friend constexpr bool operator==(const TLine2D&, const TLine2D&) = default;

  /// Distance of the end points.
  double Length() const { return StartPoint.DistanceTo(EndPoint); }
  /// Direction angle in [0, 2π), 0 for a segment of no length.
  double Angle() const { return (EndPoint - StartPoint).Angle(); }
  /// Unit direction, the zero vector for a segment of no length.
  TPoint2D GetDirection() const { return (EndPoint - StartPoint).Normal(); }
  /// Box of the end points.
  TRect2D GetBoundBox() const;

  /// The point at parameter `T`, exact at 0 and 1. `PointAt` is the same operation.
  constexpr TPoint2D EvalPoint(double T) const { return Lerp(StartPoint, EndPoint, T); }
  constexpr TPoint2D PointAt(double T) const { return EvalPoint(T); }  ///< The same operation.
  /// The point of the infinite line with that coordinate. A line that never reaches it (vertical
  /// for `PointAtX`, horizontal for `PointAtY`) answers its start point's other coordinate.
  TPoint2D PointAtX(double X) const;
  TPoint2D PointAtY(double Y) const;  ///< The point at that Y.

  /// Parameter of the projection of `P` on the infinite line; within `Tol` (a length) of an end it
  /// is 0 or 1 exactly. 0 for a segment of no length.
  double ParamOfPoint(const TPoint2D& P, double Tol = kLinearTolerance) const;
  /// Signed distance of `P` from the infinite line, positive on the left; from the start point,
  /// positive, for a segment of no length.
  double DistanceDirect(const TPoint2D& P) const;
  /// `P` lies on the segment: perpendicular distance <= `Tol` and parameter in [0, 1] with slack of
  /// the same number. `T` receives the parameter of the projection whatever the answer.
  bool IsOn(const TPoint2D& P, double Tol, double& T) const;

  /// Crossing of the two infinite lines; false, `P` untouched, when they are parallel (directions
  /// within 1e-12), one has no length or it is out of range. `Intersect(L, P)` is the same.
  bool Cross(const TLine2D& L, TPoint2D& P) const;
  bool Intersect(const TLine2D& L, TPoint2D& P) const { return Cross(L, P); }  ///< The same.
  /// Meeting of the two segments, ends included: 0, 1, or 2 when they overlap along a stretch,
  /// whose ends are then `I1` and `I2` in this segment's order.
  /// Tolerance: `Eps`, a length. An end at most `Eps` from the other segment touches it; two
  /// touches more than `Eps` apart along both segments bound an overlap.
  /// Ties: an end that touches within `Eps` of the crossing stands for it, bit for bit: the one
  /// nearest to the other segment, of equally near ones this segment's, its start first.
  int Intersect(const TLine2D& L, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                double Eps = kLinearTolerance) const;

  /// The same segment run the other way.
  constexpr TLine2D ReverseParam() const { return {EndPoint, StartPoint}; }
};

/// The segment from `P1` to `P2`, as hosts spell it.
constexpr TLine2D Line2D(const TPoint2D& P1, const TPoint2D& P2) {
  return {P1, P2};
}

}  // namespace tarnalgo
