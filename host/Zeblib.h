#pragma once  // host/Zeblib.h

#include <functional>
#include <string_view>

namespace tarnalgo {

/// A value that may be absent: the host's nullable.
template <class T>
struct TNullable {
  bool HasValue = false;  ///< `Value` counts.
  T Value{};              ///< What there is; default-made when there is nothing.

  constexpr TNullable() = default;
  /// Holds `AValue`.
  constexpr explicit TNullable(const T& AValue) : HasValue(true), Value(AValue) {}
};

/// Where `OutputDebugStr` sends its text; empty (the default) drops it.
using TDebugOutput = std::function<void(std::string_view)>;

/// Sets the receiver of debug texts, returns the former one. Process-wide, not locked. A receiver
/// may replace itself while it is called.
TDebugOutput SetDebugOutput(TDebugOutput Output);

/// One debug text to the host.
void OutputDebugStr(std::string_view Text);

}  // namespace tarnalgo
