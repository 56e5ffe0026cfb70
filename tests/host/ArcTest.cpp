#include "host/Cadtypes/Arc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "host/Cadtypes/ArcOverlap.h"
#include "host/Cadutils.h"
#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::nan("");

TArc2D RandomArc(std::mt19937& Random) {
  const double Sweep =
      test::RandomDouble(Random, 0.01, 6.2) * (test::RandomInt(Random, 0, 1) * 2 - 1);
  return {test::RandomPoint(Random, -10, 10), test::RandomDouble(Random, 0.5, 20),
          test::RandomDouble(Random, -20, 20), Sweep};
}

TArc2D Reversed(const TArc2D& Arc) {
  return {Arc.Center, Arc.Radius, Arc.StartAngle + Arc.SweepAngle, -Arc.SweepAngle};
}

TEST(TArc2D, EveryWayOfMakingItGivesTheSameArc) {
  std::mt19937 Random(13);
  for (int Round = 0; Round < 2000; ++Round) {
    const TArc2D Arc = RandomArc(Random);
    const TPoint2D Start = Arc.StartPoint();
    const TPoint2D End = Arc.EndPoint();
    const bool IsClockwise = Arc.SweepAngle < 0.0;
    const double Allowed = 1e-11 * Arc.Radius / std::min(1.0, Start.DistanceTo(End));
    SCOPED_TRACE(testing::Message() << "round " << Round << ", sweep " << Arc.SweepAngle);

    const TArc2D ByBulge = TArc2D::CreateBulge(Start, End, Arc.Bulge());
    const TArc2D ByCenter = TArc2D::CreateCenter(Start, End, Arc.Center, IsClockwise);
    for (const TArc2D& Other : {ByBulge, ByCenter}) {
      EXPECT_NEAR(Arc.SweepAngle, Other.SweepAngle, 1e-11);
      EXPECT_TRUE(Other.Center.Equals(Arc.Center, 100 * Allowed));
      for (const double T : {0.0, 0.3, 0.5, 1.0}) {
        EXPECT_TRUE(Other.PointAtParam(T).Equals(Arc.PointAtParam(T), 100 * Allowed));
      }
    }
    if (std::abs(Arc.SweepAngle) > 3.0) continue;  // the radius form makes the shorter arc
    const TArc2D ByRadius = TArc2D::CreateRadius(Start, End, Arc.Radius, !IsClockwise);
    EXPECT_NEAR(Arc.SweepAngle, ByRadius.SweepAngle, 1e-9);
    EXPECT_TRUE(ByRadius.Center.Equals(Arc.Center, 1e-8));
  }
}

TEST(TArcOverlap, AFullCircleCoversTheOtherArcFromEndToEnd) {
  EXPECT_TRUE(TArcOverlap::IsFull(kInf, kFullTurn));
  const TArcOverlap Overlap(2.0, 1.5, 4.0, kFullTurn);
  ASSERT_EQ(1u, Overlap.Parts().size());
  EXPECT_EQ(0.0, Overlap.Parts()[0].Low);
  EXPECT_EQ(1.5, Overlap.Parts()[0].High);
}

TEST(TArc2D, SenseFollowsTheSignOfTheBulge) {
  const TArc2D Ccw = TArc2D::CreateBulge({1, 0}, {-1, 0}, 1.0);
  EXPECT_DOUBLE_EQ(kPi, Ccw.GetSweepAngle());
  EXPECT_TRUE(Ccw.PointAtParam(0.5).Equals({0, 1}, 1e-15));
  const TArc2D Cw = TArc2D::CreateBulge({1, 0}, {-1, 0}, -1.0);
  EXPECT_DOUBLE_EQ(-kPi, Cw.GetSweepAngle());
  EXPECT_TRUE(Cw.PointAtParam(0.5).Equals({0, -1}, 1e-15));
  EXPECT_EQ(kFullTurn, TArc2D::CreateCenter({1, 0}, {1, 5e-7}, {0, 0}, false).GetSweepAngle());
  EXPECT_EQ(-kFullTurn, TArc2D::CreateCenter({1, 0}, {1, 0}, {0, 0}, true).GetSweepAngle());
}

