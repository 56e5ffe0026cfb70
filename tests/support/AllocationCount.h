#pragma once  // tests/support/AllocationCount.h

namespace tarnalgo::test {

/// How often this program has taken memory by `new`; for binaries built with AllocationCount.cpp.
int AllocationCount();

}  // namespace tarnalgo::test
