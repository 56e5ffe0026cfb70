#include "geometryAlgo/UMatrixAlgo/SymmetricFactor.h"

#include <algorithm>
#include <cmath>

#include "geometryAlgo/UMatrixAlgo/BlockProduct.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

namespace tarnalgo {

namespace {

using enum TSymmetricForm;

/// Columns that are factored before the rest of the matrix hears of them.
constexpr int kBlock = 48;
/// Rows that are then brought up to date together.
constexpr int kUpdateRows = 96;

std::size_t Width(int Count) {
  return static_cast<std::size_t>(Count);
}

/// Factors the columns [First, Last), each at a time over all rows below, and keeps in `Scaled`
/// what their products with later columns need: L·D (L itself for `sfRoots`), a column in a row.
bool FactorColumns(TFloatMatrix& A, TSymmetricForm Form, int First, int Last,
                   TFloatMatrix& Scaled) {
  double Row[kBlock];  // L·D of the row of the pivot
  double Pivots[kBlock];
  for (int K = First; K < Last; ++K) {
    double* const Diagonal = A.Row(K) + K;
    const int Depth = K - First;
    const double* const Own = Diagonal - Depth;
    for (int M = 0; M < Depth; ++M) Row[M] = Form == sfRoots ? Own[M] : Own[M] * Pivots[M];
    const double Pivot = *Diagonal - RowDot(Own, Row, Width(Depth));
    if (Form == sfRoots ? !(Pivot > 0.0) : Pivot == 0.0) return false;
    const double Divisor = Form == sfRoots ? std::sqrt(Pivot) : Pivot;
    Pivots[Depth] = Divisor;
    *Diagonal = Divisor;
    const double Inverse = 1.0 / Divisor;
    const bool HasInverse = std::isfinite(Inverse);  // else the divisor is denormal
    const int Below = A.GetRowCnt() - K - 1;
    if (Below == 0) continue;
    double* const Column = Scaled.Row(Depth) + K + 1;
    const std::ptrdiff_t Step = A.RowStride();
    RowDots(Own + Step, Step, Width(Below), Row, Width(Depth), Column);
    double* At = Diagonal;
    for (int I = 0; I < Below; ++I) {
      At += Step;
      const double Item = *At - Column[I];
      *At = HasInverse ? Item * Inverse : Item / Divisor;
      Column[I] = Form == sfRoots ? *At : Item;
    }
  }
  return true;
}

/// Takes the products of the columns [First, Last) off the triangle below them, some rows at a
/// time; of these the square at the diagonal is done whole.
void UpdateRest(TFloatMatrix& A, int First, int Last, const TFloatMatrix& Scaled,
                TBlockProduct& Product) {
  const TBlockView Right{Scaled.Row(0) + Last, Scaled.RowStride(), 1};
  for (int Top = Last; Top < A.GetRowCnt(); Top += kUpdateRows) {
    const int Rows = std::min(kUpdateRows, A.GetRowCnt() - Top);
    const TBlockView Left{A.Row(Top) + First, A.RowStride(), 1};
    Product.Subtract(Rows, Top + Rows - Last, Last - First, Left, Right, A.Row(Top) + Last,
                     A.RowStride());
  }
}

}  // namespace

bool FactorSymmetric(TFloatMatrix& A, TSymmetricForm Form) {
  const int Size = A.GetRowCnt();
  TFloatMatrix Scaled(std::min(kBlock, Size), Size);
  TBlockProduct Product;
  for (int First = 0; First < Size; First += kBlock) {
    const int Last = std::min(First + kBlock, Size);
    if (!FactorColumns(A, Form, First, Last, Scaled)) return false;
    if (Last < Size) UpdateRest(A, First, Last, Scaled, Product);
  }
  return true;
}

void SolveSymmetric(const TFloatMatrix& Factored, TSymmetricForm Form, TFloatVector& X) {
  double* const Items = X.Data();
  for (int I = 0; I < X.GetSize(); ++I) {
    Items[I] -= RowDot(Factored.Row(I), Items, Width(I));
    if (Form == sfRoots) Items[I] /= Factored.Row(I)[I];
  }
  for (int I = 0; Form == sfDiagonal && I < X.GetSize(); ++I) Items[I] /= Factored.Row(I)[I];
  for (int I = X.GetSize() - 1; I >= 0; --I) {
    if (Form == sfRoots) Items[I] /= Factored.Row(I)[I];
    RowAddMultiple(Items, -Items[I], Factored.Row(I), Width(I));
  }
}

}  // namespace tarnalgo
