// Hulls, rectangles, widths, diameters and circles of grid points, against brute force in whole
// numbers.

#include <algorithm>
#include <cmath>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/GridOutline.h"
#include "geometryAlgo/ShapeApp.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

using TPoints = std::vector<TPoint2D>;
/// The second of three collinear leading points is moved by so much.
constexpr double kMoved = 2e-5;

/// Corners alone, counter-clockwise, closed; exact on a grid. Fewer than three corners: empty.
TPoints ExactHull(TPoints Points) {
  std::sort(Points.begin(), Points.end(), [](const TPoint2D& A, const TPoint2D& B) {
    return A.X < B.X || (A.X == B.X && A.Y < B.Y);
  });
  TPoints Hull;
  for (int Pass = 0; Pass < 2; ++Pass) {
    const std::size_t Start = Hull.size();
    for (const TPoint2D& P : Points) {
      while (Hull.size() >= Start + 2 &&
             TPolygonBasicAlgo::Area(Hull.end()[-2], Hull.back(), P) <= 0.0) {
        Hull.pop_back();
      }
      Hull.push_back(P);
    }
    if (Pass == 0) Hull.pop_back();
    std::reverse(Points.begin(), Points.end());
  }
  return fuzz::DoubleArea(Hull) > 0.0 ? Hull : TPoints();
}

/// Every corner of the hull is there, nothing lies within, and it winds once.
void CheckHull(const TPoints& Found, const TPoints& Hull, double Slack) {
  Require(Found.size() > 3 && Found.front() == Found.back(), "a hull is closed");
  for (std::size_t I = 0; I + 1 < Hull.size(); ++I) {
    const auto IsCorner = [&](const TPoint2D& P) { return P.DistanceTo(Hull[I]) <= Slack; };
    Require(std::any_of(Found.begin(), Found.end(), IsCorner), "every corner is in the hull");
  }
  Require(test::FarthestFrom(Hull, Found) <= Slack, "no point within is in the hull");
  Require(std::abs(fuzz::DoubleArea(Found) - fuzz::DoubleArea(Hull)) <= 200 * Slack,
          "a hull winds once");
}

TPoints Named(const TPoints& Points, const std::vector<int>& Places) {
  TPoints Result;
  for (const int Place : Places) {
    Require(Place >= 0 && Place < static_cast<int>(Points.size()), "a position is one of the list");
    Result.push_back(Points[static_cast<std::size_t>(Place)]);
  }
  return Result;
}

struct TExtents {
  double Area = kStartOfMinimum;
  double Width = kStartOfMinimum;
  double Diameter = 0.0;
};

/// Over all edges of the hull, over all pairs of its corners.
TExtents ExactExtents(const TPoints& Hull) {
  TExtents Result;
  for (std::size_t I = 1; I < Hull.size(); ++I) {
    const TPoint2D Way = Hull[I] - Hull[I - 1];
    double Least = 0.0;
    double Most = 0.0;
    double Height = 0.0;
    for (const TPoint2D& P : Hull) {
      const double Along = Way.DotMul(P - Hull[I - 1]);
      Least = std::min(Least, Along);
      Most = std::max(Most, Along);
      Height = std::max(Height, Way.CrossMul(P - Hull[I - 1]));
      Result.Diameter = std::max(Result.Diameter, P.DistanceTo(Hull[I]));
    }
    Result.Area = std::min(Result.Area, (Most - Least) * Height / Way.DotMul(Way));
    Result.Width = std::min(Result.Width, Height / Way.Mag());
  }
  return Result;
}

void CheckRectangle(double Area, const TVPoint2DList& Corners, double Due, const TPoints& Points,
                    double Slack) {
  Require(std::abs(Area - Due) <= Slack, "the rectangle is the smallest");
  Require(Corners.Count() == 4, "a rectangle has four corners");
  for (int I = 0; I < 4; ++I) {
    const TPoint2D From = Corners[I];
    const TPoint2D Way = Corners[(I + 1) % 4] - From;
    const TPoint2D Next = Corners[(I + 2) % 4] - Corners[(I + 1) % 4];
    Require(std::abs(Way.DotMul(Next)) <= 1e-6, "a rectangle has right angles");
    for (const TPoint2D& P : Points) {
      Require(Way.CrossMul(P - From) >= -1e-3, "the rectangle holds every point");
    }
  }
}

