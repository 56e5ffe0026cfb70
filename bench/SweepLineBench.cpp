#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "bench/Inputs.h"
#include "geometryAlgo/SweepLine.h"

#ifdef TARNALGO_BENCH_CGAL
#include <CGAL/Arr_segment_traits_2.h>
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Surface_sweep_2_algorithms.h>
#include <CGAL/box_intersection_d.h>
#endif

#ifdef TARNALGO_BENCH_GEOS
#include <geos/algorithm/LineIntersector.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/noding/BasicSegmentString.h>
#include <geos/noding/MCIndexNoder.h>
#include <geos/noding/SegmentIntersector.h>
#endif

namespace tarnalgo {
namespace {

using bench::Draw;
using bench::TRing;

/// Segments, and the closed rings they are the edges of where they come from outlines.
struct TScene {
  std::vector<TVLine2D> Lines;
  std::vector<TRing> Rings;
};

// --- Workloads. `Size` is what grows: segments, or crossings where these are the more ---

/// `Size` short segments with about as many crossings.
TScene ShortSegments(int Size) {
  std::mt19937 Random(1);
  const double Length = 1000.0 * std::sqrt(kPi / Size);
  TScene Scene;
  for (int I = 0; I < Size; ++I) {
    const TPoint2D P(Draw(Random, 0, 1000), Draw(Random, 0, 1000));
    Scene.Lines.emplace_back(P, P + TPoint2D(Length, 0).RotateBy(Draw(Random, 0, kFullTurn)));
  }
  return Scene;
}

/// `Size` long lines side by side whose boxes all overlap; about one in ten crosses its neighbour.
TScene Hatch(int Size) {
  std::mt19937 Random(2);
  const double Spacing = 400.0 / Size;
  TScene Scene;
  for (int I = 0; I < Size; ++I) {
    const double Y = Spacing * I;
    const double Left = Draw(Random, 0, 50);
    const double Right = Draw(Random, 950, 1000);
    const auto Noise = [&] { return Draw(Random, 0, 1.5 * Spacing); };
    Scene.Lines.emplace_back(TPoint2D(Left, Y + Left / 2 + Noise()),
                             TPoint2D(Right, Y + Right / 2 + Noise()));
  }
  std::shuffle(Scene.Lines.begin(), Scene.Lines.end(), Random);
  return Scene;
}

/// Long segments in all directions with about `Size` crossings.
TScene LongSegments(int Size) {
  std::mt19937 Random(3);
  TScene Scene;
  const int Count = static_cast<int>(std::sqrt(Size * 9.0));
  for (int I = 0; I < Count; ++I) {
    const auto Point = [&] { return TPoint2D(Draw(Random, 0, 1000), Draw(Random, 0, 1000)); };
    const TPoint2D P = Point();
    Scene.Lines.emplace_back(P, Point());
  }
  return Scene;
}

/// As many upright as flat lines, `Size` crossings.
TScene Grid(int Size) {
  const int Side = static_cast<int>(std::lround(std::sqrt(Size)));
  TScene Scene;
  for (int I = 0; I < Side; ++I) {
    Scene.Lines.emplace_back(TPoint2D(-1, I), TPoint2D(Side, I));
    Scene.Lines.emplace_back(TPoint2D(I, -1), TPoint2D(I, Side));
  }
  return Scene;
}

/// Nests side by side on about `Size` edges.
TScene Sheet(int Size) {
  TScene Scene;
  for (TRing& Ring : bench::Sheet(Size)) {
    Ring.push_back(Ring.front());
    for (std::size_t I = 1; I < Ring.size(); ++I) Scene.Lines.emplace_back(Ring[I - 1], Ring[I]);
    Scene.Rings.push_back(std::move(Ring));
  }
  return Scene;
}

using TMaker = TScene (*)(int Size);

const TScene& SceneOf(TMaker Maker, int Size) {
  static std::map<std::pair<TMaker, int>, TScene> Scenes;
  TScene& Scene = Scenes[{Maker, Size}];
  if (Scene.Lines.empty()) Scene = Maker(Size);
  return Scene;
}

// --- Ours and the peers ---

struct TOurs {
  explicit TOurs(const TScene& AScene) : Scene(AScene) {}
  std::int64_t Run() const {
    return std::ssize(TSeglinesIntersector::GetIntersectInfosBySweepline(Scene.Lines, 1e-9, 1e-6));
  }
  const TScene& Scene;
};

#ifdef TARNALGO_BENCH_CGAL
/// Pairs of boxes that overlap, by streaming segment trees, and an exact test of each.
struct TCgalBoxes {
  using TKernel = CGAL::Exact_predicates_inexact_constructions_kernel;
  using TSegment = TKernel::Segment_2;
  using TBox = CGAL::Box_intersection_d::Box_with_handle_d<double, 2, const TSegment*>;

