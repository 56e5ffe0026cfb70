#pragma once  // geometryAlgo/VedaType/ShapeRelationUtils.h

#include <vector>

#include "geometryAlgo/VedaType/Enums.h"
#include "geometryAlgo/VedaType/HPolygon.h"

namespace tarnalgo {

/// Where a region with holes lies with respect to another one.
class TShapeRelationUtils {
 public:
  /// `Parts[I][J]` tells where part J of the second region lies with respect to part I of the
  /// first, as `TVPolyline2D::RelationWith` does; part 0 is the outline, the others are holes, each
  /// within its outline and outside the other holes. All rows have one length.
  using TParts = std::vector<std::vector<TShapeRelation>>;

  /// Where the second region lies with respect to the first, the second being the subject, from the
  /// relations of their parts:
  ///
  /// | outlines | holes | answer |
  /// |---|---|---|
  /// | `srDeviate`, `srOn`, `srCross` | | the same |
  /// | one in the other, or equal | one region lies in a hole of the other | `srDeviate` |
  /// | | one region fills a hole of the other | `srOn` |
  /// | | the second region keeps out of the first one's holes | `srContained` |
  /// | | the first region keeps out of the second one's holes | `srContain` |
  /// | | both | `srEqual` |
  /// | | neither | `srCross` |
  ///
  /// A region keeps out of the other's hole when the hole is apart from its outline, or lies in one
  /// of its own holes. Where holes share edges with another contour of their region, so that two
  /// of them together may surround what neither does, the answer may be `srCross` for a region that
  /// is in truth inside, or outside and touching. `srDeviate` when there are no parts.
  /// Errors: rows of different lengths, `EParamError`.
  static TShapeRelation CalcRegionRelation(const TParts& Parts);
  /// The same for two regions. One that touches the hole in which it lies is `srOn`.
  /// Cost: `TVPolyline2D::RelationWith` for each pair of contours whose boxes meet.
  static TShapeRelation CalcRegionRelation(const TVHPolygon& First, const TVHPolygon& Second,
                                           double Eps = kLinearTolerance);
};

}  // namespace tarnalgo
