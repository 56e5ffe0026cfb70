#include "geometryAlgo/flyscanAlgo/FlyscanTool.h"

#include <algorithm>
#include <cmath>

#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// −1 for a leg along Y, 1 along X, 0 for neither.
int DominantAxis(const TPoint2D& Leg) {
  return TMathUtils::CompareFloat(std::abs(Leg.X), std::abs(Leg.Y));
}

}  // namespace

bool TFlyscanTool::AngleCamValid(const TPoint2D& PtLast, const TPoint2D& Pt,
                                 const TPoint2D& PtNext) {
  const TPoint2D LegIn = Pt - PtLast;
  const TPoint2D LegOut = PtNext - Pt;
  const double Turn = std::min(LegOut.AngleFrom(LegIn), LegIn.AngleFrom(LegOut));
  const int Axis = DominantAxis(LegIn);
  const bool IsSameAxis = Axis != 0 && Axis == DominantAxis(LegOut);
  return TMathUtils::FloatLess(Turn, IsSameAxis ? kCamCornerAngle : kCamAxisChangeAngle);
}

TVPolyline2D TFlyscanTool::GetPolyline2D(const TGeCurve2D& GeCurve, double ChordEps) {
  return TVPolyline2D(GeCurve.Sample(ChordEps));
}

}  // namespace tarnalgo
