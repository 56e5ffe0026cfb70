#pragma once  // geometryAlgo/GeometryExtend.h

/// The road to the clipping library: model geometry to integer paths and back, questions to paths,
/// closed paths grouped into outer contours and holes.

#include "geometryAlgo/ClipperAdditions.h"          // the library's types, small additions to it
#include "geometryAlgo/GeometryExtend/PathUtils.h"  // TPathUtils, TIntRect, TPathsList
