#include "examples/sheet_planner/Planner.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <iterator>
#include <memory>
#include <unordered_map>
#include <utility>

#include "examples/sheet_planner/Contours.h"
#include "examples/sheet_planner/GapCheck.h"
#include "examples/sheet_planner/RunFinder.h"
#include "examples/sheet_planner/Stretches.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// Pointing up, or to the right when level: edges that are a hair off level then get one key
/// whether they rise or fall, which the keys of a line and of its reverse do not promise.
TLine2D Upward(const TLine2D& Line) {
  const TPoint2D Way = Line.EndPoint - Line.StartPoint;
  const bool IsUpward = Way.Y > 0.0 || (Way.Y == 0.0 && Way.X > 0.0);  // exact: a convention
  return IsUpward ? Line : Line.ReverseParam();
}

class TSheetPlanner {
 public:
  explicit TSheetPlanner(const TSheet& Sheet) : FSheet(Sheet) {}

  TPlan Run() {
    SplitEdges();
    MakeSegments();
    FindTheRuns();
    OrderRuns();
    BuildPasses();
    TakeCircles();
    FPlan.Contours = JoinPieces(FSheet, FOrdinary);
    return std::move(FPlan);
  }

 private:
  /// Every edge is either flown or ordinary; what is not straight is ordinary.
  void SplitEdges() {
    TPlanStats& Stats = FPlan.Stats;
    const std::vector<double> Stretches =
        StretchLengths(FSheet.Edges, MinScanLineLength, MaxScanLineLength);
    for (std::size_t I = 0; I < FSheet.Edges.size(); ++I) {
      const double Length = FSheet.Edges[I].Line.Length();
      const bool IsShort = Stretches[I] < MinScanLineLength;
      const bool IsLong = Length > MaxScanLineLength;
      if (IsShort || IsLong) {
        ++(IsShort ? Stats.ShortEdges : Stats.LongEdges);
        FOrdinary.push_back({TContourPiece::TKind::Edge, static_cast<int>(I), false});
        continue;
      }
      FFlown.push_back(I);
      ++Stats.FlownEdges;
      Stats.FlownLength += Length;
    }
    for (int I = 0; I < static_cast<int>(FSheet.Arcs.size()); ++I) {
      FOrdinary.push_back({TContourPiece::TKind::Arc, I, false});
    }
    for (int I = 0; I < static_cast<int>(FSheet.Curves.size()); ++I) {
      FOrdinary.push_back({TContourPiece::TKind::Curve, I, false});
    }
  }

  /// One segment for each flown edge, sorted by its keys.
  void MakeSegments() {
    FCurves.reserve(FFlown.size());  // the pieces refer to them
    FSegments.Reserve(static_cast<int>(FFlown.size()));
    for (const std::size_t I : FFlown) {
      const TSheetEdge& Edge = FSheet.Edges[I];
      const TLine2D Line = Upward(Edge.Line);
      FCurves.emplace_back(Line);
      FPieces.emplace_back(&FCurves.back(), 0.0, false, Edge.Port, 0);
      FSegments.AddLine(&FPieces.back(), Line);
    }
    FSegments.SortByAngleIntercept();
  }

  void FindTheRuns() {
    TRuns Found = FindRuns(FSegments);
    FRuns = std::move(Found.Runs);
    FPlan.Stats.GapsTooLong = Found.GapsTooLong;
    FPlan.Stats.Runs = static_cast<int>(FRuns.size());
  }

  /// Runs of one port and direction side by side, ordered across the sheet.
  void OrderRuns() {
    std::unordered_map<TGroupKey, TSegmentGroups> Groups;
    std::vector<TGroupKey> Keys;
    for (const auto& Run : FRuns) {
      const TGroupKey Key{Run->First()->ChannelPort(), Run->Angle};
      const auto [Group, IsNew] = Groups.try_emplace(Key);
      if (IsNew) Keys.push_back(Key);
      Group->second.Add(Run.get());
    }
    std::sort(Keys.begin(), Keys.end(), [](const TGroupKey& A, const TGroupKey& B) {
      return std::pair(A.Port, A.Angle) < std::pair(B.Port, B.Angle);
    });
    FPlan.Stats.Groups = static_cast<int>(Keys.size());
    for (const TGroupKey& Key : Keys) {
      TSegmentGroups& Group = Groups.find(Key)->second;
      Group.SortByIntercept();
      FOrderedRuns.insert(FOrderedRuns.end(), Group.begin(), Group.end());
    }
  }

  void BuildPasses() {
    FPlan.Passes.reserve(FOrderedRuns.size());
    for (TLinearSegmentList* const Run : FOrderedRuns) {
      // Turned like the edges of longer runs, a lone one is cut along the direction too.
      Run->AngVec = DcsX.RotateBy(Run->Angle);
      if (Run->Count() == 1) Run->SortByDM();
      Run->BuildResult(FPlan.Passes.emplace_back());
    }
  }

  void TakeCircles() {
    for (const TSheetCircle& Circle : FSheet.Circles) {
      auto Curve = std::make_unique<TGeCircularArc2D>(Circle.Circle.Center, Circle.Circle.Radius,
                                                      0.0, kFullTurn);
      auto Piece = std::make_unique<TFlyCircle>(Curve.get(), 0.0, false, Circle.Port, 0);
      FPlan.Circles.Add(std::move(Piece));
      (void)Curve.release();  // the list owns it with the piece
    }
  }

  const TSheet& FSheet;
  TPlan FPlan;
  std::vector<std::size_t> FFlown;
  std::vector<TContourPiece> FOrdinary;
  std::vector<TGeLine2D> FCurves;
  std::deque<TFlyLine> FPieces;
  TLinearSegments FSegments;
  std::vector<std::unique_ptr<TLinearSegmentList>> FRuns;
  std::vector<TLinearSegmentList*> FOrderedRuns;
};

/// Takes the pieces behind `Position` off the pass.
TOwningFlyCurves SplitBehind(TOwningFlyCurves& Pass, int Position) {
  TOwningFlyCurves Tail;
  while (Pass.Count() - 1 > Position) Tail.Add(Pass.Extract(Pass.Count() - 1));
  Tail.Reverse();
  return Tail;
}

}  // namespace

TPlan GroupSheet(const TSheet& Sheet) {
  return TSheetPlanner(Sheet).Run();
}

void RejectCrossingGaps(const TSheet& Sheet, TPlan& Plan) {
  const TGapCheck Check(Sheet);
  TPlanStats& Stats = Plan.Stats;
  for (TOwningFlyCurves& Pass : std::exchange(Plan.Passes, {})) {
    std::vector<TOwningFlyCurves> Tails;  // the last one first
    for (int I = Pass.Count() - 1; I >= 0; --I) {
      if (!Pass[I]->IsFlyGap()) continue;
      const TGeCurve2D& Gap = *Pass[I]->GeCurve();
      if (Check.IsClear(Gap)) {
        ++Stats.GapsAccepted;
        Stats.GapLength += Gap.CurveLength();
        continue;
      }
      ++Stats.GapsCrossing;
      Plan.Rejected.push_back({{Gap.StartPoint(), Gap.EndPoint()}});
      Tails.push_back(SplitBehind(Pass, I));
      Pass.Delete(I);
    }
    Plan.Passes.push_back(std::move(Pass));
    std::move(Tails.rbegin(), Tails.rend(), std::back_inserter(Plan.Passes));
  }
}

TPlan PlanSheet(const TSheet& Sheet) {
  TPlan Plan = GroupSheet(Sheet);
  RejectCrossingGaps(Sheet, Plan);
  return Plan;
}

}  // namespace sheet_planner
