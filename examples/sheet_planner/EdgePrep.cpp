#include "examples/sheet_planner/EdgePrep.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <unordered_set>
#include <utility>

#include "examples/sheet_planner/Anchors.h"
#include "examples/sheet_planner/Collinear.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// Angle: edges that are one cut differ by less, unless they are so short that it hardly matters.
constexpr double kOneCutSpread = 0.02;

/// Takes collinear edges of nearly one direction in the order of their low ends and leaves of each
/// what no earlier one has covered.
class TOverlapSweep {
 public:
  TOverlapSweep(std::vector<TSheetEdge>& Edges, std::vector<char>& IsKept, double Snap,
                TPrepStats& Stats)
      : FEdges(Edges), FIsKept(IsKept), FSnap(Snap), FStats(Stats) {}

  void Run(const TDirectionClass& Class) {
    const TDirectionFrame Frame(Class.Angle, Edge(Class.Members.front()).Line.StartPoint);
    double Longest = 0.0;
    std::vector<TSpan> Spans;
    Spans.reserve(Class.Members.size());
    for (const int Index : Class.Members) {
      TSheetEdge& Item = Edge(Index);
      if (Frame.Along(Item.Line.StartPoint) > Frame.Along(Item.Line.EndPoint)) {
        Item.Line = Item.Line.ReverseParam();
        std::swap(Item.FromAnchor, Item.ToAnchor);
      }
      Spans.push_back({Frame.Along(Item.Line.StartPoint), Frame.Along(Item.Line.EndPoint), Index});
      Longest = std::max(Longest, Item.Line.Length());
    }
    // Of edges with one start the longest covers the others.
    std::sort(Spans.begin(), Spans.end(), [](const TSpan& A, const TSpan& B) {
      if (A.From != B.From) return A.From < B.From;  // exact, here and below: an order
      if (A.To != B.To) return A.To > B.To;
      return A.Index < B.Index;
    });
    // An extent that reaches beyond a low end started before it, so it is no further away across
    // than its tilt makes of the longest edge.
    FWindow = FSnap + Longest * std::tan(std::min(Class.Spread, kQuarterTurn / 2));
    FExtents.clear();
    for (const TSpan& Span : Spans) Take(Span, Frame);
  }

 private:
  struct TSpan {
    double From;
    double To;
    int Index;
  };

  /// What is covered without a break, up to the anchor at its end. `Carrier` is the longest edge in
  /// it, which tells best where the line runs.
  struct TExtent {
    double To;
    int EndAnchor;
    TPoint2D EndPoint;
    TLine2D Carrier;
  };
  using TExtents = std::multimap<double, TExtent>;  // by where the end lies across

  TSheetEdge& Edge(int Index) { return FEdges[static_cast<std::size_t>(Index)]; }

  bool IsCollinear(const TLine2D& A, const TLine2D& B) const {
    const bool AIsLonger = A.Length() >= B.Length();
    const TLine2D& Base = AIsLonger ? A : B;
    const TLine2D& Other = AIsLonger ? B : A;
    return std::abs(Base.DistanceDirect(Other.StartPoint)) <= FSnap &&
           std::abs(Base.DistanceDirect(Other.EndPoint)) <= FSnap;
  }

  /// The extent that covers the low end of `Span` and reaches furthest. Drops those left behind.
  TExtents::iterator FindCover(const TSpan& Span, double Across) {
    auto Best = FExtents.end();
    for (auto It = FExtents.lower_bound(Across - FWindow);
         It != FExtents.end() && It->first <= Across + FWindow;) {
      if (It->second.To < Span.From - FSnap) {
        It = FExtents.erase(It);
        continue;
      }
      if (It->second.To > Span.From + kLinearTolerance &&
          (Best == FExtents.end() || It->second.To > Best->second.To) &&
          IsCollinear(It->second.Carrier, Edge(Span.Index).Line)) {
        Best = It;
      }
      ++It;
    }
    return Best;
  }

