#pragma once  // examples/sheet_planner/Contours.h

#include <vector>

#include "examples/sheet_planner/Planner.h"

namespace sheet_planner {

/// Joins pieces of a sheet end to end into contours, each piece in one of them. Open chains start
/// at their first loose end or branch; where pieces branch, the first one left goes on.
/// Cost: O(n log n).
std::vector<TOrdinaryContour> JoinPieces(const TSheet& Sheet,
                                         const std::vector<TContourPiece>& Pieces);

/// Every edge, arc and curve of the sheet.
std::vector<TContourPiece> AllPieces(const TSheet& Sheet);

/// Where a piece hangs on its neighbours, before any reversal.
const TSheetPiece& SheetPiece(const TSheet& Sheet, const TContourPiece& Piece);

/// The ends of the piece as it is cut.
tarnalgo::TPoint2D StartOf(const TSheet& Sheet, const TContourPiece& Piece);
tarnalgo::TPoint2D EndOf(const TSheet& Sheet, const TContourPiece& Piece);

double LengthOf(const TSheet& Sheet, const TContourPiece& Piece);

/// The piece's points as it is cut, chords within `ChordError` of an arc.
std::vector<tarnalgo::TPoint2D> PointsOf(const TSheet& Sheet, const TContourPiece& Piece,
                                         double ChordError);

}  // namespace sheet_planner
