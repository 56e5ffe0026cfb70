#pragma once  // geometryAlgo/NestOptimizeAlgo/ListRange.h

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/Cadtypes/Point.h"
#include "host/Exceptions.h"

namespace tarnalgo {

/// The points `First`..`Last` of a list, both included. Internal to the pages of this unit.
/// Errors: an empty or inverted range "Bad Input: beginIndex must less than endIndex.", one that
/// leaves the list `EParamError`.
inline std::span<const TPoint2D> ListRange(const std::vector<TPoint2D>& Points, int First,
                                           int Last) {
  if (First > Last) RaiseText("Bad Input: beginIndex must less than endIndex.");
  if (First < 0 || Last >= static_cast<std::int64_t>(Points.size())) {
    RaiseError<EParamError>("TPolyDecimator", "index out of range");
  }
  return std::span(Points).subspan(static_cast<std::size_t>(First),
                                   static_cast<std::size_t>(Last - First) + 1);
}

}  // namespace tarnalgo
