// Linear and integer programs of small whole numbers: every method gives the answer that all
// corners, or all whole points of a box, give. Programs of any numbers only have to end.

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/Exact.h"
#include "geometryAlgo/UDualSimplex.h"
#include "tests/support/Programs.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using fuzz::TWholeRow;
using test::TProgram;

constexpr int kBox = 3;                // of integer variables
constexpr std::int64_t kFar = 100000;  // beyond every corner

double ValueOf(const TProgram& Program, const TFloatVector& X) {
  return Program.C[0] + Program.C * X;
}

TProgram MakeProgram(TBytes& Bytes, bool IsWild) {
  const int Rows = 1 + Bytes.Below(4);
  const int Variables = 1 + Bytes.Below(3);
  const auto Number = [&] { return IsWild ? Bytes.Anything() : Bytes.Below(11) - 4; };
  TProgram Result{TFloatMatrix(Rows, Variables + 1), TIntegerVec(Rows), TFloatVector(Variables + 1),
                  Bytes.Below(2) == 1};
  for (int I = 0; I < Rows; ++I) {
    Result.Senses.SetItem(I, Bytes.Below(3) == 0 ? kAtLeast : kAtMost);
    for (int J = 0; J <= Variables; ++J) Result.A.SetItem(I, J, Number());
  }
  for (int J = 0; J <= Variables; ++J) Result.C.SetItem(J, Number());
  return Result;
}

/// Coefficients of `x`, then the right-hand side of at most.
std::vector<TWholeRow> PlanesOf(const TProgram& Program) {
  const auto Variables = static_cast<std::size_t>(Program.Variables());
  std::vector<TWholeRow> Planes;
  for (int I = 0; I < Program.A.GetRowCnt(); ++I) {
    TWholeRow& Plane = Planes.emplace_back();
    for (int J = 1; J <= Program.Variables(); ++J) {
      Plane.push_back(std::llround(-Program.Senses[I] * Program.A(I, J)));
    }
    Plane.push_back(std::llround(-Program.Senses[I] * Program.A(I, 0)));
  }
  for (std::size_t J = 0; J < Variables; ++J) {
    Planes.emplace_back(Variables + 1);
    Planes.back()[J] = -1;
  }
  Planes.emplace_back(Variables + 1, 1);
  Planes.back().back() = kFar;
  return Planes;
}

/// The best corner; none where the program is infeasible or a corner on the far plane is better.
std::optional<double> BestCorner(const TProgram& Program) {
  const std::vector<TWholeRow> Planes = PlanesOf(Program);
  std::vector<bool> Chosen(Planes.size());
  std::fill_n(Chosen.begin(), Program.Variables(), true);
  std::optional<double> Best;
  std::optional<double> BestFar;
  do {
    std::vector<TWholeRow> Meeting;
    TWholeRow Right;
    for (std::size_t K = 0; K < Planes.size(); ++K) {
      if (!Chosen[K]) continue;
      Meeting.emplace_back(Planes[K].begin(), Planes[K].end() - 1);
      Right.push_back(Planes[K].back());
    }
    const fuzz::TWholeSolution Corner = fuzz::Cramer(Meeting, Right);
    const bool Holds = std::all_of(Planes.begin(), Planes.end(), [&](const TWholeRow& Plane) {
      std::int64_t Rest = Plane.back() * Corner.Divisor;
      for (std::size_t J = 0; J < Corner.X.size(); ++J) Rest -= Plane[J] * Corner.X[J];
      return Rest >= 0;
    });
    if (Corner.Divisor == 0 || !Holds) continue;
    TFloatVector X(1);
    for (const std::int64_t Item : Corner.X) {
      X.Expand(static_cast<double>(Item) / static_cast<double>(Corner.Divisor));
    }
    std::optional<double>& Least = Chosen.back() ? BestFar : Best;
    const double Cost = Program.Maximise ? -ValueOf(Program, X) : ValueOf(Program, X);
    if (!Least || Cost < *Least) Least = Cost;
  } while (std::prev_permutation(Chosen.begin(), Chosen.end()));
  if (!Best || (BestFar && *BestFar < *Best - 1e-6)) return {};
  return Program.Maximise ? -*Best : *Best;
}

/// The best of all whole points of the box.
std::optional<double> BestWholePoint(const TProgram& Program) {
  std::optional<double> Best;
  TFloatVector X(Program.C.GetSize());
  for (int Rest = 0; Rest < 1 << (2 * Program.Variables()); ++Rest) {
    for (int J = 1; J <= Program.Variables(); ++J) X.SetItem(J, (Rest >> (2 * J - 2)) % (kBox + 1));
    if (!Program.Holds(X, 0.0)) continue;
    const double Value = ValueOf(Program, X);
    if (!Best || (Program.Maximise ? Value > *Best : Value < *Best)) Best = Value;
  }
  return Best;
}

