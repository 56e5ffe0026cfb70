#pragma once  // containers/Container/Collection.h

#include <cstddef>
#include <ranges>
#include <utility>
#include <vector>

#include "containers/Container/Bytewise.h"
#include "containers/Container/HashIndex.h"

namespace tarnalgo {

/// What the collections of all element types have in common, so that any two can be compared.
class TCollectionBase {
 public:
  virtual ~TCollectionBase() = default;

  /// Number of elements.
  virtual int Count() const = 0;
  /// `Obj` is a collection of the same element type and of the same elements, in whatever order;
  /// false for null and for another element type, also when both are empty.
  virtual bool Equals(const TCollectionBase* Obj) const = 0;

 protected:
  TCollectionBase() = default;
  TCollectionBase(const TCollectionBase&) = default;
  TCollectionBase(TCollectionBase&&) = default;
  TCollectionBase& operator=(const TCollectionBase&) = default;
  TCollectionBase& operator=(TCollectionBase&&) = default;
};

/// A set of records, equal when all their bytes are equal.
///
///     TCollection<TPointL2D> Seen;
///     if (Seen.Add(Cell)) Points.push_back(P);  // the first point of its cell
///
/// No tolerance, and no `==` of the record: 0.0 differs from −0.0, and records that differ in a
/// byte without a meaning differ. A record with padding is refused at compile time, its padding
/// could hold anything.
///
/// Enumeration runs in an order that nothing should depend on: order of insertion until the first
/// removal, afterwards fixed by the history of the calls. A change makes iterators invalid.
/// A value: a copy is independent. Both operands of an operation may be the same collection.
/// Cost: O(1) expected for an element, O(n) for an operation on whole collections.
template <class T>
class TCollection : public TCollectionBase {
  static_assert(TBytewiseComparable<T>,
                "elements are compared by their bytes: trivially copyable, no padding");

 public:
  /// Walks the elements, which cannot be changed in place.
  using TIterator = typename std::vector<T>::const_iterator;

  TCollection() = default;
  TCollection(const TCollection&) = default;
  TCollection(TCollection&&) = default;
  /// All of `Other` or, when that raises, what was here.
  TCollection& operator=(const TCollection& Other) {
    *this = TCollection(Other);  // the two parts change together
    return *this;
  }
  TCollection& operator=(TCollection&&) = default;
  /// The elements of a range, each once.
  template <std::ranges::input_range TRange>
  explicit TCollection(const TRange& Datas) {
    AddRange(Datas);
  }

  int Count() const override { return static_cast<int>(FItems.size()); }
  /// The elements, for a range-based loop.
  TIterator begin() const { return FItems.begin(); }
  TIterator end() const { return FItems.end(); }  ///< Behind the last.
  /// The set has a record of these very bytes.
  bool Contains(const T& Value) const { return PositionOf(Value) >= 0; }
  bool Equals(const TCollectionBase* Obj) const override;

  /// False, and no change, when the element is present already.
  bool Add(const T& Value);
  /// `Add` for each, in the order of the range; those added before something raises are taken out
  /// again.
  template <std::ranges::input_range TRange>
  void AddRange(const TRange& Values);
  /// Does nothing when the element is absent.
  void Remove(const T& Value);
  /// Removes all elements.
  void Clear();

  /// An independent copy, elements in the same order.
  TCollection Clone() const { return *this; }
  /// Adds all of `Source`, after a `Clear` when `ClearFirst`: the collection itself as `Source` is
  /// then empty.
  void CopyFrom(const TCollection& Source, bool ClearFirst);

  /// Adds the elements of `Collection`.
  void Union(const TCollection& Collection) { AddRange(Collection); }
  /// Keeps what `Collection` contains too.
  void Intersection(const TCollection& Collection) { RemoveWhere(Collection, false); }
  /// Removes what `Collection` contains.
  void Difference(const TCollection& Collection) { RemoveWhere(Collection, true); }
  /// Keeps what is in just one of the two.
  void ExclusiveOr(const TCollection& Collection);

