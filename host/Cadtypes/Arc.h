#pragma once  // host/Cadtypes/Arc.h

#include "host/Cadtypes/Circle.h"

namespace tarnalgo {

/// The host's circular arc: from `StartAngle` through `SweepAngle` radians, counter-clockwise when
/// positive. Its parameter runs from 0 at the start to 1 at the end. A sweep of ±2π is the full
/// circle.
///
/// The ends follow from the centre and carry the rounding of the radius: an arc so flat that its
/// radius reaches 1e9 keeps them to about 1e-6, a flatter one is better treated as its chord.
struct TArc2D {
  TPoint2D Center;          ///< Centre of the circle.
  double Radius = 0.0;      ///< Radius, not negative.
  double StartAngle = 0.0;  ///< Direction from the centre to the start, radians.
  double SweepAngle = 0.0;  ///< Radians turned from start to end, negative for clockwise.

  constexpr TArc2D() = default;
  /// Takes the numbers as they are, a negative radius included.
  constexpr TArc2D(const TPoint2D& ACenter, double ARadius, double AStartAngle, double ASweepAngle)
      : Center(ACenter), Radius(ARadius), StartAngle(AStartAngle), SweepAngle(ASweepAngle) {}

  /// The arc over a chord; `Bulge` = tan(sweep / 4), negative for clockwise.
  /// Errors: bulge 0 or not finite, or ends that coincide (1e-6), `EParamError`.
  static TArc2D CreateBulge(const TPoint2D& StartPt, const TPoint2D& EndPt, double Bulge);
  /// The arc about `Center` from `StartPt` to the direction of `EndPt`; ends that coincide (1e-6)
  /// make the full circle. The radius is the distance from `Center` to `StartPt`.
  static TArc2D CreateCenter(const TPoint2D& StartPt, const TPoint2D& EndPt, const TPoint2D& Center,
                             bool IsClockwise);
  /// The shorter of the two arcs of that radius with the centre on the left of the chord when
  /// `Flag` is set (the arc then turns counter-clockwise), on the right otherwise (clockwise).
  /// Errors: radius below half the chord by more than 1e-6, or ends that coincide (1e-6),
  /// `EParamError`.
  static TArc2D CreateRadius(const TPoint2D& StartPt, const TPoint2D& EndPt, double Radius,
                             bool Flag);

  /// tan(sweep / 4), signed like the sweep.
  double Bulge() const;
  /// Where the arc begins, computed from centre and angle.
  TPoint2D StartPoint() const { return PointAtParam(0.0); }
  /// Where the arc ends, computed from centre and angle.
  TPoint2D EndPoint() const { return PointAtParam(1.0); }
  /// The field, for callers that speak of both kinds of arcs.
  double GetSweepAngle() const { return SweepAngle; }
  /// The point at `T`; beyond 0 .. 1 the circle goes on.
  TPoint2D PointAtParam(double T) const;
  /// Parameter of the direction of `P` from the centre, in [0, 2π / |sweep|): above 1 off the arc.
  /// Off the arc, and on a full circle, a direction within 1e-6 (as a length) before the start is
  /// the start.
  double ParamOfPoint(const TPoint2D& P) const;
  /// Tight box of the arc itself.
  TRect2D GetBoundBox() const;
  /// Radius times the absolute sweep.
  double CurveLength() const;
  /// `P` lies on the arc, ends included.
  /// Tolerance: 1e-6, a length.
  bool IsOn(const TPoint2D& P, double Tol = kLinearTolerance) const;

  /// Common points of the two arcs, in this arc's order: 0..2. Arcs of one circle answer the ends
  /// of their overlap (of the longest one if there are two), which runs from `I1` to `I2` along
  /// this arc, across the seam of a full circle too; or else the end points in which they only
  /// touch.
  /// Tolerance: `Eps`, a length, ends included.
  /// Ties: an end that lies on the other curve stands for a crossing that the arcs miss by less
  /// than the tolerance, and for a tangent point that is less exact. Likewise with a line.
  int Intersect(const TArc2D& Arc, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                double Eps = kLinearTolerance) const;
  /// Common points with the infinite line, in the line's order: 0..2.
  int Intersect(const TLine2D& Line, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                double Eps = kLinearTolerance) const;

  /// The chord of the arc moved outwards until it touches the arc: parallel to the chord, tangent
  /// at the arc's middle, as long as the chord. For a full circle the tangent opposite to the
  /// start, as a point.
  TLine2D EnvelopeLine() const;

 private:
  /// The parameter of a point known to lie on the arc, at most 1.
  double ParamWithin(const TPoint2D& P) const;
};

}  // namespace tarnalgo
