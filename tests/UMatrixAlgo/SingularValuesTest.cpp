#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "geometryAlgo/UMatrixAlgo.h"
#include "tests/support/Matrices.h"

namespace tarnalgo {
namespace {

using test::MatrixOf;

TFloatMatrix RandomOrthogonal(std::mt19937& Random, int Size) {
  return TMatrixDCMPTool::GetOrthoByGramSchmidt(test::RandomMatrix(Random, Size, Size));
}

/// The matrix with these singular values in any directions.
TFloatMatrix WithSingularValues(std::mt19937& Random, int Rows, int Columns, double Ratio,
                                int Rank) {
  TFloatMatrix Diagonal(Rows, Columns);
  for (int K = 0; K < Rank; ++K) Diagonal.SetItem(K, K, std::pow(Ratio, K));
  return RandomOrthogonal(Random, Rows) * Diagonal * RandomOrthogonal(Random, Columns);
}

TEST(SVDCMP, FindsWellSeparatedValuesAndVectors) {
  std::mt19937 Random(1);
  const struct {
    int Rows;
    int Columns;
    double Ratio;
    int Rank;
  } Cases[] = {{1, 1, 0.5, 1}, {3, 3, 0.5, 3},    {8, 5, 0.3, 5}, {5, 8, 0.3, 4},
               {6, 6, 0.7, 2}, {20, 30, 0.5, 20}, {2, 2, 0.1, 0}, {30, 20, 0.8, 9}};
  for (const auto& Case : Cases) {
    SCOPED_TRACE(testing::Message() << Case.Rows << " x " << Case.Columns << ", " << Case.Rank);
    const TFloatMatrix A =
        WithSingularValues(Random, Case.Rows, Case.Columns, Case.Ratio, Case.Rank);
    TFloatMatrix U, V;
    TFloatVector W;
    TMatrixDCMPTool::SVDCMP(A, U, V, W);
    ASSERT_EQ(std::max(Case.Rows, Case.Columns), W.GetSize());
    TFloatMatrix Diagonal(Case.Rows, Case.Columns);
    for (int K = 0; K < W.GetSize(); ++K) {
      ASSERT_NEAR(K < Case.Rank ? std::pow(Case.Ratio, K) : 0.0, W[K], 1e-6);
      const double Unit = K < Case.Rank ? 1.0 : 0.0;
      if (K >= std::min(Case.Rows, Case.Columns)) continue;
      ASSERT_NEAR(Unit, U.GetColumnMag(K), 1e-14);
      ASSERT_NEAR(Unit, V.GetColumnMag(K), 1e-14);
      Diagonal.SetItem(K, K, W[K]);
    }
    ASSERT_TRUE((U * Diagonal * V.Transpose()).Equls(A, 1e-5));
  }
}

TEST(SVDCMP, FindsSmallValuesOfGradedMatricesToTheirOwnDigits) {
  TFloatMatrix U, V;
  TFloatVector W;
  const TFloatMatrix A = MatrixOf({{0, 1, 0}, {1e-9, 0, 0}, {0, 0, -1e7}});
  TMatrixDCMPTool::SVDCMP(A, U, V, W);
  EXPECT_DOUBLE_EQ(1e7, W[0]);
  EXPECT_DOUBLE_EQ(1.0, W[1]);
  EXPECT_DOUBLE_EQ(1e-9, W[2]);
}

// What is left of a vector along the former ones is rounding, and must not count as a direction.
TEST(SVDCMP, LeavesOutWhatIsBeyondTheRank) {
  const struct {
    TFloatMatrix A;
    TFloatVector W;
  } Cases[] = {
      {MatrixOf({{1, 1}, {1, 1}}), {2, 0}},
      {MatrixOf({{1, 2}, {2, 4}}), {5, 0}},
      {MatrixOf({{1, 0}, {0, 0}}), {1, 0}},
      {MatrixOf({{0, 0}, {0, 0}}), {0, 0}},
      {MatrixOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}),
       {std::sqrt((285 + std::sqrt(79929.0)) / 2), std::sqrt((285 - std::sqrt(79929.0)) / 2), 0}},
      {MatrixOf({{std::numeric_limits<double>::quiet_NaN(), 1}}), {0, 0}},
      {TFloatMatrix(), {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.W.NormInf());
    TFloatMatrix U, V;
    TFloatVector W;
    TMatrixDCMPTool::SVDCMP(Case.A, U, V, W);
    EXPECT_TRUE(Case.W.Equls(W, 1e-12));
    for (int K = 0; K < std::min(U.GetColCnt(), V.GetColCnt()); ++K) {
      EXPECT_EQ(W[K] > 0.0, U.GetColumnMag(K) > 0.0);
      EXPECT_EQ(W[K] > 0.0, V.GetColumnMag(K) > 0.0);
    }
  }
}

TEST(SVDCMP, LeavesOutValuesBelowItsLeast) {
  for (const double Value : {0.75e-12, 1.9e-12}) {
    TFloatMatrix U, V;
    TFloatVector W;
    TMatrixDCMPTool::SVDCMP(MatrixOf({{Value, 0}, {0, 0}}), U, V, W);
    EXPECT_DOUBLE_EQ(Value > 1e-12 ? Value : 0.0, W[0]);
    EXPECT_NEAR(Value > 1e-12 ? 1.0 : 0.0, std::abs(U(0, 0)), 1e-12);
  }
}

TEST(SVDCMP, LeavesOutDirectionsThatDoNotConverge) {
  TFloatMatrix U, V;
  TFloatVector W;
  TMatrixDCMPTool::SVDCMP(MatrixOf({{1, 0, 0}, {0, 0.99, 0}, {0, 0, 0.1}}), U, V, W);
  EXPECT_EQ(0.0, W[0]);
  EXPECT_EQ(0.0, U.GetColumnMag(0));
}

}  // namespace
}  // namespace tarnalgo
