#include <cstddef>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <utility>
#include <vector>

#include "geometryAlgo/UPolygonGetter/TopoGraph.h"
#include "geometryAlgo/UPolygonGetter/TopoLinks.h"

namespace tarnalgo {

namespace {

/// Outlines as lists of entries of the graph, in the order in which they are closed.
class TOutlineTracer {
 public:
  using TOutline = std::vector<int>;

  explicit TOutlineTracer(const TTopoGraph& Graph)
      : FGraph(Graph), FPlaces(static_cast<std::size_t>(Graph.EntryCount()), -1) {
    FIsAvailable.reserve(FPlaces.size());
    for (int I = 0; I < Graph.EntryCount(); ++I) {
      FIsAvailable.push_back(Graph.Entry(I).Chain->IsAvailable());
    }
    FindRuns();
  }

  std::vector<TOutline> Run() {
    for (int Node = 0; Node < FGraph.NodeCount(); ++Node) {
      if (!FGraph.Edges(Node).NodeFlag()) continue;
      for (int I = FGraph.First(Node); I < FGraph.First(Node + 1); ++I) {
        if (IsAvailable(I)) Trace(I);
      }
    }
    return std::move(FOutlines);
  }

  /// Tells the chains which of them were walked.
  void SetFlags() const {
    for (int I = 0; I < FGraph.EntryCount(); ++I) {
      FGraph.Entry(I).Chain->SetIsAvailable(IsAvailable(I));
    }
  }

 private:
  bool IsAvailable(int Entry) const { return FIsAvailable[static_cast<std::size_t>(Entry)]; }
  int& PlaceOf(int Entry) { return FPlaces[static_cast<std::size_t>(Entry)]; }

  /// Where in its node the run of chains of one course ends: repeats of one chain, however many,
  /// are passed over in one step.
  void FindRuns() {
    FRunEnds.resize(FPlaces.size());
    for (int Node = FGraph.NodeCount() - 1; Node >= 0; --Node) {
      const int End = FGraph.First(Node + 1);
      for (int I = End - 1; I >= FGraph.First(Node); --I) {
        const bool GoesOn = I + 1 < End && FGraph.IsSameCourse(I, I + 1);
        FRunEnds[static_cast<std::size_t>(I)] =
            GoesOn ? FRunEnds[static_cast<std::size_t>(I) + 1] : I + 1;
      }
    }
  }

  /// The walk that begins with `Start`. It is home when the rule, with the flag of `Start` still
  /// set, would choose it again: a walk may pass its first node several times.
  void Trace(int Start) {
    FWalk.clear();
    int Entry = Start;
    do {
      FIsAvailable[static_cast<std::size_t>(Entry)] = false;
      Walk(Entry);
      Entry = Next(Entry, Start);
    } while (Entry >= 0 && Entry != Start);
    if (Entry == Start) Close(0);
    for (const int Left : FWalk) PlaceOf(Left) = -1;
  }

  /// Appends the entry to the walk. Where the walk comes back along a chain, the loop in between is
  /// an outline of its own, often one of nothing, and the chain is part of none.
  void Walk(int Entry) {
    const int Twin = FGraph.Entry(Entry).Twin;
    const int Place = Twin >= 0 ? PlaceOf(Twin) : -1;
    if (Place < 0) {
      PlaceOf(Entry) = static_cast<int>(FWalk.size());
      FWalk.push_back(Entry);
      return;
    }
    Close(static_cast<std::size_t>(Place) + 1);
    PlaceOf(Twin) = -1;
    FWalk.pop_back();
  }

  /// Takes an outline off the walk, from `First` to the end.
  void Close(std::size_t First) {
    if (First == FWalk.size()) return;
    const auto From = FWalk.begin() + static_cast<std::ptrdiff_t>(First);
    FOutlines.emplace_back(From, FWalk.end());
    for (const int Entry : FOutlines.back()) PlaceOf(Entry) = -1;
    FWalk.erase(From, FWalk.end());
  }

  /// `TNodeEdges::GetNextChains` with the way back allowed, for a walk that arrives along `Entry`;
  /// −1 where it ends. `Start` counts as available, and where the walk has just come along it,
  /// round a closed chain, it is not a turn into the same course but home.
  int Next(int Entry, int Start) const {
    const int Own = FGraph.Entry(Entry).Twin;
    if (Own < 0) return -1;
    const int Node = FGraph.Entry(Own).From;
    const int First = FGraph.First(Node);
    const int End = FGraph.First(Node + 1);
    if (const int Found = NextIn(Own + 1, End, Own, Start); Found >= 0) return Found;
    if (const int Found = NextIn(First, Own, Own, Start); Found >= 0) return Found;
    return Own == Start || IsAvailable(Own) ? Own : -1;
  }

