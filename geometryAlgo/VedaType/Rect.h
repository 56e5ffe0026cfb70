#pragma once  // geometryAlgo/VedaType/Rect.h

#include <limits>

#include "geometryAlgo/VedaType/Enums.h"
#include "host/Cadtypes/Point.h"
#include "host/Cadtypes/Rect.h"

namespace tarnalgo {

/// An axis-aligned box, closed, Y upwards.
///
/// A plain value; mind the order of the fields: Left, Right, Top, Bottom. Valid when
/// `Left` <= `Right` and `Bottom` <= `Top` (exact). Any other box, NaN included, stands for
/// "empty": it is the identity of `Expand` on both sides, holds no point and has nothing in common
/// with any box. Operations return new boxes unless their name says otherwise (`Set...`,
/// `...InPlace`).
struct TVRect2D {
  double Left = std::numeric_limits<double>::infinity();    ///< Least X.
  double Right = -std::numeric_limits<double>::infinity();  ///< Greatest X.
  double Top = -std::numeric_limits<double>::infinity();    ///< Greatest Y.
  double Bottom = std::numeric_limits<double>::infinity();  ///< Least Y.

  /// The empty box, the same value as `TRect2D::FNull`.
  constexpr TVRect2D() = default;
  /// The four sides as they are.
  constexpr TVRect2D(double ALeft, double ARight, double ATop, double ABottom)
      : Left(ALeft), Right(ARight), Top(ATop), Bottom(ABottom) {}
  /// The box of two opposite corners, whichever they are.
  constexpr TVRect2D(const TPoint2D& Corner1, const TPoint2D& Corner2)
      : Left(Less(Corner1.X, Corner2.X)),
        Right(Greater(Corner1.X, Corner2.X)),
        Top(Greater(Corner1.Y, Corner2.Y)),
        Bottom(Less(Corner1.Y, Corner2.Y)) {}
  /// The host's box.
  constexpr explicit TVRect2D(const TRect2D& R)
      : Left(R.Min.X), Right(R.Max.X), Top(R.Max.Y), Bottom(R.Min.Y) {}

  friend constexpr bool operator==(const TVRect2D&, const TVRect2D&) = default;

  /// Not empty; a box of one point is valid.
  constexpr bool IsValid() const {
    // Not short-circuit: one branch for the caller instead of two.
    return static_cast<bool>(static_cast<int>(Left <= Right) & static_cast<int>(Bottom <= Top));
  }

  /// Side `Index` in the order of the fields: 0 `Left`, 1 `Right`, 2 `Top`, 3 `Bottom`.
  /// Errors: any other index, "[Error] TVRect2D.GetCoor: 参数错误".
  double GetCoor(int Index) const;

  /// Centre; the origin for an empty box, whose mid-side points have the coordinate 0 likewise.
  constexpr TPoint2D Center() const { return {CenterX(), CenterY()}; }
  ///@{
  /// Corners, as the fields have them, and the middles of the sides.
  constexpr TPoint2D GetTopLeft() const { return {Left, Top}; }
  constexpr TPoint2D GetBottomLeft() const { return {Left, Bottom}; }
  constexpr TPoint2D GetTopRight() const { return {Right, Top}; }
  constexpr TPoint2D GetBottomRight() const { return {Right, Bottom}; }
  constexpr TPoint2D GetLeftCenter() const { return {Left, CenterY()}; }
  constexpr TPoint2D GetRightCenter() const { return {Right, CenterY()}; }
  constexpr TPoint2D GetTopCenter() const { return {CenterX(), Top}; }
  constexpr TPoint2D GetBottomCenter() const { return {CenterX(), Bottom}; }
  ///@}
  /// Moves that corner; the opposite one stays, nothing is put in order.
  void SetTopLeft(const TPoint2D& P);
  void SetBottomRight(const TPoint2D& P);  ///< Moves the lower right corner.

  // --- Measures ---

  /// Sides as they are: negative where an empty box is turned inside out.
  constexpr double Width() const { return Right - Left; }
  constexpr double Height() const { return Top - Bottom; }  ///< The side along Y.
  /// Length of the diagonal, 0 for an empty box.
  double HypotLength() const;
  /// The longer side runs along X; a square counts.
  constexpr bool LengthIsX() const { return Width() >= Height(); }
  /// `Width` / `Height`; 0 for an empty box and for one without height.
  double Ratio() const;
  /// `Width` · `Height`, −1 for an empty box.
  constexpr double Area() const { return IsValid() ? Width() * Height() : -1.0; }
  ///@{
  /// Area and perimeter with an empty box counted as nothing: 0.
  constexpr double GeneralArea() const { return IsValid() ? Width() * Height() : 0.0; }
  constexpr double GeneralPerimeter() const { return IsValid() ? 2.0 * (Width() + Height()) : 0.0; }
  ///@}

