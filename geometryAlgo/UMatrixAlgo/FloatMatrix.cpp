#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"

#include <algorithm>

#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// Doubles in a line of the cache.
constexpr std::ptrdiff_t kCacheLine = 8;
/// Narrower matrices are stored without gaps.
constexpr int kLeastPaddedWidth = 64;

/// An odd number of cache lines for wide rows: at a power of two a walk down a column would fall
/// on a few sets of the cache only.
std::ptrdiff_t StrideFor(int Columns) {
  if (Columns < kLeastPaddedWidth) return Columns;
  const std::ptrdiff_t Lines = (Columns + kCacheLine - 1) / kCacheLine;
  return (Lines % 2 == 0 ? Lines + 1 : Lines) * kCacheLine;
}

}  // namespace

TFloatMatrix::TBlock::TBlock(int ARows, int AColumns)
    : Rows(ARows), Columns(AColumns), Stride(StrideFor(AColumns)) {
  if (std::max<std::ptrdiff_t>(Stride, 1) > kMostItems / std::max(Rows, 1)) {
    RaiseError<EParamError>("TFloatMatrix", "the size is too large");
  }
  Items.resize(static_cast<std::size_t>(Rows) * static_cast<std::size_t>(Stride));
}

TFloatMatrix::TFloatMatrix(int Rows, int Columns, double Value) {
  Resize(Rows, Columns);
  if (Value == 0.0) return;  // exact: the elements are that already
  for (int I = 0; I < Rows; ++I) std::fill_n(RowAt(I), Columns, Value);
}

TFloatMatrix::TFloatMatrix(int Size) : TFloatMatrix(Size, Size) {
  for (int I = 0; I < Size; ++I) RowAt(I)[I] = 1.0;
}

TFloatMatrix::TFloatMatrix(const TFloatVector& A, const TFloatVector& B)
    : TFloatMatrix(A.GetSize(), B.GetSize()) {
  for (int I = 0; I < GetRowCnt(); ++I) {
    double* const To = RowAt(I);
    for (int J = 0; J < GetColCnt(); ++J) To[J] = A.Data()[I] * B.Data()[J];
  }
}

void TFloatMatrix::Resize(int Rows, int Columns) {
  if (Rows < 0 || Columns < 0) RaiseError<EParamError>("TFloatMatrix", "the size is negative");
  std::shared_ptr<TBlock> Block;
  if (Rows > 0) Block = std::make_shared<TBlock>(Rows, Columns);
  const int KeptColumns = std::min(Columns, GetColCnt());
  for (int I = 0; I < std::min(Rows, GetRowCnt()); ++I) {
    std::copy_n(RowAt(I), KeptColumns, Block->Items.data() + I * Block->Stride);
  }
  FBlock = std::move(Block);
}

double* TFloatMatrix::RowAt(int Index) const {
  if (Index < 0 || Index >= GetRowCnt()) {
    if (Index == 0) return nullptr;
    RaiseError<EParamError>("TFloatMatrix", "index out of range");
  }
  return FBlock->Items.data() + Index * FBlock->Stride;
}

double* TFloatMatrix::Checked(int Row, int Column) const {
  if (Row < 0 || Row >= GetRowCnt() || Column < 0 || Column >= GetColCnt()) {
    RaiseError<EParamError>("TFloatMatrix", "index out of range");
  }
  return FBlock->Items.data() + Row * FBlock->Stride + Column;
}

TFloatMatrix TFloatMatrix::Clone() const {
  TFloatMatrix Result;
  if (FBlock) Result.FBlock = std::make_shared<TBlock>(*FBlock);
  return Result;
}

}  // namespace tarnalgo
