#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "geometryAlgo/ShapeApp.h"
#include "host/Cadutils.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using TPoints = std::vector<TPoint2D>;
using TAlgo = TPolygonBasicAlgo;

struct TExtents {
  long double Along;
  long double Across;
};

/// Extents of the points along and across an edge, by looking at all of them.
TExtents ExtentsAt(const TPoints& Points, const TPoint2D& A, const TPoint2D& B) {
  const long double X = static_cast<long double>(B.X) - A.X;
  const long double Y = static_cast<long double>(B.Y) - A.Y;
  const long double Length = std::sqrt(X * X + Y * Y);
  long double Box[4] = {1e300L, -1e300L, 1e300L, -1e300L};
  for (const TPoint2D& P : Points) {
    const long double Along = (X * P.X + Y * P.Y) / Length;
    const long double Across = (X * P.Y - Y * P.X) / Length;
    Box[0] = std::min(Box[0], Along);
    Box[1] = std::max(Box[1], Along);
    Box[2] = std::min(Box[2], Across);
    Box[3] = std::max(Box[3], Across);
  }
  return {Box[1] - Box[0], Box[3] - Box[2]};
}

struct TMinima {
  double Area = kStartOfMinimum;
  double Width = kStartOfMinimum;
  double Diameter = 0.0;
};

/// Over all edges, or all pairs, of a closed ring.
TMinima BruteMinima(const TPoints& Ring) {
  TMinima Result;
  for (std::size_t I = 0; I + 1 < Ring.size(); ++I) {
    for (const TPoint2D& P : Ring)
      Result.Diameter = std::max(Result.Diameter, P.DistanceTo(Ring[I]));
    if (Ring[I] == Ring[I + 1]) continue;
    const TExtents Extents = ExtentsAt(Ring, Ring[I], Ring[I + 1]);
    Result.Area = std::min(Result.Area, static_cast<double>(Extents.Along * Extents.Across));
    Result.Width = std::min(Result.Width, static_cast<double>(Extents.Across));
  }
  return Result;
}

/// Convex rings of several kinds, closed and counter-clockwise.
TVPolyline2D SomeConvexRing(std::mt19937& Random, int Round) {
  TVPolyline2D Points;
  switch (Round % 5) {
    case 0:
      return TAlgo::GenerateConvexPolyOnDisc({5, -3}, 10.0, 3 + Round % 30,
                                             static_cast<std::uint32_t>(Round), Round % 8 == 0);
    case 1:  // collinear vertices and ties; scaled so that the hull drops nothing
      for (int I = 0; I < 12; ++I) Points.Add(test::RandomGridPoint(Random, 0, 5) * 100.0);
      break;
    case 2:  // features of the size of the tolerances
      for (int I = 0; I < 60; ++I) {
        Points.Add(TPoint2D(3e-5, 0.0).RotateBy(test::RandomDouble(Random, 0, kFullTurn)));
      }
      return TConvexHullCalculator::CalcConvexHull(Points);
    case 3: {  // sides bent by next to nothing: many edges that are nearly parallel
      const double Bend = std::pow(10.0, test::RandomDouble(Random, -10, -4));
      const double Angle = test::RandomDouble(Random, 0, kFullTurn);
      const double W = test::RandomDouble(Random, 1, 10);
      const TPoint2D Corners[] = {{0, 0}, {W, 0}, {W, 3}, {0, 3}};
      for (int I = 0; I < 40; ++I) {
        const TPoint2D Side = Corners[(I / 10 + 1) % 4] - Corners[I / 10];
        const double T = I % 10 / 10.0;
        const TPoint2D Outward = Side.RotateCw90() * (Bend * T * (1 - T));
        Points.Add((Corners[I / 10] + Side * T + Outward).RotateBy(Angle));
      }
      Points.Add(Points.First());
      return Points;
    }
    default:  // a needle
      for (int I = 0; I < 30; ++I) {
        const TPoint2D P = test::RandomPoint(Random, -1, 1);
        Points.Add(TPoint2D(P.X * 1000.0, P.Y * 1e-3).RotateBy(0.7));
      }
      return TConvexHullCalculator::CalcConvexHull(Points);
  }
  return Points.ConvexHull();
}

void ExpectHolds(const TVPoint2DList& Box, const TVPolyline2D& Ring, double Slack) {
  ASSERT_EQ(4, Box.Count());
  const TPoint2D U = (Box[1] - Box[0]).Normal();
  for (const TPoint2D& P : Ring) {
    const TPoint2D Place = P - Box[0];
    ASSERT_TRUE(TMathUtils::IsInRange(U.DotMul(Place), -Slack, Box[0].DistanceTo(Box[1]) + Slack,
                                      true, true));
    ASSERT_TRUE(TMathUtils::IsInRange(U.CrossMul(Place), -Slack, Box[0].DistanceTo(Box[3]) + Slack,
                                      true, true));
  }
}

TEST(TPolygonBasicAlgo, MinimaAgreeWithTryingEveryEdge) {
  std::mt19937 Random(511);
  for (int Round = 0; Round < 2000; ++Round) {
    SCOPED_TRACE(Round);
    TVPolyline2D Ring = SomeConvexRing(Random, Round);
    if (Ring.Count() < 4) continue;
    const TMinima Expected = BruteMinima(Ring.Points());
    const TVRect2D Around = Ring.BoundBox();
    const double Slack = 1e-6 * std::hypot(Around.Width(), Around.Height());
    if (Round % 3 == 0) Ring.Reverse();
    if (Round % 5 == 0) Ring.Delete(Ring.Count() - 1);
    TVPoint2DList Box;
    const double Area = TAlgo::ConvexMABB(Ring, Box);
    EXPECT_LE(Area, Expected.Area * (1.0 + 1e-8));
    ASSERT_EQ(4, Box.Count());
    EXPECT_NEAR(Area, Box.Area(), 1e-8 * Area + Slack * Slack);
    ExpectHolds(Box, Ring, Slack);
    TPoint2D Direct;
    const double Width = TAlgo::ConvexWidth(Ring, Direct);
    EXPECT_NEAR(Expected.Width, Width, 1e-9 * Expected.Diameter);
    EXPECT_NEAR(Width, TAlgo::ProjectionLength(Ring, Direct.RotateCcw90()), Slack);
    int I = -1;
    int J = -1;
    EXPECT_DOUBLE_EQ(Expected.Diameter, TAlgo::ConvexDiameter(Ring, I, J));
    EXPECT_DOUBLE_EQ(Expected.Diameter, Ring[I].DistanceTo(Ring[J]));
    EXPECT_DOUBLE_EQ(Expected.Diameter, TAlgo::SimpleDiameter(Ring));
  }
}

TEST(TPolygonBasicAlgo, RectangleHoldsPointsThatTheCalipersPassOver) {
  // The last point closes the ring, within the tolerance only, and stands out of a small part.
  TVPolyline2D NearlyClosed{{0, 0}, {1e-2, 0}, {1e-2, 1e-2}, {0, 1e-2}, {-8e-7, 2e-7}};
  // A side of steps too short to be edges.
  TVPolyline2D Stepped{{0, 0}, {1e-6, 0}};
  for (int I = 1; I <= 200; ++I) Stepped.Add({1e-6, I * 5e-9});
  // So dense that the walk loses a support on its way.
  TVPolyline2D Dense;
  for (int I = 0; I < 20000; ++I) Dense.Add(TPoint2D(1.0, 0.0).RotateBy(kFullTurn * I / 20000));
  TVPoint2DList Box;
  for (const TVPolyline2D* Ring : {&NearlyClosed, &Stepped, &Dense}) {
    const TVRect2D Around = Ring->BoundBox();
    TAlgo::ConvexMABB(*Ring, Box);
    ExpectHolds(Box, *Ring, 1e-6 * std::hypot(Around.Width(), Around.Height()));
  }
  EXPECT_NEAR(4.0, Box.Area(), 1e-6);
}

TEST(TPolygonBasicAlgo, RectangleStartsOnTheFirstBestEdge) {
  TVPoint2DList Box;
  const TVPolyline2D Clockwise{{0, 0}, {0, 4}, {10, 4}, {10, 0}};
  EXPECT_EQ(40.0, TAlgo::ConvexMABB(Clockwise, Box));
  // Closed and reversed the first edge runs from (0, 0) to (10, 0).
  EXPECT_EQ((TPoints{{0, 0}, {10, 0}, {10, 4}, {0, 4}}), Box.Points());
  EXPECT_EQ(24.0, TAlgo::ConvexMABB({{0, 0}, {6, 0}, {6, 5e-9}, {6, 4}, {1, 4}, {0, 0}}, Box));
  EXPECT_EQ((TPoints{{0, 0}, {6, 0}, {6, 4}, {0, 4}}), Box.Points());
  EXPECT_EQ(40.0, TAlgo::SimpleMABB({{0, 0}, {5, 1}, {10, 0}, {10, 4}, {0, 4}}, Box));
  EXPECT_EQ(40.0, TAlgo::PointSetMABB({{5, 1}, {10, 4}, {0, 0}, {10, 0}, {0, 4}}, Box));
  // A corner that stands out by a few millionths counts.
  const TVPolyline2D Bulging{{0, 0}, {5, -8e-6}, {10, 0}, {10, 4}, {0, 4}};
  EXPECT_NEAR(40.00008, TAlgo::SimpleMABB(Bulging, Box), 1e-9);
  EXPECT_NEAR(4.000008, TAlgo::SimpleWidth(Bulging), 1e-12);
}

// Where a ring closes within the tolerance only, its corner is a dent on which a support may rest.
TEST(TPolygonBasicAlgo, RectangleOfARingThatNearlyClosesIsThatOfItsHull) {
  TVPoint2DList Box;
  const TVPolyline2D NearlyClosed{{6, 3.5}, {6, 6}, {2, 6}, {0, 5},
                                  {1, 0},   {3, 0}, {6, 1}, {5.9999996, 3.5000001}};
  EXPECT_NEAR(36.0, TAlgo::ConvexMABB(NearlyClosed, Box), 1e-9);  // 3e-6 less on the last edge
  EXPECT_TRUE(Box[0].Equals({6, 0}, 1e-9));
  const TVPolyline2D Needle{{993.5, 3.6e-7},       {645.7, 6.9e-7}, {133, 7.6e-7},
                            {115.3, 3.7e-7},       {660.2, 4.6e-8}, {909.6, 2.6e-7},
                            {993.5000002, -1.6e-7}};
  EXPECT_LE(0.0, TAlgo::ConvexMABB(Needle, Box));
  EXPECT_FALSE(TVPolyline2D(Box.Points()).IsClockwise());
}

TEST(TPolygonBasicAlgo, DegeneratePolygonsHaveNeutralMeasures) {
  TVPoint2DList Box{{1, 1}};
  for (const TVPolyline2D& Few : {TVPolyline2D{},
                                  {{1, 1}},
                                  {{0, 0}, {1, 1}, {0, 0}},
                                  {{2, 2}, {2, 2}, {2, 2}, {2, 2}},
                                  {{0, 0}, {NAN, 1}, {1, 0}, {5, 5}},
                                  {{0, 0}, {INFINITY, 0}, {1, 1}, {0, 1}}}) {
    EXPECT_EQ(0.0, TAlgo::ConvexMABB(Few, Box));
    EXPECT_TRUE(Box.IsEmpty());
    EXPECT_GE(TAlgo::ConvexDiameter(Few), 0.0);
    EXPECT_LE(TAlgo::ConvexWidth(Few), 1.0);
  }
  EXPECT_EQ(0.0, TAlgo::ConvexMABB({{0, 0}, {1, 0}, {3, 0}}, Box));
  EXPECT_EQ(4, Box.Count());
  TPoint2D Direct(7, 7);
  EXPECT_EQ(-1.0, TAlgo::ConvexWidth({{0, 0}, {1, 0}}, Direct));
  EXPECT_EQ(0.0, TAlgo::ConvexWidth({{2, 2}, {2, 2}, {2, 2}}, Direct));
  EXPECT_EQ(TPoint2D(7, 7), Direct);
  EXPECT_EQ(0.0, TAlgo::ConvexWidth({{0, 0}, {1, 0}, {0, 0}}));
  EXPECT_EQ(0.0, TAlgo::ConvexWidth({{0, 0}, {1, 0}, {3, 0}, {2, 0}}));
  EXPECT_EQ(3.0, TAlgo::ConvexDiameter({{1, 0}, {0, 0}, {3, 0}, {2, 0}}));
}

TEST(TPolygonBasicAlgo, WidthKeepsTheClosingEdgeAmongEqualOnes) {
  TPoint2D Direct;
  EXPECT_EQ(1.0, TAlgo::ConvexWidth({{0, 0}, {1, 0}, {1, 1}, {0, 1}}, Direct));
  EXPECT_EQ(TPoint2D(0, -1), Direct);
  EXPECT_EQ(4.0, TAlgo::SimpleWidth({{0, 0}, {10, 0}, {10, 4}, {5, 3}, {0, 4}}, Direct));
  EXPECT_EQ(0.0, Direct.Y);
}

TEST(TPolygonBasicAlgo, ExtremePointsKeepTheFirstOfEquals) {
  int MaxPt = -1;
  int MinPt = -1;
  const TVPoint2DList Points{{1, 0}, {3, 5}, {0, 2}, {3, 1}, {0, 0}};
  EXPECT_EQ(3.0, TAlgo::ExtremePoints(Points, {2, 0}, MaxPt, MinPt));
  EXPECT_EQ(1, MaxPt);
  EXPECT_EQ(2, MinPt);
  EXPECT_EQ(0.0, TAlgo::ExtremePoints({{1, 0}, {1, 5}}, {1, 0}, MaxPt, MinPt));
  EXPECT_EQ(0.0, TAlgo::ExtremePoints({}, {0, 0}, MaxPt, MinPt));
}

