#include <benchmark/benchmark.h>

#include <queue>
#include <random>
#include <vector>

#include "containers/TreeAlgorithm/MinHeap.h"

// The heap against the standard priority queue over the same nodes, keys and operations.

namespace tarnalgo {
namespace {

constexpr int kCount = 1000000;
constexpr int kSteadyCount = 100000;

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
    std::vector<double> Result(2 * kCount);
    for (double& Key : Result) Key = Range(Random);
    return Result;
  }();
  return Keys;
}

template <class THeap>
void PushThenPop(benchmark::State& State) {
  const std::vector<double>& Keys = RandomKeys();
  for (auto _ : State) {
    THeap Heap;
    for (int I = 0; I < kCount; ++I) Put(Heap, I, Keys[static_cast<std::size_t>(I)]);
    double Sum = 0.0;
    for (int I = 0; I < kCount; ++I) Sum += Take(Heap);
    benchmark::DoNotOptimize(Sum);
  }
}

template <class THeap>
void PopAndPush(benchmark::State& State) {
  const std::vector<double>& Keys = RandomKeys();
  THeap Start;
  for (int I = 0; I < kSteadyCount; ++I) Put(Start, I, Keys[static_cast<std::size_t>(I)]);
  for (auto _ : State) {
    THeap Heap = Start;
    double Sum = 0.0;
    for (int I = 0; I < kCount; ++I) {
      Sum += Take(Heap);
      Put(Heap, I, Keys[static_cast<std::size_t>(kCount + I)]);
    }
    benchmark::DoNotOptimize(Sum);
  }
}

#define TARNALGO_HEAP_BENCH(Function, Size)                                      \
  BENCHMARK(Function<TMinHeap<int>>)->Name(#Function "/TMinHeap, keys/" Size);   \
  BENCHMARK(Function<TQueue>)->Name(#Function "/priority_queue, keys/" Size);    \
  BENCHMARK(Function<TNumberHeap>)->Name(#Function "/TMinHeap, comparer/" Size); \
  BENCHMARK(Function<TNumberQueue>)->Name(#Function "/priority_queue, comparer/" Size)

TARNALGO_HEAP_BENCH(PushThenPop, "1000000");
TARNALGO_HEAP_BENCH(PopAndPush, "100000");

}  // namespace
}  // namespace tarnalgo
