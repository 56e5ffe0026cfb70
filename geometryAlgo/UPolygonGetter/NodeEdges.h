#pragma once  // geometryAlgo/UPolygonGetter/NodeEdges.h

#include "geometryAlgo/UPolygonGetter/ChainExtend.h"

namespace tarnalgo {

/// The chains that meet at one node, each an object of its own that runs away from the node: a
/// chain between two nodes stands at the other one once more, reversed. A chain that comes back to
/// its node stands there twice.
///
/// The turning rule goes by the order of the list; `TTopoLinks::SortTopoChainsMax` puts it in
/// descending order of angle.
class TNodeEdges : public TMChainExtends {
 public:
  TNodeEdges() = default;

  /// Outlines may start here. Set at creation.
  bool NodeFlag() const { return FNodeFlag; }
  /// Lets outlines start here, or not; walks pass through all the same.
  void SetNodeFlag(bool Value) { FNodeFlag = Value; }

  /// The turning rule: the position of the chain to go on with for a walk that arrives along
  /// `Chain`, given by this node's own object of it. With descending angles that is the next
  /// available chain clockwise, the sharpest turn to the left.
  ///
  /// With three or more chains one that `EqualsTo` the arriving one is passed over; with two the
  /// other one is taken in any case. When no chain is left and that of `Chain` itself is available,
  /// the walk turns back: with `AllowBack` the answer is its own position, else its flag is cleared
  /// and the answer −1. −1 too when its flag is clear, and when `Chain` (found by identity) is not
  /// in the list.
  /// Cost: linear in the chains of the node.
  int GetNextChains(TMChainExtend* Chain, bool AllowBack);
  /// The same walking the list backwards: counter-clockwise, the sharpest turn to the right.
  int GetPreChains(TMChainExtend* Chain, bool AllowBack);

  /// Position of the first chain that `EqualsTo` the given one, −1 when there is none.
  int IndexofByValue(const TMChainExtend& Chain) const;
  /// Some chain here `EqualsTo` the given one.
  bool IsContains(const TMChainExtend& Chain) const { return IndexofByValue(Chain) >= 0; }

  /// Removes the chain (found by identity); nothing when it is not in the list. The list owns its
  /// chains afterwards.
  /// Ownership: with `FreeIt` the chain is freed, otherwise it passes to the caller.
  void DeleteReverse(TMChainExtend* Chain, bool FreeIt);

 private:
  int Turn(TMChainExtend* Chain, bool AllowBack, int Step);

  bool FNodeFlag = true;
};

}  // namespace tarnalgo
