#pragma once  // examples/sheet_planner/NearestEnds.h

#include <vector>

#include "host/Cadtypes.h"

namespace sheet_planner {

/// Places that are switched on and off, of which the one nearest to a point is found.
///
/// A k-d tree with a box and a count for each node.
/// Cost: construction O(n log n); a switch O(log n), a search as much as a rule.
class TNearestEnds {
 public:
  /// All places are off. Coordinates are at most `kLargestCoordinate`.
  explicit TNearestEnds(std::vector<tarnalgo::TPoint2D> Places);

  void Switch(int Place, bool IsOn);
  /// The place nearest to `P` of those that are on, −1 when all are off.
  /// Ties: the smaller number.
  int Nearest(const tarnalgo::TPoint2D& P) const;

 private:
  /// Places `First` to `Last` (one past) of the order; the one in the middle is the node's own.
  struct TRange {
    int First;
    int Last;
    int Middle() const { return First + (Last - First) / 2; }
    bool IsEmpty() const { return First == Last; }
    TRange Low() const { return {First, Middle()}; }
    TRange High() const { return {Middle() + 1, Last}; }
  };
  struct TBest {
    int Place = -1;
    double Square = tarnalgo::kStartOfMinimum;
  };
  struct TNode {
    tarnalgo::TRect2D Box;  // of all its places
    int Place = 0;
    int CountOn = 0;
    bool IsOn = false;
  };

  TNode& Node(int Position) { return FNodes[static_cast<std::size_t>(Position)]; }
  const TNode& Node(int Position) const { return FNodes[static_cast<std::size_t>(Position)]; }
  const tarnalgo::TPoint2D& PlaceOf(int Place) const {
    return FPlaces[static_cast<std::size_t>(Place)];
  }
  void Build(const TRange& Range);
  void Look(const TRange& Range, const tarnalgo::TPoint2D& P, TBest& Best) const;
  TRange Whole() const { return {0, static_cast<int>(FNodes.size())}; }

  std::vector<tarnalgo::TPoint2D> FPlaces;
  std::vector<TNode> FNodes;     // in the order of the tree
  std::vector<int> FPositionOf;  // of each place in the order
};

}  // namespace sheet_planner
