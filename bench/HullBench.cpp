#include <benchmark/benchmark.h>

#include <cmath>
#include <iterator>
#include <random>
#include <vector>

#include "geometryAlgo/ShapeApp.h"

#ifdef TARNALGO_BENCH_BOOST
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#endif
#ifdef TARNALGO_BENCH_CGAL
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Min_circle_2.h>
#include <CGAL/Min_circle_2_traits_2.h>
#include <CGAL/Polygon_2.h>
#include <CGAL/Simple_cartesian.h>
#include <CGAL/ch_melkman.h>
#include <CGAL/convex_hull_2.h>
#include <CGAL/min_quadrilateral_2.h>
#endif

namespace tarnalgo {
namespace {

enum TKind { kDisc, kSquare, kGauss, kCircle };

TVPoint2DList RandomSet(TKind Kind, int Count) {
  std::mt19937 Random(5);
  std::uniform_real_distribution<double> Even(-1000.0, 1000.0);
  std::normal_distribution<double> Bell(0.0, 300.0);
  TVPoint2DList Points;
  while (Points.Count() < Count) {
    const double X = Even(Random);
    TPoint2D P(X, Even(Random));
    if (Kind == kDisc && P.Mag() > 1000.0) continue;
    if (Kind == kGauss) P = {Bell(Random), Bell(Random)};
    if (Kind == kCircle) P = P.Normal() * 1000.0;
    Points.Add(P);
  }
  return Points;
}

/// A simple ring of waves about a circle.
TVPolyline2D Wave(int Count) {
  TVPolyline2D Ring;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * I / Count;
    Ring.Add(TPoint2D(1000.0 + 50.0 * std::sin(40.0 * Angle), 0.0).RotateBy(Angle));
  }
  return Ring;
}

TVPolyline2D Ellipse(int Count) {
  TVPolyline2D Ring;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * I / Count;
    Ring.Add({1000.0 * std::cos(Angle), 700.0 * std::sin(Angle)});
  }
  return Ring;
}

/// Convex rings of 10^5 corners: an ellipse, random corners on a circle, random steps.
enum TRingKind { kEllipse, kOnCircle, kBySteps };

TVPolyline2D ConvexRing(TRingKind Kind) {
  constexpr int kCount = 100000;
  if (Kind == kEllipse) return Ellipse(kCount);
  return TPolygonBasicAlgo::GenerateConvexPolyOnDisc({3, 4}, 1000.0, kCount, 7, Kind == kOnCircle);
}

struct TOurs {
  explicit TOurs(const TVPoint2DList& APoints) : Points(APoints) {}
  int Hull() const { return TConvexHullCalculator::CalcConvexHull(Points).Count(); }
  std::size_t HullOfPolyline() {
    return TConvexHullCalculator::CalcSimplePolylineConvexHull(Points).size();
  }
  double Rectangle() const {
    TVPoint2DList Corners;
    return TPolygonBasicAlgo::ConvexMABB(Points, Corners);
  }
  double Width() const { return TPolygonBasicAlgo::ConvexWidth(Points); }
  double Circle() const { return TPointsBasicAlgo::FindMinCircle(Points).Radius; }
  double Distance(const TOurs& Other) const {
    return TPolygonBasicAlgo::MinPolyDistance(Points, Other.Points);
  }
  int Triangles() const { return TPolygonBasicAlgo::TriangleDivide(Points).Count(); }

  TVPolyline2D Points;
};

#ifdef TARNALGO_BENCH_BOOST
struct TBoost {
  using TPoint = boost::geometry::model::d2::point_xy<double>;
  using TPolygon = boost::geometry::model::polygon<TPoint, false>;

  explicit TBoost(const TVPoint2DList& Points) {
    for (const TPoint2D& P : Points) Polygon.outer().emplace_back(P.X, P.Y);
    Polygon.outer().push_back(Polygon.outer().front());
  }
  double Distance(const TBoost& Other) const {
    return boost::geometry::distance(Polygon, Other.Polygon);
  }

  TPolygon Polygon;
};
#endif

#ifdef TARNALGO_BENCH_CGAL
struct TCgal {
  using TExact = CGAL::Exact_predicates_inexact_constructions_kernel;
  using TPlain = CGAL::Simple_cartesian<double>;

