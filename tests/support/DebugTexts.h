#pragma once  // tests/support/DebugTexts.h

#include <string>
#include <utility>

#include "host/Zeblib.h"

namespace tarnalgo::test {

/// Keeps the last debug text until the end of the scope.
class TDebugTexts {
 public:
  TDebugTexts()
      : FFormer(SetDebugOutput([this](std::string_view Text) { FLast = std::string(Text); })) {}
  ~TDebugTexts() { SetDebugOutput(std::move(FFormer)); }
  TDebugTexts(const TDebugTexts&) = delete;
  TDebugTexts& operator=(const TDebugTexts&) = delete;

  const std::string& Last() const { return FLast; }

 private:
  std::string FLast;
  TDebugOutput FFormer;
};

}  // namespace tarnalgo::test
