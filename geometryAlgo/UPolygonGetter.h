#pragma once  // geometryAlgo/UPolygonGetter.h

#include "geometryAlgo/UPolygonGetter/BridgeTool.h"     // TBridgeTool
#include "geometryAlgo/UPolygonGetter/ChainExtend.h"    // TMChainExtend, TMChainExtends
#include "geometryAlgo/UPolygonGetter/ChainsScatter.h"  // TMChainsScatter
#include "geometryAlgo/UPolygonGetter/CompareTool.h"    // TCompareTool, TCutNode, TPartPolygon
#include "geometryAlgo/UPolygonGetter/NodeEdges.h"      // TNodeEdges
#include "geometryAlgo/UPolygonGetter/NodePoint.h"      // TransToInt, TransToTVPoint, TIntPointList
#include "geometryAlgo/UPolygonGetter/TopoLinks.h"      // TTopoLinks
