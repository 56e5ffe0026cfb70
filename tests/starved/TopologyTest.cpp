#include <polyclipping/clipper.hpp>
#include <vector>

#include "geometryAlgo/UPolygonGetter.h"
#include "tests/starved/Starve.h"

namespace tarnalgo::test {
namespace {

/// Two squares that share an edge, a bridge to a third one, loose ends, a repeat.
TMChainsScatter Drawing() {
  TMChainsScatter Scatter(0.05);
  for (const double X : {0.0, 4.0, 20.0}) {
    Scatter.AddCurve(TVPolyline2D(TVRect2D({X, 0}, {X + 4, 4})));
  }
  Scatter.AddCurve({{8, 2}, {20, 2}});
  Scatter.AddCurve({{2, 4}, {2, 7}, {3, 9}});
  Scatter.AddCurve({{-1, 1}, {9, 1.01}});
  Scatter.AddCurve({{8, 4}, {11, 4.02}});
  Scatter.AddCurve({{8, 2}, {20, 2}});
  return Scatter;
}

struct TTable {
  TTopoLinks Links = TTopoLinks::CreateTopoLink(Drawing().GetChains());
  TPointsOfOutline PointsOf;
  TChainsOfOutline ChainsOf;
  TVPolyline2DList Outlines;

  auto State() const {
    std::string Text;
    for (const auto& [Key, Edges] : Links) {
      for (const TMChainExtend* Chain : *Edges) {
        Text += TextOf(std::tuple(Key, Chain->IsAvailable(), Chain->IsBridge(), Chain->IsDangling(),
                                  Chain->Points()));
      }
    }
    return std::tuple(Text, PointsOf.Count(), ChainsOf.Count(), TextOf(Outlines));
  }
};

TEST(StarvedTopology, NodeTable) {
  const auto Make = [] { return std::make_unique<TTable>(); };
  const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
  const auto Chain = [] {
    return std::make_unique<TMChainExtend>(std::vector<TPoint2D>{{99, 99}, {98, 98}});
  };
  On("CreateTopoLink", [](TTable& T) {
    TMChainExtends Chains(false);
    for (const auto& [Key, Edges] : T.Links) {
      for (TMChainExtend* Item : *Edges) Chains.Add(Item);
    }
    return TTopoLinks::CreateTopoLink(Chains).Count();
  });
  On("AddValue", [&](TTable& T) { T.Links.AddValue({99, 99}, Chain()); });
  On("AddValue", [&](TTable& T) { T.Links.AddBridgeValue(T.Links.Keys()[0], Chain()); });
  On("SortDicIntPoint", [](TTable& T) { return T.Links.SortDicIntPoint(true); });
  Starve(
      "SortTopoChainsMin", Make, [](TTable& T) { T.Links.SortTopoChainsMin(); }, TPromise::Usable);
  On("GetPolygons", [](TTable& T) { T.Links.GetPolygons(T.PointsOf, T.ChainsOf, T.Outlines); });
  On("GetOutPolygons",
     [](TTable& T) { T.Links.GetOutPolygons(T.PointsOf, T.ChainsOf, T.Outlines); });
  On("GetDanglingTopo", [](TTable& T) { return T.Links.GetDanglingTopo(); });
  On("GetBridgeTopo", [](TTable& T) { return T.Links.GetBridgeTopo(); });
  On("groups", [](TTable& T) {
    return std::tuple(T.Links.GetGroupByDic().size(), T.Links.GroupUnlawChains().size(),
                      T.Links.CreateAGroupByCommonNode(T.Links.Keys()[0]).Count());
  });
  On("chains", [](TTable& T) {
    const TNodeEdges* const Edges = T.Links.Values()[0];
    return std::pair(Edges->First()->CloneReverse(), Edges->First()->Clone());
  });
}

TEST(StarvedTopology, Scattering) {
  struct TSubject {
    TMChainsScatter Scatter = Drawing();
    auto State() const { return std::tuple(Scatter.CurveCount(), Scatter.Stats().Cuts); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  Starve("AddCurve", Make, [](TSubject& S) { return S.Scatter.AddCurve({{0, 0}, {3, 3}}); });
  Starve("GetChains", Make, [](TSubject& S) { return S.Scatter.GetChains(); });
}

TEST(StarvedTopology, Bridges) {
  struct TSubject {
    TBridgeTool Tool{12};
    TSubject() {
      for (int I = 0; I + 1 < 8; ++I) Tool.AddLink(I, I + 1);
      Tool.CalcBridgeByTarjan();
    }
    auto State() const { return Tool.Bridges(); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  Starve("AddLink", Make, [](TSubject& S) {
    S.Tool.AddLink(0, 7);
    S.Tool.CalcBridgeByTarjan();
  });
  Starve("AddEdge", Make, [](TSubject& S) { S.Tool.AddEdge(8, 9); });
}

}  // namespace
}  // namespace tarnalgo::test
