#pragma once  // fuzz/PlainGraph.h

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <set>
#include <utility>
#include <vector>

namespace tarnalgo::fuzz {

/// Edges between numbered nodes, and what searches say of them that take edge by edge away.
struct TPlainGraph {
  std::vector<std::pair<int, int>> Edges;
  std::vector<bool> IsGone;  // dangling, or a bridge
  int NodeCount = 0;

  /// The part of each node, joined by the edges that are left but for `Without`.
  std::vector<int> Parts(std::size_t Without) const {
    std::vector<int> Part(static_cast<std::size_t>(NodeCount));
    std::iota(Part.begin(), Part.end(), 0);
    for (std::size_t I = 0; I < Edges.size(); ++I) {
      if (I == Without || IsGone[I]) continue;
      const int From = Part[static_cast<std::size_t>(Edges[I].first)];
      const int To = Part[static_cast<std::size_t>(Edges[I].second)];
      std::replace(Part.begin(), Part.end(), From, To);
    }
    return Part;
  }
  /// Takes away what leads to a node of one edge, until nothing does; answers how many.
  int DropDangling() {
    const auto Before = std::count(IsGone.begin(), IsGone.end(), true);
    for (bool IsChanged = true; IsChanged;) {
      IsChanged = false;
      std::vector<int> Degree(static_cast<std::size_t>(NodeCount));
      for (std::size_t I = 0; I < Edges.size(); ++I) {
        if (IsGone[I]) continue;
        ++Degree[static_cast<std::size_t>(Edges[I].first)];
        ++Degree[static_cast<std::size_t>(Edges[I].second)];
      }
      for (std::size_t I = 0; I < Edges.size(); ++I) {
        const auto [From, To] = Edges[I];
        const int Least =
            std::min(Degree[static_cast<std::size_t>(From)], Degree[static_cast<std::size_t>(To)]);
        if (IsGone[I] || Least > 1) continue;
        IsGone[I] = IsChanged = true;
      }
    }
    return static_cast<int>(std::count(IsGone.begin(), IsGone.end(), true) - Before);
  }
  /// Takes away the edges without which their ends are in two parts; answers how many.
  int DropBridges() {
    std::vector<std::size_t> Bridges;
    for (std::size_t I = 0; I < Edges.size(); ++I) {
      if (IsGone[I]) continue;
      const std::vector<int> Part = Parts(I);
      const auto [From, To] = Edges[I];
      if (Part[static_cast<std::size_t>(From)] != Part[static_cast<std::size_t>(To)]) {
        Bridges.push_back(I);
      }
    }
    for (const std::size_t I : Bridges) IsGone[I] = true;
    return static_cast<int>(Bridges.size());
  }
  /// Of what is left: each part of V nodes and E edges has E − V + 2 faces.
  int FaceCount() const {
    const std::vector<int> Part = Parts(Edges.size());
    std::set<int> Nodes;
    std::set<int> Used;
    int Left = 0;
    for (std::size_t I = 0; I < Edges.size(); ++I) {
      if (IsGone[I]) continue;
      ++Left;
      for (const int Node : {Edges[I].first, Edges[I].second}) {
        Nodes.insert(Node);
        Used.insert(Part[static_cast<std::size_t>(Node)]);
      }
    }
    return Left - static_cast<int>(Nodes.size()) + 2 * static_cast<int>(Used.size());
  }
};

}  // namespace tarnalgo::fuzz
