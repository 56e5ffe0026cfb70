#pragma once  // containers/Container/LinkedList.h

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/Exceptions.h"

namespace tarnalgo {

/// A node was given to a list that it is not in.
class ELinkedList : public Exception {
 public:
  using Exception::Exception;
};

template <class T>
class TLinkedList;

/// One element of a `TLinkedList`, and the handle to it: it stays where it is until it is freed.
template <class T>
class TLinkedListNode {
 public:
  /// A node outside any list.
  explicit TLinkedListNode(const T& Data) : FData(Data) {}
  virtual ~TLinkedListNode() = default;
  TLinkedListNode(const TLinkedListNode&) = delete;
  TLinkedListNode& operator=(const TLinkedListNode&) = delete;

  const T& Data() const { return FData; }  ///< The value, fixed for the life of the node.
  /// Null at the head.
  TLinkedListNode* Prev() const { return FPrev; }
  /// Null at the tail.
  TLinkedListNode* Next() const { return FNext; }

 private:
  friend class TLinkedList<T>;

  T FData;
  TLinkedListNode* FPrev = nullptr;
  TLinkedListNode* FNext = nullptr;
};

/// A doubly linked list of values, walked and edited through its nodes.
///
///     TLinkedList<TLWPoint2D> List(Points);
///     for (auto* Node = List.Head(); Node != nullptr; Node = Node->Next()) Use(Node->Data());
///
/// Ownership: the list frees its nodes. A node removed with `DoesRelease` = false belongs to the
/// caller, who deletes it. Movable (nodes keep their places), not copyable.
/// Nothing verifies that a node belongs to this list, beyond the check of `Remove`: a middle node
/// of another list, or one removed before, passes it and spoils `Count`.
/// Cost: O(1) for each operation, O(n) for construction and `Clear`.
template <class T>
class TLinkedList {
 public:
  /// What `Head`, `Next` and the others hand out.
  using TNode = TLinkedListNode<T>;

  TLinkedList() = default;
  /// A node for each item, in order.
  explicit TLinkedList(const std::vector<T>& List) : TLinkedList(List, 0, SizeOf(List)) {}
  /// The items `StartId` .. `EndId` − 1; none when `EndId` <= `StartId`.
  /// Errors: an item outside the list, `EParamError`.
  TLinkedList(const std::vector<T>& List, int StartId, int EndId);
  ///@{
  /// The nodes change hands and keep their addresses; the other list is empty afterwards.
  TLinkedList(TLinkedList&& Other) noexcept
      : FHead(std::exchange(Other.FHead, nullptr)),
        FTail(std::exchange(Other.FTail, nullptr)),
        FCount(std::exchange(Other.FCount, 0)) {}
  TLinkedList& operator=(TLinkedList&& Other) noexcept;
  ///@}
  TLinkedList(const TLinkedList&) = delete;
  TLinkedList& operator=(const TLinkedList&) = delete;
  virtual ~TLinkedList() { Clear(); }

  TNode* Head() const { return FHead; }            ///< The first node, null when empty.
  TNode* Tail() const { return FTail; }            ///< The last node, null when empty.
  int Count() const { return FCount; }             ///< Nodes in the list.
  bool Empty() const { return FHead == nullptr; }  ///< No node in the list.

  /// The new node, in front of the head or behind the tail.
  TNode* AddToHead(const T& Data);
  TNode* AddToTail(const T& Data);  ///< The same behind the tail.
  /// The new node, between `Node` (of this list, not null) and its successor.
  TNode* InsertAfter(TNode* Node, const T& Data);

  /// Unlinks the end node and returns its data; of an empty list `T` with all bytes zero.
  /// Ownership: `DoesRelease` frees the node, otherwise it passes to the caller.
  T RemoveHead(bool DoesRelease);
  /// The same at the other end.
  T RemoveTail(bool DoesRelease);
  /// Unlinks `Node`, whose own links stay as they were, so that a walk may go on from it; null does
  /// nothing.
  /// Errors: neither an end of this list nor between two neighbours,
  /// `ELinkedList` "[Error] TLinkedList<T>.Remove: 节点数据不匹配", nothing changed.
  /// Ownership: as `RemoveHead`.
  void Remove(TNode* Node, bool DoesRelease);
  /// Frees all nodes.
  void Clear();

  /// The data at an end; of an empty list `T` with all bytes zero.
  T GetHeadData() const { return FHead != nullptr ? FHead->FData : ZeroFilled(); }
  /// The data at the tail.
  T GetTailData() const { return FTail != nullptr ? FTail->FData : ZeroFilled(); }

