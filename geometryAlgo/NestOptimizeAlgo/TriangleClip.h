#pragma once  // geometryAlgo/NestOptimizeAlgo/TriangleClip.h

#include <span>
#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Which vertices may be clipped: any, or those of a turn (exact sign) in whose triangle, its sides
/// included, no other vertex lies. Internal to the pages of this unit, as the functions are; the
/// rules are those of `TPolyDecimator`.
enum class TClipKind { Any, Right, RightOrStraight, Left };

/// What is left of the points `First`..`Last`, a range of the list, when flat triangles are
/// clipped; the ends stay. The points outside the range count as vertices too. All of the range
/// when a point of the list is not finite or beyond 1e100.
/// Cost: O(n log n) usual, n the length of the list.
std::vector<TPoint2D> ClipRange(std::span<const TPoint2D> Points, int First, int Last,
                                TClipKind Kind, double Tolerance);
/// The same of a ring, a list without its closing repeat, not empty: every vertex may go, at least
/// three stay, for kinds with a turn at three different places. The result is closed and starts
/// with the least index left.
std::vector<TPoint2D> ClipRing(std::span<const TPoint2D> Ring, TClipKind Kind, double Tolerance);

}  // namespace tarnalgo
