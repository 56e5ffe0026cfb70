#pragma once  // geometryAlgo/UMatrixAlgo/Permutation.h

#include <numeric>
#include <utility>
#include <vector>

namespace tarnalgo {

/// The order of rows that the exchanges of `TMatrixDCMPTool::PLU` lead to: row i of the exchanged
/// matrix is row Result[i] of the given one. Internal to the matrix unit.
inline std::vector<int> PermutationOf(const std::vector<int>& Pivots) {
  std::vector<int> Order(Pivots.size());
  std::iota(Order.begin(), Order.end(), 0);
  for (std::size_t K = 0; K < Pivots.size(); ++K) {
    std::swap(Order[K], Order[static_cast<std::size_t>(Pivots[K])]);
  }
  return Order;
}

}  // namespace tarnalgo
