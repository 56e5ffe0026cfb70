#pragma once  // geometryAlgo/VedaType/DebugText.h

#include <string>
#include <string_view>
#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Decimals of a debug text: 16 tell any two doubles of ordinary size apart, 6 are for the eye;
/// `ddExact` is the shortest text that reads back as the very same number.
enum class TDebugDigits { ddFull = 16, ddShort = 6, ddExact = -1 };
using enum TDebugDigits;

/// Colour in which a dumped shape is to be drawn.
inline constexpr std::string_view kDrawingColour = "#000000";

/// The number with that many decimals, or as short as reads back.
std::string DebugText(double Value, TDebugDigits Digits = ddFull);

/// "(1.0000000000000000, 2.0000000000000000)", short "(1.000000, 2.000000)". Decimal points
/// whatever the locale.
std::string DebugText(const TPoint2D& P, TDebugDigits Digits = ddFull);

/// A segment: " ((1.000000, 2.000000), (3.000000, 4.000000))", with a blank in front.
std::string DebugText(const TPoint2D& StartPoint, const TPoint2D& EndPoint,
                      TDebugDigits Digits = ddFull);

/// A contour: a line with the colour, then a line for each point.
std::string DebugDrawing(const std::vector<TPoint2D>& Points, std::string_view Colour,
                         TDebugDigits Digits = ddFull);

/// Writes `Text` as the whole contents of the file, for the debug dumps.
/// Errors: the file cannot be written, `EInOutError` "[Error] `Where`: 无法写入文件 `FileName`".
void WriteDebugFile(std::string_view Where, const std::string& FileName, std::string_view Text);

}  // namespace tarnalgo
