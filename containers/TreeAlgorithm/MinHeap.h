#pragma once  // containers/TreeAlgorithm/MinHeap.h

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

/// One item of a heap with its key (0 where the order is that of a comparer).
template <class T>
struct THeapNode {
  T Data{};          ///< The item.
  double Key = 0.0;  ///< Its number in key mode.
};

/// A binary min-heap, ordered by a number that comes with each item or by a comparer of the items.
///
///     TMinHeap<int> ByDistance;                       // key mode
///     ByDistance.Add(Id, 12.5);
///     TMinHeap<TEvent, TEventOrder> Queue;            // comparer mode
///     while (Queue.Count() > 0) Treat(Queue.Pop());
///
/// The array is part of the contract: the children of place i are 2i + 1 and 2i + 2, the minimum
/// is at 0, and which of several equal items comes out first follows from the rules of sifting:
/// a rising item passes what is greater, a sinking one changes places with its lesser child while
/// that is less.
/// Ties: of equal children the left one; equal items never change places. So a heap built from a
/// list may give equal items in another order than one filled item by item.
///
/// `TComparer` is `int(const T&, const T&)`, a strict weak order of three results; a type of its
/// own is inlined, the default `std::function` may be null (key mode). Keys are compared exactly;
/// NaN equals everything. With a comparer that contradicts itself the order is unspecified; one
/// that raises loses no item to an `Add`, the minimum to a `Pop`.
/// Ownership: items are values; of pointers the heap does not own what they point to.
/// Cost: `Add` and `Pop` O(log n), construction from a list O(n).
template <class T, class TComparer = std::function<int(const T&, const T&)>>
class TMinHeap {
 public:
  /// What the array holds.
  using TNode = THeapNode<T>;

  /// An empty heap in comparer mode; in key mode when `Comparer` is null, as it is by default for
  /// `std::function`.
  TMinHeap() : TMinHeap(TComparer{}) {}
  /// An empty heap in the order of `Comparer`; in key mode when it is null.
  explicit TMinHeap(TComparer Comparer)
      : FComparer(std::move(Comparer)), FByKey(IsNull(FComparer)) {}
  /// A heap in comparer mode of all items of `Datas`.
  /// Errors: two items or more and a null comparer, an assertion.
  TMinHeap(std::vector<T> Datas, TComparer Comparer);
  TMinHeap(const TMinHeap&) = default;
  TMinHeap(TMinHeap&&) = default;
  /// All of `Other` or, when that raises, what was here.
  TMinHeap& operator=(const TMinHeap& Other) {
    *this = TMinHeap(Other);  // items and comparer change together
    return *this;
  }
  TMinHeap& operator=(TMinHeap&&) = default;
  virtual ~TMinHeap() = default;

  int Count() const { return static_cast<int>(FDatas.size()); }  ///< Items in the heap.
  /// Removes all items; order and mode stay.
  void Clear() {
    FDatas.clear();
    FHasInvalidKeys = false;
  }
  /// The array, minimum first.
  const std::vector<TNode>& Datas() const { return FDatas; }

  /// In comparer mode `Key` is stored and plays no part.
  void Add(T Data, double Key = 0.0);
  /// `Add` of each, with key 0; for comparer mode only.
  /// Errors: key mode, "[Error] TMinHeap.AddRange: 只有通过函数比较才可调用本方法" (also for an
  /// empty list).
  void AddRange(const std::vector<T>& Datas);

  ///@{
  /// The minimum, its key and both together; valid until the heap changes.
  /// Errors: an empty heap, "[Error] TMinHeap.Top: 堆中没有元素" (the first two) and
  /// "[Error] TMinHeap.TopNode: 堆中没有元素".
  const T& Top() const;
  double TopKey() const;
  const TNode& TopNode() const;
  ///@}
  /// Removes the minimum and returns it.
  /// Errors: an empty heap, "[Error] TMinHeap.Pop: 堆中没有元素".
  T Pop();

  /// −1, 0 or 1 by the mode of the heap.
  /// Errors: neither keys nor a comparer, an assertion.
  int Compare(const TNode& Node1, const TNode& Node2) const {
    RequireOrder(2);
    return FByKey ? CompareExact(Node1.Key, Node2.Key) : FComparer(Node1.Data, Node2.Data);
  }

