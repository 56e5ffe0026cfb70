#include <algorithm>
#include <cmath>
#include <limits>

#include "geometryAlgo/VedaType/GeometryUtils.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadgeometry/BernsteinRoots.h"
#include "host/Cadgeometry/CurvePiece.h"
#include "host/Cadgeometry/PieceCrossing.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

using TCrossRec = TGeometryUtils::TCrossRec;
using TStretch = TGeometryUtils::TStretch;

/// Levels of cuts: a cubic turns back in X twice and in Y twice at most, but for rounding, which
/// can make tiny or huge parts turn without end.
constexpr int kMostTurns = 4;

/// Count: places looked at between two crossings that may be one.
constexpr int kStepsBetween = 32;

/// Coordinates with a greater or smaller power of two are scaled, so that their squares and the
/// squares of these stay within the range of a double.
constexpr int kSafeExponent = 200;

// --- The other shape as a piece ---

TCurvePiece PieceOf(const TVLine2D& Line) {
  return TCurvePiece::OfLine(Line.ToLine2D(), 0.0, 1.0);
}

/// Ends that do not lie on the circle give way to the places of the circle in their direction.
TCurvePiece PieceOf(const TVArc2D& Arc) {
  const TArc2D Host = Arc.ToArc2D();
  const TPoint2D End = Host.EndPoint();
  return TCurvePiece::OfArc(Host, Arc.StartPoint, Arc.EndPoint.Equals(End) ? Arc.EndPoint : End,
                            0.0, 1.0);
}

/// A part of a cubic, boxed by its ends as befits a monotone one.
TCurvePiece PieceOf(const TBezierSegment2D& Part, double From, double To) {
  TCurvePiece Piece = TCurvePiece::OfMonotoneBezier(Part, From, To);
  Piece.StartIsCut = From > 0.0;
  Piece.EndIsCut = To < 1.0;
  return Piece;
}

// --- Subdivision ---

TRect2D ControlBox(const TBezierSegment2D& B) {
  const auto [Left, Right] = std::minmax({B.P0.X, B.P1.X, B.P2.X, B.P3.X});
  const auto [Bottom, Top] = std::minmax({B.P0.Y, B.P1.Y, B.P2.Y, B.P3.Y});
  return {{Left, Bottom}, {Right, Top}};
}

/// The first parameter at which the part turns back in X or Y, 0 when it is monotone.
double FirstTurn(const TBezierSegment2D& B) {
  const TPoint2D D[] = {B.P1 - B.P0, B.P2 - B.P1, B.P3 - B.P2};
  double First = 1.0;
  for (const auto& Turns : {TBernsteinRoots<2>({D[0].X, D[1].X, D[2].X}),
                            TBernsteinRoots<2>({D[0].Y, D[1].Y, D[2].Y})}) {
    for (const double T : Turns) {
      if (T > kLeastBezierCut && T < 1.0 - kLeastBezierCut) First = std::min(First, T);
    }
  }
  return First < 1.0 ? First : 0.0;
}

/// Calls `Visit(piece)` for the monotone parts whose control points come within `Slack` of the box.
template <class TVisitor>
void VisitParts(const TBezierSegment2D& Part, double From, double To, const TRect2D& Box, int Depth,
                double Slack, TVisitor& Visit) {
  if (!BoxesMeet(ControlBox(Part), Box, Slack)) return;
  const double Turn = Depth > 0 ? FirstTurn(Part) : 0.0;
  if (Turn == 0.0) return Visit(PieceOf(Part, From, To));
  TBezierSegment2D Left;
  TBezierSegment2D Right;
  Part.Split(Turn, Left, Right);
  const double Middle = From + Turn * (To - From);
  VisitParts(Left, From, Middle, Box, Depth - 1, Slack, Visit);
  VisitParts(Right, Middle, To, Box, Depth - 1, Slack, Visit);
}

/// A root within its rounding of an end of the curve is that end.
double FilteredRoot(double Param) {
  if (Param < kRootTolerance) return 0.0;
  return Param > 1.0 - kRootTolerance ? 1.0 : Param;
}