void CheckMeasures(const TPoints& Points, const TPoints& Hull) {
  const TExtents Due = ExactExtents(Hull);
  const TVPolyline2D Convex(Hull);
  const TVPolyline2D All(Points);
  TVPoint2DList Corners;
  CheckRectangle(TPolygonBasicAlgo::ConvexMABB(Convex, Corners), Corners, Due.Area, Points, 1e-7);
  CheckRectangle(TPolygonBasicAlgo::SimpleMABB(All, Corners), Corners, Due.Area, Points, 1e-7);
  CheckRectangle(TPolygonBasicAlgo::PointSetMABB(All, Corners), Corners, Due.Area, Points, 1e-3);
  TPoint2D Direct;
  const double Width = TPolygonBasicAlgo::ConvexWidth(Convex, Direct);
  Require(std::abs(Width - Due.Width) <= 1e-9, "the width is the least");
  Require(std::abs(TPolygonBasicAlgo::SimpleWidth(All) - Due.Width) <= 1e-9,
          "the width of the hull is that of the points");
  const double Extent = TPolygonBasicAlgo::ProjectionLength(All, Direct.RotateCcw90());
  Require(std::abs(Extent - Width) <= 1e-9, "across its direction the polygon is that wide");
  int I = 0;
  int J = 0;
  Require(std::abs(TPolygonBasicAlgo::ConvexDiameter(Convex, I, J) - Due.Diameter) <= 1e-9 &&
              std::abs(Convex[I].DistanceTo(Convex[J]) - Due.Diameter) <= 1e-9,
          "the diameter is the greatest distance");
  Require(std::abs(TPolygonBasicAlgo::SimpleDiameter(All) - Due.Diameter) <= 1e-9,
          "the diameter of the hull is that of the points");
}

/// Seen from a point outside, all corners lie between the tangents.
void CheckTangents(const TPoints& Hull, const TPoint2D& P) {
  int Left = 0;
  int Right = 0;
  const bool IsOut = test::SideOf(Hull, P) < 0;
  Require(TPolygonBasicAlgo::PointTangants(TVPolyline2D(Hull), P, Left, Right) == IsOut,
          "tangents come from outside");
  if (!IsOut) return Require(Left == -1 && Right == -1, "without tangents no vertex is named");
  const TPoints Ends = Named(Hull, {Left, Right});
  for (const TPoint2D& Corner : Hull) {
    const double OfLeft = TPolygonBasicAlgo::Area(P, Ends[0], Corner);
    const double OfRight = TPolygonBasicAlgo::Area(P, Ends[1], Corner);
    Require(OfLeft <= 0.0 && OfRight >= 0.0, "all corners lie between the tangents");
    Require((OfLeft < 0.0 || P.DistanceTo(Ends[0]) <= P.DistanceTo(Corner)) &&
                (OfRight > 0.0 || P.DistanceTo(Ends[1]) <= P.DistanceTo(Corner)),
            "a tangent ends at the nearest corner");
  }
}

/// The least radius of all circles on two or three of the points that hold the rest.
double ExactRadius(const TPoints& Points) {
  double Least = Points.size() > 1 ? kStartOfMinimum : 0.0;
  const auto Try = [&](const TPoint2D& Center, double Radius) {
    const auto Holds = [&](const TPoint2D& P) { return P.DistanceTo(Center) <= Radius + 1e-9; };
    if (Radius < Least && std::all_of(Points.begin(), Points.end(), Holds)) Least = Radius;
  };
  for (const TPoint2D& A : Points) {
    for (const TPoint2D& B : Points) {
      Try((A + B) / 2.0, A.DistanceTo(B) / 2.0);
      for (const TPoint2D& C : Points) {
        const TPoint2D U = B - A;
        const TPoint2D V = C - A;
        const double Turn = 2.0 * U.CrossMul(V);
        if (!(Turn > 0.0)) continue;
        const TPoint2D Center =
            (U.RotateCcw90() * V.DotMul(V) - V.RotateCcw90() * U.DotMul(U)) / Turn;
        Try(A - Center * -1.0, Center.Mag());
      }
    }
  }
  return Least;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const TPoint2D Viewer = Bytes.GridPoint(16);
  TPoints Points = fuzz::GridPoints(Bytes, 16, Bytes.Below(2) == 0 ? 5 : 16);
  if (Points.empty()) return 0;
  const TVCircle2D Circle = TPointsBasicAlgo::FindMinCircle(TVPolyline2D(Points));
  Require(std::abs(Circle.Radius - ExactRadius(Points)) <= 1e-7, "the circle is the smallest");
  for (const TPoint2D& P : Points) {
    Require(P.DistanceTo(Circle.Center) <= Circle.Radius * (1.0 + 1e-9) + 1e-12,
            "the circle holds every point");
  }
  const TPoints Hull = ExactHull(Points);
  if (Hull.empty()) return 0;
  CheckHull(TConvexHullCalculator::CalcConvexHull(TVPolyline2D(Points)).ToTPoint2DList(), Hull,
            kMoved);
  CheckHull(Named(Points, TConvexHullCalculator::CalcConvexHullPtIds(TVPolyline2D(Points))), Hull,
            0.0);
  Require(TVPolyline2D(Points).ConvexHull().ToTPoint2DList() == Hull, "corners alone");
  CheckMeasures(Points, Hull);
  CheckTangents(Hull, Viewer);
  TPoints Ring = fuzz::GridOutline(Bytes, 12, 12);
  if (Ring.empty()) return 0;
  const TPoints RingHull = ExactHull(Ring);
  Ring.pop_back();
  std::rotate(Ring.begin(), std::find(Ring.begin(), Ring.end(), RingHull.front()), Ring.end());
  TVPolyline2D Moved(Ring);
  const std::vector<int> Places = TConvexHullCalculator::CalcSimplePolylineConvexHull(Moved);
  CheckHull(Named(Ring, Places), RingHull, 0.0);
  return 0;
}