 private:
  static constexpr const char* kUnit = "containers/TreeAlgorithm";
  static constexpr const char* kEmpty = "堆中没有元素";

  // The two orders. Sifting is compiled for each, so its loops need not ask for the mode.
  struct TKeyOrder {
    bool Less(const TNode& A, const TNode& B) const { return A.Key < B.Key; }
    bool Greater(const TNode& A, const TNode& B) const { return A.Key > B.Key; }
  };
  struct TComparerOrder {
    const TComparer& Comparer;
    bool Less(const TNode& A, const TNode& B) const { return Comparer(A.Data, B.Data) < 0; }
    bool Greater(const TNode& A, const TNode& B) const { return Comparer(A.Data, B.Data) > 0; }
  };

  // A sifting item, taken out of the array. What it passes moves into the place it left: half the
  // work of swapping, same result. Goes back into the array also when a comparer raises.
  class THole {
   public:
    THole(std::vector<TNode>& Datas, std::size_t Place)
        : FNodes(Datas.data()), FPlace(Place), FItem(std::move(FNodes[Place])) {}
    ~THole() { FNodes[FPlace] = std::move(FItem); }
    THole(const THole&) = delete;
    THole& operator=(const THole&) = delete;

    const TNode& Item() const { return FItem; }
    std::size_t Place() const { return FPlace; }
    void MoveTo(std::size_t Place) {
      FNodes[FPlace] = std::move(FNodes[Place]);
      FPlace = Place;
    }

   private:
    TNode* FNodes;
    std::size_t FPlace;
    TNode FItem;
  };

  // Memory for the nodes that may be looked at two levels further down.
  void PrefetchFrom(std::size_t Place) const {
#if defined(__GNUC__)
    if (Place < FDatas.size()) {
      __builtin_prefetch(&FDatas[Place]);
      __builtin_prefetch(&FDatas[std::min(Place + 7, FDatas.size() - 1)]);
    }
#endif
  }
  static bool IsNull(const TComparer& Comparer) {
    if constexpr (requires { Comparer == nullptr; })
      return Comparer == nullptr;
    else
      return false;
  }
  void RequireOrder(std::size_t Items) const {
    AssertThat(FByKey || Items < 2 || !IsNull(FComparer), "no comparer", kUnit);
  }
  void RequireItem(const char* Where) const {
    if (FDatas.empty()) RaiseError(Where, kEmpty);
  }

  template <class TOrder>
  bool AdjustOneNode(std::size_t I, const TOrder& Order);
  template <class TOrder>
  void AdjustOneBranchFromBottom(const TOrder& Order);
  template <class TOrder>
  void AdjustOneBranchFromTop(std::size_t I, const TOrder& Order);
  void AdjustAllNodes();

  std::vector<TNode> FDatas;
  TComparer FComparer;
  bool FByKey;
  bool FHasInvalidKeys = false;  // a NaN was added since the last `Clear`
};

template <class T, class TComparer>
TMinHeap<T, TComparer>::TMinHeap(std::vector<T> Datas, TComparer Comparer)
    : FComparer(std::move(Comparer)), FByKey(false) {
  RequireOrder(Datas.size());
  FDatas.reserve(Datas.size());
  for (T& Data : Datas) FDatas.push_back({std::move(Data), 0.0});
  AdjustAllNodes();
}

template <class T, class TComparer>
void TMinHeap<T, TComparer>::Add(T Data, double Key) {
  RequireOrder(FDatas.size() + 1);
  FDatas.push_back({std::move(Data), Key});
  if (FByKey) {
    FHasInvalidKeys |= Key != Key;  // exact: NaN
    AdjustOneBranchFromBottom(TKeyOrder{});
  } else {
    AdjustOneBranchFromBottom(TComparerOrder{FComparer});
  }
}

template <class T, class TComparer>
void TMinHeap<T, TComparer>::AddRange(const std::vector<T>& Datas) {
  if (FByKey) RaiseError("TMinHeap.AddRange", "只有通过函数比较才可调用本方法");
  RequireOrder(FDatas.size() + Datas.size());
  // Copies and room first: from there on nothing but the comparer can raise.
  std::vector<T> Copies = Datas;
  if (FDatas.capacity() - FDatas.size() < Datas.size()) {
    FDatas.reserve(std::max(2 * FDatas.size(), FDatas.size() + Datas.size()));
  }
  for (T& Data : Copies) Add(std::move(Data));
}

