// Closed paths grouped into outers and holes: rectangles of whole cells, whose regions a plain
// count of the cells tells.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "fuzz/Bytes.h"
#include "geometryAlgo/GeometryExtend.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

constexpr int kSide = 12;  // cells of a row

/// Windings of the cells, with a border that stays empty.
using TCells = std::array<std::array<int, kSide + 2>, kSide + 2>;

TIntPoint CentreOf(int X, int Y) {
  return {100 * X + 50, 100 * Y + 50};
}

TPath MakeRectangle(TBytes& Bytes, TCells& Cells) {
  const int Left = 1 + Bytes.Below(kSide);
  const int Bottom = 1 + Bytes.Below(kSide);
  const int Right = Left + Bytes.Below(kSide + 2 - Left);
  const int Top = Bottom + Bytes.Below(kSide + 2 - Bottom);
  const bool IsTurned = Bytes.Below(3) == 0;
  for (int X = Left; X < Right; ++X) {
    for (int Y = Bottom; Y < Top; ++Y) {
      Cells[static_cast<std::size_t>(X)][static_cast<std::size_t>(Y)] += IsTurned ? -1 : 1;
    }
  }
  TPath Path{{100 * Left, 100 * Bottom},
             {100 * Right, 100 * Bottom},
             {100 * Right, 100 * Top},
             {100 * Left, 100 * Top}};
  if (IsTurned) std::reverse(Path.begin(), Path.end());
  return Path;
}

int RegionsAt(const TPathsList& List, const TIntPoint& P) {
  return static_cast<int>(std::count_if(List.begin(), List.end(), [&](const TPaths& Region) {
    return TPathUtils::RelationWithPoint(Region, P) == srIn;
  }));
}

double AreaOf(const TPathsList& List) {
  double Sum = 0.0;
  for (const TPaths& Region : List) {
    for (std::size_t I = 0; I < Region.size(); ++I) {
      Sum += (I == 0 ? 1.0 : -1.0) * TPathUtils::Area(Region[I], true);
    }
  }
  return Sum;
}

TPathsList PathsOf(const TVHPolygonList& Polygons) {
  TPathsList List;
  for (const TVHPolygon* Polygon : Polygons) {
    TPaths& Region = List.emplace_back();
    for (const TVPolyline2D* Contour : *Polygon) Region.push_back(Contour->ToPath(1.0));
  }
  return List;
}

/// Each cell of the union lies in one region, no other cell in any.
bool HoldsCells(const TPathsList& List, const TCells& Cells) {
  for (int X = 1; X <= kSide; ++X) {
    for (int Y = 1; Y <= kSide; ++Y) {
      const bool IsIn = Cells[static_cast<std::size_t>(X)][static_cast<std::size_t>(Y)] != 0;
      if (RegionsAt(List, CentreOf(X, Y)) != (IsIn ? 1 : 0)) return false;
    }
  }
  return true;
}

/// The contour of each node, with those right below it; of the whole tree, or of its top alone.
TPathsList OutersOf(const TPolyTree& Tree, bool TopOnly) {
  TPathsList List;
  for (const TPolyNode* Node = Tree.GetFirst(); Node != nullptr; Node = Node->GetNext()) {
    if (Node->IsHole() || (TopOnly && Node->Parent != &Tree)) continue;
    List.push_back({Node->Contour});
    for (const TPolyNode* Hole : Node->Childs) List.back().push_back(Hole->Contour);
  }
  return List;
}

/// A tree as regions, polygons and strictly simple pieces: all hold the cells of the union.
void CheckTree(const TPolyTree& Tree, const TCells& Cells) {
  const TPathsList List = TPathUtils::PolyTreeToPathsList(Tree);
  Require(List == OutersOf(Tree, false), "the regions of a tree are its outers");
  // Where contours touch, the clipping library now and then hangs one below the wrong other one;
  // its tree is then no union, and nothing can be held against it.
  if (!HoldsCells(List, Cells)) return;
  const TPathsList Back = PathsOf(TPathUtils::CreateHPolygons(Tree, 1.0));
  Require(Back.size() == List.size() && AreaOf(Back) == AreaOf(List), "polygons have the areas");
  TPathsList Pieces;
  for (const TPolyNode* Node = Tree.GetFirst(); Node != nullptr; Node = Node->GetNext()) {
    if (Node->IsHole()) continue;
    for (TPaths& Piece : PathsOf(TPathUtils::CreateStrictSimpleHPolygon(*Node, 1.0))) {
      Pieces.push_back(std::move(Piece));
    }
  }
  double Area = 0.0;
  for (const auto& Column : Cells) {
    for (const int Cell : Column) Area += Cell != 0 ? 1e4 : 0.0;
  }
  Require(HoldsCells(Pieces, Cells) && AreaOf(Pieces) == Area, "simple pieces hold the cells");
}

/// Fewer than 13 paths, in the order given: the nearest earlier path about the first vertex.
void CheckByFirstVertices(const TPathsList& List, const TPaths& Paths) {
  std::vector<std::size_t> Outers;  // of each path: the outer it belongs to
  TPathsList Due;
  std::vector<std::size_t> Places;
  for (std::size_t I = 0; I < Paths.size(); ++I) {
    std::size_t J = I;
    while (J > 0 && TPathUtils::RelationWithPoint(Paths[J - 1], Paths[I].front()) == srOut) --J;
    const bool IsHole = J > 0 && Outers[J - 1] == J - 1;
    Outers.push_back(IsHole ? J - 1 : I);
    Places.push_back(IsHole ? Places[J - 1] : Due.size());
    if (!IsHole) Due.emplace_back();
    Due[Places.back()].push_back(Paths[I]);
  }
  Require(List == Due, "few paths are grouped by their first vertices");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  TCells Cells{};
  TPaths Paths;
  for (int Count = Bytes.Below(20); Count > 0; --Count) {
    Paths.push_back(MakeRectangle(Bytes, Cells));
  }
  TPathsList List(3);
  TPathUtils::NormalizeTPaths(Paths, List);
  if (Paths.size() < 13) CheckByFirstVertices(List, Paths);
  ClipperLib::Clipper Clipper;
  Clipper.AddPaths(Paths, ClipperLib::ptSubject, true);
  TPolyTree Tree;
  Clipper.Execute(ClipperLib::ctUnion, Tree, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
  Require(Paths.size() < 13 || List == OutersOf(Tree, true), "many paths are grouped by union");
  CheckTree(Tree, Cells);
  return 0;
}
