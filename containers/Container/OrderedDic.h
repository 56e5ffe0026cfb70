#pragma once  // containers/Container/OrderedDic.h

#include <algorithm>
#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>
#include <vector>

#include "containers/Container/Bytewise.h"
#include "containers/Container/HashIndex.h"
#include "host/Exceptions.h"

namespace tarnalgo {

/// A dictionary from keys to objects that remembers the order in which the keys were added: what it
/// enumerates depends on the calls alone, never on addresses or hashes.
///
/// Keys without padding are equal when all their bytes are (0.0 differs from −0.0, a NaN equals
/// itself); other keys need `std::hash` and `==`. A key is default constructible.
/// Ownership: keeps copies of the keys, only refers to the objects; null stands for "no object" and
/// cannot be added.
/// Cost: O(1) expected for each operation, amortised over the history.
template <class K, class V>
class TOrderedDic {
 public:
  /// Empty.
  TOrderedDic() = default;
  TOrderedDic(const TOrderedDic&) = default;
  /// A dictionary moved from is empty.
  TOrderedDic(TOrderedDic&& Other) noexcept { Swap(Other); }
  /// A dictionary moved from is empty.
  TOrderedDic& operator=(TOrderedDic&& Other) noexcept {
    TOrderedDic Taken(std::move(Other));
    Swap(Taken);
    return *this;
  }
  /// All of `Other` or, when that raises, what was here.
  TOrderedDic& operator=(const TOrderedDic& Other) {
    *this = TOrderedDic(Other);  // the parts change together
    return *this;
  }

  int Count() const { return FCount; }  ///< Keys present.
  /// The key is present.
  bool Contains(const K& Key) const { return Position(Key, HashOf(Key)) >= 0; }
  /// The object of `Key`, null when it is absent.
  V* Find(const K& Key) const {
    const int At = Position(Key, HashOf(Key));
    return At < 0 ? nullptr : FEntries[static_cast<std::size_t>(At)].Value;
  }
  /// Where a look-up of `Key` begins, to be prefetched by a caller with other work to do first.
  const void* PlaceOf(const K& Key) const { return FIndex.PlaceOf(HashOf(Key)); }
  /// The key that has been in the dictionary for the longest time, null when there is none.
  const K* First() const { return FCount == 0 ? nullptr : &FEntries[FFirst].Key; }
  /// Calls `Action(Key, Value)` for each pair, in the order in which the keys were added.
  template <class TAction>
  void ForEach(TAction Action) const {
    for (std::size_t I = FFirst; I < FEntries.size(); ++I) {
      if (FEntries[I].Value) Action(FEntries[I].Key, *FEntries[I].Value);
    }
  }

  /// Makes room for one more key: the next `Add` of a new one allocates nothing.
  void PrepareAdd() {
    if (FEntries.size() == FEntries.capacity()) {
      if (2 * static_cast<std::size_t>(FCount) <= FEntries.size()) CloseUp();
      FEntries.reserve(std::max<std::size_t>(8, 2 * FEntries.size()));
    }
    FIndex.Reserve(static_cast<std::size_t>(FCount) + 1);
  }
  /// Errors: `Key` is present, `EParamError`, nothing changed.
  void Add(K Key, V* Value) {
    const std::size_t Hash = HashOf(Key);
    if (Position(Key, Hash) >= 0) RaiseError<EParamError>("TOrderedDic.Add", "duplicate key");
    PrepareAdd();
    FIndex.Add(Hash, static_cast<int>(FEntries.size()));
    FEntries.push_back({std::move(Key), Value});
    ++FCount;
  }
  /// Forgets `Key` and returns its object; null, and nothing happens, when it is absent.
  V* Remove(const K& Key) {
    const std::size_t Hash = HashOf(Key);
    const int At = Position(Key, Hash);
    if (At < 0) return nullptr;
    FIndex.Remove(Hash, At);
    V* const Value = FEntries[static_cast<std::size_t>(At)].Value;
    FEntries[static_cast<std::size_t>(At)] = TEntry{};
    --FCount;
    while (FFirst < FEntries.size() && !FEntries[FFirst].Value) ++FFirst;
    if (FCount == 0) Clear();
    return Value;
  }
  /// Forgets all keys; the objects are not touched.
  void Clear() {
    if (FCount > 0) FIndex.Clear();
    FEntries.clear();
    FFirst = 0;
    FCount = 0;
  }

 private:
  // Entries stand in the order they were added; a removed one stays as a gap until the list would
  // have to grow.
  struct TEntry {
    K Key{};
    V* Value = nullptr;
  };

  void Swap(TOrderedDic& Other) noexcept {
    std::swap(FIndex, Other.FIndex);
    std::swap(FEntries, Other.FEntries);
    std::swap(FFirst, Other.FFirst);
    std::swap(FCount, Other.FCount);
  }
  static std::size_t HashOf(const K& Key) {
    if constexpr (std::is_integral_v<K>) {
      return static_cast<std::size_t>(Key);  // the index keeps neighbours together
    } else if constexpr (TBytewiseComparable<K>) {
      return TBytewiseHash<K>{}(Key);
    } else {
      return std::hash<K>{}(Key);
    }
  }
  static bool Same(const K& A, const K& B) {
    if constexpr (TBytewiseComparable<K>) {
      return TBytewiseEqual<K>{}(A, B);
    } else {
      return A == B;
    }
  }
  int Position(const K& Key, std::size_t Hash) const {
    return FIndex.Find(Hash, [this, &Key](int At) {
      return Same(FEntries[static_cast<std::size_t>(At)].Key, Key);
    });
  }
  void CloseUp() {
    std::erase_if(FEntries, [](const TEntry& Entry) { return Entry.Value == nullptr; });
    FFirst = 0;
    FIndex.Clear();
    for (std::size_t I = 0; I < FEntries.size(); ++I) {
      FIndex.Add(HashOf(FEntries[I].Key), static_cast<int>(I));
    }
  }

  THashIndex FIndex;
  std::vector<TEntry> FEntries;
  std::size_t FFirst = 0;  // position of the oldest entry
  int FCount = 0;
};

}  // namespace tarnalgo
