#pragma once  // examples/sheet_planner/Nesting.h

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "examples/sheet_planner/EdgePrep.h"

namespace sheet_planner {

/// The figures of a sheet, which are what hangs together at its ends (a circle is one of its own),
/// and which of them lie inside others: what lies inside has to be cut first, because afterwards
/// its surroundings may have dropped out of the sheet.
///
/// Inside means within the outer boundary of the figure; a figure of loose ends has no inside. A
/// figure lies where its leftmost point does: figures that cross each other without a common end
/// are inside or beside each other accordingly.
/// Tolerance: arcs and circles are taken by chords, 0.02 off at most.
/// Cost: O(n log n), and for each figure a search to its left until something is there.
class TNesting {
 public:
  explicit TNesting(const TSheet& Sheet);

  int Count() const { return static_cast<int>(FParents.size()); }
  /// The figure of what ends at an anchor, of a circle, and of the straight edge that ends at `P`
  /// (the very point; −1 when there is none).
  int OfAnchor(int Anchor) const { return FOfAnchor[static_cast<std::size_t>(Anchor)]; }
  int OfCircle(int Circle) const { return FFirstCircle + Circle; }
  int OfEdgeEnd(const tarnalgo::TPoint2D& P) const;

  /// The figure that it lies in directly, −1 when there is none.
  int Parent(int Figure) const { return FParents[static_cast<std::size_t>(Figure)]; }
  /// 0 when nothing lies inside, else 1 more than the highest level inside.
  int Level(int Figure) const { return FLevels[static_cast<std::size_t>(Figure)]; }

 private:
  std::vector<int> FOfAnchor;  // −1 where nothing ends
  int FFirstCircle = 0;
  std::map<std::pair<double, double>, int> FOfEnd;
  std::vector<int> FParents;
  std::vector<int> FLevels;
};

}  // namespace sheet_planner
