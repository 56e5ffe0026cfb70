#pragma once  // containers/Container/OwnValueDic.h

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "containers/Container/Bytewise.h"
#include "containers/Container/HashIndex.h"
#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace detail {

template <class K>
concept TStandardHashable = requires(const K& Key, const K& Other) {
  { std::hash<K>()(Key) } -> std::convertible_to<std::size_t>;
  { Key == Other } -> std::convertible_to<bool>;
};

}  // namespace detail

/// How a key is hashed and compared unless something else is asked for: by `std::hash` and `==`
/// where the type has them (a pointer: the very object), else by its bytes.
template <class K>
struct TKeyHash : TBytewiseHash<K> {};
template <detail::TStandardHashable K>
struct TKeyHash<K> : std::hash<K> {};
template <class K>
struct TKeyEqual : TBytewiseEqual<K> {};
template <detail::TStandardHashable K>
struct TKeyEqual<K> : std::equal_to<K> {};

/// A dictionary that owns its values, not its keys.
///
///     TOwnValueDic<const TVPolyline2D*, TIntPointList> Crossings;
///     Crossings.Add(Outline, std::make_unique<TIntPointList>());
///     for (const auto& [Key, Value] : Crossings) Report(*Key, *Value);
///
/// A value is freed when its key is removed, when another value takes its place, on `Clear` and
/// with the dictionary; a key that is a pointer is never freed. Values are reached as raw pointers,
/// valid until then. Movable, not copyable.
///
/// Enumeration (pairs, `Keys`, `Values`) runs in the order of insertion until the first removal;
/// a removal puts the last pair in the gap. It never depends on addresses.
/// Cost: O(1) expected for a key.
template <class K, class V, class THash = TKeyHash<K>, class TEqual = TKeyEqual<K>>
class TOwnValueDic {
 public:
  /// A key with the value it owns.
  struct TPair {
    K Key;                     ///< What the value is found by.
    std::unique_ptr<V> Value;  ///< Never null but for a pair that was added as null.
  };
  /// Walks the pairs.
  using TIterator = typename std::vector<TPair>::const_iterator;

  TOwnValueDic() = default;
  TOwnValueDic(TOwnValueDic&&) = default;
  TOwnValueDic& operator=(TOwnValueDic&&) = default;
  virtual ~TOwnValueDic() = default;

  int Count() const { return static_cast<int>(FPairs.size()); }  ///< Pairs in the dictionary.
  /// The pairs, in the order that `Keys` has.
  TIterator begin() const { return FPairs.begin(); }
  TIterator end() const { return FPairs.end(); }  ///< Behind the last.
  /// Copies of the keys, in the order of enumeration.
  std::vector<K> Keys() const;
  /// Ownership: stays with the dictionary.
  std::vector<V*> Values() const;

  /// The key is present, whatever its value.
  bool ContainsKey(const K& Key) const { return PositionOf(Key) >= 0; }
  /// `Value` is null when the key is absent.
  bool TryGetValue(const K& Key, V*& Value) const;
  /// Errors: an absent key, `EParamError`.
  V* operator[](const K& Key) const;

  /// Room for so many keys, at most `kMostReserved`: additions up to there take no memory, but for
  /// copies of the keys.
  void Reserve(int Count) {
    if (Count <= 0) return;
    const auto Room = static_cast<std::size_t>(std::min(Count, kMostReserved));
    FPairs.reserve(Room);
    FIndex.Reserve(Room);
  }
  /// Errors: a key that is present, `EParamError`; `Value` then still belongs to the caller.
  void Add(const K& Key, std::unique_ptr<V>&& Value);
  /// Frees the value that was there. The very object that is there already is kept.
  void AddOrSetValue(const K& Key, std::unique_ptr<V>&& Value);
  /// Does nothing when the key is absent.
  void Remove(const K& Key) { Extract(Key); }
  /// Removes the key and hands its value out; null when it is absent.
  std::unique_ptr<V> Extract(const K& Key);
  /// Frees all values. They are gone from the dictionary before the first destructor runs.
  void Clear();

