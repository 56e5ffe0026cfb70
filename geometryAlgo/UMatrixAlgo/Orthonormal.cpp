#include "geometryAlgo/UMatrixAlgo/Orthonormal.h"

#include <algorithm>

#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

namespace tarnalgo {

namespace {

/// Share of the length that a unit vector keeps when its components are taken. With half of it left
/// the rounding of the components has not been magnified; with less left a second time it was
/// nothing else.
constexpr double kKeptLength = 0.5;

/// The length of what is left, made a unit vector.
double TakeComponents(double* V, const TFloatMatrix& Basis, int Count) {
  const auto Size = static_cast<std::size_t>(Basis.GetColCnt());
  for (int J = 0; J < Count; ++J) {
    const double* const Axis = Basis.Row(J);
    RowAddMultiple(V, -RowDot(V, Axis, Size), Axis, Size);
  }
  return MakeUnit(V, Size);
}

}  // namespace

double MakeUnit(double* V, std::size_t Size) {
  const double Length = RowMag(V, Size);
  if (Length != 0.0) RowDivide(V, Length, Size);  // exact: any other length divides
  return Length;
}

double MakeOrthogonal(double* V, const TFloatMatrix& Basis, int Count) {
  const double Left = TakeComponents(V, Basis, Count);
  if (Left < kKeptLength && TakeComponents(V, Basis, Count) < kKeptLength) {
    std::fill_n(V, Basis.GetColCnt(), 0.0);
  }
  return Left;
}

}  // namespace tarnalgo
