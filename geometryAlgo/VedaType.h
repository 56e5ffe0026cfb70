#pragma once  // geometryAlgo/VedaType.h

#include "geometryAlgo/VedaType/Arc.h"             // TVArc2D
#include "geometryAlgo/VedaType/CADExtendUtils.h"  // TCADExtendUtils: area of a point list
#include "geometryAlgo/VedaType/Circle.h"          // TVCircle2D
#include "geometryAlgo/VedaType/DebugText.h"       // texts and files of the debug dumps
#include "geometryAlgo/VedaType/Enums.h"           // TShapeRelation, TRangeRelation, TDir
#include "geometryAlgo/VedaType/Geometry.h"        // IVGeometry2D, TVGeometry2DList
#include "geometryAlgo/VedaType/GeometryUtils.h"   // TGeometryUtils: crossings of Beziers
#include "geometryAlgo/VedaType/HPolygon.h"        // TVHPolygon, TVHPolygonList
#include "geometryAlgo/VedaType/LABHPolygon.h"     // TLABHPolygon, TLABHPolygonList
#include "geometryAlgo/VedaType/LABPolyline.h"     // TLABPolyline, TLABPolylineList, TLWPolyline
#include "geometryAlgo/VedaType/LABSegline.h"      // TSegType, TLABSegline
#include "geometryAlgo/VedaType/Line.h"            // TVLine2D
#include "geometryAlgo/VedaType/Point.h"     // TPointL2D, TLWPoint2D, TPoint2DUtils, TDirUtils
#include "geometryAlgo/VedaType/Polyline.h"  // TVPolyline2D, its list and base
#include "geometryAlgo/VedaType/RTree.h"     // TRTree<T>, TRTreeNode<T>: items found by box
#include "geometryAlgo/VedaType/Rect.h"      // TVRect2D
#include "geometryAlgo/VedaType/ShapeRelationUtils.h"  // TShapeRelationUtils: relation of regions
