#pragma once  // tests/support/Programs.h

#include <random>
#include <vector>

#include "geometryAlgo/UDualSimplex.h"
#include "tests/support/Generate.h"

namespace tarnalgo::test {

/// A program as the solver takes it.
struct TProgram {
  TFloatMatrix A;
  TIntegerVec Senses;
  TFloatVector C;
  bool Maximise = false;

  int Variables() const { return C.GetSize() - 1; }

  bool HoldsRow(int Row, const TFloatVector& X, double Slack) const {
    double Sum = -A(Row, 0);
    for (int J = 1; J < A.GetColCnt(); ++J) Sum += A(Row, J) * X[J];
    return Sum * Senses[Row] >= -Slack;
  }

  /// Whether `X` keeps every constraint, but for `Slack`.
  bool Holds(const TFloatVector& X, double Slack) const {
    for (int J = 1; J < X.GetSize(); ++J) {
      if (!(X[J] >= -Slack)) return false;  // NaN neither
    }
    for (int I = 0; I < A.GetRowCnt(); ++I) {
      if (!HoldsRow(I, X, Slack)) return false;
    }
    return true;
  }
};

/// Small whole numbers: ties, redundant rows and degenerate corners come by themselves.
inline TProgram RandomProgram(std::mt19937& Random, int Rows, int Variables) {
  TProgram Result;
  Result.A = TFloatMatrix(Rows, Variables + 1);
  Result.Senses = TIntegerVec(Rows);
  Result.C = TFloatVector(Variables + 1);
  Result.Maximise = RandomInt(Random, 0, 1) == 1;
  for (int I = 0; I < Rows; ++I) {
    Result.Senses.SetItem(I, RandomInt(Random, 0, 2) == 0 ? kAtLeast : kAtMost);
    Result.A.SetItem(I, 0, RandomInt(Random, -4, 9));
    for (int J = 1; J <= Variables; ++J) Result.A.SetItem(I, J, RandomInt(Random, -2, 5));
  }
  for (int J = 0; J <= Variables; ++J) Result.C.SetItem(J, RandomInt(Random, -3, 4));
  return Result;
}

/// Bounds each variable by `Most`.
inline void BoundVariables(TProgram& Program, double Most) {
  TInequalityDataList Bounds;
  for (int J = 1; J <= Program.Variables(); ++J) Bounds.AddData(J, Most, kAtMost);
  Bounds.AddDatato(Program.A, Program.Senses);
}

}  // namespace tarnalgo::test
