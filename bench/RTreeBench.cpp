#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/RTree.h"

#ifdef TARNALGO_BENCH_BOOST
#define BOOST_ALLOW_DEPRECATED_HEADERS
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#endif

namespace tarnalgo {
namespace {

constexpr int kWindows = 100000;

/// Boxes of sides up to 1 spread evenly over a square with one box per unit of area, and windows
/// that meet about 12 of them.
struct TScene {
  std::vector<TVRect2D> Boxes;
  std::vector<TVRect2D> Windows;
  std::vector<int> Removed;  // half of the boxes, in random order

  explicit TScene(int Count) {
    std::mt19937 Random(1);
    const double Side = std::sqrt(static_cast<double>(Count));
    const auto Square = [&](double Size) {
      std::uniform_real_distribution<double> Place(0.0, Side);
      const TPoint2D P(Place(Random), Place(Random));
      return TVRect2D(P, P + TPoint2D(Size, Size));
    };
    std::uniform_real_distribution<double> Size(0.0, 1.0);
    for (int I = 0; I < Count; ++I) Boxes.push_back(Square(Size(Random)));
    for (int I = 0; I < kWindows; ++I) Windows.push_back(Square(3.0));
    for (int I = 0; I < Count; ++I) Removed.push_back(I);
    std::shuffle(Removed.begin(), Removed.end(), Random);
    Removed.resize(static_cast<std::size_t>(Count / 2));
  }
};

const TScene& Scene(int Count) {
  static const TScene Result(Count);
  return Result;
}

class TOurTree {
 public:
  explicit TOurTree(const TScene& Scene) {
    for (std::size_t I = 0; I < Scene.Boxes.size(); ++I) {
      FTree.Insert(static_cast<int>(I), Scene.Boxes[I]);
    }
  }
  void Search(const TVRect2D& Window, std::vector<int>& Result) const {
    FTree.Search(Window, Result, 0.0);
  }
  void Remove(const TScene&, int Id) { FTree.Remove(Id); }

 private:
  TRTree<int> FTree{8};
};

#ifdef TARNALGO_BENCH_BOOST
namespace bg = boost::geometry;
using TBoostBox = bg::model::box<bg::model::d2::point_xy<double>>;

template <class TParameters>
class TBoostTree {
 public:
  explicit TBoostTree(const TScene& Scene) {
    for (std::size_t I = 0; I < Scene.Boxes.size(); ++I) {
      FTree.insert({BoxOf(Scene.Boxes[I]), static_cast<int>(I)});
    }
  }
  void Search(const TVRect2D& Window, std::vector<int>& Result) const {
    FTree.query(bg::index::intersects(BoxOf(Window)),
                boost::make_function_output_iterator(
                    [&Result](const auto& Value) { Result.push_back(Value.second); }));
  }
  void Remove(const TScene& Scene, int Id) {
    FTree.remove({BoxOf(Scene.Boxes[static_cast<std::size_t>(Id)]), Id});
  }

 private:
  static TBoostBox BoxOf(const TVRect2D& R) { return {{R.Left, R.Bottom}, {R.Right, R.Top}}; }

  bg::index::rtree<std::pair<TBoostBox, int>, TParameters> FTree;
};
using TBoostLinear = TBoostTree<bg::index::linear<8>>;
using TBoostRStar = TBoostTree<bg::index::rstar<8>>;
#endif

template <class TTree>
void Build(benchmark::State& State) {
  const TScene& Input = Scene(static_cast<int>(State.range(0)));
  for (auto _ : State) {
    auto Tree = std::make_unique<TTree>(Input);
    State.PauseTiming();
    Tree.reset();
    State.ResumeTiming();
  }
}

template <class TTree>
void Windows(benchmark::State& State) {
  const TScene& Input = Scene(static_cast<int>(State.range(0)));
  const TTree Tree(Input);
  std::vector<int> Result;
  for (auto _ : State) {
    Result.clear();
    for (const TVRect2D& Window : Input.Windows) Tree.Search(Window, Result);
    benchmark::DoNotOptimize(Result.data());
  }
  State.counters["hits"] = static_cast<double>(Result.size()) / kWindows;
}

template <class TTree>
void RemoveHalf(benchmark::State& State) {
  const TScene& Input = Scene(static_cast<int>(State.range(0)));
  for (auto _ : State) {
    State.PauseTiming();
    auto Tree = std::make_unique<TTree>(Input);
    State.ResumeTiming();
    for (const int Id : Input.Removed) Tree->Remove(Input, Id);
    State.PauseTiming();
    Tree.reset();
    State.ResumeTiming();
  }
}

constexpr int kCount = 1000000;

BENCHMARK(Build<TOurTree>)->Arg(kCount)->Unit(benchmark::kMillisecond);
BENCHMARK(Windows<TOurTree>)->Arg(kCount)->Unit(benchmark::kMillisecond);
BENCHMARK(RemoveHalf<TOurTree>)->Arg(kCount)->Unit(benchmark::kMillisecond);
#ifdef TARNALGO_BENCH_BOOST
BENCHMARK(Build<TBoostLinear>)->Arg(kCount)->Unit(benchmark::kMillisecond);
BENCHMARK(Windows<TBoostLinear>)->Arg(kCount)->Unit(benchmark::kMillisecond);
BENCHMARK(RemoveHalf<TBoostRStar>)->Arg(kCount)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
}  // namespace tarnalgo
