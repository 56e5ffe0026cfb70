#pragma once  // geometryAlgo/VedaType/RTree/ObjectRTree.h

#include <functional>
#include <memory>
#include <vector>

#include "geometryAlgo/VedaType/RTree/GenericRTree.h"
#include "geometryAlgo/VedaType/Rect.h"

namespace tarnalgo {

/// The R-tree that is made of objects: each node is a tree of its own, and every entry carries a
/// pointer to the user's item. What a range is, and what it costs to let it grow, is left to
/// derived classes (`TRRTree2D`: boxes of the plane).
///
///     std::unique_ptr<TRRTree2D> Root;
///     auto Entry = std::make_unique<TRRTree2D>(&Part, Part.BoundBox());
///     Root = TRRTree2D::Insert(std::move(Entry), std::move(Root));
///
/// A data entry carries an item; a node without one is a leaf when its first child is a data entry.
/// The root can be a data entry (the only one), and change with every insertion.
/// No operation recurses.
/// Ownership: a node owns its children; whoever holds the root owns the tree. Items are only
/// referred to.
template <>
class TRTree<void> {
 public:
  /// What frees an item; empty to leave it alone.
  using TFreeData = std::function<void(void*)>;

  /// A data entry, or an inner node when `Data` is null.
  explicit TRTree(void* Data = nullptr) : FData(Data) {}
  TRTree(const TRTree&) = delete;
  TRTree& operator=(const TRTree&) = delete;
  /// Frees all nodes below, not the items.
  virtual ~TRTree();

  /// What it costs to add `B` to `A`; `Insert` looks for the least.
  virtual double Judgement(const TRTree& A, const TRTree& B) const = 0;
  /// Takes the two children that fit together worst out of the child list, each into a new node:
  /// the later one into `B`, the earlier one into `A`. Nothing happens with less than two children.
  virtual void ChooseSeeds(std::unique_ptr<TRTree>& A, std::unique_ptr<TRTree>& B) = 0;
  /// Brings the range of this node up to date with its children; a data entry keeps its own.
  virtual void RenewRange() = 0;
  /// Children that a split leaves in each half at least.
  virtual int MinChildCount() const { return 2; }
  /// Children above which a node is split.
  virtual int MaxChildCount() const { return 4; }

  void* Data() const { return FData; }        ///< The user's item, null for an inner node.
  TRTree* Parent() const { return FParent; }  ///< The node above, null for the root.
  /// Children of this node alone.
  int ChildCount() const { return static_cast<int>(FChildren.size()); }
  /// Errors: `Index` outside 0 .. `ChildCount` − 1, `EParamError`.
  TRTree* Child(int Index) const;
  bool IsDataEntry() const { return FData != nullptr; }  ///< The node carries an item.
  /// A node whose first child is a data entry.
  bool IsLeaf() const { return !FChildren.empty() && FChildren.front()->IsDataEntry(); }

  /// Appends `Node` to the children and becomes its parent. Null is ignored.
  void AddChild(std::unique_ptr<TRTree> Node);

  /// Inserts a data entry into a tree, given by its root, and answers the root of the tree that
  /// results. All nodes of a tree are of one class. An entry without an item is dropped.
  ///
  /// An empty tree (null, or a root emptied by `Delete`) is replaced by the entry; a lone entry
  /// gets a node above itself and the new one. Otherwise the entry goes down, from node to node to
  /// the child of least `Judgement`, into a leaf. A node with more than `MaxChildCount` children is
  /// split, and its parent in turn: `ChooseSeeds`, then each other child goes to the seed of
  /// smaller `Judgement`; once a seed holds `MaxChildCount` − `MinChildCount` + 1 children, all to
  /// the other.
  /// Ties: the first child, also when no judgement is below 1.7e308; in a split, seed A.
  /// Ownership: both pass to the result. When something raises they stay with the caller, with the
  /// items they had; but nodes may have been split by then, and one may hold a child more than it
  /// should until the next split below it.
  static std::unique_ptr<TRTree> Insert(std::unique_ptr<TRTree>&& Entry,
                                        std::unique_ptr<TRTree>&& Tree);

  /// Takes this node out of its tree and frees it with all that is below; ancestors left without
  /// children go too, up to but not including the root, and the ranges of the others are renewed.
  /// The root itself stays, its owner's, as an empty node. `FreeData` is given each item that went.
  void Delete(const TFreeData& FreeData = {});
  /// Frees all nodes below this one and gives their items, and its own, to `FreeData`; the node
  /// stays, empty. Nothing above is told.
  void DestroyAll(const TFreeData& FreeData = {});

