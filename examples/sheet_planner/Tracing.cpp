#include "examples/sheet_planner/Tracing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <polyclipping/clipper.hpp>
#include <set>
#include <utility>
#include <vector>

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// A figure as it was drawn, laid out as a polyline.
struct TLaidOut {
  enum class TKind { Edge, Arc, Circle, Curve };

  TKind Kind;
  std::size_t Index;
  int Layer;
  int ChordCount;
  std::vector<double> Angles;  // of the points of an arc or circle

  double AngleAt(double Param) const {
    const auto Chord = static_cast<std::size_t>(std::min(Param, ChordCount - 1.0));
    return std::lerp(Angles[Chord], Angles[Chord + 1], Param - static_cast<double>(Chord));
  }
};

/// Chords of a whole circle: the same for circles of one radius, also where rounding tells the two
/// radii apart (but at a border between two numbers).
int ChordsOf(double Radius, double ChordError) {
  const double Share = std::clamp(1.0 - ChordError / Radius, -1.0, 1.0);
  const double Quarter = std::ceil(kQuarterTurn / (2.0 * std::acos(Share)));
  return 4 * Quarter < kMostChords ? 4 * std::max(1, static_cast<int>(Quarter)) : kMostChords;
}

class TTracer {
 public:
  TTracer(const TDrawing& Drawing, const TTraceOptions& Options, TTraceStats& Stats)
      : FDrawing(Drawing), FOptions(Options), FStats(Stats), FScatter(Options.Gap) {}

  TDrawing Run() {
    LayOut();
    FStats.Curves = FScatter.CurveCount();
    FLinks = TTopoLinks::CreateTopoLink(FScatter.GetChains());
    FStats.Scatter = FScatter.Stats();
    CopyHead();
    const TTopoLinks Dangling = FLinks.GetDanglingTopo();
    const TTopoLinks Bridges = FLinks.GetBridgeTopo();
    TakeOutlines();
    FStats.Dangling = TakeRest(Dangling);
    FStats.Bridges = TakeRest(Bridges);
    return std::move(FTraced);
  }

 private:
  using TKind = TLaidOut::TKind;
  using TChains = std::vector<const TMChainExtend*>;

  void Add(TKind Kind, std::size_t Index, int Layer, std::vector<TPoint2D> Points,
           std::vector<double> Angles = {}) {
    const int ChordCount = static_cast<int>(Points.size()) - 1;
    FLaidOut.push_back({Kind, Index, Layer, ChordCount, std::move(Angles)});
    FScatter.AddCurve(TVPolyline2D(std::move(Points)));
  }

  void LayOut() {
    for (std::size_t I = 0; I < FDrawing.Edges.size(); ++I) {
      const TDrawnEdge& Edge = FDrawing.Edges[I];
      Add(TKind::Edge, I, Edge.Layer, {Edge.Line.StartPoint, Edge.Line.EndPoint});
    }
    for (std::size_t I = 0; I < FDrawing.Arcs.size(); ++I) {
      AddRound(TKind::Arc, I, FDrawing.Arcs[I].Layer, FDrawing.Arcs[I].Arc);
    }
    for (std::size_t I = 0; I < FDrawing.Circles.size(); ++I) {
      const TCircle2D& Circle = FDrawing.Circles[I].Circle;
      AddRound(TKind::Circle, I, FDrawing.Circles[I].Layer,
               {Circle.Center, Circle.Radius, 0.0, kFullTurn});
    }
    for (std::size_t I = 0; I < FDrawing.Curves.size(); ++I) {
      Add(TKind::Curve, I, FDrawing.Curves[I].Layer, FDrawing.Curves[I].Points);
    }
  }

  void AddRound(TKind Kind, std::size_t Index, int Layer, const TArc2D& Arc) {
    std::vector<double> Angles = AnglesOf(Arc);
    std::vector<TPoint2D> Points;
    Points.reserve(Angles.size());
    for (const double Angle : Angles) {
      Points.push_back(TCircle2D(Arc.Center, Arc.Radius).PointAtAngle(Angle));
    }
    Points.front() = Arc.StartPoint();
    Points.back() = Kind == TKind::Circle ? Points.front() : Arc.EndPoint();
    Add(Kind, Index, Layer, std::move(Points), std::move(Angles));
  }

