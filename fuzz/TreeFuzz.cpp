// Histories of the ordered map and the heap against plain models: order of equals, every answer,
// and what holds inside the map after each step.

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "containers/TreeAlgorithm.h"
#include "fuzz/Bytes.h"
#include "host/Cadutils.h"

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  if (Bytes.Below(2) == 0) {
    MapHistory(Bytes);
  } else {
    HeapHistory(Bytes);
  }
  return 0;
}
