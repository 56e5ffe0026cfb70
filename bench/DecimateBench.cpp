#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

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

/// A counter-clockwise outline of waves about a circle.
std::vector<TPoint2D> Outline(int Count) {
  std::vector<TPoint2D> Points;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * I / Count;
    Points.push_back(TPoint2D(1000.0 + 50.0 * std::sin(40.0 * Angle), 0.0).RotateBy(Angle));
  }
  Points.push_back(Points.front());
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

template <class T>
void DecimateArc(benchmark::State& State) {
  T Run(Arc(static_cast<int>(State.range(0))));
  for (auto _ : State) benchmark::DoNotOptimize(Run.Decimate(false));
}

template <class T>
void DecimateWave(benchmark::State& State) {
  T Run(Wave(static_cast<int>(State.range(0))));
  for (auto _ : State) benchmark::DoNotOptimize(Run.Decimate(true));
}

using TForm = std::vector<TPoint2D> (*)(TPolyDecimator& Decimator);

void Variant(benchmark::State& State, TForm Form) {
  std::vector<TPoint2D> List = Outline(static_cast<int>(State.range(0)));
  TPolyDecimator Decimator(List, kTolerance);
  for (auto _ : State) benchmark::DoNotOptimize(Form(Decimator));
}

BENCHMARK(DecimateArc<TOurs>)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(DecimateWave<TOurs>)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
#ifdef TARNALGO_BENCH_BOOST
BENCHMARK(DecimateArc<TBoost>)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(DecimateWave<TBoost>)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
#endif

#define VARIANT(Name, Call)                                                \
  BENCHMARK_CAPTURE(Variant, Name, [](TPolyDecimator& D) { return Call; }) \
      ->Arg(10000)                                                         \
      ->Arg(100000)                                                        \
      ->Arg(1000000)                                                       \
      ->Unit(benchmark::kMillisecond)
VARIANT(ClipTriangles, D.ClipTriangles(0, static_cast<int>(D.Points().size()) - 1));
VARIANT(PlateSimplify, D.PlateSimplify());
VARIANT(GetInscribedHull, D.GetInscribedHull());
VARIANT(HybridDecimate, D.HybridDecimate());
VARIANT(CollinearSmooth, D.CollinearSmooth());

}  // namespace
}  // namespace tarnalgo
