#include "geometryAlgo/UPolygonGetter/ChainsScatter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <tuple>
#include <utility>

#include "geometryAlgo/SweepLine.h"
#include "geometryAlgo/UPolygonGetter/CompareTool.h"
#include "geometryAlgo/UPolygonGetter/EndSnapper.h"
#include "geometryAlgo/UPolygonGetter/TopoGraph.h"
#include "geometryAlgo/VedaType/PlaceIndex.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

std::size_t Slot(int I) {
  return static_cast<std::size_t>(I);
}

/// One run over the curves.
class TScatterer {
 public:
  TScatterer(const std::vector<std::vector<TPoint2D>>& Curves, double Gap, TScatterStats& Stats)
      : FGap(Gap), FStats(Stats), FNodes(kNodeReach) {
    for (int I = 0; I < static_cast<int>(Curves.size()); ++I) {
      const std::vector<TPoint2D>& Points = Curves[Slot(I)];
      const bool IsSound =
          Points.size() > 1 && std::all_of(Points.begin(), Points.end(), TPoint2DUtils::IsFinite);
      FCurves.push_back({I, IsSound ? Points : std::vector<TPoint2D>(), {}, {}});
      std::vector<double>& Params = FCurves.back().Params;
      Params.resize(FCurves.back().Points.size());
      std::iota(Params.begin(), Params.end(), 0.0);
    }
  }

  TMChainExtends Run() {
    FStats = {};
    FStats.EndsMoved = TEndSnapper(FCurves, FGap).Run();
    // Moving ends to a common node can make chains cross that were apart by less.
    for (int Round = 0; Round < kMostRounds && FMustCut; ++Round) {
      CutAtMeetings();
      MakeNodes();  // every end of a chain to be has its node
      MakeChains();
    }
    DropRepeats();
    DropStubs();
    TMChainExtends Result;
    Result.Reserve(static_cast<int>(FChains.size()));
    for (TChain& Chain : FChains) Result.Add(std::move(Chain.Chain));
    return Result;
  }

 private:
  static constexpr int kMostRounds = 8;

  struct TChain {
    std::unique_ptr<TMChainExtend> Chain;
    int From;
    int To;
  };
  struct TEdge {
    int Curve;
    int Edge;
    bool IsForward;
  };

  /// Edges of the curves that are one segment, drawn again in whatever direction.
  struct TSegment {
    TVLine2D Line;  // from the end that comes first by X, then Y
    std::vector<TEdge> Edges;
  };

  void CutAtMeetings() {
    const std::vector<TSegment> Segments = FindSegments();
    std::vector<TVLine2D> Lines;
    Lines.reserve(Segments.size());
    for (const TSegment& Segment : Segments) {
      Lines.push_back(Segment.Line);
      if (Segment.Edges.size() == 1) continue;
      AddCut(Segment, 0.0, Segment.Line.StartPoint);
      AddCut(Segment, 1.0, Segment.Line.EndPoint);
    }
    for (const TSeglineIntersectInfo& Info : TSeglinesIntersector::GetIntersectInfosBySweepline(
             Lines, kLinearTolerance, kLinearTolerance)) {
      const TSegment& Lower = Segments[Slot(Info.LowerSegment)];
      const TSegment& Higher = Segments[Slot(Info.HigherSegment)];
      if (!Info.Flag && IsJointOf(Lower, Higher, Info.FirstPoint)) continue;
      AddCut(Lower, Info.LowerParam1, Info.FirstPoint);
      AddCut(Higher, Info.HigherParam1, Info.FirstPoint);
      if (!Info.Flag) continue;
      AddCut(Lower, Info.LowerParam2, Info.SecondPoint);
      AddCut(Higher, Info.HigherParam2, Info.SecondPoint);
    }
  }

  /// Each segment once: the pairs among many repeats would be too many.
  std::vector<TSegment> FindSegments() const {
    std::vector<std::pair<TVLine2D, TEdge>> Edges;
    for (int C = 0; C < static_cast<int>(FCurves.size()); ++C) {
      for (int I = 0; I < FCurves[Slot(C)].EdgeCount(); ++I) {
        const TPoint2D& P = FCurves[Slot(C)].Points[Slot(I)];
        const TPoint2D& Q = FCurves[Slot(C)].Points[Slot(I) + 1];
        const int Order = TPoint2DUtils::CompareByXY(P, Q);
        if (Order == 0) continue;
        Edges.push_back({Order < 0 ? TVLine2D(P, Q) : TVLine2D(Q, P), {C, I, Order < 0}});
      }
    }
    const auto Compare = [](const auto& A, const auto& B) {
      const int Sign = TPoint2DUtils::CompareByXY(A.first.StartPoint, B.first.StartPoint);
      return Sign ? Sign : TPoint2DUtils::CompareByXY(A.first.EndPoint, B.first.EndPoint);
    };
    std::stable_sort(Edges.begin(), Edges.end(),
                     [&](const auto& A, const auto& B) { return Compare(A, B) < 0; });
    std::vector<TSegment> Segments;
    for (std::size_t I = 0; I < Edges.size(); ++I) {
      if (I == 0 || Compare(Edges[I - 1], Edges[I]) != 0) Segments.push_back({Edges[I].first, {}});
      Segments.back().Edges.push_back(Edges[I].second);
    }
    return Segments;
  }

  /// Edges that follow each other on a curve have their vertex in common, which cuts nothing unless
  /// the curve goes back along itself there.
  bool IsJointOf(const TSegment& One, const TSegment& Other, const TPoint2D& P) const {
    const TEdge& A = One.Edges.front();
    const TEdge& B = Other.Edges.front();
    if (One.Edges.size() > 1 || Other.Edges.size() > 1 || A.Curve != B.Curve) return false;
    const TScatterCurve& Curve = FCurves[Slot(A.Curve)];
    const auto [First, Second] = std::minmax(A.Edge, B.Edge);
    if (Second == First + 1) return P.Equals(Curve.Points[Slot(Second)], kNodeReach);
    const bool IsRound = First == 0 && Second + 1 == Curve.EdgeCount() && Curve.IsClosed();
    return IsRound && P.Equals(Curve.Points.front(), kNodeReach);
  }

  void AddCut(const TSegment& Segment, double Param, const TPoint2D& P) {
    for (const TEdge& Edge : Segment.Edges) {
      const double OnEdge = Edge.IsForward ? Param : 1.0 - Param;
      FCurves[Slot(Edge.Curve)].Cuts.push_back({Edge.Edge + OnEdge, P});
    }
  }

  /// The ends of curves come first: where ends and crossings fall together, the end stays.
  void MakeNodes() {
    for (const TScatterCurve& Curve : FCurves) {
      if (Curve.Points.empty()) continue;
      NodeAt(Curve.Points.front());
      NodeAt(Curve.Points.back());
    }
    for (TScatterCurve& Curve : FCurves) {
      std::stable_sort(Curve.Cuts.begin(), Curve.Cuts.end(),
                       [](const TCutNode& A, const TCutNode& B) {
                         return TCompareTool::CompareByParam(A, B) < 0;
                       });
      for (const TCutNode& Cut : Curve.Cuts) NodeAt(Cut.Point);
    }
  }

  /// The node within `kNodeReach` of `P` that was there first, a new one when there is none. So
  /// nodes are farther apart than a cell of the grid of `TransToInt` is wide across.
  int NodeAt(const TPoint2D& P) {
    int Node = -1;
    FNodes.VisitNear(P, [&](int Id, const TPoint2D&) {
      if (Node < 0 || Id < Node) Node = Id;
      return false;
    });
    if (Node >= 0) return Node;
    Node = static_cast<int>(FPlaces.size());
    FPlaces.push_back(P);
    FNodes.Add(P, Node);
    return Node;
  }

  /// The curves become their chains.
  void MakeChains() {
    FMustCut = false;
    std::vector<TScatterCurve> Chains;
    for (const TScatterCurve& Curve : FCurves) CutApart(Curve, Chains);
    FCurves = std::move(Chains);
  }

  void CutApart(const TScatterCurve& Curve, std::vector<TScatterCurve>& Chains) {
    if (Curve.Points.empty()) return;
    const std::size_t Before = Chains.size();
    const double End = Curve.EdgeCount();
    TCutNode From{0.0, Curve.Points.front()};
    const auto GoTo = [&](const TCutNode& To) {
      TScatterCurve Chain = Stretch(Curve, From, To);
      if (Chain.Points.size() < 2) return;
      Chains.push_back(std::move(Chain));
      From = To;
    };
    for (const TCutNode& Cut : Curve.Cuts) {
      if (Cut.Param > 0.0 && Cut.Param < End) GoTo(Cut);
    }
    GoTo({End, Curve.Points.back()});
    const auto Made = static_cast<int>(Chains.size() - Before);
    FStats.Cuts += std::max(0, Made - 1);
    FStats.Swallowed += Made == 0 ? 1 : 0;
  }

