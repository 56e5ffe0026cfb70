// Polylines with coordinates that may be anything: every question and edit ends. On the grid and a
// hair off it: crossings, self-intersections, areas, distances and places against exact integers
// and plain loops over the edges; what edits leave lies where the polyline lay.

#include <algorithm>
#include <cmath>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/Ring.h"
#include "geometryAlgo/VedaType.h"
#include "tests/support/GridGeometry.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using fuzz::TRing;

enum class TKind { Grid, Drawn, Wild };

TVPolyline2D MakePolyline(TBytes& Bytes, TKind Kind) {
  TVPolyline2D Result;
  for (int Count = Bytes.Below(24); Count > 0; --Count) {
    if (Kind == TKind::Wild) {
      Result.Add(Bytes.AnyPoint());
    } else {
      Result.Add(Kind == TKind::Grid ? Bytes.GridPoint(12) : Bytes.Point());
    }
  }
  if (Result.Count() > 2 && Bytes.Below(2) == 1) Result.Add(Result[0]);
  return Result;
}

/// Questions that only have to end, without undefined behaviour.
void Survive(const TVPolyline2D& A, const TVPolyline2D& B, const TPoint2D& P, double U) {
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  TPoint2D Nearest;
  A.CrossWith(B, Points, Lines);
  A.IsSelfIntersect();
  A.RelationWith(B);
  A.RelationWithPoint(P);
  A.DistTo(P, Nearest);
  A.CalcPointByParam(U);
  A.CalcTravelPos(U);
  A.CalcDerivative(U);
  A.CalcFirstParamByPoint(P);
  A.ConvexHull();
  A.Gravity();
  A.IsRect();
  A.IsConvexPolygon();
  TVPolyline2D Edited = A;
  Edited.Simplify();
  Edited.CollinearSmooth();
  Edited.DeleteNeighbourClosed();
  Edited.Trim();
}

/// Against the distance to each edge and a ray.
void CheckPlace(const TVPolyline2D& A, const TPoint2D& P) {
  const TRing Ring{TLABPolyline(A)};
  double Least = kStartOfMinimum;
  for (int I = 0; I + 1 < A.Count(); ++I) Least = std::min(Least, A.Line(I).SegmentDistanceTo(P));
  if (A.Count() == 1) Least = A.First().DistanceTo(P);
  TPoint2D Nearest;
  const double Distance = A.DistTo(P, Nearest);
  const double Rounding = Ring.Rounding() + 1e-14 * P.Mag();
  Require(std::abs(Distance - Least) <= Rounding, "the distance to the nearest edge");
  if (A.Count() < 2) return;
  Require(std::abs(Nearest.DistanceTo(P) - Distance) <= Rounding, "the foot is as far");
  Require(std::abs(A.Area() - Ring.Area()) <= Ring.AreaRounding(), "the area of its triangles");
  Require(std::abs(A.TotalLength() - Ring.Length()) <= 100 * Ring.Rounding(), "edge by edge");
  if (std::abs(Ring.DistanceTo(P) - kLinearTolerance) <= Rounding) return;
  const TShapeRelation Inside = Ring.Holds(P) ? srIn : srOut;
  Require(A.RelationWithPoint(P) == (Ring.DistanceTo(P) < kLinearTolerance ? srOn : Inside),
          "on the ring, else as a ray tells");
}

void CheckCuts(const TVPolyline2D& A, double U) {
  if (A.Count() < 2) return;
  const double End = A.Count() - 1;
  const double At = std::fmod(std::abs(U), End);
  const double Length = A.TotalLength();
  const double Parts = A.SubCurve(0, At).TotalLength() + A.SubCurve(At, End).TotalLength();
  Require(std::abs(Parts - Length) <= 1e-9 * (1.0 + Length), "the parts add up");
  const TPoint2D P = A.CalcPointByParam(At);
  const double Found = A.CalcFirstParamByPoint(P, kLinearTolerance);
  Require(Found >= 0.0 && Found <= At + 1.0, "a point of the polyline has a parameter");
  const TPoint2D Place = A.CalcPointByParam(Found);
  Require(Place.Equals(P, 2 * kLinearTolerance + 1e-14 * P.Mag()), "of that place");
  TVPolyline2D Turned = A;
  Turned.Negative();
  Require(std::abs(Turned.Area() + A.Area()) <= TRing{TLABPolyline(A)}.AreaRounding(),
          "reversing negates the area");
}

