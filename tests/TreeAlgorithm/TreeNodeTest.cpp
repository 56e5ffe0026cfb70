#include "containers/TreeAlgorithm/TreeNode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using TNode = TTreeNode<int>;
using testing::ElementsAre;

std::vector<int> DataOf(const std::vector<TNode*>& Nodes) {
  std::vector<int> Result;
  for (const TNode* Node : Nodes) Result.push_back(Node->Data());
  return Result;
}

/// Notes the order in which nodes are freed.
class TWatchedNode : public TNode {
 public:
  TWatchedNode(int Data, std::vector<int>& Freed) : TNode(Data), FFreed(Freed) {}
  ~TWatchedNode() override { FFreed.push_back(Data()); }

 private:
  std::vector<int>& FFreed;
};

TEST(TTreeNode, TraversesInTheThreeOrders) {
  TNode Root(0);
  TNode A(1);
  TNode B(2);
  TNode A1(3);
  Root.AddChildNode(&A);
  Root.AddChildNode(&B);
  A.AddChildNode(&A1);
  EXPECT_THAT(DataOf(Root.HierarchicalTraversal()), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(DataOf(Root.PreorderTraversal()), ElementsAre(0, 1, 3, 2));
  EXPECT_THAT(DataOf(Root.PostOrderTraversal()), ElementsAre(3, 1, 2, 0));
  EXPECT_THAT(DataOf(B.PreorderTraversal()), ElementsAre(2));
}

// Recursion, the definition of the orders, against the loops.
void PreorderByDefinition(TNode& Node, std::vector<TNode*>& Result) {
  Result.push_back(&Node);
  for (TNode* Child : Node.ChildNodes()) PreorderByDefinition(*Child, Result);
}
void PostOrderByDefinition(TNode& Node, std::vector<TNode*>& Result) {
  for (TNode* Child : Node.ChildNodes()) PostOrderByDefinition(*Child, Result);
  Result.push_back(&Node);
}

TEST(TTreeNode, TraversesRandomTreesAsTheOrdersAreDefined) {
  std::mt19937 Random(11);
  for (int Round = 0; Round < 50; ++Round) {
    TNode Root(0);
    std::vector<TNode*> Nodes{&Root};
    for (int I = 1; I < 60; ++I) {
      TNode* const Parent = Nodes[static_cast<std::size_t>(test::RandomInt(Random, 0, I - 1))];
      Nodes.push_back(new TNode(I));
      Parent->AddChildNode(Nodes.back());
    }
    std::vector<TNode*> Preorder;
    PreorderByDefinition(Root, Preorder);
    EXPECT_EQ(Preorder, Root.PreorderTraversal());
    std::vector<TNode*> PostOrder;
    PostOrderByDefinition(Root, PostOrder);
    EXPECT_EQ(PostOrder, Root.PostOrderTraversal());
    // Breadth first is the preorder, stably arranged by level.
    std::stable_sort(Preorder.begin(), Preorder.end(), [&Root](const TNode* A, const TNode* B) {
      const auto Level = [&Root](const TNode* Node) {
        int Steps = 0;
        for (; Node != &Root; Node = Node->Parent()) ++Steps;
        return Steps;
      };
      return Level(A) < Level(B);
    });
    EXPECT_EQ(Preorder, Root.HierarchicalTraversal());
    Root.ClearFreeChildNodes(true);
  }
}

TEST(TTreeNode, AttachingSetsTheDepthOfTheChildOnly) {
  TNode Root(0);
  TNode Child(1);
  TNode Grandchild(2);
  EXPECT_EQ(-1, Root.Depth());
  Child.AddChildNode(&Grandchild);
  EXPECT_EQ(0, Grandchild.Depth());
  Grandchild.AddChildNode(new TNode(3));
  Root.AddChildNode(&Child);
  EXPECT_EQ(0, Child.Depth());
  EXPECT_EQ(0, Grandchild.Depth());
  EXPECT_EQ(&Child, Grandchild.Parent());
  EXPECT_FALSE(Child.IsRoot());
  EXPECT_FALSE(Child.IsLeaf());
  Grandchild.ClearFreeChildNodes(false);
  EXPECT_TRUE(Grandchild.IsLeaf());
}

TEST(TTreeNode, AttachingElsewhereLeavesTheEarlierListAlone) {
  TNode First(0);
  TNode Second(1);
  TNode Child(2);
  First.AddChildNode(&Child);
  Second.AddChildNode(&Child);
  EXPECT_EQ(&Second, Child.Parent());
  EXPECT_EQ(1u, First.ChildNodes().size());
}

TEST(TTreeNode, FreesChildrenInOrderAndBeforeTheirParent) {
  std::vector<int> Freed;
  TNode Root(0);
  auto* const A = new TWatchedNode(1, Freed);
  Root.AddChildNode(A);
  Root.AddChildNode(new TWatchedNode(2, Freed));
  A->AddChildNode(new TWatchedNode(3, Freed));
  A->AddChildNode(new TWatchedNode(4, Freed));
  Root.ClearFreeChildNodes(true);
  EXPECT_THAT(Freed, ElementsAre(3, 4, 1, 2));
  EXPECT_TRUE(Root.IsLeaf());
}

TEST(TTreeNode, WithoutRecursionTheGrandchildrenStay) {
  std::vector<int> Freed;
  TNode Root(0);
  TNode Grandchild(3);
  Root.AddChildNode(new TWatchedNode(1, Freed));
  Root.AddChildNode(new TWatchedNode(2, Freed));
  Root.ChildNodes()[0]->AddChildNode(&Grandchild);
  Root.ClearFreeChildNodes(false);
  EXPECT_THAT(Freed, ElementsAre(1, 2));
  EXPECT_EQ(3, Grandchild.Data());
}

}  // namespace
}  // namespace tarnalgo