  /// The ends, and between them the angles at which every arc of this circle has its points: arcs
  /// drawn over one another then have the same chords, and do not weave. The first and the last
  /// chord are half a chord to one and a half: a stub would turn aside where its end is snapped.
  std::vector<double> AnglesOf(const TArc2D& Arc) const {
    const int Count = ChordsOf(Arc.Radius, FOptions.ChordError);
    const double Step = kFullTurn / Count;
    const auto [Low, High] = std::minmax({Arc.StartAngle, Arc.StartAngle + Arc.SweepAngle});
    const double Before = std::floor(Low / Step);
    std::vector<double> Angles{Low};
    for (int I = 1; I <= Count + 1; ++I) {
      const double Angle = (Before + I) * Step;
      if (!(High - Angle > Step / 2)) break;
      if (Angle - Low > Step / 2) Angles.push_back(Angle);
    }
    Angles.push_back(High);
    if (Arc.SweepAngle < 0.0) std::reverse(Angles.begin(), Angles.end());
    return Angles;
  }

  /// Everything but the geometry.
  void CopyHead() {
    FTraced.Name = FDrawing.Name;
    FTraced.Unit = FDrawing.Unit;
    for (const std::string& Layer : FDrawing.Layers) FTraced.LayerIndex(Layer);
    FTraced.Read = FDrawing.Read;
    FTraced.Skipped = FDrawing.Skipped;
    FTraced.Notes = FDrawing.Notes;
  }

  void TakeOutlines() {
    TPointsOfOutline PointsOf;
    TChainsOfOutline ChainsOf;
    TVPolyline2DList Outlines;
    FLinks.GetPolygons(PointsOf, ChainsOf, Outlines);
    for (const bool OfOutside : {true, false}) {
      for (const TVPolyline2D* Outline : Outlines) {
        if (Outline->IsClockwise() != OfOutside) continue;
        ++(OfOutside ? FStats.Outsides : FStats.Faces);
        const TMChainExtends& Chains = *ChainsOf[Outline];
        TakeWalk({Chains.begin(), Chains.end()});
      }
    }
  }

  /// What belongs to no outline, group by group; the number of its chains.
  int TakeRest(const TTopoLinks& Rest) {
    int Count = 0;
    for (const TMChainExtends& Group : Rest.GetGroupByDic()) {
      Count += Group.Count();
      TakeWalk({Group.begin(), Group.end()});
    }
    return Count;
  }

  /// Turns the chains of a walk that no other walk had into pieces. Neighbours that were one
  /// stretch of one curve, and where no third chain ends between, are one piece again.
  void TakeWalk(TChains Chains) {
    std::erase_if(Chains, [this](const TMChainExtend* Chain) { return !IsNew(*Chain); });
    const auto GoesOn = [this](const TMChainExtend* A, const TMChainExtend* B) {
      return Continues(*A, *B);
    };
    // Round a closed walk the first piece may have begun before its end.
    for (std::size_t I = 0; I < Chains.size() && GoesOn(Chains.back(), Chains.front()); ++I) {
      std::rotate(Chains.begin(), Chains.begin() + 1, Chains.end());
    }
    for (auto First = Chains.begin(); First != Chains.end();) {
      auto Last = First + 1;
      while (Last != Chains.end() && GoesOn(*(Last - 1), *Last)) ++Last;
      AddPiece({First, Last});
      First = Last;
    }
  }

  bool IsNew(const TMChainExtend& Chain) {
    const TChainSource& Source = Chain.Source();
    return FTaken.insert({Source.Curve, std::minmax(Source.From, Source.To)}).second;
  }

  bool Continues(const TMChainExtend& A, const TMChainExtend& B) const {
    const TChainSource& First = A.Source();
    const TChainSource& Next = B.Source();
    if (First.Curve != Next.Curve || (First.From < First.To) != (Next.From < Next.To)) return false;
    const TIntPoint Joint = TransToInt(A.Last());
    if (Joint != TransToInt(B.First()) || FLinks[Joint]->Count() != 2) return false;
    const double Whole = LaidOut(First.Curve).ChordCount;
    const bool IsRound = std::abs(First.To - Next.From) == Whole;  // exact: the two ends
    return First.To == Next.From || IsRound;
  }

