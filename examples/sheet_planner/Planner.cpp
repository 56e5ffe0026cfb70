#include "examples/sheet_planner/Planner.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <unordered_map>
#include <utility>

#include "examples/sheet_planner/Contours.h"
#include "examples/sheet_planner/GapCheck.h"
#include "examples/sheet_planner/Ordering.h"
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

void TakeCircles(const TSheet& Sheet, TPlan& Plan) {
  for (const TSheetCircle& Circle : Sheet.Circles) {
    auto Curve = std::make_unique<TGeCircularArc2D>(Circle.Circle.Center, Circle.Circle.Radius, 0.0,
                                                    kFullTurn);
    auto Piece = std::make_unique<TFlyCircle>(Curve.get(), 0.0, false, Circle.Port, 0);
    Plan.Circles.Add(std::move(Piece));
    (void)Curve.release();  // the list owns it with the piece
  }
}

/// For each edge whether its contour holds an arc or a curve, which has to be cut as it is drawn:
/// flying the edges between would leave a start for each of them.
std::vector<char> EdgesBesideArcs(const TSheet& Sheet) {
  using TKind = TContourPiece::TKind;
  std::vector<char> Found(Sheet.Edges.size(), 0);
  for (const TOrdinaryContour& Contour : JoinPieces(Sheet, AllPieces(Sheet))) {
    const bool HoldsArc =
        std::any_of(Contour.Pieces.begin(), Contour.Pieces.end(),
                    [](const TContourPiece& P) { return P.Kind == TKind::Chain; });
    for (const TContourPiece& Piece : Contour.Pieces) {
      if (Piece.Kind == TKind::Edge) Found[static_cast<std::size_t>(Piece.Index)] = HoldsArc;
    }
  }
  return Found;
}

class TSheetPlanner {
 public:
  TSheetPlanner(const TSheet& Sheet, const TNesting& Nesting) : FSheet(Sheet), FNesting(Nesting) {}

  TPlan Run() {
    SplitEdges();
    MakeSegments();
    FindTheRuns();
    OrderRuns();
    BuildPasses();
    TakeCircles(FSheet, FPlan);
    FPlan.Contours = JoinPieces(FSheet, FOrdinary);
    return std::move(FPlan);
  }

