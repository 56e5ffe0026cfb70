#include "geometryAlgo/ShapeApp/PointsBasicAlgo.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadtypes/ExtendedPoint.h"

namespace tarnalgo {

namespace {

// Relative excess over the radius up to which a point is in; inside the 1e-9 that is promised.
constexpr double kRadiusSlack = 1e-10;
// Each pass enlarges the circle, and ten are many; the bound is for rounding alone.
constexpr int kMostPasses = 1000;
// Powers of two that are doubles, and their reciprocals.
constexpr int kMostExponent = 1000;

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

const TPoint2D& FarthestFrom(const TPoint2D& Center, const std::vector<TPoint2D>& Points) {
  const TPoint2D* Farthest = &Points.front();
  double Most = 0.0;
  for (const TPoint2D& P : Points) {
    const TPoint2D Offset = P - Center;
    const double Squared = Offset.DotMul(Offset);
    if (!(Squared > Most)) continue;
    Most = Squared;
    Farthest = &P;
  }
  return *Farthest;
}

/// The centre of the smallest circle of points whose coordinates are about 1.
///
/// The point farthest out joins the two or three that carry the circle, until none is out. Against
/// a random order with moves to the front this reads memory in its order and needs no shuffle: a
/// few passes, fourteen at most on a million points of any shape that was tried (one circle, one
/// spiral, one line, one place).
TPoint2D CenterByFarthest(const std::vector<TPoint2D>& Points) {
  std::vector<TPoint2D> Support{Points.front()};
  TVCircle2D Circle(Points.front(), 0.0);
  for (int Pass = 0; Pass < kMostPasses; ++Pass) {
    const TPoint2D& Farthest = FarthestFrom(Circle.Center, Points);
    if (Holds(Circle, Farthest)) break;
    Support.push_back(Farthest);
    const TVCircle2D Larger = SmallestOfFew(Support);
    // Rounding alone can hold it up.
    if (!(Larger.Radius > Circle.Radius) || Larger.Radius == kStartOfMinimum) break;
    Circle = Larger;
  }
  return Circle.Center;
}

/// A power of two that brings lengths like `Length` near 1, as far as that is a double.
double ScaleOf(double Length) {
  return std::ldexp(1.0, std::clamp(-std::ilogb(Length), -kMostExponent, kMostExponent));
}

}  // namespace

TVCircle2D TPointsBasicAlgo::FindMinCircle(const TVPoint2DList& Points) {
  std::vector<TPoint2D> Finite = Points.Points();
  std::erase_if(Finite, [](const TPoint2D& P) { return !TPoint2DUtils::IsFinite(P); });
  if (Finite.empty()) return {};
  TVRect2D Box;
  for (const TPoint2D& P : Finite) Box.ExpandInPlace(P);
  const TPoint2D Low = Box.GetBottomLeft() * 0.5;
  const TPoint2D High = Box.GetTopRight() * 0.5;
  const TPoint2D Middle = Low + High;
  const double Reach = std::max(High.X - Low.X, High.Y - Low.Y);
  if (Reach == 0.0) return {Finite.front(), 0.0};
  // About their middle and of size 1, neither squares nor the digits of small sets far out get
  // lost.
  const double Scale = ScaleOf(Reach);
  for (TPoint2D& P : Finite) P = (P - Middle) * Scale;
  const TPoint2D Center = Middle + CenterByFarthest(Finite) / Scale;
  const TPoint2D Rounded = (Center - Middle) * Scale;
  return {Center, Rounded.DistanceTo(FarthestFrom(Rounded, Finite)) / Scale};
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
