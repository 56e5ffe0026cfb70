#pragma once  // geometryAlgo/UMatrixAlgo/SymmetricFactor.h

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "geometryAlgo/UMatrixAlgo/FloatVector.h"

namespace tarnalgo {

/// The two triangular forms of a symmetric matrix.
enum class TSymmetricForm {
  sfRoots,     ///< L·Lᵀ, for positive definite matrices
  sfDiagonal,  ///< L·D·Lᵀ with 1 on L's diagonal, D stored in its place
};

/// Factors `A`, whose lower triangle alone is read and written, without pivoting. False at the
/// first pivot that is exactly 0 or, for `sfRoots`, not above 0; `A` is then spoilt.
/// Internal to the matrix unit.
/// Cost: 1/3 n³ operations, by blocks of columns; O(n) extra memory.
bool FactorSymmetric(TFloatMatrix& A, TSymmetricForm Form);

/// Solves the factored system, `X` holding the right-hand side before and the solution after.
/// Cost: 2·n² operations.
void SolveSymmetric(const TFloatMatrix& Factored, TSymmetricForm Form, TFloatVector& X);

}  // namespace tarnalgo
