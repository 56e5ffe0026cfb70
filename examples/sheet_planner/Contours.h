#pragma once  // examples/sheet_planner/Contours.h

#include <vector>

#include "examples/sheet_planner/Planner.h"

namespace sheet_planner {

/// Joins pieces of a sheet end to end into contours, each piece in one of them. Open chains start
/// at their first loose end or branch; where pieces branch, the first one left goes on.
/// Cost: O(n log n).
std::vector<TOrdinaryContour> JoinPieces(const TSheet& Sheet,
                                         const std::vector<TContourPiece>& Pieces);

/// Every edge and chain of the sheet.
std::vector<TContourPiece> AllPieces(const TSheet& Sheet);

/// Where a piece hangs on its neighbours, before any reversal.
const TSheetPiece& SheetPiece(const TSheet& Sheet, const TContourPiece& Piece);

/// The ends of the piece as it is cut.
tarnalgo::TPoint2D StartOf(const TSheet& Sheet, const TContourPiece& Piece);
tarnalgo::TPoint2D EndOf(const TSheet& Sheet, const TContourPiece& Piece);

/// Appends the segments of the piece as it is cut.
void AppendSegs(const TSheet& Sheet, const TContourPiece& Piece,
                std::vector<tarnalgo::TLABSegline>& Segs);

/// The segments of the pieces, one after another.
tarnalgo::TLABPolyline ChainOf(const TSheet& Sheet, const std::vector<TContourPiece>& Pieces);

/// How many segments the piece has.
int SegCountOf(const TSheet& Sheet, const TContourPiece& Piece);

}  // namespace sheet_planner
