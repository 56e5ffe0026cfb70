#include "geometryAlgo/UPolygonGetter/TopoLinks.h"

#include <algorithm>
#include <polyclipping/clipper.hpp>
#include <utility>

#include "containers/Container/Bytewise.h"
#include "geometryAlgo/UPolygonGetter/CompareTool.h"
#include "geometryAlgo/UPolygonGetter/TopoGraph.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

std::size_t TNodeHash::operator()(const TIntPoint& P) const {
  struct TPair {
    ClipperLib::cInt X;
    ClipperLib::cInt Y;
  };
  return TBytewiseHash<TPair>()({P.X, P.Y});
}

bool TNodeEqual::operator()(const TIntPoint& A, const TIntPoint& B) const {
  return A == B;
}

TTopoLinks::TTopoLinks() = default;
TTopoLinks::TTopoLinks(TTopoLinks&&) noexcept = default;
TTopoLinks& TTopoLinks::operator=(TTopoLinks&&) noexcept = default;
TTopoLinks::~TTopoLinks() = default;

TTopoLinks TTopoLinks::CreateTopoLink(const TMChainExtends& Chains) {
  TTopoLinks Links;
  for (const TMChainExtend* Chain : Chains) {
    const std::vector<TPoint2D>& Points = Chain->Points();
    if (Points.size() < 2) continue;
    if (!std::all_of(Points.begin(), Points.end(), TPoint2DUtils::IsFinite)) continue;
    Links.AddValue(TransToInt(Chain->First()), Chain->Clone());
    Links.AddValue(TransToInt(Chain->Last()), Chain->CloneReverse());
  }
  Links.SortTopoChainsMax();
  return Links;
}

void TTopoLinks::AddValue(const TIntPoint& P, std::unique_ptr<TMChainExtend> Chain) {
  if (!Chain) RaiseError<EParamError>("TTopoLinks.AddValue", "no chain given");
  TNodeEdges* Edges = nullptr;
  if (TryGetValue(P, Edges)) {
    Edges->Add(std::move(Chain));
    return;
  }
  auto Made = std::make_unique<TNodeEdges>();
  Made->Add(std::move(Chain));
  Add(P, std::move(Made));
}

void TTopoLinks::AddBridgeValue(const TIntPoint& P, std::unique_ptr<TMChainExtend> Chain) {
  if (Chain) Chain->SetIsBridge(true);
  AddValue(P, std::move(Chain));
}

void TTopoLinks::AddDanglingValue(const TIntPoint& P, std::unique_ptr<TMChainExtend> Chain) {
  if (Chain) Chain->SetIsDangling(true);
  AddValue(P, std::move(Chain));
}

TIntPointList TTopoLinks::SortDicIntPoint(bool ResetFlags) {
  TIntPointList Nodes = SortedNodes(*this);
  if (ResetFlags) {
    for (const auto& [Key, Edges] : *this) {
      for (TMChainExtend* Chain : *Edges) Chain->SetIsAvailable(true);
    }
  }
  return Nodes;
}

bool TTopoLinks::HaveLoop(const TIntPoint& P, const TIntPoint& Q, TMChainExtend*& Chain) const {
  Chain = nullptr;
  TNodeEdges* Edges = nullptr;
  if (!TryGetValue(P, Edges)) return false;
  int Count = 0;
  for (TMChainExtend* Item : *Edges) {
    if (Item->IsEmpty() || TransToInt(Item->Last()) != Q) continue;
    Chain = Item;
    ++Count;
  }
  return Count > 1;
}

void TTopoLinks::SortTopoChainsMax() {
  for (const auto& [Key, Edges] : *this) {
    if (Edges->Count() > 1) {
      Edges->SortByKey([](const TMChainExtend& Chain) { return Chain.AngleToXAxis(); },
                       [](double A, double B) { return CompareExact(B, A); });
    }
  }
}

void TTopoLinks::SortTopoChainsMin() {
  for (const auto& [Key, Edges] : *this) {
    if (Edges->Count() > 1) {
      Edges->SortByKey([](const TMChainExtend& Chain) { return Chain.AngleToXAxis(); },
                       [](double A, double B) { return CompareExact(A, B); });
    }
  }
}

}  // namespace tarnalgo
