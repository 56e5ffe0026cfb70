#pragma once  // examples/Numbers.h

#include <array>
#include <charconv>
#include <string>

namespace examples {

/// The value with that many decimals, whatever the locale; "-0" never.
inline std::string Fixed(double Value, int Decimals) {
  std::array<char, 400> Buffer;
  const auto [End, Error] = std::to_chars(Buffer.data(), Buffer.data() + Buffer.size(), Value,
                                          std::chars_format::fixed, Decimals);
  std::string Text(Buffer.data(), End);
  const bool IsZero = Text.find_first_not_of("-0.") == std::string::npos;
  if (IsZero && Text.front() == '-') Text.erase(0, 1);
  return Text;
}

/// The same without zeros at the end: for files.
inline std::string Short(double Value, int Decimals) {
  std::string Text = Fixed(Value, Decimals);
  if (Text.find('.') == std::string::npos) return Text;
  Text.erase(Text.find_last_not_of('0') + 1);
  if (Text.back() == '.') Text.pop_back();
  return Text;
}

}  // namespace examples
