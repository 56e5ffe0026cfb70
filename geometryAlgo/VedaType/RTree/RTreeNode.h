#pragma once  // geometryAlgo/VedaType/RTree/RTreeNode.h

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "containers/Container/LentList.h"
#include "containers/TreeAlgorithm/TreeNode.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

template <class T>
class TRTreeStore;

/// A node of `TRTree<T>`: a data node holds an item and its box and has no children; any other node
/// is a leaf, whose children are data nodes, or a branch, whose children are leaves or branches.
///
/// `Range` covers the ranges of all children; it can be larger than that once items were removed.
/// The boxes of the children stand in a list beside the child list, so that neither a search nor an
/// insertion visits a child that it does not enter.
/// `Depth` is what it was when the node was attached; splits higher up do not renew it.
/// Ownership: as `TTreeNode`. The nodes of a tree belong to the tree; a node made by hand, and
/// those that its `Split` makes, belong to the caller.
template <class T>
class TRTreeNode : public TTreeNode<T> {
 public:
  /// A leaf without children, of empty range.
  TRTreeNode() : TTreeNode<T>(T{}) {}
  /// A data node.
  TRTreeNode(T Data, const TVRect2D& Box)
      : TTreeNode<T>(std::move(Data)), FRange(Box), FIsDataNode(true) {}

  const TVRect2D& Range() const { return FRange; }
  bool IsDataNode() const { return FIsDataNode; }
  TRTreeNode* Parent() { return static_cast<TRTreeNode*>(this->FParent); }
  const TRTreeNode* Parent() const { return static_cast<const TRTreeNode*>(this->FParent); }
  int ChildCount() const { return this->FChildNodes.Count(); }
  /// The child at `Index`, in 0 .. `ChildCount` − 1.
  TRTreeNode* Child(int Index) { return static_cast<TRTreeNode*>(this->FChildNodes[Index]); }
  const TRTreeNode* Child(int Index) const {
    return static_cast<const TRTreeNode*>(this->FChildNodes[Index]);
  }

  /// No data node, and without children or with data nodes for children.
  bool IsLeaf() const final { return !FIsDataNode && (ChildCount() == 0 || FHoldsDataNodes); }
  /// Appends `ChildNode`, a `TRTreeNode<T>`, and lets the ranges of this node and of all its
  /// ancestors cover it.
  void AddChildNode(TTreeNode<T>* ChildNode) final;

  /// The leaf below this node that takes a new item of `Box`: from node to node the child whose
  /// range has to grow least in area.
  /// Ties: the first child; also when no child has a growth below 1.7e308.
  /// Errors: called on a data node, an assertion failure.
  TRTreeNode* ChooseInsertLeaf(const TVRect2D& Box);

  /// Hands the second half of the children to a new sibling, which comes last among the children of
  /// the parent; a root gets a new root above itself and the sibling. The children are ordered
  /// along X and along Y by the centres of their boxes, and the order is taken in which the boxes
  /// of the two halves have the smaller sum of areas; both halves keep that order. Answers the half
  /// that should take a new item of `Box`: the one whose range has to grow less. For an empty box,
  /// this node.
  /// Ties: equal centres keep the order of the child list; equal sums, along X; equal growth, the
  /// sibling.
  TRTreeNode* Split(const TVRect2D& Box) {
    return SplitInto(Box, [] { return new TRTreeNode; });
  }

  /// Appends the items below this node whose boxes meet `Box`: closed boxes, `Eps` of slack along
  /// each axis, depth first in the order of the children. An empty box meets nothing.
  void Search(const TVRect2D& Box, std::vector<T>& Result, double Eps = kLinearTolerance) const {
    VisitMeeting(Box, Eps, [&Result](const T& Data) {
      Result.push_back(Data);
      return true;
    });
  }

  /// Takes this node, when it has no children, out of its parent, then the parent, when it has none
  /// left, out of its own, and so on. Appends the nodes taken out to `Freed`, which are the
  /// caller's to free; the last one is the root when nothing is left. Ranges do not shrink.
  void RemoveFromParentIfEmpty(std::vector<TRTreeNode*>& Freed);

 protected:
  /// For a node that brings the room for its children along.
  TRTreeNode(TTreeNode<T>** ChildStorage, TVRect2D* RangeStorage, int Capacity)
      : TTreeNode<T>(T{}, ChildStorage, Capacity), FChildRanges(RangeStorage, Capacity) {}

 private:
  template <class>
  friend class TRTree;

  // The source line that the assertion of ChooseInsertLeaf names.
  static constexpr int kChooseInsertLeafLine = 9269;
  // Splits of up to this many children allocate nothing.
  static constexpr int kShortList = 16;
  using TOrder = TLentList<int>;

