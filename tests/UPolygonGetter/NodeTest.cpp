#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "geometryAlgo/UPolygonGetter.h"
#include "host/Exceptions.h"

namespace tarnalgo {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::unique_ptr<TMChainExtend> Chain(std::vector<TPoint2D> Points) {
  return std::make_unique<TMChainExtend>(std::move(Points));
}

TEST(TransToInt, TakesRoundedCoordinatesUpToTheGrid) {
  const struct {
    const char* Name;
    TPoint2D P;
    TIntPoint Expected;
  } Cases[] = {
      {"up on both axes", {0.0004, -0.0004}, {1, 0}},
      {"a hair over a grid line counts", {0.00101, 0.00099}, {2, 1}},
      {"less than half of the fifth decimal does not", {0.001004, 0.0010049}, {1, 1}},
      {"the product in doubles, as it falls", {-1.001, 1.0}, {-1000, 1000}},
      {"beyond 32 bits", {3e6, -3e6}, {3000000000, -3000000000}},
      {"beyond the integers, and no number", {1e300, std::nan("")}, {4611686018427387904, 0}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, TransToInt(Case.P));
  }
  EXPECT_EQ(TransToInt({-kInfinity, 0}), TransToInt({-1e300, 0}));
}

// Which grid values come out one too high depends on every single rounding; the count was worked
// out apart from this code.
TEST(TransToInt, FollowsTheRoundingsOfPlainDoubles) {
  int TooHigh = 0;
  for (int K = -200000; K <= 200000; ++K) {
    const auto X = TransToInt({K / 1000.0, 0}).X;
    ASSERT_TRUE(X == K || X == K + 1) << K;
    if (X == K + 1) ++TooHigh;
  }
  EXPECT_EQ(2945, TooHigh);
}

TEST(TransToTVPoint, GoesBackToTheGrid) {
  EXPECT_EQ(TPoint2D(1.5, -0.001), TransToTVPoint({1500, -1}));
}

TEST(TCompareTool, OrdersNodesUpwardsAndLeftwards) {
  EXPECT_EQ(-1, TCompareTool::CompareByYX({9, 1}, {0, 2}));
  EXPECT_EQ(-1, TCompareTool::CompareByYX({9, 1}, {0, 1}));
  EXPECT_EQ(0, TCompareTool::CompareByYX({9, 1}, {9, 1}));
  EXPECT_EQ(1, TCompareTool::CompareByYX({INT64_MIN, 0}, {INT64_MAX, 0}));
}

TEST(TCompareTool, OrdersByExactSigns) {
  EXPECT_EQ(-1, TCompareTool::CompareByValue(INT32_MIN, INT32_MAX));
  EXPECT_EQ(-1, TCompareTool::CompareByParam({1.0, {}}, {std::nextafter(1.0, 2.0), {}}));
  const TMChainExtend East(std::vector<TPoint2D>{{0, 0}, {1, 0}});
  const TMChainExtend North(std::vector<TPoint2D>{{0, 0}, {0, 1}});
  EXPECT_EQ(-1, TCompareTool::CompareByAngleMin(East, North));
  EXPECT_EQ(1, TCompareTool::CompareByAngleMax(East, North));
  EXPECT_EQ(kQuarterTurn, North.Angle());
  TPartPolygon Small;
  Small.Add(std::make_unique<TVPolyline2D>(TVRect2D({0, 0}, {1, 1})));
  EXPECT_EQ(-1, TCompareTool::CompareByPolygonArea(TPartPolygon(), Small));
}

TEST(TMChainExtend, EqualsItselfRunTheOtherWay) {
  const TMChainExtend One(std::vector<TPoint2D>{{0, 0}, {1, 0}, {1, 1}});
  const TMChainExtend Moved(std::vector<TPoint2D>{{0, 9e-7}, {1, 0}, {1, 1}});
  EXPECT_TRUE(One.EqualsTo(*One.CloneReverse()));
  EXPECT_TRUE(One.EqualsTo(*Moved.CloneReverse()));
  EXPECT_FALSE(One.EqualsTo(TMChainExtend(std::vector<TPoint2D>{{0, 0}, {1, 1}})));
  EXPECT_FALSE(One.EqualsTo(TMChainExtend(std::vector<TPoint2D>{{0, 2e-6}, {1, 0}, {1, 1}})));
}

/// A node at the origin with a chain in each direction, listed clockwise from the north.
class TTurn : public testing::Test {
 protected:
  explicit TTurn(int Count = 4) {
    const TPoint2D Ends[] = {{0, 1}, {1, 0}, {0, -1}, {-1, 0}};
    for (int I = 0; I < Count; ++I) Edges.Add(Chain({{0, 0}, Ends[I]}));
  }
  TNodeEdges Edges;
};

TEST_F(TTurn, GoesToTheNeighbourThatIsAvailable) {
  EXPECT_EQ(1, Edges.GetNextChains(Edges[0], false));
  EXPECT_EQ(3, Edges.GetPreChains(Edges[0], false));
  EXPECT_EQ(0, Edges.GetNextChains(Edges[3], false));
  Edges[1]->SetIsAvailable(false);
  EXPECT_EQ(2, Edges.GetNextChains(Edges[0], false));
  TMChainExtend Stranger = *Edges[0];
  EXPECT_EQ(-1, Edges.GetNextChains(&Stranger, true));
  EXPECT_EQ(-1, Edges.GetNextChains(nullptr, true));
}

TEST_F(TTurn, PassesOverTheSameCourseUnlessThereAreTwo) {
  Edges.Insert(1, Edges[0]->CloneReverse());
  EXPECT_EQ(2, Edges.GetNextChains(Edges[0], false));
  while (Edges.Count() > 3) Edges.Delete(3);
  EXPECT_EQ(2, Edges.GetNextChains(Edges[0], false));
  Edges.Delete(2);
  EXPECT_EQ(1, Edges.GetNextChains(Edges[0], false));
}

TEST_F(TTurn, TurnsBackOnlyWhereAllowedAndAvailable) {
  for (TMChainExtend* Item : Edges) Item->SetIsAvailable(false);
  EXPECT_EQ(-1, Edges.GetNextChains(Edges[2], true));
  Edges[2]->SetIsAvailable(true);
  EXPECT_EQ(2, Edges.GetPreChains(Edges[2], true));
  EXPECT_TRUE(Edges[2]->IsAvailable());
  EXPECT_EQ(-1, Edges.GetNextChains(Edges[2], false));
  EXPECT_FALSE(Edges[2]->IsAvailable());
}

TEST_F(TTurn, DeletesByIdentityAndOwnsAgain) {
  const std::unique_ptr<TMChainExtend> Kept(Edges[1]);
  Edges.DeleteReverse(Kept.get(), false);
  Edges.DeleteReverse(Kept.get(), true);  // not in the list any more
  EXPECT_EQ(3, Edges.Count());
  EXPECT_TRUE(Edges.OwnsObjects());
  EXPECT_FALSE(Edges.IsContains(*Kept));
  EXPECT_EQ(1, Edges.IndexofByValue(*Edges[1]->CloneReverse()));
  Edges.DeleteReverse(Edges[0], true);
  EXPECT_EQ(2, Edges.Count());
}

const TIntPoint kOrigin(0, 0);

TEST(TTopoLinks, FindsLoopsBetweenTwoNodes) {
  TTopoLinks Links;
  TMChainExtend* Found = nullptr;
  EXPECT_THROW(Links.AddValue(kOrigin, nullptr), EParamError);
  EXPECT_FALSE(Links.HaveLoop(kOrigin, {1000, 0}, Found));
  Links.AddValue(kOrigin, Chain({{0, 0}, {1, 0}}));
  EXPECT_FALSE(Links.HaveLoop(kOrigin, {1000, 0}, Found));
  EXPECT_EQ(Links[kOrigin]->First(), Found);
  Links.AddValue(kOrigin, Chain({{0, 0}, {0, 1}, {1, 0}}));
  EXPECT_TRUE(Links.HaveLoop(kOrigin, {1000, 0}, Found));
  EXPECT_EQ(Links[kOrigin]->Last(), Found);
  Links.AddValue(kOrigin, std::make_unique<TMChainExtend>());  // leads nowhere
  EXPECT_FALSE(Links.HaveLoop(kOrigin, kOrigin, Found));
  EXPECT_EQ(nullptr, Found);
}

TEST(TTopoLinks, ABridgeMayBeThereInOneObjectOnly) {
  TTopoLinks Links;
  Links.AddValue(kOrigin, Chain({{0, 0}, {1, 0}}));
  Links.AddValue({1000, 0}, Chain({{1, 0}, {2, 0}}));
  const TTopoLinks Bridges = Links.GetBridgeTopo();
  EXPECT_EQ(1, Bridges.Count());
}

TEST(TTopoLinks, TheOtherObjectOfABridgeComesAlongAndIsAvailableThere) {
  TTopoLinks Links;
  Links.AddValue(kOrigin, Chain({{0, 0}, {1, 0}}));
  Links.AddValue({1000, 0}, Chain({{1, 0}, {0, 0}}));
  Links[{1000, 0}]->First()->SetIsAvailable(false);
  const TTopoLinks Bridges = Links.GetBridgeTopo();
  EXPECT_EQ(2, Bridges.Count());
  for (const TNodeEdges* Edges : Bridges.Values()) EXPECT_TRUE(Edges->First()->IsAvailable());
}

TEST(TTopoLinks, AnObjectThatIsNotAvailableDoesNotDangle) {
  TTopoLinks Links;
  Links.AddValue(kOrigin, Chain({{0, 0}, {1, 0}}));
  Links.AddValue({1000, 0}, Chain({{1, 0}, {0, 0}}));
  Links[{1000, 0}]->First()->SetIsAvailable(false);
  EXPECT_EQ(1, Links.GetDanglingTopo().Count());
  EXPECT_FALSE(Links[TIntPoint(1000, 0)]->First()->IsDangling());
}

TEST(TTopoLinks, SortsNodesAndTheirChains) {
  TTopoLinks Links;
  for (const TPoint2D& P : {TPoint2D(0, 0), TPoint2D(2, 0), TPoint2D(1, -1)}) {
    Links.AddValue(TransToInt(P), Chain({P, P + TPoint2D(1, 0)}));
    Links.AddValue(TransToInt(P), Chain({P, P + TPoint2D(0, 1)}));
    Links[TransToInt(P)]->First()->SetIsAvailable(false);
  }
  EXPECT_EQ(TIntPointList({{1000, -1000}, {2000, 0}, {0, 0}}), Links.SortDicIntPoint(false));
  EXPECT_FALSE(Links[kOrigin]->First()->IsAvailable());
  Links.SortDicIntPoint(true);
  EXPECT_TRUE(Links[kOrigin]->First()->IsAvailable());
  Links.SortTopoChainsMax();
  EXPECT_EQ(kQuarterTurn, Links[kOrigin]->First()->Angle());
  Links.SortTopoChainsMin();
  EXPECT_EQ(0.0, Links[kOrigin]->First()->Angle());
}

}  // namespace
}  // namespace tarnalgo
