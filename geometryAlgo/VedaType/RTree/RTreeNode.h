#pragma once  // geometryAlgo/VedaType/RTree/RTreeNode.h

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "containers/Container/LentList.h"
#include "containers/TreeAlgorithm/TreeNode.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

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
      : TTreeNode<T>(std::move(Data)), FIsDataNode(true), FRange(Box) {}

  /// The box of a data node's item; of any other node what covers all boxes below.
  const TVRect2D& Range() const { return FRange; }
  bool IsDataNode() const { return FIsDataNode; }  ///< The node holds an item.
  ///@{
  /// The node above, null for a root.
  TRTreeNode* Parent() { return static_cast<TRTreeNode*>(this->FParent); }
  const TRTreeNode* Parent() const { return static_cast<const TRTreeNode*>(this->FParent); }
  ///@}
  int ChildCount() const { return this->FChildNodes.Count(); }  ///< Children of this node alone.
  ///@{
  /// Errors: `Index` outside 0 .. `ChildCount` − 1, `EParamError`.
  TRTreeNode* Child(int Index) { return ChildAt(Checked(Index)); }
  const TRTreeNode* Child(int Index) const { return ChildAt(Checked(Index)); }
  ///@}

  /// No data node, and without children or with data nodes for children.
  bool IsLeaf() const final { return !FIsDataNode && (ChildCount() == 0 || FHoldsDataNodes); }
  /// Appends `ChildNode`, a `TRTreeNode<T>`, and lets the ranges of this node and of all its
  /// ancestors cover it.
  /// Errors: null or a node of another class, `EParamError`, nothing changed.
  void AddChildNode(TTreeNode<T>* ChildNode) final {
    auto* const Added = dynamic_cast<TRTreeNode*>(ChildNode);
    if (Added == nullptr) RaiseError<EParamError>("TRTreeNode", "no node of a box tree given");
    Adopt(Added, Added->FRange);
  }

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
  TRTreeNode<T>* Split(const TVRect2D& Box);

  /// Appends the items below this node whose boxes meet `Box`: closed boxes, `Eps` of slack along
  /// each axis, depth first in the order of the children. An empty box meets nothing.
  void Search(const TVRect2D& Box, std::vector<T>& Result, double Eps = kLinearTolerance) const;

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
  static constexpr std::ptrdiff_t kCacheLine = 64;
  // Splits of up to this many children allocate nothing.
  static constexpr int kShortList = 16;
  // Searches with up to this many nodes on a level allocate nothing.
  static constexpr int kShortLevel = 256;
  using TOrder = TLentList<int>;
  /// What a split writes down; taken before it begins, so that nothing in it can raise.
  struct TSplitRoom {
    explicit TSplitRoom(int MostChildren) {
      AlongX.Reserve(MostChildren);
      AlongY.Reserve(MostChildren);
      Keys.Reserve(MostChildren);
      Kept.Reserve(MostChildren / 2);
      KeptRanges.Reserve(MostChildren / 2);
    }

    int XStorage[kShortList];
    int YStorage[kShortList];
    double KeyStorage[kShortList];
    TTreeNode<T>* KeptStorage[kShortList / 2];
    TVRect2D RangeStorage[kShortList / 2];
    TOrder AlongX{XStorage, kShortList};
    TOrder AlongY{YStorage, kShortList};
    TLentList<double> Keys{KeyStorage, kShortList};
    TLentList<TTreeNode<T>*> Kept{KeptStorage, kShortList / 2};
    TLentList<TVRect2D> KeptRanges{RangeStorage, kShortList / 2};
  };
  using TNodes = TLentList<const TRTreeNode*>;

  /// The box that a search asks for, with the slack.
  struct TWindow {
    TVRect2D Box;
    double Eps;
    double RightWithSlack;
    double TopWithSlack;

    TWindow(const TVRect2D& ABox, double AEps)
        : Box(ABox), Eps(AEps), RightWithSlack(ABox.Right + AEps), TopWithSlack(ABox.Top + AEps) {}
    /// `FloatLessEquals` of the ends on both axes, and `R` is not empty. Not short-circuit: which
    /// test fails cannot be guessed, and a wrong guess costs more than all the tests.
    bool Meets(const TVRect2D& R) const {
      return static_cast<bool>(
          static_cast<int>(R.Left <= RightWithSlack) & static_cast<int>(Box.Left <= R.Right + Eps) &
          static_cast<int>(R.Bottom <= TopWithSlack) & static_cast<int>(Box.Bottom <= R.Top + Eps) &
          static_cast<int>(R.IsValid()));
    }
  };

  // Fetches this node and the room behind it while others are searched.
  void Prefetch(bool IsDataNode) const {
    const char* const Start = reinterpret_cast<const char*>(this);
    const std::ptrdiff_t Bytes = (IsDataNode ? 1 : 5) * kCacheLine;
    for (std::ptrdiff_t At = 0; At < Bytes; At += kCacheLine) __builtin_prefetch(Start + At);
  }

  int Checked(int Index) const {
    if (Index < 0 || Index >= ChildCount()) {
      RaiseError<EParamError>("TRTreeNode", "index out of range");
    }
    return Index;
  }
  TRTreeNode* ChildAt(int Index) { return static_cast<TRTreeNode*>(this->FChildNodes[Index]); }
  const TRTreeNode* ChildAt(int Index) const {
    return static_cast<const TRTreeNode*>(this->FChildNodes[Index]);
  }

  bool HasMeeting(const TVRect2D& Box, double Eps) const;
  void AddMeetingChildren(const TWindow& Window, TNodes& Nodes) const;
  /// Room for so many children.
  void ReserveChildren(int Count) {
    this->FChildNodes.Reserve(Count);
    FChildRanges.Reserve(Count);
  }
  /// `NewRoot` is null unless this is a root. There must be room for the second half in `Sibling`,
  /// for two in `NewRoot`, for one more in the parent. Raises nothing.
  TRTreeNode<T>* SplitInto(const TVRect2D& Box, TRTreeNode* Sibling, TRTreeNode* NewRoot,
                           TSplitRoom& Room);
  template <class TKeyOf>
  void OrderChildren(TOrder& Order, TSplitRoom& Room, TKeyOf KeyOf) const;
  double CostOfHalves(const TOrder& Order) const;
  void MoveSecondHalf(const TOrder& Order, TRTreeNode& Sibling, TSplitRoom& Room);
  int LeastGrowth(const TVRect2D& Box) const;
  void Adopt(TRTreeNode* ChildNode, const TVRect2D& Range);
  void Cover(const TVRect2D& Box);
  void ShowRangeToParent();
  void RemoveChild(const TRTreeNode* ChildNode);

  // What a search and an insertion read of a node stands in front.
  bool FIsDataNode = false;
  bool FHoldsDataNodes = false;
  TLentList<TVRect2D> FChildRanges;  // in step with the child list
  TVRect2D FRange;
};

