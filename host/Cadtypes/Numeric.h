#pragma once  // host/Cadtypes/Numeric.h

#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Equations solved by radicals and Newton steps.
class TNumeric {
 public:
  /// Real roots of A·x³ + B·x² + C·x + D = 0, distinct ones, ascending, appended to `Roots`. The
  /// result counts what was appended. A = 0 solves the lower degree; an equation without unknown
  /// has no root to name: 0.
  /// Correct to rounding, roots of very different size included: Newton steps to one root, closed
  /// form for the quotient; a double root is recognised by its discriminant to rounding. Roots
  /// beyond the range of a double are left out.
  static int CubicRoot(double A, double B, double C, double D, std::vector<double>& Roots);
};

bool fEqual(double A, double B, double Eps);                 ///< |A − B| <= Eps.
bool fEqual(long double A, long double B, long double Eps);  ///< In extended precision.
bool fGreat(double A, double B, double Eps);                 ///< A > B + Eps.
bool fGreat(long double A, long double B, long double Eps);  ///< In extended precision.
bool fSmall(double A, double B, double Eps);                 ///< A < B − Eps.
bool fSmall(long double A, long double B, long double Eps);  ///< In extended precision.

/// Angle `A` brought into one turn from `Base`: [Base, Base + 2π), with `Flag` set
/// (Base, Base + 2π]. An angle that is not finite comes back as it is.
long double NormalAngle(long double A, bool Flag, long double Base);

/// Three points, for their circumcentre.
struct TTriangle2D {
  ///@{
  /// A corner, in no fixed sense of turning.
  TPoint2D P1;
  TPoint2D P2;
  TPoint2D P3;
  ///@}

  constexpr TTriangle2D() = default;
  /// From its three corners, in the order of `P1` to `P3`.
  constexpr TTriangle2D(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C)
      : P1(A), P2(B), P3(C) {}

  /// Centre of the circle through the three points, computed relative to P1.
  /// Errors: collinear points, `EGeometry`.
  TPoint2D CircumCenter() const;
};

}  // namespace tarnalgo
