#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "geometryAlgo/UDualSimplex/SimplexAndDualMethod.h"
#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// The first of the least: a later one must be smaller by more than the tie margin.
class TLeast {
 public:
  explicit TLeast(double Start) : FBest(Start) {}
  void Offer(double Value, int Id) {
    if (FBest - Value > kPivotTieMargin) {
      FBest = Value;
      FId = Id;
    }
  }
  int Id() const { return FId; }

 private:
  double FBest;
  int FId = 0;
};

/// The place >= 1 of the least value when no other comes near it, so that no tie has to be decided
/// in the order of the columns; else 0.
int OnlyLeast(const double* Values, int Count) {
  double Least = std::numeric_limits<double>::infinity();
  for (int J = 1; J < Count; ++J) Least = Values[J] < Least ? Values[J] : Least;
  int Near = 0;
  int Place = 0;
  for (int J = 1; J < Count; ++J) {
    const bool IsNear = Values[J] - Least <= 2.0 * kPivotTieMargin;
    Near += IsNear ? 1 : 0;
    Place = IsNear ? J : Place;
  }
  return Near == 1 ? Place : 0;
}

}  // namespace

void TSimplexAndDualMethod::BuiltSimpleTab(const TFloatMatrix& A, const TIntegerVec& Senses,
                                           const TFloatVector& C, bool Maximise) {
  AssertThat(Senses.GetSize() == A.GetRowCnt(), kSimplexUnit);
  AssertThat(C.GetSize() == A.GetColCnt() || A.GetRowCnt() == 0, kSimplexUnit);
  for (int I = 0; I < Senses.GetSize(); ++I) {
    AssertThat(Senses[I] == kAtMost || Senses[I] == kAtLeast, kSimplexUnit);
  }
  TSimplexTableau Table(A.GetRowCnt(), std::max(C.GetSize() - 1, 0));
  for (int J = 0; J < C.GetSize(); ++J) Table.Row(0)[J] = Maximise ? -C[J] : C[J];
  if (C.GetSize() > 0) Table.Row(0)[0] = -Table.Row(0)[0];
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    const double Turn = Senses[I] == kAtMost ? 1.0 : -1.0;
    std::transform(A.Row(I), A.Row(I) + A.GetColCnt(), Table.Row(I + 1),
                   [Turn](double Item) { return Turn * Item; });
  }
  for (int I = 1; I < Table.RowCnt(); ++I) Table.AddBasicColumn(I);
  FStart = TSimplexTableau(Table);
  FTable = std::move(Table);
  FTurned = Maximise;
  FW.clear();
}

void TSimplexAndDualMethod::AddRelaxColumn(int Row) {
  AssertThat(Row >= 1 && Row < FTable.RowCnt() && FTable.BasicColumn(Row) == 0, kSimplexUnit);
  FTable.AddBasicColumn(Row);
}

void TSimplexAndDualMethod::UpdateSMA(int Row, int Column) {
  AssertThat(Row >= 1 && Row < FTable.RowCnt(), kSimplexUnit);
  AssertThat(Column >= 1 && Column < FTable.ColCnt() && FTable.PlaceOf(Column) > 0, kSimplexUnit);
  AssertThat(FTable.Item(Row, Column) != 0.0, kSimplexUnit);
  FTable.Pivot(Row, Column);
}

bool TSimplexAndDualMethod::ChangeSMA() {
  double* const Costs = FTable.Row(0);
  const auto IsNegative = [](double Cost) { return Cost < 0.0; };
  if (std::none_of(Costs + 1, Costs + FTable.PlaceCnt(), IsNegative)) return false;
  std::vector<double> Feasible = CostsByColumn();
  SetWValue();
  Feasible[0] = 0.0;
  for (double& Cost : Feasible) Cost = IsNegative(Cost) ? 0.0 : Cost;
  std::replace_if(Costs + 1, Costs + FTable.PlaceCnt(), IsNegative, 0.0);
  Costs[0] = 0.0;
  FStart.SetCosts(Feasible);
  return true;
}

void TSimplexAndDualMethod::SetWValue() {
  FW = CostsByColumn();
}

std::vector<double> TSimplexAndDualMethod::CostsByColumn() const {
  std::vector<double> Costs(static_cast<std::size_t>(FTable.ColCnt()));
  for (int J = 0; J < FTable.ColCnt(); ++J) {
    Costs[static_cast<std::size_t>(J)] = FTable.Item(0, J);
  }
  return Costs;
}

void TSimplexAndDualMethod::RestoreCosts() {
  if (FW.empty()) return;
  FTable.SetCosts(FW);
  FStart.SetCosts(FW);
  FW.clear();
}

int TSimplexAndDualMethod::GetColCNMinNegative() const {
  TLeast Least(-kPivotTolerance);
  const double* const Costs = FTable.Row(0);
  if (const int Place = OnlyLeast(Costs, FTable.PlaceCnt()); Place > 0) {
    Least.Offer(Costs[Place], FTable.ColumnAt(Place));
    return Least.Id();
  }
  for (int J = 1; J < FTable.ColCnt(); ++J) {
    if (const int Place = FTable.PlaceOf(J); Place >= 0) Least.Offer(Costs[Place], J);
  }
  return Least.Id();
}

int TSimplexAndDualMethod::FindNewBaseIdxByB(int Column) const {
  AssertThat(Column >= 1 && Column < FTable.ColCnt(), kSimplexUnit);
  TLeast Least(std::numeric_limits<double>::infinity());
  const int Place = FTable.PlaceOf(Column);
  for (int I = 1; I < FTable.RowCnt(); ++I) {
    const double* const Row = FTable.Row(I);
    const double Element = Place >= 0 ? Row[Place] : FTable.Item(I, Column);
    if (Element > kPivotTolerance) Least.Offer(Row[0] / Element, I);
  }
  return Least.Id();
}

