#include "geometryAlgo/VedaType/LABSegline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "geometryAlgo/VedaType/Point.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadgeometry/GeCircularArc.h"
#include "host/Cadgeometry/GeLine.h"
#include "host/Cadgeometry/GePolyBezier.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

template <class TMap>
TLABSegline Mapped(const TLABSegline& Seg, TMap Map) {
  return {Seg.SegType, Map(Seg.P1), Map(Seg.P2), Map(Seg.P3), Map(Seg.P4), Seg.Bulge};
}

std::unique_ptr<TGeCurve2D> CurveOfArc(const TVArc2D& Arc) {
  const double Bulge = Arc.Bulge();
  const bool EndIsOnCircle =
      TMathUtils::FloatEquals(Arc.Center.DistanceTo(Arc.EndPoint), Arc.Radius());
  if (!Arc.IsCircle() && EndIsOnCircle && Bulge != 0.0) {  // exact: a bulge of 0 has no circle
    return std::make_unique<TGeCircularArc2D>(Arc.StartPoint, Bulge, Arc.EndPoint);
  }
  return std::make_unique<TGeCircularArc2D>(Arc.ToArc2D());
}

/// Parameter of a point known to lie on the arc, but at neither of its ends.
double ParamOnArc(const TVArc2D& Arc, const TPoint2D& P) {
  return std::min(Arc.TurnTo(P) / std::abs(Arc.AngleRange()), 1.0);
}

}  // namespace

// --- What it is ---

bool TLABSegline::IsPoint() const {
  if (!P4.Equals(P1)) return false;
  switch (SegType) {
    case stLine:
      return true;
    case stArc:
      return P2.Equals(P1);
    case stBezier:
      return P2.Equals(P1) && P3.Equals(P1);
  }
  return false;
}

bool TLABSegline::IsCircle() const {
  return SegType == stArc && ToArc().IsCircle();
}

bool TLABSegline::IsLine(double Eps) const {
  if (SegType == stLine) return !P1.Equals(P4);
  if (SegType == stArc || P1.Equals(P4, Eps)) return false;
  const TVLine2D Chord(P1, P4);
  return TMathUtils::FloatEquals(Chord.LineDistanceTo(P2), 0.0, Eps) &&
         TMathUtils::FloatEquals(Chord.LineDistanceTo(P3), 0.0, Eps);
}

bool TLABSegline::TryToLine(double Eps) {
  if (!IsLine(Eps)) return false;
  SegType = stLine;
  P2 = TPoint2D::FZero;
  P3 = TPoint2D::FZero;
  return true;
}

TLABSegline::TLABSegline(const TArc2D& Arc)
    : SegType(stArc), P1(Arc.StartPoint()), P2(Arc.Center), P4(Arc.EndPoint()), Bulge(Arc.Bulge()) {
  const bool IsFullTurn = std::abs(Arc.SweepAngle) >= kFullTurn;
  if (!IsFullTurn && !P1.Equals(P4)) return;
  if (IsFullTurn || std::abs(Arc.SweepAngle) > kPi) {
    P4 = P1;
    Bulge = Arc.SweepAngle < 0.0 ? -kCircleBulge : kCircleBulge;
  } else {
    *this = TLABSegline(P1, P4);
  }
}

// --- As other types ---

TVLine2D TLABSegline::ToLine() const {
  if (SegType == stArc) {
    RaiseError("TLABSegline.ToLine", "将“非直线段混合线段”转为“直线段”");
  }
  return {P1, P4};
}

TVArc2D TLABSegline::ToArc() const {
  if (SegType != stArc) RaiseError("TLABSegline.ToArc", "将“非弧线混合线段”转为“弧线”");
  const bool IsClockwise = Bulge < 0.0;
  if (std::abs(Bulge) < kCircleBulge) return {P2, P1, P4, IsClockwise};
  return {P2, P1, IsClockwise};
}

TBezierSegment2D TLABSegline::ToBezierSegment() const {
  if (SegType != stBezier) {
    RaiseError("TLABSegline.ToBezierSegment", "将“非贝塞尔混合线段”转为“贝塞尔”");
  }
  return {P1, P2, P3, P4};
}

std::unique_ptr<TGeCurve2D> TLABSegline::ToGeCurve2D() const {
  if (SegType == stLine) return std::make_unique<TGeLine2D>(P1, P4);
  if (SegType == stArc) return CurveOfArc(ToArc());
  auto Curve = std::make_unique<TGePolyBezier2D>();
  Curve->AddBezier(ToBezierSegment());
  return Curve;
}

// --- Measures ---

double TLABSegline::Length(double Eps) const {
  if (SegType == stLine) return P1.DistanceTo(P4);
  return SegType == stArc ? ToArc().Length() : Sample(Eps).TotalLength();
}

