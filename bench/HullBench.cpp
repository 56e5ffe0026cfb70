#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <random>
#include <vector>

#include "bench/Inputs.h"
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

/// Points at random in four ways, on a square grid, from a sheet of parts.
enum TKind { kDisc, kSquare, kGauss, kCircle, kGrid, kSheet };

TVPoint2DList PointSet(TKind Kind, int Count) {
  TVPoint2DList Points;
  if (Kind == kGrid) {
    const int Side = static_cast<int>(std::lround(std::sqrt(Count)));
    for (int I = 0; I < Side * Side; ++I) Points.Add({1.0 * (I * 7 % Side), 1.0 * (I / Side)});
    return Points;
  }
  if (Kind == kSheet) {
    for (const bench::TRing& Ring : bench::Sheet(Count)) {
      for (const TPoint2D& P : Ring) Points.Add(P);
    }
    return Points;
  }
  std::mt19937 Random(5);
  std::normal_distribution<double> Bell(0.0, 300.0);
  while (Points.Count() < Count) {
    const double X = bench::Draw(Random, -1000.0, 1000.0);
    TPoint2D P(X, bench::Draw(Random, -1000.0, 1000.0));
    if (Kind == kDisc && P.Mag() > 1000.0) continue;
    if (Kind == kGauss) P = {Bell(Random), Bell(Random)};
    if (Kind == kCircle) P = P.Normal() * 1000.0;
    Points.Add(P);
  }
  return Points;
}

/// Convex rings: an ellipse, random corners on a circle, random steps.
enum TRingKind { kEllipse, kOnCircle, kBySteps };

TVPolyline2D ConvexRing(TRingKind Kind, int Count) {
  if (Kind != kEllipse) {
    return TPolygonBasicAlgo::GenerateConvexPolyOnDisc({3, 4}, 1000.0, Count, 7, Kind == kOnCircle);
  }
  TVPolyline2D Ring;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * I / Count;
    Ring.Add({1000.0 * std::cos(Angle), 700.0 * std::sin(Angle)});
  }
  return Ring;
}

/// A comb of long teeth, open.
TVPolyline2D Comb(int Count) {
  TVPolyline2D Ring;
  for (int I = 0; I < Count - 2; ++I) Ring.Add({1.0 * I, I % 2 == 0 ? 0.0 : 1000.0});
  Ring.Add({1.0 * Count, -10.0});
  Ring.Add({-1.0, -10.0});
  return Ring;
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

int SizeOf(const benchmark::State& State) {
  return static_cast<int>(State.range(0));
}

template <class T, TKind Kind>
void HullOfSet(benchmark::State& State) {
  const T Set(PointSet(Kind, SizeOf(State)));
  for (auto _ : State) benchmark::DoNotOptimize(Set.Hull());
}

/// What a hull by sorting cannot go below.
template <TKind Kind>
void SortOfSet(benchmark::State& State) {
  const TVPoint2DList Points = PointSet(Kind, SizeOf(State));
  for (auto _ : State) {
    std::vector<TPoint2D> Sorted(Points.begin(), Points.end());
    std::sort(Sorted.begin(), Sorted.end(), [](const TPoint2D& A, const TPoint2D& B) {
      return A.X < B.X || (A.X == B.X && A.Y < B.Y);
    });
    benchmark::DoNotOptimize(Sorted.data());
  }
}

template <class T>
void HullOfPolyline(benchmark::State& State) {
  T Ring(bench::Wave(SizeOf(State)));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.HullOfPolyline());
}

template <class T, TRingKind Kind>
void SmallestRectangle(benchmark::State& State) {
  const T Ring(ConvexRing(Kind, SizeOf(State)));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.Rectangle());
}

template <class T, TRingKind Kind>
void Width(benchmark::State& State) {
  const T Ring(ConvexRing(Kind, SizeOf(State)));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.Width());
}

template <class T, TKind Kind>
void SmallestCircle(benchmark::State& State) {
  const T Set(PointSet(Kind, SizeOf(State)));
  for (auto _ : State) benchmark::DoNotOptimize(Set.Circle());
}

