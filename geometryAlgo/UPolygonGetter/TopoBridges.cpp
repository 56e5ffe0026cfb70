#include <cstddef>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "geometryAlgo/UPolygonGetter/BridgeTool.h"
#include "geometryAlgo/UPolygonGetter/TopoGraph.h"
#include "geometryAlgo/UPolygonGetter/TopoLinks.h"

namespace tarnalgo {

namespace {

/// Of each entry, whether its chain is available. The chains themselves are told in the end.
using TFlags = std::vector<bool>;

TFlags FlagsOf(const TTopoGraph& Graph) {
  TFlags Flags;
  for (int I = 0; I < Graph.EntryCount(); ++I) {
    Flags.push_back(Graph.Entry(I).Chain->IsAvailable());
  }
  return Flags;
}

/// The entries of `Node` that are available and lead somewhere.
std::vector<int> AvailableAt(const TTopoGraph& Graph, const TFlags& Flags, int Node) {
  std::vector<int> Result;
  for (int I = Graph.First(Node); I < Graph.First(Node + 1); ++I) {
    if (Flags[static_cast<std::size_t>(I)] && Graph.Entry(I).To >= 0) Result.push_back(I);
  }
  return Result;
}

/// How many ends of available chains are at the node: a closed chain has both, also when it stands
/// there only once.
int DegreeOf(const TTopoGraph& Graph, const TFlags& Flags, int Node) {
  int Degree = 0;
  for (const int Entry : AvailableAt(Graph, Flags, Node)) {
    Degree += Graph.Entry(Entry).Twin == Entry ? 2 : 1;
  }
  return Degree;
}

/// The nodes whose last chain but one is taken away lead on to the next ones.
std::vector<int> FindDangling(const TTopoGraph& Graph) {
  TFlags Flags = FlagsOf(Graph);
  std::vector<int> Degrees;
  std::vector<int> Ends;
  for (int Node = 0; Node < Graph.NodeCount(); ++Node) {
    Degrees.push_back(DegreeOf(Graph, Flags, Node));
    if (Degrees.back() == 1) Ends.push_back(Node);
  }
  std::vector<int> Found;
  const auto TakeAway = [&](int Entry) {
    Flags[static_cast<std::size_t>(Entry)] = false;
    Found.push_back(Entry);
    const int Node = Graph.Entry(Entry).From;
    if (--Degrees[static_cast<std::size_t>(Node)] == 1) Ends.push_back(Node);
  };
  while (!Ends.empty()) {
    const int Node = Ends.back();
    Ends.pop_back();
    for (const int Entry : AvailableAt(Graph, Flags, Node)) {
      TakeAway(Entry);
      const int Twin = Graph.Entry(Entry).Twin;
      if (Twin >= 0 && Flags[static_cast<std::size_t>(Twin)]) TakeAway(Twin);
    }
  }
  return Found;
}

std::vector<int> FindBridges(const TTopoGraph& Graph) {
  const TFlags Flags = FlagsOf(Graph);
  TBridgeTool Tool(Graph.NodeCount());
  for (int I = 0; I < Graph.EntryCount(); ++I) {
    const TTopoGraph::TEntry& Entry = Graph.Entry(I);
    // Once for a chain, by the second of its objects.
    const bool IsAvailable = Flags[static_cast<std::size_t>(I)];
    if (Entry.To >= 0 && IsAvailable && I > Entry.Twin) Tool.AddLink(Entry.From, Entry.To);
  }
  Tool.CalcBridgeByTarjan();
  std::vector<int> Found;
  for (const TIntPoint& Pair : Tool.Bridges()) {
    std::vector<int> Between;
    for (const int Entry : AvailableAt(Graph, Flags, static_cast<int>(Pair.X))) {
      if (Graph.Entry(Entry).To == Pair.Y) Between.push_back(Entry);
    }
    if (Between.size() != 1) continue;  // the tool does not see that parallel chains close a loop
    Found.push_back(Between.front());
    if (const int Twin = Graph.Entry(Between.front()).Twin; Twin >= 0) Found.push_back(Twin);
  }
  return Found;
}

}  // namespace

TTopoLinks TTopoLinks::GetDanglingTopo() {
  const TTopoGraph Graph(*this);
  const std::vector<int> Dangling = FindDangling(Graph);
  TTopoLinks Result;
  for (const int Found : Dangling) {
    const TTopoGraph::TEntry& Entry = Graph.Entry(Found);
    Result.AddDanglingValue(Graph.Node(Entry.From), Entry.Chain->Clone());
  }
  Result.SortDicIntPoint(true);
  Result.SortTopoChainsMax();
  for (const int Found : Dangling) {
    Graph.Entry(Found).Chain->SetIsDangling(true);
    Graph.Entry(Found).Chain->SetIsAvailable(false);
  }
  return Result;
}

TTopoLinks TTopoLinks::GetBridgeTopo() {
  const TTopoGraph Graph(*this);
  const std::vector<int> Bridges = FindBridges(Graph);
  TTopoLinks Result;
  for (const int Found : Bridges) {
    const TTopoGraph::TEntry& Entry = Graph.Entry(Found);
    Result.AddBridgeValue(Graph.Node(Entry.From), Entry.Chain->Clone());
  }
  Result.SortDicIntPoint(true);
  Result.SortTopoChainsMax();
  for (const int Found : Bridges) {
    Graph.Entry(Found).Chain->SetIsBridge(true);
    Graph.Entry(Found).Chain->SetIsAvailable(false);
  }
  return Result;
}

}  // namespace tarnalgo
