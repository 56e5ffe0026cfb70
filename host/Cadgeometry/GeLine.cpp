#include "host/Cadgeometry/GeLine.h"

#include "host/Cadgeometry/Nearest.h"
#include "host/Cadgeometry/Sampling.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

TPoint2D TGeLine2D::PointAtParam(double T) const {
  return FLine.EvalPoint(ClampParam(T, 1.0));
}

double TGeLine2D::NearestParam(const TPoint2D& P, double& Distance) const {
  return NearestOnSegment(FLine, P, Distance);
}

void TGeLine2D::AppendSamples(double /*ChordEps*/, std::vector<TPoint2D>& Points) const {
  TAppendGuard Guard(Points);
  AppendDistinct(FLine.StartPoint, Points);
  Points.push_back(FLine.EndPoint);
  Guard.Keep();
}

void TGeLine2D::AppendPieces(std::vector<TCurvePiece>& Pieces) const {
  Pieces.push_back(TCurvePiece::OfLine(FLine, 0.0, 1.0));
}

}  // namespace tarnalgo
