#pragma once  // examples/sheet_planner/Report.h

#include <string>

#include "examples/sheet_planner/Drawing.h"
#include "examples/sheet_planner/Machine.h"
#include "examples/sheet_planner/Planner.h"
#include "examples/sheet_planner/Tracing.h"

namespace sheet_planner {

/// What was read, dropped and planned, as a short table of aligned lines.
std::string PlanReport(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan);

/// What the tracing made of the drawing.
std::string TraceReport(const TTraceStats& Stats);

/// The work of a plan beside that of the sheet cut contour by contour.
std::string WorkReport(const TDrawing& Drawing, const TWork& Before, const TWork& After,
                       const TMachine& Machine);

/// Every pass, circle and ordinary contour, a line each, in cutting order; then every loose end and
/// branch point.
std::string PlanListing(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan);

}  // namespace sheet_planner
