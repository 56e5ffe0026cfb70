#pragma once  // geometryAlgo/VedaType/Line.h

#include <optional>
#include <string>
#include <string_view>

#include "geometryAlgo/VedaType/DebugText.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadtypes/Line.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// A directed segment; with its ends prolonged also the infinite line through them.
///
/// A plain value. Its parameter runs from 0 at the start to 1 at the end and beyond on the infinite
/// line. A segment of no length ("degenerate", exactly equal ends) is allowed: it is a point, has
/// no direction, and operations that need one leave it as it is. Operations return new values.
///
/// The relations answer a code: 0 = no common point, 1 = exactly one, 2 = coincident (overlapping).
/// Points handed back are untouched where the code does not promise them.
struct TVLine2D {
  TPoint2D StartPoint;  ///< Where the parameter is 0.
  TPoint2D EndPoint;    ///< Where the parameter is 1.

  constexpr TVLine2D() = default;
  /// From one point to the other.
  constexpr TVLine2D(const TPoint2D& AStartPoint, const TPoint2D& AEndPoint)
      : StartPoint(AStartPoint), EndPoint(AEndPoint) {}
  /// The host's segment.
  constexpr explicit TVLine2D(const TLine2D& Line)
      : StartPoint(Line.StartPoint), EndPoint(Line.EndPoint) {}

  /// The host's segment of the same ends.
  constexpr TLine2D ToLine2D() const { return {StartPoint, EndPoint}; }

  // --- Measures ---

  /// Distance of the two ends.
  double Length() const { return StartPoint.DistanceTo(EndPoint); }
  /// Tangent of the direction angle: ±infinity for a vertical segment, 0 for a degenerate one.
  double Slope() const;
  /// From start to end, not normalised.
  constexpr TPoint2D Vector() const { return EndPoint - StartPoint; }
  /// The middle; halves are added, so that it does not overflow.
  constexpr TPoint2D Center() const { return StartPoint * 0.5 + EndPoint * 0.5; }
  /// Box of the two ends.
  constexpr TVRect2D BoundBox() const { return {StartPoint, EndPoint}; }

  // --- New segments ---

  /// The same segment run the other way.
  constexpr TVLine2D ReverseDirection() const { return {EndPoint, StartPoint}; }
  /// Moved by `V`.
  TVLine2D Translate(const TPoint2D& V) const;
  /// Turned by `A` radians about the origin, or about `Centre`.
  TVLine2D Rotate(double A) const;
  TVLine2D Rotate(double A, const TPoint2D& Centre) const;  ///< The same about `Centre`.
  /// Brought to length `ALength` from the start point, which stays (`Stretch`), or to both sides of
  /// the centre, which stays (`BiStretch`). A negative length turns the segment round.
  TVLine2D Stretch(double ALength) const;
  TVLine2D BiStretch(double ALength) const;  ///< The same to both sides of the centre.
  /// The parallel segment at distance `D` on the left, on the right for a negative one.
  TVLine2D Offset(double D) const;
  /// This segment turned by 90° counter-clockwise about its centre.
  TVLine2D PerpendicularBisector() const;
  /// The part inside the closed box, in the same direction, a point where the segment only touches
  /// it; nothing when it misses the box or is not finite. An end inside the box stays exactly what
  /// it is, a cut end lies exactly on the side that cuts it. No tolerance.
  std::optional<TVLine2D> ClipBy(const TVRect2D& Box) const;

  // --- Points and parameters ---

  /// `StartPoint` + `T` · `Vector`, exact at 0 and 1.
  constexpr TPoint2D EvalPoint(double T) const { return Lerp(StartPoint, EndPoint, T); }
  /// Parameter of the foot of `P` on the infinite line; 0 for a degenerate segment.
  double CalcParamByPointProjection(const TPoint2D& P) const;

  /// Distance from the segment. `T` is the parameter of the nearest point: 0 or 1 exactly where an
  /// end is nearest, 0 for a degenerate segment.
  double SegmentDistanceTo(const TPoint2D& P) const;
  double SegmentDistanceTo(const TPoint2D& P, double& T) const;  ///< The same with the place.
  /// Distance from the infinite line, from `StartPoint` for a degenerate segment. `T` is the
  /// parameter of the foot; the second form measures to that foot.
  double LineDistanceTo(const TPoint2D& P) const;
  double LineDistanceTo(const TPoint2D& P, double& T) const;  ///< The same, to the foot at `T`.

