#include <algorithm>
#include <array>
#include <cmath>
#include <queue>
#include <utility>
#include <vector>

#include "geometryAlgo/UDualSimplex/SimplexAndDualMethod.h"
#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

constexpr int kNoRowLine = 731;
constexpr int kNoColumnLine = 734;

/// Programs that the search solves before a dive goes along: small ones are better off alone.
constexpr int kProgramsAlone = 32;

/// A program to solve: the bounds that are added, and the objective without the last of them,
/// which it cannot improve on.
struct TNode {
  TInequalityDataList Bounds;
  double Limit;
};

/// The two halves of a program on either side of `Value`, cut towards zero, at-most first.
std::array<TNode, 2> HalvesOf(const TInequalityDataList& Bounds, double Objective, int Variable,
                              double Value) {
  const double Whole = std::trunc(Value);
  TInequalityDataList AtMost = Bounds.Clone();
  AtMost.AddData(Variable, Whole, kAtMost);
  TInequalityDataList AtLeast = Bounds.Clone();
  AtLeast.AddData(Variable, Whole + 1.0, kAtLeast);
  return {TNode{std::move(AtMost), Objective}, TNode{std::move(AtLeast), Objective}};
}

/// The best whole solution so far.
struct TIncumbent {
  bool Maximise;
  bool Exists;
  TFloatVector X;
  double Objective;

  /// `Value` is beyond the objective by more than the tie margin, on the better or worse side.
  bool IsBeatenBy(double Value) const { return Gain(Value) > Margin(); }
  bool Beats(double Value) const { return Gain(Value) < -Margin(); }

 private:
  double Gain(double Value) const { return Maximise ? Value - Objective : Objective - Value; }
  double Margin() const { return kPivotTieMargin * std::max(1.0, std::abs(Objective)); }
};

/// The program whose variables are to be whole numbers.
struct TWholeProgram {
  TSimplexAndDualMethod& Method;
  const TFloatMatrix& A;
  const TIntegerVec& Senses;
  const TFloatVector& Costs;
  bool Maximise;

  bool SolveWith(const TInequalityDataList& Bounds) const {
    TFloatMatrix Bounded = A;  // takes a buffer of its own when it grows
    TIntegerVec BoundedSenses = Senses;
    Bounds.AddDatato(Bounded, BoundedSenses);
    return Method.Solve(Bounded, BoundedSenses, Costs, Maximise);
  }
};

/// The same halves depth first, the one on the nearer side of the value before the other: finds
/// good whole solutions long before a search breadth first comes to any. What cannot lead to one as
/// good needs no look; which of the best ones is the answer is not for the dive to say, unless the
/// search is cut short.
class TDive {
 public:
  TDive(const TWholeProgram& Program, int Variable, double Value)
      : FProgram(Program), FBest{Program.Maximise, false, {}, 0.0} {
    Push({}, Program.Method.Objective(), Variable, Value);
  }

  /// Solves one more program, if there is one that might lead to a better solution.
  void Step() {
    while (!FStack.empty()) {
      const TNode Current = std::move(FStack.back());
      FStack.pop_back();
      if (FBest.Exists && !FBest.IsBeatenBy(Current.Limit)) continue;
      if (FProgram.SolveWith(Current.Bounds)) Look(Current.Bounds);
      return;
    }
  }
  /// A whole solution is known that beats all that a program of this objective leads to.
  bool RulesOut(double Objective) const { return FBest.Exists && FBest.Beats(Objective); }
  /// The best solution met.
  const TIncumbent& Best() const { return FBest; }

 private:
  void Look(const TInequalityDataList& Bounds) {
    const double Objective = FProgram.Method.Objective();
    if (FBest.Exists && !FBest.IsBeatenBy(Objective)) return;
    int Fractional = -1;
    if (FProgram.Method.IsInteger(Fractional)) {
      FBest.Exists = true;
      FBest.X = FProgram.Method.X();
      FBest.Objective = Objective;
    } else {
      Push(Bounds, Objective, Fractional, FProgram.Method.X()[Fractional]);
    }
  }
  void Push(const TInequalityDataList& Bounds, double Objective, int Variable, double Value) {
    auto Halves = HalvesOf(Bounds, Objective, Variable, Value);
    if (std::abs(Value - std::trunc(Value)) < 0.5) std::swap(Halves[0], Halves[1]);
    for (TNode& Half : Halves) FStack.push_back(std::move(Half));
  }

  TWholeProgram FProgram;
  TIncumbent FBest;
  std::vector<TNode> FStack;
};

}  // namespace

bool TSimplexAndDualMethod::SolveByBranchAndBound(const TFloatMatrix& A, const TIntegerVec& Senses,
                                                  const TFloatVector& C, bool Maximise) {
  AssertThat(A.GetRowCnt() > 0, kSimplexUnit, kNoRowLine);
  AssertThat(A.GetColCnt() > 0, kSimplexUnit, kNoColumnLine);
  // `C` may be the solution, which is soon another.
  const TFloatVector Costs = C;  // NOLINT(performance-unnecessary-copy-initialization)
  if (!Solve(A, Senses, Costs, Maximise)) return false;
  int Fractional = -1;
  if (IsInteger(Fractional)) return true;
  const TWholeProgram Program{*this, A, Senses, Costs, Maximise};
  TDive Dive(Program, Fractional, FX[Fractional]);
  std::queue<TNode> Queue;
  const auto Branch = [&](const TInequalityDataList& Bounds) {
    for (TNode& Half : HalvesOf(Bounds, FObjective, Fractional, FX[Fractional])) {
      Queue.push(std::move(Half));
    }
  };
  Branch({});
  TIncumbent Best{Maximise, false, {}, 0.0};
  const auto IsBeaten = [&](double Objective) {
    return (Best.Exists && Best.Beats(Objective)) || Dive.RulesOut(Objective);
  };
  for (int Node = 1; !Queue.empty() && Node < NodeLimit(); ++Node) {
    const TNode Current = std::move(Queue.front());
    Queue.pop();
    if (IsBeaten(Current.Limit)) continue;  // so would be what it leads to
    if (Node > kProgramsAlone) Dive.Step();
    if (!Program.SolveWith(Current.Bounds)) continue;
    if (IsInteger(Fractional)) {
      if (Best.Exists && !Best.IsBeatenBy(FObjective)) continue;
      Best.Exists = true;
      Best.X = FX;
      Best.Objective = FObjective;
    } else if (!IsBeaten(FObjective)) {
      Branch(Current.Bounds);
    }
  }
  if (!Queue.empty()) {
    GiveUp("the search ended at its limit");
    // What the dive knows took the place of programs that led to less.
    if (Dive.Best().Exists && (!Best.Exists || Best.IsBeatenBy(Dive.Best().Objective))) {
      Best = Dive.Best();
    }
  }
  InitXVec(A.GetColCnt());
  if (!Best.Exists) return false;
  FX = Best.X;
  FObjective = Best.Objective;
  return true;
}

}  // namespace tarnalgo
