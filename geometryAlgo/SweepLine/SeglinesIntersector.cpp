#include "geometryAlgo/SweepLine/SeglinesIntersector.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

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
  constexpr int kSensible = 300;  // products of three are then far from the range of a double
  if (!(Greatest > 0.0)) return 1.0;
  const int Exponent = std::ilogb(Greatest);
  if (std::abs(Exponent) <= kSensible) return 1.0;
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
    : FLines(Lines.size()),
      FSecondTolerance(SecondTolerance),
      FStatus(TScanningOrder{this}),
      FNodes(Lines.size(), nullptr) {
  TakeLines(Lines, Tolerance);
  FPassed = TPassedSegments(FLines, FTolerance);
  std::sort(FEnds.begin(), FEnds.end(),
            [](const TEventKey& A, const TEventKey& B) { return TEvent::Compare(A, B) < 0; });
  FOrderKeys.reserve(FLines.size());
  for (const TVLine2D& Seg : FLines) {
    const TPoint2D V = Seg.Vector();
    FOrderKeys.push_back(V.X != 0.0 ? V.Y / V.X : std::numeric_limits<double>::infinity());
  }
}

// Segments that are not finite stay points at the origin without events, so that the others keep
// their positions.
void TSeglinesIntersector::TakeLines(const std::vector<TVLine2D>& Lines, double Tolerance) {
  constexpr double kGreatestTolerance = 1e100;  // its products stay in range
  FScale = ScaleFor(GreatestCoordinate(Lines));
  if (Tolerance > 0.0) FTolerance = std::min(Tolerance * FScale, kGreatestTolerance);
  FTest = TMeetingTest(FTolerance);
  FEnds.reserve(2 * Lines.size());
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    if (!IsFinite(Lines[I])) continue;
    TVLine2D& Seg = FLines[I];
    Seg = {Lines[I].StartPoint * FScale, Lines[I].EndPoint * FScale};
    if (TPoint2DUtils::CompareByXY(Seg.StartPoint, Seg.EndPoint) > 0) {
      Seg = Seg.ReverseDirection();
    }
    FEnds.push_back({Seg.StartPoint, static_cast<int>(I), 0, 0});
    FEnds.push_back({Seg.EndPoint, static_cast<int>(I), 0, 2});
  }
}

// --- The sweep ---

std::vector<TSeglineIntersectInfo> TSeglinesIntersector::GetIntersectInfosBySweepline(
    const std::vector<TVLine2D>& Lines, double Tolerance, double SecondTolerance) {
  return TSeglinesIntersector(Lines, Tolerance, SecondTolerance).GetResult();
}

std::vector<TSeglineIntersectInfo> TSeglinesIntersector::GetResult() {
  while (FNextEnd < FEnds.size() || FQueue.Count() > 0) {
    if (NextIsEnd()) {
      const TEventKey& End = FEnds[FNextEnd++];
      FSweepPoint = End.Point;
      End.Kind == 0 ? TreatStart(End.First) : TreatEnd(End.First);
      continue;
    }
    const TQueued Cross = FQueue.Pop();
    FSweepPoint = Cross.Event->Point;
    const bool IsConsistent = TreatCross(Cross);
    FEvents.Destroy(Cross.Event);
    if (!IsConsistent) break;
  }
  FResult.insert(FResult.end(), FUnplaced.begin(), FUnplaced.end());
  FUnplaced.clear();
  return std::exchange(FResult, {});
}

bool TSeglinesIntersector::NextIsEnd() const {
  if (FNextEnd == FEnds.size()) return false;
  return FQueue.Count() == 0 || TEvent::Compare(FEnds[FNextEnd], *FQueue.Top().Event) < 0;
}

void TSeglinesIntersector::TestNeighbour(TNode* Neighbour, int Seg) {
  if (Neighbour != nullptr) TestCrossAndAddEvent(Neighbour->Value, Seg);
}

void TSeglinesIntersector::TreatStart(int Seg) {
  TNode* const Node = FStatus.Insert(Seg, Seg);
  FNodes[Index(Seg)] = Node;
  TestNeighbour(TStatus::PreviousNode(Node), Seg);
  TestNeighbour(TStatus::NextNode(Node), Seg);
  IntersectWithPassedSegs(Seg);
}

