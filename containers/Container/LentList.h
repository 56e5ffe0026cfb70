#pragma once  // containers/Container/LentList.h

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace tarnalgo {

/// A list of plain values that starts in storage lent by its owner and moves to the heap only when
/// that is full. Made without storage it uses the heap from the first item on.
///
///     int Storage[64];
///     TLentList<int> Waiting(Storage, 64);
///
/// For the insides of trees: indices are not checked, and it takes 16 bytes.
/// Ownership: the storage lent must outlive the list; heap storage is the list's own.
/// Cost: as of a vector.
template <class T>
class TLentList {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  TLentList() = default;
  /// Room for `Capacity` items in `Storage` before the heap is needed.
  TLentList(T* Storage, int Capacity) : FItems(Storage), FCapacity(-Capacity) {}
  TLentList(const TLentList&) = delete;
  TLentList& operator=(const TLentList&) = delete;
  ~TLentList() { FreeOwnStorage(); }

  int Count() const { return FCount; }          ///< Items in the list.
  bool IsEmpty() const { return FCount == 0; }  ///< Nothing in the list.
  ///@{
  /// Items in place, in the order of addition. Additions beyond the capacity make them invalid.
  T& operator[](int Index) { return FItems[Index]; }
  const T& operator[](int Index) const { return FItems[Index]; }
  T* begin() { return FItems; }
  T* end() { return FItems + FCount; }
  const T* begin() const { return FItems; }
  const T* end() const { return FItems + FCount; }
  ///@}

  /// Appends an item; the list moves to twice its room when it is full.
  void Add(T Item) {
    if (FCount == Capacity()) Grow(std::max(4, 2 * FCount));
    FItems[FCount++] = Item;
  }
  /// Appends `Item` if `Wanted`, without a branch on it. There must be room (`Reserve`).
  void AddIf(bool Wanted, T Item) {
    FItems[FCount] = Item;
    FCount += static_cast<int>(Wanted);
  }
  /// Removes the last item and returns it.
  T TakeLast() { return FItems[--FCount]; }
  /// Removes the item at `Index`; the later ones close up.
  void Delete(int Index) {
    std::copy(FItems + Index + 1, FItems + FCount, FItems + Index);
    --FCount;
  }
  /// Forgets all items after the first `Count`.
  void Shorten(int Count) { FCount = std::min(FCount, Count); }
  /// Forgets all items and keeps the storage.
  void Clear() { FCount = 0; }
  /// Makes room for `Wanted` items: none of the next additions up to that raises.
  void Reserve(int Wanted) {
    if (Wanted > Capacity()) Grow(std::max(Wanted, 2 * FCount));
  }
  /// Position of the first item equal to `Item`, −1 when absent.
  int IndexOf(const T& Item) const {
    const T* const Found = std::find(begin(), end(), Item);
    return Found == end() ? -1 : static_cast<int>(Found - begin());
  }

 private:
  int Capacity() const { return FCapacity < 0 ? -FCapacity : FCapacity; }
  void Grow(int Wanted) {
    T* const Grown = new T[static_cast<std::size_t>(Wanted)];
    std::copy(begin(), end(), Grown);
    FreeOwnStorage();
    FItems = Grown;
    FCapacity = Wanted;
  }
  void FreeOwnStorage() {
    if (FCapacity > 0) delete[] FItems;
  }

  T* FItems = nullptr;
  int FCount = 0;
  int FCapacity = 0;  // negative while the storage is lent
};

}  // namespace tarnalgo
