// Chains of lines, arcs and Beziers, and polygons with holes made of them, against a flattening
// that is evaluated here: where points lie, areas, lengths, crossings with a segment, and what
// reversing, mirroring and rounding trips leave.

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/Ring.h"
#include "geometryAlgo/VedaType.h"
#include "host/Exceptions.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using fuzz::TRing;

TLABSegline MakeSeg(TBytes& Bytes, const TPoint2D& From) {
  constexpr double kBulges[] = {1.0, 0.41421356237309503, 0.05, 2.5, 1e-3, 40.0};
  switch (Bytes.Below(6)) {
    case 0: {
      const TPoint2D To = Bytes.Point();
      if (To.Equals(From)) return {From, To};
      const double Bulge = kBulges[Bytes.Below(6)] * (Bytes.Below(2) == 0 ? 1.0 : -1.0);
      return {From, To, TVArc2D(From, To, Bulge).Center, Bulge};
    }
    case 1:
      return {From, From, Bytes.Point(), Bytes.Below(2) == 0 ? kCircleBulge : -kCircleBulge};
    case 2:
    case 3: {
      const TPoint2D Control = Bytes.Point();
      const TPoint2D Other = Bytes.Point();
      return {From, Control, Other, Bytes.Point()};
    }
    default:
      return {From, Bytes.Point()};
  }
}

TLABPolyline MakeChain(TBytes& Bytes) {
  TLABPolyline Chain;
  TPoint2D From = Bytes.Point();
  for (int Count = Bytes.Below(7); Count > 0; --Count) {
    Chain.Add(MakeSeg(Bytes, From));
    From = Chain.Last().P4;
  }
  if (Bytes.Below(2) == 1) Chain.ConnectHeadTail();
  return Chain;
}

void CheckPlaces(const TLABPolyline& Chain, const TRing& Ring, TBytes& Bytes) {
  for (int Count = 4; Count > 0; --Count) {
    const TPoint2D P = Bytes.Point();
    const TShapeRelation Told = Chain.RelationWithPoint(P);
    const double Distance = Ring.DistanceTo(P);
    if (Distance <= Ring.Error() + kLinearTolerance) continue;
    Require(Told == (Ring.Holds(P) ? srIn : srOut), "a point off the ring lies where rays tell");
  }
  for (const TLABSegline& Seg : Chain) {
    for (const double T : {0.0, 0.3, 0.5, 1.0}) {
      Require(
          Chain.RelationWithPoint(Seg.PointByParam(T), kLinearTolerance + Ring.Rounding()) == srOn,
          "a point of the chain lies on it");
    }
  }
}

void CheckMeasures(const TLABPolyline& Chain, const TRing& Ring) {
  Require(std::abs(Chain.Area() - Ring.Area()) <= Ring.AreaError(), "the area of the flattening");
  const TVRect2D Box = Chain.BoundBox();
  for (const TPoint2D& P : Ring.Points()) {
    Require(Box.IsPointIn(P, kLinearTolerance + Ring.Rounding()), "the box holds the chain");
  }
  for (const TLABSegline& Seg : Chain) {
    const TRing Piece(TLABPolyline{Seg});
    const double Length =
        Seg.SegType == stBezier ? Seg.ToBezierSegment().CurveLength() : Seg.Length();
    Require(Length >= Piece.Length() * (1 - 1e-9) - Ring.Rounding(), "no chord exceeds its curve");
    Require(Length <= Piece.Length() * 1.01 + kLinearTolerance + 64 * Piece.Error(),
            "chords come near their curve");
  }
  const TVPolyline2D Sample = Chain.Sample(1e10 * Ring.Rounding());
  for (int I = 0; I < Sample.Count(); I += 1 + Sample.Count() / 32) {
    Require(Ring.DistanceTo(Sample[I]) <= Ring.Error() + kLinearTolerance, "a sample lies on it");
  }
}

