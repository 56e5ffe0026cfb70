#include "examples/sheet_planner/Connections.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "examples/sheet_planner/GapCheck.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

using TStepKind = TPlanStep::TKind;

/// A place and a unit direction.
struct TPose {
  TPoint2D Place;
  TPoint2D Way;
};

class TConnector {
 public:
  TConnector(const TSheet& Sheet, const TConnectOptions& Options, TPlan& Plan)
      : FOptions(Options), FPlan(Plan), FCheck(Sheet) {}

  void Run() {
    const int Count = static_cast<int>(FPlan.Order.size());
    FPlan.Connections.resize(FPlan.Order.size());
    for (int I = 0; I < Count; ++I) {
      if (StepAt(I).Kind == TStepKind::Circle) TurnCircle(I);
      if (I == 0 || !IsFlown(I) || !IsFlown(I - 1) || PortOf(I) != PortOf(I - 1)) continue;
      FPlan.Connections[static_cast<std::size_t>(I)] = Connect(Leaving(I - 1), Entering(I));
    }
  }

 private:
  const TPlanStep& StepAt(int I) const { return FPlan.Order[static_cast<std::size_t>(I)]; }
  const TOwningFlyCurves& PassAt(int I) const {
    return FPlan.Passes[static_cast<std::size_t>(StepAt(I).Index)];
  }
  const TFlyCircle& CircleAt(int I) const {
    return static_cast<const TFlyCircle&>(*FPlan.Circles[StepAt(I).Index]);
  }
  bool IsFlown(int I) const { return StepAt(I).Kind != TStepKind::Contour; }
  int PortOf(int I) const {
    return StepAt(I).Kind == TStepKind::Pass ? PassAt(I).First()->ChannelPort()
                                             : CircleAt(I).ChannelPort();
  }

  /// A circle is left where it was entered.
  TPose PoseOfCircle(int I) const {
    const TPoint2D Place = CircleAt(I).GetPathStart();
    return {Place, (Place - CircleAt(I).Circle2D().Center).RotateCcw90().Normal()};
  }
  TPose Entering(int I) const {
    if (StepAt(I).Kind == TStepKind::Circle) return PoseOfCircle(I);
    const TGeCurve2D& Curve = *PassAt(I).First()->GeCurve();
    return {Curve.StartPoint(), (Curve.EndPoint() - Curve.StartPoint()).Normal()};
  }
  TPose Leaving(int I) const {
    if (StepAt(I).Kind == TStepKind::Circle) return PoseOfCircle(I);
    const TGeCurve2D& Curve = *PassAt(I).Last()->GeCurve();
    return {Curve.EndPoint(), (Curve.EndPoint() - Curve.StartPoint()).Normal()};
  }

  /// Starts the circle where it runs towards the next one, or as the head comes in.
  void TurnCircle(int I) {
    const TCircle2D Circle = CircleAt(I).Circle2D();
    TPoint2D Way;
    if (I + 1 < static_cast<int>(FPlan.Order.size()) && StepAt(I + 1).Kind == TStepKind::Circle) {
      const TCircle2D Next = CircleAt(I + 1).Circle2D();
      if (Circle.Center.DistanceTo(Next.Center) - Circle.Radius - Next.Radius <=
          MaxConnectDistance) {
        Way = (Next.Center - Circle.Center).Normal();
      }
    }
    if (Way == TPoint2D() && I > 0 && IsFlown(I - 1)) Way = Leaving(I - 1).Way;
    if (Way == TPoint2D()) return;
    FPlan.Circles[StepAt(I).Index]->SetPathStart(Circle.Center + Way.RotateCw90() * Circle.Radius);
  }

  /// The counted connection, empty when there is none.
  std::unique_ptr<TGeCurve2D> Connect(const TPose& Out, const TPose& In) {
    TConnectStats& Stats = FPlan.Joints;
    const double Distance = Out.Place.DistanceTo(In.Place);
    if (Distance > MaxConnectDistance) {
      ++Stats.TooFar;
      return nullptr;
    }
    return FOptions.Connect == TConnect::Curves ? Curve(Out, In) : Transition(Out, In, Distance);
  }

  std::unique_ptr<TGeCurve2D> Curve(const TPose& Out, const TPose& In) {
    TConnectStats& Stats = FPlan.Joints;
    auto Joint = TFlyscanTool::CreateConnectCurve(Out.Place, Out.Way, In.Place, In.Way);
    if (!FCheck.IsClear(*Joint)) {
      ++Stats.Crossing;
      return nullptr;
    }
    const auto* const Bezier = dynamic_cast<const TGePolyBezier2D*>(Joint.get());
    ++(Bezier && Bezier->GetBezierCount() == 1 ? Stats.Smooth : Stats.ThreePiece);
    return Joint;
  }

  std::unique_ptr<TGeCurve2D> Transition(const TPose& Out, const TPose& In, double Distance) {
    constexpr double kShrink = 0.8;
    TConnectStats& Stats = FPlan.Joints;
    TTransitionLineFunc Func;
    Func.SetMinRadius(FOptions.MinRadius);
    Func.SetMaxAng(FOptions.MaxAngle);
    bool HasCurve = false;
    double Radius = std::max(Distance / 2.0, FOptions.MinRadius / kShrink);
    while (Radius > FOptions.MinRadius) {
      auto Line = Func.CalcTransitionLine(Out.Place, Out.Way, In.Place, In.Way, Radius);
      if (!Line) break;
      HasCurve = true;
      if (FCheck.IsClear(*Line)) {
        ++Stats.Transitions;
        return Line;
      }
      Radius *= kShrink;
    }
    ++(HasCurve ? Stats.Crossing : Stats.NoCurve);
    return nullptr;
  }

  TConnectOptions FOptions;
  TPlan& FPlan;
  TGapCheck FCheck;
};

}  // namespace

void ConnectPasses(const TSheet& Sheet, const TConnectOptions& Options, TPlan& Plan) {
  if (Options.Connect != TConnect::Stop) TConnector(Sheet, Options, Plan).Run();
}

}  // namespace sheet_planner
