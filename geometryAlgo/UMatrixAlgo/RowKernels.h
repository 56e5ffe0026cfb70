#pragma once  // geometryAlgo/UMatrixAlgo/RowKernels.h

#include <cstddef>

namespace tarnalgo {

/// Loops over rows of doubles, two lanes at a time. Internal to the matrix unit. What they write
/// must not overlap what they read, unless it is the very same row.

/// Σ A[i]·B[i] in eight partial sums.
double RowDot(const double* A, const double* B, std::size_t Count);

/// Dots[r] := `RowDot` of row r of `Rows` rows, `Step` apart from A on, with B.
void RowDots(const double* A, std::ptrdiff_t Step, std::size_t Rows, const double* B,
             std::size_t Count, double* Dots);

/// Y[i] := Y[i] + Factor·X[i].
void RowAddMultiple(double* Y, double Factor, const double* X, std::size_t Count);

/// Y := Y + Σ Factors[r]·(row r), `Rows` rows `Step` apart from A on, added in their order.
void RowsAddMultiples(double* Y, const double* Factors, const double* A, std::ptrdiff_t Step,
                      std::size_t Rows, std::size_t Count);

/// Y[i] := Y[i] / Divisor.
void RowDivide(double* Y, double Divisor, std::size_t Count);

/// Euclidean length; squares neither overflow nor vanish.
double RowMag(const double* Y, std::size_t Count);

/// The first index of the largest |Y[i]|, 0 when every element is NaN. A NaN is no candidate.
std::size_t RowLargest(const double* Y, std::size_t Count);

}  // namespace tarnalgo
