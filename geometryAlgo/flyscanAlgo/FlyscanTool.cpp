#include "geometryAlgo/flyscanAlgo/FlyscanTool.h"

#include <algorithm>
#include <cmath>

#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// −1 for a leg along Y, 1 along X, 0 for neither.
int DominantAxis(const TPoint2D& Leg) {
  return TMathUtils::CompareFloat(std::abs(Leg.X), std::abs(Leg.Y));
}

/// The angle between two lines that follow each other, from 0 for a full reversal to π for going
/// straight on. Symmetric under full turns, so the range of the line angles does not matter.
double CornerBetween(const TLine2D& A, const TLine2D& B) {
  return std::abs(std::abs(A.Angle() - B.Angle()) - kPi);
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

bool TFlyscanTool::AngleTooSharp(const TPoint2D& PtOut, const TPoint2D& VecOut,
                                 const TPoint2D& PtIn, const TPoint2D& VecIn, double D) {
  const TPoint2D LeadOut = PtOut + VecOut * D;
  const TPoint2D LeadIn = PtIn - VecIn * D;
  const TPoint2D ControlOut = LeadOut + VecOut * BezierControlLength;
  const TPoint2D ControlIn = LeadIn - VecIn * BezierControlLength;
  const TLine2D Middle(ControlOut, ControlIn);
  const double Sharpest = std::min(CornerBetween({LeadOut, ControlOut}, Middle),
                                   CornerBetween(Middle, {ControlIn, LeadIn}));
  return MaxSharpAngle * kPi / 180.0 > Sharpest;
}

TVPolyline2D TFlyscanTool::GetPolyline2D(const TGeCurve2D& GeCurve, double ChordEps) {
  return TVPolyline2D(GeCurve.Sample(ChordEps));
}

bool TFlyscanTool::GetSmoothBezierSeg(const TPoint2D& /*PtOut*/, const TPoint2D& /*VecOut*/,
                                      const TPoint2D& /*PtIn*/, const TPoint2D& /*VecIn*/,
                                      TBezierSegment2D& /*BezierSeg*/) {
  return false;
}

}  // namespace tarnalgo