void CrossPieces(const TCurvePiece& Cut, const TCurvePiece& Other, double Eps,
                 std::vector<TCrossRec>& List, std::vector<TStretch>& Stretches) {
  const auto ParamAt = [&](double U) { return FilteredRoot(Cut.CurveParam(U)); };
  const TPieceCrossing Crossing(Cut, Other, Eps);
  for (const TPieceContact& Contact : Crossing.Contacts()) {
    const TPoint2D Pt = Cut.Eval(Contact.U1);
    TGeometryUtils::AddCrossPt(List, Pt, ParamAt(Contact.U1),
                               Pt.DistanceTo(Other.Eval(Contact.U2)));
  }
  for (const TPieceOverlap& Overlap : Crossing.Overlaps()) {
    Stretches.emplace_back(ParamAt(Overlap.From.U1), ParamAt(Overlap.To.U1));
  }
}

double SlackFor(double Eps, const TRect2D& A, const TRect2D& B) {
  const TRect2D Both = A.Union(B);
  return ToleranceWithRounding(Eps, std::max({std::abs(Both.Min.X), std::abs(Both.Min.Y),
                                              std::abs(Both.Max.X), std::abs(Both.Max.Y)}));
}

void CrossWithPiece(const TBezierSegment2D& Bezier, double From, double To,
                    const TCurvePiece& Other, int Depth, double Eps, std::vector<TCrossRec>& List,
                    std::vector<TStretch>& Stretches) {
  TAppendGuard ListGuard(List);
  TAppendGuard StretchGuard(Stretches);
  const auto CrossPart = [&](const TCurvePiece& Part) {
    CrossPieces(Part, Other, Eps, List, Stretches);
  };
  VisitParts(Bezier, From, To, Other.Box, std::min(Depth, kMostTurns),
             SlackFor(Eps, ControlBox(Bezier), Other.Box), CrossPart);
  ListGuard.Keep();
  StretchGuard.Keep();
}

// --- What was found, sorted out ---

/// All control points lie within `Tol` of one line; `Unit` is its direction, from the start to the
/// end, or to the farthest control point of a curve that comes back to its start.
bool IsStraight(const TBezierSegment2D& B, double Tol, TPoint2D& Unit) {
  const TPoint2D Ways[] = {B.P3 - B.P0, B.P1 - B.P0, B.P2 - B.P0};
  TPoint2D Way = Ways[0];
  if (!(Way.Mag() > Tol)) Way = Ways[1].Mag() >= Ways[2].Mag() ? Ways[1] : Ways[2];
  Unit = Way.Normal();
  return std::all_of(std::begin(Ways), std::end(Ways),
                     [&](const TPoint2D& V) { return std::abs(Unit.CrossMul(V)) <= Tol; });
}

/// A curve with what it has in common with the other shape, both scaled into the safe range.
class TBezierMeeting {
 public:
  TBezierMeeting(const TBezierSegment2D& Bezier, const TCurvePiece& Other, double Eps)
      : FOriginal(Bezier), FBezier(Bezier), FOther(Other), FTol(Eps) {
    const TCurvePiece Whole = PieceOf(Bezier, 0.0, 1.0);
    const TRect2D Box = ControlBox(Bezier);
    const double Magnitude = std::max({Other.Magnitude(), std::abs(Box.Min.X), std::abs(Box.Min.Y),
                                       std::abs(Box.Max.X), std::abs(Box.Max.Y)});
    FIsFinite = Whole.IsFinite() && Other.IsFinite();
    FOriginalTol = FTol = ToleranceWithRounding(Eps, Magnitude);
    int Exponent = 0;
    std::frexp(Magnitude, &Exponent);
    if (!FIsFinite || Magnitude == 0.0 || std::abs(Exponent) <= kSafeExponent) return;
    const double Factor = std::ldexp(1.0, std::clamp(-Exponent, -1000, 1000));
    FBezier = {Bezier.P0 * Factor, Bezier.P1 * Factor, Bezier.P2 * Factor, Bezier.P3 * Factor};
    FOther = Other.Scaled(Factor);
    FTol *= Factor;
  }

