#pragma once  // geometryAlgo/VedaType/Circle.h

#include "geometryAlgo/VedaType/Enums.h"
#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadtypes/Circle.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

class TVPolyline2D;

/// A circle; in questions of place the whole disc.
///
/// A plain value, nothing is checked. A negative or NaN radius holds no point and meets nothing.
struct TVCircle2D {
  TPoint2D Center;      ///< Centre.
  double Radius = 0.0;  ///< Radius, a length.

  constexpr TVCircle2D() = default;
  /// Takes the numbers as they are.
  constexpr TVCircle2D(const TPoint2D& ACenter, double ARadius)
      : Center(ACenter), Radius(ARadius) {}

  /// The host's circle of the same numbers.
  constexpr TCircle2D ToCircle2D() const { return {Center, Radius}; }

  /// Box that the rim touches on all four sides; empty for a negative radius.
  constexpr TVRect2D Boundbox() const {
    return {Center.X - Radius, Center.X + Radius, Center.Y + Radius, Center.Y - Radius};
  }

  /// The point at parameter `T`: 0 at the polar angle 0, 1 once round counter-clockwise, any real
  /// number beyond.
  TPoint2D CalcPointByParam(double T) const { return CalcPointByRadian(kFullTurn * T); }
  /// The point at polar angle `A`.
  TPoint2D CalcPointByRadian(double A) const { return ToCircle2D().PointAtAngle(A); }
  /// A closed counter-clockwise polyline that starts and ends at the polar angle 0.
  /// Tolerance: no chord is farther than `ChordError` from its arc; bounds as `ArcChordCount`.
  TVPolyline2D SampleToPolyline(double ChordError) const;

  /// Common points of the rim with the infinite line, in its order: 0, 1 (tangent within 1e-6)
  /// or 2.
  int RelationWithLine(const TVLine2D& Line, TPoint2D& P1, TPoint2D& P2) const;
  /// The same for a segment: what lies beyond its ends is dropped, the first point kept is `P1`.
  /// Tolerance: `Eps`, slack of the parameter on the segment.
  int RelationWithSegLine(const TVLine2D& Segment, TPoint2D& P1, TPoint2D& P2,
                          double Eps = kLinearTolerance) const;
  /// Common points of the two rims: 0, 1 (tangent within 1e-6) or 2; none for coincident circles.
  /// Ties: of two points `P1` lies on the right of the way from this centre to the other.
  int CrossWithCircle(const TVCircle2D& Other, TPoint2D& P1, TPoint2D& P2) const;

  /// Where `P` lies: `srOn` at most `Eps` from the rim, else `srIn` or `srOut`.
  TShapeRelation RelationWithPoint(const TPoint2D& P, double Eps = kLinearTolerance) const;
  /// Where the other disc lies, the other one being the subject: `srEqual` when centre and radius
  /// are the same within `Eps`; `srContained` when it lies in this one, `srContain` when this one
  /// lies in it, both also when touching the rim from inside; `srOn` when they touch from outside;
  /// `srDeviate` when apart; else `srCross`.
  TShapeRelation RelationWithCircle(const TVCircle2D& Other, double Eps = kLinearTolerance) const;
};

}  // namespace tarnalgo
