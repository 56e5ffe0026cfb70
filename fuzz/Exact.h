#pragma once  // fuzz/Exact.h

#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

namespace tarnalgo::fuzz {

using TWholeRow = std::vector<std::int64_t>;

/// The determinant of whole numbers, by the elimination of Bareiss, which divides without rest.
inline std::int64_t Determinant(std::vector<TWholeRow> A) {
  std::int64_t Sign = 1;
  std::int64_t Last = 1;
  for (std::size_t K = 0; K < A.size(); ++K) {
    std::size_t Pivot = K;
    while (Pivot < A.size() && A[Pivot][K] == 0) ++Pivot;
    if (Pivot == A.size()) return 0;
    if (Pivot != K) Sign = -Sign;
    std::swap(A[Pivot], A[K]);
    for (std::size_t I = K + 1; I < A.size(); ++I) {
      for (std::size_t J = K + 1; J < A.size(); ++J) {
        A[I][J] = (A[I][J] * A[K][K] - A[I][K] * A[K][J]) / Last;
      }
    }
    Last = A[K][K];
  }
  return Sign * Last;
}

/// The solution X / Divisor of a square system, by Cramer's rule.
struct TWholeSolution {
  std::int64_t Divisor = 0;  // not negative; 0 = no one solution
  TWholeRow X;
};

inline TWholeSolution Cramer(const std::vector<TWholeRow>& A, const TWholeRow& B) {
  TWholeSolution Result;
  Result.Divisor = Determinant(A);
  const std::int64_t Sign = Result.Divisor < 0 ? -1 : 1;
  Result.Divisor *= Sign;
  for (std::size_t J = 0; J < A.size(); ++J) {
    std::vector<TWholeRow> Replaced = A;
    for (std::size_t I = 0; I < A.size(); ++I) Replaced[I][J] = B[I];
    Result.X.push_back(Sign * Determinant(std::move(Replaced)));
  }
  return Result;
}

}  // namespace tarnalgo::fuzz
