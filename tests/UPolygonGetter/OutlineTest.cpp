#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <numeric>
#include <polyclipping/clipper.hpp>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "geometryAlgo/UPolygonGetter.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using testing::ElementsAre;

/// What a tracing gives.
struct TTraced {
  TPointsOfOutline PointsOf;
  TChainsOfOutline ChainsOf;
  TVPolyline2DList Outlines;

  explicit TTraced(TTopoLinks& Links, bool OnlyOutside = false) {
    OnlyOutside ? Links.GetOutPolygons(PointsOf, ChainsOf, Outlines)
                : Links.GetPolygons(PointsOf, ChainsOf, Outlines);
  }
  std::vector<double> Areas() const {
    std::vector<double> Result;
    for (const TVPolyline2D* Outline : Outlines) Result.push_back(Outline->Area());
    return Result;
  }
};

TMChainExtends ChainsOf(const std::vector<std::vector<TPoint2D>>& Courses) {
  TMChainExtends Result;
  for (const auto& Points : Courses) Result.Add(std::make_unique<TMChainExtend>(Points));
  return Result;
}

TTopoLinks LinksOf(const std::vector<std::vector<TPoint2D>>& Courses) {
  return TTopoLinks::CreateTopoLink(ChainsOf(Courses));
}

/// How many chains a table holds, each there with both objects.
int ChainCount(const TTopoLinks& Links) {
  int Count = 0;
  for (const TNodeEdges* Edges : Links.Values()) Count += Edges->Count();
  EXPECT_EQ(0, Count % 2);
  return Count / 2;
}

