#include "geometryAlgo/GeometryExtend/RingLoops.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <polyclipping/clipper.hpp>
#include <tuple>
#include <vector>

#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/GeometryExtend/WideInteger.h"
#include "geometryAlgo/VedaType/EdgeTree.h"

namespace tarnalgo {

namespace {

/// A vertex that lies within an edge, and how far along.
struct TTouch {
  std::size_t Edge;
  TInt128 Along;
  TIntPoint Point;
  bool IsOwn;  // the vertex and the edge are of one ring
};

using TTouches = std::vector<TTouch>;

/// `P` lies on the edge, between its ends, exactly.
bool IsWithinEdge(const TIntPoint& P, const TIntPoint& Start, const TIntPoint& End) {
  return Cross(End - Start, P - Start) == 0 && Dot(Start - P, End - P) < 0;
}

/// In the order of the edges, and along each. An edge has the number of its first vertex, counted
/// through all rings.
TTouches TouchesOf(const TPaths& Rings) {
  TPath Starts;
  TPath Ends;
  std::vector<std::size_t> Owners;
  std::vector<TPoint2D> Places;      // each ring closed, with a gap behind it
  std::vector<std::size_t> Numbers;  // of the edges between the places
  constexpr double kGap = std::numeric_limits<double>::quiet_NaN();
  double Greatest = 0.0;
  for (std::size_t I = 0; I < Rings.size(); ++I) {
    TPath Closed = Rings[I];
    if (Closed.empty()) continue;
    Closed.push_back(Closed.front());
    for (const TPoint2D& P : TPathUtils::CreatePoint2DList(Closed, 1.0)) {
      Greatest = std::max({Greatest, std::abs(P.X), std::abs(P.Y)});
      Places.push_back(P);
    }
    Places.emplace_back(kGap, kGap);
    for (std::size_t K = 1; K < Closed.size(); ++K) {
      Numbers.push_back(Starts.size());
      Starts.push_back(Closed[K - 1]);
      Ends.push_back(Closed[K]);
      Owners.push_back(I);
    }
    Numbers.resize(Places.size());
  }
  TTouches Touches;
  const auto Offer = [&](std::size_t Edge, std::size_t Other) {
    const TIntPoint& P = Starts[Other];
    if (!IsWithinEdge(P, Starts[Edge], Ends[Edge])) return;
    const TInt128 Along = Dot(Ends[Edge] - Starts[Edge], P - Starts[Edge]);
    Touches.push_back({Edge, Along, P, Owners[Edge] == Owners[Other]});
  };
  // What the boxes lose by rounding beyond 2^53.
  const double Eps = Greatest * std::numeric_limits<double>::epsilon();
  TEdgeTree(Places).VisitOwnPairs(Eps, [&](int First, int Second) {
    const std::size_t I = Numbers[static_cast<std::size_t>(First)];
    const std::size_t J = Numbers[static_cast<std::size_t>(Second)];
    Offer(I, J);
    Offer(J, I);
    return false;
  });
  std::sort(Touches.begin(), Touches.end(), [](const TTouch& A, const TTouch& B) {
    return std::tie(A.Edge, A.Along) < std::tie(B.Edge, B.Along);
  });
  return Touches;
}

/// The rings with touches as vertices, repeats left out.
TPaths WithTouches(const TPaths& Rings, const TTouches& Touches) {
  TPaths Results;
  std::size_t Edge = 0;
  auto Touch = Touches.begin();
  for (const TPath& Ring : Rings) {
    TPath& Result = Results.emplace_back();
    const auto Append = [&](const TIntPoint& P) {
      if (Result.empty() || Result.back() != P) Result.push_back(P);
    };
    for (const TIntPoint& P : Ring) {
      Append(P);
      for (; Touch != Touches.end() && Touch->Edge == Edge; ++Touch) Append(Touch->Point);
      ++Edge;
    }
    if (Result.size() > 1 && Result.back() == Result.front()) Result.pop_back();
  }
  return Results;
}

struct TLexicographic {
  bool operator()(const TIntPoint& A, const TIntPoint& B) const {
    return std::tie(A.X, A.Y) < std::tie(B.X, B.Y);
  }
};

/// An edge as its first end sees it.
struct THalfEdge {
  TIntPoint From;
  TIntPoint To;

