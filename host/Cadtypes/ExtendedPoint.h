#pragma once  // host/Cadtypes/ExtendedPoint.h

#include <cmath>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// A point or vector in extended precision, for the inner steps of host operations.
///
/// Differences of two points are exact in it for coordinates of like size, products keep 11 bits
/// more than a double, and no product of four finite doubles overflows (where `long double` is the
/// 80-bit or 128-bit format).
struct TExtPoint2D {
  long double X = 0.0L;  ///< To the right.
  long double Y = 0.0L;  ///< Upwards.

  constexpr TExtPoint2D() = default;
  /// From coordinates already in extended precision.
  constexpr TExtPoint2D(long double AX, long double AY) : X(AX), Y(AY) {}
  /// Exact.
  constexpr explicit TExtPoint2D(const TPoint2D& P) : X(P.X), Y(P.Y) {}

  ///@{
  /// Componentwise, rounded once to extended precision.
  constexpr TExtPoint2D operator+(const TExtPoint2D& B) const { return {X + B.X, Y + B.Y}; }
  constexpr TExtPoint2D operator-(const TExtPoint2D& B) const { return {X - B.X, Y - B.Y}; }
  constexpr TExtPoint2D operator*(long double K) const { return {X * K, Y * K}; }
  ///@}

  /// Positive when `B` lies counter-clockwise of this vector; not normalised.
  constexpr long double CrossMul(const TExtPoint2D& B) const { return X * B.Y - Y * B.X; }
  /// Scalar product.
  constexpr long double DotMul(const TExtPoint2D& B) const { return X * B.X + Y * B.Y; }
  /// Length of the vector.
  long double Mag() const { return std::sqrt(X * X + Y * Y); }

  /// The nearest point of doubles.
  constexpr TPoint2D Rounded() const { return {static_cast<double>(X), static_cast<double>(Y)}; }
};

}  // namespace tarnalgo
