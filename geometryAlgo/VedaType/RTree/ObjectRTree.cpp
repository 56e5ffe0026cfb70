#include "geometryAlgo/VedaType/RTree/ObjectRTree.h"

#include <algorithm>
#include <cstddef>
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
  FreeAllBelow({});
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

// Frees the nodes below, each without children by then: neither recursion nor memory is needed.
void TRTree<void>::FreeAllBelow(const TFreeData& FreeData) {
  TRTree* Node = this;
  for (;;) {
    if (!Node->FChildren.empty()) {
      Node = Node->FChildren.back().get();
    } else if (Node == this) {
      return;
    } else {
      void* const Data = Node->FData;
      Node = Node->FParent;
      Node->FChildren.pop_back();
      if (FreeData && Data) FreeData(Data);
    }
  }
}

// Takes this node out of its tree together with the ancestors that hold nothing else, but for the
// root. The topmost of them owns the others.
std::unique_ptr<TRTree<>> TRTree<void>::TakeOut() {
  TRTree* Top = this;
  while (Top->FParent->FParent && Top->FParent->ChildCount() == 1) Top = Top->FParent;
  TRTree* const Above = Top->FParent;
  std::unique_ptr<TRTree> Branch = Above->TakeChild(Top);
  for (TRTree* Node = Above; Node; Node = Node->FParent) Node->RenewRange();
  return Branch;
}

void TRTree<void>::ReserveChildren(int Count) {
  FChildren.reserve(static_cast<std::size_t>(Count));
}

std::unique_ptr<TRTree<>> TRTree<void>::Insert(std::unique_ptr<TRTree>&& Entry,
                                               std::unique_ptr<TRTree>&& Tree) {
  if (!Entry || !Entry->IsDataEntry()) {
    Entry.reset();
    return std::move(Tree);
  }
  if (!Tree || (Tree->FChildren.empty() && !Tree->IsDataEntry())) {
    Tree.reset();
    return std::move(Entry);
  }
  if (Tree->FChildren.empty()) {
    std::unique_ptr<TRTree> Root = Entry->NewNode();
    Root->ReserveChildren(2);
    Root->AddChild(std::move(Tree));
    Root->AddChild(std::move(Entry));
    Root->RenewRange();
    return Root;
  }
  TRTree* const Leaf = Tree->ChooseInsertLeaf(*Entry);
  Leaf->ReserveChildren(Leaf->ChildCount() + 1);
  TRTree* const Added = Entry.get();
  Leaf->AddChild(std::move(Entry));
  try {
    SplitUpwards(Leaf);
  } catch (...) {
    std::unique_ptr<TRTree> Branch = Added->TakeOut();
    Entry = Added->FParent ? Added->FParent->TakeChild(Added) : std::move(Branch);
    throw;
  }
  return std::move(Tree);
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
  if (FParent) FParent->ReserveChildren(FParent->ChildCount() + 1);
  std::unique_ptr<TRTree> A;
  std::unique_ptr<TRTree> B;
  ChooseSeeds(A, B);
  try {
    A->ReserveChildren(ChildCount() + 1);
    B->ReserveChildren(ChildCount() + 1);
  } catch (...) {
    for (TRTree* Seed : {A.get(), B.get()}) AddChild(Seed->TakeChild(0));
    throw;
  }
  A->RenewRange();
  B->RenewRange();
  const int Enough = MaxChildCount() - MinChildCount() + 1;
  for (auto& Child : FChildren) {
    const bool TakesA =
        A->ChildCount() < Enough &&
        (B->ChildCount() >= Enough || !(Judgement(*B, *Child) < Judgement(*A, *Child)));
    TRTree& Group = TakesA ? *A : *B;
    Group.AddChild(std::move(Child));
    Group.RenewRange();
  }
  FChildren.clear();
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
  if (!FParent) {
    RenewRange();
    return;
  }
  const std::unique_ptr<TRTree> Emptied = TakeOut();  // this node lives until the end
}

void TRTree<void>::DestroyAll(const TFreeData& FreeData) {
  FreeAllBelow(FreeData);
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

std::unique_ptr<TRRTree2D> TRRTree2D::Insert(std::unique_ptr<TRRTree2D>&& Entry,
                                             std::unique_ptr<TRRTree2D>&& Tree) {
  const auto Planar = [](std::unique_ptr<TRTree<>>& Node) {
    return std::unique_ptr<TRRTree2D>(static_cast<TRRTree2D*>(Node.release()));
  };
  std::unique_ptr<TRTree<>> BaseEntry = std::move(Entry);
  std::unique_ptr<TRTree<>> BaseTree = std::move(Tree);
  try {
    std::unique_ptr<TRTree<>> Root = TRTree<>::Insert(std::move(BaseEntry), std::move(BaseTree));
    return Planar(Root);
  } catch (...) {
    Entry = Planar(BaseEntry);
    Tree = Planar(BaseTree);
    throw;
  }
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
  // What the split needs, before the first child is taken.
  static_cast<TRRTree2D&>(*B).ReserveChildren(ChildCount());
  static_cast<TRRTree2D&>(*A).ReserveChildren(ChildCount());
  B->AddChild(TakeChild(Second));  // the later one first: the earlier keeps its place
  A->AddChild(TakeChild(First));
}

void TRRTree2D::RenewRange() {
  if (IsDataEntry()) return;
  FRange = TVRect2D();
  for (int I = 0; I < ChildCount(); ++I) FRange.ExpandInPlace(Child(I)->Range());
}

void TRRTree2D::PickUpContents(const TVRect2D& Box, TRList& Result) {
  const int Before = Result.Count();
  try {
    AppendContents(Box, Result);
  } catch (...) {
    Result.Shorten(Before);
    throw;
  }
}

void TRRTree2D::AppendContents(const TVRect2D& Box, TRList& Result) {
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

void TRList::Shorten(int Count) {
  if (Count >= 0 && Count < this->Count()) FNodes.resize(static_cast<std::size_t>(Count));
}

std::vector<void*> TRList::PickUpAllContents() const {
  std::vector<void*> Result;
  Result.reserve(FNodes.size());
  for (const TRTree<>* Node : FNodes) Result.push_back(Node->Data());
  return Result;
}

void T2DRList::PickUpContents(const TVRect2D& Box, TRList& Result) const {
  const int Last = Count();  // Result may be this very list
  const int Before = Result.Count();
  try {
    for (int I = 0; I < Last; ++I) {
      if (Meet(RangeOf(*(*this)[I]), Box)) Result.InsertOneNode((*this)[I]);
    }
  } catch (...) {
    Result.Shorten(Before);
    throw;
  }
}

}  // namespace tarnalgo
