#include <benchmark/benchmark.h>

#include <algorithm>
#include <queue>
#include <random>
#include <vector>

#include "containers/TreeAlgorithm/MinHeap.h"

// The heap against the standard priority queue over the same nodes, keys and operations.

namespace tarnalgo {
namespace {

constexpr int kMost = 1000000;

using TNode = THeapNode<int>;

struct TGreaterKey {
  bool operator()(const TNode& A, const TNode& B) const { return A.Key > B.Key; }
};
using TQueue = std::priority_queue<TNode, std::vector<TNode>, TGreaterKey>;

struct TCompareNumbers {
  int operator()(double A, double B) const { return CompareExact(A, B); }
};
struct TAfter {
  bool operator()(const THeapNode<double>& A, const THeapNode<double>& B) const {
    return TCompareNumbers()(A.Data, B.Data) > 0;
  }
};
using TNumberHeap = TMinHeap<double, TCompareNumbers>;
using TNumberQueue = std::priority_queue<THeapNode<double>, std::vector<THeapNode<double>>, TAfter>;

void Put(TMinHeap<int>& Heap, int Id, double Key) {
  Heap.Add(Id, Key);
}
void Put(TQueue& Queue, int Id, double Key) {
  Queue.push({Id, Key});
}
void Put(TNumberHeap& Heap, int /*Id*/, double Key) {
  Heap.Add(Key);
}
void Put(TNumberQueue& Queue, int /*Id*/, double Key) {
  Queue.push({Key, 0.0});
}

double Take(TMinHeap<int>& Heap) {
  return Heap.Pop();
}
double Take(TNumberHeap& Heap) {
  return Heap.Pop();
}
double Take(TQueue& Queue) {
  const int Id = Queue.top().Data;
  Queue.pop();
  return Id;
}
double Take(TNumberQueue& Queue) {
  const double Key = Queue.top().Data;
  Queue.pop();
  return Key;
}

const std::vector<double>& RandomKeys() {
  static const std::vector<double> Keys = [] {
    std::mt19937_64 Random(1);
    std::uniform_real_distribution<double> Range(0.0, 1e6);
    std::vector<double> Result(2 * kMost);
    for (double& Key : Result) Key = Range(Random);
    return Result;
  }();
  return Keys;
}

template <class THeap>
void PushThenPop(benchmark::State& State) {
  const std::vector<double>& Keys = RandomKeys();
  const int Count = static_cast<int>(State.range(0));
  for (auto _ : State) {
    THeap Heap;
    for (int I = 0; I < Count; ++I) Put(Heap, I, Keys[static_cast<std::size_t>(I)]);
    double Sum = 0.0;
    for (int I = 0; I < Count; ++I) Sum += Take(Heap);
    benchmark::DoNotOptimize(Sum);
  }
}

template <class THeap>
void PopAndPush(benchmark::State& State) {
  const std::vector<double>& Keys = RandomKeys();
  const int Count = static_cast<int>(State.range(0));
  THeap Start;
  for (int I = 0; I < Count; ++I) Put(Start, I, Keys[static_cast<std::size_t>(I)]);
  for (auto _ : State) {
    THeap Heap = Start;
    double Sum = 0.0;
    for (int I = 0; I < Count; ++I) {
      Sum += Take(Heap);
      Put(Heap, I, Keys[static_cast<std::size_t>(Count + I)]);
    }
    benchmark::DoNotOptimize(Sum);
  }
}

/// What handing the keys out in order costs at the least.
void SortKeys(benchmark::State& State) {
  for (auto _ : State) {
    std::vector<double> Keys(RandomKeys().begin(), RandomKeys().begin() + State.range(0));
    std::sort(Keys.begin(), Keys.end());
    benchmark::DoNotOptimize(Keys.data());
  }
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(10000, kMost)->Unit(benchmark::kMicrosecond);
}
#define ROWS(Function, Job)                                                         \
  BENCHMARK(Function<TMinHeap<int>>)->Name(Job "/keys/ours")->Apply(Sizes);         \
  BENCHMARK(Function<TQueue>)->Name(Job "/keys/std::priority_queue")->Apply(Sizes); \
  BENCHMARK(Function<TNumberHeap>)->Name(Job "/comparer/ours")->Apply(Sizes);       \
  BENCHMARK(Function<TNumberQueue>)->Name(Job "/comparer/std::priority_queue")->Apply(Sizes)
ROWS(PushThenPop, "Min-heap, push all, pop all");
ROWS(PopAndPush, "Min-heap, pop and push");
BENCHMARK(SortKeys)->Name("Min-heap, push all, pop all/keys/limit: sort")->Apply(Sizes);

}  // namespace
}  // namespace tarnalgo
