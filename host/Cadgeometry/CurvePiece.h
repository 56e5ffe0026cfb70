#pragma once  // host/Cadgeometry/CurvePiece.h

#include <vector>

#include "host/Cadtypes/Arc.h"
#include "host/Cadtypes/Bezier.h"
#include "host/Cadtypes/Line.h"
#include "host/Cadtypes/Rect.h"

namespace tarnalgo {

/// What a piece is made of.
enum class TPieceKind { Line, Arc, Bezier };

/// A segment, an arc or a cubic that is monotone in X and Y: the primitive to which every host
/// curve comes down when curves are crossed.
///
/// A plain value. Its own parameter U runs from 0 to 1 and stands for `From` + U · (`To` − `From`)
/// on the curve it belongs to. Being monotone a cubic piece turns by less than half a turn, never
/// meets itself, and is boxed by its ends.
struct TCurvePiece {
  TPieceKind Kind = TPieceKind::Line;
  TPoint2D Start;
  TPoint2D End;
  TArc2D Arc;         // of an arc
  TPoint2D Control1;  // of a cubic
  TPoint2D Control2;
  TRect2D Box;
  double From = 0.0;
  double To = 1.0;
  bool StartIsCut = false;  // `Start` lies inside the curve: cut there only to be monotone
  bool EndIsCut = false;

  static TCurvePiece OfLine(const TLine2D& Line, double From, double To);
  /// `Start` and `End` are the ends as given, which those of `Arc` meet to rounding only.
  static TCurvePiece OfArc(const TArc2D& Arc, const TPoint2D& Start, const TPoint2D& End,
                           double From, double To);
  /// Of a cubic that is monotone in X and Y.
  static TCurvePiece OfMonotoneBezier(const TBezierSegment2D& Part, double From, double To);
  /// Appends the monotone pieces of a cubic: at most five; one line where it is straight and even.
  static void AppendBezier(const TBezierSegment2D& Segment, double From, double To,
                           std::vector<TCurvePiece>& Pieces);

  TBezierSegment2D Bezier() const { return {Start, Control1, Control2, End}; }
  bool IsPoint() const;
  /// Every number that makes up the piece is finite.
  bool IsFinite() const;
  /// A full turn: its start is its end.
  bool IsCircle() const;
  /// Largest absolute coordinate, an arc's circle included: the scale of rounding.
  double Magnitude() const;

  TPoint2D Eval(double U) const;
  /// First derivative by U.
  TPoint2D Derivative(double U) const;
  TPoint2D SecondDerivative(double U) const;
  /// U of the nearest point.
  /// Ties: the smallest.
  double Nearest(const TPoint2D& P, double& Distance) const;
  /// False where the strip round the chord that holds the control points is farther from `P` than
  /// `Distance`, which must exceed rounding: a quick answer before `Nearest`. True for what is no
  /// cubic.
  bool MayReach(const TPoint2D& P, double Distance) const;
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
