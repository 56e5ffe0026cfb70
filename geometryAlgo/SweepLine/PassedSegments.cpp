#include "geometryAlgo/SweepLine/PassedSegments.h"

#include <cmath>

namespace tarnalgo {

TPassedSegments::TPassedSegments(const std::vector<TVLine2D>& Lines, double Reach)
    : FReach(Reach), FPlaces(Lines.size()) {
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    const auto [Low, High] = std::minmax(Lines[I].StartPoint.Y, Lines[I].EndPoint.Y);
    FPlaces[I].Low = Low;
    FPlaces[I].High = High;
    FBottom = I == 0 ? Low : std::min(FBottom, Low);
    FTop = I == 0 ? High : std::max(FTop, High);
  }
  // The one cell of the first row is as high as everything together.
  int Cells = 1;
  while (FRowCount < kMostRows && static_cast<std::size_t>(Cells) < Lines.size()) {
    ++FRowCount;
    Cells *= 4;
  }
  const double Height = FTop - FBottom;
  if (Height > 0.0 && std::isfinite(Cells / Height)) FCellsPerLength = Cells / Height;
  int FirstCell = 0;
  for (int Row = 0; Row < FRowCount; ++Row) {
    const int Shift = 2 * (FRowCount - 1 - Row);
    FRows[static_cast<std::size_t>(Row)] = {Shift, FirstCell, -1, 0};
    FirstCell += (Cells >> Shift) + 1;  // the top end has a cell of its own
  }
  FHeads.assign(static_cast<std::size_t>(FirstCell), -1);
  for (TPlace& Place : FPlaces) {
    Place.Row = RowFor(Place.High - Place.Low);
    const TRow& Row = FRows[static_cast<std::size_t>(Place.Row)];
    Place.Cell = Row.FirstCell + (FinestCell(Place.Low) >> Row.Shift);
  }
}

/// The finest row whose cells are higher. Nearly as high is too high: where an end lies in a cell
/// is subject to rounding.
int TPassedSegments::RowFor(double Height) const {
  const double Cells = Height * FCellsPerLength;  // of the finest row
  int Row = FRowCount - 1;
  for (double High = 0.99; Row > 0 && Cells > High; High *= 4.0) --Row;
  return Row;
}

void TPassedSegments::Add(int Segment) {
  TPlace& Place = FPlaces[static_cast<std::size_t>(Segment)];
  const auto Push = [&](int& Head, int TPlace::*Next, int TPlace::*Previous) {
    Place.*Next = Head;
    Place.*Previous = -1;
    if (Head >= 0) FPlaces[static_cast<std::size_t>(Head)].*Previous = Segment;
    Head = Segment;
  };
  TRow& Row = FRows[static_cast<std::size_t>(Place.Row)];
  ++Row.Count;
  FOccupied |= std::uint32_t{1} << Place.Row;
  Push(Row.Head, &TPlace::NextInRow, &TPlace::PreviousInRow);
  Push(FHeads[static_cast<std::size_t>(Place.Cell)], &TPlace::NextInCell, &TPlace::PreviousInCell);
}

void TPassedSegments::Remove(int Segment) {
  const TPlace& Place = FPlaces[static_cast<std::size_t>(Segment)];
  const auto Unlink = [&](int& Head, int TPlace::*Next, int TPlace::*Previous) {
    const int After = Place.*Next;
    const int Before = Place.*Previous;
    (Before >= 0 ? FPlaces[static_cast<std::size_t>(Before)].*Next : Head) = After;
    if (After >= 0) FPlaces[static_cast<std::size_t>(After)].*Previous = Before;
  };
  TRow& Row = FRows[static_cast<std::size_t>(Place.Row)];
  if (--Row.Count == 0) FOccupied &= ~(std::uint32_t{1} << Place.Row);
  Unlink(Row.Head, &TPlace::NextInRow, &TPlace::PreviousInRow);
  Unlink(FHeads[static_cast<std::size_t>(Place.Cell)], &TPlace::NextInCell,
         &TPlace::PreviousInCell);
}

}  // namespace tarnalgo