  template <class TVisitor>
  bool VisitMeeting(const TVRect2D& Box, double Eps, TVisitor Visit) const;
  template <class TMakeNode>
  TRTreeNode* SplitInto(const TVRect2D& Box, TMakeNode MakeNode);
  template <class TKeyOf>
  void OrderChildren(TOrder& Order, TKeyOf KeyOf) const;
  double CostOfHalves(const TOrder& Order) const;
  void MoveSecondHalf(const TOrder& Order, TRTreeNode& Sibling);
  int LeastGrowth(const TVRect2D& Box) const;
  void Cover(const TVRect2D& Box);
  void ShowRangeToParent();
  void RemoveChild(const TRTreeNode* ChildNode);

  TVRect2D FRange;
  TLentList<TVRect2D> FChildRanges;  // in step with the child list
  bool FIsDataNode = false;
  bool FHoldsDataNodes = false;
};

/// Area that `Range` gains when it is expanded to cover `Box`.
inline double AreaGrowth(const TVRect2D& Range, const TVRect2D& Box) {
  return Range.Expand(Box).Area() - Range.Area();
}

template <class T>
void TRTreeNode<T>::AddChildNode(TTreeNode<T>* ChildNode) {
  auto* const Added = static_cast<TRTreeNode*>(ChildNode);
  FChildRanges.Reserve(ChildCount() + 1);
  TTreeNode<T>::AddChildNode(Added);
  FChildRanges.Add(Added->FRange);
  FHoldsDataNodes = Child(0)->FIsDataNode;
  Cover(Added->FRange);
}

// Lets the ranges from here up to the root cover `Box`.
template <class T>
void TRTreeNode<T>::Cover(const TVRect2D& Box) {
  for (TRTreeNode* Node = this; Node; Node = Node->Parent()) {
    const TVRect2D Grown = Node->FRange.Expand(Box);
    if (Grown == Node->FRange) return;  // exact; then the ancestors cover it, too
    Node->FRange = Grown;
    Node->ShowRangeToParent();
  }
}

// Brings the parent's list of ranges in step with this node's.
template <class T>
void TRTreeNode<T>::ShowRangeToParent() {
  if (TRTreeNode* const Above = Parent()) {
    Above->FChildRanges[Above->FChildNodes.IndexOf(this)] = FRange;
  }
}

template <class T>
TRTreeNode<T>* TRTreeNode<T>::ChooseInsertLeaf(const TVRect2D& Box) {
  AssertThat(!FIsDataNode, "[ERROR] TRTreeNode<T>.ChooseInsertLeaf: 数据节点中不能插入子节点。",
             "geometryAlgo/VedaType", kChooseInsertLeafLine);
  TRTreeNode* Node = this;
  while (!Node->IsLeaf()) Node = Node->Child(Node->LeastGrowth(Box));
  return Node;
}

// The child whose range grows least in area, the first of equal ones.
template <class T>
int TRTreeNode<T>::LeastGrowth(const TVRect2D& Box) const {
  int Best = 0;
  double Least = kStartOfMinimum;
  for (int I = 0; I < FChildRanges.Count(); ++I) {
    const double Growth = AreaGrowth(FChildRanges[I], Box);
    if (Growth < Least) {
      Least = Growth;
      Best = I;
    }
  }
  return Best;
}

template <class T>
template <class TMakeNode>
TRTreeNode<T>* TRTreeNode<T>::SplitInto(const TVRect2D& Box, TMakeNode MakeNode) {
  TRTreeNode* const Sibling = MakeNode();
  TRTreeNode* const NewRoot = Parent() ? nullptr : MakeNode();
  int Storage[2][kShortList];
  TOrder AlongX(Storage[0], kShortList);
  TOrder AlongY(Storage[1], kShortList);
  OrderChildren(AlongX, [](const TVRect2D& R) { return R.Center().X; });
  OrderChildren(AlongY, [](const TVRect2D& R) { return R.Center().Y; });
  MoveSecondHalf(CostOfHalves(AlongX) <= CostOfHalves(AlongY) ? AlongX : AlongY, *Sibling);
  ShowRangeToParent();
  if (NewRoot) {
    NewRoot->FDepth = 0;
    NewRoot->AddChildNode(this);
  }
  Parent()->AddChildNode(Sibling);
  if (!Box.IsValid()) return this;
  return AreaGrowth(FRange, Box) >= AreaGrowth(Sibling->FRange, Box) ? Sibling : this;
}

