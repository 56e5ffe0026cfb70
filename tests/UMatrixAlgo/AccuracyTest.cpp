#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <fstream>
#include <numeric>
#include <sstream>

#include "geometryAlgo/UMatrixAlgo.h"
#include "tests/support/DataFolder.h"
#include "tests/support/Matrices.h"
#include "tests/support/MatrixMarket.h"

namespace tarnalgo {
namespace {

/// The largest |A·B − C| as a share of what rounding may make of |A|·|B|, in long doubles.
double Backward(const TFloatMatrix& A, const TFloatMatrix& B, const TFloatMatrix& C) {
  long double Worst = 0.0L;
  double Scale = 0.0;
  const TFloatMatrix Columns = B.Transpose();
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    const double* const Row = A.Row(I);
    for (int J = 0; J < B.GetColCnt(); ++J) {
      const double* const Column = Columns.Row(J);
      long double Rest = -C(I, J);
      double Size = 0.0;
      for (int K = 0; K < A.GetColCnt(); ++K) {
        Rest += static_cast<long double>(Row[K]) * Column[K];
        Size += std::abs(Row[K] * Column[K]);
      }
      Worst = std::max(Worst, std::abs(Rest));
      Scale = std::max(Scale, Size);
    }
  }
  return Worst == 0.0L ? 0.0 : static_cast<double>(Worst / Scale) / DBL_EPSILON;
}

/// The rows of `A` in this order.
TFloatMatrix RowsInOrder(const TFloatMatrix& A, const std::vector<int>& Order) {
  TFloatMatrix Result(A.GetRowCnt(), A.GetColCnt());
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    Result.SetRow(I, A.GetRow(Order[static_cast<std::size_t>(I)]));
  }
  return Result;
}

/// Every factorisation gives the matrix back to within some roundings.
void ExpectStable(const TFloatMatrix& A) {
  const double Limit = 4.0 * std::max(A.GetRowCnt(), A.GetColCnt());
  TFloatMatrix L, U, Q, R, Inverse;
  TMatrixDCMPTool::QRDCMP(A, Q, R);
  EXPECT_LT(Backward(Q, R, A), Limit);
  EXPECT_LT(Backward(Q, Q.Transpose(), TFloatMatrix(A.GetRowCnt())), Limit);
  EXPECT_EQ(R, R.UpperTriangleMat());
  if (A.GetRowCnt() != A.GetColCnt()) return;
  std::vector<int> Order;
  TMatrixDCMPTool::LUCMPExt(A, L, U, Order);
  EXPECT_LT(Backward(L, U, RowsInOrder(A, Order)), Limit);
  ASSERT_TRUE(TMatrixDCMPTool::GetInverseMatrixByLu(A, Inverse));
  EXPECT_LT(Backward(A, Inverse, TFloatMatrix(A.GetRowCnt())), Limit);
  // The other triangle and the ones of the lower one must not be read.
  TFloatMatrix LowerOnly = L.Clone();
  TFloatMatrix UpperOnly = U.Clone();
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    for (int J = 0; J < A.GetRowCnt(); ++J) {
      (J < I ? UpperOnly : LowerOnly).SetItem(I, J, J == I ? U(I, I) : std::nan(""));
    }
  }
  Inverse = TMatrixDCMPTool::GetInverseofLowerTriIdeMatrix(LowerOnly);
  EXPECT_LT(Backward(L, Inverse, TFloatMatrix(A.GetRowCnt())), Limit);
  ASSERT_TRUE(TMatrixDCMPTool::GetInverseofUpperTriMatrix(UpperOnly, Inverse));
  EXPECT_LT(Backward(U, Inverse, TFloatMatrix(A.GetRowCnt())), Limit);
}

/// Hilbert's matrix times the least common multiple of its denominators: integers.
TFloatMatrix ScaledHilbert(int Size, double& Scale) {
  std::int64_t Multiple = 1;
  for (std::int64_t I = 2; I < 2 * Size; ++I) Multiple = std::lcm(Multiple, I);
  Scale = static_cast<double>(Multiple);
  TFloatMatrix A(Size, Size);
  for (int I = 0; I < Size; ++I) {
    for (int J = 0; J < Size; ++J) A.SetItem(I, J, Scale / (I + J + 1));
  }
  return A;
}

double Binomial(int N, int K) {
  double Result = 1.0;
  for (int I = 1; I <= K; ++I) Result = Result * (N - K + I) / I;  // exact: whole at every step
  return Result;
}

TEST(Accuracy, OfHilbertMatricesIsThatOfTheirCondition) {
  for (int Size = 1; Size <= 12; ++Size) {
    SCOPED_TRACE(Size);
    double Scale = 0.0;
    const TFloatMatrix A = ScaledHilbert(Size, Scale);
    ExpectStable(A);
    TFloatMatrix Inverse = A.Clone();
    ASSERT_TRUE(Inverse.TryReverse());
    double Error = 0.0;
    double Largest = 0.0;
    for (int I = 0; I < Size; ++I) {
      for (int J = 0; J < Size; ++J) {
        const double Exact = ((I + J) % 2 == 0 ? 1.0 : -1.0) * (I + J + 1) *
                             Binomial(Size + I, Size - J - 1) * Binomial(Size + J, Size - I - 1) *
                             std::pow(Binomial(I + J, I), 2.0) / Scale;
        Error = std::max(Error, std::abs(Inverse(I, J) - Exact));
        Largest = std::max(Largest, std::abs(Exact));
      }
    }
    const double Condition = Scale * Largest * Size * Size;
    EXPECT_LE(Error, DBL_EPSILON * Condition * Largest);
  }
}

