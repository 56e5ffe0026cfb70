#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <unordered_set>
#include <utility>

#include "geometryAlgo/UDualSimplex/SimplexAndDualMethod.h"
#include "host/Cadtypes/Constants.h"
#include "host/Zeblib.h"

namespace tarnalgo {

namespace {

std::atomic<std::int64_t> SimplexRuns = 0;
std::atomic<std::int64_t> DualSimplexRuns = 0;

constexpr int kPivotsAtLeast = 1000;
constexpr int kPivotsPerLine = 50;
constexpr int kNodes = 100000;
constexpr int kRepairs = 10;

bool IsFinite(const TFloatVector& V) {
  return std::all_of(V.Data(), V.Data() + V.GetSize(), [](double X) { return std::isfinite(X); });
}

bool IsFinite(const TFloatMatrix& A) {
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    const bool Finite =
        std::all_of(A.Row(I), A.Row(I) + A.GetColCnt(), [](double X) { return std::isfinite(X); });
    if (!Finite) return false;
  }
  return true;
}

/// A number all over 64 bits for each column, so that those of a basis can be told by their sum
/// (Steele, Lea and Flood, 2014).
std::uint64_t Scatter(int Column) {
  std::uint64_t Bits = (static_cast<std::uint64_t>(Column) + 1) * 0x9E3779B97F4A7C15U;
  Bits = (Bits ^ (Bits >> 30U)) * 0xBF58476D1CE4E5B9U;
  Bits = (Bits ^ (Bits >> 27U)) * 0x94D049BB133111EBU;
  return Bits ^ (Bits >> 31U);
}

}  // namespace

std::int64_t SimplexRunCount() {
  return SimplexRuns;
}
std::int64_t DualSimplexRunCount() {
  return DualSimplexRuns;
}

/// Counts pivots up to the limit, and sees when a basis comes back: as the objective never gets
/// worse, the stated rules are then in a cycle. They rest until the objective gets better or, as
/// the rules that never cycle are slow, for a time that doubles with each basis that comes back.
class TSimplexAndDualMethod::TPivotCount {
 public:
  /// `Sense`: 1 where T[0][0] rises from pivot to pivot, -1 where it falls.
  TPivotCount(const TSimplexAndDualMethod& Method, double Sense)
      : FTable(Method.FTable),
        FSense(Sense),
        FLeft(Method.PivotLimit()),
        FBest(FTable.Row(0)[0]),
        FNextRest(FTable.RowCnt()) {}

  bool IsUsedUp() const { return FLeft <= 0; }
  bool IsCycling() const { return FRest > 0; }
  /// No pivot since the last look at the tableau's rounding.
  bool IsFresh() const { return FSinceLook == 0; }
  void Looked() { FSinceLook = 0; }
  bool IsLookDue() const { return FSinceLook >= FTable.RowCnt(); }

  void Add(int Leaving, int Entering) {
    FBasis ^= Scatter(Leaving) ^ Scatter(Entering);
    ++FSinceLook;
    --FLeft;
    const double Objective = FTable.Row(0)[0];
    const double Gain = FSense * (Objective - FBest);
    if (Gain > kStallTolerance * std::max(1.0, std::abs(FBest))) {
      FBest = Objective;
      FRest = 0;
      if (!FSeen.empty()) FSeen.clear();
    } else if (FRest > 0) {
      --FRest;
    } else if (!FSeen.insert(FBasis).second) {
      FRest = FNextRest;
      FNextRest = std::min(2 * FNextRest, FLeft);
    }
  }

 private:
  const TSimplexTableau& FTable;
  double FSense;
  int FLeft;
  int FSinceLook = 0;
  double FBest;
  int FRest = 0;  // pivots to make by the rules that never cycle
  int FNextRest;
  std::uint64_t FBasis = 0;
  std::unordered_set<std::uint64_t> FSeen;  // since the objective last got better
};

