#include "host/Zeblib.h"

#include <utility>

namespace tarnalgo {

namespace {

TDebugOutput& DebugOutput() {
  static TDebugOutput Output;
  return Output;
}

}  // namespace

TDebugOutput SetDebugOutput(TDebugOutput Output) {
  return std::exchange(DebugOutput(), std::move(Output));
}

void OutputDebugStr(std::string_view Text) {
  if (const TDebugOutput& Output = DebugOutput()) Output(Text);
}

}  // namespace tarnalgo
