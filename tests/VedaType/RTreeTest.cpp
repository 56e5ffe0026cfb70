#include "geometryAlgo/VedaType/RTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using testing::ElementsAre;

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

// --- A slow tree that follows the rules word by word ---

struct TModelNode {
  bool IsData = false;
  int Data = 0;
  TVRect2D Range;
  int Depth = -1;
  TModelNode* Parent = nullptr;
  std::vector<std::unique_ptr<TModelNode>> Children;

  bool IsLeaf() const { return !IsData && (Children.empty() || Children[0]->IsData); }
  void Adopt(std::unique_ptr<TModelNode> Child) {
    Child->Parent = this;
    Child->Depth = Depth + 1;
    for (TModelNode* Node = this; Node; Node = Node->Parent)
      Node->Range.ExpandInPlace(Child->Range);
    Children.push_back(std::move(Child));
  }
};

class TModelTree {
 public:
  explicit TModelTree(int MaxChildren) : FMax(static_cast<std::size_t>(MaxChildren)) {}

  const TModelNode* Root() const { return FRoot.get(); }

  void Insert(int Data, const TVRect2D& Box) {
    if (!FRoot) {
      FRoot = std::make_unique<TModelNode>();
      FRoot->Depth = 0;
    }
    TModelNode* Leaf = FRoot.get();
    while (!Leaf->IsLeaf()) Leaf = LeastGrowth(*Leaf, Box);
    TModelNode* Target = Leaf;
    for (TModelNode* Node = Leaf; Node && Node->Children.size() >= FMax;) {
      const bool WasRoot = !Node->Parent;
      TModelNode* const Half = Split(*Node, Box);
      if (Node == Leaf) Target = Half;
      if (WasRoot) break;
      Node = Node->Parent;
    }
    auto Node = std::make_unique<TModelNode>();
    Node->IsData = true;
    Node->Data = Data;
    Node->Range = Box;
    FNodes[Data] = Node.get();
    Target->Adopt(std::move(Node));
  }

  void Remove(int Data) {
    TModelNode* Node = FNodes.at(Data);
    FNodes.erase(Data);
    while (Node && Node->Children.empty()) {
      TModelNode* const Parent = Node->Parent;
      if (!Parent) {
        FRoot.reset();
        return;
      }
      std::erase_if(Parent->Children, [Node](const auto& Child) { return Child.get() == Node; });
      Node = Parent;
    }
  }

  // Depth first over everything, looking at nothing but the data boxes.
  std::vector<int> Search(const TVRect2D& Box, double Eps) const {
    std::vector<int> Result;
    if (FRoot) Search(*FRoot, Box, Eps, Result);
    return Result;
  }

 private:
  static TModelNode* LeastGrowth(TModelNode& Node, const TVRect2D& Box) {
    TModelNode* Best = Node.Children[0].get();
    double Least = 1.7e308;
    for (const auto& Child : Node.Children) {
      const double Growth = Child->Range.Expand(Box).Area() - Child->Range.Area();
      if (Growth < Least) {
        Least = Growth;
        Best = Child.get();
      }
    }
    return Best;
  }

  static double Centre(double Low, double High, bool IsValid) {
    const double Middle = Low / 2 + High / 2;
    return IsValid && !std::isnan(Middle) ? Middle : 0.0;
  }

  static TVRect2D BoxOf(const std::vector<TModelNode*>& Nodes, std::size_t From, std::size_t To) {
    TVRect2D Result;
    for (std::size_t I = From; I < To; ++I) Result.ExpandInPlace(Nodes[I]->Range);
    return Result;
  }

