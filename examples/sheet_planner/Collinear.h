#pragma once  // examples/sheet_planner/Collinear.h

#include <vector>

#include "host/Cadtypes.h"

namespace sheet_planner {

/// Edges of nearly one direction, as positions in the caller's list, in ascending order of angle.
struct TDirectionClass {
  std::vector<int> Members;
  double Angle = 0.0;   // of the member in the middle: where most are parallel, theirs
  double Spread = 0.0;  // from the smallest angle to the largest, radians
};

/// Cuts a list of angles (radians, of undirected lines, in one half turn) into classes that are no
/// wider than `MaxSpread`. Where a full class has to end, it ends at the widest gap in its upper
/// half, so that angles that differ by rounding stay together.
/// Cost: O(n log n).
std::vector<TDirectionClass> DirectionClasses(const std::vector<double>& Angles, double MaxSpread);

/// Direction of the line of an edge in (−0.001, π − 0.001]: nearly horizontal edges agree whichever
/// way they tilt.
double UndirectedAngle(const tarnalgo::TLine2D& Line);

/// Coordinates along a direction and across it, to its left. The origin lies with the edges, so
/// that sheets far from the drawing's origin lose nothing.
struct TDirectionFrame {
  tarnalgo::TPoint2D Origin;
  tarnalgo::TPoint2D Axis;

  TDirectionFrame(double Angle, const tarnalgo::TPoint2D& AOrigin);

  double Along(const tarnalgo::TPoint2D& P) const { return (P - Origin).DotMul(Axis); }
  double Across(const tarnalgo::TPoint2D& P) const { return Axis.CrossMul(P - Origin); }
};

}  // namespace sheet_planner
