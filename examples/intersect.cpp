// Every crossing, touch and shared stretch among many segments, each pair once.
#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

#include "examples/Svg.h"
#include "geometryAlgo/SweepLine.h"

using namespace tarnalgo;

namespace {

/// Chords of a sheet in no order, and the common edges of three parts that lie side by side.
std::vector<TVLine2D> DrawnLines() {
  std::vector<TVLine2D> Lines{{{20, 20}, {200, 20}},
                              {{120, 20}, {300, 20}},
                              {{240, 20}, {420, 20}},
                              {{160, 20}, {160, 90}},
                              {{420, 20}, {420, 120}}};
  std::mt19937 Random(16246);  // no crossing so near to an end that it looks like a touch
  const auto Coordinate = [&Random](unsigned Size) { return double(Random() % Size); };
  for (int I = 0; I < 30; ++I) {
    const TPoint2D Start{20 + Coordinate(280), 60 + Coordinate(200)};
    Lines.push_back({Start, Start + TPoint2D{20 + Coordinate(120), 80 - Coordinate(160)}});
  }
  return Lines;
}

bool IsEnd(double Param) {
  return Param < 1e-9 || Param > 1 - 1e-9;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<TVLine2D> Lines = DrawnLines();
  const std::vector<TSeglineIntersectInfo> Meetings =
      TSeglinesIntersector::GetIntersectInfosBySweepline(Lines, kLinearTolerance, kLinearTolerance);

  examples::TSvg Svg({{10, 0}, {450, 300}});
  for (const TVLine2D& Line : Lines) Svg.Draw(Line, {examples::kGrey, 1.6});
  int Crossings = 0;
  int Touches = 0;
  for (const TSeglineIntersectInfo& Meeting : Meetings) {
    if (Meeting.Flag) {  // a stretch, from FirstPoint to SecondPoint
      Svg.Draw(TVLine2D(Meeting.FirstPoint, Meeting.SecondPoint), {examples::kOrange, 6});
      std::printf("segments %d and %d share %g mm\n", Meeting.LowerSegment, Meeting.HigherSegment,
                  Meeting.FirstPoint.DistanceTo(Meeting.SecondPoint));
      continue;
    }
    const bool IsTouch = IsEnd(Meeting.LowerParam1) || IsEnd(Meeting.HigherParam1);
    ++(IsTouch ? Touches : Crossings);
    Svg.Dot(Meeting.FirstPoint, IsTouch ? examples::kPink : examples::kBlue);
  }
  std::printf("%zu segments: %d crossings, %d touches, %zu meetings in all\n", Lines.size(),
              Crossings, Touches, Meetings.size());
  Svg.Legend({examples::kGrey, 1.6}, "segments, in any order");
  Svg.Legend({examples::kBlue}, "crossing", true);
  Svg.Legend({examples::kOrange, 6}, "stretch that two segments share");
  Svg.Legend({examples::kPink}, "touch: an end lies on the other segment", true);
  return Svg.Save(argc, argv);
}
