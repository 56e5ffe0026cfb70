#include "examples/sheet_planner/Drawing.h"

namespace sheet_planner {

int TDrawing::LayerIndex(const std::string& LayerName) {
  const auto [Place, IsNew] = FLayerIndices.try_emplace(LayerName, static_cast<int>(Layers.size()));
  if (IsNew) Layers.push_back(LayerName);
  return Place->second;
}

}  // namespace sheet_planner
