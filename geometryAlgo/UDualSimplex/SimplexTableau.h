#pragma once  // geometryAlgo/UDualSimplex/SimplexTableau.h

#include <cstddef>
#include <vector>

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"

namespace tarnalgo {

/// A simplex tableau: row 0 holds the reduced costs, column 0 the right-hand sides, the columns
/// from 1 on the variables and then the slacks. Each row from 1 on has a basic column, in which it
/// holds 1 and every other row 0.
///
/// Only the other columns are kept, in one block of memory, each at a place that it leaves to the
/// column it changes with. A pivot goes over the block once, row by row.
/// Internal to the programs' unit.
class TSimplexTableau {
 public:
  TSimplexTableau() : TSimplexTableau(0, 0) {}
  /// `Rows` constraints over `Variables`, all zero and without slacks yet.
  TSimplexTableau(int Rows, int Variables);

  /// Rows, row 0 included, and columns, column 0 included.
  int RowCnt() const { return FRowCnt; }
  int ColCnt() const { return static_cast<int>(FPlaces.size()); }
  /// Places of a row, place 0 (column 0) included.
  int PlaceCnt() const { return FPlaceCnt; }

  /// The elements of the columns that are not basic, by place.
  double* Row(int Index) { return FItems.data() + Index * FStride; }
  const double* Row(int Index) const { return FItems.data() + Index * FStride; }
  /// The place of a column, -1 while it is basic.
  int PlaceOf(int Column) const { return FPlaces[static_cast<std::size_t>(Column)]; }
  /// The column at a place.
  int ColumnAt(int Place) const { return FColumns[static_cast<std::size_t>(Place)]; }
  /// The column that is basic in a row >= 1, 0 when none is.
  int BasicColumn(int Row) const { return FBasics[static_cast<std::size_t>(Row)]; }
  /// The element of any column.
  double Item(int Row, int Column) const;

  /// Appends the slack of a row, basic there.
  void AddBasicColumn(int Row);
  /// Divides row `Index` by its element in `Column`, which is not basic, and takes it off every
  /// other row so that `Column` becomes the basic one of the row.
  void Pivot(int Index, int Column);

  /// Row 0 becomes `Costs`, by column, less what they cost in the basic columns.
  void SetCosts(const std::vector<double>& Costs);
  /// Replaces all elements, the basic columns staying as they are: `Rows` holds the rows from 1 on,
  /// by place, and row 0 becomes that of `SetCosts`.
  void SetItems(const std::vector<double>& Costs, const TFloatMatrix& Rows);

  /// What this tableau, the slacks basic in it, becomes when the basic columns are those of
  /// `Target`, row for row: the same tableau as `Target` but for its rounding. False when that
  /// needs a pivot that is as good as 0; `Rebuilt` is then of no use.
  /// Cost: a pivot for each variable in the basis, of the largest element that is left.
  bool RebuildAs(const TSimplexTableau& Target, TSimplexTableau& Rebuilt) const;

 private:
  int LargestElement(int Column, const TSimplexTableau& Target) const;
  void OrderRowsAs(const TSimplexTableau& Target);

  int FRowCnt;
  int FPlaceCnt;
  std::ptrdiff_t FStride;
  std::vector<double> FItems;
  std::vector<int> FPlaces;   // by column
  std::vector<int> FColumns;  // by place
  std::vector<int> FBasics;   // by row
};

}  // namespace tarnalgo
