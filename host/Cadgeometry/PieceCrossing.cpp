#include "host/Cadgeometry/PieceCrossing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "host/Cadgeometry/BernsteinRoots.h"
#include "host/Cadgeometry/CubicCrossing.h"
#include "host/Cadgeometry/Nearest.h"
#include "host/Cadtypes/ExtendedPoint.h"

namespace tarnalgo {

namespace {

/// What a contact is, by how well it names the place: of several within the tolerance the highest
/// stays.
enum class TContactRank { Cut, Crossing, Tangent, End };

struct TRankedContact {
  double U1 = 0.0;
  double U2 = 0.0;
  TContactRank Rank = TContactRank::Crossing;
  bool IsEnd = false;  // an end of one of the pieces, so that an overlap may start or stop here
};

bool IsInside(double U) {
  return U >= 0.0 && U <= 1.0;
}

/// U of the direction of `P` from the centre, −1 off the arc.
double ArcParam(const TCurvePiece& Arc, const TPoint2D& P) {
  double Distance = 0.0;
  const double U = NearestOnArc(Arc.Arc, Arc.Start, Arc.End, P, Distance);
  // Off the arc the nearest place is an end, and the ends have been looked at on their own.
  return U > 0.0 && U < 1.0 ? U : -1.0;
}

/// Gathers everything the two pieces have in common, then sorts out what is one and the same.
class TMeeting {
 public:
  TMeeting(const TCurvePiece& A, const TCurvePiece& B, double Tol) : FA(A), FB(B), FTol(Tol) {}

  void FindTouchingEnds() {
    for (const double End : {0.0, 1.0}) {
      TouchBy(FA, FB, End, [&](double U, TContactRank Rank) { Add({End, U, Rank, true}); });
      TouchBy(FB, FA, End, [&](double U, TContactRank Rank) { Add({U, End, Rank, true}); });
    }
    SortOut();
  }

  void FindCrossings() {
    if (FA.Kind == TPieceKind::Bezier && FB.Kind == TPieceKind::Bezier) return CrossCubics();
    // The simpler piece first; `Add` puts the parameters back in their order.
    FIsSwapped = FA.Kind > FB.Kind;
    const TCurvePiece& Simple = FIsSwapped ? FB : FA;
    const TCurvePiece& Other = FIsSwapped ? FA : FB;
    if (Other.Kind == TPieceKind::Line) {
      CrossLines(Simple, Other);
    } else if (Simple.Kind == TPieceKind::Line) {
      Other.Kind == TPieceKind::Arc ? CrossLineArc(Simple, Other) : CrossLineCubic(Simple, Other);
    } else {
      Other.Kind == TPieceKind::Arc ? CrossArcs(Simple, Other) : CrossArcCubic(Simple, Other);
    }
    FIsSwapped = false;
    SortOut();
  }

  /// Hands over the runs of contacts along which the pieces stay together.
  void Give(TPieceCrossing::TContacts& Contacts, TPieceCrossing::TOverlaps& Overlaps) const {
    for (int First = 0; First < FContacts.Count();) {
      int Last = First;
      while (Last + 1 < FContacts.Count() && StaysClose(FContacts[Last], FContacts[Last + 1])) {
        ++Last;
      }
      GiveRun(First, Last, Contacts, Overlaps);
      First = Last + 1;
    }
  }

 private:
  using TRanked = TPieceCrossing::TShortList<TRankedContact, TPieceCrossing::kMostContacts>;

  // --- Contacts ---

