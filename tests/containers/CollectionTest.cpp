#include "containers/Container/Collection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "host/Cadtypes/Point.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

struct TTagged {
  double Value = 0.0;
  int Kind = 0;
  int Unused = 0;  // no operation gives this a meaning

  friend bool operator==(const TTagged& A, const TTagged& B) { return A.Value == B.Value; }
};

struct TPadded {
  double Value = 0.0;
  int Kind = 0;
};
struct TNestedPadding {
  TPadded Inner;
  double Value = 0.0;
};

static_assert(TBytewiseComparable<TTagged> && TBytewiseComparable<TPoint2D> &&
              TBytewiseComparable<double> && TBytewiseComparable<int*>);
static_assert(!TBytewiseComparable<TPadded> && !TBytewiseComparable<TNestedPadding> &&
              !TBytewiseComparable<long double> && !TBytewiseComparable<std::string>);

std::set<int> SetOf(const TCollection<int>& Collection) {
  std::set<int> Result(Collection.begin(), Collection.end());
  EXPECT_EQ(static_cast<int>(Result.size()), Collection.Count());
  return Result;
}

TEST(TCollection, ComparesAllBytes) {
  const double Nan = std::numeric_limits<double>::quiet_NaN();
  TCollection<TTagged> Collection;
  EXPECT_TRUE((TTagged{1.0, 2, 3} == TTagged{1.0, 2, 4}));  // which is not asked
  for (const TTagged& Item :
       std::vector<TTagged>{{1.0, 2, 3}, {1.0, 2, 4}, {0.0, 0, 0}, {-0.0, 0, 0}, {Nan, 0, 0}}) {
    EXPECT_TRUE(Collection.Add(Item));
    EXPECT_FALSE(Collection.Add(Item));
  }
  EXPECT_EQ(5, Collection.Count());
}

// Keys of few values, so that additions, hits, misses and removals mix.
TEST(TCollection, FollowsTheStandardSetThroughRandomEdits) {
  std::mt19937 Random(17);
  for (const int Keys : {1, 5, 60, 3000}) {
    TCollection<int> Collection;
    std::set<int> Model;
    for (int Step = 0; Step < 6000; ++Step) {
      const int Value = test::RandomInt(Random, 0, Keys);
      ASSERT_EQ(Model.count(Value) != 0, Collection.Contains(Value));
      if (test::RandomInt(Random, 0, 2) != 0) {
        ASSERT_EQ(Model.insert(Value).second, Collection.Add(Value));
      } else {
        Collection.Remove(Value);
        Model.erase(Value);
        if (Step % 9 == 0 && Collection.Count() > 0) {
          Model.erase(*Collection.begin());
          Collection.Remove(*Collection.begin());  // given by reference to itself
        }
      }
      ASSERT_EQ(static_cast<int>(Model.size()), Collection.Count());
    }
    EXPECT_EQ(Model, SetOf(Collection));
    Collection.Clear();
    EXPECT_FALSE(Collection.Contains(0));
    EXPECT_TRUE(Collection.Add(0));
  }
}

TEST(TCollection, AlgebraAgreesWithTheStandardSetOperations) {
  std::mt19937 Random(19);
  for (int Round = 0; Round < 300; ++Round) {
    std::set<int> A;
    std::set<int> B;
    for (std::set<int>* Set : {&A, &B}) {
      for (int I = Round % 13; I > 0; --I) Set->insert(test::RandomInt(Random, 0, 15));
    }
    const auto Apply = [&](auto Algorithm) {
      std::set<int> Result;
      Algorithm(A.begin(), A.end(), B.begin(), B.end(), std::inserter(Result, Result.end()));
      return Result;
    };
    const TCollection<int> First(A);
    const TCollection<int> Second(B);
    const auto Check = [&](auto Algorithm, auto Copying, auto InPlace) {
      const std::set<int> Expected = Apply(Algorithm);
      EXPECT_EQ(Expected, SetOf((First.*Copying)(Second)));
      TCollection<int> Clone = First.Clone();
      (Clone.*InPlace)(Second);
      EXPECT_EQ(Expected, SetOf(Clone));
    };
    using TSet = TCollection<int>;
    Check([](auto... X) { std::set_union(X...); }, &TSet::UnionTo, &TSet::Union);
    Check([](auto... X) { std::set_intersection(X...); }, &TSet::IntersectionTo,
          &TSet::Intersection);
    Check([](auto... X) { std::set_difference(X...); }, &TSet::DifferenceTo, &TSet::Difference);
    Check([](auto... X) { std::set_symmetric_difference(X...); }, &TSet::ExclusiveOrTo,
          &TSet::ExclusiveOr);
    EXPECT_EQ(A, SetOf(First));
    EXPECT_EQ(B, SetOf(Second));
  }
}

TEST(TCollection, MayBeBothOperands) {
  const std::vector<int> Items = {1, 2, 3, 4, 5};
  const std::set<int> All(Items.begin(), Items.end());
  const auto WithItself = [&Items](auto Operation) {
    TCollection<int> Collection(Items);
    Operation(Collection);
    return SetOf(Collection);
  };
  EXPECT_EQ(All, WithItself([](auto& C) { C.Union(C); }));
  EXPECT_EQ(All, WithItself([](auto& C) { C.Intersection(C); }));
  EXPECT_EQ(std::set<int>(), WithItself([](auto& C) { C.Difference(C); }));
  EXPECT_EQ(std::set<int>(), WithItself([](auto& C) { C.ExclusiveOr(C); }));
  EXPECT_EQ(All, WithItself([](auto& C) { C.CopyFrom(C, false); }));
  EXPECT_EQ(std::set<int>(), WithItself([](auto& C) { C.CopyFrom(C, true); }));
}

TEST(TCollection, EqualityIgnoresTheOrderButNotTheElementType) {
  const TCollection<int> Up(std::vector<int>{1, 2, 3});
  const auto IsEqual = [&Up](std::vector<int> Items) {
    const TCollection<int> Other(Items);
    return Up.Equals(&Other);
  };
  EXPECT_TRUE(IsEqual({3, 2, 1, 1}));
  EXPECT_FALSE(IsEqual({1, 2, 4}));
  EXPECT_FALSE(IsEqual({1, 2, 3, 4}));
  EXPECT_FALSE(Up.Equals(nullptr));
  const TCollection<unsigned> None;
  EXPECT_FALSE(TCollection<int>().Equals(&None));
}

}  // namespace
}  // namespace tarnalgo
