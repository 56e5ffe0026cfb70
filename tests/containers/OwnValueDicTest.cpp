#include "containers/Container/OwnValueDic.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "host/Cadtypes/Point.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

// Counts how many of its kind are alive.
struct TProbe {
  explicit TProbe(int ATag = 0) : Tag(ATag) { ++Alive; }
  ~TProbe() { --Alive; }
  TProbe(const TProbe&) = delete;
  TProbe& operator=(const TProbe&) = delete;

  int Tag;
  static inline int Alive = 0;
};

TEST(TOwnValueDic, FreesItsValuesAndNoneOfItsKeys) {
  TProbe KeyA;
  TProbe KeyB;
  const int Before = TProbe::Alive;
  {
    TOwnValueDic<TProbe*, TProbe> Dic;
    Dic.Add(&KeyA, std::make_unique<TProbe>());
    Dic.Add(&KeyB, std::make_unique<TProbe>());
    EXPECT_EQ(Before + 2, TProbe::Alive);
    Dic.AddOrSetValue(&KeyA, std::make_unique<TProbe>());
    EXPECT_EQ(Before + 2, TProbe::Alive);
    Dic.Remove(&KeyB);
    Dic.Remove(&KeyB);
    EXPECT_EQ(Before + 1, TProbe::Alive);
    Dic.Clear();
    EXPECT_EQ(Before, TProbe::Alive);
    Dic.Add(&KeyB, std::make_unique<TProbe>());
  }
  EXPECT_EQ(Before, TProbe::Alive);
}

TEST(TOwnValueDic, LeavesARefusedValueWithTheCallerAndKeepsTheVeryObjectThatIsSetAgain) {
  TOwnValueDic<int, TProbe> Dic;
  Dic.Add(1, std::make_unique<TProbe>(10));
  auto Value = std::make_unique<TProbe>(20);
  EXPECT_THROW(Dic.Add(1, std::move(Value)), EParamError);
  ASSERT_NE(nullptr, Value);
  EXPECT_EQ(20, Value->Tag);
  EXPECT_THROW(Dic[2], EParamError);
  TProbe* const Present = Dic[1];
  Dic.AddOrSetValue(1, std::unique_ptr<TProbe>(Present));
  EXPECT_EQ(Present, Dic[1]);
  EXPECT_EQ(10, Present->Tag);
}

TEST(TOwnValueDic, ComparesRecordsWithoutAHashOfTheirOwnByBytes) {
  TOwnValueDic<TPoint2D, int> Dic;
  Dic.Add({1.0, 2.0}, std::make_unique<int>(3));
  EXPECT_TRUE(Dic.ContainsKey({1.0, 2.0}));
  EXPECT_FALSE(Dic.ContainsKey({2.0, 1.0}));
  TOwnValueDic<std::string, int> ByText;
  ByText.Add("a", std::make_unique<int>(1));
  EXPECT_TRUE(ByText.ContainsKey("a"));
}

TEST(TOwnValueDic, FollowsTheStandardMapThroughRandomEdits) {
  std::mt19937 Random(23);
  const int Before = TProbe::Alive;
  TOwnValueDic<int, TProbe> Dic;
  std::map<int, int> Model;
  for (int Step = 0; Step < 8000; ++Step) {
    const int Key = 64 * test::RandomInt(Random, 0, 100);
    TProbe* Value = nullptr;
    ASSERT_EQ(Model.count(Key) != 0, Dic.TryGetValue(Key, Value));
    ASSERT_EQ(Model.count(Key) != 0 ? Model[Key] : -1, Value != nullptr ? Value->Tag : -1);
    switch (test::RandomInt(Random, 0, 3)) {
      case 0:
        Dic.Remove(Key);
        Model.erase(Key);
        break;
      case 1: {
        const auto Extracted = Dic.Extract(Key);
        ASSERT_EQ(Value, Extracted.get());
        Model.erase(Key);
        break;
      }
      default:
        Dic.AddOrSetValue(Key, std::make_unique<TProbe>(Step));
        Model[Key] = Step;
    }
    ASSERT_EQ(static_cast<int>(Model.size()), Dic.Count());
    ASSERT_EQ(Before + Dic.Count(), TProbe::Alive);
  }
  std::size_t At = 0;
  for (const auto& [Key, Value] : Dic) {
    EXPECT_EQ(Model.at(Key), Value->Tag);
    EXPECT_EQ(Key, Dic.Keys()[At]);
    EXPECT_EQ(Value.get(), Dic.Values()[At++]);
  }
}

}  // namespace
}  // namespace tarnalgo
