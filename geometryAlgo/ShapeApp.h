#pragma once  // geometryAlgo/ShapeApp.h

#include "geometryAlgo/ShapeApp/ConvexHull.h"        // TConvexHullCalculator
#include "geometryAlgo/ShapeApp/PointsBasicAlgo.h"   // TPointsBasicAlgo: smallest circles
#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"  // TPolygonBasicAlgo: measures of polygons
