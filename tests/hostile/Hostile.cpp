#include "tests/hostile/Hostile.h"

#include <iterator>
#include <limits>

namespace tarnalgo::test {

namespace {

using TLimits = std::numeric_limits<double>;

constexpr double kKinds[] = {TLimits::quiet_NaN(),
                             TLimits::infinity(),
                             -TLimits::infinity(),
                             0.0,
                             -0.0,
                             TLimits::denorm_min(),
                             -TLimits::denorm_min(),
                             TLimits::min(),
                             1e-300,
                             1e300,
                             -1e300,
                             TLimits::max(),
                             TLimits::lowest(),
                             1e154,
                             1e-154,
                             1e-6,
                             -1e-6,
                             1e-9,
                             0.5,
                             1.0,
                             1.0 + TLimits::epsilon(),
                             -1.0,
                             3.141592653589793,
                             6.283185307179586,
                             1e9,
                             2147483648.0,
                             1e15,
                             4.7e18,
                             -9.3e18,
                             1e40};

constexpr std::int64_t kLimits[] = {INT32_MIN, INT32_MAX, INT64_MIN,
                                    INT64_MAX, 1LL << 62, 1LL << 53};

}  // namespace

int THostile::Kinds() {
  return static_cast<int>(std::size(kKinds));
}

void THostile::Begin(std::uint64_t Row, int Call, int Long) {
  FRandom.seed(Row * 0x9E3779B97F4A7C15u + static_cast<std::uint64_t>(Call));
  FMode = Long > 0 ? 3 : Call < Kinds() ? 0 : 1 + Call % 3;
  FLong = Long;
  FKind = Call;
  FFavourite = Pick(5);
  FDepth = 0;
}

void THostile::End(bool HasObject) {
  if (HasObject && !FKept.empty()) FKept.front().reset();
  while (!FKept.empty()) FKept.pop_back();
}

int THostile::Pick(int Bound) {
  return static_cast<int>(FRandom() % static_cast<std::uint64_t>(Bound));
}

double THostile::Double() {
  const bool IsHostile = FMode == 1 || (FMode == 2 && Pick(8) == 0);
  if (FMode == 0) return kKinds[FKind];
  if (IsHostile) return kKinds[Pick(Kinds())];
  return (Pick(9) - 4) * (Pick(6) == 0 ? 0.5 : 1.0);
}

std::int64_t THostile::Integer() {
  if (Pick(8) == 0) return kLimits[Pick(static_cast<int>(std::size(kLimits)))];
  return Pick(8) - 2;
}

std::int64_t THostile::IntegerWithin(std::size_t Bytes) {
  const std::int64_t Value = Integer();
  if (Bytes == sizeof(std::int32_t) && Value > INT32_MAX) return INT32_MAX;
  if (Bytes == sizeof(std::int32_t) && Value < INT32_MIN) return INT32_MIN;
  return Value;
}

int THostile::Size() {
  static constexpr int kSizes[] = {INT32_MIN, -1, 0, 1, 2, 3, 7, 40, INT32_MAX};
  return Coin() ? FFavourite : kSizes[Pick(static_cast<int>(std::size(kSizes)))];
}

int THostile::ListSize() {
  static constexpr int kSizes[] = {0, 1, 2, 3, 5, 12, 40};
  if (FDepth > 3) return Pick(4);
  return Coin() ? FFavourite : kSizes[Pick(static_cast<int>(std::size(kSizes)))];
}

std::string THostile::Text() {
  static const std::string kTexts[] = {"",     "numbers.txt",    "words.txt",
                                       "out",  "no/such/folder", std::string(5000, 'x'),
                                       "\xff", "%s%n",           std::string("a\0b", 3),
                                       "."};
  return kTexts[Pick(static_cast<int>(std::size(kTexts)))];
}

}  // namespace tarnalgo::test