 private:
  int PositionOf(const K& Key) const;
  TPair& PairAt(int Position) { return FPairs[static_cast<std::size_t>(Position)]; }
  const TPair& PairAt(int Position) const { return FPairs[static_cast<std::size_t>(Position)]; }
  void Append(const K& Key, std::unique_ptr<V>&& Value);

  std::vector<TPair> FPairs;
  THashIndex FIndex;
};

template <class K, class V, class THash, class TEqual>
std::vector<K> TOwnValueDic<K, V, THash, TEqual>::Keys() const {
  std::vector<K> Result;
  Result.reserve(FPairs.size());
  for (const TPair& Pair : FPairs) Result.push_back(Pair.Key);
  return Result;
}

template <class K, class V, class THash, class TEqual>
std::vector<V*> TOwnValueDic<K, V, THash, TEqual>::Values() const {
  std::vector<V*> Result;
  Result.reserve(FPairs.size());
  for (const TPair& Pair : FPairs) Result.push_back(Pair.Value.get());
  return Result;
}

template <class K, class V, class THash, class TEqual>
bool TOwnValueDic<K, V, THash, TEqual>::TryGetValue(const K& Key, V*& Value) const {
  const int Position = PositionOf(Key);
  Value = Position >= 0 ? PairAt(Position).Value.get() : nullptr;
  return Position >= 0;
}

template <class K, class V, class THash, class TEqual>
V* TOwnValueDic<K, V, THash, TEqual>::operator[](const K& Key) const {
  const int Position = PositionOf(Key);
  if (Position < 0) RaiseError<EParamError>("TOwnValueDic", "the key is absent");
  return PairAt(Position).Value.get();
}

template <class K, class V, class THash, class TEqual>
void TOwnValueDic<K, V, THash, TEqual>::Add(const K& Key, std::unique_ptr<V>&& Value) {
  if (ContainsKey(Key)) RaiseError<EParamError>("TOwnValueDic.Add", "the key is present already");
  Append(Key, std::move(Value));
}

template <class K, class V, class THash, class TEqual>
void TOwnValueDic<K, V, THash, TEqual>::AddOrSetValue(const K& Key, std::unique_ptr<V>&& Value) {
  const int Position = PositionOf(Key);
  if (Position < 0) return Append(Key, std::move(Value));
  // Two owners of one object: freeing the old value would free the new one.
  if (Value == PairAt(Position).Value) return static_cast<void>(Value.release());
  // Freed last, when the dictionary is consistent again: its destructor may look here.
  const std::unique_ptr<V> Old = std::exchange(PairAt(Position).Value, std::move(Value));
}

template <class K, class V, class THash, class TEqual>
std::unique_ptr<V> TOwnValueDic<K, V, THash, TEqual>::Extract(const K& Key) {
  const int Position = PositionOf(Key);
  if (Position < 0) return nullptr;
  const int Last = Count() - 1;
  const std::size_t Hash = THash()(Key);
  const std::size_t HashOfLast = THash()(FPairs.back().Key);
  FIndex.Remove(Hash, Position);
  std::unique_ptr<V> Result = std::move(PairAt(Position).Value);
  if (Position != Last) {
    FIndex.Move(HashOfLast, Last, Position);
    PairAt(Position) = std::move(FPairs.back());
  }
  FPairs.pop_back();
  return Result;
}

template <class K, class V, class THash, class TEqual>
void TOwnValueDic<K, V, THash, TEqual>::Clear() {
  std::vector<TPair> Leaving;
  Leaving.swap(FPairs);
  FIndex.Clear();
}

template <class K, class V, class THash, class TEqual>
int TOwnValueDic<K, V, THash, TEqual>::PositionOf(const K& Key) const {
  return FIndex.Find(THash()(Key),
                     [&](int Position) { return TEqual()(PairAt(Position).Key, Key); });
}

template <class K, class V, class THash, class TEqual>
void TOwnValueDic<K, V, THash, TEqual>::Append(const K& Key, std::unique_ptr<V>&& Value) {
  const std::size_t Hash = THash()(Key);
  FIndex.Reserve(FPairs.size() + 1);
  FPairs.push_back({Key, nullptr});
  FIndex.Add(Hash, Count() - 1);  // cannot raise: the value may pass into our hands now
  FPairs.back().Value = std::move(Value);
}

}  // namespace tarnalgo