  ///@{
  /// The same four, leaving both operands as they are.
  TCollection UnionTo(const TCollection& Collection) const;
  TCollection IntersectionTo(const TCollection& Collection) const;
  TCollection DifferenceTo(const TCollection& Collection) const;
  TCollection ExclusiveOrTo(const TCollection& Collection) const;
  ///@}

 private:
  static std::size_t HashOf(const T& Value) { return TBytewiseHash<T>()(Value); }
  int PositionOf(const T& Value) const;
  void RemoveWhere(const TCollection& Collection, bool Contained);
  void Toggle(const T& Value) {
    if (!Add(Value)) Remove(Value);
  }

  std::vector<T> FItems;
  THashIndex FIndex;
};

template <class T>
bool TCollection<T>::Equals(const TCollectionBase* Obj) const {
  const auto* Other = dynamic_cast<const TCollection*>(Obj);
  if (Other == nullptr || Other->Count() != Count()) return false;
  for (const T& Value : *Other) {
    if (!Contains(Value)) return false;
  }
  return true;
}

template <class T>
bool TCollection<T>::Add(const T& Value) {
  if (Contains(Value)) return false;
  FIndex.Reserve(FItems.size() + 1);
  FItems.push_back(Value);
  FIndex.Add(HashOf(FItems.back()), Count() - 1);
  return true;
}

template <class T>
template <std::ranges::input_range TRange>
void TCollection<T>::AddRange(const TRange& Values) {
  const int Before = Count();
  try {
    for (const T& Value : Values) Add(Value);
  } catch (...) {
    while (Count() > Before) Remove(T(FItems.back()));
    throw;
  }
}

template <class T>
void TCollection<T>::Remove(const T& Value) {
  const int Position = PositionOf(Value);
  if (Position < 0) return;
  FIndex.Remove(HashOf(Value), Position);
  const int Last = Count() - 1;
  if (Position != Last) {
    FIndex.Move(HashOf(FItems.back()), Last, Position);
    FItems[static_cast<std::size_t>(Position)] = FItems.back();
  }
  FItems.pop_back();
}

template <class T>
void TCollection<T>::Clear() {
  FItems.clear();
  FIndex.Clear();
}

template <class T>
void TCollection<T>::CopyFrom(const TCollection& Source, bool ClearFirst) {
  if (!ClearFirst) return AddRange(Source);
  if (&Source == this) return Clear();
  *this = Source;
}

template <class T>
void TCollection<T>::ExclusiveOr(const TCollection& Collection) {
  if (&Collection == this) return Clear();
  TCollection Result = Clone();
  for (const T& Value : Collection) Result.Toggle(Value);
  *this = std::move(Result);
}

template <class T>
TCollection<T> TCollection<T>::UnionTo(const TCollection& Collection) const {
  TCollection Result = Clone();
  Result.Union(Collection);
  return Result;
}

template <class T>
TCollection<T> TCollection<T>::IntersectionTo(const TCollection& Collection) const {
  TCollection Result = Clone();
  Result.Intersection(Collection);
  return Result;
}

template <class T>
TCollection<T> TCollection<T>::DifferenceTo(const TCollection& Collection) const {
  TCollection Result = Clone();
  Result.Difference(Collection);
  return Result;
}

template <class T>
TCollection<T> TCollection<T>::ExclusiveOrTo(const TCollection& Collection) const {
  TCollection Result = Collection.Clone();
  for (const T& Value : *this) Result.Toggle(Value);
  return Result;
}

template <class T>
int TCollection<T>::PositionOf(const T& Value) const {
  return FIndex.Find(HashOf(Value), [&](int Position) {
    return TBytewiseEqual<T>()(FItems[static_cast<std::size_t>(Position)], Value);
  });
}

// Gathers first: `Collection` may be this very one, and the list must not change while it is read.
template <class T>
void TCollection<T>::RemoveWhere(const TCollection& Collection, bool Contained) {
  std::vector<T> Leaving;
  for (const T& Value : FItems) {
    if (Collection.Contains(Value) == Contained) Leaving.push_back(Value);
  }
  for (const T& Value : Leaving) Remove(Value);
}

}  // namespace tarnalgo
