#include "containers/Container/OrderedDic.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

template <class K>
std::vector<K> KeysOf(const TOrderedDic<K, int>& Dic) {
  std::vector<K> Keys;
  Dic.ForEach([&Keys](const K& Key, int&) { Keys.push_back(Key); });
  return Keys;
}

// A list of pairs is the model: searched from the front, in the order of addition.
TEST(TOrderedDic, KeepsTheOrderOfAdditionThroughAnyHistory) {
  std::mt19937 Random(23);
  std::vector<int> Objects(5000);
  TOrderedDic<int, int> Dic;
  std::vector<std::pair<int, int*>> Model;
  for (int Step = 0; Step < 5000; ++Step) {
    const int Key = test::RandomInt(Random, 0, 400) << 20;  // low bits all alike
    const auto Found = std::find_if(Model.begin(), Model.end(),
                                    [Key](const auto& Pair) { return Pair.first == Key; });
    const bool IsPresent = Found != Model.end();
    ASSERT_EQ(IsPresent, Dic.Contains(Key));
    ASSERT_EQ(IsPresent ? Found->second : nullptr, Dic.Find(Key));
    const bool Grows = Step / 700 % 2 == 0;
    if (!IsPresent && test::RandomInt(Random, 0, 9) < (Grows ? 9 : 1)) {
      int* const Object = &Objects[static_cast<std::size_t>(Step)];
      Dic.Add(Key, Object);
      Model.emplace_back(Key, Object);
    } else if (IsPresent && test::RandomInt(Random, 0, 9) < (Grows ? 2 : 9)) {
      ASSERT_EQ(Found->second, Dic.Remove(Key));
      Model.erase(Found);
    }
    ASSERT_EQ(static_cast<int>(Model.size()), Dic.Count());
    ASSERT_EQ(Model.empty(), Dic.First() == nullptr);
    if (!Model.empty()) {
      ASSERT_EQ(Model.front().first, *Dic.First());
    }
    std::vector<int> Keys;
    for (const auto& [Each, Object] : Model) Keys.push_back(Each);
    ASSERT_EQ(Keys, KeysOf(Dic));
  }
}

TEST(TOrderedDic, RefusesAKeyThatIsPresent) {
  int First = 1;
  int Second = 2;
  TOrderedDic<std::string, int> Dic;
  Dic.Add("key", &First);
  test::ExpectRaises<EParamError>([&] { Dic.Add("key", &Second); },
                                  "[Error] TOrderedDic.Add: duplicate key");
  EXPECT_EQ(&First, Dic.Find("key"));
  EXPECT_EQ(nullptr, Dic.Remove("other"));
  Dic.Remove(*Dic.First());  // a key of its own
  EXPECT_EQ(nullptr, Dic.First());
}

}  // namespace
}  // namespace tarnalgo
