#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <random>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "bench/Inputs.h"
#include "geometryAlgo/GeometryExtend.h"

namespace tarnalgo {
namespace {

/// Points of the model and room for their integer form.
struct TCloud {
  explicit TCloud(const benchmark::State& State)
      : Points(static_cast<std::size_t>(State.range(0))), Target(Points.size()) {
    std::mt19937 Random(1);
    for (TPoint2D& P : Points) {
      const double X = bench::Draw(Random, -3000.0, 3000.0);
      P = {X, bench::Draw(Random, -3000.0, 3000.0)};
    }
  }

  std::vector<TPoint2D> Points;
  std::vector<TIntPoint> Target;
};

void ScaleOurs(benchmark::State& State) {
  TCloud Cloud(State);
  for (auto _ : State) {
    ScaleIntPoints(Cloud.Points.data(), Cloud.Points.size(), kIntegerScale, Cloud.Target.data());
    benchmark::ClobberMemory();
  }
}

/// Sixteen bytes in, sixteen out.
void CopyBytes(benchmark::State& State) {
  TCloud Cloud(State);
  for (auto _ : State) {
    std::memcpy(static_cast<void*>(Cloud.Target.data()), Cloud.Points.data(),
                sizeof(TPoint2D) * Cloud.Points.size());
    benchmark::ClobberMemory();
  }
}

#ifdef __SSE2__
void ScalePlainLoop(benchmark::State& State) {
  TCloud Cloud(State);
  const auto Convert = [](double Value) {
    return _mm_cvtsd_si64(_mm_set_sd(Value * kIntegerScale));
  };
  for (auto _ : State) {
    TIntPoint* Result = Cloud.Target.data();
    for (std::size_t I = 0; I < Cloud.Points.size(); ++I) {
      Result[I].X = Convert(Cloud.Points[I].X);
      Result[I].Y = Convert(Cloud.Points[I].Y);
    }
    benchmark::ClobberMemory();
  }
}
#endif

/// So many corners in overlapping squares, every one of them turned a little.
TVPolyline2DList Squares(int Corners) {
  std::mt19937 Random(2);
  const double Side = 10.0 * std::sqrt(Corners / 4.0);
  TVPolyline2DList Result;
  for (int I = 0; I < Corners / 4; ++I) {
    const TPoint2D P(bench::Draw(Random, 0.0, Side), bench::Draw(Random, 0.0, Side));
    auto Square = std::make_unique<TVPolyline2D>(TVRect2D(P, P + TPoint2D(12, 12)));
    Square->Rotate(bench::Draw(Random, 0.0, Side), P);
    Result.Add(std::move(Square));
  }
  return Result;
}

/// Plates with a hole each, 40 corners a ring.
TVPolyline2DList Plates(int Corners) {
  TVPolyline2DList Result;
  for (int I = 0; I < Corners / 40; ++I) {
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
}

/// A sheet and its parts.
TVPolyline2DList SheetRings(int Corners) {
  TVPolyline2DList Result;
  for (const bench::TRing& Points : bench::Sheet(Corners)) {
    auto Ring = std::make_unique<TVPolyline2D>();
    for (const TPoint2D& P : Points) Ring->Add(P);
    Result.Add(std::move(Ring));
  }
  return Result;
}

using TMaker = TVPolyline2DList (*)(int Corners);

/// From the model to grouped regions, through the bridge.
template <TMaker Make>
void UniteThroughBridge(benchmark::State& State) {
  const TVPolyline2DList List = Make(static_cast<int>(State.range(0)));
  for (auto _ : State) {
    TPathsList Regions;
    TPathUtils::NormalizeTPaths(TPathUtils::CreatePaths(List, kIntegerScale), Regions);
    benchmark::DoNotOptimize(Regions.data());
  }
}

/// The library alone, on integer paths made beforehand.
template <TMaker Make>
void UniteBare(benchmark::State& State) {
  const TPaths Paths = Make(static_cast<int>(State.range(0))).ToPaths(kIntegerScale);
  for (auto _ : State) {
    ClipperLib::Clipper Clipper;
    Clipper.AddPaths(Paths, ClipperLib::ptSubject, true);
    TPolyTree Tree;
    Clipper.Execute(ClipperLib::ctUnion, Tree, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    benchmark::DoNotOptimize(Tree.Childs.data());
  }
}

void PointSizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(10000, 10000000)->Unit(benchmark::kMicrosecond);
}
void RingSizes(benchmark::internal::Benchmark* Row) {
  Row->Arg(4000)->Arg(20000)->Arg(80000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(ScaleOurs)->Name("Model to integer/points/ours")->Apply(PointSizes);
BENCHMARK(CopyBytes)->Name("Model to integer/points/limit: copy")->Apply(PointSizes);
#ifdef __SSE2__
BENCHMARK(ScalePlainLoop)->Name("Model to integer/points/plain cvtsd2si loop")->Apply(PointSizes);
#endif
#define UNITE_ROWS(Function, Who)                                                                 \
  BENCHMARK(Function<Squares>)->Name("Model to regions/turned squares/" Who)->Apply(RingSizes);   \
  BENCHMARK(Function<Plates>)->Name("Model to regions/plates with holes/" Who)->Apply(RingSizes); \
  BENCHMARK(Function<SheetRings>)->Name("Model to regions/sheet/" Who)->Apply(RingSizes)
UNITE_ROWS(UniteThroughBridge, "ours");
UNITE_ROWS(UniteBare, "bare Clipper 6");

}  // namespace
}  // namespace tarnalgo