  THalfEdge Back() const { return {To, From}; }
  bool operator==(const THalfEdge& Other) const { return From == Other.From && To == Other.To; }
};

/// By the first end, there by the direction, counter-clockwise from that of the X axis.
struct TAroundNodes {
  bool operator()(const THalfEdge& A, const THalfEdge& B) const {
    if (A.From != B.From) return TLexicographic()(A.From, B.From);
    const TIntPoint U = A.To - A.From;
    const TIntPoint V = B.To - B.From;
    const auto IsBelow = [](const TIntPoint& W) { return W.Y < 0 || (W.Y == 0 && W.X < 0); };
    if (IsBelow(U) != IsBelow(V)) return IsBelow(V);
    return Cross(U, V) > 0;
  }
};

using THalfEdges = std::vector<THalfEdge>;

/// Both halves of each edge, around the nodes.
THalfEdges HalvesOf(const TPaths& Rings) {
  THalfEdges Halves;
  for (const TPath& Ring : Rings) {
    for (std::size_t I = 0; I < Ring.size() && Ring.size() > 1; ++I) {
      const THalfEdge Half{Ring[I], Ring[I + 1 < Ring.size() ? I + 1 : 0]};
      Halves.push_back(Half);
      Halves.push_back(Half.Back());
    }
  }
  std::sort(Halves.begin(), Halves.end(), TAroundNodes());
  return Halves;
}

/// Leaves out edges that occur twice, as often as they do.
void DropDoubles(THalfEdges& Halves) {
  std::size_t Count = 0;
  for (const THalfEdge& Half : Halves) {
    if (Count > 0 && Halves[Count - 1] == Half) {
      --Count;
    } else {
      Halves[Count++] = Half;
    }
  }
  Halves.resize(Count);
}

/// Rings of all the edges, none crossing another or itself: at each node edges next to each other
/// go together, an even number of them.
TPaths RingsAlong(const THalfEdges& Halves) {
  std::vector<bool> IsDone(Halves.size());
  TPaths Rings;
  for (std::size_t First = 0; First < Halves.size(); ++First) {
    if (IsDone[First]) continue;
    TPath& Ring = Rings.emplace_back();
    std::size_t I = First;
    do {
      Ring.push_back(Halves[I].From);
      const auto Back =
          std::lower_bound(Halves.begin(), Halves.end(), Halves[I].Back(), TAroundNodes());
      const auto Arrival = static_cast<std::size_t>(Back - Halves.begin());
      IsDone[I] = true;
      IsDone[Arrival] = true;
      I = Arrival ^ 1U;  // each node begins at an even place
    } while (I != First);
  }
  return Rings;
}

/// Appends the loops of one ring.
void SplitAtRepeats(const TPath& Ring, TPaths& Loops) {
  TPath Open;  // the way since the start, without the loops it has gone round
  std::map<TIntPoint, std::size_t, TLexicographic> Places;  // of the points of `Open`
  const auto CloseFrom = [&](std::size_t First) {
    const auto Start = Open.begin() + static_cast<std::ptrdiff_t>(First);
    if (Open.end() - Start >= 3) Loops.emplace_back(Start, Open.end());
    for (auto P = Start + 1; P != Open.end(); ++P) Places.erase(*P);
    Open.erase(Start + 1, Open.end());
  };
  for (const TIntPoint& P : Ring) {
    const auto [Place, IsNew] = Places.try_emplace(P, Open.size());
    if (IsNew) {
      Open.push_back(P);
    } else {
      CloseFrom(Place->second);
    }
  }
  if (!Open.empty()) CloseFrom(0);
}

}  // namespace

TPaths LoopsOfRings(const TPaths& Rings) {
  TTouches Touches = TouchesOf(Rings);
  THalfEdges Halves = HalvesOf(WithTouches(Rings, Touches));
  const bool HasDoubles = std::adjacent_find(Halves.begin(), Halves.end()) != Halves.end();
  TPaths Ways;
  if (HasDoubles) {
    DropDoubles(Halves);
    Ways = RingsAlong(Halves);
  } else {
    std::erase_if(Touches, [](const TTouch& Touch) { return !Touch.IsOwn; });
    Ways = WithTouches(Rings, Touches);
  }
  TPaths Loops;
  for (const TPath& Way : Ways) SplitAtRepeats(Way, Loops);
  return Loops;
}

}  // namespace tarnalgo
