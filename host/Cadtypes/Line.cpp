#include "host/Cadtypes/Line.h"

#include <algorithm>
#include <cmath>

#include "host/Cadtypes/ExtendedPoint.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// Parameter of the projection of `P`, 0 on a line of no length.
double ProjectedParam(const TLine2D& Line, const TPoint2D& P) {
  const TExtPoint2D Origin(Line.StartPoint);
  const TExtPoint2D Way = TExtPoint2D(Line.EndPoint) - Origin;
  const long double Square = Way.DotMul(Way);
  if (!(Square > 0.0L)) return 0.0;
  return static_cast<double>((TExtPoint2D(P) - Origin).DotMul(Way) / Square);
}

/// The value of a linear function at `X` that is `Y0` at `X0` and `Y1` at `X1`: reckoned from the
/// nearer end, so it is exact at both. `Y0` where the function has no such value.
double LinearValue(double X, double X0, double Y0, double X1, double Y1) {
  const bool FromStart = std::abs(X - X0) <= std::abs(X - X1);
  const double Step = FromStart ? (X - X0) / (X1 - X0) : (X - X1) / (X1 - X0);
  const double Value = (FromStart ? Y0 : Y1) + Step * (Y1 - Y0);
  return std::isfinite(Value) ? Value : Y0;
}

/// Parameters of the crossing of the two infinite lines; false when they are parallel.
bool CrossingParams(const TLine2D& A, const TLine2D& B, long double& ParamA, long double& ParamB) {
  const TExtPoint2D WayA = TExtPoint2D(A.EndPoint) - TExtPoint2D(A.StartPoint);
  const TExtPoint2D WayB = TExtPoint2D(B.EndPoint) - TExtPoint2D(B.StartPoint);
  const long double Sine = WayA.CrossMul(WayB);  // times both lengths
  if (!(std::abs(Sine) > kParallelSine * WayA.Mag() * WayB.Mag())) return false;
  const TExtPoint2D Between = TExtPoint2D(B.StartPoint) - TExtPoint2D(A.StartPoint);
  ParamA = Between.CrossMul(WayB) / Sine;
  ParamB = Between.CrossMul(WayA) / Sine;
  return true;
}

/// Reckoned from the nearer end, so that a crossing at an end loses nothing.
TPoint2D PointOfParam(const TLine2D& Line, long double T) {
  const TExtPoint2D Start(Line.StartPoint);
  const TExtPoint2D End(Line.EndPoint);
  const TExtPoint2D Way = End - Start;
  return (T <= 0.5L ? Start + Way * T : End + Way * (T - 1.0L)).Rounded();
}

/// The meeting of two segments, gathered from the ends that touch the other segment and from the
/// crossing of their insides.
class TSegmentMeeting {
 public:
  TSegmentMeeting(const TLine2D& A, const TLine2D& B, double Eps) : FA(A), FB(B), FEps(Eps) {}

  int Find(TIntersectPoint2D& I1, TIntersectPoint2D& I2) {
    FindTouchingEnds();
    if (IsOverlap()) {
      I1 = *FFirst;
      I2 = *FLast;
      return 2;
    }
    TIntersectPoint2D Crossing;
    const bool Crosses = FindCrossing(Crossing);
    if (FCount > 0 && (!Crosses || FNearest->Point.Equals(Crossing.Point, FEps))) {
      I1 = *FNearest;  // an end names the place better than a crossing a rounding beside it
      return 1;
    }
    if (!Crosses) return 0;
    I1 = Crossing;
    return 1;
  }

 private:
  /// Each end of one segment within the tolerance of the other segment.
  void FindTouchingEnds() {
    for (const double End : {0.0, 1.0}) {
      const TPoint2D OfA = FA.EvalPoint(End);
      const TFoot OnB = FootOf(OfA, FB);
      if (OnB.Gap <= FEps) AddTouch({OfA, End, OnB.Param}, OnB.Gap);
    }
    for (const double End : {0.0, 1.0}) {
      const TPoint2D OfB = FB.EvalPoint(End);
      const TFoot OnA = FootOf(OfB, FA);
      if (OnA.Gap <= FEps) AddTouch({OfB, OnA.Param, End}, OnA.Gap);
    }
    for (int I = 0; I < FCount; ++I) {
      if (!FFirst || FTouches[I].Param1 < FFirst->Param1) FFirst = &FTouches[I];
      if (!FLast || FTouches[I].Param1 > FLast->Param1) FLast = &FTouches[I];
      if (!FNearest || FGaps[I] < FGaps[FNearest - FTouches]) FNearest = &FTouches[I];
    }
  }

  struct TFoot {
    double Param;
    double Gap;
  };

