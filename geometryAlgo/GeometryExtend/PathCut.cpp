#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>
#include <utility>

#include "containers/Container/MergeSort.h"
#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/VedaType/EdgeTree.h"
#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

namespace {

/// Cuts one path at the places where others meet it.
class TPathCutter {
 public:
  explicit TPathCutter(const TPath& Path)
      : FPath(Path), FPoints(TPathUtils::CreatePoint2DList(Path, kIntegerScale)), FEdges(FPoints) {}

  /// Collects the places on this path that the cutter comes within `Eps` of.
  void AddCutter(const TPath& Cutter, double Eps) {
    const std::vector<TPoint2D> Points = TPathUtils::CreatePoint2DList(Cutter, kIntegerScale);
    const TEdgeTree Others(Points);
    FEdges.VisitPairs(Others, Eps, [&](int Mine, int Other) {
      TIntersectPoint2D First;
      TIntersectPoint2D Second;
      const int Places =
          FEdges.Edge(Mine).RelationWithSegLine2(Others.Edge(Other), First, Second, Eps);
      if (Places >= 1) AddPlace(Mine, First.Param1);
      if (Places == 2) AddPlace(Mine, Second.Param1);
      return false;
    });
  }

  TPaths Parts() {
    MergeSort(FPlaces, TPathUtils::TParamComparer());
    for (const TPathUtils::TTempRec& Place : FPlaces) CutAt(Place);
    for (; FNextVertex < FPath.size(); ++FNextVertex) Append(FPath[FNextVertex]);
    if (HasLength(FPart) || FParts.empty()) {
      FParts.push_back(std::move(FPart));
    } else {
      FIsSeamCut = true;  // nothing of a length comes after the last cut
    }
    JoinAcrossSeam();
    return std::move(FParts);
  }

 private:
  static bool HasLength(const TPath& Part) {
    return std::any_of(Part.begin(), Part.end(),
                       [&](const TIntPoint& P) { return P != Part.front(); });
  }

  /// A place that rounds to an end of its edge is that vertex.
  void AddPlace(int Edge, double T) {
    const auto From = static_cast<std::size_t>(Edge);
    const std::size_t To = std::min(From + 1, FPath.size() - 1);
    const double Param = static_cast<double>(From) + std::clamp(T, 0.0, 1.0);
    const TIntPoint P =
        From == To ? FPath[From] : TPathUtils::PointByParam(FPath, std::min(Param, LastParam()));
    const TPointL2D Point = TPathUtils::CreatePointL2D(P);
    if (P == FPath[From]) {
      FPlaces.push_back({Point, static_cast<double>(From)});
    } else if (P == FPath[To]) {
      FPlaces.push_back({Point, static_cast<double>(To)});
    } else {
      FPlaces.push_back({Point, Param});
    }
  }
  double LastParam() const { return static_cast<double>(FPath.size() - 1); }

  void Append(const TIntPoint& P) { FPart.push_back(P); }

  /// Brings the part up to the place and begins the next one there, unless nothing of a length
  /// lies between this place and the one before.
  void CutAt(const TPathUtils::TTempRec& Place) {
    const TIntPoint P(Place.Point.X, Place.Point.Y);
    for (; static_cast<double>(FNextVertex) <= Place.Param; ++FNextVertex) {
      Append(FPath[FNextVertex]);
    }
    if (FPart.back() != P) Append(P);
    if (!HasLength(FPart)) {
      if (FParts.empty()) FIsSeamCut = true;  // at the start, or at one of several points there
      return;
    }
    FParts.push_back(std::exchange(FPart, {P}));
  }

  /// The seam of a closed path is no cut: the last part goes on in the first.
  void JoinAcrossSeam() {
    if (FIsSeamCut || FParts.size() < 2 || !TPathUtils::IsClosed(FPath)) return;
    TPath Joined = std::move(FParts.back());
    FParts.pop_back();
    Joined.insert(Joined.end(), FParts.front().begin() + 1, FParts.front().end());
    FParts.front() = std::move(Joined);
  }

  const TPath& FPath;
  std::vector<TPoint2D> FPoints;
  TEdgeTree FEdges;
  std::vector<TPathUtils::TTempRec> FPlaces;
  TPaths FParts;
  TPath FPart;                  // grows from the last cut on
  std::size_t FNextVertex = 0;  // of the path, not in a part yet
  bool FIsSeamCut = false;
};

}  // namespace

TPaths TPathUtils::CutByPath(const TPath& Path, const TPath& Cutter, double Tolerance) {
  return CutByPaths(Path, TPaths{Cutter}, Tolerance);
}

TPaths TPathUtils::CutByPaths(const TPath& Path, const TPaths& Cutters, double Tolerance) {
  if (Path.empty()) return {};
  TPathCutter Cutter(Path);
  for (const TPath& Other : Cutters) Cutter.AddCutter(Other, Tolerance);
  return Cutter.Parts();
}

}  // namespace tarnalgo
