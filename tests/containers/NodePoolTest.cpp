#include "containers/Container/NodePool.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <map>
#include <numeric>
#include <random>
#include <stdexcept>
#include <vector>

#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

struct alignas(64) TNode {
  explicit TNode(int AValue) : Value(AValue) {
    if (AValue < 0) throw std::invalid_argument("negative");
    ++Alive;
  }
  ~TNode() { --Alive; }

  int Value;
  static inline int Alive = 0;
};

TEST(TNodePool, NodesKeepTheirPlaceAndTheirContent) {
  std::mt19937 Random(29);
  TNodePool<TNode> Pool;
  std::map<TNode*, int> Model;
  for (int Step = 0; Step < 30000; ++Step) {
    if (Model.empty() || test::RandomInt(Random, 0, 9) < 6) {
      TNode* const Node = Pool.Create(Step);
      ASSERT_EQ(0u, reinterpret_cast<std::uintptr_t>(Node) % 64);
      ASSERT_TRUE(Model.emplace(Node, Step).second) << "a place in use was given out";
    } else {
      const auto Leaving = Model.begin();
      ASSERT_EQ(Leaving->second, Leaving->first->Value);
      Pool.Destroy(Leaving->first);
      Model.erase(Leaving);
    }
    ASSERT_EQ(static_cast<int>(Model.size()), TNode::Alive);
  }
  TNodePool<TNode> Moved(std::move(Pool));
  Pool.Destroy(Pool.Create(1));
  for (const auto& [Node, Value] : Model) {
    EXPECT_EQ(Value, Node->Value);
    Moved.Destroy(Node);
  }
  EXPECT_EQ(0, TNode::Alive);
}

TEST(TNodePool, AConstructorThatRaisesTakesNoPlace) {
  TNodePool<TNode> Pool;
  TNode* const First = Pool.Create(1);
  EXPECT_THROW(Pool.Create(-1), std::invalid_argument);
  TNode* const Second = Pool.Create(2);
  EXPECT_EQ(First + 1, Second);
  Pool.Destroy(First);
  EXPECT_THROW(Pool.Create(-1), std::invalid_argument);
  EXPECT_EQ(First, Pool.Create(3));
  Pool.Destroy(nullptr);
  Pool.Destroy(First);
  Pool.Destroy(Second);
}

TEST(TNodePool, HoldsNodesLargerThanItsFirstSlab) {
  using TLarge = std::array<int, 5000>;
  TNodePool<TLarge> Pool;
  TLarge* const First = Pool.Create();
  TLarge* const Second = Pool.Create();
  First->fill(1);
  Second->fill(2);
  EXPECT_EQ(5000, std::accumulate(First->begin(), First->end(), 0));
}

}  // namespace
}  // namespace tarnalgo