  explicit TCgalBoxes(const TScene& Scene) {
    for (const TVLine2D& Line : Scene.Lines) {
      Segments.emplace_back(TKernel::Point_2(Line.StartPoint.X, Line.StartPoint.Y),
                            TKernel::Point_2(Line.EndPoint.X, Line.EndPoint.Y));
    }
  }
  std::int64_t Run() const {
    std::vector<TBox> Boxes;
    Boxes.reserve(Segments.size());
    for (const TSegment& Segment : Segments) Boxes.emplace_back(Segment.bbox(), &Segment);
    std::vector<std::pair<const TSegment*, const TSegment*>> Result;
    CGAL::box_self_intersection_d(Boxes.begin(), Boxes.end(), [&](const TBox& A, const TBox& B) {
      if (!CGAL::do_intersect(*A.handle(), *B.handle())) return;
      Result.emplace_back(A.handle(), B.handle());
    });
    return std::ssize(Result);
  }
  std::vector<TSegment> Segments;
};

/// The points of all crossings, exact.
struct TCgalSweep {
  using TKernel = CGAL::Exact_predicates_exact_constructions_kernel;
  using TTraits = CGAL::Arr_segment_traits_2<TKernel>;

  explicit TCgalSweep(const TScene& Scene) {
    for (const TVLine2D& Line : Scene.Lines) {
      Curves.emplace_back(TKernel::Point_2(Line.StartPoint.X, Line.StartPoint.Y),
                          TKernel::Point_2(Line.EndPoint.X, Line.EndPoint.Y));
    }
  }
  std::int64_t Run() const {
    std::vector<TKernel::Point_2> Result;
    CGAL::compute_intersection_points(Curves.begin(), Curves.end(), std::back_inserter(Result));
    return std::ssize(Result);
  }
  std::vector<TTraits::Curve_2> Curves;
};
#endif

#ifdef TARNALGO_BENCH_GEOS
/// Counts the pairs of edges that meet, by an index over monotone chains. It is given the edges one
/// by one, as we are, or the rings: these make long chains, and edges that follow one another on
/// them, nearly all that meet, need not be found.
template <bool IsGivenRings>
struct TGeosNoder {
  using TString = geos::noding::SegmentString;

  struct TCounter : geos::noding::SegmentIntersector {
    void processIntersections(TString* A, std::size_t I, TString* B, std::size_t J) override {
      if (A == B) {
        const std::size_t Apart = I < J ? J - I : I - J;
        if (Apart <= 1 || Apart + 2 >= A->size()) return;
      }
      Lines.computeIntersection(A->getCoordinate(I), A->getCoordinate(I + 1), B->getCoordinate(J),
                                B->getCoordinate(J + 1));
      if (Lines.hasIntersection()) ++Count;
    }
    geos::algorithm::LineIntersector Lines;
    std::int64_t Count = 0;
  };

