#pragma once  // geometryAlgo/UMatrixAlgo/TriangularSolve.h

#include <cstddef>

#include "geometryAlgo/UMatrixAlgo/BlockProduct.h"

namespace tarnalgo {

/// A block of a matrix to write, `Rows` x `Columns`, rows `Step` apart.
struct TMatrixBlock {
  double* Items;
  std::ptrdiff_t Step;
  int Rows;
  int Columns;

  double* Row(int I) const { return Items + I * Step; }
  TBlockView View() const { return {Items, Step, 1}; }
  TMatrixBlock Part(int FirstRow, int FirstColumn, int ARows, int AColumns) const {
    return {Row(FirstRow) + FirstColumn, Step, ARows, AColumns};
  }
};

// Internal to the matrix unit. The triangle is a square of `B.Rows` rows; what lies on its other
// side is not read. Each element of B has its products subtracted one by one.

/// B := L⁻¹·B, L with ones on its diagonal, which are not read. The order is that of the columns
/// of L: the bits of the plain loops.
void SolveUnitLower(TBlockView L, TMatrixBlock B, TBlockProduct& Product);

/// B := U⁻¹·B.
void SolveUpper(TBlockView U, TMatrixBlock B, TBlockProduct& Product);

/// B := L⁻¹ or U⁻¹, about n³/2 operations. B must hold the identity.
void InvertUnitLower(TBlockView L, TMatrixBlock B, TBlockProduct& Product);
void InvertUpper(TBlockView U, TMatrixBlock B, TBlockProduct& Product);

}  // namespace tarnalgo
