#pragma once  // tests/support/Generate.h

#include <random>
#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo::test {

inline double RandomDouble(std::mt19937& Random, double Low, double High) {
  return std::uniform_real_distribution<double>(Low, High)(Random);
}

inline int RandomInt(std::mt19937& Random, int Low, int High) {
  return std::uniform_int_distribution<int>(Low, High)(Random);
}

inline TPoint2D RandomPoint(std::mt19937& Random, double Low, double High) {
  const double X = RandomDouble(Random, Low, High);
  return {X, RandomDouble(Random, Low, High)};
}

/// A point of a small integer grid: ties, duplicates and collinear triples come by themselves.
inline TPoint2D RandomGridPoint(std::mt19937& Random, int Low, int High) {
  const int X = RandomInt(Random, Low, High);
  return {static_cast<double>(X), static_cast<double>(RandomInt(Random, Low, High))};
}

}  // namespace tarnalgo::test
