#include "containers/Container/LinkedList.h"

#include <gtest/gtest.h>

#include <iterator>
#include <list>
#include <memory>
#include <random>
#include <vector>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using TList = TLinkedList<int>;
using TNode = TList::TNode;

constexpr const char* kNotInList = "[Error] TLinkedList<T>.Remove: 节点数据不匹配";

// Forwards, having checked every link and both ends.
std::vector<int> ItemsOf(const TList& List) {
  std::vector<int> Result;
  const TNode* Before = nullptr;
  for (const TNode* Node = List.Head(); Node != nullptr; Node = Node->Next()) {
    EXPECT_EQ(Before, Node->Prev());
    Result.push_back(Node->Data());
    Before = Node;
  }
  EXPECT_EQ(Before, List.Tail());
  EXPECT_EQ(static_cast<int>(Result.size()), List.Count());
  EXPECT_EQ(Result.empty(), List.Empty());
  return Result;
}

TEST(TLinkedList, TakesTheAskedRangeOfAList) {
  const std::vector<int> Source = {10, 11, 12, 13, 14, 15};
  const struct {
    int StartId, EndId;
    std::vector<int> Expected;
  } Cases[] = {
      {0, 6, Source}, {2, 4, {12, 13}}, {5, 6, {15}}, {3, 3, {}}, {5, 2, {}}, {9, 9, {}},
  };
  for (const auto& Case : Cases) {
    EXPECT_EQ(Case.Expected, ItemsOf(TList(Source, Case.StartId, Case.EndId)))
        << Case.StartId << " .. " << Case.EndId;
  }
  EXPECT_EQ(Source, ItemsOf(TList(Source)));
  EXPECT_THROW(TList(Source, -1, 2), EParamError);
  EXPECT_THROW(TList(Source, 4, 7), EParamError);
}

// Any mixture of edits, followed on the standard list.
TEST(TLinkedList, FollowsTheStandardListThroughRandomEdits) {
  std::mt19937 Random(11);
  TList List;
  std::list<int> Model;
  std::vector<TNode*> Nodes;  // in the order of the list
  for (int Step = 0; Step < 4000; ++Step) {
    const int At = Nodes.empty() ? -1 : test::RandomInt(Random, 0, List.Count() - 1);
    switch (test::RandomInt(Random, 0, 6)) {
      case 0:
        Nodes.insert(Nodes.begin(), List.AddToHead(Step));
        Model.push_front(Step);
        break;
      case 1:
        Nodes.push_back(List.AddToTail(Step));
        Model.push_back(Step);
        break;
      case 2:
        if (At < 0) break;
        Nodes.insert(Nodes.begin() + At + 1,
                     List.InsertAfter(Nodes[static_cast<std::size_t>(At)], Step));
        Model.insert(std::next(Model.begin(), At + 1), Step);
        break;
      case 3:
        if (At < 0) break;
        EXPECT_EQ(Model.front(), List.GetHeadData());
        EXPECT_EQ(Model.front(), List.RemoveHead(true));
        Nodes.erase(Nodes.begin());
        Model.pop_front();
        break;
      case 4:
        if (At < 0) break;
        EXPECT_EQ(Model.back(), List.GetTailData());
        EXPECT_EQ(Model.back(), List.RemoveTail(true));
        Nodes.pop_back();
        Model.pop_back();
        break;
      default:
        if (At < 0) break;
        List.Remove(Nodes[static_cast<std::size_t>(At)], true);
        Nodes.erase(Nodes.begin() + At);
        Model.erase(std::next(Model.begin(), At));
    }
    ASSERT_EQ(std::vector<int>(Model.begin(), Model.end()), ItemsOf(List));
    if (Step % 50 < 49) continue;
    // Down to one node, which is both ends.
    while (Nodes.size() > 1) {
      List.RemoveTail(true);
      Nodes.pop_back();
    }
    if (!Nodes.empty()) List.Remove(Nodes[0], true);
    Nodes.clear();
    Model.clear();
    List.Remove(nullptr, true);
    ASSERT_TRUE(ItemsOf(List).empty());
  }
}

TEST(TLinkedList, HandsTheNodeOverWithItsOwnLinksUntouched) {
  TList List(std::vector<int>{1, 2, 3, 4});
  const std::unique_ptr<TNode> Head(List.Head());
  EXPECT_EQ(1, List.RemoveHead(false));
  const std::unique_ptr<TNode> Tail(List.Tail());
  EXPECT_EQ(4, List.RemoveTail(false));
  EXPECT_EQ((std::vector<int>{2, 3}), ItemsOf(List));
  EXPECT_EQ(List.Head(), Head->Next());
  EXPECT_EQ(List.Tail(), Tail->Prev());

  TNode* const Second = List.Head();
  const std::unique_ptr<TNode> Middle(List.InsertAfter(Second, 9));
  List.Remove(Middle.get(), false);
  EXPECT_EQ(9, Middle->Data());
  EXPECT_EQ(Second, Middle->Prev());
  EXPECT_EQ(List.Tail(), Middle->Next());
}

TEST(TLinkedList, RefusesANodeWithoutNeighboursThatIsNoEnd) {
  TList List(std::vector<int>{1, 2, 3});
  TNode Stranger(7);
  test::ExpectRaises<ELinkedList>([&] { List.Remove(&Stranger, true); }, kNotInList);
  TList Other(std::vector<int>{5, 6});
  test::ExpectRaises<ELinkedList>([&] { List.Remove(Other.Tail(), true); }, kNotInList);
  EXPECT_EQ((std::vector<int>{1, 2, 3}), ItemsOf(List));
  EXPECT_EQ((std::vector<int>{5, 6}), ItemsOf(Other));
  EXPECT_THROW(List.InsertAfter(nullptr, 4), EParamError);
}

TEST(TLinkedList, AnswersZeroBytesWhenEmpty) {
  struct TRecord {
    double X = 1.0;  // not what an empty list answers
    int Kind = 7;
    int More = 8;
  };
  TLinkedList<TRecord> List;
  for (const TRecord& Data :
       {List.RemoveHead(true), List.RemoveTail(false), List.GetHeadData(), List.GetTailData()}) {
    EXPECT_EQ(0.0, Data.X);
    EXPECT_EQ(0, Data.Kind);
    EXPECT_EQ(0, Data.More);
  }
  EXPECT_EQ(0, List.Count());
}

TEST(TLinkedList, MovesWithItsNodesInPlace) {
  TList List(std::vector<int>{1, 2});
  TNode* const Head = List.Head();
  TList Other(std::vector<int>{3});
  Other = std::move(List);
  EXPECT_EQ(Head, Other.Head());
  EXPECT_EQ((std::vector<int>{1, 2}), ItemsOf(Other));
  EXPECT_TRUE(ItemsOf(List).empty());
}

}  // namespace
}  // namespace tarnalgo
