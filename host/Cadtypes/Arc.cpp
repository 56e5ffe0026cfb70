#include "host/Cadtypes/Arc.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/Cadtypes/ArcOverlap.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// Turned angle from the start of `Arc` to the direction of `P`, in the arc's sense, in [0, 2π).
double TurnedTo(const TArc2D& Arc, double Angle) {
  return Arc.SweepAngle >= 0.0 ? TMathUtils::CycInc(Angle, -Arc.StartAngle, kFullTurn)
                               : TMathUtils::CycInc(Arc.StartAngle, -Angle, kFullTurn);
}

/// |sweep|, at most a full turn.
double CoveredTurn(const TArc2D& Arc) {
  return std::min(std::abs(Arc.SweepAngle), kFullTurn);
}

void CheckEndsApart(const TPoint2D& StartPt, const TPoint2D& EndPt, const char* Where) {
  if (!(StartPt.DistanceTo(EndPt) > kLinearTolerance)) {
    RaiseError<EParamError>(Where, "起点与终点重合");
  }
}

/// How far `P` lies from the circle of the arc, and from the line.
double GapTo(const TArc2D& Arc, const TPoint2D& P) {
  return std::abs(P.DistanceTo(Arc.Center) - Arc.Radius);
}
double GapTo(const TLine2D& Line, const TPoint2D& P) {
  return std::abs(Line.DistanceDirect(P));
}

/// The common points of an arc and another curve, chosen from the common points of the full
/// circle with it. A crossing that an arc misses by a hair at a flat angle can lie far beyond its
/// end, although the end itself lies on the other curve: that end then stands for the crossing.
/// Likewise two crossings so near that they count as one of tangency have their point between
/// them, where the curves are furthest apart: an end that lies nearer to both names the place.
class TArcMeeting {
 public:
  /// `Gap`: the larger distance of the point from the two curves, likewise below.
  void AddCrossing(const TIntersectPoint2D& Crossing, bool IsOnBoth, double Gap) {
    FCrossings[FCount] = Crossing;
    FIsOnBoth[FCount] = IsOnBoth;
    FGaps[FCount++] = Gap;
  }

  /// An end of one curve that lies on the other one.
  void AddTouchingEnd(const TIntersectPoint2D& End, double Gap) {
    if (FCount == 0) return;
    const auto Dist = [&](int I) { return FCrossings[I].Point.DistanceTo(End.Point); };
    const int Nearest = FCount == 2 && Dist(1) < Dist(0) ? 1 : 0;
    const bool IsBetter = FCount == 1 && Gap < FGaps[0];
    if (FIsOnBoth[Nearest] && !IsBetter) return;
    FCrossings[Nearest] = End;
    FIsOnBoth[Nearest] = true;
    FGaps[Nearest] = Gap;
  }

  /// The points found, in the order in which the crossings were added.
  int Give(TIntersectPoint2D& I1, TIntersectPoint2D& I2) const {
    int Found = 0;
    for (int I = 0; I < FCount; ++I) {
      if (FIsOnBoth[I]) (Found++ == 0 ? I1 : I2) = FCrossings[I];
    }
    return Found;
  }

 private:
  TIntersectPoint2D FCrossings[2];
  bool FIsOnBoth[2] = {};
  double FGaps[2] = {};
  int FCount = 0;
};

/// The overlap of two arcs of one circle as points of both.
class TOverlapPoints {
 public:
  TOverlapPoints(const TArc2D& A, const TArc2D& B, double Eps)
      : FA(A),
        FB(B),
        FEps(Eps),
        FOverlap(A.Radius, CoveredTurn(A), TurnToFirstEnd(A, B), CoveredTurn(B), Eps) {}

  /// The ends of the longest stretch, or else the places where the arcs touch.
  int Give(TIntersectPoint2D& I1, TIntersectPoint2D& I2) const {
    const auto Parts = FOverlap.Parts();
    if (Parts.empty()) return 0;
    const auto& Longest = Parts.back().Width() > Parts[0].Width() ? Parts.back() : Parts[0];
    if (Longest.IsStretch) {
      I1 = PointAt(Longest.Low);
      I2 = PointAt(Longest.High);
      return 2;
    }
    I1 = PointAt(Parts[0].Low + Parts[0].Width() / 2);
    if (Parts.size() == 2) I2 = PointAt(Parts[1].Low + Parts[1].Width() / 2);
    return static_cast<int>(Parts.size());
  }

