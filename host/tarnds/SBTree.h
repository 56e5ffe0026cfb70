#pragma once  // host/tarnds/SBTree.h

#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

namespace tarnalgo {

/// A node of a size-balanced binary search tree (Chen Qifeng, 2007), and the tree below it: every
/// node is a tree. Derived nodes carry the keys; this class knows only the links and the sizes.
///
/// Balance: after insertions alone no subtree is smaller than a child of its sibling, and n nodes
/// are at most 1.44·log2(n + 1.5) high. `Delete` keeps the weaker rule that no subtree holds more
/// than twice its sibling and one, which the sizes on its path tell without a look at any other
/// node; from then on the height is below 1 + 1.71·log2(n).
///
/// How a derived node inserts: by `InsertInto`. By hand: walk down from the root by the key, raise
/// `FSize` by one at every node passed, attach the new node with `SetLeftChild` or `SetRightChild`
/// (which count nothing), then let every node on the way back `Maintain` the side that has grown.
///
/// Ownership: links refer to nodes and own none. A node must have left its tree (`Delete`) before
/// it is destroyed, or go with the whole tree (`DestroyAll`).
class TSBTree {
 public:
  /// Told of each node whose data is to be freed.
  using TFreeData = std::function<void(TSBTree& Node)>;

  /// A tree of one node.
  TSBTree() = default;
  virtual ~TSBTree() = default;
  TSBTree(const TSBTree&) = delete;
  TSBTree& operator=(const TSBTree&) = delete;

  TSBTree* LeftChild() const { return FLeft; }    ///< Nodes before this one, null for none.
  TSBTree* RightChild() const { return FRight; }  ///< Nodes behind this one, null for none.
  TSBTree* Parent() const { return FParent; }     ///< Null for the top of a tree.
  /// Number of nodes of this tree, this one included.
  int Size() const { return FSize; }

  ///@{
  /// Links the child and this node as its parent; `nullptr` unlinks. Sizes stay as they are.
  void SetLeftChild(TSBTree* N) {
    FLeft = N;
    if (N) N->FParent = this;
  }
  void SetRightChild(TSBTree* N) {
    FRight = N;
    if (N) N->FParent = this;
  }
  ///@}

  /// Restores the balance of this tree where its right (`RightHeavy`) or left child has grown, or
  /// the other one shrunk. `Root` follows when another node comes to the top of the whole tree.
  /// Cost: O(1) without a rotation, touching this node, that child and one grandchild; rotations
  /// are O(1) amortised.
  void Maintain(bool RightHeavy, TSBTree*& Root);

  /// Inserts this node, a tree of one node, into the tree below `Root` (its top; `nullptr` for an
  /// empty tree) and rebalances. `GoesRight(Node)` tells for each node met whether this one belongs
  /// behind it. Returns the root.
  ///
  /// The same tree comes out as from counting on the way down, linking and `Maintain` of every node
  /// on the way back, but the way back is spared where the sizes seen on the way down show that
  /// nothing has to turn.
  /// Errors: what `GoesRight` raises; the tree is then as it was.
  /// Cost: O(log n), the calls of `GoesRight` inlined.
  template <class TGoesRight>
  TSBTree* InsertInto(TSBTree* Root, const TGoesRight& GoesRight);

  /// First and last node of this tree, in order.
  TSBTree* FirstTree();
  TSBTree* LastTree();  ///< The last node.
  /// Neighbours in the order of the whole tree, `nullptr` past its ends.
  /// Cost: O(log n), O(1) on average over a walk.
  TSBTree* NextTree();
  TSBTree* PreviousTree();  ///< The neighbour before.
  /// The node with `I` nodes of this tree before it, `nullptr` outside 0 .. Size() − 1.
  /// Cost: O(log n).
  TSBTree* GetIthTree(int I);
  /// The top of the whole tree.
  TSBTree* RootTree();

  /// Takes this node out of its tree and rebalances. Only links change, so every other node stays
  /// valid and keeps its key; this one is a tree of one node afterwards.
  /// Returns the root of the remaining tree, `nullptr` when nothing remains.
  /// Cost: O(log n).
  TSBTree* Delete();

