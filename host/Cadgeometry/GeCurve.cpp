#include "host/Cadgeometry/GeCurve.h"

namespace tarnalgo {

double TGeCurve2D::ParamOfPoint(const TPoint2D& P, const TGeTolerance& Tol) const {
  if (IsEmpty()) return 0.0;
  if (Tol.PointEquals(P, StartPoint())) return ParamFrom();
  if (Tol.PointEquals(P, EndPoint())) return ParamTo();
  double Distance = 0.0;
  return NearestParam(P, Distance);
}

std::vector<TPoint2D> TGeCurve2D::Sample(double ChordEps) const {
  std::vector<TPoint2D> Points;
  AppendSamples(ChordEps, Points);
  return Points;
}

}  // namespace tarnalgo
