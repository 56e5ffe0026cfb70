#include <memory>
#include <polyclipping/clipper.hpp>
#include <utility>

#include "geometryAlgo/ClipperCall.h"
#include "geometryAlgo/GeometryExtend/PathUtils.h"

namespace tarnalgo {

namespace {

constexpr std::size_t kFirstUnionCount = 13;
constexpr std::size_t kOuter = static_cast<std::size_t>(-1);

/// The outer that path `I` is a hole of, `kOuter` for an outer.
std::size_t ParentOf(const TPaths& Paths, const std::vector<std::size_t>& Parents, std::size_t I) {
  if (Paths[I].empty()) return kOuter;
  for (std::size_t J = I; J-- > 0;) {
    if (ClipperLib::PointInPolygon(Paths[I].front(), Paths[J]) == 0) continue;
    return Parents[J] == kOuter ? J : kOuter;
  }
  return kOuter;
}

TPathsList GroupByFirstVertices(const TPaths& Paths) {
  TPathsList List;
  std::vector<std::size_t> Parents;
  std::vector<std::size_t> Places;  // of the outers in the list
  for (std::size_t I = 0; I < Paths.size(); ++I) {
    Parents.push_back(ParentOf(Paths, Parents, I));
    Places.push_back(List.size());
    if (Parents[I] == kOuter) {
      List.push_back({Paths[I]});
    } else {
      List[Places[Parents[I]]].push_back(Paths[I]);
    }
  }
  return List;
}

/// The node's contour and those of its children, taken out of the tree.
TPaths TakeRegion(TPolyNode& Node) {
  TPaths Region;
  Region.reserve(Node.Childs.size() + 1);
  if (!Node.Contour.empty()) Region.push_back(std::move(Node.Contour));
  for (TPolyNode* Hole : Node.Childs) {
    if (!Hole->Contour.empty()) Region.push_back(std::move(Hole->Contour));
  }
  return Region;
}

TPathsList GroupByUnion(const TPaths& Paths) {
  TPolyTree Tree;
  CallClipper("TPathUtils.NormalizeTPaths", [&] {
    ClipperLib::Clipper Clipper;
    Clipper.AddPaths(Paths, ClipperLib::ptSubject, true);
    Clipper.Execute(ClipperLib::ctUnion, Tree, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
  });
  TPathsList List;
  List.reserve(Tree.Childs.size());
  for (TPolyNode* Outer : Tree.Childs) List.push_back(TakeRegion(*Outer));
  return List;
}

std::unique_ptr<TTreeNode<TVPolyline2D>> MakeTreeNode(const TPolyNode& Node, double Scale) {
  return std::make_unique<TTreeNode<TVPolyline2D>>(TVPolyline2D(Node.Contour, Scale));
}

/// Hangs all that lies in `Top` below the root of the tree; without recursion, however deep.
void AddNesting(TMultiTree<TVPolyline2D>& Tree, const TPolyNode& Top, double Scale) {
  std::vector<std::pair<const TPolyNode*, TTreeNode<TVPolyline2D>*>> Open{{&Top, Tree.Root()}};
  while (!Open.empty()) {
    const auto [From, To] = Open.back();
    Open.pop_back();
    for (const TPolyNode* Child : From->Childs) {
      Open.emplace_back(Child, Tree.AddChildNode(To, MakeTreeNode(*Child, Scale)));
    }
  }
}

}  // namespace

TPaths TPathUtils::ExtractHoles(const TPaths& Paths, bool OuterOrientation) {
  TPaths Holes;
  for (std::size_t I = 1; I < Paths.size(); ++I) {
    if (ClipperLib::Orientation(Paths[I]) != OuterOrientation) Holes.push_back(Paths[I]);
  }
  return Holes;
}

void TPathUtils::NormalizeTPaths(const TPaths& Paths, TPathsList& List) {
  TPathsList Groups =
      Paths.size() < kFirstUnionCount ? GroupByFirstVertices(Paths) : GroupByUnion(Paths);
  List.swap(Groups);
}

TPathsList TPathUtils::PolyTreeToPathsList(const TPolyTree& Tree) {
  TPathsList List;
  for (const TPolyNode* Node = Tree.GetFirst(); Node != nullptr; Node = Node->GetNext()) {
    if (Node->IsHole() || Node->IsOpen() || Node->Contour.empty()) continue;
    TPaths Region{Node->Contour};
    for (const TPolyNode* Hole : Node->Childs) {
      if (!Hole->Contour.empty()) Region.push_back(Hole->Contour);
    }
    List.push_back(std::move(Region));
  }
  return List;
}

TMultiTreeList<TVPolyline2D> TPathUtils::CreatePolylineTreeList(const TPolyTree& Tree,
                                                                double Scale) {
  TMultiTreeList<TVPolyline2D> List;
  for (const TPolyNode* Top : Tree.Childs) {
    auto Nesting = std::make_unique<TMultiTree<TVPolyline2D>>(TVPolyline2D(Top->Contour, Scale));
    AddNesting(*Nesting, *Top, Scale);
    List.Add(std::move(Nesting));
  }
  return List;
}

}  // namespace tarnalgo
