#pragma once  // geometryAlgo/GeometryExtend/RingLoops.h

#include "geometryAlgo/ClipperAdditions.h"

namespace tarnalgo {

/// The loops of rings that do not cross, between the places each comes back to: vertices in one
/// place, exactly, and vertices within an edge, which become vertices of that edge. No loop touches
/// itself; together they go the way of the rings. Loops of fewer than three vertices are left out.
/// Where rings run along each other, or one along itself, stretches that are run along twice bound
/// nothing: they are left out and the rest is joined anew, as loops that go either way.
/// Internal to the pages of this unit.
/// Cost: O((n + k) log n) for rings as they occur, k touches.
TPaths LoopsOfRings(const TPaths& Rings);

}  // namespace tarnalgo
