#pragma once  // geometryAlgo/ClipperAdditions.h

#include <cstddef>
#include <vector>

#include "host/Cadtypes/Point.h"

/// The clipping library's types, declared as it declares them, so that headers need not include it.
namespace ClipperLib {

struct IntPoint;
/// As the library declares them.
typedef std::vector<IntPoint> Path;
typedef std::vector<Path> Paths;  ///< As the library declares it.
class PolyNode;
class PolyTree;

/// Componentwise sum and difference; beyond 64 bits they wrap round. Equality is the library's own.
IntPoint operator+(const IntPoint& A, const IntPoint& B);
IntPoint operator-(const IntPoint& A, const IntPoint& B);  ///< The same for the difference.

}  // namespace ClipperLib

namespace tarnalgo {

/// A point of two signed 64-bit integers. Whoever looks inside this one, and the types below,
/// includes <polyclipping/clipper.hpp>.
using TIntPoint = ClipperLib::IntPoint;
using TPath = ClipperLib::Path;          ///< A path of integer points.
using TPaths = ClipperLib::Paths;        ///< A list of paths.
using TPolyNode = ClipperLib::PolyNode;  ///< A node of a clipping result: a contour.
using TPolyTree = ClipperLib::PolyTree;  ///< A whole clipping result, contours nested.

/// Model coordinates times `Scale` in extended precision, rounded to the nearest integer, exact
/// halves to even. What the clipping library cannot take is held at its greatest coordinate
/// (±4.6e18), NaN becomes 0.
TIntPoint ScaledIntPoint(const TPoint2D& P, double Scale);
/// The same for `Count` points, into memory that has room for them.
/// Cost: that of reading and writing. Where the product in double precision is an exact half or
/// beyond 2^51, and only there, the extended one is formed.
void ScaleIntPoints(const TPoint2D* Points, std::size_t Count, double Scale, TIntPoint* Result);

/// Euclidean distance. The difference is taken exactly before it becomes a double, so that units
/// count beyond 2^53 too.
double DistanceTo(const TIntPoint& A, const TIntPoint& B);

/// The ring without the vertices that stand for nothing at the scale of `Distance`: those at most
/// that far from the vertex before, spikes whose two neighbours are at most that far apart (the
/// second neighbour goes too), and those less than that far from the line through their neighbours.
/// The tests are those of the library's `CleanPolygon`; what is left keeps the order of the path,
/// and one or two vertices may be all that is left.
/// Tolerance: the square of `Distance` rounded to the nearest integer, halves to even: below 0.7
/// only vertices in one place and spikes without width go.
/// Cost: O(n).
TPath CleanPolygonEx(const TPath& Path, double Distance);

/// Empties every path, then the list, and gives the memory back.
void FreePaths(TPaths& Paths);
void FreeAllPaths(TPaths& Paths);  ///< `FreePaths` under its other name.

}  // namespace tarnalgo
