#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>
#include <vector>

#include "geometryAlgo/ShapeApp.h"
#include "geometryAlgo/ShapeApp/SimpleRing.h"
#include "tests/support/Generate.h"
#include "tests/support/GridGeometry.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using TAlgo = TPolygonBasicAlgo;

const TVPolyline2D kSquare{{0, 0}, {4, 0}, {4, 4}, {0, 4}};

TVPolyline2D Moved(TVPolyline2D Polygon, const TPoint2D& By) {
  Polygon.Translate(By);
  return Polygon;
}

/// A ring that winds once round the origin, so simple, with corners at random distances.
TVPolyline2D Star(std::mt19937& Random, int Count) {
  TVPolyline2D Ring;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * (I + test::RandomDouble(Random, 0.1, 0.9)) / Count;
    Ring.Add(TPoint2D(test::RandomDouble(Random, 1, 9), 0).RotateBy(Angle));
  }
  return Ring;
}

/// There and back along a spiral of 20 turns, the way back a hundredth of a unit farther out.
TVPolyline2D ThinSpiral(int Count) {
  TVPolyline2D Ring;
  for (int I = 0; I < 2 * Count; ++I) {
    const int Step = I < Count ? I : 2 * Count - 1 - I;
    const double Way = static_cast<double>(Step) / Count;
    const double Radius = 1000.0 * (0.05 + Way) + (I < Count ? 0.0 : 0.01);
    Ring.Add(TPoint2D(Radius, 0).RotateBy(20.0 * kFullTurn * Way));
  }
  return Ring;
}

TEST(TPolygonBasicAlgo, SimpleIsDecidedByArea) {
  const struct {
    const char* Name;
    TVPolyline2D Ring;
    bool Expected;
  } Cases[] = {
      {"square", kSquare, true},
      {"clockwise, closed", {{0, 0}, {0, 4}, {4, 4}, {4, 0}, {0, 0}}, true},
      {"bow tie", {{0, 0}, {4, 4}, {4, 0}, {0, 4}}, false},
      {"lopsided bow tie", {{0, 0}, {4, 4}, {4, 0}, {0, 1}}, false},
      {"small lopsided bow tie", {{0, 0}, {4e-4, 4e-4}, {4e-4, 0}, {0, 1e-4}}, false},
      {"loop of a trillionth of the area",
       {{0, 0}, {1e5, 0}, {1e5, 1e5}, {0, 1e5}, {0.02, -0.02}, {0, -0.02}},
       true},
      {"stroke", {{0, 0}, {4, 0}, {8, 0}}, false},
      {"to and fro", {{0, 0}, {4, 0}, {4, 0}, {0, 0}}, false},
      {"spike", {{0, 0}, {4, 0}, {8, 0}, {4, 0}, {4, 4}, {0, 4}}, true},
      // Areas summed in doubles about the origin were rounded differently for the two rings.
      {"far away", Moved({{0, 0}, {7, 1}, {5.5, 7}, {2, 3}}, {1e7, 7e6}), true},
      // Large terms that nearly cancel, begun at another corner.
      {"thin spiral", ThinSpiral(1000), true},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, TAlgo::IsSimple(Case.Ring));
  }
}

TEST(TPolygonBasicAlgo, RefusesFewerThanThreeCorners) {
  for (const TVPolyline2D& Few :
       {TVPolyline2D{}, {{0, 0}}, {{0, 0}, {1, 0}}, {{0, 0}, {1, 0}, {0, 1e-7}}}) {
    test::ExpectRaises([&] { TAlgo::IsSimple(Few); }, "Error In FUNC[IsSimple]");
    test::ExpectRaises([&] { TAlgo::PolygonSimplify(Few, 1000.0); },
                       "Error In FUNC[PolygonSimplify]");
  }
  EXPECT_FALSE(TAlgo::IsSimple({{NAN, 0}, {1e300, 1e300}, {INFINITY, 0}, {-1e300, 1}}));
}