  TModelNode* Split(TModelNode& Node, const TVRect2D& Box) {
    std::vector<TModelNode*> Orders[2];
    double Costs[2];
    const std::size_t Count = Node.Children.size();
    for (int Axis = 0; Axis < 2; ++Axis) {
      auto& Order = Orders[Axis];
      for (const auto& Child : Node.Children) Order.push_back(Child.get());
      const auto Key = [Axis](const TModelNode* Child) {
        const TVRect2D& R = Child->Range;
        return Axis == 0 ? Centre(R.Left, R.Right, R.IsValid())
                         : Centre(R.Bottom, R.Top, R.IsValid());
      };
      std::stable_sort(
          Order.begin(), Order.end(),
          [&Key](const TModelNode* A, const TModelNode* B) { return Key(A) < Key(B); });
      Costs[Axis] = BoxOf(Order, 0, Count / 2).Area() + BoxOf(Order, Count / 2, Count).Area();
    }
    const auto& Order = Costs[0] <= Costs[1] ? Orders[0] : Orders[1];
    auto Sibling = std::make_unique<TModelNode>();
    std::vector<std::unique_ptr<TModelNode>> Kept;
    for (std::size_t I = 0; I < Count; ++I) {
      auto& Owner = *std::find_if(Node.Children.begin(), Node.Children.end(),
                                  [&](const auto& Child) { return Child.get() == Order[I]; });
      if (I < Count / 2) {
        Kept.push_back(std::move(Owner));
      } else {
        Sibling->Adopt(std::move(Owner));
      }
    }
    Node.Range = BoxOf(Order, 0, Count / 2);
    Node.Children = std::move(Kept);
    TModelNode* const SiblingNode = Sibling.get();
    if (!Node.Parent) {
      auto NewRoot = std::make_unique<TModelNode>();
      NewRoot->Depth = 0;
      NewRoot->Adopt(std::move(FRoot));
      FRoot = std::move(NewRoot);
    }
    Node.Parent->Adopt(std::move(Sibling));
    if (!Box.IsValid()) return &Node;
    const double ForNode = Node.Range.Expand(Box).Area() - Node.Range.Area();
    const double ForSibling = SiblingNode->Range.Expand(Box).Area() - SiblingNode->Range.Area();
    return ForNode >= ForSibling ? SiblingNode : &Node;
  }

  static void Search(const TModelNode& Node, const TVRect2D& Box, double Eps,
                     std::vector<int>& Result) {
    if (Node.IsData && Node.Range.IsValid() && Box.IsValid() &&  //
        Node.Range.Left <= Box.Right + Eps && Box.Left <= Node.Range.Right + Eps &&
        Node.Range.Bottom <= Box.Top + Eps && Box.Bottom <= Node.Range.Top + Eps) {
      Result.push_back(Node.Data);
    }
    for (const auto& Child : Node.Children) Search(*Child, Box, Eps, Result);
  }

  std::size_t FMax;
  std::unique_ptr<TModelNode> FRoot;
  std::map<int, TModelNode*> FNodes;
};

bool SameBits(const TVRect2D& A, const TVRect2D& B) {
  const auto Same = [](double X, double Y) { return X == Y || (std::isnan(X) && std::isnan(Y)); };
  return Same(A.Left, B.Left) && Same(A.Right, B.Right) && Same(A.Top, B.Top) &&
         Same(A.Bottom, B.Bottom);
}

// The two trees agree in every node: kind, item, range, depth, order of children.
void ExpectSameTree(const TModelNode* Model, const TRTreeNode<int>* Node) {
  ASSERT_EQ(Model == nullptr, Node == nullptr);
  if (!Model) return;
  ASSERT_EQ(Model->IsData, Node->IsDataNode());
  ASSERT_EQ(Model->IsLeaf(), Node->IsLeaf());
  ASSERT_EQ(Model->Data, Node->Data());
  ASSERT_EQ(Model->Depth, Node->Depth());
  ASSERT_TRUE(SameBits(Model->Range, Node->Range()));
  ASSERT_EQ(static_cast<int>(Model->Children.size()), Node->ChildCount());
  for (int I = 0; I < Node->ChildCount(); ++I) {
    ASSERT_EQ(Node, Node->Child(I)->Parent());
    ExpectSameTree(Model->Children[static_cast<std::size_t>(I)].get(), Node->Child(I));
    if (testing::Test::HasFatalFailure()) return;
  }
}

// --- Boxes to insert ---

using TBoxMaker = TVRect2D (*)(std::mt19937&);

TVRect2D RandomBox(std::mt19937& Random) {
  const TPoint2D P = test::RandomPoint(Random, 0, 100);
  return {P, P + test::RandomPoint(Random, 0, 5)};
}
// Ties of growth, cost and centre come by themselves.
TVRect2D GridBox(std::mt19937& Random) {
  const TPoint2D P = test::RandomGridPoint(Random, 0, 6);
  return {P, P + test::RandomGridPoint(Random, 0, 2)};
}
TVRect2D HostileBox(std::mt19937& Random) {
  const double Values[] = {kNaN, kInf, -kInf, 1e300, -1e300, 1.7e308, 5e-324, 0.0, -0.0, 1.0, 2.0};
  const auto Pick = [&] { return Values[test::RandomInt(Random, 0, 10)]; };
  return test::RandomInt(Random, 0, 1) == 0 ? GridBox(Random)
                                            : TVRect2D(Pick(), Pick(), Pick(), Pick());
}

