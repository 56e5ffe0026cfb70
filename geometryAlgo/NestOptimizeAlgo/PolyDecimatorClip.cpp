#include <algorithm>
#include <span>

#include "geometryAlgo/NestOptimizeAlgo/ListRange.h"
#include "geometryAlgo/NestOptimizeAlgo/PolyDecimator.h"
#include "geometryAlgo/NestOptimizeAlgo/TriangleClip.h"
#include "geometryAlgo/SweepLine/SideOfLine.h"
#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

std::vector<TPoint2D> TPolyDecimator::ClipTriangles(int First, int Last) const {
  const std::span<const TPoint2D> Range = ListRange(*FPoints, First, Last);  // raises
  return ClipRange(Range, 0, Last - First, TClipKind::Any, FTolerance);
}

std::vector<TPoint2D> TPolyDecimator::ClipConcaveTriangles(int First, int Last) const {
  ListRange(*FPoints, First, Last);  // raises
  return ClipRange(*FPoints, First, Last, TClipKind::Right, FTolerance);
}

bool TPolyDecimator::IsSmallConcaveTriangle(const TPoint2D& P0, const TPoint2D& P1,
                                            const TPoint2D& P2) const {
  return SideOfLine(P0, P1, P2) < 0 && TVLine2D(P0, P2).SegmentDistanceTo(P1) <= FTolerance;
}

std::vector<TPoint2D> TPolyDecimator::GetInscribedHull() const {
  if (!IsClosed() || FPoints->size() < 5) return *FPoints;
  return ClipRing(std::span(*FPoints).first(FPoints->size() - 1), TClipKind::Left, FTolerance);
}

std::vector<TPoint2D> TPolyDecimator::PlateSimplify() const {
  std::vector<TPoint2D> Points = *FPoints;
  Points.erase(std::unique(Points.begin(), Points.end()), Points.end());  // exact: repeats
  if (Points.empty()) return Points;
  if (Points.size() == 1 && FPoints->size() > 1) Points.push_back(Points.front());
  return ClipRange(Points, 0, static_cast<int>(Points.size()) - 1, TClipKind::RightOrStraight,
                   FTolerance);
}

}  // namespace tarnalgo
