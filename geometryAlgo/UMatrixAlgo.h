#pragma once  // geometryAlgo/UMatrixAlgo.h

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"      // TFloatMatrix
#include "geometryAlgo/UMatrixAlgo/FloatVector.h"      // TFloatVector
#include "geometryAlgo/UMatrixAlgo/LinearSolveTool.h"  // TLinearSolveTool: systems A·x = b
#include "geometryAlgo/UMatrixAlgo/MatrixDCMPTool.h"   // TMatrixDCMPTool: LU, inverse, QR, SVD