struct THistory {
  const char* Name;
  TBoxMaker MakeBox;
  int MaxChildren;
  int Steps;
};

const THistory kHistories[] = {
    {"random, 8", RandomBox, 8, 3000},     {"random, 4", RandomBox, 4, 1000},
    {"random, 2", RandomBox, 2, 120},      {"random, 3", RandomBox, 3, 200},
    {"random, 5", RandomBox, 5, 1000},     {"random, 9", RandomBox, 9, 1000},
    {"random, 40", RandomBox, 40, 2000},   {"grid, 8", GridBox, 8, 3000},
    {"grid, 4", GridBox, 4, 1000},         {"grid, 21", GridBox, 21, 2000},
    {"hostile, 8", HostileBox, 8, 2000},   {"hostile, 3", HostileBox, 3, 150},
    {"hostile, 17", HostileBox, 17, 2000},
};

TEST(TRTree, AgreesWithTheRulesThroughHistoriesOfInsertionAndRemoval) {
  for (const THistory& History : kHistories) {
    SCOPED_TRACE(History.Name);
    std::mt19937 Random(77);
    TRTree<int> Tree(History.MaxChildren);
    TModelTree Model(History.MaxChildren);
    std::vector<int> Present;  // in the order of insertion
    for (int Step = 0; Step < History.Steps; ++Step) {
      // Growing and shrinking by turns, down to nothing.
      const int ShareOfInsertions = Step / (History.Steps / 4) % 2 == 0 ? 90 : 15;
      if (Present.empty() || test::RandomInt(Random, 0, 99) < ShareOfInsertions) {
        const TVRect2D Box = History.MakeBox(Random);
        Tree.Insert(Step, Box);
        Model.Insert(Step, Box);
        Present.push_back(Step);
      } else {
        const auto At =
            Present.begin() + test::RandomInt(Random, 0, static_cast<int>(Present.size()) - 1);
        Tree.Remove(*At);
        Model.Remove(*At);
        Present.erase(At);
      }
      ExpectSameTree(Model.Root(), Tree.Root());
      if (HasFatalFailure()) return;
      const TVRect2D Window = History.MakeBox(Random);
      for (const double Eps : {0.0, 1e-6, 0.5, kNaN, kInf}) {
        ASSERT_EQ(Model.Search(Window, Eps), Tree.Search(Window, Eps));
      }
      ASSERT_EQ(!Model.Search(Window, 1e-6).empty(), Tree.MayIntersect(Window));
      ASSERT_EQ(Present, Tree.GetAllData());
      ASSERT_EQ(static_cast<int>(Present.size()), Tree.Count());
      ASSERT_EQ(Present.empty() ? 0 : Present.front(), Tree.GetRandomData());
    }
  }
}

// --- The rules one by one ---

TVRect2D Square(double X, double Y, double Size = 1.0) {
  return {X, X + Size, Y + Size, Y};
}

std::vector<int> ItemsOf(const TRTreeNode<int>& Leaf) {
  std::vector<int> Result;
  for (const auto* Child : Leaf.ChildNodes()) Result.push_back(Child->Data());
  return Result;
}

TEST(TRTree, TheNinthItemSplitsTheLeafFirst) {
  TRTree<int> Tree(8);
  const double X[] = {70, 10, 50, 30, 20, 60, 40, 0};
  for (int I = 0; I < 8; ++I) Tree.Insert(I, Square(X[I], 0));
  EXPECT_EQ(8, Tree.Root()->ChildCount());
  EXPECT_EQ(4, Tree.MinChildren());
  Tree.Insert(8, Square(35, 0));  // grows either half by 5
  ASSERT_EQ(2, Tree.Root()->ChildCount());
  EXPECT_THAT(ItemsOf(*Tree.Root()->Child(0)), ElementsAre(7, 1, 4, 3));
  EXPECT_THAT(ItemsOf(*Tree.Root()->Child(1)), ElementsAre(6, 2, 5, 0, 8));
  for (const int Index : {-1, 2}) {
    test::ExpectRaises<EParamError>([&] { Tree.Root()->Child(Index); },
                                    "[Error] TRTreeNode: index out of range");
  }
}

