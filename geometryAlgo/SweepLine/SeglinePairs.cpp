#include <algorithm>
#include <cmath>

#include "geometryAlgo/SweepLine/SeglinesIntersector.h"
#include "geometryAlgo/SweepLine/StripSearch.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

/// Looks into the passed set for each segment and each meeting: beyond, strips are faster.
constexpr std::int64_t kMostLooks = 128;

const TPoint2D& Later(const TPoint2D& A, const TPoint2D& B) {
  return TPoint2DUtils::CompareByXY(A, B) < 0 ? B : A;
}

const TPoint2D& Earlier(const TPoint2D& A, const TPoint2D& B) {
  return TPoint2DUtils::CompareByXY(A, B) > 0 ? B : A;
}

double ParamWithin(const TVLine2D& Seg, const TPoint2D& P) {
  return std::min(std::max(Seg.CalcParamByPointProjection(P), 0.0), 1.0);
}

}  // namespace

// --- The dictionary ---

std::int64_t TSeglinesIntersector::GetCrossRecordID(int A, int B) {
  return (static_cast<std::int64_t>(std::min(A, B)) << 32) + std::max(A, B);
}

int TSeglinesIntersector::FindRecord(int A, int B) const {
  const std::int64_t Id = GetCrossRecordID(A, B);
  return FRecordIndex.Find(static_cast<std::size_t>(Id),
                           [&](int Position) { return FRecords[Index(Position)].Id == Id; });
}

// --- Meetings ---

/// Where the pair meets, whatever the state of the sweep.
bool TSeglinesIntersector::CalcIntersectInfo(int A, int B, TMeeting& Meeting) const {
  return TreatSameAngle(A, B, Meeting) || FTest.FindTouch(Line(A), Line(B), Meeting) ||
         TMeetingTest::FindCrossing(Line(A), Line(B), Meeting);
}

/// The stretch that two segments of one direction share, or the point where they touch. Segments of
/// nearly one direction may also cross far from their ends, so false does not dismiss the pair.
bool TSeglinesIntersector::TreatSameAngle(int A, int B, TMeeting& Meeting) const {
  const TPoint2D VA = Line(A).Vector();
  const TPoint2D VB = Line(B).Vector();
  // The sine is never above the angle: most pairs need no angle to be told apart.
  const double Reach = FSecondTolerance * std::sqrt(VA.DotMul(VA) * VB.DotMul(VB));
  if (std::abs(VA.CrossMul(VB)) > 1.01 * Reach) return false;
  const double Turn = TMathUtils::CycDist(VA.Angle(), VB.Angle(), kPi, FSecondTolerance);
  if (!TMathUtils::FloatLessEquals(std::min(Turn, kPi - Turn), 0.0, FSecondTolerance)) return false;
  return FTest.FindTouch(Line(A), Line(B), Meeting);
}

bool TSeglinesIntersector::CreateIntersectInfo(bool Flag, const TPoint2D& P1, const TPoint2D& P2,
                                               int A, int B, TSeglineIntersectInfo& Info) {
  if (FindRecord(A, B) >= 0) return false;
  const std::int64_t Id = GetCrossRecordID(A, B);
  FRecords.push_back({Id, nullptr});
  FRecordIndex.Reserve(FRecords.size());
  FRecordIndex.Add(static_cast<std::size_t>(Id), static_cast<int>(FRecords.size()) - 1);
  const double A1 = ParamWithin(Line(A), P1);
  const double B1 = ParamWithin(Line(B), P1);
  const double A2 = P1 == P2 ? A1 : ParamWithin(Line(A), P2);  // exact: the same point
  const double B2 = P1 == P2 ? B1 : ParamWithin(Line(B), P2);
  Info = {Flag, P1 / FScale, P2 / FScale, A, B, A1, B1, A2, B2};
  return true;
}

// --- Events ---

/// The place for the event of a meeting at `P`: not behind the sweep, and such that both segments
/// are in the status when it comes. Rounding may have moved `P` past an end. X moves first and Y
/// stays, or the crossing with an upright segment would slip to its end.
TPoint2D TSeglinesIntersector::EventPoint(int A, int B, const TPoint2D& P) const {
  const TPoint2D Low = Later(Later(Line(A).StartPoint, Line(B).StartPoint), FSweepPoint);
  const TPoint2D High = Earlier(Line(A).EndPoint, Line(B).EndPoint);
  const TPoint2D Moved(std::min(std::max(P.X, Low.X), High.X), P.Y);
  return Earlier(Later(Moved, Low), High);
}

