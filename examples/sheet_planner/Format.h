#pragma once  // examples/sheet_planner/Format.h

#include <string>
#include <string_view>

#include "examples/Numbers.h"
#include "examples/sheet_planner/Drawing.h"

namespace sheet_planner {

using examples::Fixed;
using examples::Short;
/// "12,345".
std::string Grouped(long long Value);
/// "1 pass", "2 passes".
std::string Counted(long long Count, std::string_view One, std::string_view Many);
/// "ARC 2, LINE 1,544"; "none" when nothing was counted.
std::string Listed(const TCensus& Census);
/// Fit for an XML text; what is no UTF-8 or does not print becomes "?".
std::string XmlText(std::string_view Text);

}  // namespace sheet_planner
