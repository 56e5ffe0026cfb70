#pragma once  // geometryAlgo/SweepLine/PassedSegments.h

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

/// The segments that the sweep has begun and not yet left behind, found by their range of Y.
/// Internal to the pages of this unit.
///
/// A segment stands in the list of one cell: rows of cells, each row four times as fine as the one
/// before, and in the finest row whose cells are higher than the segment the cell of its lower end.
/// So a look visits, row by row, the cells that reach into the range asked for, or the whole row
/// where that is shorter.
/// Cost: O(n) memory for n segments; `Add`, `Remove` O(1); a look O(log n + visited).
class TPassedSegments {
 public:
  /// Looks find what comes within `Reach`.
  TPassedSegments(const std::vector<TVLine2D>& Lines, double Reach);

  void Add(int Segment);
  /// `Segment` must be in the set.
  void Remove(int Segment);

  /// Calls `Visit(Other)` for every segment of the set whose range of Y comes within the reach of
  /// that of `Segment`, in no particular order. Answers how many were looked at.
  template <class TVisitor>
  std::int64_t VisitNear(int Segment, TVisitor Visit) const {
    const TPlace& Wanted = FPlaces[static_cast<std::size_t>(Segment)];
    const double Low = Wanted.Low - FReach;
    const double High = Wanted.High + FReach;
    const int LowCell = FinestCell(Low);
    const int HighCell = FinestCell(High);
    std::int64_t Looked = 0;
    const auto VisitList = [&](int Head, int TPlace::*Next) {
      for (int I = Head; I >= 0;) {
        const TPlace& Place = FPlaces[static_cast<std::size_t>(I)];
        const int Other = I;
        I = Place.*Next;
        ++Looked;
        if (Place.Low <= High && Place.High >= Low) Visit(Other);
      }
    };
    for (std::uint32_t Rows = FOccupied; Rows != 0; Rows &= Rows - 1) {
      const TRow& Row = FRows[static_cast<std::size_t>(std::countr_zero(Rows))];
      // A segment is no higher than a cell of its row: it ends at most one cell above its own.
      const int First = std::max((LowCell >> Row.Shift) - 1, 0);
      const int Last = HighCell >> Row.Shift;
      if (Last - First >= Row.Count) {
        VisitList(Row.Head, &TPlace::NextInRow);
        continue;
      }
      for (int Cell = First; Cell <= Last; ++Cell) {
        const std::size_t Head =
            static_cast<std::size_t>(Row.FirstCell) + static_cast<std::size_t>(Cell);
        VisitList(FHeads[Head], &TPlace::NextInCell);
      }
    }
    return Looked;
  }

 private:
  static constexpr int kMostRows = 14;

  struct TPlace {
    double Low = 0.0;
    double High = 0.0;
    int Cell = 0;  // of FHeads
    int Row = 0;
    int NextInCell = -1;
    int PreviousInCell = -1;
    int NextInRow = -1;
    int PreviousInRow = -1;
  };
  struct TRow {
    int Shift = 0;  // from the cells of the finest row to those of this one
    int FirstCell = 0;
    int Head = -1;
    int Count = 0;
  };

  // Held within the rows, so that a range of any size, or reach, gives a cell.
  int FinestCell(double Y) const {
    return static_cast<int>((std::clamp(Y, FBottom, FTop) - FBottom) * FCellsPerLength);
  }
  int RowFor(double Height) const;

  double FReach;
  double FBottom = 0.0;
  double FTop = 0.0;
  double FCellsPerLength = 0.0;  // of the finest row
  int FRowCount = 1;
  std::uint32_t FOccupied = 0;  // a bit for each row with segments
  std::array<TRow, kMostRows> FRows;
  std::vector<int> FHeads;  // of the cells of all rows
  std::vector<TPlace> FPlaces;
};

}  // namespace tarnalgo
