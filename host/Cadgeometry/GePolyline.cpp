#include "host/Cadgeometry/GePolyline.h"

#include <algorithm>

#include "host/Cadgeometry/Nearest.h"
#include "host/Cadgeometry/Sampling.h"
#include "host/Exceptions.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

std::size_t CheckedCount(int Count) {
  if (Count < 0) RaiseError<EParamError>("TGePolyline2D.Create", "the count is negative");
  if (Count > kMostItems) RaiseError<EParamError>("TGePolyline2D.Create", "too many points");
  return static_cast<std::size_t>(Count);
}

}  // namespace

TGePolyline2D::TGePolyline2D(int Count) : FPoints(CheckedCount(Count)) {}

std::size_t TGePolyline2D::CheckedIndex(int Index) const {
  if (Index < 0 || Index >= GetPointCount()) {
    RaiseError<EParamError>("TGePolyline2D", "index out of range");
  }
  return static_cast<std::size_t>(Index);
}

TLine2D TGePolyline2D::Edge(int Index) const {
  const auto First = static_cast<std::size_t>(Index);
  return {FPoints[First], FPoints[First + 1]};
}

TPoint2D TGePolyline2D::StartPoint() const {
  return FPoints.empty() ? TPoint2D::FZero : FPoints.front();
}

TPoint2D TGePolyline2D::EndPoint() const {
  return FPoints.empty() ? TPoint2D::FZero : FPoints.back();
}

TPoint2D TGePolyline2D::PointAtParam(double T) const {
  const double Inside = ClampParam(T, ParamTo());
  if (Inside >= ParamTo()) return EndPoint();
  const int Index = static_cast<int>(Inside);
  return Edge(Index).EvalPoint(Inside - Index);
}

double TGePolyline2D::NearestParam(const TPoint2D& P, double& Distance) const {
  Distance = FPoints.empty() ? kStartOfMinimum : P.DistanceTo(FPoints.front());
  double Nearest = 0.0;
  for (int I = 0; I < EdgeCount(); ++I) {
    double EdgeDistance = 0.0;
    const double T = NearestOnSegment(Edge(I), P, EdgeDistance);
    if (EdgeDistance < Distance) {
      Distance = EdgeDistance;
      Nearest = I + T;
    }
  }
  return Nearest;
}

void TGePolyline2D::Reverse() {
  std::reverse(FPoints.begin(), FPoints.end());
}

TRect2D TGePolyline2D::GetBoundBox() const {
  TRect2D Box;
  for (const TPoint2D& P : FPoints) Box = Box.Union(P);
  return Box;
}

double TGePolyline2D::CurveLength() const {
  double Length = 0.0;
  for (int I = 0; I < EdgeCount(); ++I) Length += Edge(I).Length();
  return Length;
}

void TGePolyline2D::AppendSamples(double /*ChordEps*/, std::vector<TPoint2D>& Points) const {
  if (FPoints.empty()) return;
  TAppendGuard Guard(Points);
  AppendDistinct(FPoints.front(), Points);
  Points.insert(Points.end(), FPoints.begin() + 1, FPoints.end());
  Guard.Keep();
}

void TGePolyline2D::AppendPieces(std::vector<TCurvePiece>& Pieces) const {
  if (GetPointCount() == 1) {
    Pieces.push_back(TCurvePiece::OfLine({FPoints[0], FPoints[0]}, 0.0, 0.0));
  }
  Pieces.reserve(Pieces.size() + static_cast<std::size_t>(EdgeCount()));
  for (int I = 0; I < EdgeCount(); ++I) Pieces.push_back(TCurvePiece::OfLine(Edge(I), I, I + 1));
}

}  // namespace tarnalgo
