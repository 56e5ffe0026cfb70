#pragma once  // geometryAlgo/VedaType/CADExtendUtils.h

#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Small additions to what the host measures.
class TCADExtendUtils {
 public:
  /// Signed area of the ring through the points, last to first joined: counter-clockwise positive,
  /// 0 for fewer than three points. A closing repeat of the first point changes nothing.
  static double CalcArea(const std::vector<TPoint2D>& Points);
};

}  // namespace tarnalgo
