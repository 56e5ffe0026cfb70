#include "host/Cadgeometry/CubicCrossing.h"

#include <algorithm>
#include <cmath>

#include "host/Cadgeometry/BernsteinRoots.h"
#include "host/Cadgeometry/Nearest.h"

namespace tarnalgo {

namespace {

/// Count: the most pairs of parts looked at, and the most places kept, before the rest is let go.
constexpr int kMostPairs = 1 << 16;
constexpr std::size_t kMostPlaces = 64;

/// Sine of the least angle between the directions of two parts for which Newton's method is tried.
constexpr double kClearSine = 0.05;

/// Parameter: a part that spans less is not halved any more.
constexpr double kLeastSpan = 1e-13;

/// Ratio of lengths from which the longer part is halved although it is flat: the boxes of the two
/// tell more when they are of like size.
constexpr double kMuchLonger = 8.0;

/// Slope up to which a part is compared with another one as a graph over a direction.
constexpr double kSteepestSlope = 0.5;

/// Relative to the largest coordinate: what the comparison of two graphs rounds to, and what a
/// point of a cubic does.
constexpr double kGraphRounding = 1e-14;
constexpr double kPointRounding = 5e-16;

/// Share of the tolerance: nearer by less is rounding, magnified where the curves are flat.
constexpr double kPlainlyNearer = 1e-3;

constexpr int kNewtonSteps = 16;

/// A part of a cubic with the strip that holds it.
struct TPart {
  TBezierSegment2D Curve;
  TPieceSpan Span;
  TPoint2D Unit;     // direction of the chord, zero where the ends coincide
  double Low = 0.0;  // the strip: signed distances from the chord
  double High = 0.0;
  double Sine = 1.0;  // no direction of the part is further from the chord's than this

  TPart() = default;
  TPart(const TBezierSegment2D& ACurve, TPieceSpan ASpan) : Curve(ACurve), Span(ASpan) {
    Unit = (Curve.P3 - Curve.P0).Normal();
    const double D1 = Unit.CrossMul(Curve.P1 - Curve.P0);
    const double D2 = Unit.CrossMul(Curve.P2 - Curve.P0);
    Low = std::min({0.0, D1, D2});
    High = std::max({0.0, D1, D2});
    Sine =
        std::max({Turn(Curve.P1 - Curve.P0), Turn(Curve.P2 - Curve.P1), Turn(Curve.P3 - Curve.P2)});
  }

  double Flatness() const {
    // Without a chord the strip says nothing; the controls do.
    if (Unit == TPoint2D::FZero) {
      return std::max((Curve.P1 - Curve.P0).Mag(), (Curve.P2 - Curve.P0).Mag());
    }
    return High - Low;
  }
  bool IsShort() const { return Span.To - Span.From < kLeastSpan; }
  double ChordLength() const { return Curve.P0.DistanceTo(Curve.P3); }
  double Middle() const { return (Span.From + Span.To) / 2; }

  /// The other part lies wholly on one side of this part's strip.
  bool Misses(const TPart& Other, double Slack) const {
    const TPoint2D Controls[] = {Other.Curve.P0, Other.Curve.P1, Other.Curve.P2, Other.Curve.P3};
    double Least = kStartOfMinimum;
    double Most = -kStartOfMinimum;
    for (const TPoint2D& P : Controls) {
      const double D = Unit.CrossMul(P - Curve.P0);
      Least = std::min(Least, D);
      Most = std::max(Most, D);
    }
    return Least > High + Slack || Most < Low - Slack;
  }

  void Halve(TPart& Left, TPart& Right) const {
    TBezierSegment2D First;
    TBezierSegment2D Second;
    Curve.SplitMiddle(First, Second);
    Left = TPart(First, {Span.From, Middle()});
    Right = TPart(Second, {Middle(), Span.To});
  }

 private:
  double Turn(const TPoint2D& Leg) const {
    const TPoint2D Direction = Leg.Normal();
    return Unit.DotMul(Direction) > 0.0 || Direction == TPoint2D::FZero
               ? std::abs(Unit.CrossMul(Direction))
               : 1.0;
  }
};

struct TPair {
  TPart A;
  TPart B;
};

/// A part seen as a graph over a direction: X along it, Y across.
struct TGraph {
  TBezierSegment2D Curve;
  double Slope = 0.0;     // the steepest
  bool IsRising = true;   // X never falls, and the slope is moderate
  bool IsTurned = false;  // runs against the parameter of the part

