// Simplicity, triangles, angles, distances and common regions of grid outlines, against whole
// numbers and windings counted at sample points.

#include <algorithm>
#include <cmath>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/GridOutline.h"
#include "geometryAlgo/ShapeApp.h"
#include "geometryAlgo/ShapeApp/SimpleRing.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

using TPoints = std::vector<TPoint2D>;
constexpr int kSide = 12;

/// Windings of a closed list about a point that lies on none of its edges.
int Winding(const TPoints& Ring, const TPoint2D& P) {
  int Turns = 0;
  for (std::size_t I = 1; I < Ring.size(); ++I) {
    const bool IsAbove = Ring[I - 1].Y > P.Y;
    if (IsAbove == (Ring[I].Y > P.Y)) continue;
    const double Side = (Ring[I] - Ring[I - 1]).CrossMul(P - Ring[I - 1]);
    if (IsAbove ? Side < 0.0 : Side > 0.0) Turns += IsAbove ? -1 : 1;
  }
  return Turns;
}

/// Whether an odd number of the outlines, open lists, hold the point.
bool IsInOutlines(const TVPolyline2DList& Outlines, const TPoint2D& P) {
  int Count = 0;
  for (const TVPolyline2D* Outline : Outlines) {
    TPoints Ring = Outline->ToTPoint2DList();
    Ring.push_back(Ring.front());
    Count += Winding(Ring, P) != 0 ? 1 : 0;
  }
  return Count % 2 == 1;
}

/// The outlines hold the sample points that `IsIn` names; points near an edge are left out.
template <class TIsIn>
void CheckSamples(const TVPolyline2DList& Outlines, const std::vector<TPoints>& Rings, TIsIn IsIn) {
  for (int K = 0; K < kSide * kSide; ++K) {
    const TPoint2D P(K % kSide + 0.37, K / kSide + 0.41);
    const auto IsNear = [&](const TPoints& Ring) { return test::FarthestFrom(Ring, {P}) < 1e-3; };
    if (std::any_of(Rings.begin(), Rings.end(), IsNear)) continue;
    Require(IsInOutlines(Outlines, P) == IsIn(P), "a region holds the points it should");
  }
}

/// Vertices on straight ways give triangles without area.
void CheckTriangles(const TPoints& Ring) {
  const TVPolyline2DList Triangles = TPolygonBasicAlgo::TriangleDivide(TVPolyline2D(Ring));
  Require(Triangles.Count() == static_cast<int>(Ring.size()) - 3, "n - 2 triangles");
  double Area = 0.0;
  for (const TVPolyline2D* Triangle : Triangles) {
    TPoints Corners = Triangle->ToTPoint2DList();
    Require(Corners.size() == 3, "a triangle has three points");
    for (const TPoint2D& P : Corners) {
      Require(std::count(Ring.begin(), Ring.end(), P) > 0, "corners of the polygon");
    }
    Corners.push_back(Corners.front());
    const double Own = fuzz::DoubleArea(Corners);
    Require(Own >= 0.0, "a triangle is counter-clockwise");
    Require(Own == 0.0 || test::Holds(Ring, Corners), "a triangle lies in the polygon");
    Area += Own;
  }
  Require(Area == fuzz::DoubleArea(Ring), "the triangles make up the polygon");
}

/// Whether a ring comes back to a place where it has been, against every pair of its edges.
void CheckTouch(TPoints Ring) {
  Ring.erase(std::unique(Ring.begin(), Ring.end()), Ring.end());
  if (Ring.size() < 4) return;
  const bool IsSimple = test::IsSimple(Ring);
  Ring.pop_back();
  Require(TouchesItself(Ring) == !IsSimple, "a ring touches itself as whole numbers say");
}

/// Of any ring, the triangles of its region or none: what crosses itself is not cut up.
void CheckTrianglesOfAny(const TPoints& Ring) {
  const TVPolyline2DList Triangles = TPolygonBasicAlgo::TriangleDivide(TVPolyline2D(Ring));
  if (Triangles.IsEmpty()) return;
  Require(TPolygonBasicAlgo::IsSimple(TVPolyline2D(Ring)), "only what is simple is cut up");
  double Area = 0.0;
  for (const TVPolyline2D* Triangle : Triangles) {
    TPoints Corners = Triangle->ToTPoint2DList();
    Corners.push_back(Corners.front());
    const double Own = fuzz::DoubleArea(Corners);
    Require(Own >= 0.0, "a triangle is counter-clockwise");
    Area += Own;
  }
  Require(Area == std::abs(fuzz::DoubleArea(Ring)), "the triangles make up the ring");
}

