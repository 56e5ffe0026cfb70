#include <vector>

#include "geometryAlgo/UDualSimplex.h"
#include "geometryAlgo/UMatrixAlgo.h"
#include "tests/starved/Starve.h"
#include "tests/support/TempFile.h"

namespace tarnalgo::test {
namespace {

/// Symmetric, positive definite and diagonally dominant: every solver takes it.
TFloatMatrix Sound(int Size) {
  TFloatMatrix A(Size, Size);
  for (int I = 0; I < Size; ++I) {
    for (int J = 0; J < Size; ++J) A.SetItem(I, J, I == J ? 2.0 * Size : 1.0 / (1.0 + I + J));
  }
  return A;
}

TFloatVector Ramp(int Size) {
  TFloatVector V(Size);
  for (int I = 0; I < Size; ++I) V.SetItem(I, I - 2.5);
  return V;
}

struct TSystem {
  explicit TSystem(int Size) : A(Sound(Size)), B(Ramp(Size)) {}
  TFloatMatrix A;
  TFloatVector B;
  TFloatMatrix L{TFloatMatrix(1)};
  TFloatMatrix U{TFloatMatrix(2)};
  TFloatVector X{7.0};
  TFloatVector W{8.0};
  std::vector<int> Order{9};
  auto State() const { return std::tie(A, B, L, U, X, W, Order); }
};

TEST(StarvedAlgebra, Matrices) {
  const auto Make = [] { return std::make_unique<TSystem>(6); };
  const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
  On("Resize", [](TSystem& S) { S.A.Resize(9, 3); });
  On("SetRowCnt", [](TSystem& S) { S.A.SetRowCnt(9); });
  On("TryReverse", [](TSystem& S) { return S.A.TryReverse(); });
  On("ExpandAColumn", [](TSystem& S) { S.A.ExpandAColumn(S.B); });
  On("ExpandARow", [](TSystem& S) { S.A.ExpandARow(S.B); });
  On("ExpandColumns", [](TSystem& S) { S.A.ExpandColumns(S.A); });
  On("ExpandRows", [](TSystem& S) { S.A.ExpandRows(S.A); });
  On("ExceptColumns", [](TSystem& S) { S.A.ExceptColumns({1, 3}); });
  On("ExceptRows", [](TSystem& S) { S.A.ExceptRows({1, 3}); });
  On("ExceptLastRows", [](TSystem& S) { S.A.ExceptLastRows(2); });
  On("ExceptLastColumns", [](TSystem& S) { S.A.ExceptLastColumns(2); });
  On("RemoveZeroColumns", [](TSystem& S) { S.A.RemoveZeroColumns(); });
  On("RemoveZeroRows", [](TSystem& S) { S.A.RemoveZeroRows(); });
  On("GetRow", [](TSystem& S) { S.A.GetRow(1, S.X); });
  On("SetSize", [](TSystem& S) { S.B.SetSize(9); });
  On("Expand", [](TSystem& S) { S.B.Expand(3.0); });
  On("Expand itself", [](TSystem& S) { S.B.Expand(S.B); });
  On("Normalize", [](TSystem& S) { S.B.Normalize(); });
  On("new ones", [](TSystem& S) {
    return std::tuple(S.A + S.A, S.A * S.A, S.A * S.B, S.A.AAT(), S.A.Transpose(), -S.A, S.A / 2.0,
                      S.A.SubMatrix(1, 1, 2, 2), S.A.UpperTriangleMat(), S.A.Determinant(),
                      TFloatMatrix(S.B, S.B), S.B + S.B, S.B * S.B, S.B.ExceptItem(1));
  });
}

TEST(StarvedAlgebra, Decompositions) {
  for (const int Size : {5, 70}) {
    SCOPED_TRACE(Size);
    const auto Make = [Size] { return std::make_unique<TSystem>(Size); };
    using TTool = TMatrixDCMPTool;
    Starve("PLU", Make, [](TSystem& S) { TTool::PLU(S.A, S.Order); });
    Starve("LUCMPExt", Make, [](TSystem& S) { TTool::LUCMPExt(S.A, S.L, S.U, S.Order); });
    Starve("inverse", Make, [](TSystem& S) { return TTool::GetInverseMatrixByLu(S.A, S.L); });
    Starve("triangle", Make, [](TSystem& S) {
      return TTool::GetInverseofUpperTriMatrix(S.A.UpperTriangleMat(), S.U);
    });
    Starve("QRDCMP", Make, [](TSystem& S) { TTool::QRDCMP(S.A, S.L, S.U); });
    Starve("Gram-Schmidt", Make, [](TSystem& S) { return TTool::GetOrthoByGramSchmidt(S.A); });
    if (Size > 5) continue;
    Starve("SVDCMP", Make, [](TSystem& S) { TTool::SVDCMP(S.A, S.L, S.U, S.W); });
  }
}

TEST(StarvedAlgebra, Solvers) {
  for (const int Size : {6, 80}) {
    SCOPED_TRACE(Size);
    const auto Make = [Size] { return std::make_unique<TSystem>(Size); };
    const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
    using TTool = TLinearSolveTool;
    On("Gaussian", [](TSystem& S) { return TTool::Gaussian(S.X, S.A, S.B); });
    On("LDLT", [](TSystem& S) { return TTool::LDLT(S.X, S.A, S.B); });
    On("Cholesky", [](TSystem& S) { return TTool::Cholesky(S.X, S.A, S.B); });
    On("ConjugateGradient", [](TSystem& S) { return TTool::ConjugateGradient(S.X, S.A, S.B); });
    On("SSOR", [](TSystem& S) { return TTool::SSOR(S.X, S.A, S.B); });
    On("SolveLeastSquares",
       [](TSystem& S) { return TTool::SolveLeastSquares(S.A, S.B, S.X, S.W); });
  }
}

TEST(StarvedAlgebra, TextFiles) {
  struct TSubject {
    TSubject() { Sound(3).SaveToFile(File.Path()); }
    TTempFile File;
    TFloatMatrix A = Sound(4);
    auto State() const { return std::pair(A, File.Read()); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  Starve("SaveToFile", Make, [](TSubject& S) { S.A.SaveToFile(S.File.Path()); });
  Starve("SaveToFile", Make, [](TSubject& S) { Ramp(5).SaveToFile(S.File.Path(), true); });
  Starve("LoadFromFile", Make, [](TSubject& S) { S.A.LoadFromFile(S.File.Path()); });
  Starve("TestShow", Make, [](TSubject& S) { S.A.TestShow(); });
}

/// max 3x + 2y + z, neither corner feasible at the start, an at-least row among the others.
struct TProgram {
  TFloatMatrix A{4, 4};
  TIntegerVec Senses{kAtMost, kAtMost, kAtLeast, kAtMost};
  TFloatVector C{0.0, 3.0, 2.0, 1.0};
  TFloatVector X{5.0};
  double Objective = 6.0;

  TProgram() {
    const double Rows[4][4] = {{7.5, 1, 1, 1}, {9, 1, 3, 0}, {1, 1, 1, 0}, {5.5, 2, 0, 1}};
    for (int I = 0; I < 4; ++I) {
      for (int J = 0; J < 4; ++J) A.SetItem(I, J, Rows[I][J]);
    }
  }
  auto State() const { return std::tie(A, C, X, Objective); }
};

TEST(StarvedAlgebra, Programs) {
  const auto Make = [] { return std::make_unique<TProgram>(); };
  for (const bool Integer : {false, true}) {
    Starve("TLinearProgramMethod", Make, [Integer](TProgram& P) {
      return TLinearProgramMethod::Solve(P.A, P.Senses, P.C, true, Integer, P.X, P.Objective);
    });
    Starve("sides apart", Make, [Integer](TProgram& P) {
      const TFloatVector B = P.A.GetColumn(0);
      return TLinearProgramMethod::Solve(P.A.SubMatrix(0, 1, 4, 3), B, P.Senses, P.C.ExceptItem(0),
                                         true, Integer, P.X, P.Objective);
    });
  }
  struct TBounds {
    TProgram Program;
    TInequalityDataList Bounds;
    TIntegerVec Senses = Program.Senses;
    TBounds() { Bounds.AddData(1, 2.0, kAtMost); }
    auto State() const { return std::tuple(Program, Senses.GetSize(), Bounds.Count()); }
  };
  const auto MakeBounds = [] { return std::make_unique<TBounds>(); };
  Starve("AddData", MakeBounds, [](TBounds& S) { S.Bounds.AddData(2, 1.0, kAtLeast); });
  Starve("AddDatato", MakeBounds, [](TBounds& S) { S.Bounds.AddDatato(S.Program.A, S.Senses); });
}

TEST(StarvedAlgebra, ProgramsInSteps) {
  struct TSubject {
    TProgram Program;
    TSimplexAndDualMethod Method;
    explicit TSubject(bool Integer, bool Revised)
        : Method(Program.A, Program.Senses, Program.C, true, Integer, Revised, 0) {
      Method.BuiltSimpleTab(Program.A, Program.Senses, Program.C, true);
    }
    auto State() const { return std::tuple(Method.X(), Method.Objective(), Method.Tableau()); }
  };
  for (const bool Integer : {false, true}) {
    for (const bool Revised : {false, true}) {
      const auto Make = [=] { return std::make_unique<TSubject>(Integer, Revised); };
      Starve(
          "Solve", Make, [](TSubject& S) { return S.Method.Solve(); }, TPromise::Usable);
    }
  }
  const auto Make = [] { return std::make_unique<TSubject>(false, true); };
  const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
  On("BuiltSimpleTab", [](TSubject& S) {
    S.Method.BuiltSimpleTab(S.Program.A.SubMatrix(0, 0, 2, 4), {kAtMost, kAtLeast}, S.Program.C,
                            false);
  });
  On("ChangeSMA", [](TSubject& S) {
    const bool IsChanged = S.Method.ChangeSMA();
    return IsChanged;
  });
  On("SetWValue", [](TSubject& S) { S.Method.SetWValue(); });
  On("InitXVec", [](TSubject& S) { S.Method.InitXVec(9); });
  On("FillSolution", [](TSubject& S) { S.Method.FillSolution(); });
  On("SetIntegerColumns", [](TSubject& S) { S.Method.SetIntegerColumns({0, 1, 0, 1}); });
  On("texts", [](TSubject& S) { S.Method.PrintFMA(); });
  Starve(
      "SolveByDualSimplex", Make,
      [](TSubject& S) {
        S.Method.BuiltSimpleTab(S.Program.A, S.Program.Senses, S.Program.C, true);
        S.Method.ChangeSMA();
        return S.Method.SolveByDualSimplex();
      },
      TPromise::Usable);
}

}  // namespace
}  // namespace tarnalgo::test
