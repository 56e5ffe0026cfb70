#pragma once  // tests/support/IntegerSegments.h

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo::test {

/// Which segments come within a tolerance of each other, decided in integers: the oracle for the
/// sweep. Coordinates are whole multiples of a small unit.
__extension__ typedef __int128 TWide;

using TPairs = std::vector<std::pair<int, int>>;

constexpr std::int64_t kReach = 16;  // the tolerance in units
inline const double kUnit = std::ldexp(1.0, -24);

struct TIntegerSegment {
  std::int64_t X1, Y1, X2, Y2;

  TVLine2D Line() const {
    const auto Coordinate = [](std::int64_t V) { return static_cast<double>(V) * kUnit; };
    return {{Coordinate(X1), Coordinate(Y1)}, {Coordinate(X2), Coordinate(Y2)}};
  }
  TWide Side(std::int64_t X, std::int64_t Y) const {
    return TWide(X2 - X1) * (Y - Y1) - TWide(Y2 - Y1) * (X - X1);
  }
  bool IsNear(std::int64_t X, std::int64_t Y) const {
    const auto SquareTo = [&](std::int64_t PX, std::int64_t PY) {
      return TWide(X - PX) * (X - PX) + TWide(Y - PY) * (Y - PY);
    };
    const TWide Square = TWide(X2 - X1) * (X2 - X1) + TWide(Y2 - Y1) * (Y2 - Y1);
    const TWide Dot = TWide(X2 - X1) * (X - X1) + TWide(Y2 - Y1) * (Y - Y1);
    if (Dot <= 0) return SquareTo(X1, Y1) <= kReach * kReach;
    if (Dot >= Square) return SquareTo(X2, Y2) <= kReach * kReach;
    const TWide S = Side(X, Y);
    if (S > (TWide(1) << 62) || S < -(TWide(1) << 62)) return false;  // its square would overflow
    return S * S <= Square * kReach * kReach;
  }
  bool Splits(const TIntegerSegment& B) const {
    const TWide S1 = Side(B.X1, B.Y1);
    const TWide S2 = Side(B.X2, B.Y2);
    return (S1 > 0 && S2 < 0) || (S1 < 0 && S2 > 0);
  }
  bool Meets(const TIntegerSegment& B) const {
    return IsNear(B.X1, B.Y1) || IsNear(B.X2, B.Y2) || B.IsNear(X1, Y1) || B.IsNear(X2, Y2) ||
           (Splits(B) && B.Splits(*this));
  }
};

/// The pairs that meet, ascending.
inline TPairs ExactPairs(const std::vector<TIntegerSegment>& Segments) {
  TPairs Result;
  for (std::size_t I = 0; I < Segments.size(); ++I) {
    for (std::size_t J = I + 1; J < Segments.size(); ++J) {
      if (!Segments[I].Meets(Segments[J])) continue;
      Result.emplace_back(static_cast<int>(I), static_cast<int>(J));
    }
  }
  return Result;
}

}  // namespace tarnalgo::test
