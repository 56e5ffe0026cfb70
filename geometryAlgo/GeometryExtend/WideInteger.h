#pragma once  // geometryAlgo/GeometryExtend/WideInteger.h

#include <cmath>
#include <cstdint>
#include <polyclipping/clipper.hpp>

namespace tarnalgo {

/// Products of coordinates need 128 bits. Internal to the pages of this unit.
__extension__ typedef __int128 TInt128;
__extension__ typedef unsigned __int128 TUInt128;

inline TInt128 Product(std::int64_t A, std::int64_t B) {
  return static_cast<TInt128>(A) * B;
}

/// Sums through the type without a sign: they wrap round, where a sum of signed ones would have no
/// meaning. Only vectors of -2^63, which no difference within the library's range reaches, do.
inline TInt128 WrapAdd(TInt128 A, TInt128 B) {
  return static_cast<TInt128>(static_cast<TUInt128>(A) + static_cast<TUInt128>(B));
}

inline TInt128 Dot(const ClipperLib::IntPoint& A, const ClipperLib::IntPoint& B) {
  return WrapAdd(Product(A.X, B.X), Product(A.Y, B.Y));
}

/// A.X·B.Y − A.Y·B.X; always fits.
inline TInt128 Cross(const ClipperLib::IntPoint& A, const ClipperLib::IntPoint& B) {
  return Product(A.X, B.Y) - Product(A.Y, B.X);
}

/// An exact sum of up to 2^63 terms of 128 bits, kept in two halves.
class TWideSum {
 public:
  void Add(TInt128 Term) {
    FHigh += static_cast<TInt128>(Term >> 64);
    FLow += static_cast<std::uint64_t>(Term);
  }
  /// The sum, rounded once.
  double Value() const {
    const TInt128 High = FHigh + static_cast<TInt128>(FLow >> 64);
    const auto Low = static_cast<std::uint64_t>(FLow);
    if (High == static_cast<std::int64_t>(High)) {  // within 128 bits
      return static_cast<double>(static_cast<TInt128>(static_cast<TUInt128>(High) << 64 | Low));
    }
    // The lowest bit that is kept stands for all below it: far under the last digit of a double.
    return std::ldexp(static_cast<double>(High | static_cast<TInt128>(Low != 0)), 64);
  }

 private:
  TInt128 FHigh = 0;
  TUInt128 FLow = 0;
};

}  // namespace tarnalgo
