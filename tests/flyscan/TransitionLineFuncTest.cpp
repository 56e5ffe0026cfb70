#include "geometryAlgo/flyscanAlgo/TransitionLineFunc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "tests/support/AllocationCount.h"
#include "tests/support/Driving.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using test::ArcWay;
using test::DirectionAt;
using test::ShortestByDriving;
using test::TPoses;

TPoses RandomPoses(std::mt19937& Random) {
  const TPoint2D StartPt = test::RandomPoint(Random, -10, 10);
  const double Reach = std::pow(10.0, test::RandomDouble(Random, -1.0, 1.3));
  const auto Direction = [&] { return DcsX.RotateBy(test::RandomDouble(Random, 0, kFullTurn)); };
  return {StartPt, Direction(), StartPt + Direction() * Reach, Direction()};
}

TObjectList<TGeCompositeCurve2D> AllOf(TTransitionLineFunc& Func, const TPoses& P, double Radius) {
  return Func.CalcAllTransitionLines(P.StartPt, P.StartVec, P.EndPt, P.EndVec, Radius);
}

void ExpectSmooth(const TGeCompositeCurve2D& Line, const TPoses& P, double Radius) {
  TPoint2D Place = P.StartPt;
  TPoint2D Way = P.StartVec;
  for (int I = 0; I < Line.GetCurveCount(); ++I) {
    const TGeCurve2D& Piece = *Line.GetCurve(I);
    EXPECT_LT(Piece.StartPoint().DistanceTo(Place), 1e-9);
    Place = Piece.EndPoint();
    if (DirectionAt(Piece, false) == TPoint2D()) continue;
    EXPECT_LT(DirectionAt(Piece, false).DistanceTo(Way), 1e-9) << "piece " << I;
    Way = DirectionAt(Piece, true);
    if (const auto* const Arc = dynamic_cast<const TGeCircularArc2D*>(&Piece)) {
      EXPECT_NEAR(Radius, Arc->GetRadius(), 1e-8 * Radius);
    }
  }
  EXPECT_LT(Place.DistanceTo(P.EndPt), 1e-9);
  EXPECT_LT(Way.DistanceTo(P.EndVec), 1e-9);
}

TEST(TTransitionLineFunc, CandidatesAreSmoothSortedAndNoneBeatsDriving) {
  std::mt19937 Random(20240701);
  TTransitionLineFunc Func;
  for (int Round = 0; Round < 400; ++Round) {
    SCOPED_TRACE(Round);
    const TPoses P = RandomPoses(Random);
    const double Radius = test::RandomDouble(Random, 0.5, 2.0);
    Func.SetMaxAng(Round % 2 == 0 ? 4.71238898038469 : 2 * kFullTurn);
    const auto Lines = AllOf(Func, P, Radius);
    const double Oracle = ShortestByDriving(P, Radius, Func.MaxAng());
    const double Shortest =
        Func.CalcShortestLength(P.StartPt, P.StartVec, P.EndPt, P.EndVec, Radius);
    ASSERT_EQ(Oracle == kStartOfMinimum, Lines.IsEmpty());
    if (Lines.IsEmpty()) continue;
    EXPECT_NEAR(Oracle, Shortest, 1e-8);
    EXPECT_NEAR(Shortest, Lines[0]->CurveLength(), 1e-8);
    for (int I = 0; I < Lines.Count(); ++I) {
      ExpectSmooth(*Lines[I], P, Radius);
      EXPECT_LE(Lines[std::max(I - 1, 0)]->CurveLength(), Lines[I]->CurveLength());
    }
  }
}

