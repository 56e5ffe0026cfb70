#include "containers/TreeAlgorithm/MultiTree.h"

#include <gtest/gtest.h>

#include <memory>

namespace tarnalgo {
namespace {

using TNode = TTreeNode<int>;

TEST(TMultiTree, AnEmptyTreeAnswersNothing) {
  TMultiTree<int> Tree;
  EXPECT_TRUE(Tree.IsEmpty());
  EXPECT_EQ(nullptr, Tree.NodeOfData(0));
  EXPECT_TRUE(Tree.HierarchicalTraversal().empty());
  EXPECT_TRUE(Tree.PreorderTraversal().empty());
  EXPECT_TRUE(Tree.PostOrderTraversal().empty());
}

TEST(TMultiTree, FindsTheLastOfSeveralMatchesInBreadthFirstOrder) {
  TMultiTree<int> Tree(0);
  TNode* const A = Tree.AddChildNode(Tree.Root(), std::make_unique<TNode>(5));
  TNode* const Deep = Tree.AddChildNode(A, std::make_unique<TNode>(5));
  Tree.AddChildNode(Tree.Root(), std::make_unique<TNode>(5));
  EXPECT_EQ(Deep, Tree.NodeOfData(5));
  EXPECT_EQ(Tree.Root(), Tree.NodeOfData(0));
  EXPECT_EQ(nullptr, Tree.NodeOfData(6));
}

TEST(TMultiTree, FreesItsNodesButNotWhatTheyPointTo) {
  int Item = 5;
  TMultiTreeList<int*> Trees;
  Trees.Add(std::make_unique<TMultiTree<int*>>(&Item));
  Trees[0]->AddChildNode(Trees[0]->Root(), std::make_unique<TTreeNode<int*>>(&Item));
  Trees.Clear();  // the leak sanitizer watches the nodes
  EXPECT_EQ(5, Item);
}

TEST(TMultiTree, DestroysAChainOfAMillionNodes) {
  TMultiTree<int> Tree(0);
  TNode* Last = Tree.Root();
  for (int I = 1; I < 1000000; ++I) Last = Tree.AddChildNode(Last, std::make_unique<TNode>(I));
  EXPECT_EQ(999999, Last->Depth());
  EXPECT_EQ(Last, Tree.PreorderTraversal().back());
  EXPECT_EQ(Last, Tree.PostOrderTraversal().front());
}

}  // namespace
}  // namespace tarnalgo
