#include "containers/Container/NodePool.h"

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace tarnalgo::detail {

namespace {

std::align_val_t AlignmentOf(std::size_t Bytes, std::size_t Alignment) {
  return std::align_val_t{Bytes % kHugePage == 0 ? kHugePage : Alignment};
}

}  // namespace

void* AllocateSlab(std::size_t Bytes, std::size_t Alignment) {
  void* const Slab = ::operator new(Bytes, AlignmentOf(Bytes, Alignment));
#if defined(__linux__) && defined(MADV_HUGEPAGE)
  // A hint; the slab serves as well when the system refuses.
  if (Bytes % kHugePage == 0) madvise(Slab, Bytes, MADV_HUGEPAGE);
#endif
  return Slab;
}

void FreeSlab(void* Slab, std::size_t Bytes, std::size_t Alignment) noexcept {
  ::operator delete(Slab, AlignmentOf(Bytes, Alignment));
}

}  // namespace tarnalgo::detail
