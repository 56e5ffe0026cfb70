#pragma once  // fuzz/Ring.h

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "geometryAlgo/VedaType.h"

namespace tarnalgo::fuzz {

/// The ring of a contour as chords of even steps of the parameter, with bounds on what that leaves
/// out: an oracle that uses nothing of the contour but `PointByParam`.
class TRing {
 public:
  explicit TRing(const TLABPolyline& Chain) {
    for (const TLABSegline& Seg : Chain) AddSeg(Seg);
    MeasureReach();
  }
  explicit TRing(const TVPolyline2D& Polyline) : FPoints(Polyline.Points()) { MeasureReach(); }

  const std::vector<TPoint2D>& Points() const { return FPoints; }
  /// The chords of the contour itself, without those that close gaps.
  const std::vector<TVLine2D>& Chords() const { return FChords; }
  /// No point of the contour is farther from the chords.
  double Error() const { return FError + Rounding(); }
  /// What coordinates of this size, and the circles of the arcs, round to.
  double Rounding() const { return 1e-14 * FReach; }
  double AreaRounding() const { return 1e-13 * FReach * FReach; }
  double AreaError() const { return FError * Length() * 2 + AreaRounding() + 1e-9 * FReach; }

  double Length() const {
    double Sum = 0.0;
    for (std::size_t I = 1; I < FPoints.size(); ++I) Sum += (FPoints[I] - FPoints[I - 1]).Mag();
    return Sum;
  }
  double Area() const {
    long double Sum = 0.0L;
    VisitEdges([&](const TPoint2D& A, const TPoint2D& B) {
      const TPoint2D& O = FPoints.front();
      Sum += static_cast<long double>(A.X - O.X) * (B.Y - O.Y) -
             static_cast<long double>(A.Y - O.Y) * (B.X - O.X);
    });
    return static_cast<double>(Sum / 2);
  }
  double DistanceTo(const TPoint2D& P) const {
    double Least = kStartOfMinimum;
    VisitEdges([&](const TPoint2D& A, const TPoint2D& B) {
      const TPoint2D V = B - A;
      const double Square = V.X * V.X + V.Y * V.Y;
      const double Dot = (P.X - A.X) * V.X + (P.Y - A.Y) * V.Y;
      const double T = Square > 0.0 ? std::clamp(Dot / Square, 0.0, 1.0) : 0.0;
      Least = std::min(Least, std::hypot(A.X + V.X * T - P.X, A.Y + V.Y * T - P.Y));
    });
    return Least;
  }
  /// Even-odd by a ray to the right.
  bool Holds(const TPoint2D& P) const {
    bool Result = false;
    VisitEdges([&](const TPoint2D& A, const TPoint2D& B) {
      if ((A.Y <= P.Y) == (B.Y <= P.Y)) return;
      const long double Side = static_cast<long double>(B.X - A.X) * (P.Y - A.Y) -
                               static_cast<long double>(B.Y - A.Y) * (P.X - A.X);
      if ((Side > 0.0L) == (B.Y > A.Y)) Result = !Result;
    });
    return Result;
  }

 private:
  static constexpr int kSteps = 32;

  void AddSeg(const TLABSegline& Seg) {
    const int Steps = Seg.SegType == stLine ? 1 : kSteps;
    for (int I = 0; I <= Steps; ++I) {
      FPoints.push_back(Seg.PointByParam(double(I) / Steps));
      if (I > 0) FChords.emplace_back(FPoints[FPoints.size() - 2], FPoints.back());
    }
    if (Seg.SegType == stArc) {
      const TVArc2D Arc = Seg.ToArc();
      FReach = std::max(FReach, 10 * Arc.Radius());
      FError = std::max(FError, Arc.Radius() * (1 - std::cos(Arc.AngleRange() / (2 * kSteps))));
    } else if (Seg.SegType == stBezier) {
      const double Bend =
          std::max((Seg.P1 - Seg.P2 * 2.0 + Seg.P3).Mag(), (Seg.P2 - Seg.P3 * 2.0 + Seg.P4).Mag());
      FError = std::max(FError, 6 * Bend / (8.0 * kSteps * kSteps));
    }
  }

  /// Each edge, and the one that closes the ring.
  template <class TVisit>
  void VisitEdges(TVisit Visit) const {
    for (std::size_t I = 0; I < FPoints.size(); ++I) {
      Visit(FPoints[I], FPoints[I + 1 < FPoints.size() ? I + 1 : 0]);
    }
  }

  void MeasureReach() {
    for (const TPoint2D& P : FPoints) FReach = std::max({FReach, std::abs(P.X), std::abs(P.Y)});
  }

  std::vector<TPoint2D> FPoints;
  std::vector<TVLine2D> FChords;
  double FError = 0.0;
  double FReach = 1.0;
};

/// Calls `Visit` with each pair of chords under which the contours cross for sure: the chords
/// cross, and no end comes so near to the other chord that bending both back to their contours,
/// ends fixed, could undo it.
template <class TVisit>
void VisitSureCrossings(const TRing& A, const TRing& B, TVisit Visit) {
  const double Rounding = A.Rounding() + B.Rounding();
  const auto Side = [&](const TVLine2D& Line, const TPoint2D& P) {
    const double Distance = Line.Vector().CrossMul(P - Line.StartPoint) / Line.Length();
    return Distance > Rounding ? 1 : (Distance < -Rounding ? -1 : 0);
  };
  const auto IsSplit = [&](const TVLine2D& Line, const TVLine2D& By) {
    return Side(By, Line.StartPoint) * Side(By, Line.EndPoint) < 0;
  };
  const auto IsClear = [](const TVLine2D& Line, const TVLine2D& Of, double Room) {
    return Of.SegmentDistanceTo(Line.StartPoint) > Room &&
           Of.SegmentDistanceTo(Line.EndPoint) > Room;
  };
  const double Room = A.Error() + B.Error() + 4 * kLinearTolerance;
  for (const TVLine2D& S : A.Chords()) {
    for (const TVLine2D& T : B.Chords()) {
      if (!IsSplit(S, T) || !IsSplit(T, S)) continue;
      if (IsClear(S, T, Room) && IsClear(T, S, Room)) Visit(S, T);
    }
  }
}

}  // namespace tarnalgo::fuzz