  const TBezierSegment2D& Bezier() const { return FBezier; }
  const TCurvePiece& Other() const { return FOther; }
  double Tol() const { return FTol; }
  bool IsFinite() const { return FIsFinite; }
  std::vector<TCrossRec>& List() { return FList; }
  std::vector<TStretch>& Stretches() { return FStretches; }

  /// What the curve covers of a straight line, as lines and nothing twice. False when the curve is
  /// not straight.
  bool TakeStraightStretches(std::vector<TVLine2D>& Lines) {
    TPoint2D Unit;
    if (FStretches.empty() || !IsStraight(FBezier, FTol, Unit)) return false;
    const auto Along = [&](double T) { return Unit.DotMul(FBezier.EvalPoint(T) - FBezier.P0); };
    for (auto& [From, To] : FStretches) {
      if (Along(From) > Along(To)) std::swap(From, To);
    }
    std::stable_sort(FStretches.begin(), FStretches.end(),
                     [&](const auto& A, const auto& B) { return Along(A.first) < Along(B.first); });
    const std::size_t First = Lines.size();
    double Reach = 0.0;
    for (const auto& [From, To] : FStretches) {
      if (Lines.size() == First || Along(From) > Reach + FTol) {
        Lines.emplace_back(FOriginal.EvalPoint(From), FOriginal.EvalPoint(To));
        Reach = Along(To);
      } else if (Along(To) > Reach) {
        Lines.back().EndPoint = FOriginal.EvalPoint(To);
        Reach = Along(To);
      }
    }
    std::erase_if(FList, [&](const TCrossRec& Rec) {
      return std::any_of(Lines.begin() + static_cast<std::ptrdiff_t>(First), Lines.end(),
                         [&](const TVLine2D& Line) {
                           return Line.IsPointNearBySegment(FOriginal.EvalPoint(Rec.Param),
                                                            FOriginalTol);
                         });
    });
    FStretches.clear();
    return true;
  }

  /// Stretches that go on into each other are one, and no crossing lies on a stretch.
  void JoinStretches() {
    if (FStretches.empty()) return;
    std::stable_sort(FStretches.begin(), FStretches.end());
    std::vector<TStretch> Joined;
    for (const TStretch& Stretch : FStretches) {
      if (!Joined.empty() && IsOnePlace(Joined.back().second, Stretch.first)) {
        Joined.back().second = std::max(Joined.back().second, Stretch.second);
      } else {
        Joined.push_back(Stretch);
      }
    }
    FStretches = std::move(Joined);
    for (const TStretch& Stretch : FStretches) {
      const TBezierSegment2D Part = PartOf(FBezier, Stretch);
      std::erase_if(FList, [&](const TCrossRec& Rec) {
        double T = 0.0;
        TPoint2D Foot;
        return Part.DistanceTo(Rec.Pt, FTol, T, Foot) <= FTol;
      });
    }
  }

  /// Crossings with nothing wider than the tolerance between the curves from one to the next are
  /// one: the place where the curves come nearer.
  void JoinCrossings() {
    if (FList.size() < 2) return;
    std::stable_sort(FList.begin(), FList.end(),
                     [](const TCrossRec& A, const TCrossRec& B) { return A.Param < B.Param; });
    std::vector<TCrossRec> Joined;
    for (const TCrossRec& Rec : FList) {
      if (Joined.empty() || !StaysClose(Joined.back().Param, Rec.Param)) {
        Joined.push_back(Rec);
      } else if (Rec.Dist < Joined.back().Dist) {
        Joined.back() = Rec;
      }
    }
    FList = std::move(Joined);
  }

  void GivePoints(std::vector<TPoint2D>& Points, std::vector<double>& Params) {
    for (TCrossRec& Rec : FList) Rec.Pt = FOriginal.EvalPoint(Rec.Param);
    std::erase_if(FList, [](const TCrossRec& Rec) { return !TPoint2DUtils::IsFinite(Rec.Pt); });
    TGeometryUtils::RemoveCloseCrossPts(FList, Points, Params, FOriginalTol);
  }

  TBezierSegment2D OriginalPart(const TStretch& Stretch) const {
    return PartOf(FOriginal, Stretch);
  }
  TPoint2D PointAt(double Param) const { return FOriginal.EvalPoint(Param); }

