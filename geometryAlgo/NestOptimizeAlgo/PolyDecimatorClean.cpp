#include <algorithm>
#include <cmath>

#include "geometryAlgo/NestOptimizeAlgo/PolyDecimator.h"
#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

namespace {

/// Nearer than the threshold in X and in Y, in extended precision. The threshold is the double:
/// the decimal number lies above it and would take a point exactly 0.00035 away.
bool IsRepeat(const TPoint2D& P, const TPoint2D& Q) {
  const auto IsNear = [](long double A, long double B) {
    return std::abs(A - B) < static_cast<long double>(kRadialThreshold);
  };
  return IsNear(P.X, Q.X) && IsNear(P.Y, Q.Y);
}

/// A straight run of vertices behind a kept one that can be dropped.
///
/// Every dropped vertex leaves a wedge of directions in which the next kept vertex may lie: those
/// of the lines that pass it within the tolerance. What is left of all wedges is one wedge, so a
/// vertex costs the same however long the run is.
class TStraightRun {
 public:
  explicit TStraightRun(double Eps) : FEps(Eps) {}

  void StartAt(const TPoint2D& Kept) {
    FKept = Kept;
    FReach = 0.0;
    FHasWedge = false;
  }
  /// `P` and all vertices of the run lie near the way from the kept vertex to `Next`, between both.
  bool CanDrop(const TPoint2D& P, const TPoint2D& Next) const {
    const TPoint2D Way = Next - FKept;
    const double Length = Way.Mag();
    if (!(Length >= FReach) || !std::isfinite(Length)) return false;
    if (FHasWedge && !(FRight.CrossMul(Way) >= 0.0 && Way.CrossMul(FLeft) >= 0.0)) return false;
    const TVLine2D Base(FKept, Next);
    const double Along = Base.CalcParamByPointProjection(P);
    return Along >= 0.0 && Along <= 1.0 && Base.LineDistanceTo(P) <= FEps;
  }
  void Drop(const TPoint2D& P) {
    const TPoint2D Way = P - FKept;
    const double Distance = Way.Mag();
    FReach = std::max(FReach, Distance);
    if (!(Distance > FEps)) return;  // near the kept vertex itself, whatever the direction
    const TPoint2D Unit = Way / Distance;
    const double Sine = FEps / Distance;
    const double Cosine = std::sqrt((1.0 - Sine) * (1.0 + Sine));
    const TPoint2D Right = Unit * Cosine - Unit.RotateCcw90() * Sine;
    const TPoint2D Left = Unit * Cosine + Unit.RotateCcw90() * Sine;
    if (!FHasWedge || FRight.CrossMul(Right) > 0.0) FRight = Right;
    if (!FHasWedge || Left.CrossMul(FLeft) > 0.0) FLeft = Left;
    FHasWedge = true;
  }

 private:
  const double FEps;
  TPoint2D FKept;
  double FReach = 0.0;  // of the farthest dropped vertex
  bool FHasWedge = false;
  TPoint2D FRight;  // sides of the wedge
  TPoint2D FLeft;
};

/// The places kept when `Count` points of a list are smoothed; of a ring, whose point behind the
/// last is the first, at least three.
std::vector<std::size_t> KeptPlaces(const std::vector<TPoint2D>& Points, std::size_t Count,
                                    bool IsRing, double Eps) {
  const std::size_t Least = IsRing ? 3 : 2;
  std::size_t Left = Count;
  std::vector<std::size_t> Kept{0};
  TStraightRun Run(Eps);
  Run.StartAt(Points[0]);
  for (std::size_t I = 1; I < Count; ++I) {
    const bool HasNext = IsRing || I + 1 < Count;
    if (Left > Least && HasNext && Run.CanDrop(Points[I], Points[I + 1])) {
      Run.Drop(Points[I]);
      --Left;
    } else {
      Kept.push_back(I);
      Run.StartAt(Points[I]);
    }
  }
  return Kept;
}

/// The first vertex of a ring lies near the way between its kept neighbours, between both, and so
/// do the vertices dropped beside it.
bool CanDropFirst(const std::vector<TPoint2D>& Points, const std::vector<std::size_t>& Kept,
                  double Eps) {
  const TVLine2D Way(Points[Kept.back()], Points[Kept[1]]);
  if (!std::isfinite(Way.Vector().Mag())) return false;
  const double Along = Way.CalcParamByPointProjection(Points[0]);
  if (!(Along >= 0.0 && Along <= 1.0)) return false;
  const auto IsNear = [&](const TPoint2D& P) { return Way.SegmentDistanceTo(P) <= Eps; };
  const auto At = [&](std::size_t I) { return Points.begin() + static_cast<std::ptrdiff_t>(I); };
  return std::all_of(At(Kept.back()), Points.end(), IsNear) &&
         std::all_of(Points.begin(), At(Kept[1]), IsNear);
}

}  // namespace

void TPolyDecimator::SimplifyRadialDistance() {
  std::vector<TPoint2D>& Points = *FPoints;
  if (Points.size() < 2) return;
  TPoint2D Predecessor = Points.front();
  std::size_t Kept = 1;
  for (std::size_t I = 1; I < Points.size(); ++I) {
    const TPoint2D P = Points[I];
    if (!IsRepeat(P, Predecessor)) Points[Kept++] = P;
    Predecessor = P;
  }
  if (Kept > 1 && IsRepeat(Points[Kept - 1], Points.front())) --Kept;
  Points.resize(Kept);
}

std::vector<TPoint2D> TPolyDecimator::CollinearSmooth(double Eps) const {
  const std::vector<TPoint2D>& Points = *FPoints;
  const bool IsRing = IsClosed();
  const std::size_t Corners = Points.size() - (IsRing ? 1 : 0);
  if (Corners < 3) return Points;
  std::vector<std::size_t> Kept = KeptPlaces(Points, Corners, IsRing, Eps);
  if (IsRing && Kept.size() > 3 && CanDropFirst(Points, Kept, Eps)) Kept.erase(Kept.begin());
  if (IsRing) Kept.push_back(Kept.front());
  std::vector<TPoint2D> Result;
  Result.reserve(Kept.size());
  for (const std::size_t I : Kept) Result.push_back(Points[I]);
  return Result;
}

}  // namespace tarnalgo
