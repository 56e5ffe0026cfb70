#include "examples/sheet_planner/GapCheck.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// Length: chords of a joint that is no straight line.
constexpr double kJointChordError = 0.01;

/// The first half of a list of points by count of chords, the middle chord cut in two.
std::vector<TPoint2D> FirstHalf(const std::vector<TPoint2D>& Points) {
  const std::size_t Chords = Points.size() - 1;
  std::vector<TPoint2D> Half(Points.begin(),
                             Points.begin() + static_cast<std::ptrdiff_t>(Chords / 2 + 1));
  if (Chords % 2 == 1) Half.push_back(Lerp(Points[Chords / 2], Points[Chords / 2 + 1], 0.5));
  return Half;
}

bool MeetsAny(const std::vector<TPoint2D>& Way, const TFlyHoles& Holes) {
  TGeCompositeCurve2D Connection;
  for (std::size_t I = 1; I < Way.size(); ++I) {
    Connection.AddCurve(std::make_unique<TGeLine2D>(Way[I - 1], Way[I]));
  }
  return TCrossTool::CheckCrossWithHoles(Connection, Holes.RTree());
}

}  // namespace

TGapCheck::TGapCheck(const TSheet& Sheet) {
  for (const TSheetEdge& Edge : Sheet.Edges) {
    FHoles.AddHole(std::make_unique<TGeLine2D>(Edge.Line));
  }
  for (const TSheetChain& Chain : Sheet.Chains) {
    for (const TLABSegline& Seg : Chain.Chain) FHoles.AddHole(Seg.ToGeCurve2D());
  }
  for (const TSheetCircle& Circle : Sheet.Circles) {
    FHoles.AddHole(std::make_unique<TGeCircularArc2D>(Circle.Circle.Center, Circle.Circle.Radius,
                                                      0.0, kFullTurn));
  }
}

bool TGapCheck::IsClear(const TGeCurve2D& Gap) const {
  std::vector<TPoint2D> Points = Gap.Sample(kJointChordError);
  if (Points.size() < 2) return true;
  if (MeetsAny(FirstHalf(Points), FHoles)) return false;
  std::reverse(Points.begin(), Points.end());
  return !MeetsAny(FirstHalf(Points), FHoles);
}

}  // namespace sheet_planner
