#pragma once  // geometryAlgo/UMatrixAlgo/FloatMatrix.h

#include <concepts>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "geometryAlgo/UMatrixAlgo/FloatVector.h"

namespace tarnalgo {

/// A dense matrix of doubles, row by row, over a shared buffer.
///
///     TFloatMatrix A(3);          // the identity
///     TFloatMatrix B = A;         // shares the elements
///     B.SwapRows(0, 2);           // A has its rows exchanged too
///     TFloatMatrix C = A.Clone();
///     if (C.TryReverse()) Use(A * C);
///
/// A matrix without rows has no columns either. In memory the rows stand at equal distance
/// (`RowStride` >= `GetColCnt`) in one block.
///
/// Ownership: copies share the elements, and see each other's writes of elements, exchanges of rows
/// and columns included. Whatever changes the size, and `LoadFromFile`, `TryReverse` and
/// `FreeData`, gives this handle a buffer of its own and leaves the other handles as they are.
/// Every result is new and shares with nothing. A moved-from matrix is empty.
/// Errors: an index out of range, a negative count or more than `kMostItems` elements or
/// rows, `EParamError`; operands whose sizes do not fit, `EAssertionFailed`.
class TFloatMatrix {
 public:
  // --- Creation, size, elements (FloatMatrix.cpp) ---

  TFloatMatrix() = default;
  /// `Rows` x `Columns` zeros.
  TFloatMatrix(int Rows, int Columns) : TFloatMatrix(Rows, Columns, 0.0) {}
  /// Every element `Value`.
  TFloatMatrix(int Rows, int Columns, double Value);
  /// The identity.
  explicit TFloatMatrix(int Size);
  /// The outer product: element [i][j] = A[i]·B[j].
  TFloatMatrix(const TFloatVector& A, const TFloatVector& B);
  /// The vector as the only column, or as the only row.
  TFloatMatrix(const TFloatVector& V, std::same_as<bool> auto AsColumn)
      : TFloatMatrix(AsColumn ? V.GetSize() : 1, AsColumn ? 1 : V.GetSize()) {
    for (int I = 0; I < V.GetSize(); ++I) SetItem(AsColumn ? I : 0, AsColumn ? 0 : I, V[I]);
  }

  int GetRowCnt() const { return FBlock ? FBlock->Rows : 0; }     ///< Rows; 0 without a buffer.
  int GetColCnt() const { return FBlock ? FBlock->Columns : 0; }  ///< Columns; 0 without a row.
  ///@{
  /// These keep what fits; new elements are 0.
  void SetRowCnt(int Rows) { Resize(Rows, GetColCnt()); }
  void SetColCnt(int Columns) { Resize(GetRowCnt(), Columns); }
  void Resize(int Rows, int Columns);
  ///@}

  /// The element in row `Row` and column `Column`, from 0 on.
  double GetItem(int Row, int Column) const { return *Checked(Row, Column); }
  /// Writes the shared element.
  void SetItem(int Row, int Column, double Value) { *Checked(Row, Column) = Value; }
  /// `GetItem`.
  double operator()(int Row, int Column) const { return GetItem(Row, Column); }

  /// The shared elements, for inner loops: `Row` elements, the next row `RowStride` further. Valid
  /// until the size of this handle changes. Row(0) of a matrix without rows is null.
  const double* Row(int Index) const { return RowAt(Index); }
  double* Row(int Index) { return RowAt(Index); }  ///< The same, to write.
  /// Elements from the start of a row to that of the next; 0 without rows.
  std::ptrdiff_t RowStride() const { return FBlock ? FBlock->Stride : 0; }

  /// An independent copy, elements and all.
  TFloatMatrix Clone() const;
  /// Lets go of the buffer: this matrix is empty, other handles keep theirs.
  void FreeData() { FBlock.reset(); }

  // --- Arithmetic (FloatMatrixArithmetic.cpp) ---

  ///@{
  /// New matrices; the operands stay as they are. A division by 0 gives infinities and NaN.
  TFloatMatrix Add(const TFloatMatrix& Other) const;
  TFloatMatrix Subtract(const TFloatMatrix& Other) const;
  TFloatMatrix Multiply(double Factor) const;
  ///@}
  /// The products; each element of matrix by matrix is summed in the order of the columns of this.
  TFloatMatrix Multiply(const TFloatMatrix& Other) const;
  TFloatVector Multiply(const TFloatVector& V) const;  ///< Matrix by column.
  /// Every element divided by `Divisor`.
  TFloatMatrix Divide(double Divisor) const;
  /// Every element with the other sign.
  TFloatMatrix Negative() const;

  friend TFloatMatrix operator+(const TFloatMatrix& A, const TFloatMatrix& B) { return A.Add(B); }
  friend TFloatMatrix operator-(const TFloatMatrix& A, const TFloatMatrix& B) {
    return A.Subtract(B);
  }
  friend TFloatMatrix operator-(const TFloatMatrix& A) { return A.Negative(); }
  friend TFloatMatrix operator*(const TFloatMatrix& A, const TFloatMatrix& B) {
    return A.Multiply(B);
  }
  friend TFloatVector operator*(const TFloatMatrix& A, const TFloatVector& V) {
    return A.Multiply(V);
  }
  friend TFloatMatrix operator*(const TFloatMatrix& A, double Factor) { return A.Multiply(Factor); }
  friend TFloatMatrix operator*(double Factor, const TFloatMatrix& A) { return A.Multiply(Factor); }
  friend TFloatMatrix operator/(const TFloatMatrix& A, double Divisor) { return A.Divide(Divisor); }
  /// Exact: equal sizes and elements; a NaN equals nothing.
  friend bool operator==(const TFloatMatrix& A, const TFloatMatrix& B);

