#pragma once  // host/Cadtypes/Rect.h

#include <limits>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// The host's axis-aligned box, closed. Valid when `Min` <= `Max` on both axes (exact); any other
/// box, NaN included, stands for "empty" and is the identity of `Union`.
struct TRect2D {
  /// Lower left corner.
  TPoint2D Min{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  /// Upper right corner.
  TPoint2D Max{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

  /// The empty box, also what a default-made box is: `Min` = +infinity, `Max` = −infinity.
  static const TRect2D FNull;

  constexpr TRect2D() = default;
  /// Takes the corners as they are; in the wrong order they make an empty box.
  constexpr TRect2D(const TPoint2D& AMin, const TPoint2D& AMax) : Min(AMin), Max(AMax) {}

  friend constexpr bool operator==(const TRect2D&, const TRect2D&) = default;

  /// Not empty; a box of one point is valid.
  constexpr bool IsValid() const { return Min.X <= Max.X && Min.Y <= Max.Y; }
  /// Extent along X, negative for an empty box.
  constexpr double Width() const { return Max.X - Min.X; }
  /// Extent along Y, negative for an empty box.
  constexpr double Height() const { return Max.Y - Min.Y; }

  /// The smallest box that covers both; an invalid one adds nothing.
  TRect2D Union(const TRect2D& R) const;
  /// The smallest box that also covers `P`.
  TRect2D Union(const TPoint2D& P) const;
  /// Grown by `DX` on the left and right and `DY` below and above; an empty box stays empty.
  TRect2D Inflate(double DX, double DY) const;
  /// `R` lies in this box, each side with slack `Eps`. The empty box lies in every box and holds
  /// only empty ones.
  bool Contains(const TRect2D& R, double Eps = kLinearTolerance) const;
  /// `P` lies in the box or within `Eps` of it on each axis; never in an empty one.
  bool Contains(const TPoint2D& P, double Eps = kLinearTolerance) const;
};

inline constexpr TRect2D TRect2D::FNull{};

}  // namespace tarnalgo
