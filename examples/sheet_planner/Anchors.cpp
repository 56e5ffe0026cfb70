#include "examples/sheet_planner/Anchors.h"

#include <cmath>

namespace sheet_planner {

using namespace tarnalgo;

namespace {
/// Side of a cell in gaps: most points then have a single cell within reach.
constexpr double kCellSide = 8.0;
}  // namespace

TAnchors::TCell TAnchors::CellOf(const TPoint2D& P) const {
  const double Side = FGap * kCellSide;
  return {static_cast<std::int64_t>(std::floor(P.X / Side)),
          static_cast<std::int64_t>(std::floor(P.Y / Side))};
}

int TAnchors::At(const TPoint2D& P) {
  const TPoint2D Reach{FGap, FGap};
  const TCell Low = CellOf(P - Reach);
  const TCell High = CellOf(P + Reach);
  int Best = -1;
  double BestDistance = FGap;
  for (std::int64_t Y = Low.Y; Y <= High.Y; ++Y) {
    for (std::int64_t X = Low.X; X <= High.X; ++X) {
      const auto Cell = FCells.find({X, Y});
      if (Cell == FCells.end()) continue;
      for (int I = Cell->second; I >= 0; I = FAnchors[static_cast<std::size_t>(I)].NextInCell) {
        const double Distance = P.DistanceTo(Point(I));
        const bool IsOlderTie = Distance == BestDistance && (Best < 0 || I < Best);  // exact: a tie
        if (Distance > BestDistance || (Distance == BestDistance && !IsOlderTie)) continue;
        Best = I;
        BestDistance = Distance;
      }
    }
  }
  if (Best >= 0) return Best;
  const int New = Count();
  const auto [Cell, IsNew] = FCells.try_emplace(CellOf(P), -1);
  FAnchors.push_back({P, Cell->second});
  Cell->second = New;
  return New;
}

}  // namespace sheet_planner
