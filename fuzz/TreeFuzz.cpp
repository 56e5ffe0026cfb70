// Histories of the ordered map, the heap and the two R-trees against plain models: order of equals,
// every answer, and what holds inside the trees after each step.

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "containers/TreeAlgorithm.h"
#include "fuzz/Bytes.h"
#include "geometryAlgo/VedaType.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

// --- The ordered map ---

using TMap = TGeneralSBTree<int, int>;

/// Sizes and links below `Node`; the height.
int CheckLinks(const TMap::TNode* Node) {
  if (Node == nullptr) return 0;
  int Size = 1;
  int Height = 0;
  for (const TMap::TNode* Child : {Node->Left(), Node->Right()}) {
    if (Child == nullptr) continue;
    Require(Child->Parent() == Node, "a child knows its parent");
    Size += Child->Size();
    Height = std::max(Height, CheckLinks(Child));
  }
  Require(Node->Size() == Size, "a node counts what is below it");
  return Height + 1;
}

/// `Model` in order, equal keys in the order they came.
void CheckMap(const TMap& Tree, const std::vector<TMap::TNode*>& Model, int Probe) {
  Require(Tree.Count() == static_cast<int>(Model.size()), "the map counts");
  Require(CheckLinks(Tree.Root()) <= 2 * std::ilogb(Tree.Count() + 1) + 2, "the map is balanced");
  const auto At = [&](int I) {
    const bool IsThere = I >= 0 && I < static_cast<int>(Model.size());
    return IsThere ? Model[static_cast<std::size_t>(I)] : nullptr;
  };
  for (int I = 0; I < Tree.Count(); ++I) {
    Require(Tree.Root()->GetIthTree(I) == At(I), "the map keeps its order");
    Require(TMap::NextNode(At(I)) == At(I + 1) && TMap::PreviousNode(At(I)) == At(I - 1),
            "the neighbours are those in order");
  }
  const auto IsLess = [](const TMap::TNode* Node, int Key) { return Node->Key < Key; };
  const auto First = std::lower_bound(Model.begin(), Model.end(), Probe, IsLess);
  const auto After = std::lower_bound(First, Model.end(), Probe + 1, IsLess);
  const TMap::TNode* const Found = Tree.SearchNode(Probe);
  Require(Found ? Found->Key == Probe : First == After, "the map finds what is in it");
  TMap::TNode* Left = nullptr;
  TMap::TNode* Right = nullptr;
  Tree.SearchNearby(Probe, Left, Right);
  if (Found) return Require(Left == Right && Left->Key == Probe, "a key is its own neighbour");
  const int Place = static_cast<int>(First - Model.begin());
  Require((Left ? Left->Key : -1) == (At(Place - 1) ? At(Place - 1)->Key : -1) &&
              (Right ? Right->Key : -1) == (At(Place) ? At(Place)->Key : -1),
          "the nearest keys on both sides");
}

void MapHistory(TBytes& Bytes) {
  TMap Tree(CompareExact<int>);
  std::vector<TMap::TNode*> Model;
  while (!Bytes.IsEmpty()) {
    const int Key = Bytes.Below(24);
    const int Action = Bytes.Below(5);
    if (Action < 3 || Model.empty()) {
      const auto Behind = [](int A, const TMap::TNode* Node) { return A < Node->Key; };
      const auto Place = std::upper_bound(Model.begin(), Model.end(), Key, Behind);
      Model.insert(Place, Tree.Insert(Key, Key));
    } else {
      const std::size_t Place = static_cast<std::size_t>(Key) % Model.size();
      TMap::TNode* const Gone = Action == 3 ? Model[Place] : Tree.SearchNode(Key);
      Model.erase(std::remove(Model.begin(), Model.end(), Gone), Model.end());
      Tree.RemoveNode(Gone);
    }
    CheckMap(Tree, Model, Bytes.Below(24));
  }
}

// --- The heap: its array, by the stated rules of sifting ---

using TItem = std::pair<int, int>;  // the key, and a name that tells equal ones apart

void Rise(std::vector<TItem>& Heap) {
  for (std::size_t I = Heap.size() - 1; I > 0 && Heap[(I - 1) / 2].first > Heap[I].first;) {
    std::swap(Heap[I], Heap[(I - 1) / 2]);
    I = (I - 1) / 2;
  }
}

void Sink(std::vector<TItem>& Heap) {
  for (std::size_t I = 0, Child = 1; Child < Heap.size(); I = Child, Child = 2 * I + 1) {
    if (Child + 1 < Heap.size() && Heap[Child + 1].first < Heap[Child].first) ++Child;
    if (!(Heap[Child].first < Heap[I].first)) break;
    std::swap(Heap[I], Heap[Child]);
  }
}

void HeapHistory(TBytes& Bytes) {
  TMinHeap<int> ByKey;
  TMinHeap<TItem> ByComparer(
      [](const TItem& A, const TItem& B) { return CompareExact(A.first, B.first); });
  std::vector<TItem> Model;
  for (int Name = 0; !Bytes.IsEmpty(); ++Name) {
    if (Bytes.Below(3) < 2 || Model.empty()) {
      Model.emplace_back(Bytes.Below(16), Name);
      ByKey.Add(Name, Model.back().first);
      ByComparer.Add(Model.back());
      Rise(Model);
    } else {
      Require(ByKey.TopKey() == Model[0].first && ByKey.Pop() == Model[0].second, "the least");
      Require(ByComparer.Pop() == Model[0], "the least by the comparer");
      Model[0] = Model.back();
      Model.pop_back();
      Sink(Model);
    }
    Require(ByKey.Datas().size() == Model.size(), "the heap counts");
    for (std::size_t I = 0; I < Model.size(); ++I) {
      Require(ByKey.Datas()[I].Data == Model[I].second && ByComparer.Datas()[I].Data == Model[I],
              "the array follows from the rules");
    }
  }
}

