#include "geometryAlgo/VedaType/RTree/ObjectRTree.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

// −2^63, below which no pair of children is a pair of seeds.
constexpr double kStartOfWaste = -9223372036854775808.0;

bool Meet(const TVRect2D& A, const TVRect2D& B) {
  return A.Intersect(B).IsValid();
}

const TVRect2D& RangeOf(const TRTree<>& Node) {
  return static_cast<const TRRTree2D&>(Node).Range();
}

}  // namespace

// --- TRTree<> ---

TRTree<void>::~TRTree() {
  TakeAllBelow();
}

TRTree<>* TRTree<void>::Child(int Index) const {
  if (Index < 0 || Index >= ChildCount()) RaiseError<EParamError>("TRTree", "index out of range");
  return FChildren[static_cast<std::size_t>(Index)].get();
}

void TRTree<void>::AddChild(std::unique_ptr<TRTree> Node) {
  if (!Node) return;
  Node->FParent = this;
  FChildren.push_back(std::move(Node));
}

std::unique_ptr<TRTree<>> TRTree<void>::TakeChild(int Index) {
  const auto At = FChildren.begin() + Index;
  std::unique_ptr<TRTree> Node = std::move(*At);
  FChildren.erase(At);
  Node->FParent = nullptr;
  return Node;
}

std::unique_ptr<TRTree<>> TRTree<void>::TakeChild(const TRTree* Node) {
  const auto At = std::find_if(FChildren.begin(), FChildren.end(),
                               [Node](const auto& Child) { return Child.get() == Node; });
  return TakeChild(static_cast<int>(At - FChildren.begin()));
}

// All nodes below, level by level, each without children now: to be freed without recursion.
std::vector<std::unique_ptr<TRTree<>>> TRTree<void>::TakeAllBelow() {
  auto Nodes = std::exchange(FChildren, {});
  for (std::size_t I = 0; I < Nodes.size(); ++I) {
    auto Below = std::exchange(Nodes[I]->FChildren, {});
    std::move(Below.begin(), Below.end(), std::back_inserter(Nodes));
  }
  return Nodes;
}

std::unique_ptr<TRTree<>> TRTree<void>::Insert(std::unique_ptr<TRTree> Entry,
                                               std::unique_ptr<TRTree> Tree) {
  if (!Entry || !Entry->IsDataEntry()) return Tree;
  if (!Tree) return Entry;
  if (Tree->FChildren.empty()) {
    if (!Tree->IsDataEntry()) return Entry;
    std::unique_ptr<TRTree> Root = Entry->NewNode();
    Root->AddChild(std::move(Tree));
    Root->AddChild(std::move(Entry));
    Root->RenewRange();
    return Root;
  }
  TRTree* const Leaf = Tree->ChooseInsertLeaf(*Entry);
  Leaf->AddChild(std::move(Entry));
  SplitUpwards(Leaf);
  return Tree;
}

bool TRTree<void>::IsOverfull() const {
  return ChildCount() > std::max(1, MaxChildCount());  // one child cannot be split
}

TRTree<>* TRTree<void>::ChooseInsertLeaf(const TRTree& Entry) {
  TRTree* Node = this;
  while (!Node->IsLeaf() && !Node->FChildren.empty()) {
    TRTree* Best = Node->FChildren.front().get();
    double Least = kStartOfMinimum;
    for (const auto& Child : Node->FChildren) {
      const double Cost = Judgement(*Child, Entry);
      if (Cost < Least) {
        Least = Cost;
        Best = Child.get();
      }
    }
    Node = Best;
  }
  return Node;
}

// Splits `Node` and its ancestors as long as they are over-full and renews the ranges above.
void TRTree<void>::SplitUpwards(TRTree* Node) {
  while (Node->IsOverfull()) {
    TRTree* const Above = Node->FParent;
    Node->QuadraticSplit();
    if (!Above) return;
    Node = Above;
  }
  for (; Node; Node = Node->FParent) Node->RenewRange();
}

// Deals the children out to two new nodes, which take the place of this one (`DoSplit`).
void TRTree<void>::QuadraticSplit() {
  std::unique_ptr<TRTree> A;
  std::unique_ptr<TRTree> B;
  ChooseSeeds(A, B);
  A->RenewRange();
  B->RenewRange();
  const int Enough = MaxChildCount() - MinChildCount() + 1;
  for (auto& Child : std::exchange(FChildren, {})) {
    const bool TakesA =
        A->ChildCount() < Enough &&
        (B->ChildCount() >= Enough || !(Judgement(*B, *Child) < Judgement(*A, *Child)));
    TRTree& Group = TakesA ? *A : *B;
    Group.AddChild(std::move(Child));
    Group.RenewRange();
  }
  DoSplit(std::move(A), std::move(B));
}