bool TSeglinesIntersector::TestCross(int A, int B, TEvent*& Event) {
  TMeeting Meeting;
  TSeglineIntersectInfo Info;
  if (FTest.IsPlainlyApart(Line(A), Line(B)) || FindRecord(A, B) >= 0 ||
      !CalcIntersectInfo(A, B, Meeting) ||
      !CreateIntersectInfo(Meeting.IsStretch, Meeting.P1, Meeting.P2, A, B, Info)) {
    return false;
  }
  Event = FEvents.Create(EventPoint(A, B, Meeting.P1), A, B, std::uint8_t{1}, nullptr, Info);
  return true;
}

void TSeglinesIntersector::TestCrossAndAddEvent(int A, int B) {
  TEvent* Event = nullptr;
  if (TestCross(A, B, Event)) AddEvent(Event);
}

/// `Event` is of the record made last.
void TSeglinesIntersector::AddEvent(TEvent* Event) {
  const int Record = static_cast<int>(FRecords.size()) - 1;
  FRecords.back().Pending = Event;
  FQueue.Add({Event->Point.X, Event, Record});
}

// --- The passed set ---

/// A segment is tested against every one that began before it and has not been left behind, so
/// that no meeting depends on the order of the status. Two segments that meet have ranges of X at
/// most the tolerance apart: when the later one starts the other is still in the set.
void TSeglinesIntersector::IntersectWithPassedSegs(int Seg) {
  if (FAllPairsTested) return;
  ForgetEndedSegs();
  FLooked += FPassed.VisitNear(Seg, [&](int Passed) { TestPassedSeg(Passed, Seg); });
  FPassed.Add(Seg);
  const auto Useful = static_cast<std::int64_t>(FLines.size() + FRecords.size());
  if (FLooked > kMostLooks * Useful) TestAllByStrips();
}

/// A meeting at the sweep point, or with a segment that has ended, is recorded at once.
void TSeglinesIntersector::TestPassedSeg(int Passed, int Seg) {
  TEvent* Event = nullptr;
  if (!TestCross(Passed, Seg, Event)) return;
  const TPoint2D FirstPoint = Event->Info.FirstPoint * FScale;
  if (FNodes[Index(Passed)] == nullptr || FirstPoint.Equals(FSweepPoint, FTolerance)) {
    FResult.push_back(Event->Info);
    FEvents.Destroy(Event);
  } else {
    AddEvent(Event);
  }
}

/// Tests all pairs that strips find, those of segments to come included. A
/// meeting between the end of one segment and the start of the other has no
/// place for an event and is recorded at once.
void TSeglinesIntersector::TestAllByStrips() {
  FAllPairsTested = true;
  std::vector<int> Segments;
  for (const TEventKey& End : FEnds) {
    if (End.Kind == 0) Segments.push_back(End.First);
  }
  TStripSearch::VisitPairs(FLines, Segments, FTolerance, [&](int A, int B) {
    TEvent* Event = nullptr;
    if (!TestCross(A, B, Event)) return;
    const TPoint2D Low = Later(Later(Line(A).StartPoint, Line(B).StartPoint), FSweepPoint);
    const TPoint2D High = Earlier(Line(A).EndPoint, Line(B).EndPoint);
    if (TPoint2DUtils::CompareByXY(High, Low) < 0) {
      FResult.push_back(Event->Info);
      FEvents.Destroy(Event);
    } else {
      AddEvent(Event);
    }
  });
}

/// Forgets the ended segments that are more than the tolerance behind the sweep.
void TSeglinesIntersector::ForgetEndedSegs() {
  while (FNextEnded < FEnded.size()) {
    const int Ended = FEnded[FNextEnded];
    if (Line(Ended).EndPoint.X + FTolerance >= FSweepPoint.X) return;
    FPassed.Remove(Ended);
    ++FNextEnded;
  }
}

}  // namespace tarnalgo
