// Pairs of cubics, as host curves and as pieces of chains: what they have in common lies on both,
// no crossing that chords prove is missed, parts of one cubic overlap it, swapping changes nothing;
// and the measures of a single one.

#include <algorithm>
#include <cmath>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/Ring.h"
#include "geometryAlgo/VedaType.h"
#include "host/Cadgeometry.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using fuzz::TRing;

/// What two curves have in common: points, and stretches as dense samples.
struct TCommon {
  std::vector<TPoint2D> Points;
  std::vector<TVPolyline2D> Stretches;

  bool IsEmpty() const { return Points.empty() && Stretches.empty(); }
  double DistanceTo(const TPoint2D& P) const {
    double Least = kStartOfMinimum;
    for (const TPoint2D& Q : Points) Least = std::min(Least, P.DistanceTo(Q));
    for (const TVPolyline2D& Stretch : Stretches) Least = std::min(Least, Stretch.DistTo(P));
    return Least;
  }
};

TBezierSegment2D MakeCubic(TBytes& Bytes) {
  const TPoint2D P = Bytes.Point();
  switch (Bytes.Below(8)) {
    case 0:
      return {P, P, Bytes.Point(), Bytes.Point()};  // no derivative at the start
    case 1: {
      const TPoint2D V = Bytes.Point() - P;  // straight, perhaps back and forth
      return {P, P + V * Bytes.Around(3), P + V * Bytes.Around(3), P + V};
    }
    default: {
      const TPoint2D Control = Bytes.Point();
      const TPoint2D Other = Bytes.Point();
      return {P, Control, Other, Bytes.Point()};
    }
  }
}

TBezierSegment2D PartOf(const TBezierSegment2D& Bezier, TBytes& Bytes) {
  const auto Parts = TGeometryUtils::SplitBezier(Bezier, {0.125 * Bytes.Below(8), 0.5, 0.75});
  return Parts[static_cast<std::size_t>(Bytes.Below(static_cast<int>(Parts.size())))];
}

TVPolyline2D Sampled(const TBezierSegment2D& Bezier, double From, double To) {
  TVPolyline2D Result;
  for (int I = 0; I <= 256; ++I) Result.Add(Bezier.EvalPoint(From + (To - From) * I / 256));
  return Result;
}

TCommon AsHostCurves(const TBezierSegment2D& A, const TBezierSegment2D& B) {
  TGePolyBezier2D First;
  TGePolyBezier2D Second;
  First.AddBezier(A);
  Second.AddBezier(B);
  std::vector<TIntersect2D> Results;
  First.IntersectCurve(Second, Results);
  TCommon Common;
  for (const TIntersect2D& Result : Results) {
    Require(Result.OnFirst.Point.Equals(Result.OnSecond.Point, 1e-5), "both points are one place");
    Common.Points.push_back(Result.Point());
    if (!Result.IsOverlap) continue;
    Common.Stretches.push_back(Sampled(A, Result.OnFirst.Param, Result.EndOnFirst.Param));
  }
  return Common;
}

TCommon AsPieces(const TBezierSegment2D& A, const TBezierSegment2D& B) {
  TCommon Common;
  std::vector<TVLine2D> Lines;
  std::vector<TVArc2D> Arcs;
  std::vector<TBezierSegment2D> Overlaps;
  TLABSegline(A.P0, A.P1, A.P2, A.P3)
      .CrossWithLABSegline({B.P0, B.P1, B.P2, B.P3}, Common.Points, Lines, Arcs, Overlaps);
  for (const TVLine2D& Line : Lines) Common.Stretches.emplace_back(Line);
  for (const TBezierSegment2D& Part : Overlaps) Common.Stretches.push_back(Sampled(Part, 0, 1));
  return Common;
}

TRing RingOf(const TBezierSegment2D& A) {
  return TRing(TLABPolyline{TLABSegline(A.P0, A.P1, A.P2, A.P3)});
}

