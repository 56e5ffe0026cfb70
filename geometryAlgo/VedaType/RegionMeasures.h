#pragma once  // geometryAlgo/VedaType/RegionMeasures.h

#include <cmath>

#include "geometryAlgo/VedaType/Enums.h"
#include "geometryAlgo/VedaType/Geometry.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Centroid of places with weights, summed relative to the first: far from the origin only the
/// distances between them count. Internal to the pages of this unit.
class TWeightedPlaces {
 public:
  void Add(const TPoint2D& P, double Weight) {
    if (FCount++ == 0) FOrigin = P;
    FMoment = FMoment + (P - FOrigin) * Weight;
    FSum = FSum + (P - FOrigin);
    FTotal += Weight;
  }
  double Total() const { return FTotal; }
  TPoint2D Centroid() const { return FOrigin + FMoment / FTotal; }
  /// The mean without weights, the origin when there is no place.
  TPoint2D Mean() const { return FCount == 0 ? TPoint2D::FZero : FOrigin + FSum / FCount; }

 private:
  int FCount = 0;
  TPoint2D FOrigin;
  TPoint2D FMoment;
  TPoint2D FSum;
  double FTotal = 0.0;
};

/// What regions have in common whatever their contours are made of: item 0 the outline, the others
/// holes. Internal to the pages of this unit.
template <class TContour>
class TRegionMeasures {
 public:
  explicit TRegionMeasures(const TVGeometry2DList<TContour>& Contours) : FContours(Contours) {}

  /// Absolute area of the outline less that of each hole.
  double Area() const {
    double Sum = 0.0;
    for (const TContour* Item : FContours) Sum += SignOf(Item) * std::abs(Item->Area());
    return Sum;
  }
  /// Centroid; that of the outline where no more area is left than the tolerance (1e-6) times the
  /// diagonal of its box; the origin when empty.
  TPoint2D Gravity() const {
    if (FContours.IsEmpty()) return TPoint2D::FZero;
    TWeightedPlaces Places;
    for (const TContour* Item : FContours) {
      Places.Add(Item->Gravity(), SignOf(Item) * std::abs(Item->Area()));
    }
    const TContour& Outline = *FContours.First();
    const double Nothing = kLinearTolerance * Outline.BoundBox().HypotLength();
    return std::abs(Places.Total()) > Nothing ? Places.Centroid() : Outline.Gravity();
  }
  /// Told by the outline, then by the holes in their order; the first that tells decides.
  TShapeRelation RelationWithPoint(const TPoint2D& P, double Eps) const {
    if (FContours.IsEmpty()) return srOut;
    const TShapeRelation InOutline = FContours.First()->RelationWithPoint(P, Eps);
    if (InOutline != srIn) return InOutline;
    for (int I = 1; I < FContours.Count(); ++I) {
      const TShapeRelation InHole = FContours[I]->RelationWithPoint(P, Eps);
      if (InHole == srOn) return srOn;
      if (InHole == srIn) return srOut;
    }
    return srIn;
  }

 private:
  double SignOf(const TContour* Item) const { return Item == FContours.First() ? 1.0 : -1.0; }

  const TVGeometry2DList<TContour>& FContours;
};

}  // namespace tarnalgo
