#pragma once  // tests/support/Plate.h

#include <cstddef>
#include <memory>
#include <vector>

#include "geometryAlgo/flyscanAlgo/LinearSegmentList.h"

namespace tarnalgo::test {

/// A plate with square holes in regular rows, for tests and benchmarks of flying-cut planning.
struct TPlate {
  int Rows = 10;
  int Columns = 10;
  double Side = 6.0;
  double Pitch = 10.0;
  double Angle = 0.0;  ///< by which the plate is turned about the origin
};

/// The edges of the holes, hole by hole, each run counter-clockwise.
inline std::vector<TLine2D> EdgesOf(const TPlate& Plate) {
  const TPoint2D Across = DcsX.RotateBy(Plate.Angle);
  const TPoint2D Up = Across.RotateCcw90();
  std::vector<TLine2D> Result;
  Result.reserve(static_cast<std::size_t>(Plate.Rows) * static_cast<std::size_t>(Plate.Columns) *
                 4);
  for (int Row = 0; Row < Plate.Rows; ++Row) {
    for (int Column = 0; Column < Plate.Columns; ++Column) {
      const double X = Column * Plate.Pitch;
      const double Y = Row * Plate.Pitch;
      const TPoint2D Corners[] = {Across * X + Up * Y, Across * (X + Plate.Side) + Up * Y,
                                  Across * (X + Plate.Side) + Up * (Y + Plate.Side),
                                  Across * X + Up * (Y + Plate.Side)};
      for (std::size_t I = 0; I < 4; ++I) Result.emplace_back(Corners[I], Corners[(I + 1) % 4]);
    }
  }
  return Result;
}

/// What a host does between sorting and building: cuts the sorted segments into runs whose keys tie
/// with that of the run's first segment.
inline std::vector<std::unique_ptr<TLinearSegmentList>> CutIntoRuns(
    const TLinearSegments& Segments) {
  std::vector<std::unique_ptr<TLinearSegmentList>> Runs;
  for (TLinearSegment* const Segment : Segments) {
    if (Runs.empty() ||
        TLinearSegments::CompareAngleIntercept(*Runs.back()->First(), *Segment) != 0) {
      Runs.push_back(std::make_unique<TLinearSegmentList>(Segment->LineAngle, Segment->Intercept));
    }
    Runs.back()->Add(Segment);
  }
  return Runs;
}

}  // namespace tarnalgo::test
