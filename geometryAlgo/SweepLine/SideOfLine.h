#pragma once  // geometryAlgo/SweepLine/SideOfLine.h

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// The exact sign of `TPoint2DUtils::IsLeft`: 1 when `C` is left of A→B, −1 on the right, 0 on the
/// line. Internal to the library.
///
/// Doubles where their error bound decides (Shewchuk 1997), then extended precision, then the
/// determinant as an exact sum. For coordinates below 2^400.
int SideOfLine(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C);

/// Twice the area of the triangle, positive when `C` is left of A→B: of the exact sign, and within
/// 2^-28 of itself.
double RoundedSide(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C);

}  // namespace tarnalgo
