#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "geometryAlgo/UMatrixAlgo.h"
#include "host/Exceptions.h"
#include "tests/support/Matrices.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using test::MatrixOf;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using TSolver = bool (*)(TFloatVector&, TFloatMatrix, TFloatVector);

const struct {
  const char* Name;
  TSolver Solve;
  bool IsDirect;
} kSolvers[] = {
    {"Gaussian", TLinearSolveTool::Gaussian, true},
    {"LDLT", TLinearSolveTool::LDLT, true},
    {"Cholesky", TLinearSolveTool::Cholesky, true},
    {"ConjugateGradient", TLinearSolveTool::ConjugateGradient, false},
    {"SSOR", TLinearSolveTool::SSOR, false},
};

TFloatMatrix Hilbert(int Size) {
  TFloatMatrix Result(Size, Size);
  for (int I = 0; I < Size; ++I) {
    for (int J = 0; J < Size; ++J) Result.SetItem(I, J, 1.0 / (I + J + 1));
  }
  return Result;
}

/// Symmetric, and dominated by its diagonal.
TFloatMatrix RandomDominant(std::mt19937& Random, int Size) {
  TFloatMatrix Result = test::RandomMatrix(Random, Size, Size);
  Result = Result + Result.Transpose();
  for (int I = 0; I < Size; ++I) Result.SetItem(I, I, 2.5 * Size);
  return Result;
}

/// The residual of each equation in extended precision, over what rounding in the size of the
/// largest row and of x explains.
double ScaledResidual(const TFloatMatrix& A, const TFloatVector& X, const TFloatVector& B) {
  long double Worst = 0.0L;
  double LargestRow = 0.0;
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    long double Sum = -B[I];
    for (int J = 0; J < A.GetColCnt(); ++J) Sum += static_cast<long double>(A(I, J)) * X[J];
    Worst = std::max(Worst, std::abs(Sum));
    LargestRow = std::max(LargestRow, A.GetRow(I).Norm1());
  }
  const double Explained =
      std::numeric_limits<double>::epsilon() * (LargestRow * X.GetAbsMax() + B.GetAbsMax());
  return Explained > 0.0 ? static_cast<double>(Worst) / Explained : 0.0;
}

TEST(LinearSolve, EverySolverSolvesDominantSystems) {
  std::mt19937 Random(3);
  for (const int Size : {0, 1, 2, 3, 17, 63, 64, 65, 130, 200}) {
    const TFloatMatrix A = RandomDominant(Random, Size);
    TFloatVector B(Size);
    for (int I = 0; I < Size; ++I) B.SetItem(I, test::RandomDouble(Random, -1.0, 1.0));
    for (const auto& Solver : kSolvers) {
      SCOPED_TRACE(testing::Message() << Solver.Name << ", size " << Size);
      TFloatVector X = B.Clone();
      ASSERT_TRUE(Solver.Solve(X, A.Clone(), X));  // the answer may replace the right-hand side
      ASSERT_EQ(Size, X.GetSize());
      if (Solver.IsDirect) {
        EXPECT_LT(ScaledResidual(A, X, B), 4.0);
      } else {
        EXPECT_LT((A * X - B).Mag(), 1e-9 * (1.0 + Size));
      }
    }
  }
}

TEST(LinearSolve, DirectSolversAreBackwardStable) {
  std::mt19937 Random(4);
  for (int Size = 2; Size <= 12; ++Size) {
    const TFloatMatrix A = Hilbert(Size);
    const TFloatVector B = A * TFloatVector(Size, 1.0);
    for (const auto& Solver : kSolvers) {
      if (!Solver.IsDirect) continue;
      SCOPED_TRACE(testing::Message() << Solver.Name << ", Hilbert " << Size);
      TFloatVector X;
      ASSERT_TRUE(Solver.Solve(X, A.Clone(), B.Clone()));
      EXPECT_LT(ScaledResidual(A, X, B), 4.0);
    }
  }
  for (int Count = 0; Count < 50; ++Count) {  // rows of very different size, nothing symmetric
    const int Size = 1 + Count * 3;
    TFloatMatrix A = test::RandomMatrix(Random, Size, Size);
    for (int I = 0; I < Size; ++I) {
      A.SetRow(I, A.GetRow(I) * std::ldexp(1.0, static_cast<int>(Random() % 60) - 30));
    }
    const TFloatVector B = A * TFloatVector(Size, 1.0);
    TFloatVector X;
    ASSERT_TRUE(TLinearSolveTool::Gaussian(X, A.Clone(), B.Clone()));
    EXPECT_LT(ScaledResidual(A, X, B), 50.0) << Size;
  }
}

