#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <vector>

#include "host/Cadgeometry.h"

// Crossings of host curves, by pair of kinds and for long chains. Each pair lies in a square of
// side 10, so that most of them meet.

namespace tarnalgo {
namespace {

enum TKind { kLine, kArc, kBezier };
constexpr int kPairs = 1000;

using TCurves = std::vector<std::unique_ptr<TGeCurve2D>>;

class TMaker {
 public:
  TPoint2D Point() { return {FWhere(FRandom), FWhere(FRandom)}; }

  std::unique_ptr<TGeCurve2D> Curve(TKind Kind) {
    if (Kind == kLine) return std::make_unique<TGeLine2D>(Point(), Point());
    if (Kind == kArc) return std::make_unique<TGeCircularArc2D>(Point(), 0.6, Point());
    auto Result = std::make_unique<TGePolyBezier2D>();
    Result->AddBezier({Point(), Point(), Point(), Point()});
    return Result;
  }

  TCurves Curves(TKind Kind) {
    TCurves Result;
    for (int I = 0; I < kPairs; ++I) Result.push_back(Curve(Kind));
    return Result;
  }

 private:
  std::mt19937 FRandom{1};
  std::uniform_real_distribution<double> FWhere{0.0, 10.0};
};

/// Each of the first list with its fellow of the second.
void CrossPairs(benchmark::State& State, TKind KindA, TKind KindB) {
  TMaker Maker;
  const TCurves A = Maker.Curves(KindA);
  const TCurves B = Maker.Curves(KindB);
  std::vector<TIntersect2D> Results;
  for (auto _ : State) {
    Results.clear();
    for (std::size_t I = 0; I < A.size(); ++I) A[I]->IntersectCurve(*B[I], Results);
    benchmark::DoNotOptimize(Results.data());
  }
  State.SetItemsProcessed(State.iterations() * kPairs);
  State.counters["crossings"] = static_cast<double>(Results.size()) / kPairs;
}

/// A zigzag of so many edges and the line through all of them.
void CrossZigzag(benchmark::State& State) {
  const int Count = static_cast<int>(State.range(0));
  TDynPoints2D Points;
  for (int I = 0; I <= Count; ++I) Points.emplace_back(I, I % 2 == 0 ? 1.0 : -1.0);
  const TGePolyline2D Zigzag(std::move(Points));
  const TGeLine2D Line({-1.0, 0.25}, {Count + 1.0, 0.25});
  std::vector<TIntersect2D> Results;
  for (auto _ : State) {
    Results.clear();
    Zigzag.IntersectCurve(Line, Results);
    benchmark::DoNotOptimize(Results.data());
  }
  State.SetItemsProcessed(State.iterations() * Count);
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}
#define PAIR(KindA, KindB, Kinds)                    \
  BENCHMARK_CAPTURE(CrossPairs, Kinds, KindA, KindB) \
      ->Name("Host curves/" Kinds "/ours")           \
      ->Arg(kPairs)
PAIR(kLine, kLine, "line, line");
PAIR(kLine, kArc, "line, arc");
PAIR(kLine, kBezier, "line, Bezier");
PAIR(kArc, kArc, "arc, arc");
PAIR(kArc, kBezier, "arc, Bezier");
PAIR(kBezier, kBezier, "Bezier, Bezier");
BENCHMARK(CrossZigzag)->Name("Host polyline with a line/zigzag/ours")->Apply(Sizes);

}  // namespace
}  // namespace tarnalgo
