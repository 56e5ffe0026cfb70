#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>

#include "geometryAlgo/GeometryExtend.h"
#include "tests/support/Generate.h"
#include "tests/support/IntegerPaths.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using test::Box;
using test::Hole;
using testing::ElementsAre;
using testing::IsEmpty;

TPath RandomPath(std::mt19937& Random, int Count, int Reach) {
  TPath Path;
  for (int I = 0; I < Count; ++I) {
    const int X = test::RandomInt(Random, -Reach, Reach);
    Path.emplace_back(X, test::RandomInt(Random, -Reach, Reach));
  }
  return Path;
}

TEST(IntVectors, AreExactAtTheEndsOfTheRange) {
  const std::int64_t Big = ClipperLib::hiRange;
  EXPECT_EQ(0.0, TPathUtils::PointMul(TIntPoint(Big, Big - 1), TIntPoint(1 - Big, Big)));
  EXPECT_EQ(1.0, TPathUtils::PointMul(TIntPoint(Big, 1), TIntPoint(0, 1)));
  EXPECT_FALSE(TPathUtils::SameVector(TIntPoint(Big, Big), TIntPoint(Big, Big - 1)));
  EXPECT_TRUE(TPathUtils::SameVector(TIntPoint(2, -4), TIntPoint(3, -6)));
  EXPECT_FALSE(TPathUtils::SameVector(TIntPoint(2, -4), TIntPoint(-1, 2)));
  EXPECT_EQ(2.0, DistanceTo(TIntPoint(Big, Big), TIntPoint(Big, Big - 2)));
  EXPECT_EQ(std::ldexp(1.0, 64), DistanceTo(TIntPoint(INT64_MIN, 0), TIntPoint(INT64_MAX, 0)));
  EXPECT_EQ(TIntPoint(2, 0), TPathUtils::Divide(TIntPoint(5, 1), 2));
  EXPECT_EQ(TIntPoint(0, ClipperLib::hiRange), TPathUtils::Divide(TIntPoint(0, 7), 0.0));
  EXPECT_EQ(TIntPoint(-5, 3), TPathUtils::Rotate(TIntPoint(3, 5), kQuarterTurn));
  EXPECT_EQ(TIntPoint(-6, -8), TPathUtils::Strech(TIntPoint(3, 4), -10.0));
  EXPECT_EQ(TIntPoint(), TPathUtils::Strech(TIntPoint(), 10.0));
  EXPECT_TRUE(TPathUtils::SameVector(TIntPoint(), TIntPoint()));
  EXPECT_FALSE(TPathUtils::SameVector(TIntPoint(), TIntPoint(1, 0)));
  EXPECT_FALSE(TPathUtils::SameVector(TIntPoint(1, 0), TIntPoint()));
  EXPECT_DOUBLE_EQ(3 * kQuarterTurn, TPathUtils::Angle(TIntPoint(0, 7), TIntPoint(9, 0)));
}

TEST(TPathUtils, AreaOfTheLargestSquareIsExactAndKeepsItsSign) {
  const std::int64_t Big = ClipperLib::hiRange;
  const TPath Square{{-Big, -Big}, {Big, -Big}, {Big, Big}, {-Big, Big}};
  EXPECT_EQ(4.0 * std::pow(static_cast<double>(Big), 2), TPathUtils::Area(Square, false));
  TPath Thrice = Square;
  Thrice.insert(Thrice.end(), Square.begin(), Square.end());
  Thrice.insert(Thrice.end(), Square.begin(), Square.end());
  EXPECT_EQ(std::ldexp(3.0, 126), TPathUtils::Area(Thrice, false));  // the sum leaves 128 bits
  // Half a unit far from the origin: products of 2^124 that cancel but for one.
  const TPath Sliver{{Big, Big}, {Big - 1, Big - 1}, {Big - 1, Big}};
  EXPECT_EQ(-0.5, TPathUtils::Area(Sliver, false));
  EXPECT_EQ(0.5, TPathUtils::Area(Sliver, true));
  EXPECT_EQ(0.0, TPathUtils::Area({{0, 0}, {5, 5}}, true));
  // Twice the area is 2^65 + 2^12 + 1: rounding in extended precision first would lose the 1.
  const TPath Triangle{{0, 0}, {1LL << 33, -1}, {4097, 1LL << 32}};
  EXPECT_EQ(std::ldexp(1.0, 64) + 4096.0, TPathUtils::Area(Triangle, false));
}