  /// The place of the segment nearest to `P`, or the end beside it where that is within the
  /// tolerance too, so that two ends are equally near to each other.
  TFoot FootOf(const TPoint2D& P, const TLine2D& Line) const {
    const double T = std::clamp(ProjectedParam(Line, P), 0.0, 1.0);
    const double NearerEnd = T < 0.5 ? 0.0 : 1.0;
    const double ToEnd = P.DistanceTo(Line.EvalPoint(NearerEnd));
    if (ToEnd <= FEps || T == NearerEnd) return {NearerEnd, ToEnd};
    return {T, std::abs(Line.DistanceDirect(P))};
  }

  void AddTouch(const TIntersectPoint2D& Touch, double Gap) {
    FGaps[FCount] = Gap;
    FTouches[FCount++] = Touch;
  }

  /// The outermost touches lie apart along both segments. What lies between them is then within
  /// the tolerance of both too.
  bool IsOverlap() const {
    if (FCount < 2) return false;
    const double AlongA = (FLast->Param1 - FFirst->Param1) * FA.Length();
    const double AlongB = std::abs(FLast->Param2 - FFirst->Param2) * FB.Length();
    return TMathUtils::FloatGreater(AlongA, 0.0, FEps) &&
           TMathUtils::FloatGreater(AlongB, 0.0, FEps);
  }

  /// The crossing of the insides, without slack: the ends have theirs already.
  bool FindCrossing(TIntersectPoint2D& Crossing) const {
    long double TA = 0.0L;
    long double TB = 0.0L;
    if (!CrossingParams(FA, FB, TA, TB)) return false;
    if (!(TA >= 0.0L && TA <= 1.0L && TB >= 0.0L && TB <= 1.0L)) return false;
    Crossing = {PointOfParam(FA, TA), static_cast<double>(TA), static_cast<double>(TB)};
    return true;
  }

  const TLine2D& FA;
  const TLine2D& FB;
  const double FEps;
  TIntersectPoint2D FTouches[4];
  double FGaps[4] = {};
  int FCount = 0;
  const TIntersectPoint2D* FFirst = nullptr;    // the touch with the least parameter on FA
  const TIntersectPoint2D* FLast = nullptr;     // the one with the greatest
  const TIntersectPoint2D* FNearest = nullptr;  // the one with the least gap
};

}  // namespace

TRect2D TLine2D::GetBoundBox() const {
  return TRect2D(StartPoint, StartPoint).Union(EndPoint);
}

TPoint2D TLine2D::PointAtX(double X) const {
  return {X, LinearValue(X, StartPoint.X, StartPoint.Y, EndPoint.X, EndPoint.Y)};
}

TPoint2D TLine2D::PointAtY(double Y) const {
  return {LinearValue(Y, StartPoint.Y, StartPoint.X, EndPoint.Y, EndPoint.X), Y};
}

double TLine2D::ParamOfPoint(const TPoint2D& P, double Tol) const {
  const double T = ProjectedParam(*this, P);
  const double NearerEnd = T < 0.5 ? 0.0 : 1.0;
  return TMathUtils::FloatEquals((T - NearerEnd) * Length(), 0.0, Tol) ? NearerEnd : T;
}

double TLine2D::DistanceDirect(const TPoint2D& P) const {
  const TExtPoint2D FromStart = TExtPoint2D(P) - TExtPoint2D(StartPoint);
  const TExtPoint2D Way = TExtPoint2D(EndPoint) - TExtPoint2D(StartPoint);
  const long double Length = Way.Mag();
  if (!(Length > 0.0L)) return static_cast<double>(FromStart.Mag());
  // From the nearer end: the product of long vectors would cost the digits that tell.
  const TExtPoint2D FromEnd = TExtPoint2D(P) - TExtPoint2D(EndPoint);
  const bool NearStart = FromStart.DotMul(FromStart) <= FromEnd.DotMul(FromEnd);
  return static_cast<double>(Way.CrossMul(NearStart ? FromStart : FromEnd) / Length);
}

bool TLine2D::IsOn(const TPoint2D& P, double Tol, double& T) const {
  T = ProjectedParam(*this, P);
  return TMathUtils::IsInFloatRange(T, 0.0, 1.0, true, true, Tol) &&
         TMathUtils::FloatEquals(DistanceDirect(P), 0.0, Tol);
}

bool TLine2D::Cross(const TLine2D& L, TPoint2D& P) const {
  long double T = 0.0L;
  long double OnL = 0.0L;
  if (!CrossingParams(*this, L, T, OnL)) return false;
  const TPoint2D Place = PointOfParam(*this, T);
  if (!std::isfinite(Place.X) || !std::isfinite(Place.Y)) return false;
  P = Place;
  return true;
}

int TLine2D::Intersect(const TLine2D& L, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                       double Eps) const {
  return TSegmentMeeting(*this, L, Eps).Find(I1, I2);
}

}  // namespace tarnalgo
