#pragma once  // geometryAlgo/UDualSimplex/LinearProgramMethod.h

#include "geometryAlgo/UDualSimplex/IntegerVec.h"
#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "geometryAlgo/UMatrixAlgo/FloatVector.h"

namespace tarnalgo {

/// Linear and integer programs in one call: see `TSimplexAndDualMethod` for what a program is, for
/// tolerances and costs.
///
///     TFloatVector X;
///     double Profit = 0.0;
///     if (TLinearProgramMethod::Solve(A, B, Senses, C, true, false, X, Profit)) Use(X);
///
/// False: infeasible, unbounded, given up or not finite; `X` is then zeros and `Objective` 0.
/// Ownership: changes nothing but `X` and `Objective`, which may be handles of the program itself.
/// Errors: the sizes do not fit, or a sense is not `kAtMost` or `kAtLeast`, `EAssertionFailed`;
/// an integer program without rows or columns likewise. `X` and `Objective` are then as before.
class TLinearProgramMethod {
 public:
  TLinearProgramMethod() = delete;

  /// The right-hand sides in column 0 of `A`, the constant of the objective in C[0]; X[0] is 0.
  static bool Solve(const TFloatMatrix& A, const TIntegerVec& Senses, const TFloatVector& C,
                    bool Maximise, bool Integer, TFloatVector& X, double& Objective);

  /// The right-hand sides apart: `A`, `C` and `X` have the variables only.
  static bool Solve(const TFloatMatrix& A, const TFloatVector& B, const TIntegerVec& Senses,
                    const TFloatVector& C, bool Maximise, bool Integer, TFloatVector& X,
                    double& Objective);
};

}  // namespace tarnalgo
