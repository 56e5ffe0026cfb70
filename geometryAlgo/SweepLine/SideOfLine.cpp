#include "geometryAlgo/SweepLine/SideOfLine.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// An exact sum of doubles that do not overlap, ascending in size.
class TExactSum {
 public:
  void Add(double Term) {
    std::size_t Kept = 0;
    for (std::size_t I = 0; I < FCount; ++I) {
      const double Sum = Term + FTerms[I];
      const double Part = Sum - Term;
      const double Rest = (Term - (Sum - Part)) + (FTerms[I] - Part);
      if (Rest != 0.0) FTerms[Kept++] = Rest;
      Term = Sum;
    }
    if (Term != 0.0 || Kept == 0) FTerms[Kept++] = Term;
    FCount = Kept;
  }
  void AddProduct(double A, double B) {
    const double Product = A * B;
    Add(Product);
    Add(std::fma(A, B, -Product));
  }
  int Sign() const { return CompareExact(FTerms[FCount - 1], 0.0); }
  double Rounded() const {
    return FCount > 1 ? FTerms[FCount - 1] + FTerms[FCount - 2] : FTerms[FCount - 1];
  }

 private:
  std::array<double, 16> FTerms{};
  std::size_t FCount = 0;
};

TExactSum ExactSide(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  TExactSum Sum;
  Sum.AddProduct(A.X, B.Y);
  Sum.AddProduct(-A.Y, B.X);
  Sum.AddProduct(B.X, C.Y);
  Sum.AddProduct(-B.Y, C.X);
  Sum.AddProduct(C.X, A.Y);
  Sum.AddProduct(-C.Y, A.X);
  return Sum;
}

/// The determinant in the precision of `T`, and a bound of its rounding.
template <class T>
struct TFilteredSide {
  T Value;
  T Bound;

  TFilteredSide(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
    const T Left = (T(B.X) - T(A.X)) * (T(C.Y) - T(A.Y));
    const T Right = (T(C.X) - T(A.X)) * (T(B.Y) - T(A.Y));
    Value = Left - Right;
    Bound = std::numeric_limits<T>::epsilon() * 2 * (std::abs(Left) + std::abs(Right)) +
            std::numeric_limits<T>::min() * 16;  // products that underflow
  }
  /// 0 where the rounding does not decide.
  int Sign() const { return Value > Bound ? 1 : (Value < -Bound ? -1 : 0); }
  bool IsPrecise() const { return std::abs(Value) > std::ldexp(Bound, 28); }
};

}  // namespace

int SideOfLine(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  if (const int Sign = TFilteredSide<double>(A, B, C).Sign()) return Sign;
  if (A == B || A == C || B == C) return 0;  // exact: no area
  if (const int Sign = TFilteredSide<long double>(A, B, C).Sign()) return Sign;
  return ExactSide(A, B, C).Sign();
}

double RoundedSide(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  if (const TFilteredSide<double> Side(A, B, C); Side.IsPrecise()) return Side.Value;
  if (const TFilteredSide<long double> Side(A, B, C); Side.IsPrecise()) {
    return static_cast<double>(Side.Value);
  }
  return ExactSide(A, B, C).Rounded();
}

}  // namespace tarnalgo
