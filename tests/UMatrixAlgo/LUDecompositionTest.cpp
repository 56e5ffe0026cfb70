#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "geometryAlgo/UMatrixAlgo.h"
#include "host/Exceptions.h"
#include "tests/support/Matrices.h"

namespace tarnalgo {
namespace {

using test::MatrixOf;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Column by column, each element's products subtracted one by one.
std::vector<int> PlainPLU(TFloatMatrix& A) {
  const int Size = A.GetRowCnt();
  std::vector<int> Pivots;
  for (int K = 0; K < Size; ++K) {
    int Pivot = K;
    double Best = -1.0;
    for (int I = 0; I < Size; ++I) {
      double Item = A(I, K);
      for (int J = 0; J < std::min(I, K); ++J) Item -= A(I, J) * A(J, K);
      A.SetItem(I, K, Item);
      if (I >= K && std::abs(Item) > Best) {
        Best = std::abs(Item);
        Pivot = I;
      }
    }
    Pivots.push_back(Pivot);
    A.SwapRows(K, Pivot);
    if (A(K, K) == 0.0) continue;
    for (int I = K + 1; I < Size; ++I) A.SetItem(I, K, A(I, K) / A(K, K));
  }
  return Pivots;
}

TEST(PLU, HasTheBitsOfThePlainLoops) {
  std::mt19937 Random(11);
  for (const int Size : {0, 1, 2, 5, 8, 9, 16, 31, 64, 65, 100, 203}) {
    for (const bool IsGrid : {false, true}) {  // a grid of few integers: ties and zero pivots
      SCOPED_TRACE(testing::Message() << Size << (IsGrid ? ", grid" : ""));
      TFloatMatrix A = test::RandomMatrix(Random, Size, Size);
      for (int I = 0; IsGrid && I < Size; ++I) {
        for (int J = 0; J < Size; ++J) A.SetItem(I, J, std::round(A(I, J)));
      }
      TFloatMatrix Expected = A.Clone();
      const std::vector<int> ExpectedPivots = PlainPLU(Expected);
      TFloatMatrix Shared = A;
      std::vector<int> Pivots;
      TMatrixDCMPTool::PLU(A, Pivots);
      ASSERT_EQ(ExpectedPivots, Pivots);
      ASSERT_EQ(Expected, Shared);
    }
  }
}

TEST(PLU, ChoosesPivotsAsStated) {
  const struct {
    const char* Name;
    TFloatMatrix A;
    std::vector<int> Pivots;
  } Cases[] = {
      {"ties keep the upper row", MatrixOf({{1, 2}, {-1, 4}}), {0, 1}},
      {"zero column", MatrixOf({{0, 2}, {0, 4}}), {0, 1}},
      {"NaN never replaces", MatrixOf({{1, 2}, {kNaN, 4}}), {0, 1}},
      {"NaN is replaced", MatrixOf({{kNaN, 2}, {0, 4}}), {1, 1}},
      {"nothing but NaN", MatrixOf({{kNaN, 2}, {kNaN, 4}}), {0, 1}},
      {"not square: nothing happens", MatrixOf({{1, 2}}), {77}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    std::vector<int> Pivots{77};
    TFloatMatrix A = Case.A;
    TMatrixDCMPTool::PLU(A, Pivots);
    EXPECT_EQ(Case.Pivots, Pivots);
  }
}

TEST(Determinant, IsAMagnitude) {
  EXPECT_EQ(1.0, MatrixOf({{0, 1}, {1, 0}}).Determinant());
  EXPECT_EQ(-3.0, MatrixOf({{-3}}).Determinant());
  EXPECT_EQ(0.0, TFloatMatrix().Determinant());
  EXPECT_EQ(0.0, MatrixOf({{1, 2}, {2, 4}}).Determinant());
  EXPECT_THROW(TFloatMatrix(1, 2).Determinant(), EAssertionFailed);
}

TEST(TryReverse, FailsOnlyOnExactZerosAndThenChangesNothing) {
  TFloatMatrix Singular = MatrixOf({{0, 1}, {0, 2}});
  EXPECT_FALSE(Singular.TryReverse());
  EXPECT_EQ(MatrixOf({{0, 1}, {0, 2}}), Singular);
  TFloatMatrix Wide(1, 2);
  EXPECT_FALSE(Wide.TryReverse());
  TFloatMatrix Empty;
  EXPECT_TRUE(Empty.TryReverse());
  TFloatMatrix Tiny = MatrixOf({{0, 0x1p-900}, {4, 0}});
  ASSERT_TRUE(Tiny.TryReverse());
  EXPECT_EQ(MatrixOf({{0, 0.25}, {0x1p900, 0}}), Tiny);
  TFloatMatrix Identity(70);
  ASSERT_TRUE(Identity.TryReverse());
  EXPECT_EQ(TFloatMatrix(70), Identity);
}

}  // namespace
}  // namespace tarnalgo
