#include "containers/TreeAlgorithm/GeneralSBTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/Cadutils.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

int CompareInts(const int& A, const int& B) {
  return CompareExact(A, B);
}

using TTree = TGeneralSBTree<int, int>;
using TNode = TTree::TNode;

int SizeOf(const TSBTree* Tree) {
  return Tree != nullptr ? Tree->Size() : 0;
}

// Appends the pairs of `Tree` in order; checks links, sizes and balance of every node.
template <class TAnyNode, class TPair>
void CheckTree(const TAnyNode* Tree, const TSBTree* Parent, std::vector<TPair>& Pairs) {
  if (Tree == nullptr) return;
  ASSERT_EQ(Parent, Tree->Parent());
  ASSERT_EQ(1 + SizeOf(Tree->Left()) + SizeOf(Tree->Right()), Tree->Size());
  ASSERT_LE(SizeOf(Tree->Left()), 2 * SizeOf(Tree->Right()) + 1);
  ASSERT_LE(SizeOf(Tree->Right()), 2 * SizeOf(Tree->Left()) + 1);
  CheckTree(Tree->Left(), Tree, Pairs);
  Pairs.emplace_back(Tree->Key, Tree->Value);
  CheckTree(Tree->Right(), Tree, Pairs);
}

std::vector<std::pair<int, int>> CheckedPairs(const TTree& Tree) {
  std::vector<std::pair<int, int>> Pairs;
  CheckTree(Tree.Root(), nullptr, Pairs);
  EXPECT_EQ(Tree.Count(), static_cast<int>(Pairs.size()));
  return Pairs;
}

// Inserts by the rule word by word: recursion, and `Maintain` on the way back.
void InsertSlowly(TNode* NewNode, TNode* Tree, TSBTree*& Root) {
  struct TCounted : TNode {  // the size is the derived node's to raise
    static void Raise(TNode* Node) { ++(Node->*(&TCounted::FSize)); }
  };
  TCounted::Raise(Tree);
  const bool GoesRight = NewNode->Key >= Tree->Key;
  TNode* const Child = GoesRight ? Tree->Right() : Tree->Left();
  if (Child != nullptr) {
    InsertSlowly(NewNode, Child, Root);
  } else {
    GoesRight ? Tree->SetRightChild(NewNode) : Tree->SetLeftChild(NewNode);
  }
  Tree->Maintain(GoesRight, Root);
}

void ExpectSameShape(const TNode* A, const TNode* B) {
  ASSERT_EQ(A == nullptr, B == nullptr);
  if (A == nullptr) return;
  ASSERT_EQ(A->Key, B->Key);
  ASSERT_EQ(A->Value, B->Value);
  ExpectSameShape(A->Left(), B->Left());
  ExpectSameShape(A->Right(), B->Right());
}

// The exact order is compiled apart; it must not show.
TEST(TGeneralSBTree, ExactOrderGivesTheSameTreeAndAnswers) {
  std::mt19937 Random(61);
  TGeneralSBTree<double, int> Tree(
      [](const double& A, const double& B) { return CompareExact(A, B); });
  TGeneralSBTree<double, int, TExactComparer<double>> Exact;
  const double Odd[] = {0.0, -0.0, std::nan(""), HUGE_VAL, -HUGE_VAL, 5e-324};
  const auto MakeKey = [&] {
    const int Kind = test::RandomInt(Random, 0, 60);
    return Kind < 6 ? Odd[Kind] : test::RandomInt(Random, -50, 50);
  };
  for (int I = 0; I < 2000; ++I) {
    const double Key = MakeKey();
    Tree.Insert(Key, I);
    Exact.Insert(Key, I);
    const double Asked = MakeKey();
    const auto* const Found = Tree.SearchNode(Asked);
    const auto* const FoundExact = Exact.SearchNode(Asked);
    ASSERT_EQ(Found != nullptr ? Found->Value : -1, FoundExact != nullptr ? FoundExact->Value : -1);
    if (I % 3 != 0) continue;
    Tree.Remove(Asked);
    Exact.Remove(Asked);
    ASSERT_EQ(Tree.Count(), Exact.Count());
  }
}

TEST(TGeneralSBTree, TakesTheShapeOfMaintenanceAtEveryNodeOfTheWay) {
  std::mt19937 Random(47);
  for (int Kind = 0; Kind < 8; ++Kind) {
    SCOPED_TRACE(Kind);
    TTree Tree(CompareInts);
    std::vector<std::unique_ptr<TNode>> Nodes;
    TSBTree* Slow = nullptr;
    for (int I = 0; I < 600; ++I) {
      const int Ordered[] = {I, -I, I % 2 == 0 ? I : -I};
      const int Key = Kind < 3 ? Ordered[Kind] : test::RandomInt(Random, 0, 40 * Kind);
      Nodes.push_back(std::make_unique<TNode>(Key, I));
      if (Slow == nullptr) {
        Slow = Nodes.back().get();
      } else {
        InsertSlowly(Nodes.back().get(), static_cast<TNode*>(Slow), Slow);
      }
      Tree.Insert(Key, I);
      ExpectSameShape(static_cast<TNode*>(Slow), Tree.Root());
      if (HasFatalFailure()) return;
    }
  }
}

// Equal keys go behind each other in both, so the pairs agree in order, too.
TEST(TGeneralSBTree, FollowsTheMultimapThroughRandomEdits) {
  std::mt19937 Random(53);
  for (const int Keys : {0, 5, 100, 100000}) {
    SCOPED_TRACE(Keys);
    TTree Tree(CompareInts);
    std::multimap<int, int> Model;
    std::vector<std::pair<TNode*, std::multimap<int, int>::iterator>> Handles;
    for (int Step = 0; Step < 3000; ++Step) {
      // Grows at first, shrinks to nothing in the end.
      if (Handles.empty() || test::RandomInt(Random, 0, 3000) > Step) {
        const int Key = test::RandomInt(Random, 0, Keys);
        Handles.emplace_back(Tree.Insert(Key, Step), Model.emplace(Key, Step));
      } else {
        const auto At =
            Handles.begin() + test::RandomInt(Random, 0, static_cast<int>(Handles.size()) - 1);
        Tree.RemoveNode(At->first);
        Model.erase(At->second);
        Handles.erase(At);
      }
      if (Step % 10 != 0) continue;
      using TPairs = std::vector<std::pair<int, int>>;
      ASSERT_EQ(TPairs(Model.begin(), Model.end()), CheckedPairs(Tree));
      for (const auto& [Node, Pair] : Handles) {
        ASSERT_EQ(Pair->first, Node->Key);
        ASSERT_EQ(Pair->second, Node->Value);
        const TNode* const Next = TTree::NextNode(Node);
        const auto NextPair = std::next(Pair);
        ASSERT_EQ(NextPair == Model.end(), Next == nullptr);
        if (Next == nullptr) continue;
        ASSERT_EQ(NextPair->second, Next->Value);
        ASSERT_EQ(Node, TTree::PreviousNode(TTree::NextNode(Node)));
      }
    }
  }
}

TEST(TGeneralSBTree, FindsKeysAndNeighbours) {
  std::mt19937 Random(59);
  for (int Count = 0; Count < 60; ++Count) {
    TTree Tree(CompareInts);
    std::map<int, int> Model;
    for (int I = 0; I < Count; ++I) {
      const int Key = 2 * test::RandomInt(Random, 0, 100);
      if (Model.emplace(Key, I).second) Tree.Insert(Key, I);
    }
    for (int Key = -1; Key <= 201; ++Key) {
      SCOPED_TRACE(testing::Message() << Count << " keys, asked for " << Key);
      const auto Found = Model.find(Key);
      int Value = -1;
      ASSERT_EQ(Found != Model.end(), Tree.Search(Key, Value));
      ASSERT_EQ(Found != Model.end() ? Found->second : -1, Value);

      const auto Above = Model.lower_bound(Key);  // the key itself, when it is there
      const bool HasBelow = Found != Model.end() || Above != Model.begin();
      const auto Below = Found != Model.end() || !HasBelow ? Found : std::prev(Above);
      bool HasLeft = !HasBelow;
      bool HasRight = Above == Model.end();
      int LeftValue = -1;  // stays where there is no neighbour
      int RightValue = -1;
      Tree.SearchNearby(Key, HasLeft, HasRight, LeftValue, RightValue);
      ASSERT_EQ(HasBelow, HasLeft);
      ASSERT_EQ(Above != Model.end(), HasRight);
      ASSERT_EQ(HasBelow ? Below->second : -1, LeftValue);
      ASSERT_EQ(HasRight ? Above->second : -1, RightValue);
    }
  }
}

TEST(TGeneralSBTree, RemovesByKeyOneOfSeveral) {
  TTree Tree(CompareInts);
  for (const int Key : {2, 1, 2, 3, 2}) Tree.Insert(Key, 0);
  for (int Time = 0; Time < 4; ++Time) Tree.Remove(2);
  EXPECT_EQ((std::vector<std::pair<int, int>>{{1, 0}, {3, 0}}), CheckedPairs(Tree));
  Tree.RemoveNode(nullptr);
  EXPECT_EQ(nullptr, TTree::NextNode(nullptr));
  EXPECT_EQ(nullptr, TTree::PreviousNode(nullptr));
}

TEST(TGeneralSBTree, StaysAsItWasWhenTheComparerRaises) {
  int Left = 1000000;
  const auto Compare = [&Left](int A, int B) {
    if (Left-- == 0) throw std::runtime_error("no order");
    return CompareExact(A, B);
  };
  TGeneralSBTree<int, int, decltype(Compare)> Tree(Compare);
  for (int I = 0; I < 100; ++I) Tree.Insert(I, I);
  for (int Depth = 0; Depth < 4; ++Depth) {
    Left = Depth;
    EXPECT_THROW(Tree.Insert(1000, 0), std::runtime_error);
    std::vector<std::pair<int, int>> Pairs;
    CheckTree(Tree.Root(), nullptr, Pairs);
    EXPECT_EQ(100u, Pairs.size());
  }
  EXPECT_THROW(TTree(nullptr), EAssertionFailed);
}

TEST(TGeneralSBTree, FreesKeysAndValuesThatOwnMemory) {
  const auto Compare = [](const std::string& A, const std::string& B) {
    return CompareExact(A.compare(B), 0);
  };
  TGeneralSBTree<std::string, std::shared_ptr<int>, decltype(Compare)> Tree(Compare);
  const auto Shared = std::make_shared<int>(1);
  for (int I = 0; I < 500; ++I) Tree.Insert(std::string(50, 'k') + std::to_string(I), Shared);
  EXPECT_EQ(501, Shared.use_count());
  Tree.Remove(std::string(50, 'k') + "7");
  EXPECT_EQ(500, Shared.use_count());
  Tree.Clear();
  EXPECT_EQ(1, Shared.use_count());
}

}  // namespace
}  // namespace tarnalgo
