#include <cmath>

#include "geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// The row i >= `K` with the largest |a[i][K]|.
int PivotRow(const TFloatMatrix& A, int K) {
  int Pivot = K;
  double Best = -1.0;
  for (int I = K; I < A.GetRowCnt(); ++I) {
    if (const double Size = std::abs(A.Row(I)[K]); Size > Best) {
      Best = Size;
      Pivot = I;
    }
  }
  return Pivot;
}

/// Solves (L·U)·X = `B` in place, the rows of `B` exchanged already.
void SolveFactored(const TFloatMatrix& LU, TFloatMatrix& B) {
  const int Size = LU.GetRowCnt();
  const auto Width = static_cast<std::size_t>(B.GetColCnt());
  for (int I = 0; I < Size; ++I) {
    for (int K = 0; K < I; ++K) RowAddMultiple(B.Row(I), -LU.Row(I)[K], B.Row(K), Width);
  }
  for (int I = Size - 1; I >= 0; --I) {
    for (int K = Size - 1; K > I; --K) RowAddMultiple(B.Row(I), -LU.Row(I)[K], B.Row(K), Width);
    for (std::size_t J = 0; J < Width; ++J) B.Row(I)[J] /= LU.Row(I)[I];
  }
}

}  // namespace

void TMatrixDCMPTool::PLU(TFloatMatrix& A, std::vector<int>& Pivots) {
  const int Size = A.GetRowCnt();
  if (Size != A.GetColCnt()) return;
  std::vector<int> Found(static_cast<std::size_t>(Size));
  for (int K = 0; K < Size; ++K) {
    const int Pivot = PivotRow(A, K);
    Found[static_cast<std::size_t>(K)] = Pivot;
    A.SwapRows(K, Pivot);
    const double* const Top = A.Row(K);
    for (int I = K + 1; I < Size; ++I) {
      double* const To = A.Row(I);
      if (Top[K] != 0.0) To[K] /= Top[K];  // exact: any other pivot divides
      RowAddMultiple(To + K + 1, -To[K], Top + K + 1, static_cast<std::size_t>(Size - K - 1));
    }
  }
  Pivots = std::move(Found);
}

double TFloatMatrix::Determinant() const {
  AssertThat(GetRowCnt() == GetColCnt(), kMatrixUnit);
  if (GetRowCnt() == 0) return 0.0;
  TFloatMatrix LU = Clone();
  std::vector<int> Pivots;
  TMatrixDCMPTool::PLU(LU, Pivots);
  double Product = 1.0;
  for (int I = 0; I < GetRowCnt(); ++I) Product *= LU.Row(I)[I];
  return Product;
}

bool TFloatMatrix::TryReverse() {
  if (GetRowCnt() != GetColCnt()) return false;
  TFloatMatrix LU = Clone();
  std::vector<int> Pivots;
  TMatrixDCMPTool::PLU(LU, Pivots);
  for (int I = 0; I < GetRowCnt(); ++I) {
    if (LU.Row(I)[I] == 0.0) return false;  // exact: a tiny pivot still divides
  }
  TFloatMatrix Inverse(GetRowCnt());
  for (int K = 0; K < GetRowCnt(); ++K) Inverse.SwapRows(K, Pivots[static_cast<std::size_t>(K)]);
  SolveFactored(LU, Inverse);
  *this = Inverse;
  return true;
}

}  // namespace tarnalgo
