#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "geometryAlgo/VedaType/Arc.h"
#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/Point.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

// Every operation of the simple shapes comes back from any coordinates, with what it promises of
// any input. The sanitized build watches for undefined behaviour.

constexpr double kOdd[] = {0.0,
                           -0.0,
                           1.0,
                           -2.0,
                           1e-6,
                           5e-324,
                           -1e-160,
                           1e160,
                           9.3e18,
                           1e300,
                           -1.7e308,
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN()};

double OddNumber(std::mt19937& Random) {
  return kOdd[test::RandomInt(Random, 0, std::size(kOdd) - 1)];
}

TPoint2D OddPoint(std::mt19937& Random) {
  const double X = OddNumber(Random);
  return {X, OddNumber(Random)};
}

TVLine2D OddLine(std::mt19937& Random) {
  const TPoint2D Start = OddPoint(Random);
  return {Start, OddPoint(Random)};
}

TVArc2D OddArc(std::mt19937& Random) {
  const TVLine2D Ends = OddLine(Random);
  return {OddPoint(Random), Ends.StartPoint, Ends.EndPoint, test::RandomInt(Random, 0, 1) != 0};
}

TEST(OddInput, SegmentsAnswerWithinTheirBounds) {
  std::mt19937 Random(51);
  for (int Round = 0; Round < 20000; ++Round) {
    const TVLine2D A = OddLine(Random);
    const TVLine2D B = OddLine(Random);
    const TPoint2D P = OddPoint(Random);
    SCOPED_TRACE(testing::Message() << DebugText(A.StartPoint, A.EndPoint)
                                    << DebugText(B.StartPoint, B.EndPoint) << DebugText(P));
    double T = -1;
    A.SegmentDistanceTo(P, T);
    EXPECT_TRUE(T >= 0.0 && T <= 1.0);
    A.LineDistanceTo(P, T);
    EXPECT_TRUE(std::isfinite(T));
    TIntersectPoint2D I1;
    TIntersectPoint2D I2;
    if (A.RelationWithSegLine2(B, I1, I2) > 0) {
      EXPECT_TRUE(I1.Param1 >= 0.0 && I1.Param1 <= 1.0 && I1.Param2 >= 0.0 && I1.Param2 <= 1.0);
    }
    const TVRect2D Box(P, B.StartPoint);
    if (const auto Clipped = A.ClipBy(Box)) {
      EXPECT_TRUE(Box.IsPointIn(Clipped->StartPoint, 0.0) && Box.IsPointIn(Clipped->EndPoint, 0.0));
    }
    TPoint2D Crossing;
    A.RelationWithLine(B, Crossing);
    A.RelationSeglineWithLine(B, Crossing);
    A.InternalCrossWithLine(B, Crossing);
    A.Stretch(P.X).Offset(P.Y).PerpendicularBisector();
    A.PointOfLineAtX(P.X);
    TPoint2DUtils::InCenter(A.StartPoint, A.EndPoint, P);
    TPoint2DUtils::Mirror(P, A);
    TPointL2D(P).ToCADIntPoint();
  }
}

TEST(OddInput, BoxesStayConsistent) {
  std::mt19937 Random(52);
  for (int Round = 0; Round < 20000; ++Round) {
    const TVRect2D A(OddNumber(Random), OddNumber(Random), OddNumber(Random), OddNumber(Random));
    const TVRect2D B(OddPoint(Random), OddPoint(Random));
    const TVRect2D Hull = A.Expand(B);
    EXPECT_EQ(A.IsValid() || B.IsValid(), Hull.IsValid());
    EXPECT_TRUE(!A.IsValid() || A.Intersect(Hull) == A);
    EXPECT_TRUE(!B.IsValid() || B.Intersect(Hull) == B);
    EXPECT_EQ(A.Intersect(B).IsValid(), B.Intersect(A).IsValid());
    A.RelationWith(B);
    A.Holds90(B);
    A.Rotate(OddNumber(Random), A.Center()).Zoom(OddNumber(Random)).Inflate(OddNumber(Random));
  }
}

TEST(OddInput, ArcsAnswer) {
  std::mt19937 Random(53);
  for (int Round = 0; Round < 500; ++Round) {
    const TVArc2D A = OddArc(Random);
    const TVArc2D B = OddArc(Random);
    TVArc2D O1;
    TVArc2D O2;
    TPoint2D P1;
    TPoint2D P2;
    A.CrossWithArc(B, P1, P2, O1, O2);
    A.CrossWithCircle(B.Circle(), P1, P2);
    A.CrossWithSegline({B.StartPoint, B.EndPoint}, P1, P2);
    A.Circle().RelationWithCircle(B.Circle());
    A.BoundBox();
    A.FarthestPt(B.Center);
    A.IsPointOn(B.Center);
    A.SplitByParam(B.Center.X, O1, O2);
    const int Count = A.SampleToPolyline(0.1).Count();
    EXPECT_TRUE(Count >= 2 && Count <= kMostChords + 1);
    TVArc2D(A.Center, B.Center.X, A.StartPoint.X, A.StartPoint.Y).Length();
    try {
      TVArc2D(A.StartPoint, A.EndPoint, B.Center.X);
      TVArc2D(A.StartPoint, A.EndPoint, B.Center.X, A.IsClockwise, B.IsClockwise);
      TVArc2D(TVLine2D(A.StartPoint, A.EndPoint), B.Center.X, A.IsClockwise, B.IsClockwise);
    } catch (const Exception&) {  // refused, as stated
    }
  }
}

}  // namespace
}  // namespace tarnalgo