// The chords of such arcs say nothing: they are shorter than 1e-6, or lost to rounding.
TEST(TTransitionLineFunc, SmallArcsAndNearlyFullTurnsStaySmooth) {
  TTransitionLineFunc Func;
  Func.SetMaxAng(2 * kFullTurn);
  for (const double Turn : {1e-5, 1e-3, kFullTurn - 1e-5, kFullTurn - 1e-3}) {
    for (const double Radius : {1e-7, 0.01, 1.0}) {
      for (const TPoint2D& StartPt : {TPoint2D(), TPoint2D(100, 300)}) {
        SCOPED_TRACE(testing::Message() << Turn << " " << Radius);
        const TPoint2D EndVec = DcsX.RotateBy(Turn);
        const TPoint2D EndPt = StartPt + ArcWay(0, Turn, 1) * Radius + EndVec * 2.0;
        const TPoses P = {StartPt, DcsX, EndPt, EndVec};
        AllOf(Func, P, Radius);
        const auto Line = Func.InternalCalc(StartPt + DcsX.RotateCcw90() * Radius, false,
                                            EndPt + EndVec.RotateCcw90() * Radius, false);
        ASSERT_NE(nullptr, Line);
        EXPECT_NEAR(2.0 + Radius * Turn, Line->CurveLength(), 1e-9);
        ExpectSmooth(*Line, P, Radius);
      }
    }
  }
}

// Legs that are a hair too short: an arc bent to their ends would turn by 1e-4 where it begins.
TEST(TTransitionLineFunc, AFilletOnAHairTooLittleRoomStaysSmooth) {
  TTransitionLineFunc Func;
  Func.SetMaxAng(1.6);
  for (const TPoint2D& EndPt : {TPoint2D(0.01 - 9e-7, 1), TPoint2D(1, 0.01 - 9e-7)}) {
    const TPoses P = {{0, 0}, DcsX, EndPt, {0, 1}};
    AllOf(Func, P, 0.01);
    const auto Line = Func.InternalCalc();
    ASSERT_NE(nullptr, Line);
    ExpectSmooth(*Line, P, 0.01);
  }
}

