#pragma once  // host/Cadgeometry/CurvePiece.h

#include <vector>

#include "host/Cadtypes/Arc.h"
#include "host/Cadtypes/Bezier.h"
#include "host/Cadtypes/Line.h"
#include "host/Cadtypes/Rect.h"

namespace tarnalgo {

/// What a piece is: a straight segment, a circular arc, or a cubic Bezier.
enum class TPieceKind { Line, Arc, Bezier };

/// A segment, an arc or a cubic that is monotone in X and Y: the primitive to which every host
/// curve comes down when curves are crossed.
///
/// A plain value. Its own parameter U runs from 0 to 1 and stands for `From` + U · (`To` − `From`)
/// on the curve it belongs to. Being monotone a cubic piece turns by less than half a turn, never
/// meets itself, and is boxed by its ends.
struct TCurvePiece {
  TPieceKind Kind = TPieceKind::Line;  ///< Tells which of the fields below count.
  TPoint2D Start;                      ///< Where the piece begins, exactly.
  TPoint2D End;                        ///< Where it ends, exactly.
  TArc2D Arc;                          ///< Centre, radius and angles of an arc.
  TPoint2D Control1;                   ///< Second control point of a cubic.
  TPoint2D Control2;                   ///< Third control point of a cubic.
  TRect2D Box;                         ///< Tight box of the piece.
  double From = 0.0;                   ///< Parameter of the whole curve at `Start`.
  double To = 1.0;                     ///< Parameter of the whole curve at `End`.
  bool StartIsCut = false;  ///< `Start` lies inside the curve: cut there only to be monotone.
  bool EndIsCut = false;    ///< The same of `End`.

  /// A straight piece, box and all.
  static TCurvePiece OfLine(const TLine2D& Line, double From, double To);
  /// `Start` and `End` are the ends as given, which those of `Arc` meet to rounding only.
  static TCurvePiece OfArc(const TArc2D& Arc, const TPoint2D& Start, const TPoint2D& End,
                           double From, double To);
  /// Of a cubic that is monotone in X and Y.
  static TCurvePiece OfMonotoneBezier(const TBezierSegment2D& Part, double From, double To);
  /// Appends the monotone pieces of a cubic: at most five; one line where it is straight and even.
  static void AppendBezier(const TBezierSegment2D& Segment, double From, double To,
                           std::vector<TCurvePiece>& Pieces);

  /// The controls of a cubic piece as one record.
  TBezierSegment2D Bezier() const { return {Start, Control1, Control2, End}; }
  /// Start and end coincide exactly and it is no full turn: nothing has a direction here.
  bool IsPoint() const;
  /// Every number that makes up the piece is finite.
  bool IsFinite() const;
  /// A full turn: its start is its end.
  bool IsCircle() const;
  /// Largest absolute coordinate, an arc's circle included: the scale of rounding.
  double Magnitude() const;

  /// The point at `U`, exactly `Start` and `End` at 0 and 1.
  TPoint2D Eval(double U) const;
  /// First derivative by U.
  TPoint2D Derivative(double U) const;
  /// Second derivative by U.
  TPoint2D SecondDerivative(double U) const;
  /// U of the nearest point.
  /// Ties: the smallest.
  double Nearest(const TPoint2D& P, double& Distance) const;
  /// False where the strip round the chord that holds the control points is farther from `P` than
  /// `Distance`, which must exceed rounding: a quick answer before `Nearest`. True for what is no
  /// cubic.
  bool MayReach(const TPoint2D& P, double Distance) const;
  /// The parameter of the whole curve at `U`.
  double CurveParam(double U) const { return U == 1.0 ? To : From + U * (To - From); }

  /// The piece scaled about the origin.
  TCurvePiece Scaled(double Factor) const;
};

/// The boxes come within `Slack` of each other; an invalid one comes near nothing.
inline bool BoxesMeet(const TRect2D& A, const TRect2D& B, double Slack) {
  return A.Min.X <= B.Max.X + Slack && B.Min.X <= A.Max.X + Slack && A.Min.Y <= B.Max.Y + Slack &&
         B.Min.Y <= A.Max.Y + Slack;
}

}  // namespace tarnalgo