  int NextIn(int From, int To, int Own, int Start) const {
    const int Node = FGraph.Entry(Own).From;
    const bool MayRepeat = FGraph.First(Node + 1) - FGraph.First(Node) < 3;
    const bool IsHome = FGraph.Entry(Start).Twin == Own;
    for (int I = From; I < To; ++I) {
      const bool IsRepeat = !MayRepeat && FGraph.IsSameCourse(I, Own);
      const int Last = IsRepeat ? FRunEnds[static_cast<std::size_t>(I)] - 1 : I;
      if (IsHome && I <= Start && Start <= Last) return Start;
      I = Last;
      if (IsRepeat) continue;
      if (I != Start && !IsAvailable(I)) continue;
      if (MayRepeat || !FGraph.Entry(I).Chain->EqualsTo(*FGraph.Entry(Own).Chain)) return I;
    }
    return -1;
  }

  const TTopoGraph& FGraph;
  std::vector<bool> FIsAvailable;  // of each entry; the chains are told in the end
  std::vector<int> FRunEnds;
  std::vector<int> FWalk;
  std::vector<int> FPlaces;  // of each entry in the walk, −1 for none
  std::vector<TOutline> FOutlines;
};

std::unique_ptr<TVPolyline2D> PolylineOf(const TTopoGraph& Graph, const std::vector<int>& Outline) {
  auto Result = std::make_unique<TVPolyline2D>();
  for (const int Entry : Outline) {
    for (const TPoint2D& P : *Graph.Entry(Entry).Chain) {
      if (Result->IsEmpty() || !P.Equals(Result->Last())) Result->Add(P);
    }
  }
  // Closed exactly, not within a tolerance.
  if (Result->Count() > 1 && Result->Last().Equals(Result->First())) {
    (*Result)[Result->Count() - 1] = Result->First();
  } else {
    Result->Add(Result->First());
  }
  return Result;
}

/// An outline with what the dictionaries say of it.
struct TOutlineEntry {
  std::unique_ptr<TVPolyline2D> Polyline;
  std::unique_ptr<TIntPointList> Points;
  std::unique_ptr<TMChainExtends> Chains;
};

void TraceOutlines(const TTopoLinks& Links, bool OnlyNegative, TPointsOfOutline& PointsOf,
                   TChainsOfOutline& ChainsOf, TVPolyline2DList& Polylines) {
  const TTopoGraph Graph(Links);
  TOutlineTracer Tracer(Graph);
  std::vector<TOutlineEntry> Found;
  for (const std::vector<int>& Outline : Tracer.Run()) {
    std::unique_ptr<TVPolyline2D> Polyline = PolylineOf(Graph, Outline);
    if (OnlyNegative && !Polyline->IsClockwise()) continue;
    auto Points = std::make_unique<TIntPointList>();
    auto Chains = std::make_unique<TMChainExtends>(false);
    for (const int Entry : Outline) {
      Points->push_back(Graph.Node(Graph.Entry(Entry).From));
      Chains->Add(Graph.Entry(Entry).Chain);
    }
    Found.push_back({std::move(Polyline), std::move(Points), std::move(Chains)});
  }
  const auto Count = static_cast<int>(Found.size());
  Polylines.Reserve(Polylines.Count() + Count);
  PointsOf.Reserve(PointsOf.Count() + Count);
  ChainsOf.Reserve(ChainsOf.Count() + Count);
  // Nothing raises from here on.
  for (TOutlineEntry& Entry : Found) {
    PointsOf.AddOrSetValue(Entry.Polyline.get(), std::move(Entry.Points));
    ChainsOf.AddOrSetValue(Entry.Polyline.get(), std::move(Entry.Chains));
    Polylines.Add(std::move(Entry.Polyline));
  }
  Tracer.SetFlags();
}

}  // namespace

void TTopoLinks::GetPolygons(TPointsOfOutline& PointsOf, TChainsOfOutline& ChainsOf,
                             TVPolyline2DList& Polylines) {
  TraceOutlines(*this, false, PointsOf, ChainsOf, Polylines);
}

void TTopoLinks::GetOutPolygons(TPointsOfOutline& PointsOf, TChainsOfOutline& ChainsOf,
                                TVPolyline2DList& Polylines) {
  TraceOutlines(*this, true, PointsOf, ChainsOf, Polylines);
}

}  // namespace tarnalgo
