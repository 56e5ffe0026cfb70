#include "geometryAlgo/UPolygonGetter/NodePoint.h"

#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>

namespace tarnalgo {

namespace {

ClipperLib::cInt CeilingOf(double Value) {
  constexpr auto kGreatest = static_cast<double>(ClipperLib::hiRange);
  if (std::isnan(Value)) return 0;
  return static_cast<ClipperLib::cInt>(std::clamp(std::ceil(Value), -kGreatest, kGreatest));
}

}  // namespace

TIntPoint TransToInt(const TPoint2D& P) {
  const TPoint2D Rounded = P.RoundTo(kNodeDecimals);
  return TIntPoint(CeilingOf(Rounded.X * kNodeScale), CeilingOf(Rounded.Y * kNodeScale));
}

TPoint2D TransToTVPoint(const TIntPoint& P) {
  return {static_cast<double>(P.X) / kNodeScale, static_cast<double>(P.Y) / kNodeScale};
}

}  // namespace tarnalgo
