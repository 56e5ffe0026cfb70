#pragma once  // host/tarnds/ListUtils.h

#include <vector>

namespace tarnalgo {

/// A pair of values.
template <class T1, class T2 = T1>
struct Tuple2 {
  /// One of the pair.
  T1 Value1{};
  T2 Value2{};  ///< The other.

  friend bool operator==(const Tuple2&, const Tuple2&) = default;
};

/// Lists of integers.
class TListUtils {
 public:
  /// The integers 0 .. N − 1; empty for N <= 0.
  static std::vector<int> CreateOrderList(int N);
};

}  // namespace tarnalgo
