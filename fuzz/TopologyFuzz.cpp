// A drawing of segments and arcs cut into chains: chains meet at nodes only and cover what was
// drawn; loose ends and bridges against a search that takes chain by chain away; outlines against
// Euler's formula, areas and rays.

#include <algorithm>
#include <cmath>
#include <map>
#include <polyclipping/clipper.hpp>
#include <set>
#include <utility>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/PlainGraph.h"
#include "fuzz/Ring.h"
#include "geometryAlgo/UPolygonGetter.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using fuzz::TPlainGraph;
using fuzz::TRing;

TPlainGraph GraphOf(const TMChainExtends& Chains) {
  std::map<std::pair<ClipperLib::cInt, ClipperLib::cInt>, int> Numbers;
  const auto NodeOf = [&](const TPoint2D& P) {
    const TIntPoint Key = TransToInt(P);
    return Numbers.try_emplace({Key.X, Key.Y}, static_cast<int>(Numbers.size())).first->second;
  };
  TPlainGraph Graph;
  for (const TMChainExtend* Chain : Chains) {
    const int From = NodeOf(Chain->First());
    Graph.Edges.emplace_back(From, NodeOf(Chain->Last()));
  }
  Graph.NodeCount = static_cast<int>(Numbers.size());
  Graph.IsGone.assign(Graph.Edges.size(), false);
  return Graph;
}

int ChainCount(const TTopoLinks& Links) {
  int Count = 0;
  for (const TNodeEdges* Edges : Links.Values()) Count += Edges->Count();
  Require(Count % 2 == 0, "each chain is there with both objects");
  return Count / 2;
}

TVPolyline2D MakeCurve(TBytes& Bytes) {
  const TPoint2D From = Bytes.GridPoint(8);
  switch (Bytes.Below(4)) {
    case 0:
      return TVArc2D(From, 0.5 * (1 + Bytes.Below(6)), kQuarterTurn * Bytes.Below(4),
                     kQuarterTurn * (1 + Bytes.Below(4)))
          .SampleToPolyline(0.05);
    case 1:
      return TVPolyline2D{From, Bytes.GridPoint(8), Bytes.GridPoint(8)};
    default:
      return TVPolyline2D{From, Bytes.GridPoint(8)};
  }
}

/// Chains lie on what was drawn, cover it, and cross nowhere.
void CheckChains(const std::vector<TVPolyline2D>& Drawn, const TMChainExtends& Chains) {
  std::vector<TRing> Rings;
  for (const TMChainExtend* Chain : Chains) Rings.push_back(TRing(TLABPolyline(*Chain)));
  for (std::size_t I = 0; I < Rings.size(); ++I) {
    const TMChainExtend& Chain = *Chains[static_cast<int>(I)];
    const TVPolyline2D& Curve = Drawn[static_cast<std::size_t>(Chain.Source().Curve)];
    for (const TPoint2D& P : Chain) {
      Require(Curve.DistTo(P) <= 2 * kNodeReach, "a chain lies on its curve");
    }
    for (std::size_t J = 0; J < I; ++J) {
      fuzz::VisitSureCrossings(Rings[I], Rings[J], [](const TVLine2D&, const TVLine2D&) {
        Require(false, "chains meet at their ends only");
      });
    }
  }
  for (const TVPolyline2D& Curve : Drawn) {
    for (int I = 1; I < Curve.Count(); ++I) {
      const TPoint2D P = Curve.Line(I - 1).EvalPoint(0.4);
      double Least = Curve.TotalLength() <= 2 * kNodeReach ? 0.0 : kStartOfMinimum;
      for (const TMChainExtend* Chain : Chains) Least = std::min(Least, Chain->DistTo(P));
      Require(Least <= 2 * kNodeReach, "what was drawn is on a chain");
    }
  }
}

