#include <gtest/gtest.h>

#include <cmath>

#include "geometryAlgo/UDualSimplex.h"
#include "host/Exceptions.h"
#include "tests/support/DebugTexts.h"
#include "tests/support/Matrices.h"
#include "tests/support/Programs.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using test::MatrixOf;
using test::TProgram;

TSimplexAndDualMethod MethodFor(const TProgram& Program, int Limit = 0) {
  return {Program.A, Program.Senses, Program.C, Program.Maximise, true, false, Limit};
}

/// The best objective over all whole points up to `Most`; false when none holds.
bool BestWholePoint(const TProgram& Program, int Most, double& Best) {
  bool Found = false;
  TFloatVector X(Program.C.GetSize());
  for (;;) {
    if (Program.Holds(X, 0.0)) {
      const double Objective = Program.C[0] + Program.C * X;
      if (!Found || (Program.Maximise ? Objective > Best : Objective < Best)) Best = Objective;
      Found = true;
    }
    int J = 1;
    while (J < X.GetSize() && X[J] == Most) X.SetItem(J++, 0.0);
    if (J == X.GetSize()) return Found;
    X.SetItem(J, X[J] + 1.0);
  }
}

TEST(BranchAndBound, AgreesWithAllWholePoints) {
  std::mt19937 Random(31);
  int Solved = 0;
  for (int Count = 0; Count < 1500; ++Count) {
    SCOPED_TRACE(Count);
    TProgram Program =
        test::RandomProgram(Random, test::RandomInt(Random, 1, 4), test::RandomInt(Random, 1, 4));
    test::BoundVariables(Program, 5.0);
    double Expected = 0.0;
    const bool IsFeasible = BestWholePoint(Program, 5, Expected);
    TSimplexAndDualMethod Method = MethodFor(Program);
    ASSERT_EQ(IsFeasible, Method.Solve());
    ASSERT_NEAR(IsFeasible ? Expected : 0.0, Method.Objective(), 1e-6);
    int Fractional = 0;
    ASSERT_TRUE(Method.IsInteger(Fractional));
    ASSERT_TRUE(!IsFeasible || Program.Holds(Method.X(), 1e-6));
    Solved += IsFeasible ? 1 : 0;
  }
  EXPECT_GT(Solved, 500);
}

TEST(BranchAndBound, StartsNoSearchFromAWholeRelaxation) {
  const TProgram Program{MatrixOf({{3, 1}}), {kAtMost}, {0, 1}, true};
  const std::int64_t Before = SimplexRunCount() + DualSimplexRunCount();
  EXPECT_TRUE(MethodFor(Program).Solve());
  EXPECT_EQ(Before + 1, SimplexRunCount() + DualSimplexRunCount());
}

// The corners (0, 1) and (1, 0), of which the branch x <= 0 finds the first first.
TEST(BranchAndBound, KeepsTheFirstOfEqualSolutions) {
  const struct {
    double Scale;
    double Margin;
  } Cases[] = {{1.0, 1e-10}, {1000.0, 1e-7}, {0.01, 1e-10}};
  for (const auto& Case : Cases) {
    for (const double Share : {0.95, 1.05}) {
      SCOPED_TRACE(testing::Message() << Case.Scale << ", " << Share);
      const TProgram Program{MatrixOf({{4, 1, 4}, {2, 2, 1}}),
                             {kAtMost, kAtMost},
                             {0, Case.Scale + Share * Case.Margin, Case.Scale},
                             true};
      TSimplexAndDualMethod Method = MethodFor(Program);
      ASSERT_TRUE(Method.Solve());
      EXPECT_TRUE(
          Method.X().Equls(Share < 1.0 ? TFloatVector{0, 0, 1} : TFloatVector{0, 1, 0}, 1e-9));
      EXPECT_EQ(2, Program.A.GetRowCnt());  // the bounds were added to copies
    }
  }
}

TEST(BranchAndBound, TakesItsLastSolutionAsCosts) {
  const TProgram Program{MatrixOf({{3.5, 2, 1}, {3.5, 1, 2}}), {kAtMost, kAtMost}, {0, 1, 1}, true};
  TSimplexAndDualMethod Method = MethodFor(Program);
  ASSERT_TRUE(Method.Solve(Program.A, Program.Senses, Program.C, true));
  ASSERT_TRUE(Method.SolveByBranchAndBound(Program.A, Program.Senses, Method.X(), true));
  EXPECT_NEAR(7.0 / 3.0, Method.Objective(), 1e-9);
}

TEST(BranchAndBound, EndsAtItsLimit) {
  const test::TDebugTexts Texts;
  const TProgram Program{MatrixOf({{1, 2, -2}, {1, 2, -2}}), {kAtMost, kAtLeast}, {0, 1, 0}, false};
  TSimplexAndDualMethod Method = MethodFor(Program, 200);
  EXPECT_FALSE(Method.Solve());  // 2x - 2y = 1 has no whole point, however far the search goes
  EXPECT_EQ("TSimplexAndDualMethod: the search ended at its limit", Texts.Last());
  EXPECT_EQ(TFloatVector(3), Method.X());
  EXPECT_EQ(0.0, Method.Objective());
}

