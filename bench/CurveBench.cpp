#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "host/Cadgeometry.h"

// Crossings of host curves, by pair of kinds and for long chains. Each pair lies in a square of
// side 10, so that most of them meet.

namespace tarnalgo {
namespace {

enum TKind { kLine, kArc, kBezier };
constexpr const char* kKindNames[] = {"line", "arc", "Bezier"};
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

/// Pairs a second, and how many crossings a pair has.
void CrossPairs(benchmark::State& State) {
  const auto KindA = static_cast<TKind>(State.range(0));
  const auto KindB = static_cast<TKind>(State.range(1));
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
  State.SetLabel(std::string(kKindNames[KindA]) + " with " + kKindNames[KindB]);
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

BENCHMARK(CrossPairs)
    ->Args({kLine, kLine})
    ->Args({kLine, kArc})
    ->Args({kLine, kBezier})
    ->Args({kArc, kArc})
    ->Args({kArc, kBezier})
    ->Args({kBezier, kBezier});
BENCHMARK(CrossZigzag)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnalgo
