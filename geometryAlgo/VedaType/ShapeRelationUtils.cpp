#include "geometryAlgo/VedaType/ShapeRelationUtils.h"

#include <algorithm>

#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// The relations of two regions seen from one of them, "mine", or from the other.
class TPartsView {
 public:
  TPartsView(const TShapeRelationUtils::TParts& Parts, bool IsSwapped)
      : FParts(Parts), FIsSwapped(IsSwapped) {}

  std::size_t MyCount() const { return FIsSwapped ? FParts[0].size() : FParts.size(); }
  std::size_t TheirCount() const { return FIsSwapped ? FParts.size() : FParts[0].size(); }
  /// Where their part lies with respect to mine.
  TShapeRelation At(std::size_t Mine, std::size_t Their) const {
    if (!FIsSwapped) return FParts[Mine][Their];
    switch (const TShapeRelation Relation = FParts[Their][Mine]) {
      case srContain:
        return srContained;
      case srContained:
        return srContain;
      default:
        return Relation;
    }
  }

  /// Their whole region has that relation to one of my holes.
  bool HasHoleWith(TShapeRelation Relation) const {
    for (std::size_t I = 1; I < MyCount(); ++I) {
      if (At(I, 0) == Relation) return true;
    }
    return false;
  }
  /// Their region lies in mine.
  bool HoldTheirs() const {
    if (At(0, 0) != srContained && At(0, 0) != srEqual) return false;
    for (std::size_t I = 1; I < MyCount(); ++I) {
      if (!KeepOutOf(I)) return false;
    }
    return true;
  }

 private:
  bool KeepOutOf(std::size_t MyHole) const {
    switch (At(MyHole, 0)) {
      case srDeviate:
      case srOn:
        return true;
      case srContain:  // within their outline: harmless where they have a hole round it
        for (std::size_t J = 1; J < TheirCount(); ++J) {
          if (At(MyHole, J) == srContain || At(MyHole, J) == srEqual) return true;
        }
        return false;
      default:
        return false;
    }
  }

  const TShapeRelationUtils::TParts& FParts;
  const bool FIsSwapped;
};

}  // namespace

TShapeRelation TShapeRelationUtils::CalcRegionRelation(const TParts& Parts) {
  for (const std::vector<TShapeRelation>& Row : Parts) {
    if (Row.size() != Parts.front().size()) {
      RaiseError<EParamError>("TShapeRelationUtils", "rows of different lengths");
    }
  }
  if (Parts.empty() || Parts.front().empty()) return srDeviate;
  const TShapeRelation Outlines = Parts[0][0];
  if (Outlines != srContain && Outlines != srContained && Outlines != srEqual) return Outlines;
  const TPartsView OfFirst(Parts, false);
  const TPartsView OfSecond(Parts, true);
  if (OfFirst.HasHoleWith(srContained) || OfSecond.HasHoleWith(srContained)) return srDeviate;
  if (OfFirst.HasHoleWith(srEqual) || OfSecond.HasHoleWith(srEqual)) return srOn;
  const bool SecondIsInFirst = OfFirst.HoldTheirs();
  const bool FirstIsInSecond = OfSecond.HoldTheirs();
  if (SecondIsInFirst && FirstIsInSecond) return srEqual;
  if (SecondIsInFirst) return srContained;
  return FirstIsInSecond ? srContain : srCross;
}

TShapeRelation TShapeRelationUtils::CalcRegionRelation(const TVHPolygon& First,
                                                       const TVHPolygon& Second, double Eps) {
  std::vector<TVRect2D> Boxes;
  for (const TVPolyline2D* Part : Second) Boxes.push_back(Part->BoundBox().Inflate(Eps));
  TParts Parts;
  for (const TVPolyline2D* Mine : First) {
    const TVRect2D Box = Mine->BoundBox();
    std::vector<TShapeRelation>& Row = Parts.emplace_back();
    for (int J = 0; J < Second.Count(); ++J) {
      const bool AreApart = !Box.Intersect(Boxes[static_cast<std::size_t>(J)]).IsValid();
      Row.push_back(AreApart ? srDeviate : Mine->RelationWith(*Second[J], Eps));
    }
  }
  const TShapeRelation Relation = CalcRegionRelation(Parts);
  return Relation == srDeviate && First.IsCrossWith(Second, Eps) ? srOn : Relation;
}

}  // namespace tarnalgo
