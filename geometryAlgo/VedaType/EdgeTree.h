#pragma once  // geometryAlgo/VedaType/EdgeTree.h

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "geometryAlgo/VedaType/Line.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// `P` lies in the box of the edge grown by `Reach` on every side.
inline bool IsNearBoxOf(const TVLine2D& Edge, const TPoint2D& P, double Reach) {
  const auto [Bottom, Top] = std::minmax(Edge.StartPoint.Y, Edge.EndPoint.Y);
  if (P.Y < Bottom - Reach || P.Y > Top + Reach) return false;
  const auto [Left, Right] = std::minmax(Edge.StartPoint.X, Edge.EndPoint.X);
  return P.X >= Left - Reach && P.X <= Right + Reach;
}

/// The ray from `P` to the right passes the edge from `A` to `B`. The lower end of an edge belongs
/// to it and the upper one does not, so a ray through a vertex is counted right and level edges
/// never.
inline bool IsPassedByRay(const TPoint2D& A, const TPoint2D& B, const TPoint2D& P) {
  const bool GoesUp = A.Y <= P.Y && P.Y < B.Y;
  const bool GoesDown = B.Y <= P.Y && P.Y < A.Y;
  if (!GoesUp && !GoesDown) return false;
  if (std::max(A.X, B.X) < P.X) return false;
  if (std::min(A.X, B.X) > P.X) return true;
  // Extended precision: the products of huge coordinates stay finite, near misses keep their sign.
  const long double DX = static_cast<long double>(P.X) - A.X;
  const long double DY = static_cast<long double>(P.Y) - A.Y;
  const long double Left =
      (static_cast<long double>(B.X) - A.X) * DY - (static_cast<long double>(B.Y) - A.Y) * DX;
  return GoesUp ? Left > 0.0L : Left < 0.0L;
}

/// The edges of a polyline under a pyramid of boxes, to find what lies near something without
/// looking at every edge. Internal to the pages of this unit.
///
///     const TEdgeTree Tree(Contour.Points());
///     Tree.VisitNear(P, Eps, [&](int Edge) { return Edge == Wanted; });  // true stops
///
/// Neighbouring edges lie near each other, so the boxes are taken over runs of edges in their
/// order: nothing is sorted and memory is a quarter of the points. Visitors answer true to stop; a
/// visit answers whether it was stopped. Edges that are not finite are never visited; a single
/// point is one edge of no length.
/// Ownership: refers to the points, which must outlive the tree unchanged.
/// Cost: construction O(n). A visit touches what the boxes cannot tell apart: O(log n + hits) for a
/// point, O(n + m + hits) for the pairs of contours as they occur.
class TEdgeTree {
 public:
  /// The boxes are parallel to the direction `Axis` (a unit vector); (1, 0) unless the edges run
  /// across both axes, see `HatchAxis`.
  explicit TEdgeTree(const std::vector<TPoint2D>& Points, const TPoint2D& Axis = DcsX);

  /// The direction along or across which most of the length of the edges runs, for long parallel
  /// edges at an angle: a hatch whose upright boxes would all overlap. (1, 0) without a clear one.
  /// Long courses are sampled.
  static TPoint2D HatchAxis(const std::vector<TPoint2D>& Points);

  int EdgeCount() const { return FEdgeCount; }
  TVLine2D Edge(int I) const {
    const auto Index = static_cast<std::size_t>(I);
    return {FPoints[Index], FPoints[std::min(Index + 1, FPoints.size() - 1)]};
  }

