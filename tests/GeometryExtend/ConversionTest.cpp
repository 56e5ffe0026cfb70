#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <polyclipping/clipper.hpp>

#include "geometryAlgo/GeometryExtend.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(IntPointConversion, RoundsHalvesToEvenAndHoldsWhatDoesNotFit) {
  const struct {
    double Value;
    double Scale;
    std::int64_t Expected;
  } Cases[] = {{2.5, 1, 2},
               {3.5, 1, 4},
               {-2.5, 1, -2},
               {0.49999999999999994, 1, 0},
               {4503599627370497.0, 1, 4503599627370497},
               {9007199254740993.0, 3, 27021597764222976},
               {1e300, 1, ClipperLib::hiRange},
               {-kInfinity, 1, -ClipperLib::hiRange},
               {kInfinity, 0, 0},
               {std::nan(""), 1, 0}};
  for (const auto& Case : Cases) {
    const TIntPoint P = TPathUtils::CreateIntPoint(TPoint2D(Case.Value, -Case.Value), Case.Scale);
    EXPECT_EQ(TIntPoint(Case.Expected, -Case.Expected), P) << Case.Value << " x " << Case.Scale;
  }
}

// Quotients of halves by the scale, and their neighbours: their double products often lie on a half
// where the extended ones do not.
TEST(IntPointConversion, GivesTheIntegersOfTheExtendedProduct) {
  std::mt19937 Random(5);
  const double Scales[] = {100000.0, 1000000.0, 1.0, 0.1, 3.0, 1e5 / 3.0, 25.4, 1e-7};
  int Decided = 0;  // rounding the product to double first would have given another integer
  for (int I = 0; I < 200000; ++I) {
    const double Scale = Scales[I % 8];
    const double Size = std::ldexp(1.0, test::RandomInt(Random, 0, 56));
    double Value = (std::floor(test::RandomDouble(Random, -Size, Size)) + 0.5 * (I % 3)) / Scale;
    for (int Step = test::RandomInt(Random, -2, 2); Step != 0; Step += Step < 0 ? 1 : -1) {
      Value = std::nextafter(Value, Step < 0 ? -kInfinity : kInfinity);
    }
    const long long Expected = std::llrintl(static_cast<long double>(Value) * Scale);
    const TPoint2D Points[] = {{0, 1}, {0, Value}};  // a run of points goes another way than one
    TIntPoint Run[2];
    ScaleIntPoints(Points, 2, Scale, Run);
    ASSERT_EQ(Expected, Run[1].Y) << Value << " x " << Scale;
    ASSERT_EQ(Run[1], ScaledIntPoint(Points[1], Scale)) << Value << " x " << Scale;
    if (std::llrint(Value * Scale) != Expected) ++Decided;
  }
  EXPECT_GT(Decided, 1000);
}

TEST(IntPointConversion, DividesOnTheWayBack) {
  const TPath Path{{150000, -1}, {3, 0}};
  EXPECT_THAT(TPathUtils::CreatePoint2DList(Path, 100000.0),
              ElementsAre(TPoint2D(1.5, -1 / 100000.0), TPoint2D(3 / 100000.0, 0)));
  TVPolyline2D Polyline{{9, 9}};
  TPathUtils::AssignToPolyline(Path, Polyline, 3.0);
  EXPECT_THAT(Polyline.Points(), ElementsAre(TPoint2D(50000, -1 / 3.0), TPoint2D(1, 0)));
  EXPECT_EQ(Path, TPathUtils::CreatePath(Polyline, 3.0));
  EXPECT_EQ(2, TPathUtils::CreatePolylines({Path, {}}, 1.0).Count());
}

TEST(CreatePath, TakesBoxesCounterClockwiseFromTheTopLeft) {
  const TPath Path = TPathUtils::CreatePath(TVRect2D({0, 1}, {2, 5}), 10.0);
  EXPECT_THAT(
      Path, ElementsAre(TIntPoint(0, 50), TIntPoint(0, 10), TIntPoint(20, 10), TIntPoint(20, 50)));
  EXPECT_FALSE(TPathUtils::GetIsClockwise(Path));
}

TEST(CreatePath, MakesNothingOfNothing) {
  EXPECT_TRUE(TPathUtils::CreatePath(static_cast<const TVPolyline2D*>(nullptr), 1.0).empty());
  EXPECT_TRUE(TPathUtils::CreatePaths(static_cast<const TVPolyline2DList*>(nullptr), 1.0).empty());
}

}  // namespace
}  // namespace tarnalgo