TEST(TRTree, ASecondInsertionOfAnItemChangesNothing) {
  TRTree<int> Tree(8);
  for (int I = 0; I < 8; ++I) Tree.Insert(I, Square(I, 0));
  test::ExpectRaises<EParamError>([&] { Tree.Insert(3, Square(50, 50)); },
                                  "[Error] TRTree.Insert: duplicate item");
  Tree.Remove(99);                          // not there
  EXPECT_EQ(8, Tree.Root()->ChildCount());  // full, and not split
  EXPECT_EQ(8, Tree.Count());
  EXPECT_FALSE(Tree.MayIntersect(Square(50, 50)));
}

TEST(TRTree, TouchingWithinTheSlackIsMeeting) {
  TRTree<int> Tree(8);
  Tree.Insert(1, Square(0, 0));
  const struct {
    const char* Name;
    TVRect2D Box;
    bool Meets;
  } Cases[] = {
      {"right side touches", Square(1, 0), true},
      {"corner touches", Square(-1, -1), true},
      {"a gap of half the slack to the right", Square(1 + 5e-7, 0), true},
      {"a gap of half the slack below", Square(0, -1 - 5e-7), true},
      {"a gap of twice the slack to the left", Square(-1 - 2e-6, 0), false},
      {"a gap of twice the slack above", Square(0, 1 + 2e-6), false},
      {"turned inside out", {1, 0, 0, 1}, false},
      {"a side that is no number", {0, kNaN, 1, 0}, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Meets, Tree.MayIntersect(Case.Box));
    EXPECT_EQ(Case.Meets, !Tree.Search(Case.Box).empty());
  }
}

TEST(TRTree, RefusesNodesThatCannotBeSplit) {
  for (const int MaxChildren : {1, 0, std::numeric_limits<int>::min()}) {
    test::ExpectRaises<EParamError>([&] { TRTree<int> Tree(MaxChildren); },
                                    "[Error] TRTree.Create: a node needs at least 2 children");
  }
}

TEST(TRTree, HoldsAMillionItemsOfOneBox) {
  TRTree<int> Tree(8);
  for (int I = 0; I < 1000000; ++I) Tree.Insert(I, Square(0, 0));
  for (int I = 0; I < 1000000; I += 2) Tree.Remove(I);
  EXPECT_EQ(500000u, Tree.Search(Square(1, 1)).size());
}

TEST(TRTree, KeysAreRecordsOrAnythingWithAHash) {
  TRTree<TPoint2D> Points(8);
  Points.Insert({0.0, 1.0}, Square(0, 0));
  EXPECT_TRUE(Points.Contains({0.0, 1.0}));
  EXPECT_FALSE(Points.Contains({-0.0, 1.0}));  // other bytes

  const std::string kLong(100, 'a');  // not kept inside the string itself
  TRTree<std::string> Names(8);
  Names.Insert(kLong, Square(0, 0));
  Names.Insert("b", Square(5, 5));
  Names.Remove("b");
  EXPECT_THAT(Names.GetAllData(), ElementsAre(kLong));
}

TEST(TRTree, MovesWithItsItems) {
  TRTree<int> Tree(5);
  for (int I = 0; I < 100; ++I) Tree.Insert(I, Square(I, 0));
  TRTree<int> Other(8);
  Other.Insert(500, Square(0, 0));
  Other = TRTree<int>(std::move(Tree));
  EXPECT_EQ(5, Other.MaxChildren());
  EXPECT_FALSE(Other.Contains(500));
  EXPECT_THAT(Other.Search({50.2, 50.4, 1, 0}), ElementsAre(50));
  EXPECT_EQ(0, Tree.Count());
  Tree.Insert(1, Square(0, 0));
  EXPECT_TRUE(Tree.MayIntersect(Square(0, 0)));
}

// --- Nodes made by hand ---

TEST(TRTreeNode, ADataNodeTakesNoItems) {
  TRTreeNode<int> Node(1, Square(0, 0));
  test::ExpectRaises<EAssertionFailed>(
      [&] { Node.ChooseInsertLeaf(Square(0, 0)); },
      "Assertion failure: [ERROR] TRTreeNode<T>.ChooseInsertLeaf: 数据节点中不能插入子节点。 "
      "(geometryAlgo/VedaType, line 9269)");
}

