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
  const int Rest = FSize - Top->FSize;
  SetLeftChild(Top->FRight);
  Top->SetRightChild(this);
  Top->FSize = FSize;
  FSize = Rest + SizeOf(FLeft);
  return Top;
}

TSBTree* TSBTree::Balanced(bool RightHeavy) {
  TSBTree* const Heavy = RightHeavy ? FRight : FLeft;
  if (!Heavy) return this;
  // Sizes of nodes off the path follow from the others: what is not read need not be in the cache.
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
  // Which sides can be too heavy now follows from a change by one node.
  if (Top->FLeft) Top->FLeft->Balanced(false);
  if (Top->FRight) Top->FRight->Balanced(true);
  return Top->Balanced(false)->Balanced(true);
}

void TSBTree::Maintain(bool RightHeavy, TSBTree*& Root) {
  TSBTree* const Top = Balanced(RightHeavy);
  if (!Top->FParent) Root = Top;
}

TSBTree* TSBTree::MaintainPath() {
  TSBTree* Top = this;
  while (TSBTree* const Above = Top->FParent) Top = Above->Balanced(Above->FRight == Top);
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
    const bool FromRight = FRight->FSize >= FLeft->FSize;
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
  TSBTree* Top = nullptr;
  for (TSBTree* Tree = this; Tree; Tree = Top->FParent) {
    if (Top) OnRight = Tree->FRight == Top;
    const int Shrunk = SizeOf(OnRight ? Tree->FRight : Tree->FLeft);
    const int Other = --Tree->FSize - 1 - Shrunk;
    // Most often the sizes alone show the balance, and the other side is not touched.
    Top = Other - 1 <= Shrunk ? Tree : Tree->Balanced(!OnRight);
  }
  return Top;
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
  auto* Tree = static_cast<TSBTreeIntKey*>(RootTree());
  for (;;) {
    ++Tree->FSize;
    const bool GoesRight = Node->Key >= Tree->Key;
    TSBTree* const Child = GoesRight ? Tree->FRight : Tree->FLeft;
    if (!Child) {
      if (GoesRight) {
        Tree->SetRightChild(Node);
      } else {
        Tree->SetLeftChild(Node);
      }
      return static_cast<TSBTreeIntKey*>(Node->MaintainPath());
    }
    Tree = static_cast<TSBTreeIntKey*>(Child);
  }
}

}  // namespace tarnalgo
