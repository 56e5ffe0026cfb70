#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "geometryAlgo/NestOptimizeAlgo.h"
#include "host/Cadtypes/Line.h"
#include "tests/NestOptimizeAlgo/Outlines.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using TPoints = std::vector<TPoint2D>;

const std::string kBadRange = "Bad Input: beginIndex must less than endIndex.";

/// The recursive step word by word, with a distance for every point.
void MarkFar(const TPoints& P, int F, int L, double Tolerance, std::vector<bool>& Keep) {
  double MaxD = 0.0;
  int Idx = F;
  for (int I = F + 1; I < L; ++I) {
    const TLine2D Chord(P[static_cast<std::size_t>(F)], P[static_cast<std::size_t>(L)]);
    const double D = Chord.DistanceDirect(P[static_cast<std::size_t>(I)]);
    if (D > MaxD && Chord.Length() > 0.0) {
      MaxD = D;
      Idx = I;
    }
  }
  if (!(MaxD > Tolerance)) return;
  Keep[static_cast<std::size_t>(Idx)] = true;
  MarkFar(P, F, Idx, Tolerance, Keep);
  MarkFar(P, Idx, L, Tolerance, Keep);
}

TEST(TPolyDecimator, KeepsWhatTheStepKeepsWordByWord) {
  std::mt19937 Random(81);
  for (int Round = 0; Round < 400; ++Round) {
    SCOPED_TRACE(Round);
    TPoints Points;
    const TPoint2D Far = test::RandomPoint(Random, -1e6, 1e6) * test::RandomInt(Random, 0, 1);
    TPoint2D At;
    for (int I = test::RandomInt(Random, 1, 150); I >= 0; --I) {
      // Small steps on a grid tie often; a smooth curve ties within a rounding.
      At = Round % 2 == 0 ? At + test::RandomGridPoint(Random, -1, 2)
                          : TPoint2D(10.0, 0.0).RotateBy(-0.01 * I);
      Points.push_back(At + Far);
    }
    const double Tolerance = std::pow(10.0, test::RandomDouble(Random, -5, 1));
    std::vector<bool> Keep(Points.size(), false);
    Keep.front() = Keep.back() = true;
    const int Last = static_cast<int>(Points.size()) - 1;
    MarkFar(Points, 0, Last, Tolerance, Keep);
    TPoints Expected;
    for (std::size_t I = 0; I < Points.size(); ++I) {
      if (Keep[I]) Expected.push_back(Points[I]);
    }
    EXPECT_EQ(Expected, TPolyDecimator(Points, Tolerance).DouglasPeucker(0, Last, false));
  }
}

TEST(TPolyDecimator, KeepsTheLeftOfChordsUnlessRestricted) {
  TPoints Square{{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}};
  TPoints Clockwise(Square.rbegin(), Square.rend());
  EXPECT_EQ((TPoints{{0, 0}, {0, 4}, {0, 0}}), TPolyDecimator(Square, 0.1).DouglasPeucker(false));
  EXPECT_EQ(Clockwise, TPolyDecimator(Clockwise, 0.1).DouglasPeucker(false));
  EXPECT_EQ(Square, TPolyDecimator(Square, 0.1).DouglasPeucker(true));
  TPoints Straight{{0, 0}, {1, 1}, {3, 3}};
  EXPECT_EQ(2U, TPolyDecimator(Straight, -1.0).DouglasPeucker(false).size());
  // All lie on the line of the chord, one far beyond its end; the ends are one point.
  TPoints Spike{{0, 0}, {9, 0}, {1, 0}};
  EXPECT_EQ(Spike, TPolyDecimator(Spike, 0.1).DouglasPeucker(true));
  TPoints Loop{{0, 0}, {9, 0}, {9, 9}, {0, 0}};
  EXPECT_EQ(Loop, TPolyDecimator(Loop, 0.1).DouglasPeucker(0, 3, true));
  EXPECT_EQ(2U, TPolyDecimator(Loop, 0.1).DouglasPeucker(0, 3, false).size());
}

TEST(TPolyDecimator, CutsLongRangesIntoBlocks) {
  // On a straight line only the ends of blocks are kept.
  TPoints Line;
  for (int I = 0; I <= 20000; ++I) Line.emplace_back(I, 0.0);
  const struct {
    int First;
    int Count;
    std::vector<double> Kept;
  } Cases[] = {{0, 2, {0, 1}},
               {0, 7499, {0, 7498}},
               {0, 7500, {0, 5000, 7499}},  // halves to the even number: two blocks
               {0, 7501, {0, 5000, 7500}},
               {0, 12500, {0, 5000, 12499}},  // two again
               {0, 12501, {0, 5000, 10000, 12500}},
               {7, 7501, {7, 5007, 7507}}};
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Count);
    TPolyDecimator Decimator(Line, 1.0);
    std::vector<double> Kept;
    for (const TPoint2D& P :
         Decimator.DouglasPeucker(Case.First, Case.First + Case.Count - 1, false)) {
      Kept.push_back(P.X);
    }
    EXPECT_EQ(Case.Kept, Kept);
    EXPECT_EQ(Case.First, Decimator.BaseIndex());
  }
}