  /// An end of `Piece` within the tolerance of `Other`.
  template <class TAdd>
  void TouchBy(const TCurvePiece& Piece, const TCurvePiece& Other, double End,
               TAdd AddTouch) const {
    const TPoint2D& P = End == 0.0 ? Piece.Start : Piece.End;
    if (!BoxesMeet(TRect2D(P, P), Other.Box, FTol)) return;
    const bool IsCut = End == 0.0 ? Piece.StartIsCut : Piece.EndIsCut;
    const auto AddAt = [&](double U) {
      AddTouch(U, !IsCut                            ? TContactRank::End
                  : RunsAlong(Piece, End, Other, U) ? TContactRank::Tangent
                                                    : TContactRank::Cut);
    };
    if (P.Equals(Other.Start, FTol)) return AddAt(0.0);
    if (P.Equals(Other.End, FTol)) return AddAt(1.0);
    if (!Other.MayReach(P, FTol)) return;
    double Distance = 0.0;
    const double U = Other.Nearest(P, Distance);
    if (Distance <= FTol) AddAt(U);
  }

  /// The pieces have one direction there, so that place is where they touch, better than a root
  /// beside it. False where either has none.
  static bool RunsAlong(const TCurvePiece& A, double UA, const TCurvePiece& B, double UB) {
    const TPoint2D WayA = A.Derivative(UA);
    const TPoint2D WayB = B.Derivative(UB);
    return WayA != TPoint2D::FZero && WayB != TPoint2D::FZero &&
           WayA.IsParallelTo(WayB, kParallelSine);
  }

  void Add(TRankedContact Contact) {
    if (FContacts.IsFull()) SortOut();
    FContacts.Add(Contact);
  }

  void AddFound(double USimple, double UOther, TContactRank Rank) {
    if (!IsInside(USimple) || !IsInside(UOther)) return;
    if (FIsSwapped) std::swap(USimple, UOther);
    Add({USimple, UOther, Rank, false});
  }

  /// Ascending in U1, one contact a place.
  void SortOut() {
    std::sort(FContacts.begin(), FContacts.end(),
              [](const TRankedContact& L, const TRankedContact& R) {
                return L.U1 != R.U1 ? L.U1 < R.U1 : L.U2 < R.U2;
              });
    int Kept = 0;
    for (int I = 0; I < FContacts.Count(); ++I) {
      if (Kept > 0 && IsSamePlace(FContacts[Kept - 1], FContacts[I])) {
        TRankedContact& Before = FContacts[Kept - 1];
        const bool IsEnd = Before.IsEnd || FContacts[I].IsEnd;
        if (FContacts[I].Rank > Before.Rank) Before = FContacts[I];
        Before.IsEnd = IsEnd;
      } else {
        FContacts[Kept++] = FContacts[I];
      }
    }
    FContacts.Truncate(Kept);
  }

  /// Neither the places nor the way between them are further apart than the tolerance: the start
  /// and the end of a circle are two places.
  bool IsSamePlace(const TRankedContact& L, const TRankedContact& R) const {
    const TPoint2D P = FA.Eval(L.U1);
    return P.Equals(FA.Eval(R.U1), FTol) && P.Equals(FA.Eval((L.U1 + R.U1) / 2), FTol);
  }

  // --- Runs ---

  /// The pieces stay within the tolerance from one contact to the next.
  bool StaysClose(const TRankedContact& L, const TRankedContact& R) const {
    if (FA.Kind == TPieceKind::Line && FB.Kind == TPieceKind::Line) return true;  // convex
    // The distance of two circles, or of a line and a circle, has one extremum in between. Two
    // cubics that agree in nine points are one.
    static constexpr double kFew[] = {0.5, 0.25, 0.75};
    static constexpr double kMany[] = {0.5, 0.25, 0.75, 0.125, 0.875, 0.375, 0.625};
    const bool HasCubic = FA.Kind == TPieceKind::Bezier || FB.Kind == TPieceKind::Bezier;
    const double* const Places = HasCubic ? kMany : kFew;
    return std::all_of(Places, Places + (HasCubic ? 7 : 3), [&](double Place) {
      double Distance = 0.0;
      FB.Nearest(FA.Eval(L.U1 + (R.U1 - L.U1) * Place), Distance);
      return Distance <= FTol;
    });
  }

