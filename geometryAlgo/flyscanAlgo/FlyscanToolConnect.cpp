#include <algorithm>
#include <cmath>
#include <memory>

#include "geometryAlgo/flyscanAlgo/FlyscanTool.h"
#include "geometryAlgo/flyscanAlgo/NormalTurn.h"
#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// The part of the way to the other control point that a control point may reach, across.
constexpr double kPivotParam = 0.25;

/// Length: how far the middle of a connection on one line is pushed aside.
constexpr double kAsideOffset = 0.5;

/// The points of a connection between its ends: the ends of its leads and the control points that
/// continue them.
struct TConnectPoints {
  TPoint2D LeadOut;
  TPoint2D ControlOut;
  TPoint2D ControlIn;
  TPoint2D LeadIn;

  TConnectPoints(const TPoint2D& PtOut, const TPoint2D& VecOut, const TPoint2D& PtIn,
                 const TPoint2D& VecIn, double Lead)
      : LeadOut(PtOut + VecOut * Lead),
        ControlOut(LeadOut + VecOut * BezierControlLength),
        ControlIn(PtIn - VecIn * Lead - VecIn * BezierControlLength),
        LeadIn(PtIn - VecIn * Lead) {}
};

/// The angle between two lines that follow each other, from 0 for a full reversal to π for going
/// straight on. Symmetric under full turns, so the range of the line angles does not matter.
double CornerBetween(const TLine2D& A, const TLine2D& B) {
  return std::abs(std::abs(A.Angle() - B.Angle()) - kPi);
}

/// Tests one end of a smooth joint and draws its control point in where it reaches too far; false
/// when the joint would turn too much there.
bool AdjustControl(const TPoint2D& End, TPoint2D& Control, const TPoint2D& OtherControl) {
  const TLine2D Tangent(End, Control);
  const TLine2D Across(End, OtherControl);
  const double Turn =
      (Tangent.EndPoint - Tangent.StartPoint).AngleBetween(Across.EndPoint - Across.StartPoint);
  if (!TMathUtils::FloatLessEquals(Turn, kSmoothJointTurn)) return false;
  const TPoint2D Pivot = Across.PointAt(kPivotParam);
  TPoint2D Crossing;
  if (!Tangent.Cross({Pivot, Pivot + Across.GetDirection().RotateCcw90()}, Crossing)) return false;
  if (TMathUtils::FloatLess(Tangent.ParamOfPoint(Crossing), 1.0)) Control = Crossing;
  return true;
}

}  // namespace

bool TFlyscanTool::AngleTooSharp(const TPoint2D& PtOut, const TPoint2D& VecOut,
                                 const TPoint2D& PtIn, const TPoint2D& VecIn, double D) {
  const TConnectPoints Via(PtOut, VecOut, PtIn, VecIn, D);
  const TLine2D Middle(Via.ControlOut, Via.ControlIn);
  const double Sharpest = std::min(CornerBetween({Via.LeadOut, Via.ControlOut}, Middle),
                                   CornerBetween(Middle, {Via.ControlIn, Via.LeadIn}));
  return MaxSharpAngle * kPi / 180.0 > Sharpest;
}

bool TFlyscanTool::GetSmoothBezierSeg(const TPoint2D& PtOut, const TPoint2D& VecOut,
                                      const TPoint2D& PtIn, const TPoint2D& VecIn,
                                      TBezierSegment2D& BezierSeg) {
  if (!(PtOut.DistanceTo(PtIn) >= kSmoothJointGap)) return false;
  TPoint2D A = PtOut + VecOut * ScanConnectSegLength;
  TPoint2D B = PtIn - VecIn * ScanConnectSegLength;
  if (!AdjustControl(PtOut, A, B) || !AdjustControl(PtIn, B, A)) return false;
  BezierSeg = {PtOut, A, B, PtIn};
  return true;
}

