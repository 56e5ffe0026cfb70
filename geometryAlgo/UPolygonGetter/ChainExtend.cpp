#include "geometryAlgo/UPolygonGetter/ChainExtend.h"

#include <algorithm>
#include <utility>

namespace tarnalgo {

std::unique_ptr<TMChainExtend> TMChainExtend::CloneReverse() const {
  std::unique_ptr<TMChainExtend> Result = Clone();
  Result->Reverse();
  std::swap(Result->FSource.From, Result->FSource.To);
  return Result;
}

double TMChainExtend::AngleToXAxis() const {
  FAngle = Count() < 2 ? 0.0 : (FPoints[1] - FPoints[0]).AngleFrom(DcsX);
  return FAngle;
}

bool TMChainExtend::EqualsTo(const TMChainExtend& Other) const {
  if (Count() != Other.Count()) return false;
  const auto IsSamePlace = [](const TPoint2D& P, const TPoint2D& Q) { return P.Equals(Q); };
  const std::vector<TPoint2D>& Theirs = Other.Points();
  return std::equal(FPoints.begin(), FPoints.end(), Theirs.begin(), IsSamePlace) ||
         std::equal(FPoints.begin(), FPoints.end(), Theirs.rbegin(), IsSamePlace);
}

}  // namespace tarnalgo
