// Host curves of every kind under one interface: lengths, points, and where each pair meets.
#include <cstdio>
#include <memory>
#include <vector>

#include "examples/Svg.h"
#include "host/Cadgeometry.h"

using namespace tarnalgo;

int main(int argc, char** argv) {
  auto Wave = std::make_unique<TGePolyBezier2D>();
  Wave->AddBezier({{10, 70}, {35, 5}, {60, 5}, {80, 45}});
  Wave->AddBezier({{80, 45}, {100, 85}, {125, 85}, {150, 20}});
  auto Slot = std::make_unique<TGeCompositeCurve2D>();
  Slot->AddCurve(std::make_unique<TGeLine2D>(TPoint2D(60, 30), TPoint2D(110, 30)));
  Slot->AddCurve(std::make_unique<TGeCircularArc2D>(TPoint2D(110, 30), 1.0, TPoint2D(110, 60)));
  Slot->AddCurve(std::make_unique<TGeLine2D>(TPoint2D(110, 60), TPoint2D(60, 60)));
  Slot->AddCurve(std::make_unique<TGeCircularArc2D>(TPoint2D(60, 60), 1.0, TPoint2D(60, 30)));

  struct TNamed {
    const char* Name;
    std::string_view Colour;
    std::unique_ptr<TGeCurve2D> Curve;
  };
  std::vector<TNamed> Curves;
  Curves.push_back(
      {"line", examples::kInk, std::make_unique<TGeLine2D>(TPoint2D(5, 60), TPoint2D(155, 60))});
  Curves.push_back({"arc", examples::kGreen,
                    std::make_unique<TGeCircularArc2D>(TPoint2D(40, 40), 28.0, 0.5, 4.5)});
  Curves.push_back({"polyline", examples::kOrange,
                    std::make_unique<TGePolyline2D>(
                        TDynPoints2D{{20, 12}, {70, 22}, {88, 74}, {140, 74}, {140, 12}})});
  Curves.push_back({"poly-Bezier", examples::kRed, std::move(Wave)});
  Curves.push_back({"composite: a slot", examples::kSky, std::move(Slot)});

  examples::TSvg Svg({{0, 0}, {160, 84}});
  for (const TNamed& One : Curves) {
    std::printf("%-18s %6.2f mm, parameters 0 to %g%s\n", One.Name, One.Curve->CurveLength(),
                One.Curve->ParamTo(), One.Curve->IsClosed() ? ", closed" : "");
    Svg.Draw(*One.Curve, {One.Colour, 2.5});
    Svg.Legend({One.Colour, 2.5}, One.Name);
  }
  std::vector<TIntersect2D> Meetings;
  for (std::size_t I = 0; I < Curves.size(); ++I) {
    for (std::size_t J = I + 1; J < Curves.size(); ++J) {
      Curves[I].Curve->IntersectCurve(*Curves[J].Curve, Meetings);  // appends
    }
  }
  int Overlaps = 0;
  for (const TIntersect2D& Meeting : Meetings) {
    if (!Meeting.IsOverlap) {
      Svg.Dot(Meeting.Point(), examples::kBlue);
      continue;
    }
    ++Overlaps;
    Svg.Draw(TVLine2D(Meeting.Point(), Meeting.EndOnFirst.Point), {examples::kPink, 7});
  }
  std::printf("%zu meetings, %d of them stretches\n", Meetings.size(), Overlaps);
  Svg.Legend({examples::kBlue}, "meeting points of each pair", true);
  Svg.Legend({examples::kPink, 7}, "stretch that two curves share");
  return Svg.Save(argc, argv);
}
