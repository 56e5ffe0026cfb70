#pragma once  // geometryAlgo/VedaType/LABHPolygon.h

#include <memory>

#include "geometryAlgo/VedaType/Enums.h"
#include "geometryAlgo/VedaType/HPolygon.h"
#include "geometryAlgo/VedaType/LABPolyline.h"

namespace tarnalgo {

/// A region bounded by segment chains, so that arcs and curves stay what they are: item 0 is its
/// outline, the other items are holes in it. Owns its chains.
///
///     TLABHPolygon Washer;
///     Washer.Add(std::make_unique<TLABPolyline>(Rim));
///     Washer.Add(std::make_unique<TLABPolyline>(Bore));
///     if (Washer.RelationWithPoint(Pierce) == srIn) ...
///
/// Unlike `TVHPolygon` it turns no contour: chains keep the sense in which they come. Measures
/// count an open chain as the ring it becomes when its ends are joined.
class TLABHPolygon : public TVGeometry2DList<TLABPolyline> {
 public:
  TLABHPolygon() = default;
  /// Each contour as a chain of lines, in the same sense.
  explicit TLABHPolygon(const TVHPolygon& Polygon);

  /// A fresh empty region.
  std::unique_ptr<TLABHPolygon> New() const { return std::unique_ptr<TLABHPolygon>(DoNew()); }
  /// A deep copy.
  std::unique_ptr<TLABHPolygon> Clone() const { return std::unique_ptr<TLABHPolygon>(DoClone()); }

  /// Absolute area of the outline less that of each hole, true to arcs and Beziers: negative when
  /// the holes exceed the outline. 0 when empty.
  double Area() const override;
  /// Centroid of the region, as exactly. Where no more area is left than the tolerance (1e-6) times
  /// the diagonal of the outline's box, that of the outline; the origin when empty.
  TPoint2D Gravity() const;
  /// Where `P` lies, as `TVHPolygon::RelationWithPoint`, true to arcs and Beziers.
  /// Cost: `TLABPolyline::RelationWithPoint` for each chain looked at.
  TShapeRelation RelationWithPoint(const TPoint2D& P, double Eps = kLinearTolerance) const;

 protected:
  TLABHPolygon* DoNew() const override { return new TLABHPolygon; }
  TLABHPolygon* DoClone() const override {
    return static_cast<TLABHPolygon*>(TVGeometry2DList::DoClone());  // begun by DoNew
  }
};

/// A list of such regions that it owns.
class TLABHPolygonList : public TVGeometry2DList<TLABHPolygon> {
 public:
  using TVGeometry2DList::TVGeometry2DList;
  /// Each region as chains of lines.
  explicit TLABHPolygonList(const TVHPolygonList& Polygons);

  /// A fresh empty list.
  std::unique_ptr<TLABHPolygonList> New() const {
    return std::unique_ptr<TLABHPolygonList>(DoNew());
  }
  /// Deep copies of all regions, in the same order.
  std::unique_ptr<TLABHPolygonList> Clone() const {
    return std::unique_ptr<TLABHPolygonList>(DoClone());
  }

  /// `TLABPolyline::CollinearSmooth` of every chain.
  void CollinearSmooth(double Eps = kLinearTolerance);

 protected:
  TLABHPolygonList* DoNew() const override { return new TLABHPolygonList; }
  TLABHPolygonList* DoClone() const override {
    return static_cast<TLABHPolygonList*>(TVGeometry2DList::DoClone());  // begun by DoNew
  }
};

}  // namespace tarnalgo
