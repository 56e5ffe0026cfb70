#include "geometryAlgo/flyscanAlgo/SegmentGroups.h"

#include "host/Cadutils.h"

namespace tarnalgo {

int TSegmentGroups::CompareIntercept(const TLinearSegmentList& Left,
                                     const TLinearSegmentList& Right) {
  if (TMathUtils::FloatLess(Left.Intercept, Right.Intercept)) return -1;
  if (TMathUtils::FloatGreater(Left.Intercept, Right.Intercept)) return 1;
  return 0;
}

void TSegmentGroups::SortByIntercept() {
  Sort(CompareIntercept);
}

}  // namespace tarnalgo