  TGraph(const TBezierSegment2D& Part, const TPoint2D& Origin, const TPoint2D& Unit) {
    const auto InFrame = [&](const TPoint2D& P) {
      return TPoint2D(Unit.DotMul(P - Origin), Unit.CrossMul(P - Origin));
    };
    Curve = {InFrame(Part.P0), InFrame(Part.P1), InFrame(Part.P2), InFrame(Part.P3)};
    IsTurned = Curve.P3.X < Curve.P0.X;
    if (IsTurned) Curve = Curve.Reversed();
    for (const TPoint2D& Leg : {Curve.P1 - Curve.P0, Curve.P2 - Curve.P1, Curve.P3 - Curve.P2}) {
      if (Leg == TPoint2D::FZero) continue;
      IsRising = IsRising && std::abs(Leg.Y) <= kSteepestSlope * Leg.X;
      Slope = std::max(Slope, std::abs(Leg.Y) / Leg.X);
    }
  }

  /// Parameter at which X is reached, to rounding; `X` lies between the ends.
  double ParamAt(double X) const {
    if (X == Curve.P0.X) return 0.0;
    if (X == Curve.P3.X) return 1.0;
    double Low = 0.0;
    double High = 1.0;
    double T = (X - Curve.P0.X) / (Curve.P3.X - Curve.P0.X);
    for (int Step = 0; Step < 60 && Low < High; ++Step) {
      const double Off = Curve.EvalPoint(T).X - X;
      if (Off == 0.0) break;
      (Off < 0.0 ? Low : High) = T;
      const double Next = T - Off / Curve.Derivative(T).X;
      const double Last = T;
      T = Next > Low && Next < High ? Next : Low + (High - Low) / 2;
      if (std::abs(T - Last) <= 1e-15) break;
    }
    return T;
  }
};

TBezierSegment2D Restricted(const TBezierSegment2D& Whole, TPieceSpan Span) {
  TBezierSegment2D Result = Whole;
  TBezierSegment2D Dropped;
  if (Span.To < 1.0) Result.Split(Span.To, Result, Dropped);
  if (Span.From > 0.0) Result.Split(Span.From / Span.To, Dropped, Result);
  return Result;
}

class TCubicCrosser {
 public:
  TCubicCrosser(const TCurvePiece& A, const TCurvePiece& B, double Tol)
      : FA(A.Bezier()), FB(B.Bezier()), FTol(Tol) {
    const double Magnitude = std::max(A.Magnitude(), B.Magnitude());
    FRounding = kGraphRounding * Magnitude;
    // Were it coarser, chords of flat parts could pass each other by where the parts cross.
    FFlat = std::max(Tol / 4, FRounding);
    FSettled = std::max(Tol * 1e-3, kPointRounding * Magnitude);
  }

  void Search(TPieceSpan SpanA, TPieceSpan SpanB) {
    FOpen.push_back({TPart(Restricted(FA, SpanA), SpanA), TPart(Restricted(FB, SpanB), SpanB)});
    for (int Seen = 0; !FOpen.empty() && Seen < kMostPairs && FFound.size() < kMostPlaces; ++Seen) {
      const TPair Pair = FOpen.back();
      FOpen.pop_back();
      LookAt(Pair);
    }
  }

  std::vector<std::pair<double, double>> TakeFound() { return std::move(FFound); }

 private:
  void LookAt(const TPair& Pair) {
    const TPart& A = Pair.A;
    const TPart& B = Pair.B;
    if (BoxesAreApart(A, B) || A.Misses(B, FTol) || B.Misses(A, FTol)) return;
    if (DirectionsDiffer(A, B) && FindOnlyCrossing(A, B)) return;
    const bool IsFlatA = A.Flatness() <= FFlat || A.IsShort();
    const bool IsFlatB = B.Flatness() <= FFlat || B.IsShort();
    if (IsFlatA && IsFlatB) return LookAtFlat(A, B);
    if (LookAtGraphs(A, B)) return;
    Split(A, !IsFlatA, B, !IsFlatB);
  }

  /// Parts of a monotone cubic are boxed by their ends.
  bool BoxesAreApart(const TPart& A, const TPart& B) const {
    const auto Apart = [&](double A0, double A1, double B0, double B1) {
      return std::min(A0, A1) > std::max(B0, B1) + FTol ||
             std::min(B0, B1) > std::max(A0, A1) + FTol;
    };
    return Apart(A.Curve.P0.X, A.Curve.P3.X, B.Curve.P0.X, B.Curve.P3.X) ||
           Apart(A.Curve.P0.Y, A.Curve.P3.Y, B.Curve.P0.Y, B.Curve.P3.Y);
  }