TEST(TPathUtils, SetsTheSenseOfEachPathOrOfAllByTheFirst) {
  const TPaths Given{Hole(0, 0, 9), Hole(2, 2, 3)};
  TPaths Paths = Given;
  TPathUtils::SetIsClockwise(Paths, true, false);
  EXPECT_EQ(Given, Paths);  // a hole that runs like its outer is left alone
  TPathUtils::SetIsClockwise(Paths, false, false);
  EXPECT_EQ((TPaths{Box(0, 0, 9), Box(2, 2, 3)}), Paths);
  Paths[1] = Given[1];
  TPathUtils::SetIsClockwise(Paths, false, true);
  EXPECT_EQ((TPaths{Box(0, 0, 9), Box(2, 2, 3)}), Paths);
  TPaths Empty;
  TPathUtils::SetIsClockwise(Empty, true, false);
  TPaths FirstEmpty{{}, Box(0, 0, 9)};  // without area, so never clockwise
  TPathUtils::SetIsClockwise(FirstEmpty, true, false);
  EXPECT_EQ(Hole(0, 0, 9), FirstEmpty[1]);
}

TEST(TPathUtils, ClosesOnce) {
  TPaths Paths{Box(0, 0, 1), {}, {{3, 3}}};
  TPathUtils::ConnectHeadTail(Paths);
  TPathUtils::ConnectHeadTail(Paths);
  EXPECT_EQ(5U, Paths[0].size());
  EXPECT_EQ(Paths[0].front(), Paths[0].back());
  EXPECT_THAT(Paths[1], IsEmpty());
  EXPECT_EQ(1U, Paths[2].size());
}

TEST(TPathUtils, EditsMoveWhatTheySay) {
  TPaths Paths{{{1, 2}}, {{3, 4}, {5, 6}}};
  TPathUtils::Translate(Paths, Paths[0][0]);
  TPathUtils::Zoom(Paths, 1.5, TIntPoint(2, 4));
  TPathUtils::Rotate(Paths, 2 * kQuarterTurn, Paths[0][0]);
  TPathUtils::Negative(Paths);
  EXPECT_EQ((TPaths{{{-2, -4}}, {{1, -1}, {4, 2}}}), Paths);
  TPathUtils::PathsAddRange(Paths, Paths);
  EXPECT_EQ(6, TPathUtils::GetPathsPointCount(Paths));
  TPathUtils::Delete(Paths[3], 0);
  EXPECT_THAT(Paths[3], ElementsAre(TIntPoint(4, 2)));
  test::ExpectRaises<EParamError>([&] { TPathUtils::Delete(Paths, 4); },
                                  "[Error] TPathUtils.Delete: index out of range");
  TPathUtils::Rotate(Paths[2], kQuarterTurn);
  TPathUtils::Zoom(Paths[2], 3.0);
  EXPECT_THAT(Paths[2], ElementsAre(TIntPoint(12, -6)));
  TPathUtils::Rotate(Paths, -kQuarterTurn);
  TPathUtils::Zoom(Paths, -1.0);
  EXPECT_THAT(Paths[2], ElementsAre(TIntPoint(6, 12)));
  TPathUtils::Free(Paths);
  EXPECT_EQ(0U, TPathUtils::MemoryUse(Paths));
}

TEST(TPathUtils, SmoothsStraightWays) {
  EXPECT_THAT(TPathUtils::CollinearSmooth({{0, 0}, {50000, 0}, {100000, 0}, {100000, 7}}),
              ElementsAre(TIntPoint(0, 0), TIntPoint(100000, 0), TIntPoint(100000, 7)));
  const TPath Bent{{0, 0}, {15, 0}, {100, 1}};  // 0.15 off the way, one and a half tolerances
  EXPECT_EQ(Bent, TPathUtils::CollinearSmooth(Bent));
}

