#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/Generate.h"
#include "tests/support/GridGeometry.h"

namespace tarnalgo {
namespace {

using TPoints = std::vector<TPoint2D>;

const TVPolyline2D kSquare(TVRect2D({0, 0}, {10, 10}));

/// The corners of the hull by walking round it, in integers: from the lowest of the leftmost
/// points, counter-clockwise. Fewer than three for points on one line.
TPoints WrapGridHull(const TVPolyline2D& Points) {
  TPoints Hull;
  std::size_t Current = 0;
  for (std::size_t I = 1; I < Points.Points().size(); ++I) {
    const TPoint2D P = Points.Points()[I];
    const TPoint2D Q = Points.Points()[Current];
    if (P.X < Q.X || (P.X == Q.X && P.Y < Q.Y)) Current = I;
  }
  TPoint2D Corner = Points.Points()[Current];
  do {
    Hull.push_back(Corner);
    TPoint2D Next = Corner;
    for (const TPoint2D& P : Points) {
      const auto Turn =
          test::Turn(test::TGridPoint(Corner), test::TGridPoint(Next), test::TGridPoint(P));
      if (Next == Corner || Turn < 0 ||
          (Turn == 0 && Corner.DistanceTo(P) > Corner.DistanceTo(Next))) {
        Next = P;
      }
    }
    Corner = Next;
  } while (Corner != Hull.front());
  return Hull;
}

TVPolyline2D RandomGridPolyline(std::mt19937& Random, int Count, int Size) {
  TVPolyline2D Result;
  for (int I = 0; I < Count; ++I) Result.Add(test::RandomGridPoint(Random, 0, Size));
  return Result;
}

TEST(TVPolyline2DShape, HullAgreesWithWrappingInIntegers) {
  std::mt19937 Random(11);
  for (int Round = 0; Round < 400; ++Round) {
    TVPolyline2D Points =
        RandomGridPolyline(Random, test::RandomInt(Random, 1, 30), test::RandomInt(Random, 1, 8));
    TPoints Expected = WrapGridHull(Points);
    if (Expected.size() > 1) Expected.push_back(Expected.front());
    const TPoints Before = Points.Points();
    EXPECT_EQ(Expected, Points.ConvexHull().Points());
    EXPECT_EQ(Before, Points.Points());
    Points.Translate({1e9, -1e9});
    TVPolyline2D Moved = Points.ConvexHull();
    Moved.Translate({-1e9, 1e9});
    EXPECT_EQ(Expected, Moved.Points());
  }
}

TEST(TVPolyline2DShape, HullLeavesNoPointFartherOutThanItsSlack) {
  std::mt19937 Random(12);
  for (const int Count : {3, 100, 20000}) {
    TVPolyline2D Points;  // a ring so dense that most of it stands out less than the slack
    for (int I = 0; I < Count; ++I) {
      Points.Add(TPoint2D(1.0, 0.0).RotateBy(test::RandomDouble(Random, 0.0, kFullTurn)));
    }
    const TVPolyline2D Hull = Points.ConvexHull();
    EXPECT_TRUE(Hull.IsClosed(0.0));
    EXPECT_GT(Hull.Area(), 0.0);
    EXPECT_TRUE(Hull.IsConvexPolygon());
    for (int I = 0; I + 1 < Hull.Count(); ++I) {
      const TVLine2D Edge = Hull.Line(I);
      const TPoint2D Outward = Edge.Vector().Normal().RotateCw90();
      for (const TPoint2D& P : Points) {
        ASSERT_LE((P - Edge.StartPoint).DotMul(Outward), kHullSlack * (1 + 1e-9));
      }
    }
    EXPECT_LE(Hull.Count(), 1000);
  }
}

TEST(TVPolyline2DShape, HullOfDegeneratePoints) {
  EXPECT_TRUE(TVPolyline2D().ConvexHull().IsEmpty());
  EXPECT_EQ((TPoints{{2, 3}}), (TVPolyline2D{{2, 3}, {2, 3}, {2, 3}}).ConvexHull().Points());
  EXPECT_EQ((TPoints{{0, 0}, {4, 4}, {0, 0}}),
            (TVPolyline2D{{4, 4}, {1, 1}, {0, 0}, {3, 3}}).ConvexHull().Points());
  // Three collinear points lead: none of them moves.
  const TVPolyline2D Leading{{0, 0}, {1, 0}, {2, 0}, {2, 2}, {0, 2}};
  EXPECT_EQ((TPoints{{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}}), Leading.ConvexHull().Points());
  const TVPolyline2D Odd{{0, 0}, {std::nan(""), 1}, {4, 0}, {0, 4}, {INFINITY, 0}};
  EXPECT_EQ((TPoints{{0, 0}, {4, 0}, {0, 4}, {0, 0}}), Odd.ConvexHull().Points());
  const TVPolyline2D Huge{{-1e300, -1e300}, {1e300, -1e300}, {0, 1e300}, {0, 0}};
  EXPECT_EQ(4, Huge.ConvexHull().Count());
}

TEST(TVPolyline2DShape, ConvexIsWhatIsItsOwnHull) {
  std::mt19937 Random(13);
  int Convex = 0;
  for (int Round = 0; Round < 3000; ++Round) {
    TVPolyline2D Contour = RandomGridPolyline(Random, test::RandomInt(Random, 1, 6), 4);
    if (Round % 2 == 0) Contour.Add(Contour.First());
    TVPolyline2D Ring = Contour;
    Ring.ConnectHeadTail();
    Ring.CollinearSmooth();
    TVPolyline2D Hull(WrapGridHull(Contour));
    bool Expected = false;
    if (Hull.Count() >= 3) {
      Hull.Add(Hull.First());
      Expected = Ring.IsEqualTo(Hull) || Ring.IsEqualToReverse(Hull);
    }
    EXPECT_EQ(Expected, Contour.IsConvexPolygon()) << Contour.ToString();
    Convex += Expected ? 1 : 0;
  }
  EXPECT_GT(Convex, 300);
}

TEST(TVPolyline2DShape, ConvexWithinTheTolerance) {
  TVPolyline2D Dense;
  for (int I = 0; I <= 100000; ++I) Dense.Add(TPoint2D(1, 0).RotateBy(kFullTurn * I / 100000));
  EXPECT_TRUE(Dense.IsConvexPolygon());
  EXPECT_TRUE((TVPolyline2D{{0, 0}, {5, 5e-7}, {10, 0}, {10, 10}, {0, 10}}).IsConvexPolygon());
  EXPECT_FALSE((TVPolyline2D{{0, 0}, {5, 5e-6}, {10, 0}, {10, 10}, {0, 10}}).IsConvexPolygon());
  EXPECT_FALSE((TVPolyline2D{{0, 0}, {10, 0}, {10, 10}, {15, 15}, {10, 10}, {0, 10}})
                   .IsConvexPolygon());  // a spike
  TVPolyline2D Twice = kSquare;
  Twice.AddRange(Twice.Points());
  EXPECT_FALSE(Twice.IsConvexPolygon());
}

TEST(TVPolyline2DShape, KnowsRectangles) {
  const struct {
    const char* Name;
    TVPolyline2D Contour;
    bool Expected;
  } Cases[] = {
      {"closed", kSquare, true},
      {"open ring", {{0, 0}, {4, 0}, {4, 3}, {0, 3}}, true},
      {"at an angle", {{0, 0}, {4, 3}, {1, 7}, {-3, 4}, {0, 0}}, true},
      {"vertices on the sides", {{2, 0}, {4, 0}, {4, 3}, {1, 3}, {0, 3}, {0, 0}, {2, 0}}, true},
      {"long and narrow", {{0, 0}, {1e4, 0}, {1e4, 0.01}, {0, 0.01}}, true},
      {"off by less", {{0, 0}, {4, 0}, {4, 3 + 9e-7}, {0, 3}}, true},
      {"off by more", {{0, 0}, {4, 0}, {4, 3 + 4e-6}, {0, 3}}, false},
      {"a parallelogram", {{0, 0}, {4, 0}, {5, 3}, {1, 3}}, false},
      {"a rhombus", {{0, 0}, {2, 1}, {0, 2}, {-2, 1}}, false},
      {"an isosceles trapezium", {{0, 0}, {6, 0}, {5, 3}, {1, 3}}, false},
      {"crossed", {{0, 0}, {4, 3}, {4, 0}, {0, 3}}, false},
      {"a triangle", {{0, 0}, {4, 0}, {4, 3}, {0, 0}}, false},
      {"without width", {{0, 0}, {4, 0}, {4, 5e-7}, {0, 5e-7}}, false},
      {"a point", {{1, 1}}, false},
      {"nothing", {}, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, Case.Contour.IsRect());
    TVPolyline2D Turned = Case.Contour;
    Turned.Negative();
    Turned.RotateBy90();
    EXPECT_EQ(Case.Expected, Turned.IsRect());
    Turned.Zoom(2.0);
    EXPECT_EQ(Case.Expected, Turned.IsRect(2e-6));
  }
}

// Green's theorem along Y, in integers.
TEST(TVPolyline2DShape, GravityIsExactOnAGridAndFarFromTheOrigin) {
  std::mt19937 Random(14);
  for (int Round = 0; Round < 300; ++Round) {
    TVPolyline2D Contour = RandomGridPolyline(Random, test::RandomInt(Random, 3, 8), 9);
    double Area2 = 0.0;
    double MomentX = 0.0;
    double MomentY = 0.0;
    for (int I = 0; I < Contour.Count(); ++I) {
      const TPoint2D P = Contour[I];
      const TPoint2D Q = Contour[(I + 1) % Contour.Count()];
      Area2 += (P.X + Q.X) * (Q.Y - P.Y);
      MomentX += (P.X * P.X + P.X * Q.X + Q.X * Q.X) * (Q.Y - P.Y);
      MomentY -= (P.Y * P.Y + P.Y * Q.Y + Q.Y * Q.Y) * (Q.X - P.X);
    }
    if (Area2 == 0.0) continue;
    const TPoint2D Expected(MomentX / (3.0 * Area2), MomentY / (3.0 * Area2));
    EXPECT_TRUE(Contour.Gravity().Equals(Expected, 1e-9));
    Contour.Translate({1e9, -1e9});
    EXPECT_TRUE((Contour.Gravity() - TPoint2D(1e9, -1e9)).Equals(Expected, 1e-6));
  }
}

TEST(TVPolyline2DShape, GravityOfWhatHasNoArea) {
  EXPECT_EQ(TPoint2D::FZero, TVPolyline2D().Gravity());
  EXPECT_EQ(TPoint2D(3, 4), (TVPolyline2D{{3, 4}, {3, 4}}).Gravity());
  EXPECT_TRUE((TVPolyline2D{{0, 0}, {1, 0}, {4, 0}}).Gravity().Equals({2, 0}, 1e-12));
  EXPECT_TRUE((TVPolyline2D{{0, 0}, {4, 0}, {4, 1e-9}, {0, 1e-9}}).Gravity().Equals({2, 0}, 1e-6));
}

TEST(TVPolyline2DShape, ClassifiesCornersByTheCrossProduct) {
  const TVPolyline2D Open{{0, 0}, {1, 0}, {1, 0}, {1, 1}, {2, 1}, {4, 1}, {3, 1}};
  const TCornerType Expected[] = {ctStraight, ctLeft,    ctLeft,    ctRight,
                                  ctStraight, ctReverse, ctStraight};
  for (int I = 0; I < Open.Count(); ++I) EXPECT_EQ(Expected[I], Open.CornerType(I)) << I;
  EXPECT_EQ(ctStraight, Open.CornerType(-1));
  EXPECT_EQ(ctStraight, Open.CornerType(Open.Count()));
  for (int I = 0; I < kSquare.Count(); ++I) EXPECT_EQ(ctLeft, kSquare.CornerType(I));
  EXPECT_EQ(ctStraight, (TVPolyline2D{{0, 0}, {1, 0}, {2, 9e-13}}).CornerType(1));
  EXPECT_EQ(ctLeft, (TVPolyline2D{{0, 0}, {1, 0}, {2, 2e-12}}).CornerType(1));
}

TEST(TVPolyline2DShape, MeasuresTheCircleThroughThreeVertices) {
  TVPolyline2D Contour;
  for (const double Angle : {0.0, 0.5, 1.7, 2.0, 4.0}) {
    Contour.Add(TPoint2D(1e6, 0) + TPoint2D(5, 0).RotateBy(Angle));
  }
  Contour.Add(Contour.First());
  for (int I = 0; I < Contour.Count(); ++I) EXPECT_NEAR(5.0, Contour.CurvatureRadius(I), 1e-7);
  const TVPolyline2D Open{{0, 0}, {1, 0}, {3, 0}, {2, 0}};
  EXPECT_EQ(-1.0, Open.CurvatureRadius(0));
  EXPECT_EQ(std::numeric_limits<double>::infinity(), Open.CurvatureRadius(1));
  EXPECT_EQ(0.0, Open.CurvatureRadius(2));
  EXPECT_EQ(-1.0, Open.CurvatureRadius(3));
  EXPECT_EQ(-1.0, Open.CurvatureRadius(7));
}

TEST(TVPolyline2DShape, ComparesCoursesWhereverARingBegins) {
  TVPolyline2D Moved{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 5e-7}};
  EXPECT_TRUE(kSquare.IsEqualTo(Moved));
  EXPECT_FALSE(kSquare.IsEqualToReverse(Moved));
  Moved.Negative();
  EXPECT_FALSE(kSquare.IsEqualTo(Moved));
  EXPECT_TRUE(kSquare.IsEqualToReverse(Moved));
  EXPECT_TRUE(Moved.IsEqualToReverse(kSquare));
  Moved[2].X += 2e-6;
  EXPECT_FALSE(kSquare.IsEqualToReverse(Moved));

