#pragma once  // host/Cadgeometry/BernsteinRoots.h

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace tarnalgo {

/// The root of a function monotone between a negative and a positive value, in either order:
/// Illinois false position, every fourth step a bisection. Where the values at the ends differ so
/// much in size that this gets nowhere, bisections in the end.
template <class TFunction>
double RootBetween(TFunction F, double Low, double AtLow, double High, double AtHigh) {
  constexpr int kLastFalsePosition = 60;
  for (int Step = 0; Step < 200; ++Step) {
    double T = (Low * AtHigh - High * AtLow) / (AtHigh - AtLow);
    const bool IsHalving = Step % 4 == 3 || Step > kLastFalsePosition;
    if (!(T > Low && T < High) || IsHalving) T = Low + (High - Low) / 2;
    if (!(T > Low && T < High)) break;
    const double Value = F(T);
    if (Value == 0.0) return T;
    if ((Value < 0.0) == (AtLow < 0.0)) {
      Low = T;
      AtLow = Value;
      AtHigh /= 2;
    } else {
      High = T;
      AtHigh = Value;
      AtLow /= 2;
    }
  }
  return Low + (High - Low) / 2;
}

/// The roots in (0, 1) of a polynomial of degree `N` in Bernstein form, ascending.
///
/// Its coefficients change sign at least as often as it has roots, and halving an interval adds no
/// change; so an interval without a change is dropped, one with a single change holds one root,
/// which is bracketed and refined, and no more than `N` intervals are ever open. Roots closer than
/// the last interval can be told apart come out as one. Coefficients that are not finite have none.
/// Cost: no allocation, at most `N` · depth subdivisions.
template <std::size_t N>
class TBernsteinRoots {
 public:
  /// The coefficients, from the value at 0 to the value at 1.
  using TCoefficients = std::array<double, N + 1>;

  /// Finds all roots at once.
  explicit TBernsteinRoots(const TCoefficients& C) { Isolate(C, 0.0, 1.0, 0); }

  /// The roots found.
  const double* begin() const { return FRoots.data(); }
  const double* end() const { return FRoots.data() + FCount; }  ///< Behind the last.

  /// The value at `T`, by de Casteljau.
  static double Eval(TCoefficients C, double T) {
    for (std::size_t Level = N; Level > 0; --Level) {
      for (std::size_t I = 0; I < Level; ++I) C[I] += (C[I + 1] - C[I]) * T;
    }
    return C[0];
  }

 private:
  static constexpr int kDeepest = 46;  // intervals of 1e-14

  static int SignChanges(const TCoefficients& C) {
    int Changes = 0;
    double Last = 0.0;
    for (const double Value : C) {
      if ((Value < 0.0 && Last > 0.0) || (Value > 0.0 && Last < 0.0)) ++Changes;
      if (Value != 0.0) Last = Value;
    }
    return Changes;
  }

  void Isolate(const TCoefficients& C, double From, double To, int Depth) {
    const int Changes = SignChanges(C);
    if (Changes == 0) return;
    if (Changes == 1 || Depth == kDeepest) {
      Add(From + (To - From) * (Changes == 1 ? Refine(C) : 0.5));
      return;
    }
    TCoefficients Left = C;
    TCoefficients Right = C;
    for (std::size_t Level = 1; Level <= N; ++Level) {
      for (std::size_t I = 0; I + Level <= N; ++I) Right[I] = (Right[I] + Right[I + 1]) / 2;
      Left[Level] = Right[0];
    }
    const double Middle = From + (To - From) / 2;
    Isolate(Left, From, Middle, Depth + 1);
    if (Right[0] == 0.0) Add(Middle);  // exact: a root that neither half counts
    Isolate(Right, Middle, To, Depth + 1);
  }

  /// The only sign change in [0, 1].
  static double Refine(const TCoefficients& C) {
    if constexpr (N == 2) return RootOfQuadratic(C);
    if (C[0] == 0.0 || C[N] == 0.0) return BisectBySign(C);
    return RootBetween([&C](double T) { return Eval(C, T); }, 0.0, C[0], 1.0, C[N]);
  }

  /// The same in closed form: T / (1 − T) is the positive root of C2·s² + 2·C1·s + C0 = 0. The ends
  /// differ in sign, or one is 0, so that nothing cancels.
  static double RootOfQuadratic(const TCoefficients& C) {
    const double Scale = std::max({std::abs(C[0]), std::abs(C[1]), std::abs(C[2])});
    const double C0 = C[0] / Scale;
    const double C1 = C[1] / Scale;
    const double C2 = C[2] / Scale;
    const double Root = std::sqrt(C1 * C1 - C0 * C2);
    const double Q = -(C1 + std::copysign(Root, C1 != 0.0 ? C1 : C0));
    const bool IsByStart = C[0] != 0.0 && (C[0] < 0.0) == (Q < 0.0);  // C0 may have gone to 0
    return IsByStart ? C0 / (C0 + Q) : Q / (Q + C2);
  }

  /// The same where an end value is exactly 0 and cannot steer a false position.
  static double BisectBySign(const TCoefficients& C) {
    double FirstSign = 0.0;
    for (std::size_t I = 0; I <= N && FirstSign == 0.0; ++I) FirstSign = C[I];
    double Low = 0.0;
    double High = 1.0;
    for (int Step = 0; Step < 60; ++Step) {
      const double T = Low + (High - Low) / 2;
      const double Value = Eval(C, T);
      if (Value == 0.0) return T;
      ((Value < 0.0) == (FirstSign < 0.0) ? Low : High) = T;
    }
    return Low + (High - Low) / 2;
  }

  void Add(double Root) {
    if (FCount < N && Root >= 0.0) FRoots[FCount++] = Root;
  }

  std::array<double, N> FRoots{};
  std::size_t FCount = 0;
};

}  // namespace tarnalgo
