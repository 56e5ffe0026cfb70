// Two host curves made of bytes: crossings lie on both, none that chords prove is missed, swapping
// the curves changes nothing but the order; samples, boxes, lengths and nearest points against
// chords.

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/Ring.h"
#include "host/Cadgeometry.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using fuzz::TRing;

std::unique_ptr<TGeCurve2D> MakeCurve(TBytes& Bytes, int Depth);

std::unique_ptr<TGeCurve2D> MakeComposite(TBytes& Bytes, int Depth) {
  auto Curve = std::make_unique<TGeCompositeCurve2D>();
  for (int Count = Bytes.Below(4); Count > 0; --Count) {
    Curve->AddCurve(MakeCurve(Bytes, Depth + 1));
  }
  return Curve;
}

std::unique_ptr<TGeCurve2D> MakePolyBezier(TBytes& Bytes) {
  auto Curve = std::make_unique<TGePolyBezier2D>();
  TPoint2D From = Bytes.Point();
  for (int Count = 1 + Bytes.Below(2); Count > 0; --Count) {
    const TPoint2D Control = Bytes.Point();
    const TPoint2D Other = Bytes.Point();
    const TPoint2D To = Bytes.Point();
    Curve->AddBezier({From, Control, Other, To});
    From = To;
  }
  return Curve;
}

std::unique_ptr<TGeCurve2D> MakePolyline(TBytes& Bytes) {
  std::vector<TPoint2D> Points;
  for (int Count = Bytes.Below(6); Count > 0; --Count) Points.push_back(Bytes.Point());
  return std::make_unique<TGePolyline2D>(Points);
}

std::unique_ptr<TGeCurve2D> MakeCurve(TBytes& Bytes, int Depth) {
  switch (Bytes.Below(Depth < 2 ? 5 : 4)) {
    case 0: {
      const TPoint2D From = Bytes.Point();
      return std::make_unique<TGeLine2D>(From, Bytes.Point());
    }
    case 1: {
      const TPoint2D Center = Bytes.Point();
      const double Radius = 0.5 * (1 + Bytes.Below(16));
      const double Start = kQuarterTurn / 4 * Bytes.Below(16);
      return std::make_unique<TGeCircularArc2D>(Center, Radius, Start,
                                                kQuarterTurn / 4 * (Bytes.Below(33) - 16));
    }
    case 2:
      return MakePolyBezier(Bytes);
    case 3:
      return MakePolyline(Bytes);
    default:
      return MakeComposite(Bytes, Depth);
  }
}

/// Within the tolerance of the curve, with what its coordinates round to. Where a cubic stops and
/// turns back its nearest point is told to about a thousand roundings only.
bool IsOnCurve(const TGeCurve2D& Curve, const TPoint2D& P) {
  double Distance = 0.0;
  Curve.NearestParam(P, Distance);
  const TRect2D Box = Curve.GetBoundBox();
  return Distance <= 2 * kLinearTolerance + 1e-12 * (Box.Min.Mag() + Box.Max.Mag());
}

/// Each crossing of chords that is sure has a result near it.
void CheckNoneMissed(const TGeCurve2D& A, const TGeCurve2D& B,
                     const std::vector<TIntersect2D>& Results) {
  const TRing RingA{TLABPolyline(A)};
  const TRing RingB{TLABPolyline(B)};
  const double Room = RingA.Error() + RingB.Error() + 4 * kLinearTolerance;
  fuzz::VisitSureCrossings(RingA, RingB, [&](const TVLine2D& S, const TVLine2D& T) {
    const double Reach = S.Length() + T.Length() + Room;
    for (const TIntersect2D& Result : Results) {
      const int Steps = Result.IsOverlap ? 64 : 1;
      const double Step = (Result.EndOnFirst.Param - Result.OnFirst.Param) / Steps;
      for (int I = 0; I <= Steps; ++I) {
        const TPoint2D P = A.PointAtParam(Result.OnFirst.Param + I * Step);
        if (P.DistanceTo(S.Center()) <= Reach) return;
      }
    }
    Require(false, "no sure crossing is missed");
  });
}

