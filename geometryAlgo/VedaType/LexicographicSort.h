#pragma once  // geometryAlgo/VedaType/LexicographicSort.h

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Exact order by X, then Y.
inline bool IsLessByXY(const TPoint2D& A, const TPoint2D& B) {
  return A.X != B.X ? A.X < B.X : A.Y < B.Y;
}

/// Sorts records by the points that `PointOf` sees in them, by X, then Y; equal points come in any
/// order. Every coordinate is finite. Internal to the library.
/// Cost: O(n log n) at worst, O(n) where the X are spread: the records are dealt into stripes of
/// equal width first, four to a stripe on average, and only stripes are sorted.
template <class T, class TPointOf>
void SortByXY(std::vector<T>& Items, TPointOf PointOf) {
  constexpr std::size_t kFewItems = 256;
  constexpr std::size_t kItemsOfStripe = 4;
  const auto Less = [&PointOf](const T& A, const T& B) {
    return IsLessByXY(PointOf(A), PointOf(B));
  };
  double Left = kStartOfMinimum;
  double Right = -kStartOfMinimum;
  for (const T& Item : Items) {
    Left = std::min(Left, PointOf(Item).X);
    Right = std::max(Right, PointOf(Item).X);
  }
  const std::size_t Stripes = Items.size() / kItemsOfStripe;
  const double Scale = static_cast<double>(Stripes) / (Right - Left);
  if (Items.size() < kFewItems || !std::isnormal(Scale)) {
    std::sort(Items.begin(), Items.end(), Less);
    return;
  }
  // Monotone in X, rounding included: an item of an earlier stripe never has a greater X.
  const auto StripeOf = [&](const T& Item) {
    return std::min(static_cast<std::size_t>((PointOf(Item).X - Left) * Scale), Stripes - 1);
  };
  std::vector<std::uint32_t> Ends(Stripes + 1, 0);
  for (const T& Item : Items) ++Ends[StripeOf(Item) + 1];
  for (std::size_t I = 1; I <= Stripes; ++I) Ends[I] += Ends[I - 1];
  std::vector<T> Dealt(Items.size());
  for (const T& Item : Items) Dealt[Ends[StripeOf(Item)]++] = Item;
  std::uint32_t First = 0;
  for (std::size_t I = 0; I < Stripes; ++I) {
    const std::uint32_t Last = Ends[I];
    if (Last - First > 1) {
      std::sort(Dealt.begin() + First, Dealt.begin() + Last, Less);
    }
    First = Last;
  }
  Items.swap(Dealt);
}

}  // namespace tarnalgo
