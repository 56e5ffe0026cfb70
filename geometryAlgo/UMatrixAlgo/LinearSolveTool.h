#pragma once  // geometryAlgo/UMatrixAlgo/LinearSolveTool.h

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "geometryAlgo/UMatrixAlgo/FloatVector.h"

namespace tarnalgo {

/// Solvers of dense systems A·x = b.
///
///     TFloatVector X;
///     if (TLinearSolveTool::Gaussian(X, A.Clone(), B.Clone())) Use(X);
///
/// The answer says whether `X` is a solution. A system of size 0 is solved by the empty vector.
/// Non-finite elements end in false or in a solution that is not finite, after bounded work.
///
/// Ownership: matrix and vector are handles on shared elements. `Gaussian` and `SSOR` work in them,
/// so the caller sees their changes; hand over a `Clone` to keep the system. The other solvers
/// change nothing. `X` gets a buffer of its own and may be the very variable handed over as `B`.
/// Errors: A not square, or B of another size than A has rows: `EAssertionFailed`, with nothing
/// changed, `X` included.
class TLinearSolveTool {
 public:
  TLinearSolveTool() = delete;

  // --- Direct solvers (LinearSolveDirect.cpp) ---

  /// Elimination with partial pivoting. Leaves the triangle U, with zeros below it, in `A` and the
  /// right-hand side that belongs to it in `B`. False when a column has no pivot but exact zeros
  /// (or NaN): `X` is zero, and exchanges made before stay.
  /// Ties: of pivots of equal magnitude the upper row's.
  /// Cost: 2/3 n³ operations, one copy of the matrix.
  static bool Gaussian(TFloatVector& X, TFloatMatrix A, TFloatVector B);

  /// A = L·D·Lᵀ without pivoting: for symmetric, possibly indefinite systems. Reads the lower
  /// triangle only. False, with `X` zero, when an element of D is exactly 0.
  /// Cost: 1/3 n³ operations, one copy of the matrix.
  static bool LDLT(TFloatVector& X, TFloatMatrix A, TFloatVector B);

  /// A = L·Lᵀ: for symmetric positive definite systems. Reads the lower triangle only. False, with
  /// `X` zero, unless every pivot is above 0.
  /// Cost: 1/3 n³ operations, one copy of the matrix.
  static bool Cholesky(TFloatVector& X, TFloatMatrix A, TFloatVector B);

  // --- Iterations (LinearSolveIterate.cpp) ---

  /// Conjugate gradients from x = 0: for symmetric positive definite systems. At most 500 rounds;
  /// every 50th forms the residual anew. False when a direction p has p·A·p exactly 0 or the rounds
  /// run out; `X` is then the last iterate.
  /// Tolerance: true once the squared residual is at most 1e-20, whatever the size of `B`.
  /// Cost: O(n²) a round, about n rounds on a well-conditioned system.
  static bool ConjugateGradient(TFloatVector& X, TFloatMatrix A, TFloatVector B);

  /// Forward relaxation sweeps with the factor 1.1 from x = 0, at most 201: for diagonally dominant
  /// systems. First divides each row of `A`, and its element of `B`, by the diagonal element.
  /// False, with `X` zero, at a diagonal element of exactly 0 (the rows above it stay divided);
  /// false after the last sweep, `X` is then the last iterate.
  /// Tolerance: true once a sweep moves no element by more than 1e-10.
  /// Cost: O(n²) a sweep.
  static bool SSOR(TFloatVector& X, TFloatMatrix A, TFloatVector B);

  // --- Least squares (LinearSolveDirect.cpp) ---

  /// The `X` that makes Aᵀ·x - b shortest. `A` is the transposed design: a row for each unknown, a
  /// column for each observation in `B`. Solves A·Aᵀ·x = A·b by `Gaussian`, and again by `LDLT`
  /// where that leaves a residual. `Residuals` gets Aᵀ·x - b. False, with both vectors zero, when
  /// `B` has another size than `A` has columns, or the rows of `A` depend on each other so that a
  /// pivot is exactly 0; nearly dependent rows give one of the many near-minimisers.
  /// Tolerance: second solve from a residual of 1e-6 · max(1, largest |A·b|).
  /// Cost: O(m²·(m + n)) for m rows and n columns.
  static bool SolveLeastSquares(TFloatMatrix A, TFloatVector B, TFloatVector& X,
                                TFloatVector& Residuals);
  /// The same without the residuals.
  static bool SolveLeastSquares(TFloatMatrix A, TFloatVector B, TFloatVector& X);
};

}  // namespace tarnalgo
