#include <algorithm>
#include <cmath>
#include <queue>
#include <utility>

#include "geometryAlgo/UDualSimplex/SimplexAndDualMethod.h"
#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

constexpr int kNoRowLine = 731;
constexpr int kNoColumnLine = 734;

/// A program to solve: the bounds that are added, and the objective without the last of them,
/// which it cannot improve on.
struct TNode {
  TInequalityDataList Bounds;
  double Limit;
};

using TQueue = std::queue<TNode>;

/// Queues the two halves of a program on either side of `Value`, cut towards zero.
void Branch(TQueue& Queue, const TInequalityDataList& Bounds, double Objective, int Variable,
            double Value) {
  const double Whole = std::trunc(Value);
  TInequalityDataList AtMost = Bounds.Clone();
  AtMost.AddData(Variable, Whole, kAtMost);
  Queue.push({std::move(AtMost), Objective});
  TInequalityDataList AtLeast = Bounds.Clone();
  AtLeast.AddData(Variable, Whole + 1.0, kAtLeast);
  Queue.push({std::move(AtLeast), Objective});
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
  TQueue Queue;
  Branch(Queue, {}, FObjective, Fractional, FX[Fractional]);
  TIncumbent Best{Maximise, false, {}, 0.0};
  for (int Node = 1; !Queue.empty() && Node < NodeLimit(); ++Node) {
    const TNode Current = std::move(Queue.front());
    Queue.pop();
    if (Best.Exists && Best.Beats(Current.Limit)) continue;  // so would be what it leads to
    TFloatMatrix Bounded = A;  // takes a buffer of its own when it grows
    TIntegerVec BoundedSenses = Senses;
    Current.Bounds.AddDatato(Bounded, BoundedSenses);
    if (!Solve(Bounded, BoundedSenses, Costs, Maximise)) continue;
    if (IsInteger(Fractional)) {
      if (Best.Exists && !Best.IsBeatenBy(FObjective)) continue;
      Best.Exists = true;
      Best.X = FX;
      Best.Objective = FObjective;
    } else if (!Best.Exists || !Best.Beats(FObjective)) {
      Branch(Queue, Current.Bounds, FObjective, Fractional, FX[Fractional]);
    }
  }
  if (!Queue.empty()) GiveUp("the search ended at its limit");
  InitXVec(A.GetColCnt());
  if (!Best.Exists) return false;
  FX = Best.X;
  FObjective = Best.Objective;
  return true;
}

}  // namespace tarnalgo
