#include <numeric>
#include <string>
#include <vector>

#include "containers/Container.h"
#include "containers/TreeAlgorithm.h"
#include "tests/starved/Starve.h"

namespace tarnalgo::test {
namespace {

// Longer than what a string holds in itself: copying an item can fail, too.
std::string Word(int I) {
  return "a text that takes memory of its own: " + std::to_string(I);
}

std::vector<std::string> Words(int Count) {
  std::vector<std::string> Result;
  for (int I = 0; I < Count; ++I) Result.push_back(Word((I * 37) % Count));
  return Result;
}

std::vector<int> Numbers(int First, int Count) {
  std::vector<int> Result(static_cast<std::size_t>(Count));
  std::iota(Result.begin(), Result.end(), First);
  return Result;
}

TEST(StarvedContainers, Collection) {
  using TSet = TCollection<int>;
  const TSet Few(Numbers(0, 8));
  const TSet Other(Numbers(3, 40));
  const auto OnFew = [&](const char* Name, auto Run) { StarveOn(Name, Few, Run); };
  OnFew("Add", [](TSet& Set) { return Set.Add(99); });
  OnFew("AddRange", [](TSet& Set) { Set.AddRange(Numbers(5, 30)); });
  OnFew("CopyFrom", [&](TSet& Set) { Set.CopyFrom(Other, false); });
  OnFew("CopyFrom cleared", [&](TSet& Set) { Set.CopyFrom(Other, true); });
  OnFew("Union", [&](TSet& Set) { Set.Union(Other); });
  OnFew("Intersection", [&](TSet& Set) { Set.Intersection(Other); });
  OnFew("Difference", [&](TSet& Set) { Set.Difference(Other); });
  OnFew("ExclusiveOr", [&](TSet& Set) { Set.ExclusiveOr(Other); });
  OnFew("assignment", [&](TSet& Set) { Set = Other; });
  OnFew("results", [&](TSet& Set) {
    return std::make_tuple(Set.UnionTo(Other), Set.IntersectionTo(Other), Set.DifferenceTo(Other),
                           Set.ExclusiveOrTo(Other), TSet(Numbers(0, 9)));
  });
}

TEST(StarvedContainers, ObjectList) {
  using TList = TObjectList<std::string>;
  const auto Make = [] {
    auto List = std::make_unique<TList>();
    for (const std::string& Item : Words(8)) List->Add(std::make_unique<std::string>(Item));
    return List;
  };
  const auto Compare = [](const std::string& A, const std::string& B) { return A.compare(B); };
  Starve("Add", Make, [](TList& List) { List.Add(std::make_unique<std::string>(Word(9))); });
  Starve("Add pointer", Make, [](TList& List) { List.Add(new std::string(Word(9))); });
  Starve("Insert", Make, [](TList& List) { List.Insert(0, new std::string(Word(9))); });
  Starve("SetItem", Make, [](TList& List) { List.SetItem(3, std::make_unique<std::string>("")); });
  Starve("Reserve", Make, [](TList& List) { List.Reserve(100); });
  Starve("Sort", Make, [&](TList& List) { List.Sort(Compare); });
  Starve("SortByKey", Make, [](TList& List) {
    List.SortByKey([](const std::string& Item) { return Item; },
                   [](const std::string& A, const std::string& B) { return A.compare(B); });
  });
  Starve("refused items", Make, [](TList& List) {
    try {
      List.Insert(99, new std::string(Word(9)));
    } catch (const EParamError&) {}
  });
}

TEST(StarvedContainers, MergeSort) {
  StarveOn("MergeSort", Words(100), [](std::vector<std::string>& Items) {
    MergeSort(Items, [](const std::string& A, const std::string& B) { return A.compare(B); });
  });
}

template <class T>
struct TLinked {
  TLinkedList<T> List;
  std::vector<T> State() const {
    std::vector<T> Result;
    for (auto* Node = List.Head(); Node != nullptr; Node = Node->Next()) {
      Result.push_back(Node->Data());
    }
    for (auto* Node = List.Tail(); Node != nullptr; Node = Node->Prev()) {
      Result.push_back(Node->Data());
    }
    return Result;
  }
};

TEST(StarvedContainers, LinkedList) {
  using TSubject = TLinked<std::string>;
  const auto Make = [] {
    return std::make_unique<TSubject>(TSubject{TLinkedList<std::string>(Words(4))});
  };
  Starve("AddToHead", Make, [](TSubject& S) { S.List.AddToHead(Word(9)); });
  Starve("AddToTail", Make, [](TSubject& S) { S.List.AddToTail(Word(9)); });
  Starve("InsertAfter", Make, [](TSubject& S) { S.List.InsertAfter(S.List.Tail(), Word(9)); });
  Starve("RemoveHead", Make, [](TSubject& S) { return S.List.RemoveHead(true); });
  Starve("RemoveTail", Make, [](TSubject& S) { return S.List.RemoveTail(true); });
  Starve("Remove", Make, [](TSubject& S) { S.List.Remove(S.List.Head(), true); });
  Starve("handed out", Make, [](TSubject& S) {
    auto* const Node = S.List.Head();
    std::string Data = S.List.RemoveHead(false);
    delete Node;
    return Data;
  });
  Starve("ends", Make, [](TSubject& S) { return S.List.GetHeadData() + S.List.GetTailData(); });
}

TEST(StarvedContainers, Dictionaries) {
  struct TOwn {
    TOwnValueDic<std::string, std::string> Dic;
    auto State() const { return std::make_pair(Dic.Keys(), Dic.Values()); }
  };
  const auto MakeOwn = [] {
    auto Own = std::make_unique<TOwn>();
    for (const std::string& Item : Words(4)) {
      Own->Dic.Add(Item, std::make_unique<std::string>(Item));
    }
    return Own;
  };
  Starve("Add", MakeOwn, [](TOwn& S) { S.Dic.Add(Word(9), std::make_unique<std::string>("")); });
  Starve(
      "AddOrSetValue", MakeOwn,
      [](TOwn& S) {
        S.Dic.AddOrSetValue(Word(9), std::make_unique<std::string>(Word(9)));
        S.Dic.Remove(Word(9));
        S.Dic.AddOrSetValue(Word(1), std::make_unique<std::string>(Word(9)));
      },
      TPromise::Usable);
  Starve("Extract", MakeOwn, [](TOwn& S) { return S.Dic.Extract(Word(2)); });

  struct TOrdered {
    TOrderedDic<std::string, int> Dic;
    std::vector<std::string> State() const {
      std::vector<std::string> Keys;
      Dic.ForEach([&](const std::string& Key, int) { Keys.push_back(Key); });
      return Keys;
    }
  };
  static int Value = 1;
  const auto MakeOrdered = [] {
    auto Subject = std::make_unique<TOrdered>();
    for (const std::string& Item : Words(16)) Subject->Dic.Add(Item, &Value);
    for (int I = 0; I < 10; ++I) Subject->Dic.Remove(Word(I));
    return Subject;
  };
  Starve("Add", MakeOrdered, [](TOrdered& S) { S.Dic.Add(Word(20), &Value); });
  Starve("assignment", MakeOrdered, [](TOrdered& S) {
    TOrdered Other;
    Other.Dic.Add(Word(20), &Value);
    S = Other;
  });
}

TEST(StarvedContainers, NodePool) {
  struct TPool {
    TNodePool<std::string> Pool;
    std::vector<std::string*> Nodes;
    ~TPool() {
      for (std::string* Node : Nodes) Pool.Destroy(Node);
    }
    int State() const { return static_cast<int>(Nodes.size()); }
  };
  const auto Make = [] {
    auto Subject = std::make_unique<TPool>();
    Subject->Nodes.reserve(1000);
    return Subject;
  };
  Starve(
      "Create", Make,
      [](TPool& S) {
        while (S.Nodes.size() < 1000) S.Nodes.push_back(S.Pool.Create(Word(1)));
      },
      TPromise::Usable);
}

// A node's place in its tree and what hangs below it.
struct TTree {
  TMultiTree<std::string> Tree{Word(0)};
  std::vector<std::string> State() const {
    std::vector<std::string> Result;
    for (auto* Node : const_cast<TTree*>(this)->Tree.PreorderTraversal()) {
      Result.push_back(Node->Data());
    }
    return Result;
  }
};

TEST(StarvedContainers, MultiTrees) {
  using TNode = TMultiTree<std::string>::TNode;
  const auto Make = [] {
    auto Subject = std::make_unique<TTree>();
    for (int I = 1; I < 30; ++I) {
      auto* const Parent = Subject->Tree.HierarchicalTraversal()[static_cast<std::size_t>(I / 3)];
      Subject->Tree.AddChildNode(Parent, std::make_unique<TNode>(Word(I)));
    }
    return Subject;
  };
  Starve("AddChildNode", Make, [](TTree& S) {
    S.Tree.AddChildNode(S.Tree.Root()->ChildNodes()[0], std::make_unique<TNode>(Word(99)));
  });
  Starve("traversals", Make, [](TTree& S) {
    return std::make_tuple(S.Tree.HierarchicalTraversal().size(), S.Tree.NodeOfData(Word(7)),
                           S.Tree.PostOrderTraversal().size(), S.Tree.PreorderTraversal().size()) ==
           std::make_tuple(30u, S.Tree.NodeOfData(Word(7)), 30u, 30u);
  });
  Starve("ClearFreeChildNodes", Make, [](TTree& S) { S.Tree.Root()->ClearFreeChildNodes(true); });
  Starve(
      "a life", [] { return std::make_unique<int>(0); }, [&](int&) { Make(); });
  Starve(
      "CloneList", [] { return std::make_unique<int>(0); },
      [&](int&) {
        TMultiTreeList<std::string> List;
        for (int I = 0; I < 5; ++I) List.Add(std::make_unique<TMultiTree<std::string>>(Word(I)));
      });
}

TEST(StarvedContainers, MinHeap) {
  struct TBody {
    TMinHeap<std::string> Heap;
    std::vector<std::string> State() const {
      std::vector<std::string> Items;
      for (const auto& Node : Heap.Datas()) Items.push_back(Node.Data);
      return Items;
    }
  };
  const auto Compare = [](const std::string& A, const std::string& B) { return A.compare(B); };
  const auto Make = [&] {
    return std::make_unique<TBody>(TBody{TMinHeap<std::string>(Words(8), Compare)});
  };
  Starve(
      "construction", [] { return std::make_unique<int>(0); }, [&](int&) { Make(); });
  Starve("Add", Make, [](TBody& S) { S.Heap.Add(Word(9)); });
  Starve("AddRange", Make, [](TBody& S) { S.Heap.AddRange(Words(20)); });
  Starve("Pop", Make, [](TBody& S) { return S.Heap.Pop(); });
  struct TOrder {
    std::vector<int> Ranks = Numbers(0, 50);
    int operator()(const std::string& A, const std::string& B) const { return A.compare(B); }
  };
  struct TCopied {
    TMinHeap<std::string, TOrder> Heap{Words(8), TOrder()};
    std::string State() const { return Heap.Top() + std::to_string(Heap.Count()); }
  };
  Starve(
      "assignment", [] { return std::make_unique<TCopied>(); },
      [](TCopied& S) {
        TCopied Other;
        Other.Heap.Pop();
        S.Heap = Other.Heap;
      });
}

TEST(StarvedContainers, OrderedMap) {
  struct TMap {
    TGeneralSBTree<std::string, std::string> Map{
        [](const std::string& A, const std::string& B) { return A.compare(B); }};
    std::vector<std::string> State() const {
      std::vector<std::string> Items;
      if (!Map.Root()) return Items;
      for (TSBTree* N = Map.Root()->FirstTree(); N; N = N->NextTree()) {
        Items.push_back(static_cast<decltype(Map)::TNode*>(N)->Key);
      }
      return Items;
    }
  };
  const auto Make = [] {
    auto Subject = std::make_unique<TMap>();
    for (const std::string& Item : Words(40)) Subject->Map.Insert(Item, Item);
    return Subject;
  };
  Starve("Insert", Make, [](TMap& S) { S.Map.Insert(Word(99), Word(98)); });
  Starve("Remove", Make, [](TMap& S) { S.Map.Remove(Word(7)); });
  Starve("Search", Make, [](TMap& S) {
    std::string Value;
    S.Map.Search(Word(7), Value);
    return Value;
  });
  Starve(
      "a life", [] { return std::make_unique<int>(0); }, [&](int&) { Make(); });
}

}  // namespace
}  // namespace tarnalgo::test