TEST(BranchAndBound, FindsTheBestOfLongSearches) {
  std::mt19937 Random(32);
  for (int Round = 0; Round < 60; ++Round) {
    SCOPED_TRACE(Round);
    TProgram Knapsack{TFloatMatrix(2, 11), {kAtMost, kAtMost}, TFloatVector(11), true};
    for (int J = 1; J <= 10; ++J) {
      Knapsack.C.SetItem(J, test::RandomInt(Random, 1, 100));
      for (const int I : {0, 1}) Knapsack.A.SetItem(I, J, test::RandomInt(Random, 1, 100));
    }
    for (const int I : {0, 1}) Knapsack.A.SetItem(I, 0, test::RandomInt(Random, 100, 300));
    test::BoundVariables(Knapsack, 1.0);
    double Expected = 0.0;
    ASSERT_TRUE(BestWholePoint(Knapsack, 1, Expected));
    TSimplexAndDualMethod Method = MethodFor(Knapsack);
    ASSERT_TRUE(Method.Solve());
    EXPECT_NEAR(Expected, Method.Objective(), 1e-6);
    double Before = 0.0;  // a longer search never answers worse
    for (const int Limit : {34, 40, 45, 50, 60, 90}) {
      TSimplexAndDualMethod Short = MethodFor(Knapsack, Limit);
      const double Objective = Short.Solve() ? Short.Objective() : 0.0;
      EXPECT_LE(Before, Objective + 1e-9);
      EXPECT_LE(Objective, Expected + 1e-6);
      Before = Objective;
    }
  }
}

TEST(BranchAndBound, HandsOutTheBestKnownWhenCutShort) {
  // The search passes over its first whole solution for a better one that it would meet later than
  // after 72 programs.
  const TProgram Program{MatrixOf({{196, 83, 62, 16, 28, 32, 49, 92, 93, 95, 93, 88, 54},
                                   {244, 88, 42, 54, 5, 79, 58, 97, 90, 50, 7, 26, 55},
                                   {242, 38, 39, 5, 66, 16, 79, 6, 34, 67, 75, 59, 1}}),
                         {kAtMost, kAtMost, kAtMost},
                         {0, 100, 28, 83, 67, 58, 45, 88, 16, 32, 43, 25, 39},
                         true};
  const test::TDebugTexts Texts;
  TSimplexAndDualMethod Method = MethodFor(Program, 72);
  EXPECT_TRUE(Method.Solve());
  EXPECT_EQ("TSimplexAndDualMethod: the search ended at its limit", Texts.Last());
  int Fractional = 0;
  EXPECT_TRUE(Method.IsInteger(Fractional));
  EXPECT_TRUE(Program.Holds(Method.X(), 1e-6));
}

TEST(BranchAndBound, LeavesOtherColumnsFractional) {
  const TProgram Program{MatrixOf({{7, 2, 4}, {2.5, 1, 0}}), {kAtMost, kAtMost}, {0, 1, 1.5}, true};
  TSimplexAndDualMethod Method = MethodFor(Program);
  Method.SetIntegerColumns({0, 1, 0});
  ASSERT_TRUE(Method.Solve());
  EXPECT_TRUE(Method.X().Equls({0, 2, 0.75}, 1e-9));
}

TEST(BranchAndBound, AssertsRowsAndColumns) {
  for (const auto& [Rows, Message] :
       {std::pair{0, "Assertion failure (geometryAlgo/UDualSimplex, line 731)"},
        std::pair{1, "Assertion failure (geometryAlgo/UDualSimplex, line 734)"}}) {
    TSimplexAndDualMethod Method(TFloatMatrix(Rows, 0), TIntegerVec(Rows), {}, true, true, false,
                                 0);
    test::ExpectRaises<EAssertionFailed>([&Method] { Method.Solve(); }, Message);
  }
}

TEST(InequalityDataList, AppendsItsBoundsToThisHandleOnly) {
  TFloatMatrix A = MatrixOf({{4, 1, 1}});
  const TFloatMatrix Other = A;
  TIntegerVec Senses{kAtMost};
  TInequalityDataList Bounds;
  Bounds.AddData(2, 1.0, kAtMost);
  TInequalityDataList More = Bounds.Clone();
  More.AddData(1, 2.0, kAtLeast);
  More.AddDatato(A, Senses);
  EXPECT_EQ(MatrixOf({{4, 1, 1}, {1, 0, 1}, {2, 1, 0}}), A);
  EXPECT_EQ(kAtLeast, Senses[2]);
  EXPECT_EQ(1, Other.GetRowCnt());
  EXPECT_EQ(1, Bounds.Count());
  More.AddData(3, 0.0, kAtMost);
  EXPECT_THROW(More.AddDatato(A, Senses), EParamError);
  EXPECT_EQ(3, A.GetRowCnt());
}

}  // namespace
}  // namespace tarnalgo
