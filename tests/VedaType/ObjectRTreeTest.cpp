#include "geometryAlgo/VedaType/RTree/ObjectRTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using testing::ElementsAre;

constexpr double kInf = std::numeric_limits<double>::infinity();
const TVRect2D kEverything(-kInf, kInf, kInf, -kInf);

TVRect2D Square(double X, double Y, double Size = 1.0) {
  return {X, X + Size, Y + Size, Y};
}

// --- A slow tree that follows the rules word by word, recursively ---

struct TModel {
  int* Item = nullptr;
  TVRect2D Range;
  TModel* Parent = nullptr;
  std::vector<TModel*> Children;
};

double Cost(const TModel& A, const TModel& B) {
  return A.Range.Expand(B.Range).Area() - A.Range.Area();
}

class TModelTree {
 public:
  TModel* Root = nullptr;

  void Insert(int* Item, const TVRect2D& Box) {
    TModel* const Entry = New(Item);
    Entry->Range = Box;
    if (!Root) {
      Root = Entry;
    } else {
      Insert(Entry, Root);
    }
  }

 private:
  TModel* New(int* Item = nullptr) {
    FAll.push_back(std::make_unique<TModel>());
    FAll.back()->Item = Item;
    return FAll.back().get();
  }
  static void Add(TModel* Parent, TModel* Child) {
    Child->Parent = Parent;
    Parent->Children.push_back(Child);
  }
  static void Renew(TModel* Node) {
    Node->Range = TVRect2D();
    for (const TModel* Child : Node->Children) Node->Range.ExpandInPlace(Child->Range);
  }
  void SplitOrRenew(TModel* Node) {
    if (Node->Children.size() > 4) return Split(Node);
    for (; Node; Node = Node->Parent) Renew(Node);
  }

  void Insert(TModel* Entry, TModel* Target) {
    if (!Target->Parent && Target->Children.empty()) {
      Root = New();
      Add(Root, Target);
      Add(Root, Entry);
      Renew(Root);
    } else if (Target->Children[0]->Item) {
      Add(Target, Entry);
      SplitOrRenew(Target);
    } else {
      TModel* Best = nullptr;
      for (TModel* Child : Target->Children) {
        if (Cost(*Child, *Entry) < (Best ? Cost(*Best, *Entry) : 1.7e308)) Best = Child;
      }
      Insert(Entry, Best ? Best : Target->Children[0]);
    }
  }

  void Split(TModel* Node) {
    std::vector<TModel*> Waiting = Node->Children;
    std::size_t First = 0;
    std::size_t Second = 1;
    double Most = -9223372036854775808.0;
    for (std::size_t J = 1; J < Waiting.size(); ++J) {
      for (std::size_t I = 0; I < J; ++I) {
        const TVRect2D& RI = Waiting[I]->Range;
        const TVRect2D& RJ = Waiting[J]->Range;
        const double Waste = RI.Expand(RJ).Area() - RI.Area() - RJ.Area();
        // Pairs are ordered by the first, then the second child: equal waste, smaller I wins.
        if (Waste > Most || (Waste == Most && I < First && Most > -9223372036854775808.0)) {
          Most = Waste;
          First = I;
          Second = J;
        }
      }
    }
    TModel* const A = New();
    TModel* const B = New();
    Add(A, Waiting[First]);
    Add(B, Waiting[Second]);
    Renew(A);
    Renew(B);
    for (std::size_t I = 0; I < Waiting.size(); ++I) {
      if (I == First || I == Second) continue;
      TModel* Group = Cost(*B, *Waiting[I]) < Cost(*A, *Waiting[I]) ? B : A;
      if (A->Children.size() == 3) Group = B;
      if (B->Children.size() == 3) Group = A;
      Add(Group, Waiting[I]);
      Renew(Group);
    }
    TModel* const Parent = Node->Parent;
    if (!Parent) {
      Node->Children.clear();
      Add(Node, A);
      Add(Node, B);
      Renew(Node);
      return;
    }
    std::erase(Parent->Children, Node);
    Add(Parent, A);
    Add(Parent, B);
    SplitOrRenew(Parent);
  }

  std::vector<std::unique_ptr<TModel>> FAll;
};

