#pragma once  // tests/support/Matrices.h

#include <random>
#include <vector>

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "tests/support/Generate.h"

namespace tarnalgo::test {

/// The matrix of these rows.
inline TFloatMatrix MatrixOf(const std::vector<TFloatVector>& Rows) {
  TFloatMatrix Result;
  for (const TFloatVector& Row : Rows) Result.ExpandARow(Row);
  return Result;
}

inline TFloatMatrix RandomMatrix(std::mt19937& Random, int Rows, int Columns) {
  TFloatMatrix Result(Rows, Columns);
  for (int I = 0; I < Rows; ++I) {
    for (int J = 0; J < Columns; ++J) Result.SetItem(I, J, RandomDouble(Random, -1.0, 1.0));
  }
  return Result;
}

}  // namespace tarnalgo::test