TEST(TPolygonBasicAlgo, SimplifiedPiecesBeginWithTheLargest) {
  // The crossing of the two long edges is (1, 1): triangles of area 1 and 9.
  const TVPolyline2DList Pieces = TAlgo::PolygonSimplify({{0, 0}, {4, 4}, {4, -2}, {0, 2}}, 1e5);
  ASSERT_EQ(2, Pieces.Count());
  EXPECT_NEAR(9.0, Pieces[0]->Area(), 1e-9);
  EXPECT_NEAR(1.0, Pieces[1]->Area(), 1e-9);
  // Equal by integers, though not by doubles so far from the origin: nothing changes places.
  const TVPolyline2D Far{{48601, 7.3}, {48613, 15.3}, {48613, 7.3}, {48601, 15.3}};
  TPaths Named;
  ClipperLib::SimplifyPolygon(Far.ToPath(1e5), Named, ClipperLib::pftNonZero);
  EXPECT_EQ(Named, TAlgo::PolygonSimplify(Far, 1e5).ToPaths(1e5));
}

TEST(TPolygonBasicAlgo, CommonRegion) {
  const TVPolyline2DList Corner = TAlgo::PolygonIntersection(kSquare, Moved(kSquare, {3, 2}));
  ASSERT_EQ(1, Corner.Count());
  EXPECT_DOUBLE_EQ(2.0, Corner[0]->Area());
  EXPECT_EQ(4, Corner[0]->Count());
  TVPolyline2D Comb{{-1, 1}, {1, 1}, {1, 3}, {2, 3}, {2, 2}, {5, 2}, {5, 5}, {-1, 5}};
  Comb.Reverse();
  const TVPolyline2DList Two =
      TAlgo::PolygonIntersection({{0, 0}, {6, 0}, {6, 2.5}, {0, 2.5}}, Comb);
  ASSERT_EQ(2, Two.Count());
  EXPECT_DOUBLE_EQ(1.5, Two[0]->Area());
  EXPECT_DOUBLE_EQ(1.5, Two[1]->Area());
  for (const TVPolyline2D& Other : {Moved(kSquare, {4, 0}),
                                    Moved(kSquare, {4, 4}),
                                    Moved(kSquare, {9, 0}),
                                    TVPolyline2D{{1, 1}, {2, 2}},
                                    {}}) {
    EXPECT_TRUE(TAlgo::PolygonIntersection(kSquare, Other).IsEmpty());
  }
}

TEST(TPolygonBasicAlgo, ContainmentByAreaWithTolerance) {
  EXPECT_TRUE(TAlgo::PolyContains(kSquare, kSquare, 0, 0));
  EXPECT_TRUE(TAlgo::PolyContains(kSquare, {{0, 0}, {4, 0}, {1, 3}}, 0, 0));
  const TVPolyline2D Shifted = Moved(kSquare, {0.5, 0});  // 2 of 16 stand out
  EXPECT_FALSE(TAlgo::PolyContains(kSquare, Shifted, 1.99, 0));
  EXPECT_TRUE(TAlgo::PolyContains(kSquare, Shifted, 2.0, 0));
  EXPECT_TRUE(TAlgo::PolyContains(kSquare, Shifted, 1.0, 1.0 / 16));
  EXPECT_TRUE(TAlgo::PolyContains(kSquare, {{1, 1}, {4 + 5e-7, 2}}, 0, 0));
  EXPECT_FALSE(TAlgo::PolyContains(kSquare, {{1, 1}, {5, 2}}, 9, 0));
  EXPECT_FALSE(TAlgo::PolyContains({{0, 0}, {4, 0}}, kSquare, 99, 0));
  EXPECT_FALSE(TAlgo::PolyContains(kSquare, {}, 0, 0));
  // Of a bow tie the region counts: 4.5 inside and 2 outside, though the lobes take each other off.
  const TVPolyline2D BowTie{{1, 0.5}, {6, 3}, {6, 1}, {1, 3.5}};
  EXPECT_FALSE(TAlgo::PolyContains(kSquare, BowTie, 1.99, 0));
  EXPECT_TRUE(TAlgo::PolyContains(kSquare, BowTie, 2.01, 0));
  EXPECT_TRUE(
      TAlgo::PolyContains({{0, 0}, {8, 8}, {8, 0}, {0, 8}}, {{1, 3}, {2, 3}, {2, 4}}, 0, 0));
}

