#include "geometryAlgo/VedaType/DebugText.h"

#include <array>
#include <charconv>
#include <fstream>

#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

void AppendNumber(std::string& Text, double Value, TDebugDigits Digits) {
  std::array<char, 400> Buffer{};  // 309 digits before the point, 16 behind it
  char* const End = Buffer.data() + Buffer.size();
  const auto Result = Digits == ddExact
                          ? std::to_chars(Buffer.data(), End, Value)
                          : std::to_chars(Buffer.data(), End, Value, std::chars_format::fixed,
                                          static_cast<int>(Digits));
  Text.append(Buffer.data(), Result.ptr);
}

void AppendPoint(std::string& Text, const TPoint2D& P, TDebugDigits Digits) {
  Text += '(';
  AppendNumber(Text, P.X, Digits);
  Text += ", ";
  AppendNumber(Text, P.Y, Digits);
  Text += ')';
}

}  // namespace

std::string DebugText(double Value, TDebugDigits Digits) {
  std::string Text;
  AppendNumber(Text, Value, Digits);
  return Text;
}

std::string DebugText(const TPoint2D& P, TDebugDigits Digits) {
  std::string Text;
  AppendPoint(Text, P, Digits);
  return Text;
}

std::string DebugText(const TPoint2D& StartPoint, const TPoint2D& EndPoint, TDebugDigits Digits) {
  std::string Text = " (";
  AppendPoint(Text, StartPoint, Digits);
  Text += ", ";
  AppendPoint(Text, EndPoint, Digits);
  Text += ')';
  return Text;
}

std::string DebugDrawing(const std::vector<TPoint2D>& Points, std::string_view Colour,
                         TDebugDigits Digits) {
  std::string Text(Colour);
  Text += '\n';
  for (const TPoint2D& P : Points) {
    AppendPoint(Text, P, Digits);
    Text += '\n';
  }
  return Text;
}

void WriteDebugFile(std::string_view Where, const std::string& FileName, std::string_view Text) {
  std::ofstream File;
  std::array<char, 4096> Buffer;  // its own one would take memory when the old text is gone already
  File.rdbuf()->pubsetbuf(Buffer.data(), Buffer.size());
  File.open(FileName, std::ios::binary);
  File.write(Text.data(), static_cast<std::streamsize>(Text.size()));
  File.close();
  if (!File) RaiseError<EInOutError>(Where, "无法写入文件 " + FileName);
}

}  // namespace tarnalgo