TEST(TArc2D, RefusesWhatMakesNoArc) {
  const std::string Bulge = "[Error] TArc2D.CreateBulge: 凸度必须是非零的有限值";
  for (const double Bad : {0.0, -0.0, kInf, kNaN, 5e-324}) {
    test::ExpectRaises<EParamError>([&] { TArc2D::CreateBulge({0, 0}, {1, 0}, Bad); }, Bulge);
  }
  test::ExpectRaises<EParamError>(
      [&] {
        TArc2D::CreateBulge({0, 0}, {9e-7, 0}, 1.0);
      },
      "[Error] TArc2D.CreateBulge: 起点与终点重合");
  test::ExpectRaises<EParamError>(
      [&] {
        TArc2D::CreateRadius({0, 0}, {0, 0}, 1.0, true);
      },
      "[Error] TArc2D.CreateRadius: 起点与终点重合");
  const std::string Radius = "[Error] TArc2D.CreateRadius: 半径小于弦长的一半";
  for (const double Bad : {0.5 - 2e-6, -3.0, kNaN, kInf}) {
    test::ExpectRaises<EParamError>(
        [&] {
          TArc2D::CreateRadius({0, 0}, {1, 0}, Bad, true);
        },
        Radius);
  }
  const TArc2D Half = TArc2D::CreateRadius({0, 0}, {1, 0}, 0.5 - 9e-7, true);
  EXPECT_DOUBLE_EQ(0.5, Half.Radius);  // widened to reach both ends
  EXPECT_DOUBLE_EQ(kPi, Half.SweepAngle);
}

TEST(TArc2D, ParameterInvertsThePointAndSaysWhereTheArcEnds) {
  std::mt19937 Random(37);
  for (int Round = 0; Round < 2000; ++Round) {
    const TArc2D Arc = RandomArc(Random);
    const double T = test::RandomDouble(Random, 0.001, 0.999);
    EXPECT_NEAR(T, Arc.ParamOfPoint(Arc.PointAtParam(T)), 1e-9 / std::abs(Arc.SweepAngle));
    EXPECT_LE(Arc.ParamOfPoint(Arc.StartPoint()), 1e-9);
    const double Beyond = 1 + (kFullTurn / std::abs(Arc.SweepAngle) - 1) / 2;  // mid of the gap
    EXPECT_GT(Arc.ParamOfPoint(Arc.PointAtParam(Beyond)), 1.0);
    EXPECT_FALSE(Arc.IsOn(Arc.PointAtParam(Beyond)));
  }
  const TArc2D Circle({0, 0}, 1, 0, kFullTurn);
  EXPECT_EQ(0.0, Circle.ParamOfPoint({1, -5e-7}));
  EXPECT_GT(Circle.ParamOfPoint({1, -2e-6}), 0.9);
  EXPECT_EQ(0.0, TArc2D({0, 0}, 1, 0, 0).ParamOfPoint({-1, 0}));
}

TEST(TArc2D, IsOnAtTheEdgesOfTheTolerance) {
  const TArc2D Quarter({0, 0}, 10, 0, kQuarterTurn);
  for (const TArc2D& Arc : {Quarter, Reversed(Quarter)}) {
    EXPECT_TRUE(Arc.IsOn({10, 0}));
    EXPECT_TRUE(Arc.IsOn({0, 10}));
    EXPECT_TRUE(Arc.IsOn({6, 8}));
    EXPECT_TRUE(Arc.IsOn({6 + 5e-7, 8}));
    EXPECT_FALSE(Arc.IsOn({6 + 2e-6, 8}));
    EXPECT_TRUE(Arc.IsOn({10, -9e-7}));
    EXPECT_FALSE(Arc.IsOn({10, -2e-6}));
    EXPECT_FALSE(Arc.IsOn({-10, 0}));
    EXPECT_TRUE(Arc.IsOn({10, -0.1}, 0.2));
    EXPECT_FALSE(Arc.IsOn({kNaN, 0}));
  }
}