  /// `P` lies on the segment: at most `Eps` from the infinite line, and its parameter in [0, 1]
  /// with slack of the same number (so the slack of the ends grows with the length).
  bool IsPointOnSegLine(const TPoint2D& P, double Eps = kLinearTolerance) const;
  /// `P` is at most `Eps` away from the segment, round its ends too.
  bool IsPointNearBySegment(const TPoint2D& P, double Eps = kLinearTolerance) const;
  /// `P` is one of the two ends, within `Eps`.
  bool OnBorder(const TPoint2D& P, double Eps = kLinearTolerance) const;
  /// The whole segment lies along one side of the box, within `Eps`. Never for an empty box.
  bool OnBorder(const TVRect2D& Box, double Eps = kLinearTolerance) const;

  ///@{
  /// The coordinate of the infinite line at the other one, and the point there. A line that never
  /// reaches it (horizontal for a given Y, vertical for a given X) answers its start point's.
  double CalculateX(double Y) const;
  double CalculateY(double X) const;
  TPoint2D PointOfLineAtX(double X) const;
  TPoint2D PointOfLineAtY(double Y) const;
  ///@}

  /// Those of the first `Count` points of `Q1`, `Q2` that have their parameter on this segment, put
  /// into `P1`, `P2` in their order; the result counts them. For points known to lie on the line.
  /// Tolerance: `Eps`, slack of the parameter.
  int PointsWithin(int Count, const TPoint2D& Q1, const TPoint2D& Q2, TPoint2D& P1, TPoint2D& P2,
                   double Eps = kLinearTolerance) const;

  // --- Relations of lines ---

  ///@{
  /// The infinite lines: 1 when they cross, 2 when they coincide, 0 when they are parallel and
  /// apart. `P` is the crossing.
  /// Tolerance: products of lengths, not normalised: parallel when |V1 × V2| <= `ParallelEps`,
  /// coincident when |(EndPoint − Other.EndPoint) × V2| <= `CoincidentEps`. So short segments are
  /// parallel sooner than long ones, the answer is not symmetric, and every line coincides with a
  /// degenerate `Other`.
  int RelationWithLine(const TVLine2D& Other, double ParallelEps = kLinearTolerance,
                       double CoincidentEps = kLinearTolerance) const;
  int RelationWithLine(const TVLine2D& Other, TPoint2D& P, double ParallelEps = kLinearTolerance,
                       double CoincidentEps = kLinearTolerance) const;
  ///@}
  /// This segment against the infinite `Line`: as `RelationWithLine`, but 1 only where the
  /// parameter of the crossing on this segment lies in [0, 1] (exact, ends included), else 0.
  int RelationSeglineWithLine(const TVLine2D& Line, TPoint2D& P) const;
  /// The infinite `Line` crosses this segment between its ends: the parameter passes 0 and 1 by
  /// more than `Eps`.
  bool InternalCrossWithLine(const TVLine2D& Line, TPoint2D& P,
                             double Eps = kLinearTolerance) const;

  /// The two segments: 1 with their common point `P1`, 2 with the ends `P1`, `P2` of their common
  /// stretch in the direction of this segment, else 0. Ends that touch count, collinear segments
  /// that share no more than an end answer 1.
  /// Tolerance, ties: as `TLine2D::Intersect`.
  int RelationWithSegLine(const TVLine2D& Other, TPoint2D& P1, TPoint2D& P2,
                          double Eps = kLinearTolerance) const;
  /// The same question, answered with the parameters too: `Param1` on this segment, `Param2` on
  /// `Other`, both within [0, 1].
  int RelationWithSegLine2(const TVLine2D& Other, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                           double Eps = kLinearTolerance) const;
  /// The two segments have exactly one common point: `RelationWithSegLine` answers 1.
  bool CrossWithSegLine(const TVLine2D& Other, TPoint2D& P, double Eps = kLinearTolerance) const;

  /// For inspection: a line with the colour, then the segment's debug text.
  /// Errors: the file cannot be written, `EInOutError`.
  void WriteToFile(const std::string& FileName, std::string_view Colour = kDrawingColour) const;
};

}  // namespace tarnalgo