TEST(TPathUtils, RecognisesRectanglesExactly) {
  const std::int64_t Far = 10'000'000'000;
  const struct {
    TPath Path;
    bool Expected;
  } Cases[] = {{{{0, 0}, {2, 1}, {1, 3}, {-1, 2}}, true},
               {{{0, 0}, {2, 1}, {1, 3}, {-1, 2}, {0, 0}}, true},
               {{{0, 0}, {2, 1}, {1, 3}, {-1, 2}, {0, 1}}, false},
               {{{0, 0}, {Far, Far}, {0, 2 * Far}, {-Far, Far}}, true},
               {{{0, 0}, {Far, Far}, {1, 2 * Far}, {-Far, Far}}, false},
               {{{1, 1}, {1, 1}, {1, 1}, {1, 1}}, true},
               {{{0, 0}, {4, 0}, {4, 3}, {1, 3}}, false},  // two right angles
               {{{0, 0}, {1, 0}, {1, 1}}, false}};
  for (const auto& Case : Cases) EXPECT_EQ(Case.Expected, TPathUtils::IsRectangle(Case.Path));
}

TEST(TPathUtils, NamesTheExtremeVertexOfEachPairOfDirections) {
  using T = TPathUtils;
  const struct {
    TIntPoint (*OfPath)(const TPath&);
    TIntPoint (*OfPathAt)(const TPath&, int&);
    TIntPoint (*OfPaths)(const TPaths&);
    TIntPoint (*OfPathsAt)(const TPaths&, T::TPointIndex&);
    int Vertex;
  } Queries[] = {
      {T::LeftTopPoint, T::LeftTopPoint, T::LeftTopPoint, T::LeftTopPoint, 3},
      {T::LeftBottomPoint, T::LeftBottomPoint, T::LeftBottomPoint, T::LeftBottomPoint, 0},
      {T::RightBottomPoint, T::RightBottomPoint, T::RightBottomPoint, T::RightBottomPoint, 1},
      {T::RightTopPoint, T::RightTopPoint, T::RightTopPoint, T::RightTopPoint, 2},
      {T::BottomLeftPoint, T::BottomLeftPoint, T::BottomLeftPoint, T::BottomLeftPoint, 0},
      {T::BottomRightPoint, T::BottomRightPoint, T::BottomRightPoint, T::BottomRightPoint, 1},
      {T::TopLeftPoint, T::TopLeftPoint, T::TopLeftPoint, T::TopLeftPoint, 3},
      {T::TopRightPoint, T::TopRightPoint, T::TopRightPoint, T::TopRightPoint, 2}};
  const TPath Path{{0, 0}, {4, 0}, {4, 3}, {0, 3}};
  const TPaths Paths{{}, {{2, 1}}, Path, Path};  // the first of equal ones counts
  for (const auto& Query : Queries) {
    const TIntPoint Expected = Path[static_cast<std::size_t>(Query.Vertex)];
    int Index = -2;
    T::TPointIndex Place;
    EXPECT_EQ(Expected, Query.OfPath(Path));
    EXPECT_EQ(Expected, Query.OfPathAt(Path, Index));
    EXPECT_EQ(Query.Vertex, Index);
    EXPECT_EQ(Expected, Query.OfPaths(Paths));
    EXPECT_EQ(Expected, Query.OfPaths({Path, {{2, 1}}}));
    EXPECT_EQ(Expected, Query.OfPathsAt(Paths, Place));
    EXPECT_EQ((T::TPointIndex{2, Query.Vertex}), Place);
    EXPECT_EQ(TIntPoint(), Query.OfPathsAt({}, Place));
    EXPECT_EQ(T::TPointIndex{}, Place);
  }
}

TEST(TPathUtils, MeasuresRingsAndListedEdges) {
  const TPath Path{{0, 0}, {3, 4}, {3, 0}};
  EXPECT_EQ(9.0, TPathUtils::TotalLength(Path));
  EXPECT_EQ(24.0, TPathUtils::Perimeter(TPaths{Path, {}, Path}));
  EXPECT_EQ(18.0, TPathUtils::TotalLength(TPaths{Path, Path}));
  EXPECT_EQ(0.0, TPathUtils::TotalLength(TPath{}));
  EXPECT_TRUE(TPathUtils::BoundBox(Path, 2.0) == TVRect2D(0, 1.5, 2, 0));
  EXPECT_FALSE(TPathUtils::IntBoundbox(TPaths{{}}).IsValid());
  double Value = -1.0;
  EXPECT_TRUE(TPathUtils::CalcYByX(Path, 1.5, Value));
  EXPECT_EQ(2.0, Value);
  EXPECT_TRUE(TPathUtils::CalcXByY(TPaths{{}, Path}, 4.0, Value));
  EXPECT_EQ(3.0, Value);
  EXPECT_FALSE(TPathUtils::CalcYByX(Path, 3.1, Value));
}