void CheckLeastAngle(const TPoints& Ring) {
  double Least = kFullTurn;
  for (std::size_t I = 1; I < Ring.size(); ++I) {
    const TPoint2D Back = Ring[I - 1] - Ring[I];
    const TPoint2D Way = Ring[I + 1 < Ring.size() ? I + 1 : 1] - Ring[I];
    const double Angle = std::atan2(Way.CrossMul(Back), Way.DotMul(Back));
    Least = std::min(Least, Angle > 0.0 ? Angle : Angle + kFullTurn);
  }
  int Index = -1;
  const double Found = TPolygonBasicAlgo::MinInternalAngle(TVPolyline2D(Ring), Index);
  Require(std::abs(Found - Least) <= 1e-9 && Index >= 0, "the least angle");
}

void CheckTwo(const TPoints& A, const TPoints& B) {
  const TVPolyline2D PolyA(A);
  const TVPolyline2D PolyB(B);
  CheckSamples(TPolygonBasicAlgo::PolygonIntersection(PolyA, PolyB), {A, B},
               [&](const TPoint2D& P) { return Winding(A, P) != 0 && Winding(B, P) != 0; });
  const auto IsOutside = [](const TPoints& Ring, const TPoint2D& P) {
    return test::SideOf(Ring, P) < 0;
  };
  bool DoTouch = false;
  double Least = kStartOfMinimum;
  for (const test::TGridSegment& S : test::GridEdges(A)) {
    for (const test::TGridSegment& T : test::GridEdges(B)) {
      DoTouch = DoTouch || test::Meet(S, T).Exists();
    }
  }
  const bool DoMeet = DoTouch || !IsOutside(A, B[0]) || !IsOutside(B, A[0]);
  // Where the outlines touch, no wrong vertex and no crossing is not enough to lie inside.
  const bool IsIn = test::Holds(A, B);
  const bool IsSaidIn = TPolygonBasicAlgo::PolyContains(PolyA, PolyB, 1e-6, 0.0);
  Require(IsSaidIn ? IsIn : !IsIn || DoTouch, "a polygon lies inside as whole numbers say");
  for (const TPoint2D& P : A) Least = std::min(Least, test::FarthestFrom(B, {P}));
  for (const TPoint2D& P : B) Least = std::min(Least, test::FarthestFrom(A, {P}));
  const double Distance = TPolygonBasicAlgo::MinPolyDistance(PolyA, PolyB);
  Require(DoMeet ? Distance == 0.0 : std::abs(Distance - Least) <= 1e-9, "the least distance");
}

/// Simple by whole numbers is simple; a ring that winds twice about a point is not, nor is one that
/// winds the other way about some, unless both make up for one another.
void CheckSimplicity(const TPoints& Ring) {
  const bool IsSaidSimple = TPolygonBasicAlgo::IsSimple(TVPolyline2D(Ring));
  const double Area = fuzz::DoubleArea(Ring);
  if (Area == 0.0) return Require(!IsSaidSimple, "without an area it is not simple");
  if (test::IsSimple(Ring)) return Require(IsSaidSimple, "either sense is simple");
  bool WindsTwice = false;
  bool WindsBack = false;
  for (int K = 0; K < kSide * kSide; ++K) {
    const TPoint2D P(K % kSide + 0.37, K / kSide + 0.41);
    const int Turns = Area > 0.0 ? Winding(Ring, P) : -Winding(Ring, P);
    if (test::FarthestFrom(Ring, {P}) < 1e-3) continue;
    WindsTwice = WindsTwice || Turns > 1;
    WindsBack = WindsBack || Turns < 0;
  }
  Require(WindsTwice == WindsBack || !IsSaidSimple, "a ring that crosses itself is not simple");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const TPoints A = fuzz::GridOutline(Bytes, 16, kSide);
  if (A.empty()) return 0;
  Require(TPolygonBasicAlgo::IsSimple(TVPolyline2D(A)), "a simple outline is simple");
  CheckTriangles(A);
  CheckLeastAngle(A);
  const TPoints B = fuzz::GridOutline(Bytes, 10, kSide);
  if (!B.empty()) CheckTwo(A, B);
  TPoints Any = fuzz::GridPoints(Bytes, 10, kSide);
  if (Any.size() < 4) return 0;
  Any.push_back(Any.front());
  CheckSamples(TPolygonBasicAlgo::PolygonSimplify(TVPolyline2D(Any), 1e6), {Any},
               [&](const TPoint2D& P) { return Winding(Any, P) != 0; });
  CheckSimplicity(Any);
  CheckTouch(Any);
  CheckTrianglesOfAny(Any);
  return 0;
}