  // --- New boxes; an empty one stays as it is ---

  /// The box of the box turned by `A` radians, about the origin or about `Centre`.
  TVRect2D Rotate(double A) const;
  TVRect2D Rotate(double A, const TPoint2D& Centre) const;  ///< The same about `Centre`.
  /// Moved by a vector; `Offset` takes its coordinates.
  TVRect2D Translate(const TPoint2D& V) const;
  TVRect2D Offset(double DX, double DY) const;  ///< The same by coordinates.
  ///@{
  /// Grown by the distance on every side, or by `DX` left and right and `DY` above and below.
  /// Negative distances shrink, in the end to an empty box.
  constexpr TVRect2D Inflate(double D) const { return Inflate(D, D); }
  constexpr TVRect2D Inflate(double DX, double DY) const {
    if (!IsValid()) return *this;  // a wide margin would make it a box
    return {Left - DX, Right + DX, Top + DY, Bottom - DY};
  }
  ///@}
  /// Scaled about the origin, or about `Centre`. A negative factor mirrors.
  TVRect2D Zoom(double K) const;
  TVRect2D Zoom(double K, const TPoint2D& Centre) const;  ///< The same about `Centre`.

  ///@{
  /// The smallest box that covers both; an empty one (a point with NaN) adds nothing.
  constexpr TVRect2D Expand(const TVRect2D& R) const {
    if (!R.IsValid()) return *this;
    if (!IsValid()) return R;
    return {Less(Left, R.Left), Greater(Right, R.Right), Greater(Top, R.Top),
            Less(Bottom, R.Bottom)};
  }
  constexpr TVRect2D Expand(const TPoint2D& P) const { return Expand(TVRect2D(P, P)); }
  ///@}
  /// `Expand` of this very box.
  constexpr void ExpandInPlace(const TVRect2D& R) { *this = Expand(R); }
  constexpr void ExpandInPlace(const TPoint2D& P) { *this = Expand(P); }  ///< The same for a point.

  ///@{
  /// The common part, a line or a point where the boxes only touch; an empty box when they are
  /// apart. `*` is the same operation.
  constexpr TVRect2D Intersect(const TVRect2D& R) const {
    if (!R.IsValid() || !IsValid()) return {};
    return {Greater(Left, R.Left), Less(Right, R.Right), Less(Top, R.Top),
            Greater(Bottom, R.Bottom)};
  }
  constexpr TVRect2D operator*(const TVRect2D& R) const { return Intersect(R); }
  ///@}

  // --- Relations; tolerances are lengths ---

  /// `P` lies in the box, its border widened by `Eps` included.
  bool IsPointIn(const TPoint2D& P, double Eps = kLinearTolerance) const;

  /// Where `P` lies: `srOn` within `Eps` of the border (by coordinates), else `srIn` or `srOut`.
  TShapeRelation RelationWith(const TPoint2D& P, double Eps = kLinearTolerance) const;
  ///@{
  /// Where the other box lies, the other box being the subject: `srEqual` when no side differs by
  /// more than `Eps`; `srContained` when it lies in this one, `srContain` when this one lies in it,
  /// both with slack `Eps`; `srOn` when they only touch from outside; `srDeviate` when more than
  /// `Eps` apart, or one is empty; otherwise `srCross`. `RelationWithRectangle` is the same
  /// operation.
  TShapeRelation RelationWith(const TVRect2D& R, double Eps = kLinearTolerance) const;
  TShapeRelation RelationWithRectangle(const TVRect2D& R, double Eps = kLinearTolerance) const;
  ///@}

  /// A box of the size of `R` fits into this one as it stands (`Holds`), turned by 90° (`Holds90`).
  /// Only the sizes count, not the places; equality within `Eps` fits. An empty `R` always fits,
  /// an empty box holds nothing else.
  bool Holds(const TVRect2D& R, double Eps = kLinearTolerance) const;
  /// The same with `R` turned by 90°.
  bool Holds90(const TVRect2D& R, double Eps = kLinearTolerance) const;
  /// The same place and size: no side differs by more than `Eps`; any two empty boxes.
  bool SameAs(const TVRect2D& R, double Eps = kLinearTolerance) const;
  /// The same width and height within `Eps`; any two empty boxes.
  bool SizeEquals(const TVRect2D& R, double Eps = kLinearTolerance) const;

 private:
  static constexpr double Less(double A, double B) { return A < B ? A : B; }
  static constexpr double Greater(double A, double B) { return A < B ? B : A; }
  // Halves first: the sum of two huge coordinates would overflow.
  constexpr double CenterX() const { return IsValid() ? 0.5 * Left + 0.5 * Right : 0.0; }
  constexpr double CenterY() const { return IsValid() ? 0.5 * Bottom + 0.5 * Top : 0.0; }
};

}  // namespace tarnalgo
