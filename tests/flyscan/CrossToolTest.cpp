#include "geometryAlgo/flyscanAlgo/CrossTool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "geometryAlgo/flyscanAlgo/FlyHoles.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

TGeCompositeCurve2D Connection(const std::vector<TPoint2D>& Points) {
  TGeCompositeCurve2D Result;
  for (std::size_t I = 1; I < Points.size(); ++I) {
    Result.AddCurve(std::make_unique<TGeLine2D>(Points[I - 1], Points[I]));
  }
  return Result;
}

bool Crosses(const TGeCompositeCurve2D& TransLine, std::unique_ptr<TGeCurve2D> Hole) {
  TFlyHoles Holes;
  Holes.AddHole(std::move(Hole));
  return TCrossTool::CheckCrossWithHoles(TransLine, Holes.RTree());
}

TEST(TCrossTool, PointsInOneCellAreOnePoint) {
  TCollection<TPointL2D> Keys;
  std::vector<TPoint2D> Points;
  const TPoint2D Kept[] = {{0, 0}, {6e-7, 0}, {0, 1}};
  TCrossTool::AddPoint(Keys, Points, Kept[0]);
  TCrossTool::AddPoint(Keys, Points, {4e-7, -4e-7});  // the cell of (0, 0)
  TCrossTool::AddPoint(Keys, Points, Kept[1]);        // 2e-7 further, the next cell
  TCrossTool::AddPoint(Keys, Points, Kept[2]);
  TCrossTool::AddPoint(Keys, Points, Kept[2]);
  EXPECT_EQ(std::vector<TPoint2D>(std::begin(Kept), std::end(Kept)), Points);
}

TEST(TCrossTool, ATouchAtTheSharedPointIsNoCrossing) {
  const struct {
    const char* Name;
    std::vector<TPoint2D> Points;
    std::vector<TPoint2D> Left;
  } Cases[] = {
      {"none", {}, {}},
      {"only the shared point", {{1, 1}}, {}},
      {"within the tolerance", {{1.00009, 1}, {1, 0.99991}}, {}},
      {"beyond it", {{1.00011, 1}}, {{1.00011, 1}}},
      {"among others", {{5, 5}, {1, 1}, {7, 7}, {1, 1}}, {{5, 5}, {7, 7}}},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    std::vector<TPoint2D> Points = Case.Points;
    EXPECT_EQ(!Case.Left.empty(), TCrossTool::CheckCross({1, 1}, Points));
    EXPECT_EQ(Case.Left, Points);
  }
}

const std::vector<TPoint2D> kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};

/// The circle about (5, 5) through (0, 5), as four Bezier segments (2.7e-4 of the radius off).
std::unique_ptr<TGeCurve2D> BezierCircle() {
  const double K = 4.0 / 3.0 * (std::sqrt(2.0) - 1.0) * 5.0;
  auto Result = std::make_unique<TGePolyBezier2D>();
  TPoint2D Radius(-5, 0);
  for (int I = 0; I < 4; ++I) {
    const TPoint2D Next = Radius.RotateCcw90();
    const TPoint2D Center(5, 5);
    Result->AddBezier({Center + Radius, Center + Radius + Next * (K / 5),
                       Center + Next + Radius * (K / 5), Center + Next});
    Radius = Next;
  }
  return Result;
}

