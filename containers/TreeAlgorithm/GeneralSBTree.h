#pragma once  // containers/TreeAlgorithm/GeneralSBTree.h

#include <functional>
#include <type_traits>
#include <utility>

#include "containers/Container/NodePool.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"
#include "host/tarnds/SBTree.h"

namespace tarnalgo {

/// The order of the keys' own `<`, for keys that have one (`CompareExact`: a NaN equals anything).
/// The tree turns it into bare comparisons: a descent waits for memory, and how many descents the
/// processor runs side by side meanwhile depends on how little it has to do at each node.
template <class K>
struct TExactComparer {
  /// −1, 0 or 1 by `<` alone.
  int operator()(const K& A, const K& B) const { return CompareExact(A, B); }
  /// Neither is less.
  static bool AreEqual(const K& A, const K& B) {
    if constexpr (std::is_integral_v<K>) {
      return A == B;
    } else {
      return !(A < B) && !(B < A);  // not `==`: a NaN
    }
  }
};

/// A node of a `TGeneralSBTree`: one key, one value, and the handle to them.
///
/// A caller may write both; a key must then still stand between its neighbours.
template <class K, class V>
class TGeneralSBTreeNode : public TSBTree {
 public:
  /// The place in the order.
  K Key;
  /// What is kept with the key.
  V Value;

  /// A tree of one node.
  TGeneralSBTreeNode(K AKey, V AValue) : Key(std::move(AKey)), Value(std::move(AValue)) {}

  /// The subtree before this node, null for none.
  TGeneralSBTreeNode* Left() const { return static_cast<TGeneralSBTreeNode*>(FLeft); }
  /// The subtree behind this node, null for none.
  TGeneralSBTreeNode* Right() const { return static_cast<TGeneralSBTreeNode*>(FRight); }

  /// Inserts `NewNode`, a tree of one node, into this tree, of which `Root` is the top; `Root`
  /// follows when another node comes to the top.
  /// Ties: equal keys go right.
  /// Errors: a comparer that raises leaves the tree as it was.
  template <class TComparer>
  void Insert(TGeneralSBTreeNode* NewNode, TGeneralSBTreeNode*& Root, const TComparer& Comparer);
};

/// An ordered map over the size-balanced tree; equal keys are allowed.
///
///     TGeneralSBTree<int, int, TSegmentOrder> Status(TSegmentOrder{&Sweep});
///     auto* Node = Status.Insert(Segment, Segment);
///     if (auto* Above = Status.NextNode(Node)) Test(Node->Value, Above->Value);
///     Status.RemoveNode(Node);
///
/// Nodes are handles: each stays valid, with its key and value, until that very node is removed.
/// `TComparer` is `int(const K&, const K&)` (−1, 0, 1); a type of its own is inlined, the default
/// is `std::function`. It must order the keys that are in the tree at any one time; how it does so
/// may change meanwhile (a sweep line moves on) as long as their order stays.
/// Ties: a new key goes behind its equals. A search meets any one of several equal keys, whichever
/// stands highest; where it matters, keep the node.
/// Errors: a null comparer, an assertion at construction. A comparer that raises leaves the tree as
/// it was.
/// Ownership: the tree owns its nodes, which lie in a pool. Neither copyable nor movable.
/// Cost: O(log n) for each operation, the walk from node to node O(1) on average.
template <class K, class V, class TComparer = std::function<int(const K&, const K&)>>
class TGeneralSBTree {
 public:
  /// The handle that insertion and searches answer.
  using TNode = TGeneralSBTreeNode<K, V>;

  /// An empty tree in the order of `Comparer`.
  explicit TGeneralSBTree(TComparer Comparer = TComparer());
  TGeneralSBTree(const TGeneralSBTree&) = delete;
  TGeneralSBTree& operator=(const TGeneralSBTree&) = delete;
  virtual ~TGeneralSBTree() { Clear(); }

  /// Nodes in the tree, equal keys counted each.
  int Count() const { return FRoot != nullptr ? FRoot->Size() : 0; }
  /// The top of the tree, null when it is empty. Gives access to the order statistics of `TSBTree`.
  TNode* Root() const { return FRoot; }

  /// The new node.
  TNode* Insert(K Key, V Value);

  /// False, with `Value` untouched, when the key is absent.
  bool Search(const K& Key, V& Value) const;
  /// Null when the key is absent.
  TNode* SearchNode(const K& Key) const;
  /// The neighbours of `Key`: the nodes of the greatest key below it and of the least above it,
  /// null where there is none; both the same node when it has this key.
  void SearchNearby(const K& Key, TNode*& LeftNode, TNode*& RightNode) const;
  /// The same by values; one is written only when its flag is true.
  void SearchNearby(const K& Key, bool& HasLeft, bool& HasRight, V& LeftValue, V& RightValue) const;

  /// Does nothing when the key is absent.
  void Remove(const K& Key) { RemoveNode(SearchNode(Key)); }
  /// `Node` is of this tree; null does nothing.
  void RemoveNode(TNode* Node);
  /// Frees all nodes.
  void Clear();

  /// Neighbours in order, null past the ends and for null.
  static TNode* PreviousNode(TNode* Node) {
    return Node != nullptr ? static_cast<TNode*>(Node->PreviousTree()) : nullptr;
  }
  /// The neighbour behind, null past the last and for null.
  static TNode* NextNode(TNode* Node) {
    return Node != nullptr ? static_cast<TNode*>(Node->NextTree()) : nullptr;
  }