TEST(TRTreeNode, StartsAnewOnceItsChildrenAreFreed) {
  TRTreeNode<int> Root;
  for (const int X : {0, 10, 20}) {
    Root.AddChildNode(new TRTreeNode<int>);
    Root.Child(Root.ChildCount() - 1)->AddChildNode(new TRTreeNode<int>(X, Square(X, 0)));
  }
  Root.ClearFreeChildNodes(true);
  Root.AddChildNode(new TRTreeNode<int>);
  Root.Child(0)->AddChildNode(new TRTreeNode<int>(40, Square(40, 0)));
  EXPECT_EQ(Root.Child(0), Root.ChooseInsertLeaf(Square(20, 0)));
  std::vector<int> Result;
  Root.Search(Square(40, 0), Result);
  EXPECT_THAT(Result, ElementsAre(40));
  Root.ClearFreeChildNodes(true);
}

TEST(TRTreeNode, SearchesDepthFirstAlsoWhereLeavesLieAtDifferentDepths) {
  TRTreeNode<int> Root;
  TRTreeNode<int> Deep;
  TRTreeNode<int> DeepLeaf;
  TRTreeNode<int> Leaf;
  TRTreeNode<int> Items[] = {
      {0, Square(0, 0)}, {1, Square(1, 0)}, {2, {1, 0, 0, 1}}, {3, Square(2, 0)}};
  DeepLeaf.AddChildNode(&Items[0]);
  DeepLeaf.AddChildNode(&Items[1]);
  Leaf.AddChildNode(&Items[2]);
  Leaf.AddChildNode(&Items[3]);
  Deep.AddChildNode(&DeepLeaf);
  Root.AddChildNode(&Leaf);
  Root.AddChildNode(&Deep);
  std::vector<int> Result;
  Root.Search(Square(0, 0, 9.0), Result);
  Items[1].Search(Square(0, 0, 9.0), Result);
  Items[2].Search(Square(0, 0, 9.0), Result);  // turned inside out
  EXPECT_THAT(Result, ElementsAre(3, 0, 1, 1));
}

// An empty box belongs to the node itself, a tie to the sibling.
TEST(TRTreeNode, SplitAnswersTheHalfForTheItem) {
  for (const auto& [Box, Half] :
       {std::pair(Square(4, 0), 0), std::pair(Square(6, 0), 1), std::pair(TVRect2D(), 0)}) {
    auto* const Node = new TRTreeNode<int>;
    for (const int X : {10, 0, 12, 2}) Node->AddChildNode(new TRTreeNode<int>(X, Square(X, 0)));
    const auto* const Answer = Node->Split(Box);
    const std::unique_ptr<TRTreeNode<int>> Root(Node->Parent());
    EXPECT_EQ(Root->Child(Half), Answer);
    EXPECT_THAT(ItemsOf(*Root->Child(0)), ElementsAre(0, 2));
    EXPECT_THAT(ItemsOf(*Root->Child(1)), ElementsAre(10, 12));
    for (const int X : {14, 16}) Root->Child(1)->AddChildNode(new TRTreeNode<int>(X, Square(X, 0)));
    Root->Child(1)->Split(Box);
    ASSERT_EQ(3, Root->ChildCount());
    EXPECT_THAT(ItemsOf(*Root->Child(1)), ElementsAre(10, 12));
    EXPECT_THAT(ItemsOf(*Root->Child(2)), ElementsAre(14, 16));
    Root->ClearFreeChildNodes(true);
  }
}

TEST(TRTreeNode, TakesOutEveryAncestorLeftWithoutChildren) {
  TRTreeNode<int> Root;
  TRTreeNode<int> Branches[2];
  TRTreeNode<int> Leaf;
  TRTreeNode<int> Item(1, Square(0, 0));
  Leaf.AddChildNode(&Item);
  Branches[0].AddChildNode(&Leaf);
  Root.AddChildNode(&Branches[0]);
  Root.AddChildNode(&Branches[1]);
  std::vector<TRTreeNode<int>*> Freed;
  Leaf.RemoveFromParentIfEmpty(Freed);
  EXPECT_TRUE(Freed.empty());
  Item.RemoveFromParentIfEmpty(Freed);
  EXPECT_THAT(Freed, ElementsAre(&Item, &Leaf, &Branches[0]));
  EXPECT_EQ(1, Root.ChildCount());
  EXPECT_EQ(Square(0, 0), Root.Range());  // not shrunk
}

}  // namespace
}  // namespace tarnalgo
