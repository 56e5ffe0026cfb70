#pragma once  // geometryAlgo/UPolygonGetter/TopoLinks.h

#include <cstddef>
#include <memory>
#include <vector>

#include "containers/Container/OwnValueDic.h"
#include "geometryAlgo/UPolygonGetter/ChainExtend.h"
#include "geometryAlgo/UPolygonGetter/NodeEdges.h"
#include "geometryAlgo/UPolygonGetter/NodePoint.h"

namespace tarnalgo {

/// How nodes are found in a dictionary.
struct TNodeHash {
  /// From both coordinates, the same in every run.
  std::size_t operator()(const TIntPoint& P) const;
};
/// The same integers.
struct TNodeEqual {
  /// Exact.
  bool operator()(const TIntPoint& A, const TIntPoint& B) const;
};

/// The topology of a drawing: every node with the chains that meet there.
///
///     TTopoLinks Links = TTopoLinks::CreateTopoLink(Chains);
///     TTopoLinks Loose = Links.GetDanglingTopo();   // set apart: they lead to loose ends
///     TTopoLinks Bridges = Links.GetBridgeTopo();   // set apart: they only join outlines
///     TPointsOfOutline PointsOf;
///     TChainsOfOutline ChainsOf;
///     TVPolyline2DList Outlines;
///     Links.GetPolygons(PointsOf, ChainsOf, Outlines);
///
/// A chain is registered at both of its end nodes, each time by an object that runs away from the
/// node; a closed chain has both at its only node. "Both objects" below are the two of one chain:
/// each runs exactly as the other reversed (or, failing that, `EqualsTo` it).
/// Whoever uses the keys, or makes a `TPointsOfOutline`, includes <polyclipping/clipper.hpp>.
/// Ownership: the table owns the nodes, these own their chains.
class TTopoLinks : public TOwnValueDic<TIntPoint, TNodeEdges, TNodeHash, TNodeEqual> {
 public:
  /// Both keyed by the outline: its nodes, one for each chain, where the chain starts; its chains
  /// in the order of the walk, referred to only.
  using TPointsOfOutline = TOwnValueDic<const TVPolyline2D*, TIntPointList>;
  /// The chains of each outline.
  using TChainsOfOutline = TOwnValueDic<const TVPolyline2D*, TMChainExtends>;

  TTopoLinks();
  /// Nodes and chains change hands and keep their addresses.
  TTopoLinks(TTopoLinks&&) noexcept;
  TTopoLinks& operator=(TTopoLinks&&) noexcept;  ///< As the constructor.
  ~TTopoLinks() override;

  // --- The table (TopoLinks.cpp) ---

  /// A table of copies of the chains, each registered at both ends, in descending order of angle at
  /// every node. Chains of fewer than two points, or with one that is not finite, are left out.
  static TTopoLinks CreateTopoLink(const TMChainExtends& Chains);

  /// Appends the chain to node `P`, which is made when it is new.
  /// Errors: no chain, `EParamError`, nothing changed.
  void AddValue(const TIntPoint& P, std::unique_ptr<TMChainExtend> Chain);
  /// The same for a chain that is marked as a bridge or as dangling first.
  void AddBridgeValue(const TIntPoint& P, std::unique_ptr<TMChainExtend> Chain);
  /// The same for a dangling chain.
  void AddDanglingValue(const TIntPoint& P, std::unique_ptr<TMChainExtend> Chain);

  /// All nodes in the order of `TCompareTool::CompareByYX`: lowest first, on one height from right
  /// to left. With `ResetFlags` every chain is made available first.
  TIntPointList SortDicIntPoint(bool ResetFlags);
  /// More than one chain of node `P` ends at `Q`: chains that close a loop between the two. `Chain`
  /// is the last such chain, also when it is the only one; null when there is none.
  bool HaveLoop(const TIntPoint& P, const TIntPoint& Q, TMChainExtend*& Chain) const;
  /// Puts the chains of every node with more than one in descending, or ascending, order of angle.
  /// Stable; equal is exactly equal.
  /// Errors: when memory runs out, some nodes may be in order already; a second call does the rest.
  void SortTopoChainsMax();
  void SortTopoChainsMin();  ///< In ascending order.

