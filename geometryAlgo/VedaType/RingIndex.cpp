#include "geometryAlgo/VedaType/RingIndex.h"

#include <algorithm>
#include <cmath>

#include "geometryAlgo/VedaType/EdgeTree.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadgeometry/BernsteinRoots.h"
#include "host/Cadtypes/SortFew.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// The ray to the right at height `Y` meets a connected way an odd number of times, the way lying
/// beyond the start of the ray.
bool IsOddBetween(double StartY, double EndY, double Y) {
  return (StartY <= Y) != (EndY <= Y);
}

/// `P` lies left of a quarter of a circle that passes the height of `P`.
bool IsLeftOfArc(const TCurvePiece& Piece, const TPoint2D& P) {
  const TPoint2D ToP = P - Piece.Arc.Center;
  const double Reach = ToP.Mag();
  const bool IsRightHalf = Piece.Start.X / 2 + Piece.End.X / 2 >= Piece.Arc.Center.X;
  return IsRightHalf ? ToP.X < 0.0 || Reach < Piece.Arc.Radius
                     : ToP.X < 0.0 && Reach > Piece.Arc.Radius;
}

/// Signed distances of the controls and of `P` from the chord, times its length, tell that `P` is
/// beyond all of the curve: 1 on the left of the chord, −1 on the right, else 0.
int SideOfHull(const TCurvePiece& Piece, const TPoint2D& P, double Eps) {
  const TPoint2D Chord = Piece.End - Piece.Start;
  const double Off1 = Chord.CrossMul(Piece.Control1 - Piece.Start);
  const double Off2 = Chord.CrossMul(Piece.Control2 - Piece.Start);
  const double OffP = Chord.CrossMul(P - Piece.Start);
  const double Slack = (Eps + kLinearTolerance) * Chord.Mag();
  if (OffP > std::max({0.0, Off1, Off2}) + Slack) return 1;
  return OffP < std::min({0.0, Off1, Off2}) - Slack ? -1 : 0;
}

/// `P` lies left of a monotone cubic that passes the height of `P`.
bool IsLeftOfBezier(const TCurvePiece& Piece, const TPoint2D& P) {
  const TBernsteinRoots<3> Roots(
      {Piece.Start.Y - P.Y, Piece.Control1.Y - P.Y, Piece.Control2.Y - P.Y, Piece.End.Y - P.Y});
  const double U = Roots.begin() != Roots.end() ? *Roots.begin() : 0.0;
  // No root inside: the height is that of an end.
  const bool IsAtEnd = Roots.begin() == Roots.end() && P.Y == Piece.End.Y;
  return P.X < (IsAtEnd ? Piece.End : Piece.Eval(U)).X;
}

bool IsOn(const TCurvePiece& Piece, const TPoint2D& P, double Eps) {
  if (Piece.Kind == TPieceKind::Arc) {  // most points need no angle
    const double Gap = std::abs(P.DistanceTo(Piece.Arc.Center) - Piece.Arc.Radius);
    if (Gap > Eps && !P.Equals(Piece.Start, Eps) && !P.Equals(Piece.End, Eps)) return false;
  }
  double Distance = kStartOfMinimum;
  Piece.Nearest(P, Distance);
  return Distance <= Eps;
}

}  // namespace

TRingIndex::TRingIndex(const std::vector<TLABSegline>& Segs) {
  FPieces.reserve(Segs.size() + 1);
  for (const TLABSegline& Seg : Segs) {
    Bridge(Seg.P1);
    AppendSegment(Seg);
  }
  if (!FPieces.empty()) Bridge(FPieces.front().Start);
  BuildLevels();
}

TShapeRelation TRingIndex::RelationWithPoint(const TPoint2D& P, double Eps) const {
  if (FPieces.empty()) return srOut;
  const double Reach = Eps > 0.0 ? Eps : 0.0;
  switch (SideOfNode(FLevels.size() - 1, 0, P, Reach)) {
    case TSide::Odd:
      return srIn;
    case TSide::On:
      return srOn;
    case TSide::Even:
      break;
  }
  return srOut;
}

void TRingIndex::AppendSegment(const TLABSegline& Seg) {
  switch (Seg.SegType) {
    case stLine:
      return AppendLine(Seg.P1, Seg.P4);
    case stArc:
      return AppendArc(Seg.ToArc());
    case stBezier:
      TCurvePiece::AppendBezier(Seg.ToBezierSegment(), 0.0, 1.0, FPieces);
  }
}