  void GiveRun(int First, int Last, TPieceCrossing::TContacts& Contacts,
               TPieceCrossing::TOverlaps& Overlaps) const {
    int FirstOverlap = Overlaps.Count();
    int EndBefore = -1;
    int Best = First;
    bool HasOverlap = false;
    for (int I = First; I <= Last; ++I) {
      if (FContacts[I].Rank > FContacts[Best].Rank) Best = I;
      if (!FContacts[I].IsEnd) continue;
      if (EndBefore >= 0) {
        Overlaps.Add(OverlapBetween(FContacts[EndBefore], FContacts[I]));
        HasOverlap = true;
      }
      EndBefore = I;
    }
    const TPieceContact BestContact{FContacts[Best].U1, FContacts[Best].U2};
    if (!HasOverlap) Contacts.Add(BestContact);
    for (; FirstOverlap < Overlaps.Count(); ++FirstOverlap) {
      Overlaps[FirstOverlap].Best = BestContact;
    }
  }

  TPieceOverlap OverlapBetween(const TRankedContact& L, const TRankedContact& R) const {
    TPieceOverlap Overlap{{L.U1, L.U2}, {R.U1, R.U2}, {}};
    if (!FB.IsCircle()) return Overlap;
    // The seam of a circle is 0 or 1: which one follows from the sense of the overlap.
    const double Middle = (L.U1 + R.U1) / 2;
    double Distance = 0.0;
    const double OnB = FB.Nearest(FA.Eval(Middle), Distance);
    const bool IsForward = FA.Derivative(Middle).DotMul(FB.Derivative(OnB)) >= 0.0;
    const auto AtSeam = [](double U) { return U == 0.0 || U == 1.0; };
    if (AtSeam(Overlap.From.U2)) Overlap.From.U2 = IsForward ? 0.0 : 1.0;
    if (AtSeam(Overlap.To.U2)) Overlap.To.U2 = IsForward ? 1.0 : 0.0;
    return Overlap;
  }

  // --- Crossings of the insides, by kind ---

  void CrossLines(const TCurvePiece& A, const TCurvePiece& B) {
    const TExtPoint2D WayA = TExtPoint2D(A.End) - TExtPoint2D(A.Start);
    const TExtPoint2D WayB = TExtPoint2D(B.End) - TExtPoint2D(B.Start);
    const TExtPoint2D Between = TExtPoint2D(B.Start) - TExtPoint2D(A.Start);
    const long double Sine = WayA.CrossMul(WayB);  // times both lengths
    if (Sine == 0.0L) return;                      // exact: parallel lines meet in their ends only
    AddFound(static_cast<double>(Between.CrossMul(WayB) / Sine),
             static_cast<double>(Between.CrossMul(WayA) / Sine), TContactRank::Crossing);
  }

  void CrossLineArc(const TCurvePiece& Line, const TCurvePiece& Arc) {
    const TPoint2D Way = Line.End - Line.Start;
    const double Length = Way.Mag();
    if (!(Length > 0.0)) return;
    const TPoint2D Unit = Way / Length;
    const TPoint2D ToCenter = Arc.Arc.Center - Line.Start;
    const double Along = ToCenter.DotMul(Unit);
    const double Height = Unit.CrossMul(ToCenter);
    const double Radius = Arc.Arc.Radius;
    const auto AddAt = [&](double Reach, TContactRank Rank) {
      const double U = (Along + Reach) / Length;
      AddFound(U, ArcParam(Arc, Lerp(Line.Start, Line.End, U)), Rank);
    };
    if (std::abs(std::abs(Height) - Radius) <= FTol) AddAt(0.0, TContactRank::Tangent);
    const double Square = (Radius - std::abs(Height)) * (Radius + std::abs(Height));
    if (!(Square > 0.0)) return;
    AddAt(-std::sqrt(Square), TContactRank::Crossing);
    AddAt(std::sqrt(Square), TContactRank::Crossing);
  }

