// Histories of the two R-trees against plain lists: every answer, and what holds inside the tree
// after each step.

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "fuzz/Bytes.h"
#include "geometryAlgo/VedaType.h"
#include "host/Exceptions.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

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
  if (Bytes.Below(2) == 0) {
    BoxHistory(Bytes);
  } else {
    ObjectHistory(Bytes);
  }
  return 0;
}