template <class T>
void Distance(benchmark::State& State) {
  const TVPolyline2D Ring = bench::Wave(SizeOf(State));
  TVPolyline2D Other = Ring;
  Other.Translate({2200.0, 300.0});
  const T A(Ring);
  const T B(Other);
  for (auto _ : State) benchmark::DoNotOptimize(A.Distance(B));
}

template <TVPolyline2D (*Make)(int)>
void Triangles(benchmark::State& State) {
  const TOurs Ring(Make(SizeOf(State)));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.Triangles());
}

TVPolyline2D WaveRing(int Count) {
  return bench::Wave(Count);
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMicrosecond);
}
void LargeSizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMicrosecond);
}

#define HULL_ROWS(T, Who)                                                                    \
  BENCHMARK(HullOfSet<T, kDisc>)->Name("Convex hull/disc/" Who)->Apply(LargeSizes);          \
  BENCHMARK(HullOfSet<T, kSquare>)->Name("Convex hull/square/" Who)->Apply(LargeSizes);      \
  BENCHMARK(HullOfSet<T, kGauss>)->Name("Convex hull/normal/" Who)->Apply(LargeSizes);       \
  BENCHMARK(HullOfSet<T, kCircle>)->Name("Convex hull/on a circle/" Who)->Apply(LargeSizes); \
  BENCHMARK(HullOfSet<T, kGrid>)->Name("Convex hull/grid/" Who)->Apply(LargeSizes);          \
  BENCHMARK(HullOfSet<T, kSheet>)->Name("Convex hull/sheet/" Who)->Apply(LargeSizes)
#define RING_ROWS(T, Who)                                                                        \
  BENCHMARK(HullOfPolyline<T>)->Name("Hull of a simple polyline/waves/" Who)->Apply(Sizes);      \
  BENCHMARK(SmallestRectangle<T, kEllipse>)                                                      \
      ->Name("Smallest rectangle/ellipse/" Who)                                                  \
      ->Apply(Sizes);                                                                            \
  BENCHMARK(SmallestRectangle<T, kOnCircle>)                                                     \
      ->Name("Smallest rectangle/on a circle/" Who)                                              \
      ->Apply(Sizes);                                                                            \
  BENCHMARK(SmallestRectangle<T, kBySteps>)                                                      \
      ->Name("Smallest rectangle/random steps/" Who)                                             \
      ->Apply(Sizes);                                                                            \
  BENCHMARK(Width<T, kEllipse>)->Name("Width/ellipse/" Who)->Apply(Sizes);                       \
  BENCHMARK(Width<T, kOnCircle>)->Name("Width/on a circle/" Who)->Apply(Sizes);                  \
  BENCHMARK(Width<T, kBySteps>)->Name("Width/random steps/" Who)->Apply(Sizes);                  \
  BENCHMARK(SmallestCircle<T, kDisc>)->Name("Smallest circle/disc/" Who)->Apply(Sizes);          \
  BENCHMARK(SmallestCircle<T, kCircle>)->Name("Smallest circle/on a circle/" Who)->Apply(Sizes); \
  BENCHMARK(SmallestCircle<T, kGrid>)->Name("Smallest circle/grid/" Who)->Apply(Sizes)

HULL_ROWS(TOurs, "ours");
RING_ROWS(TOurs, "ours");
BENCHMARK(SortOfSet<kDisc>)->Name("Convex hull/disc/limit: sort by X")->Apply(LargeSizes);
BENCHMARK(SortOfSet<kCircle>)->Name("Convex hull/on a circle/limit: sort by X")->Apply(LargeSizes);
BENCHMARK(Distance<TOurs>)->Name("Distance of two rings/waves/ours")->Apply(Sizes);
BENCHMARK(Triangles<WaveRing>)->Name("Triangles/waves/ours")->Apply(Sizes);
BENCHMARK(Triangles<Comb>)->Name("Triangles/comb/ours")->Apply(Sizes);
#ifdef TARNALGO_BENCH_BOOST
BENCHMARK(Distance<TBoost>)->Name("Distance of two rings/waves/Boost.Geometry")->Apply(Sizes);
#endif
#ifdef TARNALGO_BENCH_CGAL
HULL_ROWS(TCgal, "CGAL");
RING_ROWS(TCgal, "CGAL");
#endif

}  // namespace
}  // namespace tarnalgo
