#pragma once  // geometryAlgo/flyscanAlgo.h

#include "geometryAlgo/flyscanAlgo/CrossTool.h"           // TCrossTool
#include "geometryAlgo/flyscanAlgo/FlyCurve.h"            // TFlyCurve, TFlyLine, TFlyCircle
#include "geometryAlgo/flyscanAlgo/FlyCurves.h"           // TFlyCurves, TOwningFlyCurves
#include "geometryAlgo/flyscanAlgo/FlyHoles.h"            // TFlyHoles, TGeToDataDic
#include "geometryAlgo/flyscanAlgo/FlyscanTool.h"         // TFlyscanTool
#include "geometryAlgo/flyscanAlgo/LinearSegment.h"       // TLinearSegment, TLinearSegments
#include "geometryAlgo/flyscanAlgo/LinearSegmentList.h"   // TLinearSegmentList
#include "geometryAlgo/flyscanAlgo/SegmentGroups.h"       // TSegmentGroups, TGroupKey
#include "geometryAlgo/flyscanAlgo/TransitionLineFunc.h"  // TTransitionLineFunc
#include "geometryAlgo/flyscanAlgo/Tunables.h"            // AngleTolerance, CamSampleLen, ...