  // --- Outlines (TopoPolygons.cpp) ---

  /// Traces the outline of every face, each once, and appends it to `Polylines`.
  ///
  /// Nodes are visited in the order of `SortDicIntPoint`; from each with its flag set every
  /// available chain, its flag cleared, is walked until the walk comes back to it, turning by
  /// `TNodeEdges::GetNextChains` with the way back allowed. Chains walked are no longer available,
  /// so a second call finds nothing unless the flags are reset. After `SortTopoChainsMax` a face
  /// lies to the left of its outline: inner faces run counter-clockwise, the outside of a connected
  /// drawing clockwise, and the areas of all outlines of a drawing add up to zero.
  ///
  /// What a walk runs over both ways belongs to no outline, whether or not the chain was set apart
  /// before: dangling chains disappear, a bridge ends one outline and begins another. A drawing of
  /// nothing else has no outline. A face between a contour and others inside it has one outline for
  /// each: nothing here is nested. Of repeats of a chain one takes part; a closed chain that is
  /// there twice has its outlines twice.
  ///
  /// An outline has the points of its chains, none within 1e-6 of the one before it, and repeats
  /// its first point; ends on one node that are farther apart are both kept. A walk that cannot get
  /// on, in a table where chains lack their other object, gives no outline.
  /// Errors: when something raises, flags and results are as they were.
  /// Ownership: `Polylines` must live as long as its outlines are asked for in the dictionaries.
  /// An entry left there by an outline that is gone gives way to a new one at the same address.
  /// Cost: O(n log n), n the points of all chains; linear but for the order of the nodes and the
  /// search for both objects. Repeats of a chain within 1e-6 that are not exact cost the square of
  /// their number.
  void GetPolygons(TPointsOfOutline& PointsOf, TChainsOfOutline& ChainsOf,
                   TVPolyline2DList& Polylines);
  /// The same, but only outlines with negative area are kept: after `SortTopoChainsMax` the
  /// outside of each connected part of the drawing, bridges not counted as connecting.
  void GetOutPolygons(TPointsOfOutline& PointsOf, TChainsOfOutline& ChainsOf,
                      TVPolyline2DList& Polylines);

  // --- What is no part of an outline (TopoBridges.cpp) ---

  /// Sets apart the chains that lead to loose ends: as long as a node has a single available chain,
  /// that one is taken away. Their objects are marked here as dangling and not available; the
  /// result is a table of copies, available. A tree is set apart whole.
  /// Cost: O(n log n) as `GetPolygons`.
  TTopoLinks GetDanglingTopo();
  /// Sets apart, in the same way, the chains without which the available chains would fall apart
  /// (`TBridgeTool`; of parallel chains none is a bridge). Dangling chains that are still available
  /// are bridges too.
  /// Cost: as `TBridgeTool::CalcBridgeByTarjan` has it, so best after `GetDanglingTopo`, which
  /// takes most of the chains away from nodes of high degree.
  TTopoLinks GetBridgeTopo();

  // --- What hangs together (TopoGroups.cpp) ---
  //
  // A group is a list of chains that are joined by common nodes, each chain once (the object that
  // comes first, nodes in the order of `SortDicIntPoint`), available or not. Groups refer to the
  // chains of the table. Cost: O(n log n), the whole table, also for a single group.

  /// The group of node `P`; empty when `P` is no node.
  TMChainExtends CreateAGroupByCommonNode(const TIntPoint& P) const;
  /// All groups, in the order of their first nodes.
  std::vector<TMChainExtends> GetGroupByDic() const;
  /// The groups that the unlawful chains form among themselves (`TMChainExtend::IsLawful`): after
  /// the analysis above, the places of a drawing that bound no area and want to be repaired.
  std::vector<TMChainExtends> GroupUnlawChains() const;
};

using TPointsOfOutline = TTopoLinks::TPointsOfOutline;  ///< The nodes of each outline.
using TChainsOfOutline = TTopoLinks::TChainsOfOutline;  ///< The chains of each outline.

}  // namespace tarnalgo
