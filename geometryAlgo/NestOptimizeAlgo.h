#pragma once  // geometryAlgo/NestOptimizeAlgo.h

#include "geometryAlgo/NestOptimizeAlgo/PolyDecimator.h"  // TPolyDecimator: dense point lists
