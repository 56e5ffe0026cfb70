#pragma once  // geometryAlgo/SweepLine.h

#include "geometryAlgo/SweepLine/SeglineIntersectInfo.h"  // TSeglineIntersectInfo
#include "geometryAlgo/SweepLine/SeglinesIntersector.h"   // TSeglinesIntersector
