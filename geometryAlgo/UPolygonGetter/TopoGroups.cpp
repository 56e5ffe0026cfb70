#include <algorithm>
#include <cstddef>
#include <polyclipping/clipper.hpp>
#include <utility>
#include <vector>

#include "geometryAlgo/UPolygonGetter/TopoGraph.h"
#include "geometryAlgo/UPolygonGetter/TopoLinks.h"

namespace tarnalgo {

namespace {

/// Collects chains that hang together, over those chains that `Counts` lets through.
template <class TCounts>
class TGroupFinder {
 public:
  TGroupFinder(const TTopoGraph& Graph, TCounts Counts)
      : FGraph(Graph),
        FCounts(Counts),
        FIsMet(static_cast<std::size_t>(Graph.NodeCount()), false) {}

  /// Empty when the node was in an earlier group.
  TMChainExtends GroupOf(int Node) {
    FNodes.clear();
    Meet(Node);
    for (std::size_t I = 0; I < FNodes.size(); ++I) {
      for (int E = FGraph.First(FNodes[I]); E < FGraph.First(FNodes[I] + 1); ++E) {
        const TTopoGraph::TEntry& Entry = FGraph.Entry(E);
        if (FCounts(*Entry.Chain) && Entry.To >= 0) Meet(Entry.To);
      }
    }
    std::sort(FNodes.begin(), FNodes.end());
    TMChainExtends Group(false);
    for (const int Member : FNodes) {
      for (int E = FGraph.First(Member); E < FGraph.First(Member + 1); ++E) {
        const TTopoGraph::TEntry& Entry = FGraph.Entry(E);
        if (FCounts(*Entry.Chain) && (Entry.Twin < 0 || E <= Entry.Twin)) Group.Add(Entry.Chain);
      }
    }
    return Group;
  }

  std::vector<TMChainExtends> AllGroups() {
    std::vector<TMChainExtends> Groups;
    for (int Node = 0; Node < FGraph.NodeCount(); ++Node) {
      TMChainExtends Group = GroupOf(Node);
      if (!Group.IsEmpty()) Groups.push_back(std::move(Group));
    }
    return Groups;
  }

 private:
  void Meet(int Node) {
    if (FIsMet[static_cast<std::size_t>(Node)]) return;
    FIsMet[static_cast<std::size_t>(Node)] = true;
    FNodes.push_back(Node);
  }

  const TTopoGraph& FGraph;
  TCounts FCounts;
  std::vector<bool> FIsMet;
  std::vector<int> FNodes;
};

constexpr auto kEveryChain = [](const TMChainExtend&) { return true; };

}  // namespace

TMChainExtends TTopoLinks::CreateAGroupByCommonNode(const TIntPoint& P) const {
  const TTopoGraph Graph(*this);
  const int Node = Graph.Find(P);
  return Node < 0 ? TMChainExtends(false) : TGroupFinder(Graph, kEveryChain).GroupOf(Node);
}

std::vector<TMChainExtends> TTopoLinks::GetGroupByDic() const {
  const TTopoGraph Graph(*this);
  return TGroupFinder(Graph, kEveryChain).AllGroups();
}

std::vector<TMChainExtends> TTopoLinks::GroupUnlawChains() const {
  const TTopoGraph Graph(*this);
  const auto IsUnlawful = [](const TMChainExtend& Chain) { return !Chain.IsLawful(); };
  return TGroupFinder(Graph, IsUnlawful).AllGroups();
}

}  // namespace tarnalgo
