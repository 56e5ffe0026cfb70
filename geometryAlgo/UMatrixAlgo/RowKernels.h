#pragma once  // geometryAlgo/UMatrixAlgo/RowKernels.h

#include <cstddef>

namespace tarnalgo {

/// Loops over rows of doubles, two lanes at a time. Internal to the matrix unit. What they write
/// must not overlap what they read, unless it is the very same row.

/// Σ A[i]·B[i] in eight partial sums.
double RowDot(const double* A, const double* B, std::size_t Count);

/// Y[i] := Y[i] + Factor·X[i].
void RowAddMultiple(double* Y, double Factor, const double* X, std::size_t Count);

}  // namespace tarnalgo
