#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <vector>

#include "geometryAlgo/ShapeApp.h"
#include "tests/support/Generate.h"
#include "tests/support/GridGeometry.h"

namespace tarnalgo {
namespace {

using TPoints = std::vector<TPoint2D>;
using TIds = std::vector<int>;

double Cross(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  return (B.X - A.X) * (C.Y - A.Y) - (C.X - A.X) * (B.Y - A.Y);
}

/// The hull of points by the plain steps: everything sorted, nothing left out beforehand.
TPoints HullOfAllSorted(TPoints Points) {
  std::stable_sort(Points.begin(), Points.end(), [](const TPoint2D& A, const TPoint2D& B) {
    return A.X < B.X || (A.X == B.X && A.Y < B.Y);
  });
  TPoints Kept;
  for (const TPoint2D& P : Points) {
    if (Kept.empty() || !P.Equals(Kept.back())) Kept.push_back(P);
  }
  if (Kept.size() < 3) return Kept;
  if (Cross(Kept[0], Kept[1], Kept[2]) == 0.0) Kept[1] = Kept[1] + TPoint2D(1.1e-05, -1e-05);
  std::deque<std::size_t> D{2, 1, 0, 2};
  if (Cross(Kept[0], Kept[1], Kept[2]) > 0.0) D = {2, 0, 1, 2};
  for (std::size_t I = 3; I < Kept.size(); ++I) {
    const auto Turn = [&](std::size_t A, std::size_t B) {
      return Cross(Kept[A], Kept[B], Kept[I]);
    };
    if (Turn(D[0], D[1]) > 0.0 && Turn(D[D.size() - 2], D.back()) > 0.0) continue;
    while (Turn(D[0], D[1]) <= 0.0 && D[0] != 0) D.pop_front();
    D.push_front(I);
    while (Turn(D[D.size() - 2], D.back()) <= 0.0) {
      if ((D[D.size() - 2] == 0 && D.size() == 3) || D.back() == 0) break;
      D.pop_back();
    }
    D.push_back(I);
  }
  TPoints Hull;
  for (std::size_t I = 1; I < D.size(); ++I) Hull.push_back(Kept[D[I]]);
  Hull.push_back(Hull.front());
  return Hull;
}

TEST(TConvexHullCalculator, SmallAndDegeneratePolylines) {
  const auto Hull = [](TVPolyline2D P) {
    return TConvexHullCalculator::CalcSimplePolylineConvexHull(P);
  };
  EXPECT_EQ(TIds{}, Hull({}));
  EXPECT_EQ(TIds{0}, Hull({{1, 1}}));
  EXPECT_EQ((TIds{0, 1}), Hull({{1, 1}, {1, 1}}));
  EXPECT_EQ((TIds{0, 1}), Hull({{0, 0}, {1, 1}, {0, 0}}));
  EXPECT_EQ((TIds{0, 1, 2, 3, 0}), Hull({{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}}));
  EXPECT_EQ((TIds{1, 0, 2, 1}), Hull({{0, 0}, {0, 1}, {1, 0}}));  // clockwise
  // Closed within 1e-6 only: the last point counts as a vertex of its own.
  EXPECT_EQ((TIds{0, 1, 2, 3, 0}), Hull({{0, 0}, {1, 0}, {1, 1}, {0, 1e-7}}));
}

TEST(TConvexHullCalculator, MovesTheSecondOfThreeCollinearLeadingPoints) {
  TVPolyline2D Ring{{0, 0}, {1, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}};
  EXPECT_EQ((TIds{0, 1, 2, 3, 4, 0}), TConvexHullCalculator::CalcSimplePolylineConvexHull(Ring));
  EXPECT_EQ((TPoints{{0, 0}, {1 + 1.1e-5, -1e-5}, {2, 0}, {2, 2}, {0, 2}, {0, 0}}), Ring.Points());
  // Points on a line: a thin triangle, and the caller's points stay.
  const TVPolyline2D Line{{0, 0}, {1, 1}, {2, 2}, {3, 3}};
  EXPECT_EQ((TPoints{{0, 0}, {1 + 1.1e-5, 1 - 1e-5}, {3, 3}, {0, 0}}),
            TConvexHullCalculator::CalcConvexHull(Line).Points());
  EXPECT_EQ((TPoints{{0, 0}, {1.1e-5, 1 - 1e-5}, {0, 3}, {0, 0}}),  // all at one X
            TConvexHullCalculator::CalcConvexHull(TVPoint2DList{{0, 0}, {0, 1}, {0, 2}, {0, 3}})
                .Points());
  EXPECT_EQ((TPoints{{0, 0}, {1, 1}, {2, 2}, {3, 3}}), Line.Points());
}

TEST(TConvexHullCalculator, DropsRepeatsOfTheLastKeptPointOnly) {
  EXPECT_EQ(3 + 1, TConvexHullCalculator::CalcConvexHull(
                       TVPoint2DList{{0, 0}, {4, 0}, {4, 5e-7}, {2e-7, 3e-7}, {0, 4}})
                       .Count());
  EXPECT_EQ((TPoints{{1, 1}}),
            TConvexHullCalculator::CalcConvexHull(TVPoint2DList{{1, 1}, {1, 1}, {1, 1}}).Points());
  EXPECT_EQ((TPoints{{0, 0}, {1, 1}}),
            TConvexHullCalculator::CalcConvexHull(TVPoint2DList{{1, 1}, {0, 0}}).Points());
  EXPECT_EQ(4, TConvexHullCalculator::CalcConvexHull(
                   TVPoint2DList{{0, 0}, {4, NAN}, {4, 0}, {INFINITY, 5}, {0, 4}})
                   .Count());
}

TEST(TConvexHullCalculator, KeepsEveryCornerWhereTheMovedPointWouldBarTheWay) {
  // The second point of the left side, moved, stood across the way from (0, 15) to (12, 0), which
  // then got lost.
  for (const double Gap : {0.0, 2e-6, 9e-6}) {
    SCOPED_TRACE(Gap);
    const TVPoint2DList Points{{0, 15}, {12, 8}, {0, 15 - Gap}, {12, 0}, {0, 0}};
    const TIds Ids = TConvexHullCalculator::CalcConvexHullPtIds(Points);
    EXPECT_EQ(4U + 1, Ids.size());
    for (const int Corner : {1, 3, 4})
      EXPECT_NE(Ids.end(), std::find(Ids.begin(), Ids.end(), Corner));
    EXPECT_EQ(4 + 1, TConvexHullCalculator::CalcConvexHull(Points).Count());
  }
  // Here its other edge stands across the way from the fourth point to the fifth.
  EXPECT_EQ(3 + 1, TConvexHullCalculator::CalcConvexHull(
                       TVPoint2DList{{0, 0}, {0, 5}, {0, 10}, {1e-6, 7}, {10, 7.5}})
                       .Count());
}

/// Sets on which a filter could go wrong.
TPoints HostileSet(std::mt19937& Random, int Kind, int Count) {
  TPoints Points;
  const TPoint2D Far{1e7, -1e7};
  for (int I = 0; I < Count; ++I) {
    const TPoint2D P = test::RandomPoint(Random, -1.0, 1.0);
    const TPoint2D OnRim = TPoint2D(1.0, 0.0).RotateBy(test::RandomDouble(Random, 0, kFullTurn));
    const double Deep = std::pow(10.0, test::RandomDouble(Random, -9, -4));
    switch (Kind) {
      case 0:
        Points.push_back(P);
        break;
      case 1:
        Points.push_back(OnRim * (1.0 - Deep));
        break;
      case 2:
        Points.push_back(P.RoundTo(2));
        break;
      case 3:
        Points.push_back(P * 1e-5);
        break;  // the whole set is a few repeats wide
      case 4:
        Points.push_back(P * 1000.0 + Far);
        break;
      case 5:
        Points.push_back({P.X, std::abs(P.X) - 1.0 + Deep});
        break;  // along two edges
      case 6:
        Points.push_back({I * 6e-7, I * (I % 3 == 1 ? 1e-7 : -1e-7)});
        break;  // one chain
      case 7:
        Points.push_back({std::round(P.X * 3) * 1000 + P.Y * 2e-6, OnRim.Y * 3000});
        break;
      case 8:
        Points.push_back(I < 2 ? TPoint2D(2.0 + I * 5e-7, 0.0) : P);
        break;  // a repeat on the rim
      case 9:
        Points.push_back(I < 200 ? TPoint2D(-2.0, 0.0) : P);
        break;  // many repeats on the left
      case 10:
        Points.push_back(P * 1e200);
        break;  // products overflow
      default:
        Points.push_back({P.X, P.Y * 1e-7});
        break;
    }
  }
  return Points;
}

TEST(TConvexHullCalculator, LeavingOutDeepPointsChangesNothing) {
  std::mt19937 Random(52);
  for (int Kind = 0; Kind < 12; ++Kind) {
    for (const int Count : {3, 40, 1500, 20000}) {
      SCOPED_TRACE(testing::Message() << "kind " << Kind << ", " << Count << " points");
      const TPoints Points = HostileSet(Random, Kind, Count);
      TVPoint2DList List(Points);
      EXPECT_EQ(HullOfAllSorted(Points), TConvexHullCalculator::CalcConvexHull(List).Points());
      for (int I = 0; I < List.Count(); I += 16) List.Insert(I, {I % 32 ? NAN : -1e90, NAN});
      EXPECT_EQ(HullOfAllSorted(Points), TConvexHullCalculator::CalcConvexHull(List).Points());
    }
  }
}

TEST(TConvexHullCalculator, HoldsEveryGridPointInIntegers) {
  std::mt19937 Random(53);
  for (int Round = 0; Round < 500; ++Round) {
    TVPoint2DList Points;
    for (int I = test::RandomInt(Random, 4, 40); I > 0; --I) {
      const TPoint2D P = test::RandomGridPoint(Random, -6, 6);
      if (Points.IndexOfByXY(P.X, P.Y) < 0) Points.Add(P);
    }
    const TIds Ids = TConvexHullCalculator::CalcConvexHullPtIds(Points);
    if (Ids.size() < 4) continue;
    ASSERT_EQ(Ids.front(), Ids.back());
    std::int64_t MovedStarts = 0;
    for (std::size_t I = 0; I + 1 < Ids.size(); ++I) {
      const test::TGridPoint A(Points[Ids[I]]);
      const test::TGridPoint B(Points[Ids[I + 1]]);
      const test::TGridPoint C(Points[Ids[I + 2 < Ids.size() ? I + 2 : 1]]);
      MovedStarts += test::Turn(A, B, C) <= 0;
      for (const TPoint2D& P : Points) ASSERT_GE(test::Turn(A, B, test::TGridPoint(P)), 0);
    }
    EXPECT_LE(MovedStarts, 1);  // only a moved point may stand where there is no turn
  }
}

}  // namespace
}  // namespace tarnalgo