TVPolyline2D TLABSegline::Sample(double Eps) const {
  if (SegType == stLine || IsLine()) return TVPolyline2D{P1, P4};
  if (SegType == stArc) return ToArc().SampleToPolyline(Eps);
  const double Step = Eps > kLinearTolerance ? Eps : kLinearTolerance;  // NaN too
  const TBezierSegment2D Curve = ToBezierSegment();
  const auto Count = static_cast<int>(std::nearbyint(1.0 / Step));
  TVPolyline2D Points{P1};
  Points.Reserve(Count + 1);
  double T = Step;
  for (int I = 1; I < Count; ++I) {
    Points.Add(Curve.EvalPoint(T));
    T += Step;
  }
  Points.Add(P4);
  return Points;
}

TVRect2D TLABSegline::BoundBox() const {
  switch (SegType) {
    case stLine:
      return {P1, P4};
    case stArc:
      return ToArc().BoundBox();
    case stBezier:
      return TVRect2D(ToBezierSegment().GetBoundBox());
  }
  return {};
}

double TLABSegline::DistanceTo(const TPoint2D& P) const {
  if (SegType == stArc) RaiseError("TLABSegline.DistanceTo", "圆弧距离未实现");
  if (SegType == stBezier) RaiseError("TLABSegline.DistanceTo", "贝塞尔距离未实现");
  return ToLine().SegmentDistanceTo(P);
}

TPoint2D TLABSegline::TangentVector(double T) const {
  if (SegType == stLine) return P4 - P1;
  return SegType == stArc ? ToArc().CalcDerivative(T) : ToBezierSegment().Derivative(T);
}

TPoint2D TLABSegline::PointByParam(double T) const {
  if (T == 0.0) return P1;  // exact: the ends as they were given
  if (SegType == stLine) return ToLine().EvalPoint(T);
  if (SegType == stBezier) return ToBezierSegment().EvalPoint(T);
  const TVArc2D Arc = ToArc();
  return T == 1.0 ? Arc.EndPoint : Arc.CalcPointByParam(T);
}

double TLABSegline::ParamByPoint(const TPoint2D& P) const {
  if (P.Equals(P1)) return 0.0;
  if (P.Equals(SegType == stArc ? ToArc().EndPoint : P4)) return 1.0;
  if (SegType == stArc) {
    const TVArc2D Arc = ToArc();
    if (Arc.IsPointOn(P)) return ParamOnArc(Arc, P);
  } else {
    double T = 0.0;
    TPoint2D Foot;
    const double Distance = SegType == stLine ? ToLine().SegmentDistanceTo(P, T)
                                              : ToBezierSegment().DistanceTo(P, 0.0, T, Foot);
    if (Distance <= kLinearTolerance) return T;
  }
  RaiseError("TLABSegline.ParamByPoint", "点不在线段上");
}

// --- New segments ---

TLABSegline TLABSegline::RoundTo(int Digits) const {
  return Mapped(*this, [&](const TPoint2D& P) { return P.RoundTo(Digits); });
}

TLABSegline TLABSegline::Translate(const TPoint2D& V) const {
  return Mapped(*this, [&](const TPoint2D& P) { return P + V; });
}

TLABSegline TLABSegline::Rotate(double A) const {
  return Mapped(*this, [&](const TPoint2D& P) { return P.RotateBy(A); });
}

TLABSegline TLABSegline::Rotate(double A, const TPoint2D& Centre) const {
  return Mapped(*this, [&](const TPoint2D& P) { return (P - Centre).RotateBy(A) + Centre; });
}

TLABSegline TLABSegline::RotateBy90() const {
  return Mapped(*this, [](const TPoint2D& P) { return P.RotateCcw90(); });
}

TLABSegline TLABSegline::RotateBy_90() const {
  return Mapped(*this, [](const TPoint2D& P) { return P.RotateCw90(); });
}

TLABSegline TLABSegline::YMirror() const {
  TLABSegline Result = Mapped(*this, TPoint2DUtils::YMirror);
  Result.Bulge = -Bulge;
  return Result;
}

TLABSegline TLABSegline::Transform(const TMatrix2D& Matrix) const {
  TLABSegline Result = Mapped(*this, [&](const TPoint2D& P) { return Matrix.Transform(P); });
  if (Matrix.Determinant() < 0.0) Result.Bulge = -Bulge;
  return Result;
}

TLABSegline TLABSegline::Reverse() const {
  TLABSegline Result = *this;
  std::swap(Result.P1, Result.P4);
  if (SegType == stArc) Result.Bulge = -Bulge;
  if (SegType == stBezier) std::swap(Result.P2, Result.P3);
  return Result;
}

}  // namespace tarnalgo
