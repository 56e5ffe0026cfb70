#pragma once  // geometryAlgo/SweepLine/SideOfLine.h

#include <cmath>
#include <limits>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Twice the area of the triangle in the precision of `T`, and a bound of its rounding.
template <class T>
struct TRoundedSide {
  T Value;
  T Bound;

  TRoundedSide(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
    const T Left = (T(B.X) - T(A.X)) * (T(C.Y) - T(A.Y));
    const T Right = (T(C.X) - T(A.X)) * (T(B.Y) - T(A.Y));
    Value = Left - Right;
    Bound = std::numeric_limits<T>::epsilon() * 2 * (std::abs(Left) + std::abs(Right)) +
            std::numeric_limits<T>::min() * 16;  // products that underflow
  }
  /// 0 where the rounding does not decide.
  int Sign() const { return Value > Bound ? 1 : (Value < -Bound ? -1 : 0); }
};

/// `SideOfLine` where doubles do not decide.
int SlowSideOfLine(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C);

/// The exact sign of `TPoint2DUtils::IsLeft`: 1 when `C` is left of A→B, −1 on the right, 0 on the
/// line. Internal to the library.
///
/// Doubles where their error bound decides (Shewchuk 1997), then extended precision, then the
/// determinant as an exact sum. For coordinates below 2^400.
inline int SideOfLine(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  const int Sign = TRoundedSide<double>(A, B, C).Sign();
  return Sign != 0 ? Sign : SlowSideOfLine(A, B, C);
}

/// Twice the area of the triangle, positive when `C` is left of A→B: of the exact sign, and within
/// 2^-28 of itself.
double RoundedSide(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C);

}  // namespace tarnalgo
