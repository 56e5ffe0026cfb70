#include <algorithm>
#include <cmath>
#include <utility>

#include "geometryAlgo/SweepLine/OrderSearch.h"
#include "geometryAlgo/SweepLine/SeglinesIntersector.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

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

std::int64_t TSeglinesIntersector::GetCrossRecordID(TRank A, TRank B) {
  return (static_cast<std::int64_t>(std::min(A, B)) << 32) + std::max(A, B);
}

int TSeglinesIntersector::FindRecord(TRank A, TRank B) {
  for (FRecordIndex.Reserve(FRecords.size()); FIndexed < FRecords.size(); ++FIndexed) {
    FRecordIndex.Add(static_cast<std::size_t>(FRecords[FIndexed].Id), static_cast<int>(FIndexed));
  }
  const std::int64_t Id = GetCrossRecordID(A, B);
  return FRecordIndex.Find(static_cast<std::size_t>(Id),
                           [&](int Position) { return FRecords[Index(Position)].Id == Id; });
}

// --- Meetings ---

/// Where the pair meets, whatever the state of the sweep.
bool TSeglinesIntersector::CalcIntersectInfo(TRank A, TRank B, TMeeting& Meeting) const {
  return TreatSameAngle(A, B, Meeting) || FTest.FindTouch(Line(A), Line(B), Meeting) ||
         TMeetingTest::FindCrossing(Line(A), Line(B), Meeting);
}

/// The stretch that two segments of one direction share, or the point where they touch. Segments of
/// nearly one direction may also cross far from their ends, so false does not dismiss the pair.
bool TSeglinesIntersector::TreatSameAngle(TRank A, TRank B, TMeeting& Meeting) const {
  const TPoint2D VA = Line(A).Vector();
  const TPoint2D VB = Line(B).Vector();
  // The sine is never above the angle: most pairs need no angle to be told apart.
  const double Reach = FSecondTolerance * std::sqrt(VA.DotMul(VA) * VB.DotMul(VB));
  if (std::abs(VA.CrossMul(VB)) > 1.01 * Reach) return false;
  const double Turn = TMathUtils::CycDist(VA.Angle(), VB.Angle(), kPi, FSecondTolerance);
  if (!TMathUtils::FloatLessEquals(std::min(Turn, kPi - Turn), 0.0, FSecondTolerance)) return false;
  return FTest.FindTouch(Line(A), Line(B), Meeting);
}

/// The record of a pair, entered into the dictionary, which must not have it.
TSeglineIntersectInfo TSeglinesIntersector::CreateIntersectInfo(const TMeeting& Meeting, TRank A,
                                                                TRank B) {
  FRecords.push_back({GetCrossRecordID(A, B), nullptr});
  const TPoint2D& P1 = Meeting.P1;
  const TPoint2D& P2 = Meeting.P2;
  const double A1 = ParamWithin(Line(A), P1);
  const double B1 = ParamWithin(Line(B), P1);
  const double A2 = P1 == P2 ? A1 : ParamWithin(Line(A), P2);  // exact: the same point
  const double B2 = P1 == P2 ? B1 : ParamWithin(Line(B), P2);
  return {Meeting.IsStretch, P1 / FScale, P2 / FScale, Source(A), Source(B), A1, B1, A2, B2};
}

// --- Events ---

/// The place for the event of a meeting at `P`: not behind the sweep, and such that both segments
/// are in the status when it comes. Rounding may have moved `P` past an end. X moves first and Y
/// stays, or the crossing with an upright segment would slip to its end.
TPoint2D TSeglinesIntersector::EventPoint(TRank A, TRank B, const TPoint2D& P) const {
  const TPoint2D Low = Later(Later(Line(A).StartPoint, Line(B).StartPoint), FSweepPoint);
  const TPoint2D High = Earlier(Line(A).EndPoint, Line(B).EndPoint);
  const TPoint2D Moved(std::min(std::max(P.X, Low.X), High.X), P.Y);
  return Earlier(Later(Moved, Low), High);
}

