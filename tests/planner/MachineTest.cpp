#include "examples/sheet_planner/Machine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include "examples/sheet_planner/Connections.h"
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
  for (const TSheetChain& Chain : Sheet.Chains) {
    for (const TLABSegline& Seg : Chain.Chain) {
      Length += Seg.P1.DistanceTo(Seg.P2) * std::abs(4.0 * std::atan(Seg.Bulge));
    }
  }
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

/// Chords of a full circle, an arc or a line, and how far they stay off the curve.
std::vector<TPoint2D> ChordsOf(const TGeCurve2D& Curve) {
  return Curve.Sample(1e-4);
}

/// Segments whose inner points cross, by the sides of their ends.
bool Cross(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C, const TPoint2D& D) {
  const double C1 = (B - A).CrossMul(C - A);
  const double D1 = (B - A).CrossMul(D - A);
  const double A1 = (D - C).CrossMul(A - C);
  const double B1 = (D - C).CrossMul(B - C);
  return C1 * D1 < 0.0 && A1 * B1 < 0.0;
}

TPoint2D WayAt(const TGeCurve2D& Curve, bool AtEnd) {
  if (const auto* const Arc = dynamic_cast<const TGeCircularArc2D*>(&Curve)) {
    const TPoint2D Radius = (AtEnd ? Arc->EndPoint() : Arc->StartPoint()) - Arc->GetCenter();
    return (Arc->GetSweepAngle() > 0 ? Radius.RotateCcw90() : Radius.RotateCw90()).Normal();
  }
  if (const auto* const Joint = dynamic_cast<const TGePolyBezier2D*>(&Curve)) {
    return (AtEnd ? Joint->GetBezier(Joint->GetBezierCount() - 1).TangentEnd()
                  : Joint->GetBezier(0).TangentStart())
        .Normal();
  }
  const std::vector<TPoint2D> Points = Curve.Sample(1.0);
  const std::size_t Last = Points.size() - 1;
  return (AtEnd ? Points[Last] - Points[Last - 1] : Points[1] - Points[0]).Normal();
}

TEST(ConnectPasses, JoinsWithoutACornerAndWithoutCrossingACut) {
  for (const TConnect Connect : {TConnect::Curves, TConnect::Transitions}) {
    for (const TDrawing& Drawing : {PerforatedPlate(16, 12), SquareGrid(9, 7), BracketNest(1, 1)}) {
      SCOPED_TRACE(Drawing.Name);
      const TSheet Sheet = PrepareSheet(Drawing, {});
      TPlan Plan = PlanSheet(Sheet);
      TConnectOptions Options;
      Options.Connect = Connect;
      ConnectPasses(Sheet, Options, Plan);
      const std::vector<TMove> Moves = MovesOf(Sheet, Plan);
      std::vector<std::vector<TPoint2D>> Cuts;
      for (const TMove& Move : Moves) {
        if (Move.IsBeamOn()) Cuts.push_back(ChordsOf(*Move.Curve));
      }
      int Connections = 0;
      for (std::size_t I = 1; I < Moves.size(); ++I) {
        const bool IsHere = Moves[I].Kind == TMove::TKind::Connection;
        const bool WasBefore = Moves[I - 1].Kind == TMove::TKind::Connection;
        if (!IsHere && !WasBefore) continue;
        EXPECT_LE(Moves[I - 1].Curve->EndPoint().DistanceTo(Moves[I].Curve->StartPoint()), 1e-6);
        EXPECT_LE(WayAt(*Moves[I - 1].Curve, true).AngleBetween(WayAt(*Moves[I].Curve, false)),
                  1e-6);
        if (!IsHere) continue;
        ++Connections;
        // 0.005 off the ends; tangents of a circle come that near to its chords.
        const std::vector<TPoint2D> Way = ChordsOf(*Moves[I].Curve);
        for (const auto& Cut : Cuts) {
          for (std::size_t J = 1; J < Way.size(); ++J) {
            const TPoint2D Step = (Way[J] - Way[J - 1]).Normal() * 0.005;
            const TPoint2D From = J == 1 ? Way[0] + Step : Way[J - 1];
            const TPoint2D To = J + 1 == Way.size() ? Way[J] - Step : Way[J];
            for (std::size_t K = 1; K < Cut.size(); ++K) {
              EXPECT_FALSE(Cross(From, To, Cut[K - 1], Cut[K]))
                  << From.X << ", " << From.Y << " to " << To.X << ", " << To.Y;
            }
          }
        }
      }
      const TConnectStats& Stats = Plan.Joints;
      EXPECT_GE(Connections, Stats.Smooth + Stats.ThreePiece + Stats.Transitions);
      EXPECT_GT(Connections, 0);
      const TMachine Machine;
      EXPECT_LT(Measure(Moves, Machine).Pierces,
                Measure(MovesOf(Sheet, PlanSheet(Sheet)), Machine).Pierces);
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
