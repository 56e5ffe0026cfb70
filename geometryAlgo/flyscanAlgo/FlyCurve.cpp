#include "geometryAlgo/flyscanAlgo/FlyCurve.h"

#include "host/Exceptions.h"

namespace tarnalgo {

TFlyCurve::TFlyCurve(TGeCurve2D* ACurve, double APathStartParam, bool AIsFlyGap,
                     std::int32_t AChannelPort, int /*ARefShape*/)
    : FGeCurve(ACurve),
      FPathStartParam(APathStartParam),
      FIsFlyGap(AIsFlyGap),
      FChannelPort(AChannelPort) {}

void TFlyCurve::AssignTo(TFlyCurve& Dest) const {
  Dest.FGeCurve = FGeCurve;
  Dest.FPathStartParam = FPathStartParam;
  Dest.FIsFlyGap = FIsFlyGap;
  Dest.FChannelPort = FChannelPort;
}

std::unique_ptr<TFlyCurve> TFlyCurve::Clone() const {
  std::unique_ptr<TFlyCurve> Result = ClassType()();
  AssignTo(*Result);
  return Result;
}

TFlyCurveClass TFlyCurve::ClassType() const {
  return [] { return std::make_unique<TFlyCurve>(); };
}

TPoint2D TFlyCurve::GetPathStart() const {
  return FGeCurve ? FGeCurve->PointAtParam(FPathStartParam) : TPoint2D::FZero;
}

void TFlyCurve::SetPathStart(const TPoint2D& AStart) {
  if (FGeCurve) FPathStartParam = FGeCurve->ParamOfPoint(AStart, DefTol);
}

TFlyCurveClass TFlyLine::ClassType() const {
  return []() -> std::unique_ptr<TFlyCurve> { return std::make_unique<TFlyLine>(); };
}

TGeLine2D* TFlyLine::GeLine() const {
  auto* const Line = dynamic_cast<TGeLine2D*>(GeCurve());
  if (!Line) RaiseText("FlyLine Create Error!");
  return Line;
}

TLine2D TFlyLine::Line2D() const {
  return GeLine()->Line2D();
}

TFlyCurveClass TFlyCircle::ClassType() const {
  return []() -> std::unique_ptr<TFlyCurve> { return std::make_unique<TFlyCircle>(); };
}

TGeCircularArc2D* TFlyCircle::GeCircle() const {
  auto* const Circle = dynamic_cast<TGeCircularArc2D*>(GeCurve());
  if (!Circle) RaiseText("FlyCircle Create Error!");
  return Circle;
}

TCircle2D TFlyCircle::Circle2D() const {
  return GeCircle()->Circle2D();
}

}  // namespace tarnalgo
