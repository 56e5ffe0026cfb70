#pragma once  // geometryAlgo/VedaType/Geometry.h

#include <memory>

#include "containers/Container/ObjectList.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadtypes/Matrix.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// What every shape container of the library can do: point lists, polylines, segment chains,
/// polygons with holes, and the lists of them.
///
/// Transforms change the container in place. They raise nothing; NaN and infinities pass through.
/// Containers belong to whoever made them; nothing here counts references.
class IVGeometry2D {
 public:
  virtual ~IVGeometry2D() = default;

  /// A deep copy of the same class. Every class of the family answers its own type here.
  std::unique_ptr<IVGeometry2D> Clone() const { return std::unique_ptr<IVGeometry2D>(DoClone()); }

  /// Signed area, counter-clockwise positive, 0 when there is none.
  virtual double Area() const = 0;
  /// The smallest box that covers everything; the empty (invalid) box when there is nothing.
  virtual TVRect2D BoundBox() const = 0;
  /// Every coordinate rounded to `Accuracy` decimals, exact halves to even.
  virtual void RoundTo(int Accuracy) = 0;
  /// Moved by `Vector`.
  virtual void Translate(const TPoint2D& Vector) = 0;
  /// Turned by `Angle` radians counter-clockwise about the origin, or about `Centre`.
  virtual void Rotate(double Angle) = 0;
  virtual void Rotate(double Angle, const TPoint2D& Centre) = 0;  ///< The same about `Centre`.
  /// A quarter turn about the origin, counter-clockwise and clockwise. Exact: four of one kind, or
  /// one of each, are the identity.
  virtual void RotateBy90() = 0;
  virtual void RotateBy_90() = 0;  ///< A quarter turn clockwise, as exact.
  /// Mirrored at the Y axis: (X, Y) becomes (−X, Y). Exact; the sense of rotation changes.
  virtual void YMirror() = 0;
  /// Every point mapped by `Matrix`. What is no polyline keeps its kind: see the classes with arcs.
  virtual void Transform(const TMatrix2D& Matrix) = 0;

 protected:
  IVGeometry2D() = default;
  IVGeometry2D(const IVGeometry2D&) = default;
  IVGeometry2D(IVGeometry2D&&) = default;
  IVGeometry2D& operator=(const IVGeometry2D&) = default;
  IVGeometry2D& operator=(IVGeometry2D&&) = default;

 private:
  /// The copy, owned by the caller; a raw pointer so that overriders can narrow its type.
  virtual IVGeometry2D* DoClone() const = 0;
};

/// A list of containers of one kind, itself such a container: every operation acts on each member.
///
///     TVGeometry2DList<TVPolyline2D> Contours;
///     Contours.Add(std::make_unique<TVPolyline2D>(Box));
///     Contours.Translate({10, 0});
///
/// `Area` is the sum of the members' signed areas (a hole that runs against its outer cancels),
/// `BoundBox` the union of their boxes. `T` offers what `IVGeometry2D` names and a `Clone` that
/// answers `std::unique_ptr<T>`.
/// Ownership: as `TObjectList`. A clone owns copies of the members, also when this list does not
/// own.
template <class T>
class TVGeometry2DList : public TObjectList<T>, public IVGeometry2D {
 public:
  using TObjectList<T>::TObjectList;

  /// A fresh empty list of the same class.
  std::unique_ptr<TVGeometry2DList> New() const {
    return std::unique_ptr<TVGeometry2DList>(DoNew());
  }
  /// A list of the same class with copies of the members, which it owns.
  std::unique_ptr<TVGeometry2DList> Clone() const {
    return std::unique_ptr<TVGeometry2DList>(DoClone());
  }

  /// The sum of the signed areas.
  double Area() const override {
    double Sum = 0.0;
    for (const T* Item : *this) Sum += Item->Area();
    return Sum;
  }
  /// The box that covers all members.
  TVRect2D BoundBox() const override {
    TVRect2D Box;
    for (const T* Item : *this) Box.ExpandInPlace(Item->BoundBox());
    return Box;
  }
  /// Rounds every member.
  void RoundTo(int Accuracy) override {
    for (T* Item : *this) Item->RoundTo(Accuracy);
  }
  /// Moves every member.
  void Translate(const TPoint2D& Vector) override {
    for (T* Item : *this) Item->Translate(Vector);
  }
  /// Turns every member about the origin.
  void Rotate(double Angle) override {
    for (T* Item : *this) Item->Rotate(Angle);
  }
  /// Turns every member about `Centre`.
  void Rotate(double Angle, const TPoint2D& Centre) override {
    for (T* Item : *this) Item->Rotate(Angle, Centre);
  }
  /// Turns every member by a quarter turn counter-clockwise.
  void RotateBy90() override {
    for (T* Item : *this) Item->RotateBy90();
  }
  /// Turns every member by a quarter turn clockwise.
  void RotateBy_90() override {
    for (T* Item : *this) Item->RotateBy_90();
  }
  /// Mirrors every member at the Y axis.
  void YMirror() override {
    for (T* Item : *this) Item->YMirror();
  }
  /// Maps every member.
  void Transform(const TMatrix2D& Matrix) override {
    for (T* Item : *this) Item->Transform(Matrix);
  }

 protected:
  /// The empty list that `New` and `Clone` start from; a derived list answers its own class.
  virtual TVGeometry2DList* DoNew() const { return new TVGeometry2DList; }
  /// What `Clone` hands out.
  TVGeometry2DList* DoClone() const override {
    std::unique_ptr<TVGeometry2DList> Copy(DoNew());
    Copy->Reserve(this->Count());
    for (const T* Item : *this) Copy->Add(Item->Clone());
    return Copy.release();
  }
};

}  // namespace tarnalgo
