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
  // Cells of the last row are as high as everything together, each row before has half of that.
  const double Height = FTop - FBottom;
  for (std::size_t Row = 0; Row < kRows; ++Row) {
    const double Cells = std::ldexp(1.0, static_cast<int>(kRows - 1 - Row));
    FRows[Row].CellsPerLength =
        Height > 0.0 && std::isfinite(Cells / Height) ? Cells / Height : 0.0;
  }
  for (TPlace& Place : FPlaces) {
    const double Share = Height > 0.0 ? (Place.High - Place.Low) / Height : 1.0;
    const double Least = std::ldexp(1.0, 1 - static_cast<int>(kRows));
    Place.Row = kRows - 1;
    if (Share < 0.5) {
      const int Halvings = -std::ilogb(std::max(Share, Least)) - 1;
      Place.Row = kRows - 1 - static_cast<std::size_t>(Halvings);
    }
    Place.Cell = CellOf(Place.Low, Place.Row);
  }
  std::size_t Slots = 2;
  while (Slots < Lines.size()) {
    Slots *= 2;
    --FShift;
  }
  FHeads.assign(Slots, -1);
}

void TPassedSegments::Add(int Segment) {
  TPlace& Place = FPlaces[static_cast<std::size_t>(Segment)];
  const auto Push = [&](int& Head, int TPlace::*Next, int TPlace::*Previous) {
    Place.*Next = Head;
    Place.*Previous = -1;
    if (Head >= 0) FPlaces[static_cast<std::size_t>(Head)].*Previous = Segment;
    Head = Segment;
  };
  TRow& Row = FRows[Place.Row];
  ++Row.Count;
  Push(Row.Head, &TPlace::NextInRow, &TPlace::PreviousInRow);
  Push(FHeads[SlotOf(Place.Cell, Place.Row)], &TPlace::NextInCell, &TPlace::PreviousInCell);
}

void TPassedSegments::Remove(int Segment) {
  const TPlace& Place = FPlaces[static_cast<std::size_t>(Segment)];
  const auto Unlink = [&](int& Head, int TPlace::*Next, int TPlace::*Previous) {
    const int After = Place.*Next;
    const int Before = Place.*Previous;
    (Before >= 0 ? FPlaces[static_cast<std::size_t>(Before)].*Next : Head) = After;
    if (After >= 0) FPlaces[static_cast<std::size_t>(After)].*Previous = Before;
  };
  TRow& Row = FRows[Place.Row];
  --Row.Count;
  Unlink(Row.Head, &TPlace::NextInRow, &TPlace::PreviousInRow);
  Unlink(FHeads[SlotOf(Place.Cell, Place.Row)], &TPlace::NextInCell, &TPlace::PreviousInCell);
}

}  // namespace tarnalgo
