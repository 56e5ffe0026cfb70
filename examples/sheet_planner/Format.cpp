#include "examples/sheet_planner/Format.h"

#include <algorithm>
#include <cstddef>

namespace sheet_planner {

namespace {

/// Length of the UTF-8 sequence at the start of `Text`, 0 when there is none that XML allows.
std::size_t SequenceLength(std::string_view Text) {
  const auto Byte = [Text](std::size_t I) { return static_cast<unsigned char>(Text[I]); };
  const unsigned char Lead = Byte(0);
  const std::size_t Length = Lead < 0x80                    ? 1
                             : Lead >= 0xC2 && Lead <= 0xDF ? 2
                             : Lead >= 0xE0 && Lead <= 0xEF ? 3
                             : Lead >= 0xF0 && Lead <= 0xF4 ? 4
                                                            : 0;
  if (Length == 0 || Text.size() < Length) return 0;
  for (std::size_t I = 1; I < Length; ++I) {
    if (Byte(I) < 0x80 || Byte(I) > 0xBF) return 0;
  }
  // Overlong forms, surrogates and what lies beyond Unicode.
  if (Lead == 0xE0 && Byte(1) < 0xA0) return 0;
  if (Lead == 0xED && Byte(1) > 0x9F) return 0;
  if (Lead == 0xF0 && Byte(1) < 0x90) return 0;
  if (Lead == 0xF4 && Byte(1) > 0x8F) return 0;
  // U+FFFE and U+FFFF, which XML forbids.
  if (Lead == 0xEF && Byte(1) == 0xBF && Byte(2) >= 0xBE) return 0;
  return Length;
}

}  // namespace

std::string Grouped(long long Value) {
  std::string Text = std::to_string(Value);
  const std::size_t First = Value < 0 ? 1 : 0;
  for (std::size_t I = Text.size(); I > First + 3;) Text.insert(I -= 3, ",");
  return Text;
}

std::string Counted(long long Count, std::string_view One, std::string_view Many) {
  return Grouped(Count) + " " + std::string(Count == 1 ? One : Many);
}

std::string Listed(const TCensus& Census) {
  std::string Text;
  for (const auto& [Name, Count] : Census) {
    Text += (Text.empty() ? "" : ", ") + Name + " " + Grouped(Count);
  }
  return Text.empty() ? "none" : Text;
}

std::string XmlText(std::string_view Text) {
  std::string Result;
  while (!Text.empty()) {
    const std::size_t Length = SequenceLength(Text);
    const char C = Text.front();
    const bool IsControl = Length == 1 && (C < ' ' || C == '\x7F');
    if (Length == 0 || IsControl) {
      Result += '?';
    } else if (C == '&') {
      Result += "&amp;";
    } else if (C == '<') {
      Result += "&lt;";
    } else if (C == '>') {
      Result += "&gt;";
    } else if (C == '"') {
      Result += "&quot;";
    } else {
      Result += Text.substr(0, Length);
    }
    Text.remove_prefix(std::max<std::size_t>(Length, 1));
  }
  return Result;
}

}  // namespace sheet_planner
