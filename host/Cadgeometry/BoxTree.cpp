#include "host/Cadgeometry/BoxTree.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace tarnalgo {

namespace {

constexpr int kLeafPieces = 4;

/// Levels of a tree halved by count: more than any list of `int` length has.
constexpr std::size_t kMostLevels = 64;

}  // namespace

TBoxTree::TBoxTree(const std::vector<TCurvePiece>& Pieces)
    : FPieces(Pieces), FOrder(Pieces.size()) {
  std::iota(FOrder.begin(), FOrder.end(), 0);
  FNodes.reserve(Pieces.size());
  if (!Pieces.empty()) Build(0, static_cast<int>(Pieces.size()));
}

int TBoxTree::Build(int First, int Last) {
  const int Node = static_cast<int>(FNodes.size());
  FNodes.push_back({TRect2D(), First, 0, -1});
  TRect2D Box;
  for (int I = First; I < Last; ++I) {
    Box = Box.Union(FPieces[static_cast<std::size_t>(FOrder[static_cast<std::size_t>(I)])].Box);
  }
  FNodes.back().Box = Box;
  if (Last - First <= kLeafPieces) {
    FNodes.back().Count = Last - First;
    return Node;
  }
  const int Middle = First + (Last - First) / 2;
  const bool ByX = Box.Width() >= Box.Height();
  const auto Center = [&](int Index) {
    const TRect2D& B = FPieces[static_cast<std::size_t>(Index)].Box;
    return ByX ? B.Min.X + B.Max.X : B.Min.Y + B.Max.Y;
  };
  std::nth_element(FOrder.begin() + First, FOrder.begin() + Middle, FOrder.begin() + Last,
                   [&](int L, int R) { return Center(L) < Center(R); });
  Build(First, Middle);
  const int Right = Build(Middle, Last);
  FNodes[static_cast<std::size_t>(Node)].Right = Right;
  return Node;
}

void TBoxTree::Search(const TRect2D& Box, double Slack, std::vector<int>& Found) const {
  if (FNodes.empty()) return;
  const auto Before = static_cast<std::ptrdiff_t>(Found.size());
  std::array<int, kMostLevels> Open{};
  std::size_t OpenCount = 1;
  while (OpenCount > 0) {
    const int Index = Open[--OpenCount];
    const TNode& Node = FNodes[static_cast<std::size_t>(Index)];
    if (!BoxesMeet(Node.Box, Box, Slack)) continue;
    if (Node.Count == 0) {
      Open[OpenCount++] = Node.Right;
      Open[OpenCount++] = Index + 1;
      continue;
    }
    for (int I = Node.First; I < Node.First + Node.Count; ++I) {
      const int Piece = FOrder[static_cast<std::size_t>(I)];
      if (BoxesMeet(FPieces[static_cast<std::size_t>(Piece)].Box, Box, Slack)) {
        Found.push_back(Piece);
      }
    }
  }
  std::sort(Found.begin() + Before, Found.end());
}

}  // namespace tarnalgo
