#pragma once  // examples/sheet_planner/Contours.h

#include <vector>

#include "examples/sheet_planner/Planner.h"

namespace sheet_planner {

/// Joins pieces of a sheet end to end into contours, each piece in one of them. Open chains start
/// at their first loose end or branch; where pieces branch, the first one left goes on.
/// Cost: O(n log n).
std::vector<TOrdinaryContour> JoinPieces(const TSheet& Sheet,
                                         const std::vector<TContourPiece>& Pieces);

double LengthOf(const TSheet& Sheet, const TContourPiece& Piece);

/// The piece's points as it is cut, chords within `ChordError` of an arc.
std::vector<tarnalgo::TPoint2D> PointsOf(const TSheet& Sheet, const TContourPiece& Piece,
                                         double ChordError);

}  // namespace sheet_planner
