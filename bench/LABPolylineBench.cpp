#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

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

/// A ring of 40 waves about a circle.
TVPolyline2D Wave(int Count) {
  TVPolyline2D Ring;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * I / Count;
    Ring.Add(TPoint2D(1000.0 + 50.0 * std::sin(40.0 * Angle), 0.0).RotateBy(Angle));
  }
  Ring.Add(Ring.First());
  return Ring;
}

/// The same vertices joined by arcs and by Beziers, a third of each.
TLABPolyline CurvedWave(int Count) {
  TLABPolyline Ring(Wave(Count));
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
  PointsInShape(State, TLABPolyline(Wave(static_cast<int>(State.range(0)))));
}
void PointsInCurvedChain(benchmark::State& State) {
  PointsInShape(State, CurvedWave(static_cast<int>(State.range(0))));
}
BENCHMARK(PointsInChain)->Arg(1000);
BENCHMARK(PointsInCurvedChain)->Arg(1000);

#ifdef TARNALGO_BENCH_BOOST
void PointsInBoostPolygon(benchmark::State& State) {
  namespace bg = boost::geometry;
  using TBoostPoint = bg::model::d2::point_xy<double>;
  bg::model::polygon<TBoostPoint, false> Ring;
  for (const TPoint2D& P : Wave(static_cast<int>(State.range(0)))) {
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
BENCHMARK(PointsInBoostPolygon)->Arg(1000);
#endif

std::vector<TLABSegline> Segments(bool AreArcs, unsigned Seed) {
  std::mt19937 Random(Seed);
  std::uniform_real_distribution<double> Coordinate(-5.0, 5.0);
  std::vector<TLABSegline> Segs(1024);
  for (TLABSegline& Seg : Segs) {
    const TPoint2D From(Coordinate(Random), Coordinate(Random));
    const TPoint2D To(Coordinate(Random), Coordinate(Random));
    Seg =
        AreArcs ? TLABSegline(From, To, TVArc2D(From, To, 0.7).Center, 0.7) : TLABSegline(From, To);
  }
  return Segs;
}

/// Arcs with arcs, or with lines, as values: the result lists are used again.
void CrossArcsWith(benchmark::State& State, bool AreArcs) {
  const std::vector<TLABSegline> A = Segments(true, 2);
  const std::vector<TLABSegline> B = Segments(AreArcs, 3);
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  std::vector<TVArc2D> Arcs;
  std::vector<TBezierSegment2D> Beziers;
  for (auto _ : State) {
    Points.clear();
    for (std::size_t I = 0; I < A.size(); ++I) {
      A[I].CrossWithLABSegline(B[I], Points, Lines, Arcs, Beziers);
    }
    benchmark::DoNotOptimize(Points.data());
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(A.size()));
}

/// The same through the host's curve objects.
void CrossHostArcsWith(benchmark::State& State, bool AreArcs) {
  std::vector<std::unique_ptr<TGeCurve2D>> A;
  std::vector<std::unique_ptr<TGeCurve2D>> B;
  for (const TLABSegline& Seg : Segments(true, 2)) A.push_back(Seg.ToGeCurve2D());
  for (const TLABSegline& Seg : Segments(AreArcs, 3)) B.push_back(Seg.ToGeCurve2D());
  std::vector<TIntersect2D> Found;
  for (auto _ : State) {
    Found.clear();
    for (std::size_t I = 0; I < A.size(); ++I) A[I]->IntersectCurve(*B[I], Found);
    benchmark::DoNotOptimize(Found.data());
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(A.size()));
}

BENCHMARK_CAPTURE(CrossArcsWith, Lines, false);
BENCHMARK_CAPTURE(CrossHostArcsWith, Lines, false);
BENCHMARK_CAPTURE(CrossArcsWith, Arcs, true);
BENCHMARK_CAPTURE(CrossHostArcsWith, Arcs, true);

}  // namespace
}  // namespace tarnalgo
