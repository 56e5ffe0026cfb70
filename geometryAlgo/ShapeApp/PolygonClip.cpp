#include <algorithm>
#include <cmath>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <string_view>

#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"

namespace tarnalgo {

namespace {

// Integers a model unit, and the areas below and between which outlines count as degenerate and
// alike.
constexpr double kSimpleScale = 1000000.0;
constexpr double kNoArea = 1e-12;
constexpr double kSameArea = 1e-9;
constexpr double kLargeArea = 1e-6;
constexpr double kMostAreaLost = 0.1;
constexpr double kShareOfAreaLost = 1e-12;

/// Raises the message unless the polygon has more points than a stroke to and fro.
void RequireCorners(const TVPolyline2D& Polygon, std::string_view Message) {
  if (Polygon.Count() < 3 || (Polygon.Count() == 3 && Polygon.IsClosed())) RaiseText(Message);
}

/// What `Action` answers; a failure of the clipping library becomes one of this library.
template <class TAction>
auto Translated(std::string_view Where, TAction Action) {
  try {
    return Action();
  } catch (const ClipperLib::clipperException& Error) {
    RaiseError(Where, Error.what());
  }
}

TVPolyline2DList Polylines(const TPaths& Paths, double Scale) {
  TVPolyline2DList Result;
  for (const TPath& Path : Paths) Result.Add(std::make_unique<TVPolyline2D>(Path, Scale));
  return Result;
}

/// The largest polyline, by absolute area, changes places with the first.
/// Ties: the first of the largest.
void PutLargestFirst(TVPolyline2DList& List) {
  int Largest = -1;
  double Most = 0.0;
  for (int I = 0; I < List.Count(); ++I) {
    const double Area = std::abs(List[I]->Area());
    if (!(Area > Most)) continue;
    Most = Area;
    Largest = I;
  }
  if (Largest > 0) std::swap(*List[0], *List[Largest]);
}

TPaths Intersection(const TPath& A, const TPath& B) {
  TPaths Solution;
  ClipperLib::Clipper Clipper;
  // A path without area is refused; what it has in common with anything has none either.
  if (!Clipper.AddPath(A, ClipperLib::ptSubject, true)) return Solution;
  if (!Clipper.AddPath(B, ClipperLib::ptClip, true)) return Solution;
  Clipper.Execute(ClipperLib::ctIntersection, Solution, ClipperLib::pftNonZero);
  std::erase_if(Solution, [](const TPath& Path) { return ClipperLib::Area(Path) == 0.0; });
  return Solution;
}

double SummedArea(const TPaths& Paths) {
  double Sum = 0.0;
  for (const TPath& Path : Paths) Sum += ClipperLib::Area(Path);
  return Sum;
}

bool HoldsEveryVertex(const TVPolyline2D& A, const TVPolyline2D& B) {
  return std::all_of(B.begin(), B.end(),
                     [&A](const TPoint2D& P) { return A.RelationWithPoint(P) != srOut; });
}

}  // namespace

bool TPolygonBasicAlgo::IsSimple(const TVPolyline2D& Poly) {
  RequireCorners(Poly, "Error In FUNC[IsSimple]");
  constexpr double kSquare = kSimpleScale * kSimpleScale;
  TPath Path = Poly.ToPath(kSimpleScale);
  const double Area = std::abs(ClipperLib::Area(Path)) / kSquare;
  if (Area < kNoArea) return false;
  if (ClipperLib::Area(Path) < 0.0) ClipperLib::ReversePath(Path);
  return Translated("TPolygonBasicAlgo.IsSimple", [&] {
    ClipperLib::Clipper Clipper;
    Clipper.AddPath(Path, ClipperLib::ptSubject, true);
    TPaths Solution;
    Clipper.Execute(ClipperLib::ctUnion, Solution, ClipperLib::pftPositive);
    if (Solution.size() != 1) return false;
    const double Difference = std::abs(std::abs(ClipperLib::Area(Solution[0])) / kSquare - Area);
    return Difference < kSameArea || (Area > kLargeArea && Difference < kMostAreaLost &&
                                      Difference / Area < kShareOfAreaLost);
  });
}

TVPolyline2DList TPolygonBasicAlgo::PolygonSimplify(const TVPolyline2D& Poly, double Coeff) {
  RequireCorners(Poly, "Error In FUNC[PolygonSimplify]");
  const TPath Path = Poly.ToPath(Coeff);
  const TPaths Solution = Translated("TPolygonBasicAlgo.PolygonSimplify", [&] {
    TPaths Simple;
    ClipperLib::SimplifyPolygon(Path, Simple, ClipperLib::pftNonZero);
    return Simple;
  });
  TVPolyline2DList Result = Polylines(Solution, Coeff);
  PutLargestFirst(Result);
  return Result;
}

TVPolyline2DList TPolygonBasicAlgo::PolygonIntersection(const TVPolyline2D& PolyA,
                                                        const TVPolyline2D& PolyB) {
  const TPaths Common = Translated("TPolygonBasicAlgo.PolygonIntersection", [&] {
    return Intersection(PolyA.ToPath(kIntegerScale), PolyB.ToPath(kIntegerScale));
  });
  TVPolyline2DList Result = Polylines(Common, kIntegerScale);
  PutLargestFirst(Result);
  return Result;
}

bool TPolygonBasicAlgo::PolyContains(const TVPolyline2D& PolyA, const TVPolyline2D& PolyB,
                                     double AbsTol, double RelTol) {
  constexpr double kSquare = kIntegerScale * kIntegerScale;
  const TPath A = PolyA.ToPath(kIntegerScale);
  const TPath B = PolyB.ToPath(kIntegerScale);
  if (PolyB.IsEmpty() || ClipperLib::Area(A) == 0.0) return false;
  const double Area = std::abs(ClipperLib::Area(B)) / kSquare;
  if (Area == 0.0) return HoldsEveryVertex(PolyA, PolyB);
  return Translated("TPolygonBasicAlgo.PolyContains", [&] {
    return Area - SummedArea(Intersection(A, B)) / kSquare <= AbsTol + RelTol * Area;
  });
}

}  // namespace tarnalgo
