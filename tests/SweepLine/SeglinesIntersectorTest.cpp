#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "geometryAlgo/SweepLine.h"
#include "geometryAlgo/SweepLine/OrderSearch.h"
#include "geometryAlgo/SweepLine/SegmentEnds.h"
#include "geometryAlgo/SweepLine/SideOfLine.h"
#include "geometryAlgo/VedaType/Point.h"
#include "tests/support/Generate.h"
#include "tests/support/IntegerSegments.h"

namespace tarnalgo {
namespace {

using test::ExactPairs;
using test::kReach;
using test::kUnit;
using test::TIntegerSegment;
using test::TPairs;
using test::TWide;
using TEvent = TSeglinesIntersector::TEvent;

TPairs PairsOf(const std::vector<TSeglineIntersectInfo>& Infos) {
  TPairs Result;
  for (const auto& Info : Infos) Result.emplace_back(Info.LowerSegment, Info.HigherSegment);
  std::sort(Result.begin(), Result.end());
  return Result;
}

std::vector<TSeglineIntersectInfo> Sweep(const std::vector<TVLine2D>& Lines, double Eps = 1e-6) {
  return TSeglinesIntersector::GetIntersectInfosBySweepline(Lines, Eps, 1e-6);
}

/// What `TOrderSearch` proposes.
TPairs PairsInOrder(std::vector<TVLine2D> Lines, double Reach) {
  for (TVLine2D& Line : Lines) {
    if (TPoint2DUtils::CompareByXY(Line.StartPoint, Line.EndPoint) > 0) {
      Line = Line.ReverseDirection();
    }
  }
  TPairs Result;
  TOrderSearch::VisitPairs(Lines, Reach,
                           [&](int A, int B) { Result.push_back(std::minmax(A, B)); });
  std::sort(Result.begin(), Result.end());
  return Result;
}

/// Draws a coordinate, a multiple of a step, plus noise.
struct TFamily {
  const char* Name;
  int Segments;
  int Steps;          // coordinates are 0 .. Steps times the step
  std::int64_t Step;  // in units of 6e-8
  int Noise;          // in units
  int Length;         // of a segment in steps, 0 for any
};

std::vector<TIntegerSegment> Generate(const TFamily& Family, std::mt19937& Random) {
  const auto Noisy = [&](int Steps) {
    return Steps * Family.Step + test::RandomInt(Random, -Family.Noise, Family.Noise);
  };
  std::vector<TIntegerSegment> Result;
  for (int I = 0; I < Family.Segments; ++I) {
    const int X = test::RandomInt(Random, 0, Family.Steps);
    const int Y = test::RandomInt(Random, 0, Family.Steps);
    const auto Far = [&](int From) {
      if (Family.Length == 0) return test::RandomInt(Random, 0, Family.Steps);
      return From + test::RandomInt(Random, -Family.Length, Family.Length);
    };
    const int Kind = test::RandomInt(Random, 0, 5);  // some upright, some flat, some points
    const int X2 = Kind == 0 || Kind == 2 ? X : Far(X);
    const int Y2 = Kind == 1 || Kind == 2 ? Y : Far(Y);
    Result.push_back({Noisy(X), Noisy(Y), Noisy(X2), Noisy(Y2)});
  }
  return Result;
}

TEST(TSeglinesIntersector, FindsThePairsOfTheExactOracleEachOnce) {
  constexpr std::int64_t kOne = std::int64_t{1} << 24;
  const TFamily Families[] = {
      {"ordinary", 60, 1000000, 1000, 0, 0},
      {"short", 120, 1000000, 1000, 0, 60000},
      {"small grid, all kinds of overlap and T-junctions", 40, 4, kOne, 0, 0},
      {"grid with rounding noise", 40, 4, kOne, 2, 0},
      {"grid with noise around the tolerance", 40, 4, kOne, 20, 0},
      {"everything at the scale of the tolerance", 30, 12, 7, 1, 0},
      {"long and nearly parallel", 40, 2, kOne * 1000, 30, 0},
      {"coordinates near 1e8", 40, 4, kOne * 25000000, 20, 0},
  };
  std::mt19937 Random(20240611);
  for (const TFamily& Family : Families) {
    SCOPED_TRACE(Family.Name);
    for (int Round = 0; Round < 40; ++Round) {
      SCOPED_TRACE(Round);
      const auto Segments = Generate(Family, Random);
      std::vector<TVLine2D> Lines;
      for (const auto& Segment : Segments) Lines.push_back(Segment.Line());
      const TPairs Exact = ExactPairs(Segments);
      ASSERT_EQ(Exact, PairsOf(Sweep(Lines, kReach * kUnit)));
      const TPairs Candidates = PairsInOrder(Lines, kReach * kUnit);
      ASSERT_TRUE(std::includes(Candidates.begin(), Candidates.end(), Exact.begin(), Exact.end()));
    }
  }
}

// Long lines whose boxes overlap and of which few meet: too many tests by boxes, so that the search
// in exact order takes over. The steep ones stand apart, or they would cross too many flat ones.
TEST(TSeglinesIntersector, FindsThePairsOfAHatch) {
  std::mt19937 Random(5);
  const auto Noise = [&](int Most) { return test::RandomInt(Random, -Most, Most); };
  for (const int Spacing : {10, 5000}) {
    SCOPED_TRACE(Spacing);
    std::vector<TIntegerSegment> Segments;
    std::vector<TVLine2D> Lines;
    for (int I = 0; I < 800; ++I) {
      const std::int64_t X = Noise(5000000);
      const std::int64_t Y = X / 2 + I * Spacing + Noise(8);
      const std::int64_t Run = 400000000 + Noise(5000000);
      TIntegerSegment Flat{X, Y, X + Run, Y + Run / 2 + Noise(2 * Spacing)};
      if (I % 9 == 8) {  // goes on where the one before ends, or not quite
        const TIntegerSegment& Last = Segments.back();
        Flat = {Last.X2 + Noise(20), Last.Y2, Last.X2 + Run, Last.Y2 + Run / 2};
      }
      const TIntegerSegment Steep{Flat.Y1, -Flat.X1 - 20000000, Flat.Y2, -Flat.X2 - 20000000};
      Segments.push_back(I % 3 > 0 ? Flat : Steep);
      Lines.push_back(Segments.back().Line());
    }
    ASSERT_EQ(ExactPairs(Segments), PairsOf(Sweep(Lines, kReach * kUnit)));
  }
}

// The point is 1 / √2 · 2^-40 off the line: products of 81 bits tell, extended precision does not.
TEST(TSeglinesIntersector, WithoutAToleranceTouchesAreExact) {
  const double N = std::ldexp(1.0, 40);
  const TVLine2D Line{{0, 0}, {N, N + 1}};
  EXPECT_TRUE(Sweep({Line, {{N - 1, N}, {N - 1, 2 * N}}}, 0.0).empty());
  EXPECT_EQ(1u, Sweep({Line, {{N - 1, N}, {N - 1, 0}}}, 0.0).size());
  EXPECT_EQ(1u, Sweep({Line, {{N - 1, N}, {N - 1, 2 * N}}}, std::ldexp(1.0, -40)).size());
}

// Points rounded to integers near a long line, where most of the terms cancel.
TEST(SideOfLine, AgreesWithIntegersAtEveryScale) {
  std::mt19937 Random(12);
  for (int Round = 0; Round < 3000; ++Round) {
    const int Reach = 1 << test::RandomInt(Random, 1, 30);
    const bool IsLong = Round % 2 == 1;  // and not so near: the area has more than 53 bits
    const auto Near = [&](int Most) { return test::RandomGridPoint(Random, -Most, Most); };
    const TPoint2D A = Near(Reach) * std::ldexp(1.0, 16);
    const TPoint2D B = A + Near(Reach) + (IsLong ? Near(Reach) * std::ldexp(1.0, 16) : TPoint2D());
    const TPoint2D C =
        (A + (B - A) * test::RandomDouble(Random, -1.0, 1.0) * (IsLong ? 10 : 1e5)).RoundTo(0) +
        Near(IsLong ? Reach >> 14 : 0);
    const auto Whole = [](double V) { return static_cast<TWide>(V); };
    const TWide Twice = (Whole(B.X) - Whole(A.X)) * (Whole(C.Y) - Whole(A.Y)) -
                        (Whole(B.Y) - Whole(A.Y)) * (Whole(C.X) - Whole(A.X));
    const int Sign = Twice > 0 ? 1 : (Twice < 0 ? -1 : 0);
    for (const double Scale : {1.0, std::ldexp(1.0, -90)}) {
      ASSERT_EQ(Sign, SideOfLine(A * Scale, B * Scale, C * Scale)) << Round;
      const double Side = RoundedSide(A * Scale, B * Scale, C * Scale);
      ASSERT_NEAR(1.0, Sign == 0 ? Side + 1.0 : Side / (static_cast<double>(Twice) * Scale * Scale),
                  std::ldexp(1.0, -28))
          << Round;
    }
  }
}

// The area is 0.3 · 2^-200: of the sum nothing is left but what was rounded off below it.
TEST(SideOfLine, TermsThatCancelLeaveTheSmallestOne) {
  EXPECT_EQ(1, SideOfLine({0.1, 0.0}, {0x1p-200, 0.3}, {0.0, 0.3}));
  EXPECT_EQ(-1, SideOfLine({0.1, 0.0}, {-0x1p-200, 0.3}, {0.0, 0.3}));
}

TEST(SortSegmentEnds, SortsByPlaceThenById) {
  std::mt19937 Random(13);
  for (int Round = 0; Round < 300; ++Round) {
    std::vector<TSegmentEnd> Ends;
    for (int Count = test::RandomInt(Random, 0, 60); Count > 0; --Count) {
      Ends.push_back({test::RandomGridPoint(Random, 0, 1 + Round % 9), Count});
    }
    SortSegmentEnds(Ends);
    for (std::size_t I = 1; I < Ends.size(); ++I) {
      const auto Key = [&](std::size_t At) {
        return std::tuple(Ends[At].P.X, Ends[At].P.Y, Ends[At].Id);
      };
      ASSERT_LT(Key(I - 1), Key(I)) << Round;
    }
  }
}

TEST(TSeglinesIntersector, LongLinesSideBySideCrossWithinBoth) {
  const double N = std::ldexp(1.0, 40);
  const auto Infos =
      Sweep({{{131, 95}, {N + 131, -N / 2 + 96}}, {{0, 160}, {N + 1, -N / 2 + 161}}}, 0.0);
  ASSERT_EQ(1u, Infos.size());
  EXPECT_NEAR(N - 259, Infos[0].FirstPoint.X, 1.0);  // not 131 past the end of the second
}

TEST(TSeglinesIntersector, RecordsPointStretchAndParameters) {
  const auto Infos = Sweep({{{10, 0}, {0, 0}}, {{4, 0}, {20, 0}}, {{5, -3}, {5, 9}}});
  ASSERT_EQ((TPairs{{0, 1}, {0, 2}, {1, 2}}), PairsOf(Infos));
  for (const auto& Info : Infos) {
    if (Info.HigherSegment == 2) {
      EXPECT_FALSE(Info.Flag);
      EXPECT_EQ(TPoint2D(5, 0), Info.FirstPoint);
      EXPECT_EQ(TPoint2D(5, 0), Info.SecondPoint);
      EXPECT_DOUBLE_EQ(0.25, Info.HigherParam1);
      continue;
    }
    EXPECT_TRUE(Info.Flag);
    EXPECT_EQ(TPoint2D(4, 0), Info.FirstPoint);
    EXPECT_EQ(TPoint2D(10, 0), Info.SecondPoint);
    EXPECT_DOUBLE_EQ(0.4, Info.LowerParam1);  // counted from the left end
    EXPECT_DOUBLE_EQ(1.0, Info.LowerParam2);
    EXPECT_DOUBLE_EQ(0.0, Info.HigherParam1);
    EXPECT_DOUBLE_EQ(0.375, Info.HigherParam2);
  }
}

TEST(TSeglineIntersectInfo, ListsTheLowerSegmentFirstWithItsParameters) {
  const TSeglineIntersectInfo Info(true, {1, 2}, {3, 4}, 7, 5, 0.1, 0.2, 0.3, 0.4);
  EXPECT_EQ(5, Info.LowerSegment);
  EXPECT_EQ(7, Info.HigherSegment);
  EXPECT_EQ(0.2, Info.LowerParam1);
  EXPECT_EQ(0.1, Info.HigherParam1);
  EXPECT_EQ(0.4, Info.LowerParam2);
  EXPECT_EQ(0.3, Info.HigherParam2);
}

TEST(TSeglinesIntersector, EventsComeByPlaceThenKindThenSegments) {
  const TEvent Ordered[] = {
      {{0, 5}, 9, 9, 2, nullptr, {}}, {{1, 0}, 9, 9, 2, nullptr, {}},
      {{1, 1}, 3, 0, 0, nullptr, {}}, {{1, 1}, 4, 0, 0, nullptr, {}},
      {{1, 1}, 1, 2, 1, nullptr, {}}, {{1, 1}, 1, 3, 1, nullptr, {}},
      {{1, 1}, 0, 0, 2, nullptr, {}},
  };
  for (const TEvent& A : Ordered) {
    for (const TEvent& B : Ordered) {
      EXPECT_EQ(&A < &B ? -1 : (&A > &B ? 1 : 0), TEvent::Compare(A, B));
    }
  }
}

TEST(TSeglinesIntersector, FindsEveryPairOfManySegmentsThroughOnePoint) {
  std::vector<TVLine2D> Lines;
  for (int I = 0; I < 300; ++I) {
    const TPoint2D V = TPoint2D(7.0, 0.0).RotateBy(I * kPi / 300);
    Lines.emplace_back(TPoint2D(1, 2) - V, TPoint2D(1, 2) + V * 0.5);
  }
  const auto Pairs = PairsOf(Sweep(Lines));
  EXPECT_EQ(300u * 299u / 2u, Pairs.size());
  EXPECT_EQ(Pairs.end(), std::adjacent_find(Pairs.begin(), Pairs.end()));
}

TEST(TSeglinesIntersector, ASecondCallFindsNothingLeft) {
  TSeglinesIntersector Sweeper({{{0, 0}, {2, 2}}, {{0, 2}, {2, 0}}}, 1e-6, 1e-6);
  EXPECT_EQ(1u, Sweeper.GetResult().size());
  EXPECT_TRUE(Sweeper.GetResult().empty());
  EXPECT_TRUE(Sweep({}).empty());
}

// Scaled down, the first is upright: it starts at its other end.
TEST(TSeglinesIntersector, SegmentsStartWhereScalingPutsTheirStart) {
  std::vector<TVLine2D> Lines = {{{0, 1e300}, {1e-300, 0}}, {{0, 95e298}, {1e300, 95e298}}};
  for (int I = 1; I < 9; ++I) Lines.push_back({{-1e300, I * 1e299}, {0, I * 1e299}});
  const auto Infos = Sweep(Lines, 0.0);
  ASSERT_EQ(9u, Infos.size());
  for (std::size_t I = 0; I < 8; ++I) EXPECT_EQ(static_cast<int>(I) + 2, Infos[I].HigherSegment);
}

TEST(TSeglinesIntersector, AnyInputTerminatesAndWhatIsNotFiniteMeetsNothing) {
  const double NaN = std::nan("");
  const double Inf = std::numeric_limits<double>::infinity();
  const std::vector<TVLine2D> Cross = {{{0, 0}, {2, 2}}, {{0, 2}, {2, 0}}};
  for (const double Odd : {NaN, Inf, -Inf}) {
    std::vector<TVLine2D> Lines = Cross;
    Lines.push_back({{Odd, 0}, {1, 1}});
    Lines.push_back({{0, 0}, {1, Odd}});
    Lines.push_back({{5, 0}, {5, 1}});  // nor do they make others meet
    EXPECT_EQ((TPairs{{0, 1}}), PairsOf(Sweep(Lines)));
  }
  for (const double Scale : {1e300, 1e-300, 5e307, 5e-324}) {
    SCOPED_TRACE(Scale);
    std::vector<TVLine2D> Lines;
    for (const TVLine2D& Line : Cross) {
      Lines.emplace_back(Line.StartPoint * Scale, Line.EndPoint * Scale);
    }
    const auto Infos = Sweep(Lines, 0.0);
    ASSERT_EQ(1u, Infos.size());
    EXPECT_EQ(TPoint2D(Scale, Scale), Infos[0].FirstPoint);
  }
  for (const double Eps : {NaN, -1.0, 0.0}) EXPECT_EQ(1u, Sweep(Cross, Eps).size());
  EXPECT_EQ(1u, Sweep({{{0, 0}, {1, 0}}, {{1e9, 1e9}, {2e9, 0}}}, Inf).size());
  std::mt19937 Random(7);
  for (int Round = 0; Round < 300; ++Round) {
    std::vector<TVLine2D> Lines(8);
    const double Values[] = {0, -0.0, 1, -1, NaN, Inf, 1e300, -1.7e308, 1e-300, 5e-324, 1e9, 1e-7};
    const auto Value = [&] { return Values[test::RandomInt(Random, 0, 11)]; };
    for (TVLine2D& Line : Lines) Line = {{Value(), Value()}, {Value(), Value()}};
    EXPECT_LE(Sweep(Lines, Value()).size(), 28u);
  }
}

}  // namespace
}  // namespace tarnalgo
