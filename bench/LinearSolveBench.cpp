// Dense systems, factored and solved, beside Eigen's solvers, both compiled for the base machine.

#include <benchmark/benchmark.h>

#include <random>

#include "geometryAlgo/UMatrixAlgo.h"
#ifdef TARNALGO_BENCH_EIGEN
#include <Eigen/Dense>
#include <Eigen/IterativeLinearSolvers>
#endif

namespace {

using namespace tarnalgo;

/// Symmetric and positive definite, of condition 10 or so.
TFloatMatrix RandomSystem(int Size) {
  std::mt19937 Random(static_cast<unsigned>(Size));
  std::uniform_real_distribution<double> Items(-1.0, 1.0);
  TFloatMatrix A(Size, Size);
  for (int I = 0; I < Size; ++I) {
    for (int J = 0; J < Size; ++J) A.SetItem(I, J, Items(Random));
  }
  return A.AAT() + static_cast<double>(Size) * 0.2 * TFloatMatrix(Size);
}

int SizeOf(const benchmark::State& State) {
  return static_cast<int>(State.range(0));
}

using TSolver = bool (*)(TFloatVector&, TFloatMatrix, TFloatVector);

/// `kSpoils`: the solver works in the system, which is copied for it.
template <TSolver Solver, bool kSpoils>
void Ours(benchmark::State& State) {
  const TFloatMatrix A = RandomSystem(SizeOf(State));
  const TFloatVector B(SizeOf(State), 1.0);
  TFloatVector X;
  for (auto _ : State) {
    const bool Solved = kSpoils ? Solver(X, A.Clone(), B.Clone()) : Solver(X, A, B);
    if (!Solved) State.SkipWithError("not solved");
  }
}

#ifdef TARNALGO_BENCH_EIGEN
Eigen::MatrixXd EigenSystem(int Size) {
  const TFloatMatrix A = RandomSystem(Size);
  return Eigen::Map<const Eigen::MatrixXd, 0, Eigen::OuterStride<>>(
      A.Row(0), Size, Size, Eigen::OuterStride<>(A.RowStride()));
}

template <class TFactors>
void Peer(benchmark::State& State) {
  const Eigen::MatrixXd A = EigenSystem(SizeOf(State));
  const Eigen::VectorXd B = Eigen::VectorXd::Ones(SizeOf(State));
  for (auto _ : State) {
    const TFactors Factors(A);
    Eigen::VectorXd X = Factors.solve(B);
    benchmark::DoNotOptimize(X.data());
  }
}

/// To the same residual: 1e-10 in all, which the peer wants relative to the right-hand side.
void PeerConjugateGradient(benchmark::State& State) {
  using TGradient = Eigen::ConjugateGradient<Eigen::MatrixXd, Eigen::Lower | Eigen::Upper,
                                             Eigen::IdentityPreconditioner>;
  const Eigen::MatrixXd A = EigenSystem(SizeOf(State));
  const Eigen::VectorXd B = Eigen::VectorXd::Ones(SizeOf(State));
  for (auto _ : State) {
    TGradient Gradient(A);
    Gradient.setTolerance(1e-10 / B.norm());
    Eigen::VectorXd X = Gradient.solve(B);
    benchmark::DoNotOptimize(X.data());
  }
}
#endif

void Sizes(benchmark::internal::Benchmark* Job) {
  Job->Arg(64)->Arg(256)->Arg(1024)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(Ours<TLinearSolveTool::Cholesky, false>)
    ->Name("Cholesky/positive definite/ours")
    ->Apply(Sizes);
BENCHMARK(Ours<TLinearSolveTool::LDLT, false>)->Name("LDLT/positive definite/ours")->Apply(Sizes);
BENCHMARK(Ours<TLinearSolveTool::ConjugateGradient, false>)
    ->Name("Conjugate gradient/positive definite/ours")
    ->Apply(Sizes);
BENCHMARK(Ours<TLinearSolveTool::Gaussian, true>)
    ->Name("Gaussian/positive definite/ours")
    ->Apply(Sizes);
#ifdef TARNALGO_BENCH_EIGEN
BENCHMARK(Peer<Eigen::LLT<Eigen::MatrixXd>>)
    ->Name("Cholesky/positive definite/Eigen")
    ->Apply(Sizes);
BENCHMARK(Peer<Eigen::LDLT<Eigen::MatrixXd>>)->Name("LDLT/positive definite/Eigen")->Apply(Sizes);
BENCHMARK(PeerConjugateGradient)->Name("Conjugate gradient/positive definite/Eigen")->Apply(Sizes);
BENCHMARK(Peer<Eigen::PartialPivLU<Eigen::MatrixXd>>)
    ->Name("Gaussian/positive definite/Eigen")
    ->Apply(Sizes);
#endif

}  // namespace
