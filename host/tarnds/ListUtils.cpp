#include "host/tarnds/ListUtils.h"

#include <algorithm>
#include <numeric>

#include "host/Cadtypes/Constants.h"
#include "host/Exceptions.h"

namespace tarnalgo {

std::vector<int> TListUtils::CreateOrderList(int N) {
  if (N > kMostItems) RaiseError<EParamError>("TListUtils.CreateOrderList", "too many");
  std::vector<int> Order(static_cast<std::size_t>(std::max(N, 0)));
  std::iota(Order.begin(), Order.end(), 0);
  return Order;
}

}  // namespace tarnalgo
