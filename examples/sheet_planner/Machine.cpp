#include "examples/sheet_planner/Machine.h"

#include <cmath>
#include <cstddef>

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// From halt to halt over a length.
double TimeOver(double Length, double Speed, double Acceleration) {
  if (Length * Acceleration < Speed * Speed) return 2.0 * std::sqrt(Length / Acceleration);
  return Length / Speed + Speed / Acceleration;
}

/// Length and directions of a curve: all the meter needs of it.
struct TStretch {
  double Length;
  TPoint2D Leaving;
  TPoint2D Arriving;
};

TPoint2D TangentAt(const TGeCircularArc2D& Arc, const TPoint2D& P) {
  const TPoint2D Radius = P - Arc.GetCenter();
  return Arc.GetSweepAngle() > 0.0 ? Radius.RotateCcw90() : Radius.RotateCw90();
}

std::vector<TStretch> StretchesOf(const TGeCurve2D& Curve) {
  const double Length = Curve.CurveLength();
  if (const auto* const Arc = dynamic_cast<const TGeCircularArc2D*>(&Curve)) {
    return {{Length, TangentAt(*Arc, Arc->StartPoint()), TangentAt(*Arc, Arc->EndPoint())}};
  }
  if (const auto* const Joint = dynamic_cast<const TGePolyBezier2D*>(&Curve)) {
    const int Last = Joint->GetBezierCount() - 1;
    return {{Length, Joint->GetBezier(0).TangentStart(), Joint->GetBezier(Last).TangentEnd()}};
  }
  if (const auto* const Chain = dynamic_cast<const TGePolyline2D*>(&Curve)) {
    std::vector<TStretch> Stretches;
    for (int I = 1; I < Chain->GetPointCount(); ++I) {
      const TPoint2D Way = Chain->GetPoint(I) - Chain->GetPoint(I - 1);
      Stretches.push_back({Way.Mag(), Way, Way});
    }
    return Stretches;
  }
  const TPoint2D Way = Curve.EndPoint() - Curve.StartPoint();
  return {{Length, Way, Way}};
}

class TMeter {
 public:
  explicit TMeter(const TMachine& Machine) : FMachine(Machine) {}

  void Take(const TMove& Move) {
    if (Move.Kind == TMove::TKind::Rapid) {
      Halt();
      const double Length = Move.Curve->CurveLength();
      FWork.RapidLength += Length;
      ++FWork.RapidMoves;
      ++FWork.Halts;
      FWork.Time += TimeOver(Length, FMachine.RapidSpeed, FMachine.Acceleration);
    } else {
      for (const TStretch& Stretch : StretchesOf(*Move.Curve)) Follow(Stretch, Move.Kind);
    }
    FWasBeamOn = Move.IsBeamOn();
  }
  TWork Finish() {
    Halt();
    return FWork;
  }

 private:
  void Follow(const TStretch& Stretch, TMove::TKind Kind) {
    const bool IsBeamOn = Kind == TMove::TKind::Cut;
    if (FSinceHalt > 0.0 && FArriving.AngleBetween(Stretch.Leaving) > FMachine.CornerAngle) Halt();
    if (IsBeamOn && !FWasBeamOn) {
      if (FSinceHalt > 0.0) {
        ++FWork.FlyingStarts;
      } else {
        ++FWork.Pierces;
        FWork.Time += FMachine.PierceTime;
      }
    }
    (IsBeamOn                    ? FWork.CutLength
     : Kind == TMove::TKind::Gap ? FWork.GapLength
                                 : FWork.ConnectionLength) += Stretch.Length;
    FSinceHalt += Stretch.Length;
    FArriving = Stretch.Arriving;
    FWasBeamOn = IsBeamOn;
  }
  void Halt() {
    if (!(FSinceHalt > 0.0)) return;
    FWork.Time += TimeOver(FSinceHalt, FMachine.CutSpeed, FMachine.Acceleration);
    FSinceHalt = 0.0;
    ++FWork.Halts;
  }

  TMachine FMachine;
  TWork FWork;
  double FSinceHalt = 0.0;
  TPoint2D FArriving;
  bool FWasBeamOn = false;
};

}  // namespace

TWork Measure(const std::vector<TMove>& Moves, const TMachine& Machine) {
  TMeter Meter(Machine);
  for (const TMove& Move : Moves) Meter.Take(Move);
  return Meter.Finish();
}

}  // namespace sheet_planner
