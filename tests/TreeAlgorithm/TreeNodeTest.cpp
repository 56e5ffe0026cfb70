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

/// Notes the order in which nodes are freed.
class TWatchedNode : public TNode {
 public:
  TWatchedNode(int Data, std::vector<int>& Freed) : TNode(Data), FFreed(Freed) {}
  ~TWatchedNode() override { FFreed.push_back(Data()); }

 private:
  std::vector<int>& FFreed;
};

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

TEST(TTreeNode, AttachingSetsTheDepthOfTheChildOnlyAndLeavesAnEarlierParentAlone) {
  TNode Root(0);
  TNode Child(1);
  TNode Grandchild(2);
  EXPECT_EQ(-1, Root.Depth());
  Child.AddChildNode(&Grandchild);
  Root.AddChildNode(&Child);
  EXPECT_EQ(0, Child.Depth());
  EXPECT_EQ(0, Grandchild.Depth());
  EXPECT_FALSE(Child.IsRoot());
  Child.AddChildNode(&Grandchild);
  EXPECT_EQ(1, Grandchild.Depth());
  Root.AddChildNode(&Grandchild);
  EXPECT_EQ(&Root, Grandchild.Parent());
  EXPECT_EQ(2u, Child.ChildNodes().size());
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
  for (const int Data : {1, 2}) Root.AddChildNode(new TWatchedNode(Data, Freed));
  Root.ChildNodes()[0]->AddChildNode(&Grandchild);
  Root.ClearFreeChildNodes(false);
  EXPECT_THAT(Freed, ElementsAre(1, 2));
  EXPECT_TRUE(Root.IsLeaf());
}

}  // namespace
}  // namespace tarnalgo
