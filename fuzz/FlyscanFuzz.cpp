// Flying-cut grouping: the keys of edges, the passes of their runs (each edge cut once, in order
// along the line, nothing flown that need not be); the index of holes and what crosses them against
// chords of each.

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <tuple>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/Ring.h"
#include "geometryAlgo/flyscanAlgo.h"
#include "tests/support/Plate.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using fuzz::TRing;

/// An edge whichever way it runs, with its channel.
using TCut = std::tuple<int, double, double, double, double>;

TCut CutOf(int Port, const TPoint2D& A, const TPoint2D& B) {
  return std::min(TCut(Port, A.X, A.Y, B.X, B.Y), TCut(Port, B.X, B.Y, A.X, A.Y));
}

void CheckKeys(const TLinearSegment& Segment) {
  Require(Segment.LineAngle > -0.001 && Segment.LineAngle < kPi, "an angle within half a turn");
  const TPoint2D V = Segment.Line.EndPoint - Segment.Line.StartPoint;
  const TPoint2D Way = DcsX.RotateBy(Segment.LineAngle);
  Require(V.Mag() == 0.0 || V.DotMul(Way) >= V.Mag() * (1 - 1e-9), "the angle of the line");
}

void CheckPass(const TLinearSegmentList& Run, const TFlyCurves& Pass, std::multiset<TCut>& Cuts) {
  const TGeCurve2D* Before = nullptr;
  double Reached = -kStartOfMinimum;
  bool IsAfterGap = false;
  for (const TFlyCurve* Piece : Pass) {
    const TGeCurve2D& Curve = *Piece->GeCurve();
    if (Piece->IsFlyGap()) {
      Require(Before && !IsAfterGap, "a gap lies between two cuts");
    } else {
      Cuts.insert(CutOf(Piece->ChannelPort(), Curve.StartPoint(), Curve.EndPoint()));
      const double Low = Curve.StartPoint().DotMul(Run.AngVec);
      const double High = Curve.EndPoint().DotMul(Run.AngVec);
      Require(Pass.Count() == 1 || Low <= High, "a cut runs along the line");
      Require(Pass.Count() == 1 || Low >= Reached, "cuts start in order along the line");
      Reached = Low;
    }
    if (Before && (Piece->IsFlyGap() || IsAfterGap)) {
      Require(Curve.StartPoint() == Before->EndPoint(), "a gap joins its neighbours");
    } else if (Before) {
      // The gap is measured along the cut before, which may lean from the run by the angle band.
      const TPoint2D Way = (Before->EndPoint() - Before->StartPoint()).Normal();
      const double Gap = (Curve.StartPoint() - Before->EndPoint()).DotMul(Way);
      const double Size = Before->EndPoint().Mag() + Curve.StartPoint().Mag();
      Require(std::abs(Gap) <= CamSampleLen + 1.1e-6 + 1e-12 * Size, "a longer gap has a piece");
    }
    IsAfterGap = Piece->IsFlyGap();
    Before = &Curve;
  }
  Require(!IsAfterGap, "a pass ends with a cut");
}

void CheckReversal(TFlyCurves& Pass) {
  const TPoint2D Start = Pass.StartPoint();
  const TPoint2D End = Pass.EndPoint();
  Pass.ReverseDir();
  Require(Pass.StartPoint() == End && Pass.EndPoint() == Start, "a pass runs backwards");
  Pass.ReverseDir();
  Require(Pass.StartPoint() == Start && Pass.EndPoint() == End, "twice is the identity");
}

void CheckOverlaps(const TLinearSegmentList& Run, const TLine2D& Line) {
  const auto Along = [&](const TPoint2D& P) { return P.DotMul(Run.AngVec); };
  double Apart = kStartOfMinimum;
  double Size = 0.0;
  for (const TLinearSegment* Segment : Run) {
    const auto [Low, High] =
        std::minmax({Along(Segment->Line.StartPoint), Along(Segment->Line.EndPoint)});
    const auto [From, To] = std::minmax({Along(Line.StartPoint), Along(Line.EndPoint)});
    Apart = std::min(Apart, std::max(Low - To, From - High));
    Size = std::max({Size, std::abs(Low), std::abs(High), std::abs(From), std::abs(To)});
  }
  if (std::abs(Apart - kLinearTolerance) <= kLinearTolerance + 1e-12 * Size) return;
  Require(Run.CheckOverlap(Line) == (Apart < kLinearTolerance), "what overlaps along the line");
}

