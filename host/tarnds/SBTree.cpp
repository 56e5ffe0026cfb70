#include "host/tarnds/SBTree.h"

#include <algorithm>

#include "host/Exceptions.h"

namespace tarnalgo {

void TSBTree::ReplaceInParent(TSBTree* N) {
  if (N) N->FParent = FParent;
  if (!FParent) return;
  (FParent->FLeft == this ? FParent->FLeft : FParent->FRight) = N;
}

TSBTree* TSBTree::RotateLeft() {
  TSBTree* const Top = FRight;
  ReplaceInParent(Top);
  // The sizes promise the child; the analyser does not reckon with them.
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
  const int Rest = FSize - Top->FSize;  // this node and its left child, which is not touched
  SetRightChild(Top->FLeft);
  Top->SetLeftChild(this);
  Top->FSize = FSize;
  FSize = Rest + SizeOf(FRight);
  return Top;
}

TSBTree* TSBTree::RotateRight() {
  TSBTree* const Top = FLeft;
  ReplaceInParent(Top);
  // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): as above
  const int Rest = FSize - Top->FSize;
  SetLeftChild(Top->FRight);
  Top->SetRightChild(this);
  Top->FSize = FSize;
  FSize = Rest + SizeOf(FLeft);
  return Top;
}

TSBTree* TSBTree::Turned(bool RightHeavy) {
  TSBTree* const Heavy = RightHeavy ? FRight : FLeft;
  if (!Heavy) return this;
  const int Light = FSize - 1 - Heavy->FSize;
  if (Heavy->FSize - 1 <= Light) return this;
  const int Outer = SizeOf(RightHeavy ? Heavy->FRight : Heavy->FLeft);
  const int Inner = Heavy->FSize - 1 - Outer;
  if (Outer <= Light && Inner <= Light) return this;

  TSBTree* Top = nullptr;
  if (RightHeavy) {
    if (Outer <= Light) Heavy->RotateRight();
    Top = RotateLeft();
  } else {
    if (Outer <= Light) Heavy->RotateLeft();
    Top = RotateRight();
  }
  // Every node with new children is looked at again, from below, until none turns. That ends: each
  // turn brings nodes nearer to the top and lets the sum of all depths fall.
  for (TSBTree* const Child : {Top->FLeft, Top->FRight}) {
    if (Child) Child->Turned(false)->Turned(true);
  }
  return Top->Turned(false)->Turned(true);
}

void TSBTree::Maintain(bool RightHeavy, TSBTree*& Root) {
  TSBTree* const Top = Turned(RightHeavy);
  if (!Top->FParent) Root = Top;
}

TSBTree* TSBTree::MaintainMarked(std::uint64_t Marks, TSBTree* Root) {
  TSBTree* Top = this;
  for (; (Marks & 1) == 0; Marks >>= 1) Top = Top->FParent;
  int Grown = 0;  // the larger of those children of `Top` that can have become too large
  while (TSBTree* const Above = Top->FParent) {
    // The sizes of other nodes follow from those of the path: what is not read need not be cached.
    const int Light = Above->FSize - 1 - Top->FSize;
    TSBTree* NewTop = Above;
    if (Grown > Light || IsLopsided(Top->FSize, Light)) {
      NewTop = Above->Turned(Above->FRight == Top);
    }
    // A mark concerns the parent and the grandparent of its node, a turn the next node up.
    if (NewTop == Above && Marks == 0) return Root;
    Marks >>= 1;
    Grown = NewTop == Above ? Top->FSize : std::max(SizeOf(NewTop->FLeft), SizeOf(NewTop->FRight));
    Top = NewTop;
  }
  return Top;
}

TSBTree* TSBTree::FirstTree() {
  TSBTree* Tree = this;
  while (Tree->FLeft) Tree = Tree->FLeft;
  return Tree;
}

TSBTree* TSBTree::LastTree() {
  TSBTree* Tree = this;
  while (Tree->FRight) Tree = Tree->FRight;
  return Tree;
}

TSBTree* TSBTree::NextTree() {
  if (FRight) return FRight->FirstTree();
  const TSBTree* Tree = this;
  while (Tree->FParent && Tree->FParent->FRight == Tree) Tree = Tree->FParent;
  return Tree->FParent;
}

TSBTree* TSBTree::PreviousTree() {
  if (FLeft) return FLeft->LastTree();
  const TSBTree* Tree = this;
  while (Tree->FParent && Tree->FParent->FLeft == Tree) Tree = Tree->FParent;
  return Tree->FParent;
}

TSBTree* TSBTree::GetIthTree(int I) {
  if (I < 0 || I >= FSize) return nullptr;
  TSBTree* Tree = this;
  for (;;) {
    const int Before = SizeOf(Tree->FLeft);
    if (I == Before) return Tree;
    if (I < Before) {
      Tree = Tree->FLeft;
    } else {
      I -= Before + 1;
      Tree = Tree->FRight;
    }
  }
}

TSBTree* TSBTree::RootTree() {
  TSBTree* Tree = this;
  while (Tree->FParent) Tree = Tree->FParent;
  return Tree;
}

TSBTree* TSBTree::Delete() {
  TSBTree* Above = FParent;  // a node goes missing below it, on that side
  bool OnRight = FParent && FParent->FRight == this;
  TSBTree* Top = FLeft ? FLeft : FRight;
  if (FLeft && FRight) {
    // The in-order neighbour from the larger side takes this node's place.
    const bool FromRight = FRight->FSize >= FSize - 1 - FRight->FSize;
    TSBTree* const Heir = FromRight ? FRight->FirstTree() : FLeft->LastTree();
    const bool IsChild = Heir->FParent == this;
    Above = IsChild ? Heir : Heir->FParent;
    OnRight = IsChild == FromRight;
    Heir->ReplaceInParent(FromRight ? Heir->FRight : Heir->FLeft);
    Heir->SetLeftChild(FLeft);
    Heir->SetRightChild(FRight);
    Heir->FSize = FSize;
    ReplaceInParent(Heir);
  } else {
    ReplaceInParent(Top);
  }
  FLeft = FRight = FParent = nullptr;
  FSize = 1;
  return Above ? Above->ShrinkPath(OnRight) : Top;
}

TSBTree* TSBTree::ShrinkPath(bool OnRight) {
  int Shrunk = SizeOf(OnRight ? FRight : FLeft);
  TSBTree* Tree = this;
  for (;;) {
    --Tree->FSize;
    if (IsLopsided(Tree->FSize - 1 - Shrunk, Shrunk)) Tree = Tree->Turned(!OnRight);
    TSBTree* const Above = Tree->FParent;
    if (!Above) return Tree;
    OnRight = Above->FRight == Tree;
    Shrunk = Tree->FSize;
    Tree = Above;
  }
}

void TSBTree::DestroyAll(const TFreeData& FreeData) {
  TSBTree* Tree = RootTree();
  while (Tree) {
    if (TSBTree* const Child = Tree->FLeft ? Tree->FLeft : Tree->FRight) {
      Tree = Child;
      continue;
    }
    TSBTree* const Above = Tree->FParent;
    Tree->ReplaceInParent(nullptr);
    if (FreeData) FreeData(*Tree);
    delete Tree;
    Tree = Above;
  }
}

TSBTreeIntKey* TSBTreeIntKey::Insert(TSBTreeIntKey* Node) {
  if (!Node || Node == this || Node->FParent || Node->FLeft || Node->FRight) {
    RaiseError<EParamError>("TSBTreeIntKey.Insert", "节点为空或已在树中");
  }
  return static_cast<TSBTreeIntKey*>(Node->InsertInto(RootTree(), [Node](const TSBTree& Tree) {
    return Node->Key >= static_cast<const TSBTreeIntKey&>(Tree).Key;
  }));
}

}  // namespace tarnalgo
