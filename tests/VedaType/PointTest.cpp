#include "geometryAlgo/VedaType/Point.h"

#include <gtest/gtest.h>

#include <cmath>
#include <concepts>
#include <limits>
#include <random>
#include <type_traits>

#include "geometryAlgo/VedaType/Line.h"
#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

static_assert(std::has_unique_object_representations_v<TPointL2D>);  // bytewise hash is exact
static_assert(std::is_trivially_copyable_v<TLWPoint2D>);
static_assert(std::constructible_from<TPointL2D, int, long long>);
static_assert(!std::constructible_from<TPointL2D, double, double>);
static_assert(!std::constructible_from<TPointL2D, int, double>);
static_assert(!std::convertible_to<TPoint2D, TPointL2D>);  // rounding is asked for by name

TEST(TPointL2D, RoundsToTheNearestIntegerHalvesToEven) {
  const struct {
    double Value;
    std::int64_t Expected;
  } Cases[] = {
      {0.5, 0},
      {1.5, 2},
      {-0.5, 0},
      {-1.5, -2},
      {2.5, 2},
      {0.49999999999999994, 0},  // adding 0.5 to it gives 1
      {4503599627370497.5, 4503599627370498},
      {9007199254740993.0, 9007199254740992},
      {-9223372036854775808.0, kMin},
      {-6e18, -6'000'000'000'000'000'000},
      {6e18, 6'000'000'000'000'000'000},
      {9223372036854775808.0, kMax},
      {1e300, kMax},
      {-1e300, kMin},
      {std::numeric_limits<double>::infinity(), kMax},
      {std::nan(""), 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Value);
    EXPECT_EQ(TPointL2D(Case.Expected, 7), TPointL2D(TPoint2D(Case.Value, 7.1)));
    EXPECT_EQ(TPointL2D(7, Case.Expected), TPointL2D(TPoint2D(6.9, Case.Value)));
  }
}

TEST(TPointL2D, ArithmeticWrapsInsteadOfOverflowing) {
  EXPECT_EQ(TPointL2D(kMin, -5), TPointL2D(kMax, -4) + TPointL2D(1, -1));
  EXPECT_EQ(TPointL2D(kMax, 5), TPointL2D(kMin, 4) - TPointL2D(1, -1));
  EXPECT_EQ(TPointL2D(kMin, -1), -TPointL2D(kMin, 1));
}

TEST(TPointL2D, QuarterTurnsAgreeWithTheVectorTurns) {
  std::mt19937 Random(5);
  for (int Round = 0; Round < 100; ++Round) {
    const TPointL2D P(test::RandomInt(Random, -99, 99), test::RandomInt(Random, -99, 99));
    EXPECT_EQ(P.ToPoint2D().RotateCcw90(), P.RotateBy90().ToPoint2D());
    EXPECT_EQ(P.ToPoint2D().RotateCw90(), P.RotateBy270().ToPoint2D());
    EXPECT_EQ(P, P.RotateBy90().RotateBy270());
  }
}

TEST(TPointL2D, DistanceIsExactAcrossTheWholeRange) {
  // The difference of the coordinates needs 65 bits with a sign.
  EXPECT_DOUBLE_EQ(18446744073709551615.0, TPointL2D(kMin, 3).DistanceTo({kMax, 3}));
  // 2^62 is beyond what doubles tell apart from its neighbours.
  EXPECT_EQ(5.0, TPointL2D((std::int64_t{1} << 62) + 3, 0).DistanceTo({std::int64_t{1} << 62, 4}));
}

TEST(TPointL2D, HostPointClampsToItsThirtyTwoBits) {
  EXPECT_EQ(Cadtypes::TIntPoint::Create(-3, 8), TPointL2D(-3, 8).ToCADIntPoint());
  EXPECT_EQ(Cadtypes::TIntPoint::Create(2147483647, -2147483647 - 1),
            TPointL2D(2147483648LL, kMin).ToCADIntPoint());
  EXPECT_EQ(TPointL2D(-3, 8), TPointL2D(Cadtypes::TIntPoint::Create(-3, 8)));
}

TEST(TNullablePoint2D, IsEmptyUnlessMadeFromAPoint) {
  EXPECT_FALSE(TNullablePoint2D().HasValue);
  EXPECT_TRUE(TNullablePoint2D(TPoint2D(0, 0)).HasValue);
}

