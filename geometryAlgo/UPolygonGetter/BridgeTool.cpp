#include "geometryAlgo/UPolygonGetter/BridgeTool.h"

#include <algorithm>
#include <cstddef>
#include <polyclipping/clipper.hpp>

#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

std::size_t Index(int I) {
  return static_cast<std::size_t>(I);
}

}  // namespace

TBridgeTool::TBridgeTool(int VertexCount) {
  if (VertexCount < 0) RaiseError<EParamError>("TBridgeTool.Create", "negative vertex count");
  if (VertexCount > kMostItems) RaiseError<EParamError>("TBridgeTool.Create", "too many vertices");
  FFirst.assign(Index(VertexCount), -1);
}

TBridgeTool::~TBridgeTool() = default;

void TBridgeTool::CheckVertex(int Vertex) const {
  if (Vertex < 0 || Vertex >= VertexCount()) {
    RaiseError<EParamError>("TBridgeTool.AddEdge", "vertex out of range");
  }
}

void TBridgeTool::AddEdge(int u, int v) {
  CheckVertex(u);
  CheckVertex(v);
  FEdges.push_back({v, FFirst[Index(u)]});
  FFirst[Index(u)] = static_cast<int>(FEdges.size()) - 1;
}

void TBridgeTool::AddLink(int u, int v) {
  CheckVertex(u);
  CheckVertex(v);
  if (FEdges.capacity() - FEdges.size() < 2) {
    FEdges.reserve(std::max(2 * FEdges.size(), FEdges.size() + 2));  // both or none
  }
  AddEdge(u, v);
  AddEdge(v, u);
}

/// One run of the search. Discovery numbers count from 1; 0 is a vertex not yet met.
class TBridgeTool::TSearch {
 public:
  explicit TSearch(const TBridgeTool& Tool)
      : FTool(Tool),
        FDiscovery(Tool.FFirst.size() + 1, 0),
        FLow(FDiscovery),
        FParent(FDiscovery),
        FState(Tool.FFirst.size(), -1) {
    for (int V = 1; V <= Tool.VertexCount(); ++V) FParent[Index(V)] = V;
  }

  void Run(TIntPointList& Bridges) {
    for (int Root = 0; Root < FTool.VertexCount(); ++Root) {
      if (FState[Index(Root)] == -1) SearchFrom(Root, Bridges);
    }
  }

 private:
  void SearchFrom(int Root, TIntPointList& Bridges) {
    FStack.push_back(Root);
    while (!FStack.empty()) {
      const int Vertex = FStack.back();
      if (FDiscovery[Index(Vertex)] == 0) Discover(Vertex);
      if (const int Next = Scan(Vertex); Next >= 0) {
        FStack.push_back(Next);
        continue;
      }
      FStack.pop_back();
      if (!FStack.empty()) ReportTo(FStack.back(), Vertex, Bridges);
    }
  }

  void Discover(int Vertex) {
    FDiscovery[Index(Vertex)] = FLow[Index(Vertex)] = ++FCounter;
    FState[Index(Vertex)] = 1;
  }

  /// Applies the edges of the vertex to its low value; stops at one to a vertex not yet met and
  /// answers it, −1 at the end. The way back is left out by the vertex, not by the edge.
  int Scan(int Vertex) {
    int& Low = FLow[Index(Vertex)];
    for (int E = FTool.FFirst[Index(Vertex)]; E >= 0; E = FTool.FEdges[Index(E)].Next) {
      const int Target = FTool.FEdges[Index(E)].Target;
      if (FDiscovery[Index(Target)] == 0) {
        FParent[Index(Target)] = Vertex;
        return Target;
      }
      if (Target != FParent[Index(Vertex)]) Low = std::min(Low, FDiscovery[Index(Target)]);
    }
    return -1;
  }

  void ReportTo(int Parent, int Vertex, TIntPointList& Bridges) {
    FLow[Index(Parent)] = std::min(FLow[Index(Parent)], FLow[Index(Vertex)]);
    if (FLow[Index(Vertex)] > FDiscovery[Index(Parent)]) Bridges.emplace_back(Vertex, Parent);
  }

  const TBridgeTool& FTool;
  std::vector<int> FDiscovery;
  std::vector<int> FLow;
  std::vector<int> FParent;
  std::vector<int> FState;
  std::vector<int> FStack;
  int FCounter = 0;
};

void TBridgeTool::CalcBridgeByTarjan() {
  TIntPointList Bridges;
  TSearch(*this).Run(Bridges);
  FBridges.swap(Bridges);
}

}  // namespace tarnalgo
