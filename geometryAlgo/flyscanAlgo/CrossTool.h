#pragma once  // geometryAlgo/flyscanAlgo/CrossTool.h

#include <vector>

#include "containers/Container/Collection.h"
#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/Point.h"
#include "geometryAlgo/VedaType/RTree.h"
#include "host/Cadgeometry.h"

namespace tarnalgo {

/// Where a pass or a connection crosses other curves, above all the holes of the sheet.
class TCrossTool {
 public:
  /// Appends `P` to `Points` and its cell to `Keys`, unless the cell is there already.
  /// Tolerance: the cells of a lattice of 1e-6; two points in one cell are one, however near two
  /// points across a cell border are, they stay two.
  static void AddPoint(TCollection<TPointL2D>& Keys, std::vector<TPoint2D>& Points,
                       const TPoint2D& P);

  ///@{
  /// Appends where `TransLine` meets the other curve: single points, touches and ends included, to
  /// `Points`; stretches that both curves run along, by their two ends, to `Lines`. A point that
  /// `Points` holds already, as `AddPoint` judges it, is not repeated. A composite may hold curves
  /// of every kind, composites included.
  /// Tolerance: 1e-6, a length.
  static void Cross(const TGeCompositeCurve2D& TransLine, const TGeCircularArc2D& Arc,
                    std::vector<TPoint2D>& Points, std::vector<TVLine2D>& Lines);
  static void Cross(const TGeCompositeCurve2D& TransLine, const TGeCompositeCurve2D& Other,
                    std::vector<TPoint2D>& Points, std::vector<TVLine2D>& Lines);
  ///@}

  /// Deletes the points at `P` from `Points` and answers whether any is left: touching at a shared
  /// end `P` is no crossing.
  /// Tolerance: 1e-4, a length.
  static bool CheckCross(const TPoint2D& P, std::vector<TPoint2D>& Points);

  /// `TransLine` crosses one of the holes (`TFlyHoles::RTree`): it shares a stretch with its
  /// outline, or a point other than its own start. So a connection wholly inside a hole crosses
  /// nothing, one that starts on the outline and ends inside does not cross it, one that ends on it
  /// does.
  /// Tolerance: composite holes and arcs 1e-6, a length. Any other hole, and `TransLine` against
  /// it, is sampled with a chord error of 0.1, so that crossings nearer than this are not sure.
  /// Cost: a search of the index, then the crossings with each hole whose box comes near.
  static bool CheckCrossWithHoles(const TGeCompositeCurve2D& TransLine,
                                  const TRTree<TGeCurve2D*>& HoleRTree);
};

}  // namespace tarnalgo
