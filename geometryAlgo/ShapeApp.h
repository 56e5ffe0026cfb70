#pragma once  // geometryAlgo/ShapeApp.h

#include "geometryAlgo/ShapeApp/ConvexHull.h"  // TConvexHullCalculator
