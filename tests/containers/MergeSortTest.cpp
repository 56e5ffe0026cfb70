#include "containers/Container/MergeSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using TItem = std::pair<int, int>;  // key, place in the input

TEST(MergeSort, AgreesWithTheStandardStableSort) {
  std::mt19937 Random(3);
  for (int Count : {0, 1, 2, 15, 16, 17, 33, 100, 1000, 4097}) {
    for (int Keys : {1, 3, 1000000}) {
      std::vector<TItem> Items;
      for (int I = 0; I < Count; ++I) Items.emplace_back(test::RandomInt(Random, 0, Keys), I);
      std::vector<TItem> Expected = Items;
      std::stable_sort(Expected.begin(), Expected.end(),
                       [](const TItem& A, const TItem& B) { return A.first < B.first; });
      MergeSort(Items, [](const TItem& A, const TItem& B) {
        return A.first < B.first ? -1 : (A.first > B.first ? 1 : 0);
      });
      EXPECT_EQ(Expected, Items) << Count << " items, keys up to " << Keys;
    }
  }
}

TEST(MergeSort, KeepsEveryItemUnderAComparerThatContradictsItself) {
  std::mt19937 Random(5);
  for (int Round = 0; Round < 50; ++Round) {
    std::vector<int> Items(500);
    for (int& Item : Items) Item = test::RandomInt(Random, 0, 100);
    std::vector<int> Expected = Items;
    MergeSort(Items, [&Random](int, int) { return test::RandomInt(Random, -1, 1); });
    std::sort(Items.begin(), Items.end());
    std::sort(Expected.begin(), Expected.end());
    EXPECT_EQ(Expected, Items);
  }
}

}  // namespace
}  // namespace tarnalgo
