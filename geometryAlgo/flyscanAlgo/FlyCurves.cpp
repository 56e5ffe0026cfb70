#include "geometryAlgo/flyscanAlgo/FlyCurves.h"

#include <vector>

namespace tarnalgo {

namespace {

void Turn(const TFlyCurve& Piece) {
  if (Piece.GeCurve()) Piece.GeCurve()->Reverse();
}

}  // namespace

TPoint2D TFlyCurves::StartPoint() const {
  if (IsEmpty() || !First()->GeCurve()) return TPoint2D::FZero;
  return First()->GeCurve()->StartPoint();
}

TPoint2D TFlyCurves::EndPoint() const {
  if (IsEmpty() || !Last()->GeCurve()) return TPoint2D::FZero;
  return Last()->GeCurve()->EndPoint();
}

void TFlyCurves::ReverseDir() {
  std::vector<TPoint2D> Starts;
  std::vector<double> Params;
  for (const TFlyCurve* const Piece : *this) Starts.push_back(Piece->GetPathStart());
  Params.reserve(Starts.size());
  int Turned = 0;
  try {
    for (; Turned < Count(); ++Turned) Turn(*(*this)[Turned]);
    for (int I = 0; I < Count(); ++I) {
      const TGeCurve2D* const Curve = (*this)[I]->GeCurve();
      const TPoint2D& Start = Starts[static_cast<std::size_t>(I)];
      Params.push_back(Curve ? Curve->ParamOfPoint(Start, DefTol) : (*this)[I]->PathStartParam());
    }
  } catch (...) {
    while (Turned > 0) Turn(*(*this)[--Turned]);
    throw;
  }
  for (int I = 0; I < Count(); ++I) {
    (*this)[I]->SetPathStartParam(Params[static_cast<std::size_t>(I)]);
  }
  Reverse();
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
