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

/// In no order, or upwards.
template <bool IsSorted>
TKeys MakeKeys(const benchmark::State& State) {
  std::mt19937 Random(1);
  TKeys Result;
  for (int I = 0; I < State.range(0); ++I) {
    Result.Inserted.push_back(IsSorted ? I : static_cast<int>(Random() >> 1));
  }
  Result.Asked = Result.Inserted;
  std::shuffle(Result.Asked.begin(), Result.Asked.end(), Random);
  return Result;
}

template <class TContainer>
std::unique_ptr<TContainer> Filled(const TKeys& Keys) {
  auto Result = std::make_unique<TContainer>();
  for (const int Key : Keys.Inserted) Put(*Result, Key);
  return Result;
}

template <class TContainer, bool IsSorted>
void Insert(benchmark::State& State) {
  const TKeys Keys = MakeKeys<IsSorted>(State);
  for (auto _ : State) {
    auto Container = Filled<TContainer>(Keys);
    benchmark::DoNotOptimize(Container.get());
    State.PauseTiming();
    Container.reset();
    State.ResumeTiming();
  }
}

template <class TContainer>
void Search(benchmark::State& State) {
  const TKeys Keys = MakeKeys<false>(State);
  const auto Container = Filled<TContainer>(Keys);
  for (auto _ : State) {
    std::int64_t Sum = 0;
    for (const int Key : Keys.Asked) Sum += Find(*Container, Key);
    benchmark::DoNotOptimize(Sum);
  }
}

template <class TContainer>
void EraseAll(benchmark::State& State) {
  const TKeys Keys = MakeKeys<false>(State);
  for (auto _ : State) {
    State.PauseTiming();
    auto Container = Filled<TContainer>(Keys);
    State.ResumeTiming();
    for (const int Key : Keys.Asked) Erase(*Container, Key);
    benchmark::DoNotOptimize(Container.get());
  }
}

/// What an order costs at the least.
void SortKeys(benchmark::State& State) {
  const TKeys Keys = MakeKeys<false>(State);
  for (auto _ : State) {
    std::vector<int> Sorted = Keys.Inserted;
    std::sort(Sorted.begin(), Sorted.end());
    benchmark::DoNotOptimize(Sorted.data());
  }
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
}

#define ROWS(T, Who)                                                                       \
  BENCHMARK(Insert<T, false>)->Name("Ordered map, insert/random keys/" Who)->Apply(Sizes); \
  BENCHMARK(Insert<T, true>)->Name("Ordered map, insert/rising keys/" Who)->Apply(Sizes);  \
  BENCHMARK(Search<T>)->Name("Ordered map, search/random keys/" Who)->Apply(Sizes);        \
  BENCHMARK(EraseAll<T>)->Name("Ordered map, erase/random keys/" Who)->Apply(Sizes)
ROWS(TTree, "ours");
ROWS(TMap, "std::multimap");
BENCHMARK(SortKeys)->Name("Ordered map, insert/random keys/limit: sort")->Apply(Sizes);

}  // namespace
}  // namespace tarnalgo