void ExpectSameTree(const TModel* Model, const TRRTree2D* Node) {
  ASSERT_EQ(Model->Item, Node->Data());
  if (!Model->Item) {  // an item's own box may hold NaN, which is not equal to itself
    ASSERT_EQ(Model->Range, Node->Range());
  }
  ASSERT_EQ(static_cast<int>(Model->Children.size()), Node->ChildCount());
  for (int I = 0; I < Node->ChildCount(); ++I) {
    ASSERT_EQ(Node, Node->Child(I)->Parent());
    ExpectSameTree(Model->Children[static_cast<std::size_t>(I)], Node->Child(I));
    if (testing::Test::HasFatalFailure()) return;
  }
}

using TBoxMaker = TVRect2D (*)(std::mt19937&);

TVRect2D RandomBox(std::mt19937& Random) {
  const TPoint2D P = test::RandomPoint(Random, 0, 50);
  return {P, P + test::RandomPoint(Random, 0, 5)};
}
TVRect2D GridBox(std::mt19937& Random) {
  const TPoint2D P = test::RandomGridPoint(Random, 0, 5);
  return {P, P + test::RandomGridPoint(Random, 0, 2)};
}
TVRect2D HostileBox(std::mt19937& Random) {
  const double Values[] = {std::nan(""), kInf, -kInf, 1e300, -1e300, 0.0, 1e20, 1.0};
  const auto Pick = [&] { return Values[test::RandomInt(Random, 0, 7)]; };
  return {Pick(), Pick(), Pick(), Pick()};
}

std::unique_ptr<TRRTree2D> Inserted(int* Item, const TVRect2D& Box,
                                    std::unique_ptr<TRRTree2D> Tree) {
  return TRRTree2D::Insert(std::make_unique<TRRTree2D>(Item, Box), std::move(Tree));
}

TEST(TRRTree2D, AgreesWithTheRulesAndWithASearchThroughAList) {
  for (const TBoxMaker MakeBox : {RandomBox, GridBox, HostileBox}) {
    std::mt19937 Random(31);
    std::vector<int> Items(600);
    TModelTree Model;
    std::unique_ptr<TRRTree2D> Root;
    std::vector<std::unique_ptr<TRRTree2D>> Loose;
    T2DRList List;
    for (int& Item : Items) {
      const TVRect2D Box = MakeBox(Random);
      Root = Inserted(&Item, Box, std::move(Root));
      Model.Insert(&Item, Box);
      ExpectSameTree(Model.Root, Root.get());
      if (HasFatalFailure()) return;
      Loose.push_back(std::make_unique<TRRTree2D>(&Item, Box));
      List.InsertOneNode(Loose.back().get());
      const TVRect2D Window = MakeBox(Random);
      TRList Found;
      TRList Expected;
      Root->PickUpContents(Window, Found);
      List.PickUpContents(Window, Expected);
      EXPECT_THAT(Found.PickUpAllContents(),
                  testing::UnorderedElementsAreArray(Expected.PickUpAllContents()));
    }
  }
}

TEST(TRRTree2D, TheFifthEntrySplitsARootThatStays) {
  int Items[5];
  std::unique_ptr<TRRTree2D> Root;
  const double X[] = {0, 10, 1, 11, 2};
  for (int I = 0; I < 4; ++I) Root = Inserted(&Items[I], Square(X[I], 0), std::move(Root));
  const TRRTree2D* const Before = Root.get();
  EXPECT_EQ(1, Root->GetHeight());
  Root = Inserted(&Items[4], Square(X[4], 0), std::move(Root));
  EXPECT_EQ(Before, Root.get());
  EXPECT_EQ(2, Root->GetHeight());
  TRList List;
  Root->PickUpContents(kEverything, List);
  // The seeds are 0 and 11, the pair with most waste; the group of the earlier one comes first.
  EXPECT_THAT(List.PickUpAllContents(),
              ElementsAre(&Items[0], &Items[2], &Items[4], &Items[3], &Items[1]));
  Root = TRRTree2D::Insert(std::make_unique<TRRTree2D>(), std::move(Root));  // nothing to insert
  Root = TRRTree2D::Insert(nullptr, std::move(Root));
  EXPECT_EQ(Before, Root.get());
  test::ExpectRaises<EParamError>([&] { Root->Child(2); }, "[Error] TRTree: index out of range");
}

