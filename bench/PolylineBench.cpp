#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "bench/Inputs.h"
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

using bench::ClosedWave;

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
  const T A(ClosedWave(Count));
  const T B(ClosedWave(Count, 1.5));
  for (auto _ : State) benchmark::DoNotOptimize(A.Cross(B));
}

template <class T>
void SelfIntersectRing(benchmark::State& State) {
  const T Ring(ClosedWave(static_cast<int>(State.range(0))));
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
  const T Ring(ClosedWave(static_cast<int>(State.range(0))));
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

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
}
void FewSizes(benchmark::internal::Benchmark* Row) {
  Row->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
}
#define ROWS(T, Who)                                                                              \
  BENCHMARK(PointsInRing<T>)->Name("1000 points in a polyline ring/waves/" Who)->Apply(FewSizes); \
  BENCHMARK(CrossRings<T>)->Name("Crossings of two polylines/waves/" Who)->Apply(Sizes);          \
  BENCHMARK(SelfIntersectRing<T>)->Name("Self-intersection/waves/" Who)->Apply(Sizes);            \
  BENCHMARK(SelfIntersectHatch<T>)->Name("Self-intersection/slanted hatch/" Who)->Apply(FewSizes)
ROWS(TOurs, "ours");
#ifdef TARNALGO_BENCH_BOOST
ROWS(TBoost, "Boost.Geometry");
#endif

}  // namespace
}  // namespace tarnalgo