// Every hole here has the outline point (0, 5) with the inside to its right.
TEST(TCrossTool, AConnectionCrossesAHoleWhoseOutlineItMeetsBeyondItsOwnStart) {
  const struct {
    const char* Name;
    std::vector<TPoint2D> Points;
    bool Expected;
  } Cases[] = {
      {"right through", {{-5, 5}, {15, 5}}, true},
      {"wholly inside", {{4, 5}, {6, 5}}, false},
      {"from the outline inwards", {{0, 5}, {5, 5}}, false},
      {"from the outline outwards", {{0, 5}, {-5, 5}}, false},
      {"up to the outline from outside", {{-5, 5}, {0, 5}}, true},
      {"up to the outline from inside", {{5, 5}, {0, 5}}, true},
      {"up to it within the tolerance", {{-5, 5}, {-9e-7, 5}}, true},
      {"not up to it", {{-5, 5}, {-1.1e-6, 5}}, false},
      {"from the outline through the hole", {{0, 5}, {15, 5}}, true},
      {"from the outline round and in again", {{0, 5}, {-5, 5}, {-5, 15}, {5, 15}, {5, 5}}, true},
      {"from just outside the outline inwards", {{-9e-5, 5}, {5, 5}}, false},
      {"from too far outside", {{-2e-4, 5}, {5, 5}}, true},
      {"beside the hole, within the search margin", {{-0.005, -5}, {-0.005, 15}}, false},
      {"far away", {{-5, -5}, {-15, 5}}, false},
      {"without a piece", {}, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const TGeCompositeCurve2D TransLine = Connection(Case.Points);
    const auto Holds = [&](const char* Kind, std::unique_ptr<TGeCurve2D> Hole) {
      SCOPED_TRACE(Kind);
      EXPECT_EQ(Case.Expected, Crosses(TransLine, std::move(Hole)));
    };
    Holds("composite", std::make_unique<TGeCompositeCurve2D>(Connection(kSquare)));
    Holds("polyline", std::make_unique<TGePolyline2D>(kSquare));
    Holds("circle", std::make_unique<TGeCircularArc2D>(TPoint2D(5, 5), 5.0, kPi, kFullTurn));
    Holds("Bezier", BezierCircle());
  }
  EXPECT_FALSE(TCrossTool::CheckCrossWithHoles(Connection(kSquare), TFlyHoles().RTree()));
}

// Samples of the outline lie up to the chord error inside, and no deeper.
TEST(TCrossTool, AConnectionDeeperThanTheChordErrorCrossesASampledHole) {
  for (int I = 0; I < 64; ++I) {
    SCOPED_TRACE(I);
    const TPoint2D Outwards = DcsX.RotateBy(I * kFullTurn / 64);
    const TPoint2D Middle = TPoint2D(5, 5) + Outwards * (5.0 - 1.1 * kHoleChordTolerance);
    const TPoint2D Along = Outwards.RotateCcw90() * 3.0;
    EXPECT_TRUE(Crosses(Connection({Middle - Along, Middle + Along}), BezierCircle()));
  }
}

TEST(TCrossTool, AStretchAlongTheOutlineIsACrossingEvenFromTheStart) {
  const TGeCompositeCurve2D AlongEdge = Connection({{2, 0}, {8, 0}});
  EXPECT_TRUE(Crosses(AlongEdge, std::make_unique<TGeCompositeCurve2D>(Connection(kSquare))));
  EXPECT_TRUE(Crosses(AlongEdge, std::make_unique<TGePolyline2D>(kSquare)));
  TGeCompositeCurve2D AlongArc;
  AlongArc.AddCurve(std::make_unique<TGeCircularArc2D>(TPoint2D(5, 5), 5.0, 1.0, 0.5));
  EXPECT_TRUE(
      Crosses(AlongArc, std::make_unique<TGeCircularArc2D>(TPoint2D(5, 5), 5.0, 0.0, kFullTurn)));
}

TEST(TCrossTool, NamesThePointsAndTheStretches) {
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  // Along the lower edge from (4, 0), then across the square and out through the corner (0, 10).
  const TGeCompositeCurve2D TransLine = Connection({{4, -2}, {4, 0}, {8, 0}, {8, 2}, {-2, 12}});
  TCrossTool::Cross(TransLine, Connection(kSquare), Points, Lines);
  ASSERT_EQ(1u, Lines.size());
  EXPECT_TRUE(Lines[0].StartPoint.Equals({4, 0}));
  EXPECT_TRUE(Lines[0].EndPoint.Equals({8, 0}));
  EXPECT_TRUE(std::any_of(Points.begin(), Points.end(), [](const TPoint2D& P) {
    return P.Equals({0, 10});
  }));
  const std::size_t Before = Points.size();
  TCrossTool::Cross(TransLine, Connection(kSquare), Points, Lines);  // nothing new
  EXPECT_EQ(Before, Points.size());

  Points.clear();
  TCrossTool::Cross(Connection({{-5, 5}, {15, 5}}),
                    TGeCircularArc2D(TPoint2D(5, 5), 5.0, 0.5, kFullTurn), Points, Lines);
  ASSERT_EQ(2u, Points.size());
  EXPECT_TRUE(Points[0].Equals({0, 5}));
  EXPECT_TRUE(Points[1].Equals({10, 5}));
}

/// A chain of pieces of every kind through random points.
TGeCompositeCurve2D RandomChain(std::mt19937& Random, int Pieces) {
  TGeCompositeCurve2D Result;
  TPoint2D From = test::RandomPoint(Random, 0.0, 10.0);
  for (int I = 0; I < Pieces; ++I) {
    const TPoint2D To = test::RandomPoint(Random, 0.0, 10.0);
    const TPoint2D A = test::RandomPoint(Random, -2.0, 12.0);
    const TPoint2D B = test::RandomPoint(Random, -2.0, 12.0);
    switch (test::RandomInt(Random, 0, 4)) {
      case 0:
        Result.AddCurve(std::make_unique<TGeLine2D>(From, To));
        break;
      case 1:
        Result.AddCurve(
            std::make_unique<TGeCircularArc2D>(From, test::RandomDouble(Random, 0.1, 1.5), To));
        break;
      case 2:
        Result.AddCurve(std::make_unique<TGePolyline2D>(TDynPoints2D{From, A, B, To}));
        break;
      case 3: {
        auto Bezier = std::make_unique<TGePolyBezier2D>();
        Bezier->AddBezier({From, A, B, To});
        Result.AddCurve(std::move(Bezier));
        break;
      }
      default: {
        auto Nested = std::make_unique<TGeCompositeCurve2D>();
        Nested->AddCurve(std::make_unique<TGeLine2D>(From, A));
        Nested->AddCurve(std::make_unique<TGeCircularArc2D>(A, -0.7, To));
        Result.AddCurve(std::move(Nested));
      }
    }
    From = To;
  }
  return Result;
}

/// Where the fine polylines of two curves cross at a clear angle: there the curves cross too.
std::vector<TPoint2D> ClearCrossings(const TGeCurve2D& A, const TGeCurve2D& B) {
  const std::vector<TPoint2D> P = A.Sample(1e-4);
  const std::vector<TPoint2D> Q = B.Sample(1e-4);
  std::vector<TPoint2D> Result;
  for (std::size_t I = 1; I < P.size(); ++I) {
    for (std::size_t J = 1; J < Q.size(); ++J) {
      const TPoint2D U = P[I] - P[I - 1];
      const TPoint2D V = Q[J] - Q[J - 1];
      const TPoint2D W = Q[J - 1] - P[I - 1];
      const double Cross = U.CrossMul(V);
      if (std::abs(Cross) < 0.1 * U.Mag() * V.Mag()) continue;
      const double S = W.CrossMul(V) / Cross;
      const double T = W.CrossMul(U) / Cross;
      if (S > 0 && S < 1 && T > 0 && T < 1) Result.push_back(P[I - 1] + U * S);
    }
  }
  return Result;
}

void CheckCrossings(const TGeCurve2D& A, const TGeCurve2D& B, const std::vector<TPoint2D>& Points) {
  for (const TPoint2D& P : Points) {
    double Distance = 0.0;
    A.NearestParam(P, Distance);
    EXPECT_LE(Distance, 2e-6);
    B.NearestParam(P, Distance);
    EXPECT_LE(Distance, 2e-6);
  }
  for (const TPoint2D& P : ClearCrossings(A, B)) {
    EXPECT_TRUE(std::any_of(Points.begin(), Points.end(),
                            [&P](const TPoint2D& Q) { return P.Equals(Q, 5e-3); }))
        << "missed near " << P.X << ", " << P.Y;
  }
}

TEST(TCrossTool, TakesConnectionsOfAnyCoordinates) {
  const double Odd[] = {std::nan(""), std::numeric_limits<double>::infinity(), 1e300, 1e18, 5e-324};
  for (const double Value : Odd) {
    for (const std::vector<TPoint2D>& Points : {std::vector<TPoint2D>{{5, 5}, {Value, 5}},
                                                {{-Value, Value}, {Value, -Value}},
                                                {{Value, Value}, {Value, Value}}}) {
      const TGeCompositeCurve2D TransLine = Connection(Points);
      TGeCompositeCurve2D Hole = Connection(kSquare);
      Hole.AddCurve(std::make_unique<TGeLine2D>(TPoint2D(0, 0), TPoint2D(Value, Value)));
      Crosses(TransLine, Hole.Clone());
      Crosses(TransLine, std::make_unique<TGePolyline2D>(Hole.Sample(0.1)));
      Crosses(TransLine, std::make_unique<TGeCircularArc2D>(TPoint2D(Value, 5), 5.0, 0.0, 3.0));
      Crosses(TransLine, BezierCircle());
    }
  }
  EXPECT_TRUE(Crosses(Connection({{-1e300, 5}, {1e300, 5}}),
                      std::make_unique<TGeCompositeCurve2D>(Connection(kSquare))));
}

// Connections from outline to outline, some grazing: the index must not lose a hole.
TEST(TCrossTool, AmongManyHolesAnswersAsForEachAlone) {
  std::mt19937 Random(20240616);
  TFlyHoles Holes;
  for (int I = 0; I < 100; ++I) {
    const TPoint2D Corner(I % 10 * 4.0, I / 10 * 4.0);
    if (I % 2) {
      Holes.AddHole(std::make_unique<TGeCircularArc2D>(Corner, 1.0, 0.0, kFullTurn));
    } else {
      Holes.AddHole(std::make_unique<TGePolyline2D>(TDynPoints2D{Corner, Corner + TPoint2D(2, 0),
                                                                 Corner + TPoint2D(2, 2),
                                                                 Corner + TPoint2D(0, 2), Corner}));
    }
  }
  int Crossed = 0;
  for (int Round = 0; Round < 500; ++Round) {
    const TPoint2D From = test::RandomGridPoint(Random, -1, 38);
    const TPoint2D To = From + test::RandomGridPoint(Random, -3, 3);
    const TGeCompositeCurve2D TransLine = Connection({From, To});
    bool Expected = false;
    for (const TGeCurve2D* const Hole : Holes.RTree().GetAllData()) {
      Expected = Expected || Crosses(TransLine, Hole->Clone());
    }
    EXPECT_EQ(Expected, TCrossTool::CheckCrossWithHoles(TransLine, Holes.RTree()));
    Crossed += Expected;
  }
  EXPECT_GT(Crossed, 100);
  EXPECT_LT(Crossed, 400);
}

TEST(TCrossTool, FindsEveryClearCrossingAndOnlyPointsOnBothCurves) {
  std::mt19937 Random(20240615);
  for (int Round = 0; Round < 40; ++Round) {
    SCOPED_TRACE(testing::Message() << "round " << Round);
    const TGeCompositeCurve2D TransLine = RandomChain(Random, 3);
    const TGeCompositeCurve2D Other = RandomChain(Random, 3);
    const TGeCircularArc2D Arc(test::RandomPoint(Random, 2.0, 8.0),
                               test::RandomDouble(Random, 0.5, 5.0),
                               test::RandomDouble(Random, 0.0, kFullTurn),
                               test::RandomDouble(Random, -kFullTurn, kFullTurn));
    std::vector<TPoint2D> Points;
    std::vector<TVLine2D> Lines;
    TCrossTool::Cross(TransLine, Other, Points, Lines);
    CheckCrossings(TransLine, Other, Points);
    Points.clear();
    TCrossTool::Cross(TransLine, Arc, Points, Lines);
    CheckCrossings(TransLine, Arc, Points);
    EXPECT_TRUE(Lines.empty());
  }
}

}  // namespace
}  // namespace tarnalgo