void CheckCommon(const TBezierSegment2D& A, const TBezierSegment2D& B, const TCommon& Common) {
  const TRing RingA = RingOf(A);
  const TRing RingB = RingOf(B);
  const double Reach = 2 * kLinearTolerance + RingA.Rounding() + RingB.Rounding();
  std::vector<TPoint2D> Points = Common.Points;
  for (const TVPolyline2D& Stretch : Common.Stretches) {
    Points.insert(Points.end(), {Stretch.First(), Stretch[Stretch.Count() / 2], Stretch.Last()});
  }
  for (const TPoint2D& P : Points) {
    Require(RingA.DistanceTo(P) <= RingA.Error() + Reach, "near the chords of the first");
    Require(RingB.DistanceTo(P) <= RingB.Error() + Reach, "near the chords of the second");
    double T = 0.0;
    TPoint2D Foot;
    Require(A.DistanceTo(P, 0.0, T, Foot) <= Reach, "on the first");
    Require(B.DistanceTo(P, 0.0, T, Foot) <= Reach, "on the second");
  }
  const double Room = RingA.Error() + RingB.Error() + 4 * kLinearTolerance;
  fuzz::VisitSureCrossings(RingA, RingB, [&](const TVLine2D& S, const TVLine2D& T) {
    const TPoint2D Place = S.Center();
    Require(Common.DistanceTo(Place) <= S.Length() + T.Length() + Room,
            "no sure crossing is missed");
  });
}

void CheckPair(const TBezierSegment2D& A, const TBezierSegment2D& B) {
  const TCommon Host = AsHostCurves(A, B);
  CheckCommon(A, B, Host);
  Require(Host.IsEmpty() == AsHostCurves(B, A).IsEmpty(), "curves that meet, meet both ways round");
  Require(Host.IsEmpty() == AsHostCurves(A.Reversed(), B).IsEmpty(), "direction does not matter");
  const TCommon Pieces = AsPieces(A, B);
  CheckCommon(A, B, Pieces);
  Require(Pieces.IsEmpty() == AsPieces(B, A).IsEmpty(), "pieces that meet, meet both ways round");
}

/// Every place of a part of a cubic is common to both.
void CheckOverlap(const TBezierSegment2D& A, const TBezierSegment2D& Part) {
  const double Reach = 1e-5 + 10 * RingOf(A).Rounding();
  if (Part.CurveLength() < 1e-4) return;
  for (const TCommon& Common : {AsHostCurves(A, Part), AsHostCurves(Part.Reversed(), A),
                                AsPieces(A, Part), AsPieces(Part.Reversed(), A)}) {
    for (const double T : {0.0, 0.25, 0.5, 1.0}) {
      const double Chords = RingOf(A).Error() / 32;
      Require(Common.DistanceTo(Part.EvalPoint(T)) <= Reach + Chords, "a part is common");
    }
  }
}

void CheckMeasures(const TBezierSegment2D& A, const TPoint2D& P) {
  const TRing Ring = RingOf(A);
  double Chords = 0.0;
  double Least = kStartOfMinimum;
  const TRect2D Box = A.GetBoundBox();
  for (const TVLine2D& Chord : Ring.Chords()) {
    Chords += Chord.Length();
    Least = std::min(Least, Chord.SegmentDistanceTo(P));
    const TPoint2D& Q = Chord.EndPoint;
    Require(Q.X >= Box.Min.X - Ring.Rounding() && Q.X <= Box.Max.X + Ring.Rounding() &&
                Q.Y >= Box.Min.Y - Ring.Rounding() && Q.Y <= Box.Max.Y + Ring.Rounding(),
            "the box holds the curve");
  }
  const double Length = A.CurveLength();
  const double Polygon = (A.P1 - A.P0).Mag() + (A.P2 - A.P1).Mag() + (A.P3 - A.P2).Mag();
  Require(Length >= Chords - Ring.Rounding(), "no chords exceed the curve");
  Require(Length <= Polygon * (1 + 1e-11) + Ring.Rounding(),
          "the curve is no longer than its polygon");
  double T = 0.0;
  TPoint2D Foot;
  const double Distance = A.DistanceTo(P, 0.0, T, Foot);
  Require(std::abs(Distance - Least) <= Ring.Error() + 1e3 * Ring.Rounding() + 1e-14 * P.Mag(),
          "as near as its chords");
  TBezierSegment2D Left;
  TBezierSegment2D Right;
  A.Split(0.3, Left, Right);
  Require(std::abs(Left.CurveLength() + Right.CurveLength() - Length) <= 1e-9 * (1.0 + Length),
          "the parts add up");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const bool IsPart = Bytes.Below(4) == 0;
  const TBezierSegment2D A = MakeCubic(Bytes);
  const TBezierSegment2D B = IsPart ? PartOf(A, Bytes) : MakeCubic(Bytes);
  CheckMeasures(A, Bytes.Point());
  CheckPair(A, B);
  if (IsPart) CheckOverlap(A, B);
  return 0;
}
