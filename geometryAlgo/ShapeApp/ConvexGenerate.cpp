#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

using TRandom = std::mt19937_64;

// Rounding can spoil a ring of very many short steps; then the next one is tried.
constexpr int kMostTries = 8;
// The share of an even spacing that corners on the circle keep at least.
constexpr double kEvenShare = 0.1;

/// In [0, 1), the same on every machine, which the standard distributions do not promise.
double NextUnit(TRandom& Random) {
  return static_cast<double>(Random() >> 11) * 0x1p-53;
}

std::vector<double> SortedUnits(TRandom& Random, int Count) {
  std::vector<double> Units;
  Units.reserve(static_cast<std::size_t>(Count));
  for (int I = 0; I < Count; ++I) Units.push_back(NextUnit(Random));
  std::sort(Units.begin(), Units.end());
  return Units;
}

std::vector<TPoint2D> CornersOnCircle(TRandom& Random, const TPoint2D& Center, double Radius,
                                      int Count) {
  std::vector<TPoint2D> Corners;
  Corners.reserve(static_cast<std::size_t>(Count));
  for (const double Unit : SortedUnits(Random, Count)) {
    const double Even = static_cast<double>(Corners.size()) / Count;
    const double Angle = kFullTurn * (Unit + (Even - Unit) * kEvenShare);
    Corners.push_back(Center + TPoint2D(std::cos(Angle), std::sin(Angle)) * Radius);
  }
  return Corners;
}

/// Steps that add up to 0: from the least of random coordinates to the greatest on one of two ways
/// that share the rest between them, and back on the other.
std::vector<double> ClosedSteps(TRandom& Random, int Count) {
  const std::vector<double> Stops = SortedUnits(Random, Count);
  std::vector<double> Steps;
  Steps.reserve(Stops.size());
  double There = Stops.front();
  double Back = Stops.front();
  for (std::size_t I = 1; I + 1 < Stops.size(); ++I) {
    const bool GoesThere = (Random() >> 63) != 0;
    double& Way = GoesThere ? There : Back;
    Steps.push_back(GoesThere ? Stops[I] - Way : Way - Stops[I]);
    Way = Stops[I];
  }
  Steps.push_back(Stops.back() - There);
  Steps.push_back(Back - Stops.back());
  return Steps;
}

/// Random steps in X and Y, paired at random and laid end to end by their angle.
std::vector<TPoint2D> CornersBySteps(TRandom& Random, const TPoint2D& Center, double Radius,
                                     int Count) {
  const std::vector<double> Xs = ClosedSteps(Random, Count);
  std::vector<double> Ys = ClosedSteps(Random, Count);
  for (std::size_t I = Ys.size() - 1; I > 0; --I) std::swap(Ys[I], Ys[Random() % (I + 1)]);
  std::vector<TPoint2D> Corners;
  for (std::size_t I = 0; I < Xs.size(); ++I) Corners.push_back({Xs[I], Ys[I]});
  std::sort(Corners.begin(), Corners.end(), [](const TPoint2D& A, const TPoint2D& B) {
    return std::atan2(A.Y, A.X) < std::atan2(B.Y, B.X);
  });
  TPoint2D Place;
  for (TPoint2D& Corner : Corners) {
    Place = Place + Corner;
    Corner = Place;
  }
  const TPoint2D Middle = TVPoint2DList(Corners).BoundBox().Center();
  double Reach = 0.0;
  for (const TPoint2D& Corner : Corners) Reach = std::max(Reach, Corner.DistanceTo(Middle));
  for (TPoint2D& Corner : Corners) Corner = Center + (Corner - Middle) * (Radius / Reach);
  return Corners;
}

bool IsStrictlyConvex(const std::vector<TPoint2D>& Corners) {
  const std::size_t Count = Corners.size();
  for (std::size_t I = 0; I < Count; ++I) {
    const TPoint2D& Next = Corners[(I + 1) % Count];
    if (!(TPoint2DUtils::IsLeft(Corners[I], Next, Corners[(I + 2) % Count]) > 0.0)) return false;
  }
  return true;
}

}  // namespace

TVPolyline2D TPolygonBasicAlgo::GenerateConvexPolyOnDisc(const TPoint2D& Center, double Radius,
                                                         int Count, std::uint32_t Seed, bool Fast) {
  if (Count < 3 || Count > kMostItems || !(Radius > 0.0) || !std::isfinite(Radius)) return {};
  if (!TPoint2DUtils::IsFinite(Center)) return {};
  TRandom Random(Seed);
  std::vector<TPoint2D> Corners;
  for (int Try = 0; !Fast && Try < kMostTries && Corners.empty(); ++Try) {
    Corners = CornersBySteps(Random, Center, Radius, Count);
    if (!IsStrictlyConvex(Corners)) Corners.clear();
  }
  if (Corners.empty()) Corners = CornersOnCircle(Random, Center, Radius, Count);
  Corners.push_back(Corners.front());
  return TVPolyline2D(std::move(Corners));
}

}  // namespace tarnalgo