  void CrossArcs(const TCurvePiece& A, const TCurvePiece& B) {
    const TPoint2D Between = B.Arc.Center - A.Arc.Center;
    const double Distance = Between.Mag();
    if (!(Distance > 0.0)) return;  // one centre: one circle, or none in common
    const TPoint2D Unit = Between / Distance;
    const double RadiusA = A.Arc.Radius;
    const double RadiusB = B.Arc.Radius;
    const auto AddAt = [&](const TPoint2D& P, TContactRank Rank) {
      AddFound(ArcParam(A, P), ArcParam(B, P), Rank);
    };
    const bool TouchesOutside = std::abs(Distance - (RadiusA + RadiusB)) <= FTol;
    const bool TouchesInside = std::abs(Distance - std::abs(RadiusA - RadiusB)) <= FTol;
    if (TouchesOutside || TouchesInside) {
      const double Side = TouchesInside && RadiusA < RadiusB ? -RadiusA : RadiusA;
      AddAt(A.Arc.Center + Unit * Side, TContactRank::Tangent);
    }
    const double Along = (Distance + (RadiusA - RadiusB) * ((RadiusA + RadiusB) / Distance)) / 2;
    const double Square = (RadiusA - Along) * (RadiusA + Along);
    if (!(Square > 0.0)) return;
    const TPoint2D Foot = A.Arc.Center + Unit * Along;
    const TPoint2D Aside = Unit.RotateCcw90() * std::sqrt(Square);
    AddAt(Foot - Aside, TContactRank::Crossing);
    AddAt(Foot + Aside, TContactRank::Crossing);
  }

  /// Crossings of a cubic with a curve from which it has the signed distance `SignedDistance`, of
  /// extremes at `Extremes`: between two of them it is monotone.
  template <class TExtremes, class TDistance, class TAddAt>
  void CrossByDistance(const TExtremes& Extremes, TDistance SignedDistance, TAddAt AddAt) {
    double Low = 0.0;
    double AtLow = SignedDistance(0.0);
    const auto StepTo = [&](double High) {
      const double AtHigh = SignedDistance(High);
      if ((AtLow < 0.0) != (AtHigh < 0.0)) {
        AddAt(RootBetween(SignedDistance, Low, AtLow, High, AtHigh), TContactRank::Crossing);
      }
      Low = High;
      AtLow = AtHigh;
    };
    for (const double T : Extremes) {
      StepTo(T);
      if (std::abs(AtLow) <= FTol) AddAt(T, TContactRank::Tangent);
    }
    StepTo(1.0);
  }

  void CrossLineCubic(const TCurvePiece& Line, const TCurvePiece& Cubic) {
    const TPoint2D Way = Line.End - Line.Start;
    const double Length = Way.Mag();
    if (!(Length > 0.0)) return;
    const TPoint2D Unit = Way / Length;
    const TBezierSegment2D B = Cubic.Bezier();
    const TBernsteinRoots<2> Extremes(
        {Unit.CrossMul(B.P1 - B.P0), Unit.CrossMul(B.P2 - B.P1), Unit.CrossMul(B.P3 - B.P2)});
    CrossByDistance(
        Extremes, [&](double T) { return Unit.CrossMul(B.EvalPoint(T) - Line.Start); },
        [&](double T, TContactRank Rank) {
          AddFound((B.EvalPoint(T) - Line.Start).DotMul(Unit) / Length, T, Rank);
        });
  }

