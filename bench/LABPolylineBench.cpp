#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "bench/Inputs.h"
#include "geometryAlgo/VedaType/LABPolyline.h"
#include "host/Cadgeometry.h"

#ifdef TARNALGO_BENCH_BOOST
#define BOOST_ALLOW_DEPRECATED_HEADERS
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#endif

namespace tarnalgo {
namespace {

/// The waves' vertices joined by arcs and by Beziers, a third of each.
TLABPolyline CurvedWave(int Count) {
  TLABPolyline Ring(bench::ClosedWave(Count));
  for (int I = 0; I < Ring.Count(); ++I) {
    const TVLine2D Edge = Ring[I].ToLine();
    const TPoint2D Normal = Edge.Vector().RotateCw90() * 0.2;
    if (I % 3 == 1) {
      Ring.Replace(I, {Edge.StartPoint, Edge.EndPoint,
                       TVArc2D(Edge.StartPoint, Edge.EndPoint, 0.3).Center, 0.3});
    } else if (I % 3 == 2) {
      Ring.Replace(I, {Edge.StartPoint, Edge.EvalPoint(0.3) + Normal, Edge.EvalPoint(0.7) + Normal,
                       Edge.EndPoint});
    }
  }
  return Ring;
}

std::vector<TPoint2D> ManyPoints() {
  std::mt19937 Random(1);
  std::uniform_real_distribution<double> Coordinate(-1100.0, 1100.0);
  std::vector<TPoint2D> Points(10000);
  for (TPoint2D& P : Points) P = {Coordinate(Random), Coordinate(Random)};
  return Points;
}

template <class TShape>
void PointsInShape(benchmark::State& State, const TShape& Shape) {
  const std::vector<TPoint2D> Points = ManyPoints();
  for (auto _ : State) {
    int Inside = 0;
    for (const TPoint2D& P : Points) Inside += Shape.RelationWithPoint(P) == srIn ? 1 : 0;
    benchmark::DoNotOptimize(Inside);
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(Points.size()));
}

void PointsInChain(benchmark::State& State) {
  PointsInShape(State, TLABPolyline(bench::ClosedWave(static_cast<int>(State.range(0)))));
}
void PointsInCurvedChain(benchmark::State& State) {
  PointsInShape(State, CurvedWave(static_cast<int>(State.range(0))));
}
void ChainSizes(benchmark::internal::Benchmark* Row) {
  Row->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(PointsInChain)->Name("10^4 points in a chain/lines/ours")->Apply(ChainSizes);
BENCHMARK(PointsInCurvedChain)->Name("10^4 points in a chain/curved/ours")->Apply(ChainSizes);

#ifdef TARNALGO_BENCH_BOOST
void PointsInBoostPolygon(benchmark::State& State) {
  namespace bg = boost::geometry;
  using TBoostPoint = bg::model::d2::point_xy<double>;
  bg::model::polygon<TBoostPoint, false> Ring;
  for (const TPoint2D& P : bench::ClosedWave(static_cast<int>(State.range(0)))) {
    Ring.outer().emplace_back(P.X, P.Y);
  }
  const std::vector<TPoint2D> Points = ManyPoints();
  for (auto _ : State) {
    int Inside = 0;
    for (const TPoint2D& P : Points) Inside += bg::within(TBoostPoint(P.X, P.Y), Ring) ? 1 : 0;
    benchmark::DoNotOptimize(Inside);
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(Points.size()));
}
BENCHMARK(PointsInBoostPolygon)
    ->Name("10^4 points in a chain/lines/Boost.Geometry")
    ->Apply(ChainSizes);
#endif

class TSegmentMaker {
 public:
  explicit TSegmentMaker(unsigned Seed) : FRandom(Seed) {}

  TLABSegline Make(TSegType Kind) {
    const TPoint2D From = Point();
    const TPoint2D To = Point();
    if (Kind == stLine) return {From, To};
    if (Kind == stArc) return {From, To, TVArc2D(From, To, 0.7).Center, 0.7};
    const TPoint2D Control = Point();
    return {From, Control, Point(), To};
  }

  std::vector<TLABSegline> Make1024(TSegType Kind) {
    std::vector<TLABSegline> Segs;
    for (int I = 0; I < 1024; ++I) Segs.push_back(Make(Kind));
    return Segs;
  }

 private:
  TPoint2D Point() { return {FCoordinate(FRandom), FCoordinate(FRandom)}; }

  std::mt19937 FRandom;
  std::uniform_real_distribution<double> FCoordinate{-5.0, 5.0};
};

/// Each of the first list with its fellow of the second; the result lists are used again.
void CrossSegments(benchmark::State& State, const std::vector<TLABSegline>& A,
                   const std::vector<TLABSegline>& B) {
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  std::vector<TVArc2D> Arcs;
  std::vector<TBezierSegment2D> Beziers;
  for (auto _ : State) {
    Points.clear();
    Lines.clear();
    Arcs.clear();
    Beziers.clear();
    for (std::size_t I = 0; I < A.size(); ++I) {
      A[I].CrossWithLABSegline(B[I], Points, Lines, Arcs, Beziers);
    }
    benchmark::DoNotOptimize(Points.data());
  }
  const auto Pairs = static_cast<double>(A.size());
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(A.size()));
  State.counters["crossings"] = static_cast<double>(Points.size()) / Pairs;
  State.counters["stretches"] = static_cast<double>(Lines.size() + Beziers.size()) / Pairs;
}

void CrossKinds(benchmark::State& State, TSegType KindA, TSegType KindB) {
  CrossSegments(State, TSegmentMaker(2).Make1024(KindA), TSegmentMaker(3).Make1024(KindB));
}

/// Two cubics that cross nine times, the most there can be.
void CrossNineTimes(benchmark::State& State) {
  const TLABSegline High({0, 0}, {1, 3.2}, {0.2, -2.4}, {1, 1});
  const TLABSegline Wide({0, 1}, {3.2, 0}, {-2.4, 0.8}, {1, 0});
  CrossSegments(State, {High}, {Wide});
}

/// Each cubic and itself moved a little: within the tolerance they are together all
/// along, beyond it they are apart all along or cross at the flattest of angles.
void CrossNearlyCoincident(benchmark::State& State, double Way) {
  const std::vector<TLABSegline> A = TSegmentMaker(2).Make1024(stBezier);
  std::vector<TLABSegline> B;
  for (const TLABSegline& Seg : A) B.push_back(Seg.Translate({0.6 * Way, 0.8 * Way}));
  CrossSegments(State, A, B);
}

/// Arcs with others through the host's curve objects.
void CrossHostArcsWith(benchmark::State& State, TSegType Kind) {
  std::vector<std::unique_ptr<TGeCurve2D>> A;
  std::vector<std::unique_ptr<TGeCurve2D>> B;
  for (const TLABSegline& Seg : TSegmentMaker(2).Make1024(stArc)) A.push_back(Seg.ToGeCurve2D());
  for (const TLABSegline& Seg : TSegmentMaker(3).Make1024(Kind)) B.push_back(Seg.ToGeCurve2D());
  std::vector<TIntersect2D> Found;
  for (auto _ : State) {
    Found.clear();
    for (std::size_t I = 0; I < A.size(); ++I) A[I]->IntersectCurve(*B[I], Found);
    benchmark::DoNotOptimize(Found.data());
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(A.size()));
}

#define PAIR(Kinds, KindA, KindB)                    \
  BENCHMARK_CAPTURE(CrossKinds, Kinds, KindA, KindB) \
      ->Name("Chain segments/" Kinds "/ours")        \
      ->Arg(1024)
PAIR("arc, line", stArc, stLine);
PAIR("arc, arc", stArc, stArc);
PAIR("Bezier, line", stBezier, stLine);
PAIR("Bezier, arc", stBezier, stArc);
PAIR("Bezier, Bezier", stBezier, stBezier);
BENCHMARK_CAPTURE(CrossHostArcsWith, Lines, stLine)
    ->Name("Chain segments/arc, line/our host curves")
    ->Arg(1024);
BENCHMARK_CAPTURE(CrossHostArcsWith, Arcs, stArc)
    ->Name("Chain segments/arc, arc/our host curves")
    ->Arg(1024);
BENCHMARK(CrossNineTimes)->Name("Chain segments/two cubics, nine crossings/ours")->Arg(1);
#define NEARLY(Apart, Way)                                       \
  BENCHMARK_CAPTURE(CrossNearlyCoincident, Apart, Way)           \
      ->Name("Chain segments/a cubic and itself " Apart "/ours") \
      ->Arg(1024)
NEARLY("in place", 0.0);
NEARLY("1e-6 away", 1e-6);
NEARLY("3e-6 away", 3e-6);
NEARLY("3e-5 away", 3e-5);
NEARLY("3e-3 away", 3e-3);

}  // namespace
}  // namespace tarnalgo
