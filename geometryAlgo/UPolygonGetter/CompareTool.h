#pragma once  // geometryAlgo/UPolygonGetter/CompareTool.h

#include "geometryAlgo/ClipperAdditions.h"
#include "geometryAlgo/UPolygonGetter/ChainExtend.h"
#include "geometryAlgo/VedaType/HPolygon.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// A place where a curve is cut into chains. A plain value.
struct TCutNode {
  double Param = 0.0;  ///< Along the curve.
  TPoint2D Point;      ///< Where the chains will end.
};

/// The outline of a part and the holes in it.
using TPartPolygon = TVHPolygon;

/// The orders of this unit: −1, 0 or 1 by exact signs, without tolerance.
class TCompareTool {
 public:
  /// Ascending Y; at the same Y the greater X first, against the direction of the first key. Not
  /// the order of `TPoint2DUtils::CompareByYX`.
  static int CompareByYX(const TIntPoint& A, const TIntPoint& B);
  /// Ascending.
  static int CompareByValue(int A, int B);
  /// Ascending along the curve.
  static int CompareByParam(const TCutNode& A, const TCutNode& B);
  /// Ascending and descending `AngleToXAxis`, which is worked out anew for both chains.
  static int CompareByAngleMin(const TMChainExtend& A, const TMChainExtend& B);
  /// Descending, likewise.
  static int CompareByAngleMax(const TMChainExtend& A, const TMChainExtend& B);
  /// Ascending area, holes subtracted.
  static int CompareByPolygonArea(const TPartPolygon& A, const TPartPolygon& B);
};

}  // namespace tarnalgo
