#pragma once  // examples/sheet_planner/JsonWriter.h

#include <string>

#include "examples/sheet_planner/Drawing.h"
#include "examples/sheet_planner/Moves.h"

namespace sheet_planner {

/// The plan for a machine, as JSON: the moves in order, each with its kind (`rapid`, `gap`,
/// `connection`, `cut`), whether the beam is on, the port, the pass, circle or contour it belongs
/// to, and its curves with their parameters as doubles that read back to the same bits:
///
///     {"type": "line", "start": [x, y], "end": [x, y]}
///     {"type": "arc", "center": [x, y], "radius": r, "start_angle": a, "sweep": s,
///      "start": [x, y], "end": [x, y]}          angles in radians, counter-clockwise positive
///     {"type": "circle", ...}                   the same, a full turn
///     {"type": "bezier", "points": [[x, y], [x, y], [x, y], [x, y]]}
///
/// Also the loose ends and branch points of the drawing. The same plan gives the same bytes.
std::string PlanJson(const TDrawing& Drawing, const TSheet& Sheet, const std::vector<TMove>& Moves);

}  // namespace sheet_planner
