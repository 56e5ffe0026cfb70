#include <algorithm>
#include <cmath>
#include <vector>

#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/ShapeApp/ConvexRing.h"
#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

// Above every rounding of squares and their products.
constexpr double kPlainlyMore = 1.0 + 1e-12;

/// Corners with their positions in the list they come from.
struct TCorner {
  TPoint2D P;
  int Position;
};

/// The corners without repeats within `Eps` of the one before, nor of the first at the end.
std::vector<TCorner> CornersApart(const TVPolyline2D& Polygon, double Eps) {
  std::vector<TCorner> Corners;
  Corners.reserve(Polygon.Points().size());
  int Position = 0;
  for (const TPoint2D& P : Polygon) {
    if (Corners.empty() || !(P.DistanceTo(Corners.back().P) <= Eps)) {
      Corners.push_back({P, Position});
    }
    ++Position;
  }
  while (Corners.size() > 1 && Corners.back().P.DistanceTo(Corners.front().P) <= Eps) {
    Corners.pop_back();
  }
  return Corners;
}

/// The greatest distance met so far between two corners.
class TFarthestPair {
 public:
  void Offer(const TCorner& A, const TCorner& B) {
    const TPoint2D Offset = A.P - B.P;
    const double Squared = Offset.DotMul(Offset);
    const auto [I, J] = std::minmax(A.Position, B.Position);
    const bool IsEarlier = I < FI || (I == FI && J < FJ);
    if (!(Squared > FSquared || (Squared == FSquared && IsEarlier))) return;
    FSquared = Squared;
    FDistance = A.P.DistanceTo(B.P);
    FI = I;
    FJ = J;
  }
  double Distance() const { return FDistance; }
  int I() const { return FI; }
  int J() const { return FJ; }

 private:
  double FSquared = 0.0;
  double FDistance = 0.0;
  int FI = 0;
  int FJ = 0;
};

/// Antipodal pairs all round a counter-clockwise ring.
TFarthestPair FarthestPair(const std::vector<TCorner>& Corners) {
  TFarthestPair Best;
  const std::size_t Count = Corners.size();
  const auto Corner = [&](std::size_t I) -> const TCorner& { return Corners[I % Count]; };
  const auto Edge = [&](std::size_t I) { return Corner(I + 1).P - Corner(I).P; };
  std::size_t J = 1;
  for (std::size_t I = 0; I < Count; ++I) {
    J = std::max(J, I + 1);
    for (;; ++J) {
      Best.Offer(Corner(I), Corner(J));
      Best.Offer(Corner(I + 1), Corner(J));
      const double Turn = Edge(I).CrossMul(Edge(J));
      const bool GoesOn = Turn > 0.0 || (Turn == 0.0 && Edge(I).DotMul(Edge(J)) > 0.0);
      if (!GoesOn || J >= I + Count) break;
    }
    Best.Offer(Corner(I), Corner(J + 1));  // the far side may be parallel
    Best.Offer(Corner(I + 1), Corner(J + 1));
  }
  return Best;
}

/// Moves `Best` to `Candidate` when that lies farther to the wanted side as seen from `P`, or on
/// the same line and nearer.
void TakeTangent(const TVPolyline2D& Polygon, const TPoint2D& P, double Side, int Candidate,
                 int& Best) {
  const double Turn = Side * TPolygonBasicAlgo::Area(P, Polygon[Best], Polygon[Candidate]);
  const bool IsNearer = P.DistanceTo(Polygon[Candidate]) < P.DistanceTo(Polygon[Best]);
  if (Turn > 0.0 || (Turn == 0.0 && IsNearer)) Best = Candidate;
}

}  // namespace

double TPolygonBasicAlgo::ExtremePoints(const TVPoint2DList& PtList, const TPoint2D& D, int& MaxPt,
                                        int& MinPt) {
  MaxPt = 0;
  MinPt = 0;
  for (int I = 1; I < PtList.Count(); ++I) {
    if (D.DotMul(PtList[I] - PtList[MaxPt]) > 0.0) {
      MaxPt = I;
    } else if (D.DotMul(PtList[I] - PtList[MinPt]) < 0.0) {
      MinPt = I;
    }
  }
  return MaxPt == MinPt ? 0.0 : D.DotMul(PtList[MaxPt] - PtList[MinPt]) / D.Mag();
}

double TPolygonBasicAlgo::ProjectionLength(const TVPoint2DList& PtList, const TPoint2D& D) {
  int MaxPt;
  int MinPt;
  return ExtremePoints(PtList, D, MaxPt, MinPt);
}

double TPolygonBasicAlgo::ProjectionLength(const TPath& Path, const TPoint2D& D) {
  return ProjectionLength(TPathUtils::CreatePolyline(Path, kIntegerScale), D);
}

