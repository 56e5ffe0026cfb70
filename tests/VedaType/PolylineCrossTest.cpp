#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <polyclipping/clipper.hpp>
#include <random>
#include <set>

#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/Generate.h"
#include "tests/support/GridGeometry.h"

namespace tarnalgo {
namespace {

using TPoints = std::vector<TPoint2D>;
using TLines = std::vector<TVLine2D>;

const TVPolyline2D kSquare(TVRect2D({0, 0}, {10, 10}));

TVPolyline2D RandomGridPolyline(std::mt19937& Random, int Count, int Size) {
  TVPolyline2D Result;
  for (int I = 0; I < Count; ++I) Result.Add(test::RandomGridPoint(Random, 0, Size));
  return Result;
}

/// `Lines` strokes of the given length, `Step` apart, cut back and forth in one go.
TVPolyline2D Hatch(int Lines, double Length, double Step) {
  TVPolyline2D Result;
  for (int I = 0; I < Lines; ++I) {
    Result.Add({I % 2 == 0 ? 0.0 : Length, I * Step});
    Result.Add({I % 2 == 0 ? Length : 0.0, I * Step});
  }
  return Result;
}

double Length(const std::vector<test::TGridSegment>& Stretches) {
  double Sum = 0.0;
  for (const auto& S : Stretches) {
    Sum += std::hypot(static_cast<double>(S.A.X - S.B.X), static_cast<double>(S.A.Y - S.B.Y));
  }
  return Sum;
}

TEST(TVPolyline2DCross, AgreesWithExactArithmeticOnAGrid) {
  std::mt19937 Random(4);
  for (int Round = 0; Round < 600; ++Round) {
    SCOPED_TRACE(testing::Message() << "round " << Round);
    // Long ones go through the boxes, short ones give the special cases often.
    const int Most = Round % 10 == 0 ? 120 : 6;
    const int Size = test::RandomInt(Random, 2, 9);
    const TVPolyline2D A = RandomGridPolyline(Random, test::RandomInt(Random, 0, Most), Size);
    const TVPolyline2D B = RandomGridPolyline(Random, test::RandomInt(Random, 0, Most), Size);
    const test::TGridCommon Expected(A.Points(), B.Points());

    TPoints Points;
    TLines Lines;
    const bool Found = A.CrossWith(B, Points, Lines);
    EXPECT_EQ(!Expected.Places.empty() || !Expected.Stretches.empty(), Found);
    EXPECT_EQ(Found, A.IsCrossWith(B));
    EXPECT_EQ(Expected.Places.size(), Points.size());
    for (const auto& Place : Expected.Places) {
      const TPoint2D P = Place.Point();
      EXPECT_EQ(1, std::count_if(Points.begin(), Points.end(),
                                 [&](const TPoint2D& Q) { return P.Equals(Q, 1e-9); }));
    }
    EXPECT_EQ(Expected.Stretches.size(), Lines.size());
    double Sum = 0.0;
    for (const TVLine2D& Line : Lines) Sum += Line.Length();
    EXPECT_NEAR(Length(Expected.Stretches), Sum, 1e-9);
  }
}

TEST(TVPolyline2DCross, ReportsInTheOrderOfTheFirstPolyline) {
  std::mt19937 Random(5);
  for (int Round = 0; Round < 50; ++Round) {
    TVPolyline2D A;  // monotone, so that a place has one parameter
    for (int I = 0; I < 60; ++I) A.Add({I * 1.0, test::RandomDouble(Random, 0, 20)});
    TVPolyline2D B;
    for (int I = 0; I < 60; ++I) B.Add(test::RandomPoint(Random, 0, 60));
    TPoints Points{{-7, -7}};  // the lists are appended to
    TLines Lines;
    A.CrossWith(B, Points, Lines);
    EXPECT_EQ(TPoint2D(-7, -7), Points.front());
    EXPECT_TRUE(std::is_sorted(Points.begin() + 1, Points.end(),
                               [](const TPoint2D& P, const TPoint2D& Q) { return P.X < Q.X; }));
    for (std::size_t I = 1; I < Points.size(); ++I) {
      EXPECT_LE(A.DistTo(Points[I]), 1e-9);
      EXPECT_LE(B.DistTo(Points[I]), 1e-9);
    }
    TPoint2D Last;
    ASSERT_EQ(Points.size() > 1, A.CrossWithLastPt(B, Last));
    if (Points.size() > 1) {
      EXPECT_EQ(Points.back(), Last);
    }
    TPoint2D Nearest;
    ASSERT_EQ(Points.size() > 1, A.NearestCrossPoint(B, {30, 10}, Nearest));
    for (std::size_t I = 1; I < Points.size(); ++I) {
      EXPECT_LE(Nearest.DistanceTo({30, 10}), Points[I].DistanceTo({30, 10}));
    }
    EXPECT_FALSE(A.NearestCrossPoint(TVLine2D({-999, 0}, {-999, 1}), {30, 10}, Nearest));
  }
}

TEST(TVPolyline2DCross, KnowsSharedVerticesEdgesAndNearMisses) {
  const struct {
    const char* Name;
    TVPolyline2D Other;
    TPoints Points;
    int LineCount;
  } Cases[] = {
      {"through two sides", {{-5, 5}, {15, 5}}, {{0, 5}, {10, 5}}, 0},
      {"through two corners", {{-5, -5}, {15, 15}}, {{10, 10}, {0, 0}}, 0},
      {"a corner from outside", {{10, 20}, {10 + 5e-7, 10}, {20, 20}}, {{10, 10}}, 0},
      {"a corner missed", {{10, 20}, {10 + 2e-6, 10}, {20, 20}}, {}, 0},
      {"ends on a side", {{5, 5}, {10, 7}}, {{10, 7}}, 0},
      {"along a side", {{10, 2}, {10, 20}}, {}, 1},
      {"along two sides", {{10, 2}, {10, 10}, {3, 10}, {3, 15}}, {}, 2},
      {"inside", {{2, 2}, {8, 8}}, {}, 0},
      {"a single point on it", {{10, 3}}, {{10, 3}}, 0},
      {"nothing", {}, {}, 0},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TPoints Points;
    TLines Lines;
    EXPECT_EQ(!Case.Points.empty() || Case.LineCount > 0,
              kSquare.CrossWith(Case.Other, Points, Lines));
    EXPECT_EQ(Case.Points, Points);
    EXPECT_EQ(Case.LineCount, static_cast<int>(Lines.size()));
  }
  TPoints Points;
  TLines Lines;
  EXPECT_TRUE(kSquare.CrossWith(TVLine2D({-5, 10}, {5, 10}), Points, Lines));
  ASSERT_EQ(1U, Lines.size());  // directed as the square, counter-clockwise
  EXPECT_EQ(TPoint2D(5, 10), Lines[0].StartPoint);
  EXPECT_EQ(TPoint2D(0, 10), Lines[0].EndPoint);
}

TEST(TVPolyline2DCross, CountsTheCrossingsOfTwoHatchesAtAnyAngle) {
  for (const double Angle : {0.0, 0.3, kPi / 4, 1.3}) {
    TVPolyline2D Across = Hatch(60, 60.0, 1.0);
    TVPolyline2D Along = Hatch(60, 60.0, 1.0);
    Along.RotateBy90();
    Along.Translate({59.5, 0.5});
    Across.Rotate(Angle);
    Along.Rotate(Angle);
    EXPECT_FALSE(Across.IsSelfIntersect());
    TPoints Points;
    TLines Lines;
    Across.CrossWith(Along, Points, Lines);
    // 60 x 60 strokes, less those that end short, as counted pair by pair.
    int Expected = 0;
    for (int I = 0; I + 1 < Across.Count(); ++I) {
      for (int J = 0; J + 1 < Along.Count(); ++J) {
        TPoint2D P;
        Expected += Across.Line(I).CrossWithSegLine(Along.Line(J), P) ? 1 : 0;
      }
    }
    EXPECT_GE(Expected, 59 * 59);
    EXPECT_EQ(Expected, static_cast<int>(Points.size()));
  }
}

TEST(TVPolyline2DCross, FindsSelfIntersectionsAsExactArithmeticDoes) {
  std::mt19937 Random(6);
  int Found = 0;
  for (int Round = 0; Round < 1500; ++Round) {
    TVPolyline2D A = RandomGridPolyline(Random, test::RandomInt(Random, 1, 7), 6);
    if (Round % 2 == 0) A.Add(A.First());
    const bool Expected = test::IsSelfIntersect(A.Points());
    EXPECT_EQ(Expected, A.IsSelfIntersect()) << "round " << Round << ": " << A.ToString();
    Found += Expected ? 1 : 0;
  }
  EXPECT_GT(Found, 300);
  EXPECT_LT(Found, 1200);
}

TEST(TVPolyline2DCross, ShortEdgesAreNoSelfIntersection) {
  EXPECT_FALSE(
      (TVPolyline2D{{0, 0}, {5, 0}, {5 + 5e-7, 0}, {5 + 5e-7, 5e-7}, {5, 5}}).IsSelfIntersect());
  EXPECT_TRUE((TVPolyline2D{{0, 0}, {5, 0}, {3, 0}}).IsSelfIntersect());  // back over itself
  EXPECT_FALSE(kSquare.IsSelfIntersect());
  EXPECT_FALSE(TVPolyline2D().IsSelfIntersect());
  EXPECT_FALSE((TVPolyline2D{{1, 1}, {1, 1}, {1, 1}}).IsSelfIntersect());
}

// The clipping library's own even-odd test on the same integers.
TEST(TVPolyline2DCross, TellsInsideFromOutsideAsTheClippingLibraryDoes) {
  std::mt19937 Random(7);
  for (int Round = 0; Round < 400; ++Round) {
    TVPolyline2D A = RandomGridPolyline(Random, test::RandomInt(Random, 3, 9), 8);
    const TPath Path = A.ToPath(1.0);
    if (Round % 2 == 0) A.Add(A.First());  // open or closed: the same ring
    for (int X = -1; X <= 9; ++X) {
      for (int Y = -1; Y <= 9; ++Y) {
        const int Code = ClipperLib::PointInPolygon(TIntPoint(X, Y), Path);
        const TShapeRelation Expected = Code == 0 ? srOut : (Code == 1 ? srIn : srOn);
        EXPECT_EQ(Expected, A.RelationWithPoint({X * 1.0, Y * 1.0}))
            << X << ", " << Y << " of " << A.ToString();
      }
    }
  }
}

TEST(TVPolyline2DCross, RelationChangesAtTheEdgesOfTheToleranceBand) {
  const struct {
    const char* Name;
    TPoint2D P;
    TShapeRelation Expected;
  } Cases[] = {
      {"in the band, outside", {10 + 9e-7, 5}, srOn},
      {"in the band, inside", {10 - 9e-7, 5}, srOn},
      {"beyond it, outside", {10 + 2e-6, 5}, srOut},
      {"beyond it, inside", {10 - 2e-6, 5}, srIn},
      {"level with a side", {20, 10}, srOut},
      {"level with a side, left", {-20, 0}, srOut},
      {"round the corner, not square", {10 + 9e-7, 10 + 9e-7}, srOut},
      {"not a number", {std::nan(""), 5}, srOut},
      {"far away", {1e300, -1e300}, srOut},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, kSquare.RelationWithPoint(Case.P));
    TVPolyline2D Turned = kSquare;
    Turned.RotateBy90();
    Turned.Negative();
    EXPECT_EQ(Case.Expected, Turned.RelationWithPoint(Case.P.RotateCcw90()));
  }
  const TVPolyline2D Huge(TVRect2D({-1e300, -1e300}, {1e300, 1e300}));
  EXPECT_EQ(srIn, Huge.RelationWithPoint({3, 4}));
  EXPECT_EQ(srIn, (TVPolyline2D{{-1e300, -1e300}, {1e300, -1e300}, {0, 1e300}})
                      .RelationWithPoint({1e299, -1e299}));
  EXPECT_EQ(srOut, TVPolyline2D().RelationWithPoint({0, 0}));
  EXPECT_EQ(srOn, TVPolyline2D(TPoint2D(1, 1)).RelationWithPoint({1, 1}));
}

TEST(TVPolyline2DCross, NamesTheRelationOfTwoRegions) {
  const struct {
    const char* Name;
    TVPolyline2D Other;
    TShapeRelation Expected;
    TShapeRelation Swapped;
  } Cases[] = {
      {"itself", kSquare, srEqual, srEqual},
      {"the same ring, other vertices and sense",
       {{0, 5}, {0, 10}, {5, 10}, {10, 10}, {10, 0}, {0, 0}},
       srEqual,
       srEqual},
      {"inside", TVPolyline2D(TVRect2D({2, 2}, {4, 4})), srContained, srContain},
      {"inside, sharing a side", TVPolyline2D(TVRect2D({0, 2}, {4, 4})), srContained, srContain},
      {"inside, corners on the sides", {{5, 0}, {10, 5}, {5, 10}, {0, 5}}, srContained, srContain},
      {"apart", TVPolyline2D(TVRect2D({12, 0}, {14, 4})), srDeviate, srDeviate},
      {"touching along a side", TVPolyline2D(TVRect2D({10, 2}, {14, 4})), srOn, srOn},
      {"touching along all of a side", TVPolyline2D(TVRect2D({10, 0}, {14, 10})), srOn, srOn},
      {"touching with a corner", {{10, 5}, {14, 4}, {14, 6}}, srOn, srOn},
      {"touching with both ends of a bay", {{0, 0}, {-5, 5}, {0, 10}, {-9, 5}}, srOn, srOn},
      {"short of touching", TVPolyline2D(TVRect2D({10 + 9e-7, 2}, {14, 4})), srOn, srOn},
      {"too short of it", TVPolyline2D(TVRect2D({10 + 2e-6, 2}, {14, 4})), srDeviate, srDeviate},
      {"a little past touching", TVPolyline2D(TVRect2D({10 - 9e-7, 2}, {14, 4})), srOn, srOn},
      {"past it", TVPolyline2D(TVRect2D({10 - 2e-6, 2}, {14, 4})), srCross, srCross},
      {"a line from outside that ends on a side", {{10, 5}, {15, 5}}, srOn, srOn},
      {"a line through", {{-5, 5}, {15, 5}}, srCross, srCross},
      {"crossing", TVPolyline2D(TVRect2D({5, 5}, {14, 14})), srCross, srCross},
      {"crossing like a plus", TVPolyline2D(TVRect2D({-5, 4}, {15, 6})), srCross, srCross},
      // The long edge leaves the side by no more than the tolerance up to its middle.
      {"inside, only the short edges clear of the sides",
       {{0, 0}, {9.9, 1.9e-6}, {9, 3}},
       srContained,
       srContain},
      {"a line inside", {{2, 2}, {4, 4}}, srContained, srContain},
      {"a line on a side", {{2, 0}, {4, 0}}, srOn, srContain},
      {"a point inside", {{2, 2}}, srContained, srContain},
      {"a point on a side", {{2, 0}}, srOn, srContain},
      {"nothing", {}, srDeviate, srDeviate},
      {"in a bay of the box only",
       {{20, 20}, {-3, 20}, {-3, -3}, {-2, -3}, {-2, 19}},
       srDeviate,
       srDeviate},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    EXPECT_EQ(Case.Expected, kSquare.RelationWith(Case.Other));
    EXPECT_EQ(Case.Swapped, Case.Other.RelationWith(kSquare));
  }
}

// Areas of boolean operations by the clipping library decide.
TEST(TVPolyline2DCross, RelationAgreesWithTheAreasOfBooleanOperations) {
  std::mt19937 Random(8);
  const auto CommonArea = [](const TPath& A, const TPath& B) {
    ClipperLib::Clipper Clipper;
    Clipper.AddPath(A, ClipperLib::ptSubject, true);
    Clipper.AddPath(B, ClipperLib::ptClip, true);
    TPaths Common;
    Clipper.Execute(ClipperLib::ctIntersection, Common);
    double Sum = 0.0;
    for (const TPath& Path : Common) Sum += ClipperLib::Area(Path);
    return std::abs(Sum) / 1e12;
  };
  std::map<TShapeRelation, int> Seen;
  for (int Round = 0; Round < 3000; ++Round) {
    const int Size = test::RandomInt(Random, 3, 6);
    const TVPolyline2D A = RandomGridPolyline(Random, 3, Size);
    const TVPolyline2D B = RandomGridPolyline(Random, 3, test::RandomInt(Random, 2, Size));
    if (A.Area() == 0.0 || B.Area() == 0.0) continue;
    const double Common = CommonArea(A.ToPath(1e6), B.ToPath(1e6));
    const bool HoldsA = Common > std::abs(A.Area()) - 1e-4;
    const bool HoldsB = Common > std::abs(B.Area()) - 1e-4;
    TVPolyline2D RingOfA = A;
    RingOfA.Add(A.First());
    TVPolyline2D RingOfB = B;
    RingOfB.Add(B.First());
    const test::TGridCommon Meetings(RingOfA.Points(), RingOfB.Points());
    const bool Meets = !Meetings.Places.empty() || !Meetings.Stretches.empty();
    TShapeRelation Expected = Meets ? srOn : srDeviate;
    if (Common > 1e-4) Expected = srCross;
    if (HoldsA && HoldsB) {
      Expected = srEqual;
    } else if (HoldsA || HoldsB) {
      Expected = HoldsA ? srContain : srContained;
    }
    EXPECT_EQ(Expected, A.RelationWith(B)) << A.ToString() << " and " << B.ToString();
    ++Seen[Expected];
  }
  for (const TShapeRelation Each : {srContain, srContained, srCross, srDeviate, srOn}) {
    EXPECT_GT(Seen[Each], 5);
  }
}

TEST(TVPolyline2DCross, TrimsEndsThatOvershoot) {
  const struct {
    const char* Name;
    TVPolyline2D Before;
    double MaxTail;
    TPoints After;  // empty: refused
  } Cases[] = {
      {"both ends overshoot",
       {{-1, 0}, {5, 0}, {5, 5}, {0, 5}, {0, -2}},
       10,
       {{0, 0}, {5, 0}, {5, 5}, {0, 5}, {0, 0}}},
      {"a tail too long", {{-1, 0}, {5, 0}, {5, 5}, {0, 5}, {0, -2}}, 1.5, {}},
      {"one end touches",
       {{0, 0}, {5, 0}, {5, 5}, {0, 5}, {0, -2}},
       10,
       {{0, 0}, {5, 0}, {5, 5}, {0, 5}, {0, 0}}},
      {"the end runs on along the beginning",
       {{1, 0}, {5, 0}, {5, 5}, {0, 5}, {0, 0}, {3, 0}},
       10,
       {{1, 0}, {5, 0}, {5, 5}, {0, 5}, {0, 0}, {1, 0}}},
      {"the end runs back along the beginning",
       {{1, 0}, {5, 0}, {5, 5}, {6, 5}, {6, 0}, {3, 0}},
       10,
       {{5, 0}, {5, 5}, {6, 5}, {6, 0}, {5, 0}}},
      {"the loop that drops least",
       {{0, 0}, {10, 0}, {10, 5}, {4, 5}, {4, -1}, {2, -1}, {2, 1}},
       100,
       {{2, 0}, {10, 0}, {10, 5}, {4, 5}, {4, -1}, {2, -1}, {2, 0}}},
      {"no crossing", {{0, 0}, {5, 0}, {5, 5}}, 10, {}},
      {"closed already", {{0, 0}, {5, 5}, {5, 0}, {0, 5}, {0, 0}}, 10, {}},
      {"short edges only", {{0, 0}, {1e-7, 0}, {2e-7, 0}, {2e-7, 5e-6}}, 10, {}},
      {"nothing", {}, 10, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TVPolyline2D Contour = Case.Before;
    EXPECT_EQ(!Case.After.empty(), Contour.Trim(Case.MaxTail));
    EXPECT_EQ(Case.After.empty() ? Case.Before.Points() : Case.After, Contour.Points());
  }
}

// Every pair of edges meets: they once cost their square, in time and in memory.
TEST(TVPolyline2DCross, HeapsOfVerticesAreOnePlace) {
  std::mt19937 Random(16);
  TVPolyline2D A{{-5, 0}};
  TVPolyline2D B{{0, -5}};
  for (int I = 0; I < 50000; ++I) {
    A.Add(test::RandomPoint(Random, 0, 5e-7));
    B.Add(test::RandomPoint(Random, 0, 5e-7));
  }
  A.Add({0, 5});
  B.Add({5, 0});
  TPoints Points;
  TLines Lines;
  EXPECT_TRUE(A.CrossWith(B, Points, Lines));
  EXPECT_EQ(1U, Points.size());
  EXPECT_TRUE(Lines.empty());
  EXPECT_FALSE(A.IsSelfIntersect());
  EXPECT_EQ(srOn, A.RelationWith(B));
  Points.clear();  // a tolerance that holds everything makes one place of everything
  EXPECT_TRUE(A.CrossWith(B, Points, Lines, std::numeric_limits<double>::infinity()));
  EXPECT_EQ(1U, Points.size());
  EXPECT_FALSE(A.IsCrossWith(B, std::nan("")));  // no tolerance holds nothing
}

TEST(TVPolyline2DCross, EdgesRunManyTimesOverAreReportedOnce) {
  TVPolyline2D A;
  TVPolyline2D Across;
  TVPolyline2D Along;
  for (int I = 0; I < 600; ++I) {
    A.Add({I % 2 * 10.0, 0});
    Across.Add({5, I % 2 * 10.0 - 5.0});
    Along.Add({12.0 - I % 2 * 10.0, 0});
  }
  TPoints Points;
  TLines Lines;
  EXPECT_TRUE(A.CrossWith(Across, Points, Lines));
  EXPECT_EQ((TPoints{{5, 0}}), Points);
  EXPECT_TRUE(Lines.empty());
  EXPECT_TRUE(A.CrossWith(Along, Points, Lines));
  EXPECT_EQ(1U, Points.size());
  ASSERT_EQ(1U, Lines.size());  // directed as the first run
  EXPECT_EQ(TPoint2D(2, 0), Lines[0].StartPoint);
  EXPECT_EQ(TPoint2D(10, 0), Lines[0].EndPoint);
}

TEST(TVPolyline2DCross, SurvivesAnything) {
  const double Inf = std::numeric_limits<double>::infinity();
  const TVPolyline2D Odd{{0, 0},          {std::nan(""), 1}, {Inf, -Inf}, {1e300, 1e300},
                         {-1e300, 1e300}, {5e-324, 0},       {1, 1},      {1, 1}};
  const TVPolyline2D Equal(TPoints(1000000, TPoint2D(1, 1)));
  for (const TVPolyline2D* A : {&Odd, &Equal, &kSquare}) {
    TVPolyline2D Copy = *A;
    Copy.Trim();
    A->IsSelfIntersect();
    A->RelationWithPoint({Inf, 0});
    for (const TVPolyline2D* B : {&Odd, &Equal, &kSquare}) {
      TPoints Points;
      TLines Lines;
      A->CrossWith(*B, Points, Lines);
      A->RelationWith(*B);
      TPoint2D P;
      A->CrossWithLastPt(*B, P);
    }
  }
}

// An endless edge once made the slack of the turned boxes endless, so that all met all: hours.
TEST(TVPolyline2DCross, AnEndlessEdgeDoesNotMakeAllHatchLinesNeighbours) {
  TVPolyline2D Hatched = Hatch(100000, 1000.0, 0.01);
  Hatched.Rotate(kPi / 4);
  TVPolyline2D Between = Hatched;
  Between.Translate(TPoint2D(0, 0.005).RotateBy(kPi / 4));
  Between.Add({std::numeric_limits<double>::infinity(), 0});
  TPoints Points;
  TLines Lines;
  Between.CrossWith(Hatched, Points, Lines);
  EXPECT_TRUE(Points.empty());
  EXPECT_EQ(99999U, Lines.size());  // each turn from stroke to stroke lies half on the other's
}

TEST(TVPolyline2DCross, AWayThatTurnsBackAfterALongStretchCrossesIt) {
  TVPolyline2D Way;
  for (int I = 0; I <= 24; ++I) Way.Add({I * 1.0, I * 0.5});
  Way.Add({10, 20});
  EXPECT_FALSE(Way.IsSelfIntersect());
  Way.Add({10, -20});
  EXPECT_TRUE(Way.IsSelfIntersect());
}

}  // namespace
}  // namespace tarnalgo