TEST(TPathUtils, TellsWhereAPointLiesInARegion) {
  const TPaths Region{Box(0, 0, 10), Box(2, 2, 3)};
  EXPECT_EQ(srIn, TPathUtils::RelationWithPoint(Region, TIntPoint(1, 1)));
  EXPECT_EQ(srOn, TPathUtils::RelationWithPoint(Region, TIntPoint(2, 3)));
  EXPECT_EQ(srOut, TPathUtils::RelationWithPoint(Region, TIntPoint(3, 3)));
  EXPECT_TRUE(TPathUtils::PointInPolygon(Region[0], TIntPoint(3, 3)));
  EXPECT_FALSE(TPathUtils::PointInPolygons(Region, TIntPoint(3, 3)));
  EXPECT_EQ(srOut, TPathUtils::RelationWithPoint(TPaths{}, TIntPoint(3, 3)));
}

TEST(PathParameters, GiveASharedVertexToTheEdgeThatArrives) {
  const TPath Path{{0, 0}, {0, 0}, {100000, 0}, {100000, 100000}};
  double Param = -1.0;
  EXPECT_TRUE(TPathUtils::ParamByPoint(Path, TIntPoint(100000, 0), Param));
  EXPECT_EQ(2.0, Param);
  EXPECT_TRUE(TPathUtils::AccurateParamByPoint(Path, TIntPoint(100000, 0), Param));
  EXPECT_EQ(2.0, Param);
  EXPECT_TRUE(TPathUtils::ParamByPoint(Path, TIntPoint(0, 0), Param));
  EXPECT_EQ(1.0, Param);  // the edge of no length is passed over
  EXPECT_FALSE(TPathUtils::ParamByPoint(Path, TIntPoint(50000, 1), Param));
  EXPECT_TRUE(TPathUtils::ParamByPoint(Path, TIntPoint(99999, 1), Param, 1e-4));
  EXPECT_EQ(1.99999, Param);
  EXPECT_TRUE(TPathUtils::AccurateParamByPoint(Path, TIntPoint(100000, 1), Param, 1e-4));
  EXPECT_EQ(2.00001, Param);
  EXPECT_FALSE(TPathUtils::ParamByPoint({}, TIntPoint(), Param));
  EXPECT_TRUE(TPathUtils::ParamByPoint({{7, 7}}, TIntPoint(7, 7), Param));
  EXPECT_TRUE(TPathUtils::AccurateParamByPoint({{7, 7}}, TIntPoint(7, 7), Param));
  EXPECT_EQ(0.0, Param);
  EXPECT_FALSE(TPathUtils::ParamByPoint({{7, 7}}, TIntPoint(7, 8), Param, 1.0));
  // On the segment by the slack along it, yet off the edge.
  EXPECT_FALSE(TPathUtils::ParamByPoint({{0, 0}, {100, 0}}, TIntPoint(105, 0), Param, 0.1));
}

TEST(PathParameters, AreTheInverseOfPoints) {
  const TPath Path{{0, 0}, {3, 0}, {3, 5}};
  const struct {
    double Param;
    TIntPoint Expected;
  } Cases[] = {{0.5, {2, 0}},        {1.5, {3, 2}}, {2.0, {3, 5}},         {2.0000005, {3, 5}},
               {-0.0000005, {0, 0}}, {2.1, {0, 0}}, {std::nan(""), {0, 0}}};
  for (const auto& Case : Cases) {
    EXPECT_EQ(Case.Expected, TPathUtils::PointByParam(Path, Case.Param)) << Case.Param;
  }
}

TEST(PathNearness, FindsTheNearestPlace) {
  const TPath Path{{0, 0}, {10, 0}, {10, 10}};
  TPointL2D Nearest;
  EXPECT_TRUE(TPathUtils::IsNearByPoint(Path, TPointL2D(7, 3), 3.0, Nearest));
  EXPECT_EQ(TPointL2D(7, 0), Nearest);  // the first of two
  EXPECT_FALSE(TPathUtils::IsNearByPoint(Path, TPointL2D(13, 14), 4.9, Nearest));
  EXPECT_EQ(TPointL2D(10, 10), Nearest);
  EXPECT_EQ(5.0, TPathUtils::DistanceTo(Path, TIntPoint(13, 14)));
  EXPECT_EQ(kStartOfMinimum, TPathUtils::DistanceTo({}, TIntPoint()));
}

