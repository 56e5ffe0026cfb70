#pragma once  // geometryAlgo/VedaType/Arc.h

#include <concepts>

#include "geometryAlgo/VedaType/Circle.h"
#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadtypes/Arc.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

class TVPolyline2D;

/// For calls that must not compile: not exactly `bool`, or not both of two.
template <class T, class TOther = bool>
concept TNotFlags = !std::same_as<T, bool> || !std::same_as<TOther, bool>;
template <class T>
concept TNeitherFlagNorNumber = !std::same_as<T, bool> && !std::same_as<T, double>;

/// A circular arc: the part of the circle about `Center` through `StartPoint` that runs from
/// `StartPoint` to `EndPoint`, clockwise when `IsClockwise` is set, counter-clockwise otherwise.
///
/// A plain value; the end points are kept as given, the radius follows from `StartPoint` and
/// nothing makes `EndPoint` lie on the circle. Equal end points (within 1e-6) mean the full circle,
/// never an arc of no length: halves of an arc cut off at its very end read as full circles.
/// Parameter: a real T, 0 at the start, 1 at the end, along the arc's own direction; others go on
/// round the circle. Operations return new values.
struct TVArc2D {
  TPoint2D Center;           ///< Of the circle; nothing makes both ends equally far from it.
  TPoint2D StartPoint;       ///< Where the arc begins; gives the radius.
  TPoint2D EndPoint;         ///< Where the arc ends, as a direction from the centre.
  bool IsClockwise = false;  ///< Runs clockwise from start to end.

  // --- Constructors ---
  //
  // Flags are `bool` and the bulge is `double`, exactly: an integer in their place would choose the
  // wrong form and does not compile. The last two forms take their flags in opposite order.

  constexpr TVArc2D() = default;
  /// From polar angles, clockwise for a negative sweep. A sweep from 2π on is the full circle; any
  /// other is reduced to one turn, so that −2π reads as a clockwise full circle, 0 as a
  /// counter-clockwise one and −2π − 1 as −1.
  TVArc2D(const TPoint2D& ACenter, double ARadius, double AStartAngle, double ASweepAngle);
  /// The four fields as they are.
  constexpr TVArc2D(const TPoint2D& ACenter, const TPoint2D& AStartPoint, const TPoint2D& AEndPoint,
                    bool AIsClockwise)
      : Center(ACenter), StartPoint(AStartPoint), EndPoint(AEndPoint), IsClockwise(AIsClockwise) {}
  /// The full circle that starts and ends at `Point`.
  constexpr TVArc2D(const TPoint2D& ACenter, const TPoint2D& Point, bool AIsClockwise)
      : Center(ACenter), StartPoint(Point), EndPoint(Point), IsClockwise(AIsClockwise) {}
  /// Over a chord; `ABulge` = tan(sweep / 4), negative for clockwise. Apart from the case below a
  /// bulge of 0 has no centre (not finite): such a piece is a line.
  /// Equal points (1e-6) with a bulge of 0 (1e-6) make a degenerate arc about the origin.
  /// Errors: equal points with another bulge, "[Error] TVArc2D.Create: 参数错误".
  TVArc2D(const TPoint2D& AStartPoint, const TPoint2D& AEndPoint, double ABulge);
  /// Of the radius: the arc above half a turn when `IsLargeArc` is set, below it otherwise. Equal
  /// points are the centre themselves.
  /// Errors: |radius| below half the chord (exact), assertion with
  /// "[Error] TVArc2D.Create: 直径 < 弦长。".
  TVArc2D(const TPoint2D& AStartPoint, const TPoint2D& AEndPoint, double ARadius, bool IsLargeArc,
          bool AIsClockwise);
  /// The same over a chord given as a segment; mind the order of the flags.
  /// Errors: the radius is not greater than half the chord by more than 1e-6,
  /// "[Error]TVArc2D.Create: 不存在此参数对应的圆".
  TVArc2D(const TVLine2D& Chord, double ARadius, bool AIsClockwise, bool IsLargeArc);

  template <TNeitherFlagNorNumber T>
  TVArc2D(const TPoint2D& P1, const TPoint2D& P2, T IsClockwiseOrBulge) = delete;
  template <TNotFlags T>
  TVArc2D(const TPoint2D& ACenter, const TPoint2D& AStartPoint, const TPoint2D& AEndPoint,
          T AIsClockwise) = delete;
  template <class T2, TNotFlags<T2> T1>
  TVArc2D(const TPoint2D& AStartPoint, const TPoint2D& AEndPoint, double ARadius, T1 IsLargeArc,
          T2 AIsClockwise) = delete;
  template <class T2, TNotFlags<T2> T1>
  TVArc2D(const TVLine2D& Chord, double ARadius, T1 AIsClockwise, T2 IsLargeArc) = delete;

  // --- Measures ---

