#pragma once  // geometryAlgo/GeometryExtend/RoundedPoint.h

#include <cmath>
#include <polyclipping/clipper.hpp>

namespace tarnalgo {

/// The integer point nearest to a place in extended precision, halves to even, held within the
/// library's range; NaN gives 0. Internal to the pages of this unit.
inline ClipperLib::IntPoint RoundedPoint(long double X, long double Y) {
  const auto Rounded = [](long double Value) -> ClipperLib::cInt {
    constexpr auto kGreatest = static_cast<long double>(ClipperLib::hiRange);
    if (std::isnan(Value)) return 0;
    if (std::abs(Value) < kGreatest) return std::llrintl(Value);
    return Value < 0.0L ? -ClipperLib::hiRange : ClipperLib::hiRange;
  };
  return ClipperLib::IntPoint(Rounded(X), Rounded(Y));
}

}  // namespace tarnalgo
