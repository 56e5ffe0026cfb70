#include "geometryAlgo/VedaType/Line.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadtypes/ExtendedPoint.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// Parameter on `Line` of its crossing with `Other`, both infinite. Not finite, or NaN, where there
/// is none.
double CrossingParam(const TVLine2D& Line, const TVLine2D& Other) {
  const TExtPoint2D Start(Line.StartPoint);
  const TExtPoint2D OtherStart(Other.StartPoint);
  const TExtPoint2D V = TExtPoint2D(Line.EndPoint) - Start;
  const TExtPoint2D OtherV = TExtPoint2D(Other.EndPoint) - OtherStart;
  return static_cast<double>((OtherStart - Start).CrossMul(OtherV) / V.CrossMul(OtherV));
}

/// One end of a clipped segment: its parameter, and which side of the box cut it there.
struct TCut {
  enum class TBy { None, SideX, SideY };

  double T = 0.0;
  TBy By = TBy::None;
  double Side = 0.0;
};

/// Narrows [From, To] to where the coordinate that runs from `Start` to `End` lies in [Low, High].
/// False when nothing is left.
bool ClipCoordinate(double Start, double End, double Low, double High, TCut::TBy By, TCut& From,
                    TCut& To) {
  // What is beside the box, or cut at all, is asked of the coordinates: parameters round.
  if (std::max(Start, End) < Low || std::min(Start, End) > High) return false;
  const bool Rising = Start < End;
  const auto CutAt = [&](double Side) {
    // Extended: the difference of two huge coordinates would overflow.
    const long double Run = static_cast<long double>(End) - Start;
    return TCut{static_cast<double>((static_cast<long double>(Side) - Start) / Run), By, Side};
  };
  if (Rising ? Start < Low : Start > High) {
    const TCut Enter = CutAt(Rising ? Low : High);
    if (Enter.T >= From.T) From = Enter;
  }
  if (Rising ? End > High : End < Low) {
    const TCut Leave = CutAt(Rising ? High : Low);
    if (Leave.T <= To.T) To = Leave;
  }
  return From.T <= To.T;
}

/// The end that `Cut` makes of `Line`; `Uncut` where the box did not cut. Never outside the box.
TPoint2D CutPoint(const TVLine2D& Line, const TCut& Cut, const TVRect2D& Box,
                  const TPoint2D& Uncut) {
  switch (Cut.By) {
    case TCut::TBy::SideX:
      return {Cut.Side, std::clamp(Line.CalculateY(Cut.Side), Box.Bottom, Box.Top)};
    case TCut::TBy::SideY:
      return {std::clamp(Line.CalculateX(Cut.Side), Box.Left, Box.Right), Cut.Side};
    case TCut::TBy::None:
      break;
  }
  return Uncut;
}

}  // namespace

// --- Measures ---

double TVLine2D::Slope() const {
  const TPoint2D V = Vector();
  if (V.X != 0.0) return V.Y / V.X;
  if (V.Y == 0.0) return 0.0;
  return std::copysign(std::numeric_limits<double>::infinity(), V.Y);
}

// --- New segments ---

TVLine2D TVLine2D::Translate(const TPoint2D& V) const {
  return {StartPoint + V, EndPoint + V};
}

TVLine2D TVLine2D::Rotate(double A) const {
  return {StartPoint.RotateBy(A), EndPoint.RotateBy(A)};
}

TVLine2D TVLine2D::Rotate(double A, const TPoint2D& Centre) const {
  return Translate(-Centre).Rotate(A).Translate(Centre);
}

TVLine2D TVLine2D::Stretch(double ALength) const {
  return {StartPoint, StartPoint + TPoint2DUtils::Stretch(Vector(), ALength)};
}

TVLine2D TVLine2D::BiStretch(double ALength) const {
  const TPoint2D Half = TPoint2DUtils::Stretch(Vector(), 0.5 * ALength);
  return {Center() - Half, Center() + Half};
}

TVLine2D TVLine2D::Offset(double D) const {
  return Translate(TPoint2DUtils::Stretch(Vector().RotateCcw90(), D));
}

TVLine2D TVLine2D::PerpendicularBisector() const {
  const TPoint2D Half = Vector().RotateCcw90() * 0.5;
  return {Center() - Half, Center() + Half};
}

