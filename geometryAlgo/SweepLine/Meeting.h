#pragma once  // geometryAlgo/SweepLine/Meeting.h

#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

/// Where two segments meet: from `P1` to `P2` when they share a stretch, else at `P1` = `P2`.
struct TMeeting {
  bool IsStretch = false;
  TPoint2D P1;
  TPoint2D P2;
};

/// Whether and where two segments meet, a function of the pair alone. Internal to the pages of this
/// unit. The segments run forward by X, then Y; a segment may be a point.
///
/// They meet when an end of one is within the tolerance of the other, or when they cross.
class TMeetingTest {
 public:
  explicit TMeetingTest(double Tolerance) : FTolerance(Tolerance) {}

  /// `P` is at most the tolerance away from the segment. Unlike `IsPointOnSegLine` a length beyond
  /// the ends too, not a parameter that grows with the segment.
  bool IsNear(const TVLine2D& Line, const TPoint2D& P) const;

  /// The ends of one segment that touch the other: the first and the last of them by X, then Y, and
  /// one point where these are within the tolerance. False when none does.
  bool FindTouch(const TVLine2D& A, const TVLine2D& B, TMeeting& Meeting) const;

  /// The point where the segments cross, each with its ends strictly on both sides of the other.
  /// The signs are exact.
  static bool FindCrossing(const TVLine2D& A, const TVLine2D& B, TMeeting& Meeting);
  /// The point where segments that cross do so, taken on the shorter one, where it is the most
  /// precise.
  static TMeeting CrossingOf(const TVLine2D& A, const TVLine2D& B);

  /// What a few plain products tell for sure.
  enum class TLook {
    kApart,   // the segments do not meet
    kCross,   // they cross, and no end touches
    kUnsure,  // look closer
  };
  TLook LookAt(const TVLine2D& A, const TVLine2D& B) const;

 private:
  /// The sides of `Other`'s ends about the line of `Line`: 1 or −1 where both are farther from it
  /// than the tolerance on one side, 0 where they are on both sides, 2 where one is not so far.
  int PlainSide(const TVLine2D& Line, const TVLine2D& Other) const;

  double FTolerance;
};

}  // namespace tarnalgo
