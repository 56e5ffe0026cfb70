#include "tests/support/Plate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <tuple>
#include <vector>

#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "tests/support/Generate.h"

namespace tarnalgo {
namespace {

using TUndirected = std::tuple<double, double, double, double>;

/// The four coordinates of an edge, whichever way it runs.
TUndirected Undirected(const TPoint2D& A, const TPoint2D& B) {
  return std::min(TUndirected(A.X, A.Y, B.X, B.Y), TUndirected(B.X, B.Y, A.X, A.Y));
}

/// A plate at any angle with some loose edges, all of them in any order and direction.
std::vector<TLine2D> RandomEdges(std::mt19937& Random) {
  test::TPlate Plate;
  Plate.Rows = test::RandomInt(Random, 1, 8);
  Plate.Columns = test::RandomInt(Random, 1, 8);
  Plate.Side = test::RandomDouble(Random, 1.0, 9.9);
  const double Angles[] = {0.0, kQuarterTurn, -1e-4, test::RandomDouble(Random, 0.0, kFullTurn)};
  Plate.Angle = Angles[test::RandomInt(Random, 0, 3)];
  std::vector<TLine2D> Edges = test::EdgesOf(Plate);
  for (int I = 0; I < 10; ++I) {
    Edges.emplace_back(test::RandomGridPoint(Random, 0, 5), test::RandomGridPoint(Random, 0, 5));
  }
  std::shuffle(Edges.begin(), Edges.end(), Random);
  for (TLine2D& Edge : Edges) {
    if (test::RandomInt(Random, 0, 1)) Edge = Edge.ReverseParam();
  }
  return Edges;
}

/// Continuous but for jumps no longer along the pass than the sample length; one channel; cuts
/// ascending. The cuts are added to `Cuts`.
void CheckPass(const TFlyCurves& Pass, const TPoint2D& AngVec, std::vector<TUndirected>& Cuts) {
  for (int I = 0; I < Pass.Count(); ++I) {
    const TPoint2D Start = Pass[I]->GeCurve()->StartPoint();
    const TPoint2D End = Pass[I]->GeCurve()->EndPoint();
    EXPECT_EQ(Pass[0]->ChannelPort(), Pass[I]->ChannelPort());
    if (!Pass[I]->IsFlyGap()) Cuts.push_back(Undirected(Start, End));
    if (I == 0) continue;
    const TPoint2D Before = Pass[I - 1]->GeCurve()->EndPoint();
    if (Pass[I]->IsFlyGap() || Pass[I - 1]->IsFlyGap()) {
      EXPECT_EQ(Before, Start);
      EXPECT_NE(Pass[I]->IsFlyGap(), Pass[I - 1]->IsFlyGap());
    } else {
      EXPECT_LE(std::abs((Start - Before).DotMul(AngVec)), CamSampleLen + 1e-3);
    }
  }
}

TEST(FlyscanPlate, EveryEdgeIsCutExactlyOnceInAContinuousPass) {
  std::mt19937 Random(20240614);
  for (int Round = 0; Round < 60; ++Round) {
    SCOPED_TRACE(testing::Message() << "round " << Round);
    const std::vector<TLine2D> Edges = RandomEdges(Random);
    TFlyCurve Ports[2];
    Ports[1].SetChannelPort(5);
    TLinearSegments Segments;
    std::vector<TUndirected> Expected;
    for (const TLine2D& Edge : Edges) {
      Segments.AddLine(&Ports[test::RandomInt(Random, 0, 1)], Edge);
      Expected.push_back(Undirected(Edge.StartPoint, Edge.EndPoint));
    }
    Segments.SortByAngleIntercept();
    std::vector<TUndirected> Cuts;
    TOwningFlyCurves Pass;
    for (const auto& Run : test::CutIntoRuns(Segments)) {
      Run->BuildResult(Pass);
      CheckPass(Pass, Run->AngVec, Cuts);
    }
    std::sort(Expected.begin(), Expected.end());
    std::sort(Cuts.begin(), Cuts.end());
    EXPECT_EQ(Expected, Cuts);
  }
}

TEST(FlyscanPlate, EachRowAndColumnOfHoleEdgesIsOnePass) {
  for (const double Angle : {0.0, 0.3, kQuarterTurn, 2.0}) {
    SCOPED_TRACE(Angle);
    test::TPlate Plate;
    Plate.Rows = 7;
    Plate.Columns = 5;
    Plate.Angle = Angle;
    TFlyCurve Ref;
    TLinearSegments Segments;
    for (const TLine2D& Edge : test::EdgesOf(Plate)) Segments.AddLine(&Ref, Edge);
    Segments.SortByAngleIntercept();
    const auto Runs = test::CutIntoRuns(Segments);
    EXPECT_EQ(2u * (7 + 5), Runs.size());
    TOwningFlyCurves Pass;
    int Gaps = 0;
    for (const auto& Run : Runs) {
      Run->BuildResult(Pass);
      Gaps += static_cast<int>(std::count_if(Pass.begin(), Pass.end(),
                                             [](const TFlyCurve* P) { return P->IsFlyGap(); }));
    }
    EXPECT_EQ(2 * 7 * (5 - 1) + 2 * 5 * (7 - 1), Gaps);
  }
}

}  // namespace
}  // namespace tarnalgo
