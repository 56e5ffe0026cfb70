#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "geometryAlgo/UMatrixAlgo/LinearSolveTool.h"
#include "geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"
#include "geometryAlgo/UMatrixAlgo/SymmetricFactor.h"
#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// The line that the symmetric solver names for either fault of shape.
constexpr int kLdltShapeLine = 2425;

/// The row i >= `K` with the largest |a[i][K]|, -1 when there are only zeros and NaN.
int PivotRow(const TFloatMatrix& A, int K) {
  int Pivot = -1;
  double Best = 0.0;
  for (int I = K; I < A.GetRowCnt(); ++I) {
    if (const double Size = std::abs(A.Row(I)[K]); Size > Best) {
      Best = Size;
      Pivot = I;
    }
  }
  return Pivot;
}

/// Makes column `K` zero below the diagonal.
void Eliminate(TFloatMatrix& A, TFloatVector& B, int K) {
  const double* const Top = A.Row(K);
  const auto Width = static_cast<std::size_t>(A.GetColCnt() - K - 1);
  for (int I = K + 1; I < A.GetRowCnt(); ++I) {
    double* const To = A.Row(I);
    const double Factor = To[K] / Top[K];
    To[K] = 0.0;
    RowAddMultiple(To + K + 1, -Factor, Top + K + 1, Width);
    B.Data()[I] -= Factor * B.Data()[K];
  }
}

/// Solves U·x = b for the triangle U; `X` is as long as `B`.
void SubstituteBack(const TFloatMatrix& U, const TFloatVector& B, TFloatVector& X) {
  std::copy_n(B.Data(), B.GetSize(), X.Data());
  for (int I = X.GetSize() - 1; I >= 0; --I) {
    const auto Width = static_cast<std::size_t>(X.GetSize() - 1 - I);
    X.Data()[I] -= RowDot(U.Row(I) + I + 1, X.Data() + I + 1, Width);
    X.Data()[I] /= U.Row(I)[I];
  }
}

bool HasAllPivots(const TFloatMatrix& U) {
  for (int I = 0; I < U.GetRowCnt(); ++I) {
    if (!(std::abs(U.Row(I)[I]) > 0.0)) return false;  // exact zero, or NaN
  }
  return true;
}

/// Row by row, as far as there are pivots; false where there are none.
bool EliminateByRows(TFloatMatrix& A, TFloatVector& B) {
  for (int K = 0; K < B.GetSize(); ++K) {
    const int Pivot = PivotRow(A, K);
    if (Pivot < 0) return false;
    A.SwapRows(K, Pivot);
    std::swap(B.Data()[K], B.Data()[Pivot]);
    Eliminate(A, B, K);
  }
  return true;
}

/// The same by block products, which leave no half-way state that could be shown: a system without
/// all its pivots, or with NaN, is left to the elimination by rows.
bool EliminateByBlocks(TFloatMatrix& A, TFloatVector& B) {
  TFloatMatrix Factors = A.Clone();
  std::vector<int> Pivots;
  TMatrixDCMPTool::PLU(Factors, Pivots);
  if (!HasAllPivots(Factors)) return false;
  double* const Right = B.Data();
  for (int K = 0; K < B.GetSize(); ++K) {
    std::swap(Right[K], Right[Pivots[static_cast<std::size_t>(K)]]);
  }
  for (int I = 0; I < B.GetSize(); ++I) {
    const double* const From = Factors.Row(I);
    Right[I] -= RowDot(From, Right, static_cast<std::size_t>(I));
    std::fill_n(A.Row(I), I, 0.0);
    std::copy(From + I, From + B.GetSize(), A.Row(I) + I);
  }
  return true;
}

bool SolveBySymmetricForm(TFloatVector& X, const TFloatMatrix& A, const TFloatVector& B,
                          TSymmetricForm Form) {
  TFloatMatrix Factored = A.Clone();
  if (!FactorSymmetric(Factored, Form)) {
    X = TFloatVector(B.GetSize());
    return false;
  }
  TFloatVector Found = B.Clone();
  SolveSymmetric(Factored, Form, Found);
  X = Found;
  return true;
}

/// Whether |a·x - b| stays within the tolerance of the normal system; never when it is NaN.
bool HoldsNormalSystem(const TFloatMatrix& A, const TFloatVector& X, const TFloatVector& B) {
  const TFloatVector Residual = A * X - B;
  const double Bound = kNormalResidualTolerance * std::max(1.0, B.GetAbsMax());
  return std::all_of(Residual.Data(), Residual.Data() + Residual.GetSize(),
                     [Bound](double Item) { return std::abs(Item) <= Bound; });
}

}  // namespace

// Handles by value, as of every solver: X may be the variable that B came from, or hold its buffer.
// NOLINTBEGIN(performance-unnecessary-value-param)

bool TLinearSolveTool::Gaussian(TFloatVector& X, TFloatMatrix A, TFloatVector B) {
  AssertThat(A.GetRowCnt() == A.GetColCnt(), kMatrixUnit);
  AssertThat(B.GetSize() == A.GetRowCnt(), kMatrixUnit);
  TFloatVector Found(B.GetSize());  // zeros; nothing raises once the system changes
  const bool IsSolved = EliminateByBlocks(A, B) || EliminateByRows(A, B);
  if (IsSolved) SubstituteBack(A, B, Found);
  X = Found;
  return IsSolved;
}

bool TLinearSolveTool::LDLT(TFloatVector& X, TFloatMatrix A, TFloatVector B) {
  AssertThat(A.GetRowCnt() == A.GetColCnt() && B.GetSize() == A.GetRowCnt(), kMatrixUnit,
             kLdltShapeLine);
  return SolveBySymmetricForm(X, A, B, TSymmetricForm::sfDiagonal);
}

bool TLinearSolveTool::Cholesky(TFloatVector& X, TFloatMatrix A, TFloatVector B) {
  AssertThat(A.GetRowCnt() == A.GetColCnt(), kMatrixUnit);
  AssertThat(B.GetSize() == A.GetRowCnt(), kMatrixUnit);
  return SolveBySymmetricForm(X, A, B, TSymmetricForm::sfRoots);
}

bool TLinearSolveTool::SolveLeastSquares(TFloatMatrix A, TFloatVector B, TFloatVector& X,
                                         TFloatVector& Residuals) {
  const TFloatMatrix Normal = A.AAT();
  bool Solved = B.GetSize() == A.GetColCnt();
  TFloatVector Found;
  if (Solved) {
    const TFloatVector Right = A * B;
    Solved = Gaussian(Found, Normal.Clone(), Right.Clone());
    if (Solved && !HoldsNormalSystem(Normal, Found, Right)) {
      Solved = LDLT(Found, Normal.Clone(), Right.Clone());
    }
  }
  if (!Solved) Found = TFloatVector(A.GetRowCnt());
  Residuals = Solved ? A.Transpose() * Found - B : TFloatVector(A.GetColCnt());
  X = Found;
  return Solved;
}

bool TLinearSolveTool::SolveLeastSquares(TFloatMatrix A, TFloatVector B, TFloatVector& X) {
  TFloatVector Residuals;
  return SolveLeastSquares(std::move(A), std::move(B), X, Residuals);
}

// NOLINTEND(performance-unnecessary-value-param)

}  // namespace tarnalgo
