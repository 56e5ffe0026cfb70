#pragma once  // geometryAlgo/GeometryExtend/RingLoops.h

#include "geometryAlgo/ClipperAdditions.h"

namespace tarnalgo {

/// The loops of a ring that does not cross itself, between the places it comes back to: vertices in
/// one place, exactly, and vertices within an edge, which become vertices of that edge. No loop
/// touches itself; together they go the way of the ring. Loops of fewer than three vertices are
/// left out. Internal to the pages of this unit.
/// Cost: O((n + k) log n) for rings as they occur, k touches.
TPaths LoopsOfRing(const TPath& Ring);

}  // namespace tarnalgo
