#pragma once  // geometryAlgo/flyscanAlgo/TransitionLineFunc.h

#include <array>
#include <memory>

#include "containers/Container/ObjectList.h"
#include "host/Cadgeometry.h"

namespace tarnalgo {

/// Transitions between two poses: curves of arcs of one radius and straight lines that leave the
/// start point along the start direction and enter the end point along the end direction.
///
///     TTransitionLineFunc Transitions;
///     Transitions.SetMinRadius(0.5);
///     double Radius = 2.0;
///     const auto Line = Transitions.CalcTransitionLine(PtOut, VecOut, PtIn, VecIn, Radius);
///     if (Line) Cut(*Line);  // its arcs have the radius `Radius`
///
/// The candidates are the four ways turn, straight, turn (a left or right turn at either end) and
/// the fillet straight, turn, straight of the corner in which the two poses meet. The first four
/// hold three pieces, or a single arc where both turns are on one circle; the fillet holds three.
/// Pieces of no length are lines and stay. Neighbouring pieces share their direction, except that a
/// turn of less than 4e-6 is run along its chord.
///
/// Directions need not be unit vectors. There is no transition where a direction is zero, where the
/// radius is not positive, or where a number is not finite or beyond `kLargestPoseCoordinate`.
/// Errors: none.
/// Ownership: every curve returned is new and the caller's.
class TTransitionLineFunc {
 public:
  TTransitionLineFunc() = default;
  virtual ~TTransitionLineFunc() = default;

  /// Length: `CalcTransitionLine` shrinks the radius while it is larger; 0 and less: it does not.
  double MinRadius() const { return FMinRadius; }
  /// Nothing is checked; see `MinRadius`.
  void SetMinRadius(double Value) { FMinRadius = Value; }
  /// Angle (radians): poses at one point whose directions differ by less need no transition.
  double SamePtAng() const { return FSamePtAng; }
  /// Nothing is checked; see `SamePtAng`.
  void SetSamePtAng(double Value) { FSamePtAng = Value; }
  /// Angle (radians): the most that a candidate turns, its arcs taken together; 3π/2 at first.
  double MaxAng() const { return FMaxAng; }
  /// Nothing is checked; see `MaxAng`.
  void SetMaxAng(double Value) { FMaxAng = Value; }

  /// The shortest transition of radius `ARadius`. With `MinRadius` > 0 the radius shrinks by a
  /// fifth until there is one; a radius that is not larger than `MinRadius` is not tried.
  /// `ARadius` is then the radius of the curve, or the first that was too small when the result is
  /// empty.
  /// Cost: of the returned curve alone memory is taken.
  std::unique_ptr<TGeCompositeCurve2D> CalcTransitionLine(const TPoint2D& AStartPt,
                                                          const TPoint2D& AStartVec,
                                                          const TPoint2D& AEndPt,
                                                          const TPoint2D& AEndVec, double& ARadius);

  /// Every candidate, ascending by length.
  TObjectList<TGeCompositeCurve2D> CalcAllTransitionLines(const TPoint2D& AStartPt,
                                                          const TPoint2D& AStartVec,
                                                          const TPoint2D& AEndPt,
                                                          const TPoint2D& AEndVec, double ARadius);

  /// The first of `CalcAllTransitionLines` (of equally long ones: one of them), built alone; empty
  /// when there is none.
  std::unique_ptr<TGeCompositeCurve2D> InternalCalcTransitionLine(const TPoint2D& AStartPt,
                                                                  const TPoint2D& AStartVec,
                                                                  const TPoint2D& AEndPt,
                                                                  const TPoint2D& AEndVec,
                                                                  double ARadius);

  /// The length of what `InternalCalcTransitionLine` answers, `kStartOfMinimum` when that is empty.
  /// Cost: no curve is made, no memory taken.
  double CalcShortestLength(const TPoint2D& AStartPt, const TPoint2D& AStartVec,
                            const TPoint2D& AEndPt, const TPoint2D& AEndVec, double ARadius);

  ///@{
  /// One candidate of the calculation that ran last, empty when it has none: turn about `C1`,
  /// straight, turn about `C2`, each clockwise where its flag is set; or, without arguments, the
  /// fillet.
  std::unique_ptr<TGeCompositeCurve2D> InternalCalc(const TPoint2D& C1, bool IsClockwise1,
                                                    const TPoint2D& C2, bool IsClockwise2) const;
  std::unique_ptr<TGeCompositeCurve2D> InternalCalc() const;
  ///@}

  /// The exact sign of the difference of the lengths.
  static int CompareByCurveLength(const TGeCompositeCurve2D& A, const TGeCompositeCurve2D& B);

  /// Appends the piece from `P1` to `P2` that turns by `Sweep`, counter-clockwise when positive.
  /// Tolerance: a bulge, tan(`Sweep` / 4), of at most 1e-6 makes a line.
  /// Errors: those of an arc over its chord; ends that coincide (1e-6), `EParamError`.
  static void AddToPolyline(TGeCompositeCurve2D& Curve, const TPoint2D& P1, const TPoint2D& P2,
                            double Sweep);

 private:
  /// A transition as numbers. The pieces run from the start through both `Via` to the end; a single
  /// one leaves them out. No pieces: no candidate.
  struct TCandidate {
    int PieceCount = 0;
    double Length = kStartOfMinimum;
    double Sweeps[3] = {};
    TPoint2D Via[2];
    TPoint2D Way;  // unit direction at both `Via` of turn, straight, turn, at the first of a fillet
  };

  /// Two turning circles, one at either end.
  struct TTurnPair {
    TPoint2D C1;
    bool IsClockwise1 = false;
    TPoint2D C2;
    bool IsClockwise2 = false;
    double Distance = 0.0;
  };

  bool Begin(const TPoint2D& AStartPt, const TPoint2D& AStartVec, const TPoint2D& AEndPt,
             const TPoint2D& AEndVec, double ARadius);
  TCandidate FindShortest() const;
  std::array<TTurnPair, 4> TurnPairs() const;
  TCandidate FindTurns(const TTurnPair& Pair, double Bound) const;
  TCandidate FindTurnOnOneCircle(const TTurnPair& Pair) const;
  TCandidate FindFillet() const;
  std::unique_ptr<TGeCompositeCurve2D> Build(const TCandidate& Candidate) const;
  void AddPiece(TGeCompositeCurve2D& Curve, const TPoint2D& P1, const TPoint2D& P2, double Sweep,
                const TPoint2D& Way) const;

  // The poses of the present calculation; directions are brought to unit length.
  TPoint2D FStartPt;
  TPoint2D FStartVec;
  TPoint2D FEndPt;
  TPoint2D FEndVec;
  double FStartAngle = 0.0;
  double FEndAngle = 0.0;
  double FRadius = 0.0;

  double FMinRadius = 0.0;
  double FSamePtAng = 0.0;
  double FMaxAng = 4.71238898038469;
  TGeTolerance FTol = DefTol;
};

}  // namespace tarnalgo
