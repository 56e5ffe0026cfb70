#include "host/Cadgeometry/Nearest.h"

#include <cmath>

#include "host/Cadutils.h"

namespace tarnalgo {

double NearestOnSegment(const TLine2D& Line, const TPoint2D& P, double& Distance) {
  const double T = ClampParam(Line.ParamOfPoint(P, 0.0), 1.0);
  Distance = P.DistanceTo(Line.EvalPoint(T));
  return T;
}

double NearestOnArc(const TArc2D& Arc, const TPoint2D& Start, const TPoint2D& End,
                    const TPoint2D& P, double& Distance) {
  const double Turn = std::abs(Arc.SweepAngle);
  const TPoint2D ToP = P - Arc.Center;
  const double Angle = ToP.Angle();
  const double Offset = std::signbit(Arc.SweepAngle)
                            ? TMathUtils::CycInc(Arc.StartAngle, -Angle, kFullTurn)
                            : TMathUtils::CycInc(Angle, -Arc.StartAngle, kFullTurn);
  if (Turn > 0.0 && Offset <= Turn && ToP != TPoint2D::FZero) {
    Distance = std::abs(ToP.Mag() - Arc.Radius);
    return Offset / Turn;
  }
  const double ToStart = P.DistanceTo(Start);
  const double ToEnd = P.DistanceTo(End);
  Distance = std::fmin(ToStart, ToEnd);
  return ToEnd < ToStart && ToP != TPoint2D::FZero ? 1.0 : 0.0;
}

double SequenceParam(int Index, double T, bool IsLast, const TPoint2D& End, const TPoint2D& Next) {
  if (T >= 1.0 && !IsLast && !End.Equals(Next)) return std::nextafter(Index + 1.0, 0.0);
  return Index + T;
}

}  // namespace tarnalgo
