#pragma once  // examples/sheet_planner/DxfText.h

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "examples/sheet_planner/Drawing.h"

namespace sheet_planner {

/// A DXF text brought into a form that the DXF library reads without harm.
///
/// That library reports success for almost anything, believes every declared count, stops silently
/// at a long line and takes an unreadable number for 0. So the groups are read and judged here
/// first, and only what the planner serves is written on: LF line ends, entities of the served
/// kinds in model space and in blocks, sound numbers, counts as they really are.
struct TDxfText {
  std::string Text;
  std::string Unit = "units";
  TCensus Skipped;  // left out of model space, by kind and reason
  std::map<std::string, TCensus> SkippedInBlocks;
  std::vector<std::string> Notes;
};

/// Errors: binary or UTF-16 text, an odd structure, no ENTITIES section: `EBadInput`, saying where.
/// Cost: linear.
TDxfText CleanDxf(std::string_view Bytes);

}  // namespace sheet_planner
