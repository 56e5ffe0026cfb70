#include <cstddef>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "geometryAlgo/UPolygonGetter/BridgeTool.h"
#include "geometryAlgo/UPolygonGetter/TopoGraph.h"
#include "geometryAlgo/UPolygonGetter/TopoLinks.h"

namespace tarnalgo {

namespace {

bool IsAvailable(const TTopoGraph::TEntry& Entry) {
  return Entry.Chain->IsAvailable();
}

/// The entries of `Node` that are available and lead somewhere.
std::vector<int> AvailableAt(const TTopoGraph& Graph, int Node) {
  std::vector<int> Result;
  for (int I = Graph.First(Node); I < Graph.First(Node + 1); ++I) {
    if (IsAvailable(Graph.Entry(I)) && Graph.Entry(I).To >= 0) Result.push_back(I);
  }
  return Result;
}

/// How many ends of available chains are at the node: a closed chain has both, also when it stands
/// there only once.
int DegreeOf(const TTopoGraph& Graph, int Node) {
  int Degree = 0;
  for (const int Entry : AvailableAt(Graph, Node)) {
    Degree += Graph.Entry(Entry).Twin == Entry ? 2 : 1;
  }
  return Degree;
}

/// The nodes whose last chain but one is taken away lead on to the next ones.
std::vector<int> FindDangling(const TTopoGraph& Graph) {
  std::vector<int> Degrees;
  std::vector<int> Ends;
  for (int Node = 0; Node < Graph.NodeCount(); ++Node) {
    Degrees.push_back(DegreeOf(Graph, Node));
    if (Degrees.back() == 1) Ends.push_back(Node);
  }
  std::vector<int> Found;
  const auto TakeAway = [&](int Entry) {
    Graph.Entry(Entry).Chain->SetIsAvailable(false);
    Found.push_back(Entry);
    const int Node = Graph.Entry(Entry).From;
    if (--Degrees[static_cast<std::size_t>(Node)] == 1) Ends.push_back(Node);
  };
  while (!Ends.empty()) {
    const int Node = Ends.back();
    Ends.pop_back();
    for (const int Entry : AvailableAt(Graph, Node)) {
      TakeAway(Entry);
      const int Twin = Graph.Entry(Entry).Twin;
      if (Twin >= 0 && IsAvailable(Graph.Entry(Twin))) TakeAway(Twin);
    }
  }
  return Found;
}

std::vector<int> FindBridges(const TTopoGraph& Graph) {
  TBridgeTool Tool(Graph.NodeCount());
  for (int I = 0; I < Graph.EntryCount(); ++I) {
    const TTopoGraph::TEntry& Entry = Graph.Entry(I);
    // Once for a chain, by the second of its objects.
    if (Entry.To >= 0 && IsAvailable(Entry) && I > Entry.Twin) Tool.AddLink(Entry.From, Entry.To);
  }
  Tool.CalcBridgeByTarjan();
  std::vector<int> Found;
  for (const TIntPoint& Pair : Tool.Bridges()) {
    std::vector<int> Between;
    for (const int Entry : AvailableAt(Graph, static_cast<int>(Pair.X))) {
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
  TTopoLinks Result;
  for (const int Found : FindDangling(Graph)) {
    const TTopoGraph::TEntry& Entry = Graph.Entry(Found);
    Result.AddDanglingValue(Graph.Node(Entry.From), Entry.Chain->Clone());
    Entry.Chain->SetIsDangling(true);
  }
  Result.SortDicIntPoint(true);
  Result.SortTopoChainsMax();
  return Result;
}

TTopoLinks TTopoLinks::GetBridgeTopo() {
  const TTopoGraph Graph(*this);
  TTopoLinks Result;
  for (const int Found : FindBridges(Graph)) {
    const TTopoGraph::TEntry& Entry = Graph.Entry(Found);
    Result.AddBridgeValue(Graph.Node(Entry.From), Entry.Chain->Clone());
    Entry.Chain->SetIsBridge(true);
    Entry.Chain->SetIsAvailable(false);
  }
  Result.SortDicIntPoint(true);
  Result.SortTopoChainsMax();
  return Result;
}

}  // namespace tarnalgo