  /// Number of steps down to the deepest node: 0 for an entry, 1 for a leaf.
  int GetHeight() const;

 protected:
  /// A new inner node of the same class.
  virtual std::unique_ptr<TRTree> NewNode() const = 0;
  /// Takes a child out of the list; the later ones close up.
  std::unique_ptr<TRTree> TakeChild(int Index);
  /// Room for so many children: adding them up to there cannot raise.
  void ReserveChildren(int Count);

 private:
  bool IsOverfull() const;
  TRTree* ChooseInsertLeaf(const TRTree& Entry);
  static void SplitUpwards(TRTree* Node);
  void QuadraticSplit();
  void DoSplit(std::unique_ptr<TRTree> A, std::unique_ptr<TRTree> B);
  std::unique_ptr<TRTree> TakeChild(const TRTree* Node);
  std::unique_ptr<TRTree> TakeOut();
  void FreeAllBelow(const TFreeData& FreeData);

  void* FData;
  std::vector<std::unique_ptr<TRTree>> FChildren;
  TRTree* FParent = nullptr;
};

/// A list that collects data entries of trees, in the order they were put in.
/// Ownership: only refers to them.
class TRList {
 public:
  TRList() = default;
  virtual ~TRList() = default;

  int Count() const { return static_cast<int>(FNodes.size()); }  ///< Entries in the list.
  /// Errors: `Index` outside 0 .. `Count` − 1, `EParamError`.
  TRTree<>* operator[](int Index) const;
  /// The entries in the order they were put in.
  auto begin() const { return FNodes.begin(); }
  auto end() const { return FNodes.end(); }  ///< Behind the last.

  /// Null is ignored.
  void InsertOneNode(TRTree<>* Node) {
    if (Node) FNodes.push_back(Node);
  }
  /// Removes the first occurrence of `Node` from the list; nothing happens when it is absent.
  void DeleteOneNode(const TRTree<>* Node);
  /// The items of all entries, in order.
  std::vector<void*> PickUpAllContents() const;
  /// Forgets all entries; trees and items are not touched.
  void Clear() { FNodes.clear(); }
  /// Forgets all entries after the first `Count`.
  void Shorten(int Count);

 private:
  std::vector<TRTree<>*> FNodes;
};

/// The object tree of boxes in the plane.
class TRRTree2D : public TRTree<> {
 public:
  /// An inner node, of empty range.
  TRRTree2D() = default;
  /// A data entry.
  TRRTree2D(void* Data, const TVRect2D& Range) : TRTree<>(Data), FRange(Range) {}

  /// The box of a data entry's item, the union of the children's ranges of any other node.
  const TVRect2D& Range() const { return FRange; }
  /// Child `I` as the class it is.
  TRRTree2D* Child(int I) const { return static_cast<TRRTree2D*>(TRTree<>::Child(I)); }
  /// As that of `TRTree<>`.
  static std::unique_ptr<TRRTree2D> Insert(std::unique_ptr<TRRTree2D>&& Entry,
                                           std::unique_ptr<TRRTree2D>&& Tree);

  /// The area that the range of `A` gains when it is expanded by that of `B`.
  double Judgement(const TRTree<>& A, const TRTree<>& B) const override;
  /// The worst pair wastes most area: that of its common box less those of the two.
  /// Ties: the first pair, ordered by the first child, then the second; also when no waste is above
  /// −2^63.
  void ChooseSeeds(std::unique_ptr<TRTree<>>& A, std::unique_ptr<TRTree<>>& B) override;
  /// The union of the children's ranges; a data entry keeps its own.
  void RenewRange() override;

  /// Appends the data entries of this tree whose ranges meet `Box` to `Result`, depth first in the
  /// order of the children. Closed boxes, no slack; an empty box meets nothing.
  void PickUpContents(const TVRect2D& Box, TRList& Result);

 protected:
  /// A new inner node of empty range.
  std::unique_ptr<TRTree<>> NewNode() const override { return std::make_unique<TRRTree2D>(); }

 private:
  void AppendContents(const TVRect2D& Box, TRList& Result);

  TVRect2D FRange;
};

/// A list of entries of `TRRTree2D`, which can be searched like a tree.
class T2DRList : public TRList {
 public:
  /// Appends the entries whose ranges meet `Box` to `Result`, in order. Closed boxes,
  /// no slack.
  void PickUpContents(const TVRect2D& Box, TRList& Result) const;
};

}  // namespace tarnalgo
