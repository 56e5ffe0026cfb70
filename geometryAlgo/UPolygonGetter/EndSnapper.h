#pragma once  // geometryAlgo/UPolygonGetter/EndSnapper.h

#include <cstddef>
#include <vector>

#include "geometryAlgo/UPolygonGetter/CompareTool.h"
#include "host/Cadtypes/Constants.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// A curve on its way to become chains. Internal to the pages of this unit.
struct TScatterCurve {
  int Number = -1;               // of the curve as it was added
  std::vector<TPoint2D> Points;  // finite; none when there is nothing to cut
  std::vector<double> Params;    // of each point on the curve as it was added
  std::vector<TCutNode> Cuts;    // along these points, in no order, without the ends

  int EdgeCount() const { return static_cast<int>(Points.size()) - 1; }
  bool IsClosed() const { return Points.front().Equals(Points.back()); }
};

/// Moves the loose ends of curves to what is near, see `TMChainsScatter`. Internal to the pages of
/// this unit.
class TEndSnapper {
 public:
  TEndSnapper(std::vector<TScatterCurve>& Curves, double Gap) : FCurves(Curves), FGap(Gap) {}

  /// How many ends were moved. Where one was set on a curve, that has a cut there.
  int Run();

 private:
  /// The nearest place on the edges of curves.
  struct TFoot {
    int Curve = -1;
    TCutNode Cut;
    double Distance = kStartOfMinimum;
  };
  /// `Curve` starts or ends with it. Done is an end that is not loose, or no longer.
  struct TEnd {
    int Curve;
    bool IsTail;
    int First = -1;  // the first end in its place
    bool IsDone = false;
    bool IsSet = false;  // it lies on the curve of its foot and has to stay there
    bool WasMoved = false;
    TFoot Foot = {};
  };
  class TCells;

  static std::size_t Index(int I) { return static_cast<std::size_t>(I); }
  TScatterCurve& CurveOf(const TEnd& End) { return FCurves[Index(End.Curve)]; }
  TPoint2D& PointOf(const TEnd& End);

  void FindLooseEnds();
  void FindFeet();
  void TryFoot(TEnd& End, int Curve, int Edge);
  void MatchWithin(double Reach);
  bool MayJoin(const TEnd& A, const TEnd& B) const;
  bool MayGoTo(const TEnd& End, const TPoint2D& Place);
  void Join(int A, int B);
  void MoveTo(TEnd& End, const TPoint2D& Place);
  void FollowCurves();
  bool Follow(TEnd& End);

  std::vector<TScatterCurve>& FCurves;
  double FGap;
  int FMoved = 0;
  std::vector<std::vector<double>> FLengths;  // along each curve, at its points
  std::vector<TEnd> FEnds;
  std::vector<int> FJoints;  // places where ends meet, each by an end that is there
};

}  // namespace tarnalgo
