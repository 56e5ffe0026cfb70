#pragma once  // host/Cadtypes.h

#include "host/Cadtypes/Arc.h"           // TArc2D
#include "host/Cadtypes/Bezier.h"        // TBezierSegment2D
#include "host/Cadtypes/Circle.h"        // TCircle2D
#include "host/Cadtypes/Constants.h"     // every fixed tolerance
#include "host/Cadtypes/Intersection.h"  // TIntersectPoint2D
#include "host/Cadtypes/Line.h"          // TLine2D
#include "host/Cadtypes/Matrix.h"        // TMatrix2D
#include "host/Cadtypes/Numeric.h"       // TNumeric, fEqual ..., NormalAngle, TTriangle2D
#include "host/Cadtypes/Point.h"         // TPoint2D, Cadtypes::TIntPoint, exchange arrays
#include "host/Cadtypes/Rect.h"          // TRect2D
#include "host/Cadtypes/Tolerance.h"     // TGeTolerance, DefTol, TGeInterval