bool TSeglinesIntersector::TestCross(TRank A, TRank B, TMeeting& Meeting) const {
  switch (FTest.LookAt(Line(A), Line(B))) {
    case TMeetingTest::TLook::kApart:
      return false;
    case TMeetingTest::TLook::kCross:
      Meeting = TMeetingTest::CrossingOf(Line(A), Line(B));
      return true;
    default:
      return CalcIntersectInfo(A, B, Meeting);
  }
}

void TSeglinesIntersector::TestCrossAndAddEvent(TRank A, TRank B) {
  TMeeting Meeting;
  if (TestCross(A, B, Meeting)) AddEvent(A, B, Meeting);
}

void TSeglinesIntersector::AddEvent(TRank A, TRank B, const TMeeting& Meeting) {
  const TSeglineIntersectInfo Info = CreateIntersectInfo(Meeting, A, B);
  TEvent* const Event = FEvents.Create(EventPoint(A, B, Meeting.P1), Source(A), Source(B),
                                       std::uint8_t{1}, nullptr, Info);
  FRecords.back().Pending = Event;
  FQueue.Add({Event->Point.X, Event, static_cast<int>(FRecords.size()) - 1});
}

// --- The passed set ---

/// A segment is tested against every one that began before it and has not been left behind, so
/// that no meeting depends on the order of the status. Two segments that meet have ranges of X at
/// most the tolerance apart: when the later one starts the other is still in the set. Its
/// neighbours have been tested already.
void TSeglinesIntersector::IntersectWithPassedSegs(TRank Seg, const TNode* Below,
                                                   const TNode* Above) {
  ForgetEndedSegs();
  const TRank Tested1 = Below != nullptr ? Below->Value : Seg;
  const TRank Tested2 = Above != nullptr ? Above->Value : Seg;
  FLooked += FPassed.VisitNear(Seg, [&](TRank Passed) {
    if (Passed != Tested1 && Passed != Tested2) TestPassedSeg(Passed, Seg);
  });
  FPassed.Add(Seg);
  const auto Useful = static_cast<std::int64_t>(Index(Seg) + FRecords.size());
  if (FLooked > kMostLooksInVain + kMostLooks * Useful) TestAllInOrder();
}

/// A meeting at the sweep point, or with a segment that has ended, is recorded at once.
void TSeglinesIntersector::TestPassedSeg(TRank Passed, TRank Seg) {
  TMeeting Meeting;
  if (!TestCross(Passed, Seg, Meeting)) return;
  if (FNodes[Index(Passed)] == nullptr || Meeting.P1.Equals(FSweepPoint, FTolerance)) {
    FResult.push_back(CreateIntersectInfo(Meeting, Passed, Seg));
  } else {
    AddEvent(Passed, Seg, Meeting);
  }
}

/// Tests all pairs of which the search in exact order tells, those of segments to come included. A
/// meeting between the end of one segment and the start of the other has no place for an event and
/// comes last.
void TSeglinesIntersector::TestAllInOrder() {
  FAllPairsTested = true;
  FMeets.resize(FLines.size(), false);
  TOrderSearch::VisitPairs(FLines, FTolerance, [&](TRank A, TRank B) {
    if (A > B) std::swap(A, B);  // the earlier one first, as where the passed set tells
    TMeeting Meeting;
    if (!TestCross(A, B, Meeting) || FindRecord(A, B) >= 0) return;
    FMeets[Index(A)] = FMeets[Index(B)] = true;
    const TPoint2D Low = Later(Later(Line(A).StartPoint, Line(B).StartPoint), FSweepPoint);
    const TPoint2D High = Earlier(Line(A).EndPoint, Line(B).EndPoint);
    if (TPoint2DUtils::CompareByXY(High, Low) < 0) {
      FUnplaced.push_back(CreateIntersectInfo(Meeting, A, B));
    } else {
      AddEvent(A, B, Meeting);
    }
  });
}

/// Forgets the ended segments that are more than the tolerance behind the sweep.
void TSeglinesIntersector::ForgetEndedSegs() {
  for (; FNextForgotten < FNextEnd; ++FNextForgotten) {
    const TRank Ended = FEnds[FNextForgotten];
    if (Line(Ended).EndPoint.X + FTolerance >= FSweepPoint.X) return;
    FPassed.Remove(Ended);
  }
}

}  // namespace tarnalgo
