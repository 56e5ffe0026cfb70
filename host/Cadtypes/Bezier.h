#pragma once  // host/Cadtypes/Bezier.h

#include <vector>

#include "host/Cadtypes/Line.h"
#include "host/Cadtypes/Matrix.h"

namespace tarnalgo {

/// The host's cubic Bezier segment; parameter t in [0, 1].
struct TBezierSegment2D {
  TPoint2D P0;  ///< Start.
  TPoint2D P1;  ///< First inner control point.
  TPoint2D P2;  ///< Second inner control point.
  TPoint2D P3;  ///< End.

  constexpr TBezierSegment2D() = default;
  /// The straight segment, controls at the thirds: the parameter runs evenly.
  TBezierSegment2D(const TPoint2D& AP0, const TPoint2D& AP3);
  /// From its four control points.
  constexpr TBezierSegment2D(const TPoint2D& AP0, const TPoint2D& AP1, const TPoint2D& AP2,
                             const TPoint2D& AP3)
      : P0(AP0), P1(AP1), P2(AP2), P3(AP3) {}

  friend constexpr bool operator==(const TBezierSegment2D&, const TBezierSegment2D&) = default;

  /// Exact at 0 and 1; beyond them the polynomial goes on.
  TPoint2D EvalPoint(double T) const;
  /// First and second derivative by the parameter.
  TPoint2D Derivative(double T) const;
  TPoint2D SecondDerivative(double T) const;  ///< Second derivative.
  /// De Casteljau: the two parts share the split point exactly and keep the outer ends.
  void Split(double T, TBezierSegment2D& Left, TBezierSegment2D& Right) const;
  /// `Split` at one half.
  void SplitMiddle(TBezierSegment2D& Left, TBezierSegment2D& Right) const;
  /// The same curve run the other way, bit for bit the same points of control.
  TBezierSegment2D Reversed() const { return {P3, P2, P1, P0}; }

  /// Direction at the ends, not normalised. A control point on its end is passed over: the limit
  /// direction, towards (from) the next different control point; zero when all four coincide.
  TPoint2D TangentStart() const;
  TPoint2D TangentEnd() const;  ///< The direction at the end.

  /// All control points lie within `Eps` of the infinite line of the chord (of the point P0 when
  /// P0 = P3). `Line` receives the chord whatever the answer.
  bool IsLinear(TLine2D& Line, double Eps) const;
  /// Parameters in (0, 1) where the curvature changes sign, ascending. A cusp or a double root is
  /// no change, nor is what the rounding of the control points alone may have made: a straight
  /// segment has none, wherever it lies.
  std::vector<double> CurvatureChangedPlaces() const;
  /// Distance from `P` to the curve, with the parameter and the foot point. Exact to rounding: all
  /// minima are isolated first. A foot within `Tol` (a length) of `P` is taken without looking for
  /// a better one further along (0: to rounding).
  /// Ties: the smaller parameter.
  double DistanceTo(const TPoint2D& P, double Tol, double& T, TPoint2D& Foot) const;

  /// Maps the control points, which maps the curve.
  void TransformBy(const TMatrix2D& M);

  /// Tight box: the extremes of the curve, not of its controls.
  TRect2D GetBoundBox() const;
  /// Arc length, to a relative error of about 1e-12 (adaptive Gauss-Legendre).
  double CurveLength() const;
};

}  // namespace tarnalgo
