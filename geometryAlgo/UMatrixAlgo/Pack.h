#pragma once  // geometryAlgo/UMatrixAlgo/Pack.h

#include <cstring>

namespace tarnalgo {

/// Doubles that one instruction works on: `TPack2` fits every x86-64 and ARM64, `TPack4` wants AVX.
/// Each lane is rounded by itself, so the width changes no result. Internal to the matrix unit.
using TPack2 = double __attribute__((vector_size(16)));
using TPack4 = double __attribute__((vector_size(32)));

/// Lanes of a pack.
template <class TPack>
inline constexpr int kLanes = static_cast<int>(sizeof(TPack) / sizeof(double));

// By reference: a pack wider than the base machine cannot be returned by value. Always inlined, for
// the caller may be compiled for a wider machine.

template <class TPack>
[[gnu::always_inline]] inline void Load(TPack& Pack, const double* From) {
  std::memcpy(&Pack, From, sizeof Pack);
}

template <class TPack>
[[gnu::always_inline]] inline void Store(double* To, const TPack& Pack) {
  std::memcpy(To, &Pack, sizeof Pack);
}

/// The machine has the instructions that `TPack4` wants. A function for them is marked
/// TARNALGO_WIDE_CODE. The build option TARNALGO_NARROW does without, to compare.
#if defined(__x86_64__) && !defined(TARNALGO_NARROW)
#define TARNALGO_WIDE_CODE [[gnu::target("avx2")]]
inline bool HasWidePacks() {
  return __builtin_cpu_supports("avx2");
}
#else
#define TARNALGO_WIDE_CODE
inline bool HasWidePacks() {
  return false;
}
#endif

}  // namespace tarnalgo
