#pragma once  // geometryAlgo/UPolygonGetter/TopoGraph.h

#include <cstddef>
#include <cstdint>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "containers/Container/HashIndex.h"
#include "geometryAlgo/UPolygonGetter/TopoLinks.h"

namespace tarnalgo {

/// The nodes of the table in the order of `TCompareTool::CompareByYX`.
TIntPointList SortedNodes(const TTopoLinks& Links);

/// A hash of the points, the same for the chain and its reverse.
std::uint64_t CourseOf(const TMChainExtend& Chain);

/// A node table by numbers, for the algorithms that walk it. Internal to the pages of this unit.
///
/// Nodes are numbered in the order of `SortedNodes`, the chain objects node by node in the order of
/// their lists. Chains of fewer than two points, and chains whose end is no node, lead nowhere.
/// Ownership: refers to the table, whose nodes and lists must not change meanwhile.
/// Cost: O(n log n), n the points of all chains; objects that reverse each other within 1e-6 but
/// not exactly are compared with all such between the same two nodes.
class TTopoGraph {
 public:
  struct TEntry {
    TMChainExtend* Chain;
    int From;
    int To = -1;    // −1: nowhere
    int Twin = -1;  // the other object of the chain; a lone closed chain is its own
  };

  explicit TTopoGraph(const TTopoLinks& Links);

  int NodeCount() const { return static_cast<int>(FNodes.size()); }
  int EntryCount() const { return static_cast<int>(FEntries.size()); }
  const TIntPoint& Node(int I) const;
  const TNodeEdges& Edges(int Node) const { return *FEdges[Index(Node)]; }
  const TEntry& Entry(int I) const { return FEntries[Index(I)]; }
  /// The entries of a node: `First` .. `First(Node + 1)` − 1.
  int First(int Node) const { return FFirst[Index(Node)]; }
  /// The number of a node, −1 when it is none.
  int Find(const TIntPoint& P) const;
  /// The two objects of one chain, or a chain and one that repeats it, point by point.
  bool IsSameCourse(int A, int B) const { return FCourse[Index(A)] == FCourse[Index(B)]; }

 private:
  static std::size_t Index(int I) { return static_cast<std::size_t>(I); }

  void NumberNodes(const TTopoLinks& Links);
  void NumberChains();
  void PairExactly();
  void PairTheRest();
  bool TryPair(int A, int B);

  TIntPointList FNodes;
  std::vector<const TNodeEdges*> FEdges;
  std::vector<int> FFirst;
  std::vector<TEntry> FEntries;
  std::vector<std::uint64_t> FCourse;  // of each entry, the same in both directions
  THashIndex FIndex;
};

}  // namespace tarnalgo
