#pragma once  // examples/sheet_planner/DxfReader.h

#include <string>
#include <string_view>

#include "examples/sheet_planner/Drawing.h"

namespace sheet_planner {

/// The drawing in the text of an ASCII DXF file, release 12 or later, in model space.
///
/// Read: LINE, ARC, CIRCLE, LWPOLYLINE and POLYLINE with bulges, SPLINE (control points, rational
/// or not, or fit points), ELLIPSE, and INSERT with its blocks, nested and in arrays. Splines and
/// ellipses are flattened to chords within `ChordError` of the curve; a spline that is straight
/// becomes an edge, and so do circles and arcs under a skew or uneven block scale become flattened
/// ellipses. Everything else, and what is hidden or damaged, is named and counted in `Skipped`.
/// Errors: text that is no DXF, more than four million entities, sides and chords once blocks are
/// expanded, a drawing without anything to cut: `EBadInput`.
/// Cost: linear in the text and the expanded entities.
TDrawing ReadDxf(std::string_view Bytes, double ChordError);

/// The same for a file, at most 128 MiB of it; the drawing's name is the file's.
TDrawing ReadDxfFile(const std::string& Path, double ChordError);

}  // namespace sheet_planner