// --- The R-trees ---

/// An empty box now and then.
TVRect2D MakeBox(TBytes& Bytes) {
  if (Bytes.Below(16) == 0) return TVRect2D();
  const TPoint2D P = Bytes.Point();
  return TVRect2D(P, P + TPoint2D(Bytes.Below(4), Bytes.Below(4)));
}

bool DoMeet(const TVRect2D& A, const TVRect2D& B, double Slack) {
  return A.IsValid() && B.IsValid() && A.Left <= B.Right + Slack && B.Left <= A.Right + Slack &&
         A.Bottom <= B.Top + Slack && B.Bottom <= A.Top + Slack;
}

bool Holds(const TVRect2D& Outer, const TVRect2D& Inner) {
  return !Inner.IsValid() || (Outer.Left <= Inner.Left && Outer.Right >= Inner.Right &&
                              Outer.Bottom <= Inner.Bottom && Outer.Top >= Inner.Top);
}

/// Ranges, links and widths below `Node`; the number of data nodes.
int CheckNodes(const TRTreeNode<int>* Node, int MaxChildren) {
  if (Node == nullptr) return 0;
  if (Node->IsDataNode()) return 1;
  Require(Node->ChildCount() > 0 && Node->ChildCount() <= MaxChildren, "a node is not overfull");
  int Count = 0;
  for (int I = 0; I < Node->ChildCount(); ++I) {
    Require(Node->Child(I)->Parent() == Node, "a child knows its parent");
    Require(Holds(Node->Range(), Node->Child(I)->Range()), "a node holds its children");
    Require(Node->Child(I)->IsDataNode() == Node->Child(0)->IsDataNode(), "a leaf has data only");
    Count += CheckNodes(Node->Child(I), MaxChildren);
  }
  return Count;
}

void BoxHistory(TBytes& Bytes) {
  TRTree<int> Tree(2 + Bytes.Below(7));
  std::vector<std::pair<int, TVRect2D>> Model;  // in the order of insertion
  for (int Next = 0; !Bytes.IsEmpty(); ++Next) {
    if (Bytes.Below(3) < 2 || Model.empty()) {
      const int Item = (7 * Next) % 64;
      const TVRect2D Box = MakeBox(Bytes);
      try {
        Require(Tree.Contains(Item) == false || Next >= 64, "an item is new");
        Tree.Insert(Item, Box);
        Model.emplace_back(Item, Box);
      } catch (const EParamError&) {
        Require(Tree.Contains(Item), "only an item that is there is refused");
      }
    } else {
      const auto Gone = Model.begin() + Bytes.Byte() % static_cast<int>(Model.size());
      Tree.Remove(Gone->first);
      Model.erase(Gone);
    }
    const TVRect2D Window = MakeBox(Bytes);
    std::vector<int> Found = Tree.Search(Window, kLinearTolerance);
    Require(Tree.MayIntersect(Window) == !Found.empty(), "two answers to one question");
    std::vector<int> All;
    std::vector<int> Due;
    for (const auto& [Item, Box] : Model) {
      All.push_back(Item);
      if (DoMeet(Box, Window, kLinearTolerance)) Due.push_back(Item);
    }
    Require(Tree.GetAllData() == All, "all items in the order of their insertion");
    std::sort(Found.begin(), Found.end());
    std::sort(Due.begin(), Due.end());
    Require(Found == Due, "the R-tree finds what a scan finds");
    Require(CheckNodes(Tree.Root(), Tree.MaxChildren()) == Tree.Count(), "all items are below");
    Require((Tree.Root() == nullptr) == Model.empty(), "an empty tree has no nodes");
  }
}

void ObjectHistory(TBytes& Bytes) {
  std::vector<int> Items(256);
  std::map<int*, TRRTree2D*> Entries;
  std::unique_ptr<TRRTree2D> Tree;
  for (std::size_t Next = 0; !Bytes.IsEmpty() && Next < Items.size(); ++Next) {
    if (Bytes.Below(3) < 2 || Entries.size() < 2) {
      auto Entry = std::make_unique<TRRTree2D>(&Items[Next], MakeBox(Bytes));
      Entries[&Items[Next]] = Entry.get();
      Tree = TRRTree2D::Insert(std::move(Entry), std::move(Tree));
    } else {
      const int Place = Bytes.Byte() % static_cast<int>(Entries.size());
      const auto Gone = std::next(Entries.begin(), Place);
      const auto Free = [&](void* Item) { Require(Item == Gone->first, "its own item goes"); };
      Gone->second->Delete(Free);
      Entries.erase(Gone);
    }
    const TVRect2D Window = MakeBox(Bytes);
    TRList Result;
    Tree->PickUpContents(Window, Result);
    std::vector<void*> Found = Result.PickUpAllContents();
    std::sort(Found.begin(), Found.end());
    std::vector<void*> Due;
    for (const auto& [Item, Entry] : Entries) {
      if (DoMeet(Entry->Range(), Window, 0.0)) Due.push_back(Item);
      if (Entry->Parent()) Require(Holds(Tree->Range(), Entry->Range()), "the root holds all");
    }
    Require(Found == Due, "the object tree finds what a scan finds");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  constexpr void (*kHistories[])(TBytes&) = {MapHistory, HeapHistory, BoxHistory, ObjectHistory};
  kHistories[Bytes.Below(4)](Bytes);
  return 0;
}
