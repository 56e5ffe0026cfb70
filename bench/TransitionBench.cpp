#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <utility>
#include <vector>

#ifdef TARNALGO_BENCH_OMPL
#include <ompl/base/ScopedState.h>
#include <ompl/base/spaces/DubinsStateSpace.h>
#endif

#include "geometryAlgo/flyscanAlgo.h"

// Shortest ways of bounded curvature between random poses, 0.5 to 20 radii apart, with any number
// of pieces for the peer (six kinds of curve) and for us (four, and the fillet).

namespace tarnalgo {
namespace {

constexpr double kRadius = 1.5;

struct TPose {
  TPoint2D Pt;
  double Angle = 0.0;
  TPoint2D Vec;
};

struct TPoses {
  TPose Start;
  TPose End;
};

std::vector<TPoses> MakePoses(const benchmark::State& State) {
  std::mt19937 Random(20240702);
  std::uniform_real_distribution<double> AnyAngle(-kPi, kPi);
  std::uniform_real_distribution<double> Distance(0.5 * kRadius, 20.0 * kRadius);
  const auto Pose = [&](const TPoint2D& Pt) {
    const double Angle = AnyAngle(Random);
    return TPose{Pt, Angle, DcsX.RotateBy(Angle)};
  };
  std::vector<TPoses> Result;
  for (int I = 0; I < State.range(0); ++I) {
    const TPoint2D Pt(AnyAngle(Random), AnyAngle(Random));
    const TPose Start = Pose(Pt);
    Result.push_back({Start, Pose(Pt + DcsX.RotateBy(AnyAngle(Random)) * Distance(Random))});
  }
  return Result;
}

void Lengths(benchmark::State& State) {
  const std::vector<TPoses> Poses = MakePoses(State);
  TTransitionLineFunc Func;
  for (auto _ : State) {
    double Sum = 0.0;
    for (const auto& [Start, End] : Poses) {
      Sum += Func.CalcShortestLength(Start.Pt, Start.Vec, End.Pt, End.Vec, kRadius);
    }
    benchmark::DoNotOptimize(Sum);
  }
  State.SetItemsProcessed(State.iterations() * State.range(0));
}

void Curves(benchmark::State& State) {
  const std::vector<TPoses> Poses = MakePoses(State);
  TTransitionLineFunc Func;
  for (auto _ : State) {
    for (const auto& [Start, End] : Poses) {
      benchmark::DoNotOptimize(
          Func.InternalCalcTransitionLine(Start.Pt, Start.Vec, End.Pt, End.Vec, kRadius));
    }
  }
  State.SetItemsProcessed(State.iterations() * State.range(0));
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
}
BENCHMARK(Lengths)->Name("Shortest transition, length/random poses/ours")->Apply(Sizes);
BENCHMARK(Curves)->Name("Shortest transition, curves/random poses/ours")->Apply(Sizes);

#ifdef TARNALGO_BENCH_OMPL

void OmplLengths(benchmark::State& State) {
  using TState = ompl::base::ScopedState<ompl::base::SE2StateSpace>;
  const auto Space = std::make_shared<ompl::base::DubinsStateSpace>(kRadius);
  const auto MakeState = [&Space](const TPose& Pose) {
    TState Result(Space);
    Result->setXY(Pose.Pt.X, Pose.Pt.Y);
    Result->setYaw(Pose.Angle);
    return Result;
  };
  std::vector<std::pair<TState, TState>> States;
  for (const auto& [Start, End] : MakePoses(State)) {
    States.emplace_back(MakeState(Start), MakeState(End));
  }
  for (auto _ : State) {
    double Sum = 0.0;
    for (const auto& [Start, End] : States) Sum += Space->distance(Start.get(), End.get());
    benchmark::DoNotOptimize(Sum);
  }
  State.SetItemsProcessed(State.iterations() * State.range(0));
}

BENCHMARK(OmplLengths)->Name("Shortest transition, length/random poses/OMPL")->Apply(Sizes);
BENCHMARK(OmplLengths)
    ->Name("Shortest transition, curves/random poses/OMPL, lengths only")
    ->Apply(Sizes);

#endif

}  // namespace
}  // namespace tarnalgo
