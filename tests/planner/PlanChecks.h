#pragma once  // tests/planner/PlanChecks.h

#include <vector>

#include "examples/sheet_planner/EdgePrep.h"
#include "examples/sheet_planner/Planner.h"

namespace sheet_planner::test {

/// The edges on one layer.
TDrawing DrawingOf(const std::vector<tarnalgo::TLine2D>& Lines);

double TotalLength(const TSheet& Sheet);

/// To the nearest of the chords through the points.
double Distance(const tarnalgo::TPoint2D& P, const std::vector<tarnalgo::TPoint2D>& Points);

/// Length of the union of all edges drawn, by taking each pair of edges in turn: two edges are on
/// one line when all ends are within `Eps` of the longer one.
double UnionLength(const std::vector<TDrawnEdge>& Edges, double Eps);

/// What holds for every plan:
/// - each edge of the sheet is cut once, whole, in a pass or in a contour, and nothing else is;
/// - each pass runs on from piece to piece, along one line, without long gaps, on one port;
/// - no accepted gap meets a cut but at its ends, and every rejected one does;
/// - every arc and curve is in one contour and contours run on from piece to piece;
/// - the order is a permutation, and nothing is cut after a closed contour or circle round it.
void ExpectSound(const TSheet& Sheet, const TPlan& Plan, double Snap);

/// The same for the plan of a drawing, made twice; picture, report and listing are the same bytes.
/// Unless snapping moved much, the edges' length is that of the union of all drawn.
TPlan ExpectSoundPlan(const TDrawing& Drawing, const TPrepOptions& Options);

}  // namespace sheet_planner::test
