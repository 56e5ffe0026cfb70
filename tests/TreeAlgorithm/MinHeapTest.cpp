#include "containers/TreeAlgorithm/MinHeap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using TItem = std::pair<int, int>;  // what the comparer sees, which one it is

int CompareFirst(const TItem& A, const TItem& B) {
  return CompareExact(A.first, B.first);
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The rules of sifting word by word: swaps, and the passed parent sifted down again.
class TSlowHeap {
 public:
  explicit TSlowHeap(bool ByKey) : FByKey(ByKey) {}

  void Build(const std::vector<TItem>& Items) {
    for (const TItem& Item : Items) Nodes.push_back({Item, 0.0});
    for (int I = Count() - 1; I >= 0; --I) AdjustOneNode(I);
  }
  void Add(const TItem& Item, double Key) {
    Nodes.push_back({Item, Key});
    for (int I = Count() - 1; I > 0 && AdjustOneNode(I);) I = (I - 1) / 2;
  }
  TItem Pop() {
    const TItem Result = Nodes.front().Data;
    Nodes.front() = Nodes.back();
    Nodes.pop_back();
    AdjustOneBranchFromTop(0);
    return Result;
  }

  std::vector<THeapNode<TItem>> Nodes;

 private:
  int Count() const { return static_cast<int>(Nodes.size()); }
  THeapNode<TItem>& At(int I) { return Nodes[static_cast<std::size_t>(I)]; }
  int Compare(int I, int J) {
    if (!FByKey) return CompareFirst(At(I).Data, At(J).Data);
    const double D = At(I).Key - At(J).Key;
    return D < 0 ? -1 : (D > 0 ? 1 : 0);
  }
  bool AdjustOneNode(int I) {
    if (I == 0) return false;
    const int P = (I - 1) / 2;
    if (Compare(I, P) >= 0) return false;
    std::swap(At(P), At(I));
    AdjustOneBranchFromTop(I);
    return true;
  }
  void AdjustOneBranchFromTop(int I) {
    for (int L = 2 * I + 1; L < Count(); L = 2 * I + 1) {
      const int R = L + 1;
      const int Child = R < Count() && Compare(L, R) > 0 ? R : L;
      if (Compare(Child, I) >= 0) return;
      std::swap(At(I), At(Child));
      I = Child;
    }
  }

  bool FByKey;
};

template <class TComparer>
void ExpectSameArray(const TSlowHeap& Expected, const TMinHeap<TItem, TComparer>& Heap) {
  ASSERT_EQ(Expected.Nodes.size(), Heap.Datas().size());
  for (std::size_t I = 0; I < Expected.Nodes.size(); ++I) {
    ASSERT_EQ(Expected.Nodes[I].Data, Heap.Datas()[I].Data) << "at " << I;
  }
}

// Mostly additions first, mostly removals in the end; few different keys, so that ties abound.
template <class TComparer, class TMakeKey>
void CompareWithSlowHeap(TMinHeap<TItem, TComparer> Heap, TSlowHeap Slow, TMakeKey MakeKey) {
  std::mt19937 Random(31);
  for (int Step = 0; Step < 1500; ++Step) {
    if (Slow.Nodes.empty() || test::RandomInt(Random, 0, 1500) > Step) {
      const double Key = MakeKey(Random);
      const TItem Item(std::abs(Key) < 1e9 ? static_cast<int>(Key) : 0, Step);
      Heap.Add(Item, Key);
      Slow.Add(Item, Key);
    } else {
      ASSERT_EQ(&Heap.Datas()[0], &Heap.TopNode());
      ASSERT_EQ(&Heap.Datas()[0].Data, &Heap.Top());
      ASSERT_EQ(Slow.Pop(), Heap.Pop());
    }
    ExpectSameArray(Slow, Heap);
    if (testing::Test::HasFatalFailure()) return;
  }
}

TEST(TMinHeap, ArrayFollowsTheRulesOfSifting) {
  for (const int Keys : {0, 3, 40, 1000000}) {
    SCOPED_TRACE(Keys);
    const auto MakeKey = [Keys](auto& Random) { return test::RandomInt(Random, -Keys, Keys); };
    CompareWithSlowHeap(TMinHeap<TItem>(), TSlowHeap(true), MakeKey);
    CompareWithSlowHeap(TMinHeap<TItem>(CompareFirst), TSlowHeap(false), MakeKey);
    CompareWithSlowHeap(TMinHeap<TItem, decltype(&CompareFirst)>(CompareFirst), TSlowHeap(false),
                        MakeKey);
  }
  const double Awkward[] = {-kInfinity, kInfinity, std::nan(""), 0.0, -0.0,
                            5e-324,     -1.7e308,  1.7e308,      1.0, 2.0};
  CompareWithSlowHeap(TMinHeap<TItem>(), TSlowHeap(true),
                      [&Awkward](auto& Random) { return Awkward[test::RandomInt(Random, 0, 9)]; });
}

TEST(TMinHeap, BuildsFromAListByTheRules) {
  std::mt19937 Random(37);
  for (int Count = 0; Count < 200; ++Count) {
    std::vector<TItem> Items;
    for (int I = 0; I < Count; ++I) Items.emplace_back(test::RandomInt(Random, 0, Count / 3), I);
    TSlowHeap Slow(false);
    Slow.Build(Items);
    ExpectSameArray(Slow, TMinHeap<TItem>(Items, CompareFirst));
  }
}

TEST(TMinHeap, BuildingAndAddingMayGiveEqualItemsInAnotherOrder) {
  const std::vector<TItem> Items = {{1, 0}, {0, 1}, {0, 2}};
  EXPECT_EQ(2, TMinHeap<TItem>(Items, CompareFirst).Pop().second);
  TMinHeap<TItem> Filled(CompareFirst);
  Filled.AddRange(Items);
  EXPECT_EQ(1, Filled.Pop().second);
}

TEST(TMinHeap, RefusesToReadAnEmptyHeap) {
  TMinHeap<int> Heap;
  Heap.Add(1, 2.5);
  EXPECT_EQ(2.5, Heap.TopKey());
  EXPECT_EQ(1, Heap.Pop());
  test::ExpectRaises([&] { Heap.Top(); }, "[Error] TMinHeap.Top: 堆中没有元素");
  test::ExpectRaises([&] { Heap.TopKey(); }, "[Error] TMinHeap.Top: 堆中没有元素");
  test::ExpectRaises([&] { Heap.TopNode(); }, "[Error] TMinHeap.TopNode: 堆中没有元素");
  test::ExpectRaises([&] { Heap.Pop(); }, "[Error] TMinHeap.Pop: 堆中没有元素");
}

TEST(TMinHeap, RefusesAListInKeyMode) {
  TMinHeap<int> Heap(nullptr);
  const char* const kMessage = "[Error] TMinHeap.AddRange: 只有通过函数比较才可调用本方法";
  test::ExpectRaises([&] { Heap.AddRange({}); }, kMessage);
  test::ExpectRaises([&] { Heap.AddRange({1, 2}); }, kMessage);
  EXPECT_EQ(0, Heap.Count());
}

// A list puts the heap in comparer mode even without a comparer; one item needs none.
TEST(TMinHeap, AssertsTheComparerThatItNeeds) {
  EXPECT_THROW(TMinHeap<int>({1, 2}, nullptr), EAssertionFailed);
  TMinHeap<int> Heap({1}, nullptr);
  EXPECT_THROW(Heap.Add(2), EAssertionFailed);
  EXPECT_EQ(1, Heap.Count());
  EXPECT_EQ(1, Heap.Pop());
}

TEST(TMinHeap, HoldsItemsThatCannotBeCopied) {
  using TOwner = std::unique_ptr<int>;
  const auto Compare = [](const TOwner& A, const TOwner& B) { return CompareExact(*A, *B); };
  TMinHeap<TOwner, decltype(Compare)> Heap(Compare);
  for (const int Value : {3, 1, 2, 1}) Heap.Add(std::make_unique<int>(Value));
  for (const int Value : {1, 1, 2, 3}) EXPECT_EQ(Value, *Heap.Pop());
}

TEST(TMinHeap, LosesNothingToAComparerThatRaisesOrContradictsItself) {
  std::mt19937 Random(43);
  const auto Compare = [&Random](const TItem&, const TItem&) {
    const int Answer = test::RandomInt(Random, -4, 4);
    if (Answer == 4) throw std::runtime_error("no order");
    return Answer;
  };
  TMinHeap<TItem, decltype(Compare)> Heap(Compare);
  const int kCount = 2000;
  for (int I = 0; I < kCount; ++I) {
    try {
      Heap.Add({0, I});
    } catch (const std::runtime_error&) {}
  }
  std::vector<int> Seen;
  for (const auto& Node : Heap.Datas()) Seen.push_back(Node.Data.second);
  std::sort(Seen.begin(), Seen.end());
  for (int I = 0; I < kCount; ++I) ASSERT_EQ(I, Seen.at(static_cast<std::size_t>(I)));
}

}  // namespace
}  // namespace tarnalgo
