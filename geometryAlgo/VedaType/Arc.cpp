#include "geometryAlgo/VedaType/Arc.h"

#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/Point.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadgeometry/Sampling.h"
#include "host/Cadtypes/ArcOverlap.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

constexpr std::string_view kUnit = "geometryAlgo/VedaType";

/// Centre of the circle of `Radius` over `Chord`, `Height` away from it.
TPoint2D CenterOverChord(const TVLine2D& Chord, double Height, bool IsLargeArc, bool IsClockwise) {
  const TPoint2D V = Chord.Vector();
  const TPoint2D ToCenter = IsLargeArc == IsClockwise ? V.RotateCcw90() : V.RotateCw90();
  return Chord.Center() + TPoint2DUtils::Stretch(ToCenter, Height);
}

/// sqrt(Radius² − Half²), without squares that overflow or cancel.
double HeightOverChord(double Radius, double Half) {
  return std::sqrt(std::abs(Radius) - Half) * std::sqrt(std::abs(Radius) + Half);
}

/// `CrossWithArc` for two arcs of one circle; copies, because a result may be one of them.
int OverlapOnCircle(TVArc2D A, TVArc2D B, TPoint2D& P1, TPoint2D& P2, TVArc2D& Overlap1,
                    TVArc2D& Overlap2, double Eps) {
  if (B.IsClockwise != A.IsClockwise) B = B.Reverse();
  const TArcOverlap Overlap(A.Radius(), std::abs(A.AngleRange()), A.TurnTo(B.StartPoint),
                            std::abs(B.AngleRange()), Eps);
  int Points = 0;
  int Arcs = 0;
  for (const TArcOverlap::TPart& Part : Overlap.Parts()) {
    const TVArc2D Stretch(A.Center, Part.IsLowOwn ? A.StartPoint : B.StartPoint,
                          Part.IsHighOwn ? A.EndPoint : B.EndPoint, A.IsClockwise);
    // Ends that coincide would make a full circle of a stretch that is hardly longer than the
    // tolerance.
    if (Part.IsStretch && (Part.Width() > kPi || !Stretch.IsCircle())) {
      (Arcs++ == 0 ? Overlap1 : Overlap2) = Stretch;
    } else {
      (Points++ == 0 ? P1 : P2) = Stretch.StartPoint;
    }
  }
  return Points | Arcs << 2;
}

}  // namespace

// --- Constructors ---

TVArc2D::TVArc2D(const TPoint2D& ACenter, double ARadius, double AStartAngle, double ASweepAngle)
    : Center(ACenter), IsClockwise(ASweepAngle < 0.0) {
  const TVCircle2D Round(ACenter, ARadius);
  StartPoint = Round.CalcPointByRadian(AStartAngle);
  EndPoint = ASweepAngle >= kFullTurn
                 ? StartPoint
                 : Round.CalcPointByRadian(TMathUtils::CycInc(AStartAngle, ASweepAngle, kFullTurn));
}

TVArc2D::TVArc2D(const TPoint2D& AStartPoint, const TPoint2D& AEndPoint, double ABulge)
    : StartPoint(AStartPoint), EndPoint(AEndPoint), IsClockwise(ABulge < 0.0) {
  if (AStartPoint.Equals(AEndPoint)) {
    if (!TMathUtils::FloatEquals(ABulge, 0.0)) RaiseError("TVArc2D.Create", "参数错误");
    return;  // about the origin
  }
  // (1 − b²) / 4b without the square, which would overflow.
  const double Offset = 0.25 * (1.0 / ABulge - ABulge);
  const TVLine2D Chord(AStartPoint, AEndPoint);
  Center = Chord.Center() + Chord.Vector().RotateCcw90() * Offset;
}

TVArc2D::TVArc2D(const TPoint2D& AStartPoint, const TPoint2D& AEndPoint, double ARadius,
                 bool IsLargeArc, bool AIsClockwise)
    : StartPoint(AStartPoint), EndPoint(AEndPoint), IsClockwise(AIsClockwise) {
  const TVLine2D Chord(AStartPoint, AEndPoint);
  const double Half = (Chord.Vector() * 0.5).Mag();
  AssertThat(std::abs(ARadius) >= Half, "[Error] TVArc2D.Create: 直径 < 弦长。", kUnit);
  Center = CenterOverChord(Chord, HeightOverChord(ARadius, Half), IsLargeArc, AIsClockwise);
}

TVArc2D::TVArc2D(const TVLine2D& Chord, double ARadius, bool AIsClockwise, bool IsLargeArc)
    : StartPoint(Chord.StartPoint), EndPoint(Chord.EndPoint), IsClockwise(AIsClockwise) {
  const double Half = Chord.Length() / 2;
  // A radius of just half the chord is refused.
  if (TMathUtils::FloatLessEquals(ARadius, Half)) {
    RaiseText("[Error]TVArc2D.Create: 不存在此参数对应的圆");
  }
  Center = CenterOverChord(Chord, HeightOverChord(ARadius, Half), IsLargeArc, AIsClockwise);
}

// --- Measures ---

double TVArc2D::AngleRange() const {
  if (IsCircle()) return IsClockwise ? -kFullTurn : kFullTurn;
  return IsClockwise ? -TurnTo(EndPoint) : TurnTo(EndPoint);
}

double TVArc2D::Bulge() const {
  return std::tan(AngleRange() / 4.0);
}

double TVArc2D::Length() const {
  return std::abs(AngleRange()) * Radius();
}