  /// Distance from the centre to the start.
  double Radius() const { return Center.DistanceTo(StartPoint); }
  /// The whole circle of the arc.
  TVCircle2D Circle() const { return {Center, Radius()}; }
  /// The end points are equal within 1e-6.
  bool IsCircle() const { return StartPoint.Equals(EndPoint); }
  /// Polar angles of the end points seen from the centre, in [0, 2π).
  double StartAngle() const { return (StartPoint - Center).Angle(); }
  double EndAngle() const { return (EndPoint - Center).Angle(); }  ///< The angle of the end point.
  /// The signed sweep: ±2π for a full circle, in [0, 2π) counter-clockwise, in (−2π, 0] clockwise.
  /// Ends that are apart but lie in one direction from the centre have the sweep 0.
  double AngleRange() const;
  /// tan(`AngleRange` / 4). A full circle has the huge value ±1.6e16, which as a bulge between two
  /// equal points says nothing: ask `IsCircle`.
  double Bulge() const;
  /// Radius times the absolute sweep.
  double Length() const;
  /// Tight box of the arc itself.
  TVRect2D BoundBox() const;

  // --- New arcs ---

  /// Moved by `V`.
  TVArc2D Translate(const TPoint2D& V) const;
  /// Turned by `A` radians about the origin, or about `Centre`.
  TVArc2D Rotate(double A) const;
  TVArc2D Rotate(double A, const TPoint2D& Centre) const;  ///< The same about `Centre`.
  /// The same points run the other way.
  constexpr TVArc2D Reverse() const { return {Center, EndPoint, StartPoint, !IsClockwise}; }
  /// The parts before and after parameter `T`, cut at `CalcPointByParam(T)`. At 0 or 1 one part has
  /// equal ends and so reads as a full circle.
  void SplitByParam(double T, TVArc2D& Left, TVArc2D& Right) const;
  /// The host's arc of the same shape; its ends follow from centre, radius and angles.
  TArc2D ToArc2D() const { return {Center, Radius(), StartAngle(), AngleRange()}; }

  // --- Points and parameters ---

  /// `P` lies on the arc: at most `Eps` from the circle and in the direction of the arc, or at most
  /// `Eps` from one of its ends.
  bool IsPointOn(const TPoint2D& P, double Eps = kLinearTolerance) const;
  /// Angle from the start to the direction of `P` in the arc's direction, in [0, 2π).
  double TurnTo(const TPoint2D& P) const;
  /// Parameter of the direction of `P` from the centre, in [0, 2π / |sweep|). A direction a hair
  /// before the start is nearly once round from it, not a small negative number.
  /// Errors: a sweep of 0 (1e-6), "[Error] TVArc2D.CalcParamByPoint: 圆弧退化为点".
  double CalcParamByPoint(const TPoint2D& P) const;
  /// The point at parameter `T`, worked out from centre and angle: the ends to rounding only.
  TPoint2D CalcPointByParam(double T) const;
  /// The point of the circle at polar angle `A`.
  TPoint2D CalcPointByRadian(double A) const { return Circle().CalcPointByRadian(A); }
  /// The tangent at `T` in the arc's direction. Its length is the radius, not that of the
  /// derivative by the parameter.
  TPoint2D CalcDerivative(double T) const;
  /// The point of the arc farthest from `P`.
  /// Ties: the start point, then the end point.
  TPoint2D FarthestPt(const TPoint2D& P) const;
  /// The arc as chords of equal length; the first and the last point are the end points themselves.
  /// Tolerance: no chord is farther than `ChordError` from its arc; bounds as `ArcChordCount`.
  TVPolyline2D SampleToPolyline(double ChordError) const;

  // --- Crossings. Ends belong to the arc, with a slack of `Eps` (else 1e-6) as a length ---

  /// Common points with the infinite line, in its order: 0, 1 or 2.
  int CrossWithLine(const TVLine2D& Line, TPoint2D& P1, TPoint2D& P2,
                    double Eps = kLinearTolerance) const;
  /// Common points with a segment: what lies beyond its ends is dropped, the first point kept is
  /// `P1`.
  /// Tolerance: `Eps`, slack of the parameter on the segment.
  int CrossWithSegline(const TVLine2D& Segment, TPoint2D& P1, TPoint2D& P2,
                       double Eps = kLinearTolerance) const;
  /// Common points with the rim of the circle, in the order of this arc: 0, 1 or 2; none when it is
  /// this arc's own circle.
  int CrossWithCircle(const TVCircle2D& Other, TPoint2D& P1, TPoint2D& P2) const;
  /// Common points in the low two bits of the answer (0, 1 or 2, in the order of this arc), common
  /// stretches in the next two (0, 1 or 2): 5 is one point and one stretch. Only arcs of one circle
  /// (centre and radius within `Eps`) have stretches, run in this arc's direction, and their points
  /// are the ends in which they merely touch.
  int CrossWithArc(const TVArc2D& Other, TPoint2D& P1, TPoint2D& P2, TVArc2D& Overlap1,
                   TVArc2D& Overlap2, double Eps = kLinearTolerance) const;
};

}  // namespace tarnalgo
