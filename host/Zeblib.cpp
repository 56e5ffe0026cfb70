#include "host/Zeblib.h"

#include <memory>
#include <utility>

namespace tarnalgo {

namespace {

/// Shared with the calls under way, so that a receiver may replace itself.
std::shared_ptr<TDebugOutput>& DebugOutput() {
  static std::shared_ptr<TDebugOutput> Output;
  return Output;
}

}  // namespace

TDebugOutput SetDebugOutput(TDebugOutput Output) {
  auto Next = Output ? std::make_shared<TDebugOutput>(std::move(Output)) : nullptr;
  const auto Former = std::exchange(DebugOutput(), std::move(Next));
  return Former ? *Former : TDebugOutput();
}

void OutputDebugStr(std::string_view Text) {
  if (const auto Output = DebugOutput()) (*Output)(Text);
}

}  // namespace tarnalgo
