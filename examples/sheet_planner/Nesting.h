#pragma once  // examples/sheet_planner/Nesting.h

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

#include "examples/sheet_planner/EdgePrep.h"
#include "geometryAlgo/VedaType/LABHPolygon.h"

namespace sheet_planner {

/// The figures of a sheet, which are what hangs together at its ends (a circle is one of its own),
/// and which of them lie inside others: what lies inside has to be cut first, because afterwards
/// its surroundings may have dropped out of the sheet.
///
/// Inside means within the outline of the figure, its outer boundary with true arcs; a figure of
/// loose ends has no inside. A figure lies where the leftmost joint of its outline does, or the
/// first place after it that is not on the other outline; so figures that cross each other without
/// a common end are inside or beside each other accordingly, but never one in a smaller one.
/// Cost: O(n log n), and for each figure O(log n) for each outline round it.
class TNesting {
 public:
  explicit TNesting(const TSheet& Sheet);

  int Count() const { return static_cast<int>(FParents.size()); }
  /// The figure of what ends at an anchor, of a circle, and of the straight edge that ends at `P`
  /// (the very point; −1 when there is none).
  int OfAnchor(int Anchor) const { return FOfAnchor[static_cast<std::size_t>(Anchor)]; }
  int OfCircle(int Circle) const { return FFirstCircle + Circle; }
  int OfEdgeEnd(const tarnalgo::TPoint2D& P) const;

  /// Runs clockwise; loose pieces of the figure there and back.
  const tarnalgo::TLABPolyline& Outline(int Figure) const {
    return FOutlines[static_cast<std::size_t>(Figure)];
  }
  /// The figure that it lies in directly, −1 when there is none.
  int Parent(int Figure) const { return FParents[static_cast<std::size_t>(Figure)]; }
  /// 0 when nothing lies inside, else 1 more than the highest level inside.
  int Level(int Figure) const { return FLevels[static_cast<std::size_t>(Figure)]; }

  /// The material between the outlines: a region for each figure that lies in none or in a hole,
  /// the figures directly inside as its holes. Figures without an inside do not count.
  tarnalgo::TLABHPolygonList Regions() const;

 private:
  void FindParents();
  void FindLevels();

  struct TPlaceHash {  // equal for both zeros
    std::size_t operator()(const tarnalgo::TPoint2D& P) const {
      const std::size_t X = std::hash<double>()(P.X);
      return (X ^ (X >> 29)) * 0x9E3779B97F4A7C15U + std::hash<double>()(P.Y);
    }
  };

  std::vector<int> FOfAnchor;  // −1 where nothing ends
  int FFirstCircle = 0;
  std::unordered_map<tarnalgo::TPoint2D, int, TPlaceHash> FOfEnd;
  std::vector<tarnalgo::TLABPolyline> FOutlines;
  std::vector<double> FAreas;     // of the outlines, 0 where there is no inside
  std::vector<int> FFromLargest;  // figures by area, the largest first
  std::vector<int> FParents;
  std::vector<int> FLevels;
};

}  // namespace sheet_planner