  void CrossArcCubic(const TCurvePiece& Arc, const TCurvePiece& Cubic) {
    const TBezierSegment2D B = Cubic.Bezier();
    const TPoint2D Center = Arc.Arc.Center;
    // (B − C)·B' / 3 in Bernstein form: the extremes of the distance from the centre.
    const TPoint2D Q[] = {B.P0 - Center, B.P1 - Center, B.P2 - Center, B.P3 - Center};
    const TPoint2D D[] = {B.P1 - B.P0, B.P2 - B.P1, B.P3 - B.P2};
    static constexpr double kCubic[] = {1, 3, 3, 1};
    static constexpr double kQuadratic[] = {1, 2, 1};
    static constexpr double kQuintic[] = {1, 5, 10, 10, 5, 1};
    TBernsteinRoots<5>::TCoefficients F{};
    for (std::size_t I = 0; I < 4; ++I) {
      for (std::size_t J = 0; J < 3; ++J) {
        F[I + J] += Q[I].DotMul(D[J]) * (kCubic[I] * kQuadratic[J] / kQuintic[I + J]);
      }
    }
    const auto PointFromCenter = [&](double T) {
      return TBezierSegment2D(Q[0], Q[1], Q[2], Q[3]).EvalPoint(T);
    };
    CrossByDistance(
        TBernsteinRoots<5>(F), [&](double T) { return PointFromCenter(T).Mag() - Arc.Arc.Radius; },
        [&](double T, TContactRank Rank) { AddFound(ArcParam(Arc, B.EvalPoint(T)), T, Rank); });
  }

  /// Only what the ends have not shown to overlap is searched.
  void CrossCubics() {
    TShortSpans FreeA;
    TShortSpans FreeB;
    FindFreeSpans(FreeA, FreeB);
    for (const TPieceSpan& A : FreeA) {
      for (const TPieceSpan& B : FreeB) {
        for (const auto& [U1, U2] : CrossCubicSpans(FA, A, FB, B, FTol)) {
          Add({U1, U2, TContactRank::Crossing, false});
        }
      }
    }
    SortOut();
  }

  using TShortSpans = TPieceCrossing::TShortList<TPieceSpan, 2>;

  /// The spans of both pieces that no overlap covers.
  void FindFreeSpans(TShortSpans& FreeA, TShortSpans& FreeB) const {
    TPieceSpan RestA;
    TPieceSpan RestB;
    bool HasOverlap = false;
    for (int I = 0; I + 1 < FContacts.Count(); ++I) {
      const TRankedContact& L = FContacts[I];
      const TRankedContact& R = FContacts[I + 1];
      if (!StaysClose(L, R)) continue;
      // Monotone pieces are together at most once, so the covered spans are one on each.
      RestA = HasOverlap ? TPieceSpan{RestA.From, R.U1} : TPieceSpan{L.U1, R.U1};
      const double Low = std::min(L.U2, R.U2);
      const double High = std::max(L.U2, R.U2);
      RestB = HasOverlap ? TPieceSpan{std::min(RestB.From, Low), std::max(RestB.To, High)}
                         : TPieceSpan{Low, High};
      HasOverlap = true;
    }
    if (!HasOverlap) {
      FreeA.Add({});
      FreeB.Add({});
      return;
    }
    if (RestA.From > 0.0) FreeA.Add({0.0, RestA.From});
    if (RestA.To < 1.0) FreeA.Add({RestA.To, 1.0});
    if (RestB.From > 0.0) FreeB.Add({0.0, RestB.From});
    if (RestB.To < 1.0) FreeB.Add({RestB.To, 1.0});
  }

  const TCurvePiece& FA;
  const TCurvePiece& FB;
  const double FTol;
  TRanked FContacts;
  bool FIsSwapped = false;
};

}  // namespace

double ToleranceWithRounding(double Tol, double Magnitude) {
  const double Rounding = 4.0 * std::numeric_limits<double>::epsilon() * Magnitude;
  return Tol > Rounding ? Tol : Rounding;  // a NaN counts as 0
}

TPieceCrossing::TPieceCrossing(const TCurvePiece& A, const TCurvePiece& B, double Tol) {
  const double Slack = ToleranceWithRounding(Tol, std::max(A.Magnitude(), B.Magnitude()));
  if (!BoxesMeet(A.Box, B.Box, Slack)) return;
  TMeeting Meeting(A, B, Slack);
  Meeting.FindTouchingEnds();
  Meeting.FindCrossings();
  Meeting.Give(FContacts, FOverlaps);
}

}  // namespace tarnalgo
