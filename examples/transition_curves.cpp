// From the end of one pass to the start of the next: arcs of a radius, or a smooth cubic.
#include <cstdio>

#include "examples/Svg.h"
#include "geometryAlgo/flyscanAlgo.h"

using namespace tarnalgo;

namespace {

struct TPose {
  TPoint2D Point;
  TPoint2D Direction;
};

void DrawPose(examples::TSvg& Svg, const TPose& Pose, const char* Name) {
  const TPoint2D Tip = Pose.Point + Pose.Direction * 1.1;
  const TPoint2D Side = Pose.Direction.RotateCcw90() * 0.25;
  Svg.Draw(TVLine2D(Pose.Point, Tip), {examples::kInk, 2.5});
  Svg.Draw(TVPolyline2D{Tip + Side, Tip + Pose.Direction * 0.5, Tip - Side, Tip + Side},
           examples::Filled(examples::kInk));
  Svg.Dot(Pose.Point, examples::kInk, 4);
  Svg.Text(Pose.Point - Side * 4 - TPoint2D(0, 0.25), Name, true);
}

}  // namespace

int main(int argc, char** argv) {
  const struct {
    const char* Name;
    TPose Out;  // where the head leaves, and which way
    TPose In;   // where it has to arrive
  } Cases[] = {
      {"next row", {{4, 3}, {1, 0}}, {{4, 9}, {-1, 0}}},
      {"round the corner", {{12, 3}, {1, 0}}, {{17, 9}, {0, 1}}},
      {"about turn", {{23, 4}, {1, 0}}, {{28, 8.5}, {-1, 0}}},
  };
  TTransitionLineFunc Transitions;
  Transitions.SetMinRadius(0.5);     // the radius may shrink down to this
  Transitions.SetMaxAng(kFullTurn);  // the default of 3π/2 leaves the long ways round out
  examples::TSvg Svg({{1, 1}, {33, 12}});
  for (const auto& Case : Cases) {
    const TPose& Out = Case.Out;
    const TPose& In = Case.In;
    double Radius = 1.5;
    const auto Candidates = Transitions.CalcAllTransitionLines(Out.Point, Out.Direction, In.Point,
                                                               In.Direction, Radius);
    const auto Line =
        Transitions.CalcTransitionLine(Out.Point, Out.Direction, In.Point, In.Direction, Radius);
    const auto Smooth =
        TFlyscanTool::CreateConnectCurve(Out.Point, Out.Direction, In.Point, In.Direction);
    for (const TGeCompositeCurve2D* Candidate : Candidates) {
      Svg.Draw(*Candidate, {examples::kGrey, 1.2, "4 4"});
    }
    Svg.Draw(*Smooth, {examples::kOrange, 2.5, "10 4"});
    if (!Line) continue;
    Svg.Draw(*Line, {examples::kBlue, 3});
    std::printf("%-16s candidates: %d; shortest %.2f mm, radius %g; by Beziers %.2f mm\n",
                Case.Name, Candidates.Count(), Line->CurveLength(), Radius, Smooth->CurveLength());
    DrawPose(Svg, Out, "out");
    DrawPose(Svg, In, "in");
  }
  Svg.Legend({examples::kBlue, 3}, "shortest transition of radius 1.5");
  Svg.Legend({examples::kGrey, 1.2, "4 4"}, "the other candidates");
  Svg.Legend({examples::kOrange, 2.5, "10 4"}, "connection by Bezier curves");
  return Svg.Save(argc, argv);
}
