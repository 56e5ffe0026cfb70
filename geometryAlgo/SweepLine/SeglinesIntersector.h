#pragma once  // geometryAlgo/SweepLine/SeglinesIntersector.h

#include <cstddef>
#include <cstdint>
#include <vector>

#include "containers/Container/HashIndex.h"
#include "containers/Container/NodePool.h"
#include "containers/TreeAlgorithm/GeneralSBTree.h"
#include "containers/TreeAlgorithm/MinHeap.h"
#include "geometryAlgo/SweepLine/Meeting.h"
#include "geometryAlgo/SweepLine/PassedSegments.h"
#include "geometryAlgo/SweepLine/SeglineIntersectInfo.h"
#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

/// Every meeting among many segments, each pair once, by a sweep from least X to greatest X.
///
///     TSeglinesIntersector Intersector(Lines, 1e-6, 1e-6);
///     for (const TSeglineIntersectInfo& Info : Intersector.GetResult()) Split(Info);
///
/// Two segments meet when an end of one is within the tolerance of the other, or when they cross.
/// Whether a pair meets is decided by the pair alone, and each segment is tested, when it starts,
/// against all those begun before it that come near its range of Y: no pair is lost because the
/// order of the sweep is in doubt, as it is where many segments run within the tolerance. Where
/// that means too many tests in vain, as among long segments whose boxes all overlap, the pairs
/// are sought once by a sweep in exact order instead (`TOrderSearch`), as completely.
///
/// A segment may be a point. A segment that is not finite meets nothing. Coordinates may be as
/// large, or as small, as a double holds.
/// Tolerance: `Tolerance`, a length. A negative one and NaN count as 0: exact.
/// `SecondTolerance`, an angle (radians, period π): which directions count as the same.
/// Ties: records come in the order of the sweep, which for meetings at one point is unspecified,
/// and last those for which it finds no place, because of rounding or a gap between the segments.
/// Ownership: keeps copies of the segments; the result is the caller's.
/// Cost: O((n + k) log n) time, O(n + k) memory: n segments, k pairs that meet or come within a
/// few tolerances.
class TSeglinesIntersector {
 public:
  /// What orders an event.
  struct TEventKey {
    TPoint2D Point;  ///< Where on the sheet, and so when in the sweep.
    int First = 0;   ///< The segment that starts or ends here, or the first of two that cross.
    int Second = 0;  ///< The second of two that cross, else 0.
    std::uint8_t Kind = 0;  ///< 0 start, 1 crossing, 2 end.
  };

  /// Something that happens at a place of the sweep.
  class TEvent : public TEventKey {
   public:
    TEvent* Other = nullptr;     ///< The event that has already dealt with this crossing.
    TSeglineIntersectInfo Info;  ///< Of a crossing: what it reports.

    /// Takes the fields as they are.
    TEvent(const TPoint2D& P, int AFirst, int ASecond, std::uint8_t AKind, TEvent* AOther,
           const TSeglineIntersectInfo& AInfo)
        : TEventKey{P, AFirst, ASecond, AKind}, Other(AOther), Info(AInfo) {}

    /// The order of the sweep: X, Y, kind, first, second segment, all by exact signs. So at one
    /// point starts come before crossings and crossings before ends.
    static int Compare(const TEventKey& A, const TEventKey& B);
  };

  /// Takes the segments in and orders their ends; nothing is found before `GetResult`.
  TSeglinesIntersector(const std::vector<TVLine2D>& Lines, double Tolerance,
                       double SecondTolerance);
  TSeglinesIntersector(const TSeglinesIntersector&) = delete;
  TSeglinesIntersector& operator=(const TSeglinesIntersector&) = delete;
  virtual ~TSeglinesIntersector() = default;

  /// Runs the sweep. It runs once: a second call finds nothing left and answers an empty list, also
  /// when the first one has raised.
  std::vector<TSeglineIntersectInfo> GetResult();

  /// The meetings among `Lines`: an intersector made, run and forgotten.
  static std::vector<TSeglineIntersectInfo> GetIntersectInfosBySweepline(
      const std::vector<TVLine2D>& Lines, double Tolerance, double SecondTolerance);

 private:
  // Segments are known by the place of their start in the sweep; `FSources` tells the caller's.
  using TRank = int;

  struct TScanningOrder {
    const TSeglinesIntersector* Sweep;
    int operator()(TRank Starting, TRank Other) const {
      return Sweep->CompareScanningSeg(Starting, Other);
    }
  };
  using TStatus = TGeneralSBTree<int, int, TScanningOrder>;
  using TNode = TStatus::TNode;
  using TRun = std::vector<TNode*>;

  /// A crossing in the queue. Its X stands beside the pointer: most comparisons need no more.
  struct TQueued {
    double X;
    TEvent* Event;
    int Record;
  };
  struct TQueueOrder {
    int operator()(const TQueued& A, const TQueued& B) const {
      if (const int Sign = CompareExact(A.X, B.X)) return Sign;
      return TEvent::Compare(*A.Event, *B.Event);
    }
  };