  void Take(const TSpan& Span, const TDirectionFrame& Frame) {
    TSheetEdge& Item = Edge(Span.Index);
    TExtent Extent{Span.To, Item.ToAnchor, Item.Line.EndPoint, Item.Line};
    const auto Cover = FindCover(Span, Frame.Across(Item.Line.StartPoint));
    if (Cover != FExtents.end()) {
      const TExtent Old = Cover->second;
      const double Length = Item.Line.Length();
      if (Span.To - Old.To <= FSnap) {
        FIsKept[static_cast<std::size_t>(Span.Index)] = 0;
        FStats.DroppedLength += Length;
        ++FStats.Covered;
        return;
      }
      FExtents.erase(Cover);
      Item.FromAnchor = Old.EndAnchor;
      Item.Line.StartPoint = Old.EndPoint;
      FStats.DroppedLength += Length - Item.Line.Length();
      ++FStats.Trimmed;
      if (Old.Carrier.Length() > Length) Extent.Carrier = Old.Carrier;
    }
    FExtents.emplace(Frame.Across(Item.Line.EndPoint), Extent);
  }

  std::vector<TSheetEdge>& FEdges;
  std::vector<char>& FIsKept;
  double FSnap;
  TPrepStats& FStats;
  double FWindow = 0.0;
  TExtents FExtents;
};

class TPreparer {
 public:
  TPreparer(const TDrawing& Drawing, const TPrepOptions& Options)
      : FDrawing(Drawing),
        FSnap(std::max(Options.Snap, kLinearTolerance)),
        FLayersAsPorts(Options.LayersAsPorts),
        FAnchors(FSnap),
        FMarks(FSnap) {}

  TSheet Run() {
    TakeEdges();
    DropOverlaps();
    for (const TDrawnArc& Arc : FDrawing.Arcs) TakeArc(Arc);
    for (const TDrawnCurve& Curve : FDrawing.Curves) TakeCurve(Curve);
    for (const TDrawnCircle& Circle : FDrawing.Circles) TakeCircle(Circle.Circle, Circle.Layer);
    if (FLayersAsPorts) FSheet.PortLayers = FDrawing.Layers;
    return std::move(FSheet);
  }

 private:
  int PortOf(int Layer) const { return FLayersAsPorts ? Layer : 0; }

  void TakeEdges() {
    FSheet.Stats.EdgesRead = static_cast<int>(FDrawing.Edges.size());
    FSheet.Edges.reserve(FDrawing.Edges.size());
    std::unordered_set<std::uint64_t> Seen;
    Seen.reserve(FDrawing.Edges.size());
    for (const TDrawnEdge& Drawn : FDrawing.Edges) {
      const int From = FAnchors.At(Drawn.Line.StartPoint);
      const int To = FAnchors.At(Drawn.Line.EndPoint);
      const TLine2D Line{FAnchors.Point(From), FAnchors.Point(To)};
      FSheet.Stats.EndsMoved += Line.StartPoint == Drawn.Line.StartPoint ? 0 : 1;
      FSheet.Stats.EndsMoved += Line.EndPoint == Drawn.Line.EndPoint ? 0 : 1;
      if (From == To) {
        ++FSheet.Stats.TooShort;
        continue;
      }
      const auto Low = static_cast<std::uint64_t>(std::min(From, To));
      const auto High = static_cast<std::uint64_t>(std::max(From, To));
      if (!Seen.insert(Low << 32 | High).second) {
        ++FSheet.Stats.Repeated;
        FSheet.Stats.DroppedLength += Line.Length();
        continue;
      }
      FSheet.Edges.push_back({{From, To, PortOf(Drawn.Layer)}, Line});
    }
  }

  void DropOverlaps() {
    std::vector<double> Angles;
    Angles.reserve(FSheet.Edges.size());
    for (const TSheetEdge& Edge : FSheet.Edges) Angles.push_back(UndirectedAngle(Edge.Line));
    std::vector<char> IsKept(FSheet.Edges.size(), 1);
    TOverlapSweep Sweep(FSheet.Edges, IsKept, FSnap, FSheet.Stats);
    for (const TDirectionClass& Class : DirectionClasses(Angles, kOneCutSpread)) Sweep.Run(Class);
    std::size_t Kept = 0;
    for (std::size_t I = 0; I < IsKept.size(); ++I) {
      if (IsKept[I]) FSheet.Edges[Kept++] = FSheet.Edges[I];
    }
    FSheet.Edges.resize(Kept);
  }

