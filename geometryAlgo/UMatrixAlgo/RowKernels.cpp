#include "geometryAlgo/UMatrixAlgo/RowKernels.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "geometryAlgo/UMatrixAlgo/Pack.h"

namespace tarnalgo {

namespace {

/// Between these the sum of squares has lost nothing to overflow or to vanishing terms.
constexpr double kLeastPlainSquare = 1e-280;
constexpr double kLargestPlainSquare = 1e300;

constexpr std::size_t kDotSums = 8;

/// Sum := Sum + A·B, lane by lane.
template <class TPack>
[[gnu::always_inline]] inline void AddTerms(TPack& Sum, const double* A, const double* B) {
  TPack X;
  TPack Y;
  Load(X, A);
  Load(Y, B);
  Sum += X * Y;
}

/// The sum of eight partial sums, each of every eighth term, and of the last `Count` < 8 terms.
[[gnu::always_inline]] inline double TotalOf(TPack2 S0, TPack2 S1, TPack2 S2, TPack2 S3,
                                             const double* A, const double* B, std::size_t Count) {
  for (; Count >= 2; Count -= 2, A += 2, B += 2) AddTerms(S0, A, B);
  const TPack2 Sum = (S0 + S1) + (S2 + S3);
  return Count == 0 ? Sum[0] + Sum[1] : (Sum[0] + Sum[1]) + *A * *B;
}

/// The partial sums, in packs of two or four.
struct TNarrowSums {
  TPack2 S0{};
  TPack2 S1{};
  TPack2 S2{};
  TPack2 S3{};

  [[gnu::always_inline]] void Add(const double* A, const double* B) {
    AddTerms(S0, A, B);
    AddTerms(S1, A + 2, B + 2);
    AddTerms(S2, A + 4, B + 4);
    AddTerms(S3, A + 6, B + 6);
  }
  [[gnu::always_inline]] double Total(const double* A, const double* B, std::size_t Count) const {
    return TotalOf(S0, S1, S2, S3, A, B, Count);
  }
};

struct TWideSums {
  TPack4 S0{};
  TPack4 S1{};

  [[gnu::always_inline]] void Add(const double* A, const double* B) {
    AddTerms(S0, A, B);
    AddTerms(S1, A + 4, B + 4);
  }
  [[gnu::always_inline]] double Total(const double* A, const double* B, std::size_t Count) const {
    return TotalOf(TPack2{S0[0], S0[1]}, TPack2{S0[2], S0[3]}, TPack2{S1[0], S1[1]},
                   TPack2{S1[2], S1[3]}, A, B, Count);
  }
};

template <class TSums>
[[gnu::always_inline]] inline double DotOf(const double* A, const double* B, std::size_t Count) {
  TSums Sums;
  std::size_t I = 0;
  for (; I + kDotSums <= Count; I += kDotSums) Sums.Add(A + I, B + I);
  return Sums.Total(A + I, B + I, Count - I);
}

/// So many rows at a time share the loads of B; as many as have room in the registers.
template <std::ptrdiff_t kRows>
using TRowsAtOnce = std::make_integer_sequence<std::ptrdiff_t, kRows>;

/// `Rows` rows with B.
template <class TSums, std::ptrdiff_t... kRow>
[[gnu::always_inline]] inline void DotsOf(std::integer_sequence<std::ptrdiff_t, kRow...> /*rows*/,
                                          const double* A, std::ptrdiff_t Step, std::size_t Rows,
                                          const double* B, std::size_t Count, double* Dots) {
  constexpr std::size_t kAtOnce = sizeof...(kRow);
  for (; Rows >= kAtOnce; Rows -= kAtOnce, Dots += kAtOnce) {
    TSums Sums[kAtOnce];
    std::size_t I = 0;
    for (; I + kDotSums <= Count; I += kDotSums) {
      (Sums[kRow].Add(A + kRow * Step + I, B + I), ...);
    }
    ((Dots[kRow] = Sums[kRow].Total(A + kRow * Step + I, B + I, Count - I)), ...);
    A += static_cast<std::ptrdiff_t>(kAtOnce) * Step;
  }
  for (; Rows > 0; --Rows, A += Step, ++Dots) *Dots = DotOf<TSums>(A, B, Count);
}

void DotsNarrow(const double* A, std::ptrdiff_t Step, std::size_t Rows, const double* B,
                std::size_t Count, double* Dots) {
  DotsOf<TNarrowSums>(TRowsAtOnce<2>(), A, Step, Rows, B, Count, Dots);
}

TARNALGO_WIDE_CODE void DotsWide(const double* A, std::ptrdiff_t Step, std::size_t Rows,
                                 const double* B, std::size_t Count, double* Dots) {
  DotsOf<TWideSums>(TRowsAtOnce<4>(), A, Step, Rows, B, Count, Dots);
}

/// Y := Y + Σ Factors[r]·(row r), four rows at a time, which share the loads of Y.
template <class TPack>
[[gnu::always_inline]] inline void AddMultiplesOf(double* Y, const double* Factors, const double* A,
                                                  std::ptrdiff_t Step, std::size_t Rows,
                                                  std::size_t Count) {
  constexpr std::size_t kStep = kLanes<TPack>;
  for (; Rows >= 4; Rows -= 4, A += 4 * Step, Factors += 4) {
    const double* const Row[] = {A, A + Step, A + 2 * Step, A + 3 * Step};
    std::size_t I = 0;
    for (; I + kStep <= Count; I += kStep) {
      TPack Sum, X0, X1, X2, X3;
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
  for (; Rows > 0; --Rows, A += Step, ++Factors) RowAddMultiple(Y, *Factors, A, Count);
}

void AddMultiplesNarrow(double* Y, const double* Factors, const double* A, std::ptrdiff_t Step,
                        std::size_t Rows, std::size_t Count) {
  AddMultiplesOf<TPack2>(Y, Factors, A, Step, Rows, Count);
}

TARNALGO_WIDE_CODE void AddMultiplesWide(double* Y, const double* Factors, const double* A,
                                         std::ptrdiff_t Step, std::size_t Rows, std::size_t Count) {
  AddMultiplesOf<TPack4>(Y, Factors, A, Step, Rows, Count);
}

}  // namespace

double RowDot(const double* A, const double* B, std::size_t Count) {
  return DotOf<TNarrowSums>(A, B, Count);
}

void RowDots(const double* A, std::ptrdiff_t Step, std::size_t Rows, const double* B,
             std::size_t Count, double* Dots) {
  (HasWidePacks() ? DotsWide : DotsNarrow)(A, Step, Rows, B, Count, Dots);
}

void RowsAddMultiples(double* Y, const double* Factors, const double* A, std::ptrdiff_t Step,
                      std::size_t Rows, std::size_t Count) {
  (HasWidePacks() ? AddMultiplesWide : AddMultiplesNarrow)(Y, Factors, A, Step, Rows, Count);
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