// Dense samples: never outside the box, and near each side of it.
TEST(TArc2D, BoundBoxIsTight) {
  std::mt19937 Random(43);
  for (int Round = 0; Round < 300; ++Round) {
    const TArc2D Arc = RandomArc(Random);
    TRect2D Sampled;
    for (int I = 0; I <= 4000; ++I) Sampled = Sampled.Union(Arc.PointAtParam(I / 4000.0));
    const TRect2D Box = Arc.GetBoundBox();
    EXPECT_TRUE(Box.Contains(Sampled, 1e-12));
    EXPECT_TRUE(Sampled.Contains(Box, 1e-5 * Arc.Radius));
    EXPECT_TRUE(Reversed(Arc).GetBoundBox().Contains(Box, 1e-12));
  }
  EXPECT_EQ(TRect2D({-1, -1}, {3, 3}), TArc2D({1, 1}, 2, 0.3, -kFullTurn).GetBoundBox());
}

// Common points found by walking along the first arc and watching the distance to the curve change
// its sign there.
template <class TDistance>
int CountSignChanges(const TArc2D& Arc, const TDistance& Distance) {
  int Changes = 0;
  double Last = Distance(Arc.PointAtParam(0.0));
  for (int I = 1; I <= 3000; ++I) {
    const double Now = Distance(Arc.PointAtParam(I / 3000.0));
    if ((Now < 0.0) != (Last < 0.0)) ++Changes;
    Last = Now;
  }
  return Changes;
}

TEST(TArc2D, CrossesALineWhereAWalkAlongTheArcSaysSo) {
  std::mt19937 Random(47);
  for (int Round = 0; Round < 1000; ++Round) {
    const TArc2D Arc = RandomArc(Random);
    const TLine2D Line(test::RandomPoint(Random, -20, 20), test::RandomPoint(Random, -20, 20));
    TIntersectPoint2D I[2];
    const int Count = Arc.Intersect(Line, I[0], I[1]);
    const double Depth = Arc.Radius - std::abs(Line.DistanceDirect(Arc.Center));
    if (std::abs(Depth) > 1e-3) {
      EXPECT_EQ(CountSignChanges(Arc, [&](const TPoint2D& P) { return Line.DistanceDirect(P); }),
                Count);
    }
    for (int K = 0; K < Count; ++K) {
      EXPECT_TRUE(I[K].Point.Equals(Line.PointAt(I[K].Param2), 1e-9));
      EXPECT_TRUE(I[K].Point.Equals(Arc.PointAtParam(I[K].Param1), 1e-6));
    }
    if (Count == 2) {
      EXPECT_LT(I[0].Param2, I[1].Param2);
    }
  }
}

TEST(TArc2D, CrossesAnArcWhereAWalkAlongTheArcSaysSo) {
  std::mt19937 Random(53);
  int Crossings = 0;
  for (int Round = 0; Round < 1000; ++Round) {
    const TArc2D A = RandomArc(Random);
    const TArc2D B = RandomArc(Random);
    // Crossings of the circle of B, those off the arc left out by direction.
    int Expected = 0;
    const auto ToCircle = [&](const TPoint2D& P) { return P.DistanceTo(B.Center) - B.Radius; };
    bool IsClose = false;
    double Last = ToCircle(A.StartPoint());
    for (int Step = 1; Step <= 3000; ++Step) {
      const TPoint2D P = A.PointAtParam(Step / 3000.0);
      const double Now = ToCircle(P);
      if ((Now < 0.0) != (Last < 0.0)) {
        const double T = B.ParamOfPoint(P);
        Expected += T <= 1.0;
        IsClose |= std::abs(T - 1.0) * std::abs(B.SweepAngle) < 0.1 || T < 0.1;
      }
      IsClose |= std::abs(Now) < 1e-4 && std::abs(Now) > std::abs(Last);
      Last = Now;
    }
    TIntersectPoint2D I[2];
    const int Count = A.Intersect(B, I[0], I[1]);
    if (!IsClose) {
      EXPECT_EQ(Expected, Count) << "round " << Round;
    }
    for (int K = 0; K < Count; ++K) {
      EXPECT_TRUE(I[K].Point.Equals(A.PointAtParam(I[K].Param1), 1e-6));
      EXPECT_TRUE(I[K].Point.Equals(B.PointAtParam(I[K].Param2), 1e-6));
      ++Crossings;
    }
    if (Count == 2) {
      EXPECT_LT(I[0].Param1, I[1].Param1);
    }
  }
  EXPECT_GT(Crossings, 200);
}

