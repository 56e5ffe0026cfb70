#pragma once  // host/Cadgeometry/Sampling.h

#include <vector>

#include "host/Cadtypes/Bezier.h"

namespace tarnalgo {

// What the curve classes share when they turn themselves into points.

/// Number of equal steps in which an arc stays within `ChordEps` of its chords: at least one a
/// quarter turn, at most `kMostChords`. From the sagitta 2·r·sin²(step / 4).
int ArcChordCount(double Radius, double SweepAngle, double ChordEps);

/// Number of equal parameter steps for a cubic, from the bound |B''| / 8 · step² on the distance of
/// a chord: 1 when straight and even, at least 4 when its ends coincide.
int BezierChordCount(const TBezierSegment2D& Segment, double ChordEps);

/// Appends `P` unless the last point present coincides with it (1e-6).
void AppendDistinct(const TPoint2D& P, std::vector<TPoint2D>& Points);

}  // namespace tarnalgo
