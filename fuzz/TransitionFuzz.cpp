// Transitions and connections between two poses: they start and end there, in the directions asked
// for, turn no tighter than the radius, and no way found by driving is shorter.

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

#include "fuzz/Bytes.h"
#include "geometryAlgo/flyscanAlgo.h"
#include "host/Exceptions.h"
#include "tests/support/Driving.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using test::TPoses;

/// A direction on the grid, so that poses face, follow and cross each other exactly.
TPoint2D MakeWay(TBytes& Bytes) {
  const TPoint2D Way(Bytes.Around(2), Bytes.Around(2));
  return Way == TPoint2D() ? DcsX.RotateBy(Bytes.Byte() / 40.0) : Way.Normal();
}

void CheckSmooth(const TGeCompositeCurve2D& Line, const TPoses& P, double Radius) {
  const double Slack = 1e-9 * (1.0 + P.StartPt.Mag() + P.EndPt.Mag() + Radius);
  TPoint2D Place = P.StartPt;
  TPoint2D Way = P.StartVec;
  for (int I = 0; I < Line.GetCurveCount(); ++I) {
    const TGeCurve2D& Piece = *Line.GetCurve(I);
    Require(Piece.StartPoint().DistanceTo(Place) <= Slack, "pieces follow each other");
    Place = Piece.EndPoint();
    if (const auto* Arc = dynamic_cast<const TGeCircularArc2D*>(&Piece)) {
      Require(std::abs(Arc->GetRadius() - Radius) <= 1e-6 * Radius + Slack, "arcs of the radius");
    }
    const TPoint2D Out = test::DirectionAt(Piece, false);
    if (Out == TPoint2D()) continue;
    Require(Out.DistanceTo(Way) <= 1e-5 + Slack / 1e-4, "neighbours share their direction");
    Way = test::DirectionAt(Piece, true);
  }
  // Two circles that differ by no more than the tolerance are one.
  const double Aside = Line.GetCurveCount() == 1 ? kLinearTolerance : 0.0;
  Require(Place.DistanceTo(P.EndPt) <= Slack + Aside, "the way ends at the end");
  Require(Way.DistanceTo(P.EndVec) <= 1e-5 + Slack / 1e-4, "and in its direction");
}

void CheckTransitions(TBytes& Bytes, const TPoses& P) {
  TTransitionLineFunc Func;
  const double MaxTurns[] = {Func.MaxAng(), kFullTurn, 2 * kFullTurn};
  Func.SetMaxAng(MaxTurns[Bytes.Below(3)]);
  const double Radius = 0.25 * (1 + Bytes.Below(32));
  const auto Lines = Func.CalcAllTransitionLines(P.StartPt, P.StartVec, P.EndPt, P.EndVec, Radius);
  const double Shortest = Func.CalcShortestLength(P.StartPt, P.StartVec, P.EndPt, P.EndVec, Radius);
  // Circles that differ by no more than the tolerance are one.
  const double Slack = 2 * kLinearTolerance + 1e-7 * (P.StartPt.Mag() + P.EndPt.Mag() + Radius);
  // What turns within the slack of the limit may be found or not.
  const double Driven = test::ShortestByDriving(P, Radius, Func.MaxAng() - 1e-6);
  Require(Shortest <= Driven + Slack, "no way found by driving is shorter");
  Require(Lines.IsEmpty() == (Shortest == kStartOfMinimum), "a length where there is a transition");
  if (Lines.IsEmpty()) return;
  Require(std::abs(Lines[0]->CurveLength() - Shortest) <= Slack, "the first is the shortest");
  for (int I = 0; I < Lines.Count(); ++I) {
    CheckSmooth(*Lines[I], P, Radius);
    Require(Lines[std::max(I - 1, 0)]->CurveLength() <= Lines[I]->CurveLength(), "by length");
  }
  const double Fillet = test::FilletByDriving(P, Radius);
  const auto IsFillet = [&](const TGeCompositeCurve2D* Line) {
    return std::abs(Line->CurveLength() - Fillet) <= Slack;
  };
  Require(!(Fillet < 1e4) || std::any_of(Lines.begin(), Lines.end(), IsFillet),
          "a corner that has room for a fillet has it");
  Func.SetMinRadius(Radius / 4);
  double Found = 2 * Radius;
  const auto Line = Func.CalcTransitionLine(P.StartPt, P.StartVec, P.EndPt, P.EndVec, Found);
  Require(!Line == (Found <= Radius / 4), "the radius shrinks until there is a transition");
  if (Line) CheckSmooth(*Line, P, Found);
}

/// Poses on one circle: no transition is longer than its arc between them.
void CheckOneCircle(TBytes& Bytes, const TPoses& P) {
  if (P.StartPt.Mag() > 1e3) return;
  const double Radius = 0.25 * (1 + Bytes.Below(32));
  const int Sense = Bytes.Below(2) == 0 ? 1 : -1;
  const double Turn = (1 + Bytes.Below(270)) * (kFullTurn / 360);
  const double From = P.StartVec.Angle();
  const TPoint2D EndPt = P.StartPt + test::ArcWay(From, From + Sense * Turn, Sense) * Radius;
  const double Length = TTransitionLineFunc().CalcShortestLength(
      P.StartPt, P.StartVec, EndPt, P.StartVec.RotateBy(Sense * Turn), Radius);
  Require(Turn > 4.7 || Length <= Radius * Turn + 1e-6, "the arc of one circle");
}