/// False when neither segment is in the status. That cannot happen as long as `EventPoint` keeps
/// every crossing between the starts and the ends of its segments.
bool TSeglinesIntersector::TreatCross(const TQueued& Cross) {
  TEvent& Event = *Cross.Event;
  if (Event.Other != nullptr) return true;
  if (FNodes[Index(Event.First)] == nullptr && FNodes[Index(Event.Second)] == nullptr) {
    return false;
  }
  FRecords[Index(Cross.Record)].Pending = nullptr;
  TRun Run;
  CollectRun(Event.First, Event.Second, Run);
  ProcessCrossEvent(Event.Point, Event, Run);
  TNode* const First = Run.front();
  TNode* const Last = Run.back();
  TestNeighbour(TStatus::PreviousNode(First), First->Value);
  TestNeighbour(TStatus::NextNode(Last), Last->Value);
  return true;
}

void TSeglinesIntersector::TreatEnd(int Seg) {
  TNode* const Node = FNodes[Index(Seg)];
  TNode* const Below = TStatus::PreviousNode(Node);
  TNode* const Above = TStatus::NextNode(Node);
  if (Below != nullptr && Above != nullptr) TestCrossAndAddEvent(Below->Value, Above->Value);
  FStatus.RemoveNode(Node);
  FNodes[Index(Seg)] = nullptr;
  FEnded.push_back(Seg);
}

// --- Runs ---

/// The nodes around those of `A` and `B` (of which one may have left the status) that stand at the
/// sweep point, in their order. Never empty.
void TSeglinesIntersector::CollectRun(int A, int B, TRun& Run) const {
  TNode* Node = FNodes[Index(A)];
  TNode* const OtherNode = FNodes[Index(B)];
  if (Node == nullptr) Node = OtherNode;
  const double Y = CalcY(Node->Value);
  const auto MeetsHere = [&](TNode* Next) {
    return Next != nullptr &&
           (Next == OtherNode || TMathUtils::FloatEquals(Y, CalcY(Next->Value), FTolerance));
  };
  for (TNode* N = TStatus::PreviousNode(Node); MeetsHere(N); N = TStatus::PreviousNode(N)) {
    Run.push_back(N);
  }
  std::reverse(Run.begin(), Run.end());
  Run.push_back(Node);
  for (TNode* N = TStatus::NextNode(Node); MeetsHere(N); N = TStatus::NextNode(N)) {
    Run.push_back(N);
  }
}

void TSeglinesIntersector::ProcessCrossEvent(const TPoint2D& P, TEvent& Event, const TRun& Run) {
  if (Run.size() < 2) {
    FUnplaced.push_back(Event.Info);
    return;
  }
  FResult.push_back(Event.Info);
  TestOthersOfRun(P, Event, Run);
  ReorderRun(Run);
}

/// Every other pair of the run: a meeting not found yet is recorded at once, one that waits for its
/// own event at this place is taken with this one.
void TSeglinesIntersector::TestOthersOfRun(const TPoint2D& P, TEvent& Event, const TRun& Run) {
  const std::int64_t Own = GetCrossRecordID(Event.First, Event.Second);
  for (std::size_t I = 0; I < Run.size(); ++I) {
    for (std::size_t J = I + 1; J < Run.size(); ++J) {
      const int A = Run[I]->Value;
      const int B = Run[J]->Value;
      if (GetCrossRecordID(A, B) == Own) continue;
      TEvent* Found = nullptr;
      if (TestCross(A, B, Found)) {
        FResult.push_back(Found->Info);
        FEvents.Destroy(Found);
        continue;
      }
      const int Record = FindRecord(A, B);
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

/// An upright segment stands wherever the sweep point is.
double TSeglinesIntersector::CalcY(const TVLine2D& Seg, double X, double Y, double Tol) {
  const TPoint2D& Start = Seg.StartPoint;
  const TPoint2D& End = Seg.EndPoint;
  if (TMathUtils::FloatEquals(End.X, Start.X, Tol)) return Y;
  const double T = (X - Start.X) / (End.X - Start.X);
  return Start.Y + (End.Y - Start.Y) * T;
}

}  // namespace tarnalgo
