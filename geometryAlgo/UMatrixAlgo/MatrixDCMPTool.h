#pragma once  // geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h

#include <vector>

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"

namespace tarnalgo {

/// Decompositions of matrices.
class TMatrixDCMPTool {
 public:
  // --- LU (LUDecomposition.cpp) ---

  /// LU with partial pivoting, in place: `A` becomes L (unit diagonal, strictly below the diagonal)
  /// and U (on and above it) of the matrix with its rows exchanged. `Pivots` becomes one row for
  /// each column k: rows k and Pivots[k] (>= k) were exchanged, in the order of k. A zero pivot is
  /// no error, its column stays undivided. A matrix that is not square is left as it is, and so is
  /// `Pivots`.
  /// Each element has its products subtracted one by one in the order of the columns, whatever the
  /// blocks in which that is done: the bits are those of the plain triple loop.
  /// Ties: the pivot is the largest magnitude, the uppermost of equals; NaN never replaces.
  /// Ownership: works on the shared elements; every copy of `A` sees it.
  static void PLU(TFloatMatrix& A, std::vector<int>& Pivots);

  ///@{
  /// L (ones on the diagonal) and U with L·U = A but for the order of its rows, which is that of
  /// `PLU`; `LUCMPExt` tells it: row i of L·U is row Permutation[i] of A. `A` stays as it is.
  /// Errors: not square, `EAssertionFailed`.
  static void LUCMP(const TFloatMatrix& A, TFloatMatrix& L, TFloatMatrix& U);
  static void LUCMPExt(const TFloatMatrix& A, TFloatMatrix& L, TFloatMatrix& U,
                       std::vector<int>& Permutation);
  ///@}

  // --- Inverses (MatrixInverse.cpp) ---
  // Errors: not square, `EAssertionFailed`. Where the result is false nothing is changed.

  /// The inverse of A from its LU factors, U⁻¹·L⁻¹ with its columns in the order of A's rows. False
  /// when a pivot is exactly 0.
  static bool GetInverseMatrixByLu(const TFloatMatrix& A, TFloatMatrix& Inverse);
  /// The inverse of a lower triangle with ones on its diagonal. Reads below the diagonal only, so
  /// that the result of `PLU` will do.
  static TFloatMatrix GetInverseofLowerTriIdeMatrix(const TFloatMatrix& L);
  /// The inverse of an upper triangle; reads on and above the diagonal only. False when an element
  /// of the diagonal is exactly 0.
  static bool GetInverseofUpperTriMatrix(const TFloatMatrix& U, TFloatMatrix& Inverse);

  // --- Orthogonal factors (OrthogonalFactors.cpp) ---

  /// InitA = Q·R by Householder reflections: Q square and orthogonal, R upper triangular in the
  /// shape of `InitA`, its diagonal of either sign.
  static void QRDCMP(const TFloatMatrix& InitA, TFloatMatrix& Q, TFloatMatrix& R);
  /// The columns made orthonormal from left to right, each on the side of the given one. A column
  /// that depends on those before it becomes zero.
  /// Tolerance: 1e-12 of its length may stand out of them.
  static TFloatMatrix GetOrthoByGramSchmidt(const TFloatMatrix& Matrix);

  // --- Singular values (SingularValues.cpp) ---

  /// Singular values `W` and vectors, the columns of `U` (m x m) and `V` (n x n), of the m x n
  /// matrix `A`, by power iteration with deflation: A = Σ W[k]·U[k]·V[k]ᵀ where all are found.
  /// `W` has max(m, n) elements, in the order found (normally descending, not sorted). A direction
  /// that has not converged within 100 steps is left out: its columns and `W` stay zero; so do
  /// those beyond the rank. Singular values nearer than about 6 in 100 are at risk.
  /// Starts from the same pseudo-random vectors at every call.
  /// Tolerance: 1e-12, on the squared change of U[k] and on the length below which a vector is
  /// nothing.
  /// Cost: O(m·n) a step; at most 100 steps for each direction.
  static void SVDCMP(const TFloatMatrix& A, TFloatMatrix& U, TFloatMatrix& V, TFloatVector& W);
};

}  // namespace tarnalgo
