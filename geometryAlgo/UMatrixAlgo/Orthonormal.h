#pragma once  // geometryAlgo/UMatrixAlgo/Orthonormal.h

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"

namespace tarnalgo {

/// Takes from `V`, whose length is `Length` > 0, its components along the first `Count` rows of
/// `Basis` and makes a unit vector of the rest; rows and vector are equally long. Where nothing but
/// rounding is left the vector becomes zero. Returns the share of the length that was left when the
/// components were taken for the first time. Internal to the matrix unit.
///
/// What is left of a vector that lay along the basis is noise, and lies along the basis again once
/// it is made longer: taking the components a second time shows it.
double MakeOrthogonal(double* V, double Length, const TFloatMatrix& Basis, int Count);

/// Makes `V` a unit vector; a zero vector stays as it is. Returns its former length.
double MakeUnit(double* V, std::size_t Size);

}  // namespace tarnalgo
