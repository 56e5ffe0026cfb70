#pragma once  // geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h

#include <vector>

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"

namespace tarnalgo {

/// Decompositions of matrices.
class TMatrixDCMPTool {
 public:
  // --- LU and inverses (LUDecomposition.cpp) ---

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
};

}  // namespace tarnalgo