TPoint2D WayAt(const TGeCurve2D& Curve, double T, double Step) {
  return (Curve.PointAtParam(T + Step) - Curve.PointAtParam(T)) / Step;
}

/// The straight leads make the directions at the ends plain.
void CheckConnections(const TPoses& P) {
  const auto Check = [&](const TGeCurve2D& Curve) {
    Require(Curve.StartPoint() == P.StartPt && Curve.EndPoint() == P.EndPt, "it joins the poses");
    const TPoint2D Out = WayAt(Curve, 0.0, 1e-3).Normal();
    const TPoint2D In = WayAt(Curve, Curve.ParamTo() - 1e-3, 1e-3).Normal();
    Require(Out.DotMul(P.StartVec) > 0.99 && In.DotMul(P.EndVec) > 0.99, "in their directions");
  };
  const bool IsFar = std::max(P.StartPt.Mag(), P.EndPt.Mag()) > 1e5;  // the leads are lost in it
  if (IsFar) return;
  Check(*TFlyscanTool::CreateConnectCurve(P.StartPt, P.StartVec, P.EndPt, P.EndVec));
  Check(*TFlyscanTool::CreateTriLineConnect(P.StartPt, P.StartVec, P.EndPt, P.EndVec));
  const auto Three = TFlyscanTool::CreateTriBezierConnect(P.StartPt, P.StartVec, P.EndPt, P.EndVec);
  Check(*Three);
  for (int I = 1; I < Three->GetBezierCount(); ++I) {
    const TPoint2D In = Three->GetBezier(I - 1).P3 - Three->GetBezier(I - 1).P2;
    const TPoint2D Out = Three->GetBezier(I).P1 - Three->GetBezier(I).P0;
    if (std::min(In.Mag(), Out.Mag()) < 1e-2) continue;
    Require(In.Normal().DistanceTo(Out.Normal()) <= 1e-6, "directions agree where cubics meet");
  }
  TBezierSegment2D Joint;
  if (!TFlyscanTool::GetSmoothBezierSeg(P.StartPt, P.StartVec, P.EndPt, P.EndVec, Joint)) {
    const TPoint2D Between = P.EndPt - P.StartPt;
    const double Ahead = std::min(Between.DotMul(P.StartVec), Between.DotMul(P.EndVec));
    Require(Between.Mag() < 5.0 || Ahead < 0.95 * Between.Mag(), "poses in a row have a joint");
    return;
  }
  const TPoint2D Out = Joint.P1 - Joint.P0;
  const TPoint2D In = Joint.P3 - Joint.P2;
  Require(std::abs(Out.CrossMul(P.StartVec)) <= 1e-6 && Out.DotMul(P.StartVec) >= -1e-6,
          "a joint leaves straight");
  Require(std::abs(In.CrossMul(P.EndVec)) <= 1e-6 && In.DotMul(P.EndVec) >= -1e-6,
          "a joint enters straight");
  Require(std::max(Out.Mag(), In.Mag()) <= ScanConnectSegLength + 1e-6, "controls are drawn in");
}

void CheckTangent(TBytes& Bytes, const TPoses& P) {
  const TCircle2D A(P.StartPt, 0.25 * (1 + Bytes.Below(16)));
  const TCircle2D B(P.EndPt, 0.25 * (1 + Bytes.Below(16)));
  const bool IsClockwiseA = Bytes.Below(2) == 1;
  const bool IsClockwiseB = Bytes.Below(2) == 1;
  const double Distance = A.Center.DistanceTo(B.Center);
  const double Reach =
      IsClockwiseA != IsClockwiseB ? A.Radius + B.Radius : std::abs(A.Radius - B.Radius);
  double AngleA = 0.0;
  double AngleB = 0.0;
  try {
    TFlyscanTool::CalcTangentLine(A, B, IsClockwiseA, IsClockwiseB, AngleA, AngleB);
  } catch (const Exception& E) {
    Require(std::string(E.what()) == "Connect calculate tangent", "its own words");
    Require(Distance <= Reach + 1e-9 || Distance < 1e-4, "a tangent that there is");
    return;
  }
  const TPoint2D From = A.Center + DcsX.RotateBy(AngleA) * A.Radius;
  const TPoint2D To = B.Center + DcsX.RotateBy(AngleB) * B.Radius;
  const double Slack = 1e-6 * (1.0 + Distance);
  for (const TCircle2D& Circle : {A, B}) {
    const double Off = std::abs((To - From).CrossMul(Circle.Center - From));
    Require(std::abs(Off - Circle.Radius * (To - From).Mag()) <= Slack * (1.0 + Distance),
            "tangent");
  }
  const double Left = (To - From).CrossMul(A.Center - From);
  Require(From.DistanceTo(To) <= 1e-3 || (Left < 0.0) == IsClockwiseA, "left in its sense");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  TPoses P;
  P.StartPt = Bytes.Point();
  P.StartVec = MakeWay(Bytes);
  P.EndPt = Bytes.Point();
  P.EndVec = MakeWay(Bytes);
  CheckTransitions(Bytes, P);
  CheckConnections(P);
  CheckTangent(Bytes, P);
  CheckOneCircle(Bytes, P);
  TTransitionLineFunc Func;  // any numbers end without harm
  double Radius = Bytes.Anything();
  Func.SetMinRadius(Bytes.Anything());
  Func.CalcTransitionLine(Bytes.AnyPoint(), Bytes.AnyPoint(), P.EndPt, Bytes.AnyPoint(), Radius);
  return 0;
}