 private:
  static TBezierSegment2D PartOf(const TBezierSegment2D& Whole, const TStretch& Stretch) {
    const auto Parts = TGeometryUtils::SplitBezier(Whole, {Stretch.first, Stretch.second});
    return Parts[Stretch.first > 0.0 && Parts.size() > 1 ? 1 : 0];
  }

  /// The next stretch starts where the last one ends, or before.
  bool IsOnePlace(double End, double Start) const {
    if (Start <= End) return true;
    const TPoint2D P = FBezier.EvalPoint(End);
    return P.Equals(FBezier.EvalPoint(Start), FTol) &&
           P.Equals(FBezier.EvalPoint((End + Start) / 2), FTol);
  }

  /// Nothing wider than the tolerance lies between the curves from one parameter to the other, and
  /// what lies beside is one way along the other curve: a branch of it that crosses is a place of
  /// its own.
  bool StaysClose(double From, double To) const {
    const auto PointAtStep = [&](double Step) {
      return FBezier.EvalPoint(std::lerp(From, To, Step));
    };
    double Distance = 0.0;
    for (const double Step : {0.5, 0.25, 0.75, 0.125, 0.875}) {  // few come further than these
      const TPoint2D P = PointAtStep(Step);
      if (!FOther.MayReach(P, FTol)) return false;
      FOther.Nearest(P, Distance);
      if (!(Distance <= FTol)) return false;
    }
    TPoint2D Last = PointAtStep(0.0);
    double LastFoot = FOther.Nearest(Last, Distance);
    for (int Step = 1; Step <= kStepsBetween; ++Step) {
      const TPoint2D Next = PointAtStep(Step * (1.0 / kStepsBetween));
      const double Foot = FOther.Nearest(Next, Distance);
      if (!(Distance <= FTol)) return false;
      // On one way the half of a step is near by. Only a cubic has branches.
      const bool IsOneWay =
          FOther.Kind != TPieceKind::Bezier ||
          FOther.Eval((LastFoot + Foot) / 2).Equals(Next, 2.0 * (Last.DistanceTo(Next) + FTol));
      if (!IsOneWay) return false;
      Last = Next;
      LastFoot = Foot;
    }
    return true;
  }

  const TBezierSegment2D FOriginal;
  TBezierSegment2D FBezier;
  TCurvePiece FOther;
  double FTol;
  double FOriginalTol = 0.0;
  bool FIsFinite = false;
  std::vector<TCrossRec> FList;
  std::vector<TStretch> FStretches;
};

}  // namespace

void TGeometryUtils::DoBezierCrossWithSegline(const TBezierSegment2D& Bezier, double From,
                                              double To, const TVLine2D& Line, int Depth,
                                              double Eps, std::vector<TCrossRec>& List,
                                              std::vector<TStretch>& Stretches) {
  CrossWithPiece(Bezier, From, To, PieceOf(Line), Depth, Eps, List, Stretches);
}

void TGeometryUtils::DoBezierCrossWithArc(const TBezierSegment2D& Bezier, double From, double To,
                                          const TVArc2D& Arc, int Depth, double Eps,
                                          std::vector<TCrossRec>& List,
                                          std::vector<TStretch>& Stretches) {
  CrossWithPiece(Bezier, From, To, PieceOf(Arc), Depth, Eps, List, Stretches);
}

void TGeometryUtils::DoBezierCrossWithBezier(const TBezierSegment2D& A, double FromA, double ToA,
                                             const TBezierSegment2D& B, double FromB, double ToB,
                                             int Depth, double Eps, std::vector<TCrossRec>& List,
                                             std::vector<TStretch>& Stretches) {
  const TRect2D BoxOfB = ControlBox(B);
  const double Slack = SlackFor(Eps, ControlBox(A), BoxOfB);
  std::vector<TCurvePiece> PartsOfB;
  const auto Collect = [&](const TCurvePiece& Part) { PartsOfB.push_back(Part); };
  const int Levels = std::min(Depth, kMostTurns);
  VisitParts(B, FromB, ToB, ControlBox(A), Levels, Slack, Collect);
  TAppendGuard ListGuard(List);
  TAppendGuard StretchGuard(Stretches);
  const auto CrossPart = [&](const TCurvePiece& PartOfA) {
    for (const TCurvePiece& PartOfB : PartsOfB) {
      CrossPieces(PartOfA, PartOfB, Eps, List, Stretches);
    }
  };
  VisitParts(A, FromA, ToA, BoxOfB, Levels, Slack, CrossPart);
  ListGuard.Keep();
  StretchGuard.Keep();
}