void CheckTrips(const TLABPolyline& Chain, const TRing& Ring) {
  TLABPolyline Turned = Chain;
  Turned.Reverse();
  Require(std::abs(Turned.Area() + Chain.Area()) <= Ring.AreaRounding(), "reversing negates");
  TLABPolyline Mirrored = Chain;
  Mirrored.YMirror();
  Require(std::abs(Mirrored.Area() + Chain.Area()) <= Ring.AreaRounding(), "mirroring negates");
  const TLABPolyline Back(*Chain.ToGeCurve2D());
  Require(std::abs(Back.Area() - Chain.Area()) <= Ring.AreaError(), "host curves keep the area");
  TLABPolyline Smooth = Chain;
  Smooth.CollinearSmooth();
  Require(Smooth.IsEmpty() == Chain.IsEmpty(), "smoothing leaves something");
  for (const TLABSegline& Seg : Smooth) {
    Require(Ring.DistanceTo(Seg.P1) <= Ring.Error() + 2 * kLinearTolerance, "smooth on the chain");
  }
}

void CheckCrossings(const TLABPolyline& Chain, const TRing& Ring, const TVLine2D& Line) {
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  Chain.CrossWithSegLine(Line, Points, Lines);
  for (const TVLine2D& Stretch : Lines)
    Points.insert(Points.end(), {Stretch.StartPoint, Stretch.EndPoint});
  const double Reach = 2 * kLinearTolerance + Ring.Rounding();
  for (const TPoint2D& P : Points) {
    Require(Line.SegmentDistanceTo(P) <= Reach, "a crossing lies on the segment");
    Require(Ring.DistanceTo(P) <= Ring.Error() + Reach, "a crossing lies on the chain");
  }
  if (!Chain.IsClosed() || !Points.empty()) return;
  for (const TPoint2D& P : {Line.StartPoint, Line.EndPoint}) {
    if (Ring.DistanceTo(P) <= Ring.Error() + kLinearTolerance) return;
  }
  Require(Ring.Holds(Line.StartPoint) == Ring.Holds(Line.EndPoint),
          "no way out without a crossing");
}

/// An outline with holes, as chains and flattened, against the rings.
void CheckRegion(const std::vector<TLABPolyline>& Chains, const TPoint2D& P) {
  TLABHPolygon Region;
  TVHPolygon Flat;
  double Area = 0.0;
  double Error = 0.0;
  std::vector<double> Roundings;
  TShapeRelation Expected = srOut;
  for (std::size_t I = 0; I < Chains.size(); ++I) {
    const TRing Ring(Chains[I]);
    Region.Add(Chains[I].Clone());
    Flat.Add(std::make_unique<TVPolyline2D>(Ring.Points()));
    Area += std::abs(Ring.Area()) * (I == 0 ? 1 : -1);
    Error += Ring.AreaError();
    Roundings.push_back(Ring.AreaRounding());
    if (Ring.DistanceTo(P) <= Ring.Error() + kLinearTolerance) return;
    if (I == 0) Expected = Ring.Holds(P) ? srIn : srOut;
    if (I > 0 && Ring.Holds(P)) Expected = srOut;
  }
  Require(std::abs(Region.Area() - Area) <= Error, "outline less holes");
  Require(std::abs(Flat.Area() - Area) <= Error, "outline less holes, flattened");
  Require(Region.RelationWithPoint(P) == Expected, "in the outline and in no hole");
  Require(Flat.RelationWithPoint(P) == Expected, "in the outline and in no hole, flattened");
  for (int I = 0; I < Flat.Count(); ++I) {
    const double Signed = Flat[I]->Area() * (I == 0 ? 1 : -1);
    Require(!Flat[I]->IsClosed() || Signed >= -Roundings[static_cast<std::size_t>(I)],
            "the outline one way, the holes the other");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  std::vector<TLABPolyline> Chains;
  for (int Count = 1 + Bytes.Below(3); Count > 0; --Count) Chains.push_back(MakeChain(Bytes));
  const TLABPolyline& Chain = Chains.front();
  const TRing Ring(Chain);
  CheckPlaces(Chain, Ring, Bytes);
  CheckMeasures(Chain, Ring);
  CheckTrips(Chain, Ring);
  const TPoint2D From = Bytes.Point();
  CheckCrossings(Chain, Ring, {From, Bytes.Point()});
  CheckRegion(Chains, Bytes.Point());
  return 0;
}
