// Dense matrices beside Eigen's, both compiled for the base machine.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "geometryAlgo/UMatrixAlgo.h"
#ifdef TARNALGO_BENCH_EIGEN
#include <Eigen/Dense>
#endif

namespace {

using namespace tarnalgo;

TFloatMatrix RandomMatrix(int Size) {
  std::mt19937 Random(static_cast<unsigned>(Size));
  std::uniform_real_distribution<double> Items(-1.0, 1.0);
  TFloatMatrix A(Size, Size);
  for (int I = 0; I < Size; ++I) {
    for (int J = 0; J < Size; ++J) A.SetItem(I, J, Items(Random));
  }
  return A;
}

int SizeOf(const benchmark::State& State) {
  return static_cast<int>(State.range(0));
}

void PLU(benchmark::State& State) {
  const TFloatMatrix A = RandomMatrix(SizeOf(State));
  std::vector<int> Pivots;
  for (auto _ : State) {
    TFloatMatrix LU = A.Clone();
    TMatrixDCMPTool::PLU(LU, Pivots);
    benchmark::DoNotOptimize(LU.Row(0));
  }
}

void TryReverse(benchmark::State& State) {
  const TFloatMatrix A = RandomMatrix(SizeOf(State));
  for (auto _ : State) {
    TFloatMatrix Inverse = A.Clone();
    benchmark::DoNotOptimize(Inverse.TryReverse());
  }
}

void Product(benchmark::State& State) {
  const TFloatMatrix A = RandomMatrix(SizeOf(State));
  for (auto _ : State) {
    TFloatMatrix C = A * A;
    benchmark::DoNotOptimize(C.Row(0));
  }
}

void ProductAAT(benchmark::State& State) {
  const TFloatMatrix A = RandomMatrix(SizeOf(State));
  for (auto _ : State) {
    TFloatMatrix C = A.AAT();
    benchmark::DoNotOptimize(C.Row(0));
  }
}

void MatrixByVector(benchmark::State& State) {
  const TFloatMatrix A = RandomMatrix(SizeOf(State));
  const TFloatVector X(SizeOf(State), 1.0);
  for (auto _ : State) {
    TFloatVector Y = A * X;
    benchmark::DoNotOptimize(Y.Data());
  }
}

/// Singular values 0.7^k in random directions.
TFloatMatrix GradedMatrix(int Size) {
  TFloatMatrix A = TMatrixDCMPTool::GetOrthoByGramSchmidt(RandomMatrix(Size));
  for (int I = 0; I < Size; ++I) A.SetRow(I, A.GetRow(I) * std::pow(0.7, I));
  return TMatrixDCMPTool::GetOrthoByGramSchmidt(
             RandomMatrix(Size + 1).SubMatrix(1, 1, Size, Size)) *
         A;
}

void SVDCMP(benchmark::State& State) {
  const TFloatMatrix A = GradedMatrix(SizeOf(State));
  TFloatMatrix U;
  TFloatMatrix V;
  TFloatVector W;
  for (auto _ : State) {
    TMatrixDCMPTool::SVDCMP(A, U, V, W);
    benchmark::DoNotOptimize(W.Data());
  }
}

using TRows = std::vector<std::vector<double>>;

/// Unit length.
void Normalise(std::vector<double>& X, double Length) {
  for (double& Item : X) Item /= Length;
}

double LengthOf(const std::vector<double>& X) {
  double Sum = 0.0;
  for (const double Item : X) Sum += Item * Item;
  return std::sqrt(Sum);
}

/// Takes the components along the first `Count` columns, then makes a unit vector.
void Deflate(std::vector<double>& X, const TRows& Columns, std::size_t Count) {
  for (std::size_t J = 0; J < Count; ++J) {
    double Dot = 0.0;
    for (std::size_t I = 0; I < X.size(); ++I) Dot += X[I] * Columns[I][J];
    for (std::size_t I = 0; I < X.size(); ++I) X[I] -= Dot * Columns[I][J];
  }
  if (const double Length = LengthOf(X); Length > 0.0) Normalise(X, Length);
}

/// The same steps as textbook loops.
void PlainSVD(const TRows& A, TRows& U, TRows& V, std::vector<double>& W) {
  const std::size_t N = A.size();
  std::mt19937_64 Random;
  std::uniform_real_distribution<double> Start(0.0, 1.0);
  std::vector<double> X(N), Y(N), NextX(N);
  for (std::size_t K = 0; K < N; ++K) {
    for (double& Item : X) Item = Start(Random) / 32767;
    Normalise(X, LengthOf(X));
    double Sigma = 0.0;
    double Change = 1.0;
    int Count = 0;
    for (; Change >= 1e-12 && Count < 100; ++Count) {
      for (std::size_t J = 0; J < N; ++J) {
        Y[J] = 0.0;
        for (std::size_t I = 0; I < N; ++I) Y[J] += A[I][J] * X[I];
      }
      Sigma = LengthOf(Y);
      if (Sigma < 1e-12) break;
      Normalise(Y, Sigma);
      Deflate(Y, V, K);
      for (std::size_t I = 0; I < N; ++I) {
        NextX[I] = 0.0;
        for (std::size_t J = 0; J < N; ++J) NextX[I] += A[I][J] * Y[J];
      }
      Sigma = LengthOf(NextX);
      if (Sigma < 1e-12) break;
      Normalise(NextX, Sigma);
      Deflate(NextX, U, K);
      Change = 0.0;
      for (std::size_t I = 0; I < N; ++I) Change += (NextX[I] - X[I]) * (NextX[I] - X[I]);
      X = NextX;
    }
    if (!(Sigma >= 1e-12) || Count >= 100) continue;
    W[K] = Sigma;
    for (std::size_t I = 0; I < N; ++I) {
      U[I][K] = X[I];
      V[I][K] = Y[I];
    }
  }
}

void TextbookSVD(benchmark::State& State) {
  const TFloatMatrix A = GradedMatrix(SizeOf(State));
  const std::size_t N = static_cast<std::size_t>(SizeOf(State));
  TRows Rows;
  for (int I = 0; I < SizeOf(State); ++I) Rows.emplace_back(A.Row(I), A.Row(I) + N);
  for (auto _ : State) {
    TRows U(N, std::vector<double>(N));
    TRows V(N, std::vector<double>(N));
    std::vector<double> W(N);
    PlainSVD(Rows, U, V, W);
    benchmark::DoNotOptimize(W.data());
  }
}

/// A matrix of so many elements to a file and back.
void MatrixFile(benchmark::State& State) {
  const TFloatMatrix A = RandomMatrix(SizeOf(State));
  const std::string Name = (std::filesystem::temp_directory_path() / "tarnalgo_bench.txt").string();
  TFloatMatrix B;
  for (auto _ : State) {
    A.SaveToFile(Name);
    B.LoadFromFile(Name);
  }
  std::filesystem::remove(Name);
  State.SetItemsProcessed(State.iterations() * SizeOf(State) * SizeOf(State));
}

#ifdef TARNALGO_BENCH_EIGEN
using TRowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

Eigen::MatrixXd EigenMatrix(int Size) {
  const TFloatMatrix A = RandomMatrix(Size);
  return Eigen::Map<const TRowMajor, 0, Eigen::OuterStride<>>(A.Row(0), Size, Size,
                                                              Eigen::OuterStride<>(A.RowStride()));
}

void EigenPLU(benchmark::State& State) {
  const Eigen::MatrixXd A = EigenMatrix(SizeOf(State));
  for (auto _ : State) {
    Eigen::PartialPivLU<Eigen::MatrixXd> LU(A);
    benchmark::DoNotOptimize(LU.matrixLU().data());
  }
}

void EigenInverse(benchmark::State& State) {
  const Eigen::MatrixXd A = EigenMatrix(SizeOf(State));
  for (auto _ : State) {
    Eigen::MatrixXd Inverse = A.inverse();
    benchmark::DoNotOptimize(Inverse.data());
  }
}

void EigenProduct(benchmark::State& State) {
  const Eigen::MatrixXd A = EigenMatrix(SizeOf(State));
  for (auto _ : State) {
    Eigen::MatrixXd C = A * A;
    benchmark::DoNotOptimize(C.data());
  }
}

void EigenProductAAT(benchmark::State& State) {
  const Eigen::MatrixXd A = EigenMatrix(SizeOf(State));
  for (auto _ : State) {
    Eigen::MatrixXd C = A * A.transpose();
    benchmark::DoNotOptimize(C.data());
  }
}

void EigenMatrixByVector(benchmark::State& State) {
  const Eigen::MatrixXd A = EigenMatrix(SizeOf(State));
  const Eigen::VectorXd X = Eigen::VectorXd::Ones(SizeOf(State));
  for (auto _ : State) {
    Eigen::VectorXd Y = A * X;
    benchmark::DoNotOptimize(Y.data());
  }
}
#endif

/// Reading a matrix once: what its product with a vector waits for.
void ReadMatrix(benchmark::State& State) {
  const TFloatMatrix A = RandomMatrix(SizeOf(State));
  const std::size_t Count = static_cast<std::size_t>(A.RowStride() * SizeOf(State));
  std::vector<double> Copy(Count);
  for (auto _ : State) {
    std::memcpy(Copy.data(), A.Row(0), Count * sizeof(double));
    benchmark::ClobberMemory();
  }
}

void Sizes(benchmark::internal::Benchmark* Row) {
  Row->Arg(64)->Arg(256)->Arg(1024)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(PLU)->Name("LU/random/ours")->Apply(Sizes);
BENCHMARK(TryReverse)->Name("Inverse/random/ours")->Apply(Sizes);
BENCHMARK(Product)->Name("Matrix product/random/ours")->Apply(Sizes);
BENCHMARK(ProductAAT)->Name("A times its transpose/random/ours")->Apply(Sizes);
BENCHMARK(MatrixByVector)->Name("Matrix by vector/random/ours")->Apply(Sizes);
BENCHMARK(ReadMatrix)->Name("Matrix by vector/random/limit: copy of the matrix")->Apply(Sizes);
BENCHMARK(SVDCMP)->Name("Singular values/0.7^k/ours")->Arg(32)->Arg(64)->Arg(256);
BENCHMARK(TextbookSVD)
    ->Name("Singular values/0.7^k/the same steps, plain loops")
    ->Arg(32)
    ->Arg(64)
    ->Arg(256);
BENCHMARK(MatrixFile)->Name("Matrix to a file and back/random/ours")->Arg(100)->Arg(1000);
#ifdef TARNALGO_BENCH_EIGEN
BENCHMARK(EigenPLU)->Name("LU/random/Eigen")->Apply(Sizes);
BENCHMARK(EigenInverse)->Name("Inverse/random/Eigen")->Apply(Sizes);
BENCHMARK(EigenProduct)->Name("Matrix product/random/Eigen")->Apply(Sizes);
BENCHMARK(EigenProductAAT)->Name("A times its transpose/random/Eigen")->Apply(Sizes);
BENCHMARK(EigenMatrixByVector)->Name("Matrix by vector/random/Eigen")->Apply(Sizes);
#endif

}  // namespace
