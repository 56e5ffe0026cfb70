#pragma once  // host/Cadgeometry/GeCompositeCurve.h

#include <cstddef>

#include "host/Cadgeometry/GeCurve.h"

namespace tarnalgo {

/// Curves traversed one after the other, as one host curve.
///
///     TGeCompositeCurve2D Slot;
///     Slot.AddCurve(std::make_unique<TGeLine2D>(A, B));
///     Slot.AddCurve(std::make_unique<TGeCircularArc2D>(B, 1.0, C));
///
/// Members need not touch: length, box and samples are those of the members all the same. Empty
/// members are passed over. Members may be composites, nested as deep as memory allows; one that a
/// host derives is taken as the composite it is. A composite must not contain itself.
/// Ownership: of each member on its own: a curve added is owned, one of a list created with `Owns`
/// = false is only referred to and must outlive the composite. Copies and clones own all theirs.
class TGeCompositeCurve2D : public TGeCurve2D {
 public:
  TGeCompositeCurve2D() = default;
  /// Over a list, in its order.
  /// Ownership: with `Owns` set the curves pass to the composite, also when the call raises.
  /// Errors: an empty pointer, or with `Owns` the same curve twice, `EParamError`.
  TGeCompositeCurve2D(const std::vector<TGeCurve2D*>& Curves, bool Owns);
  /// Clones every member, those only referred to as well.
  TGeCompositeCurve2D(const TGeCompositeCurve2D& Other);
  TGeCompositeCurve2D& operator=(const TGeCompositeCurve2D& Other);  ///< As the constructor.
  TGeCompositeCurve2D(TGeCompositeCurve2D&&) noexcept = default;
  TGeCompositeCurve2D& operator=(TGeCompositeCurve2D&&) noexcept = default;
  ~TGeCompositeCurve2D() override;

  /// An independent composite, its members cloned and owned.
  std::unique_ptr<TGeCompositeCurve2D> Clone() const {
    return std::unique_ptr<TGeCompositeCurve2D>(NewClone());
  }

  /// Appends a member, which passes to the composite.
  /// Errors: an empty pointer, `EParamError`.
  void AddCurve(std::unique_ptr<TGeCurve2D> Curve);
  /// Room for `Count` members in all, so that adding them does not move the list.
  void Reserve(int Count);
  /// Members, empty ones included.
  int GetCurveCount() const { return static_cast<int>(FCurves.size()); }
  /// Member `Index`, which stays the composite's.
  /// Errors: an index outside 0 .. count − 1, `EParamError`.
  TGeCurve2D* GetCurve(int Index) { return FCurves[CheckedIndex(Index)].get(); }
  /// Member `Index`, to look at.
  const TGeCurve2D* GetCurve(int Index) const { return FCurves[CheckedIndex(Index)].get(); }

  bool IsEmpty() const override;
  TPoint2D StartPoint() const override;
  TPoint2D EndPoint() const override;
  double ParamTo() const override { return GetCurveCount(); }
  /// Where two members meet, at a whole parameter, the point is the start of the later one.
  TPoint2D PointAtParam(double T) const override;
  double NearestParam(const TPoint2D& P, double& Distance) const override;
  /// Reverses the order and every member, referred ones included; one referred to more than once
  /// is turned once.
  void Reverse() override;
  TRect2D GetBoundBox() const override;
  double CurveLength() const override;
  void AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const override;
  void AppendPieces(std::vector<TCurvePiece>& Pieces) const override;

 protected:
  TGeCompositeCurve2D* NewClone() const override { return new TGeCompositeCurve2D(*this); }

 private:
  /// Frees a member that is owned, leaves one that is referred to.
  struct TRelease {
    bool Owns = true;
    TRelease() = default;
    explicit TRelease(bool AOwns) : Owns(AOwns) {}
    TRelease(std::default_delete<TGeCurve2D>) {}  // whence a unique_ptr may become a member
    void operator()(TGeCurve2D* Curve) const {
      if (Owns) delete Curve;
    }
  };
  using TMember = std::unique_ptr<TGeCurve2D, TRelease>;

  class TLeafWalk;

  void AppendCopies(const TGeCompositeCurve2D& Other);
  /// Where a curve without a point stands, member `Index` of this one: the start of what follows
  /// it here, else the end of what precedes it; false when there is neither.
  bool PlaceOfEmpty(int Index, TPoint2D& Place) const;
  std::size_t CheckedIndex(int Index) const;

  std::vector<TMember> FCurves;
};

}  // namespace tarnalgo
