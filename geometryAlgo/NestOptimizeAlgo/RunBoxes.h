#pragma once  // geometryAlgo/NestOptimizeAlgo/RunBoxes.h

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "geometryAlgo/VedaType/Line.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Boxes about runs of consecutive points, level above level, each turned to the way of its run: a
/// dense curve has thin boxes however it slants. Internal to the pages of this unit.
///
/// Points can be taken out; runs without points are passed over.
/// Cost: construction O(n log n). A question O(log n) plus the runs whose boxes do not decide it.
class TRunBoxes {
 public:
  /// Of one finite point within 1e100 or more, which must outlive this object.
  explicit TRunBoxes(std::span<const TPoint2D> Points);

  /// Every point of `First`..`Last`, taken out or not, lies within `Tolerance` of the segment.
  bool AllNear(int First, int Last, const TVLine2D& Segment, double Tolerance) const;

  /// Visits the points of `First`..`Last` that are still there and lie in a box along the segment
  /// from `A` to `B` and about `Tip`, and perhaps others, until one answers true: its index. −1
  /// when none does, or the range is empty.
  template <class TVisitor>
  int FindAbout(int First, int Last, const TPoint2D& A, const TPoint2D& Tip, const TPoint2D& B,
                TVisitor IsFound) const {
    return Find(FLevels.size() - 1, 0, {First, Last}, BoxAlong(std::array{A, Tip, B}, B - A),
                IsFound);
  }

  void TakeOut(int I);

 private:
  static constexpr int kLeaf = 16;
  static constexpr int kBranches = 4;

  struct TRange {
    int First;
    int Last;
    bool IsEmpty() const { return First > Last; }
  };
  /// A rectangle: centre, unit vector of its length, half its sides.
  struct TBox {
    TPoint2D Center;
    TPoint2D Axis;
    TPoint2D Half;
    int Count = 0;  // points that are still there
  };
  struct TCapsule;

  static std::size_t Slot(int I) { return static_cast<std::size_t>(I); }
  static std::size_t RunOf(std::size_t Level);
  static TBox BoxAlong(std::span<const TPoint2D> Points, const TPoint2D& Way);
  static bool Overlap(const TBox& A, const TBox& B);
  static TRange Common(const TRange& A, const TRange& B) {
    return {std::max(A.First, B.First), std::min(A.Last, B.Last)};
  }
  TRange RangeOf(std::size_t Level, int Node) const;
  bool AllNear(std::size_t Level, int Node, const TRange& Range, const TCapsule& Capsule) const;

  template <class TVisitor>
  int Find(std::size_t Level, int Node, const TRange& Range, const TBox& Box,
           TVisitor& IsFound) const {
    const TBox& Own = FLevels[Level][Slot(Node)];
    const TRange Part = Common(Range, RangeOf(Level, Node));
    if (Part.IsEmpty() || Own.Count == 0 || !Overlap(Own, Box)) return -1;
    if (Level == 0) {
      for (int I = Part.First; I <= Part.Last; ++I) {
        if (!FIsOut[Slot(I)] && IsFound(I)) return I;
      }
      return -1;
    }
    const int Children = static_cast<int>(FLevels[Level - 1].size());
    for (int Child = Node * kBranches; Child < std::min((Node + 1) * kBranches, Children);
         ++Child) {
      if (const int Found = Find(Level - 1, Child, Range, Box, IsFound); Found >= 0) return Found;
    }
    return -1;
  }

  std::span<const TPoint2D> FPoints;
  std::vector<bool> FIsOut;
  std::vector<std::vector<TBox>> FLevels;  // a box a run, then a box kBranches of these
};

}  // namespace tarnalgo
