#pragma once  // examples/sheet_planner/DxfWriter.h

#include <string>
#include <vector>

#include "examples/sheet_planner/Moves.h"

namespace sheet_planner {

/// Writes the moves as a DXF drawing (R2000), an entity for each curve in the order of cutting:
/// lines, arcs and circles as such, Beziers as splines of degree 3. A clockwise arc is stored the
/// only way the format has, counter-clockwise. Layers: `PASSES`, `CIRCLES` and `CONTOURS` for what
/// is cut, `GAPS`, `CONNECTIONS` and `RAPIDS` for what is not.
/// Errors: a file that cannot be written, `EBadInput`.
void WritePlanDxf(const std::string& Path, const std::vector<TMove>& Moves);

}  // namespace sheet_planner