 private:
  TNode* FRoot = nullptr;
  TComparer FComparer;
  TNodePool<TNode> FPool;
};

template <class K, class V>
template <class TComparer>
void TGeneralSBTreeNode<K, V>::Insert(TGeneralSBTreeNode* NewNode, TGeneralSBTreeNode*& Root,
                                      const TComparer& Comparer) {
  TSBTree* const Top = NewNode->InsertInto(this, [&](const TSBTree& Tree) {
    const K& Other = static_cast<const TGeneralSBTreeNode&>(Tree).Key;
    if constexpr (std::is_same_v<TComparer, TExactComparer<K>>) {
      return !(NewNode->Key < Other);
    } else {
      return Comparer(NewNode->Key, Other) >= 0;
    }
  });
  // Not written when it stays: the next descent then need not wait for this one to end.
  if (Top != Root) Root = static_cast<TGeneralSBTreeNode*>(Top);
}

template <class K, class V, class TComparer>
TGeneralSBTree<K, V, TComparer>::TGeneralSBTree(TComparer Comparer)
    : FComparer(std::move(Comparer)) {
  if constexpr (requires { FComparer == nullptr; }) {
    AssertThat(!(FComparer == nullptr), "no comparer", "containers/TreeAlgorithm");
  }
}

template <class K, class V, class TComparer>
TGeneralSBTreeNode<K, V>* TGeneralSBTree<K, V, TComparer>::Insert(K Key, V Value) {
  TNode* const Node = FPool.Create(std::move(Key), std::move(Value));
  if (FRoot == nullptr) return FRoot = Node;
  try {
    FRoot->Insert(Node, FRoot, FComparer);
  } catch (...) {
    FPool.Destroy(Node);
    throw;
  }
  return Node;
}

template <class K, class V, class TComparer>
bool TGeneralSBTree<K, V, TComparer>::Search(const K& Key, V& Value) const {
  const TNode* const Node = SearchNode(Key);
  if (Node != nullptr) Value = Node->Value;
  return Node != nullptr;
}

template <class K, class V, class TComparer>
TGeneralSBTreeNode<K, V>* TGeneralSBTree<K, V, TComparer>::SearchNode(const K& Key) const {
  TNode* Node = FRoot;
  if constexpr (std::is_same_v<TComparer, TExactComparer<K>>) {
    while (Node != nullptr && !TComparer::AreEqual(Key, Node->Key)) {
      Node = Key < Node->Key ? Node->Left() : Node->Right();  // computed, not branched to
    }
    return Node;
  }
  while (Node != nullptr) {
    const int Sign = FComparer(Key, Node->Key);
    if (Sign == 0) break;
    Node = Sign < 0 ? Node->Left() : Node->Right();
  }
  return Node;
}

template <class K, class V, class TComparer>
void TGeneralSBTree<K, V, TComparer>::SearchNearby(const K& Key, TNode*& LeftNode,
                                                   TNode*& RightNode) const {
  TNode* Below = nullptr;
  TNode* Above = nullptr;
  for (TNode* Node = FRoot; Node != nullptr;) {
    const int Sign = FComparer(Key, Node->Key);
    if (Sign == 0) {
      Below = Above = Node;
      break;
    }
    if (Sign < 0) {
      Above = Node;
      Node = Node->Left();
    } else {
      Below = Node;
      Node = Node->Right();
    }
  }
  LeftNode = Below;
  RightNode = Above;
}

template <class K, class V, class TComparer>
void TGeneralSBTree<K, V, TComparer>::SearchNearby(const K& Key, bool& HasLeft, bool& HasRight,
                                                   V& LeftValue, V& RightValue) const {
  TNode* LeftNode = nullptr;
  TNode* RightNode = nullptr;
  SearchNearby(Key, LeftNode, RightNode);
  HasLeft = LeftNode != nullptr;
  HasRight = RightNode != nullptr;
  if (HasLeft) LeftValue = LeftNode->Value;
  if (HasRight) RightValue = RightNode->Value;
}

template <class K, class V, class TComparer>
void TGeneralSBTree<K, V, TComparer>::RemoveNode(TNode* Node) {
  if (Node == nullptr) return;
  TSBTree* const Top = Node->Delete();
  if (Top != FRoot) FRoot = static_cast<TNode*>(Top);  // as in `Insert` of the node
  FPool.Destroy(Node);
}

// Children before their parent, without recursion.
template <class K, class V, class TComparer>
void TGeneralSBTree<K, V, TComparer>::Clear() {
  TNode* Node = std::exchange(FRoot, nullptr);
  if constexpr (std::is_trivially_destructible_v<K> && std::is_trivially_destructible_v<V>) {
    Node = nullptr;  // nothing to free but the memory
  }
  while (Node != nullptr) {
    if (TNode* const Child = Node->Left() != nullptr ? Node->Left() : Node->Right()) {
      Node = Child;
      continue;
    }
    TSBTree* const Above = Node->Parent();
    if (Above != nullptr) {
      Above->LeftChild() == Node ? Above->SetLeftChild(nullptr) : Above->SetRightChild(nullptr);
    }
    FPool.Destroy(Node);
    Node = static_cast<TNode*>(Above);
  }
  FPool.Release();
}

}  // namespace tarnalgo
