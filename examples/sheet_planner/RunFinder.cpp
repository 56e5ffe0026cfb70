#include "examples/sheet_planner/RunFinder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>

#include "examples/sheet_planner/Collinear.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// Angle: edges this near to parallel get one group key.
constexpr double kOneKey = 1e-7;

/// The slopes of the lines through a fixed point that pass all points seen so far near enough.
class TCorridor {
 public:
  TCorridor(double Along, double Across, double HalfWidth)
      : FAlong(Along), FAcross(Across), FHalfWidth(HalfWidth) {}

  /// Narrows the corridor to pass (`Along`, `Across`), beyond the fixed point.
  void Pass(double Along, double Across) {
    const double Way = Along - FAlong;
    FLow = std::max(FLow, (Across - FHalfWidth - FAcross) / Way);
    FHigh = std::min(FHigh, (Across + FHalfWidth - FAcross) / Way);
  }
  bool IsOpen() const { return FLow <= FHigh; }

 private:
  double FAlong;
  double FAcross;
  double FHalfWidth;
  double FLow = -std::numeric_limits<double>::infinity();
  double FHigh = std::numeric_limits<double>::infinity();
};

/// An edge in the frame of its direction.
struct TSpan {
  double From;
  double To;
  double FromAcross;
  double ToAcross;
  double KeyAngle;
  TLinearSegment* Segment;
};

struct TOpenRun {
  double End;
  TCorridor Corridor;
  TLinearSegmentList* Run;
};
using TOpenRuns = std::multimap<double, TOpenRun>;  // by where the end lies across

class TRunSweep {
 public:
  explicit TRunSweep(TRuns& Result) : FResult(Result) {}

  void Run(const TDirectionClass& Class, const std::vector<TLinearSegment*>& Segments) {
    FOpen.clear();
    FWindow = InterceptTolerance +
              MaxConnectDistance * std::tan(std::min(Class.Spread, kQuarterTurn / 2));
    for (const TSpan& Span : SpansOf(Class, Segments)) Take(Span);
  }

 private:
  static std::vector<TSpan> SpansOf(const TDirectionClass& Class,
                                    const std::vector<TLinearSegment*>& Segments) {
    const auto Member = [&](int I) { return Segments[static_cast<std::size_t>(I)]; };
    const TDirectionFrame Frame(Class.Angle, Member(Class.Members.front())->Line.StartPoint);
    std::vector<TSpan> Spans;
    Spans.reserve(Class.Members.size());
    double KeyAngle = Member(Class.Members.front())->LineAngle;
    for (const int I : Class.Members) {
      TLinearSegment* const Segment = Member(I);
      if (Segment->LineAngle - KeyAngle > kOneKey) KeyAngle = Segment->LineAngle;
      const TPoint2D& A = Segment->Line.StartPoint;
      const TPoint2D& B = Segment->Line.EndPoint;
      TSpan Span{Frame.Along(A),  Frame.Along(B), Frame.Across(A),
                 Frame.Across(B), KeyAngle,       Segment};
      if (Span.From > Span.To) {
        std::swap(Span.From, Span.To);
        std::swap(Span.FromAcross, Span.ToAcross);
      }
      Spans.push_back(Span);
    }
    std::stable_sort(Spans.begin(), Spans.end(),
                     [](const TSpan& A, const TSpan& B) { return A.From < B.From; });
    return Spans;
  }

  void Take(const TSpan& Span) {
    const auto Best = FindRun(Span);
    if (Best == FOpen.end()) return Open(Span);
    auto Node = FOpen.extract(Best);
    TOpenRun& Run = Node.mapped();
    Run.Run->Add(Span.Segment);
    Run.Corridor = Extended(Run.Corridor, Span);
    Run.End = Span.To;
    Node.key() = Span.ToAcross;
    FOpen.insert(std::move(Node));
  }

  void Open(const TSpan& Span) {
    auto Run = std::make_unique<TLinearSegmentList>(Span.KeyAngle, Span.Segment->Intercept);
    Run->Add(Span.Segment);
    TCorridor Corridor(Span.From, Span.FromAcross, InterceptTolerance / 2);
    Corridor.Pass(Span.To, Span.ToAcross);
    FOpen.insert({Span.ToAcross, TOpenRun{Span.To, Corridor, Run.get()}});
    FResult.Runs.push_back(std::move(Run));
  }

  static TCorridor Extended(TCorridor Corridor, const TSpan& Span) {
    Corridor.Pass(Span.From, Span.FromAcross);
    Corridor.Pass(Span.To, Span.ToAcross);
    return Corridor;
  }

  /// The open run that `Span` joins. Closes those that it shows to be out of reach.
  TOpenRuns::iterator FindRun(const TSpan& Span) {
    auto Best = FOpen.end();
    bool IsTooFar = false;
    for (auto It = FOpen.lower_bound(Span.FromAcross - FWindow);
         It != FOpen.end() && It->first <= Span.FromAcross + FWindow;) {
      const TOpenRun& Run = It->second;
      const bool IsCollinear =
          Run.End <= Span.From + kLinearTolerance && Extended(Run.Corridor, Span).IsOpen();
      if (Run.End < Span.From - MaxConnectDistance - kLinearTolerance) {
        IsTooFar = IsTooFar || IsCollinear;
        It = FOpen.erase(It);
        continue;
      }
      if (IsCollinear && (Best == FOpen.end() || Run.End > Best->second.End)) Best = It;
      ++It;
    }
    if (Best == FOpen.end() && IsTooFar) ++FResult.GapsTooLong;
    return Best;
  }

  TRuns& FResult;
  TOpenRuns FOpen;
  double FWindow = 0.0;
};

}  // namespace

TRuns FindRuns(const TLinearSegments& Sorted) {
  TRuns Result;
  TRunSweep Sweep(Result);
  std::vector<TLinearSegment*> Segments;
  std::vector<double> Angles;
  for (int I = 0; I < Sorted.Count();) {
    Segments.clear();
    Angles.clear();
    const int Port = Sorted[I]->ChannelPort();
    for (; I < Sorted.Count() && Sorted[I]->ChannelPort() == Port; ++I) {
      Segments.push_back(Sorted[I]);
      Angles.push_back(Sorted[I]->LineAngle);
    }
    for (const TDirectionClass& Class : DirectionClasses(Angles, AngleTolerance / 2)) {
      Sweep.Run(Class, Segments);
    }
  }
  return Result;
}

}  // namespace sheet_planner