/// Area that `Range` gains when it is expanded to cover `Box`.
inline double AreaGrowth(const TVRect2D& Range, const TVRect2D& Box) {
  if (!Range.IsValid() || !Box.IsValid()) return Range.Expand(Box).Area() - Range.Area();
  // The same for two boxes that are not empty, which need no more tests.
  const double Width = std::max(Range.Right, Box.Right) - std::min(Range.Left, Box.Left);
  const double Height = std::max(Range.Top, Box.Top) - std::min(Range.Bottom, Box.Bottom);
  return Width * Height - Range.Width() * Range.Height();
}

// Attaches a child whose range is `Range`. The caller has it at hand; that of the node would have
// to come from memory.
template <class T>
void TRTreeNode<T>::Adopt(TRTreeNode* ChildNode, const TVRect2D& Range) {
  if (ChildCount() == 0) {
    FChildRanges.Clear();  // `ClearFreeChildNodes` does not know of it
    FHoldsDataNodes = ChildNode->FIsDataNode;
  }
  FChildRanges.Reserve(ChildCount() + 1);
  TTreeNode<T>::AddChildNode(ChildNode);
  FChildRanges.Add(Range);
  Cover(Range);
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
  while (!Node->IsLeaf()) {
    Node = Node->ChildAt(Node->LeastGrowth(Box));
    Node->Prefetch(false);  // the list of ranges together with what points to it
  }
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
      if (Growth == 0.0) break;  // exact; none grows by less
    }
  }
  return Best;
}

template <class T>
TRTreeNode<T>* TRTreeNode<T>::Split(const TVRect2D& Box) {
  TSplitRoom Room(ChildCount());
  auto Sibling = std::make_unique<TRTreeNode>();
  Sibling->ReserveChildren(ChildCount() - ChildCount() / 2);
  auto NewRoot = Parent() ? nullptr : std::make_unique<TRTreeNode>();
  if (NewRoot) NewRoot->ReserveChildren(2);
  if (Parent()) Parent()->ReserveChildren(Parent()->ChildCount() + 1);
  return SplitInto(Box, Sibling.release(), NewRoot.release(), Room);
}

template <class T>
TRTreeNode<T>* TRTreeNode<T>::SplitInto(const TVRect2D& Box, TRTreeNode* Sibling,
                                        TRTreeNode* NewRoot, TSplitRoom& Room) {
  OrderChildren(Room.AlongX, Room, [](const TVRect2D& R) { return R.Center().X; });
  OrderChildren(Room.AlongY, Room, [](const TVRect2D& R) { return R.Center().Y; });
  const bool GoesByX = CostOfHalves(Room.AlongX) <= CostOfHalves(Room.AlongY);
  MoveSecondHalf(GoesByX ? Room.AlongX : Room.AlongY, *Sibling, Room);
  ShowRangeToParent();
  if (NewRoot) {
    NewRoot->FDepth = 0;
    NewRoot->Adopt(this, FRange);
  }
  Parent()->Adopt(Sibling, Sibling->FRange);
  if (!Box.IsValid()) return this;
  return AreaGrowth(FRange, Box) >= AreaGrowth(Sibling->FRange, Box) ? Sibling : this;
}