  /// Edges whose box lies within `Eps` of `P`, in their order. Upright trees only.
  template <class TVisitor>
  bool VisitNear(const TPoint2D& P, double Eps, TVisitor Visit) const {
    return VisitBox({P.X, P.X, P.Y, P.Y}, Eps, Visit);
  }
  /// Edges whose box meets the ray from `P` to the right, in their order. Upright trees only.
  template <class TVisitor>
  bool VisitRay(const TPoint2D& P, TVisitor Visit) const {
    return VisitBox({P.X, kEndless, P.Y, P.Y}, 0.0, Visit);
  }
  /// Pairs (edge of this tree, edge of `Other`) whose boxes lie within `Eps`, each once. Runs that
  /// lie in one place together, nowhere `Eps` apart, are visited by their first edges alone: heaps
  /// of vertices in one place do not cost their square. Both trees have the same axis.
  template <class TVisitor>
  bool VisitPairs(const TEdgeTree& Other, double Eps, TVisitor Visit) const {
    if (FEdgeCount == 0 || Other.FEdgeCount == 0) return false;
    return PairNodes(TopLevel(), 0, Other, Other.TopLevel(), 0, Eps, Visit);
  }
  /// Pairs of edges of this tree whose boxes lie within `Eps`, the smaller number first, each once.
  /// Left out are pairs within runs that go into one quadrant only: such a run does not come back
  /// to itself, its edges share no more than the vertices between them. Pairs within a run that
  /// lies in one place, nowhere `Eps` apart, are left out too; two such runs are visited as by
  /// `VisitPairs`.
  template <class TVisitor>
  bool VisitOwnPairs(double Eps, TVisitor Visit) const {
    if (FEdgeCount == 0) return false;
    return PairWithin(TopLevel(), 0, WaysOfRuns(), Eps, Visit);
  }

 private:
  static constexpr int kLeafEdges = 8;
  static constexpr int kBranches = 4;
  static constexpr double kEndless = std::numeric_limits<double>::infinity();

  struct TBox {
    double Left = kEndless;
    double Right = -kEndless;
    double Bottom = kEndless;
    double Top = -kEndless;

    /// Empty boxes, and a tolerance that is no number, are apart from everything.
    bool IsApart(const TBox& Other, double Eps) const {
      return !(Left <= Other.Right + Eps && Other.Left <= Right + Eps &&
               Bottom <= Other.Top + Eps && Other.Bottom <= Top + Eps);
    }
    /// No two points of the two boxes are more than `Eps` apart; neither box is empty.
    bool IsOnePlaceWith(const TBox& Other, double Eps) const {
      const double Width = std::max(Right, Other.Right) - std::min(Left, Other.Left);
      if (!(Width <= Eps)) return false;
      const double Height = std::max(Top, Other.Top) - std::min(Bottom, Other.Bottom);
      return Height <= Eps && Width * Width + Height * Height <= Eps * Eps;
    }
    bool IsEmpty() const { return !(Left <= Right); }
    void Expand(const TBox& Other) {
      Left = std::min(Left, Other.Left);
      Right = std::max(Right, Other.Right);
      Bottom = std::min(Bottom, Other.Bottom);
      Top = std::max(Top, Other.Top);
    }
  };
  using TLeafBoxes = std::array<TBox, kLeafEdges>;
  /// Ways along the axes, as bits: right, left, up, down. An edge along an axis goes both ways
  /// along the other one, an edge without length all ways.
  using TWays = unsigned char;
  static constexpr TWays kAllWays = 15;
  using TWayLevels = std::vector<std::vector<TWays>>;
  /// Edges with these ways in common go into one quadrant.
  static bool AreMonotone(TWays Common) { return (Common & 3) != 0 && (Common & 12) != 0; }

