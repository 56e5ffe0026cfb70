#include <gtest/gtest.h>

#include <cmath>

#include "geometryAlgo/UMatrixAlgo.h"
#include "tests/support/Matrices.h"

namespace tarnalgo {
namespace {

using test::MatrixOf;

TEST(GramSchmidt, MakesColumnsOrthonormalOnTheirOwnSide) {
  std::mt19937 Random(2);
  for (const int Size : {1, 5, 40}) {
    for (const double Shared : {0.0, 1e5}) {  // a common part: nearly parallel columns
      SCOPED_TRACE(testing::Message() << Size << ", " << Shared);
      const TFloatMatrix A =
          test::RandomMatrix(Random, Size + 2, Size) + TFloatMatrix(Size + 2, Size, Shared);
      const TFloatMatrix Q = TMatrixDCMPTool::GetOrthoByGramSchmidt(A);
      EXPECT_TRUE((Q.Transpose() * Q).Equls(TFloatMatrix(Size), 1e-14));
      const TFloatMatrix R = Q.Transpose() * A;
      for (int K = 0; K < Size; ++K) {
        EXPECT_GT(R(K, K), 0.0);
        for (int I = K + 1; I < Size; ++I) EXPECT_NEAR(0.0, R(I, K), 1e-14 * (Shared + 1) * Size);
      }
    }
  }
}

TEST(GramSchmidt, MakesDependentColumnsZero) {
  const TFloatMatrix A =
      MatrixOf({{0.1, 0.3, 0, 1, 1, 5}, {0.2, 0.6, 0, 1, 2, -7}, {0.7, 2.1, 0, 1, 9, 0.3}});
  const TFloatMatrix Q = TMatrixDCMPTool::GetOrthoByGramSchmidt(A);
  for (int K = 0; K < 6; ++K) {
    const bool Stays = K == 0 || K == 3 || K == 4;
    EXPECT_NEAR(Stays ? 1.0 : 0.0, Q.GetColumnMag(K), Stays ? 1e-15 : 0.0) << K;
  }
}

// The second column stands out of the first by that share of its length.
TEST(GramSchmidt, KeepsAColumnThatHardlyStandsOut) {
  for (const double Share : {0.95e-12, 1.05e-12}) {
    const TFloatMatrix Q = TMatrixDCMPTool::GetOrthoByGramSchmidt(MatrixOf({{1, 1}, {0, Share}}));
    EXPECT_EQ(Share > 1e-12 ? 1.0 : 0.0, Q.GetColumnMag(1));
  }
}

TEST(QR, TakesZerosAndHugeItems) {
  TFloatMatrix Q, R;
  TMatrixDCMPTool::QRDCMP(MatrixOf({{0, 0}, {0, 3e200}, {0, 4e200}}), Q, R);
  EXPECT_TRUE((Q * Q.Transpose()).Equls(TFloatMatrix(3), 1e-15));
  EXPECT_NEAR(5.0, std::abs(R(1, 1)) / 1e200, 1e-14);
  TMatrixDCMPTool::QRDCMP(TFloatMatrix(), Q, R);
  EXPECT_EQ(0, Q.GetRowCnt());
}

TEST(OrthogonalFactors, AreOrthogonalForDenormalColumns) {
  for (const double Scale : {1e-320, 5e-324}) {
    SCOPED_TRACE(Scale);
    const TFloatMatrix A = MatrixOf({{3, 1, 0}, {3, 2, 1}, {0, 1, 1}}) * Scale;
    TFloatMatrix Q, R;
    TMatrixDCMPTool::QRDCMP(A, Q, R);
    EXPECT_TRUE((Q.Transpose() * Q).Equls(TFloatMatrix(3), 1e-14));
    EXPECT_TRUE((Q * R).Equls(A, 5e-323));
    const TFloatMatrix G = TMatrixDCMPTool::GetOrthoByGramSchmidt(A.SubMatrix(0, 0, 3, 2));
    EXPECT_TRUE((G.Transpose() * G).Equls(TFloatMatrix(2), 1e-14));
  }
}

}  // namespace
}  // namespace tarnalgo
