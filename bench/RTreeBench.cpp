#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "bench/Inputs.h"
#include "geometryAlgo/VedaType/Line.h"
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

enum TKind { kRandom, kGrid, kSheet };

/// Boxes with about one box per unit of area: of sides up to 1 at random, the cells of a grid that
/// touch, or the edges of a sheet of parts; and windows, a tenth as many, that meet about 12 of
/// them.
struct TScene {
  std::vector<TVRect2D> Boxes;
  std::vector<TVRect2D> Windows;
  std::vector<int> Removed;  // half of the boxes, in random order

  TScene(TKind Kind, int Count) {
    std::mt19937 Random(1);
    const double Side = std::sqrt(static_cast<double>(Count));
    const auto Square = [&](double Size) {
      const double X = bench::Draw(Random, 0.0, Side);
      const TPoint2D P(X, bench::Draw(Random, 0.0, Side));
      return TVRect2D(P, P + TPoint2D(Size, Size));
    };
    if (Kind == kSheet) {
      AddEdges(Count);
    } else if (Kind == kGrid) {
      const int Columns = static_cast<int>(Side);
      for (int I = 0; I < Count; ++I) {
        const TPoint2D P(I % Columns, I / Columns);
        Boxes.emplace_back(P, P + TPoint2D(1, 1));
      }
    } else {
      for (int I = 0; I < Count; ++I) Boxes.push_back(Square(bench::Draw(Random, 0.0, 1.0)));
    }
    for (int I = 0; I < Count / 10; ++I) Windows.push_back(Square(3.0));
    for (int I = 0; I < Count; ++I) Removed.push_back(I);
    std::shuffle(Removed.begin(), Removed.end(), Random);
    Removed.resize(static_cast<std::size_t>(Count / 2));
  }

 private:
  void AddEdges(int Count) {
    TVRect2D All;
    for (const bench::TRing& Ring : bench::Sheet(2 * Count)) {
      for (std::size_t I = 0; I < Ring.size(); ++I) {
        Boxes.push_back(TVLine2D(Ring[I], Ring[(I + 1) % Ring.size()]).BoundBox());
        All.ExpandInPlace(Ring[I]);
      }
    }
    Boxes.resize(static_cast<std::size_t>(Count));
    const double Scale =
        std::sqrt(static_cast<double>(Count)) / std::max(All.Width(), All.Height());
    for (TVRect2D& Box : Boxes) {
      Box = TVRect2D(TPoint2D(Box.Left, Box.Bottom) * Scale, TPoint2D(Box.Right, Box.Top) * Scale);
    }
  }
};

template <TKind Kind>
const TScene& Scene(const benchmark::State& State) {
  static std::map<std::int64_t, TScene> Scenes;
  const auto Count = State.range(0);
  return Scenes.try_emplace(Count, Kind, static_cast<int>(Count)).first->second;
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

template <class TTree, TKind Kind>
void Build(benchmark::State& State) {
  const TScene& Input = Scene<Kind>(State);
  for (auto _ : State) {
    auto Tree = std::make_unique<TTree>(Input);
    State.PauseTiming();
    Tree.reset();
    State.ResumeTiming();
  }
}

template <class TTree, TKind Kind>
void Windows(benchmark::State& State) {
  const TScene& Input = Scene<Kind>(State);
  const TTree Tree(Input);
  std::vector<int> Result;
  for (auto _ : State) {
    Result.clear();
    for (const TVRect2D& Window : Input.Windows) Tree.Search(Window, Result);
    benchmark::DoNotOptimize(Result.data());
  }
  State.counters["hits"] =
      static_cast<double>(Result.size()) / static_cast<double>(Input.Windows.size());
}

template <class TTree, TKind Kind>
void RemoveHalf(benchmark::State& State) {
  const TScene& Input = Scene<Kind>(State);
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

/// The boxes in order of their left sides: less than any packing has to do.
void SortBoxes(benchmark::State& State) {
  const TScene& Input = Scene<kRandom>(State);
  for (auto _ : State) {
    std::vector<TVRect2D> Boxes = Input.Boxes;
    std::sort(Boxes.begin(), Boxes.end(),
              [](const TVRect2D& A, const TVRect2D& B) { return A.Left < B.Left; });
    benchmark::DoNotOptimize(Boxes.data());
  }
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
}
#define ROWS(Function, Job, T, Who)                                              \
  BENCHMARK(Function<T, kRandom>)->Name(Job "/random boxes/" Who)->Apply(Sizes); \
  BENCHMARK(Function<T, kGrid>)->Name(Job "/grid/" Who)->Apply(Sizes);           \
  BENCHMARK(Function<T, kSheet>)->Name(Job "/sheet/" Who)->Apply(Sizes)
ROWS(Build, "R-tree, build by insertion", TOurTree, "ours");
ROWS(Windows, "R-tree, windows", TOurTree, "ours");
ROWS(RemoveHalf, "R-tree, half removed", TOurTree, "ours");
BENCHMARK(SortBoxes)
    ->Name("R-tree, build by insertion/random boxes/limit: sort by X")
    ->Apply(Sizes);
#ifdef TARNALGO_BENCH_BOOST
ROWS(Build, "R-tree, build by insertion", TBoostLinear, "Boost linear");
ROWS(Windows, "R-tree, windows", TBoostLinear, "Boost linear");
ROWS(Windows, "R-tree, windows", TBoostRStar, "Boost R*");
ROWS(RemoveHalf, "R-tree, half removed", TBoostRStar, "Boost R*");
#endif

}  // namespace
}  // namespace tarnalgo
