#pragma once  // geometryAlgo/NestOptimizeAlgo/ChordScan.h

#include <array>
#include <cstddef>
#include <span>

#include "host/Cadtypes/Line.h"

namespace tarnalgo {

/// Where the points between two others have to be split so that none is too far from its chord.
/// Internal to the pages of this unit.
///
/// The distance is `TLine2D::DistanceDirect`, in every bit. It is expensive, so cross products in
/// double precision, whose error is bounded by the largest coordinates, name the few points that
/// can be the farthest; where they decide alone nothing is measured at all.
/// Cost: O(length of the chord), less than half a nanosecond a point.
class TChordScan {
 public:
  /// Which points can be kept: those left of the chord, or those on both sides.
  enum class TSide { Left, Both };

  /// For chords between `Points`, which must outlive this object.
  TChordScan(std::span<const TPoint2D> Points, TSide Side, double Tolerance)
      : FPoints(Points), FSide(Side), FTolerance(Tolerance) {}

  /// Chords asked for from now on lie within `First`..`Last`.
  void Enter(int First, int Last);

  /// The point strictly between `F` and `L` that is farthest from their chord, when its distance
  /// exceeds the tolerance; `F` when there is none.
  ///
  /// `Left`: by the signed distance, so a point on the right is never far; a chord without a
  /// direction (its ends equal or not finite) has no far points.
  /// `Both`: by the distance from the infinite line. Where no point is far from that, the point
  /// farthest beyond an end of the chord, so that `F` means: all lie within the tolerance of the
  /// chord. A chord without a direction is its finite end; when it has none, every finite point is
  /// far.
  /// Ties: the first.
  int SplitOf(int F, int L) const;

 private:
  struct TFarthest {
    int Index;
    double Distance = 0.0;
  };
  /// The greatest product of each run of the points between two.
  using TRuns = std::array<double, 256>;

  const TPoint2D& At(int I) const { return FPoints[static_cast<std::size_t>(I)]; }
  bool HasDirection(int F, int L) const;
  int FarFromLine(int F, int L) const;
  int FarFromLineFiltered(int F, int L) const;
  static int RunLength(int F, int L);
  double GreatestProduct(int F, int L, const TPoint2D& Normal, TRuns& Runs) const;
  template <class TVisitor>
  void VisitCandidates(int F, int L, const TPoint2D& Normal, double Least, const TRuns& Runs,
                       TVisitor Visit) const;
  double Product(int F, int I, const TPoint2D& Normal) const;
  double ProductError(const TPoint2D& Factor) const;
  void Measure(const TLine2D& Chord, int I, TFarthest& Farthest) const;
  int FarBeyondEnds(int F, int L) const;
  bool IsBetweenEnds(int F, int L) const;
  int FarFromPoint(int F, int L) const;

  std::span<const TPoint2D> FPoints;
  const TSide FSide;
  const double FTolerance;
  TPoint2D FLargest;        // coordinates of the points entered, without signs
  bool FCanFilter = false;  // they are finite, and so are squares of their products
};

}  // namespace tarnalgo
