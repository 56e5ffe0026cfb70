#pragma once  // containers/TreeAlgorithm/MultiTree.h

#include <memory>
#include <utility>
#include <vector>

#include "containers/Container/ObjectList.h"
#include "containers/TreeAlgorithm/TreeNode.h"

namespace tarnalgo {

/// A multi-way tree, empty or with a root: contours nested inside one another, for example.
///
///     TMultiTree<TVPolyline2D*> Tree(&Outline);
///     auto* Hole = Tree.AddChildNode(Tree.Root(),
///     std::make_unique<TTreeNode<TVPolyline2D*>>(&Cut));
///
/// Ownership: the tree owns all its nodes and never what an item points to.
template <class T>
class TMultiTree {
 public:
  /// The nodes a tree is made of.
  using TNode = TTreeNode<T>;

  TMultiTree() = default;
  /// A tree whose root, of depth 0, holds `RootData`.
  explicit TMultiTree(T RootData) : FRoot(std::make_unique<TNode>(std::move(RootData))) {
    FRoot->FDepth = 0;
  }
  TMultiTree(const TMultiTree&) = delete;
  TMultiTree& operator=(const TMultiTree&) = delete;
  virtual ~TMultiTree() {
    if (FRoot) FRoot->ClearFreeChildNodes(true);
  }

  /// Null for an empty tree.
  TNode* Root() { return FRoot.get(); }
  /// The root, to look at.
  const TNode* Root() const { return FRoot.get(); }
  bool IsEmpty() const { return !FRoot; }  ///< There is no root.

  /// Appends `ChildNode`, with all that hangs below it, to the children of `ParentNode`, a node of
  /// this tree. Returns the node added, which the tree owns.
  /// Errors: null for either, `EParamError`; `ChildNode` is then freed, what hangs below it is not.
  virtual TNode* AddChildNode(TNode* ParentNode, std::unique_ptr<TNode> ChildNode) {
    if (ParentNode == nullptr) RaiseError<EParamError>("TMultiTree", "no parent given");
    ParentNode->AddChildNode(ChildNode.get());
    return ChildNode.release();
  }

  ///@{
  /// The root's traversals of these names; nothing for an empty tree.
  virtual std::vector<TNode*> HierarchicalTraversal() {
    return FRoot ? FRoot->HierarchicalTraversal() : std::vector<TNode*>{};
  }
  virtual std::vector<TNode*> PreorderTraversal() {
    return FRoot ? FRoot->PreorderTraversal() : std::vector<TNode*>{};
  }
  virtual std::vector<TNode*> PostOrderTraversal() {
    return FRoot ? FRoot->PostOrderTraversal() : std::vector<TNode*>{};
  }
  ///@}

  /// The node that holds `Data` (compared by `==`), null when there is none.
  /// Ties: the last in breadth-first order.
  TNode* NodeOfData(const T& Data) {
    TNode* Result = nullptr;
    for (TNode* Node : HierarchicalTraversal()) {
      if (Node->Data() == Data) Result = Node;
    }
    return Result;
  }

 private:
  std::unique_ptr<TNode> FRoot;
};

/// A list of trees; frees them on removal unless it is made not to own.
template <class T>
class TMultiTreeList : public TObjectList<TMultiTree<T>> {
 public:
  using TObjectList<TMultiTree<T>>::TObjectList;
};

}  // namespace tarnalgo
