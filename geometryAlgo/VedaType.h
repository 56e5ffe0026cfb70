#pragma once  // geometryAlgo/VedaType.h

#include "geometryAlgo/VedaType/Enums.h"  // TShapeRelation, TRangeRelation, TDir
