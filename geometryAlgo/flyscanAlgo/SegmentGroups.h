#pragma once  // geometryAlgo/flyscanAlgo/SegmentGroups.h

#include <cstddef>
#include <functional>

#include "geometryAlgo/flyscanAlgo/LinearSegmentList.h"

namespace tarnalgo {

/// The runs of one channel and direction, to be ordered across the sheet.
///
/// Ownership: refers to its runs; whoever creates them frees them.
class TSegmentGroups : public TObjectList<TLinearSegmentList> {
 public:
  TSegmentGroups() : TObjectList<TLinearSegmentList>(false) {}

  /// Order by intercept.
  /// Tolerance: up to 1e-6 apart tie; not transitive.
  static int CompareIntercept(const TLinearSegmentList& Left, const TLinearSegmentList& Right);
  /// Sorts by `CompareIntercept`.
  /// Ties: the order of addition.
  void SortByIntercept();
};

/// The key of a dictionary of `TSegmentGroups`: channel and direction (radians) of their runs.
///
///     std::unordered_map<TGroupKey, TSegmentGroups> Groups;
///
/// Equality is exact: directions a hair apart are different groups, so runs that belong together
/// need the same bits, for instance the angle of the first of them.
struct TGroupKey {
  int Port = 0;        ///< The channel.
  double Angle = 0.0;  ///< Direction of the runs, radians.

  friend constexpr bool operator==(const TGroupKey&, const TGroupKey&) = default;
};

}  // namespace tarnalgo

/// @cond
// Agrees with `==`: both zeros hash alike.
template <>
struct std::hash<tarnalgo::TGroupKey> {
  std::size_t operator()(const tarnalgo::TGroupKey& Key) const noexcept {
    const std::size_t Port = std::hash<int>{}(Key.Port);
    const std::size_t Angle = std::hash<double>{}(Key.Angle == 0.0 ? 0.0 : Key.Angle);
    return Port ^ (Angle + 0x9e3779b97f4a7c15ULL + (Port << 6) + (Port >> 2));
  }
};
/// @endcond
