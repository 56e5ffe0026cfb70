#include "geometryAlgo/UPolygonGetter/NodeEdges.h"

#include <algorithm>

#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// Takes the ownership from a list until the end of the scope, also when something raises.
class TOwnershipOff {
 public:
  explicit TOwnershipOff(TMChainExtends& List) : FList(List) { FList.SetOwnsObjects(false); }
  TOwnershipOff(const TOwnershipOff&) = delete;
  TOwnershipOff& operator=(const TOwnershipOff&) = delete;
  ~TOwnershipOff() { FList.SetOwnsObjects(true); }

 private:
  TMChainExtends& FList;
};

}  // namespace

int TNodeEdges::GetNextChains(TMChainExtend* Chain, bool AllowBack) {
  return Turn(Chain, AllowBack, 1);
}

int TNodeEdges::GetPreChains(TMChainExtend* Chain, bool AllowBack) {
  return Turn(Chain, AllowBack, -1);
}

int TNodeEdges::Turn(TMChainExtend* Chain, bool AllowBack, int Step) {
  const int Own = IndexOf(Chain);
  if (Own < 0) return -1;
  int Position = Own;
  for (int I = 1; I < Count(); ++I) {
    Position = TMathUtils::CycInc(Position, Step, Count());
    const TMChainExtend& Other = *(*this)[Position];
    if (!Other.IsAvailable()) continue;
    if (Count() < 3 || !Other.EqualsTo(*Chain)) return Position;
  }
  // The walk is back at its own place.
  if (!Chain->IsAvailable()) return -1;
  if (AllowBack) return Own;
  Chain->SetIsAvailable(false);
  return -1;
}

int TNodeEdges::IndexofByValue(const TMChainExtend& Chain) const {
  const auto Found = std::find_if(begin(), end(),
                                  [&](const TMChainExtend* Item) { return Item->EqualsTo(Chain); });
  return Found == end() ? -1 : static_cast<int>(Found - begin());
}

void TNodeEdges::DeleteReverse(TMChainExtend* Chain, bool FreeIt) {
  if (FreeIt) {
    Remove(Chain);
    return;
  }
  const TOwnershipOff Off(*this);
  Remove(Chain);
}

}  // namespace tarnalgo
