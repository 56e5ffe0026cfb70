#pragma once  // geometryAlgo/NestOptimizeAlgo/PolyDecimator.h

#include <span>
#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Thins a dense list of points, as outlines sampled from curves come, to those that matter.
///
///     TPolyDecimator Decimator(Outline, 0.05);
///     Decimator.SimplifyRadialDistance();                    // changes Outline
///     std::vector<TPoint2D> Part = Decimator.PlateSimplify();
///
/// A list is closed when its last point equals its first, exactly; the results for closed lists
/// are closed. Every result is a new list, a subset of the points in their order.
///
/// Which form to take:
///
/// | Form                                      | Dropped points lie              | Promises      |
/// |-------------------------------------------|---------------------------------|---------------|
/// | `DouglasPeucker(false)`                   | right of their chord, or near it|               |
/// | `DouglasPeucker(true)`                    | near their chord                |               |
/// | `DecimateWithRestrictions`                | near their chord                | fixed points  |
/// | `HybridDecimate`, `ClipTriangles`         | near the result                 |               |
/// | `ClipConcaveTriangles`, `PlateSimplify`   | near the result, inside of it   | stays simple  |
/// | `GetInscribedHull`                        | near the result, outside of it  | stays simple  |
///
/// Near means within `Tolerance` of the segment that replaces them, whatever number of small steps
/// led there; in the plain form, of the line through it, and where its ends are equal anywhere.
///
/// Non-finite points are no places: they may stay or go, and the other promises hold for the finite
/// ones. A tolerance of NaN drops nothing in the clipping forms and all inner points in the others.
/// Ownership: keeps a reference to the caller's list, which must outlive this object.
class TPolyDecimator {
 public:
  ///@{
  /// Refers to that list from here on; a length as tolerance.
  TPolyDecimator(std::vector<TPoint2D>& Points, double ATolerance) {
    SetParams(Points, ATolerance);
  }
  virtual ~TPolyDecimator() = default;

  void SetParams(std::vector<TPoint2D>& Points, double ATolerance) {
    FPoints = &Points;
    FTolerance = ATolerance;
  }
  ///@}
  /// The caller's list as it is now.
  const std::vector<TPoint2D>& Points() const { return *FPoints; }
  /// Length: the distance above which a point is kept.
  double Tolerance() const { return FTolerance; }
  /// Nothing is checked; 0 is replaced by the operations that say so.
  void SetTolerance(double Value) { FTolerance = Value; }

  // --- Near repeats and straight runs (PolyDecimatorClean.cpp) ---

  /// Deletes, in the caller's list, every point whose X and Y both differ by less than 0.00035 from
  /// its predecessor's, then the last point when it is that near to the first.
  ///
  /// The predecessor is the one in the list as it was, dropped or not, so a chain of small steps
  /// shrinks to its first point however long it is. A closed outline loses its closing repeat. One
  /// point always stays.
  /// Cost: O(n).
  void SimplifyRadialDistance();
  /// The list without the vertices that lie within `Eps` of the line through the last kept and the
  /// next vertex, and between these; nor does any vertex dropped before come to lie farther from
  /// the segment that replaces it. A closed list is treated as a ring and keeps at least three
  /// corners, an open one its ends.
  /// Ties: in the order of the list; the first vertex of a closed one last.
  /// Cost: O(n).
  std::vector<TPoint2D> CollinearSmooth(double Eps = kLinearTolerance) const;

  // --- Douglas-Peucker (PolyDecimator.cpp) ---
  //
  // All of them set `Tolerance` to 0.01, for good, when it is zero (within 1e-12), even if they
  // raise then. A negative tolerance drops what lies on the chord and, in the plain form, right of
  // it.

  /// Decimates the whole list; of a closed one all but the last point, which is appended again.
  ///
  /// The plain form keeps points on the left of their chord only: a clockwise outline keeps its
  /// corners and loses its dents, a counter-clockwise one loses nearly everything. `Restrict` keeps
  /// points on both sides.
  /// Errors: an empty list, or a closed one of a single point, as the range form.
  /// Cost: O(n log n) usual, O(5000 n) at worst.
  std::vector<TPoint2D> DouglasPeucker(bool Restrict);
  /// The same for the points `First`..`Last`, both included and kept. A range of n points is cut
  /// into n / 5000 blocks (rounded, ties to even), which are decimated by themselves.
  /// Errors: an empty or inverted range "Bad Input: beginIndex must less than endIndex.", one that
  /// leaves the list `EParamError`.
  std::vector<TPoint2D> DouglasPeucker(int First, int Last, bool Restrict);

