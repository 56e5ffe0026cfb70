#include <algorithm>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include "geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h"
#include "geometryAlgo/UMatrixAlgo/Orthonormal.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

namespace tarnalgo {

namespace {

constexpr std::int32_t kIterationLimit = 100;
constexpr double kConvergence = 1e-12;
constexpr std::int32_t kRandomScale = 32767;

/// Finds one direction after another by power iteration on what the former ones leave. Keeps the
/// singular vectors found as rows, which lie in one piece; directions left out have nothing to take
/// away and no row.
class TPowerIteration {
 public:
  explicit TPowerIteration(const TFloatMatrix& A)
      : FA(A),
        FRows(static_cast<std::size_t>(A.GetRowCnt())),
        FColumns(static_cast<std::size_t>(A.GetColCnt())),
        FLeft(A.GetRowCnt(), A.GetRowCnt()),
        FRight(A.GetColCnt(), A.GetColCnt()),
        FU(FRows),
        FNextU(FRows),
        FV(FColumns) {}

  /// The singular value of direction `K`; 0 when it is left out.
  double Find(int K) {
    ChooseStart();
    double Sigma = 0.0;
    double Change = 1.0;
    int Count = 0;
    while (Change >= kConvergence && Count < kIterationLimit) {
      Sigma = StepToRight();
      if (Sigma < kConvergence) break;
      Sigma = StepToLeft();
      if (Sigma < kConvergence) break;
      for (std::size_t I = 0; I < FRows; ++I) FU[I] = FNextU[I] - FU[I];
      Change = RowDot(FU.data(), FU.data(), FRows);
      FU.swap(FNextU);
      ++Count;
    }
    if (!(Sigma >= kConvergence) || Count >= kIterationLimit) return 0.0;
    const auto Row = static_cast<int>(FFound.size());
    std::copy(FU.begin(), FU.end(), FLeft.Row(Row));
    std::copy(FV.begin(), FV.end(), FRight.Row(Row));
    FFound.push_back(K);
    return Sigma;
  }

  TFloatMatrix U() const { return InColumns(FLeft); }
  TFloatMatrix V() const { return InColumns(FRight); }

 private:
  /// A random unit vector u.
  void ChooseStart() {
    constexpr double kUnitOfRandom = 0x1p-53;
    do {
      for (double& Item : FU) {
        Item = static_cast<double>(FRandom() >> 11) * kUnitOfRandom / kRandomScale;
      }
    } while (RowMag(FU.data(), FRows) < kConvergence);
    MakeUnit(FU.data(), FRows);
  }

  /// v := Aᵀ·u, orthogonal to the right vectors found; the length of Aᵀ·u.
  double StepToRight() {
    std::fill(FV.begin(), FV.end(), 0.0);
    RowsAddMultiples(FV.data(), FU.data(), FA.Row(0), FA.RowStride(), FRows, FColumns);
    return MakeDirection(FV, FRight);
  }

  /// u' := A·v, orthogonal to the left vectors found; the length of A·v.
  double StepToLeft() {
    RowDots(FA.Row(0), FA.RowStride(), FRows, FV.data(), FColumns, FNextU.data());
    return MakeDirection(FNextU, FLeft);
  }

  double MakeDirection(std::vector<double>& Direction, const TFloatMatrix& Former) const {
    const double Length = RowMag(Direction.data(), Direction.size());
    if (Length >= kConvergence) {
      MakeOrthogonal(Direction.data(), Length, Former, static_cast<int>(FFound.size()));
    }
    return Length;
  }

  /// Row i of `Vectors` as the column of its direction.
  TFloatMatrix InColumns(const TFloatMatrix& Vectors) const {
    TFloatMatrix Rows(Vectors.GetRowCnt(), Vectors.GetColCnt());
    for (std::size_t I = 0; I < FFound.size(); ++I) {
      std::copy_n(Vectors.Row(static_cast<int>(I)), Rows.GetColCnt(), Rows.Row(FFound[I]));
    }
    return Rows.Transpose();
  }

  const TFloatMatrix& FA;
  std::size_t FRows;
  std::size_t FColumns;
  std::vector<int> FFound;  // directions, in the order of the rows below
  TFloatMatrix FLeft;
  TFloatMatrix FRight;
  std::vector<double> FU;
  std::vector<double> FNextU;
  std::vector<double> FV;
  std::mt19937_64 FRandom;
};

}  // namespace

void TMatrixDCMPTool::SVDCMP(const TFloatMatrix& A, TFloatMatrix& U, TFloatMatrix& V,
                             TFloatVector& W) {
  TPowerIteration Iteration(A);
  TFloatVector Found(std::max(A.GetRowCnt(), A.GetColCnt()));
  for (int K = 0; K < std::min(A.GetRowCnt(), A.GetColCnt()); ++K) {
    Found.SetItem(K, Iteration.Find(K));
  }
  TFloatMatrix Left = Iteration.U();
  V = Iteration.V();
  U = std::move(Left);
  W = Found;
}

}  // namespace tarnalgo