  const TLaidOut& LaidOut(int Curve) const { return FLaidOut[static_cast<std::size_t>(Curve)]; }

  void AddPiece(const TChains& Chains) {
    const TLaidOut& Drawn = LaidOut(Chains.front()->Source().Curve);
    const TPoint2D& Start = Chains.front()->First();
    const TPoint2D& End = Chains.back()->Last();
    ++FStats.Pieces;
    switch (Drawn.Kind) {
      case TKind::Edge:
        return FTraced.AddEdge(Start, End, Drawn.Layer);
      case TKind::Arc: {
        const TArc2D& Arc = FDrawing.Arcs[Drawn.Index].Arc;
        return AddArc(StretchOf({Arc.Center, Arc.Radius}, Drawn, Chains), Start, End, Drawn.Layer);
      }
      case TKind::Circle:
        return AddArc(StretchOf(FDrawing.Circles[Drawn.Index].Circle, Drawn, Chains), Start, End,
                      Drawn.Layer);
      case TKind::Curve:
        TVPolyline2D Points;
        for (const TMChainExtend* Chain : Chains) {
          if (!Points.IsEmpty()) Points.Delete(Points.Count() - 1);
          Points.AddRange(*Chain);
        }
        FTraced.Curves.push_back({Points.Points(), Drawn.Layer});
    }
  }

  /// What chains that follow each other have of the circle.
  static TArc2D StretchOf(const TCircle2D& Circle, const TLaidOut& Drawn, const TChains& Chains) {
    double Sweep = 0.0;
    for (const TMChainExtend* Chain : Chains) {
      Sweep += Drawn.AngleAt(Chain->Source().To) - Drawn.AngleAt(Chain->Source().From);
    }
    return {Circle.Center, Circle.Radius, Drawn.AngleAt(Chains.front()->Source().From), Sweep};
  }

  /// The arc as drawn, between its nodes: they may be off it by the gap, so its sweep is kept and
  /// the radius follows. Where the nodes of a large arc lie close together that would swing it
  /// aside by far more; such an arc goes through its middle.
  void AddArc(const TArc2D& Drawn, const TPoint2D& Start, const TPoint2D& End, int Layer) {
    // A bulge this small bows less than a nanometre per metre of chord.
    constexpr double kStraightBulge = 1e-9;
    const double Bulge = std::tan(Drawn.SweepAngle / 4.0);
    if (Start.Equals(End)) {
      FTraced.Circles.push_back({{Drawn.Center, Drawn.Radius}, Layer});
      return;
    }
    if (std::abs(Bulge) < kStraightBulge) return FTraced.AddEdge(Start, End, Layer);
    const TArc2D Whole = TArc2D::CreateBulge(Start, End, Bulge);
    const double Moved =
        std::max(Start.DistanceTo(Drawn.StartPoint()), End.DistanceTo(Drawn.EndPoint()));
    const TPoint2D Middle = Drawn.PointAtParam(0.5);
    if (Whole.PointAtParam(0.5).Equals(Middle, 2.0 * Moved + kLinearTolerance)) {
      FTraced.Arcs.push_back({Whole, Layer});
      return;
    }
    const double Half = std::tan(Drawn.SweepAngle / 8.0);
    FTraced.Arcs.push_back({TArc2D::CreateBulge(Start, Middle, Half), Layer});
    FTraced.Arcs.push_back({TArc2D::CreateBulge(Middle, End, Half), Layer});
    ++FStats.Pieces;
  }

  const TDrawing& FDrawing;
  const TTraceOptions& FOptions;
  TTraceStats& FStats;
  TMChainsScatter FScatter;
  std::vector<TLaidOut> FLaidOut;  // by the numbers of the curves
  TTopoLinks FLinks;
  std::set<std::pair<int, std::pair<double, double>>> FTaken;
  TDrawing FTraced;
};

}  // namespace

TDrawing TraceDrawing(const TDrawing& Drawing, const TTraceOptions& Options, TTraceStats& Stats) {
  return TTracer(Drawing, Options, Stats).Run();
}

}  // namespace sheet_planner
