#include "examples/sheet_planner/JsonWriter.h"

#include <nlohmann/json.hpp>

#include "examples/sheet_planner/LooseEnds.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

using TJson = nlohmann::ordered_json;

TJson Of(const TPoint2D& P) {
  return TJson::array({P.X, P.Y});
}

TJson Of(const std::vector<TPoint2D>& Points) {
  TJson List = TJson::array();
  for (const TPoint2D& P : Points) List.push_back(Of(P));
  return List;
}

TJson LineOf(const TPoint2D& From, const TPoint2D& To) {
  return {{"type", "line"}, {"start", Of(From)}, {"end", Of(To)}};
}

TJson CurvesOf(const TGeCurve2D& Curve) {
  TJson List = TJson::array();
  if (const auto* const Arc = dynamic_cast<const TGeCircularArc2D*>(&Curve)) {
    List.push_back({{"type", Arc->IsCircle() ? "circle" : "arc"},
                    {"center", Of(Arc->GetCenter())},
                    {"radius", Arc->GetRadius()},
                    {"start_angle", Arc->GetStartAngle()},
                    {"sweep", Arc->GetSweepAngle()},
                    {"start", Of(Arc->StartPoint())},
                    {"end", Of(Arc->EndPoint())}});
  } else if (const auto* const Joint = dynamic_cast<const TGePolyBezier2D*>(&Curve)) {
    for (int I = 0; I < Joint->GetBezierCount(); ++I) {
      const TBezierSegment2D& B = Joint->GetBezier(I);
      List.push_back({{"type", "bezier"}, {"points", Of({B.P0, B.P1, B.P2, B.P3})}});
    }
  } else if (const auto* const Chain = dynamic_cast<const TGePolyline2D*>(&Curve)) {
    for (int I = 1; I < Chain->GetPointCount(); ++I) {
      List.push_back(LineOf(Chain->GetPoint(I - 1), Chain->GetPoint(I)));
    }
  } else {
    List.push_back(LineOf(Curve.StartPoint(), Curve.EndPoint()));
  }
  return List;
}

constexpr const char* kMoveNames[] = {"rapid", "gap", "connection", "cut"};
constexpr const char* kStepNames[] = {"pass", "circle", "contour"};

}  // namespace

std::string PlanJson(const TDrawing& Drawing, const TSheet& Sheet,
                     const std::vector<TMove>& Moves) {
  const TLooseEnds Ends = FindLooseEnds(Sheet);
  TJson Plan{{"name", Drawing.Name},
             {"unit", Drawing.Unit},
             {"ports", Sheet.PortLayers},
             {"loose_ends", Of(Ends.Loose)},
             {"branch_points", Of(Ends.Branches)},
             {"moves", TJson::array()}};
  for (const TMove& Move : Moves) {
    Plan["moves"].push_back({{"kind", kMoveNames[static_cast<int>(Move.Kind)]},
                             {"beam", Move.IsBeamOn()},
                             {"port", Move.Port},
                             {kStepNames[static_cast<int>(Move.Step.Kind)], Move.Step.Index + 1},
                             {"curves", CurvesOf(*Move.Curve)}});
  }
  // Names of layers may be of any bytes.
  return Plan.dump(1, ' ', false, TJson::error_handler_t::replace) + "\n";
}

}  // namespace sheet_planner
