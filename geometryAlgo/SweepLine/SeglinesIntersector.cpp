#include "geometryAlgo/SweepLine/SeglinesIntersector.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "geometryAlgo/SweepLine/SegmentEnds.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

bool IsFinite(const TVLine2D& Line) {
  return TPoint2DUtils::IsFinite(Line.StartPoint) && TPoint2DUtils::IsFinite(Line.EndPoint);
}

double GreatestCoordinate(const std::vector<TVLine2D>& Lines) {
  double Greatest = 0.0;
  for (const TVLine2D& Line : Lines) {
    if (!IsFinite(Line)) continue;
    for (const TPoint2D& P : {Line.StartPoint, Line.EndPoint}) {
      Greatest = std::max({Greatest, std::abs(P.X), std::abs(P.Y)});
    }
  }
  return Greatest;
}

/// 1 for coordinates of sensible size, else the power of two that brings the greatest near 1.
double ScaleFor(double Greatest) {
  if (!(Greatest > 0.0)) return 1.0;
  const int Exponent = std::ilogb(Greatest);
  if (std::abs(Exponent) <= kUnscaledExponent) return 1.0;
  return std::ldexp(1.0, std::min(-Exponent, 1000));
}

}  // namespace

int TSeglinesIntersector::TEvent::Compare(const TEventKey& A, const TEventKey& B) {
  if (const int Sign = TPoint2DUtils::CompareByXY(A.Point, B.Point)) return Sign;
  if (const int Sign = CompareExact(A.Kind, B.Kind)) return Sign;
  if (const int Sign = CompareExact(A.First, B.First)) return Sign;
  return CompareExact(A.Second, B.Second);
}

// --- Setting up ---

TSeglinesIntersector::TSeglinesIntersector(const std::vector<TVLine2D>& Lines, double Tolerance,
                                           double SecondTolerance)
    : FRanks(Lines.size(), -1), FSecondTolerance(SecondTolerance), FStatus(TScanningOrder{this}) {
  TakeLines(Lines, Tolerance);
  SortEnds();
  FPassed = TPassedSegments(FLines, FTolerance);
  FNodes.resize(FLines.size(), nullptr);
  FOrderKeys.reserve(FLines.size());
  for (const TVLine2D& Seg : FLines) {
    const TPoint2D V = Seg.Vector();
    FOrderKeys.push_back(V.X != 0.0 ? V.Y / V.X : std::numeric_limits<double>::infinity());
  }
}

// Segments that are not finite are left out: they have no events.
void TSeglinesIntersector::TakeLines(const std::vector<TVLine2D>& Lines, double Tolerance) {
  FScale = ScaleFor(GreatestCoordinate(Lines));
  if (Tolerance > 0.0) FTolerance = std::min(Tolerance * FScale, kGreatestTolerance);
  FTest = TMeetingTest(FTolerance);
  // Turned after scaling, which may take an end to another side.
  const auto Taken = [&](const TVLine2D& Given) {
    const TVLine2D Seg(Given.StartPoint * FScale, Given.EndPoint * FScale);
    const bool IsForward = TPoint2DUtils::CompareByXY(Seg.StartPoint, Seg.EndPoint) <= 0;
    return IsForward ? Seg : Seg.ReverseDirection();
  };
  std::vector<TSegmentEnd> Starts;
  Starts.reserve(Lines.size());
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    if (!IsFinite(Lines[I])) continue;
    Starts.push_back({Taken(Lines[I]).StartPoint, static_cast<int>(I)});
  }
  SortSegmentEnds(Starts);
  FLines.reserve(Starts.size());
  FSources.reserve(Starts.size());
  for (const TSegmentEnd& Start : Starts) {
    FRanks[Index(Start.Id)] = static_cast<TRank>(FLines.size());
    FLines.push_back(Taken(Lines[Index(Start.Id)]));
    FSources.push_back(Start.Id);
  }
}

void TSeglinesIntersector::SortEnds() {
  std::vector<TSegmentEnd> Ends;
  Ends.reserve(FLines.size());
  for (std::size_t I = 0; I < FLines.size(); ++I) Ends.push_back({FLines[I].EndPoint, FSources[I]});
  SortSegmentEnds(Ends);
  FEnds.reserve(Ends.size());
  for (const TSegmentEnd& End : Ends) FEnds.push_back(FRanks[Index(End.Id)]);
}

// --- The sweep ---

std::vector<TSeglineIntersectInfo> TSeglinesIntersector::GetIntersectInfosBySweepline(
    const std::vector<TVLine2D>& Lines, double Tolerance, double SecondTolerance) {
  return TSeglinesIntersector(Lines, Tolerance, SecondTolerance).GetResult();
}

std::vector<TSeglineIntersectInfo> TSeglinesIntersector::GetResult() {
  try {
    Sweep();
  } catch (...) {
    FNextEnd = FEnds.size();  // what is left is no sweep to go on with
    FResult.clear();
    FUnplaced.clear();
    throw;
  }
  return std::exchange(FResult, {});
}

void TSeglinesIntersector::Sweep() {
  FResult.reserve(FLines.size());
  FRecords.reserve(FLines.size());
  // A segment is no sooner started than ended, nor has a crossing before both: when the ends have
  // run out, everything has.
  for (bool IsConsistent = true; IsConsistent && FNextEnd < FEnds.size();) {
    switch (NextKind()) {
      case 0:
        TreatStart(FNextStart++);
        break;
      case 1:
        IsConsistent = TreatCross(FQueue.Pop());
        break;
      default:
        TreatEnd(FEnds[FNextEnd++]);
    }
  }
  FResult.insert(FResult.end(), FUnplaced.begin(), FUnplaced.end());
  FUnplaced.clear();
}

