#pragma once  // geometryAlgo/VedaType/RTree/GenericRTree.h

#include <cstddef>
#include <utility>
#include <vector>

#include "containers/Container/NodePool.h"
#include "containers/Container/OrderedDic.h"
#include "geometryAlgo/VedaType/RTree/RTreeNode.h"

namespace tarnalgo {

/// An R-tree that finds items by their boxes: identifiers, records, pointers to shapes.
///
///     TRTree<int> Tree(8);
///     Tree.Insert(7, Part.BoundBox());
///     for (int Id : Tree.Search(Window)) Use(Id);
///
/// An item can be in the tree once. It is told from others by its bytes when a `T` has no padding
/// (0.0 differs from −0.0), otherwise by `std::hash` and `==`; it is default constructible. A box
/// may be empty: its item is counted and listed, and found by no search.
///
/// The shape of the tree, and with it every order in which items are answered, depends on the
/// history of the calls alone. `TRTree<>` is another tree, made of objects that carry a pointer.
/// Movable, not copyable; a tree moved from is empty.
/// Ownership: the tree owns its nodes and copies of the items, never what an item points to.
/// Cost: `Insert`, `Remove` and `Search` O(log n) expected, a search + the items found.
template <class T = void>
class TRTree {
 public:
  /// What a look at the tree goes by.
  using TNode = TRTreeNode<T>;

  /// A node is split before it would hold more than `MaxChildren` children; 8 is a good number.
  /// With 2 or 3 a split can spread up to the root again and again, and the tree become as high as
  /// it has items; all operations stand that.
  /// Errors: `MaxChildren` below 2, `EParamError`.
  explicit TRTree(int MaxChildren);
  ///@{
  /// Nodes and items change hands; the other tree is empty afterwards.
  TRTree(TRTree&& Other) noexcept : TRTree(Other.FMaxChildren) { Swap(Other); }
  TRTree& operator=(TRTree&& Other) noexcept {
    TRTree Taken(std::move(Other));
    Swap(Taken);
    return *this;
  }
  ///@}
  TRTree(const TRTree&) = delete;
  TRTree& operator=(const TRTree&) = delete;
  virtual ~TRTree() { Clear(); }

  /// Errors: `Data` is in the tree already, `EParamError`, nothing changed.
  void Insert(T Data, const TVRect2D& Box);
  /// Nothing happens when `Data` is not in the tree. Ranges of the nodes that stay do not shrink.
  void Remove(const T& Data);
  /// Removes all items and gives the memory back.
  void Clear();

  /// The items whose boxes meet `Box`, depth first in the order of the nodes.
  /// Tolerance: closed boxes, with `Eps` of slack along each axis. An empty `Box` meets nothing.
  std::vector<T> Search(const TVRect2D& Box, double Eps = kLinearTolerance) const {
    std::vector<T> Result;
    Search(Box, Result, Eps);
    return Result;
  }
  /// The same, appended to `Result`.
  void Search(const TVRect2D& Box, std::vector<T>& Result, double Eps = kLinearTolerance) const {
    if (FRoot) FRoot->Search(Box, Result, Eps);
  }
  /// A search with a slack of 1e-6 would find something.
  bool MayIntersect(const TVRect2D& Box) const {
    return FRoot && FRoot->HasMeeting(Box, kLinearTolerance);
  }

  /// Items in the tree, those of empty boxes included.
  int Count() const { return FNodes.Count(); }
  /// The item is in the tree.
  bool Contains(const T& Data) const { return FNodes.Contains(Data); }
  /// All items, in the order of their insertion.
  std::vector<T> GetAllData() const;
  /// The item that has been in the tree for the longest time, a default `T` when it is empty.
  T GetRandomData() const { return FNodes.First() ? *FNodes.First() : T{}; }

  /// The nodes to look at, null for an empty tree.
  const TNode* Root() const { return FRoot; }
  /// `MaxChildren` div 2; no node is merged or split because of it.
  int MinChildren() const { return FMinChildren; }
  /// What the constructor was given.
  int MaxChildren() const { return FMaxChildren; }

 private:
  // A node with children brings the room for as many as are usual.
  static constexpr int kUsualChildren = 8;
  class alignas(TNode::kCacheLine) TInnerNode : public TNode {
   public:
    TInnerNode() : TNode(FChildStorage, FRangeStorage, kUsualChildren) {}

   private:
    TTreeNode<T>* FChildStorage[kUsualChildren];
    TVRect2D FRangeStorage[kUsualChildren];
  };

  void Swap(TRTree& Other) noexcept {
    std::swap(FInnerNodes, Other.FInnerNodes);
    std::swap(FDataNodes, Other.FDataNodes);
    std::swap(FRoot, Other.FRoot);
    std::swap(FMinChildren, Other.FMinChildren);
    std::swap(FMaxChildren, Other.FMaxChildren);
    std::swap(FNodes, Other.FNodes);
  }
  class TSpareNodes;
  TNode* MakeRoom(TNode* Leaf, const TVRect2D& Box);
  void Free(TNode* Node);