  /// A pair whose meeting is recorded, and its event as long as the result does not have it.
  struct TRecord {
    std::int64_t Id;
    TEvent* Pending;
  };

  static std::size_t Index(int I) { return static_cast<std::size_t>(I); }
  const TVLine2D& Line(TRank Seg) const { return FLines[Index(Seg)]; }
  int Source(TRank Seg) const { return FSources[Index(Seg)]; }

  // --- The steps of the sweep (SeglinesIntersector.cpp) ---

  void Sweep();
  void TakeLines(const std::vector<TVLine2D>& Lines, double Tolerance);
  void SortEnds();
  std::uint8_t NextKind() const;
  void TreatStart(TRank Seg);
  bool TreatCross(const TQueued& Cross);
  void TreatEnd(TRank Seg);
  void CollectRun(TNode* A, TNode* B);
  void ProcessCrossEvent(const TPoint2D& P, TEvent& Event, const TRun& Run);
  void TakeOthersOfRun(const TPoint2D& P, TEvent& Event, const TRun& Run);
  void ReorderRun(const TRun& Run);

  // --- The order of the segments at the sweep point ---

  static double CalcY(const TVLine2D& Seg, double X, double Y, double Tol) {
    const TPoint2D& Start = Seg.StartPoint;
    const TPoint2D& End = Seg.EndPoint;
    if (TMathUtils::FloatEquals(End.X, Start.X, Tol)) return Y;  // wherever the sweep point is
    const double T = (X - Start.X) / (End.X - Start.X);
    return Start.Y + (End.Y - Start.Y) * T;
  }
  double CalcY(TRank Seg) const {
    return CalcY(Line(Seg), FSweepPoint.X, FSweepPoint.Y, FTolerance);
  }
  /// `Starting` starts at the sweep point, so that is where it stands.
  int CompareScanningSeg(TRank, TRank Other) const {
    return CompareExact(FSweepPoint.Y, CalcY(Other));
  }
  /// `Y` is where one segment stands.
  bool IsScanningSegClose(double Y, TRank Seg) const {
    return TMathUtils::FloatEquals(Y, CalcY(Seg), FTolerance);
  }

  // --- Pairs and their records (SeglinePairs.cpp) ---

  static std::int64_t GetCrossRecordID(TRank A, TRank B);
  /// Position of the pair's record, −1 when it has none.
  int FindRecord(TRank A, TRank B);
  bool CalcIntersectInfo(TRank A, TRank B, TMeeting& Meeting) const;
  bool TreatSameAngle(TRank A, TRank B, TMeeting& Meeting) const;
  TSeglineIntersectInfo CreateIntersectInfo(const TMeeting& Meeting, TRank A, TRank B);
  TPoint2D EventPoint(TRank A, TRank B, const TPoint2D& P) const;
  bool TestCross(TRank A, TRank B, TMeeting& Meeting) const;
  void TestCrossAndAddEvent(TRank A, TRank B);
  void AddEvent(TRank A, TRank B, const TMeeting& Meeting);
  void IntersectWithPassedSegs(TRank Seg, const TNode* Below, const TNode* Above);
  void TestPassedSeg(TRank Passed, TRank Seg);
  void ForgetEndedSegs();
  void TestAllInOrder();

  std::vector<TVLine2D> FLines;  // the finite ones, turned forward, times FScale, by their starts
  std::vector<int> FSources;     // positions in the caller's list
  std::vector<TRank> FRanks;     // of the caller's positions
  double FTolerance = 0.0;       // times FScale
  double FSecondTolerance;
  double FScale = 1.0;  // a power of two that keeps products within the range of a double
  TMeetingTest FTest{0.0};
  TPoint2D FSweepPoint;

  // The queue. Starts and ends are known from the beginning and wait in sorted lists; the heap has
  // only what the sweep finds.
  TRank FNextStart = 0;
  std::vector<TRank> FEnds;
  std::size_t FNextEnd = 0;
  TMinHeap<TQueued, TQueueOrder> FQueue;
  TNodePool<TEvent> FEvents;

  TStatus FStatus;
  std::vector<TNode*> FNodes;      // of each segment, null outside the status
  std::vector<double> FOrderKeys;  // slope; +infinity for an upright segment
  TRun FRun;                       // the nodes at the crossing that is treated
  TPassedSegments FPassed{{}, 0.0};
  std::size_t FNextForgotten = 0;  // in FEnds: from there on ended segments are still in FPassed
  std::int64_t FLooked = 0;        // segments of FPassed looked at
  bool FAllPairsTested = false;    // in exact order; FPassed is no longer asked
  std::vector<bool> FMeets;        // then: the segment has a record

  std::vector<TRecord> FRecords;
  THashIndex FRecordIndex;   // the dictionary, by `GetCrossRecordID`
  std::size_t FIndexed = 0;  // records that it has; the others follow when it is asked
  std::vector<TSeglineIntersectInfo> FResult;
  std::vector<TSeglineIntersectInfo> FUnplaced;  // without an event, or it found no run of two
};

}  // namespace tarnalgo