TEST(GetPolygons, TracesOutlinesByTheTurningRule) {
  const std::vector<TPoint2D> Square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
  const std::vector<TPoint2D> Lower = {{0, 0}, {1, 0}, {1, 1}};
  const std::vector<TPoint2D> Upper = {{1, 1}, {0, 1}, {0, 0}};
  const struct {
    const char* Name;
    std::vector<std::vector<TPoint2D>> Courses;
    std::vector<double> Areas;
  } Cases[] = {
      {"nothing", {}, {}},
      {"one closed chain", {Square}, {1, -1}},
      {"two chains", {Lower, Upper}, {1, -1}},
      {"a face on either side of the diagonal", {Lower, Upper, {{0, 0}, {1, 1}}}, {0.5, 0.5, -1}},
      {"a tree", {{{0, 0}, {1, 0}}, {{1, 0}, {2, 0}}, {{1, 0}, {1, 1}}}, {}},
      {"a dangling tail", {Lower, Upper, {{1, 1}, {2, 2}}, {{2, 2}, {3, 2}}}, {1, -1}},
      {"two outlines joined by a bridge",
       {Square, {{0, 0}, {-3, 0}}, {{-3, 0}, {-4, 0}, {-3, -1}, {-3, 0}}},
       {1, -1, 0.5, -0.5}},
      {"two outlines that share a node",
       {Square, {{0, 0}, {-1, 0}, {0, -1}, {0, 0}}},
       {1, 0.5, -1.5}},
      {"a chain drawn twice", {Lower, Lower, Upper}, {1, -1}},
      {"nothing but a chain drawn twice", {Lower, Lower}, {0, 0}},
      {"a closed chain drawn twice, twice", {Square, Square}, {1, -1, 1, -1}},
      {"a chain of one point", {Lower, {{0, 0}}, Upper}, {1, -1}},
      {"a chain that leads nowhere", {Lower, {{0, 0}, {std::nan(""), 5}}, Upper}, {1, -1}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TTopoLinks Links = LinksOf(Case.Courses);
    const TTraced Traced(Links);
    EXPECT_THAT(Traced.Areas(), testing::UnorderedElementsAreArray(Case.Areas));
    EXPECT_THAT(TTraced(Links).Areas(), testing::IsEmpty());
  }
}

TEST(GetPolygons, RecordsTheNodesAndChainsOfEachOutline) {
  TTopoLinks Links = LinksOf({{{0, 0}, {1, 0}}, {{1, 1}, {1, 0}}, {{0, 0}, {0, 1}, {1, 1}}});
  const TTraced Traced(Links);
  ASSERT_EQ(2, Traced.Outlines.Count());
  // The lowest node comes first, of these the rightmost, and there the chain to the west.
  const TVPolyline2D* Outside = Traced.Outlines[0];
  EXPECT_EQ(std::vector<TPoint2D>({{1, 0}, {0, 0}, {0, 1}, {1, 1}, {1, 0}}), Outside->Points());
  EXPECT_EQ(TIntPointList({{1000, 0}, {0, 0}, {1000, 1000}}), *Traced.PointsOf[Outside]);
  ASSERT_EQ(3, Traced.ChainsOf[Outside]->Count());
  EXPECT_EQ(Links[TIntPoint(1000, 0)]->First(), Traced.ChainsOf[Outside]->First());
  EXPECT_FALSE(Traced.ChainsOf[Outside]->OwnsObjects());
}

// No object reverses another one exactly, and each is within the tolerance of all.
TEST(GetPolygons, PairsObjectsThatWereWorkedOutTwice) {
  TTopoLinks Links;
  for (const double X : {0.3, 0.3 + 1e-7, 0.3 + 2e-7, 0.3 + 3e-7}) {
    TMChainExtend Chain(std::vector<TPoint2D>{{0, 0}, {X, 0.5}, {0, 1}});
    if (X > 0.3 + 1.5e-7) {
      Links.AddValue({0, 1000}, Chain.CloneReverse());
    } else {
      Links.AddValue({0, 0}, Chain.Clone());
    }
  }
  EXPECT_EQ(2, TTraced(Links).Outlines.Count());  // there by one repeat, back by the other
}

// It has no other object, and is its own reverse.
TEST(GetPolygons, TakesALoneChainThatReadsTheSameBothWays) {
  TTopoLinks Links;
  Links.AddValue({0, 0}, TMChainExtend(std::vector<TPoint2D>{{0, 0}, {1, 0}, {0, 0}}).Clone());
  EXPECT_THAT(TTraced(Links).Areas(), ElementsAre(0.0));
}

TEST(GetPolygons, FillsDictionariesThatOutlivedTheirOutlines) {
  TPointsOfOutline PointsOf;
  TChainsOfOutline ChainsOf;
  for (int Round = 0; Round < 20; ++Round) {
    TTopoLinks Links = LinksOf({{{0, 0}, {1, 0}, {1, 1}, {0, 0}}});
    TVPolyline2DList Outlines;  // the next ones may get the same addresses
    ASSERT_NO_THROW(Links.GetPolygons(PointsOf, ChainsOf, Outlines));
    EXPECT_EQ(Links[TIntPoint(0, 0)]->Last(), ChainsOf[Outlines.Last()]->First());
  }
}

TEST(GetPolygons, StartsOnlyWhereTheNodeFlagIsSet) {
  TTopoLinks Links = LinksOf({{{0, 0}, {1, 0}}, {{1, 0}, {0, 1}, {0, 0}}});
  for (TNodeEdges* Edges : Links.Values()) Edges->SetNodeFlag(false);
  EXPECT_THAT(TTraced(Links).Areas(), testing::IsEmpty());
  Links[TIntPoint(0, 0)]->SetNodeFlag(true);
  EXPECT_EQ(2, TTraced(Links).Outlines.Count());
}

/// A planar graph: some of the sides and diagonals of a grid with its vertices pushed about.
struct TPlanarGraph {
  using TEdge = std::pair<int, int>;

  std::vector<TPoint2D> Places;
  std::vector<TEdge> Edges;

  TPlanarGraph(std::mt19937& Random, int Side, double Density) {
    for (int I = 0; I < Side * Side; ++I) {
      Places.push_back(TPoint2D(I % Side, I / Side) + test::RandomPoint(Random, -0.2, 0.2));
    }
    const auto TryAdd = [&](int U, int V) {
      if (test::RandomDouble(Random, 0, 1) < Density) Edges.emplace_back(U, V);
    };
    for (int I = 0; I < Side * Side; ++I) {
      const bool HasRight = I % Side + 1 < Side;
      const bool HasUp = I + Side < Side * Side;
      if (HasRight) TryAdd(I, I + 1);
      if (HasUp) TryAdd(I + Side, I);
      if (HasRight && HasUp) TryAdd(I, I + Side + 1);
    }
    std::shuffle(Edges.begin(), Edges.end(), Random);
  }

  TTopoLinks Links() const {
    std::vector<std::vector<TPoint2D>> Courses;
    for (const auto& [U, V] : Edges) {
      const TPoint2D& P = Place(U);
      const TPoint2D& Q = Place(V);
      Courses.push_back(U % 2 ? std::vector{P, Q} : std::vector{P, Lerp(P, Q, 0.5), Q});
    }
    return LinksOf(Courses);
  }
  const TPoint2D& Place(int V) const { return Places[static_cast<std::size_t>(V)]; }

  /// Components with an edge among these edges, and vertices on them.
  static std::pair<int, int> Measure(const std::vector<TEdge>& Some) {
    std::map<int, int> Group;
    for (const auto& [U, V] : Some) Group[U] = U, Group[V] = V;
    for (const auto& [U, V] : Some) {
      for (auto& [Vertex, Id] : Group) {
        if (Vertex != U && Id == Group[U]) Id = Group[V];
      }
      Group[U] = Group[V];
    }
    std::set<int> Ids;
    for (const auto& [Vertex, Id] : Group) Ids.insert(Id);
    return {static_cast<int>(Ids.size()), static_cast<int>(Group.size())};
  }
  static std::vector<TEdge> Without(std::vector<TEdge> Some, const TEdge& Edge) {
    std::erase(Some, Edge);
    return Some;
  }
  /// The edges whose two ends stay connected without them.
  std::vector<TEdge> EdgesOnCycles() const {
    const auto [Components, Vertices] = Measure(Edges);
    std::vector<TEdge> Result;
    for (const TEdge& Edge : Edges) {
      const auto [Rest, RestVertices] = Measure(Without(Edges, Edge));
      if (Rest - RestVertices == Components - Vertices) Result.push_back(Edge);
    }
    return Result;
  }
  int DanglingCount() const {
    std::vector<TEdge> Rest = Edges;
    for (bool Found = true; Found;) {
      std::map<int, int> Degrees;
      for (const auto& [U, V] : Rest) ++Degrees[U], ++Degrees[V];
      Found = std::erase_if(Rest, [&](const TEdge& Edge) {
                return Degrees[Edge.first] == 1 || Degrees[Edge.second] == 1;
              }) > 0;
    }
    return static_cast<int>(Edges.size() - Rest.size());
  }
};

/// Every object of every outline once, each outline a closed walk.
void ExpectClosedWalks(const TTraced& Traced, int ObjectCount) {
  std::set<const TMChainExtend*> Objects;
  int Count = 0;
  for (const auto& [Outline, Chains] : Traced.ChainsOf) {
    const TIntPointList& Nodes = *Traced.PointsOf[Outline];
    ASSERT_EQ(static_cast<int>(Nodes.size()), Chains->Count());
    for (int I = 0; I < Chains->Count(); ++I) {
      EXPECT_EQ(Nodes[static_cast<std::size_t>(I)], TransToInt((*Chains)[I]->First()));
      const std::size_t Next = static_cast<std::size_t>(I + 1) % Nodes.size();
      EXPECT_EQ(Nodes[Next], TransToInt((*Chains)[I]->Last()));
      Objects.insert((*Chains)[I]);
      ++Count;
    }
    EXPECT_EQ(Outline->First(), Outline->Last());
  }
  EXPECT_EQ(ObjectCount, Count);
  EXPECT_EQ(ObjectCount, static_cast<int>(Objects.size()));
}

TEST(GetPolygons, SatisfiesEulersFormulaOnPlanarGraphs) {
  std::mt19937 Random(6161);
  for (int Round = 0; Round < 150; ++Round) {
    SCOPED_TRACE(Round);
    const TPlanarGraph Graph(Random, 5, test::RandomDouble(Random, 0.2, 1.0));
    const std::vector<TPlanarGraph::TEdge> OnCycles = Graph.EdgesOnCycles();
    const auto [Components, Vertices] = TPlanarGraph::Measure(OnCycles);
    const int EdgeCount = static_cast<int>(OnCycles.size());
    for (const bool SetApart : {false, true}) {
      TTopoLinks Links = Graph.Links();
      if (SetApart) {
        const int Dangling = ChainCount(Links.GetDanglingTopo());
        EXPECT_EQ(Graph.DanglingCount(), Dangling);
        const int Others = static_cast<int>(Graph.Edges.size()) - Dangling;
        EXPECT_EQ(Others - EdgeCount, ChainCount(Links.GetBridgeTopo()));
      }
      const TTraced Traced(Links);
      EXPECT_EQ(EdgeCount - Vertices + 2 * Components, Traced.Outlines.Count());
      ExpectClosedWalks(Traced, 2 * EdgeCount);
      const std::vector<double> Areas = Traced.Areas();
      EXPECT_EQ(Components,
                std::count_if(Areas.begin(), Areas.end(), [](double Area) { return Area < 0.0; }));
      EXPECT_NEAR(0.0, std::accumulate(Areas.begin(), Areas.end(), 0.0), 1e-12);
      Links.SortDicIntPoint(true);
      EXPECT_EQ(Components, TTraced(Links, true).Outlines.Count());
    }
  }
}

TEST(TTopoLinks, GroupsWhatHangsTogether) {
  const std::vector<TPoint2D> Square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
  TTopoLinks Links = LinksOf({Square,
                              {{0, 0}, {-1, 0}},
                              {{-1, 0}, {-2, 1}},
                              {{9, 9}, {8, 8}},
                              {{0, 0}, {0, -3}},
                              {{0, -3}, {1, -4}, {-1, -4}, {0, -3}}});
  const auto Counts = [](const std::vector<TMChainExtends>& Groups) {
    std::vector<int> Result;
    for (const TMChainExtends& Group : Groups) Result.push_back(Group.Count());
    return Result;
  };
  EXPECT_THAT(Counts(Links.GetGroupByDic()), ElementsAre(5, 1));
  EXPECT_EQ(5, Links.CreateAGroupByCommonNode(TIntPoint(-2000, 1000)).Count());
  EXPECT_TRUE(Links.CreateAGroupByCommonNode(TIntPoint(5, 5)).IsEmpty());
  EXPECT_THAT(Links.GroupUnlawChains(), testing::IsEmpty());
  Links.GetDanglingTopo();
  Links.GetBridgeTopo();
  EXPECT_THAT(Counts(Links.GroupUnlawChains()), ElementsAre(3, 1));
}

TEST(TTopoLinks, EndsOnTablesThatBreakTheRules) {
  const double Infinity = std::numeric_limits<double>::infinity();
  TMChainExtends Chains = ChainsOf({{{std::nan(""), 0}, {1, 0}},
                                    {{Infinity, 0}, {0, Infinity}},
                                    {{1e300, 1e300}, {-1e300, 0}, {1e300, 1e300}},
                                    {{0, 0}, {1, 0}, {1, 1}, {0, 0}},
                                    {{0, 0}, {0, 0}},
                                    {{2, 2}},
                                    {}});
  TTopoLinks Links;
  for (int Copy = 0; Copy < 3; ++Copy) {
    for (const TMChainExtend* Chain : Chains) Links.AddValue({Copy % 2, 0}, Chain->Clone());
    for (const TMChainExtend* Chain : Chains) {
      if (!Chain->IsEmpty()) Links.AddValue(TransToInt(Chain->First()), Chain->Clone());
    }
    TTraced Traced(Links);
    Links.SortDicIntPoint(true);
    Links.GetDanglingTopo();
    Links.GetBridgeTopo();
    Links.GroupUnlawChains();
  }
}

TEST(GetPolygons, TakesOneChainDrawnVeryOften) {
  TTopoLinks Links = LinksOf(std::vector(30000, std::vector<TPoint2D>{{0, 0}, {1, 0}}));
  EXPECT_THAT(TTraced(Links).Areas(), testing::IsEmpty());
}

}  // namespace
}  // namespace tarnalgo