  /// No direction of one is parallel to one of the other: at most one crossing.
  static bool DirectionsDiffer(const TPart& A, const TPart& B) {
    return std::abs(A.Unit.CrossMul(B.Unit)) > A.Sine + B.Sine + kClearSine;
  }

  bool FindOnlyCrossing(const TPart& A, const TPart& B) {
    double U1 = A.Middle();
    double U2 = B.Middle();
    if (!Polish(U1, U2)) return false;
    const bool IsInside =
        U1 >= A.Span.From && U1 <= A.Span.To && U2 >= B.Span.From && U2 <= B.Span.To;
    if (IsInside) Keep(U1, U2);
    return IsInside;
  }

  /// Newton's method for A(U1) = B(U2); false when it does not settle. The parameters may leave the
  /// range by the steps taken.
  bool Polish(double& U1, double& U2) const {
    for (int Step = 0; Step < kNewtonSteps; ++Step) {
      const TPoint2D Gap = FB.EvalPoint(U2) - FA.EvalPoint(U1);
      const TPoint2D WayA = FA.Derivative(U1);
      const TPoint2D WayB = FB.Derivative(U2);
      const double Sine = WayA.CrossMul(WayB);
      if (Sine == 0.0) return Gap == TPoint2D::FZero;
      const double Step1 = Gap.CrossMul(WayB) / Sine;
      const double Step2 = Gap.CrossMul(WayA) / Sine;
      if (!(std::abs(Step1) < 2.0 && std::abs(Step2) < 2.0)) return false;
      U1 += Step1;
      U2 += Step2;
      if (std::abs(Step1) <= 1e-15 && std::abs(Step2) <= 1e-15) return true;
    }
    return FA.EvalPoint(U1).Equals(FB.EvalPoint(U2), FSettled);
  }

  /// Both are as good as straight: the place where the chords come nearest, polished.
  void LookAtFlat(const TPart& A, const TPart& B) {
    double U1 = 0.0;
    double U2 = 0.0;
    NearestOfChords(A, B, U1, U2);
    if (!WithinTolerance(U1, U2)) Approach(U1, U2);
    KeepBest(A, B, U1, U2);
  }

  /// The crossing beside a place where the parts come near, or else the nearest approach.
  void KeepBest(const TPart& A, const TPart& B, double U1, double U2) {
    double Crossing1 = U1;
    double Crossing2 = U2;
    if (Polish(Crossing1, Crossing2) && IsNear(A, Crossing1) && IsNear(B, Crossing2)) {
      return Keep(ClampParam(Crossing1, 1.0), ClampParam(Crossing2, 1.0));
    }
    Approach(U1, U2);
    if (WithinTolerance(U1, U2)) Keep(U1, U2);
  }

  /// Two parts that run beside each other in one direction, told by the gap between them at equal
  /// places of that direction: true when they are apart by more than the tolerance all along, or
  /// nowhere apart by more, or by as good as the same everywhere. The gap of two parts bends far
  /// less than each of them does, so that this decides long before they are flat.
  bool LookAtGraphs(const TPart& A, const TPart& B) {
    const TGraph GraphA(A.Curve, A.Curve.P0, A.Unit);
    const TGraph GraphB(B.Curve, A.Curve.P0, A.Unit);
    if (!GraphA.IsRising || !GraphB.IsRising) return false;
    const double Low = std::max(GraphA.Curve.P0.X, GraphB.Curve.P0.X);
    const double High = std::min(GraphA.Curve.P3.X, GraphB.Curve.P3.X);
    if (Low > High) return true;  // near by their ends at most: other parts go on there
    const TPieceSpan CutA{GraphA.ParamAt(Low), GraphA.ParamAt(High)};
    const TPieceSpan CutB{GraphB.ParamAt(Low), GraphB.ParamAt(High)};
    if (!(CutA.From < CutA.To && CutB.From < CutB.To)) return false;
    const TBezierSegment2D OverA = Restricted(GraphA.Curve, CutA);
    const TBezierSegment2D OverB = Restricted(GraphB.Curve, CutB);
    const TPoint2D Gaps[] = {OverA.P0 - OverB.P0, OverA.P1 - OverB.P1, OverA.P2 - OverB.P2,
                             OverA.P3 - OverB.P3};
    const auto [Least, Most] = std::minmax({Gaps[0].Y, Gaps[1].Y, Gaps[2].Y, Gaps[3].Y});
    double Aside = 0.0;  // at equal parameters the places of the direction differ by so much
    for (const TPoint2D& Gap : Gaps) Aside = std::max(Aside, std::abs(Gap.X));
    const double Skew = std::min(GraphA.Slope, GraphB.Slope) * Aside;
    const double Slack = Skew + FRounding;
    const double Wide = FTol * (1.0 + std::max(GraphA.Slope, GraphB.Slope)) + Slack;
    if (Least > Wide || Most < -Wide) return true;
    // An even gap of about the tolerance would stay undecided however small the parts.
    const bool IsEven = Most - Least + Skew <= FFlat;
    if (!IsEven && std::max(Most, -Least) + Slack > FTol) return false;
    const double T = PlaceOfLeast({Gaps[0].Y, Gaps[1].Y, Gaps[2].Y, Gaps[3].Y});
    const double InA = CutA.From + T * (CutA.To - CutA.From);
    const double InB = GraphB.ParamAt(std::clamp(GraphA.Curve.EvalPoint(InA).X, Low, High));
    KeepBest(A, B, ParamOf(A, GraphA, InA), ParamOf(B, GraphB, InB));
    return true;
  }

