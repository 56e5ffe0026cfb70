#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "geometryAlgo/VedaType/Polyline.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using TPoints = std::vector<TPoint2D>;

TVPolyline2D Circle(int Count, double Radius) {
  TVPolyline2D Result;
  for (int I = 0; I < Count; ++I) Result.Add(TPoint2D(Radius, 0).RotateBy(kFullTurn * I / Count));
  Result.Add(Result.First());
  return Result;
}

/// Every vertex of the former course lies within `Eps` of the new one, whose vertices are some of
/// the former ones in their order.
void ExpectReplaces(const TVPolyline2D& New, const TVPolyline2D& Former, double Eps) {
  for (const TPoint2D& P : Former) EXPECT_LE(New.DistTo(P), Eps + 1e-12);
  int Found = 0;
  for (const TPoint2D& P : New) {
    while (Found < Former.Count() && Former[Found] != P) ++Found;
    EXPECT_LT(Found, Former.Count());
  }
}

TEST(TVPolyline2DEdit, LeavesTheVerticesThatCount) {
  using TEdit = void (*)(TVPolyline2D&);
  const TEdit Apart = [](TVPolyline2D& Contour) { Contour.DeleteNeighbourClosed(); };
  const TEdit Smooth = [](TVPolyline2D& Contour) { Contour.CollinearSmooth(); };
  const TEdit Close = [](TVPolyline2D& Contour) { Contour.ConnectHeadTail(); };
  const struct {
    const char* Name;
    TEdit Edit;
    TPoints Before;
    TPoints After;
  } Cases[] = {
      {"nothing", Apart, {}, {}},
      {"one point", Apart, {{1, 1}}, {{1, 1}}},
      {"all in one place", Apart, {{1, 1}, {1, 1}, {1, 1}}, {{1, 1}}},
      {"a run in the middle",
       Apart,
       {{0, 0}, {5, 0}, {5 + 5e-7, 0}, {9, 0}},
       {{0, 0}, {5, 0}, {9, 0}}},
      {"apart enough", Apart, {{0, 0}, {5, 0}, {5 + 2e-6, 0}}, {{0, 0}, {5, 0}, {5 + 2e-6, 0}}},
      {"the last point stays", Apart, {{0, 0}, {5, 0}, {5 + 5e-7, 0}}, {{0, 0}, {5 + 5e-7, 0}}},
      {"a ring stays closed",
       Apart,
       {{0, 0}, {5, 0}, {5, 5}, {5e-7, 0}, {0, 0}},
       {{0, 0}, {5, 0}, {5, 5}, {0, 0}}},
      {"measured to the point kept",
       Apart,
       {{0, 0}, {8e-7, 0}, {16e-7, 0}, {24e-7, 0}, {1, 0}},
       {{0, 0}, {16e-7, 0}, {1, 0}}},
      {"one way", Smooth, {{0, 0}, {1, 0}, {2, 0}, {5, 0}}, {{0, 0}, {5, 0}}},
      {"within the tolerance", Smooth, {{0, 0}, {1, 98e-8}, {2, -98e-8}, {5, 0}}, {{0, 0}, {5, 0}}},
      {"beyond it", Smooth, {{0, 0}, {1, 102e-8}, {5, 0}}, {{0, 0}, {1, 102e-8}, {5, 0}}},
      {"a joint that is a corner",
       Smooth,
       {{0, 0}, {2, 0}, {5, 0}, {5, 5}, {0, 0}},
       {{0, 0}, {5, 0}, {5, 5}, {0, 0}}},
      {"nothing to smooth", Smooth, {}, {}},
      {"an open one", Close, {{0, 0}, {1, 0}, {1, 1}}, {{0, 0}, {1, 0}, {1, 1}, {0, 0}}},
      {"a closed one", Close, {{0, 0}, {1, 0}, {0, 0}}, {{0, 0}, {1, 0}, {0, 0}}},
      {"a point", Close, {{1, 1}}, {{1, 1}}},
      {"nothing to close", Close, {}, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TVPolyline2D Contour(Case.Before);
    Case.Edit(Contour);
    EXPECT_EQ(Case.After, Contour.Points());
  }
}

// A vertex of the grid goes exactly when the way goes straight on there, in integers.
TEST(TVPolyline2DEdit, SmoothsExactlyTheStraightVerticesOfAGrid) {
  std::mt19937 Random(9);
  for (int Round = 0; Round < 500; ++Round) {
    TVPolyline2D Contour;
    for (int I = test::RandomInt(Random, 2, 12); I > 0; --I) {
      Contour.Add(test::RandomGridPoint(Random, 0, 2));
    }
    if (Round % 2 == 0) Contour.Add(Contour.First());
    TPoints Course;
    for (const TPoint2D& P : Contour) {
      if (Course.empty() || P != Course.back()) Course.push_back(P);
    }
    const bool IsRing = Course.size() > 3 && Course.front() == Course.back();
    const std::size_t Count = IsRing ? Course.size() - 1 : Course.size();
    TVPolyline2D Expected;
    for (std::size_t I = 0; I < Count; ++I) {
      const bool IsEnd = !IsRing && (I == 0 || I + 1 == Count);
      const TPoint2D In = Course[I] - Course[(I + Count - 1) % Count];
      const TPoint2D Out = Course[(I + 1) % Count] - Course[I];
      const bool GoesOn = In.CrossMul(Out) == 0.0 && In.DotMul(Out) > 0.0;
      if (IsEnd || !GoesOn) Expected.Add(Course[I]);
    }
    if (IsRing) Expected.Add(Expected.First());
    for (const double Eps : {1e-6, 0.0}) {
      TVPolyline2D Smoothed = Contour;
      Smoothed.CollinearSmooth(Eps);
      EXPECT_TRUE(Smoothed.IsEqualTo(Expected, 0.0))
          << Contour.ToString() << "\n-> " << Smoothed.ToString();
    }
  }
}

TEST(TVPolyline2DEdit, LeavesNothingFartherThanTheTolerance) {
  std::mt19937 Random(10);
  for (int Round = 0; Round < 60; ++Round) {
    TVPolyline2D Walk;
    TPoint2D P;
    for (int I = 0; I < 200; ++I) {
      Walk.Add(P);
      P = P + TPoint2D(test::RandomDouble(Random, -0.2, 1.0), test::RandomDouble(Random, -1, 1));
    }
    if (Round % 2 == 0) Walk.Add(Walk.First());
    for (const double Eps : {0.0, 0.1, 1.0, 30.0, 1e4}) {
      TVPolyline2D Simplified = Walk;
      Simplified.Simplify(Eps);
      ExpectReplaces(Simplified, Walk, Eps);
      EXPECT_EQ(Walk.First(), Simplified.First());
      EXPECT_EQ(Walk.Last(), Simplified.Last());
      TVPolyline2D Smoothed = Walk;
      Smoothed.CollinearSmooth(Eps);
      EXPECT_LE(Smoothed.Count(), Walk.Count());
      for (const TPoint2D& Q : Walk) EXPECT_LE(Smoothed.DistTo(Q), Eps + 1e-12);
      if (!Walk.IsClosed()) ExpectReplaces(Smoothed, Walk, Eps);
    }
  }
}

TEST(TVPolyline2DEdit, SimplifiesADenseCircleToItsChords) {
  const double Eps = 0.01;
  // A chord over the angle A stands Radius (1 - cos(A / 2)) off its arc.
  const double WidestChord = 2.0 * std::acos(1.0 - Eps / 10.0);
  for (const int Count : {1000, 30000}) {
    TVPolyline2D Contour = Circle(Count, 10.0);
    TVPolyline2D Smoothed = Contour;
    Contour.Simplify(Eps);
    Smoothed.CollinearSmooth(Eps);
    const double Fewest = kFullTurn / WidestChord;
    EXPECT_GE(Contour.Count(), Fewest);
    EXPECT_LE(Contour.Count(), 2.0 * Fewest + 2);  // halving may stop just short of twice as many
    EXPECT_LE(Smoothed.Count(), 1.2 * Fewest + 3);
    EXPECT_TRUE(Contour.IsClosed(0.0));
    EXPECT_TRUE(Smoothed.IsClosed(0.0));
  }
}

// The farthest vertex is always one of the first or last: halving there once cost the square.
TEST(TVPolyline2DEdit, SimplifiesLongZigzags) {
  TVPolyline2D Zigzag;
  for (int I = 0; I < 300000; ++I) Zigzag.Add({I * 1.0, I % 4 * 3.0});
  TVPolyline2D Simplified = Zigzag;
  Simplified.Simplify(0.01);
  ASSERT_EQ(Zigzag.Count() / 2, Simplified.Count());  // the turns, not what lies between them
  for (int I = 1; I + 1 < Simplified.Count(); ++I) {
    EXPECT_TRUE(Simplified[I].Y == 0.0 || Simplified[I].Y == 9.0);
  }
}

// The middle of what is left when the halvings are used up lies in the straight tail.
TEST(TVPolyline2DEdit, SimplifiesAZigzagWithALongTail) {
  TVPolyline2D Tailed;
  for (int I = 0; I < 4000; ++I) Tailed.Add({I * 1.0, I < 400 ? I % 4 * 3.0 : 0.0});
  TVPolyline2D Simplified = Tailed;
  Simplified.Simplify(0.01);
  ExpectReplaces(Simplified, Tailed, 0.01);
  EXPECT_GE(Simplified.Count(), 200 + 2);  // the turns and the tail
  EXPECT_LE(Simplified.Count(), 200 + 20);
}

TEST(TVPolyline2DEdit, ConnectsWhereEndsMeet) {
  const TVPolyline2D Line{{0, 0}, {1, 0}};
  const struct {
    const char* Name;
    TVPolyline2D Other;
    TPoints After;  // empty: refused
  } Cases[] = {
      {"start at end", {{1, 5e-7}, {2, 2}, {3, 0}}, {{0, 0}, {1, 0}, {2, 2}, {3, 0}}},
      {"end at end", {{3, 0}, {2, 2}, {1, 0}}, {{0, 0}, {1, 0}, {2, 2}, {3, 0}}},
      {"end at start", {{-3, 0}, {-2, 2}, {0, 0}}, {{-3, 0}, {-2, 2}, {0, 0}, {1, 0}}},
      {"start at start", {{0, 0}, {-2, 2}, {-3, 0}}, {{-3, 0}, {-2, 2}, {0, 0}, {1, 0}}},
      {"both ends: closes", {{0, 0}, {0, 1}, {1, 0}}, {{0, 0}, {1, 0}, {0, 1}, {0, 0}}},
      {"too far", {{1, 2e-6}, {2, 2}}, {}},
      {"closed", {{1, 0}, {2, 2}, {3, 0}, {1, 0}}, {}},
      {"a point", {{1, 0}}, {}},
      {"nothing", {}, {}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TVPolyline2D Contour = Line;
    EXPECT_EQ(!Case.After.empty(), Contour.TryConnect(Case.Other));
    EXPECT_EQ(Case.After.empty() ? Line.Points() : Case.After, Contour.Points());
  }
}

TEST(TVPolyline2DEdit, DropsParametersOfOnePlace) {
  const TVPolyline2D Open{{0, 0}, {1000, 0}, {1000, 0}, {1000, 5}};
  std::vector<double> Params{2.5, 1.0, 2.0, 1.5, 0.5, 0.5 + 5e-10, 0.5 + 5e-9, -0.1, 3.1, 2.5};
  Open.RemoveDuplicate(Params);
  EXPECT_EQ((std::vector<double>{2.5, 1.0, 0.5, 0.5 + 5e-9}), Params);

  const TVPolyline2D Ring(TVRect2D({0, 0}, {10, 10}));
  Params = {4.0, 0.0, 4.0 - 5e-8, 5e-8, 1e-3};
  Ring.RemoveDuplicate(Params);
  EXPECT_EQ((std::vector<double>{4.0, 1e-3}), Params);
  Params = {0.0, 4.0};
  Ring.RemoveDuplicate(Params);
  EXPECT_EQ((std::vector<double>{0.0}), Params);

  Params = {0.0, 1.0};
  TVPolyline2D().RemoveDuplicate(Params);
  EXPECT_TRUE(Params.empty());
}

TEST(TVPolyline2DEdit, SurvivesAnything) {
  const double Inf = std::numeric_limits<double>::infinity();
  const TVPolyline2D Odd{{0, 0},           {std::nan(""), 1}, {Inf, -Inf}, {1e300, 1e300},
                         {-1e300, -1e300}, {5e-324, 0},       {1, 1},      {0, 0}};
  const TVPolyline2D Equal(TPoints(1000000, TPoint2D(1, 1)));
  for (const TVPolyline2D* Contour : {&Odd, &Equal}) {
    for (const double Eps : {0.0, 1e-6, Inf, std::nan("")}) {
      TVPolyline2D Copy = *Contour;
      Copy.DeleteNeighbourClosed(Eps);
      Copy = *Contour;
      Copy.CollinearSmooth(Eps);
      Copy = *Contour;
      Copy.Simplify(Eps);
      Copy.ConnectHeadTail(Eps);
      Copy.TryConnect(*Contour, Eps);
      EXPECT_FALSE(Copy.IsEmpty());
    }
  }
}

}  // namespace
}  // namespace tarnalgo
