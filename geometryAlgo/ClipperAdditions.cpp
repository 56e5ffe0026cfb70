#include "geometryAlgo/ClipperAdditions.h"

#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>

namespace tarnalgo {

namespace {

ClipperLib::cInt ScaledCoordinate(double Value, double Scale) {
  constexpr long double kGreatest = static_cast<long double>(ClipperLib::hiRange);
  const long double Product = static_cast<long double>(Value) * Scale;
  if (std::isnan(Product)) return 0;
  return std::llrintl(std::clamp(Product, -kGreatest, kGreatest));
}

}  // namespace

TIntPoint ScaledIntPoint(const TPoint2D& P, double Scale) {
  return TIntPoint(ScaledCoordinate(P.X, Scale), ScaledCoordinate(P.Y, Scale));
}

}  // namespace tarnalgo
