#include "host/Cadgeometry/GePolyBezier.h"

#include <algorithm>

#include "host/Cadgeometry/Nearest.h"
#include "host/Cadgeometry/Sampling.h"
#include "host/Exceptions.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

/// A distance from `P` below which no point of the segment lies: that to the box of its controls.
double LeastPossibleDistance(const TBezierSegment2D& Segment, const TPoint2D& P) {
  const TRect2D Hull =
      TRect2D().Union(Segment.P0).Union(Segment.P1).Union(Segment.P2).Union(Segment.P3);
  const TPoint2D Inside(std::clamp(P.X, Hull.Min.X, std::max(Hull.Min.X, Hull.Max.X)),
                        std::clamp(P.Y, Hull.Min.Y, std::max(Hull.Min.Y, Hull.Max.Y)));
  return P.DistanceTo(Inside);
}

}  // namespace

const TBezierSegment2D& TGePolyBezier2D::GetBezier(int Index) const {
  if (Index < 0 || Index >= GetBezierCount()) {
    RaiseError<EParamError>("TGePolyBezier2D", "index out of range");
  }
  return FSegments[static_cast<std::size_t>(Index)];
}

TPoint2D TGePolyBezier2D::StartPoint() const {
  return FSegments.empty() ? TPoint2D::FZero : FSegments.front().P0;
}

TPoint2D TGePolyBezier2D::EndPoint() const {
  return FSegments.empty() ? TPoint2D::FZero : FSegments.back().P3;
}

TPoint2D TGePolyBezier2D::PointAtParam(double T) const {
  const double Inside = ClampParam(T, ParamTo());
  if (Inside >= ParamTo()) return EndPoint();
  const int Index = static_cast<int>(Inside);
  return FSegments[static_cast<std::size_t>(Index)].EvalPoint(Inside - Index);
}

double TGePolyBezier2D::NearestParam(const TPoint2D& P, double& Distance) const {
  Distance = FSegments.empty() ? kStartOfMinimum : P.DistanceTo(StartPoint());
  double Nearest = 0.0;
  for (int I = 0; I < GetBezierCount(); ++I) {
    const TBezierSegment2D& Segment = GetBezier(I);
    if (!(LeastPossibleDistance(Segment, P) < Distance)) continue;
    double T = 0.0;
    TPoint2D Foot;
    const double SegmentDistance = Segment.DistanceTo(P, 0.0, T, Foot);
    if (!(SegmentDistance < Distance)) continue;
    const bool IsLast = I + 1 == GetBezierCount();
    Distance = SegmentDistance;
    Nearest = SequenceParam(I, T, IsLast, Segment.P3, IsLast ? Segment.P3 : GetBezier(I + 1).P0);
  }
  return Nearest;
}

void TGePolyBezier2D::Reverse() {
  std::reverse(FSegments.begin(), FSegments.end());
  for (TBezierSegment2D& Segment : FSegments) Segment = Segment.Reversed();
}

TRect2D TGePolyBezier2D::GetBoundBox() const {
  TRect2D Box;
  for (const TBezierSegment2D& Segment : FSegments) Box = Box.Union(Segment.GetBoundBox());
  return Box;
}

double TGePolyBezier2D::CurveLength() const {
  double Length = 0.0;
  for (const TBezierSegment2D& Segment : FSegments) Length += Segment.CurveLength();
  return Length;
}

void TGePolyBezier2D::AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const {
  TAppendGuard Guard(Points);
  for (const TBezierSegment2D& Segment : FSegments) {
    AppendDistinct(Segment.P0, Points);
    const int Chords = BezierChordCount(Segment, ChordEps);
    for (int I = 1; I < Chords; ++I)
      Points.push_back(Segment.EvalPoint(I / static_cast<double>(Chords)));
    Points.push_back(Segment.P3);
  }
  Guard.Keep();
}

void TGePolyBezier2D::AppendPieces(std::vector<TCurvePiece>& Pieces) const {
  TAppendGuard Guard(Pieces);
  for (int I = 0; I < GetBezierCount(); ++I) {
    TCurvePiece::AppendBezier(GetBezier(I), I, I + 1, Pieces);
  }
  Guard.Keep();
}

}  // namespace tarnalgo
