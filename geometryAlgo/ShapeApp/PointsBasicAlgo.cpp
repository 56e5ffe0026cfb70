#include "geometryAlgo/ShapeApp/PointsBasicAlgo.h"

#include <algorithm>
#include <vector>

#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadtypes/ExtendedPoint.h"

namespace tarnalgo {

namespace {

// Relative excess over the radius up to which a point is in; inside the 1e-9 that is promised.
constexpr double kRadiusSlack = 1e-10;
// Each pass enlarges the circle, and ten are many; the bound is for rounding alone.
constexpr int kMostPasses = 1000;

bool Holds(const TVCircle2D& Circle, const TPoint2D& P) {
  return Circle.Center.DistanceTo(P) <= Circle.Radius * (1.0 + kRadiusSlack);
}

/// The centre of the circle through three points that are not collinear.
TPoint2D CircleCenter(const TPoint2D& P1, const TPoint2D& P2, const TPoint2D& P3) {
  const TExtPoint2D A = TExtPoint2D(P2) - TExtPoint2D(P1);
  const TExtPoint2D B = TExtPoint2D(P3) - TExtPoint2D(P1);
  const long double Doubled = 2.0L * A.CrossMul(B);
  const long double ASquared = A.DotMul(A);
  const long double BSquared = B.DotMul(B);
  const TExtPoint2D Offset((B.Y * ASquared - A.Y * BSquared) / Doubled,
                           (A.X * BSquared - B.X * ASquared) / Doubled);
  return (TExtPoint2D(P1) + Offset).Rounded();
}

/// The circle of the points that carry it, two or three of `Support`, which are all that is left of
/// it: the smallest one of two or three points that holds every point of `Support`.
TVCircle2D SmallestOfFew(std::vector<TPoint2D>& Support) {
  TVCircle2D Best(Support.front(), kStartOfMinimum);
  std::vector<TPoint2D> Carriers = Support;
  const auto Try = [&](const TVCircle2D& Circle, std::vector<TPoint2D> Points) {
    if (!(Circle.Radius < Best.Radius)) return;
    for (const TPoint2D& P : Support) {
      if (!Holds(Circle, P)) return;
    }
    Best = Circle;
    Carriers = std::move(Points);
  };
  for (std::size_t I = 0; I < Support.size(); ++I) {
    for (std::size_t J = I + 1; J < Support.size(); ++J) {
      const TPoint2D A = Support[I];
      const TPoint2D B = Support[J];
      Try(TPointsBasicAlgo::FindMinCircleOf2Point(A, B), {A, B});
      for (std::size_t K = J + 1; K < Support.size(); ++K) {
        const TPoint2D C = Support[K];
        Try(TPointsBasicAlgo::FindMinCircleOf3Point(A, B, C), {A, B, C});
      }
    }
  }
  Support = std::move(Carriers);
  return Best;
}

}  // namespace

TVCircle2D TPointsBasicAlgo::FindMinCircle(const TVPoint2DList& Points) {
  std::vector<TPoint2D> Finite = Points.Points();
  std::erase_if(Finite, [](const TPoint2D& P) { return !TPoint2DUtils::IsFinite(P); });
  if (Finite.empty()) return {};
  std::vector<TPoint2D> Support{Finite.front()};
  TVCircle2D Circle(Finite.front(), 0.0);
  for (int Pass = 0; Pass < kMostPasses; ++Pass) {
    TPoint2D Farthest = Circle.Center;
    double Most = 0.0;
    for (const TPoint2D& P : Finite) {
      const TPoint2D Offset = P - Circle.Center;
      const double Squared = Offset.DotMul(Offset);
      if (Squared > Most) {
        Most = Squared;
        Farthest = P;
      }
    }
    if (Holds(Circle, Farthest)) break;
    Support.push_back(Farthest);
    const TVCircle2D Larger = SmallestOfFew(Support);
    // Rounding alone can hold it up: the circle about this centre that holds all.
    if (!(Larger.Radius > Circle.Radius) || Larger.Radius == kStartOfMinimum) {
      return {Circle.Center, Circle.Center.DistanceTo(Farthest)};
    }
    Circle = Larger;
  }
  return Circle;
}

TVCircle2D TPointsBasicAlgo::FindMinCircleOf2Point(const TPoint2D& P1, const TPoint2D& P2) {
  const TPoint2D Center = P1 * 0.5 + P2 * 0.5;
  return {Center, std::max(Center.DistanceTo(P1), Center.DistanceTo(P2))};
}

TVCircle2D TPointsBasicAlgo::FindMinCircleOf3Point(const TPoint2D& P1, const TPoint2D& P2,
                                                   const TPoint2D& P3) {
  const auto IsAcuteAt = [](const TPoint2D& P, const TPoint2D& A, const TPoint2D& B) {
    const TExtPoint2D Corner(P);
    return (TExtPoint2D(A) - Corner).DotMul(TExtPoint2D(B) - Corner) > 0.0L;
  };
  if (!IsAcuteAt(P1, P2, P3)) return FindMinCircleOf2Point(P2, P3);
  if (!IsAcuteAt(P2, P1, P3)) return FindMinCircleOf2Point(P1, P3);
  if (!IsAcuteAt(P3, P1, P2)) return FindMinCircleOf2Point(P1, P2);
  const TPoint2D Center = CircleCenter(P1, P2, P3);
  return {Center, std::max({Center.DistanceTo(P1), Center.DistanceTo(P2), Center.DistanceTo(P3)})};
}

}  // namespace tarnalgo
