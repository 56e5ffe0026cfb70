#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "bench/Inputs.h"
#include "geometryAlgo/NestOptimizeAlgo.h"

#ifdef TARNALGO_BENCH_BOOST
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#endif

namespace tarnalgo {
namespace {

constexpr double kTolerance = 0.01;

/// A clockwise half circle: the signed and the unsigned rule keep the same points.
std::vector<TPoint2D> Arc(int Count) {
  std::vector<TPoint2D> Points;
  for (int I = 0; I < Count; ++I) {
    Points.push_back(TPoint2D(1000.0, 0.0).RotateBy(-kPi * I / Count));
  }
  return Points;
}

/// An open curve of waves upon waves.
std::vector<TPoint2D> Wave(int Count) {
  std::vector<TPoint2D> Points;
  for (int I = 0; I < Count; ++I) {
    const double X = 1000.0 * I / Count;
    Points.emplace_back(X, 20.0 * std::sin(X * 0.1) + 0.5 * std::sin(X * 3.0));
  }
  return Points;
}

/// Teeth of the tolerance's own height: nearly everything stays.
std::vector<TPoint2D> Teeth(int Count) {
  std::vector<TPoint2D> Points;
  for (int I = 0; I < Count; ++I)
    Points.emplace_back(0.01 * I, I % 2 == 0 ? 0.0 : 1.1 * kTolerance);
  return Points;
}

/// The outlines of a sheet of parts, one after the other.
std::vector<TPoint2D> SheetPoints(int Count) {
  std::vector<TPoint2D> Points;
  for (const bench::TRing& Ring : bench::Sheet(Count)) {
    Points.insert(Points.end(), Ring.begin(), Ring.end());
  }
  return Points;
}

struct TOurs {
  explicit TOurs(const std::vector<TPoint2D>& Points) : List(Points) {}
  std::size_t Decimate(bool Restrict) {
    return TPolyDecimator(List, kTolerance).DouglasPeucker(Restrict).size();
  }

  std::vector<TPoint2D> List;
};

#ifdef TARNALGO_BENCH_BOOST
namespace bg = boost::geometry;

struct TBoost {
  explicit TBoost(const std::vector<TPoint2D>& Points) {
    for (const TPoint2D& P : Points) List.emplace_back(P.X, P.Y);
  }
  std::size_t Decimate(bool) {
    bg::model::linestring<bg::model::d2::point_xy<double>> Result;
    bg::simplify(List, Result, kTolerance);
    return Result.size();
  }

  bg::model::linestring<bg::model::d2::point_xy<double>> List;
};
#endif

int SizeOf(const benchmark::State& State) {
  return static_cast<int>(State.range(0));
}

template <class T, std::vector<TPoint2D> (*Make)(int), bool Restrict>
void Decimate(benchmark::State& State) {
  T Run(Make(SizeOf(State)));
  for (auto _ : State) benchmark::DoNotOptimize(Run.Decimate(Restrict));
}

using TForm = std::vector<TPoint2D> (*)(TPolyDecimator& Decimator);

void Variant(benchmark::State& State, TForm Form) {
  const TVPolyline2D Ring = bench::ClosedWave(SizeOf(State));
  std::vector<TPoint2D> List(Ring.begin(), Ring.end());
  TPolyDecimator Decimator(List, kTolerance);
  for (auto _ : State) benchmark::DoNotOptimize(Form(Decimator));
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMicrosecond);
}

#define DECIMATE_ROWS(T, Who)                                                                  \
  BENCHMARK(Decimate<T, Arc, false>)->Name("Decimation/clockwise arc/" Who)->Apply(Sizes);     \
  BENCHMARK(Decimate<T, Wave, true>)->Name("Decimation/waves, both sides/" Who)->Apply(Sizes); \
  BENCHMARK(Decimate<T, SheetPoints, true>)->Name("Decimation/sheet, both sides/" Who)->Apply(Sizes)

DECIMATE_ROWS(TOurs, "ours");
BENCHMARK(Decimate<TOurs, Teeth, true>)
    ->Name("Decimation/teeth, both sides/ours")
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);
#ifdef TARNALGO_BENCH_BOOST
DECIMATE_ROWS(TBoost, "Boost.Geometry");
#endif

#define VARIANT(Name_, Call)                                                \
  BENCHMARK_CAPTURE(Variant, Name_, [](TPolyDecimator& D) { return Call; }) \
      ->Name(#Name_ "/outline/ours")                                        \
      ->Apply(Sizes)
VARIANT(ClipTriangles, D.ClipTriangles(0, static_cast<int>(D.Points().size()) - 1));
VARIANT(PlateSimplify, D.PlateSimplify());
VARIANT(GetInscribedHull, D.GetInscribedHull());
VARIANT(HybridDecimate, D.HybridDecimate());
VARIANT(CollinearSmooth, D.CollinearSmooth());

}  // namespace
}  // namespace tarnalgo
