#include "host/Cadtypes/Bezier.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "host/Cadtypes/ExtendedPoint.h"
#include "host/Cadtypes/Numeric.h"

namespace tarnalgo {

namespace {

constexpr long double kExtendedNoise = 4.0L * std::numeric_limits<long double>::epsilon();

/// What the rounding of the control points does to a product of two of their differences, relative
/// to the largest coordinate times the largest difference: half an ulp for each of the coordinates.
constexpr long double kControlNoise = 4.0L * std::numeric_limits<double>::epsilon();

/// Relative error of the arc length at which an interval is no longer halved.
constexpr double kLengthPrecision = 1e-13;
constexpr int kMostHalvings = 48;

/// The cubic in extended precision, seen from a point: what the inner steps need of it.
struct TExtBezier {
  TExtPoint2D Q[4];  // control points relative to the point
  TExtPoint2D D[3];  // first differences

  TExtBezier(const TBezierSegment2D& B, const TPoint2D& Origin) {
    const TPoint2D Controls[] = {B.P0, B.P1, B.P2, B.P3};
    for (int I = 0; I < 4; ++I) Q[I] = TExtPoint2D(Controls[I]) - TExtPoint2D(Origin);
    for (int I = 0; I < 3; ++I) D[I] = TExtPoint2D(Controls[I + 1]) - TExtPoint2D(Controls[I]);
  }

  TExtPoint2D Position(long double T) const {
    const long double S = 1.0L - T;
    return (Q[0] * S + Q[1] * (3.0L * T)) * (S * S) + (Q[2] * (3.0L * S) + Q[3] * T) * (T * T);
  }
  TExtPoint2D Velocity(long double T) const {
    const long double S = 1.0L - T;
    return (D[0] * (S * S) + D[1] * (2.0L * S * T) + D[2] * (T * T)) * 3.0L;
  }
  TExtPoint2D Acceleration(long double T) const {
    return ((D[1] - D[0]) * (1.0L - T) + (D[2] - D[1]) * T) * 6.0L;
  }
};

/// Where C0·(1−t)² + C1·t(1−t) + C2·t² changes sign within (0, 1), ascending. `Error` bounds the
/// error of each coefficient; a root that it might make double, or move to 0 or 1, is no change of
/// sign.
///
/// Solved for the ratio t : (1−t), which no vanishing leading coefficient can spoil.
std::vector<double> SignChanges(long double C0, long double C1, long double C2, long double Error) {
  std::vector<double> Places;
  if (std::abs(C0) <= Error) C0 = 0.0L;
  if (std::abs(C2) <= Error) C2 = 0.0L;
  const long double Product = 4.0L * C0 * C2;
  const long double Discriminant = C1 * C1 - Product;
  const long double Noise =
      kExtendedNoise * (C1 * C1 + std::abs(Product)) +
      Error * (2.0L * std::abs(C1) + 4.0L * std::abs(C0) + 4.0L * std::abs(C2));
  if (!(Discriminant > Noise)) return Places;
  const long double Half = -0.5L * (C1 + std::copysign(std::sqrt(Discriminant), C1));
  const auto Add = [&](long double Numerator, long double Denominator) {
    if (!(Numerator * Denominator > 0.0L)) return;
    const double T = static_cast<double>(Numerator / (Numerator + Denominator));
    if (T > 0.0 && T < 1.0) Places.push_back(T);
  };
  Add(Half, C2);
  Add(C0, Half);
  std::sort(Places.begin(), Places.end());
  return Places;
}

/// The feet of the perpendiculars from a point to a curve that are minima of the distance: where
/// f(t) = (B(t) − P)·B'(t), of degree 5, changes from − to +.
///
/// The Bernstein coefficients of f have at least as many changes of sign as f has roots, and
/// halving never adds any; so parts without a change are dropped, parts with one hold one root
/// exactly, and never more than five parts are open.
class TFootFinder {
 public:
  TFootFinder(const TBezierSegment2D& Curve, const TPoint2D& P) : FCurve(Curve, P) {
    TCoefficients F;
    constexpr long double kCubic[] = {1, 3, 3, 1};
    constexpr long double kQuadratic[] = {1, 2, 1};
    constexpr long double kQuintic[] = {1, 5, 10, 10, 5, 1};
    for (int I = 0; I < 4; ++I) {
      for (int J = 0; J < 3; ++J) {
        const long double Weight = kCubic[I] * kQuadratic[J] / kQuintic[I + J];
        F.C[I + J] += FCurve.Q[I].DotMul(FCurve.D[J]) * Weight;
      }
    }
    Isolate(F, 0.0L, 1.0L, 0);
  }