  explicit TGeosNoder(const TScene& Scene) {
    if (IsGivenRings) {
      for (const TRing& Ring : Scene.Rings) Add(Ring);
    } else {
      for (const TVLine2D& Line : Scene.Lines) Add({Line.StartPoint, Line.EndPoint});
    }
  }
  void Add(const TRing& Chain) {
    auto Points = std::make_unique<geos::geom::CoordinateArraySequence>();
    for (const TPoint2D& P : Chain) Points->add(geos::geom::Coordinate(P.X, P.Y));
    Owned.push_back(std::make_unique<geos::noding::BasicSegmentString>(Points.get(), nullptr));
    Sequences.push_back(std::move(Points));
    Strings.push_back(Owned.back().get());
  }
  std::int64_t Run() {
    TCounter Counter;
    geos::noding::MCIndexNoder Noder(&Counter);
    Noder.computeNodes(&Strings);
    std::int64_t Count = Counter.Count;
    if (!IsGivenRings) return Count;
    for (const TString* String : Strings) Count += static_cast<std::int64_t>(String->size()) - 1;
    return Count;
  }
  std::vector<std::unique_ptr<geos::geom::CoordinateArraySequence>> Sequences;
  std::vector<std::unique_ptr<geos::noding::BasicSegmentString>> Owned;
  std::vector<TString*> Strings;
};
using TGeosEdges = TGeosNoder<false>;
using TGeosRings = TGeosNoder<true>;
#endif

// --- Programs ---

/// The first program to run a workload tells how many meetings it has; the others must agree but
/// for what lies within our tolerance, or is pulled apart by rounding where outlines are moved.
bool AgreesWithOthers(TMaker Maker, int Size, std::int64_t Count) {
  static std::map<std::pair<TMaker, int>, std::int64_t> Counts;
  const std::int64_t First = Counts.emplace(std::pair(Maker, Size), Count).first->second;
  return std::abs(First - Count) <= First / 100;
}

template <class TProgram, TMaker Maker>
void Find(benchmark::State& State) {
  const int Size = static_cast<int>(State.range(0));
  const TScene& Scene = SceneOf(Maker, Size);
  TProgram Program(Scene);
  std::int64_t Count = 0;
  for (auto _ : State) Count = Program.Run();
  if (!AgreesWithOthers(Maker, Size, Count)) State.SkipWithError("counts differ");
  State.counters["segments"] = static_cast<double>(Scene.Lines.size());
  State.counters["meetings"] = static_cast<double>(Count);
}

/// The ends in order of X: what a sweep has to sort.
template <TMaker Maker>
void SortEnds(benchmark::State& State) {
  const TScene& Scene = SceneOf(Maker, static_cast<int>(State.range(0)));
  for (auto _ : State) {
    std::vector<std::pair<double, std::size_t>> Ends;
    for (std::size_t I = 0; I < Scene.Lines.size(); ++I) {
      Ends.emplace_back(Scene.Lines[I].StartPoint.X, I);
      Ends.emplace_back(Scene.Lines[I].EndPoint.X, I);
    }
    std::sort(Ends.begin(), Ends.end());
    benchmark::DoNotOptimize(Ends.data());
  }
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
}
void SmallSizes(benchmark::internal::Benchmark* Row) {
  Row->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
}

#define ROW(Program, Maker, Input, Who) \
  BENCHMARK_TEMPLATE(Find, Program, Maker)->Name("Meetings of segments/" Input "/" Who)

ROW(TOurs, ShortSegments, "short, at random", "ours")->Apply(Sizes);
ROW(TOurs, Hatch, "hatch", "ours")->Apply(SmallSizes);
ROW(TOurs, LongSegments, "long, at random", "ours")->Apply(Sizes);
ROW(TOurs, Grid, "grid", "ours")->Apply(Sizes);
ROW(TOurs, Sheet, "sheet", "ours")->Apply(Sizes);
BENCHMARK(SortEnds<ShortSegments>)
    ->Name("Meetings of segments/short, at random/limit: sort of the ends")
    ->Apply(Sizes);
BENCHMARK(SortEnds<Sheet>)
    ->Name("Meetings of segments/sheet/limit: sort of the ends")
    ->Apply(Sizes);
#ifdef TARNALGO_BENCH_CGAL
ROW(TCgalBoxes, ShortSegments, "short, at random", "CGAL boxes")->Apply(Sizes);
ROW(TCgalBoxes, Sheet, "sheet", "CGAL boxes")->Apply(Sizes);
ROW(TCgalSweep, ShortSegments, "short, at random", "CGAL sweep")->Arg(10000)->Arg(100000);
ROW(TCgalSweep, Hatch, "hatch", "CGAL sweep")->Apply(SmallSizes);
ROW(TCgalSweep, LongSegments, "long, at random", "CGAL sweep")->Arg(10000)->Arg(100000);
ROW(TCgalSweep, Grid, "grid", "CGAL sweep")->Arg(10000)->Arg(100000);
#endif
#ifdef TARNALGO_BENCH_GEOS
ROW(TGeosEdges, ShortSegments, "short, at random", "GEOS, edges")->Apply(Sizes);
ROW(TGeosEdges, Sheet, "sheet", "GEOS, edges")->Apply(Sizes);
ROW(TGeosRings, Sheet, "sheet", "GEOS, rings")->Apply(Sizes);
#endif

}  // namespace
}  // namespace tarnalgo
