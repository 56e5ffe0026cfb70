#include "host/Zeblib.h"

#include <gtest/gtest.h>

#include <string>

namespace tarnalgo {
namespace {

TEST(OutputDebugStr, GoesToTheReceiverSetLast) {
  OutputDebugStr("dropped");  // nobody listens
  std::string First;
  std::string Second;
  EXPECT_FALSE(SetDebugOutput([&](std::string_view Text) { First += Text; }));
  OutputDebugStr("a");
  const TDebugOutput Former = SetDebugOutput([&](std::string_view Text) { Second += Text; });
  OutputDebugStr("b");
  Former("c");
  EXPECT_TRUE(SetDebugOutput({}));
  OutputDebugStr("d");
  EXPECT_EQ("ac", First);
  EXPECT_EQ("b", Second);
}

TEST(OutputDebugStr, AReceiverMayTakeItselfAway) {
  std::string Received;
  const std::string Long(100, 'x');  // kept by the receiver itself, in memory of its own
  SetDebugOutput([&Received, Long](std::string_view Text) {
    SetDebugOutput({});
    Received += Long;
    Received += Text;
  });
  OutputDebugStr("a");
  OutputDebugStr("b");
  EXPECT_EQ(Long + "a", Received);
}

}  // namespace
}  // namespace tarnalgo