template <class T, class TComparer>
const T& TMinHeap<T, TComparer>::Top() const {
  RequireItem("TMinHeap.Top");
  return FDatas.front().Data;
}

template <class T, class TComparer>
double TMinHeap<T, TComparer>::TopKey() const {
  RequireItem("TMinHeap.Top");  // so named on purpose: hosts look for this text
  return FDatas.front().Key;
}

template <class T, class TComparer>
const THeapNode<T>& TMinHeap<T, TComparer>::TopNode() const {
  RequireItem("TMinHeap.TopNode");
  return FDatas.front();
}

template <class T, class TComparer>
T TMinHeap<T, TComparer>::Pop() {
  RequireItem("TMinHeap.Pop");
  T Result = std::move(FDatas.front().Data);
  if (FDatas.size() > 1) FDatas.front() = std::move(FDatas.back());
  FDatas.pop_back();
  if (FByKey) {
    AdjustOneBranchFromTop(0, TKeyOrder{});
  } else {
    AdjustOneBranchFromTop(0, TComparerOrder{FComparer});
  }
  return Result;
}

// The step that defines the heap; false when node `I` is not less than its parent.
template <class T, class TComparer>
template <class TOrder>
bool TMinHeap<T, TComparer>::AdjustOneNode(std::size_t I, const TOrder& Order) {
  if (I == 0) return false;
  const std::size_t Parent = (I - 1) / 2;
  if (!Order.Less(FDatas[I], FDatas[Parent])) return false;
  std::swap(FDatas[I], FDatas[Parent]);
  AdjustOneBranchFromTop(I, Order);
  return true;
}

// `AdjustOneNode` from the last node up to the root. In an ordered heap the parent passed cannot
// sink further, what is below it now was below it before, so one hole rises instead. Not so among
// invalid keys, which hide greater from less.
template <class T, class TComparer>
template <class TOrder>
void TMinHeap<T, TComparer>::AdjustOneBranchFromBottom(const TOrder& Order) {
  if (FHasInvalidKeys) {
    for (std::size_t I = FDatas.size() - 1; AdjustOneNode(I, Order);) I = (I - 1) / 2;
    return;
  }
  THole Hole(FDatas, FDatas.size() - 1);
  while (Hole.Place() > 0) {
    const std::size_t Parent = (Hole.Place() - 1) / 2;
    if (!Order.Less(Hole.Item(), FDatas[Parent])) break;
    Hole.MoveTo(Parent);
  }
}

template <class T, class TComparer>
template <class TOrder>
void TMinHeap<T, TComparer>::AdjustOneBranchFromTop(std::size_t I, const TOrder& Order) {
  const std::size_t Count = FDatas.size();
  if (I >= Count) return;
  THole Hole(FDatas, I);
  std::size_t Left = 2 * I + 1;
  while (Left + 1 < Count) {
    PrefetchFrom(4 * Left + 3);
    // Two branches rather than one computed index: the processor then guesses the way down and
    // fetches ahead of the comparisons. Measured: half the time on repeating paths, the same on
    // random ones.
    if (Order.Greater(FDatas[Left], FDatas[Left + 1])) {
      if (!Order.Less(FDatas[Left + 1], Hole.Item())) return;
      Hole.MoveTo(Left + 1);
      Left = 2 * Left + 3;
    } else {
      if (!Order.Less(FDatas[Left], Hole.Item())) return;
      Hole.MoveTo(Left);
      Left = 2 * Left + 1;
    }
  }
  if (Left < Count && Order.Less(FDatas[Left], Hole.Item())) Hole.MoveTo(Left);
}

// (The usual build, which sifts down each inner node, leaves equal items in other places.)
template <class T, class TComparer>
void TMinHeap<T, TComparer>::AdjustAllNodes() {
  for (std::size_t I = FDatas.size(); I-- > 0;) AdjustOneNode(I, TComparerOrder{FComparer});
}

}  // namespace tarnalgo
