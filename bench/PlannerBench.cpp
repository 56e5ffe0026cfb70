#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <tuple>
#include <vector>

#include "examples/sheet_planner/Nesting.h"
#include "examples/sheet_planner/Planner.h"
#include "examples/sheet_planner/SampleSheets.h"

namespace sheet_planner {
namespace {

using namespace tarnalgo;

/// A turned plate of square holes, which stand in the drawing in no particular order.
TDrawing TurnedPlate(std::int64_t Edges) {
  const int Rows = static_cast<int>(std::lround(std::sqrt(static_cast<double>(Edges) / 4.0)));
  const TDrawing Plate = SquareGrid(static_cast<int>(Edges / 4 / Rows), Rows);
  std::vector<std::size_t> Holes(Plate.Edges.size() / 4);
  for (std::size_t I = 0; I < Holes.size(); ++I) Holes[I] = I;
  std::shuffle(Holes.begin(), Holes.end(), std::mt19937(1));
  TDrawing Result;
  for (const std::size_t Hole : Holes) {
    for (std::size_t I = 4 * Hole; I < 4 * Hole + 4; ++I) {
      const TLine2D& Line = Plate.Edges[I].Line;
      Result.AddEdge(Line.StartPoint.RotateBy(0.2), Line.EndPoint.RotateBy(0.2), 0);
    }
  }
  return Result;
}

void SortKeys(benchmark::State& State) {
  TFlyCurve Ref;
  std::vector<std::tuple<int, double, double>> Keys;
  for (const TDrawnEdge& Edge : TurnedPlate(State.range(0)).Edges) {
    const TLinearSegment Segment(&Ref, Edge.Line);
    Keys.emplace_back(Segment.ChannelPort(), Segment.LineAngle, Segment.Intercept);
  }
  for (auto _ : State) {
    auto Sorted = Keys;
    std::sort(Sorted.begin(), Sorted.end());
    benchmark::DoNotOptimize(Sorted.data());
  }
}

/// From the sheet's edges to the passes.
void Group(benchmark::State& State) {
  const TSheet Sheet = PrepareSheet(TurnedPlate(State.range(0)), {});
  const TNesting Nesting(Sheet);
  for (auto _ : State) {
    TPlan Plan = GroupSheet(Sheet, Nesting);
    benchmark::DoNotOptimize(Plan.Passes.data());
    State.counters["passes"] = static_cast<double>(Plan.Passes.size());
  }
}

void Nest(benchmark::State& State) {
  const TSheet Sheet = PrepareSheet(TurnedPlate(State.range(0)), {});
  for (auto _ : State) {
    const TNesting Nesting(Sheet);
    benchmark::DoNotOptimize(&Nesting);
  }
}

void Prepare(benchmark::State& State) {
  const TDrawing Drawing = TurnedPlate(State.range(0));
  for (auto _ : State) {
    TSheet Sheet = PrepareSheet(Drawing, {});
    benchmark::DoNotOptimize(Sheet.Edges.data());
  }
}

void RejectGaps(benchmark::State& State) {
  const TSheet Sheet = PrepareSheet(TurnedPlate(State.range(0)), {});
  for (auto _ : State) {
    State.PauseTiming();
    TPlan Plan = GroupSheet(Sheet, TNesting(Sheet));
    State.ResumeTiming();
    RejectCrossingGaps(Sheet, Plan);
    benchmark::DoNotOptimize(Plan.Passes.data());
  }
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(Group)->Name("Planner: grouping/turned grid/ours")->Apply(Sizes);
BENCHMARK(SortKeys)->Name("Planner: grouping/turned grid/limit: sort of the keys")->Apply(Sizes);
BENCHMARK(Nest)->Name("Planner: nesting/turned grid/ours")->Apply(Sizes);
BENCHMARK(Prepare)->Name("Planner: preparing/turned grid/ours")->Apply(Sizes);
BENCHMARK(RejectGaps)->Name("Planner: gap check/turned grid/ours")->Apply(Sizes);

}  // namespace
}  // namespace sheet_planner
