#pragma once  // containers/Container/MergeSort.h

#include <algorithm>
#include <bit>
#include <cstddef>
#include <utility>
#include <vector>

namespace tarnalgo {

namespace detail {

inline constexpr std::size_t kInsertionRun = 16;

template <class T, class TComparer>
void InsertionSortRun(std::vector<T>& Items, std::size_t First, std::size_t Last,
                      TComparer& Compare) {
  for (std::size_t I = First + 1; I < Last; ++I) {
    if (Compare(Items[I - 1], Items[I]) <= 0) continue;
    T Item = std::move(Items[I]);
    std::size_t Hole = I;
    do {
      Items[Hole] = std::move(Items[Hole - 1]);
      --Hole;
    } while (Hole > First && Compare(Items[Hole - 1], Item) > 0);
    Items[Hole] = std::move(Item);
  }
}

}  // namespace detail

/// Sorts `Items` by a comparer `int(const T&, const T&)` (−1, 0, 1), stably.
///
/// The one sort of the library for comparers with a tolerance band. Such a comparer is not
/// transitive; the standard sorts have undefined behaviour with it. Here the result is then still a
/// permutation of the items, the same for the same input on every machine, and every access stays
/// inside the list. A comparer that raises leaves the list a valid one, of unspecified content;
/// when memory runs out nothing has moved yet.
/// Cost: O(n log n) comparisons, memory for as many items beside the list; n − 1 comparisons and no
/// memory on a sorted list.
/// Bottom-up merge sort over runs of 16.
template <class T, class TComparer>
void MergeSort(std::vector<T>& Items, TComparer Compare) {
  // A list in order needs neither moves nor memory.
  const auto Descends = [&Compare](const T& A, const T& B) { return Compare(A, B) > 0; };
  if (std::adjacent_find(Items.begin(), Items.end(), Descends) == Items.end()) return;
  const std::size_t Count = Items.size();
  std::vector<T> Left;
  if (Count > detail::kInsertionRun) {
    // The longest left run there can be, taken before anything moves.
    Left.reserve(detail::kInsertionRun * std::bit_floor((Count - 1) / detail::kInsertionRun));
  }
  for (std::size_t First = 0; First < Count; First += detail::kInsertionRun) {
    detail::InsertionSortRun(Items, First, std::min(First + detail::kInsertionRun, Count), Compare);
  }
  for (std::size_t Width = detail::kInsertionRun; Width < Count; Width *= 2) {
    for (std::size_t First = 0; First + Width < Count; First += 2 * Width) {
      const std::size_t Middle = First + Width;
      const std::size_t Last = std::min(Middle + Width, Count);
      if (Compare(Items[Middle - 1], Items[Middle]) <= 0) continue;
      Left.assign(std::make_move_iterator(Items.begin() + static_cast<std::ptrdiff_t>(First)),
                  std::make_move_iterator(Items.begin() + static_cast<std::ptrdiff_t>(Middle)));
      std::size_t L = 0;
      std::size_t R = Middle;
      std::size_t Out = First;
      while (L < Left.size() && R < Last) {
        // Only a strictly smaller right item overtakes: equal ones keep their order.
        Items[Out++] =
            Compare(Left[L], Items[R]) > 0 ? std::move(Items[R++]) : std::move(Left[L++]);
      }
      while (L < Left.size()) Items[Out++] = std::move(Left[L++]);
    }
  }
}

}  // namespace tarnalgo
