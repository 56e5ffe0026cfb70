#pragma once  // host/Cadgeometry/GePolyline.h

#include <cstddef>
#include <utility>

#include "host/Cadgeometry/GeCurve.h"
#include "host/Cadtypes/Line.h"

namespace tarnalgo {

/// A straight-edged polyline as a host curve, over an array of points. Closed when its last point
/// repeats its first.
/// Errors: an index outside 0 .. count − 1 raises `EParamError`.
class TGePolyline2D : public TGeCurve2D {
 public:
  /// `Count` zero points.
  /// Errors: a negative count or one beyond `kMostItems`, `EParamError`.
  explicit TGePolyline2D(int Count = 0);
  /// Takes the points over as they are, repeated ones included.
  explicit TGePolyline2D(TDynPoints2D Points) : FPoints(std::move(Points)) {}

  /// An independent polyline.
  std::unique_ptr<TGePolyline2D> Clone() const {
    return std::unique_ptr<TGePolyline2D>(NewClone());
  }

  /// Vertices; a closed polyline counts its first point twice.
  int GetPointCount() const { return static_cast<int>(FPoints.size()); }
  /// The vertex at parameter `Index`.
  TPoint2D GetPoint(int Index) const { return FPoints[CheckedIndex(Index)]; }
  /// Moves one vertex. A closing point is a vertex of its own and does not follow.
  void SetPoint(int Index, const TPoint2D& P) { FPoints[CheckedIndex(Index)] = P; }
  /// The vertices in order.
  const TDynPoints2D& Points() const { return FPoints; }

  bool IsEmpty() const override { return FPoints.empty(); }
  TPoint2D StartPoint() const override;
  TPoint2D EndPoint() const override;
  double ParamTo() const override { return EdgeCount(); }
  TPoint2D PointAtParam(double T) const override;
  /// Cost: linear.
  double NearestParam(const TPoint2D& P, double& Distance) const override;
  void Reverse() override;
  TRect2D GetBoundBox() const override;
  double CurveLength() const override;
  void AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const override;
  void AppendPieces(std::vector<TCurvePiece>& Pieces) const override;

 protected:
  TGePolyline2D* NewClone() const override { return new TGePolyline2D(*this); }

 private:
  int EdgeCount() const { return FPoints.empty() ? 0 : GetPointCount() - 1; }
  TLine2D Edge(int Index) const;
  std::size_t CheckedIndex(int Index) const;

  TDynPoints2D FPoints;
};

}  // namespace tarnalgo
