#include "geometryAlgo/UDualSimplex/IntegerVec.h"

#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

TIntegerVec::TIntegerVec(std::initializer_list<int> Items) : TIntegerVec(std::vector<int>(Items)) {}

TIntegerVec::TIntegerVec(const std::vector<int>& Items) {
  if (!Items.empty()) FItems = std::make_shared<std::vector<int>>(Items);
}

void TIntegerVec::SetSize(int Size) {
  if (Size < 0) RaiseError<EParamError>("TIntegerVec.SetSize", "the size is negative");
  if (Size > kMostItems) RaiseError<EParamError>("TIntegerVec.SetSize", "the size is too large");
  auto Items =
      FItems ? std::make_shared<std::vector<int>>(*FItems) : std::make_shared<std::vector<int>>();
  Items->resize(static_cast<std::size_t>(Size));
  FItems = Size > 0 ? std::move(Items) : nullptr;
}

TIntegerVec TIntegerVec::Clone() const {
  return FItems ? TIntegerVec(*FItems) : TIntegerVec();
}

int* TIntegerVec::Checked(int Index) const {
  if (Index < 0 || Index >= GetSize()) {
    RaiseError<EParamError>("TIntegerVec", "the index is out of range");
  }
  return FItems->data() + Index;
}

}  // namespace tarnalgo
