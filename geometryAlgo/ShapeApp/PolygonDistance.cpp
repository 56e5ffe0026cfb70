#include <algorithm>
#include <cmath>
#include <vector>

#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

/// Least distance of two boxes.
double Gap(const TVRect2D& A, const TVRect2D& B) {
  const double X = std::max({A.Left - B.Right, B.Left - A.Right, 0.0});
  const double Y = std::max({A.Bottom - B.Top, B.Bottom - A.Top, 0.0});
  return TPoint2D(X, Y).Mag();
}

/// The edges of a ring under a binary pyramid of boxes over runs of neighbours: node 1 is the
/// root, nodes 2k and 2k + 1 are under node k.
class TRingBoxes {
 public:
  explicit TRingBoxes(const TVPolyline2D& Ring) : FRing(Ring) {
    while (FLeaves * kLeafEdges < EdgeCount()) FLeaves *= 2;
    FBoxes.resize(2 * static_cast<std::size_t>(FLeaves));
    for (int Node = 2 * FLeaves - 1; Node > 0; --Node) {
      TVRect2D& Box = FBoxes[static_cast<std::size_t>(Node)];
      if (!IsLeaf(Node)) {
        Box = this->Box(2 * Node).Expand(this->Box(2 * Node + 1));
        continue;
      }
      for (int I = FirstEdge(Node); I < EndEdge(Node); ++I) {
        Box.ExpandInPlace(Edge(I).StartPoint);
        Box.ExpandInPlace(Edge(I).EndPoint);
      }
    }
  }

  const TVRect2D& Box(int Node) const { return FBoxes[static_cast<std::size_t>(Node)]; }
  bool IsLeaf(int Node) const { return Node >= FLeaves; }
  int FirstEdge(int Leaf) const { return std::min((Leaf - FLeaves) * kLeafEdges, EdgeCount()); }
  int EndEdge(int Leaf) const { return std::min((Leaf - FLeaves + 1) * kLeafEdges, EdgeCount()); }
  /// The last edge closes the ring; of a single point it is that point.
  TVLine2D Edge(int I) const { return {FRing[I], FRing[I + 1 < FRing.Count() ? I + 1 : 0]}; }

 private:
  static constexpr int kLeafEdges = 4;
  int EdgeCount() const { return FRing.Count(); }

  const TVPolyline2D& FRing;
  int FLeaves = 1;
  std::vector<TVRect2D> FBoxes;
};

bool Cross(const TVLine2D& A, const TVLine2D& B) {
  const auto Parts = [](const TVLine2D& Line, const TVLine2D& Other) {
    const double Start = TPoint2DUtils::IsLeft(Line.StartPoint, Line.EndPoint, Other.StartPoint);
    const double End = TPoint2DUtils::IsLeft(Line.StartPoint, Line.EndPoint, Other.EndPoint);
    return (Start > 0.0 && End < 0.0) || (Start < 0.0 && End > 0.0);
  };
  return Parts(A, B) && Parts(B, A);
}

/// 0 where they cross; otherwise an end of one of them is nearest.
double Distance(const TVLine2D& A, const TVLine2D& B) {
  if (Cross(A, B)) return 0.0;
  return std::min({A.SegmentDistanceTo(B.StartPoint), A.SegmentDistanceTo(B.EndPoint),
                   B.SegmentDistanceTo(A.StartPoint), B.SegmentDistanceTo(A.EndPoint)});
}

/// The least distance of two rings: pairs of runs, the nearer ones first, as long as their boxes
/// are nearer than what is found.
class TLeastDistance {
 public:
  TLeastDistance(const TVPolyline2D& A, const TVPolyline2D& B) : FA(A), FB(B) {}

  double Run() {
    Visit(1, 1);
    return FBest;
  }

 private:
  void Visit(int A, int B) {
    if (!(Gap(FA.Box(A), FB.Box(B)) < FBest)) return;
    if (FA.IsLeaf(A) && FB.IsLeaf(B)) return VisitEdges(A, B);
    const bool SplitsA = FB.IsLeaf(B) || (!FA.IsLeaf(A) && Size(FA.Box(A)) >= Size(FB.Box(B)));
    const int Lower = SplitsA ? 2 * A : 2 * B;
    const auto GapOf = [&](int Child) {
      return SplitsA ? Gap(FA.Box(Child), FB.Box(B)) : Gap(FA.Box(A), FB.Box(Child));
    };
    const int Nearer = GapOf(Lower + 1) < GapOf(Lower) ? Lower + 1 : Lower;
    for (const int Child : {Nearer, 2 * Lower + 1 - Nearer}) {
      Visit(SplitsA ? Child : A, SplitsA ? B : Child);
    }
  }
  void VisitEdges(int LeafA, int LeafB) {
    for (int I = FA.FirstEdge(LeafA); I < FA.EndEdge(LeafA); ++I) {
      for (int J = FB.FirstEdge(LeafB); J < FB.EndEdge(LeafB); ++J) {
        FBest = std::min(FBest, Distance(FA.Edge(I), FB.Edge(J)));
      }
    }
  }
  static double Size(const TVRect2D& Box) { return Box.Width() + Box.Height(); }

  TRingBoxes FA;
  TRingBoxes FB;
  double FBest = kStartOfMinimum;
};

TVPolyline2D FinitePart(const TVPolyline2D& Polygon) {
  std::vector<TPoint2D> Points = Polygon.Points();
  std::erase_if(Points, [](const TPoint2D& P) { return !TPoint2DUtils::IsFinite(P); });
  return TVPolyline2D(std::move(Points));
}

}  // namespace

double TPolygonBasicAlgo::MinPolyDistance(const TVPolyline2D& Poly1, const TVPolyline2D& Poly2) {
  const TVPolyline2D A = FinitePart(Poly1);
  const TVPolyline2D B = FinitePart(Poly2);
  if (A.IsEmpty() || B.IsEmpty()) return -1.0;
  // Where the boundaries are apart, one vertex tells of the whole polygon whether it lies inside.
  if (A.RelationWithPoint(B.First(), 0.0) != srOut) return 0.0;
  if (B.RelationWithPoint(A.First(), 0.0) != srOut) return 0.0;
  return TLeastDistance(A, B).Run();
}

}  // namespace tarnalgo
