#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <random>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "geometryAlgo/GeometryExtend.h"

namespace tarnalgo {
namespace {

const std::vector<TPoint2D>& Cloud() {
  static const std::vector<TPoint2D> Points = [] {
    std::mt19937_64 Random(1);
    std::uniform_real_distribution<double> Place(-3000.0, 3000.0);
    std::vector<TPoint2D> Result(10'000'000);
    for (TPoint2D& P : Result) P = {Place(Random), Place(Random)};
    return Result;
  }();
  return Points;
}

std::vector<TIntPoint>& Target() {
  static std::vector<TIntPoint> Result(Cloud().size());
  return Result;
}

void ScaleOurs(benchmark::State& State) {
  const std::vector<TPoint2D>& Points = Cloud();
  for (auto _ : State) {
    ScaleIntPoints(Points.data(), Points.size(), kIntegerScale, Target().data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(ScaleOurs)->Unit(benchmark::kMillisecond);

#ifdef __SSE2__
void ScalePlainLoop(benchmark::State& State) {
  const std::vector<TPoint2D>& Points = Cloud();
  const auto Convert = [](double Value) {
    return _mm_cvtsd_si64(_mm_set_sd(Value * kIntegerScale));
  };
  for (auto _ : State) {
    TIntPoint* Result = Target().data();
    for (std::size_t I = 0; I < Points.size(); ++I) {
      Result[I].X = Convert(Points[I].X);
      Result[I].Y = Convert(Points[I].Y);
    }
    benchmark::ClobberMemory();
  }
}
BENCHMARK(ScalePlainLoop)->Unit(benchmark::kMillisecond);
#endif

/// 10^4 overlapping squares, every one of them turned a little.
const TVPolyline2DList& Squares() {
  static const TVPolyline2DList List = [] {
    std::mt19937 Random(2);
    std::uniform_real_distribution<double> Place(0.0, 1000.0);
    TVPolyline2DList Result;
    for (int I = 0; I < 10000; ++I) {
      const TPoint2D P(Place(Random), Place(Random));
      auto Square = std::make_unique<TVPolyline2D>(TVRect2D(P, P + TPoint2D(12, 12)));
      Square->Rotate(Place(Random), P);
      Result.Add(std::move(Square));
    }
    return Result;
  }();
  return List;
}

/// 3000 plates with a hole each, 40 corners a ring.
const TVPolyline2DList& Rings() {
  static const TVPolyline2DList List = [] {
    TVPolyline2DList Result;
    for (int I = 0; I < 6000; ++I) {
      const TPoint2D Centre(60.0 * (I / 2 % 60), 60.0 * (I / 120));
      auto Ring = std::make_unique<TVPolyline2D>();
      for (int K = 0; K < 40; ++K) {
        const TPoint2D Spoke = TPoint2D(I % 2 == 0 ? 28.0 : 11.0, 0).RotateBy(kFullTurn * K / 40);
        Ring->Add(Centre + Spoke);
      }
      if (I % 2 != 0) Ring->Reverse();
      Result.Add(std::move(Ring));
    }
    return Result;
  }();
  return List;
}

/// From the model to grouped regions, through the bridge.
void UniteThroughBridge(benchmark::State& State, const TVPolyline2DList& List) {
  for (auto _ : State) {
    TPathsList Regions;
    TPathUtils::NormalizeTPaths(TPathUtils::CreatePaths(List, kIntegerScale), Regions);
    benchmark::DoNotOptimize(Regions.data());
  }
}
/// The library alone, on integer paths made beforehand.
void UniteBare(benchmark::State& State, const TVPolyline2DList& List) {
  const TPaths Paths = List.ToPaths(kIntegerScale);
  for (auto _ : State) {
    ClipperLib::Clipper Clipper;
    Clipper.AddPaths(Paths, ClipperLib::ptSubject, true);
    TPolyTree Tree;
    Clipper.Execute(ClipperLib::ctUnion, Tree, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    benchmark::DoNotOptimize(Tree.Childs.data());
  }
}
BENCHMARK_CAPTURE(UniteThroughBridge, Squares, Squares())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(UniteBare, Squares, Squares())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(UniteThroughBridge, Rings, Rings())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(UniteBare, Rings, Rings())->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnalgo
