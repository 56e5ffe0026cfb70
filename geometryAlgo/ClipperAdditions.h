#pragma once  // geometryAlgo/ClipperAdditions.h

#include <vector>

#include "host/Cadtypes/Point.h"

/// The clipping library's types, declared as it declares them, so that headers need not include it.
namespace ClipperLib {
struct IntPoint;
typedef std::vector<IntPoint> Path;
typedef std::vector<Path> Paths;
}  // namespace ClipperLib

namespace tarnalgo {

/// A point of two signed 64-bit integers, a path of them, a list of paths. Whoever looks inside
/// includes <polyclipping/clipper.hpp>.
using TIntPoint = ClipperLib::IntPoint;
using TPath = ClipperLib::Path;
using TPaths = ClipperLib::Paths;

/// Model coordinates times `Scale` in extended precision, rounded to the nearest integer, exact
/// halves to even. What the clipping library cannot take is held at its greatest coordinate
/// (±4.6e18), NaN becomes 0.
TIntPoint ScaledIntPoint(const TPoint2D& P, double Scale);

}  // namespace tarnalgo
