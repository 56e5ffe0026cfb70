#pragma once  // host/Cadtypes/Point.h

#include <cmath>
#include <vector>

#include "host/Cadtypes/Constants.h"

namespace tarnalgo {

/// A point of the plane, also used as a free vector. Model units, Y axis up, angles in radians
/// counter-clockwise.
///
/// A plain value. `==` compares both coordinates exactly; the same place within a tolerance is
/// `Equals`. Operations raise nothing. A vector has a direction when it is not zero and both of its
/// coordinates are finite; whatever else is asked for a direction behaves like the zero vector.
struct TPoint2D {
  double X = 0.0;  ///< To the right, model units.
  double Y = 0.0;  ///< Upwards, model units.

  /// The origin, the zero vector.
  static const TPoint2D FZero;

  constexpr TPoint2D() = default;
  /// From its coordinates.
  constexpr TPoint2D(double AX, double AY) : X(AX), Y(AY) {}

  friend constexpr bool operator==(const TPoint2D& A, const TPoint2D& B) = default;

  ///@{
  /// Componentwise, as of vectors; dividing by 0 gives infinities or NaN.
  constexpr TPoint2D operator+(const TPoint2D& B) const { return {X + B.X, Y + B.Y}; }
  constexpr TPoint2D operator-(const TPoint2D& B) const { return {X - B.X, Y - B.Y}; }
  constexpr TPoint2D operator-() const { return {-X, -Y}; }
  constexpr TPoint2D operator*(double K) const { return {X * K, Y * K}; }
  constexpr TPoint2D operator/(double K) const { return {X / K, Y / K}; }
  ///@}
  friend constexpr TPoint2D operator*(double K, const TPoint2D& P) { return {K * P.X, K * P.Y}; }

  /// The two points are at most `Eps` apart (Euclidean).
  bool Equals(const TPoint2D& P, double Eps = kLinearTolerance) const {
    const double DX = X - P.X;
    const double DY = Y - P.Y;
    // The single tests keep an `Eps` whose square underflows honest.
    return DX <= Eps && DX >= -Eps && DY <= Eps && DY >= -Eps && DX * DX + DY * DY <= Eps * Eps;
  }

  /// Euclidean distance; neither overflows nor underflows before its time.
  double DistanceTo(const TPoint2D& P) const { return (*this - P).Mag(); }
  /// Length of the vector, with the same care.
  double Mag() const {
    const double Square = X * X + Y * Y;
    return Square > 1e-290 && Square < 1e300 ? std::sqrt(Square) : std::hypot(X, Y);
  }
  /// The unit vector of this direction, the zero vector where there is none.
  TPoint2D Normal() const;

  /// X·B.Y − Y·B.X: positive when `B` lies counter-clockwise of this vector. Not normalised.
  constexpr double CrossMul(const TPoint2D& B) const { return X * B.Y - Y * B.X; }
  /// Scalar product: positive while the angle between the vectors is acute. Not normalised.
  constexpr double DotMul(const TPoint2D& B) const { return X * B.X + Y * B.Y; }

  /// Polar angle in [0, 2π); 0 for the zero vector.
  double Angle() const;
  /// Counter-clockwise angle from `B` to this vector in [0, 2π). Exactly 0 from a vector to itself;
  /// a hair below 0 gives 0, never 2π; 0 too when one of the vectors has no direction.
  double AngleFrom(const TPoint2D& B) const;
  /// Unsigned angle between the two vectors, in [0, π]; 0 when one of them has no direction.
  double AngleBetween(const TPoint2D& B) const;

  /// This vector turned by `A` radians counter-clockwise.
  TPoint2D RotateBy(double A) const;
  /// A quarter turn counter-clockwise, exact.
  constexpr TPoint2D RotateCcw90() const { return {-Y, X}; }
  /// A quarter turn clockwise, exact.
  constexpr TPoint2D RotateCw90() const { return {Y, -X}; }

  /// The directions are the same or opposite: |sin| of the angle between them is at most `Eps`
  /// (normalised, unlike the parallel test of `TVLine2D::RelationWithLine`). The zero vector is
  /// parallel to everything.
  bool IsParallelTo(const TPoint2D& B, double Eps = kLinearTolerance) const;

  /// Both coordinates rounded to `Digits` decimals, exact halves to even; negative `Digits` round
  /// to tens, hundreds and so on. Values too large to have such decimals come back as they are.
  TPoint2D RoundTo(int Digits) const;
};

inline constexpr TPoint2D TPoint2D::FZero{};

inline constexpr TPoint2D Org2D{};         ///< The origin.
inline constexpr TPoint2D DcsX{1.0, 0.0};  ///< The unit X vector.

/// The point of these coordinates, as hosts spell it.
constexpr TPoint2D Point2D(double X, double Y) {
  return {X, Y};
}

/// `P` + (`Q` − `P`)·`T`: exact at both ends.
constexpr TPoint2D Lerp(const TPoint2D& P, const TPoint2D& Q, double T) {
  return T == 1.0 ? Q : P + (Q - P) * T;  // exact: T = 1 must answer Q itself
}

using TDynPoints2D = std::vector<TPoint2D>;  ///< Points exchanged with the host.
using TFloatDynArray = std::vector<double>;  ///< Numbers exchanged with the host.

namespace Cadtypes {

/// The host's point of two 32-bit integers; the clipping library's 64-bit point has the plain name.
struct TIntPoint {
  int X = 0;  ///< To the right.
  int Y = 0;  ///< Upwards.

  /// The point of these coordinates.
  static constexpr TIntPoint Create(int X, int Y) { return {X, Y}; }
  friend constexpr bool operator==(const TIntPoint&, const TIntPoint&) = default;
};

}  // namespace Cadtypes

}  // namespace tarnalgo