  /// Whether a piece with these ends, running through these places (in order from the first end),
  /// is the first of its kind.
  bool IsNew(char Kind, int From, int To, std::array<TPoint2D, 3> Places) {
    std::array<int, 5> Key{From, FMarks.At(Places[0]), FMarks.At(Places[1]), FMarks.At(Places[2]),
                           To};
    std::array<int, 5> Backward = Key;
    std::reverse(Backward.begin(), Backward.end());
    const bool IsFirst = FSeen.insert({Kind, std::min(Key, Backward)}).second;
    if (!IsFirst) ++FSheet.Stats.RepeatedOther;
    return IsFirst;
  }

  void TakeArc(const TDrawnArc& Drawn) {
    const TArc2D& Arc = Drawn.Arc;
    const int From = FAnchors.At(Arc.StartPoint());
    const int To = FAnchors.At(Arc.EndPoint());
    if (From == To && std::abs(Arc.SweepAngle) > kPi) {
      return TakeCircle({Arc.Center, Arc.Radius}, Drawn.Layer);
    }
    if (From == To) {
      ++FSheet.Stats.TooShort;
      return;
    }
    const std::array<TPoint2D, 3> Places{Arc.PointAtParam(0.25), Arc.PointAtParam(0.5),
                                         Arc.PointAtParam(0.75)};
    if (!IsNew('a', From, To, Places)) return;
    FSheet.Chains.push_back({{From, To, PortOf(Drawn.Layer)}, TLABPolyline{TLABSegline(Arc)}});
  }

  void TakeCurve(const TDrawnCurve& Drawn) {
    const TVPolyline2D Points(Drawn.Points);
    const double Length = Points.TotalLength();
    if (Length <= FSnap) {
      ++FSheet.Stats.TooShort;
      return;
    }
    const int From = FAnchors.At(Points.First());
    const int To = FAnchors.At(Points.Last());
    const std::array<TPoint2D, 3> Places{Points.CalcTravelPos(Length * 0.25),
                                         Points.CalcTravelPos(Length * 0.5),
                                         Points.CalcTravelPos(Length * 0.75)};
    if (!IsNew('c', From, To, Places)) return;
    FSheet.Chains.push_back({{From, To, PortOf(Drawn.Layer)}, TLABPolyline(Points)});
  }

  void TakeCircle(const TCircle2D& Circle, int Layer) {
    if (Circle.Radius <= FSnap) {
      ++FSheet.Stats.TooShort;
      return;
    }
    const TPoint2D Radius{Circle.Radius, 0.0};
    const int Center = FMarks.At(Circle.Center);
    if (!IsNew('o', Center, Center, {Circle.Center, Circle.Center + Radius, Circle.Center})) return;
    FSheet.Circles.push_back({Circle, PortOf(Layer)});
  }

  const TDrawing& FDrawing;
  double FSnap;
  bool FLayersAsPorts;
  TAnchors FAnchors;
  TAnchors FMarks;  // places on pieces that tell repeated ones, no ends
  std::set<std::pair<char, std::array<int, 5>>> FSeen;
  TSheet FSheet;
};

}  // namespace

TRect2D BoundsOf(const TSheet& Sheet) {
  TRect2D Box;
  for (const TSheetChain& Chain : Sheet.Chains) {
    const TVRect2D OfChain = Chain.Chain.BoundBox();
    Box = Box.Union({OfChain.GetBottomLeft(), OfChain.GetTopRight()});
  }
  for (const TSheetEdge& Edge : Sheet.Edges) Box = Box.Union(Edge.Line.GetBoundBox());
  for (const TSheetCircle& Circle : Sheet.Circles) Box = Box.Union(Circle.Circle.GetBoundBox());
  return Box;
}

TSheet PrepareSheet(const TDrawing& Drawing, const TPrepOptions& Options) {
  return TPreparer(Drawing, Options).Run();
}

}  // namespace sheet_planner