std::optional<TVLine2D> TVLine2D::ClipBy(const TVRect2D& Box) const {
  TCut From{0.0};
  TCut To{1.0};
  using enum TCut::TBy;
  if (!Box.IsValid() || !TPoint2DUtils::IsFinite(StartPoint) ||
      !TPoint2DUtils::IsFinite(EndPoint) ||
      !ClipCoordinate(StartPoint.X, EndPoint.X, Box.Left, Box.Right, SideX, From, To) ||
      !ClipCoordinate(StartPoint.Y, EndPoint.Y, Box.Bottom, Box.Top, SideY, From, To)) {
    return std::nullopt;
  }
  return TVLine2D(CutPoint(*this, From, Box, StartPoint), CutPoint(*this, To, Box, EndPoint));
}

// --- Points and parameters ---

double TVLine2D::CalcParamByPointProjection(const TPoint2D& P) const {
  const TPoint2D V = Vector();
  const TPoint2D D = P - StartPoint;
  const double Square = V.DotMul(V);
  if (Square > 1e-290 && Square < 1e300) {  // an infinite square would make any quotient 0
    const double T = V.DotMul(D) / Square;
    if (std::isfinite(T)) return T;
  }
  // The products leave the range of a double: the same quotient by the unit direction.
  const double T = V.Normal().DotMul(D) / V.Mag();
  return std::isfinite(T) ? T : 0.0;
}

double TVLine2D::SegmentDistanceTo(const TPoint2D& P) const {
  double T = 0.0;
  return SegmentDistanceTo(P, T);
}

double TVLine2D::SegmentDistanceTo(const TPoint2D& P, double& T) const {
  T = 0.0;
  if (StartPoint == EndPoint) return P.DistanceTo(StartPoint);
  const double Foot = CalcParamByPointProjection(P);
  if (Foot <= 0.0) return P.DistanceTo(StartPoint);
  if (Foot >= 1.0) {
    T = 1.0;
    return P.DistanceTo(EndPoint);
  }
  T = Foot;
  return LineDistanceTo(P);
}

double TVLine2D::LineDistanceTo(const TPoint2D& P) const {
  if (StartPoint == EndPoint) return P.DistanceTo(StartPoint);
  const TPoint2D V = Vector();
  const TPoint2D D = P - StartPoint;
  const double Cross = std::abs(V.CrossMul(D));
  const double Length = V.Mag();
  if (Cross < 1e300 && Length > 1e-150) return Cross / Length;
  return std::abs(V.Normal().CrossMul(D));  // the product may leave the range of a double
}

double TVLine2D::LineDistanceTo(const TPoint2D& P, double& T) const {
  T = CalcParamByPointProjection(P);
  return P.DistanceTo(StartPoint * (1.0 - T) + EndPoint * T);
}

bool TVLine2D::IsPointOnSegLine(const TPoint2D& P, double Eps) const {
  return TMathUtils::IsInFloatRange(CalcParamByPointProjection(P), 0.0, 1.0, true, true, Eps) &&
         TMathUtils::FloatLessEquals(LineDistanceTo(P), 0.0, Eps);
}

bool TVLine2D::IsPointNearBySegment(const TPoint2D& P, double Eps) const {
  return TMathUtils::FloatLessEquals(SegmentDistanceTo(P), 0.0, Eps);
}

bool TVLine2D::OnBorder(const TPoint2D& P, double Eps) const {
  return P.Equals(StartPoint, Eps) || P.Equals(EndPoint, Eps);
}

bool TVLine2D::OnBorder(const TVRect2D& Box, double Eps) const {
  if (!Box.IsPointIn(StartPoint, Eps) || !Box.IsPointIn(EndPoint, Eps)) return false;
  const auto BothAt = [Eps](double A, double B, double Side) {
    return TMathUtils::FloatEquals(A, Side, Eps) && TMathUtils::FloatEquals(B, Side, Eps);
  };
  return BothAt(StartPoint.X, EndPoint.X, Box.Left) ||
         BothAt(StartPoint.X, EndPoint.X, Box.Right) || BothAt(StartPoint.Y, EndPoint.Y, Box.Top) ||
         BothAt(StartPoint.Y, EndPoint.Y, Box.Bottom);
}