TVRect2D TVArc2D::BoundBox() const {
  if (IsCircle()) return Circle().Boundbox();
  TVRect2D Box(StartPoint, EndPoint);
  const double Turn = std::abs(AngleRange());
  const TPoint2D Axes[] = {DcsX, DcsX.RotateCcw90(), -DcsX, DcsX.RotateCw90()};
  for (const TPoint2D& Axis : Axes) {
    const TPoint2D Extreme = Center + Axis * Radius();
    if (TurnTo(Extreme) <= Turn) Box.ExpandInPlace(Extreme);
  }
  return Box;
}

// --- New arcs ---

TVArc2D TVArc2D::Translate(const TPoint2D& V) const {
  return {Center + V, StartPoint + V, EndPoint + V, IsClockwise};
}

TVArc2D TVArc2D::Rotate(double A) const {
  return {Center.RotateBy(A), StartPoint.RotateBy(A), EndPoint.RotateBy(A), IsClockwise};
}

TVArc2D TVArc2D::Rotate(double A, const TPoint2D& Centre) const {
  return Translate(-Centre).Rotate(A).Translate(Centre);
}

void TVArc2D::SplitByParam(double T, TVArc2D& Left, TVArc2D& Right) const {
  const TVArc2D Whole = *this;  // either result may be this arc
  const TPoint2D Middle = CalcPointByParam(T);
  Left = TVArc2D(Whole.Center, Whole.StartPoint, Middle, Whole.IsClockwise);
  Right = TVArc2D(Whole.Center, Middle, Whole.EndPoint, Whole.IsClockwise);
}

// --- Points and parameters ---

double TVArc2D::TurnTo(const TPoint2D& P) const {
  const TPoint2D ToStart = StartPoint - Center;
  const TPoint2D ToP = P - Center;
  return IsClockwise ? ToStart.AngleFrom(ToP) : ToP.AngleFrom(ToStart);
}

bool TVArc2D::IsPointOn(const TPoint2D& P, double Eps) const {
  if (P.Equals(StartPoint, Eps) || P.Equals(EndPoint, Eps)) return true;
  return TMathUtils::FloatEquals(P.DistanceTo(Center), Radius(), Eps) &&
         TurnTo(P) <= std::abs(AngleRange());
}

double TVArc2D::CalcParamByPoint(const TPoint2D& P) const {
  const double Turn = std::abs(AngleRange());
  if (TMathUtils::FloatEquals(Turn, 0.0)) {
    RaiseError("TVArc2D.CalcParamByPoint", "圆弧退化为点");
  }
  return TurnTo(P) / Turn;
}

TPoint2D TVArc2D::CalcPointByParam(double T) const {
  return CalcPointByRadian(StartAngle() + AngleRange() * T);
}

TPoint2D TVArc2D::CalcDerivative(double T) const {
  const TPoint2D FromCenter = CalcPointByParam(T) - Center;
  return IsClockwise ? FromCenter.RotateCw90() : FromCenter.RotateCcw90();
}

TPoint2D TVArc2D::FarthestPt(const TPoint2D& P) const {
  const TPoint2D Opposite = Center + TPoint2DUtils::Stretch(Center - P, Radius());
  TPoint2D Farthest = StartPoint;
  if (P.DistanceTo(EndPoint) > P.DistanceTo(Farthest)) Farthest = EndPoint;
  const bool OnArc = !(P == Center) && TurnTo(Opposite) <= std::abs(AngleRange());
  return OnArc && P.DistanceTo(Opposite) > P.DistanceTo(Farthest) ? Opposite : Farthest;
}

TVPolyline2D TVArc2D::SampleToPolyline(double ChordError) const {
  const TVCircle2D Round = Circle();
  const double From = StartAngle();
  const double Range = AngleRange();
  const int Chords = ArcChordCount(Round.Radius, Range, ChordError);
  std::vector<TPoint2D> Points;
  Points.reserve(static_cast<std::size_t>(Chords) + 1);
  Points.push_back(StartPoint);
  for (int I = 1; I < Chords; ++I) {
    Points.push_back(Round.CalcPointByRadian(From + Range * I / Chords));
  }
  Points.push_back(EndPoint);
  return TVPolyline2D(std::move(Points));
}

// --- Crossings ---

int TVArc2D::CrossWithLine(const TVLine2D& Line, TPoint2D& P1, TPoint2D& P2, double Eps) const {
  return IntersectInPoints(ToArc2D(), Line.ToLine2D(), P1, P2, Eps);
}

int TVArc2D::CrossWithSegline(const TVLine2D& Segment, TPoint2D& P1, TPoint2D& P2,
                              double Eps) const {
  TPoint2D Q1;
  TPoint2D Q2;
  const int Count = CrossWithLine(Segment, Q1, Q2);
  return Segment.PointsWithin(Count, Q1, Q2, P1, P2, Eps);
}

int TVArc2D::CrossWithCircle(const TVCircle2D& Other, TPoint2D& P1, TPoint2D& P2) const {
  if (Circle().RelationWithCircle(Other) == srEqual) return 0;
  const TArc2D Round(Other.Center, Other.Radius, 0.0, kFullTurn);
  return IntersectInPoints(ToArc2D(), Round, P1, P2);
}

int TVArc2D::CrossWithArc(const TVArc2D& Other, TPoint2D& P1, TPoint2D& P2, TVArc2D& Overlap1,
                          TVArc2D& Overlap2, double Eps) const {
  if (Circle().RelationWithCircle(Other.Circle(), Eps) == srEqual) {
    return OverlapOnCircle(*this, Other, P1, P2, Overlap1, Overlap2, Eps);
  }
  return IntersectInPoints(ToArc2D(), Other.ToArc2D(), P1, P2, Eps);
}

}  // namespace tarnalgo