// Lets the two groups take the place of this node, which is freed; a root adopts them instead.
void TRTree<void>::DoSplit(std::unique_ptr<TRTree> A, std::unique_ptr<TRTree> B) {
  TRTree* const Target = FParent ? FParent : this;
  const std::unique_ptr<TRTree> Dropped = FParent ? FParent->TakeChild(this) : nullptr;
  Target->AddChild(std::move(A));
  Target->AddChild(std::move(B));
  if (!Dropped) RenewRange();
}

void TRTree<void>::Delete(const TFreeData& FreeData) {
  DestroyAll(FreeData);
  TRTree* Node = this;
  std::vector<std::unique_ptr<TRTree>> Emptied;  // this node first: it lives until the end
  while (Node->FParent && Node->FChildren.empty()) {
    TRTree* const Above = Node->FParent;
    Emptied.push_back(Above->TakeChild(Node));
    Node = Above;
  }
  for (; Node; Node = Node->FParent) Node->RenewRange();
}

void TRTree<void>::DestroyAll(const TFreeData& FreeData) {
  for (const auto& Node : TakeAllBelow()) {
    if (FreeData && Node->FData) FreeData(Node->FData);
  }
  void* const Data = std::exchange(FData, nullptr);
  if (FreeData && Data) FreeData(Data);
}

int TRTree<void>::GetHeight() const {
  int Height = 0;
  std::vector<const TRTree*> Level{this};
  while (true) {
    std::vector<const TRTree*> Below;
    for (const TRTree* Node : Level) {
      for (const auto& Child : Node->FChildren) Below.push_back(Child.get());
    }
    if (Below.empty()) return Height;
    ++Height;
    Level = std::move(Below);
  }
}

// --- TRRTree2D ---

std::unique_ptr<TRRTree2D> TRRTree2D::Insert(std::unique_ptr<TRRTree2D> Entry,
                                             std::unique_ptr<TRRTree2D> Tree) {
  std::unique_ptr<TRTree<>> Root = TRTree<>::Insert(std::move(Entry), std::move(Tree));
  return std::unique_ptr<TRRTree2D>(static_cast<TRRTree2D*>(Root.release()));
}

double TRRTree2D::Judgement(const TRTree<>& A, const TRTree<>& B) const {
  return AreaGrowth(RangeOf(A), RangeOf(B));
}

void TRRTree2D::ChooseSeeds(std::unique_ptr<TRTree<>>& A, std::unique_ptr<TRTree<>>& B) {
  if (ChildCount() < 2) return;
  int First = 0;
  int Second = 1;
  double Most = kStartOfWaste;
  for (int I = 0; I < ChildCount(); ++I) {
    for (int J = I + 1; J < ChildCount(); ++J) {
      const TVRect2D& RI = Child(I)->Range();
      const TVRect2D& RJ = Child(J)->Range();
      const double Waste = RI.Expand(RJ).Area() - RI.Area() - RJ.Area();
      if (Waste > Most) {
        Most = Waste;
        First = I;
        Second = J;
      }
    }
  }
  B = NewNode();
  A = NewNode();
  B->AddChild(TakeChild(Second));  // the later one first: the earlier keeps its place
  A->AddChild(TakeChild(First));
}

void TRRTree2D::RenewRange() {
  if (IsDataEntry()) return;
  FRange = TVRect2D();
  for (int I = 0; I < ChildCount(); ++I) FRange.ExpandInPlace(Child(I)->Range());
}

void TRRTree2D::PickUpContents(const TVRect2D& Box, TRList& Result) {
  std::vector<TRRTree2D*> Waiting{this};
  while (!Waiting.empty()) {
    TRRTree2D* const Node = Waiting.back();
    Waiting.pop_back();
    if (!Meet(Node->FRange, Box)) continue;
    if (Node->IsDataEntry()) Result.InsertOneNode(Node);
    for (int I = Node->ChildCount() - 1; I >= 0; --I) Waiting.push_back(Node->Child(I));
  }
}

// --- Lists ---

TRTree<>* TRList::operator[](int Index) const {
  if (Index < 0 || Index >= Count()) RaiseError<EParamError>("TRList", "index out of range");
  return FNodes[static_cast<std::size_t>(Index)];
}

void TRList::DeleteOneNode(const TRTree<>* Node) {
  const auto Found = std::find(FNodes.begin(), FNodes.end(), Node);
  if (Found != FNodes.end()) FNodes.erase(Found);
}

std::vector<void*> TRList::PickUpAllContents() const {
  std::vector<void*> Result;
  Result.reserve(FNodes.size());
  for (const TRTree<>* Node : FNodes) Result.push_back(Node->Data());
  return Result;
}

void T2DRList::PickUpContents(const TVRect2D& Box, TRList& Result) const {
  const int Last = Count();  // Result may be this very list
  for (int I = 0; I < Last; ++I) {
    if (Meet(RangeOf(*(*this)[I]), Box)) Result.InsertOneNode((*this)[I]);
  }
}

}  // namespace tarnalgo
