// Uses a value type, an error and a unit of every folder through the installed headers.
#include <cstdio>

#include "containers/Container.h"
#include "geometryAlgo/ShapeApp.h"
#include "geometryAlgo/VedaType.h"
#include "host/Cadtypes.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

int main() {
  using namespace tarnalgo;
  if (!TPoint2D(3, 4).Equals({3, 4 + 5e-7})) return 1;
  if (TPoint2D(3, 4).DistanceTo({0, 0}) != 5.0) return 1;
  const TVPolyline2D Square(TVRect2D({0, 0}, {2, 2}));
  const TVPolyline2D Other(TVRect2D({1, 1}, {3, 3}));
  if (TPolygonBasicAlgo::PolygonIntersection(Square, Other).Count() != 1) return 1;  // by Clipper
  TObjectList<TPoint2D> Points;
  try {
    Points.Delete(0);
  } catch (const EParamError& Error) {
    std::puts(Error.what());
    return 0;
  }
  return 1;
}
