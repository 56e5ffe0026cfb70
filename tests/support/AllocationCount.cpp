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
// Standard algorithms take their buffers this way; a sanitizer would answer it with a block of its
// own, which is not ours to free.
void* operator new(std::size_t Size, const std::nothrow_t&) noexcept {
  ++Count;
  return std::malloc(Size > 0 ? Size : 1);
}
void operator delete(void* Block) noexcept {
  std::free(Block);
}
void operator delete(void* Block, std::size_t) noexcept {
  std::free(Block);
}
