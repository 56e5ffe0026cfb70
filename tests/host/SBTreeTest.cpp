#include "host/tarnds/SBTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "host/tarnds/ListUtils.h"
#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

int SizeOf(const TSBTree* Tree) {
  return Tree ? Tree->Size() : 0;
}

/// Walks the whole tree, checks links, sizes and that no subtree holds more than twice its sibling
/// and one; returns the height. `OnlyGrown`: the stronger rule of trees without deletions.
int CheckedHeight(const TSBTree* Tree, bool OnlyGrown) {
  if (!Tree) return 0;
  const TSBTree* Left = Tree->LeftChild();
  const TSBTree* Right = Tree->RightChild();
  EXPECT_EQ(SizeOf(Left) + SizeOf(Right) + 1, Tree->Size());
  for (const TSBTree* Child : {Left, Right}) {
    if (!Child) continue;
    EXPECT_EQ(Tree, Child->Parent());
    const int Sibling = SizeOf(Child == Left ? Right : Left);
    EXPECT_LE(SizeOf(Child), 2 * Sibling + 1);
    if (!OnlyGrown) continue;
    EXPECT_LE(SizeOf(Child->LeftChild()), Sibling);
    EXPECT_LE(SizeOf(Child->RightChild()), Sibling);
  }
  return 1 + std::max(CheckedHeight(Left, OnlyGrown), CheckedHeight(Right, OnlyGrown));
}

/// A tree that owns its nodes, beside the sorted list that it must agree with.
class TTreeAndModel {
 public:
  ~TTreeAndModel() {
    if (FRoot) FRoot->DestroyAll();
  }

  void Insert(std::uint32_t Key) {
    auto* Node = new TSBTreeIntKey(Key);
    FRoot = FRoot ? FRoot->Insert(Node) : Node;
    const auto Place = std::upper_bound(FModel.begin(), FModel.end(), Key,
                                        [](std::uint32_t K, auto* N) { return K < N->Key; });
    FModel.insert(Place, Node);
  }

  void Delete(int I) {
    TSBTreeIntKey* Node = FModel[static_cast<std::size_t>(I)];
    FRoot = static_cast<TSBTreeIntKey*>(Node->Delete());
    EXPECT_EQ(1, Node->Size());
    EXPECT_TRUE(!Node->Parent() && !Node->LeftChild() && !Node->RightChild());
    delete Node;
    FModel.erase(FModel.begin() + I);
    FHasDeleted = true;
  }

  int Count() const { return static_cast<int>(FModel.size()); }

  void Check() const {
    EXPECT_EQ(Count(), SizeOf(FRoot));
    const int Height = CheckedHeight(FRoot, !FHasDeleted);
    if (!FRoot) return;
    EXPECT_LE(Height,
              FHasDeleted ? 1 + 1.71 * std::log2(Count()) : 1.44 * std::log2(Count() + 1.5));
    EXPECT_EQ(nullptr, FRoot->Parent());
    EXPECT_EQ(nullptr, FRoot->GetIthTree(-1));
    EXPECT_EQ(nullptr, FRoot->GetIthTree(Count()));
    TSBTree* Forward = FRoot->FirstTree();
    for (int I = 0; I < Count(); ++I, Forward = Forward->NextTree()) {
      ASSERT_EQ(FModel[static_cast<std::size_t>(I)], Forward);
      EXPECT_EQ(Forward, FRoot->GetIthTree(I));
    }
    EXPECT_EQ(nullptr, Forward);
    TSBTree* Backward = FRoot->LastTree();
    for (int I = Count() - 1; I >= 0; --I, Backward = Backward->PreviousTree()) {
      ASSERT_EQ(FModel[static_cast<std::size_t>(I)], Backward);
    }
    EXPECT_EQ(nullptr, Backward);
  }

