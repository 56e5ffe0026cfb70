#include "geometryAlgo/VedaType/Line.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// Parameters of the crossing of two infinite lines. Not finite, or NaN, where there is none.
struct TCrossingParams {
  double OnA;
  double OnB;
};

TCrossingParams CrossingParams(const TVLine2D& A, const TVLine2D& B) {
  const TPoint2D VA = A.Vector();
  const TPoint2D VB = B.Vector();
  const TPoint2D D = B.StartPoint - A.StartPoint;
  const double Cross = VA.CrossMul(VB);
  const TCrossingParams Params{D.CrossMul(VB) / Cross, D.CrossMul(VA) / Cross};
  if (std::isfinite(Cross)) return Params;
  // The product overflows: the same quotients by unit directions.
  const TPoint2D UA = VA.Normal();
  const TPoint2D UB = VB.Normal();
  const double Sine = UA.CrossMul(UB);
  return {D.CrossMul(UB) / Sine / VA.Mag(), D.CrossMul(UA) / Sine / VB.Mag()};
}

bool InsideSegment(double T) {
  return TMathUtils::IsInRange(T, 0.0, 1.0, true, true);
}

/// The meeting of two segments: their ends that touch the other one, then their crossing.
class TSegmentMeeting {
 public:
  TSegmentMeeting(const TVLine2D& A, const TVLine2D& B, double Eps) : FA(A), FB(B), FEps(Eps) {}

  int Find(TIntersectPoint2D& I1, TIntersectPoint2D& I2) {
    CollectTouches();
    if (FindOverlap(I1, I2)) return 2;
    if (FindCrossing(I1) || FindNearestTouch(I1)) return 1;
    return 0;
  }

 private:
  /// Every end that lies within `FEps` of the other segment is in `FTouches`, A's ends first.
  void CollectTouches() {
    double T = 0.0;
    for (const double OnA : {0.0, 1.0}) {
      const TPoint2D P = FA.EvalPoint(OnA);
      const double Dist = FB.SegmentDistanceTo(P, T);
      if (Dist <= FEps) FTouches[FCount++] = {{P, OnA, T}, Dist};
    }
    for (const double OnB : {0.0, 1.0}) {
      const TPoint2D P = FB.EvalPoint(OnB);
      const double Dist = FA.SegmentDistanceTo(P, T);
      if (Dist <= FEps) FTouches[FCount++] = {{P, T, OnB}, Dist};
    }
  }

  /// The stretch from the first touch along A to the last. Both ends of it are near both segments,
  /// and the distance of two straight lines is convex: all between is near as well.
  bool FindOverlap(TIntersectPoint2D& I1, TIntersectPoint2D& I2) const {
    if (FCount < 2) return false;
    const auto [First, Last] = std::minmax_element(FTouches.begin(), FTouches.begin() + FCount,
                                                   [](const TTouch& Left, const TTouch& Right) {
                                                     return Left.Place.Param1 < Right.Place.Param1;
                                                   });
    if (First->Place.Point.Equals(Last->Place.Point, FEps)) return false;
    I1 = First->Place;
    I2 = Last->Place;
    return true;
  }

  bool FindCrossing(TIntersectPoint2D& I) const {
    const auto [OnA, OnB] = CrossingParams(FA, FB);
    if (!InsideSegment(OnA) || !InsideSegment(OnB)) return false;
    I = {FA.EvalPoint(OnA), OnA, OnB};
    for (int Index = 0; Index < FCount; ++Index) {
      if (!FTouches[Index].Place.Point.Equals(I.Point, FEps)) continue;
      I = FTouches[Index].Place;
      break;
    }
    return true;
  }

  bool FindNearestTouch(TIntersectPoint2D& I) const {
    if (FCount == 0) return false;
    I = std::min_element(
            FTouches.begin(), FTouches.begin() + FCount,
            [](const TTouch& Left, const TTouch& Right) { return Left.Dist < Right.Dist; })
            ->Place;
    return true;
  }

  struct TTouch {
    TIntersectPoint2D Place;
    double Dist = 0.0;
  };

  const TVLine2D& FA;
  const TVLine2D& FB;
  double FEps;
  std::array<TTouch, 4> FTouches{};
  int FCount = 0;
};

/// The value at `X` of the straight line through (X1, Y1) and (X2, Y2), X1 <> X2; exact at both.
double Interpolate(double X, double X1, double X2, double Y1, double Y2) {
  // Halves: the difference of two huge coordinates would overflow.
  const double T = (0.5 * X - 0.5 * X1) / (0.5 * X2 - 0.5 * X1);
  return T == 1.0 ? Y2 : Y1 + 2.0 * ((0.5 * Y2 - 0.5 * Y1) * T);
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
  if (Start == End) return Low <= Start && Start <= High;  // exact: never enters or leaves
  const bool Rising = Start < End;
  const auto CutAt = [&](double Side) {
    return TCut{Interpolate(Side, Start, End, 0.0, 1.0), By, Side};
  };
  // Whether there is a cut at all is asked of the coordinates: parameters round.
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
  if (!Box.IsValid() || !BoundBox().IsValid() ||
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
  if (Square > 1e-290) {
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
         LineDistanceTo(P) <= Eps;
}

bool TVLine2D::IsPointNearBySegment(const TPoint2D& P, double Eps) const {
  return SegmentDistanceTo(P) <= Eps;
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
  if (StartPoint.Y == EndPoint.Y) return StartPoint.X;  // exact: any other line reaches every Y
  return Interpolate(Y, StartPoint.Y, EndPoint.Y, StartPoint.X, EndPoint.X);
}

double TVLine2D::CalculateY(double X) const {
  if (StartPoint.X == EndPoint.X) return StartPoint.Y;  // exact: any other line reaches every X
  return Interpolate(X, StartPoint.X, EndPoint.X, StartPoint.Y, EndPoint.Y);
}

TPoint2D TVLine2D::PointOfLineAtX(double X) const {
  return {X, CalculateY(X)};
}

TPoint2D TVLine2D::PointOfLineAtY(double Y) const {
  return {CalculateX(Y), Y};
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
  if (Code == 1) P = EvalPoint(CrossingParams(*this, Other).OnA);
  return Code;
}

int TVLine2D::RelationSeglineWithLine(const TVLine2D& Line, TPoint2D& P) const {
  const int Code = RelationWithLine(Line, kLinearTolerance, kLinearTolerance);
  if (Code != 1) return Code;
  const double T = CrossingParams(*this, Line).OnA;
  if (!InsideSegment(T)) return 0;
  P = EvalPoint(T);
  return 1;
}

bool TVLine2D::InternalCrossWithLine(const TVLine2D& Line, TPoint2D& P, double Eps) const {
  if (RelationWithLine(Line) != 1) return false;
  const double T = CrossingParams(*this, Line).OnA;
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
  return TSegmentMeeting(*this, Other, Eps).Find(I1, I2);
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
                 DebugText(StartPoint, EndPoint) + ' ' + std::string(Colour) + '\n');
}

}  // namespace tarnalgo
