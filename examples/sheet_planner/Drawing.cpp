#include "examples/sheet_planner/Drawing.h"

#include <cmath>

namespace sheet_planner {

using namespace tarnalgo;

int TDrawing::LayerIndex(const std::string& LayerName) {
  const auto [Place, IsNew] = FLayerIndices.try_emplace(LayerName, static_cast<int>(Layers.size()));
  if (IsNew) Layers.push_back(LayerName);
  return Place->second;
}

void TDrawing::AddBulge(const TPoint2D& From, const TPoint2D& To, double Bulge, int Layer) {
  // A bulge this small bows less than a nanometre per metre of chord.
  constexpr double kStraightBulge = 1e-9;
  if (std::abs(Bulge) < kStraightBulge) return AddEdge(From, To, Layer);
  if (From.Equals(To)) return;
  Arcs.push_back({TArc2D::CreateBulge(From, To, Bulge), Layer});
}

}  // namespace sheet_planner
