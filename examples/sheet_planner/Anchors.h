#pragma once  // examples/sheet_planner/Anchors.h

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "host/Cadtypes.h"

namespace sheet_planner {

/// Places that points within a gap of each other share.
///
/// A point goes to the nearest anchor within the gap, or becomes one. So no point moves further
/// than the gap, a point that was there first never moves, and a dense chain of points keeps its
/// shape (uniting whatever is near would melt it into one place).
/// Ties: the older anchor.
/// Cost: O(1) a point; anchors are a gap apart, so cells hold few.
class TAnchors {
 public:
  /// `Gap` is positive, coordinates are at most `kLargestCoordinate`.
  explicit TAnchors(double Gap) : FGap(Gap) {}

  /// Index of the anchor of `P`.
  int At(const tarnalgo::TPoint2D& P);
  const tarnalgo::TPoint2D& Point(int Anchor) const {
    return FAnchors[static_cast<std::size_t>(Anchor)].Place;
  }
  int Count() const { return static_cast<int>(FAnchors.size()); }

 private:
  struct TCell {
    std::int64_t X = 0;
    std::int64_t Y = 0;
    friend bool operator==(const TCell&, const TCell&) = default;
  };
  struct TCellHash {
    std::size_t operator()(const TCell& Cell) const {
      const auto X = static_cast<std::uint64_t>(Cell.X) * 0x9e3779b97f4a7c15ULL;
      const auto Y = static_cast<std::uint64_t>(Cell.Y) * 0xc2b2ae3d27d4eb4fULL;
      return static_cast<std::size_t>((X ^ (Y >> 29) ^ Y) * 0x9fb21c651e98df25ULL >> 16);
    }
  };
  struct TAnchor {
    tarnalgo::TPoint2D Place;
    int NextInCell;
  };

  TCell CellOf(const tarnalgo::TPoint2D& P) const;

  double FGap;
  std::vector<TAnchor> FAnchors;
  std::unordered_map<TCell, int, TCellHash> FCells;  // newest anchor of the cell
};

}  // namespace sheet_planner
