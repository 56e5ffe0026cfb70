#pragma once  // examples/sheet_planner/Stretches.h

#include <vector>

#include "examples/sheet_planner/EdgePrep.h"

namespace sheet_planner {

/// For each edge shorter than `Least` the length of the straight stretch that it is part of: edges
/// of one port that meet end to end and run on in one line, itself included. Drawings break a
/// straight side into pieces at no corner: where a rounded corner was flattened, where a part
/// beside it ends. Edges longer than `Most` are part of no stretch. For the edges between, at least
/// their own length.
/// Tolerance: `kLinearTolerance`, how far the shorter of two edges may end off the longer's line.
/// Cost: O(n + s log s), s = edges that meet the short ones.
std::vector<double> StretchLengths(const std::vector<TSheetEdge>& Edges, double Least, double Most);

}  // namespace sheet_planner