TEST(PathComparison, OrdersPathsTotally) {
  std::vector<TPath> Paths{{{1, 0}}, {}, {{0, 2}, {0, 0}}, {{0, 1}, {9, 9}}, {{0, 5}}};
  std::sort(Paths.begin(), Paths.end(),
            [](const TPath& A, const TPath& B) { return TPathUtils::ComparePath(A, B) < 0; });
  EXPECT_THAT(Paths, ElementsAre(TPath{}, TPath{{0, 5}}, TPath{{1, 0}}, TPath{{0, 1}, {9, 9}},
                                 TPath{{0, 2}, {0, 0}}));
  EXPECT_EQ(0, TPathUtils::ComparePath(Paths[3], Paths[3]));
}

TEST(PathComparison, FindsMovedCopiesCongruentAndMirroredOnesNot) {
  std::mt19937 Random(3);
  for (int Round = 0; Round < 200; ++Round) {
    SCOPED_TRACE(Round);
    const TPath Path = RandomPath(Random, test::RandomInt(Random, 4, 12), 100000);
    TPath Copy = Path;
    TPathUtils::Rotate(Copy, test::RandomDouble(Random, -4.0, 4.0), TIntPoint(777, -3));
    TPathUtils::Translate(Copy, TIntPoint(1234567, -7654321));
    std::rotate(Copy.begin(), Copy.begin() + Round % 4, Copy.end());
    if (Round % 2) TPathUtils::Reverse(Copy);
    if (Round % 3 == 0) TPathUtils::ConnectHeadTail(Copy);
    EXPECT_TRUE(TPathUtils::IsCongruent(Path, Copy));
    for (TIntPoint& P : Copy) P.X = -P.X;
    EXPECT_FALSE(TPathUtils::IsCongruent(Path, Copy));
  }
  EXPECT_TRUE(TPathUtils::IsCongruent({}, {}));
  // One stroke, repeating its start or its end.
  EXPECT_TRUE(TPathUtils::IsCongruent({{0, 0}, {50, 9}, {0, 0}}, {{50, 9}, {0, 0}, {0, 0}}));
  EXPECT_FALSE(TPathUtils::IsCongruent(Box(0, 0, 9), Box(0, 0, 14)));
}

TEST(PathComparison, MeasuresTheTurnAtACorner) {
  const TPath Path{{0, 0}, {4, 0}, {4, 0}, {4, 4}, {2, 4}, {6, 4}};
  EXPECT_EQ(kQuarterTurn, TPathUtils::CornerRadian(Path, 1));
  EXPECT_EQ(kQuarterTurn, TPathUtils::CornerRadian(Path, 2));  // equal neighbours are passed over
  EXPECT_EQ(kPi, TPathUtils::CornerRadian(Path, 4));
  EXPECT_EQ(-kQuarterTurn, TPathUtils::CornerRadian({{0, 0}, {1, 0}, {1, -1}}, 1));
  EXPECT_EQ(0.0, TPathUtils::CornerRadian({{0, 0}, {1, 0}, {2, 0}}, 1));
  for (const int Index : {-1, 6}) {
    EXPECT_THROW(TPathUtils::CornerRadian(Path, Index), EParamError);
  }
  EXPECT_EQ(-kQuarterTurn, TPathUtils::CornerRadian({{0, 0}, {0, 4}, {4, 4}}, 1));
  EXPECT_EQ(0.0, TPathUtils::CornerRadian({{1, 1}, {1, 1}}, 0));
}

