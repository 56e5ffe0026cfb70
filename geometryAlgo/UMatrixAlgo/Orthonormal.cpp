#include "geometryAlgo/UMatrixAlgo/Orthonormal.h"

#include <algorithm>

#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

namespace tarnalgo {

namespace {

/// Share of the length that a unit vector keeps when its components are taken. With half of it left
/// the rounding of the components has not been magnified; with less left a second time it was
/// nothing else.
constexpr double kKeptLength = 0.5;

/// Takes the components and makes a unit vector of the rest; the length of the rest. The components
/// along several rows are found before they are taken: the rows are orthogonal, so that is the same
/// but for rounding.
double TakeComponents(double* V, const TFloatMatrix& Basis, int Count) {
  constexpr int kAtOnce = 8;
  const auto Size = static_cast<std::size_t>(Basis.GetColCnt());
  for (int J = 0; J < Count; J += kAtOnce) {
    const auto Rows = static_cast<std::size_t>(std::min(kAtOnce, Count - J));
    double Components[kAtOnce] = {};
    RowDots(Basis.Row(J), Basis.RowStride(), Rows, V, Size, Components);
    for (double& Component : Components) Component = -Component;
    RowsAddMultiples(V, Components, Basis.Row(J), Basis.RowStride(), Rows, Size);
  }
  return MakeUnit(V, Size);
}

}  // namespace

double MakeUnit(double* V, std::size_t Size) {
  const double Length = RowMag(V, Size);
  if (Length != 0.0) RowDivide(V, Length, Size);  // exact: any other length divides
  return Length;
}

double MakeOrthogonal(double* V, double Length, const TFloatMatrix& Basis, int Count) {
  const double Left = TakeComponents(V, Basis, Count) / Length;
  if (Left < kKeptLength && TakeComponents(V, Basis, Count) < kKeptLength) {
    std::fill_n(V, Basis.GetColCnt(), 0.0);
  }
  return Left;
}

}  // namespace tarnalgo