// The positions of the children, ascending by the key of their boxes, stably.
template <class T>
template <class TKeyOf>
void TRTreeNode<T>::OrderChildren(TOrder& Order, TKeyOf KeyOf) const {
  const int Count = ChildCount();
  double KeyStorage[kShortList];
  TLentList<double> Keys(KeyStorage, kShortList);
  Keys.Reserve(Count);
  Order.Reserve(Count);
  for (int I = 0; I < Count; ++I) {
    const double Key = KeyOf(FChildRanges[I]);
    Keys.Add(Key == Key ? Key : 0.0);  // the centre of an endless box is NaN, which has no order
    Order.Add(I);
  }
  if (Count > kShortList) {
    std::stable_sort(Order.begin(), Order.end(),
                     [&Keys](int A, int B) { return Keys[A] < Keys[B]; });
    return;
  }
  // Counting who comes before whom does not branch on the keys, which a sort would guess wrong.
  int Places[kShortList] = {};
  for (int I = 1; I < Count; ++I) {
    for (int J = 0; J < I; ++J) {
      const int Overtakes = Keys[I] < Keys[J] ? 1 : 0;
      Places[J] += Overtakes;
      Places[I] += 1 - Overtakes;
    }
  }
  for (int I = 0; I < Count; ++I) Order[Places[I]] = I;
}

// The sum of the areas of the boxes of the two halves.
template <class T>
double TRTreeNode<T>::CostOfHalves(const TOrder& Order) const {
  const int Half = Order.Count() / 2;
  TVRect2D First;
  TVRect2D Second;
  for (int I = 0; I < Half; ++I) First.ExpandInPlace(FChildRanges[Order[I]]);
  for (int I = Half; I < Order.Count(); ++I) Second.ExpandInPlace(FChildRanges[Order[I]]);
  return First.Area() + Second.Area();
}

// Leaves the first half of `Order` here, in that order, and gives the second to `Sibling`.
template <class T>
void TRTreeNode<T>::MoveSecondHalf(const TOrder& Order, TRTreeNode& Sibling) {
  const int Half = Order.Count() / 2;
  TTreeNode<T>* KeptStorage[kShortList / 2];
  TVRect2D RangeStorage[kShortList / 2];
  TLentList<TTreeNode<T>*> Kept(KeptStorage, kShortList / 2);
  TLentList<TVRect2D> KeptRanges(RangeStorage, kShortList / 2);
  Kept.Reserve(Half);
  KeptRanges.Reserve(Half);
  FRange = TVRect2D();
  for (int I = 0; I < Half; ++I) {
    Kept.Add(Child(Order[I]));
    KeptRanges.Add(FChildRanges[Order[I]]);
    FRange.ExpandInPlace(FChildRanges[Order[I]]);
  }
  for (int I = Half; I < Order.Count(); ++I) Sibling.AddChildNode(Child(Order[I]));
  std::copy(Kept.begin(), Kept.end(), this->FChildNodes.begin());
  std::copy(KeptRanges.begin(), KeptRanges.end(), FChildRanges.begin());
  this->FChildNodes.Shorten(Half);
  FChildRanges.Shorten(Half);
}

// Calls `Visit(Data)` for the items whose boxes meet `Box`, until it answers false; answers whether
// it never did.
template <class T>
template <class TVisitor>
bool TRTreeNode<T>::VisitMeeting(const TVRect2D& Box, double Eps, TVisitor Visit) const {
  const auto Meets = [&Box, Eps](const TVRect2D& R) {
    return TMathUtils::FloatLessEquals(R.Left, Box.Right, Eps) &&
           TMathUtils::FloatLessEquals(Box.Left, R.Right, Eps) &&
           TMathUtils::FloatLessEquals(R.Bottom, Box.Top, Eps) &&
           TMathUtils::FloatLessEquals(Box.Bottom, R.Top, Eps);
  };
  if (!Box.IsValid() || !Meets(FRange)) return true;
  if (FIsDataNode) return !FRange.IsValid() || Visit(this->Data());
  const TRTreeNode* Storage[128];
  TLentList<const TRTreeNode*> Waiting(Storage, 128);
  Waiting.Add(this);
  while (!Waiting.IsEmpty()) {
    const TRTreeNode* const Node = Waiting.TakeLast();
    const int Count = Node->ChildCount();
    if (Node->FHoldsDataNodes) {
      for (int I = 0; I < Count; ++I) {
        const TVRect2D& R = Node->FChildRanges[I];
        if (Meets(R) && R.IsValid() && !Visit(Node->Child(I)->Data())) return false;
      }
    } else {
      for (int I = Count - 1; I >= 0; --I) {
        if (Meets(Node->FChildRanges[I])) Waiting.Add(Node->Child(I));
      }
    }
  }
  return true;
}

template <class T>
void TRTreeNode<T>::RemoveFromParentIfEmpty(std::vector<TRTreeNode*>& Freed) {
  TRTreeNode* Node = this;
  while (Node && Node->ChildCount() == 0) {
    TRTreeNode* const Above = Node->Parent();
    Freed.push_back(Node);
    if (Above) Above->RemoveChild(Node);
    Node->FParent = nullptr;
    Node = Above;
  }
}

template <class T>
void TRTreeNode<T>::RemoveChild(const TRTreeNode* ChildNode) {
  const int Index = this->FChildNodes.IndexOf(const_cast<TRTreeNode*>(ChildNode));
  this->FChildNodes.Delete(Index);
  FChildRanges.Delete(Index);
}

}  // namespace tarnalgo
