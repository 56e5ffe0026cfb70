#pragma once  // tests/planner/PlanChecks.h

#include "examples/sheet_planner/EdgePrep.h"
#include "examples/sheet_planner/Planner.h"

namespace sheet_planner::test {

/// Length of the union of all edges drawn, by taking each pair of edges in turn: two edges are on
/// one line when all ends are within `Eps` of the longer one.
double UnionLength(const std::vector<TDrawnEdge>& Edges, double Eps);

/// What holds for every plan:
/// - each edge of the sheet is cut once, whole, in a pass or in a contour, and nothing else is;
/// - each pass runs on from piece to piece, along one line, without long gaps, on one port;
/// - no accepted gap meets a cut but at its ends, and every rejected one does;
/// - every arc and curve is in one contour and contours run on from piece to piece.
void ExpectSound(const TSheet& Sheet, const TPlan& Plan, double Snap);

}  // namespace sheet_planner::test
