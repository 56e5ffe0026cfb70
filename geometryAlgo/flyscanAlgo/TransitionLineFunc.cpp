#include "geometryAlgo/flyscanAlgo/TransitionLineFunc.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "geometryAlgo/flyscanAlgo/NormalTurn.h"

namespace tarnalgo {

namespace {

/// The radius of each try, as a part of the one before.
constexpr double kRadiusShrink = 0.8;

/// Sine below which a turn may be one that counts as none; wider than that band.
constexpr double kNearlyFullTurnSine = 1e-5;

/// The turn from direction `From` to `To` in the sense asked for, negative when clockwise.
double Sweep(double From, double To, bool IsClockwise) {
  return IsClockwise ? -NormalTurn(From - To) : NormalTurn(To - From);
}

/// A turn that `Sweep` of the two unit directions is not below: its whole quarter turns, from the
/// signs of sine and cosine. Nearly full turns, which may count as none, give 0.
double LeastTurn(const TPoint2D& From, const TPoint2D& To, bool IsClockwise) {
  const double Sine = IsClockwise ? To.CrossMul(From) : From.CrossMul(To);
  const double Cosine = From.DotMul(To);
  if (Sine >= 0.0) return Cosine >= 0.0 ? 0.0 : kQuarterTurn;
  if (Cosine < 0.0) return kPi;
  return Sine < -kNearlyFullTurnSine ? kPi + kQuarterTurn : 0.0;
}

/// The normal of `Way` that points to the centre of a turn.
TPoint2D SideOf(const TPoint2D& Way, bool IsClockwise) {
  return IsClockwise ? Way.RotateCw90() : Way.RotateCcw90();
}

bool IsInReach(const TPoint2D& P) {
  return std::abs(P.X) < kLargestPoseCoordinate && std::abs(P.Y) < kLargestPoseCoordinate;
}

double BulgeOf(double Sweep) {
  return std::tan(Sweep / 4.0);
}

/// So little turn that the chord stands for the arc.
bool IsStraight(double Bulge) {
  return TMathUtils::FloatEquals(Bulge, 0.0);
}

}  // namespace

std::unique_ptr<TGeCompositeCurve2D> TTransitionLineFunc::CalcTransitionLine(
    const TPoint2D& AStartPt, const TPoint2D& AStartVec, const TPoint2D& AEndPt,
    const TPoint2D& AEndVec, double& ARadius) {
  if (!(FMinRadius > 0.0)) {
    return InternalCalcTransitionLine(AStartPt, AStartVec, AEndPt, AEndVec, ARadius);
  }
  std::unique_ptr<TGeCompositeCurve2D> Line;
  double Radius = ARadius;
  while (Radius > FMinRadius) {
    Line = InternalCalcTransitionLine(AStartPt, AStartVec, AEndPt, AEndVec, Radius);
    const double Smaller = Radius * kRadiusShrink;
    // Infinity and the least denormals do not shrink.
    if (Line || !(Smaller < Radius)) break;
    Radius = Smaller;
  }
  ARadius = Radius;
  return Line;
}

TObjectList<TGeCompositeCurve2D> TTransitionLineFunc::CalcAllTransitionLines(
    const TPoint2D& AStartPt, const TPoint2D& AStartVec, const TPoint2D& AEndPt,
    const TPoint2D& AEndVec, double ARadius) {
  TObjectList<TGeCompositeCurve2D> Lines;
  if (!Begin(AStartPt, AStartVec, AEndPt, AEndVec, ARadius)) return Lines;
  Lines.Reserve(5);
  const auto Add = [&Lines](std::unique_ptr<TGeCompositeCurve2D> Line) {
    if (Line) Lines.Add(std::move(Line));
  };
  for (const TTurnPair& Pair : TurnPairs()) Add(Build(FindTurns(Pair, kStartOfMinimum)));
  Add(InternalCalc());
  // All or nothing: a candidate without a piece would discredit the others.
  for (const TGeCompositeCurve2D* const Line : Lines) {
    if (Line->GetCurveCount() == 0) return TObjectList<TGeCompositeCurve2D>();
  }
  Lines.Sort(CompareByCurveLength);
  return Lines;
}

std::unique_ptr<TGeCompositeCurve2D> TTransitionLineFunc::InternalCalcTransitionLine(
    const TPoint2D& AStartPt, const TPoint2D& AStartVec, const TPoint2D& AEndPt,
    const TPoint2D& AEndVec, double ARadius) {
  if (!Begin(AStartPt, AStartVec, AEndPt, AEndVec, ARadius)) return nullptr;
  return Build(FindShortest());
}

double TTransitionLineFunc::CalcShortestLength(const TPoint2D& AStartPt, const TPoint2D& AStartVec,
                                               const TPoint2D& AEndPt, const TPoint2D& AEndVec,
                                               double ARadius) {
  if (!Begin(AStartPt, AStartVec, AEndPt, AEndVec, ARadius)) return kStartOfMinimum;
  return FindShortest().Length;
}

std::unique_ptr<TGeCompositeCurve2D> TTransitionLineFunc::InternalCalc(const TPoint2D& C1,
                                                                       bool IsClockwise1,
                                                                       const TPoint2D& C2,
                                                                       bool IsClockwise2) const {
  if (!IsInReach(C1) || !IsInReach(C2)) return nullptr;
  return Build(FindTurns({C1, IsClockwise1, C2, IsClockwise2, C1.DistanceTo(C2)}, kStartOfMinimum));
}

std::unique_ptr<TGeCompositeCurve2D> TTransitionLineFunc::InternalCalc() const {
  return Build(FindFillet());
}

int TTransitionLineFunc::CompareByCurveLength(const TGeCompositeCurve2D& A,
                                              const TGeCompositeCurve2D& B) {
  return CompareExact(A.CurveLength(), B.CurveLength());
}

void TTransitionLineFunc::AddToPolyline(TGeCompositeCurve2D& Curve, const TPoint2D& P1,
                                        const TPoint2D& P2, double Sweep) {
  const double Bulge = BulgeOf(Sweep);
  if (IsStraight(Bulge)) {
    Curve.AddCurve(std::make_unique<TGeLine2D>(P1, P2));
  } else {
    Curve.AddCurve(std::make_unique<TGeCircularArc2D>(P1, Bulge, P2));
  }
}

/// Takes the poses over; false when there can be no transition between them.
bool TTransitionLineFunc::Begin(const TPoint2D& AStartPt, const TPoint2D& AStartVec,
                                const TPoint2D& AEndPt, const TPoint2D& AEndVec, double ARadius) {
  FStartPt = AStartPt;
  FStartVec = AStartVec.Normal();
  FEndPt = AEndPt;
  FEndVec = AEndVec.Normal();
  FRadius = 0.0;  // no candidates, until all is seen to be sound
  const bool HaveDirections = FStartVec != TPoint2D::FZero && FEndVec != TPoint2D::FZero;
  if (!HaveDirections || !(ARadius > 0.0 && ARadius < kLargestPoseCoordinate)) return false;
  if (!IsInReach(FStartPt) || !IsInReach(FEndPt)) return false;
  FStartAngle = FStartVec.Angle();
  FEndAngle = FEndVec.Angle();
  const double Turn = NormalTurn(FStartAngle - FEndAngle);
  if (FTol.PointEquals(FStartPt, FEndPt) && std::min(Turn, kFullTurn - Turn) < FSamePtAng) {
    return false;
  }
  FRadius = ARadius;
  return true;
}

/// Of equally long candidates the first in the order of `CalcAllTransitionLines`.
TTransitionLineFunc::TCandidate TTransitionLineFunc::FindShortest() const {
  TCandidate Best;
  const auto Take = [&Best](const TCandidate& Candidate) {
    if (Candidate.Length < Best.Length) Best = Candidate;
  };
  for (const TTurnPair& Pair : TurnPairs()) Take(FindTurns(Pair, Best.Length));
  Take(FindFillet());
  return Best;
}

/// The four pairs of turning circles, those with the nearest centres first; of equally near ones
/// the order is that of a selection sort.
std::array<TTransitionLineFunc::TTurnPair, 4> TTransitionLineFunc::TurnPairs() const {
  std::array<TTurnPair, 4> Pairs;
  auto Next = Pairs.begin();
  for (const bool IsClockwise1 : {false, true}) {
    const TPoint2D C1 = FStartPt + SideOf(FStartVec, IsClockwise1) * FRadius;
    for (const bool IsClockwise2 : {false, true}) {
      const TPoint2D C2 = FEndPt + SideOf(FEndVec, IsClockwise2) * FRadius;
      *Next++ = {C1, IsClockwise1, C2, IsClockwise2, C1.DistanceTo(C2)};
    }
  }
  const auto IsNearer = [](const TTurnPair& A, const TTurnPair& B) {
    return A.Distance < B.Distance;
  };
  for (auto Place = Pairs.begin(); Place != Pairs.end(); ++Place) {
    std::iter_swap(Place, std::min_element(Place, Pairs.end(), IsNearer));
  }
  return Pairs;
}

/// The straight part runs along V such that the way between the centres is L·V + K·(V turned left),
/// K being 0 for two turns in one sense and ±2R otherwise. Solved for V, with W the way between the
/// centres: V = (L·W − K·(W turned left)) / |W|².
///
/// No candidate also where it is plain before any angle is known that it is not below `Bound`.
TTransitionLineFunc::TCandidate TTransitionLineFunc::FindTurns(const TTurnPair& Pair,
                                                               double Bound) const {
  const bool IsOneSense = Pair.IsClockwise1 == Pair.IsClockwise2;
  if (IsOneSense && Pair.Distance < FTol.EqualVector) return FindTurnOnOneCircle(Pair);
  const double Across = IsOneSense ? 0.0 : 2.0 * FRadius;
  if (!(FRadius > 0.0) || !(Across <= Pair.Distance)) return {};  // the circles overlap
  const double Straight = std::sqrt((Pair.Distance - Across) * (Pair.Distance + Across));
  const TPoint2D Between = (Pair.C2 - Pair.C1) / Pair.Distance;
  const TPoint2D Way = Between * (Straight / Pair.Distance) +
                       SideOf(Between, Pair.IsClockwise1) * (Across / Pair.Distance);
  const double Least =
      LeastTurn(FStartVec, Way, Pair.IsClockwise1) + LeastTurn(Way, FEndVec, Pair.IsClockwise2);
  if (TMathUtils::FloatGreater(Least, FMaxAng) || Straight + FRadius * Least > Bound) return {};

  const double WayAngle = std::atan2(Way.Y, Way.X);
  const double First = Sweep(FStartAngle, WayAngle, Pair.IsClockwise1);
  const double Second = Sweep(WayAngle, FEndAngle, Pair.IsClockwise2);
  const double Turn = std::abs(First) + std::abs(Second);
  if (Turn > FMaxAng) return {};
  // A turn of a hair less than a full one counts as none: the straight part then begins (ends) at
  // the pose itself, for the tangent point lies behind (ahead of) it.
  const TPoint2D T1 = First == 0.0 ? FStartPt : Pair.C1 - SideOf(Way, Pair.IsClockwise1) * FRadius;
  const TPoint2D T2 = Second == 0.0 ? FEndPt : Pair.C2 - SideOf(Way, Pair.IsClockwise2) * FRadius;
  return {3, Straight + FRadius * Turn, {First, 0.0, Second}, {T1, T2}, Way};
}

TTransitionLineFunc::TCandidate TTransitionLineFunc::FindTurnOnOneCircle(
    const TTurnPair& Pair) const {
  if (!(FRadius > 0.0)) return {};
  const double Turn = Sweep((FStartPt - Pair.C1).Angle(), (FEndPt - Pair.C1).Angle(),  //
                            Pair.IsClockwise1);
  if (std::abs(Turn) > FMaxAng) return {};
  return {1, FRadius * std::abs(Turn), {Turn, 0.0, 0.0}, {}, FStartVec};
}

/// The other arc of the corner, behind both poses, turns by more than half a turn and so is never
/// within the quarter turn allowed.
TTransitionLineFunc::TCandidate TTransitionLineFunc::FindFillet() const {
  const double Sine = FStartVec.CrossMul(FEndVec);
  const double Cosine = FStartVec.DotMul(FEndVec);
  if (!(FRadius > 0.0) || TMathUtils::FloatEquals(Sine, 0.0)) return {};  // parallel
  if (!TMathUtils::FloatGreaterEquals(Cosine, 0.0, kFilletTurnSlack)) return {};

  // From the start to the corner, from the corner to the end, along the directions.
  const TPoint2D Between = FEndPt - FStartPt;
  const double ToCorner = Between.CrossMul(FEndVec) / Sine;
  const double FromCorner = FStartVec.CrossMul(Between) / Sine;
  if (!TMathUtils::FloatLessEquals(std::abs(ToCorner), kFilletReach) ||
      !TMathUtils::FloatLessEquals(std::abs(FromCorner), kFilletReach)) {
    return {};
  }
  const double Tangent = FRadius * (std::abs(Sine) / (1.0 + Cosine));  // R·tan(turn / 2)
  const double Lead = ToCorner - Tangent;
  // Between nearly parallel directions the place of the corner is unsure; what is left behind the
  // arc follows from the lead, so that the arc fits all the same.
  const double Trail = Between.DotMul(FEndVec) - Lead * Cosine - FRadius * std::abs(Sine);
  if (!TMathUtils::FloatGreaterEquals(std::min(Lead, Trail), 0.0, FTol.EqualPoint)) return {};

  const double Turn = std::atan2(Sine, Cosine);
  if (std::abs(Turn) > FMaxAng) return {};
  // A tangent point a hair behind its pose stays there: moved, it would bend a small arc.
  const TPoint2D T1 = FStartPt + FStartVec * Lead;
  const TPoint2D T2 = FEndPt - FEndVec * Trail;
  const double Length = std::abs(Lead) + FRadius * std::abs(Turn) + std::abs(Trail);
  return {3, Length, {0.0, Turn, 0.0}, {T1, T2}, FStartVec};
}

std::unique_ptr<TGeCompositeCurve2D> TTransitionLineFunc::Build(const TCandidate& Candidate) const {
  if (Candidate.PieceCount == 0) return nullptr;
  auto Line = std::make_unique<TGeCompositeCurve2D>();
  Line->Reserve(Candidate.PieceCount);
  if (Candidate.PieceCount == 1) {
    AddPiece(*Line, FStartPt, FEndPt, Candidate.Sweeps[0], FStartVec);
  } else {
    AddPiece(*Line, FStartPt, Candidate.Via[0], Candidate.Sweeps[0], FStartVec);
    AddPiece(*Line, Candidate.Via[0], Candidate.Via[1], Candidate.Sweeps[1], Candidate.Way);
    AddPiece(*Line, Candidate.Via[1], FEndPt, Candidate.Sweeps[2], Candidate.Way);
  }
  return Line;
}

/// `AddToPolyline` for a piece whose direction at `P1` is known to be `Way`: an arc whose chord is
/// too short to tell (a small one, or nearly a full turn) is made about its centre instead.
void TTransitionLineFunc::AddPiece(TGeCompositeCurve2D& Curve, const TPoint2D& P1,
                                   const TPoint2D& P2, double Sweep, const TPoint2D& Way) const {
  if (IsStraight(BulgeOf(Sweep)) || !P1.Equals(P2, kShortArcChord)) {
    return AddToPolyline(Curve, P1, P2, Sweep);
  }
  const TPoint2D ToCenter = SideOf(Way, Sweep < 0.0) * FRadius;
  Curve.AddCurve(
      std::make_unique<TGeCircularArc2D>(P1 + ToCenter, FRadius, (-ToCenter).Angle(), Sweep));
}

}  // namespace tarnalgo
