#pragma once  // examples/sheet_planner/Report.h

#include <string>

#include "examples/sheet_planner/Drawing.h"
#include "examples/sheet_planner/Planner.h"

namespace sheet_planner {

/// What was read, dropped and planned, as a short table of aligned lines.
std::string PlanReport(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan);

/// Every pass, circle and ordinary contour, a line each, in cutting order; then every loose end and
/// branch point.
std::string PlanListing(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan);

}  // namespace sheet_planner
