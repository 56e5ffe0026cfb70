#pragma once  // containers/TreeAlgorithm/TreeNode.h

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "containers/Container/LentList.h"
#include "host/Exceptions.h"

namespace tarnalgo {

/// A node of a multi-way tree: an item, the parent and the children in the order they were added.
///
///     TTreeNode<int> Root(1);
///     Root.AddChildNode(new TTreeNode<int>(2));
///     for (TTreeNode<int>* Node : Root.PreorderTraversal()) Use(Node->Data());
///     Root.ClearFreeChildNodes(true);
///
/// Nodes form a tree: a ring is refused. No operation recurses, so a tree may be as deep as memory
/// allows.
/// Ownership: a node owns neither its children nor an item that is a pointer; its destructor frees
/// the child list only. `TMultiTree` owns nodes. A node must be in no more than one child list when
/// the nodes are freed.
template <class T>
class TTreeNode {
 public:
  /// A node on its own, without parent and children.
  explicit TTreeNode(T Data) : FData(std::move(Data)) {}
  TTreeNode(const TTreeNode&) = delete;
  TTreeNode& operator=(const TTreeNode&) = delete;
  virtual ~TTreeNode() = default;

  const T& Data() const { return FData; }  ///< The item.
  /// Replaces the item; nothing in the tree depends on it.
  void SetData(T Value) { FData = std::move(Value); }
  /// −1 for a node just made, 0 for the root of a tree, and for a child the depth that its parent
  /// had when the child was attached, plus 1: attaching a subtree does not renew the depths in it.
  int Depth() const { return FDepth; }
  /// Null for a root.
  TTreeNode* Parent() { return FParent; }
  /// Null for a root.
  const TTreeNode* Parent() const { return FParent; }
  /// The children, first added first. Valid until a child is added or removed.
  std::span<TTreeNode* const> ChildNodes() { return {FChildNodes.begin(), FChildNodes.end()}; }
  /// The children, to look at.
  std::span<const TTreeNode* const> ChildNodes() const {
    return {FChildNodes.begin(), FChildNodes.end()};
  }

  /// The node has no parent.
  virtual bool IsRoot() const { return FParent == nullptr; }
  /// The node has no children.
  virtual bool IsLeaf() const { return FChildNodes.IsEmpty(); }
  /// Appends `ChildNode` to the children and sets its parent and depth. Does not take it out of the
  /// child list of an earlier parent.
  /// Errors: null, this node or one above it, `EParamError`, nothing changed.
  /// Cost: that of the way up to the root where `ChildNode` has children.
  virtual void AddChildNode(TTreeNode* ChildNode) {
    if (ChildNode == nullptr) RaiseError<EParamError>("TTreeNode", "no node given");
    if (ChildNode == this || (ChildNode->FChildNodes.Count() > 0 && HasAbove(ChildNode))) {
      RaiseError<EParamError>("TTreeNode", "the node would stand above itself");
    }
    FChildNodes.Add(ChildNode);
    ChildNode->FParent = this;
    ChildNode->FDepth = FDepth + 1;
  }
  /// Breadth first from this node: the node, its children, their children, in list order.
  virtual std::vector<TTreeNode*> HierarchicalTraversal();
  /// Depth first, a node before its children: the node, then the subtree of each child in order.
  virtual std::vector<TTreeNode*> PreorderTraversal();
  /// Depth first, a node after its children: the subtree of each child in order, then the node.
  virtual std::vector<TTreeNode*> PostOrderTraversal();

  /// Frees the children in order, each after everything below it when `DoesRecursive`; otherwise
  /// the grandchildren are left to whoever else knows them. The child list is empty afterwards.
  /// Takes no memory.
  void ClearFreeChildNodes(bool DoesRecursive);

 protected:
  /// Hands every node below this one to `Free`, children in order and before their parent; child
  /// lists are empty by then. Takes no memory: the lists themselves, turned round, tell how far it
  /// got.
  template <class TFree>
  void TakeApart(TFree Free);

  /// The storage stays the derived class's own; `ChildNodes` uses it while it suffices.
  TTreeNode(T Data, TTreeNode** ChildStorage, int ChildCapacity)
      : FChildNodes(ChildStorage, ChildCapacity), FData(std::move(Data)) {}
  /// `Node` is the parent, or a parent's parent.
  bool HasAbove(const TTreeNode* Node) const {
    const TTreeNode* Above = FParent;
    while (Above != nullptr && Above != Node) Above = Above->FParent;
    return Above != nullptr;
  }

  template <class>
  friend class TMultiTree;

  ///@{
  /// What the operations keep, within reach of derived nodes.
  TTreeNode* FParent = nullptr;
  TLentList<TTreeNode*> FChildNodes;
  T FData;
  int FDepth = -1;
  ///@}
};

template <class T>
std::vector<TTreeNode<T>*> TTreeNode<T>::HierarchicalTraversal() {
  std::vector<TTreeNode*> Nodes{this};  // the part from I on is the queue
  for (std::size_t I = 0; I < Nodes.size(); ++I) {
    const auto& Children = Nodes[I]->FChildNodes;
    Nodes.insert(Nodes.end(), Children.begin(), Children.end());
  }
  return Nodes;
}

template <class T>
std::vector<TTreeNode<T>*> TTreeNode<T>::PreorderTraversal() {
  std::vector<TTreeNode*> Nodes;
  std::vector<TTreeNode*> Waiting{this};
  while (!Waiting.empty()) {
    TTreeNode* const Node = Waiting.back();
    Waiting.pop_back();
    Nodes.push_back(Node);
    const auto& Children = Node->FChildNodes;
    for (int I = Children.Count() - 1; I >= 0; --I) Waiting.push_back(Children[I]);
  }
  return Nodes;
}

template <class T>
std::vector<TTreeNode<T>*> TTreeNode<T>::PostOrderTraversal() {
  std::vector<TTreeNode*> Nodes;
  std::vector<TTreeNode*> Waiting{this};
  while (!Waiting.empty()) {
    TTreeNode* const Node = Waiting.back();
    Waiting.pop_back();
    Nodes.push_back(Node);
    const auto& Children = Node->FChildNodes;
    Waiting.insert(Waiting.end(), Children.begin(), Children.end());
  }
  std::reverse(Nodes.begin(), Nodes.end());
  return Nodes;
}

template <class T>
void TTreeNode<T>::ClearFreeChildNodes(bool DoesRecursive) {
  if (DoesRecursive) {
    TakeApart([](TTreeNode* Node) { delete Node; });
  } else {
    for (TTreeNode* Child : FChildNodes) delete Child;
  }
  FChildNodes.Clear();
}

template <class T>
template <class TFree>
void TTreeNode<T>::TakeApart(TFree Free) {
  TTreeNode* Node = this;
  std::reverse(FChildNodes.begin(), FChildNodes.end());
  for (;;) {
    if (!Node->FChildNodes.IsEmpty()) {
      TTreeNode* const Child = Node->FChildNodes.TakeLast();
      Child->FParent = Node;
      std::reverse(Child->FChildNodes.begin(), Child->FChildNodes.end());
      Node = Child;
    } else if (Node == this) {
      return;
    } else {
      TTreeNode* const Above = Node->FParent;
      Free(Node);
      Node = Above;
    }
  }
}

}  // namespace tarnalgo