int TSimplexAndDualMethod::GetRowBMinNegative() const {
  TLeast Least(-kPivotTolerance);
  for (int I = 1; I < FTable.RowCnt(); ++I) Least.Offer(FTable.Row(I)[0], I);
  return Least.Id();
}

int TSimplexAndDualMethod::FindNewBaseIdxByCN(int Row) const {
  AssertThat(Row >= 1 && Row < FTable.RowCnt(), kSimplexUnit);
  TLeast Least(std::numeric_limits<double>::infinity());
  for (int J = 1; J < FTable.ColCnt(); ++J) {
    const double Element = FTable.Item(Row, J);
    if (Element < -kPivotTolerance) Least.Offer(FTable.Item(0, J) / -Element, J);
  }
  return Least.Id();
}

int TSimplexAndDualMethod::GetVecDivMinValueId(const TFloatVector& V1, const TFloatVector& V2) {
  AssertThat(V1.GetSize() == V2.GetSize(), kSimplexUnit);
  int Id = -1;
  double Best = 0.0;
  for (int I = 0; I < V1.GetSize(); ++I) {
    if (!(std::abs(V2[I]) > kPivotTolerance)) continue;
    const double Quotient = V1[I] / V2[I];
    if (std::isnan(Quotient) || (Id >= 0 && !(Quotient < Best))) continue;
    Best = Quotient;
    Id = I;
  }
  return Id;
}

bool TSimplexAndDualMethod::CheckReducedCostAllPositive() const {
  return std::all_of(FTable.Row(0) + 1, FTable.Row(0) + FTable.PlaceCnt(),
                     [](double Cost) { return Cost >= -kPivotTolerance; });
}

bool TSimplexAndDualMethod::CheckObjValueAllPositive() const {
  for (int I = 1; I < FTable.RowCnt(); ++I) {
    if (!(FTable.Row(I)[0] >= -kPivotTolerance)) return false;
  }
  return true;
}

void TSimplexAndDualMethod::InitXVec(int Count) {
  FX = TFloatVector(Count);
  FObjective = 0.0;
}

void TSimplexAndDualMethod::FillSolution() {
  InitXVec(FTable.PlaceCnt());
  for (int I = 1; I < FTable.RowCnt(); ++I) {
    if (const int Column = FTable.BasicColumn(I); Column < FX.GetSize()) {
      FX.SetItem(Column, FTable.Row(I)[0]);
    }
  }
  FObjective = FTurned ? FTable.Row(0)[0] : -FTable.Row(0)[0];
}

bool TSimplexAndDualMethod::IsInteger(int& Index) const {
  for (Index = 0; Index < FX.GetSize(); ++Index) {
    if (Index < FIntegerColumns.GetSize() && FIntegerColumns[Index] == 0) continue;
    if (!(std::abs(FX[Index] - std::round(FX[Index])) <= kIntegralTolerance)) return false;
  }
  Index = -1;
  return true;
}

/// Whether the right-hand sides and the costs are off what the start and the basis make them.
bool TSimplexAndDualMethod::HasDrifted() const {
  const int Places = FStart.PlaceCnt();
  const auto Width = static_cast<std::size_t>(Places);
  std::vector<double> Values(static_cast<std::size_t>(FTable.ColCnt()));  // by column
  for (int I = 1; I < FTable.RowCnt(); ++I) {
    Values[static_cast<std::size_t>(FTable.BasicColumn(I))] = FTable.Row(I)[0];
  }
  std::vector<double> Costs(FStart.Row(0), FStart.Row(0) + Places);
  std::vector<double> Sizes(Width);
  for (int I = 1; I < FStart.RowCnt(); ++I) {
    const double* const Row = FStart.Row(I);
    const int Slack = FStart.BasicColumn(I);
    const double Factor = FTable.Item(0, Slack);
    double Side = Values[static_cast<std::size_t>(Slack)] - Row[0];
    double Size = std::abs(Row[0]);
    for (int J = 1; J < Places; ++J) {
      const double Part = Row[J] * Values[static_cast<std::size_t>(J)];
      Side += Part;
      Size += std::abs(Part);
    }
    if (!(std::abs(Side) <= kDriftTolerance * std::max(1.0, Size))) return true;
    for (std::size_t J = 0; Factor != 0.0 && J < Width; ++J) {
      Costs[J] += Factor * Row[J];
      Sizes[J] += std::abs(Factor * Row[J]);
    }
  }
  for (int J = 0; J < Places; ++J) {
    const double Cost = FTable.Item(0, J) - Costs[static_cast<std::size_t>(J)];
    const double Size = std::max(1.0, Sizes[static_cast<std::size_t>(J)]);
    if (!(std::abs(Cost) <= kDriftTolerance * Size)) return true;
  }
  return false;
}

/// Forms a tableau that has drifted anew; false when it has not, or cannot be formed.
bool TSimplexAndDualMethod::Refresh() {
  TSimplexTableau Rebuilt;
  if (!HasDrifted() || !FStart.RebuildAs(FTable, Rebuilt)) return false;
  FTable = std::move(Rebuilt);
  return true;
}

TFloatMatrix TSimplexAndDualMethod::Tableau() const {
  TFloatMatrix Result(FTable.RowCnt(), FTable.ColCnt());
  for (int I = 0; I < FTable.RowCnt(); ++I) {
    for (int J = 0; J < FTable.ColCnt(); ++J) Result.SetItem(I, J, FTable.Item(I, J));
  }
  return Result;
}

}  // namespace tarnalgo
