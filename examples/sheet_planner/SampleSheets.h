#pragma once  // examples/sheet_planner/SampleSheets.h

#include "examples/sheet_planner/Drawing.h"

namespace sheet_planner {

/// A plate with rows of square holes, of slots with round ends and of round holes at a pitch of
/// 12 mm. The middle column of squares is left out and replaced by a tall slot, which the passes
/// must not fly across.
TDrawing PerforatedPlate(int Columns = 80, int Rows = 48);

/// A grid of square holes and nothing else: 4 · Columns · Rows straight edges.
TDrawing SquareGrid(int Columns, int Rows);

/// A nest of L-shaped brackets, pair by pair interlocked to rectangles, which stand in blocks
/// without any web between them: most outlines are drawn twice, in pieces of different length. Each
/// bracket has a slot and two round holes, on a layer of their own.
TDrawing BracketNest(int BlocksAcross = 5, int BlocksUp = 3);

}  // namespace sheet_planner
