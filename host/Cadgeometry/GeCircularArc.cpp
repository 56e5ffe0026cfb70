#include "host/Cadgeometry/GeCircularArc.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/Cadgeometry/Nearest.h"
#include "host/Cadgeometry/Sampling.h"
#include "host/Cadtypes/Numeric.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

double CheckedRadius(double Radius) {
  if (!(Radius >= 0.0) || !std::isfinite(Radius)) {
    RaiseError<EParamError>("TGeCircularArc2D.Create", "the radius is negative or not finite");
  }
  return Radius;
}

double CheckedAngle(double Angle, const char* Where) {
  if (!std::isfinite(Angle)) RaiseError<EParamError>(Where, "the angle is not finite");
  return Angle;
}

double AtMostFullTurn(double Sweep) {
  return std::abs(Sweep) > kFullTurn ? std::copysign(kFullTurn, Sweep) : Sweep;
}

TArc2D ArcThrough(const TPoint2D& P1, const TPoint2D& P2, const TPoint2D& P3, bool Flag) {
  const TPoint2D Center = TTriangle2D(P1, P2, P3).CircumCenter();
  const TPoint2D ToStart = P1 - Center;
  // Both sweeps have one sign; the way through P2 turns as the triangle does.
  const bool Ccw = ((P2 - P1).CrossMul(P3 - P1) > 0.0) == Flag;
  const double Turn = (P3 - Center).AngleFrom(ToStart);
  return {Center, ToStart.Mag(), ToStart.Angle(), Ccw ? Turn : Turn - kFullTurn};
}

}  // namespace

TGeCircularArc2D::TGeCircularArc2D(const TPoint2D& Center, double Radius, double StartAngle,
                                   double SweepAngle)
    : FCenter(Center),
      FRadius(CheckedRadius(Radius)),
      FStartAngle(CheckedAngle(StartAngle, "TGeCircularArc2D.Create")),
      FSweepAngle(AtMostFullTurn(CheckedAngle(SweepAngle, "TGeCircularArc2D.Create"))) {
  FEndAngle = FStartAngle + FSweepAngle;
  FStartPoint = PointAtAngle(FStartAngle);
  FEndPoint = IsCircle() ? FStartPoint : PointAtAngle(FEndAngle);
}

TGeCircularArc2D::TGeCircularArc2D(const TArc2D& Arc)
    : TGeCircularArc2D(Arc.Center, Arc.Radius, Arc.StartAngle, Arc.SweepAngle) {}

TGeCircularArc2D::TGeCircularArc2D(const TPoint2D& StartPoint, double Bulge,
                                   const TPoint2D& EndPoint)
    : TGeCircularArc2D(TArc2D::CreateBulge(StartPoint, EndPoint, Bulge)) {
  FStartPoint = StartPoint;
  FEndPoint = EndPoint;
}

TGeCircularArc2D::TGeCircularArc2D(const TPoint2D& P1, const TPoint2D& P2, const TPoint2D& P3,
                                   bool Flag)
    : TGeCircularArc2D(ArcThrough(P1, P2, P3, Flag)) {
  FStartPoint = P1;
  FEndPoint = P3;
}

bool TGeCircularArc2D::IsCircle() const {
  return std::abs(FSweepAngle) >= kFullTurn;
}

double TGeCircularArc2D::SweepBetween(double From, double To) const {
  const bool Clockwise = std::signbit(FSweepAngle);
  const double Turn = TMathUtils::CycInc(Clockwise ? From : To, Clockwise ? -To : -From, kFullTurn);
  const double Gap = FRadius * std::min(Turn, kFullTurn - Turn);
  const double Sweep = TMathUtils::FloatLessEquals(Gap, 0.0) ? kFullTurn : Turn;
  return Clockwise ? -Sweep : Sweep;
}

void TGeCircularArc2D::SetStartAngle(double Angle) {
  CheckedAngle(Angle, "TGeCircularArc2D.SetStartAngle");
  FSweepAngle = SweepBetween(Angle, FEndAngle);
  FStartAngle = Angle;
  FStartPoint = IsCircle() ? FEndPoint : PointAtAngle(Angle);
}

void TGeCircularArc2D::SetEndAngle(double Angle) {
  CheckedAngle(Angle, "TGeCircularArc2D.SetEndAngle");
  FSweepAngle = SweepBetween(FStartAngle, Angle);
  FEndAngle = FStartAngle + FSweepAngle;
  FEndPoint = IsCircle() ? FStartPoint : PointAtAngle(Angle);
}

void TGeCircularArc2D::SetSweepAngle(double Sweep) {
  FSweepAngle = AtMostFullTurn(CheckedAngle(Sweep, "TGeCircularArc2D.SetSweepAngle"));
  FEndAngle = FStartAngle + FSweepAngle;
  FEndPoint = IsCircle() ? FStartPoint : PointAtAngle(FEndAngle);
}

TPoint2D TGeCircularArc2D::PointAtParam(double T) const {
  const double Inside = ClampParam(T, 1.0);
  if (Inside == 0.0) return FStartPoint;  // exact: the ends as they were given
  if (Inside == 1.0) return FEndPoint;
  return PointAtAngle(FStartAngle + FSweepAngle * Inside);
}

double TGeCircularArc2D::NearestParam(const TPoint2D& P, double& Distance) const {
  return NearestOnArc(Arc2D(), FStartPoint, FEndPoint, P, Distance);
}

void TGeCircularArc2D::Reverse() {
  std::swap(FStartAngle, FEndAngle);
  std::swap(FStartPoint, FEndPoint);
  FSweepAngle = -FSweepAngle;
}

TRect2D TGeCircularArc2D::GetBoundBox() const {
  return Arc2D().GetBoundBox().Union(FStartPoint).Union(FEndPoint);
}

void TGeCircularArc2D::AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const {
  TAppendGuard Guard(Points);
  AppendDistinct(FStartPoint, Points);
  const int Chords = ArcChordCount(FRadius, FSweepAngle, ChordEps);
  for (int I = 1; I < Chords; ++I) {
    Points.push_back(PointAtAngle(FStartAngle + FSweepAngle * (I / static_cast<double>(Chords))));
  }
  Points.push_back(FEndPoint);
  Guard.Keep();
}

void TGeCircularArc2D::AppendPieces(std::vector<TCurvePiece>& Pieces) const {
  Pieces.push_back(TCurvePiece::OfArc(Arc2D(), FStartPoint, FEndPoint, 0.0, 1.0));
}

}  // namespace tarnalgo
