#include <algorithm>

#include "geometryAlgo/UMatrixAlgo/BlockProduct.h"
#include "geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h"
#include "geometryAlgo/UMatrixAlgo/Permutation.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"
#include "geometryAlgo/UMatrixAlgo/TriangularSolve.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// So many columns are factored one by one; wider ranges in two halves, so that nearly all work is
/// one of block products.
constexpr int kPanelColumns = 8;

/// LU with partial pivoting of a square matrix, in place.
class TFactorer {
 public:
  explicit TFactorer(TFloatMatrix& A)
      : FSize(A.GetRowCnt()),
        FAll{A.Row(0), A.RowStride(), FSize, FSize},
        FPivots(static_cast<std::size_t>(FSize)),
        FPanel(static_cast<std::size_t>(FSize) * kPanelColumns) {
    FProduct.Prepare(FSize, FSize, FSize);  // nothing raises once the matrix changes
  }

  std::vector<int> Run() {
    if (FSize > 0) FactorColumns(0, FSize);
    return std::move(FPivots);
  }

 private:
  /// These columns, from their own diagonal down; rows are exchanged over the whole width. Before
  /// it, the columns have had the products of all earlier columns subtracted.
  void FactorColumns(int First, int Width) {
    if (Width <= kPanelColumns) {
      FactorPanel(First, Width);
      return;
    }
    const int Half = (Width / 2 + kPanelColumns - 1) / kPanelColumns * kPanelColumns;
    const int Middle = First + Half;
    const int Rest = Width - Half;
    const int Below = FSize - Middle;
    FactorColumns(First, Half);
    const TBlockView Left = ViewOf(First, First);
    const TMatrixBlock Right = FAll.Part(First, Middle, Half, Rest);
    SolveUnitLower(Left, Right, FProduct);
    FProduct.Subtract(Below, Rest, Half, ViewOf(Middle, First), ViewOf(First, Middle),
                      FAll.Row(Middle) + Middle, FAll.Step);
    FactorColumns(Middle, Rest);
  }

  /// A few columns, in a copy where each of them lies in one piece.
  void FactorPanel(int First, int Width) {
    const int Height = FSize - First;
    for (int I = 0; I < Height; ++I) {
      const double* const From = FAll.Row(First + I) + First;
      for (int J = 0; J < Width; ++J) FPanel[Place(I, J, Height)] = From[J];
    }
    for (int K = 0; K < Width; ++K) FactorColumn(First, Width, K, Height);
    for (int I = 0; I < Height; ++I) {
      double* const To = FAll.Row(First + I) + First;
      for (int J = 0; J < Width; ++J) To[J] = FPanel[Place(I, J, Height)];
    }
  }

  /// Column `K` of the panel: its pivot, the division, its products from the later columns.
  void FactorColumn(int First, int Width, int K, int Height) {
    double* const Column = &FPanel[Place(0, K, Height)];
    const std::size_t Below = static_cast<std::size_t>(Height) - static_cast<std::size_t>(K) - 1;
    const int Pivot = K + static_cast<int>(RowLargest(Column + K, Below + 1));
    const std::size_t Own = static_cast<std::size_t>(First) + static_cast<std::size_t>(K);
    FPivots[Own] = First + Pivot;
    if (Pivot != K) {
      for (int J = 0; J < Width; ++J) {
        std::swap(FPanel[Place(K, J, Height)], FPanel[Place(Pivot, J, Height)]);
      }
      SwapOutside(First, Width, First + K, First + Pivot);
    }
    if (Column[K] != 0.0) RowDivide(Column + K + 1, Column[K], Below);  // exact, no tolerance
    for (int J = K + 1; J < Width; ++J) {
      double* const To = &FPanel[Place(K, J, Height)];
      RowAddMultiple(To + 1, -To[0], Column + K + 1, Below);
    }
  }

  /// Rows A and B but for the columns of the panel.
  void SwapOutside(int First, int Width, int A, int B) {
    std::swap_ranges(FAll.Row(A), FAll.Row(A) + First, FAll.Row(B));
    std::swap_ranges(FAll.Row(A) + First + Width, FAll.Row(A) + FSize, FAll.Row(B) + First + Width);
  }

  TBlockView ViewOf(int Row, int Column) const { return {FAll.Row(Row) + Column, FAll.Step, 1}; }
  static std::size_t Place(int I, int J, int Height) {
    return static_cast<std::size_t>(J) * static_cast<std::size_t>(Height) +
           static_cast<std::size_t>(I);
  }

  int FSize;
  TMatrixBlock FAll;
  std::vector<int> FPivots;
  std::vector<double> FPanel;
  TBlockProduct FProduct;
};

}  // namespace

void TMatrixDCMPTool::PLU(TFloatMatrix& A, std::vector<int>& Pivots) {
  if (A.GetRowCnt() == A.GetColCnt()) Pivots = TFactorer(A).Run();
}

void TMatrixDCMPTool::LUCMP(const TFloatMatrix& A, TFloatMatrix& L, TFloatMatrix& U) {
  std::vector<int> Permutation;
  LUCMPExt(A, L, U, Permutation);
}

void TMatrixDCMPTool::LUCMPExt(const TFloatMatrix& A, TFloatMatrix& L, TFloatMatrix& U,
                               std::vector<int>& Permutation) {
  AssertThat(A.GetRowCnt() == A.GetColCnt(), kMatrixUnit);
  TFloatMatrix LU = A.Clone();
  std::vector<int> Pivots;
  PLU(LU, Pivots);
  TFloatMatrix Lower = LU.LowerTriangleMat();
  for (int I = 0; I < Lower.GetRowCnt(); ++I) Lower.Row(I)[I] = 1.0;
  TFloatMatrix Upper = LU.UpperTriangleMat();
  Permutation = PermutationOf(Pivots);
  L = std::move(Lower);
  U = std::move(Upper);
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

}  // namespace tarnalgo
