#pragma once  // host/Cadgeometry/BoxTree.h

#include <vector>

#include "host/Cadgeometry/CurvePiece.h"

namespace tarnalgo {

/// The pieces of one curve, arranged so that those near a box are found without looking at all.
/// A tree of boxes, halved at the middle of the longer side, the nodes in one array.
/// Ownership: refers to the list, which must stay as it is.
/// Cost: O(n log n) to build, O(log n + k) for a box met by k pieces of like size.
class TBoxTree {
 public:
  /// Of pieces that already have their boxes; those without a valid box are never found.
  explicit TBoxTree(const std::vector<TCurvePiece>& Pieces);

  /// Appends the indices of the pieces whose boxes come within `Slack` of `Box`, ascending.
  void Search(const TRect2D& Box, double Slack, std::vector<int>& Found) const;

 private:
  struct TNode {
    TRect2D Box;
    int First = 0;   // in FOrder
    int Count = 0;   // pieces of a leaf, 0 for an inner node
    int Right = -1;  // the left child comes right after its parent
  };

  int Build(int First, int Last);

  const std::vector<TCurvePiece>& FPieces;
  std::vector<int> FOrder;
  std::vector<TNode> FNodes;
};

}  // namespace tarnalgo
