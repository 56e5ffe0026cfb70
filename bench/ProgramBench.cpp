#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#ifdef TARNALGO_BENCH_GLPK
#include <glpk.h>
#endif
#ifdef TARNALGO_BENCH_CLP
#include <ClpSimplex.hpp>
#include <CoinPackedMatrix.hpp>
#endif

#include "geometryAlgo/UDualSimplex.h"

// Random dense programs: at most (a greatest value under limits, which starts feasible) or at least
// (a least cost that covers demands, which starts dual feasible); the same in whole numbers.

namespace tarnalgo {
namespace {

struct TProgram {
  TFloatMatrix A;
  TIntegerVec Senses;
  TFloatVector C;
  bool Maximise;
};

TProgram AtMostProgram(int Rows, int Variables, double Most) {
  std::mt19937 Random(7);
  std::uniform_int_distribution<int> Cost(1, 100);
  TProgram Result{TFloatMatrix(Rows, Variables + 1), TIntegerVec(Rows), TFloatVector(Variables + 1),
                  true};
  for (int J = 1; J <= Variables; ++J) Result.C.SetItem(J, Cost(Random));
  for (int I = 0; I < Rows; ++I) {
    double Sum = 0.0;
    for (int J = 1; J <= Variables; ++J) {
      Result.A.SetItem(I, J, Cost(Random));
      Sum += Result.A(I, J);
    }
    Result.A.SetItem(I, 0, Sum / 2.0);
    Result.Senses.SetItem(I, kAtMost);
  }
  if (Most > 0.0) {
    TInequalityDataList Bounds;
    for (int J = 1; J <= Variables; ++J) Bounds.AddData(J, Most, kAtMost);
    Bounds.AddDatato(Result.A, Result.Senses);
  }
  return Result;
}

TProgram AtLeastProgram(int Rows, int Variables) {
  TProgram Result = AtMostProgram(Rows, Variables, 0.0);
  Result.Maximise = false;
  for (int I = 0; I < Rows; ++I) Result.Senses.SetItem(I, kAtLeast);
  return Result;
}

/// Each row is covered by about a third of the variables.
TProgram CoveringProgram(int Rows, int Variables) {
  std::mt19937 Random(9);
  TProgram Result = AtLeastProgram(Rows, Variables);
  for (int I = 0; I < Rows; ++I) {
    for (int J = 1; J <= Variables; ++J) Result.A.SetItem(I, J, Random() % 3 == 0 ? 1.0 : 0.0);
    Result.A.SetItem(I, 1 + static_cast<int>(Random() % static_cast<unsigned>(Variables)), 1.0);
    Result.A.SetItem(I, 0, 1.0);
  }
  return Result;
}

void Ours(benchmark::State& State, const TProgram& Program, bool Integer) {
  TFloatVector X;
  double Objective = 0.0;
  for (auto _ : State) {
    const bool Solved = TLinearProgramMethod::Solve(Program.A, Program.Senses, Program.C,
                                                    Program.Maximise, Integer, X, Objective);
    if (!Solved) State.SkipWithError("not solved");
  }
  State.counters["objective"] = Objective;
}

#ifdef TARNALGO_BENCH_GLPK
glp_prob* MakeGlpk(const TProgram& Program, bool Integer) {
  glp_prob* const Result = glp_create_prob();
  const int Rows = Program.A.GetRowCnt();
  const int Variables = Program.C.GetSize() - 1;
  glp_set_obj_dir(Result, Program.Maximise ? GLP_MAX : GLP_MIN);
  glp_add_rows(Result, Rows);
  glp_add_cols(Result, Variables);
  for (int J = 1; J <= Variables; ++J) {
    glp_set_col_bnds(Result, J, GLP_LO, 0.0, 0.0);
    glp_set_obj_coef(Result, J, Program.C[J]);
    if (Integer) glp_set_col_kind(Result, J, GLP_IV);
  }
  for (int I = 1; I <= Rows; ++I) {
    const double Side = Program.A(I - 1, 0);
    glp_set_row_bnds(Result, I, Program.Senses[I - 1] == kAtMost ? GLP_UP : GLP_LO, Side, Side);
    std::vector<int> Columns(1);
    std::vector<double> Values(1);
    for (int J = 1; J <= Variables; ++J) {
      if (Program.A(I - 1, J) == 0.0) continue;
      Columns.push_back(J);
      Values.push_back(Program.A(I - 1, J));
    }
    glp_set_mat_row(Result, I, static_cast<int>(Columns.size()) - 1, Columns.data(), Values.data());
  }
  return Result;
}

void Glpk(benchmark::State& State, const TProgram& Program, bool Integer) {
  glp_term_out(GLP_OFF);
  double Objective = 0.0;
  for (auto _ : State) {
    glp_prob* const Problem = MakeGlpk(Program, Integer);
    glp_simplex(Problem, nullptr);
    if (Integer) glp_intopt(Problem, nullptr);
    Objective = Integer ? glp_mip_obj_val(Problem) : glp_get_obj_val(Problem);
    glp_delete_prob(Problem);
  }
  State.counters["objective"] = Objective;
}
#endif

#ifdef TARNALGO_BENCH_CLP
void Clp(benchmark::State& State, const TProgram& Program, bool) {
  const int Rows = Program.A.GetRowCnt();
  const int Variables = Program.C.GetSize() - 1;
  double Objective = 0.0;
  for (auto _ : State) {
    CoinPackedMatrix Matrix(false, 0.0, 0.0);
    Matrix.setDimensions(0, Variables);
    std::vector<double> Low;
    std::vector<double> High;
    for (int I = 0; I < Rows; ++I) {
      std::vector<int> Columns;
      std::vector<double> Values;
      for (int J = 1; J <= Variables; ++J) {
        Columns.push_back(J - 1);
        Values.push_back(Program.A(I, J));
      }
      Matrix.appendRow(Variables, Columns.data(), Values.data());
      const bool IsAtMost = Program.Senses[I] == kAtMost;
      Low.push_back(IsAtMost ? -COIN_DBL_MAX : Program.A(I, 0));
      High.push_back(IsAtMost ? Program.A(I, 0) : COIN_DBL_MAX);
    }
    ClpSimplex Model;
    Model.setLogLevel(0);
    const std::vector<double> Zeros(static_cast<std::size_t>(Variables));
    const std::vector<double> Highest(static_cast<std::size_t>(Variables), COIN_DBL_MAX);
    Model.loadProblem(Matrix, Zeros.data(), Highest.data(), Program.C.Data() + 1, Low.data(),
                      High.data());
    Model.setOptimizationDirection(Program.Maximise ? -1.0 : 1.0);
    if (Program.Maximise) {
      Model.primal();
    } else {
      Model.dual();
    }
    Objective = Model.objectiveValue();
  }
  State.counters["objective"] = Objective;
}
#endif

using TRun = void (*)(benchmark::State& State, const TProgram& Program, bool Integer);

void Register(const std::string& Job, const char* Who, int Size, TRun Run, const TProgram& Program,
              bool Integer) {
  const std::string Name = Job + "/" + Who + "/" + std::to_string(Size);
  benchmark::RegisterBenchmark(Name.c_str(), [Run, Program, Integer](benchmark::State& State) {
    Run(State, Program, Integer);
  })->Unit(benchmark::kMicrosecond);
}

void RegisterJob(const std::string& Job, int Size, const TProgram& Program, bool Integer) {
  Register(Job, "ours", Size, Ours, Program, Integer);
#ifdef TARNALGO_BENCH_GLPK
  Register(Job, "GLPK", Size, Glpk, Program, Integer);
#endif
#ifdef TARNALGO_BENCH_CLP
  if (!Integer) Register(Job, "CLP", Size, Clp, Program, Integer);
#endif
}

}  // namespace
}  // namespace tarnalgo

int main(int ArgCount, char** Args) {
  using namespace tarnalgo;
  for (const int Size : {50, 200, 500}) {
    RegisterJob("Linear program/at most, dense", Size, AtMostProgram(Size, Size, 0.0), false);
    RegisterJob("Linear program/at least, dense", Size, AtLeastProgram(Size, Size), false);
  }
  RegisterJob("Integer program/knapsack, 3 rows", 10, AtMostProgram(3, 10, 1.0), true);
  RegisterJob("Integer program/knapsack, 5 rows", 30, AtMostProgram(5, 30, 1.0), true);
  RegisterJob("Integer program/covering, 8 rows", 10, CoveringProgram(8, 10), true);
  RegisterJob("Integer program/covering, 15 rows", 30, CoveringProgram(15, 30), true);
  benchmark::Initialize(&ArgCount, Args);
  benchmark::RunSpecifiedBenchmarks();
}
