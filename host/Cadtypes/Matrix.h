#pragma once  // host/Cadtypes/Matrix.h

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// The host's affine map of the plane: (M11·X + M12·Y + DX, M21·X + M22·Y + DY).
///
/// Calls compose in call order: each acts on the result of the former, so
/// `M.Translate(10, 0); M.Rotate(kPi / 2);` moves first and then turns about the origin.
struct TMatrix2D {
  ///@{
  /// The linear part, by rows.
  double M11 = 1.0;
  double M12 = 0.0;
  double M21 = 0.0;
  double M22 = 1.0;
  ///@}
  /// What is added last.
  double DX = 0.0;
  double DY = 0.0;  ///< Added last, along Y.

  constexpr TMatrix2D() = default;  // identity
  /// Takes the six numbers in the order of the rows, then the shift.
  constexpr TMatrix2D(double A11, double A12, double A21, double A22, double ADX, double ADY)
      : M11(A11), M12(A12), M21(A21), M22(A22), DX(ADX), DY(ADY) {}

  friend constexpr bool operator==(const TMatrix2D&, const TMatrix2D&) = default;

  /// Back to the identity.
  void Reset() { *this = TMatrix2D(); }
  /// Moves by (ADX, ADY).
  void Translate(double ADX, double ADY);
  /// Counter-clockwise about the origin, or about `Centre`.
  void Rotate(double A);
  void Rotate(double A, const TPoint2D& Centre);  ///< The same about `Centre`.
  /// Scales about the origin.
  void Scale(double KX, double KY);
  /// `Next` acts on the result of this map.
  void Append(const TMatrix2D& Next);

  /// The image of a point.
  constexpr TPoint2D Transform(const TPoint2D& P) const {
    return {M11 * P.X + M12 * P.Y + DX, M21 * P.X + M22 * P.Y + DY};
  }
  /// The linear part alone, for directions.
  constexpr TPoint2D TransformVector(const TPoint2D& V) const {
    return {M11 * V.X + M12 * V.Y, M21 * V.X + M22 * V.Y};
  }
  /// Of the linear part: the factor of areas, negative for a mirroring map.
  constexpr double Determinant() const { return M11 * M22 - M12 * M21; }
};

}  // namespace tarnalgo