TEST(TPoint2DUtils, CoordinatesByIndex) {
  EXPECT_EQ(3.0, TPoint2DUtils::GetCoor({3, 4}, 0));
  EXPECT_EQ(4.0, TPoint2DUtils::GetCoor({3, 4}, 1));
  for (const int Bad : {-1, 2}) {
    test::ExpectRaises<EParamError>([&] { TPoint2DUtils::GetCoor({}, Bad); },
                                    "[Error] TPoint2DUtils.GetCoor: 参数错误");
  }
}

TEST(TPoint2DUtils, ComparersAreExactAndLexicographic) {
  const TPoint2D Near(std::nextafter(1.0, 2.0), 0);
  EXPECT_EQ(-1, TPoint2DUtils::CompareByXY({1, 9}, Near));
  EXPECT_EQ(1, TPoint2DUtils::CompareByYX({1, 9}, Near));
  EXPECT_EQ(-1, TPoint2DUtils::CompareByXY({1, 2}, {1, 3}));
  EXPECT_EQ(-1, TPoint2DUtils::CompareByYX({1, 2}, {2, 2}));
  EXPECT_EQ(0, TPoint2DUtils::CompareByXY({0.0, 2}, {-0.0, 2}));
}

TEST(TPoint2DUtils, QuadrantsOwnTheirFirstHalfAxis) {
  const TPoint2D Axis[] = {{2, 0}, {0, 2}, {-2, 0}, {0, -2}};
  const TPoint2D Inside[] = {{1, 3}, {-1, 3}, {-1, -3}, {1, -3}};
  for (int I = 0; I < 4; ++I) {
    EXPECT_EQ(I + 1, TPoint2DUtils::Quadrant(Axis[I]));
    EXPECT_EQ(I + 1, TPoint2DUtils::Quadrant(Inside[I]));
  }
  EXPECT_EQ(4, TPoint2DUtils::Quadrant({2, -1e-9}));  // exact signs
  EXPECT_EQ(0, TPoint2DUtils::Quadrant({-1, NAN}));
  EXPECT_EQ(2, TPoint2DUtils::Quadrant({-1e-9, 2}));
  EXPECT_EQ(1, TPoint2DUtils::Quadrant({1e-9, 2}));
  EXPECT_EQ(2, TPoint2DUtils::Quadrant({-2, 1e-9}));
  EXPECT_EQ(3, TPoint2DUtils::Quadrant({-1e-9, -2}));
  EXPECT_EQ(0, TPoint2DUtils::Quadrant({0, 0}));
  EXPECT_EQ(0, TPoint2DUtils::Quadrant({std::nan(""), 1}));
}

TEST(TPoint2DUtils, MirrorKeepsTheAxisAndIsItsOwnInverse) {
  std::mt19937 Random(8);
  for (int Round = 0; Round < 200; ++Round) {
    const TVLine2D Axis(test::RandomPoint(Random, -9, 9), test::RandomPoint(Random, -9, 9));
    const TPoint2D P = test::RandomPoint(Random, -9, 9);
    const TPoint2D Image = TPoint2DUtils::Mirror(P, Axis);
    EXPECT_TRUE(TPoint2DUtils::Mirror(Image, Axis).Equals(P, 1e-11));
    EXPECT_NEAR(0.0, Axis.LineDistanceTo((P + Image) * 0.5), 1e-11);
    EXPECT_NEAR(P.DistanceTo(Axis.EndPoint), Image.DistanceTo(Axis.EndPoint), 1e-11);
  }
  EXPECT_EQ(TPoint2D(3, 4), TPoint2DUtils::Mirror({3, 4}, {{1, 1}, {1, 1}}));
  EXPECT_EQ(TPoint2D(-3, 4), TPoint2DUtils::YMirror({3, 4}));
}

TEST(TPoint2DUtils, StretchKeepsTheDirection) {
  EXPECT_TRUE(TPoint2DUtils::Stretch({3, 4}, 10).Equals({6, 8}, 1e-14));
  EXPECT_TRUE(TPoint2DUtils::Stretch({3, 4}, -5).Equals({-3, -4}, 1e-14));
  EXPECT_EQ(TPoint2D::FZero, TPoint2DUtils::Stretch({0, 0}, 10));
}

TEST(TPoint2DUtils, InCenterIsEquallyFarFromTheSides) {
  std::mt19937 Random(9);
  for (int Round = 0; Round < 200; ++Round) {
    const TPoint2D A = test::RandomPoint(Random, 990, 1010);
    const TPoint2D B = test::RandomPoint(Random, 990, 1010);
    const TPoint2D C = test::RandomPoint(Random, 990, 1010);
    const TPoint2D Centre = TPoint2DUtils::InCenter(A, B, C);
    const double Radius = TVLine2D(A, B).SegmentDistanceTo(Centre);
    EXPECT_NEAR(Radius, TVLine2D(B, C).SegmentDistanceTo(Centre), 1e-9);
    EXPECT_NEAR(Radius, TVLine2D(C, A).SegmentDistanceTo(Centre), 1e-9);
  }
  EXPECT_EQ(TPoint2D(2, 3), TPoint2DUtils::InCenter({2, 3}, {2, 3}, {2, 3}));
}

