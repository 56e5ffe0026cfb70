#pragma once  // tests/support/Raises.h

#include <gtest/gtest.h>

#include <string>

#include "host/Exceptions.h"

namespace tarnalgo::test {

/// `Action` raises `E` (or a class derived from it) with exactly this message.
template <class E = Exception, class TAction>
void ExpectRaises(TAction&& Action, const std::string& Message) {
  try {
    Action();
    ADD_FAILURE() << "nothing raised, expected: " << Message;
  } catch (const E& Error) {
    EXPECT_EQ(Message, Error.what());
  }
}

}  // namespace tarnalgo::test
