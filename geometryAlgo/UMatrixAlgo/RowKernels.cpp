#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

#include <algorithm>
#include <cmath>

#include "geometryAlgo/UMatrixAlgo/Pack.h"

namespace tarnalgo {

namespace {

/// Between these the sum of squares has lost nothing to overflow or to vanishing terms.
constexpr double kLeastPlainSquare = 1e-280;
constexpr double kLargestPlainSquare = 1e300;

constexpr std::size_t kDotSums = 8;

/// The partial sums of a dot product: each takes every eighth term.
struct TDotSums {
  TPack2 S0{};
  TPack2 S1{};
  TPack2 S2{};
  TPack2 S3{};

  /// The next eight terms.
  [[gnu::always_inline]] void Add(const double* A, const double* B) {
    AddPair(S0, A, B);
    AddPair(S1, A + 2, B + 2);
    AddPair(S2, A + 4, B + 4);
    AddPair(S3, A + 6, B + 6);
  }

  /// The sum, with the last `Count` < 8 terms.
  [[gnu::always_inline]] double Total(const double* A, const double* B, std::size_t Count) {
    for (; Count >= 2; Count -= 2, A += 2, B += 2) AddPair(S0, A, B);
    const TPack2 Sum = (S0 + S1) + (S2 + S3);
    return Count == 0 ? Sum[0] + Sum[1] : (Sum[0] + Sum[1]) + *A * *B;
  }

 private:
  [[gnu::always_inline]] static void AddPair(TPack2& Sum, const double* A, const double* B) {
    TPack2 X;
    TPack2 Y;
    Load(X, A);
    Load(Y, B);
    Sum += X * Y;
  }
};

}  // namespace

double RowDot(const double* A, const double* B, std::size_t Count) {
  TDotSums Sums;
  std::size_t I = 0;
  for (; I + kDotSums <= Count; I += kDotSums) Sums.Add(A + I, B + I);
  return Sums.Total(A + I, B + I, Count - I);
}

void RowDots(const double* A, std::ptrdiff_t Step, std::size_t Rows, const double* B,
             std::size_t Count, double* Dots) {
  std::size_t R = 0;
  for (; R + 2 <= Rows; R += 2, A += 2 * Step, Dots += 2) {  // two at a time share the loads of B
    TDotSums First;
    TDotSums Second;
    std::size_t I = 0;
    for (; I + kDotSums <= Count; I += kDotSums) {
      First.Add(A + I, B + I);
      Second.Add(A + Step + I, B + I);
    }
    Dots[0] = First.Total(A + I, B + I, Count - I);
    Dots[1] = Second.Total(A + Step + I, B + I, Count - I);
  }
  if (R < Rows) Dots[0] = RowDot(A, B, Count);
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

void RowsAddMultiples(double* Y, const double* Factors, const double* A, std::ptrdiff_t Step,
                      std::size_t Rows, std::size_t Count) {
  constexpr std::size_t kStep = kLanes<TPack2>;
  std::size_t R = 0;
  for (; R + 4 <= Rows; R += 4, A += 4 * Step, Factors += 4) {  // four at a time share Y
    const double* const Row[] = {A, A + Step, A + 2 * Step, A + 3 * Step};
    std::size_t I = 0;
    for (; I + kStep <= Count; I += kStep) {
      TPack2 Sum, X0, X1, X2, X3;
      Load(Sum, Y + I);
      Load(X0, Row[0] + I);
      Load(X1, Row[1] + I);
      Load(X2, Row[2] + I);
      Load(X3, Row[3] + I);
      Sum += Factors[0] * X0;
      Sum += Factors[1] * X1;
      Sum += Factors[2] * X2;
      Sum += Factors[3] * X3;
      Store(Y + I, Sum);
    }
    for (; I < Count; ++I) {
      for (std::size_t L = 0; L < 4; ++L) Y[I] += Factors[L] * Row[L][I];
    }
  }
  for (; R < Rows; ++R, A += Step, ++Factors) RowAddMultiple(Y, *Factors, A, Count);
}

void RowDivide(double* Y, double Divisor, std::size_t Count) {
  constexpr std::size_t kStep = kLanes<TPack2>;
  std::size_t I = 0;
  for (; I + kStep <= Count; I += kStep) {
    TPack2 Y0;
    Load(Y0, Y + I);
    Y0 /= Divisor;
    Store(Y + I, Y0);
  }
  for (; I < Count; ++I) Y[I] /= Divisor;
}

double RowMag(const double* Y, std::size_t Count) {
  const double Square = RowDot(Y, Y, Count);
  if (Square >= kLeastPlainSquare && Square <= kLargestPlainSquare) return std::sqrt(Square);
  if (Count == 0 || std::isnan(Square)) return std::sqrt(Square);
  const double Largest = std::abs(Y[RowLargest(Y, Count)]);
  if (Largest == 0.0 || std::isinf(Largest)) return Largest;
  const int Shift = std::ilogb(Largest);  // a power of two scales exactly
  double Sum = 0.0;
  for (std::size_t I = 0; I < Count; ++I) {
    const double Scaled = std::scalbn(Y[I], -Shift);
    Sum += Scaled * Scaled;
  }
  return std::scalbn(std::sqrt(Sum), Shift);
}

std::size_t RowLargest(const double* Y, std::size_t Count) {
  // Four maxima first, which do not wait for each other; then the first element that has it.
  double Best[4] = {-1.0, -1.0, -1.0, -1.0};
  const auto Offer = [](double& Most, double X) { Most = std::abs(X) > Most ? std::abs(X) : Most; };
  std::size_t I = 0;
  for (; I + 4 <= Count; I += 4) {
    for (std::size_t L = 0; L < 4; ++L) Offer(Best[L], Y[I + L]);
  }
  for (; I < Count; ++I) Offer(Best[0], Y[I]);
  const double Largest = std::max({Best[0], Best[1], Best[2], Best[3]});
  for (I = 0; I < Count; ++I) {
    if (std::abs(Y[I]) == Largest) return I;
  }
  return 0;
}

}  // namespace tarnalgo
