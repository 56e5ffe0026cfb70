#include <algorithm>
#include <numeric>

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

void CheckIndex(int Index, int Count) {
  if (Index < 0 || Index >= Count) RaiseError<EParamError>("TFloatMatrix", "index out of range");
}

/// 0 .. `Count` − 1 without `Dropped`.
std::vector<int> Without(const std::vector<int>& Dropped, int Count) {
  std::vector<bool> Stays(static_cast<std::size_t>(Count), true);
  for (const int Index : Dropped) {
    CheckIndex(Index, Count);
    Stays[static_cast<std::size_t>(Index)] = false;
  }
  std::vector<int> Kept;
  for (int I = 0; I < Count; ++I) {
    if (Stays[static_cast<std::size_t>(I)]) Kept.push_back(I);
  }
  return Kept;
}

TFloatMatrix TakeRows(const TFloatMatrix& A, const std::vector<int>& Kept) {
  TFloatMatrix Result(static_cast<int>(Kept.size()), A.GetColCnt());
  int To = 0;
  for (const int I : Kept) std::copy_n(A.Row(I), A.GetColCnt(), Result.Row(To++));
  return Result;
}

TFloatMatrix TakeColumns(const TFloatMatrix& A, const std::vector<int>& Kept) {
  TFloatMatrix Result(A.GetRowCnt(), static_cast<int>(Kept.size()));
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    const double* const From = A.Row(I);
    std::transform(Kept.begin(), Kept.end(), Result.Row(I), [From](int J) { return From[J]; });
  }
  return Result;
}

bool IsZero(double X) {
  return X == 0.0;
}  // exact: −0 too, no tolerance

}  // namespace

void TFloatMatrix::ExpandAColumn(const TFloatVector& Column) {
  ExpandColumns(TFloatMatrix(Column, true));
}

void TFloatMatrix::ExpandARow(const TFloatVector& ARow) {
  ExpandRows(TFloatMatrix(ARow, false));
}

void TFloatMatrix::ExpandColumns(const TFloatMatrix& Columns) {
  // Keeps the elements where `Columns` is this matrix.
  const TFloatMatrix Tail = Columns;  // NOLINT(performance-unnecessary-copy-initialization)
  if (GetRowCnt() == 0) {
    *this = Tail.Clone();
    return;
  }
  AssertThat(GetRowCnt() == Tail.GetRowCnt(), kMatrixUnit);
  const int Width = GetColCnt();
  SetColCnt(Width + Tail.GetColCnt());
  for (int I = 0; I < GetRowCnt(); ++I) {
    std::copy_n(Tail.Row(I), Tail.GetColCnt(), Row(I) + Width);
  }
}

void TFloatMatrix::ExpandRows(const TFloatMatrix& Rows) {
  // Keeps the elements where `Rows` is this matrix.
  const TFloatMatrix Tail = Rows;  // NOLINT(performance-unnecessary-copy-initialization)
  if (GetRowCnt() == 0) {
    *this = Tail.Clone();
    return;
  }
  AssertThat(Tail.GetRowCnt() == 0 || GetColCnt() == Tail.GetColCnt(), kMatrixUnit);
  const int Height = GetRowCnt();
  SetRowCnt(Height + Tail.GetRowCnt());
  for (int I = 0; I < Tail.GetRowCnt(); ++I) {
    std::copy_n(Tail.Row(I), GetColCnt(), Row(Height + I));
  }
}

void TFloatMatrix::ExceptColumns(const std::vector<int>& Indexes) {
  *this = TakeColumns(*this, Without(Indexes, GetColCnt()));
}

void TFloatMatrix::ExceptRows(const std::vector<int>& Indexes) {
  *this = TakeRows(*this, Without(Indexes, GetRowCnt()));
}

void TFloatMatrix::ExceptLastColumns(int Count) {
  if (Count < 0) RaiseError<EParamError>("TFloatMatrix", "the count is negative");
  SetColCnt(GetColCnt() - Count);
}

void TFloatMatrix::ExceptLastRows(int Count) {
  if (Count < 0) RaiseError<EParamError>("TFloatMatrix", "the count is negative");
  SetRowCnt(GetRowCnt() - Count);
}