TEST(TPoint2DUtils, AreaAndSideHaveTheSignOfTheTurn) {
  EXPECT_EQ(12.0, TPoint2DUtils::IsLeft({1, 1}, {5, 1}, {2, 4}));
  EXPECT_EQ(6.0, TPoint2DUtils::TriangleArea({1, 1}, {5, 1}, {2, 4}, false));
  EXPECT_EQ(-6.0, TPoint2DUtils::TriangleArea({1, 1}, {2, 4}, {5, 1}, false));
  EXPECT_EQ(6.0, TPoint2DUtils::TriangleArea({1, 1}, {2, 4}, {5, 1}, true));
  EXPECT_DOUBLE_EQ(kPi / 2, TPoint2DUtils::AbsAngle({0, 2}, {3, 0}));
}

constexpr TDir kDirs[] = {drLeft,     drRight,  drDown,      drUp,
                          drLeftDown, drLeftUp, drRightDown, drRightUp};

TEST(TDirUtils, WindowCodesAndDirectionsMapOneToOne) {
  for (int Code = 1; Code <= 8; ++Code) {
    EXPECT_EQ(Code, TDirUtils::DirToWindowsDir(TDirUtils::WindowsDirToDir(Code)));
  }
  EXPECT_EQ(drLeftUp, TDirUtils::WindowsDirToDir(4));
  EXPECT_EQ(drDown, TDirUtils::WindowsDirToDir(6));
}

TEST(TDirUtils, TurnsAgreeWithTheVectors) {
  for (const TDir Dir : kDirs) {
    SCOPED_TRACE(static_cast<int>(Dir));
    const TPoint2D V = TDirUtils::DirToVec(Dir);
    EXPECT_EQ(-V, TDirUtils::DirToVec(TDirUtils::Reverse(Dir)));
    EXPECT_EQ(V.RotateCcw90(), TDirUtils::DirToVec(TDirUtils::RotateN90Degrees(Dir, 1)));
    EXPECT_EQ(V.RotateCw90(), TDirUtils::DirToVec(TDirUtils::RotateN90Degrees(Dir, -1)));
    EXPECT_EQ(Dir, TDirUtils::RotateN90Degrees(Dir, -2147483647 - 1));
    EXPECT_EQ(TDirUtils::Reverse(Dir), TDirUtils::RotateN90Degrees(Dir, 6));
  }
  EXPECT_EQ(TPoint2D(-1, 1), TDirUtils::DirToVec(drLeftUp));
}

TEST(TDirUtils, RefusesWhatIsNoDirection) {
  for (const int Bad : {-1, 0, 9}) {
    test::ExpectRaises([&] { TDirUtils::WindowsDirToDir(Bad); },
                       "[Error] TDirUtils.WindowsDirToDir: 参数错误");
  }
  for (const TDir Bad : {drAny, static_cast<TDir>(9)}) {
    test::ExpectRaises([&] { TDirUtils::DirToWindowsDir(Bad); },
                       "[Error] TDirUtils.DirToWindowsDir: 参数错误");
    test::ExpectRaises([&] { TDirUtils::DirToVec(Bad); }, "[Error] TDirUtils.DirToVec: 参数错误");
    test::ExpectRaises([&] { TDirUtils::Reverse(Bad); }, "[Error] TDirUtils.Reverse: 参数错误");
    test::ExpectRaises([&] { TDirUtils::RotateN90Degrees(Bad, 0); },
                       "[Error] TDirUtils.RotateN90Degrees: 参数错误");
  }
}

TEST(TDirUtils, RemainderHasTheSignOfTheDivisor) {
  EXPECT_EQ(3, TDirUtils::ModWithDivisor(-1, 4));
  EXPECT_EQ(0, TDirUtils::ModWithDivisor(-4, 4));
  EXPECT_EQ(-1, TDirUtils::ModWithDivisor(3, -4));
  EXPECT_EQ(0, TDirUtils::ModWithDivisor(5, 0));
  EXPECT_EQ(0, TDirUtils::ModWithDivisor(-2147483647 - 1, -1));
}

}  // namespace
}  // namespace tarnalgo
