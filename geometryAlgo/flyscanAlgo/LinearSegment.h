#pragma once  // geometryAlgo/flyscanAlgo/LinearSegment.h

#include <cstdint>

#include "containers/Container/ObjectList.h"
#include "geometryAlgo/flyscanAlgo/FlyCurve.h"

namespace tarnalgo {

/// A straight edge with the keys that tell which infinite line it lies on.
///
/// Ownership: refers to the piece it came from.
class TLinearSegment {
 public:
  /// The edge; the constructor and the run that cuts it may turn it round.
  TLine2D Line;
  /// Direction of `Line`, in (−0.001, π). An edge that points less than 0.001 below π or anywhere
  /// beyond is turned round, once. The turned edge just below π gets a small negative angle, so
  /// that it groups with the edges near 0; the same edge given the other way round points just
  /// below 2π and is turned to just below π, where it stays: one line, two keys. Only such an edge
  /// has an angle above π − 0.001.
  double LineAngle = 0.0;
  /// Where the infinite line crosses the Y axis, or X of the given end point for a line within
  /// `AngleTolerance` of the vertical. Just outside that band it can be very large.
  double Intercept = 0.0;
  /// The piece whose edge this is; its channel is the first key.
  TFlyCurve* RefCurve = nullptr;

  /// Computes the keys of `ALine`, an edge of `ACurve`. A segment of no length has the angle 0.
  TLinearSegment(TFlyCurve* ACurve, const TLine2D& ALine);

  /// The channel of the piece it came from; 0 without one.
  std::int32_t ChannelPort() const { return RefCurve ? RefCurve->ChannelPort() : 0; }
};

/// All straight edges that take part, of all parts.
///
///     TLinearSegments Segments;
///     for (...) Segments.AddLine(Piece, Edge);
///     Segments.SortByAngleIntercept();  // collinear edges of one channel are neighbours now
///
/// Ownership: owns its segments; runs (`TLinearSegmentList`) refer to them.
class TLinearSegments : public TObjectList<TLinearSegment> {
 public:
  TLinearSegments() : TObjectList<TLinearSegment>(true) {}

  /// Appends the segment of an edge and returns it.
  TLinearSegment* AddLine(TFlyCurve* ACurve, const TLine2D& ALine);

  /// Order by channel, angle, intercept. The channels answer with their difference itself (capped
  /// to the range of the result), angle and intercept with −1, 0 or 1.
  /// Tolerance: angles less than or exactly half `AngleTolerance` apart (1.5 degrees) tie,
  /// intercepts up to 1e-6 apart tie; neither is transitive.
  static int CompareAngleIntercept(const TLinearSegment& Left, const TLinearSegment& Right);
  /// Sorts by `CompareAngleIntercept`.
  /// Ties: the order of addition.
  void SortByAngleIntercept();
};

}  // namespace tarnalgo