// The positions of the children, ascending by the key of their boxes, stably.
template <class T>
template <class TKeyOf>
void TRTreeNode<T>::OrderChildren(TOrder& Order, TSplitRoom& Room, TKeyOf KeyOf) const {
  const int Count = ChildCount();
  TLentList<double>& Keys = Room.Keys;
  Keys.Clear();
  Order.Clear();
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
void TRTreeNode<T>::MoveSecondHalf(const TOrder& Order, TRTreeNode& Sibling, TSplitRoom& Room) {
  const int Half = Order.Count() / 2;
  Room.Kept.Clear();
  Room.KeptRanges.Clear();
  FRange = TVRect2D();
  for (int I = 0; I < Half; ++I) {
    Room.Kept.Add(ChildAt(Order[I]));
    Room.KeptRanges.Add(FChildRanges[Order[I]]);
    FRange.ExpandInPlace(FChildRanges[Order[I]]);
  }
  for (int I = Half; I < Order.Count(); ++I) {
    Sibling.Adopt(ChildAt(Order[I]), FChildRanges[Order[I]]);
  }
  std::copy(Room.Kept.begin(), Room.Kept.end(), this->FChildNodes.begin());
  std::copy(Room.KeptRanges.begin(), Room.KeptRanges.end(), FChildRanges.begin());
  this->FChildNodes.Shorten(Half);
  FChildRanges.Shorten(Half);
}

// Level by level, all that meets the window in the order of the children: in the end the data
// nodes, in the order of a walk depth first. Against such a walk the nodes of a level come from
// memory at the same time, not one after the other.
template <class T>
void TRTreeNode<T>::Search(const TVRect2D& Box, std::vector<T>& Result, double Eps) const {
  const TWindow Window(Box, Eps);
  if (!Box.IsValid() || !Window.Meets(FRange)) return;
  const TRTreeNode* Storage[2][kShortLevel];
  TNodes Levels[2] = {{Storage[0], kShortLevel}, {Storage[1], kShortLevel}};
  TNodes* Level = &Levels[0];
  TNodes* Below = &Levels[1];
  Level->Add(this);
  for (bool IsLowest = FIsDataNode; !IsLowest;) {
    IsLowest = true;
    Below->Clear();
    for (const TRTreeNode* Node : *Level) {
      if (Node->FIsDataNode) {
        Below->Add(Node);  // only a tree made by hand has data nodes at different depths
        continue;
      }
      Node->AddMeetingChildren(Window, *Below);
      IsLowest = IsLowest && Node->IsLeaf();
    }
    std::swap(Level, Below);
  }
  TAppendGuard Guard(Result);
  for (const TRTreeNode* DataNode : *Level) Result.push_back(DataNode->Data());
  Guard.Keep();
}

// Some data node below meets the window. Depth first: the first one found ends the search.
template <class T>
bool TRTreeNode<T>::HasMeeting(const TVRect2D& Box, double Eps) const {
  const TWindow Window(Box, Eps);
  if (!Box.IsValid() || !Window.Meets(FRange)) return false;
  const TRTreeNode* Storage[kShortLevel];
  TNodes Waiting(Storage, kShortLevel);
  Waiting.Add(this);
  while (!Waiting.IsEmpty()) {
    const TRTreeNode* const Node = Waiting.TakeLast();
    if (Node->FIsDataNode) return true;
    Node->AddMeetingChildren(Window, Waiting);
  }
  return false;
}

// Appends the children that meet the window. A node of empty range, which does not, has nothing but
// empty boxes below.
template <class T>
void TRTreeNode<T>::AddMeetingChildren(const TWindow& Window, TNodes& Nodes) const {
  const int Before = Nodes.Count();
  Nodes.Reserve(Before + ChildCount());
  for (int I = 0; I < ChildCount(); ++I) {
    Nodes.AddIf(Window.Meets(FChildRanges[I]), ChildAt(I));
  }
  for (int I = Before; I < Nodes.Count(); ++I) Nodes[I]->Prefetch(FHoldsDataNodes);
}

template <class T>
void TRTreeNode<T>::RemoveFromParentIfEmpty(std::vector<TRTreeNode*>& Freed) {
  if (ChildCount() > 0) return;
  std::size_t Leaving = 1;
  for (TRTreeNode* Above = Parent(); Above && Above->ChildCount() == 1; Above = Above->Parent()) {
    ++Leaving;
  }
  if (Freed.capacity() - Freed.size() < Leaving) {
    Freed.reserve(std::max(2 * Freed.size(), Freed.size() + Leaving));
  }
  TRTreeNode* Node = this;
  while (Node && Node->ChildCount() == 0) {
    TRTreeNode* const Above = Node->Parent();
    if (Above) Above->Prefetch(false);
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
