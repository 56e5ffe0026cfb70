#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <random>
#include <vector>

#include "geometryAlgo/UPolygonGetter.h"

namespace tarnalgo {
namespace {

/// A net of about so many chains of three points each, whose nodes are pushed about.
TMChainExtends Net(std::int64_t Count) {
  const int Side = static_cast<int>(std::lround(std::sqrt(static_cast<double>(Count) / 2.0)));
  std::mt19937_64 Random(1);
  std::uniform_real_distribution<double> Push(-0.3, 0.3);
  std::vector<TPoint2D> Places;
  for (int I = 0; I < Side * Side; ++I) {
    const double X = I % Side + Push(Random);
    Places.emplace_back(X, I / Side + Push(Random));
  }
  TMChainExtends Chains;
  const auto Add = [&](int U, int V) {
    const TPoint2D& P = Places[static_cast<std::size_t>(U)];
    const TPoint2D& Q = Places[static_cast<std::size_t>(V)];
    Chains.Add(std::make_unique<TMChainExtend>(std::vector<TPoint2D>{P, Lerp(P, Q, 0.5), Q}));
  };
  for (int I = 0; I < Side * Side; ++I) {
    if (I % Side + 1 < Side) Add(I, I + 1);
    if (I + Side < Side * Side) Add(I, I + Side);
  }
  return Chains;
}

void NetSizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
}

void CreateLinks(benchmark::State& State) {
  const TMChainExtends Chains = Net(State.range(0));
  for (auto _ : State) {
    const TTopoLinks Links = TTopoLinks::CreateTopoLink(Chains);
    benchmark::DoNotOptimize(Links.Count());
  }
  State.SetItemsProcessed(State.iterations() * Chains.Count());
}
BENCHMARK(CreateLinks)->Name("Nodes of a drawing/net/ours")->Apply(NetSizes);

/// Every outline of these chains, again and again.
void TraceAll(benchmark::State& State, const TMChainExtends& Chains) {
  TTopoLinks Links = TTopoLinks::CreateTopoLink(Chains);
  for (auto _ : State) {
    TPointsOfOutline PointsOf;
    TChainsOfOutline ChainsOf;
    TVPolyline2DList Outlines;
    Links.GetPolygons(PointsOf, ChainsOf, Outlines);
    benchmark::DoNotOptimize(Outlines.Count());
    State.PauseTiming();
    Links.SortDicIntPoint(true);
    State.ResumeTiming();
  }
}

/// Items are chains: the time for each should hardly grow.
void TraceFaces(benchmark::State& State) {
  const TMChainExtends Chains = Net(State.range(0));
  TraceAll(State, Chains);
  State.SetItemsProcessed(State.iterations() * Chains.Count());
}
BENCHMARK(TraceFaces)->Name("Outlines of a drawing/net/ours")->Apply(NetSizes);

/// One node with so many closed chains, petals round it.
void TraceFlower(benchmark::State& State) {
  const auto Petals = static_cast<int>(State.range(0));
  TMChainExtends Chains;
  for (int I = 0; I < Petals; ++I) {
    const double Step = kFullTurn / Petals;
    const TPoint2D Out = TPoint2D(1000, 0).RotateBy(Step * I);
    const TPoint2D Back = TPoint2D(1000, 0).RotateBy(Step * (I + 0.5));
    Chains.Add(std::make_unique<TMChainExtend>(std::vector<TPoint2D>{{}, Out, Back, {}}));
  }
  TraceAll(State, Chains);
  State.SetItemsProcessed(State.iterations() * Petals);
}
BENCHMARK(TraceFlower)
    ->Name("Outlines of a drawing/petals on one node/ours")
    ->RangeMultiplier(10)
    ->Range(100, 100000)
    ->Unit(benchmark::kMillisecond);

/// A million links in all, as stars of the degree named: from where on scanning a vertex anew for
/// each of its neighbours costs more than the rest.
void BridgesOfStars(benchmark::State& State) {
  constexpr int kLinks = 1'000'000;
  const auto Degree = static_cast<int>(State.range(0));
  const int Stars = kLinks / Degree;
  TBridgeTool Tool(Stars * (Degree + 1));
  for (int Star = 0; Star < Stars; ++Star) {
    const int Hub = Star * (Degree + 1);
    for (int I = 1; I <= Degree; ++I) Tool.AddLink(Hub, Hub + I);
  }
  for (auto _ : State) {
    Tool.CalcBridgeByTarjan();
    benchmark::DoNotOptimize(Tool.Bridges().data());
  }
  State.SetItemsProcessed(State.iterations() * Stars * Degree);
}
BENCHMARK(BridgesOfStars)
    ->Name("Bridges of 10^6 links/stars, by degree/ours")
    ->RangeMultiplier(4)
    ->Range(2, 8192)
    ->Unit(benchmark::kMillisecond);

/// A path of so many links.
void BridgesOfPath(benchmark::State& State) {
  const int Links = static_cast<int>(State.range(0));
  TBridgeTool Tool(Links + 1);
  for (int I = 0; I < Links; ++I) Tool.AddLink(I, I + 1);
  for (auto _ : State) Tool.CalcBridgeByTarjan();
}
BENCHMARK(BridgesOfPath)
    ->Name("Bridges/path/ours")
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

/// Lines across a plate, cut at their crossings: items are the chains that come of it.
void ScatterLines(benchmark::State& State) {
  std::mt19937_64 Random(2);
  std::uniform_real_distribution<double> Place(0.0, 1000.0);
  std::uniform_real_distribution<double> Length(-20.0, 20.0);
  TMChainsScatter Scatter(0.05);
  for (int I = 0; I < State.range(0); ++I) {
    const TPoint2D P(Place(Random), Place(Random));
    Scatter.AddCurve({P, P + TPoint2D(Length(Random), Length(Random))});
  }
  int Count = 0;
  for (auto _ : State) Count = Scatter.GetChains().Count();
  State.SetItemsProcessed(State.iterations() * Count);
}
BENCHMARK(ScatterLines)
    ->Name("Chains cut where they meet/lines on a plate/ours")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(50000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnalgo
