#include "geometryAlgo/VedaType/Polyline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <polyclipping/clipper.hpp>
#include <random>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

const TVPolyline2D kOpen{{0, 0}, {3, 0}, {3, 4}, {0, 4}};
const TVPolyline2D kSquare(TVRect2D({0, 0}, {10, 10}));

TVPolyline2D RandomContour(std::mt19937& Random, int Count, bool Close) {
  TVPolyline2D Contour;
  for (int I = 0; I < Count; ++I) Contour.Add(test::RandomGridPoint(Random, -5, 5));
  if (Close && Count > 0) Contour.Add(Contour.First());
  return Contour;
}

TEST(TVPoint2DList, RefusesPositionsThatDoNotExist) {
  TVPoint2DList List{{1, 2}, {3, 4}};
  for (const int Index : {-1, 2}) {
    test::ExpectRaises<EParamError>([&] { List[Index]; },
                                    "[Error] TVPoint2DList: index out of range");
    test::ExpectRaises<EParamError>([&] { List.Delete(Index); },
                                    "[Error] TVPoint2DList: index out of range");
  }
  test::ExpectRaises<EParamError>(
      [&] {
        List.Insert(3, {0, 0});
      },
      "[Error] TVPoint2DList: index out of range");
  EXPECT_EQ(2, List.Count());
}