TEST(TPolyDecimator, SingleStepsMarkEntriesFromTheBaseIndexOn) {
  TPoints Points{{9, 9}, {0, 0}, {1, 1}, {2, -1}, {3, 0}};
  TPolyDecimator Decimator(Points, 0.1);
  Decimator.DouglasPeucker(1, 4, false);
  bool Keep[4] = {};
  Decimator.DPDecimate(1, 4, Keep);
  EXPECT_THAT(Keep, testing::ElementsAre(false, true, false, false));
  Decimator.DPDecimateRestrict(1, 4, Keep);
  EXPECT_THAT(Keep, testing::ElementsAre(false, true, true, false));
  EXPECT_THROW(Decimator.DPDecimate(0, 3, Keep), EParamError);
  EXPECT_THROW(Decimator.DPDecimate(1, 4, std::span(Keep, 3)), EParamError);
}

TEST(TPolyDecimator, RefusesRangesAndReplacesNoTolerance) {
  TPoints Points{{0, 0}, {1, 0.009}, {2, 0}};
  TPoints Empty;
  TPoints One{{1, 1}};
  for (TPoints* const List : {&Empty, &One}) {
    TPolyDecimator Decimator(*List, 0.0);
    test::ExpectRaises([&] { Decimator.DouglasPeucker(false); }, kBadRange);
    EXPECT_EQ(0.01, Decimator.Tolerance());
    test::ExpectRaises([&] { Decimator.HybridDecimate(); }, kBadRange);
    EXPECT_EQ(*List, Decimator.PlateSimplify());
    EXPECT_EQ(*List, Decimator.CollinearSmooth());
    EXPECT_EQ(*List, Decimator.GetInscribedHull());
  }
  TPolyDecimator Decimator(Points, 1e-12);
  EXPECT_EQ(2U, Decimator.DouglasPeucker(true).size());
  test::ExpectRaises([&] { Decimator.ClipTriangles(2, 1); }, kBadRange);
  test::ExpectRaises([&] { Decimator.ClipConcaveTriangles(1, 0); }, kBadRange);
  EXPECT_THROW(Decimator.ClipTriangles(0, 3), EParamError);
  EXPECT_THROW(Decimator.DouglasPeucker(-1, 2, true), EParamError);
  TPoints Pair{{1, 1}, {1, 1}};
  EXPECT_EQ(Pair, TPolyDecimator(Pair, 1.0).DouglasPeucker(false));
}

TEST(TPolyDecimator, RadialCleanUpComparesWithTheCurrentPredecessor) {
  const struct {
    TPoints Before;
    TPoints After;
  } Cases[] = {{{{0, 0}, {0.0003, 0.0003}, {1, 1}}, {{0, 0}, {1, 1}}},
               {{{0, 0}, {0.0003, 0.00035}, {1, 1}}, {{0, 0}, {0.0003, 0.00035}, {1, 1}}},
               {{{0, 0}, {0.0003, 0}, {0.0006, 0}, {0.0009, 0}}, {{0, 0}}},
               {{{0, 0}, {1, 0}, {0, 1}, {0.0002, -0.0002}}, {{0, 0}, {1, 0}, {0, 1}}},
               {{{5, 5}}, {{5, 5}}}};
  for (const auto& Case : Cases) {
    TPoints Points = Case.Before;
    TPolyDecimator(Points, 1.0).SimplifyRadialDistance();
    EXPECT_EQ(Case.After, Points);
  }
}