std::unique_ptr<TGeCurve2D> TFlyscanTool::CreateConnectCurve(const TPoint2D& PtOut,
                                                             const TPoint2D& VecOut,
                                                             const TPoint2D& PtIn,
                                                             const TPoint2D& VecIn) {
  TBezierSegment2D Joint;
  if (GetSmoothBezierSeg(PtOut, VecOut, PtIn, VecIn, Joint)) {
    auto Curve = std::make_unique<TGePolyBezier2D>();
    Curve->AddBezier(Joint);
    return Curve;
  }
  if (ConnectStyle != 1 && !AngleTooSharp(PtOut, VecOut, PtIn, VecIn, ScanConnectSegLength)) {
    return CreateTriBezierConnect(PtOut, VecOut, PtIn, VecIn);
  }
  return CreateTriLineConnect(PtOut, VecOut, PtIn, VecIn);
}

std::unique_ptr<TGePolyBezier2D> TFlyscanTool::CreateTriBezierConnect(const TPoint2D& PtOut,
                                                                      const TPoint2D& VecOut,
                                                                      const TPoint2D& PtIn,
                                                                      const TPoint2D& VecIn) {
  const TConnectPoints Via(PtOut, VecOut, PtIn, VecIn, ScanConnectSegLength);
  const double Beside = TLine2D(Via.LeadOut, Via.ControlOut).DistanceDirect(Via.ControlIn);
  auto Curve = std::make_unique<TGePolyBezier2D>();
  Curve->AddBezier({PtOut, Via.LeadOut});
  if (std::abs(Beside) < kFacingDistance && std::abs(VecOut.DotMul(VecIn)) > kFacingCosine) {
    // The controls beside the middle, moved aside like it, run along its own line there, so that
    // it has one direction; where both are at one place, that of the leaving lead.
    const TPoint2D Aside = VecOut.RotateCcw90() * kAsideOffset;
    const TPoint2D Middle = Lerp(Via.ControlOut, Via.ControlIn, 0.5) + Aside;
    const TPoint2D Along = Via.ControlOut.Equals(Via.ControlIn)
                               ? VecOut * kAsideOffset
                               : (Via.ControlIn - Via.ControlOut) / 2.0;
    Curve->AddBezier({Via.LeadOut, Via.ControlOut, Middle - Along, Middle});
    Curve->AddBezier({Middle, Middle + Along, Via.ControlIn, Via.LeadIn});
  } else {
    Curve->AddBezier({Via.LeadOut, Via.ControlOut, Via.ControlIn, Via.LeadIn});
  }
  Curve->AddBezier({Via.LeadIn, PtIn});
  return Curve;
}

std::unique_ptr<TGePolyline2D> TFlyscanTool::CreateTriLineConnect(const TPoint2D& PtOut,
                                                                  const TPoint2D& VecOut,
                                                                  const TPoint2D& PtIn,
                                                                  const TPoint2D& VecIn) {
  const TConnectPoints Via(PtOut, VecOut, PtIn, VecIn, ScanConnectSegLength);
  return std::make_unique<TGePolyline2D>(TDynPoints2D{PtOut, Via.LeadOut, Via.LeadIn, PtIn});
}

void TFlyscanTool::CalcTangentLine(const TCircle2D& CircleA, const TCircle2D& CircleB,
                                   bool IsClockwiseA, bool IsClockwiseB, double& AngleA,
                                   double& AngleB) {
  const bool IsInner = IsClockwiseA != IsClockwiseB;
  const TPoint2D V = CircleA.Center - CircleB.Center;
  const double D = V.Mag();
  const double S = IsInner ? CircleA.Radius + CircleB.Radius : CircleA.Radius - CircleB.Radius;
  if (!(std::abs(S) <= D && D >= kLeastCenterDistance && std::isfinite(D))) {
    RaiseText("Connect calculate tangent");
  }
  // Run counter-clockwise, a circle is left on the right of the way to the other one.
  const double Opening = std::acos(S / D);
  AngleA = NormalTurn(V.Angle() + kPi + (IsClockwiseA ? Opening : -Opening));
  AngleB = IsInner ? NormalTurn(AngleA + kPi) : AngleA;
}

}  // namespace tarnalgo