  /// Ascending.
  const std::vector<long double>& Feet() const { return FFeet; }

 private:
  struct TCoefficients {
    long double C[6] = {};
  };

  /// Beyond this depth an interval is narrower than the steps between parameters.
  static constexpr int kDeepest = 60;
  /// Every second step at worst halves a bracket that has 64 bits.
  static constexpr int kMostSteps = 200;

  static int SignVariations(const TCoefficients& F) {
    int Variations = 0;
    long double Last = 0.0L;
    for (const long double C : F.C) {
      if ((C < 0.0L && Last > 0.0L) || (C > 0.0L && Last < 0.0L)) ++Variations;
      if (C != 0.0L) Last = C;
    }
    return Variations;
  }

  void Isolate(const TCoefficients& F, long double From, long double To, int Depth) {
    const int Variations = SignVariations(F);
    if (Variations == 0) return;
    if (Variations == 1) {
      const bool IsMinimum = FirstSign(F) < 0.0L;
      if (IsMinimum) FFeet.push_back(Refine(From, To));
      return;
    }
    const long double Middle = From + (To - From) / 2;
    if (Depth == kDeepest) {
      FFeet.push_back(Middle);
      return;
    }
    TCoefficients Left = F;
    TCoefficients Right = F;
    for (int Level = 1; Level < 6; ++Level) {
      for (int I = 0; I < 6 - Level; ++I) Right.C[I] = (Right.C[I] + Right.C[I + 1]) / 2;
      Left.C[Level] = Right.C[0];
    }
    Isolate(Left, From, Middle, Depth + 1);
    if (Right.C[0] == 0.0L) FFeet.push_back(Middle);  // exact: a root that neither half counts
    Isolate(Right, Middle, To, Depth + 1);
  }

  static long double FirstSign(const TCoefficients& F) {
    return *std::find_if(F.C, F.C + 6, [](long double C) { return C != 0.0L; });
  }

  /// The one change from − to + between `Low` and `High`: Newton steps, replaced by halving the
  /// bracket where they leave it or do not at least halve.
  long double Refine(long double Low, long double High) const {
    long double T = Low + (High - Low) / 2;
    long double LastStep = High - Low;
    for (int Round = 0; Round < kMostSteps; ++Round) {
      const TExtPoint2D Position = FCurve.Position(T);
      const TExtPoint2D Velocity = FCurve.Velocity(T);
      const long double F = Position.DotMul(Velocity);
      if (F == 0.0L) break;
      (F < 0.0L ? Low : High) = T;
      const long double Slope = Velocity.DotMul(Velocity) + Position.DotMul(FCurve.Acceleration(T));
      long double Next = T - F / Slope;
      if (!(Next > Low && Next < High && std::abs(Next - T) <= LastStep / 2)) {
        Next = Low + (High - Low) / 2;
      }
      if (!(Next > Low && Next < High)) break;  // nothing lies between the two
      LastStep = std::abs(Next - T);
      T = Next;
    }
    return T;
  }

  TExtBezier FCurve;
  std::vector<long double> FFeet;
};

/// Length of the curve between two parameters by ten Gauss points.
double GaussLength(const TBezierSegment2D& B, double From, double To) {
  constexpr double kNodes[][2] = {// abscissa and weight, each for both signs
                                  {0.1488743389816312108848, 0.2955242247147528701738},
                                  {0.4333953941292471907992, 0.2692667193099963550912},
                                  {0.6794095682990244062343, 0.2190863625159820439955},
                                  {0.8650633666889845107320, 0.1494513491505805931457},
                                  {0.9739065285171717200779, 0.0666713443086881375935}};
  const double Middle = (From + To) / 2;
  const double Half = (To - From) / 2;
  double Sum = 0.0;
  for (const auto& [Abscissa, Weight] : kNodes) {
    Sum += Weight * (B.Derivative(Middle - Half * Abscissa).Mag() +
                     B.Derivative(Middle + Half * Abscissa).Mag());
  }
  return Sum * Half;
}

/// Halves the interval until the halves agree with the whole within `Allowed`.
double AdaptiveLength(const TBezierSegment2D& B, double From, double To, double Whole,
                      double Allowed, int Depth) {
  const double Middle = (From + To) / 2;
  const double Left = GaussLength(B, From, Middle);
  const double Right = GaussLength(B, Middle, To);
  // A length that is not a number stops at once.
  if (!(std::abs(Left + Right - Whole) > Allowed) || Depth == kMostHalvings) return Left + Right;
  return AdaptiveLength(B, From, Middle, Left, Allowed, Depth + 1) +
         AdaptiveLength(B, Middle, To, Right, Allowed, Depth + 1);
}

/// Parameters in (0, 1) where the speed is least or greatest, ascending. Divided by `Reach`, so
/// that no product leaves the range of a double.
std::vector<double> SpeedExtremes(const TBezierSegment2D& B, double Reach) {
  const TPoint2D D1 = (B.P1 - B.P0) / Reach;
  const TPoint2D D2 = (B.P2 - B.P1) / Reach;
  const TPoint2D D3 = (B.P3 - B.P2) / Reach;
  const TPoint2D Linear = 2.0 * (D2 - D1);
  const TPoint2D Square = (D3 - D2) - (D2 - D1);
  std::vector<double> Roots;
  TNumeric::CubicRoot(2.0 * Square.DotMul(Square), 3.0 * Linear.DotMul(Square),
                      Linear.DotMul(Linear) + 2.0 * D1.DotMul(Square), D1.DotMul(Linear), Roots);
  std::erase_if(Roots, [](double T) { return !(T > 0.0 && T < 1.0); });
  return Roots;
}

TPoint2D FirstNonZero(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  if (A != TPoint2D::FZero) return A;
  return B != TPoint2D::FZero ? B : C;
}

}  // namespace

TBezierSegment2D::TBezierSegment2D(const TPoint2D& AP0, const TPoint2D& AP3)
    : P0(AP0), P1(Lerp(AP0, AP3, 1.0 / 3.0)), P2(Lerp(AP3, AP0, 1.0 / 3.0)), P3(AP3) {}

TPoint2D TBezierSegment2D::EvalPoint(double T) const {
  const TPoint2D Middle = Lerp(P1, P2, T);
  const TPoint2D Left = Lerp(Lerp(P0, P1, T), Middle, T);
  const TPoint2D Right = Lerp(Middle, Lerp(P2, P3, T), T);
  return Lerp(Left, Right, T);
}

TPoint2D TBezierSegment2D::Derivative(double T) const {
  const TPoint2D Left = Lerp(P1 - P0, P2 - P1, T);
  const TPoint2D Right = Lerp(P2 - P1, P3 - P2, T);
  return 3.0 * Lerp(Left, Right, T);
}

TPoint2D TBezierSegment2D::SecondDerivative(double T) const {
  return 6.0 * Lerp((P2 - P1) - (P1 - P0), (P3 - P2) - (P2 - P1), T);
}

void TBezierSegment2D::Split(double T, TBezierSegment2D& Left, TBezierSegment2D& Right) const {
  const TPoint2D A = Lerp(P0, P1, T);
  const TPoint2D B = Lerp(P1, P2, T);
  const TPoint2D C = Lerp(P2, P3, T);
  const TPoint2D D = Lerp(A, B, T);
  const TPoint2D E = Lerp(B, C, T);
  const TPoint2D Place = Lerp(D, E, T);
  const TBezierSegment2D Second(Place, E, C, P3);  // before `Left`, which may be this very curve
  Left = {P0, A, D, Place};
  Right = Second;
}

void TBezierSegment2D::SplitMiddle(TBezierSegment2D& Left, TBezierSegment2D& Right) const {
  Split(0.5, Left, Right);
}

TPoint2D TBezierSegment2D::TangentStart() const {
  return FirstNonZero(P1 - P0, P2 - P0, P3 - P0);
}

TPoint2D TBezierSegment2D::TangentEnd() const {
  return FirstNonZero(P3 - P2, P3 - P1, P3 - P0);
}

bool TBezierSegment2D::IsLinear(TLine2D& Line, double Eps) const {
  Line = {P0, P3};
  return std::abs(Line.DistanceDirect(P1)) <= Eps && std::abs(Line.DistanceDirect(P2)) <= Eps;
}

std::vector<double> TBezierSegment2D::CurvatureChangedPlaces() const {
  // B' × B'' = 18·(d0×d1·(1−t)² + d0×d2·t(1−t) + d1×d2·t²), d the differences of the controls.
  const TExtBezier Curve(*this, TPoint2D::FZero);
  long double Reach = 0.0L;
  for (const TExtPoint2D& D : Curve.D) Reach = std::max({Reach, std::abs(D.X), std::abs(D.Y)});
  long double Largest = 0.0L;
  for (const TExtPoint2D& Q : Curve.Q) Largest = std::max({Largest, std::abs(Q.X), std::abs(Q.Y)});
  return SignChanges(Curve.D[0].CrossMul(Curve.D[1]), Curve.D[0].CrossMul(Curve.D[2]),
                     Curve.D[1].CrossMul(Curve.D[2]), kControlNoise * Largest * Reach);
}

double TBezierSegment2D::DistanceTo(const TPoint2D& P, double Tol, double& T,
                                    TPoint2D& Foot) const {
  const TExtBezier FromP(*this, P);
  T = 0.0;
  double Least = static_cast<double>(FromP.Position(0.0L).Mag());
  // A later foot must be nearer by more than rounding, or a tie would be decided by noise.
  constexpr double kNearer = 1.0 - 4.0 * std::numeric_limits<double>::epsilon();
  const auto TryFoot = [&](long double Param) {
    if (Least <= Tol) return;
    const double Dist = static_cast<double>(FromP.Position(Param).Mag());
    if (!(Dist < Least * kNearer)) return;
    Least = Dist;
    T = static_cast<double>(Param);
  };
  const TFootFinder Finder(*this, P);
  for (const long double Param : Finder.Feet()) TryFoot(Param);
  TryFoot(1.0L);
  Foot = EvalPoint(T);
  return Least;
}

void TBezierSegment2D::TransformBy(const TMatrix2D& M) {
  *this = {M.Transform(P0), M.Transform(P1), M.Transform(P2), M.Transform(P3)};
}

TRect2D TBezierSegment2D::GetBoundBox() const {
  TRect2D Box = TRect2D(P0, P0).Union(P3);
  if (Box.Contains(P1, 0.0) && Box.Contains(P2, 0.0)) return Box;
  const TExtBezier Curve(*this, P0);
  const auto& D = Curve.D;
  for (const double T : SignChanges(D[0].X, 2.0L * D[1].X, D[2].X, 0.0L)) {
    Box = Box.Union(EvalPoint(T));
  }
  for (const double T : SignChanges(D[0].Y, 2.0L * D[1].Y, D[2].Y, 0.0L)) {
    Box = Box.Union(EvalPoint(T));
  }
  return Box;
}

double TBezierSegment2D::CurveLength() const {
  const double Reach = P0.DistanceTo(P1) + P1.DistanceTo(P2) + P2.DistanceTo(P3);
  // Below the least normal number there are no digits to agree on.
  const double Allowed = std::max(kLengthPrecision * Reach, std::numeric_limits<double>::min());
  // Where the curve stops, or nearly, the speed has a corner: within an interval the sums of its
  // halves may agree by accident, at its end they do not.
  std::vector<double> Bounds = SpeedExtremes(*this, Reach);
  Bounds.push_back(1.0);
  double Length = 0.0;
  double From = 0.0;
  for (const double To : Bounds) {
    Length += AdaptiveLength(*this, From, To, GaussLength(*this, From, To), Allowed, 0);
    From = To;
  }
  return Length;
}

}  // namespace tarnalgo