TEST(Gaussian, LeavesTheTriangleInTheCallersSystem) {
  TFloatMatrix A = MatrixOf({{1, 2, 3}, {-2, 0, 2}, {2, 8, 8}});
  TFloatVector B{6, 0, 18};
  TFloatVector X;
  ASSERT_TRUE(TLinearSolveTool::Gaussian(X, A, B));
  EXPECT_EQ((TFloatVector{1, 1, 1}), X);
  EXPECT_EQ(MatrixOf({{-2, 0, 2}, {0, 8, 10}, {0, 0, 1.5}}), A);  // of -2 and 2 the upper one
  EXPECT_EQ((TFloatVector{0, 18, 1.5}), B);
}

TEST(Gaussian, FailsAtTheFirstColumnWithoutPivot) {
  TFloatMatrix A = MatrixOf({{1, 2, 5}, {4, 8, 4}, {2, 4, 9}});
  TFloatVector B{1, 2, 3};
  TFloatVector X{7};
  EXPECT_FALSE(TLinearSolveTool::Gaussian(X, A, B));
  EXPECT_EQ(TFloatVector(3), X);
  // The exchange and the column made before stay.
  EXPECT_EQ(MatrixOf({{4, 8, 4}, {0, 0, 4}, {0, 0, 7}}), A);
  EXPECT_EQ(2.0, B[0]);
  EXPECT_FALSE(TLinearSolveTool::Gaussian(X, MatrixOf({{0, 1}, {0, 2}}), {1, 1}));
  EXPECT_FALSE(TLinearSolveTool::Gaussian(X, MatrixOf({{kNaN, 1}, {kNaN, 2}}), {1, 1}));
  EXPECT_TRUE(TLinearSolveTool::Gaussian(X, MatrixOf({{1e-300}}), {1e-300}));
  EXPECT_EQ((TFloatVector{1}), X);
}

TEST(SymmetricSolvers, ReadTheLowerTriangleAndChangeNothing) {
  const TFloatMatrix A = MatrixOf({{4, kNaN}, {2, 10}});
  const TFloatVector B{10, 23};
  for (const TSolver Solve : {TLinearSolveTool::LDLT, TLinearSolveTool::Cholesky}) {
    TFloatVector X;
    ASSERT_TRUE(Solve(X, A, B));
    EXPECT_EQ((TFloatVector{1.5, 2}), X);
    EXPECT_EQ(4.0, A(0, 0));
    EXPECT_EQ((TFloatVector{10, 23}), B);
  }
}

TEST(SymmetricSolvers, TakeAPivotWhoseInverseOverflows) {
  TFloatVector X;
  ASSERT_TRUE(TLinearSolveTool::LDLT(X, MatrixOf({{0x1p-1030, 0}, {0x1p-1030, 1}}), {0, 2}));
  EXPECT_EQ((TFloatVector{-2, 2}), X);
}

