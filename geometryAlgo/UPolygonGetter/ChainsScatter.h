#pragma once  // geometryAlgo/UPolygonGetter/ChainsScatter.h

#include <vector>

#include "geometryAlgo/UPolygonGetter/ChainExtend.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadtypes/Constants.h"

namespace tarnalgo {

/// What `TMChainsScatter` did to a drawing.
struct TScatterStats {
  int EndsMoved = 0;  ///< Ends of curves that were snapped.
  int Cuts = 0;       ///< Places where a curve was cut.
  int Repeated = 0;   ///< Chains drawn again.
  int Swallowed = 0;  ///< Curves no larger than a node.
  int Stubs = 0;      ///< What stuck out by no more than the gap.
};

/// Cuts the curves of a drawing into chains that meet at their ends only: what `TTopoLinks` is made
/// of.
///
///     TMChainsScatter Scatter(0.1);
///     for (const TVPolyline2D& Curve : Drawn) Scatter.AddCurve(Curve);
///     TTopoLinks Links = TTopoLinks::CreateTopoLink(Scatter.GetChains());
///
/// First loose ends are snapped. An end is loose when no other end, and no point of another curve,
/// lies within 1e-6. It goes to another loose end, to a joint of ends or to the nearest point of a
/// curve, whichever is nearest within the gap (to a factor of two); of two loose ends the later one
/// moves. Where the end of a curve moves, what ends on its edge there, or was set on it, follows.
/// A curve is not closed, and an end not set on its own curve, unless the way between is longer
/// than two gaps. Then the curves are cut at all touches, crossings and overlaps
/// (`TSeglinesIntersector`). Ends of chains within `kNodeReach` of each other become one node;
/// where that moved an end, the chains are tested and cut again until they meet at nodes only. Each
/// chain knows by `Source` the stretch of its curve. What is drawn more than once is there once,
/// from the curve added first.
///
/// A sampled curve is cut where its chords meet; how far that is from the curve's own crossing
/// follows from the chord error of the sampling. Between them nothing is moved, smoothed or joined.
/// Tolerance: the gap, a length; below 1e-6, and NaN, nothing is snapped.
/// Ties: the first added.
class TMChainsScatter {
 public:
  /// An empty drawing whose ends will be snapped within `Gap`, a length.
  explicit TMChainsScatter(double Gap = kLinearTolerance) : FGap(Gap) {}
  virtual ~TMChainsScatter() = default;

  /// Adds a curve and answers its number. Closed when its last point repeats its first. A curve of
  /// fewer than two points, or with one that is not finite, gives no chains.
  int AddCurve(const TVPolyline2D& Curve);
  /// Curves added, those that give no chains included.
  int CurveCount() const { return static_cast<int>(FCurves.size()); }

  /// The chains of all curves, in the order of the curves and along them.
  /// Ownership: the result owns the chains; the curves stay here as they were added.
  /// Cost: O((n + k) log² n): n edges, k pairs of edges that meet and of loose ends with edges
  /// within the gap; edges drawn again with the same ends count as one.
  TMChainExtends GetChains();
  /// What the last `GetChains` did.
  const TScatterStats& Stats() const { return FStats; }

 private:
  double FGap;
  std::vector<std::vector<TPoint2D>> FCurves;
  TScatterStats FStats;
};

}  // namespace tarnalgo
