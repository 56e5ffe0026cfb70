// A polyline, and every question and edit, with coordinates that may be anything.

#include <cmath>
#include <vector>

#include "fuzz/Bytes.h"
#include "geometryAlgo/VedaType.h"
#include "host/Exceptions.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

TVPolyline2D MakePolyline(TBytes& Bytes, bool Wild) {
  TVPolyline2D Result;
  for (int Count = Bytes.Below(24); Count > 0; --Count) {
    if (!Wild) {
      Result.Add(Bytes.Point());
      continue;
    }
    const double X = Bytes.Anything();
    Result.Add({X, Bytes.Anything()});
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

void CheckInvariants(const TVPolyline2D& A, const TVPolyline2D& B) {
  const TVRect2D Box = A.BoundBox();
  for (const TPoint2D& P : A) Require(Box.IsPointIn(P), "the box holds every vertex");
  TVPolyline2D Turned = A;
  Turned.Negative();
  const double Reach = A.IsEmpty() ? 0.0 : Box.Width() + Box.Height();
  Require(std::abs(Turned.Area() + A.Area()) <= 1e-12 * Reach * Reach,
          "reversing negates the area");
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  Require(A.CrossWith(B, Points, Lines) == A.IsCrossWith(B), "two answers to one question");
  for (const TPoint2D& P : Points) {
    Require(A.DistTo(P) <= 2 * kLinearTolerance && B.DistTo(P) <= 2 * kLinearTolerance,
            "a crossing lies on both polylines");
  }
  const TVPolyline2D Hull = A.ConvexHull();
  for (const TPoint2D& P : A) {
    Require(Hull.Count() < 3 || Hull.RelationWithPoint(P, 2 * kHullSlack) != srOut,
            "the hull holds every vertex");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const bool IsWild = Bytes.Below(4) == 0;
  const TVPolyline2D A = MakePolyline(Bytes, IsWild);
  const TVPolyline2D B = MakePolyline(Bytes, IsWild);
  const double X = Bytes.Anything();
  const TPoint2D P(X, Bytes.Anything());
  Survive(A, B, P, Bytes.Anything());
  if (!IsWild) CheckInvariants(A, B);
  return 0;
}