void ExpectTriangulated(const TVPolyline2D& Ring, int Corners) {
  const TVPolyline2DList Triangles = TAlgo::TriangleDivide(Ring);
  ASSERT_EQ(Corners - 2, Triangles.Count());
  double Sum = 0.0;
  for (const auto* Triangle : Triangles) {
    ASSERT_EQ(3, Triangle->Count());
    EXPECT_GE(Triangle->Area(), -1e-15);
    Sum += Triangle->Area();
    for (const TPoint2D& P : *Triangle) EXPECT_GE(Ring.IndexOfByXY(P.X, P.Y, 0.0), 0);
  }
  // Nowhere negative and as large as the ring: no overlap either.
  EXPECT_NEAR(std::abs(Ring.Area()), Sum, 1e-9 * Sum);
}

TEST(TPolygonBasicAlgo, TrianglesCoverTheRingOnce) {
  std::mt19937 Random(514);
  for (int Round = 0; Round < 60; ++Round) {
    SCOPED_TRACE(Round);
    const int Count = Round == 0 ? 3000 : 3 + Round;
    TVPolyline2D Ring = Star(Random, Count);
    if (Round % 2 == 0) Ring.Reverse();
    if (Round % 3 == 0) Ring.Add(Ring.First());
    ExpectTriangulated(Ring, Count);
  }
  // Nothing but straight ways and right angles, and a comb.
  ExpectTriangulated({{0, 0}, {1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2}, {0, 2}, {0, 1}}, 8);
  ExpectTriangulated(TVPolyline2D{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {0, 3}}, 5);
  // A hole that hangs in a reflex corner and leaves a narrow corner beside it.
  ExpectTriangulated({{0, 0}, {10, 0}, {10, 4}, {4, 4}, {2, 6}, {3, 9}, {4, 4}, {4, 10}, {0, 10}},
                     9);
  // As many corners turn right as left, and one of them lies in the first ear.
  ExpectTriangulated({{0, 0}, {5, 1}, {10, 0}, {9, 5}, {10, 10}, {2, 2}, {0, 10}, {1, 5}}, 8);
  TVPolyline2D Comb{{2000, -1}, {0, -1}};
  for (int I = 0; I < 2000; ++I) Comb.Add({static_cast<double>(I), I % 2 == 0 ? 0.0 : 50.0});
  Comb.Reverse();
  ExpectTriangulated(Comb, 2002);
  // Narrower than high, and the corners that turn right are at two heights.
  for (int I = 0; I < Comb.Count(); ++I) {
    Comb[I] = {Comb[I].X * 1e-3, Comb[I].Y + (I < 2000 && I % 4 == 1 ? 10.0 : 0.0)};
  }
  ExpectTriangulated(Comb, 2002);
  TVPolyline2D Spiral;
  for (int I = -1000; I < 1000; ++I) {
    const double Angle = 0.05 * std::abs(I);
    Spiral.Add(TPoint2D(Angle + (I < 0 ? 4.0 : 1.0), 0.0).RotateBy(Angle));
  }
  ExpectTriangulated(Spiral, 2000);
  // A hole that touches the outline in a corner, however it is begun.
  std::vector<TPoint2D> Touching{{0, 0}, {9, 0}, {9, 9}, {5, 9}, {7, 5},
                                 {5, 1}, {3, 5}, {5, 9}, {0, 9}};
  for (std::size_t I = 0; I < Touching.size(); ++I) {
    std::rotate(Touching.begin(), Touching.begin() + 1, Touching.end());
    ExpectTriangulated(TVPolyline2D(Touching), 9);
  }
  // The ends of the ring fall into one place of the grid, and are two.
  ExpectTriangulated({{-4e-7, -4e-7}, {9, 0}, {9, 9}, {4e-7, 4e-7}}, 4);
  // As wide as a double is: neither extents nor areas are finite.
  const double Far = 1.7e308;
  EXPECT_EQ(
      3,
      TAlgo::TriangleDivide({{-Far, -Far}, {Far, -Far}, {0, 0}, {Far, Far}, {-Far, Far}}).Count());
  for (const TVPolyline2D& None : {TVPolyline2D{},
                                   {{0, 0}, {1, 0}, {0, 0}},
                                   {{0, 0}, {4, 4}, {4, 0}, {0, 4}},
                                   {{0, 0}, {1, 1}, {2, 2}},
                                   {{0, 0}, {1, 0}, {1, 1e-7}, {0, 0}},
                                   {{0, 0}, {NAN, 1}, {1, 1}}}) {
    EXPECT_TRUE(TAlgo::TriangleDivide(None).IsEmpty());
  }
}