void TRingIndex::AppendArc(const TVArc2D& Arc) {
  const TArc2D Whole = Arc.ToArc2D();
  const double Turn = std::abs(Whole.SweepAngle);
  const TPoint2D Extremes[] = {
      Arc.Center + TPoint2D(Whole.Radius, 0.0), Arc.Center + TPoint2D(0.0, Whole.Radius),
      Arc.Center - TPoint2D(Whole.Radius, 0.0), Arc.Center - TPoint2D(0.0, Whole.Radius)};
  struct TCut {
    double Turned = 0.0;
    TPoint2D Point;
    bool operator<(const TCut& Other) const { return Turned < Other.Turned; }
  };
  TCut Cuts[5];
  TCut* Last = Cuts;
  for (const TPoint2D& Extreme : Extremes) {
    const double Turned = Arc.TurnTo(Extreme);
    if (Turned > 0.0 && Turned < Turn) *Last++ = {Turned, Extreme};
  }
  SortFew(Cuts, Last);
  // The end as given where it lies on the circle; a ring goes on straight to any other.
  const bool EndIsOnCircle =
      TMathUtils::FloatEquals(Arc.Center.DistanceTo(Arc.EndPoint), Whole.Radius);
  *Last++ = {Turn, EndIsOnCircle ? Arc.EndPoint : Whole.EndPoint()};
  TCut From{0.0, Arc.StartPoint};
  for (const TCut* To = Cuts; To != Last; From = *To++) {
    const double Sense = Arc.IsClockwise ? -1.0 : 1.0;
    const TArc2D Part(Arc.Center, Whole.Radius, Whole.StartAngle + Sense * From.Turned,
                      Sense * (To->Turned - From.Turned));
    TCurvePiece Piece = TCurvePiece::OfArc(Part, From.Point, To->Point, 0.0, 1.0);
    Piece.Box = TRect2D(From.Point, From.Point).Union(To->Point);
    FPieces.push_back(Piece);
  }
}

void TRingIndex::AppendLine(const TPoint2D& From, const TPoint2D& To) {
  FPieces.push_back(TCurvePiece::OfLine({From, To}, 0.0, 1.0));
}

void TRingIndex::Bridge(const TPoint2D& P) {
  if (!FPieces.empty() && !(FPieces.back().End == P)) AppendLine(FPieces.back().End, P);
}

void TRingIndex::BuildLevels() {
  std::vector<TNode> Level;
  Level.reserve(FPieces.size());
  for (const TCurvePiece& Piece : FPieces) {
    Level.push_back({Piece.Box, Piece.Start.Y, Piece.End.Y});
  }
  FLevels.push_back(std::move(Level));
  while (FLevels.back().size() > 1) {
    const std::vector<TNode>& Below = FLevels.back();
    std::vector<TNode> Runs;
    for (std::size_t I = 0; I < Below.size(); I += kBranches) {
      const std::size_t End = std::min(I + kBranches, Below.size());
      TNode Run = Below[I];
      for (std::size_t J = I + 1; J < End; ++J) Run.Box = Run.Box.Union(Below[J].Box);
      Run.EndY = Below[End - 1].EndY;
      Runs.push_back(Run);
    }
    FLevels.push_back(std::move(Runs));
  }
}

TRingIndex::TSide TRingIndex::SideOfNode(std::size_t Level, std::size_t Index, const TPoint2D& P,
                                         double Eps) const {
  const TNode& Node = FLevels[Level][Index];
  const TRect2D& Box = Node.Box;
  if (!(P.Y >= Box.Min.Y - Eps && P.Y <= Box.Max.Y + Eps && P.X <= Box.Max.X + Eps)) {
    return TSide::Even;
  }
  if (P.X < Box.Min.X - Eps) {
    return IsOddBetween(Node.StartY, Node.EndY, P.Y) ? TSide::Odd : TSide::Even;
  }
  if (Level == 0) return SideOfPiece(FPieces[Index], P, Eps);
  bool IsOdd = false;
  const std::size_t First = Index * kBranches;
  const std::size_t End = std::min(First + kBranches, FLevels[Level - 1].size());
  for (std::size_t Child = First; Child < End; ++Child) {
    const TSide Side = SideOfNode(Level - 1, Child, P, Eps);
    if (Side == TSide::On) return TSide::On;
    if (Side == TSide::Odd) IsOdd = !IsOdd;
  }
  return IsOdd ? TSide::Odd : TSide::Even;
}

TRingIndex::TSide TRingIndex::SideOfPiece(const TCurvePiece& Piece, const TPoint2D& P, double Eps) {
  const int Hull = Piece.Kind == TPieceKind::Bezier ? SideOfHull(Piece, P, Eps) : 0;
  if (Hull == 0 && IsOn(Piece, P, Eps)) return TSide::On;
  if (!IsOddBetween(Piece.Start.Y, Piece.End.Y, P.Y)) return TSide::Even;
  bool IsLeft = false;
  if (Hull != 0) {
    IsLeft = (Hull > 0) == (Piece.End.Y > Piece.Start.Y);
  } else if (Piece.Kind == TPieceKind::Line) {
    IsLeft = IsPassedByRay(Piece.Start, Piece.End, P);
  } else {
    IsLeft = Piece.Kind == TPieceKind::Arc ? IsLeftOfArc(Piece, P) : IsLeftOfBezier(Piece, P);
  }
  return IsLeft ? TSide::Odd : TSide::Even;
}

}  // namespace tarnalgo
