// Factors and solvers on small matrices: what the factors promise by their backward error, and, on
// whole numbers, agreement with Cramer's rule in whole numbers.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/Exact.h"
#include "geometryAlgo/UMatrixAlgo.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

using TReal = long double;
constexpr TReal kRounding = 0x1p-52L;
constexpr TReal kLeast = 0x1p-1060L;  // what denormal steps may lose

/// Column of A·B, or of Aᵀ·B, in long doubles.
TReal Product(const TFloatMatrix& A, int Row, const TFloatMatrix& B, int Column, bool Turned) {
  TReal Sum = 0;
  for (int K = 0; K < B.GetRowCnt(); ++K) {
    Sum += static_cast<TReal>(Turned ? A(K, Row) : A(Row, K)) * B(K, Column);
  }
  return Sum;
}

TReal ColumnLength(const TFloatMatrix& A, int Column) {
  return std::sqrt(Product(A, Column, A, Column, true));
}

void CheckLU(const TFloatMatrix& A) {
  TFloatMatrix L;
  TFloatMatrix U;
  std::vector<int> Order;
  TMatrixDCMPTool::LUCMPExt(A, L, U, Order);
  const int N = A.GetRowCnt();
  for (int I = 0; I < N; ++I) {
    Require(std::count(Order.begin(), Order.end(), I) == 1, "LU permutes the rows");
    for (int J = 0; J < N; ++J) {
      TReal Sum = 0;
      TReal Sizes = 0;
      for (int K = 0; K < N; ++K) {
        Sum += static_cast<TReal>(L(I, K)) * U(K, J);
        Sizes += std::abs(static_cast<TReal>(L(I, K)) * U(K, J));
      }
      Require(std::abs(Sum - A(Order[static_cast<std::size_t>(I)], J)) <=
                  4 * N * kRounding * Sizes + kLeast,
              "L times U is A");
    }
  }
}

void CheckOrthonormal(const TFloatMatrix& Q, bool MayBeZero) {
  for (int I = 0; I < Q.GetColCnt(); ++I) {
    const TReal Square = Product(Q, I, Q, I, true);
    Require((MayBeZero && Square == 0) || std::abs(Square - 1) < 1e-12L, "a column is a unit");
    for (int J = 0; J < I; ++J) {
      Require(std::abs(Product(Q, I, Q, J, true)) < 1e-12L, "columns are at right angles");
    }
  }
}

void CheckQR(const TFloatMatrix& A) {
  TFloatMatrix Q;
  TFloatMatrix R;
  TMatrixDCMPTool::QRDCMP(A, Q, R);
  CheckOrthonormal(Q, false);
  for (int J = 0; J < A.GetColCnt(); ++J) {
    const TReal Slack = 1e-13L * ColumnLength(A, J) + kLeast;
    for (int I = 0; I < A.GetRowCnt(); ++I) {
      Require(I <= J || R(I, J) == 0.0, "R is a triangle");
      Require(std::abs(Product(Q, I, R, J, false) - A(I, J)) <= Slack, "Q times R is A");
    }
  }
  CheckOrthonormal(TMatrixDCMPTool::GetOrthoByGramSchmidt(A), true);
}

void CheckSingularValues(const TFloatMatrix& A) {
  TFloatMatrix U;
  TFloatMatrix V;
  TFloatVector W;
  TMatrixDCMPTool::SVDCMP(A, U, V, W);
  TReal Size = 0;
  for (int J = 0; J < A.GetColCnt(); ++J) Size = std::hypot(Size, ColumnLength(A, J));
  for (int K = 0; K < std::min(A.GetRowCnt(), A.GetColCnt()); ++K) {
    if (W[K] == 0.0) continue;
    Require(W[K] > 0.0 && W[K] <= Size * (1 + 1e-12L), "no singular value exceeds the matrix");
    Require(std::abs(ColumnLength(U, K) - 1) < 1e-9L && std::abs(ColumnLength(V, K) - 1) < 1e-9L,
            "singular vectors are units");
    for (int J = 0; J < K; ++J) {
      Require(std::abs(Product(V, K, V, J, true)) < 1e-7L, "singular vectors are at right angles");
    }
    for (int I = 0; I < A.GetRowCnt(); ++I) {
      const TReal Off = Product(A, I, V, K, false) - static_cast<TReal>(W[K]) * U(I, K);
      Require(std::abs(Off) <= 1e-3L * Size, "A turns V[k] into W[k] U[k]");
    }
  }
}

/// The solution by Cramer's rule, nothing where there is none; of at most 5 unknowns.
std::vector<TReal> Cramer(const TFloatMatrix& A, const TFloatVector& B) {
  std::vector<fuzz::TWholeRow> Rows;
  fuzz::TWholeRow Right;
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    Rows.emplace_back(A.Row(I), A.Row(I) + A.GetColCnt());
    Right.push_back(std::llround(B[I]));
  }
  const fuzz::TWholeSolution Solution = fuzz::Cramer(Rows, Right);
  const auto Divisor = static_cast<TReal>(Solution.Divisor);
  Require(Rows.empty() || std::abs(std::abs(A.Determinant()) - Divisor) < 1e-9L * (1 + Divisor),
          "the determinant is that of whole numbers");
  std::vector<TReal> X;
  for (const std::int64_t Item : Solution.X) X.push_back(static_cast<TReal>(Item) / Divisor);
  return Solution.Divisor == 0 ? std::vector<TReal>() : X;
}