  int TopLevel() const { return static_cast<int>(FLevels.size()) - 1; }
  int NodeCount(int Level) const {
    return static_cast<int>(FLevels[static_cast<std::size_t>(Level)].size());
  }
  const TBox& Node(int Level, int Index) const {
    return FLevels[static_cast<std::size_t>(Level)][static_cast<std::size_t>(Index)];
  }
  int EndOfChildren(int Level, int Index) const {
    return std::min((Index + 1) * kBranches, NodeCount(Level - 1));
  }
  int EndOfEdges(int Leaf) const { return std::min((Leaf + 1) * kLeafEdges, FEdgeCount); }
  /// The first edge of a run whose box is not empty.
  int FirstEdge(int Level, int Index) const;
  bool HasPlainEdges() const;
  TVLine2D TurnedEdge(int I) const {
    return FAxis == DcsX ? Edge(I) : TurnedByAxis(Edge(I));  // exact: nothing to turn
  }
  TVLine2D TurnedByAxis(const TVLine2D& Upright) const;
  /// Boxes are made anew for every look at an edge, so those of plain edges are made in line.
  TBox EdgeBox(int I) const {
    if (!FIsPlain) return CarefulBox(I);
    const TPoint2D& P = FPoints[static_cast<std::size_t>(I)];
    const TPoint2D& Q = FPoints[static_cast<std::size_t>(I) + 1];
    return {std::min(P.X, Q.X), std::max(P.X, Q.X), std::min(P.Y, Q.Y), std::max(P.Y, Q.Y)};
  }
  TBox CarefulBox(int I) const;
  TLeafBoxes BoxesOfLeaf(int Leaf) const {
    TLeafBoxes Boxes;
    for (int I = Leaf * kLeafEdges; I < EndOfEdges(Leaf); ++I) {
      Boxes[static_cast<std::size_t>(I % kLeafEdges)] = EdgeBox(I);
    }
    return Boxes;
  }
  static TWays WaysBetween(const TPoint2D& P, const TPoint2D& Q) {
    return static_cast<TWays>(static_cast<int>(Q.X >= P.X) | static_cast<int>(Q.X <= P.X) << 1 |
                              static_cast<int>(Q.Y >= P.Y) << 2 |
                              static_cast<int>(Q.Y <= P.Y) << 3);
  }
  TWays WaysOf(int I) const {
    const auto Index = static_cast<std::size_t>(I);
    if (FIsPlain) return WaysBetween(FPoints[Index], FPoints[Index + 1]);
    const auto [P, Q] = TurnedEdge(I);
    return WaysBetween(P, Q);
  }
  /// The ways common to all edges of each run.
  TWayLevels WaysOfRuns() const;

  template <class TVisitor>
  bool VisitBox(const TBox& Box, double Eps, TVisitor& Visit) const {
    return FEdgeCount > 0 && VisitNode(TopLevel(), 0, Box, Eps, Visit);
  }

  template <class TVisitor>
  bool VisitNode(int Level, int Index, const TBox& Box, double Eps, TVisitor& Visit) const {
    if (Node(Level, Index).IsApart(Box, Eps)) return false;
    if (Level == 0) {
      for (int I = Index * kLeafEdges; I < EndOfEdges(Index); ++I) {
        if (!EdgeBox(I).IsApart(Box, Eps) && Visit(I)) return true;
      }
      return false;
    }
    for (int Child = Index * kBranches; Child < EndOfChildren(Level, Index); ++Child) {
      if (VisitNode(Level - 1, Child, Box, Eps, Visit)) return true;
    }
    return false;
  }

  template <class TVisitor>
  bool PairNodes(int Level, int Index, const TEdgeTree& Other, int OtherLevel, int OtherIndex,
                 double Eps, TVisitor& Visit) const {
    const TBox& Box = Node(Level, Index);
    const TBox& OtherBox = Other.Node(OtherLevel, OtherIndex);
    if (Box.IsApart(OtherBox, Eps)) return false;
    if (Box.IsOnePlaceWith(OtherBox, Eps)) {
      return Visit(FirstEdge(Level, Index), Other.FirstEdge(OtherLevel, OtherIndex));
    }
    if (Level == 0 && OtherLevel == 0) return PairLeaves(Index, Other, OtherIndex, Eps, Visit);
    if (Level >= OtherLevel) {
      for (int Child = Index * kBranches; Child < EndOfChildren(Level, Index); ++Child) {
        if (PairNodes(Level - 1, Child, Other, OtherLevel, OtherIndex, Eps, Visit)) return true;
      }
      return false;
    }
    for (int Child = OtherIndex * kBranches; Child < Other.EndOfChildren(OtherLevel, OtherIndex);
         ++Child) {
      if (PairNodes(Level, Index, Other, OtherLevel - 1, Child, Eps, Visit)) return true;
    }
    return false;
  }

