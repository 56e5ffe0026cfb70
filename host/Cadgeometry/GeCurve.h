#pragma once  // host/Cadgeometry/GeCurve.h

#include <memory>
#include <vector>

#include "host/Cadgeometry/CurvePiece.h"
#include "host/Cadgeometry/GeObject.h"
#include "host/Cadgeometry/Intersect.h"
#include "host/Cadtypes/Point.h"
#include "host/Cadtypes/Rect.h"
#include "host/Cadtypes/Tolerance.h"

namespace tarnalgo {

/// A curve of the plane with a direction and a parameter range, `ParamFrom()` to `ParamTo()`.
///
/// | Class | Range |
/// |---|---|
/// | `TGeLine2D`, `TGeCircularArc2D` | 0 .. 1, even in length |
/// | `TGePolyline2D` | 0 .. edges: index of the edge plus the fraction on it |
/// | `TGePolyBezier2D` | 0 .. segments: index of the segment plus its own parameter |
/// | `TGeCompositeCurve2D` | 0 .. members: index of the member plus the fraction of its range |
///
/// A curve without a point (a polyline of no points, a composite without members) is empty: its
/// ends are the origin, its box is `TRect2D::FNull`, its length 0, it has no samples, meets nothing
/// and is not closed.
/// Errors: none but those stated; coordinates that are not finite pass through.
class TGeCurve2D : public TGeObject {
 public:
  /// An independent curve of the same kind, the caller's.
  std::unique_ptr<TGeCurve2D> Clone() const { return std::unique_ptr<TGeCurve2D>(NewClone()); }

  /// The curve has no point at all.
  virtual bool IsEmpty() const { return false; }
  /// The point at `ParamFrom()`; the origin for an empty curve.
  virtual TPoint2D StartPoint() const = 0;
  /// The point at `ParamTo()`; the origin for an empty curve.
  virtual TPoint2D EndPoint() const = 0;
  /// The end meets the start.
  /// Tolerance: 1e-6, a length. A curve that is a single point is closed.
  bool GetIsClosed() const { return !IsEmpty() && StartPoint().Equals(EndPoint()); }
  /// `GetIsClosed` under its other name.
  bool IsClosed() const { return GetIsClosed(); }

  /// Where the range of the parameter begins: 0 for every kind.
  double ParamFrom() const { return 0.0; }
  /// Where the range of the parameter ends; the table above says what it counts.
  virtual double ParamTo() const = 0;

  /// The point at `T`; a parameter outside the range (or NaN) counts as the nearer end (the start).
  /// Exactly `StartPoint()` and `EndPoint()` at the ends of the range.
  virtual TPoint2D PointAtParam(double T) const = 0;
  /// Parameter of the point of the curve nearest to `P`; a point within `Tol.EqualPoint` of the
  /// start answers `ParamFrom()` exactly, one of the end `ParamTo()`.
  /// Ties: the smallest parameter; the start where the curve is closed.
  double ParamOfPoint(const TPoint2D& P, const TGeTolerance& Tol = DefTol) const;
  /// The same without the tolerance at the ends; `Distance` receives how far `P` is from there.
  /// An empty curve answers 0 at the distance `kStartOfMinimum`.
  virtual double NearestParam(const TPoint2D& P, double& Distance) const = 0;

  /// Turns the direction round in place: the point at `T` is then the one at `ParamTo()` − `T`.
  /// Twice restores the curve, bit for bit.
  virtual void Reverse() = 0;

  /// The tight box of the curve itself.
  virtual TRect2D GetBoundBox() const = 0;
  /// Length along the curve, in model units.
  virtual double CurveLength() const = 0;

  /// Points along the curve such that no chord between two of them is further than `ChordEps` from
  /// its piece of the curve. Ends and vertices are met exactly; an arc gets at least one chord a
  /// quarter turn; a straight piece gets one.
  /// Tolerance: `ChordEps` is a length; below `kLeastChordError` (NaN included) it counts as that,
  /// and one arc or Bezier segment never gets more than `kMostChords` chords.
  std::vector<TPoint2D> Sample(double ChordEps) const;
  /// Appends the samples; the first is left out when it coincides (1e-6) with the last present.
  virtual void AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const = 0;

  /// Appends where this curve (the first) meets `Other` (the second), ascending along this one;
  /// `Results` is not cleared. Every pair of kinds can meet; a place counts once, however many
  /// pieces share it: crossings, tangents, touching ends, and overlaps as stretches.
  /// Tolerance: `Tol.EqualPoint`, a length: curves meet wherever they come as near. Two crossings
  /// between which they stay as near are one; a stretch along which they do is an overlap when it
  /// is longer than that and ends where a piece of one of them ends. `TPieceCrossing` says more.
  /// Ties: of several meetings in one place the first along this curve stays.
  /// Cost: O((n + m) log m + k) for n and m pieces, k pairs of them near each other.
  void IntersectCurve(const TGeCurve2D& Other, std::vector<TIntersect2D>& Results,
                      const TGeTolerance& Tol = DefTol) const;
  /// Appends the primitive pieces of the curve in its order, each with its range of the parameter:
  /// what `IntersectCurve` works on.
  virtual void AppendPieces(std::vector<TCurvePiece>& Pieces) const = 0;

 protected:
  TGeCurve2D* NewClone() const override = 0;
};

}  // namespace tarnalgo
