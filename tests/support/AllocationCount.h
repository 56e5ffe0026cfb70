#pragma once  // tests/support/AllocationCount.h

namespace tarnalgo::test {

// For binaries built with AllocationCount.cpp, which replaces every form of `new`.

/// How often this program has taken memory by `new`.
int AllocationCount();
/// Blocks taken by `new` and not given back yet.
int LiveAllocations();

/// Whether only the allocation that fails is refused or every later one too: what cleans up after a
/// failure must not need memory itself.
enum class TShortage { Once, FromThenOn };

/// Lets the `Nth` allocation from now on (1: the next) fail, unless the clipping library makes it.
void StarveAt(int Nth, TShortage Shortage);
/// Ends the shortage; whether any allocation was refused.
bool EndShortage();

}  // namespace tarnalgo::test