void CheckCrossings(const TGeCurve2D& A, const TGeCurve2D& B) {
  std::vector<TIntersect2D> Results;
  std::vector<TIntersect2D> Swapped;
  A.IntersectCurve(B, Results, DefTol);
  B.IntersectCurve(A, Swapped, DefTol);
  Require(Results.empty() == Swapped.empty(), "curves that meet, meet both ways round");
  const TRect2D Box = A.GetBoundBox();
  const double Room = 2 * kLinearTolerance + 1e-12 * (Box.Min.Mag() + Box.Max.Mag());
  double Last = A.ParamFrom();
  for (const TIntersect2D& Result : Results) {
    Require(Result.OnFirst.Param >= Last, "along the first curve");
    Last = Result.OnFirst.Param;
    Require(Result.EndOnFirst.Param >= Last && Result.EndOnFirst.Param <= A.ParamTo(),
            "a parameter lies in the range");
    for (const TPoint2D& P : {Result.OnFirst.Point, Result.EndOnFirst.Point}) {
      Require(IsOnCurve(A, P), "a crossing lies on the first curve");
      Require(IsOnCurve(B, P), "a crossing lies on the second curve");
    }
    for (const auto& [First, Second] : {std::pair(Result.OnFirst, Result.OnSecond),
                                        std::pair(Result.EndOnFirst, Result.EndOnSecond)}) {
      Require(First.Point.DistanceTo(Second.Point) <= Room, "one place on both curves");
      Require(Second.Param >= B.ParamFrom() && Second.Param <= B.ParamTo(),
              "a parameter lies in the range of the second curve");
    }
  }
  for (auto At = Results.begin(); At != Results.end(); ++At) {
    const auto IsSame = [&](const TIntersect2D& Other) {
      return !At->IsOverlap && !Other.IsOverlap && Other.Point().DistanceTo(At->Point()) < 1e-7;
    };
    Require(std::none_of(Results.begin(), At, IsSame), "a place counts once");
  }
  CheckNoneMissed(A, B, Results);
}

void CheckMeasures(const TGeCurve2D& Curve, const TPoint2D& P) {
  const TRing Ring{TLABPolyline(Curve)};
  const TRect2D Box = Curve.GetBoundBox();
  const double Slack = kLinearTolerance + Ring.Rounding() + 1e-14 * P.Mag();
  double Chords = 0.0;
  double Least = kStartOfMinimum;
  for (const TVLine2D& Chord : Ring.Chords()) {
    Require(Box.Contains(Chord.EndPoint, Slack), "the box holds it");
    Chords += Chord.Length();
    Least = std::min(Least, Chord.SegmentDistanceTo(P));
  }
  if (Ring.Chords().empty()) return;
  const double Length = Curve.CurveLength();
  Require(Length >= Chords * (1 - 1e-9) - 1e3 * Slack, "no chords exceed the curve");
  double Distance = 0.0;
  const double Param = Curve.NearestParam(P, Distance);
  // A member of a single point has no chord; it may be nearer.
  Require(Distance <= Least + Ring.Error() + 1e3 * Slack, "no farther than its chords");
  // Beside a gap the parameters of a composite within a composite round to either side of it.
  if (dynamic_cast<const TGeCompositeCurve2D*>(&Curve)) return;
  Require(Curve.PointAtParam(Param).DistanceTo(P) <= Distance + Slack, "the place is as near");
}

void CheckSamples(const TGeCurve2D& Curve) {
  const std::vector<TPoint2D> Samples = Curve.Sample(0.1);
  if (Curve.IsEmpty()) return Require(Samples.empty(), "an empty curve has no samples");
  Require(!Samples.empty(), "a curve has samples");
  Require(Samples.front() == Curve.StartPoint(), "the first sample is the start");
  for (std::size_t I = 0; I < Samples.size(); I += 1 + Samples.size() / 32) {
    Require(IsOnCurve(Curve, Samples[I]), "a sample lies on the curve");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const std::unique_ptr<TGeCurve2D> A = MakeCurve(Bytes, 0);
  const std::unique_ptr<TGeCurve2D> B = MakeCurve(Bytes, 0);
  CheckCrossings(*A, *B);
  CheckSamples(*A);
  CheckMeasures(*B, Bytes.Point());
  const TPoint2D Start = A->StartPoint();
  A->Reverse();
  Require(A->EndPoint() == Start, "reversing swaps the ends");
  return 0;
}
