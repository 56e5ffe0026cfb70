// A drawing in DXF, from any bytes or made sound by rule, read, prepared and planned: it ends in a
// plan that cuts every length once, or in the planner's own error.

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <string_view>

#include "examples/sheet_planner/BadInput.h"
#include "examples/sheet_planner/Connections.h"
#include "examples/sheet_planner/DxfReader.h"
#include "examples/sheet_planner/EdgePrep.h"
#include "examples/sheet_planner/Machine.h"
#include "examples/sheet_planner/Moves.h"
#include "examples/sheet_planner/Planner.h"
#include "examples/sheet_planner/Report.h"
#include "fuzz/Bytes.h"
#include "fuzz/DxfMaker.h"

namespace {

using namespace sheet_planner;
using tarnalgo::fuzz::Require;
using tarnalgo::fuzz::TBytes;
using tarnalgo::fuzz::TDxfMaker;

/// Drawings beyond are read, but not planned: each run has to be short.
constexpr std::size_t kMostPieces = 400;

double LengthOf(const TSheet& Sheet) {
  double Sum = 0.0;
  for (const TSheetEdge& Edge : Sheet.Edges)
    Sum += Edge.Line.StartPoint.DistanceTo(Edge.Line.EndPoint);
  for (const TSheetChain& Chain : Sheet.Chains) {
    for (const tarnalgo::TLABSegline& Seg : Chain.Chain) Sum += Seg.Length();
  }
  for (const TSheetCircle& Circle : Sheet.Circles) {
    Sum += tarnalgo::kFullTurn * Circle.Circle.Radius;
  }
  return Sum;
}

void CheckPlan(const TDrawing& Drawing, TBytes& Bytes) {
  TPrepOptions Options;
  Options.LayersAsPorts = Bytes.Below(2) == 1;
  const TSheet Sheet = PrepareSheet(Drawing, Options);
  TPlan Plan = PlanSheet(Sheet);
  ConnectPasses(Sheet, {}, Plan);
  const auto Moves = MovesOf(Sheet, Plan);
  const TWork Work = Measure(Moves, {});
  const double Length = LengthOf(Sheet);
  Require(std::abs(Work.CutLength - Length) <= 1e-6 * (1.0 + Length), "every length is cut once");
  Require(Plan.Order.size() == Plan.Passes.size() + Plan.Contours.size() +
                                   static_cast<std::size_t>(Plan.Circles.Count()),
          "everything is in the order");
  Require(std::isfinite(Work.Time), "the time of a plan is a number");
  Require(!PlanReport(Drawing, Sheet, Plan).empty(), "a report");
}

void CheckDrawing(const TDrawing& Drawing, TBytes& Bytes) {
  const auto Check = [](const tarnalgo::TPoint2D& P) {
    Require(std::abs(P.X) <= kLargestCoordinate && std::abs(P.Y) <= kLargestCoordinate,
            "coordinates are in range");
  };
  for (const TDrawnEdge& Edge : Drawing.Edges) {
    Check(Edge.Line.StartPoint);
    Check(Edge.Line.EndPoint);
  }
  for (const TDrawnCurve& Curve : Drawing.Curves) {
    for (const tarnalgo::TPoint2D& P : Curve.Points) Check(P);
  }
  for (const TDrawnArc& Arc : Drawing.Arcs) Check(Arc.Arc.Center);
  for (const TDrawnCircle& Circle : Drawing.Circles) Check(Circle.Circle.Center);
  std::size_t Pieces = Drawing.Edges.size() + Drawing.Arcs.size() + Drawing.Circles.size();
  for (const TDrawnCurve& Curve : Drawing.Curves) Pieces += Curve.Points.size();
  if (Pieces <= kMostPieces) CheckPlan(Drawing, Bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  constexpr double kChordError = 0.1;
  TBytes Bytes(Data, Size);
  const bool IsRaw = Bytes.Below(2) == 1;
  TDxfMaker Maker(Bytes);
  const std::string Text =
      IsRaw ? std::string(reinterpret_cast<const char*>(Data + 1), Size - 1) : Maker.Run();
  try {
    const TDrawing Drawing = ReadDxf(Text, kChordError);
    for (const auto& [Kind, Count] : Maker.Written()) {
      const auto Read = Drawing.Read.find(Kind);
      Require(Read != Drawing.Read.end() && Read->second >= Count, "what is sound is read");
    }
    CheckDrawing(Drawing, Bytes);
  } catch (const EBadInput& Error) {
    const std::string What = Error.what();
    Require(!What.empty() && What.find('\n') == std::string::npos, "an error of one line");
    Require(IsRaw || Maker.Written().empty(), "what is sound is no error");
  }
  return 0;
}
