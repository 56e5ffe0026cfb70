#include "host/tarnds/ListUtils.h"

#include <algorithm>
#include <numeric>

namespace tarnalgo {

std::vector<int> TListUtils::CreateOrderList(int N) {
  std::vector<int> Order(static_cast<std::size_t>(std::max(N, 0)));
  std::iota(Order.begin(), Order.end(), 0);
  return Order;
}

}  // namespace tarnalgo