  /// A·Aᵀ, symmetric to the last bit.
  TFloatMatrix AAT() const;
  /// Rows become columns.
  TFloatMatrix Transpose() const;
  /// Equal sizes, and each pair of elements equal.
  /// Tolerance: `Eps` on the elements, a difference of just `Eps` included.
  bool Equls(const TFloatMatrix& Other, double Eps) const;

  /// The determinant up to its sign: the product of the pivots of `TMatrixDCMPTool::PLU`, whose row
  /// exchanges are not counted. 0 without rows. A magnitude and a test for zero.
  /// Errors: not square, `EAssertionFailed`.
  double Determinant() const;
  /// Replaces this matrix by its inverse. False, and nothing changed, when it is not square or a
  /// pivot is exactly 0.
  /// Ties: the pivots are those of `TMatrixDCMPTool::PLU`.
  /// Ownership: on success this handle gets a new buffer; other handles keep the old values.
  bool TryReverse();

  // --- Rows, columns, parts (FloatMatrixParts.cpp) ---

  ///@{
  /// Append. To a matrix without rows: takes the size of what is appended.
  void ExpandAColumn(const TFloatVector& Column);
  void ExpandARow(const TFloatVector& ARow);
  void ExpandColumns(const TFloatMatrix& Columns);
  void ExpandRows(const TFloatMatrix& Rows);
  ///@}

  /// Drop the columns or rows at these indexes; any order, repeats do no harm.
  void ExceptColumns(const std::vector<int>& Indexes);
  void ExceptRows(const std::vector<int>& Indexes);  ///< The same for rows.
  /// Drop the last `Count`.
  /// Errors: fewer there, or a negative count, `EParamError`.
  void ExceptLastColumns(int Count = 1);
  void ExceptLastRows(int Count = 1);  ///< The same for rows.
  /// Drop the columns or rows that hold exact zeros only.
  void RemoveZeroColumns();
  void RemoveZeroRows();  ///< The same for rows.

  /// The block of `Rows` x `Columns` whose first element is [FirstRow][FirstColumn].
  TFloatMatrix SubMatrix(int FirstRow, int FirstColumn, int Rows, int Columns) const;
  /// A copy of the row.
  TFloatVector GetRow(int Index) const;
  /// The same into `Filled`, which gets a buffer of its own.
  void GetRow(int Index, TFloatVector& Filled) const { Filled = GetRow(Index); }
  /// A copy of the column.
  TFloatVector GetColumn(int Index) const;
  /// The same into `Filled`, which gets a buffer of its own.
  void GetColumn(int Index, TFloatVector& Filled) const { Filled = GetColumn(Index); }
  /// Write the (shared) elements.
  void SetRow(int Index, const TFloatVector& V);
  void SetColumn(int Index, const TFloatVector& V);  ///< The same for a column.
  /// Euclidean length.
  double GetRowMag(int Index) const { return GetRow(Index).Mag(); }
  double GetColumnMag(int Index) const { return GetColumn(Index).Mag(); }  ///< Length of a column.
  /// Exchange the (shared) elements.
  void SwapRows(int A, int B);
  void SwapColumns(int A, int B);  ///< The same for columns.
  /// A copy with zeros below the diagonal, or above it.
  TFloatMatrix UpperTriangleMat() const;
  TFloatMatrix LowerTriangleMat() const;  ///< A copy with zeros above the diagonal.

  // --- Text (FloatMatrixFile.cpp) ---

  /// Writes the file, a new one or over an old one: the row count, a blank and the column count on
  /// the first line; then a line for each row, each element as "%.16E", which reads back exactly,
  /// and a blank. Lines end in CR LF; decimal points whatever the locale.
  /// Errors: the file cannot be written, `EInOutError`.
  void SaveToFile(const std::string& FileName) const;
  /// Replaces this matrix by what `SaveToFile` wrote; without such a file does nothing. Blanks and
  /// line ends before a number are skipped, what follows the last row is not read.
  /// Errors: the file cannot be read, no number or one beyond the range of a double where one is
  /// due, a negative count, `EInOutError`; another character than the blank or CR that is due
  /// behind a number, `EAssertionFailed`. The matrix is then as it was.
  void LoadFromFile(const std::string& FileName);
  /// The elements to the debug output, a line for each row.
  void TestShow() const;

 private:
  struct TBlock {
    TBlock(int ARows, int AColumns);

    int Rows;
    int Columns;
    std::ptrdiff_t Stride;
    std::vector<double> Items;
  };

  double* RowAt(int Index) const;
  double* Checked(int Row, int Column) const;

  std::shared_ptr<TBlock> FBlock;  // none = no rows
};

}  // namespace tarnalgo
