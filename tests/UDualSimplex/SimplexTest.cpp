#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "geometryAlgo/UDualSimplex.h"
#include "host/Exceptions.h"
#include "tests/support/DebugTexts.h"
#include "tests/support/Matrices.h"
#include "tests/support/Programs.h"

namespace tarnalgo {
namespace {

using test::MatrixOf;
using test::TProgram;

TSimplexAndDualMethod MethodFor(const TProgram& Program, bool Revised = false, int Limit = 0) {
  return {Program.A, Program.Senses, Program.C, Program.Maximise, false, Revised, Limit};
}

// --- The whole program, against exact corners ---

using TRow = std::vector<std::int64_t>;  // right-hand side, then coefficients

std::int64_t Determinant(const std::vector<TRow>& Rows) {
  if (Rows.size() == 1) return Rows[0][0];
  std::int64_t Sum = 0;
  for (std::size_t K = 0; K < Rows.size(); ++K) {
    std::vector<TRow> Minor(Rows.begin() + 1, Rows.end());
    for (TRow& Row : Minor) Row.erase(Row.begin() + static_cast<std::ptrdiff_t>(K));
    Sum += (K % 2 == 0 ? 1 : -1) * Rows[0][K] * Determinant(Minor);
  }
  return Sum;
}

/// A corner as whole numbers over a positive divisor, by Cramer's rule.
struct TCorner {
  std::int64_t Divisor = 0;
  TRow X;
};

TCorner CornerOf(const std::vector<TRow>& Planes) {
  std::vector<TRow> Square;
  for (const TRow& Plane : Planes) Square.emplace_back(Plane.begin() + 1, Plane.end());
  TCorner Corner{Determinant(Square), {}};
  const std::int64_t Sign = Corner.Divisor < 0 ? -1 : 1;
  Corner.Divisor *= Sign;
  for (std::size_t J = 0; J < Planes.size(); ++J) {
    std::vector<TRow> Replaced = Square;
    for (std::size_t I = 0; I < Planes.size(); ++I) Replaced[I][J] = Planes[I][0];
    Corner.X.push_back(Sign * Determinant(Replaced));
  }
  return Corner;
}

std::int64_t Value(const TRow& Row, const TCorner& Corner) {
  std::int64_t Sum = Row[0] * Corner.Divisor;
  for (std::size_t J = 0; J < Corner.X.size(); ++J) Sum += Row[J + 1] * Corner.X[J];
  return Sum;
}

struct TAnswer {
  bool IsSolved = false;
  double Objective = 0.0;
};

/// The best of all corners of the program within a far plane; unbounded when it lies on that.
TAnswer BestCorner(const TProgram& Program) {
  constexpr std::int64_t kFar = 100000;
  const auto Variables = static_cast<std::size_t>(Program.Variables());
  std::vector<TRow> Planes;  // coefficients · x <= right-hand side
  for (int I = 0; I < Program.A.GetRowCnt(); ++I) {
    Planes.emplace_back();
    for (int J = 0; J < Program.A.GetColCnt(); ++J) {
      Planes.back().push_back(-Program.Senses[I] * static_cast<std::int64_t>(Program.A(I, J)));
    }
  }
  for (std::size_t J = 1; J <= Variables; ++J) {
    Planes.emplace_back(Variables + 1);
    Planes.back()[J] = -1;
  }
  Planes.emplace_back(Variables + 1, 1);
  Planes.back()[0] = kFar;
  TRow Costs;
  for (int J = 0; J < Program.C.GetSize(); ++J) {
    Costs.push_back((Program.Maximise ? -1 : 1) * static_cast<std::int64_t>(Program.C[J]));
  }
  std::optional<double> Best;  // of the corners that are not far
  std::optional<double> BestFar;
  std::vector<bool> Chosen(Planes.size());
  std::fill_n(Chosen.begin(), Variables, true);
  do {
    std::vector<TRow> Meeting;
    for (std::size_t K = 0; K < Planes.size(); ++K) {
      if (Chosen[K]) Meeting.push_back(Planes[K]);
    }
    const TCorner Corner = CornerOf(Meeting);
    if (Corner.Divisor == 0) continue;
    bool Holds = true;
    for (const TRow& Plane : Planes) {
      Holds = Holds && Value(Plane, Corner) <= 2 * Plane[0] * Corner.Divisor;
    }
    if (!Holds) continue;
    std::optional<double>& Least = Chosen.back() ? BestFar : Best;
    const double Cost =
        static_cast<double>(Value(Costs, Corner)) / static_cast<double>(Corner.Divisor);
    if (!Least || Cost < *Least) Least = Cost;
  } while (std::prev_permutation(Chosen.begin(), Chosen.end()));
  if (!Best || (BestFar && *BestFar < *Best)) return {};
  return {true, Program.Maximise ? -*Best : *Best};
}

TEST(Simplex, AgreesWithTheBestCorner) {
  std::mt19937 Random(21);
  int Solved = 0;
  for (int Count = 0; Count < 4000; ++Count) {
    SCOPED_TRACE(Count);
    const int Variables = test::RandomInt(Random, 1, 3);
    const TProgram Program = test::RandomProgram(Random, test::RandomInt(Random, 1, 5), Variables);
    const TAnswer Expected = BestCorner(Program);
    TSimplexAndDualMethod Method = MethodFor(Program, Count % 2 == 1);
    ASSERT_EQ(Expected.IsSolved, Method.Solve());
    ASSERT_NEAR(Expected.Objective, Method.Objective(), 1e-9);
    ASSERT_TRUE(!Expected.IsSolved || Program.Holds(Method.X(), 1e-9));
    Solved += Expected.IsSolved ? 1 : 0;
  }
  EXPECT_GT(Solved, 1000);
  EXPECT_LT(Solved, 3000);
}

/// The dual program, whose best objective is that of the program.
TProgram DualOf(const TProgram& Program) {
  TProgram Dual;
  const int Rows = Program.Variables();
  Dual.A = TFloatMatrix(Rows, Program.A.GetRowCnt() + 1);
  Dual.Senses = TIntegerVec(std::vector<int>(static_cast<std::size_t>(Rows), kAtLeast));
  Dual.C = TFloatVector(Program.A.GetRowCnt() + 1);
  for (int J = 1; J <= Rows; ++J) {
    Dual.A.SetItem(J - 1, 0, Program.C[J]);
    for (int I = 0; I < Program.A.GetRowCnt(); ++I) Dual.A.SetItem(J - 1, I + 1, Program.A(I, J));
  }
  for (int I = 0; I < Program.A.GetRowCnt(); ++I) Dual.C.SetItem(I + 1, Program.A(I, 0));
  return Dual;
}

TEST(Simplex, LeavesTheClassicCycles) {
  const struct {
    const char* Name;
    TProgram Program;
    double Objective;
    bool IsSolved = true;
  } Cases[] = {
      {"Beale 1955",
       {MatrixOf({{0, 0.25, -60, -0.04, 9}, {0, 0.5, -90, -0.02, 3}, {1, 0, 0, 1, 0}}),
        {kAtMost, kAtMost, kAtMost},
        {0, 0.75, -150, 0.02, -6},
        true},
       0.05},
      {"Kuhn",
       {MatrixOf({{0, -2, -9, 1, 9}, {0, 1.0 / 3, 1, -1.0 / 3, -2}, {2, 2, 3, -1, -12}}),
        {kAtMost, kAtMost, kAtMost},
        {0, 2, 3, -1, -12},
        true},
       2},
      {"Marshall and Suurballe 1969",
       {MatrixOf({{0, 0.5, -5.5, -2.5, 9}, {0, 0.5, -1.5, -0.5, 1}, {1, 1, 0, 0, 0}}),
        {kAtMost, kAtMost, kAtMost},
        {0, 10, -57, -9, -24},
        true},
       1},
      {"Beale at the optimum",  // x3 is 0, and then the first two rows hold the rest at most at 0
       {MatrixOf({{0, 0.25, -60, -0.04, 9},
                  {0, 0.5, -90, -0.02, 3},
                  {0, 0, 0, 1, 0},
                  {0, -2, 1, 1, 1},
                  {0, -2, -2, 0, 1}}),
        {kAtMost, kAtMost, kAtMost, kAtMost, kAtMost},
        {0, 0.75, -150, 0.02, -6},
        true},
       0},
      {"Beale without a bound",  // along x3
       {MatrixOf({{0, 0.25, -60, -0.04, 9}, {0, 0.5, -90, -0.02, 3}}),
        {kAtMost, kAtMost},
        {0, 0.75, -150, 0.02, -6},
        true},
       0,
       false},
      {"Beale without a bound, two rows more",
       {MatrixOf({{0, 0.25, -60, -0.04, 9},
                  {0, 0.5, -90, -0.02, 3},
                  {0, 1, 0, -1, 1},
                  {0, -2, 0, -2, 2}}),
        {kAtMost, kAtMost, kAtMost, kAtMost},
        {0, 0.75, -150, 0.02, -6},
        true},
       0,
       false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    for (const bool Revised : {false, true}) {
      TSimplexAndDualMethod Method = MethodFor(Case.Program, Revised);
      EXPECT_EQ(Case.IsSolved, Method.Solve());
      EXPECT_NEAR(Case.Objective, Method.Objective(), 1e-9);
    }
    TSimplexAndDualMethod Dual = MethodFor(DualOf(Case.Program));
    EXPECT_EQ(Case.IsSolved, Dual.Solve());
    EXPECT_NEAR(Case.Objective, Dual.Objective(), 1e-9);
  }
}

// The dual of the last of these with an optimum of 0, so that the rules that never cycle are the
// last to look, and beside it a variable that has to be as large as `Least`.
TEST(Simplex, LeavesACycleWithItsTolerance) {
  for (const double Least : {0.7e-6, 1.5e-6}) {
    const TFloatMatrix A = MatrixOf({{10, 0.5, 0.5, 1, 0},
                                     {-57, -5.5, -1.5, 0, 0},
                                     {-9, -2.5, -0.5, 0, 0},
                                     {-24, 9, 1, 0, 0},
                                     {Least, 0, 0, 0, 1}});
    const TIntegerVec Senses(std::vector<int>(5, kAtLeast));
    const TFloatVector Costs{0, 0, 0, 0, 1};
    TSimplexAndDualMethod Method(A, Senses, Costs, false, false, false, 0);
    Method.BuiltSimpleTab(A, Senses, Costs, false);
    ASSERT_TRUE(Method.SolveByDualSimplex());
    Method.FillSolution();
    EXPECT_EQ(Least > 1e-6 ? Least : 0.0, Method.X()[4]);
  }
}

TEST(Simplex, AgreesWithItsDualOnLargerPrograms) {
  std::mt19937 Random(22);
  for (const int Size : {5, 20, 60, 120}) {
    TProgram Program;
    Program.A = test::RandomMatrix(Random, Size, Size + 1) + TFloatMatrix(Size, Size + 1, 1.1);
    Program.Senses = TIntegerVec(std::vector<int>(static_cast<std::size_t>(Size), kAtMost));
    Program.C = Program.A.GetRow(0).Clone();
    Program.C.SetItem(0, 0.0);
    Program.Maximise = true;
    TSimplexAndDualMethod Method = MethodFor(Program);
    ASSERT_TRUE(Method.Solve());
    TSimplexAndDualMethod Dual = MethodFor(DualOf(Program));
    ASSERT_TRUE(Dual.Solve());
    EXPECT_NEAR(Method.Objective(), Dual.Objective(), 1e-9 * Size);
    EXPECT_TRUE(Program.Holds(Method.X(), 1e-9));
  }
}

TEST(Simplex, AnswersTheLimitingPrograms) {
  const double NaN = std::numeric_limits<double>::quiet_NaN();
  const struct {
    const char* Name;
    TProgram Program;
    bool Solved;
    double Objective;
  } Cases[] = {
      {"optimal at the origin", {MatrixOf({{1, 1}}), {kAtMost}, {7, 1}, false}, true, 7},
      {"the same for a maximum", {MatrixOf({{1, 1}}), {kAtMost}, {7, -1}, true}, true, 7},
      {"unbounded", {MatrixOf({{1, -1}}), {kAtMost}, {0, 1}, true}, false, 0},
      {"no pivot above 1e-6", {MatrixOf({{1, 1e-6}}), {kAtMost}, {0, 1}, true}, false, 0},
      {"a pivot just above", {MatrixOf({{1, 2e-6}}), {kAtMost}, {0, 1}, true}, true, 500000},
      {"infeasible", {MatrixOf({{1, 1}, {2, 1}}), {kAtMost, kAtLeast}, {0, 1}, false}, false, 0},
      {"infeasible, costs too",
       {MatrixOf({{1, 1}, {2, 1}}), {kAtMost, kAtLeast}, {0, 1}, true},
       false,
       0},
      {"least ratio by magnitude", {MatrixOf({{1, 1, 1}}), {kAtLeast}, {0, 1, 10}, false}, true, 1},
      {"no constraint", {{}, {}, {3, 1}, false}, true, 3},
      {"no constraint, unbounded", {{}, {}, {3, 1}, true}, false, 0},
      {"NaN", {MatrixOf({{1, NaN}}), {kAtMost}, {0, 1}, true}, false, 0},
      {"infinite", {MatrixOf({{HUGE_VAL, 1}}), {kAtMost}, {0, 1}, true}, false, 0},
      {"NaN among what plays no part",
       {MatrixOf({{1, 0, 1}, {1, NaN, 1}}), {kAtMost, kAtMost}, {0, -1, 1}, true},
       false,
       0},
      {"overflow", {MatrixOf({{1e300, 1e-5}}), {kAtMost}, {0, 1e300}, true}, false, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TSimplexAndDualMethod Method = MethodFor(Case.Program);
    EXPECT_EQ(Case.Solved, Method.Solve());
    EXPECT_NEAR(Case.Objective, Method.Objective(), 1e-6);
    ASSERT_EQ(Case.Program.C.GetSize(), Method.X().GetSize());
    if (!Case.Solved) {
      EXPECT_EQ(TFloatVector(Case.Program.C.GetSize()), Method.X());
    }
  }
}

TEST(Simplex, CountsRunsAndSaysWhyItGivesUp) {
  const test::TDebugTexts Texts;
  const TProgram Program{MatrixOf({{4, 1, 1}, {6, 1, 3}}), {kAtMost, kAtMost}, {0, 3, 2}, true};
  const std::int64_t Before = SimplexRunCount();
  EXPECT_TRUE(MethodFor(Program).Solve());
  EXPECT_EQ(Before + 1, SimplexRunCount());
  EXPECT_FALSE(MethodFor(Program, false, 1).Solve());
  EXPECT_EQ("TSimplexAndDualMethod: too many pivots", Texts.Last());
}

TEST(Simplex, AssertsTheShape) {
  const TFloatMatrix A = MatrixOf({{1, 2}});
  TFloatVector X{7};
  double Objective = 7.0;
  const auto Solve = [&](const TIntegerVec& Senses, const TFloatVector& C) {
    TLinearProgramMethod::Solve(A, Senses, C, true, false, X, Objective);
  };
  EXPECT_THROW(Solve({kAtMost, kAtMost}, {0, 1}), EAssertionFailed);
  EXPECT_THROW(Solve({0}, {0, 1}), EAssertionFailed);
  EXPECT_THROW(Solve({kAtMost}, {0}), EAssertionFailed);
  EXPECT_EQ((TFloatVector{7}), X);
  EXPECT_TRUE(TLinearProgramMethod::Solve(MatrixOf({{1, 2}}), {8}, {kAtMost}, {3, 3}, true, false,
                                          X, Objective));
  EXPECT_THROW(TLinearProgramMethod::Solve(A, {8}, {kAtMost}, {3}, true, false, X, Objective),
               EAssertionFailed);
  EXPECT_EQ((TFloatVector{8, 0}), X);
  EXPECT_EQ(24.0, Objective);
}

// --- The tableau and its rules ---

/// A method with the tableau of this program, of at-most rows.
TSimplexAndDualMethod TableOf(const TFloatMatrix& A, const TFloatVector& C) {
  const TIntegerVec Senses(std::vector<int>(static_cast<std::size_t>(A.GetRowCnt()), kAtMost));
  TSimplexAndDualMethod Method(A, Senses, C, false, false, false, 0);
  Method.BuiltSimpleTab(A, Senses, C, false);
  return Method;
}

TEST(SimplexTableau, IsBuiltWithASlackForEachRow) {
  TSimplexAndDualMethod Method = TableOf({}, {0});
  Method.BuiltSimpleTab(MatrixOf({{1, 2, 3}, {4, 5, 6}}), {kAtMost, kAtLeast}, {9, 7, -8}, true);
  EXPECT_EQ(MatrixOf({{9, -7, 8, 0, 0}, {1, 2, 3, 1, 0}, {-4, -5, -6, 0, 1}}), Method.Tableau());
}

TEST(SimplexTableau, PivotsLikeAFullTableau) {
  std::mt19937 Random(23);
  const TFloatMatrix A = test::RandomMatrix(Random, 6, 9);
  TSimplexAndDualMethod Method = TableOf(A, test::RandomMatrix(Random, 1, 9).GetRow(0));
  TFloatMatrix Full = Method.Tableau();
  for (int Count = 0; Count < 200; ++Count) {
    const int Row = test::RandomInt(Random, 1, 6);
    const int Column = test::RandomInt(Random, 1, 14);
    const double Element = Full(Row, Column);
    if (std::abs(Element) < 0.01 || Element == 1.0) continue;  // a basic column, mostly
    Method.UpdateSMA(Row, Column);
    Full.SetRow(Row, Full.GetRow(Row) / Element);
    for (int I = 0; I < Full.GetRowCnt(); ++I) {
      if (I != Row) Full.SetRow(I, Full.GetRow(I) - Full.GetRow(Row) * Full(I, Column));
    }
    ASSERT_TRUE(Full.Equls(Method.Tableau(), 1e-6 * Full.GetRow(0).GetAbsMax())) << Count;
  }
  for (int I = 1; I <= 6; ++I) {
    const int Column = I + 8;  // of a slack, perhaps basic
    const int Leaving = Method.FindNewBaseIdxByB(Column);
    EXPECT_TRUE(Leaving == 0 || Full(Leaving, Column) > 0.0);
  }
  EXPECT_THROW(Method.UpdateSMA(0, 1), EAssertionFailed);
  EXPECT_THROW(Method.UpdateSMA(1, 99), EAssertionFailed);
  EXPECT_THROW(Method.AddRelaxColumn(1), EAssertionFailed);  // it has one
  EXPECT_THROW(TableOf(MatrixOf({{1, 0}}), {0, 1}).UpdateSMA(1, 1), EAssertionFailed);
  EXPECT_THROW(TableOf(MatrixOf({{1, 3}}), {0, 1}).UpdateSMA(1, 2), EAssertionFailed);
}

// The same tableau by two ways: the pivots that led to a basis, and that basis alone.
TEST(SimplexTableau, IsFormedAnewFromItsBasis) {
  std::mt19937 Random(24);
  for (int Round = 0; Round < 300; ++Round) {
    SCOPED_TRACE(Round);
    const int Rows = test::RandomInt(Random, 1, 6);
    const int Variables = test::RandomInt(Random, 1, 6);
    TSimplexTableau Start(Rows, Variables);
    for (int I = 0; I <= Rows; ++I) {
      if (I > 0) Start.AddBasicColumn(I);
      for (int J = 0; J <= Variables; ++J) Start.Row(I)[J] = test::RandomInt(Random, -5, 5);
    }
    TSimplexTableau Target = Start;
    for (int Count = 0; Count < 20; ++Count) {
      const int Row = test::RandomInt(Random, 1, Rows);
      const int Column = test::RandomInt(Random, 1, Rows + Variables);
      if (Target.PlaceOf(Column) < 0 || std::abs(Target.Item(Row, Column)) < 0.2) continue;
      Target.Pivot(Row, Column);
    }
    TSimplexTableau Rebuilt;
    ASSERT_TRUE(Start.RebuildAs(Target, Rebuilt));
    for (int I = 0; I <= Rows; ++I) {
      for (int J = 0; J <= Rows + Variables; ++J) {
        ASSERT_NEAR(Target.Item(I, J), Rebuilt.Item(I, J), 1e-7) << I << ", " << J;
      }
    }
  }
}

TEST(SimplexTableau, IsNotFormedAnewByAPivotThatIsAsGoodAsZero) {
  for (const double Element : {0.0, 0.99e-11, -1.01e-11}) {
    TSimplexTableau Start(2, 1);
    Start.AddBasicColumn(1);
    Start.AddBasicColumn(2);
    Start.Row(1)[1] = 1.0;
    TSimplexTableau Target = Start;
    Target.Pivot(1, 1);
    Start.Row(1)[1] = Element;
    Start.Row(2)[1] = 5.0;  // its basic column stays
    TSimplexTableau Rebuilt;
    EXPECT_EQ(Element < 0.0, Start.RebuildAs(Target, Rebuilt)) << Element;
  }
}

// A pivot of a tiny element and the way back leave the tableau off the program by the rounding of
// what it was divided by.
TEST(SimplexTableau, IsHeldAgainstTheProgram) {
  std::mt19937 Random(25);
  for (int Round = 0; Round < 200; ++Round) {
    SCOPED_TRACE(Round);
    const int Rows = test::RandomInt(Random, 2, 5);
    const int Variables = test::RandomInt(Random, 2, 5);
    TFloatMatrix A =
        test::RandomMatrix(Random, Rows, Variables + 1) + TFloatMatrix(Rows, Variables + 1, 1.1);
    A.SetItem(0, 1, 1e-9);
    TFloatVector C =
        test::RandomMatrix(Random, 1, Variables + 1).GetRow(0) - TFloatVector(Variables + 1, 1.1);
    TSimplexAndDualMethod Fresh = TableOf(A, C);
    ASSERT_TRUE(Fresh.SolveBySimplex());
    Fresh.FillSolution();
    TSimplexAndDualMethod Drifted = TableOf(A, C);
    Drifted.UpdateSMA(1, 1);
    Drifted.UpdateSMA(1, Variables + 1);
    ASSERT_TRUE(Drifted.SolveBySimplex());
    Drifted.FillSolution();
    EXPECT_TRUE(Fresh.X().Equls(Drifted.X(), 1e-9));
    EXPECT_NEAR(Fresh.Objective(), Drifted.Objective(), 1e-9);
    EXPECT_TRUE(Fresh.Tableau().GetRow(0).Equls(Drifted.Tableau().GetRow(0), 1e-9));
  }
}

TEST(SimplexRules, ChooseColumnsAndRowsWithTheirMargins) {
  const struct {
    const char* Name;
    TFloatVector Costs;
    int Column;
  } Entering[] = {
      {"most negative", {0, -1, -3, -2}, 2},
      {"tie within the margin", {0, -1, -1 - 0.9e-10, -1}, 1},
      {"just beyond the margin", {0, -1, -1 - 1.1e-10, -1}, 2},
      {"not below the tolerance", {0, -1e-6, -1e-6 - 0.9e-10, 5}, 0},
      {"below it", {0, 1, -1e-6 - 1.1e-10, 5}, 2},
  };
  for (const auto& Case : Entering) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Column, TableOf(MatrixOf({{1, 1, 1, 1}}), Case.Costs).GetColCNMinNegative());
  }
  const struct {
    const char* Name;
    TFloatMatrix A;
    int ByB;           // leaving row for column 1
    int MostNegative;  // row of the least right-hand side
  } Leaving[] = {
      {"least ratio", MatrixOf({{4, 1}, {4, 2}, {9, 3}}), 2, 0},
      {"tie within the margin", MatrixOf({{4, 2}, {2 - 0.9e-10, 1}}), 1, 0},
      {"just beyond", MatrixOf({{4, 2}, {2 - 1.1e-10, 1}}), 2, 0},
      {"elements at the tolerance", MatrixOf({{4, 1e-6}, {4, -2}}), 0, 0},
      {"negative sides", MatrixOf({{-1, 0}, {-2, 0}, {-2 - 0.9e-10, 0}}), 0, 2},
      {"barely negative", MatrixOf({{-1e-6, 0}, {-1.1e-6, 0}}), 0, 2},
  };
  for (const auto& Case : Leaving) {
    SCOPED_TRACE(Case.Name);
    const TSimplexAndDualMethod Method = TableOf(Case.A, {0, 1});
    EXPECT_EQ(Case.ByB, Method.FindNewBaseIdxByB(1));
    EXPECT_EQ(Case.MostNegative, Method.GetRowBMinNegative());
  }
  const TFloatMatrix Row = MatrixOf({{-1, -1, -2, -1e-6, 5}});
  EXPECT_EQ(2, TableOf(Row, {0, 3, 4, 0, 0}).FindNewBaseIdxByCN(1));
  EXPECT_EQ(1, TableOf(Row, {0, 2, 4 - 1e-10, 0, 0}).FindNewBaseIdxByCN(1));
  EXPECT_EQ(0, TableOf(MatrixOf({{-1, 1}}), {0, 3}).FindNewBaseIdxByCN(1));
  EXPECT_EQ(2, TSimplexAndDualMethod::GetVecDivMinValueId({1, 5, -4, -4}, {0.5, 1e-6, 2, 2}));
  EXPECT_EQ(-1, TSimplexAndDualMethod::GetVecDivMinValueId({1, 2}, {0, -1e-6}));
  EXPECT_EQ(1, TSimplexAndDualMethod::GetVecDivMinValueId({std::nan(""), 5}, {1, 1}));
}

TEST(SimplexTableau, ComesBackFromChangedCosts) {
  TSimplexAndDualMethod Method = TableOf(MatrixOf({{-4, -2, -1}, {9, 3, 1}}), {5, -2, 3});
  const TFloatMatrix Before = Method.Tableau();
  EXPECT_FALSE(Method.CheckReducedCostAllPositive());
  EXPECT_FALSE(Method.CheckObjValueAllPositive());
  ASSERT_TRUE(Method.ChangeSMA());
  EXPECT_EQ((TFloatVector{0, 0, 3, 0, 0}), Method.Tableau().GetRow(0));
  Method.UpdateSMA(1, 1);
  Method.RestoreCosts();
  EXPECT_EQ((TFloatVector{-1, 0, 4, -1, 0}), Method.Tableau().GetRow(0));
  EXPECT_FALSE(TableOf(MatrixOf({{1, 1}}), {0, 1}).ChangeSMA());
}

TEST(SimplexTableau, ChangesCostsInAnyBasis) {
  TSimplexAndDualMethod Method = TableOf(MatrixOf({{4, 1, 1}, {6, 1, 3}}), {0, -3, -2});
  Method.UpdateSMA(1, 2);
  ASSERT_TRUE(Method.ChangeSMA());
  ASSERT_TRUE(Method.SolveByDualSimplex());
  Method.RestoreCosts();
  ASSERT_TRUE(Method.SolveBySimplex());
  Method.FillSolution();
  EXPECT_NEAR(-12.0, Method.Objective(), 1e-9);
}

}  // namespace
}  // namespace tarnalgo
