#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "tests/support/Plate.h"

namespace tarnalgo {
namespace {

/// The edges of a square plate with `Count` of them, in the order in which a drawing has them:
/// hole by hole, the holes in no particular order.
std::vector<TLine2D> EdgesOfDrawing(std::int64_t Count) {
  test::TPlate Plate;
  Plate.Rows = static_cast<int>(std::lround(std::sqrt(static_cast<double>(Count) / 4.0)));
  Plate.Columns = static_cast<int>(Count / 4 / Plate.Rows);
  Plate.Angle = 0.2;
  const std::vector<TLine2D> Edges = test::EdgesOf(Plate);
  std::vector<std::size_t> Holes(Edges.size() / 4);
  for (std::size_t I = 0; I < Holes.size(); ++I) Holes[I] = I;
  std::shuffle(Holes.begin(), Holes.end(), std::mt19937(1));
  std::vector<TLine2D> Result;
  for (const std::size_t Hole : Holes) {
    for (std::size_t I = 0; I < 4; ++I) Result.push_back(Edges[4 * Hole + I]);
  }
  return Result;
}

/// The keys of an edge, in an exact order.
struct TKey {
  std::int32_t Port;
  double Angle;
  double Intercept;

  friend auto operator<=>(const TKey&, const TKey&) = default;
};

void SortKeys(benchmark::State& State) {
  TFlyCurve Ref;
  std::vector<TKey> Keys;
  for (const TLine2D& Edge : EdgesOfDrawing(State.range(0))) {
    const TLinearSegment Segment(&Ref, Edge);
    Keys.push_back({Segment.ChannelPort(), Segment.LineAngle, Segment.Intercept});
  }
  for (auto _ : State) {
    std::vector<TKey> Sorted = Keys;
    std::sort(Sorted.begin(), Sorted.end());
    benchmark::DoNotOptimize(Sorted.data());
  }
  State.SetItemsProcessed(State.iterations() * State.range(0));
}

/// From the edges to the passes: keys, order, runs, pieces.
void PlanPlate(benchmark::State& State) {
  const std::vector<TLine2D> Edges = EdgesOfDrawing(State.range(0));
  TFlyCurve Ref;
  for (auto _ : State) {
    TLinearSegments Segments;
    for (const TLine2D& Edge : Edges) Segments.AddLine(&Ref, Edge);
    Segments.SortByAngleIntercept();
    std::vector<TOwningFlyCurves> Passes;
    for (const auto& Run : test::CutIntoRuns(Segments)) {
      Run->BuildResult(Passes.emplace_back());
    }
    benchmark::DoNotOptimize(Passes.data());
    State.counters["passes"] = static_cast<double>(Passes.size());
  }
  State.SetItemsProcessed(State.iterations() * State.range(0));
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(PlanPlate)->Name("Passes of a plate/turned grid/ours")->Apply(Sizes);
BENCHMARK(SortKeys)->Name("Passes of a plate/turned grid/limit: sort of the keys")->Apply(Sizes);

}  // namespace
}  // namespace tarnalgo