 private:
  TSBTreeIntKey* FRoot = nullptr;
  bool FHasDeleted = false;
  std::vector<TSBTreeIntKey*> FModel;  // in key order, equal keys in the order of insertion
};

// Small trees and larger ones; many equal keys, or ascending ones; deletions anywhere or in front.
TEST(TSBTree, AgreesWithASortedListThroughAnyHistory) {
  std::mt19937 Random(5);
  for (int Round = 0; Round < 80; ++Round) {
    SCOPED_TRACE(Round);
    TTreeAndModel Tree;
    const int Target = test::RandomInt(Random, 1, Round % 4 == 0 ? 8 : 120);
    for (int Step = 0; Step < 400; ++Step) {
      if (Tree.Count() == 0 || test::RandomInt(Random, 0, 2 * Target) > Tree.Count()) {
        const int Key =
            Round % 3 == 0 ? Step : test::RandomInt(Random, 0, Round % 3 == 1 ? 3 : 999);
        Tree.Insert(static_cast<std::uint32_t>(Round % 2 == 0 ? Key : 1000 - Key));
      } else {
        Tree.Delete(Round % 5 == 0 ? 0 : test::RandomInt(Random, 0, Tree.Count() - 1));
      }
      Tree.Check();
      if (testing::Test::HasFailure()) return;
    }
  }
}

TEST(TSBTree, ComparesKeysUnsigned) {
  TSBTreeIntKey Low(1);
  TSBTreeIntKey High(0xFFFFFFFFu);
  TSBTreeIntKey* Root = High.Insert(&Low);
  EXPECT_EQ(&Low, Root->FirstTree());
  EXPECT_EQ(&High, Root->LastTree());
}

TEST(TSBTree, RefusesANodeThatIsLinked) {
  TSBTreeIntKey A(1);
  TSBTreeIntKey B(2);
  A.Insert(&B);
  const std::string Message = "[Error] TSBTreeIntKey.Insert: 节点为空或已在树中";
  test::ExpectRaises<EParamError>([&] { A.Insert(&B); }, Message);
  test::ExpectRaises<EParamError>([&] { A.Insert(&A); }, Message);
  test::ExpectRaises<EParamError>([&] { A.Insert(nullptr); }, Message);
  TSBTreeIntKey C(0);
  TSBTreeIntKey D(3);
  D.Insert(&C);
  for (TSBTreeIntKey* const WithChild : {&A, &D}) {
    TSBTreeIntKey Other(5);
    test::ExpectRaises<EParamError>([&] { Other.Insert(WithChild); }, Message);
  }
  EXPECT_EQ(&D, C.Delete());
  EXPECT_EQ(2, A.RootTree()->Size());
  EXPECT_EQ(&A, B.Delete());
  EXPECT_EQ(nullptr, A.Delete());
}

TEST(TSBTree, DestroyAllFreesDataOnceAndChildrenFirst) {
  std::vector<int> Data(2000, 0);
  TSBTreeIntKey* Root = nullptr;
  for (std::uint32_t I = 0; I < 2000; ++I) {
    auto* Node = new TSBTreeIntKey(I, &Data[I]);
    Root = Root ? Root->Insert(Node) : Node;
  }
  Root->FirstTree()->DestroyAll([](TSBTree& Node) {  // any node stands for its tree
    EXPECT_TRUE(!Node.LeftChild() && !Node.RightChild());
    ++*static_cast<int*>(static_cast<TSBTreeIntKey&>(Node).Data);
  });
  EXPECT_EQ(std::vector<int>(2000, 1), Data);
}

TEST(TListUtils, OrderListCountsFromZero) {
  EXPECT_EQ((std::vector<int>{0, 1, 2}), TListUtils::CreateOrderList(3));
  EXPECT_TRUE(TListUtils::CreateOrderList(0).empty());
  EXPECT_TRUE(TListUtils::CreateOrderList(-7).empty());
}

}  // namespace
}  // namespace tarnalgo