  const TVPolyline2D Open{{0, 0}, {1, 0}, {1, 1}};
  EXPECT_TRUE(Open.IsEqualTo(Open));
  EXPECT_TRUE(Open.IsEqualToReverse({{1, 1}, {1, 0}, {0, 0}}));
  EXPECT_FALSE(Open.IsEqualTo({{1, 0}, {1, 1}, {0, 0}}));  // open: the start counts
  EXPECT_FALSE(Open.IsEqualTo({{0, 0}, {1, 0}}));
  EXPECT_TRUE(TVPolyline2D().IsEqualTo(TVPolyline2D()));
}

// Wherever the second ring is begun, almost all of it agrees: once the square of its points.
TEST(TVPolyline2DShape, ComparesRingsThatRepeatThemselves) {
  const int Count = 600001;
  TVPolyline2D Fro;
  for (int I = 0; I < Count; ++I) Fro.Add({I % 2 * 10.0, 0});
  TVPolyline2D Other = Fro;
  Other[Count / 2] = {3, 3};
  EXPECT_FALSE(Fro.IsEqualTo(Other));
  EXPECT_FALSE(Other.IsEqualTo(Fro));
  EXPECT_FALSE(Fro.IsEqualToReverse(Other));
  Fro[7] = {3, 3};  // instead of the other end of the stroke
  Other[Count / 2] = Other[Count / 2 + 2];
  Other[Count / 2 + 1 + Count / 2 % 2] = {3, 3};
  EXPECT_TRUE(Fro.IsEqualTo(Other));
  EXPECT_TRUE(Fro.IsEqualToReverse(Other));
}

}  // namespace
}  // namespace tarnalgo
