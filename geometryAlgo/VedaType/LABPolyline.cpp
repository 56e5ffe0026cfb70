#include "geometryAlgo/VedaType/LABPolyline.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "host/Cadgeometry.h"
#include "host/Cadgeometry/PieceCrossing.h"
#include "host/Cadutils.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

/// The direction of a segment at one of its ends.
TPoint2D TangentAtStart(const TLABSegline& Seg) {
  return Seg.SegType == stBezier ? Seg.ToBezierSegment().TangentStart() : Seg.TangentVector(0.0);
}
TPoint2D TangentAtEnd(const TLABSegline& Seg) {
  return Seg.SegType == stBezier ? Seg.ToBezierSegment().TangentEnd() : Seg.TangentVector(1.0);
}

/// A tangent at the end of a Bezier: the derivative unless a control point lies on the end.
TPoint2D DirectionAt(const TLABSegline& Seg, double T) {
  const TPoint2D Tangent = Seg.TangentVector(T);
  if (!(Tangent == TPoint2D::FZero)) return Tangent;  // exact: any direction will do
  return T == 0.0 ? TangentAtStart(Seg) : TangentAtEnd(Seg);
}

/// The direction of the first segment with one, met from segment `From` on going by `Step`, or of
/// the way over segments that are points once it is longer than the tolerance.
TPoint2D FirstDirection(const TLABPolyline& Chain, int From, int Step, bool IsRing) {
  const int Count = Chain.Count();
  const bool IsLeaving = Step > 0;
  std::optional<TPoint2D> Vertex;
  int I = From;
  for (int Seen = 0; Seen < Count; ++Seen, I += Step) {
    if (IsRing) I = TMathUtils::CycInc(I, 0, Count);
    if (I < 0 || I >= Count) break;
    const TLABSegline& Seg = Chain[I];
    if (!Seg.IsPoint()) return DirectionAt(Seg, IsLeaving ? 0.0 : 1.0);
    if (!Vertex) Vertex = IsLeaving ? Seg.P1 : Seg.P4;
    const TPoint2D& Reached = IsLeaving ? Seg.P4 : Seg.P1;
    if (!Reached.Equals(*Vertex)) return IsLeaving ? Reached - *Vertex : *Vertex - Reached;
  }
  return TPoint2D::FZero;
}

/// The piece over a chord.
TLABSegline PieceOver(const TPoint2D& From, const TPoint2D& To, double Bulge) {
  const TLABSegline Straight(From, To);
  if (From.Equals(To)) return Straight;
  const double Bow = From.DistanceTo(To) * std::abs(Bulge) / 2;
  const TVArc2D Arc(From, To, Bulge);
  const bool IsArc = Bow > ToleranceWithRounding(kLinearTolerance, Arc.Radius());
  return IsArc ? TLABSegline(From, To, Arc.Center, Bulge) : Straight;
}

void AppendEdges(const std::vector<TPoint2D>& Points, std::vector<TLABSegline>& Segs) {
  for (std::size_t I = 1; I < Points.size(); ++I) Segs.emplace_back(Points[I - 1], Points[I]);
}

/// The arc between its ends as they were given.
TLABSegline SegOfArc(const TArc2D& Arc, const TPoint2D& Start, const TPoint2D& End) {
  TLABSegline Seg(Arc);
  if (Seg.IsCircle()) return Seg;
  Seg.P1 = Start;
  Seg.P4 = End;
  return Seg;
}

TLABSegline SegOfBezier(const TBezierSegment2D& B) {
  return {B.P0, B.P1, B.P2, B.P3};
}

TLABSegline SegOfPiece(const TCurvePiece& Piece) {
  if (Piece.Kind == TPieceKind::Arc) return SegOfArc(Piece.Arc, Piece.Start, Piece.End);
  if (Piece.Kind == TPieceKind::Bezier) return SegOfBezier(Piece.Bezier());
  return {Piece.Start, Piece.End};
}

void AppendCurve(const TGeCurve2D& Curve, std::vector<TLABSegline>& Segs) {
  if (const auto* const Line = dynamic_cast<const TGeLine2D*>(&Curve)) {
    Segs.emplace_back(Line->StartPoint(), Line->EndPoint());
  } else if (const auto* const Arc = dynamic_cast<const TGeCircularArc2D*>(&Curve)) {
    Segs.push_back(SegOfArc(Arc->Arc2D(), Arc->StartPoint(), Arc->EndPoint()));
  } else if (const auto* const Chain = dynamic_cast<const TGePolyline2D*>(&Curve)) {
    AppendEdges(Chain->Points(), Segs);
  } else if (const auto* const Beziers = dynamic_cast<const TGePolyBezier2D*>(&Curve)) {
    for (int I = 0; I < Beziers->GetBezierCount(); ++I) {
      Segs.push_back(SegOfBezier(Beziers->GetBezier(I)));
    }
  } else if (const auto* const Whole = dynamic_cast<const TGeCompositeCurve2D*>(&Curve)) {
    for (int I = 0; I < Whole->GetCurveCount(); ++I) AppendCurve(*Whole->GetCurve(I), Segs);
  } else {
    std::vector<TCurvePiece> Pieces;
    Curve.AppendPieces(Pieces);
    std::transform(Pieces.begin(), Pieces.end(), std::back_inserter(Segs), SegOfPiece);
  }
}

}  // namespace

