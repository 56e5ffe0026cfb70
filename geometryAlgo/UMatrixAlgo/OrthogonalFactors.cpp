#include <algorithm>
#include <cmath>

#include "geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h"
#include "geometryAlgo/UMatrixAlgo/Orthonormal.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

namespace tarnalgo {

namespace {

/// Share of a column's length that must stand out of the columns before it; what rounding leaves of
/// a sum of them is far below.
constexpr double kIndependence = 1e-12;

/// The reflection I − Factor·v·vᵀ of the rows from `First` on.
struct TReflection {
  int First;
  double Factor = 0.0;  // 0: nothing to reflect
  std::vector<double> V;

  /// Reflects the rows of `A`, from column `FirstColumn` on.
  void Apply(TFloatMatrix& A, int FirstColumn) const {
    if (Factor == 0.0) return;
    const auto Width = static_cast<std::size_t>(A.GetColCnt() - FirstColumn);
    double* const Top = A.Row(First) + FirstColumn;
    std::vector<double> Sums(Width);  // Factor·vᵀ·A
    RowsAddMultiples(Sums.data(), V.data(), Top, A.RowStride(), V.size(), Width);
    for (double& Sum : Sums) Sum *= Factor;
    for (std::size_t I = 0; I < V.size(); ++I) {
      RowAddMultiple(Top + static_cast<std::ptrdiff_t>(I) * A.RowStride(), -V[I], Sums.data(),
                     Width);
    }
  }
};

/// The reflection that turns column `K` of `A`, from row K down, into its length in row K. The
/// length takes the sign opposite to the first element, so that nothing cancels.
TReflection ReflectionOf(TFloatMatrix& A, int K) {
  TReflection Result{K, 0.0, {}};
  for (int I = K; I < A.GetRowCnt(); ++I) Result.V.push_back(A.Row(I)[K]);
  const double Length = RowMag(Result.V.data(), Result.V.size());
  if (Length == 0.0) return Result;  // exact
  const double First = Result.V[0];
  const double Image = -std::copysign(Length, First);
  RowDivide(Result.V.data(), First - Image, Result.V.size());
  Result.V[0] = 1.0;
  // From the vector as rounded, so that the reflection is orthogonal even for denormal columns.
  Result.Factor = 2.0 / RowDot(Result.V.data(), Result.V.data(), Result.V.size());
  return Result;
}

}  // namespace

void TMatrixDCMPTool::QRDCMP(const TFloatMatrix& InitA, TFloatMatrix& Q, TFloatMatrix& R) {
  TFloatMatrix Upper = InitA.Clone();
  std::vector<TReflection> Reflections;
  for (int K = 0; K < std::min(Upper.GetRowCnt(), Upper.GetColCnt()); ++K) {
    Reflections.push_back(ReflectionOf(Upper, K));
    Reflections.back().Apply(Upper, K);
  }
  // From the last one on, so that each meets only the corner that differs from the identity.
  TFloatMatrix Orthogonal(Upper.GetRowCnt());
  for (auto It = Reflections.rbegin(); It != Reflections.rend(); ++It) {
    It->Apply(Orthogonal, It->First);
  }
  R = Upper.UpperTriangleMat();
  Q = std::move(Orthogonal);
}

TFloatMatrix TMatrixDCMPTool::GetOrthoByGramSchmidt(const TFloatMatrix& Matrix) {
  TFloatMatrix Columns = Matrix.Transpose();  // rows lie in one piece
  for (int K = 0; K < Columns.GetRowCnt(); ++K) {
    double* const Column = Columns.Row(K);
    // A unit vector first: the components of denormals would be rounded to nothing.
    if (MakeUnit(Column, static_cast<std::size_t>(Columns.GetColCnt())) == 0.0) continue;  // exact
    const double Left = MakeOrthogonal(Column, 1.0, Columns, K);
    if (Left < kIndependence) std::fill_n(Column, Columns.GetColCnt(), 0.0);
  }
  return Columns.Transpose();
}

}  // namespace tarnalgo