void TGeometryUtils::BezierCrossWithSegline(const TBezierSegment2D& Bezier, const TVLine2D& Line,
                                            double Eps, std::vector<TPoint2D>& Points,
                                            std::vector<TVLine2D>& Lines,
                                            std::vector<double>* Params) {
  TBezierMeeting Meeting(Bezier, PieceOf(Line), Eps);
  if (!Meeting.IsFinite()) return;
  DoBezierCrossWithSegline(Meeting.Bezier(), 0.0, 1.0, {Meeting.Other().Start, Meeting.Other().End},
                           kMostTurns, Meeting.Tol(), Meeting.List(), Meeting.Stretches());
  TAppendGuard LineGuard(Lines);
  if (!Meeting.TakeStraightStretches(Lines)) {
    Meeting.JoinStretches();
    for (const auto& [From, To] : Meeting.Stretches()) {
      Lines.emplace_back(Meeting.PointAt(From), Meeting.PointAt(To));
    }
  }
  Meeting.JoinCrossings();
  std::vector<double> OwnParams;
  Meeting.GivePoints(Points, Params ? *Params : OwnParams);
  LineGuard.Keep();
}

void TGeometryUtils::BezierCrossWithArc(const TBezierSegment2D& Bezier, const TVArc2D& Arc,
                                        double Eps, std::vector<TPoint2D>& Points,
                                        std::vector<double>& Params) {
  TBezierMeeting Meeting(Bezier, PieceOf(Arc), Eps);
  if (!Meeting.IsFinite()) return;
  CrossWithPiece(Meeting.Bezier(), 0.0, 1.0, Meeting.Other(), kMostTurns, Meeting.Tol(),
                 Meeting.List(), Meeting.Stretches());
  Meeting.JoinStretches();
  Meeting.JoinCrossings();
  for (const auto& [From, To] : Meeting.Stretches()) {
    for (const double Param : {From, To}) {
      AddCrossPt(Meeting.List(), Meeting.PointAt(Param), Param, 0.0);
    }
  }
  Meeting.GivePoints(Points, Params);
}

void TGeometryUtils::BezierCrossWithBezier(const TBezierSegment2D& A, const TBezierSegment2D& B,
                                           double Eps, std::vector<TPoint2D>& Points,
                                           std::vector<TVLine2D>& Lines,
                                           std::vector<TBezierSegment2D>& Overlaps) {
  if (IsBezierOverlap(A, B, Eps, Overlaps)) return;
  TCurvePiece WholeOfB = PieceOf(B, 0.0, 1.0);
  WholeOfB.Box = ControlBox(B);  // it may turn back
  TBezierMeeting Meeting(A, WholeOfB, Eps);
  if (!Meeting.IsFinite()) return;
  DoBezierCrossWithBezier(Meeting.Bezier(), 0.0, 1.0, Meeting.Other().Bezier(), 0.0, 1.0,
                          kMostTurns, Meeting.Tol(), Meeting.List(), Meeting.Stretches());
  TAppendGuard LineGuard(Lines);
  TAppendGuard OverlapGuard(Overlaps);
  if (!Meeting.TakeStraightStretches(Lines)) {
    Meeting.JoinStretches();
    for (const TStretch& Stretch : Meeting.Stretches()) {
      Overlaps.push_back(Meeting.OriginalPart(Stretch));
    }
  }
  Meeting.JoinCrossings();
  std::vector<double> Params;
  Meeting.GivePoints(Points, Params);
  LineGuard.Keep();
  OverlapGuard.Keep();
}

}  // namespace tarnalgo