  /// Marks the points of `First`..`Last` to be kept between these two: the one farthest on the left
  /// of the chord, when its `TLine2D::DistanceDirect` exceeds `Tolerance`, and so on in both
  /// halves. Point i has entry i − `BaseIndex()` in `Keep`; nothing is ever unmarked. A chord
  /// without a direction keeps nothing.
  /// Ties: the first.
  /// Errors: as the range form of `DouglasPeucker`; points without an entry `EParamError`.
  /// Cost: O(n log n) usual, O(n²) at worst; the stack of open ranges is on the heap.
  void DPDecimate(int First, int Last, std::span<bool> Keep) const;
  /// The same on both sides, by the distance without its sign. A range that would be dropped is
  /// still split at the point farthest beyond an end of the chord, when that is farther than
  /// `Tolerance` from the end: every dropped point lies within `Tolerance` of its chord. A chord of
  /// no length is a point.
  void DPDecimateRestrict(int First, int Last, std::span<bool> Keep) const;
  /// The first index of the range decimated last, 0 before.
  int BaseIndex() const { return FBaseIndex; }

  /// `DouglasPeucker(true)` with the points of the indexes `Fixed` kept whatever they are; the
  /// range is split at them. Order and repeats of the indexes do not matter, those outside the list
  /// are passed over.
  /// Errors and Cost: as `DouglasPeucker(true)`.
  std::vector<TPoint2D> DecimateWithRestrictions(const std::vector<int>& Fixed);
  /// `DouglasPeucker(true)`, then `ClipTriangles` on what it left, each with half of `Tolerance`.
  /// Errors: as `DouglasPeucker(true)`.
  /// Cost: O(n log n) usual.
  std::vector<TPoint2D> HybridDecimate();

  // --- Triangles (PolyDecimatorClip.cpp) ---
  //
  // A vertex and its two kept neighbours form a triangle; its height is the distance of the vertex
  // from the line through the neighbours. The vertex with the least height that may go is dropped
  // first, of equal ones that with the least index, until none may go.
  // Lists with points that are not finite, or beyond 1e100, come back as they are.
  // Cost: O(n log n) usual.

  /// The points `First`..`Last`; may go: an inner vertex of height at most `Tolerance` when all
  /// points dropped between its neighbours stay within `Tolerance` of the segment between them.
  /// Errors: as the range form of `DouglasPeucker`.
  std::vector<TPoint2D> ClipTriangles(int First, int Last) const;
  /// The same for dents of a counter-clockwise outline: may go: a vertex that forms a small concave
  /// triangle in which no other vertex of the list lies that is still there, nor on its sides. The
  /// outline only grows, and a simple one stays simple.
  /// Errors: as the range form of `DouglasPeucker`.
  std::vector<TPoint2D> ClipConcaveTriangles(int First, int Last) const;
  /// `P1` is a right turn (exact sign) and lies within `Tolerance` of the segment `P0`-`P2`.
  bool IsSmallConcaveTriangle(const TPoint2D& P0, const TPoint2D& P1, const TPoint2D& P2) const;

  /// A simple outline inside a closed counter-clockwise simple one: may go: a left turn (exact
  /// sign) within `Tolerance` of the segment between its neighbours, when no other vertex lies in
  /// the triangle or on its sides. At least three corners stay, repeats not counted. An open list
  /// comes back as it is.
  std::vector<TPoint2D> GetInscribedHull() const;
  /// A simple outline about a closed counter-clockwise simple one, for parts that must not be cut
  /// into: exact repeats go, then what `ClipConcaveTriangles` drops, and vertices on straight runs
  /// with it.
  ///
  /// Radial clean-up and a smoothing within a tolerance would cut corners and can shrink a dense
  /// outline without limit; what of them does not cut is done by the clipping.
  std::vector<TPoint2D> PlateSimplify() const;

 private:
  int Count() const { return static_cast<int>(FPoints->size()); }
  bool IsClosed() const;
  void UseTolerance();
  std::vector<TPoint2D> Decimate(int First, int Last, const std::vector<int>& Fixed,
                                 double ATolerance, bool Restrict);
  std::vector<TPoint2D> DecimateWhole(const std::vector<int>& Fixed, double ATolerance,
                                      bool Restrict);
  void Step(int First, int Last, std::span<bool> Keep, bool Restrict) const;

  std::vector<TPoint2D>* FPoints = nullptr;
  double FTolerance = 0.0;
  int FBaseIndex = 0;
};

}  // namespace tarnalgo