  /// Destroys every node of the whole tree, this one included, children before their parent and
  /// without recursion; before each, `FreeData` (unless empty) may free what it refers to.
  /// Ownership: the nodes must come from `new`.
  void DestroyAll(const TFreeData& FreeData = {});

 protected:
  ///@{
  /// The links that `SetLeftChild` and `SetRightChild` keep, for walks of derived nodes.
  TSBTree* FLeft = nullptr;
  TSBTree* FRight = nullptr;
  TSBTree* FParent = nullptr;
  ///@}
  /// Nodes of this tree; a derived node that inserts counts it by itself.
  int FSize = 1;

 private:
  static int SizeOf(const TSBTree* Tree) { return Tree ? Tree->FSize : 0; }

  /// `Heavy` holds more than twice `Light` and one. A child of the heavy tree is then larger than
  /// the light one, so that `Turned` finds something to do.
  static bool IsLopsided(int Heavy, int Light) { return (Heavy >> 1) > Light; }

  /// Rebalances the path above this node, which has just been attached, where `Marks` (of
  /// `InsertInto`, this node in the lowest bit) says so and where nodes below have turned. Returns
  /// the root, `Root` when it stays.
  TSBTree* MaintainMarked(std::uint64_t Marks, TSBTree* Root);

  /// Each step below returns the node that stands on top of this tree afterwards.
  TSBTree* Turned(bool RightHeavy);
  TSBTree* RotateLeft();
  TSBTree* RotateRight();

  /// Counts one node less in this tree and every one above it, and rebalances them; the node went
  /// missing below this one on that side. Returns the root.
  TSBTree* ShrinkPath(bool OnRight);

  /// Puts `N` (or nothing) in this node's place below its parent.
  void ReplaceInParent(TSBTree* N);
};

template <class TGoesRight>
TSBTree* TSBTree::InsertInto(TSBTree* Root, const TGoesRight& GoesRight) {
  // Sizes are those after the insertion. A node must not outgrow the sibling of its parent, nor
  // become lopsided with its own. One bit for each node passed tells whether it does, the last node
  // in the lowest bit (no tree is 64 high).
  std::uint64_t Marks = 0;
  int SizeAbove = std::numeric_limits<int>::max();
  int Uncle = SizeAbove;
  TSBTree* Tree = Root;
  bool GoneRight = false;
  try {
    for (;;) {
      // All is computed here, nothing branched to: no guess goes wrong on the way down, and the
      // processor starts on what follows while this waits for memory.
      const int Size = ++Tree->FSize;
      const int Sibling = SizeAbove - 1 - Size;
      Marks = 2 * Marks + static_cast<unsigned>((Size > Uncle) | IsLopsided(Size, Sibling));
      Uncle = Sibling;
      SizeAbove = Size;
      GoneRight = GoesRight(std::as_const(*Tree));
      TSBTree* const Child = GoneRight ? Tree->FRight : Tree->FLeft;
      if (!Child) break;
      Tree = Child;
    }
  } catch (...) {
    for (; Tree != Root; Tree = Tree->FParent) --Tree->FSize;
    --Root->FSize;
    throw;
  }
  if (GoneRight) {
    Tree->SetRightChild(this);
  } else {
    Tree->SetLeftChild(this);
  }
  Marks = 2 * Marks + (Uncle < 1 ? 1 : 0);
  return Marks != 0 ? MaintainMarked(Marks, Root) : Root;
}

/// A node with an unsigned key and a pointer to anything.
/// Ownership: the data is referenced, not owned.
class TSBTreeIntKey : public TSBTree {
 public:
  /// A tree of one node.
  explicit TSBTreeIntKey(std::uint32_t AKey, void* AData = nullptr) : Key(AKey), Data(AData) {}

  /// Fixed for life: the order of the tree rests on it.
  const std::uint32_t Key;
  /// Whatever the caller hangs here.
  void* Data;

  /// Inserts `Node`, a tree of one node, into the tree in which this node stands, whose nodes are
  /// all of this class. Returns the root.
  /// Ties: equal keys go right, so they stay in the order of insertion.
  /// Errors: a node that is linked already, or `nullptr`, `EParamError`.
  /// Cost: O(log n).
  TSBTreeIntKey* Insert(TSBTreeIntKey* Node);
};

}  // namespace tarnalgo
