// Factors of small matrices of wild scales: what each promises by its backward error, in extended
// precision.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "fuzz/Bytes.h"
#include "geometryAlgo/UMatrixAlgo.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

using TReal = long double;
constexpr TReal kRounding = 0x1p-52L;
constexpr TReal kLeast = 0x1p-1060L;  // what denormal steps may lose

/// Column of A·B, or of Aᵀ·B, in long doubles.
TReal Product(const TFloatMatrix& A, int Row, const TFloatMatrix& B, int Column, bool Turned) {
  TReal Sum = 0;
  for (int K = 0; K < B.GetRowCnt(); ++K) {
    Sum += static_cast<TReal>(Turned ? A(K, Row) : A(Row, K)) * B(K, Column);
  }
  return Sum;
}

TReal ColumnLength(const TFloatMatrix& A, int Column) {
  return std::sqrt(Product(A, Column, A, Column, true));
}

void CheckLU(const TFloatMatrix& A) {
  TFloatMatrix L;
  TFloatMatrix U;
  std::vector<int> Order;
  TMatrixDCMPTool::LUCMPExt(A, L, U, Order);
  const int N = A.GetRowCnt();
  for (int I = 0; I < N; ++I) {
    Require(std::count(Order.begin(), Order.end(), I) == 1, "LU permutes the rows");
    for (int J = 0; J < N; ++J) {
      TReal Sum = 0;
      TReal Sizes = 0;
      for (int K = 0; K < N; ++K) {
        Sum += static_cast<TReal>(L(I, K)) * U(K, J);
        Sizes += std::abs(static_cast<TReal>(L(I, K)) * U(K, J));
      }
      Require(std::abs(Sum - A(Order[static_cast<std::size_t>(I)], J)) <=
                  4 * N * kRounding * Sizes + kLeast,
              "L times U is A");
    }
  }
}

void CheckOrthonormal(const TFloatMatrix& Q, bool MayBeZero) {
  for (int I = 0; I < Q.GetColCnt(); ++I) {
    const TReal Square = Product(Q, I, Q, I, true);
    Require((MayBeZero && Square == 0) || std::abs(Square - 1) < 1e-12L, "a column is a unit");
    for (int J = 0; J < I; ++J) {
      Require(std::abs(Product(Q, I, Q, J, true)) < 1e-12L, "columns are at right angles");
    }
  }
}

void CheckQR(const TFloatMatrix& A) {
  TFloatMatrix Q;
  TFloatMatrix R;
  TMatrixDCMPTool::QRDCMP(A, Q, R);
  CheckOrthonormal(Q, false);
  for (int J = 0; J < A.GetColCnt(); ++J) {
    const TReal Slack = 1e-13L * ColumnLength(A, J) + kLeast;
    for (int I = 0; I < A.GetRowCnt(); ++I) {
      Require(I <= J || R(I, J) == 0.0, "R is a triangle");
      Require(std::abs(Product(Q, I, R, J, false) - A(I, J)) <= Slack, "Q times R is A");
    }
  }
  CheckOrthonormal(TMatrixDCMPTool::GetOrthoByGramSchmidt(A), true);
}

void CheckSingularValues(const TFloatMatrix& A) {
  TFloatMatrix U;
  TFloatMatrix V;
  TFloatVector W;
  TMatrixDCMPTool::SVDCMP(A, U, V, W);
  TReal Size = 0;
  for (int J = 0; J < A.GetColCnt(); ++J) Size = std::hypot(Size, ColumnLength(A, J));
  for (int K = 0; K < std::min(A.GetRowCnt(), A.GetColCnt()); ++K) {
    if (W[K] == 0.0) continue;
    Require(W[K] > 0.0 && W[K] <= Size * (1 + 1e-12L), "no singular value exceeds the matrix");
    Require(std::abs(ColumnLength(U, K) - 1) < 1e-9L && std::abs(ColumnLength(V, K) - 1) < 1e-9L,
            "singular vectors are units");
    for (int J = 0; J < K; ++J) {
      Require(std::abs(Product(V, K, V, J, true)) < 1e-7L, "singular vectors are at right angles");
    }
    for (int I = 0; I < A.GetRowCnt(); ++I) {
      const TReal Off = Product(A, I, V, K, false) - static_cast<TReal>(W[K]) * U(I, K);
      Require(std::abs(Off) <= 1e-3L * Size, "A turns V[k] into W[k] U[k]");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const bool IsScaled = Bytes.Below(2) == 1;
  const int Rows = Bytes.Below(6);
  TFloatMatrix A(Rows, Bytes.Below(6));
  const int Common = IsScaled ? 4 * (Bytes.Byte() - 128) : 0;
  for (int I = 0; I < Rows; ++I) {
    const int Own = IsScaled ? Bytes.Byte() - 128 : 0;
    for (int J = 0; J < A.GetColCnt(); ++J) {
      A.SetItem(I, J, std::ldexp(Bytes.Below(9) - 4, Common + Own));
    }
  }
  if (Rows == A.GetColCnt()) CheckLU(A);
  CheckQR(A);
  CheckSingularValues(A);
  return 0;
}
