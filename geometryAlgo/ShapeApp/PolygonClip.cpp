#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>
#include <string_view>
#include <utility>

#include "geometryAlgo/ClipperCall.h"
#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"
#include "host/Cadtypes/Constants.h"

namespace tarnalgo {

namespace {

/// Raises the message unless the polygon has more points than a stroke to and fro.
void RequireCorners(const TVPolyline2D& Polygon, std::string_view Message) {
  if (Polygon.Count() < 3 || (Polygon.Count() == 3 && Polygon.IsClosed())) RaiseText(Message);
}

/// The largest path, by absolute area, changes places with the first.
/// Ties: the first of the largest.
void PutLargestFirst(TPaths& Paths) {
  std::size_t Largest = 0;
  double Most = 0.0;
  for (std::size_t I = 0; I < Paths.size(); ++I) {
    const double Area = TPathUtils::Area(Paths[I], true);
    if (!(Area > Most)) continue;
    Most = Area;
    Largest = I;
  }
  if (Largest > 0) std::swap(Paths.front(), Paths[Largest]);
}

TPaths Intersection(const TPath& A, const TPath& B) {
  TPaths Solution;
  ClipperLib::Clipper Clipper;
  // A path without area is refused; what it has in common with anything has none either.
  if (!Clipper.AddPath(A, ClipperLib::ptSubject, true)) return Solution;
  if (!Clipper.AddPath(B, ClipperLib::ptClip, true)) return Solution;
  Clipper.Execute(ClipperLib::ctIntersection, Solution, ClipperLib::pftNonZero);
  std::erase_if(Solution, [](const TPath& Path) { return TPathUtils::Area(Path, true) == 0.0; });
  return Solution;
}

/// Summed with their signs, in integer units squared.
double SummedArea(const TPaths& Paths) {
  double Sum = 0.0;
  for (const TPath& Path : Paths) Sum += TPathUtils::Area(Path, false);
  return Sum;
}

/// Area of the region of a ring (non-zero rule). The area of the ring itself is another one where
/// it crosses itself: loops of both senses cancel, loops gone round twice count twice.
double RegionArea(const TPath& Ring) {
  TPaths Region;
  ClipperLib::Clipper Clipper;
  Clipper.AddPath(Ring, ClipperLib::ptSubject, true);
  Clipper.Execute(ClipperLib::ctUnion, Region, ClipperLib::pftNonZero);
  return SummedArea(Region);
}

bool HoldsEveryVertex(const TVPolyline2D& A, const TVPolyline2D& B) {
  return std::all_of(B.begin(), B.end(),
                     [&A](const TPoint2D& P) { return A.RelationWithPoint(P) != srOut; });
}

}  // namespace

bool TPolygonBasicAlgo::IsSimple(const TVPolyline2D& Poly) {
  RequireCorners(Poly, "Error In FUNC[IsSimple]");
  constexpr double kSquare = kSimpleScale * kSimpleScale;
  TPath Path = TPathUtils::CreatePath(Poly, kSimpleScale);
  const double Signed = TPathUtils::Area(Path, false);
  const double Area = std::abs(Signed) / kSquare;
  if (Area < kNoArea) return false;
  if (Signed < 0.0) TPathUtils::Reverse(Path);
  return CallClipper("TPolygonBasicAlgo.IsSimple", [&] {
    ClipperLib::Clipper Clipper;
    Clipper.AddPath(Path, ClipperLib::ptSubject, true);
    TPaths Solution;
    Clipper.Execute(ClipperLib::ctUnion, Solution, ClipperLib::pftPositive);
    if (Solution.size() != 1) return false;
    const double Difference = std::abs(TPathUtils::Area(Solution[0], true) / kSquare - Area);
    return Difference < kSameArea || (Area > kLargeArea && Difference < kMostAreaLost &&
                                      Difference / Area < kShareOfAreaLost);
  });
}

TVPolyline2DList TPolygonBasicAlgo::PolygonSimplify(const TVPolyline2D& Poly, double Coeff) {
  RequireCorners(Poly, "Error In FUNC[PolygonSimplify]");
  const TPath Path = TPathUtils::CreatePath(Poly, Coeff);
  TPaths Simple;
  CallClipper("TPolygonBasicAlgo.PolygonSimplify",
              [&] { ClipperLib::SimplifyPolygon(Path, Simple, ClipperLib::pftNonZero); });
  PutLargestFirst(Simple);
  return TPathUtils::CreatePolylines(Simple, Coeff);
}

TVPolyline2DList TPolygonBasicAlgo::PolygonIntersection(const TVPolyline2D& PolyA,
                                                        const TVPolyline2D& PolyB) {
  TPaths Common = CallClipper("TPolygonBasicAlgo.PolygonIntersection", [&] {
    return Intersection(TPathUtils::CreatePath(PolyA, kIntegerScale),
                        TPathUtils::CreatePath(PolyB, kIntegerScale));
  });
  PutLargestFirst(Common);
  return TPathUtils::CreatePolylines(Common, kIntegerScale);
}

bool TPolygonBasicAlgo::PolyContains(const TVPolyline2D& PolyA, const TVPolyline2D& PolyB,
                                     double AbsTol, double RelTol) {
  constexpr double kSquare = kIntegerScale * kIntegerScale;
  const TPath A = TPathUtils::CreatePath(PolyA, kIntegerScale);
  const TPath B = TPathUtils::CreatePath(PolyB, kIntegerScale);
  return CallClipper("TPolygonBasicAlgo.PolyContains", [&] {
    const bool HasAreaA = TPathUtils::Area(A, true) > 0.0 || RegionArea(A) > 0.0;
    if (PolyB.IsEmpty() || !HasAreaA) return false;
    const double Area = RegionArea(B);
    if (Area == 0.0) return HoldsEveryVertex(PolyA, PolyB);
    const double Outside = (Area - SummedArea(Intersection(A, B))) / kSquare;
    return Outside <= AbsTol + RelTol * (Area / kSquare);
  });
}

}  // namespace tarnalgo
