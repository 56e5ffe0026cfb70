#include <algorithm>
#include <utility>

#include "geometryAlgo/VedaType/LABPolyline.h"
#include "geometryAlgo/VedaType/PlaceIndex.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

/// The box of what a segment is made of: of an arc its circle. Cheaper than the tight one.
TVRect2D BoxAround(const TLABSegline& Seg) {
  TVRect2D Box(Seg.P1, Seg.P4);
  if (Seg.SegType == stBezier) Box.ExpandInPlace(TVRect2D(Seg.P2, Seg.P3));
  if (Seg.SegType == stArc) {
    const double Radius = Seg.P2.DistanceTo(Seg.P1);
    Box.ExpandInPlace(TVRect2D(Seg.P2, Seg.P2).Inflate(Radius));
  }
  return Box;
}

/// The stretches of one line that others cover, as distances from its start.
class TCoverage {
 public:
  TCoverage(const TVLine2D& Line, const std::vector<TVLine2D>& Stretches, double Eps)
      : FLine(Line), FEps(Eps) {
    for (const TVLine2D& Stretch : Stretches) {
      FRanges.push_back(std::minmax({PlaceOf(Stretch.StartPoint), PlaceOf(Stretch.EndPoint)}));
    }
    std::sort(FRanges.begin(), FRanges.end());
    std::size_t Kept = 0;  // disjoint from here on
    for (std::size_t I = 1; I < FRanges.size(); ++I) {
      if (FRanges[I].first <= FRanges[Kept].second) {
        FRanges[Kept].second = std::max(FRanges[Kept].second, FRanges[I].second);
      } else {
        FRanges[++Kept] = FRanges[I];
      }
    }
    if (!FRanges.empty()) FRanges.resize(Kept + 1);
  }

  bool Holds(const TPoint2D& P) const {
    const double Place = PlaceOf(P);
    const auto Next =
        std::partition_point(FRanges.begin(), FRanges.end(),
                             [&](const TRange& Range) { return Range.second < Place - FEps; });
    return Next != FRanges.end() && Next->first <= Place + FEps;
  }

 private:
  using TRange = std::pair<double, double>;

  double PlaceOf(const TPoint2D& P) const {
    return FLine.CalcParamByPointProjection(P) * FLine.Length();
  }

  TVLine2D FLine;
  double FEps;
  std::vector<TRange> FRanges;
};

}  // namespace

bool TLABPolyline::CrossWithSegLine(const TVLine2D& Line, std::vector<TPoint2D>& Points,
                                    std::vector<TVLine2D>& Lines, double Eps) const {
  const TVRect2D Box = Line.BoundBox().Inflate(Eps);
  std::vector<TPoint2D> Places;
  std::vector<TVLine2D> Stretches;
  for (const TLABSegline& Seg : FSegs) {
    if (BoxAround(Seg).Intersect(Box).IsValid()) {
      Seg.CrossWithSegLine(Line, Places, Stretches, Eps);
    }
  }
  const TCoverage Coverage(Line, Stretches, Eps);
  TPlaceIndex Taken(Eps);
  bool IsAny = !Stretches.empty();
  TAppendGuard Guard(Points);
  for (const TPoint2D& P : Places) {
    if (Coverage.Holds(P) || Taken.HasNear(P)) continue;
    Taken.Add(P, 0);
    Points.push_back(P);
    IsAny = true;
  }
  Lines.insert(Lines.end(), Stretches.begin(), Stretches.end());
  Guard.Keep();
  return IsAny;
}

}  // namespace tarnalgo
