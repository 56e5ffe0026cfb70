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

/// Factors the columns [First, Last) and, in `Scaled`, keeps L·D of the rows below them (L itself
/// for `sfRoots`), a column of L in a row of `Scaled`.
bool FactorColumns(TFloatMatrix& A, TSymmetricForm Form, int First, int Last,
                   TFloatMatrix& Scaled) {
  double Pivots[kBlock];
  for (int I = First; I < A.GetRowCnt(); ++I) {
    double* const Row = A.Row(I);
    for (int K = First; K < std::min(I, Last); ++K) {
      // Row[First..K) holds L·D here: the products need D once.
      Row[K] -= RowDot(Row + First, A.Row(K) + First, Width(K - First));
      if (Form == sfRoots) Row[K] /= Pivots[K - First];
    }
    double Pivot = I < Last ? Row[I] : 1.0;
    for (int K = First; K < std::min(I, Last); ++K) {
      const double Item = Row[K];
      if (Form == sfDiagonal) Row[K] /= Pivots[K - First];
      if (I < Last) {
        Pivot -= Item * Row[K];
      } else {
        Scaled.Row(K - First)[I] = Item;
      }
    }
    if (I >= Last) continue;
    if (Form == sfRoots ? !(Pivot > 0.0) : Pivot == 0.0) return false;
    Row[I] = Form == sfRoots ? std::sqrt(Pivot) : Pivot;
    Pivots[I - First] = Row[I];
  }
  return true;
}

/// Takes the products of the columns [First, Last) off the triangle below them, some rows at a time;
/// of these the square at the diagonal is done whole.
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
