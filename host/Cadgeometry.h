#pragma once  // host/Cadgeometry.h

#include "host/Cadgeometry/GeCircularArc.h"     // TGeCircularArc2D
#include "host/Cadgeometry/GeCompositeCurve.h"  // TGeCompositeCurve2D
#include "host/Cadgeometry/GeCurve.h"           // TGeCurve2D
#include "host/Cadgeometry/GeLine.h"            // TGeLine2D
#include "host/Cadgeometry/GeObject.h"          // TGeObject
#include "host/Cadgeometry/GePolyBezier.h"      // TGePolyBezier2D
#include "host/Cadgeometry/GePolyline.h"        // TGePolyline2D
#include "host/Cadgeometry/Intersect.h"         // TPointOnCurve2D, TIntersect2D
#include "host/Cadgeometry/PieceCrossing.h"     // TPieceCrossing, over TCurvePiece