double TPolygonBasicAlgo::ConvexWidth(const TVPolyline2D& ConvexPoly, TPoint2D& Direct) {
  if (ConvexPoly.Count() < 3) return -1.0;
  const bool IsClockwise = ConvexPoly.IsClockwise();
  TVPolyline2D Reversed;
  if (IsClockwise) {
    Reversed = ConvexPoly;
    Reversed.Reverse();
  }
  const TPoint2D* P = (IsClockwise ? Reversed : ConvexPoly).Points().data();
  const std::size_t Count = ConvexPoly.Points().size() - (ConvexPoly.IsClosed() ? 1 : 0);
  double Best = kStartOfMinimum;
  const auto Offer = [&](const TPoint2D& Edge, double DoubledArea) {
    // Plainly wider: spares the root and the quotient.
    const double Bound = Best * Best * Edge.DotMul(Edge) * kPlainlyMore;
    if (DoubledArea > 0.0 && DoubledArea * DoubledArea > Bound) return;
    const double Width = DoubledArea / Edge.Mag();
    if (!(Width < Best)) return;  // nor is the quotient of an edge without length
    Best = Width;
    Direct = Edge;
  };
  std::size_t Far = 0;
  double FarArea = -kStartOfMinimum;
  for (std::size_t J = 1; J < Count; ++J) {
    const double Doubled = Area(P[Count - 1], P[0], P[J]);
    if (!(Doubled > FarArea)) continue;
    FarArea = Doubled;
    Far = J;
  }
  Offer(P[0] - P[Count - 1], FarArea);
  for (std::size_t I = 1; I < Count; ++I) {
    const TPoint2D Edge = P[I] - P[I - 1];
    if (Edge == TPoint2D::FZero) continue;  // exact: only such an edge has no direction
    double Here = Area(P[I - 1], P[I], P[Far]);
    for (std::size_t Steps = 0; Steps < Count; ++Steps) {
      const std::size_t Next = Far + 1 == Count ? 0 : Far + 1;
      const double There = Area(P[I - 1], P[I], P[Next]);
      if (!(There >= Here)) break;  // equal areas go on: the walk ends where they fall
      Far = Next;
      Here = There;
    }
    Offer(Edge, Here);
  }
  return Best < kStartOfMinimum ? Best : 0.0;
}

double TPolygonBasicAlgo::ConvexWidth(const TVPolyline2D& ConvexPoly) {
  TPoint2D Direct;
  return ConvexWidth(ConvexPoly, Direct);
}

double TPolygonBasicAlgo::SimpleWidth(const TVPolyline2D& SimplePoly, TPoint2D& Direct) {
  return ConvexWidth(ClosedStrictHull(SimplePoly), Direct);
}

double TPolygonBasicAlgo::SimpleWidth(const TVPolyline2D& SimplePoly) {
  TPoint2D Direct;
  return SimpleWidth(SimplePoly, Direct);
}

double TPolygonBasicAlgo::ConvexDiameter(const TVPolyline2D& ConvexPoly, int& I, int& J) {
  std::vector<TCorner> Corners = CornersApart(ConvexPoly, 0.0);
  if (ConvexPoly.IsClockwise()) std::reverse(Corners.begin(), Corners.end());
  const TFarthestPair Best = Corners.empty() ? TFarthestPair() : FarthestPair(Corners);
  I = Best.I();
  J = Best.J();
  return Best.Distance();
}

double TPolygonBasicAlgo::ConvexDiameter(const TVPolyline2D& ConvexPoly) {
  int I;
  int J;
  return ConvexDiameter(ConvexPoly, I, J);
}

double TPolygonBasicAlgo::SimpleDiameter(const TVPolyline2D& SimplePoly) {
  return ConvexDiameter(TVPolyline2D(StrictHull(SimplePoly.Points())));
}

bool TPolygonBasicAlgo::PointTangants(const TVPolyline2D& ConvexPoly, const TPoint2D& P,
                                      int& LeftId, int& RightId) {
  LeftId = -1;
  RightId = -1;
  if (CornersApart(ConvexPoly, kLinearTolerance).size() < 3) return false;
  if (ConvexPoly.RelationWithPoint(P) != srOut) return false;
  LeftId = 0;
  RightId = 0;
  for (int I = 1; I < ConvexPoly.Count(); ++I) {
    TakeTangent(ConvexPoly, P, 1.0, I, LeftId);
    TakeTangent(ConvexPoly, P, -1.0, I, RightId);
  }
  return true;
}

double TPolygonBasicAlgo::MinInternalAngle(const TVPolyline2D& Poly, int& Index) {
  Index = -1;
  const std::vector<TCorner> Corners = CornersApart(Poly, kLeastEdge);
  const std::size_t Count = Corners.size();
  if (Count < 3) return 0.0;
  const bool IsClockwise = Poly.IsClockwise();
  double Least = kStartOfMinimum;
  for (std::size_t I = 0; I < Count; ++I) {
    const TPoint2D Back = Corners[(I + Count - 1) % Count].P - Corners[I].P;
    const TPoint2D Ahead = Corners[(I + 1) % Count].P - Corners[I].P;
    const double Angle = IsClockwise ? Ahead.AngleFrom(Back) : Back.AngleFrom(Ahead);
    if (!(Angle < Least)) continue;
    Least = Angle;
    Index = Corners[I].Position;
  }
  return Index < 0 ? 0.0 : Least;
}

double TPolygonBasicAlgo::MinInternalAngle(const TVPolyline2D& Poly) {
  int Index;
  return MinInternalAngle(Poly, Index);
}

}  // namespace tarnalgo
