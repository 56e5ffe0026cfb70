#include "tests/support/AllocationCount.h"

#include <cstdlib>
#include <new>

namespace {
int Count = 0;
}  // namespace

int tarnalgo::test::AllocationCount() {
  return Count;
}

void* operator new(std::size_t Size) {
  ++Count;
  if (void* const Block = std::malloc(Size > 0 ? Size : 1)) return Block;
  throw std::bad_alloc();
}
void operator delete(void* Block) noexcept {
  std::free(Block);
}
void operator delete(void* Block, std::size_t) noexcept {
  std::free(Block);
}
