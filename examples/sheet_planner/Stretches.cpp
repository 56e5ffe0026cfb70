#include "examples/sheet_planner/Stretches.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <tuple>
#include <unordered_set>
#include <utility>

#include "examples/sheet_planner/Collinear.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// An end of an edge; sorted, the ends that can go on into each other are neighbours.
struct TEdgeEnd {
  int Anchor;
  int Port;
  double Angle;  // of the edge's line, whichever way it leaves
  std::size_t Edge;
  TPoint2D Way;  // from this end to the other

  bool IsAtPlaceOf(const TEdgeEnd& Other) const {
    return Anchor == Other.Anchor && Port == Other.Port;
  }
};

/// `B` goes on where `A` ends, straight.
bool GoesOn(const TEdgeEnd& A, const TEdgeEnd& B) {
  const double Longer = std::max(A.Way.Mag(), B.Way.Mag());
  return A.Way.DotMul(B.Way) < 0.0 &&
         std::abs(A.Way.CrossMul(B.Way)) <= kLinearTolerance * Longer;  // a length times Longer
}

/// Edges united to stretches; each stretch is known by one of its edges.
class TStretches {
 public:
  explicit TStretches(std::vector<double> Lengths)
      : FNext(Lengths.size()), FLengths(std::move(Lengths)) {
    std::iota(FNext.begin(), FNext.end(), std::size_t{0});
  }

  void Unite(std::size_t A, std::size_t B) {
    A = Root(A);
    B = Root(B);
    if (A == B) return;
    FNext[std::max(A, B)] = std::min(A, B);
    FLengths[std::min(A, B)] += FLengths[std::max(A, B)];
  }
  /// For each edge the length of its stretch.
  std::vector<double> TakeLengths() {
    for (std::size_t I = 0; I < FNext.size(); ++I) FLengths[I] = FLengths[Root(I)];
    return std::move(FLengths);
  }

 private:
  std::size_t Root(std::size_t Edge) {
    while (FNext[Edge] != Edge) Edge = FNext[Edge] = FNext[FNext[Edge]];  // halves the way
    return Edge;
  }

  std::vector<std::size_t> FNext;
  std::vector<double> FLengths;  // of the whole stretch at its root
};

/// The ends of edges at the places where a short one ends, those that may go on into each other
/// side by side.
std::vector<TEdgeEnd> EndsAtShortEdges(const std::vector<TSheetEdge>& Edges,
                                       const std::vector<double>& Lengths, double Least,
                                       double Most) {
  std::unordered_set<int> Places;
  for (std::size_t I = 0; I < Edges.size(); ++I) {
    if (Lengths[I] < Least) Places.insert({Edges[I].FromAnchor, Edges[I].ToAnchor});
  }
  std::vector<TEdgeEnd> Ends;
  if (Places.empty()) return Ends;
  for (std::size_t I = 0; I < Edges.size(); ++I) {
    if (Lengths[I] > Most) continue;
    const TSheetEdge& Edge = Edges[I];
    const double Angle = UndirectedAngle(Edge.Line);
    const TPoint2D Way = Edge.Line.EndPoint - Edge.Line.StartPoint;
    const auto Add = [&](int Anchor, const TPoint2D& Leaving) {
      if (Places.contains(Anchor)) Ends.push_back({Anchor, Edge.Port, Angle, I, Leaving});
    };
    Add(Edge.FromAnchor, Way);
    Add(Edge.ToAnchor, Way * -1.0);
  }
  std::sort(Ends.begin(), Ends.end(), [](const TEdgeEnd& A, const TEdgeEnd& B) {
    return std::tie(A.Anchor, A.Port, A.Angle, A.Edge) <
           std::tie(B.Anchor, B.Port, B.Angle, B.Edge);
  });
  return Ends;
}

}  // namespace

std::vector<double> StretchLengths(const std::vector<TSheetEdge>& Edges, double Least,
                                   double Most) {
  std::vector<double> Lengths;
  Lengths.reserve(Edges.size());
  for (const TSheetEdge& Edge : Edges) Lengths.push_back(Edge.Line.Length());
  const std::vector<TEdgeEnd> Ends = EndsAtShortEdges(Edges, Lengths, Least, Most);
  TStretches Stretches(std::move(Lengths));
  std::size_t First = 0;  // of the ends at one place
  for (std::size_t I = 0; I < Ends.size(); ++I) {
    const bool IsLast = I + 1 == Ends.size() || !Ends[I + 1].IsAtPlaceOf(Ends[I]);
    const TEdgeEnd& Neighbour = Ends[IsLast ? First : I + 1];  // angles go round
    if (GoesOn(Ends[I], Neighbour)) Stretches.Unite(Ends[I].Edge, Neighbour.Edge);
    if (IsLast) First = I + 1;
  }
  return Stretches.TakeLengths();
}

}  // namespace sheet_planner
