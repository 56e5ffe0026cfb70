#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

void TVPolyline2D::DeleteNeighbourClosed(double Eps) {
  if (FPoints.size() < 2) return;
  const TPoint2D End = FPoints.back();
  std::vector<TPoint2D> Kept{FPoints.front()};
  for (const TPoint2D& P : FPoints) {
    if (!P.Equals(Kept.back(), Eps)) Kept.push_back(P);
  }
  // The end replaces whatever lies within the tolerance before it.
  while (Kept.size() > 1 && Kept.back().Equals(End, Eps)) Kept.pop_back();
  if (Kept.size() > 1 || !Kept.back().Equals(End, Eps)) Kept.push_back(End);
  FPoints = std::move(Kept);
}

}  // namespace tarnalgo