TEST(TArc2D, ArcsOfOneCircleAnswerTheirOverlap) {
  const TArc2D Half({0, 0}, 1, 0, kPi);
  const struct {
    const char* Name;
    TArc2D A, B;
    int Count;
    double First, Last;  // polar angles of the common points along A
  } Cases[] = {
      {"overlap", Half, {{0, 0}, 1, 2, kPi}, 2, 2, kPi},
      {"overlap, other sense", Half, {{0, 0}, 1, 2 + kPi, -kPi}, 2, 2, kPi},
      {"contained", Half, {{0, 0}, 1, 1, 1}, 2, 1, 2},
      {"hardly longer than the tolerance", Half, {{0, 0}, 1, 1, 5e-6}, 2, 1, 1 + 5e-6},
      {"the same", Half, Half, 2, 0, kPi},
      {"the same, reversed", Half, Reversed(Half), 2, 0, kPi},
      {"a full circle, seam inside", Half, {{0, 0}, 1, 1, kFullTurn}, 2, 0, kPi},
      {"of a full circle, over its seam",
       {{0, 0}, 1, 1, kFullTurn},
       {{0, 0}, 1, 0, kPi},
       2,
       0,
       kPi},
      {"of a circle with a gap below the tolerance, over its seam",
       {{0, 0}, 1, 1, kFullTurn - 5e-7},
       {{0, 0}, 1, 0, kPi},
       2,
       0,
       kPi},
      {"two points", {{0, 0}, 0, 1, 1}, {{0, 0}, 0, 2, -3}, 1, 0, 0},
      {"a sweep that is no number", Half, {{0, 0}, 1, 1, kNaN}, 0, 0, 0},
      {"apart", Half, {{0, 0}, 1, 4, 1}, 0, 0, 0},
      {"touching in one end", Half, {{0, 0}, 1, kPi, 1}, 1, kPi, 0},
      {"touching in one end, small gap", Half, {{0, 0}, 1, kPi + 9e-7, 1}, 1, kPi, 0},
      {"a gap", Half, {{0, 0}, 1, kPi + 2e-6, 1}, 0, 0, 0},
      {"touching in both ends", Half, {{0, 0}, 1, kPi, kPi}, 2, 0, kPi},
      {"two overlaps: the longer", Half, {{0, 0}, 1, 2, 5.5}, 2, 0, 7.5 - kFullTurn},
      {"the longer one last", Half, {{0, 0}, 1, 1, 5.5}, 2, 1, kPi},
      {"the first is no number", {{0, 0}, 1, 1, kNaN}, Half, 0, 0, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TIntersectPoint2D I1;
    TIntersectPoint2D I2;
    ASSERT_EQ(Case.Count, Case.A.Intersect(Case.B, I1, I2));
    const TCircle2D Circle({0, 0}, Case.A.Radius);
    if (Case.Count > 0) {
      EXPECT_TRUE(I1.Point.Equals(Circle.PointAtAngle(Case.First), 1e-6));
      EXPECT_TRUE(I1.Point.Equals(Case.A.PointAtParam(I1.Param1), 1e-6));
      EXPECT_TRUE(I1.Point.Equals(Case.B.PointAtParam(I1.Param2), 2e-6));
    }
    if (Case.Count == 2) {
      EXPECT_TRUE(I2.Point.Equals(Circle.PointAtAngle(Case.Last), 1e-6));
    }
  }
}

TEST(TArc2D, AnEndOnTheOtherCurveStandsForACrossingJustMissed) {
  TIntersectPoint2D I1;
  TIntersectPoint2D I2;
  // A line that the arc would cross 4e-3 beyond its end, at an angle of 1e-4, while the end itself
  // lies 4e-7 from it.
  const TArc2D Arc({0, 0}, 100, kQuarterTurn, 0.5);
  const double Sine = 1e-4;
  const TLine2D Line({4e-3, 100}, {4e-3 - 100, 100 + 100 * Sine});
  EXPECT_EQ(1, Arc.Intersect(Line, I1, I2));
  EXPECT_TRUE(I1.Point.Equals({0, 100}, 0.05));
  EXPECT_TRUE(Arc.IsOn(I1.Point));
  // A line leaves the end so flatly that it meets the circle again within the tolerance of
  // tangency: the end is exact, the point halfway between the two crossings is not.
  const TArc2D Quarter({0, 0}, 1, kQuarterTurn, kQuarterTurn);
  ASSERT_EQ(1, Quarter.Intersect({Quarter.StartPoint(), {-1, 1 - 5e-4}}, I1, I2));
  EXPECT_EQ(Quarter.StartPoint(), I1.Point);
  // Two arcs that share one end at a corner meet once.
  const TArc2D First = TArc2D::CreateBulge({0, 0}, {2, 1}, 0.3);
  const TArc2D Second = TArc2D::CreateBulge({2, 1}, {5, 0}, 0.4);
  ASSERT_EQ(1, First.Intersect(Second, I1, I2));
  EXPECT_TRUE(I1.Point.Equals({2, 1}, 1e-6));
  // Two arcs that go on smoothly: tangent at the shared end.
  const TArc2D Left({0, 0}, 2, 1.0, 1.0);
  const TArc2D Right({TPoint2D(std::cos(1.0), std::sin(1.0)) * 5}, 3, 1.0 + kPi, 1.0);
  ASSERT_EQ(1, Left.Intersect(Right, I1, I2));
  EXPECT_TRUE(I1.Point.Equals(Left.StartPoint(), 1e-6));
  EXPECT_NEAR(0.0, I1.Param1, 1e-9);
  EXPECT_NEAR(0.0, I1.Param2, 1e-9);
}

TEST(TArc2D, EnvelopeTouchesTheMiddleParallelToTheChord) {
  std::mt19937 Random(59);
  for (int Round = 0; Round < 200; ++Round) {
    const TArc2D Arc = RandomArc(Random);
    const TLine2D Line = Arc.EnvelopeLine();
    const TPoint2D Chord = Arc.EndPoint() - Arc.StartPoint();
    EXPECT_TRUE((Line.EndPoint - Line.StartPoint).Equals(Chord, 1e-9));
    EXPECT_NEAR(Arc.Radius, std::abs(Line.DistanceDirect(Arc.Center)),
                1e-9 * Arc.Radius / std::min(1.0, Chord.Mag()));
  }
  EXPECT_TRUE(TArc2D({0, 0}, 1, 0, kFullTurn).EnvelopeLine().StartPoint.Equals({-1, 0}));
}

TEST(TArc2D, HostileArcsEndQuietly) {
  const double Values[] = {0.0, 1.0, -1e300, 1e300, 5e-324, kInf, kNaN, kFullTurn};
  std::mt19937 Random(1);
  const auto Pick = [&] { return Values[test::RandomInt(Random, 0, 7)]; };
  for (int Round = 0; Round < 5000; ++Round) {
    const TArc2D A({Pick(), Pick()}, Pick(), Pick(), Pick());
    const TArc2D B({Pick(), Pick()}, Pick(), Pick(), Pick());
    TIntersectPoint2D I1;
    TIntersectPoint2D I2;
    const int WithArc = A.Intersect(B, I1, I2);
    const int WithLine = A.Intersect(TLine2D(B.Center, {Pick(), Pick()}), I1, I2);
    EXPECT_TRUE(WithArc >= 0 && WithArc <= 2 && WithLine >= 0 && WithLine <= 2);
    A.GetBoundBox();
    A.IsOn(B.Center);
    A.EnvelopeLine();
    TArc2D::CreateCenter(A.Center, B.Center, {Pick(), Pick()}, true);
  }
}

}  // namespace
}  // namespace tarnalgo