 private:
  /// Turned angle on `A` to the end of `B` that comes first in the sense of `A`.
  static double TurnToFirstEnd(const TArc2D& A, const TArc2D& B) {
    const bool SameSense = (A.SweepAngle >= 0.0) == (B.SweepAngle >= 0.0);
    return TurnedTo(A, SameSense ? B.StartAngle : B.StartAngle + B.SweepAngle);
  }

  TIntersectPoint2D PointAt(double Turned) const {
    const double T = FA.SweepAngle == 0.0 ? 0.0 : Turned / std::abs(FA.SweepAngle);
    const bool IsOverSeam = T > 1.0 && TArcOverlap::IsFull(FA.Radius, CoveredTurn(FA), FEps);
    const double T1 = std::clamp(IsOverSeam ? T - 1.0 : T, 0.0, 1.0);
    const TPoint2D P = FA.PointAtParam(T1);
    return {P, T1, std::min(FB.ParamOfPoint(P), 1.0)};
  }

  const TArc2D& FA;
  const TArc2D& FB;
  const double FEps;
  const TArcOverlap FOverlap;
};

}  // namespace

TArc2D TArc2D::CreateBulge(const TPoint2D& StartPt, const TPoint2D& EndPt, double Bulge) {
  constexpr const char* kWhere = "TArc2D.CreateBulge";
  CheckEndsApart(StartPt, EndPt, kWhere);
  const TPoint2D Chord = EndPt - StartPt;
  // (1 ± b²) / 4b, without the square that overflows.
  const double Inverse = 1.0 / Bulge;
  const TPoint2D Center = StartPt + Chord / 2 + Chord.RotateCcw90() * ((Inverse - Bulge) / 4);
  const double Radius = Chord.Mag() * std::abs((Inverse + Bulge) / 4);
  if (!std::isfinite(Radius)) {  // nor is it of a bulge that is not
    RaiseError<EParamError>(kWhere, "凸度必须是非零的有限值");
  }
  return {Center, Radius, (StartPt - Center).Angle(), 4.0 * std::atan(Bulge)};
}

TArc2D TArc2D::CreateCenter(const TPoint2D& StartPt, const TPoint2D& EndPt, const TPoint2D& Center,
                            bool IsClockwise) {
  const TPoint2D ToStart = StartPt - Center;
  const TPoint2D ToEnd = EndPt - Center;
  double Sweep = IsClockwise ? ToStart.AngleFrom(ToEnd) : ToEnd.AngleFrom(ToStart);
  if (StartPt.Equals(EndPt)) Sweep = kFullTurn;
  return {Center, ToStart.Mag(), ToStart.Angle(), IsClockwise ? -Sweep : Sweep};
}

TArc2D TArc2D::CreateRadius(const TPoint2D& StartPt, const TPoint2D& EndPt, double Radius,
                            bool Flag) {
  constexpr const char* kWhere = "TArc2D.CreateRadius";
  CheckEndsApart(StartPt, EndPt, kWhere);
  const TPoint2D Chord = EndPt - StartPt;
  const double Half = Chord.Mag() / 2;
  if (!TMathUtils::FloatGreaterEquals(Radius, Half) || !std::isfinite(Radius)) {
    RaiseError<EParamError>(kWhere, "半径小于弦长的一半");
  }
  const double Reach = std::max(Radius, Half);
  const double Height = std::sqrt(Reach - Half) * std::sqrt(Reach + Half);
  const TPoint2D ToCenter = (Flag ? Chord.RotateCcw90() : Chord.RotateCw90()).Normal();
  const TPoint2D Center = StartPt + Chord / 2 + ToCenter * Height;
  const double Sweep = 2.0 * std::atan2(Half, Height);
  return {Center, Reach, (StartPt - Center).Angle(), Flag ? Sweep : -Sweep};
}

double TArc2D::Bulge() const {
  return std::tan(SweepAngle / 4.0);
}

TPoint2D TArc2D::PointAtParam(double T) const {
  return TCircle2D(Center, Radius).PointAtAngle(StartAngle + SweepAngle * T);
}

double TArc2D::ParamOfPoint(const TPoint2D& P) const {
  if (SweepAngle == 0.0) return 0.0;  // exact: the arc is a point
  const double Turned = TurnedTo(*this, (P - Center).Angle());
  const double Covered = CoveredTurn(*this);
  const double BeforeStart = kFullTurn - Turned;
  const bool IsInGap = Turned > Covered && BeforeStart < Turned - Covered;
  if ((IsInGap || Covered >= kFullTurn) && BeforeStart * Radius <= kLinearTolerance) return 0.0;
  return Turned / std::abs(SweepAngle);
}

