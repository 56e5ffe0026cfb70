#include <algorithm>

#include "geometryAlgo/UMatrixAlgo/BlockProduct.h"
#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

void CheckSameSize(const TFloatMatrix& A, const TFloatMatrix& B, int Line = __builtin_LINE()) {
  AssertThat(A.GetRowCnt() == B.GetRowCnt() && A.GetColCnt() == B.GetColCnt(), kMatrixUnit, Line);
}

/// The matrix of `Element(a)` over the elements a of `A`.
template <class TElement>
TFloatMatrix Elementwise(const TFloatMatrix& A, TElement&& Element) {
  TFloatMatrix Result(A.GetRowCnt(), A.GetColCnt());
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    std::transform(A.Row(I), A.Row(I) + A.GetColCnt(), Result.Row(I), Element);
  }
  return Result;
}

/// The matrix of `Element(a, b)` over the pairs of elements.
template <class TElement>
TFloatMatrix Elementwise(const TFloatMatrix& A, const TFloatMatrix& B, TElement&& Element) {
  TFloatMatrix Result(A.GetRowCnt(), A.GetColCnt());
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    std::transform(A.Row(I), A.Row(I) + A.GetColCnt(), B.Row(I), Result.Row(I), Element);
  }
  return Result;
}

/// Equal sizes and `Same(a, b)` for each pair of elements.
template <class TSame>
bool AllSame(const TFloatMatrix& A, const TFloatMatrix& B, TSame&& Same) {
  if (A.GetRowCnt() != B.GetRowCnt() || A.GetColCnt() != B.GetColCnt()) return false;
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    if (!std::equal(A.Row(I), A.Row(I) + A.GetColCnt(), B.Row(I), Same)) return false;
  }
  return true;
}

/// Calls `Visit(Top, Bottom, Left, Right)` for tiles so small that what is read down the columns of
/// one stays in the first cache.
template <class TVisit>
void ForEachTile(int Rows, int Columns, TVisit&& Visit) {
  constexpr int kTile = 16;
  for (int Top = 0; Top < Rows; Top += kTile) {
    for (int Left = 0; Left < Columns; Left += kTile) {
      Visit(Top, std::min(Top + kTile, Rows), Left, std::min(Left + kTile, Columns));
    }
  }
}

}  // namespace

TFloatMatrix TFloatMatrix::Add(const TFloatMatrix& Other) const {
  CheckSameSize(*this, Other);
  return Elementwise(*this, Other, [](double A, double B) { return A + B; });
}

TFloatMatrix TFloatMatrix::Subtract(const TFloatMatrix& Other) const {
  CheckSameSize(*this, Other);
  return Elementwise(*this, Other, [](double A, double B) { return A - B; });
}

TFloatMatrix TFloatMatrix::Multiply(double Factor) const {
  return Elementwise(*this, [Factor](double A) { return A * Factor; });
}

TFloatMatrix TFloatMatrix::Divide(double Divisor) const {
  return Elementwise(*this, [Divisor](double A) { return A / Divisor; });
}

TFloatMatrix TFloatMatrix::Negative() const {
  return Elementwise(*this, [](double A) { return -A; });
}

TFloatMatrix TFloatMatrix::Multiply(const TFloatMatrix& Other) const {
  AssertThat(GetColCnt() == Other.GetRowCnt(), kMatrixUnit);
  TFloatMatrix Result(GetRowCnt(), Other.GetColCnt());
  TBlockProduct().Add(GetRowCnt(), Other.GetColCnt(), GetColCnt(), {Row(0), RowStride(), 1},
                      {Other.Row(0), Other.RowStride(), 1}, Result.Row(0), Result.RowStride());
  return Result;
}

TFloatVector TFloatMatrix::Multiply(const TFloatVector& V) const {
  AssertThat(GetColCnt() == V.GetSize(), kMatrixUnit);
  TFloatVector Result(GetRowCnt());
  RowDots(Row(0), RowStride(), static_cast<std::size_t>(GetRowCnt()), V.Data(),
          static_cast<std::size_t>(GetColCnt()), Result.Data());
  return Result;
}

bool operator==(const TFloatMatrix& A, const TFloatMatrix& B) {
  return AllSame(A, B, [](double X, double Y) { return X == Y; });
}

bool TFloatMatrix::Equls(const TFloatMatrix& Other, double Eps) const {
  return AllSame(*this, Other,
                 [Eps](double A, double B) { return TMathUtils::FloatEquals(A, B, Eps); });
}

TFloatMatrix TFloatMatrix::AAT() const {
  constexpr int kBand = 128;  // the lower triangle, a band of rows at a time
  const int Size = GetRowCnt();
  TFloatMatrix Result(Size, Size);
  TBlockProduct Product;
  for (int I = 0; I < Size; I += kBand) {
    const int Height = std::min(kBand, Size - I);
    Product.Add(Height, I + Height, GetColCnt(), {Row(I), RowStride(), 1}, {Row(0), 1, RowStride()},
                Result.Row(I), Result.RowStride());
  }
  ForEachTile(Size, Size, [&Result](int Top, int Bottom, int Left, int Right) {
    for (int J = Left; J < Right; ++J) {
      double* const To = Result.Row(J);
      for (int I = std::max(Top, J + 1); I < Bottom; ++I) To[I] = Result.Row(I)[J];
    }
  });
  return Result;
}

TFloatMatrix TFloatMatrix::Transpose() const {
  TFloatMatrix Result(GetColCnt(), GetRowCnt());
  ForEachTile(GetRowCnt(), GetColCnt(), [&](int Top, int Bottom, int Left, int Right) {
    for (int J = Left; J < Right; ++J) {
      double* const To = Result.Row(J);
      const double* From = Row(Top) + J;
      for (int I = Top; I < Bottom; ++I, From += RowStride()) To[I] = *From;
    }
  });
  return Result;
}

}  // namespace tarnalgo
