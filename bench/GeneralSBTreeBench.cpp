#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <vector>

#include "containers/TreeAlgorithm/GeneralSBTree.h"

// The ordered map against the standard multimap: the same keys in the same order.

namespace tarnalgo {
namespace {

constexpr int kCount = 1000000;

using TTree = TGeneralSBTree<int, int, TExactComparer<int>>;
using TMap = std::multimap<int, int>;

void Put(TTree& Tree, int Key) {
  Tree.Insert(Key, Key);
}
void Put(TMap& Map, int Key) {
  Map.emplace(Key, Key);
}

int Find(const TTree& Tree, int Key) {
  int Value = 0;
  Tree.Search(Key, Value);
  return Value;
}
int Find(const TMap& Map, int Key) {
  const auto Found = Map.find(Key);
  return Found != Map.end() ? Found->second : 0;
}

void Erase(TTree& Tree, int Key) {
  Tree.Remove(Key);
}
void Erase(TMap& Map, int Key) {
  const auto Found = Map.find(Key);
  if (Found != Map.end()) Map.erase(Found);
}

struct TKeys {
  std::vector<int> Inserted;
  std::vector<int> Asked;  // the same ones, shuffled
};

const TKeys& RandomKeys() {
  static const TKeys Keys = [] {
    std::mt19937 Random(1);
    TKeys Result;
    for (int I = 0; I < kCount; ++I) Result.Inserted.push_back(static_cast<int>(Random() >> 1));
    Result.Asked = Result.Inserted;
    std::shuffle(Result.Asked.begin(), Result.Asked.end(), Random);
    return Result;
  }();
  return Keys;
}

template <class TContainer>
std::unique_ptr<TContainer> Filled() {
  auto Result = std::make_unique<TContainer>();
  for (const int Key : RandomKeys().Inserted) Put(*Result, Key);
  return Result;
}

template <class TContainer>
void Insert(benchmark::State& State) {
  RandomKeys();
  for (auto _ : State) {
    auto Container = Filled<TContainer>();
    benchmark::DoNotOptimize(Container.get());
    State.PauseTiming();
    Container.reset();
    State.ResumeTiming();
  }
}

template <class TContainer>
void Search(benchmark::State& State) {
  const auto Container = Filled<TContainer>();
  for (auto _ : State) {
    std::int64_t Sum = 0;
    for (const int Key : RandomKeys().Asked) Sum += Find(*Container, Key);
    benchmark::DoNotOptimize(Sum);
  }
}

template <class TContainer>
void EraseAll(benchmark::State& State) {
  for (auto _ : State) {
    State.PauseTiming();
    auto Container = Filled<TContainer>();
    State.ResumeTiming();
    for (const int Key : RandomKeys().Asked) Erase(*Container, Key);
    benchmark::DoNotOptimize(Container.get());
  }
}

BENCHMARK(Insert<TTree>)->Name("Insert/TGeneralSBTree/1000000")->Unit(benchmark::kMillisecond);
BENCHMARK(Insert<TMap>)->Name("Insert/multimap/1000000")->Unit(benchmark::kMillisecond);
BENCHMARK(Search<TTree>)->Name("Search/TGeneralSBTree/1000000")->Unit(benchmark::kMillisecond);
BENCHMARK(Search<TMap>)->Name("Search/multimap/1000000")->Unit(benchmark::kMillisecond);
BENCHMARK(EraseAll<TTree>)->Name("Erase/TGeneralSBTree/1000000")->Unit(benchmark::kMillisecond);
BENCHMARK(EraseAll<TMap>)->Name("Erase/multimap/1000000")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnalgo
