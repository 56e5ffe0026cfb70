#include "host/Cadtypes/Numeric.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/Cadtypes/ExtendedPoint.h"
#include "host/Cadtypes/SortFew.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// What the rounding of four given coefficients can do to a discriminant, relative to its terms.
constexpr long double kCoefficientNoise = 8.0L * std::numeric_limits<double>::epsilon();

/// Bound of the Newton steps; each leaves at most two thirds of the way to the root.
constexpr int kMostSteps = 250;

/// The real roots of a cubic, after Kahan ("To Solve a Real Cubic Equation", 1986): one root by
/// Newton steps that approach it from outside, the other two from the quotient, divided out at
/// the end that loses no digits. All in extended precision, whose range needs no scaling.
class TCubicSolver {
 public:
  TCubicSolver(long double A, long double B, long double C, long double D)
      : FA(A), FB(B), FC(C), FD(D) {}

  int AppendTo(std::vector<double>& Roots) {
    Solve();
    SortFew(FRoots, FRoots + FCount);
    int Appended = 0;
    for (int I = 0; I < FCount; ++I) {
      const double Root = static_cast<double>(FRoots[I]);
      if (!std::isfinite(Root)) continue;                  // beyond the range of the result
      if (Appended > 0 && Root == Roots.back()) continue;  // exact: one root found twice
      Roots.push_back(Root);
      ++Appended;
    }
    return Appended;
  }

 private:
  void Solve() {
    if (FA == 0.0L) return SolveQuadratic(FB, FC, FD);
    if (FD == 0.0L) {
      Keep(0.0L);
      return SolveQuadratic(FA, FB, FC);
    }
    const long double Inflexion = -FB / FA / 3.0L;
    if (IsTripleRoot(Inflexion)) return Keep(Inflexion);
    const long double Root = OuterRoot(Inflexion);
    Keep(Root);
    // The quotient A·x² + P·x + Q, from the low end when that end is the larger part.
    long double P = FA * Root + FB;
    long double Q = P * Root + FC;
    if (std::abs(FA) * Root * Root > std::abs(FD / Root)) {
      Q = -FD / Root;
      P = (Q - FC) / Root;
    }
    SolveQuadratic(FA, P, Q);
  }

  /// (x − R)³ explains all coefficients to rounding.
  bool IsTripleRoot(long double R) const {
    const long double C = 3.0L * FA * R * R;
    const long double D = -FA * R * R * R;
    return std::abs(FC - C) <= kCoefficientNoise * std::abs(C) &&
           std::abs(FD - D) <= kCoefficientNoise * std::abs(D);
  }

  long double Value(long double X) const { return ((FA * X + FB) * X + FC) * X + FD; }
  long double Slope(long double X) const { return (3.0L * FA * X + 2.0L * FB) * X + FC; }

  /// The root that stands alone on its side of the inflexion.
  long double OuterRoot(long double Inflexion) const {
    const long double Height = Value(Inflexion) / FA;
    const long double Fall = -Slope(Inflexion) / FA;
    const long double Side = Height < 0.0L ? 1.0L : -1.0L;
    long double Reach = std::cbrt(std::abs(Height));
    // 1.3247 bounds the real root of x³ = x + 1: the start lies outside the root.
    if (Fall > 0.0L) Reach = 1.324718L * std::max(Reach, std::sqrt(Fall));
    long double X = Inflexion + Side * Reach;
    for (int Step = 0; Step < kMostSteps; ++Step) {
      const long double Next = X - Value(X) / Slope(X);
      if (!(Side * (X - Next) > 0.0L)) break;  // there, or thrown across by rounding
      X = Next;
    }
    return Polished(X);
  }

  /// A step from far out ends with the rounding of where it began: the last ones may go either way.
  long double Polished(long double X) const {
    for (int Step = 0; Step < kMostSteps; ++Step) {
      const long double Next = X - Value(X) / Slope(X);
      if (!(std::abs(Value(Next)) < std::abs(Value(X)))) break;
      X = Next;
    }
    return X;
  }

  void SolveQuadratic(long double A, long double B, long double C) {
    if (A == 0.0L) {
      if (B != 0.0L) Keep(-C / B);
      return;
    }
    const long double Square = B * B;
    const long double Product = 4.0L * A * C;
    const long double Discriminant = Square - Product;
    if (std::abs(Discriminant) <= kCoefficientNoise * (Square + std::abs(Product))) {
      return Keep(-B / (2.0L * A));
    }
    if (!(Discriminant > 0.0L)) return;
    const long double Q = -0.5L * (B + std::copysign(std::sqrt(Discriminant), B));
    Keep(Q / A);
    Keep(C / Q);
  }

  void Keep(long double Root) { FRoots[FCount++] = Root; }

  const long double FA;
  const long double FB;
  const long double FC;
  const long double FD;
  long double FRoots[3] = {};
  int FCount = 0;
};

template <class T>
bool EqualWithin(T A, T B, T Eps) {
  return std::abs(A - B) <= Eps || A == B;  // exact: equal infinities
}

}  // namespace

int TNumeric::CubicRoot(double A, double B, double C, double D, std::vector<double>& Roots) {
  if (!std::isfinite(A) || !std::isfinite(B) || !std::isfinite(C) || !std::isfinite(D)) return 0;
  return TCubicSolver(A, B, C, D).AppendTo(Roots);
}

bool fEqual(double A, double B, double Eps) {
  return EqualWithin(A, B, Eps);
}

bool fEqual(long double A, long double B, long double Eps) {
  return EqualWithin(A, B, Eps);
}

bool fGreat(double A, double B, double Eps) {
  return A > B + Eps;
}

bool fGreat(long double A, long double B, long double Eps) {
  return A > B + Eps;
}

bool fSmall(double A, double B, double Eps) {
  return A < B - Eps;
}

bool fSmall(long double A, long double B, long double Eps) {
  return A < B - Eps;
}

long double NormalAngle(long double A, bool Flag, long double Base) {
  const long double Turn = kFullTurn;
  const long double End = Base + Turn;
  if (!std::isfinite(A - Base)) return A;
  if (Flag ? A > Base && A <= End : A >= Base && A < End) return A;  // nothing to round
  long double Rest = std::fmod(A - Base, Turn);
  if (Rest < 0.0L) Rest += Turn;
  const long double Normal = Base + Rest;  // may round to either end of the turn
  if (Flag) return Normal > Base ? std::min(Normal, End) : End;
  return Normal < End ? Normal : Base;
}

TPoint2D TTriangle2D::CircumCenter() const {
  const TExtPoint2D Origin(P1);
  const TExtPoint2D B = TExtPoint2D(P2) - Origin;
  const TExtPoint2D C = TExtPoint2D(P3) - Origin;
  const long double Area = B.CrossMul(C);  // twice the triangle's
  const long double Longest = std::max({B.Mag(), C.Mag(), (C - B).Mag()});
  if (!(std::abs(Area) > kParallelSine * Longest * Longest)) {
    RaiseError<EGeometry>("TTriangle2D.CircumCenter", "三点共线");
  }
  const long double BB = B.DotMul(B);
  const long double CC = C.DotMul(C);
  const TExtPoint2D Offset((C.Y * BB - B.Y * CC) / (2.0L * Area),
                           (B.X * CC - C.X * BB) / (2.0L * Area));
  return (Origin + Offset).Rounded();
}

}  // namespace tarnalgo
