#include "geometryAlgo/VedaType/GeometryUtils.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "geometryAlgo/VedaType/PlaceIndex.h"
#include "host/Cadutils.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

bool TGeometryUtils::IsBezierOverlap(const TBezierSegment2D& A, const TBezierSegment2D& B,
                                     double Eps, std::vector<TBezierSegment2D>& Overlaps) {
  const auto IsSame = [&](const TBezierSegment2D& C) {
    return A.P0.Equals(C.P0, Eps) && A.P1.Equals(C.P1, Eps) && A.P2.Equals(C.P2, Eps) &&
           A.P3.Equals(C.P3, Eps);
  };
  if (!IsSame(B) && !IsSame(B.Reversed())) return false;
  Overlaps.push_back(A);
  return true;
}

void TGeometryUtils::RemoveCloseCrossPts(std::vector<TCrossRec>& List,
                                         std::vector<TPoint2D>& Points, std::vector<double>& Params,
                                         double Eps) {
  std::vector<TCrossRec> Rest = List;
  const auto ByParam = [](const TCrossRec& A, const TCrossRec& B) { return A.Param < B.Param; };
  const auto ByDist = [](const TCrossRec& A, const TCrossRec& B) {
    return A.Dist != B.Dist ? A.Dist < B.Dist : A.Param < B.Param;
  };
  if (Rest.size() > 1) {
    std::stable_sort(Rest.begin(), Rest.end(), ByDist);
    TPlaceIndex Kept(Eps);
    std::erase_if(Rest, [&](const TCrossRec& Rec) {
      if (Kept.HasNear(Rec.Pt)) return true;
      Kept.Add(Rec.Pt, 0);
      return false;
    });
    std::stable_sort(Rest.begin(), Rest.end(), ByParam);
  }
  TAppendGuard PointGuard(Points);
  TAppendGuard ParamGuard(Params);
  for (const TCrossRec& Rec : Rest) {
    Points.push_back(Rec.Pt);
    Params.push_back(Rec.Param);
  }
  PointGuard.Keep();
  ParamGuard.Keep();
  List.swap(Rest);
}

void TGeometryUtils::SplitBezier(const TBezierSegment2D& Bezier, double T, TBezierSegment2D& Left,
                                 TBezierSegment2D& Right) {
  Bezier.Split(T, Left, Right);
}

std::vector<TBezierSegment2D> TGeometryUtils::SplitBezier(const TBezierSegment2D& Bezier,
                                                          std::vector<double> Params) {
  std::erase_if(Params, [](double T) { return !(T > 0.0 && T < 1.0); });
  std::sort(Params.begin(), Params.end());
  Params.erase(std::unique(Params.begin(), Params.end()), Params.end());
  std::vector<TBezierSegment2D> Parts;
  Parts.reserve(Params.size() + 1);
  TBezierSegment2D Rest = Bezier;
  double From = 0.0;
  for (const double T : Params) {
    TBezierSegment2D Part;
    Rest.Split((T - From) / (1.0 - From), Part, Rest);
    Parts.push_back(Part);
    From = T;
  }
  Parts.push_back(Rest);
  return Parts;
}

bool TGeometryUtils::CalcEqualRotateAndTrans(const std::vector<TPoint2D>& From,
                                             const std::vector<TPoint2D>& To, double& Angle,
                                             TPoint2D& Trans, double Eps) {
  if (From.size() != To.size()) return false;
  if (From.empty()) {
    Angle = 0.0;
    Trans = TPoint2D::FZero;
    return true;
  }
  // Relative to the first points, so that far from the origin only the extent counts.
  const auto MeanFromFirst = [](const std::vector<TPoint2D>& Points) {
    TPoint2D Sum;
    for (const TPoint2D& P : Points) Sum = Sum + (P - Points.front());
    return Points.front() + Sum / static_cast<double>(Points.size());
  };
  const TPoint2D MeanFrom = MeanFromFirst(From);
  const TPoint2D MeanTo = MeanFromFirst(To);
  double Cosine = 0.0;
  double Sine = 0.0;
  for (std::size_t I = 0; I < From.size(); ++I) {
    Cosine += (From[I] - MeanFrom).DotMul(To[I] - MeanTo);
    Sine += (From[I] - MeanFrom).CrossMul(To[I] - MeanTo);
  }
  double Turn = std::atan2(Sine, Cosine);
  if (Turn <= -kPi) Turn = kPi;  // half a turn with a sine a hair below 0
  for (std::size_t I = 0; I < From.size(); ++I) {
    const TPoint2D Moved = MeanTo + (From[I] - MeanFrom).RotateBy(Turn);
    if (!Moved.Equals(To[I], Eps)) return false;
  }
  Angle = Turn;
  Trans = MeanTo - MeanFrom.RotateBy(Turn);
  return true;
}

TPoint2D TGeometryUtils::CalcAngleBisector(const TPoint2D& P1, const TPoint2D& Vertex,
                                           const TPoint2D& P2) {
  const TPoint2D Arm1 = (P1 - Vertex).Normal();
  const TPoint2D Arm2 = (P2 - Vertex).Normal();
  if (Arm1 == TPoint2D::FZero || Arm2 == TPoint2D::FZero) return TPoint2D::FZero;
  if (Arm1.DotMul(Arm2) > 0.0) return (Arm1 + Arm2).Normal();
  // The sum of nearly opposite arms cancels; their difference does not.
  const TPoint2D Left = (Arm2 - Arm1).RotateCcw90().Normal();
  const bool TurnsRight = Arm2.CrossMul(Arm1) < 0.0;
  return TurnsRight ? -Left : Left;
}

}  // namespace tarnalgo