  /// Where a gap is nothing, were it even between its ends; or else where it comes nearest to that.
  static double PlaceOfLeast(const TBernsteinRoots<3>::TCoefficients& Gap) {
    if ((Gap[0] < 0.0) != (Gap[3] < 0.0)) return Gap[0] / (Gap[0] - Gap[3]);
    double Best = std::abs(Gap[0]) <= std::abs(Gap[3]) ? 0.0 : 1.0;
    double Least = std::min(std::abs(Gap[0]), std::abs(Gap[3]));
    for (const double T : TBernsteinRoots<2>({Gap[1] - Gap[0], Gap[2] - Gap[1], Gap[3] - Gap[2]})) {
      const double AtT = std::abs(TBernsteinRoots<3>::Eval(Gap, T));
      if (AtT < Least) Best = T;
      Least = std::min(Least, AtT);
    }
    return Best;
  }

  static double ParamOf(const TPart& Part, const TGraph& Graph, double InGraph) {
    const double InPart = Graph.IsTurned ? 1.0 - InGraph : InGraph;
    return Part.Span.From + InPart * (Part.Span.To - Part.Span.From);
  }

  /// `U` lies in the part, with as much beside it as the part is wide.
  static bool IsNear(const TPart& Part, double U) {
    const double Width = Part.Span.To - Part.Span.From;
    return U >= std::max(0.0, Part.Span.From - Width) && U <= std::min(1.0, Part.Span.To + Width);
  }

  bool WithinTolerance(double U1, double U2) const {
    return FA.EvalPoint(U1).Equals(FB.EvalPoint(U2), FTol);
  }

  /// Where the chords cross, else where an end of one comes nearest to the other.
  static void NearestOfChords(const TPart& A, const TPart& B, double& U1, double& U2) {
    const TLine2D ChordA(A.Curve.P0, A.Curve.P3);
    const TLine2D ChordB(B.Curve.P0, B.Curve.P3);
    double Best = kStartOfMinimum;
    const auto Try = [&](double T1, double T2, double Distance) {
      if (!(Distance < Best)) return;
      Best = Distance;
      U1 = ParamAlong(A, T1);
      U2 = ParamAlong(B, T2);
    };
    const TPoint2D WayA = A.Curve.P3 - A.Curve.P0;
    const TPoint2D WayB = B.Curve.P3 - B.Curve.P0;
    const TPoint2D Between = B.Curve.P0 - A.Curve.P0;
    const double Sine = WayA.CrossMul(WayB);
    const double T1 = Between.CrossMul(WayB) / Sine;
    const double T2 = Between.CrossMul(WayA) / Sine;
    if (T1 > 0.0 && T1 < 1.0 && T2 > 0.0 && T2 < 1.0) Try(T1, T2, 0.0);
    for (const double End : {0.0, 1.0}) {
      double Distance = 0.0;
      const double OnB = NearestOnSegment(ChordB, ChordA.EvalPoint(End), Distance);
      Try(End, OnB, Distance);
      const double OnA = NearestOnSegment(ChordA, ChordB.EvalPoint(End), Distance);
      Try(OnA, End, Distance);
    }
  }