double TVLine2D::CalculateX(double Y) const {
  return PointOfLineAtY(Y).X;
}

double TVLine2D::CalculateY(double X) const {
  return PointOfLineAtX(X).Y;
}

TPoint2D TVLine2D::PointOfLineAtX(double X) const {
  return ToLine2D().PointAtX(X);
}

TPoint2D TVLine2D::PointOfLineAtY(double Y) const {
  return ToLine2D().PointAtY(Y);
}

int TVLine2D::PointsWithin(int Count, const TPoint2D& Q1, const TPoint2D& Q2, TPoint2D& P1,
                           TPoint2D& P2, double Eps) const {
  const TPoint2D Points[] = {Q1, Q2};
  int Found = 0;
  for (int I = 0; I < std::min(Count, 2); ++I) {
    const double T = CalcParamByPointProjection(Points[I]);
    if (!TMathUtils::IsInFloatRange(T, 0.0, 1.0, true, true, Eps)) continue;
    (Found++ == 0 ? P1 : P2) = Points[I];
  }
  return Found;
}

// --- Relations of lines ---

int TVLine2D::RelationWithLine(const TVLine2D& Other, double ParallelEps,
                               double CoincidentEps) const {
  const TPoint2D V2 = Other.Vector();
  if (!TMathUtils::FloatLessEquals(std::abs(Vector().CrossMul(V2)), 0.0, ParallelEps)) return 1;
  const double Apart = std::abs((EndPoint - Other.EndPoint).CrossMul(V2));
  return TMathUtils::FloatLessEquals(Apart, 0.0, CoincidentEps) ? 2 : 0;
}

int TVLine2D::RelationWithLine(const TVLine2D& Other, TPoint2D& P, double ParallelEps,
                               double CoincidentEps) const {
  const int Code = RelationWithLine(Other, ParallelEps, CoincidentEps);
  if (Code == 1) P = EvalPoint(CrossingParam(*this, Other));
  return Code;
}

int TVLine2D::RelationSeglineWithLine(const TVLine2D& Line, TPoint2D& P) const {
  const int Code = RelationWithLine(Line, kLinearTolerance, kLinearTolerance);
  if (Code != 1) return Code;
  const double T = CrossingParam(*this, Line);
  if (!TMathUtils::IsInRange(T, 0.0, 1.0, true, true)) return 0;
  P = EvalPoint(T);
  return 1;
}

bool TVLine2D::InternalCrossWithLine(const TVLine2D& Line, TPoint2D& P, double Eps) const {
  if (RelationWithLine(Line) != 1) return false;
  const double T = CrossingParam(*this, Line);
  if (!TMathUtils::IsInFloatRange(T, 0.0, 1.0, false, false, Eps)) return false;
  P = EvalPoint(T);
  return true;
}

int TVLine2D::RelationWithSegLine(const TVLine2D& Other, TPoint2D& P1, TPoint2D& P2,
                                  double Eps) const {
  TIntersectPoint2D I1;
  TIntersectPoint2D I2;
  const int Code = RelationWithSegLine2(Other, I1, I2, Eps);
  if (Code >= 1) P1 = I1.Point;
  if (Code == 2) P2 = I2.Point;
  return Code;
}

int TVLine2D::RelationWithSegLine2(const TVLine2D& Other, TIntersectPoint2D& I1,
                                   TIntersectPoint2D& I2, double Eps) const {
  if (!BoundBox().Inflate(Eps).Intersect(Other.BoundBox()).IsValid()) return 0;
  return ToLine2D().Intersect(Other.ToLine2D(), I1, I2, Eps);
}

bool TVLine2D::CrossWithSegLine(const TVLine2D& Other, TPoint2D& P, double Eps) const {
  TPoint2D P1;
  TPoint2D P2;
  if (RelationWithSegLine(Other, P1, P2, Eps) != 1) return false;
  P = P1;
  return true;
}

void TVLine2D::WriteToFile(const std::string& FileName, std::string_view Colour) const {
  WriteDebugFile("TVLine2D.WriteToFile", FileName,
                 std::string(Colour) + '\n' + DebugText(StartPoint, EndPoint) + '\n');
}

}  // namespace tarnalgo
