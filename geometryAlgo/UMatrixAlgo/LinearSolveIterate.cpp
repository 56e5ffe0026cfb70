#include <cmath>

#include "geometryAlgo/UMatrixAlgo/LinearSolveTool.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"
#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

constexpr int kGradientRounds = 500;
constexpr int kRoundsPerResidual = 50;
constexpr int kSweeps = 201;
constexpr double kRelaxation = 1.1;

/// Z := M·R for the preconditioner M, which is the identity: R itself, where a row of M also adds 0
/// times each other element, NaN unless all are finite.
void Precondition(TFloatVector& Z, const TFloatVector& R) {
  double Rest = 0.0;
  for (int I = 0; I < R.GetSize(); ++I) Rest += 0.0 * R.Data()[I];
  for (int I = 0; I < R.GetSize(); ++I) Z.Data()[I] = R.Data()[I] + Rest;
}

/// Q := A·P.
void Apply(TFloatVector& Q, const TFloatMatrix& A, const TFloatVector& P) {
  const auto Size = static_cast<std::size_t>(P.GetSize());
  if (Size > 0) RowDots(A.Row(0), A.RowStride(), Size, P.Data(), Size, Q.Data());
}

/// R := B - A·X.
void FormResidual(TFloatVector& R, const TFloatMatrix& A, const TFloatVector& B,
                  const TFloatVector& X) {
  Apply(R, A, X);
  for (int I = 0; I < R.GetSize(); ++I) R.Data()[I] = B.Data()[I] - R.Data()[I];
}

/// Divides row `Index` of the system by its diagonal element; false when that is exactly 0.
bool ScaleRow(TFloatMatrix& A, TFloatVector& B, int Index) {
  double* Row = A.Row(Index);
  if (Row[Index] == 0.0) return false;
  const double Scale = 1.0 / Row[Index];
  B.Data()[Index] *= Scale;
  for (int J = 0; J < A.GetColCnt(); ++J) Row[J] *= Scale;
  return true;
}

/// One forward sweep; the largest residual met, NaN once one is.
double Sweep(TFloatVector& X, const TFloatMatrix& A, const TFloatVector& B) {
  const auto Size = static_cast<std::size_t>(X.GetSize());
  double Largest = 0.0;
  for (int I = 0; I < X.GetSize(); ++I) {
    const double Residual = B.Data()[I] - RowDot(A.Row(I), X.Data(), Size);
    if (!(std::abs(Residual) <= Largest)) Largest = std::abs(Residual);
    X.Data()[I] += kRelaxation * Residual;
  }
  return Largest;
}

}  // namespace

// Handles by value, as of every solver: X may be the variable that B came from, or hold its buffer.
// NOLINTBEGIN(performance-unnecessary-value-param)

bool TLinearSolveTool::ConjugateGradient(TFloatVector& X, TFloatMatrix A, TFloatVector B) {
  AssertThat(A.GetRowCnt() == A.GetColCnt(), kMatrixUnit);
  AssertThat(B.GetSize() == A.GetRowCnt(), kMatrixUnit);
  const int Count = B.GetSize();
  const auto Size = static_cast<std::size_t>(Count);
  TFloatVector Start(Count);
  TFloatVector R(Count);
  TFloatVector Z(Count);
  TFloatVector Q(Count);
  FormResidual(R, A, B, Start);
  Precondition(Z, R);
  TFloatVector P = Z.Clone();
  X = Start;  // all memory is taken
  double Rho = R * Z;
  for (int Round = 0; Round < kGradientRounds; ++Round) {
    if (Rho <= kGradientEnd) return true;
    Apply(Q, A, P);
    const double Curvature = P * Q;
    if (Curvature == 0.0) return false;
    const double Step = Rho / Curvature;
    RowAddMultiple(X.Data(), Step, P.Data(), Size);
    if (Round % kRoundsPerResidual == 0) {
      FormResidual(R, A, B, X);
    } else {
      RowAddMultiple(R.Data(), -Step, Q.Data(), Size);
    }
    Precondition(Z, R);
    const double OldRho = Rho;  // above the end, so not 0
    Rho = R * Z;
    const double Share = Rho / OldRho;
    for (int I = 0; I < Count; ++I) P.Data()[I] = Z.Data()[I] + Share * P.Data()[I];
  }
  return false;
}

bool TLinearSolveTool::SSOR(TFloatVector& X, TFloatMatrix A, TFloatVector B) {
  AssertThat(A.GetRowCnt() == A.GetColCnt(), kMatrixUnit);
  AssertThat(B.GetSize() == A.GetRowCnt(), kMatrixUnit);
  X = TFloatVector(B.GetSize());
  for (int I = 0; I < B.GetSize(); ++I) {
    if (!ScaleRow(A, B, I)) return false;
  }
  for (int Count = 0; Count < kSweeps; ++Count) {
    if (kRelaxation * Sweep(X, A, B) <= kSweepEnd) return true;
  }
  return false;
}

// NOLINTEND(performance-unnecessary-value-param)

}  // namespace tarnalgo
