#include <memory>
#include <polyclipping/clipper.hpp>
#include <utility>

#include "geometryAlgo/ClipperCall.h"
#include "geometryAlgo/GeometryExtend/PathUtils.h"

namespace tarnalgo {

namespace {

std::unique_ptr<TVPolyline2D> MakePolyline(const TPath& Path, double Scale) {
  return std::make_unique<TVPolyline2D>(Path, Scale);
}

/// Splits the contours of one region where they touch or cross themselves and puts the pieces
/// together again.
class TRegionSplitter {
 public:
  /// What lies within the outer contour, and what it leaves out.
  void SplitOuter(const TPath& Contour) { Split(Contour, FPieces, FHoles); }
  /// A hole that touches itself may enclose material.
  void SplitHole(const TPath& Contour) { Split(Contour, FHoles, FPieces); }

  /// Each piece with the holes in it.
  TPathsList Regions() {
    TPathsList List;
    std::vector<TIntRect> Boxes;
    for (const TPath& Piece : FPieces) {
      List.push_back({Piece});
      Boxes.push_back(TPathUtils::IntBoundbox(Piece));
    }
    for (TPath& Hole : FHoles) {
      const std::size_t Owner = SmallestAround(Hole, Boxes);
      if (Owner < List.size()) List[Owner].push_back(std::move(Hole));
    }
    return List;
  }

 private:
  static void Split(const TPath& Contour, TPaths& Inner, TPaths& Left) {
    TPaths Parts;
    CallClipper("TPathUtils.CreateStrictSimpleHPolygon",
                [&] { ClipperLib::SimplifyPolygon(Contour, Parts); });
    for (TPath& Part : Parts) {
      TPaths& Target = ClipperLib::Orientation(Part) ? Inner : Left;
      TPathUtils::SetIsClockwise(Part, false);
      Target.push_back(std::move(Part));
    }
  }

  std::size_t SmallestAround(const TPath& Hole, const std::vector<TIntRect>& Boxes) const {
    std::size_t Owner = FPieces.size();
    double Least = kStartOfMinimum;
    for (std::size_t I = 0; I < FPieces.size(); ++I) {
      if (!TPathUtils::PointInRect(Hole.front(), Boxes[I]) || !IsWithin(Hole, FPieces[I])) continue;
      const double Area = TPathUtils::Area(FPieces[I], true);
      if (Area < Least) {
        Least = Area;
        Owner = I;
      }
    }
    return Owner;
  }

  /// The first vertex off the outline decides; where all lie on it, the first middle of an edge
  /// does, looked at in half units.
  static bool IsWithin(const TPath& Hole, const TPath& Piece) {
    for (const TIntPoint& P : Hole) {
      const TShapeRelation Relation = TPathUtils::RelationWithPoint(Piece, P);
      if (Relation != srOn) return Relation == srIn;
    }
    TPath Doubled = Piece;
    for (TIntPoint& P : Doubled) P = P + P;
    TIntPoint Before = Hole.back();
    for (const TIntPoint& P : Hole) {
      const TShapeRelation Relation = TPathUtils::RelationWithPoint(Doubled, Before + P);
      if (Relation != srOn) return Relation == srIn;
      Before = P;
    }
    return true;
  }

  TPaths FPieces;
  TPaths FHoles;
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
