#pragma once  // host/Cadgeometry/Nearest.h

#include "host/Cadtypes/Arc.h"
#include "host/Cadtypes/Line.h"

namespace tarnalgo {

/// Parameter in [0, 1] of the point of a segment nearest to `P`, 0 for a segment of no length;
/// `Distance` receives how far `P` is from there.
double NearestOnSegment(const TLine2D& Line, const TPoint2D& P, double& Distance);

/// The same for an arc whose ends are known as `Start` and `End`.
/// Ties: the smallest parameter; the centre is nearest to all and answers 0.
double NearestOnArc(const TArc2D& Arc, const TPoint2D& Start, const TPoint2D& End,
                    const TPoint2D& P, double& Distance);

/// `T` moved into [0, `High`]; NaN becomes 0.
inline double ClampParam(double T, double High) {
  if (!(T > 0.0)) return 0.0;
  return T < High ? T : High;
}

/// Parameter `T` of piece `Index` in a sequence of pieces. The end of a piece whose successor
/// starts elsewhere is the last parameter before the whole one, which belongs to the successor.
double SequenceParam(int Index, double T, bool IsLast, const TPoint2D& End, const TPoint2D& Next);

}  // namespace tarnalgo
