#pragma once  // examples/sheet_planner/Flatten.h

#include <vector>

#include "host/Cadtypes.h"

namespace sheet_planner {

/// Centre + A·cos t + B·sin t for t from From to To: an ellipse, or a circle after a skew block
/// transform.
struct TEllipseArc {
  tarnalgo::TPoint2D Center;
  tarnalgo::TPoint2D A;
  tarnalgo::TPoint2D B;
  double From = 0.0;
  double To = tarnalgo::kFullTurn;
};

/// A B-spline curve, rational where the weights differ.
struct TSplineCurve {
  int Degree = 3;
  std::vector<double> Knots;  // Controls + Degree + 1 of them
  std::vector<tarnalgo::TPoint2D> Controls;
  std::vector<double> Weights;  // as many as controls; empty: all 1

  /// Degree 1 to 15, counts, knots in ascending order over a domain of some length and without a
  /// jump, positive weights.
  bool IsSound() const;
};

/// Points along the curve, ends included, such that no chord is further than `ChordError` from its
/// piece of the curve (with at most 4096 chords for an ellipse and for each Bezier piece of a
/// spline). An ellipse with From and To a full turn apart closes exactly.
std::vector<tarnalgo::TPoint2D> Flatten(const TEllipseArc& Arc, double ChordError);
/// The bound is the control polygon's, so it holds for certain and is met with some room to spare.
/// `Curve` is sound.
/// Errors: more than a million points, `EBadInput`.
std::vector<tarnalgo::TPoint2D> Flatten(const TSplineCurve& Curve, double ChordError);

/// The C2 cubic through the points, chord-length parameters, natural ends (periodic when the last
/// point repeats the first). At least two points; equal neighbours are passed over.
TSplineCurve SplineThrough(const std::vector<tarnalgo::TPoint2D>& Points);

/// All points lie on the segment from the first to the last, within 1e-5 of it, and run one way.
bool IsStraight(const std::vector<tarnalgo::TPoint2D>& Points);

}  // namespace sheet_planner