void CheckGrouping(TBytes& Bytes) {
  TFlyCurve Ports[3];
  for (int I = 0; I < 3; ++I) Ports[I].SetChannelPort(I * 1000000000 - 5);
  TLinearSegments Segments;
  std::multiset<TCut> Expected;
  for (int Count = Bytes.Below(32); Count > 0; --Count) {
    TFlyCurve& Ref = Ports[Bytes.Below(3)];
    const TPoint2D From = Bytes.Point();
    const TPoint2D To = Bytes.Below(2) == 0 ? Bytes.Point() : From + DcsX * Bytes.Coordinate();
    CheckKeys(*Segments.AddLine(&Ref, {From, To}));
    Expected.insert(CutOf(Ref.ChannelPort(), From, To));
  }
  Segments.SortByAngleIntercept();
  for (const TLinearSegment* A : Segments) {
    for (const TLinearSegment* B : Segments) {
      const int Sign = TLinearSegments::CompareAngleIntercept(*A, *B);
      const int Other = TLinearSegments::CompareAngleIntercept(*B, *A);
      // At the very edge of a band rounding may tie them one way round only.
      Require(!(Sign > 0 && Other > 0) && !(Sign < 0 && Other < 0), "never both ways round");
    }
  }
  std::multiset<TCut> Cuts;
  const TPoint2D Place = Bytes.Point();
  const TLine2D Line(Place, Bytes.Point());
  for (const auto& Run : test::CutIntoRuns(Segments)) {
    TOwningFlyCurves Pass;
    Run->BuildResult(Pass);
    CheckPass(*Run, Pass, Cuts);
    CheckReversal(Pass);
    CheckOverlaps(*Run, Line);
  }
  Require(Cuts == Expected, "every edge is cut exactly once, on its channel");
}

std::unique_ptr<TGeCurve2D> MakeHole(TBytes& Bytes) {
  const TPoint2D P = Bytes.GridPoint(16);
  const double Radius = 0.5 * (1 + Bytes.Below(8));
  switch (Bytes.Below(4)) {
    case 0:
      return std::make_unique<TGePolyline2D>(
          TDynPoints2D{P, P + DcsX * Radius, Bytes.GridPoint(16), P});
    case 1: {
      auto Bezier = std::make_unique<TGePolyBezier2D>();
      const TPoint2D Control = Bytes.GridPoint(16);
      Bezier->AddBezier({P, Control, Bytes.GridPoint(16), P});
      return Bezier;
    }
    case 2: {
      auto Slot = std::make_unique<TGeCompositeCurve2D>();
      Slot->AddCurve(std::make_unique<TGeLine2D>(P, P + DcsX * Radius));
      Slot->AddCurve(std::make_unique<TGeCircularArc2D>(P + DcsX * Radius, 1.0, P));
      return Slot;
    }
    default:
      return std::make_unique<TGeCircularArc2D>(P, Radius, 0.0, kFullTurn);
  }
}

/// The least distance between the chords of two curves, and whether they cross for sure.
void Compare(const TRing& A, const TRing& B, double& Least, bool& IsSure) {
  for (const TVLine2D& S : A.Chords()) Least = std::min(Least, B.DistanceTo(S.StartPoint));
  for (const TVLine2D& T : B.Chords()) {
    for (const TVLine2D& S : A.Chords()) {
      Least = std::min({Least, S.SegmentDistanceTo(T.StartPoint), T.SegmentDistanceTo(S.EndPoint)});
    }
  }
  fuzz::VisitSureCrossings(A, B, [&](const TVLine2D&, const TVLine2D&) { IsSure = true; });
  if (IsSure) Least = 0.0;
}

void CheckHoles(TBytes& Bytes) {
  constexpr double kSampling = 0.2;  // both curves within 0.1
  TFlyHoles Holes;
  std::vector<const TGeCurve2D*> Present;
  for (int Count = Bytes.Below(12); Count > 0; --Count) {
    Present.push_back(Holes.AddHole(MakeHole(Bytes)));
    if (Bytes.Below(4) > 0) continue;
    Holes.RemoveHole(Present.front());
    Present.erase(Present.begin());
  }
  Require(Holes.Count() == static_cast<int>(Present.size()), "the holes that are left");
  const TPoint2D Start = Bytes.GridPoint(16) + TPoint2D(0.25, 0.125);
  const TPoint2D Middle = Bytes.GridPoint(16);
  TGeCompositeCurve2D Line;
  Line.AddCurve(std::make_unique<TGeLine2D>(Start, Middle));
  Line.AddCurve(std::make_unique<TGeCircularArc2D>(Middle, 0.5, Bytes.GridPoint(16) + DcsX * 20.0));
  const TRing Ring{TLABPolyline(Line)};
  bool IsSure = false;
  double Nearest = kStartOfMinimum;
  for (const TGeCurve2D* Hole : Present) {
    const TRing Outline{TLABPolyline(*Hole)};
    double Least = kStartOfMinimum;
    bool Crosses = false;
    Compare(Ring, Outline, Least, Crosses);
    const bool IsExact = dynamic_cast<const TGeCompositeCurve2D*>(Hole) ||
                         dynamic_cast<const TGeCircularArc2D*>(Hole);
    IsSure = IsSure || (Crosses && IsExact);
    Nearest = std::min(Nearest, Least - Ring.Error() - Outline.Error() - (IsExact ? 0 : kSampling));
  }
  const bool Told = TCrossTool::CheckCrossWithHoles(Line, Holes.RTree());
  Require(Told || !IsSure, "a hole that is crossed for sure");
  Require(!Told || Nearest <= 2 * kLinearTolerance, "no hole comes near");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  if (Bytes.Below(3) == 0) {
    CheckHoles(Bytes);
  } else {
    CheckGrouping(Bytes);
  }
  return 0;
}