TEST(TTransitionLineFunc, CountsOfCandidatesFollowTheirRules) {
  const double kRight = kQuarterTurn;
  const struct {
    const char* Name;
    TPoint2D EndPt;
    double EndAngle;
    double Radius;
    double SamePtAng;
    double MaxAng;
    int Expected;
  } Cases[] = {
      {"a right angle: two left turns, and a fillet", {10, 10}, kRight, 1, 0, 4.7, 2},
      {"a fillet that nearly fills its legs", {10, 10}, kRight, 9.99, 0, 1.6, 2},
      {"no room for the fillet", {10, 10}, kRight, 10 + 1e-5, 0, 1.6, 0},
      {"more than a quarter turn has no fillet", {10, 10}, kRight + 1e-3, 1, 0, 1.6, 1},
      {"the largest turn limits the fillet too", {10, 10}, kRight, 1, 0, 1.5, 0},
      {"straight on: no fillet, nothing to turn", {10, 0}, 0, 1, 0, 4.7, 4},
      {"in place, no change allowed for", {0, 0}, 0, 1, 0, 4.7, 4},
      {"in place within the angle", {0, 0}, 0.1, 1, 0.2, 4.7, 0},
      {"in place below a full turn", {0, 0}, -0.1, 1, 0.2, 4.7, 0},
      {"nearly in place", {1e-5, 0}, 0, 1, 0.2, 4.7, 4},
      {"no radius", {10, 0}, 0, 0, 0, 4.7, 0},
      {"a negative radius", {10, 0}, 0, -1, 0, 4.7, 0},
      {"as far out as is looked for", {std::nextafter(1e150, 0), 0}, 0, 1, 0, 4.7, 4},
      {"at the limit", {1e150, 0}, 0, 1, 0, 4.7, 0},
      {"at the limit upwards", {0, 1e150}, 0, 1, 0, 4.7, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TTransitionLineFunc Func;
    Func.SetSamePtAng(Case.SamePtAng);
    Func.SetMaxAng(Case.MaxAng);
    const TPoses P = {{0, 0}, DcsX, Case.EndPt, DcsX.RotateBy(Case.EndAngle)};
    EXPECT_EQ(Case.Expected, AllOf(Func, P, Case.Radius).Count());
  }
}

// Mirror images of each other; the pairs of circles come in the order of a selection sort.
TEST(TTransitionLineFunc, OfTwoEquallyLongTheOneThatStartsToTheLeftComesFirst) {
  TTransitionLineFunc Func;
  Func.SetMaxAng(2 * kFullTurn);
  const auto Lines = AllOf(Func, {{0, 0}, DcsX, {-10, 0}, DcsX}, 1.0);
  ASSERT_LE(2, Lines.Count());
  EXPECT_EQ(Lines[0]->CurveLength(), Lines[1]->CurveLength());
  EXPECT_LT(0.0, Lines[0]->GetCurve(0)->EndPoint().Y);
}

TEST(TTransitionLineFunc, TheRadiusShrinksUntilThereIsATransition) {
  const struct {
    double MaxAng;
    double MinRadius;
    double Radius;
    double Expected;
    bool Found;
  } Cases[] = {
      {-1.0, 1.0, 2.0, 0.8192, false},  // nothing turns so little: 2, 1.6, 1.28, 1.024 are tried
      {-1.0, 0.0, 2.0, 2.0, false},     // a single try
      {4.7, 2.0, 2.0, 2.0, false},      // not larger than the least
      {4.7, 1.0, 2.0, 2.0, true},
      {4.7, 1.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
       false},
  };
  for (const auto& Case : Cases) {
    TTransitionLineFunc Func;
    Func.SetMaxAng(Case.MaxAng);
    Func.SetMinRadius(Case.MinRadius);
    double Radius = Case.Radius;
    const auto Line = Func.CalcTransitionLine({0, 0}, DcsX, {9, 9}, {0, 1}, Radius);
    EXPECT_EQ(Case.Found, Line != nullptr);
    EXPECT_DOUBLE_EQ(Case.Expected, Radius);
  }
}

TEST(TTransitionLineFunc, TakesMemoryForTheCurveItReturnsAlone) {
  TTransitionLineFunc Func;
  double Radius = 1.0;
  int Before = test::AllocationCount();
  const auto Line = Func.CalcTransitionLine({0, 0}, DcsX, {9, 9}, {0, 1}, Radius);
  EXPECT_EQ(5, test::AllocationCount() - Before);  // the composite, its list, three pieces
  ASSERT_EQ(3, Line->GetCurveCount());
  Func.SetMaxAng(-1.0);
  Func.SetMinRadius(0.01);
  Before = test::AllocationCount();
  EXPECT_EQ(nullptr, Func.CalcTransitionLine({0, 0}, DcsX, {9, 9}, {0, 1}, Radius));
  EXPECT_EQ(0, test::AllocationCount() - Before);
}

TEST(TTransitionLineFunc, AnyNumbersTerminate) {
  const double Odd[] = {
      std::nan(""), std::numeric_limits<double>::infinity(), 1e300, 5e-324, 1e140, 0.0, 1.0};
  TTransitionLineFunc Func;
  EXPECT_EQ(nullptr, Func.InternalCalc());
  EXPECT_EQ(nullptr, Func.InternalCalc({0, 0}, false, {9, 0}, true));
  for (const double A : Odd) {
    for (const double B : Odd) {
      for (const double R : Odd) {
        Func.SetMinRadius(B);
        double Radius = R;
        Func.CalcTransitionLine({A, B}, {1, 0}, {B, 1}, {A, B}, Radius);
        Func.InternalCalc({R, B}, false, {A, 0}, true);
        const auto Lines = Func.CalcAllTransitionLines({A, 0}, {B, A}, {B, 5}, {0, -1}, R);
        EXPECT_TRUE(Lines.IsEmpty() || std::isfinite(A + B + R));
      }
    }
  }
}

}  // namespace
}  // namespace tarnalgo
