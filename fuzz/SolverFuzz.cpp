// Solvers of small systems: on whole numbers all agree with Cramer's rule in whole numbers; any
// numbers at all come to an end.

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

/// Anything at all: every solver and every factor ends.
void Survive(const TFloatMatrix& A, const TFloatVector& B) {
  TFloatVector X;
  TFloatMatrix Q;
  TFloatMatrix R;
  TMatrixDCMPTool::QRDCMP(A, Q, R);
  TMatrixDCMPTool::SVDCMP(A, Q, R, X);
  TMatrixDCMPTool::GetOrthoByGramSchmidt(A);
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
  const bool IsWild = Bytes.Below(3) == 0;
  const int Rows = Bytes.Below(6);
  TFloatMatrix A(Rows, Rows);
  TFloatVector B(Rows);
  for (int I = 0; I < Rows; ++I) {
    for (int J = 0; J < A.GetColCnt(); ++J) {
      A.SetItem(I, J, IsWild ? Bytes.Anything() : Bytes.Below(9) - 4);
    }
    B.SetItem(I, IsWild ? Bytes.Anything() : Bytes.Below(17) - 8);
  }
  if (IsWild) {
    Survive(A, B);
  } else {
    CheckWholeSystem(A, B);
    CheckPositiveSystem(A, B);
  }
  return 0;
}
