#include "containers/Container/ObjectList.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

/// Counts its living instances; sorting looks at Key alone.
struct TCounted {
  static inline int Alive = 0;
  int Key;
  explicit TCounted(int AKey) : Key(AKey) { ++Alive; }
  ~TCounted() { --Alive; }
  TCounted(const TCounted&) = delete;
  TCounted& operator=(const TCounted&) = delete;
};

class TRecordingList : public TObjectList<TCounted> {
 public:
  using TObjectList::TObjectList;
  std::string Log;

 protected:
  void Notify(TCounted& Item, TListChange Change) override {
    Log += std::to_string(Item.Key) + "+-x"[static_cast<int>(Change)];
  }
};

TEST(TObjectList, FreesWhatItOwnsAndOnlyThat) {
  {
    TCounted Foreign(9);
    TObjectList<TCounted> Borrowing(false);
    Borrowing.Add(&Foreign);
    TObjectList<TCounted> Owning;
    for (int Key : {1, 2, 3, 4}) Owning.Add(std::make_unique<TCounted>(Key));
    const std::unique_ptr<TCounted> Taken = Owning.Extract(1);
    EXPECT_EQ(2, Taken->Key);
    Owning.Delete(0);
    EXPECT_EQ(4, TCounted::Alive);
    EXPECT_EQ(1, Owning.Remove(Owning[1]));
    EXPECT_EQ(-1, Owning.Remove(Taken.get()));
    EXPECT_EQ(1, Owning.Count());
    Borrowing.Clear();
    TObjectList<TCounted> Moved = std::move(Owning);
    TObjectList<TCounted>& Same = Moved;
    Moved = std::move(Same);
    EXPECT_EQ(1, Moved.Count());
  }
  EXPECT_EQ(0, TCounted::Alive);
}

TEST(TObjectList, TellsADerivedClassOfEveryChangeBeforeTheItemIsFreed) {
  TRecordingList List;
  List.Add(std::make_unique<TCounted>(1));
  List.Insert(0, std::make_unique<TCounted>(2));
  List.Extract(1);
  List.Add(std::make_unique<TCounted>(3));
  List.SetItem(0, std::make_unique<TCounted>(4));
  List.Clear();
  EXPECT_EQ("1+2+1x3+2-4+3-4-", List.Log);
}

TEST(TObjectList, RefusesBadIndexesAndLeaksNothing) {
  TObjectList<TCounted> List;
  List.Add(std::make_unique<TCounted>(1));
  const std::string Message = "[Error] TObjectList: index out of range";
  test::ExpectRaises<EParamError>([&] { List.Delete(1); }, Message);
  test::ExpectRaises<EParamError>([&] { List.Extract(-1); }, Message);
  test::ExpectRaises<EParamError>([&] { List.Insert(2, new TCounted(2)); }, Message);
  test::ExpectRaises<EParamError>([&] { List.Insert(-1, std::make_unique<TCounted>(3)); }, Message);
  EXPECT_EQ(1, TCounted::Alive);
  const std::string Nothing = "[Error] TObjectList: no item given";
  test::ExpectRaises<EParamError>([&] { List.Add(std::unique_ptr<TCounted>()); }, Nothing);
  TObjectList<TCounted> Borrowing(false);
  TCounted* const None = nullptr;
  test::ExpectRaises<EParamError>([&] { Borrowing.Add(None); }, Nothing);
  test::ExpectRaises<EParamError>([&] { Borrowing.Add(std::make_unique<TCounted>(4)); },
                                  "[Error] TObjectList: the list does not own its items");
  EXPECT_EQ(1, TCounted::Alive);
  EXPECT_FALSE(std::is_copy_constructible_v<TObjectList<TCounted>>);
}

TEST(TObjectList, SortKeepsTheOrderOfEquals) {
  TObjectList<TCounted> List;
  std::vector<const TCounted*> Twos;
  for (int Key : {2, 3, 2, 1, 2}) {
    List.Add(std::make_unique<TCounted>(Key));
    if (Key == 2) Twos.push_back(List.Last());
  }
  List.Sort([](const TCounted& A, const TCounted& B) { return A.Key - B.Key; });
  EXPECT_EQ(1, List[0]->Key);
  EXPECT_EQ(Twos, std::vector<const TCounted*>({List[1], List[2], List[3]}));
  EXPECT_EQ(3, List[4]->Key);
}

// At whichever comparison it happens, in a run or in a merge.
TEST(TObjectList, KeepsItsItemsInOrderWhenTheComparerRaises) {
  bool HasRaised = true;
  for (int Comparisons = 0; HasRaised; ++Comparisons) {
    TObjectList<TCounted> List;
    for (int I = 0; I < 50; ++I) List.Add(std::make_unique<TCounted>(37 * I % 50));
    try {
      List.Sort([Left = Comparisons](const TCounted& A, const TCounted& B) mutable {
        return Left-- == 0 ? throw std::runtime_error("no order") : B.Key - A.Key;
      });
      HasRaised = false;
    } catch (const std::runtime_error&) {
      for (int I = 0; I < 50; ++I) ASSERT_EQ(37 * I % 50, List[I]->Key);
    }
  }
  EXPECT_EQ(0, TCounted::Alive);
}

}  // namespace
}  // namespace tarnalgo
