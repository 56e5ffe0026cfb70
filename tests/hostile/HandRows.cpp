// Rows by hand: operations that are templates, and those that take a handle into a structure.

#include <gtest/gtest.h>

#include "Makers.h"
#include "tests/hostile/Table.h"

namespace tarnalgo::test {
namespace {

using TTree = TGeneralSBTree<double, int>;
using TChain = TLinkedList<TPoint2D>;
using TLines = TObjectList<TVLine2D>;
using TCells = TCollection<TPointL2D>;

/// A comparer that contradicts itself.
auto Senseless(THostile& H) {
  return [&H](const auto&, const auto&) { return H.Pick(3) - 1; };
}

ROW("IntersectInPoints(const TA &, const TB &, tarnalgo::TPoint2D &, tarnalgo::TPoint2D &, double)",
    IntersectInPointsRow) {
  auto& P = H.Ref<TPoint2D>();
  auto& Q = H.Ref<TPoint2D>();
  H.Use(IntersectInPoints(H.Ref<TLine2D>(), H.Ref<TLine2D>(), P, Q, H.Double()));
  H.Use(IntersectInPoints(H.Ref<TArc2D>(), H.Ref<TArc2D>(), P, Q, H.Double()));
}

ROW("CompareExact(const T &, const T &)", CompareExactRow) {
  H.Use(CompareExact(H.Double(), H.Double()));
  H.Use(CompareExact(H.Integer(), H.Integer()));
}

ROW("MergeSort(std::vector<T> &, TComparer)", MergeSortRow) {
  MergeSort(H.Ref<std::vector<double>>(), Senseless(H));
  MergeSort(H.Ref<std::vector<double>>(), CompareExact<double>);
}

ROW("TObjectList::Insert(int, T *)", ReferringListRow) {
  TLines Lines(false);
  for (int Count = H.ListSize(); Count > 0; --Count) Lines.Add(&H.Ref<TVLine2D>());
  try {
    Lines.Insert(H.Take<int>(), H.Pointer<TVLine2D>());
    H.Use(Lines.Extract(0));
  } catch (const EParamError&) {}
  TLines Owning;
  Owning.Add(H.Draw<TVLine2D>().release());
  Owning.SetOwnsObjects(true);
  Owning.Insert(H.Take<int>(), H.Draw<TVLine2D>().release());
}

ROW("TGeCompositeCurve2D::TGeCompositeCurve2D(const std::vector<TGeCurve2D *> &, bool)",
    CompositeOfListRow) {
  std::vector<std::unique_ptr<TGeCurve2D>> Owned;
  for (int Count = H.ListSize(); Count > 0; --Count) {
    Owned.push_back(H.Pick(8) == 0 ? nullptr : H.Draw<TGeCurve2D>());
  }
  const bool HasRepeat = !Owned.empty() && H.Pick(4) == 0;
  std::vector<TGeCurve2D*> Curves;
  for (auto& Curve : Owned) Curves.push_back(Curve.release());
  if (HasRepeat) Curves.push_back(Curves.front());
  const TGeCompositeCurve2D Composite(Curves, true);
  H.Use(Composite.CurveLength());
}

ROW("TFlyHoles::AddHole(tarnalgo::TGeCurve2D *)", AddHoleRow) {
  auto& Holes = H.Ref<TFlyHoles>();
  TGeCurve2D* const Hole = Holes.AddHole(H.Draw<TGeCurve2D>().release());
  Holes.AddHole(Hole);
  Holes.AddHole(static_cast<TGeCurve2D*>(nullptr));
  if (H.Coin()) Holes.RemoveHole(Hole);
}

ROW("TFlyCurves::operator=(tarnalgo::TFlyCurves &&)", MovePassRow) {
  TFlyCurves Pass;
  for (int Count = H.ListSize(); Count > 0; --Count) Pass.Add(H.Draw<TFlyCurve>());
  TFlyCurves Moved(std::move(Pass));
  Pass = std::move(Moved);
  H.Use(Pass.EndPoint());
}

ROW("TObjectList::Sort(TComparer)", SortRow) {
  H.Ref<TLines>().Sort(Senseless(H));
}

ROW("TObjectList::SortByKey(TMakeKey, TComparer)", SortByKeyRow) {
  H.Ref<TLines>().SortByKey([](const TVLine2D& Line) { return Line.StartPoint.X; }, Senseless(H));
}

ROW("TCollection::TCollection<T>(const TRange &)", CollectionOfRangeRow) {
  const TCells Cells(H.Ref<std::vector<TPointL2D>>());
  H.Use(Cells);
}

ROW("TCollection::AddRange(const TRange &)", AddRangeRow) {
  auto& Cells = H.Ref<TCells>();
  Cells.AddRange(H.Ref<std::vector<TPointL2D>>());
  Cells.AddRange(Cells);
}

ROW("TOrderedDic::ForEach(TAction)", ForEachRow) {
  H.Ref<TOrderedDic<double, TVLine2D>>().ForEach([](double, TVLine2D& Line) { Line = TVLine2D(); });
}

ROW("TFloatMatrix::TFloatMatrix(const tarnalgo::TFloatVector &, std::same_as<bool> auto)",
    MatrixOfVectorRow) {
  const TFloatMatrix Matrix(H.Ref<TFloatVector>(), H.Coin());
  H.Use(Matrix.GetRowCnt());
}

// A tree of linked nodes through a history of all its operations.
ROW("TSBTreeIntKey::Insert(tarnalgo::TSBTreeIntKey *)", LinkedTreeRow) {
  std::vector<std::unique_ptr<TSBTreeIntKey>> Nodes;
  TSBTreeIntKey* Root = nullptr;
  for (int Count = H.ListSize(); Count > 0; --Count) {
    auto Node = std::make_unique<TSBTreeIntKey>(H.Take<std::uint32_t>(), H.Pointer<void>());
    Root = Root ? Root->Insert(Node.get()) : Node.get();
    Nodes.push_back(std::move(Node));
  }
  if (!Root) return;
  test::THostile& Any = H;
  TSBTree* Top = Root;
  for (int Step = 0; Step < 8 && Top; ++Step) {
    TSBTree* const Node = Top->GetIthTree(Any.Pick(Top->Size()));
    Any.Use(Top->GetIthTree(Any.Take<int>()));
    for (TSBTree* At = Top->FirstTree(); At; At = At->NextTree()) Any.Use(At->Size());
    for (TSBTree* At = Top->LastTree(); At; At = At->PreviousTree()) Any.Use(At->Parent());
    Node->Maintain(Any.Coin(), Top);
    Top = Top->RootTree();
    if (Any.Coin()) Top = Node->Delete();
  }
  EXPECT_THROW(Root->Insert(nullptr), EParamError);
  EXPECT_THROW(Root->Insert(Root), EParamError);
}

ROW("ScaleIntPoints(const tarnalgo::TPoint2D *, std::size_t, double, tarnalgo::TIntPoint *)",
    ScaleIntPointsRow) {
  const auto& Points = H.Ref<std::vector<TPoint2D>>();
  std::vector<TIntPoint> Result(Points.size());
  ScaleIntPoints(Points.data(), Points.size(), H.Double(), Result.data());
}

ROW("TGeneralSBTree::RemoveNode(tarnalgo::TGeneralSBTree::TNode *)", RemoveNodeRow) {
  auto& Tree = H.Ref<TTree>();
  for (int Step = 0; Step < 5; ++Step) {
    auto* const Node = Tree.Root();
    H.Use(TTree::NextNode(Node));
    H.Use(TTree::PreviousNode(Node));
    Tree.RemoveNode(Node);
  }
}

ROW("TTreeNode::AddChildNode(TTreeNode<T> *)", AddChildNodeRow) {
  TTreeNode<int> Root(0);
  TTreeNode<int>* Node = &Root;
  for (int Count = H.ListSize(); Count > 0; --Count) {
    auto* const Child = new TTreeNode<int>(Count);
    Node->AddChildNode(Child);
    if (H.Coin()) Node = Child;
  }
  const auto Nodes = Root.PreorderTraversal();
  for (TTreeNode<int>* const Above : {&Root, Node, static_cast<TTreeNode<int>*>(nullptr)}) {
    EXPECT_THROW(Node->AddChildNode(Above), EParamError);
  }
  EXPECT_EQ(Root.PostOrderTraversal().size(), Nodes.size());
  Root.ClearFreeChildNodes(true);
}

ROW("TRTreeNode::Split(const tarnalgo::TVRect2D &)", SplitRow) {
  using TNode = TRTreeNode<int>;
  TNode Leaf;
  for (int Count = H.ListSize(); Count > 0; --Count) {
    Leaf.AddChildNode(&H.Keep(std::make_unique<TNode>(Count, H.Take<TVRect2D>())));
  }
  Leaf.Split(H.Take<TVRect2D>());
  const std::unique_ptr<TNode> Root(Leaf.Parent());
  const std::unique_ptr<TNode> Sibling(Root->Child(1));
  EXPECT_THROW(Leaf.AddChildNode(Root.get()), EParamError);
  TTreeNode<int> Other(0);
  EXPECT_THROW(Leaf.AddChildNode(&Other), EParamError);
}

ROW("TLinkedList::InsertAfter(tarnalgo::TLinkedList::TNode *, const T &)", LinkedListRow) {
  auto& Chain = H.Ref<TChain>();
  for (int Step = 0; Step < 5; ++Step) {
    Chain.InsertAfter(Chain.Tail(), H.Take<TPoint2D>());
    Chain.Remove(H.Coin() ? Chain.Head() : nullptr, true);
    H.Use(Chain.RemoveHead(true));
    H.Use(Chain.RemoveTail(true));
    const std::unique_ptr<TChain::TNode> Last(Chain.AddToTail(H.Take<TPoint2D>()));
    H.Use(Chain.RemoveTail(false));
  }
}

}  // namespace
}  // namespace tarnalgo::test
