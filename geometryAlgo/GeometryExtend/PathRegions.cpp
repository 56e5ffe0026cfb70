#include <algorithm>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <utility>

#include "geometryAlgo/ClipperCall.h"
#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/GeometryExtend/RingLoops.h"

namespace tarnalgo {

namespace {

std::unique_ptr<TVPolyline2D> MakePolyline(const TPath& Path, double Scale) {
  return std::make_unique<TVPolyline2D>(Path, Scale);
}

/// A contour that does not touch itself.
struct TLoop {
  explicit TLoop(TPath&& Path)
      : Ring(std::move(Path)),
        Box(TPathUtils::IntBoundbox(Ring)),
        Area(TPathUtils::Area(Ring, true)) {}

  /// The first vertex off this loop decides; where all lie on it, the first middle of an edge does,
  /// looked at in half units.
  bool Holds(const TLoop& Other) const {
    if (!TPathUtils::PointInRect(Other.Ring.front(), Box)) return false;
    for (const TIntPoint& P : Other.Ring) {
      const TShapeRelation Relation = TPathUtils::RelationWithPoint(Ring, P);
      if (Relation != srOn) return Relation == srIn;
    }
    TPath Doubled = Ring;
    for (TIntPoint& P : Doubled) P = P + P;
    TIntPoint Before = Other.Ring.back();
    for (const TIntPoint& P : Other.Ring) {
      const TShapeRelation Relation = TPathUtils::RelationWithPoint(Doubled, Before + P);
      if (Relation != srOn) return Relation == srIn;
      Before = P;
    }
    return true;
  }

  TPath Ring;
  TIntRect Box;
  double Area;
};

void SortLargestFirst(std::vector<TLoop>& Loops) {
  std::stable_sort(Loops.begin(), Loops.end(),
                   [](const TLoop& A, const TLoop& B) { return A.Area > B.Area; });
}

/// Splits the contours of one region where they touch or cross themselves and puts the pieces
/// together again.
class TRegionSplitter {
 public:
  /// What lies within the outer contour, and what it leaves out.
  void SplitOuter(const TPath& Contour) { Split(Contour, FPieces, FHoles); }
  /// A hole that touches itself may enclose material.
  void SplitHole(const TPath& Contour) { Split(Contour, FHoles, FPieces); }

  /// Each piece with the holes in it, the largest piece first.
  TPathsList Regions() {
    SortLargestFirst(FPieces);
    TPathsList List;
    for (const TLoop& Piece : FPieces) List.push_back({Piece.Ring});
    for (TLoop& Hole : FHoles) {
      for (std::size_t I = FPieces.size(); I-- > 0;) {  // the smallest around it
        if (!FPieces[I].Holds(Hole)) continue;
        List[I].push_back(std::move(Hole.Ring));
        break;
      }
    }
    return List;
  }

 private:
  /// Loops within an even number of others enclose what the contour does. The sense of the
  /// library's answer does not tell: loops that it parts may come the wrong way round.
  static void Split(const TPath& Contour, std::vector<TLoop>& Inner, std::vector<TLoop>& Left) {
    TPaths Parts;
    CallClipper("TPathUtils.CreateStrictSimpleHPolygon",
                [&] { ClipperLib::SimplifyPolygon(Contour, Parts); });
    std::vector<TLoop> Loops;
    for (TPath& Ring : LoopsOfRings(Parts)) {
      TPathUtils::SetIsClockwise(Ring, false);
      Loops.emplace_back(std::move(Ring));
    }
    std::erase_if(Loops, [](const TLoop& Loop) { return Loop.Area == 0.0; });
    SortLargestFirst(Loops);
    std::vector<bool> IsInner;
    for (std::size_t I = 0; I < Loops.size(); ++I) {
      bool IsEven = true;
      for (std::size_t J = 0; J < I; ++J) {
        if (Loops[J].Holds(Loops[I])) IsEven = !IsEven;
      }
      IsInner.push_back(IsEven);
    }
    for (std::size_t I = 0; I < Loops.size(); ++I) {
      (IsInner[I] ? Inner : Left).push_back(std::move(Loops[I]));
    }
  }

  std::vector<TLoop> FPieces;
  std::vector<TLoop> FHoles;
};

}  // namespace

TPaths TPathUtils::CreatePaths(const TVHPolygonList& List, double Scale) {
  TPaths Paths;
  for (const TVHPolygon* Polygon : List) {
    for (const TVPolyline2D* Contour : *Polygon) Paths.push_back(Contour->ToPath(Scale));
  }
  return Paths;
}

TPaths TPathUtils::CreatePaths(const TVHPolygonList* List, double Scale) {
  return List == nullptr ? TPaths() : CreatePaths(*List, Scale);
}

TVHPolygon TPathUtils::CreateHPolygon(const TPaths& Paths, double Scale) {
  if (Paths.empty()) return TVHPolygon();
  std::unique_ptr<TVPolyline2D> Outline = MakePolyline(Paths.front(), Scale);
  const bool IsClockwise = Outline->IsClockwise();
  TVHPolygon Polygon(IsClockwise);
  Polygon.Add(std::move(Outline));
  for (std::size_t I = 1; I < Paths.size(); ++I) {
    Polygon.Add(MakePolyline(Paths[I], Scale));
    Polygon.Last()->SetIsClockwise(!IsClockwise);  // the polygon turns closed contours only
  }
  return Polygon;
}

TVHPolygon TPathUtils::CreateHPolygon(const TPolyNode& Node, double Scale) {
  TPaths Paths{Node.Contour};
  for (const TPolyNode* Child : Node.Childs) Paths.push_back(Child->Contour);
  return CreateHPolygon(Paths, Scale);
}

TVHPolygonList TPathUtils::CreateHPolygons(const TPolyTree& Tree, double Scale) {
  TVHPolygonList List;
  for (const TPaths& Region : PolyTreeToPathsList(Tree)) {
    List.Add(std::make_unique<TVHPolygon>(CreateHPolygon(Region, Scale)));
  }
  return List;
}

TVHPolygonList TPathUtils::CreateStrictSimpleHPolygon(const TPolyNode& Node, double Scale) {
  TRegionSplitter Splitter;
  Splitter.SplitOuter(Node.Contour);
  for (const TPolyNode* Hole : Node.Childs) Splitter.SplitHole(Hole->Contour);
  TVHPolygonList List;
  for (const TPaths& Region : Splitter.Regions()) {
    List.Add(std::make_unique<TVHPolygon>(CreateHPolygon(Region, Scale)));
  }
  return List;
}

}  // namespace tarnalgo
