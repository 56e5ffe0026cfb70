#pragma once  // geometryAlgo/SweepLine/SeglineIntersectInfo.h

#include <utility>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// One meeting of two segments: a touch, a crossing or a shared stretch. A plain value.
struct TSeglineIntersectInfo {
  /// The segments share a stretch from `FirstPoint` to `SecondPoint`; otherwise one point, which
  /// stands in both.
  bool Flag = false;
  TPoint2D FirstPoint;   ///< The meeting point, or where the stretch begins, by X, then Y.
  TPoint2D SecondPoint;  ///< Where the stretch ends; `FirstPoint` again for a single point.
  /// Positions in the caller's list.
  int LowerSegment = 0;
  int HigherSegment = 0;  ///< The greater position.
  ///@{
  /// Parameters on the two segments, in [0, 1], counted from the end that comes first by X, then Y.
  double LowerParam1 = 0.0;
  double HigherParam1 = 0.0;
  double LowerParam2 = 0.0;
  double HigherParam2 = 0.0;
  ///@}

  TSeglineIntersectInfo() = default;

  /// The segments in any order, `A1` and `A2` on `SegA`, `B1` and `B2` on `SegB`.
  TSeglineIntersectInfo(bool AFlag, const TPoint2D& P1, const TPoint2D& P2, int SegA, int SegB,
                        double A1, double B1, double A2, double B2)
      : Flag(AFlag),
        FirstPoint(P1),
        SecondPoint(P2),
        LowerSegment(SegA),
        HigherSegment(SegB),
        LowerParam1(A1),
        HigherParam1(B1),
        LowerParam2(A2),
        HigherParam2(B2) {
    if (SegA <= SegB) return;
    std::swap(LowerSegment, HigherSegment);
    std::swap(LowerParam1, HigherParam1);
    std::swap(LowerParam2, HigherParam2);
  }
};

}  // namespace tarnalgo