void CheckSolution(const TFloatVector& X, const std::vector<TReal>& Exact) {
  Require(X.GetSize() == static_cast<int>(Exact.size()), "the solution has the size");
  TReal Slack = 1e-9L;
  for (const TReal Due : Exact) Slack = std::max(Slack, 1e-9L * std::abs(Due));
  for (int J = 0; J < X.GetSize(); ++J) {
    const TReal Due = Exact[static_cast<std::size_t>(J)];
    Require(std::abs(X[J] - Due) <= Slack, "a solver finds the solution");
  }
}

/// Elements of at most 4 keep the condition of a regular matrix below 1e6.
void CheckWholeSystem(const TFloatMatrix& A, const TFloatVector& B) {
  const std::vector<TReal> Exact = Cramer(A, B);
  TFloatVector X;
  const bool IsSolved = TLinearSolveTool::Gaussian(X, A.Clone(), B.Clone());
  if (Exact.empty() && A.GetRowCnt() > 0) return;
  Require(IsSolved, "a regular system is solved");
  CheckSolution(X, Exact);
  TFloatMatrix Inverse = A.Clone();
  TFloatMatrix ByLu;
  Require(Inverse.TryReverse() && TMatrixDCMPTool::GetInverseMatrixByLu(A, ByLu),
          "a regular matrix has an inverse");
  CheckSolution(Inverse * B, Exact);
  CheckSolution(ByLu * B, Exact);
}

/// A·Aᵀ + I: every solver knows it. Conditions stay below 500.
void CheckPositiveSystem(const TFloatMatrix& A, const TFloatVector& B) {
  const TFloatMatrix Square = A.AAT() + TFloatMatrix(A.GetRowCnt());
  const std::vector<TReal> Exact = Cramer(Square, B);
  TFloatVector X;
  Require(TLinearSolveTool::Cholesky(X, Square, B), "Cholesky solves");
  CheckSolution(X, Exact);
  Require(TLinearSolveTool::LDLT(X, Square, B), "LDLT solves");
  CheckSolution(X, Exact);
  Require(TLinearSolveTool::ConjugateGradient(X, Square, B), "conjugate gradients converge");
  CheckSolution(X, Exact);
  Require(TLinearSolveTool::Gaussian(X, Square.Clone(), B.Clone()), "elimination solves");
  CheckSolution(X, Exact);
}

/// Anything at all: every solver ends.
void Survive(const TFloatMatrix& A, const TFloatVector& B) {
  TFloatVector X;
  TFloatMatrix Inverse = A.Clone();
  Inverse.TryReverse();
  Require(Inverse.GetRowCnt() == A.GetRowCnt(), "an inverse has the size");
  for (const auto Solve :
       {&TLinearSolveTool::Gaussian, &TLinearSolveTool::LDLT, &TLinearSolveTool::Cholesky,
        &TLinearSolveTool::ConjugateGradient, &TLinearSolveTool::SSOR}) {
    Solve(X, A.Clone(), B.Clone());
    Require(X.GetSize() == B.GetSize(), "a solution has the size");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const int Kind = Bytes.Below(4);  // 0 anything, 1 scaled, else whole numbers
  const int Rows = Bytes.Below(6);
  const int Columns = Kind == 1 ? Bytes.Below(6) : Rows;
  const int Common = Kind == 1 ? 4 * (Bytes.Byte() - 128) : 0;
  TFloatMatrix A(Rows, Columns);
  TFloatVector B(Rows);
  for (int I = 0; I < Rows; ++I) {
    const int Own = Kind == 1 ? Bytes.Byte() - 128 : 0;
    for (int J = 0; J < A.GetColCnt(); ++J) {
      A.SetItem(I, J, Kind == 0 ? Bytes.Anything() : std::ldexp(Bytes.Below(9) - 4, Common + Own));
    }
    B.SetItem(I, Kind == 0 ? Bytes.Anything() : Bytes.Below(17) - 8);
  }
  if (Kind == 0) {
    Survive(A, B);
    TFloatMatrix Q;
    TFloatMatrix R;
    TFloatVector W;
    TMatrixDCMPTool::QRDCMP(A, Q, R);
    TMatrixDCMPTool::SVDCMP(A, Q, R, W);
    return 0;
  }
  if (Rows == A.GetColCnt()) CheckLU(A);
  CheckQR(A);
  CheckSingularValues(A);
  if (Kind == 1) return 0;
  CheckWholeSystem(A, B);
  CheckPositiveSystem(A, B);
  return 0;
}