double BruteDistance(const TVPolyline2D& A, const TVPolyline2D& B) {
  if (A.RelationWithPoint(B[0]) == srIn || B.RelationWithPoint(A[0]) == srIn) return 0.0;
  double Least = kStartOfMinimum;
  for (int I = 0; I < A.Count(); ++I) {
    for (int J = 0; J < B.Count(); ++J) {
      const TVLine2D S(A[I], A[(I + 1) % A.Count()]);
      const TVLine2D T(B[J], B[(J + 1) % B.Count()]);
      const test::TGridSegment U{test::TGridPoint(S.StartPoint), test::TGridPoint(S.EndPoint)};
      const test::TGridSegment V{test::TGridPoint(T.StartPoint), test::TGridPoint(T.EndPoint)};
      if (test::Meet(U, V).Exists()) return 0.0;
      for (const TPoint2D& P : {S.StartPoint, S.EndPoint}) {
        Least = std::min(Least, T.SegmentDistanceTo(P));
      }
      for (const TPoint2D& P : {T.StartPoint, T.EndPoint}) {
        Least = std::min(Least, S.SegmentDistanceTo(P));
      }
    }
  }
  return Least;
}

TEST(TPolygonBasicAlgo, DistanceAgreesWithTryingEveryPairOfEdges) {
  std::mt19937 Random(515);
  for (int Round = 0; Round < 400; ++Round) {
    TVPolyline2D A = Star(Random, 3 + Round % 40);
    TVPolyline2D B = Star(Random, 3 + Round % 17);
    A.RoundTo(0);
    B.RoundTo(0);
    B.Translate(test::RandomGridPoint(Random, -25, 25));
    const double Distance = TAlgo::MinPolyDistance(A, B);
    ASSERT_NEAR(BruteDistance(A, B), Distance, 1e-12) << "round " << Round;
    ASSERT_EQ(Distance, TAlgo::MinPolyDistance(B, A));
  }
  EXPECT_EQ(-1.0, TAlgo::MinPolyDistance(kSquare, {}));
  EXPECT_EQ(-1.0, TAlgo::MinPolyDistance({{NAN, 1}}, kSquare));
  EXPECT_EQ(5.0, TAlgo::MinPolyDistance({{7, 8}}, kSquare));
  EXPECT_EQ(0.0, TAlgo::MinPolyDistance(kSquare, {{1, 1}}));
  EXPECT_EQ(0.0, TAlgo::MinPolyDistance(kSquare, {{1, 1}, {2, 1}, {2, 2}}));
  EXPECT_EQ(0.0, TAlgo::MinPolyDistance({{1, 1}, {2, 1}, {2, 2}}, kSquare));
}

bool TouchesByEveryPair(const std::vector<TPoint2D>& Ring) {
  std::vector<TPoint2D> Closed = Ring;
  Closed.push_back(Ring.front());
  const auto Edges = test::GridEdges(Closed);
  const std::size_t Count = Edges.size();
  for (std::size_t I = 0; I < Count; ++I) {
    if (Edges[I].A == Edges[I].B) return true;
    for (std::size_t J = I + 1; J < Count; ++J) {
      const test::TGridMeeting Meeting = test::Meet(Edges[I], Edges[J]);
      const bool AreNeighbours = J == I + 1 || (I == 0 && J == Count - 1);
      if (AreNeighbours ? Meeting.Stretch.has_value() : Meeting.Exists()) return true;
    }
  }
  return false;
}

TEST(TouchesItself, AgreesWithTryingEveryPairOfEdges) {
  std::mt19937 Random(21);
  int Simple = 0;
  for (int Round = 0; Round < 20000; ++Round) {
    std::vector<TPoint2D> Ring;
    for (int I = test::RandomInt(Random, 3, 8); I > 0; --I) {
      Ring.push_back(test::RandomGridPoint(Random, 0, 5));
    }
    const bool Expected = TouchesByEveryPair(Ring);
    ASSERT_EQ(Expected, TouchesItself(Ring)) << "round " << Round;
    Simple += Expected ? 0 : 1;
  }
  EXPECT_GT(Simple, 2000);
  EXPECT_TRUE(TouchesItself({{0, 0}, {1, 0}}));
}

}  // namespace
}  // namespace tarnalgo
