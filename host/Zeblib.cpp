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
  // A copy, calls of it may be under way; taken before anything changes.
  TDebugOutput Former = DebugOutput() ? *DebugOutput() : TDebugOutput();
  const auto Replaced = std::exchange(DebugOutput(), std::move(Next));
  return Former;
}

void OutputDebugStr(std::string_view Text) {
  if (const auto Output = DebugOutput()) (*Output)(Text);
}

}  // namespace tarnalgo
