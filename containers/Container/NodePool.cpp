#include "containers/Container/NodePool.h"

#include <cstdint>

// The sanitizer for leaks looks for pointers in what operator new gave, not in mapped pages.
#if defined(__linux__) && !defined(TARNALGO_NODE_POOL_POISONS)
#define TARNALGO_NODE_POOL_MAPS 1
#include <sys/mman.h>
#endif

namespace tarnalgo::detail {

#ifdef TARNALGO_NODE_POOL_MAPS
namespace {

bool IsMapped(std::size_t Bytes) {
  return Bytes % kHugePage == 0;
}

// From the system, not from operator new: among the aligned blocks of a heap lie holes of their
// size, and a tree built anew would not fit into the blocks that the last one gave back.
void* MapHugePages(std::size_t Bytes) {
  const std::size_t Mapped = Bytes + kHugePage;
  void* const Start =
      mmap(nullptr, Mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (Start == MAP_FAILED) throw std::bad_alloc();
  const std::size_t Before = -reinterpret_cast<std::uintptr_t>(Start) % kHugePage;
  char* const Slab = static_cast<char*>(Start) + Before;
  if (Before > 0) munmap(Start, Before);
  munmap(Slab + Bytes, kHugePage - Before);
  // A hint; the slab serves as well when the system refuses.
  madvise(Slab, Bytes, MADV_HUGEPAGE);
  return Slab;
}

}  // namespace
#endif

void* AllocateSlab(std::size_t Bytes, std::size_t Alignment) {
#ifdef TARNALGO_NODE_POOL_MAPS
  if (IsMapped(Bytes)) return MapHugePages(Bytes);
#endif
  return ::operator new (Bytes, std::align_val_t{Alignment});
}

void FreeSlab(void* Slab, [[maybe_unused]] std::size_t Bytes, std::size_t Alignment) noexcept {
#ifdef TARNALGO_NODE_POOL_MAPS
  if (IsMapped(Bytes)) {
    munmap(Slab, Bytes);
    return;
  }
#endif
  ::operator delete (Slab, std::align_val_t{Alignment});
}

}  // namespace tarnalgo::detail
