#pragma once  // geometryAlgo/UMatrixAlgo/BlockProduct.h

#include <cstddef>
#include <vector>

namespace tarnalgo {

/// A block of a matrix to read: element (i, j) at Items[i·RowStep + j·ColumnStep], so that a
/// transposed block is one with its steps exchanged.
struct TBlockView {
  const double* Items;
  std::ptrdiff_t RowStep;
  std::ptrdiff_t ColumnStep;
};

/// Adds or subtracts the product of two blocks: the inner loops of products, factorisations and
/// triangular solves. Internal to the matrix unit.
///
/// Each element of the result has its products added one by one, in the order of the depth: the
/// bits are those of the plain triple loop, on every machine.
/// Cost: 2·Rows·Columns·Depth operations. Keeps its working memory for the next call.
class TBlockProduct {
 public:
  /// Takes the working memory for products up to that size, which then raise nothing.
  void Prepare(int Rows, int Columns, int Depth);
  /// C := C + A·B, C being `Rows` x `Columns` with rows `CStep` apart, A `Depth` wide. C overlaps
  /// neither A nor B.
  void Add(int Rows, int Columns, int Depth, TBlockView A, TBlockView B, double* C,
           std::ptrdiff_t CStep) {
    Run(false, Rows, Columns, Depth, A, B, C, CStep);
  }
  /// C := C − A·B.
  void Subtract(int Rows, int Columns, int Depth, TBlockView A, TBlockView B, double* C,
                std::ptrdiff_t CStep) {
    Run(true, Rows, Columns, Depth, A, B, C, CStep);
  }

 private:
  struct TRoom {
    double* A;
    double* B;
  };
  TRoom RoomFor(int Rows, int Columns, int Depth);
  void Run(bool IsNegative, int Rows, int Columns, int Depth, TBlockView A, TBlockView B, double* C,
           std::ptrdiff_t CStep);

  std::vector<double> FPackedA;
  std::vector<double> FPackedB;
};

}  // namespace tarnalgo
