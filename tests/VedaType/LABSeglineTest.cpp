#include "geometryAlgo/VedaType/LABSegline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

const TLABSegline kLine({1, 1}, {4, 5});
const TLABSegline kArc({2, 0}, {0, 2}, {0, 0}, std::tan(kPi / 8));
const TLABSegline kBezier({0, 0}, {0, 4}, {6, 4}, {6, 0});
const TLABSegline kAll[] = {kLine, kArc, kArc.Reverse(), kBezier};

TEST(TLABSegline, BulgeFromTheMarkOnIsAFullCircle) {
  const struct {
    double Bulge;
    bool IsCircle;
  } Cases[] = {{3.3e38, true}, {-3.3e38, true}, {3.29e38, false}, {1e30, false}, {0.5, false}};
  for (const auto& Case : Cases) {
    const TLABSegline Seg({1, 0}, {0, 1}, {0, 0}, Case.Bulge);
    EXPECT_EQ(Case.IsCircle, Seg.IsCircle()) << Case.Bulge;
    EXPECT_EQ(Case.Bulge < 0, Seg.ToArc().IsClockwise);
    EXPECT_TRUE(TLABSegline({1, 0}, {1, 0}, {0, 0}, Case.Bulge).IsCircle()) << "equal ends";
  }
  // Ends within the tolerance: less than half a turn is a line.
  EXPECT_EQ(stLine, TLABSegline(TArc2D({0, 0}, 1e-7, 0.0, 2.0)).SegType);
  EXPECT_TRUE(TLABSegline(TArc2D({0, 0}, 1e-7, 0.0, 4.0)).IsCircle());
}

TEST(TLABSegline, SamplesABezierByStepsOfTheParameter) {
  const struct {
    double Step;
    int Points;
  } Cases[] = {{0.1, 11}, {0.4, 3}, {0.3, 4}, {3.0, 2}, {0.0, 1000001}, {std::nan(""), 1000001}};
  for (const auto& Case : Cases) EXPECT_EQ(Case.Points, kBezier.Sample(Case.Step).Count());
  const TLABSegline Straight({0, 0}, {9, 0}, {-5, 0}, {6, 0});  // beyond both ends
  EXPECT_EQ(2, Straight.Sample(0.1).Count());
  EXPECT_DOUBLE_EQ(6.0, Straight.Length(0.1));
  EXPECT_EQ(2, TLABSegline({1, 1}, {1, 1}).Sample(0.1).Count());
}

TEST(TLABSegline, StraightBezierBecomesALine) {
  TLABSegline Seg({0, 0}, {1, 9e-7}, {2, -9e-7}, {3, 0});
  EXPECT_FALSE(Seg.TryToLine(1e-7));
  EXPECT_TRUE(Seg.TryToLine());
  EXPECT_EQ(stLine, Seg.SegType);
  EXPECT_EQ(TPoint2D::FZero, Seg.P2);
  EXPECT_EQ(TPoint2D::FZero, Seg.P3);
  EXPECT_FALSE(TLABSegline({0, 0}, {1, 0}, {2, 0}, {0, 0}).IsLine()) << "no chord";
  EXPECT_FALSE(TLABSegline({1, 1}, {1, 1}).IsLine());
}

TEST(TLABSegline, RefusesWhatItIsNot) {
  test::ExpectRaises([] { kArc.ToLine(); },
                     "[Error] TLABSegline.ToLine: 将“非直线段混合线段”转为“直线段”");
  test::ExpectRaises([] { kLine.ToArc(); },
                     "[Error] TLABSegline.ToArc: 将“非弧线混合线段”转为“弧线”");
  test::ExpectRaises([] { kArc.ToBezierSegment(); },
                     "[Error] TLABSegline.ToBezierSegment: 将“非贝塞尔混合线段”转为“贝塞尔”");
  test::ExpectRaises(
      [] {
        kArc.DistanceTo({0, 0});
      },
      "[Error] TLABSegline.DistanceTo: 圆弧距离未实现");
  test::ExpectRaises(
      [] {
        kBezier.DistanceTo({0, 0});
      },
      "[Error] TLABSegline.DistanceTo: 贝塞尔距离未实现");
  for (const TLABSegline& Seg : kAll) {
    test::ExpectRaises([&] { Seg.ParamByPoint(Seg.PointByParam(0.5) + TPoint2D(0.01, 0.01)); },
                       "[Error] TLABSegline.ParamByPoint: 点不在线段上");
  }
}

TEST(TLABSegline, ParameterAndTangentAgreeWithThePoints) {
  for (const TLABSegline& Seg : kAll) {
    EXPECT_EQ(Seg.P1, Seg.PointByParam(0.0));
    EXPECT_EQ(Seg.P4, Seg.PointByParam(1.0));
    EXPECT_EQ(0.0, Seg.ParamByPoint(Seg.PointByParam(1e-8)));  // equal to the start
    for (const double T : {0.0, 0.125, 0.5, 0.75, 1.0}) {
      EXPECT_NEAR(T, Seg.ParamByPoint(Seg.PointByParam(T)), 1e-12);
      const TPoint2D Step = Seg.PointByParam(T + 1e-6) - Seg.PointByParam(T - 1e-6);
      EXPECT_NEAR(0.0, Seg.TangentVector(T).AngleBetween(Step), 1e-6);
    }
    const auto Curve = Seg.ToGeCurve2D();
    EXPECT_EQ(Seg.P1, Curve->StartPoint());
    EXPECT_EQ(Seg.P4, Curve->EndPoint());
    EXPECT_NEAR(0.0, Curve->PointAtParam(0.3).DistanceTo(Seg.PointByParam(0.3)), 1e-12);
    EXPECT_NEAR(Curve->CurveLength(), Seg.Length(1e-4), 1e-6);
    EXPECT_TRUE(TVRect2D(Curve->GetBoundBox()).SameAs(Seg.BoundBox(), 1e-12));
  }
}

TEST(TLABSegline, TransformsMoveEveryPointOfThePiece) {
  TMatrix2D Mirror;
  Mirror.Scale(1.0, -1.0);
  Mirror.Translate(3.0, 1.0);
  for (const TLABSegline& Seg : kAll) {
    for (const double T : {0.0, 0.2, 0.9, 1.0}) {
      const TPoint2D P = Seg.PointByParam(T);
      const auto Expect = [&](const TPoint2D& Expected, const TPoint2D& Found) {
        EXPECT_NEAR(0.0, Expected.DistanceTo(Found), 1e-12);
      };
      Expect(P + TPoint2D(2, 3), Seg.Translate({2, 3}).PointByParam(T));
      Expect(P.RotateBy(0.7), Seg.Rotate(0.7).PointByParam(T));
      Expect(P.RotateCcw90(), Seg.RotateBy90().PointByParam(T));
      Expect(P.RotateCw90(), Seg.RotateBy_90().PointByParam(T));
      Expect({-P.X, P.Y}, Seg.YMirror().PointByParam(T));
      Expect(Mirror.Transform(P), Seg.Transform(Mirror).PointByParam(T));
      Expect(P, Seg.Reverse().PointByParam(1.0 - T));
    }
    TLABSegline Twice = Seg;
    Twice.ReverseInplace();
    Twice.ReverseInplace();
    EXPECT_EQ(Seg.Bulge, Twice.Bulge);
    EXPECT_EQ(Seg.P2, Twice.P2);
    EXPECT_EQ(Seg.P3, Twice.P3);
  }
}

}  // namespace
}  // namespace tarnalgo