  /// The parameter at which a flat part is the fraction `T` along its chord, however unevenly it
  /// runs there: a straight cubic may rest at its ends.
  static double ParamAlong(const TPart& Part, double T) {
    const TGraph Graph(Part.Curve, Part.Curve.P0, Part.Unit);
    return ParamOf(Part, Graph, Graph.ParamAt(Graph.Curve.P3.X * T));
  }

  /// Steps towards the nearest approach of the two: Newton's method on the derivative of the square
  /// of the distance, for as long as it falls.
  void Approach(double& U1, double& U2) const {
    double Distance = FA.EvalPoint(U1).DistanceTo(FB.EvalPoint(U2));
    for (int Step = 0; Step < kNewtonSteps; ++Step) {
      const TPoint2D Gap = FA.EvalPoint(U1) - FB.EvalPoint(U2);
      const TPoint2D WayA = FA.Derivative(U1);
      const TPoint2D WayB = FB.Derivative(U2);
      const double H11 = WayA.DotMul(WayA) + Gap.DotMul(FA.SecondDerivative(U1));
      const double H22 = WayB.DotMul(WayB) - Gap.DotMul(FB.SecondDerivative(U2));
      const double H12 = -WayA.DotMul(WayB);
      const double G1 = Gap.DotMul(WayA);
      const double G2 = -Gap.DotMul(WayB);
      const double Determinant = H11 * H22 - H12 * H12;
      const double Next1 = ClampParam(U1 - (G1 * H22 - G2 * H12) / Determinant, 1.0);
      const double Next2 = ClampParam(U2 - (G2 * H11 - G1 * H12) / Determinant, 1.0);
      const double Next = FA.EvalPoint(Next1).DistanceTo(FB.EvalPoint(Next2));
      if (!(Next < Distance)) return;
      Distance = Next;
      U1 = Next1;
      U2 = Next2;
    }
  }

  /// Halves the longer one of those that still bend, and whatever is much longer than the other.
  void Split(const TPart& A, bool BendsA, const TPart& B, bool BendsB) {
    const double LengthA = std::max(A.ChordLength(), A.Flatness());
    const double LengthB = std::max(B.ChordLength(), B.Flatness());
    const bool HalvesA = BendsA && BendsB ? LengthA >= LengthB
                         : BendsA         ? LengthA * kMuchLonger >= LengthB || B.IsShort()
                                          : LengthA >= LengthB * kMuchLonger && !A.IsShort();
    TPair First{A, B};
    TPair Second{A, B};
    if (HalvesA) {
      A.Halve(First.A, Second.A);
    } else {
      B.Halve(First.B, Second.B);
    }
    FOpen.push_back(Second);
    FOpen.push_back(First);  // looked at first
  }

  /// A place beside one that is known, with nothing wider than the tolerance in between, is not
  /// new: of the two the one where the curves come plainly nearer stays.
  void Keep(double U1, double U2) {
    const auto Known = std::find_if(FFound.begin(), FFound.end(), [&](const auto& Place) {
      return WithinTolerance((U1 + Place.first) / 2, (U2 + Place.second) / 2) &&
             WithinTolerance(U1 + (Place.first - U1) / 4, U2 + (Place.second - U2) / 4);
    });
    if (Known == FFound.end()) {
      FFound.emplace_back(U1, U2);
    } else if (Gap(U1, U2) < Gap(Known->first, Known->second) - kPlainlyNearer * FTol) {
      *Known = {U1, U2};
    }
  }

  double Gap(double U1, double U2) const { return FA.EvalPoint(U1).DistanceTo(FB.EvalPoint(U2)); }

  const TBezierSegment2D FA;
  const TBezierSegment2D FB;
  const double FTol;
  double FRounding;
  double FFlat;
  double FSettled;  // a gap of no more is a crossing
  std::vector<TPair> FOpen;
  std::vector<std::pair<double, double>> FFound;
};

}  // namespace

std::vector<std::pair<double, double>> CrossCubicSpans(const TCurvePiece& A, TPieceSpan SpanA,
                                                       const TCurvePiece& B, TPieceSpan SpanB,
                                                       double Tol) {
  TCubicCrosser Crosser(A, B, Tol);
  Crosser.Search(SpanA, SpanB);
  return Crosser.TakeFound();
}

}  // namespace tarnalgo
