#include "geometryAlgo/UDualSimplex/SimplexTableau.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "geometryAlgo/UMatrixAlgo/Pack.h"
#include "geometryAlgo/UMatrixAlgo/RowKernels.h"
#include "host/Cadtypes/Constants.h"

namespace tarnalgo {

namespace {

/// Elements that the inner loop takes at a time; rows are padded to a multiple.
constexpr std::ptrdiff_t kStep = 8;

/// Rows of a tableau from which a pivot row is taken off.
struct TElimination {
  double* Items;
  std::ptrdiff_t Stride;
  int RowCnt;
  int Top;    // the pivot row, done already
  int Place;  // of the pivot column
};

template <class TPack>
[[gnu::always_inline]] inline void TakeOff(double* To, double Factor, const double* Top,
                                           std::ptrdiff_t Count) {
  constexpr std::ptrdiff_t kLane = kLanes<TPack>;
  for (std::ptrdiff_t J = 0; J < Count; J += 2 * kLane) {
    TPack Y0, Y1, X0, X1;
    Load(Y0, To + J);
    Load(Y1, To + J + kLane);
    Load(X0, Top + J);
    Load(X1, Top + J + kLane);
    Y0 -= Factor * X0;
    Y1 -= Factor * X1;
    Store(To + J, Y0);
    Store(To + J + kLane, Y1);
  }
}

template <class TPack>
[[gnu::always_inline]] inline void EliminateBy(const TElimination& Job) {
  const double* const Top = Job.Items + Job.Top * Job.Stride;
  double* To = Job.Items;
  for (int I = 0; I < Job.RowCnt; ++I, To += Job.Stride) {
    const double Factor = To[Job.Place];
    if (I == Job.Top || Factor == 0.0) continue;  // exact: there is nothing to take off
    To[Job.Place] = 0.0;
    TakeOff<TPack>(To, Factor, Top, Job.Stride);
  }
}

TARNALGO_WIDE_CODE void EliminateWide(const TElimination& Job) {
  EliminateBy<TPack4>(Job);
}

void Eliminate(const TElimination& Job) {
  if (HasWidePacks()) {
    EliminateWide(Job);
  } else {
    EliminateBy<TPack2>(Job);
  }
}

}  // namespace

TSimplexTableau::TSimplexTableau(int Rows, int Variables)
    : FRowCnt(Rows + 1),
      FPlaceCnt(Variables + 1),
      FStride((FPlaceCnt + kStep - 1) / kStep * kStep),
      FItems(static_cast<std::size_t>(FRowCnt) * static_cast<std::size_t>(FStride)),
      FPlaces(static_cast<std::size_t>(FPlaceCnt)),
      FColumns(static_cast<std::size_t>(FPlaceCnt)),
      FBasics(static_cast<std::size_t>(FRowCnt)) {
  std::iota(FPlaces.begin(), FPlaces.end(), 0);
  std::iota(FColumns.begin(), FColumns.end(), 0);
}

double TSimplexTableau::Item(int RowIndex, int Column) const {
  if (const int Place = PlaceOf(Column); Place >= 0) return Row(RowIndex)[Place];
  return RowIndex > 0 && BasicColumn(RowIndex) == Column ? 1.0 : 0.0;
}

void TSimplexTableau::AddBasicColumn(int Row) {
  FPlaces.push_back(-1);
  FBasics[static_cast<std::size_t>(Row)] = ColCnt() - 1;
}

void TSimplexTableau::Pivot(int Index, int Column) {
  const int Place = PlaceOf(Column);
  double* const Top = Row(Index);
  const double Element = Top[Place];
  Top[Place] = 1.0;  // of the column that leaves the basis
  for (int J = 0; J < FPlaceCnt; ++J) Top[J] /= Element;
  Eliminate({FItems.data(), FStride, FRowCnt, Index, Place});
  int& Basic = FBasics[static_cast<std::size_t>(Index)];
  FPlaces[static_cast<std::size_t>(Basic)] = Place;
  FPlaces[static_cast<std::size_t>(Column)] = -1;
  FColumns[static_cast<std::size_t>(Place)] = Basic;
  Basic = Column;
}

void TSimplexTableau::SetCosts(const std::vector<double>& Costs) {
  for (int J = 0; J < ColCnt(); ++J) {
    if (PlaceOf(J) >= 0) Row(0)[PlaceOf(J)] = Costs[static_cast<std::size_t>(J)];
  }
  for (int I = 1; I < FRowCnt; ++I) {
    const double Cost = Costs[static_cast<std::size_t>(BasicColumn(I))];
    if (Cost == 0.0) continue;  // exact: there is nothing to take off
    RowAddMultiple(Row(0), -Cost, Row(I), static_cast<std::size_t>(FPlaceCnt));
  }
}

void TSimplexTableau::SetItems(const std::vector<double>& Costs, const TFloatMatrix& Rows) {
  for (int I = 1; I < FRowCnt; ++I) std::copy_n(Rows.Row(I - 1), FPlaceCnt, Row(I));
  SetCosts(Costs);
}

/// The row of the largest element of `Column` among those whose basic column is not one of
/// `Target`; 0 when there is none to speak of.
int TSimplexTableau::LargestElement(int Column, const TSimplexTableau& Target) const {
  int Found = 0;
  double Largest = kSingularPivot;
  for (int I = 1; I < FRowCnt; ++I) {
    if (Target.PlaceOf(BasicColumn(I)) < 0) continue;
    if (const double Size = std::abs(Item(I, Column)); Size > Largest) {
      Largest = Size;
      Found = I;
    }
  }
  return Found;
}

void TSimplexTableau::OrderRowsAs(const TSimplexTableau& Target) {
  std::vector<int> RowOf(FPlaces.size());
  for (int I = 1; I < FRowCnt; ++I) RowOf[static_cast<std::size_t>(BasicColumn(I))] = I;
  for (int I = 1; I < FRowCnt; ++I) {
    const int Column = Target.BasicColumn(I);
    const int From = RowOf[static_cast<std::size_t>(Column)];
    if (From == I) continue;
    std::swap_ranges(Row(I), Row(I) + FPlaceCnt, Row(From));
    RowOf[static_cast<std::size_t>(BasicColumn(I))] = From;
    std::swap(FBasics[static_cast<std::size_t>(I)], FBasics[static_cast<std::size_t>(From)]);
  }
}

bool TSimplexTableau::RebuildAs(const TSimplexTableau& Target, TSimplexTableau& Rebuilt) const {
  Rebuilt = *this;
  for (int Column = 1; Column < FPlaceCnt; ++Column) {
    if (Target.PlaceOf(Column) >= 0) continue;
    const int Row = Rebuilt.LargestElement(Column, Target);
    if (Row == 0) return false;
    Rebuilt.Pivot(Row, Column);
  }
  Rebuilt.OrderRowsAs(Target);
  return true;
}

}  // namespace tarnalgo