TSimplexAndDualMethod::TSimplexAndDualMethod(TFloatMatrix A, TIntegerVec Senses, TFloatVector C,
                                             bool Maximise, bool Integer, bool Revised, int Limit)
    : FA(std::move(A)),
      FSenses(std::move(Senses)),
      FC(std::move(C)),
      FMaximise(Maximise),
      FInteger(Integer),
      FRevised(Revised),
      FLimit(Limit) {}

int TSimplexAndDualMethod::PivotLimit() const {
  if (FLimit > 0) return FLimit;
  const std::int64_t Lines = std::int64_t{FTable.RowCnt()} + FTable.ColCnt();
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(kPivotsAtLeast + kPivotsPerLine * Lines, kMost));
}

int TSimplexAndDualMethod::NodeLimit() const {
  return FLimit > 0 ? FLimit : kNodes;
}

bool TSimplexAndDualMethod::Solve() {
  return FInteger ? SolveByBranchAndBound(FA, FSenses, FC, FMaximise)
                  : Solve(FA, FSenses, FC, FMaximise);
}

bool TSimplexAndDualMethod::Solve(const TFloatMatrix& A, const TIntegerVec& Senses,
                                  const TFloatVector& C, bool Maximise) {
  BuiltSimpleTab(A, Senses, C, Maximise);
  const bool HasNumbers = IsFinite(A) && IsFinite(C);
  InitXVec(FTable.PlaceCnt());  // `C` may have been the solution
  if (!HasNumbers) return GiveUp("the program is not finite");
  if (!RunMethods() || !Repair()) return false;
  FillSolution();
  if (IsFinite(FX) && std::isfinite(FObjective)) return true;
  InitXVec(FTable.PlaceCnt());
  return GiveUp("the solution is not finite");
}

/// Chooses the method by what the tableau has: feasible costs, feasible right-hand sides, neither.
bool TSimplexAndDualMethod::RunMethods() {
  const bool HasCosts = CheckReducedCostAllPositive();
  const bool HasSides = CheckObjValueAllPositive();
  if (HasCosts && HasSides) return true;  // the origin is the optimum
  if (HasCosts) return SolveByDualSimplex();
  if (HasSides) return FRevised ? SolveByRevisedSimplex() : SolveBySimplex();
  return RunFromNeitherSide();
}

/// Finds a feasible corner by the dual method under costs made feasible, then goes on with the true
/// costs.
bool TSimplexAndDualMethod::RunFromNeitherSide() {
  if (!ChangeSMA() || !CheckReducedCostAllPositive() || CheckObjValueAllPositive()) {
    FW.clear();
    return GiveUp("neither method has a start");
  }
  if (!SolveByDualSimplex()) {
    FW.clear();
    return false;
  }
  RestoreCosts();
  return SolveBySimplex();
}

/// Where rounding has left an optimal tableau infeasible on one side, the method for that side
/// mends it.
bool TSimplexAndDualMethod::Repair() {
  for (int Count = 0; Count < kRepairs; ++Count) {
    if (!CheckObjValueAllPositive()) {
      if (!SolveByDualSimplex()) return false;
    } else if (GetColCNMinNegative() != 0) {
      if (!SolveBySimplex()) return false;
    } else {
      return true;
    }
  }
  return GiveUp("rounding stands in the way of an optimum");
}

bool TSimplexAndDualMethod::GiveUp(const char* Reason) {
  OutputDebugStr(std::string("TSimplexAndDualMethod: ") + Reason);
  return false;
}

/// Makes the pivots that `Choose(IsCycling)` names until it names none. That verdict stands once
/// the tableau it comes from is free of drift.
template <class TChoose>
bool TSimplexAndDualMethod::MakePivots(double Sense, TChoose&& Choose) {
  TPivotCount Pivots(*this, Sense);
  while (!Pivots.IsUsedUp()) {
    const TStep Step = Choose(Pivots.IsCycling());
    if (Step.Row != 0 && Step.Column != 0) {
      const int Leaving = FTable.BasicColumn(Step.Row);
      UpdateSMA(Step.Row, Step.Column);
      if (FFormsAnew && !FormFromInverse()) return GiveUp("the basis is singular");
      Pivots.Add(Leaving, Step.Column);
      if (!Pivots.IsLookDue()) continue;
      Refresh();
    } else if (Pivots.IsFresh() || !Refresh()) {
      return Step.IsOptimal;
    }
    Pivots.Looked();
  }
  return GiveUp("too many pivots");
}

