#include <algorithm>

#include "geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h"
#include "geometryAlgo/UMatrixAlgo/Permutation.h"
#include "geometryAlgo/UMatrixAlgo/TriangularSolve.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

bool HasZeroOnDiagonal(const TFloatMatrix& A) {
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    if (A.Row(I)[I] == 0.0) return true;  // exact: a tiny pivot still divides
  }
  return false;
}

void CheckSquare(const TFloatMatrix& A, int Line = __builtin_LINE()) {
  AssertThat(A.GetRowCnt() == A.GetColCnt(), kMatrixUnit, Line);
}

TBlockView ViewOf(const TFloatMatrix& A) {
  return {A.Row(0), A.RowStride(), 1};
}

TMatrixBlock BlockOf(TFloatMatrix& A) {
  return {A.Row(0), A.RowStride(), A.GetRowCnt(), A.GetColCnt()};
}

/// Column j of `A` becomes column Order[j].
void MoveColumns(TFloatMatrix& A, const std::vector<int>& Order) {
  std::vector<double> Moved(Order.size());
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    double* const Row = A.Row(I);
    for (std::size_t J = 0; J < Order.size(); ++J)
      Moved[static_cast<std::size_t>(Order[J])] = Row[J];
    std::copy(Moved.begin(), Moved.end(), Row);
  }
}

}  // namespace

bool TMatrixDCMPTool::GetInverseMatrixByLu(const TFloatMatrix& A, TFloatMatrix& Inverse) {
  CheckSquare(A);
  TFloatMatrix LU = A.Clone();
  std::vector<int> Pivots;
  PLU(LU, Pivots);
  if (HasZeroOnDiagonal(LU)) return false;
  TFloatMatrix Result = GetInverseofLowerTriIdeMatrix(LU);
  TBlockProduct Product;
  SolveUpper(ViewOf(LU), BlockOf(Result), Product);
  MoveColumns(Result, PermutationOf(Pivots));
  Inverse = std::move(Result);
  return true;
}

TFloatMatrix TMatrixDCMPTool::GetInverseofLowerTriIdeMatrix(const TFloatMatrix& L) {
  CheckSquare(L);
  TFloatMatrix Result(L.GetRowCnt());
  TBlockProduct Product;
  InvertUnitLower(ViewOf(L), BlockOf(Result), Product);
  return Result;
}

bool TMatrixDCMPTool::GetInverseofUpperTriMatrix(const TFloatMatrix& U, TFloatMatrix& Inverse) {
  CheckSquare(U);
  if (HasZeroOnDiagonal(U)) return false;
  TFloatMatrix Result(U.GetRowCnt());
  TBlockProduct Product;
  InvertUpper(ViewOf(U), BlockOf(Result), Product);
  Inverse = std::move(Result);
  return true;
}

bool TFloatMatrix::TryReverse() {
  // Elimination above the pivots as well as below them finds the same pivots, and so does this.
  return GetRowCnt() == GetColCnt() && TMatrixDCMPTool::GetInverseMatrixByLu(*this, *this);
}

}  // namespace tarnalgo
