#include "containers/Container/LentList.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

// A vector is the model; the storage lent is too small for what comes.
TEST(TLentList, BehavesAsAVectorWhetherItsStorageSuffices) {
  std::mt19937 Random(17);
  for (int Lent : {0, 1, 5, 1000}) {
    std::vector<int> Storage(static_cast<std::size_t>(Lent) + 1);
    TLentList<int> List(Storage.data(), Lent);
    std::vector<int> Model;
    for (int Step = 0; Step < 600; ++Step) {
      const int Choice = test::RandomInt(Random, 0, 99);
      if (Choice < 60 || Model.empty()) {
        List.Add(Step);
        Model.push_back(Step);
      } else if (Choice < 80) {
        const int Index = test::RandomInt(Random, 0, List.Count() - 1);
        List.Delete(Index);
        Model.erase(Model.begin() + Index);
      } else if (Choice < 97) {
        EXPECT_EQ(Model.back(), List.TakeLast());
        Model.pop_back();
      } else {
        List.Reserve(List.Count() + 1);
        List.AddIf(Choice == 98, Step);
        if (Choice == 98) Model.push_back(Step);
      }
      ASSERT_EQ(Model, std::vector<int>(List.begin(), List.end())) << "lent " << Lent;
    }
    ASSERT_GT(List.Count(), 2);
    EXPECT_EQ(1, List.IndexOf(Model[1]));
    EXPECT_EQ(-1, List.IndexOf(-5));
    List.Shorten(2);
    EXPECT_EQ(2, List.Count());
    List.Clear();
    EXPECT_TRUE(List.IsEmpty());
  }
}

TEST(TLentList, TakesACopyOfItsOwnItemWhileItGrows) {
  int Storage[1];
  TLentList<int> List(Storage, 1);
  List.Add(7);
  List.Add(List[0]);
  EXPECT_EQ(7, List[1]);
}

}  // namespace
}  // namespace tarnalgo