TEST(Accuracy, IsBackwardStable) {
  std::mt19937 Random(5);
  for (const int Size : {1, 2, 7, 16, 33, 70, 140}) {
    SCOPED_TRACE(Size);
    const TFloatMatrix Even = test::RandomMatrix(Random, Size, Size);
    ExpectStable(Even);
    TFloatMatrix Graded = Even.Clone();
    TFloatMatrix Near = Even.Clone();  // of rank 1 but for 1e-10
    for (int I = 0; I < Size; ++I) {
      for (int J = 0; J < Size; ++J) {
        Graded.SetItem(I, J, Even(I, J) * std::pow(10.0, -12.0 * (I + J) / Size));
        Near.SetItem(I, J, (I + 1.0) / (J + 2.0) + 1e-10 * Even(I, J));
      }
    }
    ExpectStable(Graded);
    ExpectStable(Near);
    ExpectStable(test::RandomMatrix(Random, Size, Size / 2 + 1));
    ExpectStable(test::RandomMatrix(Random, Size / 2 + 1, Size));
  }
}

/// The determinant of integers, by elimination without fractions.
std::int64_t ExactDeterminant(std::vector<std::vector<std::int64_t>> A) {
  std::int64_t Sign = 1;
  std::int64_t Last = 1;
  for (std::size_t K = 0; K < A.size(); ++K) {
    std::size_t P = K;
    while (P < A.size() && A[P][K] == 0) ++P;
    if (P == A.size()) return 0;
    if (P != K) Sign = -Sign;
    std::swap(A[P], A[K]);
    for (std::size_t I = K + 1; I < A.size(); ++I) {
      for (std::size_t J = K + 1; J < A.size(); ++J) {
        A[I][J] = (A[I][J] * A[K][K] - A[I][K] * A[K][J]) / Last;
      }
    }
    Last = A[K][K];
  }
  return Sign * Last;
}

TEST(Accuracy, OfDeterminantsOfIntegers) {
  std::mt19937 Random(9);
  for (int Round = 0; Round < 300; ++Round) {
    const int Size = 1 + Round % 7;
    TFloatMatrix A(Size, Size);
    std::vector<std::vector<std::int64_t>> Exact(static_cast<std::size_t>(Size));
    for (int I = 0; I < Size; ++I) {
      for (int J = 0; J < Size; ++J) {
        const int Item = test::RandomInt(Random, -3, 3);
        A.SetItem(I, J, Item);
        Exact[static_cast<std::size_t>(I)].push_back(Item);
      }
    }
    const auto Expected = static_cast<double>(std::abs(ExactDeterminant(Exact)));
    ASSERT_NEAR(Expected, std::abs(A.Determinant()), 1e-11 * std::pow(9.0, Size)) << Round;
  }
}

TEST(Accuracy, OfMatricesFromTheField) {
  std::ifstream Facts(test::DataFolder("matrices") / "facts.csv");
  if (!Facts) GTEST_SKIP() << "no matrices in " << test::DataFolder("matrices");
  std::string Line;
  std::getline(Facts, Line);
  while (std::getline(Facts, Line)) {
    SCOPED_TRACE(Line);
    std::vector<std::string> Fields;
    for (std::istringstream Items(Line + ','); std::getline(Items, Line, ',');) {
      Fields.push_back(Line);
    }
    const TFloatMatrix A = test::ReadMatrixMarket(test::DataFolder("matrices") / Fields[0]);
    ASSERT_EQ(std::stoi(Fields[1]), A.GetRowCnt());
    ASSERT_EQ(std::stoi(Fields[2]), A.GetColCnt());
    if (A.GetRowCnt() < 100) {
      ExpectStable(A);
      TFloatMatrix U, V;
      TFloatVector W;
      TMatrixDCMPTool::SVDCMP(A, U, V, W);
      const double Largest = std::stod(Fields[7]);
      EXPECT_TRUE(W[0] == 0.0 || std::abs(W[0] - Largest) < 1e-10 * Largest);  // 0: left out
      EXPECT_LE(W.NormInf(), Largest * (1.0 + 1e-10));
    }
    if (Fields[10].empty()) continue;
    TFloatMatrix LU = A.Clone();
    std::vector<int> Pivots;
    TMatrixDCMPTool::PLU(LU, Pivots);
    double Digits = 0.0;
    for (int I = 0; I < LU.GetRowCnt(); ++I) Digits += std::log10(std::abs(LU(I, I)));
    EXPECT_NEAR(std::stod(Fields[10]), Digits, 1e-8 * std::abs(Digits));
  }
}

}  // namespace
}  // namespace tarnalgo
