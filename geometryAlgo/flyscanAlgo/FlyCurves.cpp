#include "geometryAlgo/flyscanAlgo/FlyCurves.h"

namespace tarnalgo {

TPoint2D TFlyCurves::StartPoint() const {
  if (IsEmpty() || !First()->GeCurve()) return TPoint2D::FZero;
  return First()->GeCurve()->StartPoint();
}

TPoint2D TFlyCurves::EndPoint() const {
  if (IsEmpty() || !Last()->GeCurve()) return TPoint2D::FZero;
  return Last()->GeCurve()->EndPoint();
}

void TFlyCurves::ReverseDir() {
  Reverse();
  for (TFlyCurve* const Piece : *this) {
    if (!Piece->GeCurve()) continue;
    const TPoint2D PathStart = Piece->GetPathStart();
    Piece->GeCurve()->Reverse();
    Piece->SetPathStart(PathStart);
  }
}

TOwningFlyCurves& TOwningFlyCurves::operator=(TOwningFlyCurves&& Other) noexcept {
  if (this != &Other) {
    Clear();  // with notification: the curves go with their pieces
    TFlyCurves::operator=(static_cast<TFlyCurves&&>(Other));
  }
  return *this;
}

TOwningFlyCurves::~TOwningFlyCurves() {
  Clear();
}

void TOwningFlyCurves::Notify(TFlyCurve& Item, TListChange Change) {
  if (Change == TListChange::Removed) delete Item.GeCurve();
}

}  // namespace tarnalgo
