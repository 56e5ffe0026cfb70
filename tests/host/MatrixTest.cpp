#include "host/Cadtypes/Matrix.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

TEST(TMatrix2D, EachCallActsOnTheResultOfTheFormer) {
  TMatrix2D M;
  M.Translate(10, 0);
  M.Rotate(kQuarterTurn);
  EXPECT_TRUE(M.Transform({1, 0}).Equals({0, 11}, 1e-14));
  M.Scale(2, 3);
  EXPECT_TRUE(M.Transform({1, 0}).Equals({0, 33}, 1e-13));
  EXPECT_TRUE(M.TransformVector({1, 0}).Equals({0, 3}, 1e-14));  // no shift
  M.Reset();
  EXPECT_EQ(TMatrix2D(), M);
  EXPECT_EQ(TPoint2D(7, -2), M.Transform({7, -2}));
}

TEST(TMatrix2D, RotationAboutACentreAgreesWithTurningTheVector) {
  std::mt19937 Random(61);
  for (int Round = 0; Round < 500; ++Round) {
    const TPoint2D Centre = test::RandomPoint(Random, -100, 100);
    const TPoint2D P = test::RandomPoint(Random, -100, 100);
    const double A = test::RandomDouble(Random, -10, 10);
    TMatrix2D M;
    M.Rotate(A, Centre);
    EXPECT_TRUE(M.Transform(P).Equals(Centre + (P - Centre).RotateBy(A), 1e-11));
    EXPECT_TRUE(M.Transform(Centre).Equals(Centre, 1e-12));
    EXPECT_NEAR(1.0, M.Determinant(), 1e-14);
    M.Rotate(-A, Centre);
    EXPECT_TRUE(M.Transform(P).Equals(P, 1e-11));
  }
}

TEST(TMatrix2D, AppendIsTheOneMapAfterTheOther) {
  std::mt19937 Random(67);
  const auto RandomMap = [&] {
    const auto R = [&] { return test::RandomDouble(Random, -3, 3); };
    return TMatrix2D(R(), R(), R(), R(), R(), R());
  };
  for (int Round = 0; Round < 500; ++Round) {
    const TMatrix2D First = RandomMap();
    const TMatrix2D Next = RandomMap();
    const TPoint2D P = test::RandomPoint(Random, -10, 10);
    TMatrix2D Both = First;
    Both.Append(Next);
    EXPECT_TRUE(Both.Transform(P).Equals(Next.Transform(First.Transform(P)), 1e-11));
    EXPECT_NEAR(First.Determinant() * Next.Determinant(), Both.Determinant(), 1e-11);
  }
}

}  // namespace
}  // namespace tarnalgo