  template <class TVisitor>
  bool PairLeaves(int Leaf, const TEdgeTree& Other, int OtherLeaf, double Eps,
                  TVisitor& Visit) const {
    const TLeafBoxes OtherBoxes = Other.BoxesOfLeaf(OtherLeaf);
    const int First = OtherLeaf * kLeafEdges;
    const int Count = Other.EndOfEdges(OtherLeaf) - First;
    for (int I = Leaf * kLeafEdges; I < EndOfEdges(Leaf); ++I) {
      const TBox Box = EdgeBox(I);
      if (Box.IsApart(Other.Node(0, OtherLeaf), Eps)) continue;
      if (Box.IsOnePlaceWith(Other.Node(0, OtherLeaf), Eps)) {
        if (Visit(I, Other.FirstEdge(0, OtherLeaf))) return true;
        continue;
      }
      for (int J = 0; J < Count; ++J) {
        if (!Box.IsApart(OtherBoxes[static_cast<std::size_t>(J)], Eps) && Visit(I, First + J)) {
          return true;
        }
      }
    }
    return false;
  }

  template <class TVisitor>
  bool PairWithin(int Level, int Index, const TWayLevels& Ways, double Eps, TVisitor& Visit) const {
    if (AreMonotone(Ways[static_cast<std::size_t>(Level)][static_cast<std::size_t>(Index)])) {
      return false;
    }
    const TBox& Whole = Node(Level, Index);
    if (Whole.IsOnePlaceWith(Whole, Eps)) return false;
    if (Level == 0) return PairWithinLeaf(Index, Eps, Visit);
    const std::vector<TWays>& Lower = Ways[static_cast<std::size_t>(Level) - 1];
    const int End = EndOfChildren(Level, Index);
    for (int Child = Index * kBranches; Child < End; ++Child) {
      if (PairWithin(Level - 1, Child, Ways, Eps, Visit)) return true;
      TWays Common = Lower[static_cast<std::size_t>(Child)];
      for (int Next = Child + 1; Next < End; ++Next) {
        Common &= Lower[static_cast<std::size_t>(Next)];
        if (AreMonotone(Common)) continue;
        if (PairNodes(Level - 1, Child, *this, Level - 1, Next, Eps, Visit)) return true;
      }
    }
    return false;
  }

  template <class TVisitor>
  bool PairWithinLeaf(int Leaf, double Eps, TVisitor& Visit) const {
    const TLeafBoxes Boxes = BoxesOfLeaf(Leaf);
    const int First = Leaf * kLeafEdges;
    const int Count = EndOfEdges(Leaf) - First;
    std::array<TWays, kLeafEdges> Ways{};
    for (int I = 0; I < Count; ++I) Ways[static_cast<std::size_t>(I)] = WaysOf(First + I);
    for (int I = 0; I < Count; ++I) {
      TWays Common = Ways[static_cast<std::size_t>(I)];
      for (int J = I + 1; J < Count; ++J) {
        Common &= Ways[static_cast<std::size_t>(J)];
        if (AreMonotone(Common)) continue;
        if (!Boxes[static_cast<std::size_t>(I)].IsApart(Boxes[static_cast<std::size_t>(J)], Eps) &&
            Visit(First + I, First + J)) {
          return true;
        }
      }
    }
    return false;
  }

  const std::vector<TPoint2D>& FPoints;
  TPoint2D FAxis;
  bool FIsPlain;  // nothing to turn, all edges finite and of some length
  int FEdgeCount = 0;
  int FPlaceEdge = -1;  // the edge without length that stands for all, −1 for none
  std::vector<std::vector<TBox>> FLevels;  // runs of kLeafEdges edges, runs of kBranches runs, ...
};

}  // namespace tarnalgo
