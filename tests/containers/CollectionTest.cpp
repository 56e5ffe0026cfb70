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
  EXPECT_TRUE(Collection.Add({1.0, 2, 3}));
  EXPECT_FALSE(Collection.Add({1.0, 2, 3}));
  EXPECT_EQ(1, Collection.Count());
  EXPECT_EQ((TTagged{1.0, 2, 3}), (TTagged{1.0, 2, 4}));
  EXPECT_TRUE(Collection.Add({1.0, 2, 4}));  // and yet another item
  EXPECT_TRUE(Collection.Add({0.0, 0, 0}));
  EXPECT_TRUE(Collection.Add({-0.0, 0, 0}));
  EXPECT_TRUE(Collection.Add({Nan, 0, 0}));
  EXPECT_FALSE(Collection.Add({Nan, 0, 0}));
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
      }
      ASSERT_EQ(static_cast<int>(Model.size()), Collection.Count());
    }
    EXPECT_EQ(Model, SetOf(Collection));
    Collection.Clear();
    EXPECT_FALSE(Collection.Contains(0));
    EXPECT_TRUE(Collection.Add(0));
  }
}

TEST(TCollection, SurvivesTheRemovalOfAnElementGivenByReferenceToItself) {
  TCollection<int> Collection(std::vector<int>{1, 2, 3});
  Collection.Remove(*Collection.begin());
  EXPECT_EQ((std::set<int>{2, 3}), SetOf(Collection));
  EXPECT_FALSE(Collection.Contains(1));
}

TEST(TCollection, AlgebraAgreesWithTheStandardSetOperations) {
  std::mt19937 Random(19);
  for (int Round = 0; Round < 300; ++Round) {
    std::set<int> A;
    std::set<int> B;
    for (int I = test::RandomInt(Random, 0, 12); I > 0; --I)
      A.insert(test::RandomInt(Random, 0, 15));
    for (int I = test::RandomInt(Random, 0, 12); I > 0; --I)
      B.insert(test::RandomInt(Random, 0, 15));
    const auto Apply = [&](auto Algorithm) {
      std::set<int> Result;
      Algorithm(A.begin(), A.end(), B.begin(), B.end(), std::inserter(Result, Result.end()));
      return Result;
    };
    const std::set<int> Union = Apply([](auto... X) { std::set_union(X...); });
    const std::set<int> Common = Apply([](auto... X) { std::set_intersection(X...); });
    const std::set<int> Rest = Apply([](auto... X) { std::set_difference(X...); });
    const std::set<int> Either = Apply([](auto... X) { std::set_symmetric_difference(X...); });

    const TCollection<int> First(A);
    const TCollection<int> Second(B);
    EXPECT_EQ(Union, SetOf(First.UnionTo(Second)));
    EXPECT_EQ(Common, SetOf(First.IntersectionTo(Second)));
    EXPECT_EQ(Rest, SetOf(First.DifferenceTo(Second)));
    EXPECT_EQ(Either, SetOf(First.ExclusiveOrTo(Second)));
    EXPECT_EQ(A, SetOf(First));
    EXPECT_EQ(B, SetOf(Second));

    const auto InPlace = [&First, &Second](auto Operation) {
      TCollection<int> Copy = First.Clone();
      (Copy.*Operation)(Second);
      return SetOf(Copy);
    };
    EXPECT_EQ(Union, InPlace(&TCollection<int>::Union));
    EXPECT_EQ(Common, InPlace(&TCollection<int>::Intersection));
    EXPECT_EQ(Rest, InPlace(&TCollection<int>::Difference));
    EXPECT_EQ(Either, InPlace(&TCollection<int>::ExclusiveOr));
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
  const TCollection<int> Down(std::vector<int>{3, 2, 1, 1});
  EXPECT_TRUE(Up.Equals(&Down));
  EXPECT_TRUE(Up.Equals(&Up));
  EXPECT_FALSE(Up.Equals(nullptr));
  const TCollection<int> SameCount(std::vector<int>{1, 2, 4});
  EXPECT_FALSE(Up.Equals(&SameCount));
  const TCollection<int> More(std::vector<int>{1, 2, 3, 4});
  EXPECT_FALSE(Up.Equals(&More));
  const TCollection<unsigned> Unsigned(std::vector<unsigned>{1, 2, 3});
  EXPECT_FALSE(Up.Equals(&Unsigned));
  const TCollection<double> NoReals;
  EXPECT_FALSE(TCollection<int>().Equals(&NoReals));
}

TEST(TCollection, EnumeratesByHistoryAlone) {
  TCollection<int> Collection;
  for (int I = 0; I < 100; ++I) Collection.Add(I * 7919);
  int Expected = 0;
  for (const int Value : Collection) EXPECT_EQ(7919 * Expected++, Value);
}

// Coordinates on a grid differ in few bits, and these are high ones.
TEST(TCollection, HoldsAGridOfPoints) {
  TCollection<TPoint2D> Collection;
  for (int Pass = 0; Pass < 2; ++Pass) {
    for (int X = 0; X < 300; ++X) {
      for (int Y = 0; Y < 300; ++Y) {
        ASSERT_EQ(Pass == 0, Collection.Add({1024.0 * X, 1024.0 * Y}));
      }
    }
  }
  EXPECT_EQ(90000, Collection.Count());
}

}  // namespace
}  // namespace tarnalgo
