#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>

#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/GeometryExtend/RoundedPoint.h"
#include "geometryAlgo/VedaType/Line.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// Calls `Visit(Distance, Param)` for every listed edge that holds `P`, in order, until it answers
/// true; answers whether it did.
template <class TVisitor>
bool VisitEdgesHolding(const TPath& Path, const TIntPoint& P, double Tolerance, TVisitor Visit) {
  if (Path.size() == 1) return Path.front() == P && Visit(0.0, 0.0);
  const TPoint2D Place = TPathUtils::CreatePoint2D(P, kIntegerScale);
  for (std::size_t I = 1; I < Path.size(); ++I) {
    if (Path[I - 1] == Path[I]) continue;  // has no projection
    const TVLine2D Edge(TPathUtils::CreatePoint2D(Path[I - 1], kIntegerScale),
                        TPathUtils::CreatePoint2D(Path[I], kIntegerScale));
    if (!Edge.IsPointOnSegLine(Place, Tolerance)) continue;
    const double T = Edge.CalcParamByPointProjection(Place);
    if (!TMathUtils::IsInFloatRange(T, 0.0, 1.0, true, true, kLinearTolerance)) continue;
    if (Visit(Edge.SegmentDistanceTo(Place), static_cast<double>(I - 1) + T)) return true;
  }
  return false;
}

/// A place on the listed edges in extended precision.
struct TFoot {
  long double X = 0.0L;
  long double Y = 0.0L;
  double Distance = kStartOfMinimum;
};

/// The place of an edge nearest to `P`; an edge of no length is its start.
TFoot NearestOfEdge(const TIntPoint& From, const TIntPoint& To, const TIntPoint& P) {
  const auto Extended = [](ClipperLib::cInt Value) { return static_cast<long double>(Value); };
  const long double DX = Extended(To.X) - Extended(From.X);
  const long double DY = Extended(To.Y) - Extended(From.Y);
  const long double PX = Extended(P.X) - Extended(From.X);
  const long double PY = Extended(P.Y) - Extended(From.Y);
  const long double Square = DX * DX + DY * DY;
  const long double Along = PX * DX + PY * DY;
  const long double T = Along <= 0.0L ? 0.0L : (Along >= Square ? 1.0L : Along / Square);
  const auto Distance = static_cast<double>(std::hypot(PX - DX * T, PY - DY * T));
  if (T == 1.0L) return {Extended(To.X), Extended(To.Y), Distance};
  return {Extended(From.X) + DX * T, Extended(From.Y) + DY * T, Distance};
}

TFoot NearestOfPath(const TPath& Path, const TIntPoint& P) {
  TFoot Best;
  for (std::size_t I = 0; I + 1 < Path.size() || I == 0; ++I) {
    if (Path.empty()) break;
    const TFoot Foot = NearestOfEdge(Path[I], Path[std::min(I + 1, Path.size() - 1)], P);
    if (Foot.Distance < Best.Distance) Best = Foot;
  }
  return Best;
}

}  // namespace

bool TPathUtils::ParamByPoint(const TPath& Path, const TIntPoint& P, double& Param,
                              double Tolerance) {
  return VisitEdgesHolding(Path, P, Tolerance, [&](double, double Found) {
    Param = Found;
    return true;
  });
}

bool TPathUtils::AccurateParamByPoint(const TPath& Path, const TIntPoint& P, double& Param,
                                      double Tolerance) {
  double Best = kStartOfMinimum;
  VisitEdgesHolding(Path, P, Tolerance, [&](double Distance, double Found) {
    if (Distance < Best) {
      Best = Distance;
      Param = Found;
    }
    return false;
  });
  return Best < kStartOfMinimum;
}

TIntPoint TPathUtils::PointByParam(const TPath& Path, double Param) {
  const double Last = static_cast<double>(Path.size()) - 1.0;
  if (Path.empty() || !TMathUtils::IsInFloatRange(Param, 0.0, Last, true, true)) return {};
  const double Held = std::clamp(Param, 0.0, Last);
  const auto I = static_cast<std::size_t>(Held);
  const long double T = static_cast<long double>(Held) - static_cast<long double>(I);
  if (T == 0.0L) return Path[I];
  const TIntPoint& From = Path[I];
  const TIntPoint& To = Path[I + 1];
  const auto Between = [T](ClipperLib::cInt A, ClipperLib::cInt B) {
    const auto Start = static_cast<long double>(A);
    return Start + (static_cast<long double>(B) - Start) * T;
  };
  return RoundedPoint(Between(From.X, To.X), Between(From.Y, To.Y));
}

double TPathUtils::DistanceTo(const TPath& Path, const TIntPoint& P) {
  return NearestOfPath(Path, P).Distance;
}

bool TPathUtils::IsNearByPoint(const TPath& Path, const TPointL2D& P, double MaxDist,
                               TPointL2D& Nearest) {
  if (Path.empty()) return false;
  const TFoot Foot = NearestOfPath(Path, TIntPoint(P.X, P.Y));
  Nearest = CreatePointL2D(RoundedPoint(Foot.X, Foot.Y));
  return Foot.Distance <= MaxDist;
}

}  // namespace tarnalgo