TEST(TPolyDecimator, SmoothingDropsStraightRunsAndNeverDriftsAway) {
  TPoints Ring{{1, 0}, {2, 0}, {2, 1}, {2, 2}, {0, 2}, {0, 0}, {1, 0}};
  EXPECT_EQ((TPoints{{2, 0}, {2, 2}, {0, 2}, {0, 0}, {2, 0}}),
            TPolyDecimator(Ring, 0.0).CollinearSmooth());
  TPoints Flat{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {0, 0}};
  EXPECT_EQ(4U, TPolyDecimator(Flat, 0.0).CollinearSmooth().size());
  TPoints Back{{0, 0}, {5, 0}, {3, 0}};  // not between its neighbours
  EXPECT_EQ(Back, TPolyDecimator(Back, 0.0).CollinearSmooth());
  TPoints Tent{{0, 0}, {1, 0.5}, {2, 0}};  // at the tolerance
  EXPECT_EQ(2U, TPolyDecimator(Tent, 0.0).CollinearSmooth(0.5).size());
  const double Infinity = std::numeric_limits<double>::infinity();
  for (const TPoint2D& Next : {TPoint2D(Infinity, 0.0), TPoint2D(1e200, 0.0)}) {
    TPoints Beyond{{0, 0}, {2e200, Next.X == Infinity ? 7.0 : 0.0}, Next};  // squares overflow
    EXPECT_EQ(Beyond, TPolyDecimator(Beyond, 0.0).CollinearSmooth());
  }
  // What was dropped leaves a wedge of directions; mirrored, its other side.
  const std::pair<TPoints, std::size_t> Runs[] = {
      {{{0, 0}, {5, 0}, {5, 0}}, 2},  // a repeat
      {{{0, 0}, {1, 0}, {1.5, -0.0014}, {2, -0.0019}}, 2},
      {{{0, 0}, {1, 0}, {1.5, -0.0014}, {2, -0.0021}}, 3},  // too far from (1, 0)
      {{{0, 0}, {1, 0}, {1.5, -0.0006}, {2, -0.0018}, {3, -0.00312}}, 3}};
  for (const auto& [Run, Left] : Runs) {
    for (const double Sign : {1.0, -1.0}) {
      TPoints Points = Run;
      for (TPoint2D& P : Points) P.Y *= Sign;
      EXPECT_EQ(Left, TPolyDecimator(Points, 0.0).CollinearSmooth(0.001).size());
    }
  }
  // The first vertex is near the new edge, the one dropped behind it is not.
  TPoints Kite{{0, 0.09}, {1, 0.18}, {10, 0}, {0, -10}, {-10, 0}, {0, 0.09}};
  EXPECT_EQ((TPoints{{0, 0.09}, {10, 0}, {0, -10}, {-10, 0}, {0, 0.09}}),
            TPolyDecimator(Kite, 0.0).CollinearSmooth(0.1));
  // Every vertex of a dense arc is near the line through its neighbours.
  TPoints Arc = test::Circle(10000, 1000.0, 0.5);
  const TPoints Smooth = TPolyDecimator(Arc, 0.0).CollinearSmooth(0.001);
  EXPECT_LT(Smooth.size(), 1500U);
  EXPECT_LE(test::FarthestFrom(Smooth, Arc), 0.001 + 1e-9);
}

TEST(TPolyDecimator, DroppedPointsStayNearHoweverManySmallStepsAddUp) {
  std::mt19937 Random(82);
  for (int Round = 0; Round < 150; ++Round) {
    SCOPED_TRACE(Round);
    TPoints Points = test::NoisyOutline(Random, test::RandomInt(Random, 3, 150));
    if (Round % 3 == 0) Points.pop_back();
    const double Tolerance = test::RandomDouble(Random, 0.001, 3.0);
    TPolyDecimator Decimator(Points, Tolerance);
    const int Last = static_cast<int>(Points.size()) - 1;
    const std::vector<int> Fixed{Last / 2, -1, Last / 3, Last / 3, Last + 5};
    const TPoints WithFixed = Decimator.DecimateWithRestrictions(Fixed);
    for (const TPoints& Result :
         {Decimator.DouglasPeucker(true), WithFixed, Decimator.HybridDecimate(),
          Decimator.ClipTriangles(0, Last), Decimator.ClipConcaveTriangles(0, Last),
          Decimator.PlateSimplify(), Decimator.GetInscribedHull()}) {
      EXPECT_LE(test::FarthestFrom(Result, Points), Tolerance + 1e-9);
      EXPECT_EQ(Points.front() == Points.back(), Result.front() == Result.back());
    }
    EXPECT_EQ(Decimator.DouglasPeucker(true), Decimator.DecimateWithRestrictions({}));
    for (const int I : {Last / 2, Last / 3}) {
      EXPECT_THAT(WithFixed, testing::Contains(Points[static_cast<std::size_t>(I)]));
    }
  }
}

TEST(TPolyDecimator, ClippingStopsAtTheToleranceWhateverTheWay) {
  // A saw: every tooth is flat enough, and so is each run of teeth, but not all of them together.
  TPoints Saw;
  for (int I = 0; I <= 8000; ++I) Saw.emplace_back(I, (I % 2) * 0.6 + 1e-7 * I * I);
  TPolyDecimator Decimator(Saw, 1.0);
  const TPoints Result = Decimator.ClipTriangles(0, 8000);
  EXPECT_LT(Result.size(), 40U);
  EXPECT_LE(test::FarthestFrom(Result, Saw), 1.0 + 1e-9);
}

