#include "geometryAlgo/flyscanAlgo/LinearSegmentList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "host/Exceptions.h"
#include "tests/support/Generate.h"
#include "tests/support/Restore.h"

namespace tarnalgo {
namespace {

/// Segments and the run over them, in the order given.
struct TRunOf {
  TLinearSegments Segments;
  TLinearSegmentList Run;

  explicit TRunOf(const std::vector<TLine2D>& Edges, double Angle = 0.0) : Run(Angle, 0.0) {
    for (const TLine2D& Edge : Edges) Run.Add(Segments.AddLine(nullptr, Edge));
  }
};

/// What a piece of a pass says: its curve's ends and whether it is a gap.
struct TPiece {
  TPoint2D Start;
  TPoint2D End;
  bool IsFlyGap;
  bool IsLine = true;  // else a smooth joint

  friend bool operator==(const TPiece&, const TPiece&) = default;
};

std::vector<TPiece> PiecesOf(const TFlyCurves& Pass) {
  std::vector<TPiece> Result;
  for (const TFlyCurve* const Piece : Pass) {
    EXPECT_EQ(0.0, Piece->PathStartParam());
    const bool IsLine = dynamic_cast<const TFlyLine*>(Piece) != nullptr;
    EXPECT_EQ(!IsLine, dynamic_cast<TGePolyBezier2D*>(Piece->GeCurve()) != nullptr);
    Result.push_back(
        {Piece->GeCurve()->StartPoint(), Piece->GeCurve()->EndPoint(), Piece->IsFlyGap(), IsLine});
  }
  return Result;
}

TEST(TLinearSegmentList, AnEmptyRunGivesAnEmptyPass) {
  TOwningFlyCurves Pass;
  Pass.Add(std::make_unique<TFlyLine>(new TGeLine2D({0, 0}, {1, 0}), 0.0, false, 1, 0));
  TLinearSegmentList().BuildResult(Pass);
  EXPECT_TRUE(Pass.IsEmpty());
}

TEST(TLinearSegmentList, ASingleEdgeIsCutFromItsStoredEndToItsStart) {
  TRunOf Along({{{0, 0}, {5, 0}}});
  TOwningFlyCurves Pass;
  Along.Run.BuildResult(Pass);
  EXPECT_EQ((std::vector<TPiece>{{{5, 0}, {0, 0}, false}}), PiecesOf(Pass));
  EXPECT_EQ(TPoint2D(1, 0), Along.Run.AngVec);
}

TEST(TLinearSegmentList, EdgesAreCutInOrderWhateverWayTheyWereDrawn) {
  TRunOf Mixed({{{20, 0}, {30, 0}}, {{5, 0}, {0, 0}}, {{10, 0}, {15, 0}}});
  TOwningFlyCurves Pass;
  Mixed.Run.BuildResult(Pass);
  const std::vector<TPiece> Expected = {{{0, 0}, {5, 0}, false},
                                        {{5, 0}, {10, 0}, true},
                                        {{10, 0}, {15, 0}, false},
                                        {{15, 0}, {20, 0}, true},
                                        {{20, 0}, {30, 0}, false}};
  EXPECT_EQ(Expected, PiecesOf(Pass));
  Mixed.Run.BuildResult(Pass);  // again: nothing left to turn
  EXPECT_EQ(Expected, PiecesOf(Pass));
}

TEST(TLinearSegmentList, OnlyAGapBeyondTheSampleLengthIsBridged) {
  const struct {
    const char* Name;
    TLine2D Second;
    bool IsBridged;
    bool IsLine = true;
  } Cases[] = {
      {"touching", {{10, 0}, {20, 0}}, false},
      {"exactly the sample length", {{10.3, 0}, {20, 0}}, false},
      {"beyond it within the tolerance", {{10.3 + 9e-7, 0}, {20, 0}}, false},
      {"beyond the tolerance", {{10.3 + 2e-6, 0}, {20, 0}}, true},
      {"a step to the side alone", {{10, 5}, {20, 5}}, false},
      {"a step to the side and a gap", {{10.5, 5}, {20, 5}}, true},
      {"overlap up to the sample length", {{9.7, 0}, {20, 0}}, false},
      {"overlap beyond it runs backwards", {{9.6, 0}, {20, 0}}, true},
      {"inside the first edge: back the way the edges are stored", {{4, 0}, {6, 0}}, true, false},
      {"the same edge again: likewise", {{0, 0}, {10, 0}}, true, false},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TRunOf Pair({{{0, 0}, {10, 0}}, Case.Second});
    TOwningFlyCurves Pass;
    Pair.Run.BuildResult(Pass);
    std::vector<TPiece> Expected = {{{0, 0}, {10, 0}, false}};
    if (Case.IsBridged) Expected.push_back({{10, 0}, Case.Second.StartPoint, true, Case.IsLine});
    Expected.push_back({Case.Second.StartPoint, Case.Second.EndPoint, false});
    EXPECT_EQ(Expected, PiecesOf(Pass));
  }
}

// The foot on a line without direction would always be the line itself, however far the next edge.
TEST(TLinearSegmentList, TheGapAfterAnEdgeOfNoLengthIsMeasuredAlongTheRun) {
  for (const double Length : {0.0, 1e-300, 5e-7}) {
    SCOPED_TRACE(Length);
    const std::vector<TLine2D> Edges = {
        {{0, 0}, {0, Length}}, {{0.2, 3}, {4, 3}}, {{6, 0}, {6, 0}}};
    TRunOf Dots(Edges);
    TOwningFlyCurves Pass;
    Dots.Run.BuildResult(Pass);
    std::vector<bool> Gaps;
    for (const TPiece& Piece : PiecesOf(Pass)) Gaps.push_back(Piece.IsFlyGap);
    EXPECT_EQ((std::vector<bool>{false, false, true, false}), Gaps);
  }
}

TEST(TLinearSegmentList, ReadsTheSampleLengthAtEachCall) {
  const test::TRestore Restore(CamSampleLen);
  TRunOf Pair({{{0, 0}, {10, 0}}, {{12, 0}, {20, 0}}});
  TOwningFlyCurves Pass;
  CamSampleLen = 2.5;
  Pair.Run.BuildResult(Pass);
  EXPECT_EQ(2, Pass.Count());
  CamSampleLen = 1.5;
  Pair.Run.BuildResult(Pass);
  EXPECT_EQ(3, Pass.Count());
}

TEST(TLinearSegmentList, ThePassTakesTheChannelOfTheEdgeThatComesFirst) {
  TFlyCurve Far(nullptr, 0.0, false, 4, 0);
  TFlyCurve Near(nullptr, 0.0, false, 9, 0);
  TLinearSegments Segments;
  TLinearSegmentList Run;
  Run.Add(Segments.AddLine(&Far, TLine2D({20, 0}, {30, 0})));
  Run.Add(Segments.AddLine(&Near, TLine2D({0, 0}, {10, 0})));
  TOwningFlyCurves Pass;
  Run.BuildResult(Pass);
  ASSERT_EQ(3, Pass.Count());
  for (const TFlyCurve* const Piece : Pass) EXPECT_EQ(9, Piece->ChannelPort());
}

TEST(TLinearSegmentList, CutsEdgesOfAnyCoordinates) {
  const double Odd[] = {std::nan(""), std::numeric_limits<double>::infinity(), 1e300, -1e300, 0.0};
  std::vector<TLine2D> Edges;
  for (const double A : Odd) {
    for (const double B : Odd) Edges.push_back({{A, B}, {B, 1}});
  }
  for (const double Angle : Odd) {
    TRunOf Any(Edges, Angle);
    TOwningFlyCurves Pass;
    Any.Run.BuildResult(Pass);
    Any.Run.CheckOverlap(Edges[0]);
    const auto IsCut = [](const TFlyCurve* Piece) { return !Piece->IsFlyGap(); };
    EXPECT_EQ(std::ssize(Edges), std::count_if(Pass.begin(), Pass.end(), IsCut));
  }
}

TEST(TLinearSegmentList, EdgesAcrossTheRunAreNotTurned) {
  TRunOf Across({{{1, 0}, {1, 5}}, {{0, 0}, {0, 5}}});
  Across.Run[1]->Line = {{0, 5}, {0, 0}};
  Across.Run.AngVec = {1, 0};
  Across.Run.SortByDM();
  EXPECT_EQ(TLine2D({0, 5}, {0, 0}), Across.Run[0]->Line);
  EXPECT_EQ(TLine2D({1, 0}, {1, 5}), Across.Run[1]->Line);
}

TEST(TLinearSegmentList, SortsAgainstTheRunAscendingByTheLowEnd) {
  std::mt19937 Random(20240613);
  for (int Round = 0; Round < 30; ++Round) {
    std::vector<TLine2D> Edges;
    for (int I = 0; I < 80; ++I) {
      Edges.emplace_back(test::RandomGridPoint(Random, -9, 9),
                         test::RandomGridPoint(Random, -9, 9));
    }
    TRunOf Any(Edges);
    TLinearSegmentList& Run = Any.Run;
    Run.AngVec = DcsX.RotateBy(test::RandomInt(Random, 0, 7) * kPi / 4);
    std::vector<TLinearSegment*> Expected(Run.begin(), Run.end());
    Run.SortByDM();
    for (const TLinearSegment* const Segment : Run) {
      EXPECT_LE(Segment->Line.EndPoint.DotMul(Run.AngVec),
                Segment->Line.StartPoint.DotMul(Run.AngVec));
    }
    MergeSort(Expected, [&Run](const TLinearSegment* A, const TLinearSegment* B) {
      return Run.CompareSegmentDM(*A, *B);
    });
    EXPECT_EQ(Expected, std::vector<TLinearSegment*>(Run.begin(), Run.end()));
  }
}

TEST(TLinearSegmentList, OverlapIsJudgedAlongTheRun) {
  const struct {
    const char* Name;
    TLine2D Line;
    bool Expected;
  } Cases[] = {
      {"inside", {{2, 0}, {3, 0}}, true},
      {"drawn backwards", {{3, 0}, {2, 0}}, true},
      {"touching", {{10, 0}, {15, 0}}, true},
      {"a gap within the tolerance", {{10 + 9e-7, 0}, {15, 0}}, true},
      {"a gap beyond it", {{10 + 1.1e-6, 0}, {15, 0}}, false},
      {"around everything", {{-5, 0}, {50, 0}}, true},
      {"between the edges", {{11, 0}, {19, 0}}, false},
      {"the second edge", {{25, 0}, {26, 0}}, true},
      {"far to the side", {{2, 99}, {3, 99}}, true},
  };
  TRunOf Pair({{{0, 0}, {10, 0}}, {{30, 0}, {20, 0}}});
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    Pair.Run.AngVec = {1, 0};
    EXPECT_EQ(Case.Expected, Pair.Run.CheckOverlap(Case.Line));
    Pair.Run.AngVec = {-1, 0};
    EXPECT_EQ(Case.Expected, Pair.Run.CheckOverlap(Case.Line));
    Pair.Run.AngVec = {};
    EXPECT_TRUE(Pair.Run.CheckOverlap(Case.Line));
  }
  EXPECT_FALSE(TLinearSegmentList().CheckOverlap({{0, 0}, {1, 0}}));
}

}  // namespace
}  // namespace tarnalgo
