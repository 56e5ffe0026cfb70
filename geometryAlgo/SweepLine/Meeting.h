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
  /// The signs are exact; the point is taken on the shorter segment, where it is the most precise.
  static bool FindCrossing(const TVLine2D& A, const TVLine2D& B, TMeeting& Meeting);

  /// The boxes of the segments are farther apart than the tolerance, or one segment is so far to
  /// one side of the other that neither touch nor crossing can be. Never true of a pair that meets.
  bool IsPlainlyApart(const TVLine2D& A, const TVLine2D& B) const;

 private:
  bool IsPlainlyBeside(const TVLine2D& Line, const TVLine2D& Other) const;

  double FTolerance;
};

}  // namespace tarnalgo
