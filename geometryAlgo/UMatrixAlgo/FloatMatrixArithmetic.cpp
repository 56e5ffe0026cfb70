#include <algorithm>

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
  const auto Width = static_cast<std::size_t>(Other.GetColCnt());
  for (int I = 0; I < GetRowCnt(); ++I) {
    for (int K = 0; K < GetColCnt(); ++K) {
      RowAddMultiple(Result.Row(I), Row(I)[K], Other.Row(K), Width);
    }
  }
  return Result;
}

TFloatVector TFloatMatrix::Multiply(const TFloatVector& V) const {
  AssertThat(GetColCnt() == V.GetSize(), kMatrixUnit);
  TFloatVector Result(GetRowCnt());
  for (int I = 0; I < GetRowCnt(); ++I) {
    Result.Data()[I] = RowDot(Row(I), V.Data(), static_cast<std::size_t>(GetColCnt()));
  }
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
  TFloatMatrix Result(GetRowCnt(), GetRowCnt());
  for (int I = 0; I < GetRowCnt(); ++I) {
    for (int J = 0; J <= I; ++J) {
      const double Dot = RowDot(Row(I), Row(J), static_cast<std::size_t>(GetColCnt()));
      Result.Row(I)[J] = Dot;
      Result.Row(J)[I] = Dot;
    }
  }
  return Result;
}

TFloatMatrix TFloatMatrix::Transpose() const {
  constexpr int kTile = 16;  // a tile of either matrix stays in the first cache
  TFloatMatrix Result(GetColCnt(), GetRowCnt());
  for (int Top = 0; Top < GetRowCnt(); Top += kTile) {
    const int Bottom = std::min(Top + kTile, GetRowCnt());
    for (int Left = 0; Left < GetColCnt(); Left += kTile) {
      const int Right = std::min(Left + kTile, GetColCnt());
      for (int J = Left; J < Right; ++J) {
        double* const To = Result.Row(J);
        const double* From = Row(Top) + J;
        for (int I = Top; I < Bottom; ++I, From += RowStride()) To[I] = *From;
      }
    }
  }
  return Result;
}

}  // namespace tarnalgo
