#pragma once  // containers/Container/HashIndex.h

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarnalgo {

/// The hash table behind the containers of this unit: finds positions in a list of items that its
/// owner keeps, by the hash of the item.
///
/// The owner appends items, and fills the place of a removed one with its last item. So the items
/// lie contiguous, and their order depends on the history of the calls alone, never on addresses:
/// order of insertion as long as nothing was removed.
/// Cost: O(1) expected for each operation. Open addressing, linear probing, at most half full;
/// removal shifts back what follows, so there are no tombstones.
class THashIndex {
 public:
  /// Position of an item of hash `Hash` for which `Matches(Position)` holds, −1 when there is none.
  template <class TMatch>
  int Find(std::size_t Hash, TMatch Matches) const {
    if (FSlots.empty()) return -1;
    const std::uint32_t Short = Fold(Hash);
    for (std::size_t I = Home(Short); FSlots[I].Position >= 0; I = Next(I)) {
      if (FSlots[I].Hash == Short && Matches(FSlots[I].Position)) return FSlots[I].Position;
    }
    return -1;
  }

  /// Where `Find` begins to look for `Hash`, to be prefetched. (A function that prefetches and does
  /// nothing else is dropped by GCC as one without effect.)
  const void* PlaceOf(std::size_t Hash) const {
    return FSlots.empty() ? nullptr : &FSlots[Home(Fold(Hash))];
  }

  /// Room for `Count` items, so that `Add` up to there allocates nothing and cannot raise.
  void Reserve(std::size_t Count) {
    if (2 * Count <= FSlots.size()) return;
    std::size_t Size = std::max<std::size_t>(FSlots.size(), 8);
    while (Size < 2 * Count) Size *= 2;
    std::vector<TSlot> Old(Size);
    Old.swap(FSlots);
    for (const TSlot& Slot : Old) {
      if (Slot.Position >= 0) Place(Slot);
    }
  }

  /// Records a new item. There must be room for it (`Reserve`).
  void Add(std::size_t Hash, int Position) { Place({Fold(Hash), Position}); }

  /// Forgets the item at `Position`, which must be recorded under `Hash`.
  void Remove(std::size_t Hash, int Position) {
    std::size_t Hole = SlotOf(Hash, Position);
    for (std::size_t I = Next(Hole); FSlots[I].Position >= 0; I = Next(I)) {
      // An item may move back to the hole unless its home lies behind the hole.
      if (Distance(Home(FSlots[I].Hash), I) >= Distance(Hole, I)) {
        FSlots[Hole] = FSlots[I];
        Hole = I;
      }
    }
    FSlots[Hole] = TSlot{};
  }

  /// The item recorded under `Hash` at position `From` now stands at `To`.
  void Move(std::size_t Hash, int From, int To) { FSlots[SlotOf(Hash, From)].Position = To; }

  /// Forgets all items; keeps the room.
  void Clear() { std::fill(FSlots.begin(), FSlots.end(), TSlot{}); }

 private:
  struct TSlot {
    std::uint32_t Hash = 0;
    int Position = -1;  // −1: free
  };

  // Fibonacci hashing: hashes that differ in few bits only, low or high ones (the standard hash of
  // a pointer or an integer is its value), still spread. The product is best in its highest bits,
  // so these tell the home: a group of eight slots. Eight hashes in a row share a group, in which
  // each has a slot of its own: numbers used one after the other come from memory together.
  static std::uint32_t Fold(std::size_t Hash) {
    const std::uint64_t Product = (std::uint64_t{Hash} >> 3) * 0x9E3779B97F4A7C15u;
    const auto Group = static_cast<std::uint32_t>(Product >> 32);
    return (Group & ~7u) | ((static_cast<std::uint32_t>(Hash) + Group) & 7u);
  }
  std::size_t Home(std::uint32_t Hash) const {
    const auto Group = static_cast<std::size_t>((std::uint64_t{Hash >> 3} * FSlots.size()) >> 32);
    return 8 * Group + (Hash & 7u);
  }
  std::size_t Next(std::size_t I) const { return (I + 1) & (FSlots.size() - 1); }
  std::size_t Distance(std::size_t From, std::size_t To) const {
    return (To - From) & (FSlots.size() - 1);
  }
  std::size_t SlotOf(std::size_t Hash, int Position) const {
    std::size_t I = Home(Fold(Hash));
    while (FSlots[I].Position != Position) I = Next(I);
    return I;
  }
  void Place(TSlot Slot) {
    std::size_t I = Home(Slot.Hash);
    while (FSlots[I].Position >= 0) I = Next(I);
    FSlots[I] = Slot;
  }

  std::vector<TSlot> FSlots;  // a power of two of them, or none
};

}  // namespace tarnalgo
