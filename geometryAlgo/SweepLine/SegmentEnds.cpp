#include "geometryAlgo/SweepLine/SegmentEnds.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>

#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

bool Precedes(const TSegmentEnd& A, const TSegmentEnd& B) {
  if (A.P.X != B.P.X) return A.P.X < B.P.X;  // exact: an order
  const int Sign = CompareExact(A.P.Y, B.P.Y);
  return Sign != 0 ? Sign < 0 : A.Id < B.Id;
}

}  // namespace

// Buckets of equal width first: ends spread evenly are then sorted already but for a few.
void SortSegmentEnds(std::vector<TSegmentEnd>& Ends) {
  if (Ends.empty()) return;
  const auto [Least, Greatest] =
      std::minmax_element(Ends.begin(), Ends.end(),
                          [](const TSegmentEnd& A, const TSegmentEnd& B) { return A.P.X < B.P.X; });
  const double Left = Least->P.X;
  const double PerLength = static_cast<double>(Ends.size()) / (Greatest->P.X - Left);
  if (!std::isfinite(PerLength)) return std::sort(Ends.begin(), Ends.end(), Precedes);
  const auto BucketOf = [&](const TSegmentEnd& End) {
    return static_cast<std::size_t>((End.P.X - Left) * PerLength);
  };
  std::vector<std::uint32_t> Limits(Ends.size() + 2, 0);  // of the buckets, once all are filled
  for (const TSegmentEnd& End : Ends) ++Limits[BucketOf(End) + 1];
  std::partial_sum(Limits.begin(), Limits.end(), Limits.begin());
  std::vector<TSegmentEnd> Sorted(Ends.size());
  for (const TSegmentEnd& End : Ends) Sorted[Limits[BucketOf(End)]++] = End;
  Ends.swap(Sorted);
  auto First = Ends.begin();
  for (std::size_t Bucket = 0; Bucket + 1 < Limits.size(); ++Bucket) {
    const auto Last = Ends.begin() + Limits[Bucket];
    if (Last - First > 1) std::sort(First, Last, Precedes);
    First = Last;
  }
}

}  // namespace tarnalgo
