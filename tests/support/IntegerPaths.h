#pragma once  // tests/support/IntegerPaths.h

#include <algorithm>
#include <polyclipping/clipper.hpp>

#include "geometryAlgo/ClipperAdditions.h"

namespace tarnalgo::test {

/// A square, counter-clockwise from its lower left corner.
inline TPath Box(int Left, int Bottom, int Side) {
  return {
      {Left, Bottom}, {Left + Side, Bottom}, {Left + Side, Bottom + Side}, {Left, Bottom + Side}};
}

/// The same, clockwise.
inline TPath Hole(int Left, int Bottom, int Side) {
  TPath Path = Box(Left, Bottom, Side);
  std::reverse(Path.begin(), Path.end());
  return Path;
}

}  // namespace tarnalgo::test