TLABPolyline::TLABPolyline(const TVPolyline2D& Polyline) : TLABPolyline(&Polyline) {}

TLABPolyline::TLABPolyline(const TVPolyline2D* Polyline) {
  if (Polyline == nullptr) return;
  FSegs.reserve(Polyline->Points().size());
  AppendEdges(Polyline->Points(), FSegs);
}

TLABPolyline::TLABPolyline(const TLWPolyline& Vertices, bool IsClosed) {
  FSegs.reserve(Vertices.size());
  for (std::size_t I = 1; I < Vertices.size(); ++I) {
    FSegs.push_back(PieceOver(Vertices[I - 1].Pt, Vertices[I].Pt, Vertices[I - 1].Bulge));
  }
  if (IsClosed && Vertices.size() > 1) {
    FSegs.push_back(PieceOver(Vertices.back().Pt, Vertices.front().Pt, Vertices.back().Bulge));
  }
}

TLABPolyline::TLABPolyline(const TGeCurve2D& Curve) {
  AppendCurve(Curve, FSegs);
}

int TLABPolyline::Add(const TLABSegline& Seg) {
  TLABSegline Joined = Seg;
  if (!FSegs.empty() && !Seg.P1.Equals(FSegs.back().P4)) Joined.P1 = FSegs.back().P4;
  FSegs.push_back(Joined);
  ClearSamplePolyline();
  return Count() - 1;
}

void TLABPolyline::AddRange(const TLABPolyline& Other) {
  const std::size_t OtherCount = Other.FSegs.size();  // Other may be this chain
  TAppendGuard Guard(FSegs);
  for (std::size_t I = 0; I < OtherCount; ++I) Add(Other.FSegs[I]);
  Guard.Keep();
}

void TLABPolyline::Insert(int Index, const TLABSegline& Seg) {
  CheckIndex(Index, Count() + 1);
  FSegs.insert(FSegs.begin() + Index, Seg);
  ClearSamplePolyline();
}

void TLABPolyline::Replace(int Index, const TLABSegline& Seg) {
  CheckIndex(Index, Count());
  FSegs[static_cast<std::size_t>(Index)] = Seg;
  ClearSamplePolyline();
}

void TLABPolyline::Delete(int Index) {
  CheckIndex(Index, Count());
  FSegs.erase(FSegs.begin() + Index);
  ClearSamplePolyline();
}

void TLABPolyline::Clear() {
  FSegs.clear();
  ClearSamplePolyline();
}

void TLABPolyline::Reserve(int Capacity) {
  if (Capacity > 0) FSegs.reserve(static_cast<std::size_t>(std::min(Capacity, kMostReserved)));
}

void TLABPolyline::ClearSamplePolyline() {
  FSample.reset();
  FSampleError = -1.0;
  FIndex.reset();
}

bool TLABPolyline::IsClosed(double Eps) const {
  return !FSegs.empty() && FSegs.front().P1.Equals(FSegs.back().P4, Eps);
}

bool TLABPolyline::IsPoint() const {
  return !FSegs.empty() && std::all_of(begin(), end(), [&](const TLABSegline& Seg) {
    return Seg.IsPoint() && Seg.P1.Equals(FSegs.front().P1);
  });
}

void TLABPolyline::SetIsClockwise(bool Clockwise) {
  if (!FSegs.empty() && Clockwise != GetIsClockwise()) Reverse();
}

TPoint2D TLABPolyline::LeftTangentVector(int Index) const {
  constexpr const char* kWhere = "TLABPolyline.LeftTangentVector";
  const bool IsRing = IsClosed();
  if (IsEmpty() || Index < 0 || Index >= Count() + (IsRing ? 0 : 1)) {
    RaiseError(kWhere, "参数不在作用域内");
  }
  if (IsPoint()) RaiseError(kWhere, "混合多段线为一个点");
  if (!IsRing && Index == 0) RaiseError(kWhere, "不封闭混合多段线起点没有左切向量");
  return FirstDirection(*this, Index - 1, -1, IsRing);
}

TPoint2D TLABPolyline::RightTangentVector(int Index) const {
  constexpr const char* kWhere = "TLABPolyline.RightTangentVector";
  const bool IsRing = IsClosed();
  if (IsEmpty() || Index < 0 || Index >= Count() + (IsRing ? 0 : 1)) {
    RaiseError(kWhere, "参数不在作用域内");
  }
  if (IsPoint()) RaiseError(kWhere, "混合多段线为一个点");
  if (!IsRing && Index == Count()) RaiseError(kWhere, "不封闭混合多段线终点没有右切向量");
  return FirstDirection(*this, Index, 1, IsRing);
}

}  // namespace tarnalgo