void CheckOutlines(TTopoLinks& Links, const TPlainGraph& Graph, const TPoint2D& P) {
  TPointsOfOutline PointsOf;
  TChainsOfOutline ChainsOf;
  TVPolyline2DList Outlines;
  Links.GetPolygons(PointsOf, ChainsOf, Outlines);
  Require(Outlines.Count() == Graph.FaceCount(), "as many outlines as Euler has faces");
  std::set<const TMChainExtend*> Walked;
  double Area = 0.0;
  double Perimeter = 0.0;
  double Least = kStartOfMinimum;
  int Around = 0;
  for (const TVPolyline2D* Outline : Outlines) {
    const TRing Ring(*Outline);
    for (const TMChainExtend* Chain : *ChainsOf[Outline]) {
      Require(Walked.insert(Chain).second, "each way of a chain is walked once");
    }
    Require(Outline->IsClosed(), "an outline is closed");
    Area += Outline->Area();
    Perimeter += Ring.Length();
    Least = std::min(Least, Ring.DistanceTo(P));
    if (Ring.Holds(P)) Around += Outline->Area() > 0.0 ? 1 : -1;
  }
  const auto Left = std::count(Graph.IsGone.begin(), Graph.IsGone.end(), false);
  Require(Walked.size() == 2 * static_cast<std::size_t>(Left), "every chain is walked both ways");
  Require(std::abs(Area) <= kNodeReach * (1.0 + Perimeter), "inside and outside cancel");
  Require(Around == 0 || Least <= 2 * kNodeReach,
          "a place within an outside lies in one face of it");
}

/// The graph by itself, every link there once.
void CheckBridgeTool(TBytes& Bytes) {
  const int Count = 1 + Bytes.Below(12);
  TBridgeTool Tool(Count);
  TPlainGraph Graph;
  Graph.NodeCount = Count;
  std::set<std::pair<int, int>> Links;
  for (int I = Bytes.Below(24); I > 0; --I) {
    const int From = Bytes.Below(Count);
    const int To = Bytes.Below(Count);
    Tool.AddLink(From, To);
    if (From != To) Links.insert(std::minmax(From, To));
  }
  Graph.Edges.assign(Links.begin(), Links.end());
  Graph.IsGone.assign(Links.size(), false);
  Graph.DropBridges();
  std::set<std::pair<int, int>> Expected;
  for (std::size_t I = 0; I < Graph.Edges.size(); ++I) {
    if (Graph.IsGone[I]) Expected.insert(Graph.Edges[I]);
  }
  Tool.CalcBridgeByTarjan();
  std::set<std::pair<int, int>> Found;
  for (const TIntPoint& Bridge : Tool.Bridges()) {
    const auto [Low, High] = std::minmax({static_cast<int>(Bridge.X), static_cast<int>(Bridge.Y)});
    Require(Found.emplace(Low, High).second, "each bridge once");
  }
  Require(Found == Expected, "the bridges are those without which the graph falls apart");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  if (Bytes.Below(8) == 0) {
    CheckBridgeTool(Bytes);
    return 0;
  }
  const TPoint2D P(Bytes.Byte() / 30.0, Bytes.Byte() / 30.0);
  TMChainsScatter Scatter;
  std::vector<TVPolyline2D> Drawn;
  for (int Count = Bytes.Below(16); Count > 0; --Count) {
    Drawn.push_back(MakeCurve(Bytes));
    Scatter.AddCurve(Drawn.back());
  }
  const TMChainExtends Chains = Scatter.GetChains();
  CheckChains(Drawn, Chains);
  TPlainGraph Graph = GraphOf(Chains);
  TTopoLinks Links = TTopoLinks::CreateTopoLink(Chains);
  Require(Links.Count() == Graph.NodeCount, "a node for each place where chains end");
  Require(ChainCount(Links) == Chains.Count(), "every chain is registered");
  Require(ChainCount(Links.GetDanglingTopo()) == Graph.DropDangling(), "the loose ends");
  Require(ChainCount(Links.GetBridgeTopo()) == Graph.DropBridges(), "the bridges");
  CheckOutlines(Links, Graph, P);
  return 0;
}