TEST(SymmetricSolvers, FailAtTheirPivots) {
  const struct {
    const char* Name;
    TFloatMatrix A;
    bool ByLdlt;
    bool ByCholesky;
  } Cases[] = {
      {"indefinite", MatrixOf({{1, 2}, {2, 1}}), true, false},
      {"negative", MatrixOf({{-1}}), true, false},
      {"zero first", MatrixOf({{0, 1}, {1, 0}}), false, false},
      {"singular", MatrixOf({{1, 2}, {2, 4}}), false, false},
      {"NaN", MatrixOf({{kNaN}}), true, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TFloatVector B(Case.A.GetRowCnt(), 3.0);
    TFloatVector X{7};
    EXPECT_EQ(Case.ByLdlt, TLinearSolveTool::LDLT(X, Case.A, B));
    if (!Case.ByLdlt) {
      EXPECT_EQ(TFloatVector(B.GetSize()), X);
    }
    EXPECT_EQ(Case.ByCholesky, TLinearSolveTool::Cholesky(X, Case.A, B));
    EXPECT_EQ(TFloatVector(B.GetSize()), X);
  }
}

TEST(ConjugateGradient, StopsAsStated) {
  const struct {
    const char* Name;
    TFloatMatrix A;
    TFloatVector B;
    bool Solved;
    TFloatVector X;
  } Cases[] = {
      {"nothing asked", MatrixOf({{2, 0}, {0, 2}}), {0, 0}, true, {0, 0}},
      {"below the absolute threshold", MatrixOf({{2, 0}, {0, 2}}), {1e-11, 0}, true, {0, 0}},
      {"above it", MatrixOf({{2, 0}, {0, 2}}), {0x1p-33, 0}, true, {0x1p-34, 0}},
      {"no curvature", MatrixOf({{1, 0}, {0, -1}}), {1, 1}, false, {0, 0}},
      {"rounds run out", MatrixOf({{0, -1}, {1, 1e-9}}), {0, 1}, false, {}},
      {"NaN", MatrixOf({{kNaN}}), {1}, false, {}},
      {"infinite", MatrixOf({{kInfinity}}), {1}, false, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TFloatVector X;
    EXPECT_EQ(Case.Solved, TLinearSolveTool::ConjugateGradient(X, Case.A, Case.B));
    if (Case.X.GetSize() > 0) {
      EXPECT_EQ(Case.X, X);
    }
  }
}

// From a first unit vector each round of a chain reaches one unknown further, so that the residual
// is not small before the last one. A round sees what the one before has reached.
TEST(ConjugateGradient, GivesUpAfter500Rounds) {
  for (const int Size : {499, 500}) {
    TFloatMatrix A(Size, Size);
    for (int I = 0; I < Size; ++I) {
      A.SetItem(I, I, 2.0);
      if (I > 0) A.SetItem(I, I - 1, -1.0);
      if (I > 0) A.SetItem(I - 1, I, -1.0);
    }
    TFloatVector B(Size);
    B.SetItem(0, 1.0);
    TFloatVector X;
    EXPECT_EQ(Size < 500, TLinearSolveTool::ConjugateGradient(X, A, B)) << Size;
  }
}

TEST(SSOR, ScalesTheCallersSystem) {
  TFloatMatrix A = MatrixOf({{4, 1}, {2, 8}});
  TFloatVector B{6, 18};
  TFloatVector X;
  ASSERT_TRUE(TLinearSolveTool::SSOR(X, A, B));
  EXPECT_TRUE(X.Equls({1, 2}, 1e-9));
  EXPECT_EQ(MatrixOf({{1, 0.25}, {0.25, 1}}), A);
  EXPECT_EQ((TFloatVector{1.5, 2.25}), B);
}

TEST(SSOR, FailsAtAZeroDiagonalAndWhenItDiverges) {
  TFloatMatrix A = MatrixOf({{2, 1}, {1, 0}});
  TFloatVector B{2, 2};
  TFloatVector X{7};
  EXPECT_FALSE(TLinearSolveTool::SSOR(X, A, B));
  EXPECT_EQ(TFloatVector(2), X);
  EXPECT_EQ(MatrixOf({{1, 0.5}, {1, 0}}), A);  // the rows above are divided already
  EXPECT_EQ((TFloatVector{1, 2}), B);
  EXPECT_FALSE(TLinearSolveTool::SSOR(X, MatrixOf({{1, 100}, {100, 1}}), {1, 1}));
  EXPECT_TRUE(std::isnan(X[1]));  // past the largest double, and still no success
}

TEST(SSOR, EndsWhenASweepChangesNothingToSpeakOf) {
  TFloatVector X;
  const double B = 1.5e-10 / 1.1;  // the first sweep changes by more than 1e-10
  EXPECT_TRUE(TLinearSolveTool::SSOR(X, MatrixOf({{1}}), {B}));
  EXPECT_NEAR(0.99 * B, X[0], 1e-14);
}

TEST(SSOR, GivesUpAfter201Sweeps) {
  const double Coupling = 0.999;
  TFloatVector X;
  EXPECT_FALSE(TLinearSolveTool::SSOR(X, MatrixOf({{1, Coupling}, {Coupling, 1}}), {1, 2}));
  double P = 0.0;
  double Q = 0.0;
  for (int I = 0; I < 201; ++I) {
    P += 1.1 * (1.0 - P - Coupling * Q);
    Q += 1.1 * (2.0 - Q - Coupling * P);
  }
  EXPECT_TRUE(X.Equls({P, Q}, 1e-9));
}

TEST(LinearSolve, AssertsTheShapeAndChangesNothing) {
  for (const auto& Solver : kSolvers) {
    SCOPED_TRACE(Solver.Name);
    const TFloatMatrix Square = MatrixOf({{2, 1}, {1, 2}});
    TFloatVector X{7};
    EXPECT_THROW(Solver.Solve(X, TFloatMatrix(2, 3), {1, 2}), EAssertionFailed);
    EXPECT_THROW(Solver.Solve(X, Square, {1, 2, 3}), EAssertionFailed);
    EXPECT_EQ((TFloatVector{7}), X);
    EXPECT_EQ(MatrixOf({{2, 1}, {1, 2}}), Square);
  }
  test::ExpectRaises<EAssertionFailed>(
      [] {
        TFloatVector X;
        TLinearSolveTool::LDLT(X, TFloatMatrix(2), {1});
      },
      "Assertion failure (geometryAlgo/UMatrixAlgo, line 2425)");
}

TEST(SolveLeastSquares, LeavesResidualsAcrossTheRows) {
  std::mt19937 Random(6);
  for (const int Unknowns : {1, 2, 5, 20}) {
    for (const int Observations : {Unknowns, Unknowns + 1, 3 * Unknowns + 10}) {
      SCOPED_TRACE(testing::Message() << Unknowns << " of " << Observations);
      const TFloatMatrix A = test::RandomMatrix(Random, Unknowns, Observations);
      const TFloatVector B = test::RandomMatrix(Random, 1, Observations).GetRow(0);
      TFloatVector X;
      TFloatVector Residuals;
      ASSERT_TRUE(TLinearSolveTool::SolveLeastSquares(A, B, X, Residuals));
      EXPECT_EQ(A.Transpose() * X - B, Residuals);
      EXPECT_LT((A * Residuals).GetAbsMax(), 1e-6);  // no change of x makes them shorter
      if (Observations == Unknowns) {
        EXPECT_LT(Residuals.GetAbsMax(), 1e-4);
      }
    }
  }
}

TEST(SolveLeastSquares, FailsWithZeros) {
  const struct {
    const char* Name;
    TFloatMatrix A;
    TFloatVector B;
  } Cases[] = {
      {"observations missing", MatrixOf({{1, 2, 3}}), {1, 2}},
      {"equal rows", MatrixOf({{1, 2, 3}, {1, 2, 3}}), {1, 2, 3}},
      {"NaN", MatrixOf({{1, kNaN, 3}}), {1, 2, 3}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TFloatVector X;
    TFloatVector Residuals;
    EXPECT_FALSE(TLinearSolveTool::SolveLeastSquares(Case.A, Case.B, X, Residuals));
    EXPECT_EQ(TFloatVector(Case.A.GetRowCnt()), X);
    EXPECT_EQ(TFloatVector(Case.A.GetColCnt()), Residuals);
  }
  TFloatVector X;
  EXPECT_TRUE(TLinearSolveTool::SolveLeastSquares(MatrixOf({{1, 1}}), {3, 5}, X));
  EXPECT_EQ((TFloatVector{4}), X);
  // Nearly equal rows, which elimination cannot solve well enough.
  const bool IsSolved =
      TLinearSolveTool::SolveLeastSquares(MatrixOf({{1, 1}, {1, 1 + 1e-8}}), {1e6, -1e6}, X);
  EXPECT_EQ(IsSolved, X.GetAbsMax() > 0.0);
}

}  // namespace
}  // namespace tarnalgo