TEST(TPolyDecimator, OuterAndInnerOutlinesKeepTheirSide) {
  std::mt19937 Random(83);
  for (int Round = 0; Round < 200; ++Round) {
    SCOPED_TRACE(Round);
    TPoints Points = test::NoisyOutline(Random, test::RandomInt(Random, 3, 60));
    if (!test::IsSimple(Points)) continue;
    TPolyDecimator Decimator(Points, test::RandomDouble(Random, 0.01, 4.0));
    const int Last = static_cast<int>(Points.size()) - 1;
    for (const TPoints& Outer :
         {Decimator.ClipConcaveTriangles(0, Last), Decimator.PlateSimplify()}) {
      EXPECT_TRUE(test::IsSimple(Outer));
      EXPECT_TRUE(test::Holds(Outer, Points));
    }
    const TPoints Inner = Decimator.GetInscribedHull();
    EXPECT_TRUE(test::IsSimple(Inner));
    EXPECT_TRUE(test::Holds(Points, Inner));
    EXPECT_GE(Inner.size(), 4U);
  }
}

TEST(TPolyDecimator, RepeatsAreNoCornersOfAnInscribedHull) {
  TPoints Square{{0, 0}, {0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}, {0, 0}};
  TPoints Inner = TPolyDecimator(Square, 100.0).GetInscribedHull();
  Inner.erase(std::unique(Inner.begin(), Inner.end()), Inner.end());
  EXPECT_EQ(4U, Inner.size());
}

TEST(TPolyDecimator, AVertexOnTheNewEdgeKeepsADentOpen) {
  TPoints Dent{{0, 0}, {2, 5}, {4, 0}, {9, 9}, {-9, 9}, {0, 0}};
  TPolyDecimator Decimator(Dent, 5.0);
  EXPECT_EQ(5U, Decimator.ClipConcaveTriangles(0, 5).size());
  // The same with a corner of another part of the outline on the edge that would close it.
  Dent.insert(Dent.end() - 1, {{-9, -9}, {2, 0}, {-9, -5}});
  EXPECT_THAT(Decimator.ClipConcaveTriangles(0, 8), testing::Contains(TPoint2D(2, 5)));
  EXPECT_TRUE(Decimator.IsSmallConcaveTriangle({0, 0}, {2, 5}, {4, 0}));
  EXPECT_FALSE(Decimator.IsSmallConcaveTriangle({0, 0}, {2, 5.1}, {4, 0}));
  EXPECT_FALSE(Decimator.IsSmallConcaveTriangle({4, 0}, {2, 5}, {0, 0}));
  EXPECT_FALSE(Decimator.IsSmallConcaveTriangle({0, 0}, {9, 1}, {2, 0}));  // far beyond the base
}

TEST(TPolyDecimator, ListsWithPlacesBeyondTheRangeComeBackAsTheyAre) {
  const TPoints Lists[] = {{{0, 0}, {1, 1e-3}, {2e100, 0}}, {{0, 0}, {1e-3, 1}, {0, 2e100}}};
  for (TPoints Points : Lists) {
    EXPECT_EQ(Points, TPolyDecimator(Points, 0.1).ClipTriangles(0, 2));
    Points.back() = Points.back() / 4.0;
    EXPECT_EQ(2U, TPolyDecimator(Points, 0.1).ClipTriangles(0, 2).size());
  }
}

TEST(TPolyDecimator, HostileListsEnd) {
  const double Infinity = std::numeric_limits<double>::infinity();
  const double NaN = std::nan("");
  std::vector<TPoints> Lists{TPoints(200000, {3, 3}), TPoints(50, {NaN, NaN})};
  for (const double Odd : {NaN, Infinity, 1e300, -1.7e308, 1e-310}) {
    TPoints Mixed;
    for (int I = 0; I < 60; ++I)
      Mixed.emplace_back(I % 7 == 3 ? Odd : I % 5, I % 11 == 5 ? Odd : I);
    Lists.push_back(Mixed);
    Mixed.push_back(Mixed.front());
    Lists.push_back(Mixed);
  }
  for (TPoints& Points : Lists) {
    const int Last = static_cast<int>(Points.size()) - 1;
    for (const double Tolerance : {0.1, -1.0, 0.0, NaN, Infinity, 1e300}) {
      TPolyDecimator Decimator(Points, Tolerance);
      for (const TPoints& Result :
           {Decimator.DouglasPeucker(false), Decimator.DouglasPeucker(true),
            Decimator.HybridDecimate(), Decimator.ClipTriangles(0, Last),
            Decimator.ClipConcaveTriangles(0, Last), Decimator.GetInscribedHull(),
            Decimator.PlateSimplify(), Decimator.CollinearSmooth(Tolerance)}) {
        EXPECT_GE(Result.size(), 2U);
        EXPECT_LE(Result.size(), Points.size());
      }
    }
    TPolyDecimator(Points, 1.0).SimplifyRadialDistance();
    EXPECT_GE(Points.size(), 1U);
  }
}

}  // namespace
}  // namespace tarnalgo
