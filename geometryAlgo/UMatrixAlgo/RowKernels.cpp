#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

#include "geometryAlgo/UMatrixAlgo/Pack.h"

namespace tarnalgo {

double RowDot(const double* A, const double* B, std::size_t Count) {
  constexpr std::size_t kSums = 8;
  constexpr std::size_t kStep = kLanes<TPack2>;
  TPack2 Sums[kSums / kStep] = {};
  std::size_t I = 0;
  for (; I + kSums <= Count; I += kSums) {
    for (std::size_t S = 0; S < kSums / kStep; ++S) {
      TPack2 X;
      TPack2 Y;
      Load(X, A + I + S * kStep);
      Load(Y, B + I + S * kStep);
      Sums[S] += X * Y;
    }
  }
  double Lanes[kSums];
  std::memcpy(Lanes, Sums, sizeof Lanes);
  for (std::size_t S = 0; I < Count; ++I, ++S) Lanes[S] += A[I] * B[I];
  return ((Lanes[0] + Lanes[1]) + (Lanes[2] + Lanes[3])) +
         ((Lanes[4] + Lanes[5]) + (Lanes[6] + Lanes[7]));
}

void RowAddMultiple(double* Y, double Factor, const double* X, std::size_t Count) {
  constexpr std::size_t kStep = kLanes<TPack2>;
  std::size_t I = 0;
  for (; I + 2 * kStep <= Count; I += 2 * kStep) {
    TPack2 Y0;
    TPack2 Y1;
    TPack2 X0;
    TPack2 X1;
    Load(Y0, Y + I);
    Load(Y1, Y + I + kStep);
    Load(X0, X + I);
    Load(X1, X + I + kStep);
    Y0 += Factor * X0;
    Y1 += Factor * X1;
    Store(Y + I, Y0);
    Store(Y + I + kStep, Y1);
  }
  for (; I < Count; ++I) Y[I] += Factor * X[I];
}

}  // namespace tarnalgo
