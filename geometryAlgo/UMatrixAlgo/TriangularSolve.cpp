#include "geometryAlgo/UMatrixAlgo/TriangularSolve.h"

#include <algorithm>

#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

namespace tarnalgo {

namespace {

/// Triangles up to this size are solved row by row; larger ones in two halves, so that nearly all
/// work is one of block products.
constexpr int kSmallTriangle = 16;
/// So many columns of a small triangle's rows stay in the first cache.
constexpr int kStripColumns = 256;

/// About half of `Size`, in whole small triangles.
int HalfOf(int Size) {
  return (Size / 2 + kSmallTriangle - 1) / kSmallTriangle * kSmallTriangle;
}

double Item(TBlockView A, int I, int J) {
  // Only a view without rows has no items, and that has no (I, J) to ask for.
  return A.Items[I * A.RowStep + J * A.ColumnStep];  // NOLINT(clang-analyzer-core.NullDereference)
}

TBlockView PartOf(TBlockView A, int FirstRow, int FirstColumn) {
  return {A.Items + FirstRow * A.RowStep + FirstColumn * A.ColumnStep, A.RowStep, A.ColumnStep};
}

/// Calls `Solve` with strips of `B` of at most kStripColumns columns.
template <class TSolve>
void ForEachStrip(TMatrixBlock B, TSolve&& Solve) {
  for (int J = 0; J < B.Columns; J += kStripColumns) {
    Solve(B.Part(0, J, B.Rows, std::min(kStripColumns, B.Columns - J)));
  }
}

void SolveSmallUnitLower(TBlockView L, TMatrixBlock B) {
  for (int I = 1; I < B.Rows; ++I) {
    for (int K = 0; K < I; ++K) {
      RowAddMultiple(B.Row(I), -Item(L, I, K), B.Row(K), static_cast<std::size_t>(B.Columns));
    }
  }
}

void SolveSmallUpper(TBlockView U, TMatrixBlock B) {
  for (int I = B.Rows - 1; I >= 0; --I) {
    for (int K = I + 1; K < B.Rows; ++K) {
      RowAddMultiple(B.Row(I), -Item(U, I, K), B.Row(K), static_cast<std::size_t>(B.Columns));
    }
    RowDivide(B.Row(I), Item(U, I, I), static_cast<std::size_t>(B.Columns));
  }
}

}  // namespace

void SolveUnitLower(TBlockView L, TMatrixBlock B, TBlockProduct& Product) {
  if (B.Rows <= kSmallTriangle) {
    ForEachStrip(B, [&](TMatrixBlock Strip) { SolveSmallUnitLower(L, Strip); });
    return;
  }
  const int Half = HalfOf(B.Rows);
  const TMatrixBlock Upper = B.Part(0, 0, Half, B.Columns);
  const TMatrixBlock Lower = B.Part(Half, 0, B.Rows - Half, B.Columns);
  SolveUnitLower(L, Upper, Product);
  Product.Subtract(Lower.Rows, B.Columns, Half, PartOf(L, Half, 0), Upper.View(), Lower.Items,
                   B.Step);
  SolveUnitLower(PartOf(L, Half, Half), Lower, Product);
}

void SolveUpper(TBlockView U, TMatrixBlock B, TBlockProduct& Product) {
  if (B.Rows <= kSmallTriangle) {
    ForEachStrip(B, [&](TMatrixBlock Strip) { SolveSmallUpper(U, Strip); });
    return;
  }
  const int Half = HalfOf(B.Rows);
  const TMatrixBlock Upper = B.Part(0, 0, Half, B.Columns);
  const TMatrixBlock Lower = B.Part(Half, 0, B.Rows - Half, B.Columns);
  SolveUpper(PartOf(U, Half, Half), Lower, Product);
  Product.Subtract(Half, B.Columns, Lower.Rows, PartOf(U, 0, Half), Lower.View(), Upper.Items,
                   B.Step);
  SolveUpper(U, Upper, Product);
}

void InvertUnitLower(TBlockView L, TMatrixBlock B, TBlockProduct& Product) {
  if (B.Rows <= kSmallTriangle) return SolveSmallUnitLower(L, B);
  const int Half = HalfOf(B.Rows);
  const TMatrixBlock Upper = B.Part(0, 0, Half, Half);
  const TMatrixBlock Corner = B.Part(Half, 0, B.Rows - Half, Half);
  InvertUnitLower(L, Upper, Product);
  Product.Subtract(Corner.Rows, Half, Half, PartOf(L, Half, 0), Upper.View(), Corner.Items, B.Step);
  SolveUnitLower(PartOf(L, Half, Half), Corner, Product);
  InvertUnitLower(PartOf(L, Half, Half), B.Part(Half, Half, Corner.Rows, Corner.Rows), Product);
}

void InvertUpper(TBlockView U, TMatrixBlock B, TBlockProduct& Product) {
  if (B.Rows <= kSmallTriangle) return SolveSmallUpper(U, B);
  const int Half = HalfOf(B.Rows);
  const TMatrixBlock Corner = B.Part(0, Half, Half, B.Rows - Half);
  const TMatrixBlock Lower = B.Part(Half, Half, Corner.Columns, Corner.Columns);
  InvertUpper(PartOf(U, Half, Half), Lower, Product);
  Product.Subtract(Half, Corner.Columns, Corner.Columns, PartOf(U, 0, Half), Lower.View(),
                   Corner.Items, B.Step);
  SolveUpper(U, Corner, Product);
  InvertUpper(U, B.Part(0, 0, Half, Half), Product);
}

}  // namespace tarnalgo
