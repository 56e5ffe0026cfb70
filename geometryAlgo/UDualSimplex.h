#pragma once  // geometryAlgo/UDualSimplex.h

#include "geometryAlgo/UDualSimplex/InequalityData.h"        // added bounds
#include "geometryAlgo/UDualSimplex/IntegerVec.h"            // TIntegerVec
#include "geometryAlgo/UDualSimplex/LinearProgramMethod.h"   // programs in one call
#include "geometryAlgo/UDualSimplex/SimplexAndDualMethod.h"  // the methods and their rules
