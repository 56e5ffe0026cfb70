#include "host/Cadtypes/Point.h"

#include <cmath>

namespace tarnalgo {

namespace {

/// An angle of (−2π, 2π) brought into [0, 2π); a hair below 0 would round up to 2π itself.
double IntoFullTurn(double Angle) {
  if (Angle >= 0.0) return Angle;
  const double Turned = Angle + kFullTurn;
  return Turned < kFullTurn ? Turned : 0.0;
}

/// The angle from `A` to `B` in [−π, π], 0 when one of them has no direction.
double SignedAngle(const TPoint2D& A, const TPoint2D& B) {
  const double Cross = A.CrossMul(B);
  const double Dot = A.DotMul(B);
  const double Size = std::abs(Cross) + std::abs(Dot);
  if (Size > 1e-290 && Size < 1e300) return std::atan2(Cross, Dot);
  // The products leave the range of a double: the same angle between the unit vectors.
  const TPoint2D UnitA = A.Normal();
  const TPoint2D UnitB = B.Normal();
  if (UnitA == TPoint2D::FZero || UnitB == TPoint2D::FZero) return 0.0;
  return std::atan2(UnitA.CrossMul(UnitB), UnitA.DotMul(UnitB));
}

/// Powers of ten are exact up to 10^22, their reciprocals never: tens are divided out, not
/// multiplied in.
double RoundDecimal(double Value, int Digits) {
  const double Power = std::pow(10.0, std::abs(static_cast<double>(Digits)));
  const double Scaled = Digits < 0 ? Value / Power : Value * Power;
  // From 2^52 on a double has no fraction left to round; a NaN fails the test too.
  if (!(std::abs(Scaled) < 4503599627370496.0)) return Value;
  const double Whole = std::nearbyint(Scaled);
  if (Whole == 0.0) return Whole;
  const double Rounded = Digits < 0 ? Whole * Power : Whole / Power;
  return std::isfinite(Rounded) ? Rounded : Value;
}

}  // namespace

TPoint2D TPoint2D::Normal() const {
  const double Length = Mag();
  if (!(Length > 0.0)) return {};
  if (Length > 1e-290 && Length < 1e300) return *this / Length;
  // Brought near 1 first: the quotient of denormals or of huge numbers has lost its digits.
  const double Largest = std::fmax(std::abs(X), std::abs(Y));
  if (!std::isfinite(Largest)) return {};
  const TPoint2D Scaled = *this / Largest;
  return Scaled / Scaled.Mag();
}

double TPoint2D::Angle() const {
  return IntoFullTurn(SignedAngle(DcsX, *this));
}

double TPoint2D::AngleFrom(const TPoint2D& B) const {
  return IntoFullTurn(SignedAngle(B, *this));
}

double TPoint2D::AngleBetween(const TPoint2D& B) const {
  return std::abs(SignedAngle(*this, B));
}

TPoint2D TPoint2D::RotateBy(double A) const {
  const double Cos = std::cos(A);
  const double Sin = std::sin(A);
  return {X * Cos - Y * Sin, X * Sin + Y * Cos};
}

bool TPoint2D::IsParallelTo(const TPoint2D& B, double Eps) const {
  return std::abs(Normal().CrossMul(B.Normal())) <= Eps;
}

TPoint2D TPoint2D::RoundTo(int Digits) const {
  return {RoundDecimal(X, Digits), RoundDecimal(Y, Digits)};
}

}  // namespace tarnalgo