 private:
  static int SizeOf(const std::vector<T>& List) { return static_cast<int>(List.size()); }
  // A record with default values is not zero-filled by its constructor.
  static T ZeroFilled() {
    if constexpr (std::is_trivially_copyable_v<T>) {
      return std::bit_cast<T>(std::array<std::byte, sizeof(T)>{});
    } else {
      return T();
    }
  }
  static T DataOf(TNode* Node, bool DoesRelease) {
    return DoesRelease ? std::move(Node->FData) : Node->FData;
  }
  void UnlinkHead();
  void UnlinkTail();

  TNode* FHead = nullptr;
  TNode* FTail = nullptr;
  int FCount = 0;
};

template <class T>
TLinkedList<T>::TLinkedList(const std::vector<T>& List, int StartId, int EndId) : TLinkedList() {
  if (EndId <= StartId) return;
  if (StartId < 0 || EndId > SizeOf(List)) {
    RaiseError<EParamError>("TLinkedList<T>.Create", "index out of range");
  }
  for (int I = StartId; I < EndId; ++I) AddToTail(List[static_cast<std::size_t>(I)]);
}

template <class T>
TLinkedList<T>& TLinkedList<T>::operator=(TLinkedList&& Other) noexcept {
  TLinkedList Taken(std::move(Other));
  std::swap(FHead, Taken.FHead);
  std::swap(FTail, Taken.FTail);
  std::swap(FCount, Taken.FCount);
  return *this;
}

template <class T>
TLinkedListNode<T>* TLinkedList<T>::AddToHead(const T& Data) {
  auto* const Node = new TNode(Data);
  Node->FNext = FHead;
  (FHead != nullptr ? FHead->FPrev : FTail) = Node;
  FHead = Node;
  ++FCount;
  return Node;
}

template <class T>
TLinkedListNode<T>* TLinkedList<T>::AddToTail(const T& Data) {
  auto* const Node = new TNode(Data);
  Node->FPrev = FTail;
  (FTail != nullptr ? FTail->FNext : FHead) = Node;
  FTail = Node;
  ++FCount;
  return Node;
}

template <class T>
TLinkedListNode<T>* TLinkedList<T>::InsertAfter(TNode* Node, const T& Data) {
  if (Node == nullptr) RaiseError<EParamError>("TLinkedList<T>.InsertAfter", "no node given");
  auto* const Added = new TNode(Data);
  Added->FPrev = Node;
  Added->FNext = Node->FNext;
  (Node->FNext != nullptr ? Node->FNext->FPrev : FTail) = Added;
  Node->FNext = Added;
  ++FCount;
  return Added;
}

template <class T>
T TLinkedList<T>::RemoveHead(bool DoesRelease) {
  if (FHead == nullptr) return ZeroFilled();
  TNode* const Node = FHead;
  T Data = DataOf(Node, DoesRelease);  // copying may raise: nothing has changed yet
  UnlinkHead();
  if (DoesRelease) delete Node;
  return Data;
}

template <class T>
T TLinkedList<T>::RemoveTail(bool DoesRelease) {
  if (FTail == nullptr) return ZeroFilled();
  TNode* const Node = FTail;
  T Data = DataOf(Node, DoesRelease);
  UnlinkTail();
  if (DoesRelease) delete Node;
  return Data;
}

template <class T>
void TLinkedList<T>::UnlinkHead() {
  FHead = FHead->FNext;
  (FHead != nullptr ? FHead->FPrev : FTail) = nullptr;
  --FCount;
}

template <class T>
void TLinkedList<T>::UnlinkTail() {
  FTail = FTail->FPrev;
  (FTail != nullptr ? FTail->FNext : FHead) = nullptr;
  --FCount;
}

template <class T>
void TLinkedList<T>::Remove(TNode* Node, bool DoesRelease) {
  if (Node == nullptr) return;
  if (Node == FHead) {
    UnlinkHead();
  } else if (Node == FTail) {
    UnlinkTail();
  } else {
    if (Node->FPrev == nullptr || Node->FNext == nullptr) {
      RaiseError<ELinkedList>("TLinkedList<T>.Remove", "节点数据不匹配");
    }
    Node->FPrev->FNext = Node->FNext;
    Node->FNext->FPrev = Node->FPrev;
    --FCount;
  }
  if (DoesRelease) delete Node;
}

template <class T>
void TLinkedList<T>::Clear() {
  TNode* Node = FHead;
  FHead = FTail = nullptr;
  FCount = 0;
  while (Node != nullptr) delete std::exchange(Node, Node->FNext);
}

}  // namespace tarnalgo
