#pragma once  // examples/sheet_planner/SvgWriter.h

#include <string>

#include "examples/sheet_planner/Drawing.h"
#include "examples/sheet_planner/Planner.h"

namespace sheet_planner {

/// The plan as a picture: cuts coloured in the order of the passes, an arrow at the end of each,
/// gaps dashed, rejected ones red, connections, ordinary contours and circles, rings round loose
/// ends and squares round branch points, with title, a legend of what there is, and scale.
///
/// 1600 pixels wide, the drawing at most 1000 high. The same plan gives the same bytes.
std::string PlanSvg(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan);

}  // namespace sheet_planner