 private:
  /// Every edge is either flown or ordinary; what is not straight is ordinary.
  void SplitEdges() {
    TPlanStats& Stats = FPlan.Stats;
    const std::vector<double> Stretches =
        StretchLengths(FSheet.Edges, MinScanLineLength, MaxScanLineLength);
    const std::vector<char> IsBesideArc = EdgesBesideArcs(FSheet);
    for (std::size_t I = 0; I < FSheet.Edges.size(); ++I) {
      const double Length = FSheet.Edges[I].Line.Length();
      const bool IsShort = Stretches[I] < MinScanLineLength;
      const bool IsLong = Length > MaxScanLineLength;
      if (IsShort || IsLong || IsBesideArc[I]) {
        ++(IsShort ? Stats.ShortEdges : IsLong ? Stats.LongEdges : Stats.EdgesBesideArcs);
        FOrdinary.push_back({TContourPiece::TKind::Edge, static_cast<int>(I), false});
        continue;
      }
      FFlown.push_back(I);
      ++Stats.FlownEdges;
      Stats.FlownLength += Length;
    }
    for (int I = 0; I < static_cast<int>(FSheet.Chains.size()); ++I) {
      FOrdinary.push_back({TContourPiece::TKind::Chain, I, false});
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
    FPlan.Stats.GapsTooLong = Found.GapsTooLong;
    FPlan.Stats.Runs = static_cast<int>(Found.Runs.size());
    for (const auto& Run : Found.Runs) {
      Run->AngVec = DcsX.RotateBy(Run->Angle);
      Run->SortByDM();
      SplitByLevel(*Run);
    }
    FPlan.Stats.RunsSplit = static_cast<int>(FRuns.size() - Found.Runs.size());
  }

  int LevelOf(const TLinearSegment& Segment) const {
    return FNesting.Level(FNesting.OfEdgeEnd(Segment.Line.StartPoint));
  }

  void SplitByLevel(const TLinearSegmentList& Run) {
    int Level = 0;  // of the segment before
    for (int I = 0; I < Run.Count(); ++I) {
      const int Before = std::exchange(Level, LevelOf(*Run[I]));
      if (I == 0 || Level != Before) {
        FRuns.push_back(std::make_unique<TLinearSegmentList>(Run.Angle, Run.Intercept));
        FRuns.back()->AngVec = Run.AngVec;
      }
      FRuns.back()->Add(Run[I]);
    }
  }

  /// Runs of one port, level and direction side by side, ordered across the sheet.
  void OrderRuns() {
    std::map<int, std::unordered_map<TGroupKey, TSegmentGroups>> Levels;
    std::set<std::pair<int, double>> Directions;
    for (const auto& Run : FRuns) {
      const TGroupKey Key{Run->First()->ChannelPort(), Run->Angle};
      Levels[LevelOf(*Run->First())][Key].Add(Run.get());
      Directions.insert({Key.Port, Key.Angle});
    }
    FPlan.Stats.Groups = static_cast<int>(Directions.size());
    for (auto& [Level, Groups] : Levels) {
      for (const auto& [Port, Angle] : Directions) {
        const auto Found = Groups.find({Port, Angle});
        if (Found == Groups.end()) continue;
        Found->second.SortByIntercept();
        FGroups.emplace_back(Found->second.begin(), Found->second.end());
      }
    }
  }

  void BuildPasses() {
    for (std::size_t Group = 0; Group < FGroups.size(); ++Group) {
      for (TLinearSegmentList* const Run : FGroups[Group]) {
        Run->BuildResult(FPlan.Passes.emplace_back());
        FPlan.GroupOfPass.push_back(static_cast<int>(Group));
      }
    }
  }

  const TSheet& FSheet;
  const TNesting& FNesting;
  TPlan FPlan;
  std::vector<std::size_t> FFlown;
  std::vector<TContourPiece> FOrdinary;
  std::vector<TGeLine2D> FCurves;
  std::deque<TFlyLine> FPieces;
  TLinearSegments FSegments;
  std::vector<std::unique_ptr<TLinearSegmentList>> FRuns;
  std::vector<std::vector<TLinearSegmentList*>> FGroups;
};

/// Takes the pieces behind `Position` off the pass.
TOwningFlyCurves SplitBehind(TOwningFlyCurves& Pass, int Position) {
  TOwningFlyCurves Tail;
  while (Pass.Count() - 1 > Position) Tail.Add(Pass.Extract(Pass.Count() - 1));
  Tail.Reverse();
  return Tail;
}

}  // namespace

TPlan GroupSheet(const TSheet& Sheet, const TNesting& Nesting) {
  return TSheetPlanner(Sheet, Nesting).Run();
}

void RejectCrossingGaps(const TSheet& Sheet, TPlan& Plan) {
  const TGapCheck Check(Sheet);
  TPlanStats& Stats = Plan.Stats;
  std::vector<TOwningFlyCurves> Whole = std::exchange(Plan.Passes, {});
  const std::vector<int> GroupOfWhole = std::exchange(Plan.GroupOfPass, {});
  for (std::size_t Number = 0; Number < Whole.size(); ++Number) {
    TOwningFlyCurves& Pass = Whole[Number];
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
    Plan.GroupOfPass.resize(Plan.Passes.size(), GroupOfWhole[Number]);
  }
}

TPlan PlanSheet(const TSheet& Sheet, const TProgressEvent& Progress) {
  const TNesting Nesting(Sheet);
  TPlan Plan = GroupSheet(Sheet, Nesting);
  RejectCrossingGaps(Sheet, Plan);
  OrderPlan(Sheet, Nesting, Plan, Progress);
  Plan.Regions = Nesting.Regions();
  return Plan;
}

TPlan PlanContours(const TSheet& Sheet) {
  TPlan Plan;
  Plan.Contours = JoinPieces(Sheet, AllPieces(Sheet));
  TakeCircles(Sheet, Plan);
  OrderPlan(Sheet, TNesting(Sheet), Plan, {});
  return Plan;
}

}  // namespace sheet_planner