TEST(TVPoint2DList, SnipsOnlyWhatExists) {
  const struct {
    int Index;
    int Count;
    std::vector<TPoint2D> Piece;
  } Cases[] = {
      {1, 2, {{1, 0}, {2, 0}}},
      {-1, 2, {{0, 0}}},
      {3, 100, {{3, 0}}},
      {2, std::numeric_limits<int>::max(), {{2, 0}, {3, 0}}},
      {2, 0, {}},
      {2, -1, {}},
      {9, 1, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(testing::Message() << Case.Index << ", " << Case.Count);
    TVPoint2DList List{{0, 0}, {1, 0}, {2, 0}, {3, 0}};
    EXPECT_EQ(Case.Piece, List.Snip(Case.Index, Case.Count));
    EXPECT_EQ(4, List.Count() + static_cast<int>(Case.Piece.size()));
  }
}

TEST(TVPoint2DList, FindsTheFirstOfTheExtremePoints) {
  const TVPoint2DList List{{1, 1}, {0, 2}, {0, 0}, {0, 2}, {4, 0}, {4, 5}};
  EXPECT_EQ(1, List.FindMostValueId(drLeft));
  EXPECT_EQ(4, List.FindMostValueId(drRight));
  EXPECT_EQ(2, List.FindMostValueId(drDown));
  EXPECT_EQ(5, List.FindMostValueId(drUp));
  EXPECT_EQ(2, List.FindMostValueId(drLeftDown));
  EXPECT_EQ(1, List.FindMostValueId(drLeftUp));
  EXPECT_EQ(4, List.FindMostValueId(drRightDown));
  EXPECT_EQ(5, List.FindMostValueId(drRightUp));
  EXPECT_EQ(-1, List.FindMostValueId(drAny));
  EXPECT_EQ(-1, TVPoint2DList().FindMostValueId(drLeft));
}

// Green's theorem by integers, each edge on its own: no common formula, no rounding.
TEST(TVPoint2DList, AreaIsExactOnAGridAndFarFromTheOrigin) {
  std::mt19937 Random(1);
  for (int Round = 0; Round < 300; ++Round) {
    TVPolyline2D Contour = RandomContour(Random, test::RandomInt(Random, 0, 12), Round % 2 == 0);
    if (Contour.Count() == 0) continue;
    long long Doubled = 0;
    for (int I = 0; I < Contour.Count(); ++I) {
      const TPoint2D P = Contour[I];
      const TPoint2D Q = Contour[(I + 1) % Contour.Count()];
      Doubled += std::llround((P.Y + Q.Y) * (P.X - Q.X));
    }
    const double Expected = 0.5 * static_cast<double>(Doubled);
    EXPECT_EQ(Expected, Contour.Area());
    Contour.Translate({1e9, -1e9});
    EXPECT_EQ(Expected, Contour.Area());
    Contour.YMirror();
    EXPECT_EQ(-Expected, Contour.Area());
  }
  EXPECT_EQ(-25.0, TVPoint2DList({{0, 0}, {0, 5}, {5, 5}, {5, 0}}).Area());
  EXPECT_EQ(0.0, TVPoint2DList({{0, 0}, {7, 5}}).Area());
}

TEST(TVPoint2DList, QuarterTurnsAndMirrorUndoThemselves) {
  std::mt19937 Random(2);
  TVPolyline2D Contour;
  for (int I = 0; I < 50; ++I) Contour.Add(test::RandomPoint(Random, -1e3, 1e3));
  TVPolyline2D Moved = Contour;
  for (int I = 0; I < 4; ++I) Moved.RotateBy90();
  EXPECT_EQ(Contour.Points(), Moved.Points());
  Moved.RotateBy90();
  Moved.RotateBy_90();
  Moved.YMirror();
  Moved.YMirror();
  EXPECT_EQ(Contour.Points(), Moved.Points());
  Moved.Transform(TMatrix2D(0.8, -0.6, 0.6, 0.8, 7, 8));
  Moved.Translate({-7, -8});
  Moved.Rotate(std::atan2(-0.6, 0.8));
  Moved.Rotate(0.3, {5, 6});
  Moved.Rotate(-0.3, {5, 6});
  for (int I = 0; I < Moved.Count(); ++I) EXPECT_TRUE(Moved[I].Equals(Contour[I], 1e-9));
}

TEST(TVPolyline2D, IsMadeFromEveryShapeThatHasCorners) {
  EXPECT_EQ((std::vector<TPoint2D>{{10, 10}, {0, 10}, {0, 0}, {10, 0}, {10, 10}}),
            kSquare.Points());
  EXPECT_TRUE(kSquare.IsClosed());
  EXPECT_EQ(100.0, kSquare.Area());
  EXPECT_EQ(1, TVPolyline2D(TPoint2D(1, 2)).Count());
  EXPECT_EQ(2, TVPolyline2D(TVLine2D({1, 2}, {3, 4})).Count());
  const TPath Path{{150000, -250000}, {0, 1}};
  EXPECT_EQ((std::vector<TPoint2D>{{1.5, -2.5}, {0, 0.00001}}),
            TVPolyline2D(Path, 100000.0).Points());
}

TEST(TVPolyline2D, KeepsItsClassWhenCopiedThroughABase) {
  const IVGeometry2D& Shape = kSquare;
  const auto Copy = Shape.Clone();
  ASSERT_NE(nullptr, dynamic_cast<TVPolyline2D*>(Copy.get()));
  const TVPoint2DList& List = kSquare;
  ASSERT_NE(nullptr, dynamic_cast<TVPolyline2D*>(List.New().get()));
  EXPECT_EQ(0, List.New()->Count());
  EXPECT_EQ(kSquare.Points(), kSquare.Clone()->Points());
}

TEST(TVPolyline2D, RoundsToIntegersWithHalvesToEven) {
  const struct {
    TPoint2D P;
    double Scale;
    long long X, Y;
  } Cases[] = {
      {{2.5, 3.5}, 1, 2, 4},
      {{-2.5, -3.5}, 1, -2, -4},
      {{0.49999999999999994, -0.49999999999999994}, 1, 0, 0},
      {{1.5, -2.000015}, 100000, 150000, -200001},  // a half only once rounded to a double
      {{1e300, -1e300}, 1, ClipperLib::hiRange, -ClipperLib::hiRange},
      {{std::nan(""), -std::numeric_limits<double>::infinity()}, 1, 0, -ClipperLib::hiRange},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(testing::Message() << Case.P.X << ", " << Case.P.Y);
    const TPath Path = TVPolyline2D(Case.P).ToPath(Case.Scale);
    ASSERT_EQ(1U, Path.size());
    EXPECT_EQ(Case.X, Path[0].X);
    EXPECT_EQ(Case.Y, Path[0].Y);
  }
}

TEST(TVPolyline2D, NamesItsEdges) {
  EXPECT_EQ(TVLine2D({3, 4}, {0, 4}).EndPoint, kOpen.Line(2).EndPoint);
  for (const int Index : {-1, 3, 4}) {
    test::ExpectRaises([&] { kOpen.Line(Index); }, "[Error] TVPolyline2D.Line: 下标越界");
  }
  test::ExpectRaises([] { TVPolyline2D().Line(0); }, "[Error] TVPolyline2D.Line: 下标越界");
  test::ExpectRaises([] { TVPolyline2D(TPoint2D(1, 1)).Line(0); },
                     "[Error] TVPolyline2D.Line: 下标越界");
}

TEST(TVPolyline2D, ClosureFollowsTheEndsOnly) {
  EXPECT_FALSE(TVPolyline2D().IsClosed());
  EXPECT_TRUE(TVPolyline2D(TPoint2D(7, 7)).IsClosed());
  EXPECT_FALSE(kOpen.IsClosed());
  EXPECT_TRUE(kOpen.IsClosed(4.0));
  EXPECT_TRUE((TVPolyline2D{{0, 0}, {1, 0}, {1, 1}, {5e-7, 0}}).IsClosed());
  EXPECT_FALSE((TVPolyline2D{{0, 0}, {1, 0}, {1, 1}, {2e-6, 0}}).IsClosed());
}

TEST(TVPolyline2D, TurnsItsSenseOfRotation) {
  TVPolyline2D Contour = kSquare;
  Contour.SetIsClockwise(false);
  EXPECT_EQ(kSquare.Points(), Contour.Points());
  Contour.SetIsClockwise(true);
  EXPECT_TRUE(Contour.IsClockwise());
  EXPECT_EQ(-100.0, Contour.Area());

  TVPolyline2D Flat{{0, 0}, {1, 0}};  // no area is never clockwise, so the wish reverses
  Flat.SetIsClockwise(true);
  EXPECT_EQ(TPoint2D(1, 0), Flat.First());
  EXPECT_FALSE(Flat.IsClockwise());

  TVPolyline2D Empty;
  Empty.SetIsClockwise(true);
  EXPECT_TRUE(Empty.IsEmpty());
}

TEST(TVPolyline2D, WalksBetweenVertices) {
  const struct {
    int From, To;
    double Open, Closed;
  } Cases[] = {
      {0, 2, 7, 20}, {1, 3, 7, 20}, {3, 1, 0, 20}, {2, 2, 0, 0},  {0, 3, 10, 30},
      {-1, 2, 0, 0}, {0, 99, 0, 0}, {99, 0, 0, 0}, {3, 0, 0, 10},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(testing::Message() << Case.From << " to " << Case.To);
    EXPECT_DOUBLE_EQ(Case.Open, kOpen.RangeLength(Case.From, Case.To));
    EXPECT_DOUBLE_EQ(Case.Closed, kSquare.RangeLength(Case.From, Case.To));
  }
  EXPECT_DOUBLE_EQ(40.0, kSquare.RangeLength(0, 4));
  EXPECT_DOUBLE_EQ(0.0, kSquare.RangeLength(4, 0));  // the repeated point is no step
  EXPECT_DOUBLE_EQ(40.0, kSquare.TotalLength());
  EXPECT_EQ(0.0, TVPolyline2D().RangeLength(0, 0));
  EXPECT_EQ(0.0, TVPolyline2D(TPoint2D(1, 1)).TotalLength());
}

TEST(TVPolyline2D, AnswersTheFirstOfSeveralNearestEdges) {
  TPoint2D Nearest;
  EXPECT_DOUBLE_EQ(5.0, kSquare.DistTo({5, 5}, Nearest));
  EXPECT_EQ(TPoint2D(5, 10), Nearest);
  EXPECT_DOUBLE_EQ(5.0, kSquare.DistTo({-3, -4}, Nearest));
  EXPECT_EQ(TPoint2D(0, 0), Nearest);
  EXPECT_DOUBLE_EQ(5.0, TVPolyline2D(TPoint2D(3, 4)).DistTo({0, 0}, Nearest));
  EXPECT_EQ(TPoint2D(3, 4), Nearest);
  EXPECT_EQ(kStartOfMinimum, TVPolyline2D().DistTo({1, 1}, Nearest));
  EXPECT_EQ(TPoint2D::FZero, Nearest);
}

TEST(TVPolyline2D, PlacesParametersOnItsEdges) {
  EXPECT_EQ(kOpen.First(), kOpen.CalcPointByParam(0.0));
  EXPECT_EQ(kOpen.Last(), kOpen.CalcPointByParam(3.0));
  EXPECT_EQ(TPoint2D(3, 2), kOpen.CalcPointByParam(1.5));
  for (const double Outside : {-0.001, 3.0 + 1e-12, 1e300, -1e300, std::nan("")}) {
    EXPECT_EQ(TPoint2D::FZero, kOpen.CalcPointByParam(Outside));
    EXPECT_EQ(TPoint2D::FZero, TVPolyline2D().CalcPointByParam(Outside));
  }
  EXPECT_EQ(TPoint2D::FZero, TVPolyline2D().CalcPointByParam(0.0));
}

TEST(TVPolyline2D, FindsTheParameterOfTheNearestPlace) {
  EXPECT_DOUBLE_EQ(1.5, kOpen.CalcParamByPoint({7, 2}));
  EXPECT_DOUBLE_EQ(1.0, kOpen.CalcParamByPoint({9, -1}));      // a vertex: end of the first edge
  EXPECT_DOUBLE_EQ(0.0, kOpen.CalcParamByPoint({5, 2}, 2.0));  // exactly the limit is too far
  EXPECT_DOUBLE_EQ(1.5, kOpen.CalcParamByPoint({5, 2}, 2.0 + 1e-9));
  EXPECT_DOUBLE_EQ(0.0, kOpen.CalcParamByPoint({5, 2}, -1.0));
  EXPECT_DOUBLE_EQ(3.0, kOpen.CalcParamByPoint({-5, 9}));
  EXPECT_DOUBLE_EQ(0.0, TVPolyline2D().CalcParamByPoint({5, 2}));
}

TEST(TVPolyline2D, FindsTheFirstEdgeThatHoldsAPoint) {
  const TVPolyline2D Eight{{0, 0}, {2, 2}, {2, 0}, {0, 2}};
  EXPECT_DOUBLE_EQ(0.5, Eight.CalcFirstParamByPoint({1, 1}));
  EXPECT_DOUBLE_EQ(1.0, Eight.CalcFirstParamByPoint({2, 2}));
  EXPECT_DOUBLE_EQ(-1.0, Eight.CalcFirstParamByPoint({1, 1.5}));
  EXPECT_DOUBLE_EQ(0.75, Eight.CalcFirstParamByPoint({1.25, 1.75}, 0.4));
  EXPECT_DOUBLE_EQ(0.0, TVPolyline2D(TPoint2D(1, 1)).CalcFirstParamByPoint({1, 1}));
  EXPECT_DOUBLE_EQ(-1.0, TVPolyline2D().CalcFirstParamByPoint({0, 0}));
}

TEST(TVPolyline2D, TravelsWithinItsEnds) {
  EXPECT_EQ(TPoint2D(3, 1), kOpen.CalcTravelPos(4.0));
  EXPECT_EQ(kOpen.First(), kOpen.CalcTravelPos(-5.0));
  EXPECT_EQ(kOpen.First(), kOpen.CalcTravelPos(std::nan("")));
  EXPECT_EQ(kOpen.Last(), kOpen.CalcTravelPos(1e9));
  EXPECT_EQ(TPoint2D::FZero, TVPolyline2D().CalcTravelPos(1.0));
}

TEST(TVPolyline2D, DirectionsDifferOnTheTwoSidesOfAVertex) {
  const TPoint2D None;
  EXPECT_EQ(TPoint2D(3, 0), kOpen.CalcLeftDerivative(1.0));
  EXPECT_EQ(TPoint2D(0, 4), kOpen.CalcRightDerivative(1.0));
  EXPECT_EQ(TPoint2D(0, 4), kOpen.CalcDerivative(1.0));
  EXPECT_EQ(TPoint2D(0, 4), kOpen.CalcLeftDerivative(1.5));
  EXPECT_EQ(None, kOpen.CalcLeftDerivative(0.0));
  EXPECT_EQ(None, kOpen.CalcRightDerivative(3.0));
  EXPECT_EQ(TPoint2D(-3, 0), kOpen.CalcDerivative(3.0));
  EXPECT_EQ(TPoint2D(0, 10), kSquare.CalcLeftDerivative(0.0));
  EXPECT_EQ(TPoint2D(-10, 0), kSquare.CalcRightDerivative(4.0));
  EXPECT_EQ(None, kSquare.CalcDerivative(4.5));

  const TVPolyline2D Stutter{{0, 0}, {1, 0}, {1, 0}, {1, 0}, {1, 1}};
  EXPECT_EQ(TPoint2D(1, 0), Stutter.CalcLeftDerivative(2.5));
  EXPECT_EQ(TPoint2D(0, 1), Stutter.CalcRightDerivative(1.0));
  EXPECT_EQ(None, (TVPolyline2D{{1, 1}, {1, 1}, {1, 1}}).CalcDerivative(1.0));
}

TEST(TVPolyline2D, CutsPartsBetweenParameters) {
  using TPoints = std::vector<TPoint2D>;
  EXPECT_EQ((TPoints{{1.5, 0}, {3, 0}, {3, 2}}), kOpen.SubCurve(0.5, 1.5).Points());
  EXPECT_EQ((TPoints{{3, 0}, {3, 4}}), kOpen.SubCurve(1.0, 2.0).Points());
  EXPECT_EQ(kOpen.Points(), kOpen.SubCurve(0.0, 3.0).Points());
  EXPECT_EQ((TPoints{{3, 2}, {3, 2}}), kOpen.SubCurve(1.5, 1.5).Points());
  // Ends outside the polyline are the origin, the vertices between stay.
  EXPECT_EQ((TPoints{{1.5, 4}, {0, 4}, {0, 0}}), kOpen.SubCurve(2.5, 1e300).Points());
  EXPECT_EQ((TPoints{{0, 0}, {0, 0}, {1.5, 0}}), kOpen.SubCurve(-1e300, 0.5).Points());
  EXPECT_TRUE(TVPolyline2D().SubCurve(0.0, 1.0).IsEmpty());
  test::ExpectRaises([] { kOpen.SubCurve(1.0, 0.5); },
                     "[Error] TVPolyline2D.SubCurve: ParamTo < ParamFrom");
}

TEST(TVPolyline2D, PartsAddUpToTheWhole) {
  std::mt19937 Random(3);
  for (int Round = 0; Round < 200; ++Round) {
    const TVPolyline2D Contour = RandomContour(Random, test::RandomInt(Random, 2, 9), Round % 2);
    const double Middle = test::RandomDouble(Random, 0.0, Contour.Count() - 1.0);
    const TVPolyline2D Head = Contour.SubCurve(0.0, Middle);
    const TVPolyline2D Tail = Contour.SubCurve(Middle, Contour.Count() - 1.0);
    EXPECT_NEAR(Contour.TotalLength(), Head.TotalLength() + Tail.TotalLength(), 1e-9);
    EXPECT_TRUE(Contour.CalcTravelPos(Head.TotalLength()).Equals(Tail.First(), 1e-9));
    EXPECT_LE(Contour.DistTo(Tail.First()), 1e-12);
  }
}

TEST(TVPolyline2D, TestsParametersAgainstClosedRanges) {
  const std::vector<std::pair<double, double>> Ranges{{0.5, 1.0}, {3.0, 2.0}, {2.5, 2.5}};
  EXPECT_TRUE(TVPolyline2D::IsPointParamInLineParams(1.0, Ranges));
  EXPECT_TRUE(TVPolyline2D::IsPointParamInLineParams(2.5, Ranges));
  EXPECT_FALSE(TVPolyline2D::IsPointParamInLineParams(1.0 + 1e-15 * 2, Ranges));
  EXPECT_FALSE(TVPolyline2D::IsPointParamInLineParams(2.2, Ranges));  // bounds in the wrong order
  EXPECT_FALSE(TVPolyline2D::IsPointParamInLineParams(std::nan(""), Ranges));
}

TEST(TVPolyline2D, WritesItsPointsInFull) {
  EXPECT_EQ("(0.5000000000000000, -1.0000000000000000), (2.0000000000000000, 0.1000000000000000), ",
            (TVPolyline2D{{0.5, -1}, {2, 0.1}}).ToString());
  EXPECT_EQ("", TVPolyline2D().ToString());
}

}  // namespace
}  // namespace tarnalgo
