#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "geometryAlgo/VedaType/Polyline.h"

#ifdef TARNALGO_BENCH_BOOST
#define BOOST_ALLOW_DEPRECATED_HEADERS
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/ring.hpp>
#endif

namespace tarnalgo {
namespace {

/// A ring of 40 waves about a circle, as a sampled contour comes from a drawing.
TVPolyline2D Wave(int Count, double Phase) {
  TVPolyline2D Ring;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * I / Count;
    Ring.Add(TPoint2D(1000.0 + 50.0 * std::sin(Phase + 40.0 * Angle), 0.0).RotateBy(Angle));
  }
  Ring.Add(Ring.First());
  return Ring;
}

/// Long strokes back and forth, slanted: their upright boxes all overlap.
TVPolyline2D Hatch(int Strokes) {
  TVPolyline2D Result;
  for (int I = 0; I < Strokes; ++I) {
    Result.Add({I % 2 == 0 ? 0.0 : 1000.0, I * 0.1});
    Result.Add({I % 2 == 0 ? 1000.0 : 0.0, I * 0.1});
  }
  Result.Rotate(0.5);
  return Result;
}

struct TOurs {
  explicit TOurs(const TVPolyline2D& Polyline) : Course(Polyline) {}
  std::size_t Cross(const TOurs& Other) const {
    std::vector<TPoint2D> Points;
    std::vector<TVLine2D> Lines;
    Course.CrossWith(Other.Course, Points, Lines);
    return Points.size();
  }
  bool IntersectsItself() const { return Course.IsSelfIntersect(); }
  bool Holds(const TPoint2D& P) const { return Course.RelationWithPoint(P) == srIn; }

  TVPolyline2D Course;
};

#ifdef TARNALGO_BENCH_BOOST
namespace bg = boost::geometry;

struct TBoost {
  using TPoint = bg::model::d2::point_xy<double>;

  explicit TBoost(const TVPolyline2D& Polyline) {
    for (const TPoint2D& P : Polyline) Course.emplace_back(P.X, P.Y);
    Ring.assign(Course.begin(), Course.end());
  }
  std::size_t Cross(const TBoost& Other) const {
    bg::model::multi_point<TPoint> Points;
    bg::intersection(Course, Other.Course, Points);
    return Points.size();
  }
  bool IntersectsItself() const { return !bg::is_simple(Course); }
  bool Holds(const TPoint2D& P) const { return bg::within(TPoint(P.X, P.Y), Ring); }

  bg::model::linestring<TPoint> Course;
  bg::model::ring<TPoint, false> Ring;
};
#endif

template <class T>
void CrossRings(benchmark::State& State) {
  const int Count = static_cast<int>(State.range(0));
  const T A(Wave(Count, 0.0));
  const T B(Wave(Count, 1.5));
  for (auto _ : State) benchmark::DoNotOptimize(A.Cross(B));
}

template <class T>
void SelfIntersectRing(benchmark::State& State) {
  const T Ring(Wave(static_cast<int>(State.range(0)), 0.0));
  for (auto _ : State) benchmark::DoNotOptimize(Ring.IntersectsItself());
}

template <class T>
void SelfIntersectHatch(benchmark::State& State) {
  const T Strokes(Hatch(static_cast<int>(State.range(0))));
  for (auto _ : State) benchmark::DoNotOptimize(Strokes.IntersectsItself());
}

/// 1000 points a round, over the box of the ring.
template <class T>
void PointsInRing(benchmark::State& State) {
  const T Ring(Wave(static_cast<int>(State.range(0)), 0.0));
  std::mt19937 Random(1);
  std::uniform_real_distribution<double> Place(-1050.0, 1050.0);
  std::vector<TPoint2D> Points(1000);
  for (TPoint2D& P : Points) P = {Place(Random), Place(Random)};
  for (auto _ : State) {
    int Count = 0;
    for (const TPoint2D& P : Points) Count += Ring.Holds(P) ? 1 : 0;
    benchmark::DoNotOptimize(Count);
  }
}

BENCHMARK(PointsInRing<TOurs>)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(CrossRings<TOurs>)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SelfIntersectRing<TOurs>)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SelfIntersectHatch<TOurs>)->Arg(5000)->Unit(benchmark::kMillisecond);
#ifdef TARNALGO_BENCH_BOOST
BENCHMARK(PointsInRing<TBoost>)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(CrossRings<TBoost>)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SelfIntersectRing<TBoost>)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(SelfIntersectHatch<TBoost>)->Arg(5000)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
}  // namespace tarnalgo
