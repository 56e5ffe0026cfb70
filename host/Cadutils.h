#pragma once  // host/Cadutils.h

#include <cmath>

#include "host/Cadtypes/Constants.h"

namespace tarnalgo {

/// −1, 0 or 1, the exact sign of `A` − `B`: the comparison of every order without a tolerance.
/// NaN compares equal to everything.
template <class T>
constexpr int CompareExact(const T& A, const T& B) {
  return static_cast<int>(B < A) - static_cast<int>(A < B);  // no branch to guess
}

/// Comparisons with a tolerance, ranges and cyclic values of the host.
///
/// `Eps` is in the unit of the values compared and is not negative. A NaN among the values makes
/// every test false and `CompareFloat` 0.
class TMathUtils {
 public:
  /// |A − B| <= Eps; equal infinities are equal.
  static bool FloatEquals(double A, double B, double Eps = kLinearTolerance) {
    return std::abs(A - B) <= Eps || A == B;  // exact: inf − inf is NaN
  }
  /// A < B − Eps.
  static bool FloatLess(double A, double B, double Eps = kLinearTolerance) { return A < B - Eps; }
  /// A > B + Eps.
  static bool FloatGreater(double A, double B, double Eps = kLinearTolerance) {
    return A > B + Eps;
  }
  /// A <= B + Eps.
  static bool FloatLessEquals(double A, double B, double Eps = kLinearTolerance) {
    return A <= B + Eps;
  }
  /// A >= B − Eps.
  static bool FloatGreaterEquals(double A, double B, double Eps = kLinearTolerance) {
    return A >= B - Eps;
  }
  /// 0 when equal within `Eps`, else the sign of A − B.
  static int CompareFloat(double A, double B, double Eps = kLinearTolerance) {
    return FloatEquals(A, B, Eps) ? 0 : CompareExact(A, B);
  }

  /// Exact range test, each end taken in or left out.
  static bool IsInRange(double X, double Low, double High, bool IncludeLow, bool IncludeHigh) {
    return (IncludeLow ? X >= Low : X > Low) && (IncludeHigh ? X <= High : X < High);
  }
  /// Range test with slack: an included end reaches `Eps` further, an excluded end must be passed
  /// by more than `Eps`. The test that a parameter lies within a segment is always
  /// `IsInFloatRange(T, 0.0, 1.0, true, true, Eps)`.
  static bool IsInFloatRange(double X, double Low, double High, bool IncludeLow, bool IncludeHigh,
                             double Eps = kLinearTolerance) {
    return (IncludeLow ? FloatGreaterEquals(X, Low, Eps) : FloatGreater(X, Low, Eps)) &&
           (IncludeHigh ? FloatLessEquals(X, High, Eps) : FloatLess(X, High, Eps));
  }
  /// Angle `X` lies in the counter-clockwise range from `Low` to `High`, modulo one turn, both ends
  /// included with slack `Eps` (across the wrap too). `Low` = `High` is that single angle;
  /// `High` >= `Low` + 2π the full turn.
  static bool IsInFloatCircleRange(double X, double Low, double High,
                                   double Eps = kLinearTolerance);
  /// 0 when `X` lies in [Low, High] widened by `Eps`, else the distance to the nearer end.
  static double DistToRange(double X, double Low, double High, double Eps = kLinearTolerance);

  /// (I + Step) modulo Count, in 0 .. Count − 1, whatever the signs; 0 when Count <= 0.
  static int CycInc(int I, int Step, int Count);
  /// (X + Step) modulo Period, in [0, Period): a sum a hair below 0 gives 0, never Period.
  /// 0 when `Period` is not positive or a value is not finite.
  static double CycInc(double X, double Step, double Period);
  /// Forward cyclic distance from `A` to `B` in [0, Period); 0 when `B` lies within `Eps` behind
  /// `A` (or just short of a whole period ahead, which is the same place).
  static double CycDist(double A, double B, double Period, double Eps = kLinearTolerance);

  /// Real roots of A·x² + B·x + C = 0: their number (distinct ones), X1 <= X2. A double root counts
  /// once and stands in both, and so does the only one within the range of a double; A = 0 solves
  /// the linear equation; no root, or no equation at all (A = B = 0), leaves X1 and X2 untouched.
  /// Stable for roots of very different size (the smaller one from the product of the roots).
  static int CalcQuadraticEquation(double A, double B, double C, double& X1, double& X2);
};

}  // namespace tarnalgo
