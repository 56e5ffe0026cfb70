#include "geometryAlgo/flyscanAlgo/FlyscanTool.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "tests/support/Restore.h"

namespace tarnalgo {
namespace {

TPoint2D Direction(double Angle) {
  return {std::cos(Angle), std::sin(Angle)};
}

TEST(TFlyscanTool, TheCamFollowsACornerUnlessItTurnsTooFar) {
  const struct {
    const char* Name;
    double In;   // direction of the leg in
    double Out;  // and of the leg out
    bool Expected;
  } Cases[] = {
      {"straight on", 0.2, 0.2, true},
      {"along X, below 1", -0.4, 0.59, true},
      {"along X, 1", -0.4, 0.6, false},
      {"along X, above 1", -0.5, 0.51, false},
      {"along Y, below 1", 1.1, 2.09, true},
      {"along Y, above 1", 1.1, 2.11, false},
      {"from X to Y, below 0.5", 0.6, 1.09, true},
      {"from X to Y, 0.5", 0.6, 1.1, false},
      {"a diagonal leg has no axis", kPi / 4, kPi / 4 + 0.49, true},
      {"nor the other leg", kPi / 4 + 0.51, kPi / 4, false},
      {"back along the way it came", 0.0, kPi, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TPoint2D Pt(3, 4);
    const TPoint2D Last = Pt - Direction(Case.In) * 5.0;
    const TPoint2D Next = Pt + Direction(Case.Out) * 7.0;
    EXPECT_EQ(Case.Expected, TFlyscanTool::AngleCamValid(Last, Pt, Next));
    EXPECT_EQ(Case.Expected, TFlyscanTool::AngleCamValid(Next, Pt, Last));  // run backwards
    EXPECT_EQ(Case.Expected,  // mirrored in the diagonal
              TFlyscanTool::AngleCamValid({Last.Y, Last.X}, {Pt.Y, Pt.X}, {Next.Y, Next.X}));
  }
  EXPECT_TRUE(TFlyscanTool::AngleCamValid({1, 1}, {1, 1}, {5, 1}));
}

// With a unit lead and control the middle line runs from (2, 0) to `PtIn` − 2·`VecIn`.
TEST(TFlyscanTool, AJointIsTooSharpBelowTheLimit) {
  const test::TRestore Restore(MaxSharpAngle);
  const struct {
    const char* Name;
    TPoint2D PtIn;
    TPoint2D VecIn;
    double Corner;  // the sharper one, degrees
  } Cases[] = {
      {"straight on", {10, 0}, {1, 0}, 180},
      {"to the side and on", {6, 2}, {1, 0}, 135},
      {"back: the controls meet, a line of no length has the angle 0", {0, 0}, {-1, 0}, 0},
      {"behind, entered upwards", {1, 2}, {0, 1}, 0},
      {"ahead, entered downwards", {12, -2}, {0, -1}, 90},
      {"above, entered backwards", {0, 10}, {-1, 0}, 90},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    for (const double Limit : {Case.Corner - 1e-3, Case.Corner + 1e-3}) {
      MaxSharpAngle = Limit;
      EXPECT_EQ(Limit > Case.Corner,
                TFlyscanTool::AngleTooSharp({0, 0}, {1, 0}, Case.PtIn, Case.VecIn, 1.0));
    }
  }
}

TEST(TFlyscanTool, SamplesKeepTheEndsAndTheChordError) {
  const TGeCircularArc2D Arc(TPoint2D(1, 1), 10.0, 0.5, -4.0);
  const TVPolyline2D Samples = TFlyscanTool::GetPolyline2D(Arc, 0.1);
  ASSERT_GE(Samples.Count(), 3);
  EXPECT_TRUE(Samples[0].Equals(Arc.StartPoint()));
  EXPECT_TRUE(Samples[Samples.Count() - 1].Equals(Arc.EndPoint()));
  for (int I = 0; I + 1 < Samples.Count(); ++I) {
    const TPoint2D Middle = (Samples[I] + Samples[I + 1]) * 0.5;
    EXPECT_NEAR(10.0, Middle.DistanceTo({1, 1}), 0.1 + 1e-9);
  }
}

TEST(TFlyscanTool, NoSmoothJointIsOfferedAndTheSegmentStays) {
  TBezierSegment2D Segment({1, 2}, {3, 4}, {5, 6}, {7, 8});
  const TBezierSegment2D Before = Segment;
  EXPECT_FALSE(TFlyscanTool::GetSmoothBezierSeg({0, 0}, {1, 0}, {5, 0}, {1, 0}, Segment));
  EXPECT_EQ(Before, Segment);
}

}  // namespace
}  // namespace tarnalgo
