#pragma once  // host/Cadtypes/Tolerance.h

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// The host's pair of tolerances: a length for equal points, a number for equal vectors.
struct TGeTolerance {
  double EqualPoint = kLinearTolerance;   ///< A length: points at most this far apart are the same.
  double EqualVector = kLinearTolerance;  ///< A number without unit, for directions and parameters.

  constexpr TGeTolerance() = default;
  /// Both tolerances; nothing checks them.
  constexpr TGeTolerance(double AEqualPoint, double AEqualVector)
      : EqualPoint(AEqualPoint), EqualVector(AEqualVector) {}

  void SetEqualPoint(double D) { EqualPoint = D; }    ///< `EqualPoint`, as a setter.
  void SetEqualVector(double D) { EqualVector = D; }  ///< `EqualVector`, as a setter.

  /// The points are within the equal-point distance (Euclidean).
  bool PointEquals(const TPoint2D& P1, const TPoint2D& P2) const {
    return P1.Equals(P2, EqualPoint);
  }
  /// The same by coordinates.
  bool PointEquals(double X1, double Y1, double X2, double Y2) const {
    return PointEquals(TPoint2D(X1, Y1), TPoint2D(X2, Y2));
  }
};

/// The host's default tolerance: 1e-6 for both.
inline constexpr TGeTolerance DefTol{};

/// A closed interval with a tolerance.
struct TGeInterval {
  double Lower = 0.0;             ///< Least value.
  double Upper = 0.0;             ///< Greatest value.
  double Tol = kLinearTolerance;  ///< How far beyond its bounds it still meets something.

  constexpr TGeInterval() = default;
  /// The bounds may come in either order.
  constexpr TGeInterval(double ALower, double AUpper, double ATol)
      : Lower(ALower < AUpper ? ALower : AUpper),
        Upper(ALower < AUpper ? AUpper : ALower),
        Tol(ATol) {}

  /// The intervals meet: touching counts, and so does a gap of up to the larger `Tol`. `Result`
  /// receives the common part (the middle of the gap when they meet across one), and is untouched
  /// when they do not meet. An interval with a NaN for a bound meets none.
  bool IntersectWith(const TGeInterval& I, TGeInterval& Result) const;
};

}  // namespace tarnalgo
