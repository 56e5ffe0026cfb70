#pragma once  // containers/Container/NodePool.h

#include <cstddef>
#include <new>
#include <utility>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define TARNALGO_NODE_POOL_POISONS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TARNALGO_NODE_POOL_POISONS 1
#endif
#endif
#ifdef TARNALGO_NODE_POOL_POISONS
#include <sanitizer/asan_interface.h>
#endif

namespace tarnalgo {

namespace detail {

inline constexpr std::size_t kHugePage = std::size_t{1} << 21;

/// Memory for a slab. One of whole huge pages is aligned to them, and the system is asked to use
/// them: a walk over a large tree touches a new page at almost every node, and looking up the
/// address of a small page takes longer than reading the node.
void* AllocateSlab(std::size_t Bytes, std::size_t Alignment);
void FreeSlab(void* Slab, std::size_t Bytes, std::size_t Alignment) noexcept;

}  // namespace detail

/// Memory for the nodes of one tree or list: carved from slabs, kept for reuse, given back all at
/// once.
///
///     TNodePool<TItemNode> Pool;
///     TItemNode* Node = Pool.Create(Key, Value);
///     Pool.Destroy(Node);
///
/// A node stays where it is until it is destroyed, also when the pool is moved. Nodes made one
/// after the other lie next to each other, which is what makes walks over the tree fast.
/// Ownership: the pool owns the memory, its user the nodes: a node that is still alive when the
/// pool goes is not destructed, which only matters when its destructor does something. Movable, not
/// copyable.
/// Cost: O(1), one allocation for each slab (about 4 kB, each slab double the former up to 2 MB, in
/// huge pages where the system has them).
/// Under AddressSanitizer a destroyed node is poisoned, so that use after it is reported.
template <class TNode>
class TNodePool {
 public:
  TNodePool() = default;
  ///@{
  /// Memory and nodes change hands; nodes keep their addresses.
  TNodePool(TNodePool&& Other) noexcept
      : FSlabs(std::exchange(Other.FSlabs, {})),
        FFree(std::exchange(Other.FFree, nullptr)),
        FNext(std::exchange(Other.FNext, nullptr)),
        FEnd(std::exchange(Other.FEnd, nullptr)) {}
  TNodePool& operator=(TNodePool&& Other) noexcept {
    TNodePool Taken(std::move(Other));
    std::swap(FSlabs, Taken.FSlabs);
    std::swap(FFree, Taken.FFree);
    std::swap(FNext, Taken.FNext);
    std::swap(FEnd, Taken.FEnd);
    return *this;
  }
  ///@}
  TNodePool(const TNodePool&) = delete;
  TNodePool& operator=(const TNodePool&) = delete;
  ~TNodePool() { Release(); }

  /// A new node, constructed from `Args`. A constructor that raises leaves the pool as it was.
  template <class... TArgs>
  TNode* Create(TArgs&&... Args) {
    if (FFree == nullptr && FNext == FEnd) AddSlab();
    TSlot* const Slot = FFree != nullptr ? FFree : FNext;
    Unpoison(*Slot);
    TSlot* const NextFree = FFree != nullptr ? FFree->Next : nullptr;
    TNode* Node = nullptr;
    try {
      Node = ::new (static_cast<void*>(Slot->Bytes)) TNode(std::forward<TArgs>(Args)...);
    } catch (...) {
      Slot->Next = NextFree;
      Poison(*Slot);
      throw;
    }
    if (FFree != nullptr) {
      FFree = NextFree;
    } else {
      ++FNext;
    }
    return Node;
  }

  /// Destructs a node of this pool and keeps its place for the next one. Null does nothing.
  void Destroy(TNode* Node) {
    if (Node == nullptr) return;
    Node->~TNode();
    auto* const Slot = reinterpret_cast<TSlot*>(Node);
    Slot->Next = FFree;
    FFree = Slot;
    Poison(*Slot);
  }

  /// Gives back all memory. Nodes alive are gone without destruction.
  void Release() {
    for (const TSlab& Slab : FSlabs) {
      for (std::size_t I = 0; I < Slab.Count(); ++I) Unpoison(Slab.Slots[I]);
      detail::FreeSlab(Slab.Slots, Slab.Bytes, alignof(TSlot));
    }
    FSlabs.clear();
    FFree = FNext = FEnd = nullptr;
  }

 private:
  static constexpr std::size_t kFirstSlab = std::size_t{1} << 12;

  union TSlot {
    TSlot* Next;
    alignas(TNode) std::byte Bytes[sizeof(TNode)];
  };
  struct TSlab {
    TSlot* Slots;
    std::size_t Bytes;

    std::size_t Count() const { return Bytes / sizeof(TSlot); }
  };

  void AddSlab() {
    std::size_t Bytes = FSlabs.empty() ? kFirstSlab : FSlabs.back().Bytes;
    if (!FSlabs.empty() && Bytes < detail::kHugePage) Bytes *= 2;
    while (Bytes < sizeof(TSlot)) Bytes *= 2;
    FSlabs.reserve(FSlabs.size() + 1);
    auto* const Slots = static_cast<TSlot*>(detail::AllocateSlab(Bytes, alignof(TSlot)));
    FSlabs.push_back({Slots, Bytes});
    FNext = Slots;
    FEnd = Slots + FSlabs.back().Count();
  }

#ifdef TARNALGO_NODE_POOL_POISONS
  static void Poison(TSlot& Slot) {
    ASAN_POISON_MEMORY_REGION(&Slot, sizeof(TSlot));
  }
  static void Unpoison(TSlot& Slot) {
    ASAN_UNPOISON_MEMORY_REGION(&Slot, sizeof(TSlot));
  }
#else
  static void Poison(TSlot&) {}
  static void Unpoison(TSlot&) {}
#endif

  std::vector<TSlab> FSlabs;
  TSlot* FFree = nullptr;  // destroyed nodes, the last one first
  TSlot* FNext = nullptr;  // the unused rest of the last slab
  TSlot* FEnd = nullptr;
};

}  // namespace tarnalgo