TRect2D TArc2D::GetBoundBox() const {
  if (CoveredTurn(*this) >= kFullTurn) return TCircle2D(Center, Radius).GetBoundBox();
  TRect2D Box = TRect2D(StartPoint(), StartPoint()).Union(EndPoint());
  const TPoint2D Axes[] = {DcsX, DcsX.RotateCcw90(), -DcsX, DcsX.RotateCw90()};
  for (const TPoint2D& Axis : Axes) {
    if (TurnedTo(*this, Axis.Angle()) <= CoveredTurn(*this))
      Box = Box.Union(Center + Axis * Radius);
  }
  return Box;
}

double TArc2D::CurveLength() const {
  return std::abs(SweepAngle) * Radius;
}

bool TArc2D::IsOn(const TPoint2D& P, double Tol) const {
  if (!TMathUtils::FloatEquals(P.DistanceTo(Center), Radius, Tol)) return false;
  return TurnedTo(*this, (P - Center).Angle()) <= CoveredTurn(*this) ||
         P.Equals(StartPoint(), Tol) || P.Equals(EndPoint(), Tol);
}

int TArc2D::Intersect(const TArc2D& Arc, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                      double Eps) const {
  if (Center.Equals(Arc.Center, Eps) && TMathUtils::FloatEquals(Radius, Arc.Radius, Eps)) {
    return TOverlapPoints(*this, Arc, Eps).Give(I1, I2);
  }
  const auto Result = [&](const TPoint2D& P) {
    return TIntersectPoint2D{P, ParamWithin(P), Arc.ParamWithin(P)};
  };
  TIntersectPoint2D Crossings[2];
  const int Count =
      TCircle2D(Center, Radius)
          .Intersect(TCircle2D(Arc.Center, Arc.Radius), Crossings[0], Crossings[1], Eps);
  const auto Gap = [&](const TPoint2D& P) { return std::max(GapTo(*this, P), GapTo(Arc, P)); };
  TArcMeeting Meeting;
  for (int I = 0; I < Count; ++I) {
    const TPoint2D& P = Crossings[I].Point;
    Meeting.AddCrossing(Result(P), IsOn(P, Eps) && Arc.IsOn(P, Eps), Gap(P));
  }
  for (const TPoint2D& End : {StartPoint(), EndPoint()}) {
    if (Arc.IsOn(End, Eps)) Meeting.AddTouchingEnd(Result(End), Gap(End));
  }
  for (const TPoint2D& End : {Arc.StartPoint(), Arc.EndPoint()}) {
    if (IsOn(End, Eps)) Meeting.AddTouchingEnd(Result(End), Gap(End));
  }
  const int Found = Meeting.Give(I1, I2);
  if (Found == 2 && I2.Param1 < I1.Param1) std::swap(I1, I2);
  return Found;
}

int TArc2D::Intersect(const TLine2D& Line, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                      double Eps) const {
  const auto Result = [&](const TPoint2D& P) {
    return TIntersectPoint2D{P, ParamWithin(P), Line.ParamOfPoint(P, 0.0)};
  };
  TIntersectPoint2D Crossings[2];
  const int Count = TCircle2D(Center, Radius).Intersect(Line, Crossings[0], Crossings[1], Eps);
  const auto Gap = [&](const TPoint2D& P) { return std::max(GapTo(*this, P), GapTo(Line, P)); };
  TArcMeeting Meeting;
  for (int I = 0; I < Count; ++I) {
    const TPoint2D& P = Crossings[I].Point;
    Meeting.AddCrossing(Result(P), IsOn(P, Eps), Gap(P));
  }
  for (const TPoint2D& End : {StartPoint(), EndPoint()}) {
    if (TMathUtils::FloatEquals(GapTo(Line, End), 0.0, Eps)) {
      Meeting.AddTouchingEnd(Result(End), Gap(End));
    }
  }
  return Meeting.Give(I1, I2);
}

TLine2D TArc2D::EnvelopeLine() const {
  const TPoint2D Middle = PointAtParam(0.5);
  if (CoveredTurn(*this) >= kFullTurn) return {Middle, Middle};
  const TPoint2D HalfChord = (EndPoint() - StartPoint()) / 2;
  return {Middle - HalfChord, Middle + HalfChord};
}

double TArc2D::ParamWithin(const TPoint2D& P) const {
  return std::min(ParamOfPoint(P), 1.0);
}

}  // namespace tarnalgo