/// The kind of the least event, as `TEvent::Compare` orders them: at one point starts come first
/// and ends last. There must be an end.
std::uint8_t TSeglinesIntersector::NextKind() const {
  std::uint8_t Kind = 2;
  const TPoint2D* Least = &Line(FEnds[FNextEnd]).EndPoint;
  if (FQueue.Count() > 0) {
    const TPoint2D& P = FQueue.Top().Event->Point;
    if (TPoint2DUtils::CompareByXY(P, *Least) <= 0) {
      Kind = 1;
      Least = &P;
    }
  }
  if (Index(FNextStart) == FLines.size()) return Kind;
  return TPoint2DUtils::CompareByXY(Line(FNextStart).StartPoint, *Least) <= 0 ? 0 : Kind;
}

// Two segments that are in the status together have been tested when the later one started, so a
// start is the only place where neighbours can meet for the first time.
void TSeglinesIntersector::TreatStart(TRank Seg) {
  FSweepPoint = Line(Seg).StartPoint;
  if (FAllPairsTested && !FMeets[Index(Seg)]) return;  // no event will ask for it
  TNode* const Node = FStatus.Insert(Seg, Seg);
  FNodes[Index(Seg)] = Node;
  const TNode* const Below = TStatus::PreviousNode(Node);
  const TNode* const Above = TStatus::NextNode(Node);
  if (FAllPairsTested) return;
  if (Below != nullptr) TestCrossAndAddEvent(Below->Value, Seg);
  if (Above != nullptr) TestCrossAndAddEvent(Above->Value, Seg);
  IntersectWithPassedSegs(Seg, Below, Above);
}

/// False when neither segment is in the status. That cannot happen as long as `EventPoint` keeps
/// every crossing between the starts and the ends of its segments.
bool TSeglinesIntersector::TreatCross(const TQueued& Cross) {
  TEvent& Event = *Cross.Event;
  FSweepPoint = Event.Point;
  TNode* A = FNodes[Index(FRanks[Index(Event.First)])];
  TNode* const B = FNodes[Index(FRanks[Index(Event.Second)])];
  if (A == nullptr) A = B;
  if (Event.Other == nullptr && A != nullptr) {
    FRecords[Index(Cross.Record)].Pending = nullptr;
    CollectRun(A, B);
    ProcessCrossEvent(Event.Point, Event, FRun);
  }
  const bool IsConsistent = Event.Other != nullptr || A != nullptr;
  FEvents.Destroy(&Event);
  return IsConsistent;
}

void TSeglinesIntersector::TreatEnd(TRank Seg) {
  FSweepPoint = Line(Seg).EndPoint;
  FStatus.RemoveNode(std::exchange(FNodes[Index(Seg)], nullptr));
}

// --- Runs ---

/// The nodes around `A` that stand at the sweep point, in their order; `B` is one of them where the
/// walk meets it. Never empty.
void TSeglinesIntersector::CollectRun(TNode* A, TNode* B) {
  const double Y = CalcY(A->Value);
  const auto MeetsHere = [&](TNode* Next) {
    return Next != nullptr && (Next == B || IsScanningSegClose(Y, Next->Value));
  };
  FRun.clear();
  for (TNode* N = TStatus::PreviousNode(A); MeetsHere(N); N = TStatus::PreviousNode(N)) {
    FRun.push_back(N);
  }
  std::reverse(FRun.begin(), FRun.end());
  FRun.push_back(A);
  for (TNode* N = TStatus::NextNode(A); MeetsHere(N); N = TStatus::NextNode(N)) {
    FRun.push_back(N);
  }
}

void TSeglinesIntersector::ProcessCrossEvent(const TPoint2D& P, TEvent& Event, const TRun& Run) {
  if (Run.size() < 2) {
    FUnplaced.push_back(Event.Info);
    return;
  }
  FResult.push_back(Event.Info);
  const bool IsOwnPair = Run.size() == 2 && GetCrossRecordID(Run[0]->Value, Run[1]->Value) ==
                                                GetCrossRecordID(FRanks[Index(Event.First)],
                                                                 FRanks[Index(Event.Second)]);
  if (!IsOwnPair) TakeOthersOfRun(P, Event, Run);
  ReorderRun(Run);
}

/// Every other pair of the run that meets has a record: where its event waits for this very place,
/// the meeting is taken with this one.
void TSeglinesIntersector::TakeOthersOfRun(const TPoint2D& P, TEvent& Event, const TRun& Run) {
  for (std::size_t I = 0; I < Run.size(); ++I) {
    for (std::size_t J = I + 1; J < Run.size(); ++J) {
      const int Record = FindRecord(Run[I]->Value, Run[J]->Value);
      if (Record < 0) continue;
      TEvent*& Pending = FRecords[Index(Record)].Pending;
      if (Pending == nullptr || !Pending->Point.Equals(P, FTolerance)) continue;
      FResult.push_back(Pending->Info);
      Pending->Other = &Event;
      Pending = nullptr;
    }
  }
}

/// Brings the segments of the run into the order they have just after the sweep point. The nodes
/// stay, the segments they carry change places.
void TSeglinesIntersector::ReorderRun(const TRun& Run) {
  const auto KeyOf = [this](const TNode* Node) { return FOrderKeys[Index(Node->Value)]; };
  for (std::size_t I = 0; I < Run.size(); ++I) {
    std::size_t Least = I;
    for (std::size_t J = I + 1; J < Run.size(); ++J) {
      if (KeyOf(Run[J]) < KeyOf(Run[Least])) Least = J;
    }
    std::swap(Run[I]->Key, Run[Least]->Key);
    std::swap(Run[I]->Value, Run[Least]->Value);
  }
  for (TNode* Node : Run) FNodes[Index(Node->Value)] = Node;
}

}  // namespace tarnalgo
