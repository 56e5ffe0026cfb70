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
};

/// `P` lies on the edge, between its ends, exactly.
bool IsWithinEdge(const TIntPoint& P, const TIntPoint& Start, const TIntPoint& End) {
  return Cross(End - Start, P - Start) == 0 && Dot(Start - P, End - P) < 0;
}

/// In the order of the edges, and along each.
std::vector<TTouch> TouchesOf(const TPath& Ring) {
  TPath Closed = Ring;
  TPathUtils::ConnectHeadTail(Closed);
  const std::vector<TPoint2D> Places = TPathUtils::CreatePoint2DList(Closed, 1.0);
  double Greatest = 0.0;
  for (const TPoint2D& P : Places) Greatest = std::max({Greatest, std::abs(P.X), std::abs(P.Y)});
  std::vector<TTouch> Touches;
  const auto Offer = [&](std::size_t Edge, const TIntPoint& P) {
    const TIntPoint& Start = Closed[Edge];
    const TIntPoint& End = Closed[Edge + 1];
    if (IsWithinEdge(P, Start, End)) Touches.push_back({Edge, Dot(End - Start, P - Start), P});
  };
  // What the boxes lose by rounding beyond 2^53.
  const double Eps = Greatest * std::numeric_limits<double>::epsilon();
  TEdgeTree(Places).VisitOwnPairs(Eps, [&](int First, int Second) {
    const auto I = static_cast<std::size_t>(First);
    const auto J = static_cast<std::size_t>(Second);
    Offer(I, Closed[J]);
    Offer(J, Closed[I]);
    return false;
  });
  std::sort(Touches.begin(), Touches.end(), [](const TTouch& A, const TTouch& B) {
    return std::tie(A.Edge, A.Along) < std::tie(B.Edge, B.Along);
  });
  return Touches;
}

/// The ring with the touches as vertices, repeats left out.
TPath WithTouches(const TPath& Ring) {
  const std::vector<TTouch> Touches = TouchesOf(Ring);
  TPath Result;
  auto Touch = Touches.begin();
  const auto Append = [&](const TIntPoint& P) {
    if (Result.empty() || Result.back() != P) Result.push_back(P);
  };
  for (std::size_t I = 0; I < Ring.size(); ++I) {
    Append(Ring[I]);
    for (; Touch != Touches.end() && Touch->Edge == I; ++Touch) Append(Touch->Point);
  }
  return Result;
}

struct TLexicographic {
  bool operator()(const TIntPoint& A, const TIntPoint& B) const {
    return std::tie(A.X, A.Y) < std::tie(B.X, B.Y);
  }
};

}  // namespace

TPaths LoopsOfRing(const TPath& Ring) {
  TPaths Loops;
  TPath Open;  // the way since the start, without the loops it has gone round
  std::map<TIntPoint, std::size_t, TLexicographic> Places;  // of the points of `Open`
  const auto CloseFrom = [&](std::size_t First) {
    const auto Start = Open.begin() + static_cast<std::ptrdiff_t>(First);
    if (Open.end() - Start >= 3) Loops.emplace_back(Start, Open.end());
    for (auto P = Start + 1; P != Open.end(); ++P) Places.erase(*P);
    Open.erase(Start + 1, Open.end());
  };
  for (const TIntPoint& P : WithTouches(Ring)) {
    const auto [Place, IsNew] = Places.try_emplace(P, Open.size());
    if (IsNew) {
      Open.push_back(P);
    } else {
      CloseFrom(Place->second);
    }
  }
  if (!Open.empty()) CloseFrom(0);
  return Loops;
}

}  // namespace tarnalgo
