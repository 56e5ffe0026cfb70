#include "geometryAlgo/VedaType/CADExtendUtils.h"

namespace tarnalgo {

double TCADExtendUtils::CalcArea(const std::vector<TPoint2D>& Points) {
  const std::size_t Count = Points.size();
  if (Count < 3) return 0.0;
  // The differences of Y add up to 0, so X may be taken relative to any place: far from the origin
  // only the size of the ring counts.
  const double Origin = Points.front().X;
  double Sum = 0.0;
  for (std::size_t I = 0; I < Count; ++I) {
    const double Before = Points[I == 0 ? Count - 1 : I - 1].Y;
    const double After = Points[I + 1 == Count ? 0 : I + 1].Y;
    Sum += (Points[I].X - Origin) * (After - Before);
  }
  return 0.5 * Sum;
}

}  // namespace tarnalgo
