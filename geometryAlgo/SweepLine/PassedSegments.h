#pragma once  // geometryAlgo/SweepLine/PassedSegments.h

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

/// The segments that the sweep has begun and not yet left behind, found by their range of Y.
/// Internal to the pages of this unit.
///
/// A segment stands in the list of one cell: rows of cells whose height is a power of two, and in
/// the row that suits its own height the cell of its lower end. So a look visits, row by row, the
/// cells that reach into the range asked for, or the whole row where that is shorter.
/// Cost: `Add`, `Remove` O(1); a look O(rows + visited), rows <= 32.
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
    for (std::size_t Row = 0; Row < kRows; ++Row) {
      if (FRows[Row].Count == 0) continue;
      // A segment is no higher than a cell of its row: it ends at most one cell above its own.
      const std::int64_t First = CellOf(Low, Row) - 1;
      const std::int64_t Last = CellOf(High, Row);
      if (Last - First >= FRows[Row].Count) {
        VisitList(FRows[Row].Head, &TPlace::NextInRow);
        continue;
      }
      for (std::int64_t Cell = First; Cell <= Last; ++Cell) {
        for (int I = FHeads[SlotOf(Cell, Row)]; I >= 0;) {
          const TPlace& Place = FPlaces[static_cast<std::size_t>(I)];
          const int Other = I;
          I = Place.NextInCell;
          ++Looked;
          if (Place.Row != Row || Place.Cell != Cell) continue;  // another cell of the same hash
          if (Place.Low <= High && Place.High >= Low) Visit(Other);
        }
      }
    }
    return Looked;
  }

 private:
  static constexpr std::size_t kRows = 32;

  struct TPlace {
    double Low = 0.0;
    double High = 0.0;
    std::int64_t Cell = 0;
    std::size_t Row = 0;
    int NextInCell = -1;
    int PreviousInCell = -1;
    int NextInRow = -1;
    int PreviousInRow = -1;
  };
  struct TRow {
    double CellsPerLength = 0.0;
    int Head = -1;
    int Count = 0;
  };

  // Held within the rows, so that a range of any size, or reach, gives a cell.
  std::int64_t CellOf(double Y, std::size_t Row) const {
    return static_cast<std::int64_t>((std::clamp(Y, FBottom, FTop) - FBottom) *
                                     FRows[Row].CellsPerLength);
  }
  std::size_t SlotOf(std::int64_t Cell, std::size_t Row) const {
    const std::uint64_t Key = (static_cast<std::uint64_t>(Cell) << 5) + Row;
    return static_cast<std::size_t>((Key * 0x9E3779B97F4A7C15u) >> FShift);
  }

  double FReach;
  double FBottom = 0.0;
  double FTop = 0.0;
  unsigned FShift = 63;  // of a hash, to the size of FHeads
  std::array<TRow, kRows> FRows;
  std::vector<int> FHeads;
  std::vector<TPlace> FPlaces;
};

}  // namespace tarnalgo
