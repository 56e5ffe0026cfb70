#include "host/Cadgeometry/Nearest.h"

#include <cmath>

namespace tarnalgo {

double NearestOnSegment(const TLine2D& Line, const TPoint2D& P, double& Distance) {
  const double T = ClampParam(Line.ParamOfPoint(P, 0.0), 1.0);
  Distance = P.DistanceTo(Line.EvalPoint(T));
  return T;
}

double SequenceParam(int Index, double T, bool IsLast, const TPoint2D& End, const TPoint2D& Next) {
  if (T >= 1.0 && !IsLast && !End.Equals(Next)) return std::nextafter(Index + 1.0, 0.0);
  return Index + T;
}

}  // namespace tarnalgo