void CheckEdits(const TVPolyline2D& A) {
  const auto Check = [&](const TVPolyline2D& Edited, double Eps) {
    Require(Edited.IsEmpty() == A.IsEmpty(), "something is left");
    for (const TPoint2D& P : Edited) {
      Require(std::find(A.begin(), A.end(), P) != A.end(), "no vertex is new");
    }
    for (const TPoint2D& P : A) {
      Require(Edited.DistTo(P) <= Eps + 1e-14 * P.Mag(),
              "no vertex was farther than the tolerance");
    }
  };
  TVPolyline2D Edited = A;
  Edited.DeleteNeighbourClosed();
  Check(Edited, kLinearTolerance);
  Edited = A;
  Edited.CollinearSmooth();
  Check(Edited, kLinearTolerance);
  Edited = A;
  Edited.Simplify(0.25);
  Check(Edited, 0.25);
}

void CheckCrossings(const TVPolyline2D& A, const TVPolyline2D& B) {
  const TVRect2D Box = A.BoundBox();
  for (const TPoint2D& P : A) Require(Box.IsPointIn(P), "the box holds every vertex");
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  const bool IsFound = A.CrossWith(B, Points, Lines);
  Require(IsFound == A.IsCrossWith(B) && IsFound == B.IsCrossWith(A), "one answer to one question");
  for (const TVLine2D& Line : Lines) Points.push_back(Line.Center());
  const double Reach = 2 * kLinearTolerance + 1e-14 * (Box.Width() + Box.Height());
  for (const TPoint2D& P : Points) {
    Require(A.DistTo(P) <= Reach && B.DistTo(P) <= Reach, "a crossing lies on both polylines");
  }
  const TVPolyline2D Hull = A.ConvexHull();
  for (const TPoint2D& P : A) {
    Require(Hull.Count() < 3 || Hull.RelationWithPoint(P, 2 * kHullSlack) != srOut,
            "the hull holds every vertex");
  }
}

/// In exact arithmetic.
void CheckGrid(const TVPolyline2D& A, const TVPolyline2D& B) {
  Require(A.IsSelfIntersect() == test::IsSelfIntersect(A.Points()), "it meets itself");
  const test::TGridCommon Expected(A.Points(), B.Points());
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  A.CrossWith(B, Points, Lines);
  Require(Points.size() == Expected.Places.size(), "as many places");
  for (const test::TGridPlace& Place : Expected.Places) {
    const auto Found = std::count_if(Points.begin(), Points.end(), [&](const TPoint2D& P) {
      return P.Equals(Place.Point(), kLinearTolerance);
    });
    Require(Found == 1, "every place once");
  }
  std::vector<test::TGridSegment> Stretches;
  for (const TVLine2D& Line : Lines) {
    const auto [From, To] =
        std::minmax({test::TGridPoint(Line.StartPoint), test::TGridPoint(Line.EndPoint)});
    Stretches.push_back({From, To});
  }
  std::sort(Stretches.begin(), Stretches.end());
  Require(Stretches == Expected.Stretches, "every stretch once");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  constexpr TKind kKinds[] = {TKind::Wild, TKind::Drawn, TKind::Drawn, TKind::Grid};
  const TKind Kind = kKinds[Bytes.Below(4)];
  const TVPolyline2D A = MakePolyline(Bytes, Kind);
  const TVPolyline2D B = MakePolyline(Bytes, Kind);
  Survive(A, B, Bytes.AnyPoint(), Bytes.Anything());
  if (Kind == TKind::Wild) return 0;
  CheckPlace(A, Bytes.Point());
  CheckCuts(A, Bytes.Coordinate() + Bytes.Byte() / 256.0);
  CheckEdits(A);
  CheckCrossings(A, B);
  if (Kind == TKind::Grid) CheckGrid(A, B);
  return 0;
}
