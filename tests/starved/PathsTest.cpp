#include <cmath>
#include <polyclipping/clipper.hpp>
#include <random>
#include <vector>

#include "geometryAlgo/GeometryExtend.h"
#include "geometryAlgo/NestOptimizeAlgo.h"
#include "geometryAlgo/ShapeApp.h"
#include "geometryAlgo/SweepLine.h"
#include "tests/starved/Starve.h"
#include "tests/support/Generate.h"

namespace tarnalgo::test {
namespace {

TVPolyline2D Star(int Count, double Depth) {
  TVPolyline2D Result;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * I / Count;
    const double Radius = I % 2 == 0 ? 10.0 : 10.0 - Depth;
    Result.Add({Radius * std::cos(Angle), Radius * std::sin(Angle)});
  }
  Result.ConnectHeadTail();
  return Result;
}

TPaths Rings(int Count) {
  TPaths Paths;
  for (int I = 0; I < Count; ++I) {
    const TPoint2D Corner(I / 2 * 20.0 + I % 2 * 3, 3.0 * (I % 2));
    const TPoint2D Size = TPoint2D(10, 10) * (I % 2 ? 0.4 : 1.0);
    Paths.push_back(TPathUtils::CreatePath(TVRect2D(Corner, Corner + Size), kIntegerScale));
    TPathUtils::SetIsClockwise(Paths.back(), I % 2 != 0);
  }
  return Paths;
}

TEST(StarvedPaths, PathUtils) {
  using TUtils = TPathUtils;
  struct TSubject {
    TPaths Paths = Rings(6);
    TPathsList List{Rings(2)};
    TVPolyline2D Line{{1, 1}, {2, 2}};
    TVPolyline2DList Lines;
    TSubject() { Lines.Add(Line.Clone()); }
    auto State() const { return std::tie(Paths, List, Line, Lines); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
  On("ConnectHeadTail", [](TSubject& S) { TUtils::ConnectHeadTail(S.Paths); });
  On("PathsAdd", [](TSubject& S) { TUtils::PathsAdd(S.Paths, S.Paths[0]); });
  On("PathsAddRange", [](TSubject& S) { TUtils::PathsAddRange(S.Paths, S.Paths); });
  On("AssignToPolyline",
     [](TSubject& S) { TUtils::AssignToPolyline(S.Paths[0], S.Line, kIntegerScale); });
  On("AssignToPolylines",
     [](TSubject& S) { TUtils::AssignToPolylines(S.Paths, S.Lines, kIntegerScale); });
  On("NormalizeTPaths", [](TSubject& S) { TUtils::NormalizeTPaths(S.Paths, S.List); });
  On("turns", [](TSubject& S) {
    TUtils::SetIsClockwise(S.Paths, true, true);
    TUtils::Rotate(S.Paths, 0.3);
    TUtils::Zoom(S.Paths, 2.0);
    TUtils::Free(S.Paths);
  });
  On("new ones", [](TSubject& S) {
    return std::tuple(TUtils::CreatePaths(S.Lines, 10.0), TUtils::CreatePolylines(S.Paths, 10.0),
                      TUtils::CollinearSmooth(S.Paths[0]), TUtils::ExtractHoles(S.Paths, true),
                      TUtils::CutByPaths(S.Paths[0], S.Paths), CleanPolygonEx(S.Paths[0], 2.0),
                      TUtils::IsCongruent(S.Paths[0], S.Paths[2]),
                      TUtils::CreateHPolygon(S.Paths, kIntegerScale));
  });
}

TPolyTree& Nesting() {
  static TPolyTree Tree;
  if (Tree.Total() > 0) return Tree;
  ClipperLib::Clipper Clipper;
  TPaths Paths = Rings(14);
  Clipper.AddPaths(Paths, ClipperLib::ptSubject, true);
  Clipper.Execute(ClipperLib::ctUnion, Tree, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
  return Tree;
}

TEST(StarvedPaths, Trees) {
  const auto None = [] { return std::make_unique<int>(0); };
  Nesting();
  Starve("CreatePolylineTreeList", None,
         [](int&) { return TPathUtils::CreatePolylineTreeList(Nesting(), kIntegerScale).Count(); });
  Starve("regions", None, [](int&) {
    return std::tuple(TPathUtils::PolyTreeToPathsList(Nesting()),
                      TPathUtils::CreateHPolygons(Nesting(), kIntegerScale),
                      TVHPolygonList(Nesting(), kIntegerScale));
  });
}

// Whatever the clipping library took when it ran out of memory is lost with it.
TEST(StarvedPaths, ThroughTheClippingLibrary) {
  using TAlgo = TPolygonBasicAlgo;
  using TLine = TVPolyline2D;
  const TLine A = Star(20, 4.0);
  TLine B = Star(24, 2.0);
  B.Translate({5, 1});
  const TLine Bow{{0, 0}, {10, 10}, {10, 0}, {0, 10}};
  constexpr TPromise kPromise = TPromise::UnchangedButLost;
  StarveOn(
      "IsSimple", A, [](TLine& P) { return TAlgo::IsSimple(P); }, kPromise);
  StarveOn(
      "IsSimple", Bow, [](TLine& P) { return TAlgo::IsSimple(P); }, kPromise);
  StarveOn(
      "PolygonSimplify", Bow, [](TLine& P) { return TAlgo::PolygonSimplify(P, 1e5); }, kPromise);
  StarveOn(
      "PolygonIntersection", A, [&](TLine& P) { return TAlgo::PolygonIntersection(P, B); },
      kPromise);
  StarveOn(
      "PolyContains", A, [&](TLine& P) { return TAlgo::PolyContains(P, B, 1e-6, 1e-6); }, kPromise);
  StarveOn(
      "TriangleDivide", A, [](TLine& P) { return TAlgo::TriangleDivide(P); }, kPromise);
  struct TSubject {
    TPaths Paths = Rings(16);
    TPathsList List{Rings(2)};
    auto State() const { return std::tie(Paths, List); }
  };
  Starve(
      "NormalizeTPaths", [] { return std::make_unique<TSubject>(); },
      [](TSubject& S) { TPathUtils::NormalizeTPaths(S.Paths, S.List); }, kPromise);
  Nesting();
  Starve(
      "CreateStrictSimpleHPolygon", [] { return std::make_unique<int>(0); },
      [](int&) { return TPathUtils::CreateStrictSimpleHPolygon(*Nesting().GetFirst()); }, kPromise);
}

TEST(StarvedPaths, Shapes) {
  using TAlgo = TPolygonBasicAlgo;
  using THull = TConvexHullCalculator;
  struct TSubject {
    TVPolyline2D Line = Star(30, 4.0);
    TVPoint2DList Box{{1, 1}};
    auto State() const { return std::tie(Line, Box); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
  On("SimpleMABB", [](TSubject& S) { return TAlgo::SimpleMABB(S.Line, S.Box); });
  On("PointSetMABB", [](TSubject& S) { return TAlgo::PointSetMABB(S.Line, S.Box); });
  On("ConvexMABB", [](TSubject& S) { return TAlgo::ConvexMABB(S.Line, S.Box); });
  On("measures", [](TSubject& S) {
    return std::tuple(TAlgo::SimpleWidth(S.Line), TAlgo::SimpleDiameter(S.Line),
                      TAlgo::MinInternalAngle(S.Line), TAlgo::ConvexDiameter(S.Line));
  });
  On("MinPolyDistance", [](TSubject& S) {
    TVPolyline2D Other = S.Line;
    Other.Translate({30, 4});
    return TAlgo::MinPolyDistance(S.Line, Other);
  });
  On("GenerateConvexPolyOnDisc", [](TSubject&) {
    return std::pair(TAlgo::GenerateConvexPolyOnDisc({0, 0}, 5.0, 20, 1, true),
                     TAlgo::GenerateConvexPolyOnDisc({0, 0}, 5.0, 20, 1, false));
  });
  On("CalcConvexHull", [](TSubject& S) {
    return std::tuple(THull::CalcConvexHull(S.Line), THull::CalcConvexHullPtIds(S.Line),
                      TPointsBasicAlgo::FindMinCircle(S.Line).Radius);
  });
  Starve(
      "CalcSimplePolylineConvexHull",
      [] {
        auto Subject = std::make_unique<TSubject>();
        Subject->Line = {{0, 0}, {1, 0}, {2, 0}, {2, 2}, {1, 1}};  // begins on a straight way
        return Subject;
      },
      [](TSubject& S) { return THull::CalcSimplePolylineConvexHull(S.Line); });
  std::mt19937 Random(3);
  TVPolyline2D Cloud;
  for (int I = 0; I < 5000; ++I) Cloud.Add(RandomPoint(Random, 0, 100));
  StarveOn("a hull of many", Cloud, [](TVPolyline2D& P) { return THull::CalcConvexHull(P); });
}

TEST(StarvedPaths, Decimation) {
  struct TSubject {
    std::vector<TPoint2D> Points = Star(60, 0.2).Points();
    TPolyDecimator Decimator{Points, 0.3};
    TSubject() { Points.insert(Points.begin(), Points.front()); }
    auto State() const { return std::tuple(Points, Decimator.Tolerance(), Decimator.BaseIndex()); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
  On("SimplifyRadialDistance", [](TSubject& S) { S.Decimator.SimplifyRadialDistance(); });
  On("CollinearSmooth", [](TSubject& S) { return S.Decimator.CollinearSmooth(); });
  On("DouglasPeucker", [](TSubject& S) { return S.Decimator.DouglasPeucker(true); });
  On("DouglasPeucker", [](TSubject& S) { return S.Decimator.DouglasPeucker(3, 30, false); });
  On("restricted", [](TSubject& S) { return S.Decimator.DecimateWithRestrictions({5, 9}); });
  On("HybridDecimate", [](TSubject& S) { return S.Decimator.HybridDecimate(); });
  On("ClipTriangles", [](TSubject& S) { return S.Decimator.ClipTriangles(0, 50); });
  On("ClipConcaveTriangles", [](TSubject& S) { return S.Decimator.ClipConcaveTriangles(0, 50); });
  On("hulls", [](TSubject& S) {
    return std::pair(S.Decimator.GetInscribedHull(), S.Decimator.PlateSimplify());
  });
}

TEST(StarvedPaths, Sweep) {
  std::mt19937 Random(11);
  std::vector<TVLine2D> Lines;
  for (int I = 0; I < 40; ++I) {
    Lines.emplace_back(RandomGridPoint(Random, 0, 9), RandomGridPoint(Random, 0, 9));
  }
  const auto Run = [](std::vector<TVLine2D>& Segments) {
    std::vector<std::tuple<TPoint2D, TPoint2D, int, int>> Found;
    for (const auto& Info :
         TSeglinesIntersector::GetIntersectInfosBySweepline(Segments, 1e-6, 1e-6)) {
      Found.emplace_back(Info.FirstPoint, Info.SecondPoint, Info.LowerSegment, Info.HigherSegment);
    }
    return Found;
  };
  StarveOn("a sweep", Lines, Run);
  // Long lines across each other: the exact order.
  std::vector<TVLine2D> Crossed;
  for (int I = 0; I < 300; ++I) Crossed.push_back({{I * 0.01, -50.0}, {I * 0.01 + 60, 50.0}});
  StarveOn("a sweep in exact order", Crossed, Run);

  TSeglinesIntersector Intersector(Lines, 1e-6, 1e-6);
  StarveAt(20, TShortage::Once);
  EXPECT_THROW(Intersector.GetResult(), std::bad_alloc);
  EXPECT_TRUE(EndShortage());
  EXPECT_TRUE(Intersector.GetResult().empty());
}

}  // namespace
}  // namespace tarnalgo::test