void TFloatMatrix::RemoveZeroColumns() {
  std::vector<bool> Used(static_cast<std::size_t>(GetColCnt()));
  for (int I = 0; I < GetRowCnt(); ++I) {
    for (int J = 0; J < GetColCnt(); ++J) {
      if (!IsZero(Row(I)[J])) Used[static_cast<std::size_t>(J)] = true;
    }
  }
  std::vector<int> Zero;
  for (int J = 0; J < GetColCnt(); ++J) {
    if (!Used[static_cast<std::size_t>(J)]) Zero.push_back(J);
  }
  ExceptColumns(Zero);
}

void TFloatMatrix::RemoveZeroRows() {
  std::vector<int> Zero;
  for (int I = 0; I < GetRowCnt(); ++I) {
    if (std::all_of(Row(I), Row(I) + GetColCnt(), IsZero)) Zero.push_back(I);
  }
  ExceptRows(Zero);
}

TFloatMatrix TFloatMatrix::SubMatrix(int FirstRow, int FirstColumn, int Rows, int Columns) const {
  if (FirstRow < 0 || FirstColumn < 0 || Rows < 0 || Columns < 0 || Rows > GetRowCnt() - FirstRow ||
      Columns > GetColCnt() - FirstColumn) {
    RaiseError<EParamError>("TFloatMatrix.SubMatrix", "index out of range");
  }
  TFloatMatrix Result(Rows, Columns);
  for (int I = 0; I < Rows; ++I) {
    std::copy_n(Row(FirstRow + I) + FirstColumn, Columns, Result.Row(I));
  }
  return Result;
}

TFloatVector TFloatMatrix::GetRow(int Index) const {
  CheckIndex(Index, GetRowCnt());
  TFloatVector Result(GetColCnt());
  std::copy_n(Row(Index), GetColCnt(), Result.Data());
  return Result;
}

TFloatVector TFloatMatrix::GetColumn(int Index) const {
  CheckIndex(Index, GetColCnt());
  TFloatVector Result(GetRowCnt());
  for (int I = 0; I < GetRowCnt(); ++I) Result.Data()[I] = Row(I)[Index];
  return Result;
}

void TFloatMatrix::SetRow(int Index, const TFloatVector& V) {
  CheckIndex(Index, GetRowCnt());
  AssertThat(V.GetSize() == GetColCnt(), kMatrixUnit);
  std::copy_n(V.Data(), GetColCnt(), Row(Index));
}

void TFloatMatrix::SetColumn(int Index, const TFloatVector& V) {
  CheckIndex(Index, GetColCnt());
  AssertThat(V.GetSize() == GetRowCnt(), kMatrixUnit);
  for (int I = 0; I < GetRowCnt(); ++I) Row(I)[Index] = V.Data()[I];
}

void TFloatMatrix::SwapRows(int A, int B) {
  CheckIndex(A, GetRowCnt());
  CheckIndex(B, GetRowCnt());
  if (A != B) std::swap_ranges(Row(A), Row(A) + GetColCnt(), Row(B));
}

void TFloatMatrix::SwapColumns(int A, int B) {
  CheckIndex(A, GetColCnt());
  CheckIndex(B, GetColCnt());
  for (int I = 0; I < GetRowCnt(); ++I) std::swap(Row(I)[A], Row(I)[B]);
}

TFloatMatrix TFloatMatrix::UpperTriangleMat() const {
  TFloatMatrix Result = Clone();
  for (int I = 1; I < GetRowCnt(); ++I) {
    std::fill_n(Result.Row(I), std::min(I, GetColCnt()), 0.0);
  }
  return Result;
}

TFloatMatrix TFloatMatrix::LowerTriangleMat() const {
  TFloatMatrix Result = Clone();
  for (int I = 0; I < std::min(GetRowCnt(), GetColCnt()); ++I) {
    std::fill(Result.Row(I) + I + 1, Result.Row(I) + GetColCnt(), 0.0);
  }
  return Result;
}

}  // namespace tarnalgo