void CheckAnswer(const TProgram& Program, const std::optional<double>& Due, bool IsSolved,
                 const TFloatVector& X, double Objective) {
  Require(IsSolved == Due.has_value(), "a program is solved where it has a best point");
  Require(X.GetSize() == Program.C.GetSize() && X[0] == 0.0, "a solution has the size");
  Require(std::abs(Objective - Due.value_or(0.0)) < 1e-8, "the objective is the best");
  if (!IsSolved) return Require(X.GetAbsMax() == 0.0, "without a solution it is zeros");
  Require(Program.Holds(X, 1e-8), "a solution keeps the constraints");
  Require(std::abs(ValueOf(Program, X) - Objective) < 1e-8,
          "the objective is that of the solution");
}

/// One method on the tableau as built, where it may start there.
void CheckOneMethod(const TProgram& Program, const std::optional<double>& Due) {
  TSimplexAndDualMethod Method(Program.A, Program.Senses, Program.C, Program.Maximise, false, false,
                               0);
  const auto Run = [&](bool (TSimplexAndDualMethod::*Solve)(), bool IsAllowed) {
    if (!IsAllowed) return;
    Method.BuiltSimpleTab(Program.A, Program.Senses, Program.C, Program.Maximise);
    Method.InitXVec(Program.C.GetSize());
    const bool IsSolved = (Method.*Solve)();
    if (IsSolved) Method.FillSolution();
    CheckAnswer(Program, Due, IsSolved, Method.X(), Method.Objective());
  };
  Method.BuiltSimpleTab(Program.A, Program.Senses, Program.C, Program.Maximise);
  const bool IsDual = Method.CheckReducedCostAllPositive();
  const bool IsPrimal = Method.CheckObjValueAllPositive();
  Run(&TSimplexAndDualMethod::SolveBySimplex, IsPrimal);
  Run(&TSimplexAndDualMethod::SolveByRevisedSimplex, IsPrimal);
  Run(&TSimplexAndDualMethod::SolveByDualSimplex, IsDual);
}

void CheckFrontEnd(const TProgram& Program, const std::optional<double>& Due, bool IsInteger) {
  for (const bool Revised : {false, true}) {
    TSimplexAndDualMethod Method(Program.A, Program.Senses, Program.C, Program.Maximise, IsInteger,
                                 Revised, 0);
    const bool IsSolved = Method.Solve();
    CheckAnswer(Program, Due, IsSolved, Method.X(), Method.Objective());
    int Index = 0;
    Require(!IsInteger || Method.IsInteger(Index), "an integer solution is whole");
  }
  const int Rows = Program.A.GetRowCnt();
  TFloatVector X;
  double Objective = 0.0;
  const bool IsSolved = TLinearProgramMethod::Solve(
      Program.A.SubMatrix(0, 1, Rows, Program.Variables()), Program.A.GetColumn(0), Program.Senses,
      Program.C.ExceptItem(0), Program.Maximise, IsInteger, X, Objective);
  TFloatVector Whole(1);
  Whole.Expand(X);
  if (IsSolved) Objective += Program.C[0];
  CheckAnswer(Program, Due, IsSolved, Whole, Objective);
}

void Survive(const TProgram& Program, bool IsInteger) {
  TSimplexAndDualMethod Method(Program.A, Program.Senses, Program.C, Program.Maximise, IsInteger,
                               false, 100);
  if (!Method.Solve()) return Require(Method.X().GetAbsMax() == 0.0, "no solution is zeros");
  Require(std::isfinite(Method.Objective()) && std::isfinite(Method.X().Norm1()),
          "a solution is finite");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const int Kind = Bytes.Below(4);
  TProgram Program = MakeProgram(Bytes, Kind == 0);
  if (Kind == 0) {
    Survive(Program, false);
    Survive(Program, true);
    return 0;
  }
  const std::optional<double> Due = BestCorner(Program);
  CheckFrontEnd(Program, Due, false);
  CheckOneMethod(Program, Due);
  if (Kind > 1) return 0;
  TInequalityDataList Bounds;
  for (int J = 1; J <= Program.Variables(); ++J) Bounds.AddData(J, kBox, kAtMost);
  Bounds.AddDatato(Program.A, Program.Senses);
  CheckFrontEnd(Program, BestWholePoint(Program), true);
  return 0;
}
