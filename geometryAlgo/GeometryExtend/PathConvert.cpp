#include <memory>
#include <polyclipping/clipper.hpp>
#include <utility>
#include <vector>

#include "geometryAlgo/GeometryExtend/PathUtils.h"

namespace tarnalgo {

TPath TPathUtils::CreatePath(const TVPolyline2D& Polyline, double Scale) {
  return Polyline.ToPath(Scale);
}

TPath TPathUtils::CreatePath(const TVPolyline2D* Polyline, double Scale) {
  return Polyline == nullptr ? TPath() : Polyline->ToPath(Scale);
}

TPath TPathUtils::CreatePath(std::span<const TPoint2D> Points, double Scale) {
  TPath Path(Points.size());
  ScaleIntPoints(Points.data(), Points.size(), Scale, Path.data());
  return Path;
}

TPath TPathUtils::CreatePath(const std::vector<TPoint2D>& Points, double Scale) {
  return CreatePath(std::span(Points), Scale);
}

TPath TPathUtils::CreatePath(const TVRect2D& Rect, double Scale) {
  const TPoint2D Corners[] = {Rect.GetTopLeft(), Rect.GetBottomLeft(), Rect.GetBottomRight(),
                              Rect.GetTopRight()};
  return CreatePath(std::span<const TPoint2D>(Corners), Scale);
}

TPaths TPathUtils::CreatePaths(const TVPolyline2DList& List, double Scale) {
  return List.ToPaths(Scale);
}

TPaths TPathUtils::CreatePaths(const TVPolyline2DList* List, double Scale) {
  return List == nullptr ? TPaths() : List->ToPaths(Scale);
}

std::vector<TPoint2D> TPathUtils::CreatePoint2DList(const TPath& Path, double Scale) {
  std::vector<TPoint2D> Points;
  Points.reserve(Path.size());
  for (const TIntPoint& P : Path) Points.push_back(CreatePoint2D(P, Scale));
  return Points;
}

TVPolyline2D TPathUtils::CreatePolyline(const TPath& Path, double Scale) {
  return TVPolyline2D(Path, Scale);
}

TVPolyline2DList TPathUtils::CreatePolylines(const TPaths& Paths, double Scale) {
  TVPolyline2DList List;
  AssignToPolylines(Paths, List, Scale);
  return List;
}

void TPathUtils::AssignToPolyline(const TPath& Path, TVPolyline2D& Polyline, double Scale) {
  Polyline.Assign(CreatePoint2DList(Path, Scale));
}

void TPathUtils::AssignToPolylines(const TPaths& Paths, TVPolyline2DList& List, double Scale) {
  std::vector<std::unique_ptr<TVPolyline2D>> Polylines;
  Polylines.reserve(Paths.size());
  for (const TPath& Path : Paths) Polylines.push_back(std::make_unique<TVPolyline2D>(Path, Scale));
  List.Reserve(static_cast<int>(Paths.size()));
  List.Clear();
  for (auto& Polyline : Polylines) List.Add(std::move(Polyline));
}

}  // namespace tarnalgo
