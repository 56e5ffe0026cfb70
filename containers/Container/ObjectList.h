#pragma once  // containers/Container/ObjectList.h

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "containers/Container/MergeSort.h"
#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

/// What happened to an item of a `TObjectList`.
enum class TListChange {
  Added,     ///< in the list already
  Removed,   ///< about to be freed by the list
  Extracted  ///< handed out, the list no longer owns it
};

/// A list that owns its items and frees them on removal, or only refers to them when created with
/// `OwnsObjects` = false.
///
///     TObjectList<TShape> Shapes;
///     Shapes.Add(std::make_unique<TShape>());
///     for (TShape* Shape : Shapes) Shape->Translate(1, 0);
///
/// Items are reached as raw pointers that stay valid until the item leaves the list. Movable, not
/// copyable. A derived class follows changes through `Notify`.
/// Errors: an index outside 0 .. Count − 1 (`Insert`: Count), or null for an item, `EParamError`,
/// nothing changed.
/// Cost: as of a vector; `IndexOf` and `Remove` are linear.
template <class T>
class TObjectList {
 public:
  /// Walks the items as raw pointers.
  using TIterator = typename std::vector<T*>::const_iterator;

  /// An empty list that owns what it will hold, or refers to it.
  explicit TObjectList(bool OwnsObjects = true) : FOwnsObjects(OwnsObjects) {}
  /// Items and the duty to free them change hands; the other list is empty afterwards.
  TObjectList(TObjectList&& Other) noexcept
      : FItems(std::exchange(Other.FItems, {})), FOwnsObjects(Other.FOwnsObjects) {}
  /// The items replaced are freed without notification of the other list's.
  TObjectList& operator=(TObjectList&& Other) noexcept {
    if (this != &Other) {
      FreeAll();
      FItems = std::exchange(Other.FItems, {});
      FOwnsObjects = Other.FOwnsObjects;
    }
    return *this;
  }
  TObjectList(const TObjectList&) = delete;
  TObjectList& operator=(const TObjectList&) = delete;
  /// Frees owned items, last first, without notification (the derived part is gone already).
  virtual ~TObjectList() { FreeAll(); }

  bool OwnsObjects() const { return FOwnsObjects; }  ///< Whether the list frees its items.
  /// Hands the duty to free the items to the list, or takes it away.
  void SetOwnsObjects(bool Value) { FOwnsObjects = Value; }

  int Count() const { return static_cast<int>(FItems.size()); }  ///< Items in the list.
  bool IsEmpty() const { return FItems.empty(); }                ///< No item in the list.
  /// The item at `Index`, still the list's.
  T* operator[](int Index) const {
    CheckIndex(Index, Count());
    return FItems[static_cast<std::size_t>(Index)];
  }
  /// The item at either end. An empty list has none and raises.
  T* First() const { return (*this)[0]; }
  T* Last() const { return (*this)[Count() - 1]; }  ///< The same at the end.
  /// The items in their order; any addition or removal ends a walk.
  TIterator begin() const { return FItems.begin(); }
  TIterator end() const { return FItems.end(); }  ///< Behind the last.
  /// Room for `Capacity` items in all, at most `kMostReserved`; less than now is no request.
  void Reserve(int Capacity) {
    if (Capacity > 0) FItems.reserve(static_cast<std::size_t>(std::min(Capacity, kMostReserved)));
  }

