#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"

#include <gtest/gtest.h>

#include <random>
#include <type_traits>
#include <utility>

#include "host/Exceptions.h"
#include "tests/support/Matrices.h"

namespace tarnalgo {
namespace {

using test::MatrixOf;

TEST(TFloatMatrix, CopiesSeeElementWritesAndExchangesButKeepTheirSize) {
  TFloatMatrix A = MatrixOf({{1, 2}, {3, 4}});
  TFloatMatrix B = A;
  B.SetItem(0, 1, 9);
  B.SwapRows(0, 1);
  EXPECT_EQ(MatrixOf({{3, 4}, {1, 9}}), A);
  B.SwapColumns(0, 1);
  EXPECT_EQ(MatrixOf({{4, 3}, {9, 1}}), A);
  B.ExpandARow({7, 7});
  B.SetItem(0, 0, 0);
  EXPECT_EQ(MatrixOf({{4, 3}, {9, 1}}), A);
  B = A;
  B.ExpandRows(TFloatMatrix());  // nothing, yet a buffer of its own
  B.SetItem(0, 0, 0);
  EXPECT_EQ(MatrixOf({{4, 3}, {9, 1}}), A);
  TFloatMatrix C = A;
  ASSERT_TRUE(C.TryReverse());
  EXPECT_EQ(MatrixOf({{4, 3}, {9, 1}}), A);
  TFloatVector Row = A.GetRow(0);
  Row.SetItem(0, 0);
  EXPECT_EQ(4.0, A(0, 0));
}

TEST(TFloatMatrix, IsCreatedFromSizesAndVectors) {
  const TFloatVector V{1, 2};
  EXPECT_EQ(MatrixOf({{3, 4, 5}, {6, 8, 10}}), TFloatMatrix(V, {3, 4, 5}));
  EXPECT_EQ(MatrixOf({{1}, {2}}), TFloatMatrix(V, true));
  EXPECT_EQ(MatrixOf({{1, 2}}), TFloatMatrix(V, false));
  EXPECT_EQ(MatrixOf({{1, 0}, {0, 1}}), TFloatMatrix(2));
  EXPECT_EQ(0, TFloatMatrix(0, 5).GetColCnt());
  static_assert(!std::is_constructible_v<TFloatMatrix, TFloatVector, int>);
}

TEST(TFloatMatrix, GrowsAndShrinksByRowsAndColumns) {
  TFloatMatrix A;
  A.ExpandAColumn({1, 0, 2});
  A.ExpandColumns(TFloatMatrix(3, 1));
  A.ExpandColumns(A);
  EXPECT_EQ(MatrixOf({{1, 0, 1, 0}, {0, 0, 0, 0}, {2, 0, 2, 0}}), A);
  A.RemoveZeroColumns();
  A.RemoveZeroRows();
  EXPECT_EQ(MatrixOf({{1, 1}, {2, 2}}), A);
  A.ExpandRows(A);
  A.ExceptRows({3, 0, 3});
  EXPECT_EQ(MatrixOf({{2, 2}, {1, 1}}), A);
  A.ExpandAColumn({5, 6});
  A.ExceptColumns({1});
  EXPECT_EQ(MatrixOf({{2, 5}, {1, 6}}), A);
  A.ExceptLastRows();
  EXPECT_EQ(MatrixOf({{2, 5}}), A);
  EXPECT_THROW(A.ExceptLastColumns(3), EParamError);
  EXPECT_THROW(A.ExceptRows({1}), EParamError);
  EXPECT_THROW(A.ExpandARow({1}), EAssertionFailed);
  A.ExceptLastRows(1);
  EXPECT_EQ(0, A.GetColCnt());
}

TEST(TFloatMatrix, OperatorsWorkElementByElement) {
  const TFloatMatrix A = MatrixOf({{1, -2}, {3, 4}});
  const TFloatMatrix B = MatrixOf({{5, 6}, {7, 0}});
  EXPECT_EQ(MatrixOf({{6, 4}, {10, 4}}), A + B);
  EXPECT_EQ(MatrixOf({{-4, -8}, {-4, 4}}), A - B);
  EXPECT_EQ(MatrixOf({{-1, 2}, {-3, -4}}), -A);
  EXPECT_EQ(MatrixOf({{0.5, -1}, {1.5, 2}}), A / 2.0);
  EXPECT_EQ(A * 3.0, 3.0 * A);
  EXPECT_EQ(MatrixOf({{3, -6}, {9, 12}}), 3.0 * A);
  EXPECT_EQ(5.0, A.GetRowMag(1));
  EXPECT_TRUE(A.Equls(A + MatrixOf({{0.5, 0}, {0, -0.5}}), 0.5));
  EXPECT_FALSE(A.Equls(A + MatrixOf({{0, 0}, {0.6, 0}}), 0.5));
  EXPECT_NE(A, MatrixOf({{1, -2, 0}, {3, 4, 0}}));
  for (const TFloatMatrix& Other : {TFloatMatrix(2, 3), TFloatMatrix(3, 2)}) {
    EXPECT_THROW(A - Other, EAssertionFailed);
    EXPECT_FALSE(A.Equls(Other, 1e9));
  }
}

TEST(TFloatMatrix, RefusesPlacesThatAreNotThere) {
  TFloatMatrix A(2, 3);
  for (const auto& [Row, Column] : {std::pair(-1, 0), {2, 0}, {0, -1}, {0, 3}}) {
    EXPECT_THROW(A.GetItem(Row, Column), EParamError);
    EXPECT_THROW(A.SubMatrix(Row, Column, 1, 1), EParamError);
  }
  EXPECT_THROW(A.SubMatrix(0, 0, -1, 1), EParamError);
  EXPECT_THROW(A.SubMatrix(0, 0, 1, -1), EParamError);
  EXPECT_THROW(A.ExceptLastRows(-1), EParamError);
  EXPECT_THROW(A.ExceptLastColumns(-1), EParamError);
  EXPECT_THROW(A.SetColumn(-1, {1, 2}), EParamError);
  EXPECT_THROW(A.SetColumn(0, {1, 2, 3}), EAssertionFailed);
  EXPECT_THROW(TFloatMatrix(-1, 2), EParamError);
  A.SetColumn(2, {1, 2});
  EXPECT_EQ(MatrixOf({{0, 0, 1}, {0, 0, 2}}), A);
}

TEST(TFloatMatrix, PartsOfAMatrix) {
  const TFloatMatrix A = MatrixOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  EXPECT_EQ(MatrixOf({{5, 6}, {8, 9}}), A.SubMatrix(1, 1, 2, 2));
  EXPECT_THROW(A.SubMatrix(1, 1, 3, 2), EParamError);
  EXPECT_EQ(MatrixOf({{1, 2, 3}, {0, 5, 6}, {0, 0, 9}}), A.UpperTriangleMat());
  EXPECT_EQ(MatrixOf({{1, 0, 0}, {4, 5, 0}, {7, 8, 9}}), A.LowerTriangleMat());
  EXPECT_EQ((TFloatVector{2, 5, 8}), A.GetColumn(1));
  EXPECT_EQ(MatrixOf({{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}), A.Transpose());
}

// Against the definition, over widths on both sides of every block size.
TEST(TFloatMatrix, ProductsAgreeWithTheDefinitionToTheLastBit) {
  std::mt19937 Random(7);
  for (const int Size : {1, 3, 8, 17, 40, 131, 270}) {
    SCOPED_TRACE(Size);
    const TFloatMatrix A = test::RandomMatrix(Random, Size, Size / 2 + 2);
    const TFloatMatrix B = test::RandomMatrix(Random, Size / 2 + 2, Size + 3);
    TFloatMatrix Expected(Size, Size + 3);
    for (int I = 0; I < Size; ++I) {
      for (int J = 0; J < Size + 3; ++J) {
        double Sum = 0.0;
        for (int K = 0; K < A.GetColCnt(); ++K) Sum += A(I, K) * B(K, J);
        Expected.SetItem(I, J, Sum);
      }
    }
    ASSERT_EQ(Expected, A * B);
    ASSERT_TRUE((A * A.Transpose()).Equls(A.AAT(), 1e-12));
    ASSERT_EQ(A.AAT(), A.AAT().Transpose());
    ASSERT_TRUE((A * B.GetColumn(0)).Equls(Expected.GetColumn(0), 1e-12));
  }
}

}  // namespace
}  // namespace tarnalgo
