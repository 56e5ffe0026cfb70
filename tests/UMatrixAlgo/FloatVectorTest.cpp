#include "geometryAlgo/UMatrixAlgo/FloatVector.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

TEST(TFloatVector, CopiesSeeElementWritesButKeepTheirSize) {
  TFloatVector A{1, 2, 3};
  TFloatVector B = A;
  B.SetItem(0, 5);
  EXPECT_EQ(5.0, A[0]);
  B.SetSize(5);
  B.SetItem(1, 7);
  EXPECT_EQ((TFloatVector{5, 2, 3}), A);
  EXPECT_EQ((TFloatVector{5, 7, 3, 0, 0}), B);
  TFloatVector C = A;
  C.Expand(C);
  C.FreeData();
  EXPECT_EQ(3, A.GetSize());
  EXPECT_EQ(0, C.GetSize());
  TFloatVector D = +A;  // results share with nothing
  D.SetItem(0, 9);
  EXPECT_EQ(5.0, A[0]);
}

TEST(TFloatVector, TakesAndDropsRuns) {
  TFloatVector V{1, 2};
  V.Expand(V);
  V.Expand(std::vector<double>{3});
  V.Expand(4);
  EXPECT_EQ((TFloatVector{1, 2, 1, 2, 3, 4}), V);
  EXPECT_EQ((TFloatVector{2, 3}), V.SubVector(3, 2));
  EXPECT_EQ(0, V.SubVector(6, 0).GetSize());
  EXPECT_EQ((TFloatVector{1, 2, 1, 2, 3}), V.ExceptItem(5));
  EXPECT_THROW(V.SubVector(5, 2), EParamError);
  EXPECT_THROW(V.ExceptItem(6), EParamError);
  EXPECT_THROW(V.SetSize(-1), EParamError);
  EXPECT_THROW(V * TFloatVector(3), EAssertionFailed);
}

TEST(TFloatVector, OperatorsWorkElementByElement) {
  const TFloatVector A{1, -2};
  EXPECT_EQ((TFloatVector{4, 2}), A + TFloatVector({3, 4}));
  EXPECT_EQ((TFloatVector{-2, -6}), A - TFloatVector({3, 4}));
  EXPECT_EQ((TFloatVector{-1, 2}), -A);
  EXPECT_EQ(A * 3.0, 3.0 * A);
  EXPECT_EQ(-5.0, A * TFloatVector({3, 4}));
  EXPECT_EQ(5.0, A.MagSqr());
  EXPECT_THROW(A.SubVector(-1, 1), EParamError);
  EXPECT_THROW(A.SubVector(0, -1), EParamError);
  EXPECT_THROW(A.ExceptItem(-1), EParamError);
}

TEST(TFloatVector, LengthNeitherOverflowsNorVanishes) {
  for (const double Scale : {1.0, 1e300, 1e-300, 5e-324}) {
    SCOPED_TRACE(Scale);
    EXPECT_DOUBLE_EQ(5 * Scale, TFloatVector({3 * Scale, -4 * Scale}).Mag());
  }
  TFloatVector V{0, -3e200, 4e200};
  V.Normalize();
  EXPECT_TRUE(V.Equls({0, -0.6, 0.8}, 1e-15));
  TFloatVector Zero(3);
  Zero.Normalize();
  EXPECT_EQ(TFloatVector(3), Zero);
  EXPECT_EQ(0.0, TFloatVector().Mag());
  EXPECT_TRUE(std::isnan(TFloatVector({1, std::nan("")}).Mag()));
}

TEST(TFloatVector, TolerantEqualityTakesInItsEdge) {
  const TFloatVector V{1, 2};
  EXPECT_TRUE(V.Equls({1.5, 2}, 0.5));
  EXPECT_FALSE(V.Equls({std::nextafter(1.5, 2), 2}, 0.5));
  EXPECT_FALSE(V.Equls({1}, 10));
}

}  // namespace
}  // namespace tarnalgo
