#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <polyclipping/clipper.hpp>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "geometryAlgo/UPolygonGetter.h"
#include "host/Exceptions.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using TLink = std::pair<int, int>;

TIntPointList BridgesOf(int VertexCount, const std::vector<TLink>& Links) {
  TBridgeTool Tool(VertexCount);
  for (const auto& [U, V] : Links) Tool.AddLink(U, V);
  Tool.CalcBridgeByTarjan();
  return Tool.Bridges();
}

TEST(TBridgeTool, ReportsVertexAndParentInTheOrderOfFinishing) {
  const struct {
    const char* Name;
    int VertexCount;
    std::vector<TLink> Links;
    TIntPointList Expected;
  } Cases[] = {
      {"nothing", 0, {}, {}},
      {"parallel links do not protect each other", 2, {{0, 1}, {0, 1}}, {{1, 0}}},
      {"a link to itself changes nothing", 2, {{0, 0}, {0, 1}, {1, 1}}, {{1, 0}}},
      {"the newest edge is visited first", 3, {{0, 1}, {0, 2}}, {{2, 0}, {1, 0}}},
      {"the end of a path is finished first", 3, {{0, 1}, {1, 2}}, {{2, 1}, {1, 0}}},
      {"a root is the least vertex not yet met", 4, {{3, 1}, {2, 0}}, {{2, 0}, {3, 1}}},
      {"a triangle with a tail", 4, {{0, 1}, {1, 2}, {2, 0}, {2, 3}}, {{3, 2}}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, BridgesOf(Case.VertexCount, Case.Links));
  }
}

TEST(TBridgeTool, RefusesVerticesThatDoNotExist) {
  EXPECT_THROW(TBridgeTool(-1), EParamError);
  TBridgeTool Tool(2);
  EXPECT_THROW(Tool.AddLink(0, 2), EParamError);
  EXPECT_THROW(Tool.AddEdge(-1, 0), EParamError);
  Tool.CalcBridgeByTarjan();
  EXPECT_THAT(Tool.Bridges(), testing::IsEmpty());
}

int ComponentCount(int VertexCount, const std::vector<TLink>& Links, const TLink& Without) {
  std::vector<int> Group(static_cast<std::size_t>(VertexCount));
  for (int I = 0; I < VertexCount; ++I) Group[static_cast<std::size_t>(I)] = I;
  for (const TLink& Link : Links) {
    if (Link == Without) continue;
    const int From = Group[static_cast<std::size_t>(Link.first)];
    const int To = Group[static_cast<std::size_t>(Link.second)];
    std::replace(Group.begin(), Group.end(), From, To);
  }
  return static_cast<int>(std::set<int>(Group.begin(), Group.end()).size());
}

TEST(TBridgeTool, AgreesWithTakingEachPairAway) {
  std::mt19937 Random(61);
  for (int Round = 0; Round < 300; ++Round) {
    const int VertexCount = test::RandomInt(Random, 1, 9);
    std::vector<TLink> Links;
    for (int I = test::RandomInt(Random, 0, 12); I > 0; --I) {
      const int U = test::RandomInt(Random, 0, VertexCount - 1);
      Links.push_back(std::minmax({U, test::RandomInt(Random, 0, VertexCount - 1)}));
    }
    std::set<TLink> Expected;
    const int Whole = ComponentCount(VertexCount, Links, {-1, -1});
    for (const TLink& Link : Links) {
      if (ComponentCount(VertexCount, Links, Link) > Whole) Expected.insert(Link);
    }
    std::set<TLink> Found;
    for (const TIntPoint& Pair : BridgesOf(VertexCount, Links)) {
      Found.insert(std::minmax({static_cast<int>(Pair.X), static_cast<int>(Pair.Y)}));
    }
    EXPECT_EQ(Expected, Found) << "round " << Round;
  }
}

TEST(TBridgeTool, WalksAMillionEdgesInARowWithoutRecursion) {
  constexpr int kCount = 1'000'000;
  TBridgeTool Tool(kCount + 1);
  for (int I = 0; I < kCount; ++I) Tool.AddLink(I, I + 1);
  Tool.CalcBridgeByTarjan();
  EXPECT_EQ(kCount, static_cast<int>(Tool.Bridges().size()));
  Tool.AddLink(kCount, 0);
  Tool.CalcBridgeByTarjan();
  EXPECT_THAT(Tool.Bridges(), testing::IsEmpty());
}

}  // namespace
}  // namespace tarnalgo
