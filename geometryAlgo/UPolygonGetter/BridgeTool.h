#pragma once  // geometryAlgo/UPolygonGetter/BridgeTool.h

#include <vector>

#include "geometryAlgo/UPolygonGetter/NodePoint.h"

namespace tarnalgo {

/// The bridges of an undirected graph over the vertices 0 .. n − 1: pairs of neighbours without
/// whose link the graph would fall apart.
///
///     TBridgeTool Tool(3);
///     Tool.AddLink(0, 1);
///     Tool.AddLink(1, 2);
///     Tool.CalcBridgeByTarjan();  // Tool.Bridges(): (2, 1), (1, 0)
///
/// Parallel links do not protect each other: two vertices joined twice and by nothing else are
/// reported. A link from a vertex to itself changes nothing.
/// Whoever looks into the result includes <polyclipping/clipper.hpp>.
class TBridgeTool {
 public:
  /// Errors: a negative count or one beyond `kMostItems`, `EParamError`.
  explicit TBridgeTool(int VertexCount);
  virtual ~TBridgeTool();

  /// What the constructor was given.
  int VertexCount() const { return static_cast<int>(FFirst.size()); }

  /// A link one way. The edges of a vertex are visited newest first.
  /// Errors: a vertex that does not exist, `EParamError`.
  void AddEdge(int u, int v);
  /// A link: an edge each way.
  /// Errors: as `AddEdge`, nothing added.
  void AddLink(int u, int v);

  /// Fills `Bridges`. Tarjan's search without recursion; roots in the order of their numbers.
  /// Cost: O(n + the sum of the squares of the degrees): a vertex is scanned from its first edge
  /// again whenever the search comes back to it. Memory O(n), whatever the shape of the graph.
  void CalcBridgeByTarjan();
  /// The result of the last search, in the order in which its vertices were finished: X the vertex,
  /// Y its parent in the search.
  const TIntPointList& Bridges() const { return FBridges; }

 private:
  struct TEdge {
    int Target;
    int Next;  // of the same source, −1 at the end
  };
  class TSearch;

  void CheckVertex(int Vertex) const;

  std::vector<int> FFirst;  // the newest edge of each vertex, −1 for none
  std::vector<TEdge> FEdges;
  TIntPointList FBridges;
};

}  // namespace tarnalgo