TEST(TRRTree2D, DeletingGivesBackItemsAndShrinksRanges) {
  std::mt19937 Random(9);
  std::vector<int> Items(300);
  std::unique_ptr<TRRTree2D> Root;
  for (int& Item : Items) Root = Inserted(&Item, RandomBox(Random), std::move(Root));
  std::vector<void*> Freed;
  for (std::size_t Left = Items.size(); Left > 0; --Left) {
    TRList Entries;
    Root->PickUpContents(Root->Range(), Entries);
    ASSERT_EQ(static_cast<int>(Left), Entries.Count());
    TVRect2D Union;
    for (TRTree<>* Entry : Entries) Union.ExpandInPlace(static_cast<TRRTree2D*>(Entry)->Range());
    ASSERT_EQ(Union, Root->Range());
    TRTree<>* const Leaving = Entries[test::RandomInt(Random, 0, Entries.Count() - 1)];
    void* const Item = Leaving->Data();
    Leaving->Delete([&Freed](void* Data) { Freed.push_back(Data); });
    ASSERT_EQ(Item, Freed.back());
  }
  EXPECT_EQ(300u, Freed.size());
  EXPECT_EQ(0, Root->ChildCount());
  EXPECT_FALSE(Root->Range().IsValid());
  Root = Inserted(&Items[0], Square(0, 0), std::move(Root));  // takes the place of the emptied root
  EXPECT_TRUE(Root->IsDataEntry());
}

TEST(TRRTree2D, DeletingTheRootLeavesItEmpty) {
  int Items[6];
  for (const std::size_t Count : {1u, 6u}) {
    std::unique_ptr<TRRTree2D> Root;
    for (std::size_t I = 0; I < Count; ++I) {
      Root = Inserted(&Items[I], Square(0, 0), std::move(Root));
    }
    std::size_t Freed = 0;
    Root->Delete([&Freed](void*) { ++Freed; });
    EXPECT_EQ(Count, Freed);
    EXPECT_EQ(0, Root->ChildCount());
    EXPECT_FALSE(Root->IsDataEntry());
    EXPECT_FALSE(Root->Range().IsValid());
  }
}

// A node that lets the test choose how many children are too many.
class TNarrowTree : public TRRTree2D {
 public:
  using TRRTree2D::TRRTree2D;
  static inline int Max = 0;
  int MaxChildCount() const override { return Max; }

 protected:
  std::unique_ptr<TRTree<>> NewNode() const override { return std::make_unique<TNarrowTree>(); }
};

TEST(TRRTree2D, StandsAnyNumberOfChildrenThatADerivedClassAllows) {
  for (const int Max : {-3, 0, 1, 2, 3, 50}) {
    TNarrowTree::Max = Max;
    std::vector<int> Items(200);
    std::unique_ptr<TRRTree2D> Root;
    for (int I = 0; I < 200; ++I) {
      Root = TRRTree2D::Insert(
          std::make_unique<TNarrowTree>(&Items[static_cast<std::size_t>(I)], Square(I, 0)),
          std::move(Root));
    }
    TRList Found;
    Root->PickUpContents(kEverything, Found);
    EXPECT_EQ(200, Found.Count()) << Max;
  }
}

TEST(TRRTree2D, StandsAChainOfAMillionNodes) {
  TRRTree2D Root;
  TRTree<>* Last = &Root;
  for (int I = 0; I < 1000000; ++I) {
    Last->AddChild(std::make_unique<TRRTree2D>());
    Last = Last->Child(0);
  }
  EXPECT_EQ(1000000, Root.GetHeight());
}

TEST(TRList, ForgetsOneNodeAtATime) {
  int Items[2];
  TRRTree2D A(&Items[0], Square(0, 0));
  TRRTree2D B(&Items[1], Square(1, 1));
  T2DRList List;
  for (TRRTree2D* Node : {&A, &B, static_cast<TRRTree2D*>(nullptr), &A}) List.InsertOneNode(Node);
  List.PickUpContents({1.5, 3, 3, 1.5}, List);  // found entries join the list that is searched
  List.DeleteOneNode(&A);
  EXPECT_THAT(List.PickUpAllContents(), ElementsAre(&Items[1], &Items[0], &Items[1]));
  TRList Touching;
  List.PickUpContents({1, 1, 1, 1}, Touching);
  EXPECT_EQ(3, Touching.Count());
  List.Clear();
  List.DeleteOneNode(&A);
  test::ExpectRaises<EParamError>([&] { List[0]; }, "[Error] TRList: index out of range");
}

}  // namespace
}  // namespace tarnalgo
