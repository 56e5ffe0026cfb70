#pragma once  // fuzz/Bytes.h

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "host/Cadtypes/Point.h"

namespace tarnalgo::fuzz {

/// Stops the fuzzer with a message unless `Holds`.
inline void Require(bool Holds, const char* What) {
  if (Holds) return;
  std::fprintf(stderr, "invariant broken: %s\n", What);
  std::abort();
}

/// Values made of the fuzzer's bytes; zeros when they run out.
class TBytes {
 public:
  TBytes(const std::uint8_t* Data, std::size_t Size) : FData(Data), FSize(Size) {}

  bool IsEmpty() const { return FSize == 0; }
  std::uint8_t Byte() {
    if (FSize == 0) return 0;
    --FSize;
    return *FData++;
  }
  /// In 0 .. Bound − 1.
  int Below(int Bound) { return Byte() % Bound; }
  /// In −Reach .. Reach.
  int Around(int Reach) { return Below(2 * Reach + 1) - Reach; }

  /// A coordinate that a drawing may hold: mostly from a small grid, so that ties and degenerate
  /// shapes come by themselves, now and then a hair beside it.
  double Coordinate() {
    const std::uint8_t Choice = Byte();
    const double Grid = Choice % 16;
    switch (Choice / 16) {
      case 0:
        return Grid + 5e-7;
      case 1:
        return Grid - 2e-6;
      case 2:
        return Grid + Byte() / 256.0;
      case 3:
        return Grid * 1e6;
      default:
        return Grid;
    }
  }
  TPoint2D Point() {
    const double X = Coordinate();
    return {X, Coordinate()};
  }
  /// A point of the whole numbers 0 .. Side − 1.
  TPoint2D GridPoint(int Side) {
    const int X = Below(Side);
    return TPoint2D(X, Below(Side));
  }

  /// Any double at all.
  double Anything() {
    const std::uint8_t Choice = Byte();
    if (Choice < 128) return Coordinate();
    if (Choice == 128) return std::numeric_limits<double>::quiet_NaN();
    if (Choice == 129) return std::numeric_limits<double>::infinity();
    if (Choice == 130) return 1e300;
    if (Choice == 131) return 5e-324;
    std::uint64_t Bits = 0;
    for (int I = 0; I < 8; ++I) Bits = Bits << 8 | Byte();
    double Value = 0.0;
    std::memcpy(&Value, &Bits, sizeof Value);
    return Value;
  }
  TPoint2D AnyPoint() {
    const double X = Anything();
    return {X, Anything()};
  }

 private:
  const std::uint8_t* FData;
  std::size_t FSize;
};

}  // namespace tarnalgo::fuzz
