#include "geometryAlgo/SweepLine/SideOfLine.h"

#include <array>
#include <cmath>
#include <cstddef>

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

template <class T>
bool IsPrecise(const TRoundedSide<T>& Side) {
  return std::abs(Side.Value) > std::ldexp(Side.Bound, 28);
}

}  // namespace

int SlowSideOfLine(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  if (A == B || A == C || B == C) return 0;  // exact: no area
  if (const int Sign = TRoundedSide<long double>(A, B, C).Sign()) return Sign;
  return ExactSide(A, B, C).Sign();
}

double RoundedSide(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  if (const TRoundedSide<double> Side(A, B, C); IsPrecise(Side)) return Side.Value;
  if (const TRoundedSide<long double> Side(A, B, C); IsPrecise(Side)) {
    return static_cast<double>(Side.Value);
  }
  return ExactSide(A, B, C).Rounded();
}

}  // namespace tarnalgo