  explicit TCgal(const TVPoint2DList& Points) {
    for (const TPoint2D& P : Points) {
      Exact.emplace_back(P.X, P.Y);
      Plain.emplace_back(P.X, P.Y);
    }
  }
  std::size_t Hull() const {
    std::vector<TExact::Point_2> Result;
    CGAL::convex_hull_2(Exact.begin(), Exact.end(), std::back_inserter(Result));
    return Result.size();
  }
  std::size_t HullOfPolyline() const {
    std::vector<TExact::Point_2> Result;
    CGAL::ch_melkman(Exact.begin(), Exact.end(), std::back_inserter(Result));
    return Result.size();
  }
  double Rectangle() const {
    std::vector<TPlain::Point_2> Result;
    CGAL::min_rectangle_2(Plain.begin(), Plain.end(), std::back_inserter(Result));
    return Result[0].x();
  }
  double Width() const {
    std::vector<TPlain::Line_2> Result;
    CGAL::min_strip_2(Plain.begin(), Plain.end(), std::back_inserter(Result));
    return Result[0].a();
  }
  double Circle() const {
    using TTraits = CGAL::Min_circle_2_traits_2<TPlain>;
    CGAL::Min_circle_2<TTraits> Circle(Plain.begin(), Plain.end(), true);
    return Circle.circle().squared_radius();
  }

  std::vector<TExact::Point_2> Exact;
  std::vector<TPlain::Point_2> Plain;
};
#endif

template <class T>
void HullOfSet(benchmark::State& State) {
  const T Set(RandomSet(static_cast<TKind>(State.range(0)), 1000000));
  for (auto _ : State) benchmark::DoNotOptimize(Set.Hull());
}

template <class T>
void HullOfPolyline(benchmark::State& State) {
  T Ring(Wave(static_cast<int>(State.range(0))));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.HullOfPolyline());
}

template <class T>
void SmallestRectangle(benchmark::State& State) {
  const T Ring(ConvexRing(static_cast<TRingKind>(State.range(0))));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.Rectangle());
}

template <class T>
void Width(benchmark::State& State) {
  const T Ring(ConvexRing(static_cast<TRingKind>(State.range(0))));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.Width());
}

template <class T>
void SmallestCircle(benchmark::State& State) {
  const T Set(RandomSet(static_cast<TKind>(State.range(0)), 100000));
  for (auto _ : State) benchmark::DoNotOptimize(Set.Circle());
}

template <class T>
void Distance(benchmark::State& State) {
  const TVPolyline2D Ring = Wave(static_cast<int>(State.range(0)));
  TVPolyline2D Other = Ring;
  Other.Translate({2200.0, 300.0});
  const T A(Ring);
  const T B(Other);
  for (auto _ : State) benchmark::DoNotOptimize(A.Distance(B));
}

template <class T>
void Triangles(benchmark::State& State) {
  const T Ring(Wave(static_cast<int>(State.range(0))));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.Triangles());
}

BENCHMARK(HullOfSet<TOurs>)->DenseRange(kDisc, kCircle)->Unit(benchmark::kMillisecond);
BENCHMARK(HullOfPolyline<TOurs>)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SmallestRectangle<TOurs>)->DenseRange(kEllipse, kBySteps)->Unit(benchmark::kMillisecond);
BENCHMARK(Width<TOurs>)->DenseRange(kEllipse, kBySteps)->Unit(benchmark::kMillisecond);
BENCHMARK(SmallestCircle<TOurs>)->DenseRange(kDisc, kCircle)->Unit(benchmark::kMillisecond);
BENCHMARK(Distance<TOurs>)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(Triangles<TOurs>)->Arg(100000)->Unit(benchmark::kMillisecond);
#ifdef TARNALGO_BENCH_BOOST
BENCHMARK(Distance<TBoost>)->Arg(100000)->Unit(benchmark::kMillisecond);
#endif
#ifdef TARNALGO_BENCH_CGAL
BENCHMARK(HullOfSet<TCgal>)->DenseRange(kDisc, kCircle)->Unit(benchmark::kMillisecond);
BENCHMARK(HullOfPolyline<TCgal>)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SmallestRectangle<TCgal>)->DenseRange(kEllipse, kBySteps)->Unit(benchmark::kMillisecond);
BENCHMARK(Width<TCgal>)->DenseRange(kEllipse, kBySteps)->Unit(benchmark::kMillisecond);
BENCHMARK(SmallestCircle<TCgal>)->DenseRange(kDisc, kCircle)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
}  // namespace tarnalgo