  /// Appends and returns the position.
  /// Ownership: passes to an owning list, also when the call raises (the item is then freed). A
  /// list that does not own refuses a `unique_ptr` with `EParamError` and only refers to a raw
  /// pointer.
  int Add(std::unique_ptr<T> Item) {
    Insert(Count(), std::move(Item));
    return Count() - 1;
  }
  /// The same; a list that does not own only refers to the object, which must outlive it.
  int Add(T* Item) {
    Insert(Count(), Item);
    return Count() - 1;
  }
  /// Puts the item before the one at `Index`, or at the end for `Index` = Count.
  /// Ownership: as `Add`.
  void Insert(int Index, std::unique_ptr<T> Item) {
    CheckOwning();
    CheckItem(Item.get());
    CheckIndex(Index, Count() + 1);
    FItems.insert(FItems.begin() + Index, Item.get());
    Notify(*Item.release(), TListChange::Added);
  }
  /// The same; a list that does not own only refers to the object.
  void Insert(int Index, T* Item) {
    if (FOwnsObjects) return Insert(Index, std::unique_ptr<T>(Item));
    CheckItem(Item);
    CheckIndex(Index, Count() + 1);
    FItems.insert(FItems.begin() + Index, Item);
    Notify(*Item, TListChange::Added);
  }
  /// Removes the item at `Index`; an owning list frees it.
  void Delete(int Index) {
    CheckIndex(Index, Count());
    T* const Item = FItems[static_cast<std::size_t>(Index)];
    FItems.erase(FItems.begin() + Index);
    Notify(*Item, TListChange::Removed);
    if (FOwnsObjects) delete Item;
  }
  /// Puts `Item` in the place of the one at `Index`, which is removed first: an owning list frees
  /// it.
  /// Ownership: as `Add`.
  void SetItem(int Index, std::unique_ptr<T> Item) {
    CheckOwning();
    CheckItem(Item.get());
    CheckIndex(Index, Count());
    Delete(Index);
    Insert(Index, std::move(Item));
  }
  /// Removes the first occurrence of `Item`; the position it had, −1 when absent.
  int Remove(const T* Item) {
    const int Index = IndexOf(Item);
    if (Index >= 0) Delete(Index);
    return Index;
  }
  /// Takes an item out of an owning list; the caller owns it. A list that does not own has nothing
  /// to hand over: `EParamError`.
  std::unique_ptr<T> Extract(int Index) {
    CheckOwning();
    CheckIndex(Index, Count());
    std::unique_ptr<T> Item(FItems[static_cast<std::size_t>(Index)]);
    FItems.erase(FItems.begin() + Index);
    Notify(*Item, TListChange::Extracted);
    return Item;
  }
  /// Removes all items, last first, each as `Delete` does.
  void Clear() {
    while (!FItems.empty()) Delete(Count() - 1);
  }
  /// Position of the first occurrence of the very object, −1 when absent.
  int IndexOf(const T* Item) const {
    const auto Found = std::find(FItems.begin(), FItems.end(), Item);
    return Found == FItems.end() ? -1 : static_cast<int>(Found - FItems.begin());
  }
  /// The last item comes first; nothing is notified.
  void Reverse() { std::reverse(FItems.begin(), FItems.end()); }
  /// Swaps the places of two items; nothing is notified.
  void Exchange(int A, int B) {
    CheckIndex(A, Count());
    CheckIndex(B, Count());
    std::swap(FItems[static_cast<std::size_t>(A)], FItems[static_cast<std::size_t>(B)]);
  }
  /// Stable; `Compare` is `int(const T&, const T&)` and may have a tolerance band (`MergeSort`).
  /// One that raises leaves the order as it was.
  template <class TComparer>
  void Sort(TComparer Compare) {
    std::vector<T*> Sorted = FItems;
    MergeSort(Sorted, [&Compare](const T* A, const T* B) { return Compare(*A, *B); });
    FItems.swap(Sorted);
  }
  /// The order `Sort` gives by a comparer that only looks at `MakeKey(item)`, a small value: the
  /// keys are made once and sorted side by side, which spares long lists a cache miss a comparison.
  /// `Compare` is `int(const TKey&, const TKey&)`.
  template <class TMakeKey, class TComparer>
  void SortByKey(TMakeKey MakeKey, TComparer Compare) {
    using TKey = std::decay_t<std::invoke_result_t<TMakeKey&, const T&>>;
    std::vector<std::pair<TKey, T*>> Keyed;
    Keyed.reserve(FItems.size());
    for (T* const Item : FItems) Keyed.emplace_back(MakeKey(*Item), Item);
    MergeSort(Keyed,
              [&Compare](const auto& A, const auto& B) { return Compare(A.first, B.first); });
    for (std::size_t I = 0; I < Keyed.size(); ++I) FItems[I] = Keyed[I].second;
  }

 protected:
  /// Called after each addition and before a removed item is freed.
  virtual void Notify(T& /*Item*/, TListChange /*Change*/) {}

 private:
  void CheckOwning() const {
    if (!FOwnsObjects) RaiseError<EParamError>("TObjectList", "the list does not own its items");
  }
  static void CheckItem(const T* Item) {
    if (Item == nullptr) RaiseError<EParamError>("TObjectList", "no item given");
  }
  static void CheckIndex(int Index, int Bound) {
    if (Index < 0 || Index >= Bound) RaiseError<EParamError>("TObjectList", "index out of range");
  }
  void FreeAll() {
    if (FOwnsObjects) {
      for (auto It = FItems.rbegin(); It != FItems.rend(); ++It) delete *It;
    }
    FItems.clear();
  }

  // Raw pointers rather than unique_ptr: whether the list owns is decided, and may change, at run
  // time.
  std::vector<T*> FItems;
  bool FOwnsObjects;
};

}  // namespace tarnalgo
