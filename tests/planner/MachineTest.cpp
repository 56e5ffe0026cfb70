#include "examples/sheet_planner/Machine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "examples/sheet_planner/JsonWriter.h"
#include "examples/sheet_planner/SampleSheets.h"
#include "tests/planner/PlanChecks.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

using TJson = nlohmann::json;

TPoint2D PointOf(const TJson& Json) {
  return {Json.at(0).get<double>(), Json.at(1).get<double>()};
}

/// Direction in which a line or an arc of the file starts or ends.
TPoint2D WayOf(const TJson& Curve, const char* End) {
  const TPoint2D At = PointOf(Curve.at(End));
  if (Curve.at("type") == "line") return PointOf(Curve.at("end")) - PointOf(Curve.at("start"));
  const TPoint2D Radius = At - PointOf(Curve.at("center"));
  return Curve.at("sweep").get<double>() > 0 ? TPoint2D(-Radius.Y, Radius.X)
                                             : TPoint2D(Radius.Y, -Radius.X);
}

double LengthOfCurve(const TJson& Curve) {
  if (Curve.at("type") == "line") {
    return PointOf(Curve.at("start")).DistanceTo(PointOf(Curve.at("end")));
  }
  return std::abs(Curve.at("sweep").get<double>()) * Curve.at("radius").get<double>();
}

/// The counts of the report, from the file alone; checks that the moves hang together.
TWork WorkOf(const TJson& Plan, double CornerAngle, double MostApart) {
  TWork Work;
  bool IsAtRest = true;
  bool WasOn = false;
  TJson Last;
  for (const TJson& Move : Plan.at("moves")) {
    const bool IsRapid = Move.at("kind") == "rapid";
    const bool IsOn = Move.at("beam").get<bool>();
    EXPECT_EQ(IsOn, Move.at("kind") == "cut");
    for (const TJson& Curve : Move.at("curves")) {
      double Turn = 0.0;
      if (!Last.is_null()) {
        EXPECT_LE(PointOf(Last.at("end")).DistanceTo(PointOf(Curve.at("start"))), MostApart);
        Turn = WayOf(Last, "end").AngleBetween(WayOf(Curve, "start"));
      }
      if (!IsAtRest && (IsRapid || Turn > CornerAngle)) {
        ++Work.Halts;
        IsAtRest = true;
      }
      if (IsOn && !WasOn) ++(IsAtRest ? Work.Pierces : Work.FlyingStarts);
      (IsRapid ? Work.RapidLength : IsOn ? Work.CutLength : Work.GapLength) += LengthOfCurve(Curve);
      Work.RapidMoves += IsRapid ? 1 : 0;
      Work.Halts += IsRapid ? 1 : 0;
      IsAtRest = IsRapid;
      WasOn = IsOn;
      Last = Curve;
    }
  }
  Work.Halts += IsAtRest ? 0 : 1;
  return Work;
}

double DrawnLength(const TSheet& Sheet) {
  double Length = test::TotalLength(Sheet);
  for (const TSheetArc& Arc : Sheet.Arcs) Length += Arc.Arc.Radius * std::abs(Arc.Arc.SweepAngle);
  for (const TSheetCircle& Circle : Sheet.Circles) Length += kFullTurn * Circle.Circle.Radius;
  return Length;
}

TEST(Measure, AgreesWithTheFileOfTheMoves) {
  for (const TDrawing& Drawing : {PerforatedPlate(16, 12), BracketNest(2, 2), SquareGrid(9, 7)}) {
    SCOPED_TRACE(Drawing.Name);
    const TSheet Sheet = PrepareSheet(Drawing, {});
    for (const TPlan& Plan : {PlanSheet(Sheet), PlanContours(Sheet)}) {
      const std::vector<TMove> Moves = MovesOf(Sheet, Plan);
      const TMachine Machine;
      const TWork Work = Measure(Moves, Machine);
      const std::string Text = PlanJson(Drawing, Sheet, Moves);
      const TWork FromFile = WorkOf(TJson::parse(Text), Machine.CornerAngle, 0.02 + 1e-6);
      EXPECT_NEAR(DrawnLength(Sheet), FromFile.CutLength, 1e-6);
      EXPECT_NEAR(FromFile.CutLength, Work.CutLength, 1e-6);
      EXPECT_NEAR(FromFile.GapLength, Work.GapLength, 1e-6);
      EXPECT_NEAR(FromFile.RapidLength, Work.RapidLength, 1e-6);
      EXPECT_EQ(FromFile.RapidMoves, Work.RapidMoves);
      EXPECT_EQ(FromFile.Halts, Work.Halts);
      EXPECT_EQ(FromFile.Pierces, Work.Pierces);
      EXPECT_EQ(FromFile.FlyingStarts, Work.FlyingStarts);
    }
  }
}

TEST(Measure, TakesTheTimeOfTheStatedMachine) {
  TMachine Machine;
  Machine.CutSpeed = 10;
  Machine.RapidSpeed = 20;
  Machine.Acceleration = 10;
  Machine.PierceTime = 3;
  std::vector<TMove> Moves;
  const auto Add = [&Moves](TMove::TKind Kind, const TPoint2D& From, const TPoint2D& To) {
    Moves.push_back({Kind, std::make_unique<TGeLine2D>(From, To), {}, 0});
  };
  Add(TMove::TKind::Rapid, {0, 0}, {10, 0});  // never at full speed: 1 s up, 1 s down
  Add(TMove::TKind::Cut, {10, 0}, {18, 0});   // pierced
  Add(TMove::TKind::Gap, {18, 0}, {22, 0});
  Add(TMove::TKind::Cut, {22, 0}, {30, 0});    // 20 in flight: 1 s up, 1 s at speed, 1 s down
  Add(TMove::TKind::Cut, {30, 0}, {30, 2.5});  // round a corner: 0.5 s up, 0.5 s down
  const TWork Work = Measure(Moves, Machine);
  EXPECT_NEAR(2 + 3 + 3 + 1, Work.Time, 1e-12);
  EXPECT_EQ(3, Work.Halts);
  EXPECT_EQ(1, Work.Pierces);
  EXPECT_EQ(1, Work.FlyingStarts);
}

}  // namespace

}  // namespace sheet_planner
