#include "geometryAlgo/flyscanAlgo/FlyscanTool.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "tests/support/Raises.h"
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
  MaxSharpAngle = 0.0;  // nothing is sharper
  EXPECT_FALSE(TFlyscanTool::AngleTooSharp({0, 0}, {1, 0}, {0, 0}, {-1, 0}, 1.0));
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

// Between parallel ends to the side the turn is that from X to the other control point.
TEST(TFlyscanTool, ASmoothJointNeedsRoomAndTurnsLittle) {
  const double Steep = std::tan(kSmoothJointTurn);
  const struct {
    const char* Name;
    TPoint2D PtIn;
    TPoint2D VecIn;
    bool Expected;
  } Cases[] = {
      {"straight on", {5, 0}, {1, 0}, true},
      {"entered backwards", {5, 0}, {-1, 0}, false},
      {"left backwards", {-5, 0}, {1, 0}, false},
      {"the largest turn", {4.5, 4 * Steep - 1e-6}, {1, 0}, true},
      {"beyond it", {4.5, 4 * Steep + 1e-4}, {1, 0}, false},
      {"the turn of the entering end", {5, 0}, Direction(1.2), false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TBezierSegment2D Before({1, 2}, {3, 4}, {5, 6}, {7, 8});
    TBezierSegment2D Joint = Before;
    EXPECT_EQ(Case.Expected,
              TFlyscanTool::GetSmoothBezierSeg({0, 0}, {1, 0}, Case.PtIn, Case.VecIn, Joint));
    if (!Case.Expected) {
      EXPECT_EQ(Before, Joint);
    } else {
      EXPECT_EQ(TBezierSegment2D({0, 0}, {0.5, 0}, Case.PtIn - Case.VecIn * 0.5, Case.PtIn), Joint);
    }
  }
}

// Leads of the usual length would overlap, which is a turn of π.
TEST(TFlyscanTool, EndsOfASmoothJointAreNotTooNear) {
  const test::TRestore Restore(ScanConnectSegLength);
  ScanConnectSegLength = 0.1;
  TBezierSegment2D Joint;
  EXPECT_FALSE(TFlyscanTool::GetSmoothBezierSeg({0, 0}, {1, 0}, {0.3 - 1e-9, 0}, {1, 0}, Joint));
  EXPECT_TRUE(TFlyscanTool::GetSmoothBezierSeg({0, 0}, {1, 0}, {0.3 + 1e-9, 0}, {1, 0}, Joint));
}

// Ends 1.2 apart: a quarter of the 0.7 to the other control is 0.175; then, from the other end, a
// quarter of 1.025.
TEST(TFlyscanTool, ControlsOfASmoothJointAreDrawnInOneAfterTheOther) {
  TBezierSegment2D Joint;
  ASSERT_TRUE(TFlyscanTool::GetSmoothBezierSeg({0, 0}, {1, 0}, {1.2, 0}, {1, 0}, Joint));
  EXPECT_TRUE(Joint.P1.Equals({0.175, 0}, 1e-12));
  EXPECT_TRUE(Joint.P2.Equals({1.2 - 0.25625, 0}, 1e-12));
}

TEST(TFlyscanTool, AThreePieceConnectionHasOneDirectionWhereItsPiecesMeet) {
  const struct {
    const char* Name;
    TPoint2D PtIn;
    TPoint2D VecIn;
    int Pieces;
  } Cases[] = {
      {"beside each other", {0, 5}, {-1, 0}, 3},
      {"facing on one line", {10, 0}, {-1, 0}, 4},
      {"nearly on one line", {10, 0.09}, {-1, 0}, 4},
      {"not quite on one line", {10, -0.11}, {-1, 0}, 3},
      {"back on one line", {-10, 0}, {1, 0}, 4},
      {"on, both controls at one place", {3, 0}, {1, 0}, 4},
      {"facing, both controls at one place: the ends too", {0, 0}, {-1, 0}, 4},
      {"across", {10, 1.5}, {0, 1}, 3},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const auto Curve = TFlyscanTool::CreateTriBezierConnect({0, 0}, {1, 0}, Case.PtIn, Case.VecIn);
    ASSERT_EQ(Case.Pieces, Curve->GetBezierCount());
    TPoint2D Place;
    TPoint2D Way(1, 0);
    for (int I = 0; I < Case.Pieces; ++I) {
      const TBezierSegment2D& Piece = Curve->GetBezier(I);
      EXPECT_EQ(Place, Piece.P0);
      EXPECT_TRUE(Way.Equals(Piece.TangentStart().Normal(), 1e-9));
      Place = Piece.P3;
      Way = Piece.TangentEnd().Normal();
    }
    EXPECT_EQ(Case.PtIn, Place);
    EXPECT_TRUE(Way.Equals(Case.VecIn, 1e-9));
  }
}

TEST(TFlyscanTool, TheConnectionIsSmoothElseBezierElseStraight) {
  const test::TRestore Restore(ConnectStyle);
  const auto Pieces = [](const TPoint2D& PtIn, const TPoint2D& VecIn, int Style) {
    ConnectStyle = Style;
    const auto Curve = TFlyscanTool::CreateConnectCurve({0, 0}, {1, 0}, PtIn, VecIn);
    const bool IsBezier = dynamic_cast<const TGePolyBezier2D*>(Curve.get()) != nullptr;
    return static_cast<int>(Curve->ParamTo()) * (IsBezier ? 1 : -1);  // straight ones negative
  };
  for (const int Style : {0, 1, 2, -1}) {
    SCOPED_TRACE(Style);
    EXPECT_EQ(1, Pieces({5, 0}, {1, 0}, Style));
    EXPECT_EQ(Style == 1 ? -3 : 3, Pieces({0, 5}, {-1, 0}, Style));
    EXPECT_EQ(-3, Pieces({0.5, 1.5}, {0, 1}, Style));  // too sharp
  }
  const auto Straight = TFlyscanTool::CreateTriLineConnect({0, 0}, {1, 0}, {3, 4}, {0, 1});
  EXPECT_EQ((TDynPoints2D{{0, 0}, {0.5, 0}, {3, 3.5}, {3, 4}}), Straight->Points());
}

TEST(TFlyscanTool, ATangentRunsWithBothCircles) {
  const TCircle2D A({1, 2}, 3.0);
  for (int I = 0; I < 64; ++I) {
    SCOPED_TRACE(I);
    const bool IsCwA = I % 2 == 1;
    const bool IsCwB = I / 2 % 2 == 1;
    const TCircle2D B(A.Center + Direction(I * 0.1) * (6.0 + I % 5), I % 3 + 0.5);
    double AngleA = -1.0;
    double AngleB = -1.0;
    TFlyscanTool::CalcTangentLine(A, B, IsCwA, IsCwB, AngleA, AngleB);
    const TPoint2D Way = (B.PointAtAngle(AngleB) - A.PointAtAngle(AngleA)).Normal();
    EXPECT_TRUE(Way.Equals(Direction(AngleA + (IsCwA ? -1 : 1) * kPi / 2), 1e-9));
    EXPECT_TRUE(Way.Equals(Direction(AngleB + (IsCwB ? -1 : 1) * kPi / 2), 1e-9));
  }
}

TEST(TFlyscanTool, CirclesThatTouchHaveTheTangentThere) {
  double AngleA = -1.0;
  double AngleB = -1.0;
  TFlyscanTool::CalcTangentLine({{0, 0}, 2}, {{3, 0}, 1}, false, true, AngleA, AngleB);
  EXPECT_NEAR(1.0, std::cos(AngleA), 1e-12);
  EXPECT_NEAR(-1.0, std::cos(AngleB), 1e-12);
}

TEST(TFlyscanTool, CirclesWithoutACommonTangentAreRefused) {
  const struct {
    TCircle2D A;
    TCircle2D B;
    bool IsInner;
  } Cases[] = {
      {{{0, 0}, 2}, {{2.9, 0}, 1}, true},       // crossing
      {{{0, 0}, 2}, {{0.9, 0}, 1}, false},      // B inside A
      {{{0.9, 0}, 1}, {{0, 0}, 2}, false},      // A inside B
      {{{0, 0}, 1}, {{0.00009, 0}, 1}, false},  // one centre
      {{{0, 0}, std::nan("")}, {{9, 0}, 1}, false},
  };
  for (const auto& Case : Cases) {
    double Untouched = 7.0;
    test::ExpectRaises(
        [&] {
          TFlyscanTool::CalcTangentLine(Case.A, Case.B, false, Case.IsInner, Untouched, Untouched);
        },
        "Connect calculate tangent");
    EXPECT_EQ(7.0, Untouched);
  }
}

}  // namespace
}  // namespace tarnalgo