bool TSimplexAndDualMethod::SolveBySimplex() {
  return RunSimplex(false);
}

bool TSimplexAndDualMethod::SolveByRevisedSimplex() {
  return RunSimplex(true);
}

bool TSimplexAndDualMethod::RunSimplex(bool FormsAnew) {
  ++SimplexRuns;
  FFormsAnew = FormsAnew;
  return MakePivots(1.0, [this](bool IsCycling) {
    const int Column = IsCycling ? LowestNegativeCost() : GetColCNMinNegative();
    if (Column == 0) return TStep{0, 0, true};
    return TStep{IsCycling ? LowestLeavingRow(Column) : FindNewBaseIdxByB(Column), Column, false};
  });
}

/// Forms the tableau as the inverse of the basis times the tableau as built.
bool TSimplexAndDualMethod::FormFromInverse() {
  const int Rows = FTable.RowCnt() - 1;
  TFloatMatrix Basis(Rows, Rows);
  TFloatMatrix Start(Rows, FTable.PlaceCnt());
  std::vector<double> Costs;
  for (int J = 0; J < FTable.ColCnt(); ++J) {
    Costs.push_back(FStart.Item(0, J));
    if (const int Place = FTable.PlaceOf(J); Place >= 0) {
      for (int I = 0; I < Rows; ++I) Start.Row(I)[Place] = FStart.Item(I + 1, J);
    }
  }
  for (int K = 0; K < Rows; ++K) {
    const int Column = FTable.BasicColumn(K + 1);
    for (int I = 0; I < Rows; ++I) Basis.Row(I)[K] = FStart.Item(I + 1, Column);
  }
  if (!Basis.TryReverse()) return false;
  FTable.SetItems(Costs, Basis * Start);
  return true;
}

bool TSimplexAndDualMethod::SolveByDualSimplex() {
  ++DualSimplexRuns;
  FFormsAnew = false;
  return MakePivots(-1.0, [this](bool IsCycling) {
    const int Row = IsCycling ? LowestInfeasibleRow() : GetRowBMinNegative();
    if (Row == 0) return TStep{0, 0, true};
    return TStep{Row, FindNewBaseIdxByCN(Row), false};
  });
}

// The rules that never cycle (Bland, 1977): of those that qualify, the lowest column.

int TSimplexAndDualMethod::LowestNegativeCost() const {
  for (int J = 1; J < FTable.ColCnt(); ++J) {
    if (FTable.Item(0, J) < -kPivotTolerance - kPivotTieMargin) return J;
  }
  return 0;
}

int TSimplexAndDualMethod::LowestLeavingRow(int Column) const {
  const int First = FindNewBaseIdxByB(Column);
  if (First == 0) return 0;
  double Least = kStartOfMinimum;
  for (int I = 1; I < FTable.RowCnt(); ++I) {
    const double Element = FTable.Item(I, Column);
    if (Element > kPivotTolerance) Least = std::min(Least, FTable.Row(I)[0] / Element);
  }
  int Found = First;
  bool Any = false;
  for (int I = 1; I < FTable.RowCnt(); ++I) {
    const double Element = FTable.Item(I, Column);
    if (!(Element > kPivotTolerance)) continue;
    if (!(FTable.Row(I)[0] / Element <= Least + kPivotTieMargin)) continue;
    if (!Any || FTable.BasicColumn(I) < FTable.BasicColumn(Found)) Found = I;
    Any = true;
  }
  return Found;
}

int TSimplexAndDualMethod::LowestInfeasibleRow() const {
  int Found = 0;
  for (int I = 1; I < FTable.RowCnt(); ++I) {
    if (!(FTable.Row(I)[0] < -kPivotTolerance - kPivotTieMargin)) continue;
    if (Found == 0 || FTable.BasicColumn(I) < FTable.BasicColumn(Found)) Found = I;
  }
  return Found;
}

}  // namespace tarnalgo
