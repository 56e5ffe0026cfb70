#include "host/Cadgeometry/Sampling.h"

#include <algorithm>
#include <cmath>

namespace tarnalgo {

namespace {

double EffectiveChordError(double ChordEps) {
  return ChordEps > kLeastChordError ? ChordEps : kLeastChordError;  // NaN too
}

/// `Steps` rounded up, between `Least` and `kMostChords`; a NaN counts as `Least`.
int BoundedCount(double Steps, int Least) {
  if (!(Steps > Least)) return Least;
  return Steps < kMostChords ? static_cast<int>(std::ceil(Steps)) : kMostChords;
}

}  // namespace

int ArcChordCount(double Radius, double SweepAngle, double ChordEps) {
  const double Turn = std::abs(SweepAngle);
  // A hair of slack keeps an exact quarter turn from a second chord.
  const int Least = BoundedCount(Turn / kQuarterTurn - kLinearTolerance, 1);
  const double Ratio = EffectiveChordError(ChordEps) / (2.0 * Radius);
  if (!(Ratio < 1.0)) return Least;
  return BoundedCount(Turn / (4.0 * std::asin(std::sqrt(Ratio))), Least);
}

int BezierChordCount(const TBezierSegment2D& Segment, double ChordEps) {
  const TPoint2D Second1 = Segment.P0 - Segment.P1 * 2.0 + Segment.P2;
  const TPoint2D Second2 = Segment.P1 - Segment.P2 * 2.0 + Segment.P3;
  const double Bend = 6.0 * std::max(Second1.Mag(), Second2.Mag());
  const int Least = Segment.P0 == Segment.P3 && Bend > 0.0 ? 4 : 1;
  return BoundedCount(std::sqrt(Bend / (8.0 * EffectiveChordError(ChordEps))), Least);
}

void AppendDistinct(const TPoint2D& P, std::vector<TPoint2D>& Points) {
  if (Points.empty() || !Points.back().Equals(P)) Points.push_back(P);
}

}  // namespace tarnalgo