TEST(TPolygonBasicAlgo, TangentsLeaveTheRingOnOneSide) {
  std::mt19937 Random(512);
  for (int Round = 0; Round < 300; ++Round) {
    TVPolyline2D Ring = TAlgo::GenerateConvexPolyOnDisc({0, 0}, 5.0, 3 + Round % 20,
                                                        static_cast<std::uint32_t>(Round), false);
    if (Round % 2 == 0) Ring.Reverse();
    const TPoint2D P = test::RandomPoint(Random, -9, 9);
    int Left = 5;
    int Right = 5;
    const bool Exists = TAlgo::PointTangants(Ring, P, Left, Right);
    ASSERT_EQ(Ring.RelationWithPoint(P) == srOut, Exists);
    if (!Exists) {
      EXPECT_EQ(-2, Left + Right);
      continue;
    }
    for (const TPoint2D& Q : Ring) {
      EXPECT_LE(TAlgo::Area(P, Ring[Left], Q), 0.0);
      EXPECT_GE(TAlgo::Area(P, Ring[Right], Q), 0.0);
    }
  }
  int Left = 0;
  int Right = 0;
  EXPECT_TRUE(TAlgo::PointTangants({{2, 0}, {2, 1}, {1, 1}, {1, 0}}, {0, 0}, Left, Right));
  EXPECT_EQ(2, Left);
  EXPECT_EQ(3, Right);  // the nearest on the line of an edge
  EXPECT_TRUE(TAlgo::PointTangants({{1, 1}, {1, 0}, {2, 0}, {2, 1}}, {0, 0}, Left, Right));
  EXPECT_EQ(0, Left);
  EXPECT_EQ(1, Right);
}

TEST(TPolygonBasicAlgo, LeastInternalAngleInEitherSense) {
  TVPolyline2D Arrow{{0, 0}, {4, 0}, {4 + 1e-9, 0}, {1, 1}, {0, 4}, {0, 0}};
  int Index = -1;
  EXPECT_NEAR(std::atan2(1, 3), TAlgo::MinInternalAngle(Arrow, Index), 1e-8);
  EXPECT_EQ(1, Index);  // equal at (0, 4)
  Arrow.Reverse();
  EXPECT_NEAR(std::atan2(1, 3), TAlgo::MinInternalAngle(Arrow), 1e-8);
  EXPECT_EQ(0.0, TAlgo::MinInternalAngle({{0, 0}, {1, 0}, {0, 0}}, Index));
  EXPECT_EQ(-1, Index);
}

TEST(TPolygonBasicAlgo, GeneratedRingsAreStrictlyConvexInTheirDisc) {
  for (const bool Fast : {true, false}) {
    for (const int Count : {3, 4, 17, 5000}) {
      const TVPolyline2D Ring = TAlgo::GenerateConvexPolyOnDisc({50, 60}, 7.0, Count, 3, Fast);
      ASSERT_EQ(Count + 1, Ring.Count());
      EXPECT_TRUE(Ring.IsClosed(0.0));
      EXPECT_EQ(Ring.Points(),
                TAlgo::GenerateConvexPolyOnDisc({50, 60}, 7.0, Count, 3, Fast).Points());
      for (int I = 0; I < Count; ++I) {
        EXPECT_GT(TAlgo::Area(Ring[I], Ring[I + 1], Ring[(I + 2) % Count]), 0.0);
        EXPECT_LE(Ring[I].DistanceTo({50, 60}), 7.0 * (1 + 1e-12));
      }
    }
    const TVPolyline2D Tiny = TAlgo::GenerateConvexPolyOnDisc({0, 0}, 1e-4, 17, 1, Fast);
    ASSERT_EQ(18, Tiny.Count());
    const auto IsOnCircle = [](const TPoint2D& P) { return std::abs(P.Mag() - 1e-4) < 1e-12; };
    EXPECT_EQ(Fast, std::all_of(Tiny.begin(), Tiny.end(), IsOnCircle));
    EXPECT_TRUE(TAlgo::GenerateConvexPolyOnDisc({0, 0}, 1.0, 2, 1, Fast).IsEmpty());
    EXPECT_TRUE(TAlgo::GenerateConvexPolyOnDisc({0, 0}, 0.0, 5, 1, Fast).IsEmpty());
    EXPECT_TRUE(TAlgo::GenerateConvexPolyOnDisc({NAN, 0}, 1.0, 5, 1, Fast).IsEmpty());
  }
}

// Were X and Y steps not paired at random, sides would rather rise to the right.
TEST(TPolygonBasicAlgo, GeneratedRingsLeanNeitherWay) {
  double Sum = 0.0;
  for (std::uint32_t Seed = 0; Seed < 400; ++Seed) {
    const TVPolyline2D Ring = TAlgo::GenerateConvexPolyOnDisc({0, 0}, 1.0, 4, Seed, false);
    for (int I = 0; I < 4; ++I) {
      const TPoint2D Side = Ring[I + 1] - Ring[I];
      Sum += Side.X * Side.Y / 400;
    }
  }
  EXPECT_NEAR(0.0, Sum, 0.1);
}

}  // namespace
}  // namespace tarnalgo
