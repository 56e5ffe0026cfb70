#include "geometryAlgo/VedaType/LABHPolygon.h"

#include "geometryAlgo/VedaType/RegionMeasures.h"

namespace tarnalgo {

TLABHPolygon::TLABHPolygon(const TVHPolygon& Polygon) {
  Reserve(Polygon.Count());
  for (const TVPolyline2D* Item : Polygon) Add(std::make_unique<TLABPolyline>(*Item));
}

double TLABHPolygon::Area() const {
  return TRegionMeasures(*this).Area();
}

TPoint2D TLABHPolygon::Gravity() const {
  return TRegionMeasures(*this).Gravity();
}

TShapeRelation TLABHPolygon::RelationWithPoint(const TPoint2D& P, double Eps) const {
  return TRegionMeasures(*this).RelationWithPoint(P, Eps);
}

TLABHPolygonList::TLABHPolygonList(const TVHPolygonList& Polygons) {
  Reserve(Polygons.Count());
  for (const TVHPolygon* Item : Polygons) Add(std::make_unique<TLABHPolygon>(*Item));
}

}  // namespace tarnalgo