  /// A chain from one cut to another. Vertices within reach of a node at either end belong to the
  /// node: what is left of the way to them has no direction to trust. A single point when the whole
  /// stretch does.
  TScatterCurve Stretch(const TScatterCurve& Curve, const TCutNode& From, const TCutNode& To) {
    const TPoint2D& Start = Place(From);
    const TPoint2D& End = Place(To);
    int First = static_cast<int>(std::floor(From.Param)) + 1;
    int Last = static_cast<int>(std::ceil(To.Param)) - 1;
    const int Count = Last - First;
    const auto IsAt = [&](int I, const TPoint2D& P) {
      return Curve.Points[Slot(I)].Equals(P, kNodeReach);
    };
    while (First <= Last && IsAt(First, Start)) ++First;
    while (First <= Last && IsAt(Last, End)) --Last;
    if (Last - First != Count || !Start.Equals(From.Point) || !End.Equals(To.Point)) {
      FMustCut = true;
    }
    TScatterCurve Chain{Curve.Number, {Start}, {ParamAt(Curve, From.Param)}, {}};
    for (int I = First; I <= Last; ++I) {
      if (Curve.Points[Slot(I)] == Chain.Points.back()) continue;  // exact: edges without length
      Chain.Points.push_back(Curve.Points[Slot(I)]);
      Chain.Params.push_back(Curve.Params[Slot(I)]);
    }
    if (Chain.Points.size() > 1 || !(Start == End)) {  // exact: one node
      Chain.Points.push_back(End);
      Chain.Params.push_back(ParamAt(Curve, To.Param));
    }
    return Chain;
  }

  const TPoint2D& Place(const TCutNode& Cut) { return FPlaces[Slot(NodeAt(Cut.Point))]; }

  static double ParamAt(const TScatterCurve& Curve, double Param) {
    const double Floor = std::floor(Param);
    const std::size_t I = static_cast<std::size_t>(Floor);
    const std::size_t Next = std::min(I + 1, Curve.Params.size() - 1);
    return std::lerp(Curve.Params[I], Curve.Params[Next], Param - Floor);
  }

  void DropRepeats() {
    for (TScatterCurve& Curve : FCurves) {
      auto Chain = std::make_unique<TMChainExtend>(std::move(Curve.Points));
      Chain->SetSource({Curve.Number, Curve.Params.front(), Curve.Params.back()});
      const int From = NodeAt(Chain->First());
      const int To = NodeAt(Chain->Last());
      FChains.push_back({std::move(Chain), From, To});
    }
    std::vector<std::tuple<std::uint64_t, std::size_t>> Courses;
    for (std::size_t I = 0; I < FChains.size(); ++I) {
      Courses.emplace_back(CourseOf(*FChains[I].Chain), I);
    }
    std::sort(Courses.begin(), Courses.end());
    for (std::size_t I = 1, Kept = 0; I < Courses.size(); ++I) {
      TChain& Chain = FChains[std::get<1>(Courses[I])];
      const TChain& First = FChains[std::get<1>(Courses[Kept])];
      if (std::get<0>(Courses[I]) == std::get<0>(Courses[Kept]) &&
          Chain.Chain->EqualsTo(*First.Chain)) {
        Chain.Chain.reset();
        ++FStats.Repeated;
      } else {
        Kept = I;
      }
    }
    std::erase_if(FChains, [](const TChain& Chain) { return !Chain.Chain; });
  }

  /// A short chain that leads from others to nowhere.
  void DropStubs() {
    std::vector<int> Degrees(FPlaces.size(), 0);
    for (const TChain& Chain : FChains) {
      ++Degrees[Slot(Chain.From)];
      ++Degrees[Slot(Chain.To)];
    }
    std::erase_if(FChains, [&](const TChain& Chain) {
      const auto [Low, High] = std::minmax(Degrees[Slot(Chain.From)], Degrees[Slot(Chain.To)]);
      const bool IsStub = Low == 1 && High > 2 && Chain.Chain->TotalLength() <= FGap;
      FStats.Stubs += IsStub ? 1 : 0;
      return IsStub;
    });
  }

  double FGap;
  TScatterStats& FStats;
  std::vector<TScatterCurve> FCurves;
  TPlaceIndex FNodes;
  std::vector<TPoint2D> FPlaces;  // of the nodes
  bool FMustCut = true;
  std::vector<TChain> FChains;
};

}  // namespace

int TMChainsScatter::AddCurve(const TVPolyline2D& Curve) {
  FCurves.push_back(Curve.Points());
  return CurveCount() - 1;
}

TMChainExtends TMChainsScatter::GetChains() {
  TScatterStats Stats;
  TMChainExtends Chains = TScatterer(FCurves, FGap, Stats).Run();
  FStats = Stats;
  return Chains;
}

}  // namespace tarnalgo
