#include "examples/sheet_planner/Moves.h"

#include <cstddef>
#include <utility>

#include "examples/sheet_planner/Contours.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// One curve of the segments from `First` on: a flattened curve as the polyline it is.
std::unique_ptr<TGeCurve2D> CurveOf(const TLABPolyline& Chain, int First, int Count) {
  if (Count == 1) return Chain[First].ToGeCurve2D();
  std::vector<TPoint2D> Points{Chain[First].P1};
  for (int I = 0; I < Count; ++I) Points.push_back(Chain[First + I].P4);
  return std::make_unique<TGePolyline2D>(std::move(Points));
}

/// From where cutting of the circle starts.
std::unique_ptr<TGeCurve2D> CurveOf(const TFlyCircle& Circle) {
  const TGeCircularArc2D& Arc = *Circle.GeCircle();
  const double Start = (Circle.GetPathStart() - Arc.GetCenter()).Angle();
  return std::make_unique<TGeCircularArc2D>(Arc.GetCenter(), Arc.GetRadius(), Start,
                                            Arc.GetSweepAngle());
}

class TMoveList {
 public:
  explicit TMoveList(const TPoint2D& Home) : FHead(Home) {}

  void Begin(const TPlanStep& Step, int Port) {
    FStep = Step;
    FPort = Port;
    FIsFirst = true;
  }
  void Add(TMove::TKind Kind, std::unique_ptr<TGeCurve2D> Curve) {
    if (FIsFirst) HopTo(Curve->StartPoint(), TMove::TKind::Rapid);
    FIsFirst = false;
    FHead = Curve->EndPoint();
    FMoves.push_back({Kind, std::move(Curve), FStep, FPort});
  }
  /// Leads to the step begun; a transition by its pieces.
  void Connect(const TGeCurve2D& Curve) {
    FIsFirst = false;
    if (const auto* const Whole = dynamic_cast<const TGeCompositeCurve2D*>(&Curve)) {
      for (int I = 0; I < Whole->GetCurveCount(); ++I) Connect(*Whole->GetCurve(I));
    } else if (Curve.CurveLength() > 0.0) {
      Add(TMove::TKind::Connection, Curve.Clone());
    }
  }
  void HopTo(const TPoint2D& P, TMove::TKind Kind) {
    if (!FHead.Equals(P))
      FMoves.push_back({Kind, std::make_unique<TGeLine2D>(FHead, P), FStep, FPort});
  }
  std::vector<TMove> Take() { return std::move(FMoves); }

 private:
  TPoint2D FHead;
  TPlanStep FStep;
  int FPort = 0;
  bool FIsFirst = true;
  std::vector<TMove> FMoves;
};

}  // namespace

std::vector<TMove> MovesOf(const TSheet& Sheet, const TPlan& Plan) {
  using TKind = TMove::TKind;
  TMoveList Moves(BoundsOf(Sheet).Min);
  for (std::size_t I = 0; I < Plan.Order.size(); ++I) {
    const TPlanStep& Step = Plan.Order[I];
    const TGeCurve2D* const Connection =
        I < Plan.Connections.size() ? Plan.Connections[I].get() : nullptr;
    const auto Index = static_cast<std::size_t>(Step.Index);
    if (Step.Kind == TPlanStep::TKind::Pass) {
      const TOwningFlyCurves& Pass = Plan.Passes[Index];
      Moves.Begin(Step, Pass.First()->ChannelPort());
      if (Connection) Moves.Connect(*Connection);
      for (const TFlyCurve* Piece : Pass) {
        // A gap too short for a piece of its own is flown over all the same.
        if (Piece != Pass.First()) Moves.HopTo(Piece->GeCurve()->StartPoint(), TKind::Gap);
        Moves.Add(Piece->IsFlyGap() ? TKind::Gap : TKind::Cut, Piece->GeCurve()->Clone());
      }
    } else if (Step.Kind == TPlanStep::TKind::Circle) {
      const auto& Circle = static_cast<const TFlyCircle&>(*Plan.Circles[Step.Index]);
      Moves.Begin(Step, Circle.ChannelPort());
      if (Connection) Moves.Connect(*Connection);
      Moves.Add(TKind::Cut, CurveOf(Circle));
    } else {
      const TOrdinaryContour& Contour = Plan.Contours[Index];
      Moves.Begin(Step, Contour.Port);
      int First = 0;
      for (const TContourPiece& Piece : Contour.Pieces) {
        const int Count = SegCountOf(Sheet, Piece);
        Moves.Add(TKind::Cut, CurveOf(Contour.Chain, First, Count));
        First += Count;
      }
    }
  }
  return Moves.Take();
}

}  // namespace sheet_planner
