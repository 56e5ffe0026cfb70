#include "geometryAlgo/VedaType/StrictHull.h"

#include <algorithm>

#include "geometryAlgo/VedaType/LexicographicSort.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadtypes/ExtendedPoint.h"

namespace tarnalgo {

namespace {

bool TurnsLeft(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  const TExtPoint2D From(A);
  return (TExtPoint2D(B) - From).CrossMul(TExtPoint2D(C) - From) > 0.0L;
}

/// Appends the lower hull of points in lexicographic order without its last point; of the reverse
/// order the upper hull.
template <class TIterator>
void AppendHalfHull(TIterator First, TIterator Last, std::vector<TPoint2D>& Hull) {
  const std::size_t Base = Hull.size();
  for (; First != Last; ++First) {
    while (Hull.size() >= Base + 2 && !TurnsLeft(Hull[Hull.size() - 2], Hull.back(), *First)) {
      Hull.pop_back();
    }
    Hull.push_back(*First);
  }
  Hull.pop_back();
}

}  // namespace

std::vector<TPoint2D> StrictHull(std::vector<TPoint2D> Points) {
  std::erase_if(Points, [](const TPoint2D& P) { return !TPoint2DUtils::IsFinite(P); });
  SortByXY(Points, [](const TPoint2D& P) { return P; });
  Points.erase(std::unique(Points.begin(), Points.end()), Points.end());
  if (Points.size() < 3) return Points;
  std::vector<TPoint2D> Hull;
  AppendHalfHull(Points.begin(), Points.end(), Hull);
  AppendHalfHull(Points.rbegin(), Points.rend(), Hull);
  return Hull;
}

TVPolyline2D ClosedStrictHull(const TVPoint2DList& Points) {
  TVPolyline2D Hull(StrictHull(Points.Points()));
  if (Hull.Count() > 1) Hull.Add(Hull.First());
  return Hull;
}

}  // namespace tarnalgo
