#include "host/Cadtypes/Circle.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// Four times the area of the triangle with these sides, 0 when there is none. Kahan's form: the
/// brackets keep the digits of a needle too.
long double FourfoldArea(long double A, long double B, long double C) {
  if (A < B) std::swap(A, B);
  if (B < C) std::swap(B, C);
  if (A < B) std::swap(A, B);
  const long double Needle = C - (A - B);
  if (!(Needle > 0.0L)) return 0.0L;
  return std::sqrt((A + (B + C)) * Needle * (C + (A - B)) * (A + (B - C)));
}

}  // namespace

TRect2D TCircle2D::GetBoundBox() const {
  const double Reach = std::abs(Radius);
  return {{Center.X - Reach, Center.Y - Reach}, {Center.X + Reach, Center.Y + Reach}};
}

TPoint2D TCircle2D::PointAtAngle(double A) const {
  return {Center.X + Radius * std::cos(A), Center.Y + Radius * std::sin(A)};
}

int TCircle2D::Intersect(const TCircle2D& Circle, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                         double Eps) const {
  if (!(Radius >= 0.0) || !(Circle.Radius >= 0.0)) return 0;
  const double Dist = Center.DistanceTo(Circle.Center);
  const double Sum = Radius + Circle.Radius;
  const double Diff = std::abs(Radius - Circle.Radius);
  if (!TMathUtils::IsInFloatRange(Dist, Diff, Sum, true, true, Eps)) return 0;
  const TPoint2D Way = (Circle.Center - Center).Normal();
  if (!std::isfinite(Dist) || Way == TPoint2D::FZero) return 0;  // concentric
  if (TMathUtils::FloatEquals(Dist, 0.0, Eps) && TMathUtils::FloatEquals(Diff, 0.0, Eps)) return 0;

  // Reckoned from the centre of the smaller circle, whose points have the smaller error.
  const bool FromThis = Radius <= Circle.Radius;
  const TPoint2D Origin = FromThis ? Center : Circle.Center;
  const TPoint2D Ahead = FromThis ? Way : -Way;
  const double Small = FromThis ? Radius : Circle.Radius;
  const double Large = FromThis ? Circle.Radius : Radius;

  const auto Result = [&](const TPoint2D& P) {
    return TIntersectPoint2D{P, (P - Center).Angle(), (P - Circle.Center).Angle()};
  };
  if (TMathUtils::FloatEquals(Dist, Sum, Eps)) {
    I1 = Result(Origin + Ahead * Small);
    return 1;
  }
  if (TMathUtils::FloatEquals(Dist, Diff, Eps)) {
    I1 = Result(Origin - Ahead * Small);
    return 1;
  }
  const double Along = (Dist - (Large - Small) * (Sum / Dist)) / 2;
  const auto Across =
      static_cast<double>(FourfoldArea(Dist, Radius, Circle.Radius) / (2.0L * Dist));
  const TPoint2D Foot = Origin + Ahead * Along;
  I1 = Result(Foot + Way.RotateCw90() * Across);
  I2 = Result(Foot + Way.RotateCcw90() * Across);
  return 2;
}

int TCircle2D::Intersect(const TLine2D& Line, TIntersectPoint2D& I1, TIntersectPoint2D& I2,
                         double Eps) const {
  const double Side = Line.DistanceDirect(Center);
  const double Dist = std::abs(Side);
  if (!(Radius >= 0.0) || !TMathUtils::FloatLessEquals(Dist, Radius, Eps) || !std::isfinite(Dist)) {
    return 0;
  }
  const TPoint2D Ahead = Line.GetDirection();
  const auto Result = [&](const TPoint2D& P) {
    return TIntersectPoint2D{P, (P - Center).Angle(), Line.ParamOfPoint(P, 0.0)};
  };
  if (Ahead == TPoint2D::FZero) {  // a point meets the circle only on its rim
    if (!TMathUtils::FloatEquals(Dist, Radius, Eps)) return 0;
    I1 = Result(Line.StartPoint);
    return 1;
  }
  const TPoint2D Foot = Center + Ahead.RotateCw90() * Side;
  if (TMathUtils::FloatEquals(Dist, Radius, Eps)) {
    I1 = Result(Foot);
    return 1;
  }
  const double Half = std::sqrt(Radius - Dist) * std::sqrt(Radius + Dist);
  I1 = Result(Foot - Ahead * Half);
  I2 = Result(Foot + Ahead * Half);
  return 2;
}

}  // namespace tarnalgo