TEST(PathCutting, CutsWhereThePathsMeet) {
  const TPath Square{{0, 0}, {40, 0}, {40, 40}, {0, 40}, {0, 0}};
  const TPath Bar{{-10, 20}, {50, 20}};
  EXPECT_THAT(TPathUtils::CutByPath(Square, Bar),
              ElementsAre(TPath{{0, 20}, {0, 0}, {40, 0}, {40, 20}},
                          TPath{{40, 20}, {40, 40}, {0, 40}, {0, 20}}));
  EXPECT_THAT(
      TPathUtils::CutByPath(Bar, Square),
      ElementsAre(TPath{{-10, 20}, {0, 20}}, TPath{{0, 20}, {40, 20}}, TPath{{40, 20}, {50, 20}}));
  // A common stretch is cut at both ends; a cut at the seam keeps it; misses change nothing.
  EXPECT_THAT(
      TPathUtils::CutByPath({{0, 0}, {30, 0}}, {{10, 5}, {10, 0}, {20, 0}}),
      ElementsAre(TPath{{0, 0}, {10, 0}}, TPath{{10, 0}, {20, 0}}, TPath{{20, 0}, {30, 0}}));
  EXPECT_THAT(TPathUtils::CutByPaths(Square, {{{-5, -5}, {0, 0}}, {{90, 9}}}), ElementsAre(Square));
  const TPath Slope{{-5, 0}, {0, 0}, {40, 40}};
  EXPECT_THAT(TPathUtils::CutByPath(Slope, {{30, 10}, {31, 10}}), ElementsAre(Slope));
  EXPECT_THAT(TPathUtils::CutByPath({}, Bar), IsEmpty());
  // Several points at the seam, only one of which is found to meet the cutter.
  const TPath Doubled{{0, 0}, {0, 0}, {40, 0}, {40, 40}, {0, 40}, {0, 0}, {0, 0}};
  EXPECT_THAT(
      TPathUtils::CutByPath(Doubled, {{-5, -5}, {50, 50}}),
      ElementsAre(TPath{{0, 0}, {0, 0}, {40, 0}, {40, 40}}, TPath{{40, 40}, {0, 40}, {0, 0}}));
}

TEST(PathCutting, LosesNothing) {
  std::mt19937 Random(11);
  for (int Round = 0; Round < 300; ++Round) {
    SCOPED_TRACE(Round);
    const TPath Path = RandomPath(Random, test::RandomInt(Random, 1, 12), 6);
    const TPath Cutter = RandomPath(Random, test::RandomInt(Random, 1, 6), 6);
    const TPaths Parts = TPathUtils::CutByPath(Path, Cutter);
    double Sum = TPathUtils::TotalLength(Parts[0]);
    for (std::size_t I = 1; I < Parts.size(); ++I) {
      Sum += TPathUtils::TotalLength(Parts[I]);
      EXPECT_EQ(Parts[I - 1].back(), Parts[I].front());
    }
    // A cut is off the edge by the rounding of its point, up to 0.71.
    EXPECT_NEAR(TPathUtils::TotalLength(Path), Sum, 0.5 * static_cast<double>(Parts.size()));
  }
}

TEST(CleanPolygonEx, RemovesWhatTheLibraryRemoves) {
  EXPECT_THAT(CleanPolygonEx({}, 2.0), IsEmpty());
  const TPath Doubled{{0, 0}, {0, 0}, {9, 0}, {10, 0}, {10, 9}, {0, 9}, {0, 0}};
  EXPECT_EQ(5U, CleanPolygonEx(Doubled, 0.5).size());  // halves to even: 0.25 is 0
  EXPECT_EQ(4U, CleanPolygonEx(Doubled, 1.0).size());
  std::mt19937 Random(8);
  for (int Round = 0; Round < 2000; ++Round) {
    const TPath Path = RandomPath(Random, test::RandomInt(Random, 3, 30), 8);
    const double Distance = test::RandomInt(Random, 0, 3);  // its square is exact on both sides
    TPath Expected;
    ClipperLib::CleanPolygon(Path, Expected, Distance);
    TPath Cleaned = CleanPolygonEx(Path, Distance);
    if (Cleaned.size() < 3) Cleaned.clear();  // the library gives these up
    ASSERT_EQ(Expected.size(), Cleaned.size()) << "round " << Round;
    if (Cleaned.empty()) continue;
    bool IsSameRing = false;
    for (std::size_t I = 0; I < Cleaned.size() && !IsSameRing; ++I) {
      std::rotate(Cleaned.begin(), Cleaned.begin() + 1, Cleaned.end());
      IsSameRing = Expected == Cleaned;
    }
    EXPECT_TRUE(IsSameRing) << "round " << Round;
  }
}

}  // namespace
}  // namespace tarnalgo