  TNodePool<TInnerNode> FInnerNodes;
  TNodePool<TNode> FDataNodes;
  TNode* FRoot = nullptr;
  int FMinChildren;
  int FMaxChildren;
  TOrderedDic<T, TNode> FNodes;  // the data nodes
  std::vector<TNode*> FFreed;    // scratch of Remove
};

template <class T>
TRTree<T>::TRTree(int MaxChildren) : FMinChildren(MaxChildren / 2), FMaxChildren(MaxChildren) {
  if (MaxChildren < 2) RaiseError<EParamError>("TRTree.Create", "a node needs at least 2 children");
}

template <class T>
void TRTree<T>::Insert(T Data, const TVRect2D& Box) {
  // Arrives while the leaf is looked for, which changes nothing yet.
  __builtin_prefetch(FNodes.PlaceOf(Data));
  TNode* Leaf = FRoot ? FRoot->ChooseInsertLeaf(Box) : nullptr;
  if (FNodes.Contains(Data)) RaiseError<EParamError>("TRTree.Insert", "duplicate item");
  FNodes.PrepareAdd();
  TNode* const DataNode = FDataNodes.Create(Data, Box);
  try {
    if (!FRoot) {
      FRoot = Leaf = FInnerNodes.Create();
      FRoot->FDepth = 0;
    }
    Leaf = MakeRoom(Leaf, Box);
  } catch (...) {
    FDataNodes.Destroy(DataNode);
    throw;
  }
  Leaf->Adopt(DataNode, Box);
  FNodes.Add(std::move(Data), DataNode);
}

/// Nodes for splits to come, in a list through their parents. Those not taken go with it.
template <class T>
class TRTree<T>::TSpareNodes {
 public:
  /// None yet; nodes come from the pool of `Tree`.
  explicit TSpareNodes(TRTree& Tree) : FTree(Tree) {}
  TSpareNodes(const TSpareNodes&) = delete;
  TSpareNodes& operator=(const TSpareNodes&) = delete;
  ~TSpareNodes() {
    while (FFirst) FTree.Free(Take());
  }

  /// One more, with room for so many children.
  void Add(int MostChildren) {
    TNode* const Node = FTree.FInnerNodes.Create();
    Node->FParent = FFirst;
    FFirst = Node;
    Node->ReserveChildren(MostChildren);
  }
  /// The one added last; there is one.
  TNode* Take() {
    TNode* const Node = FFirst;
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): each split takes what was added for it
    FFirst = Node->Parent();
    Node->FParent = nullptr;
    return Node;
  }

 private:
  TRTree& FTree;
  TNode* FFirst = nullptr;
};

// Splits `Leaf` and whatever is full above it. Answers the leaf that takes a new item of `Box`,
// with room for it. All memory is taken before the first split.
template <class T>
TRTreeNode<T>* TRTree<T>::MakeRoom(TNode* Leaf, const TVRect2D& Box) {
  // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): a tree with a root has a leaf for any box
  if (Leaf->ChildCount() < FMaxChildren) {
    Leaf->ReserveChildren(Leaf->ChildCount() + 1);
    return Leaf;
  }
  typename TNode::TSplitRoom Room(FMaxChildren);
  TSpareNodes Spares(*this);
  const int MostOfHalf = FMaxChildren / 2 + 2;  // the item included
  for (TNode* Node = Leaf; Node; Node = Node->Parent()) {
    const int Arriving = Node == Leaf ? 0 : 1;  // from the split below
    Node->ReserveChildren(Node->ChildCount() + Arriving);
    if (Node->ChildCount() + Arriving < FMaxChildren) break;
    Spares.Add(MostOfHalf);
    if (Node == FRoot) Spares.Add(MostOfHalf);
  }
  TNode* Result = Leaf;
  for (TNode* Node = Leaf; Node && Node->ChildCount() >= FMaxChildren; Node = Node->Parent()) {
    const bool IsRoot = Node == FRoot;
    TNode* const Sibling = Spares.Take();
    TNode* const NewRoot = IsRoot ? Spares.Take() : nullptr;
    TNode* const Half = Node->SplitInto(Node == Leaf ? Box : TVRect2D(), Sibling, NewRoot, Room);
    if (Node == Leaf) Result = Half;
    if (IsRoot) {
      FRoot = Node->Parent();
      break;
    }
  }
  return Result;
}

template <class T>
void TRTree<T>::Remove(const T& Data) {
  TNode* const DataNode = FNodes.Find(Data);
  if (!DataNode) return;
  FFreed.clear();
  DataNode->RemoveFromParentIfEmpty(FFreed);
  FNodes.Remove(Data);  // before the node goes, which may hold what `Data` refers to
  if (FFreed.back() == FRoot) FRoot = nullptr;
  for (TNode* Node : FFreed) Free(Node);
}

template <class T>
void TRTree<T>::Clear() {
  if (FRoot) {
    FRoot->TakeApart([this](TTreeNode<T>* Node) { Free(static_cast<TNode*>(Node)); });
    Free(FRoot);
  }
  FRoot = nullptr;
  FNodes.Clear();
  FInnerNodes.Release();
  FDataNodes.Release();
}

template <class T>
void TRTree<T>::Free(TNode* Node) {
  if (Node->IsDataNode()) {
    FDataNodes.Destroy(Node);
  } else {
    FInnerNodes.Destroy(static_cast<TInnerNode*>(Node));
  }
}

template <class T>
std::vector<T> TRTree<T>::GetAllData() const {
  std::vector<T> Result;
  Result.reserve(static_cast<std::size_t>(Count()));
  FNodes.ForEach([&Result](const T& Data, const TNode&) { Result.push_back(Data); });
  return Result;
}

}  // namespace tarnalgo
