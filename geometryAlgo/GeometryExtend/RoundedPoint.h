#pragma once  // geometryAlgo/GeometryExtend/RoundedPoint.h

#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>

namespace tarnalgo {

/// The integer point nearest to a place in extended precision, halves to even, held within the
/// library's range; NaN gives 0. Internal to the pages of this unit.
inline ClipperLib::IntPoint RoundedPoint(long double X, long double Y) {
  const auto Rounded = [](long double Value) -> ClipperLib::cInt {
    constexpr auto kGreatest = static_cast<long double>(ClipperLib::hiRange);
    return std::isnan(Value) ? 0 : std::llrintl(std::clamp(Value, -kGreatest, kGreatest));
  };
  return ClipperLib::IntPoint(Rounded(X), Rounded(Y));
}

}  // namespace tarnalgo
