#include "geometryAlgo/ShapeApp/HullFilter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

// Of small sets a part is looked at, so that the sample costs less than it spares; of large ones no
// more than this.
constexpr std::size_t kLeastStride = 8;
constexpr std::size_t kSampleSize = 16384;
// How far into the sample, counted from the left, everything is kept: enough for the first three
// different points of the whole set.
constexpr std::size_t kKeptOnTheLeft = 8;
constexpr std::size_t kHalfTurnDirections = 8;
// The margin: several times the 1e-6 of repeats, a millionth of the core's size, and what the test
// of depth rounds off at the coordinates as they are.
constexpr double kMarginInRepeats = 4.0;
constexpr double kMarginInSize = 1e-6;
constexpr double kMarginInCoordinates = 1e-12;
// Beyond these products of four coordinates, or their rounding, leave the range of a double.
constexpr double kLargestCoordinate = 1e70;
constexpr double kSmallestSize = 1e-70;

std::vector<TPoint2D> FiniteSample(const std::vector<TPoint2D>& Points) {
  std::vector<TPoint2D> Sample;
  const std::size_t Stride = std::max(Points.size() / kSampleSize, kLeastStride);
  Sample.reserve(Points.size() / Stride + 1);
  for (std::size_t I = 0; I < Points.size(); I += Stride) {
    if (TPoint2DUtils::IsFinite(Points[I])) Sample.push_back(Points[I]);
  }
  return Sample;
}

double LargestCoordinate(const std::vector<TPoint2D>& Points) {
  double Largest = 0.0;
  for (const TPoint2D& P : Points) {
    Largest = std::max({Largest, std::abs(P.X), std::abs(P.Y)});
  }
  return Largest;
}

double XFromTheLeft(const std::vector<TPoint2D>& Sample, std::size_t Rank) {
  std::vector<double> Xs;
  Xs.reserve(Sample.size());
  for (const TPoint2D& P : Sample) Xs.push_back(P.X);
  const auto Ranked = Xs.begin() + static_cast<std::ptrdiff_t>(std::min(Rank, Xs.size() - 1));
  std::nth_element(Xs.begin(), Ranked, Xs.end());
  return *Ranked;
}

}  // namespace

THullFilter::THullFilter(const std::vector<TPoint2D>& Points) : FPoints(Points) {
  const std::vector<TPoint2D> Sample = FiniteSample(Points);
  const double Largest = LargestCoordinate(Sample);
  if (Sample.size() < 3 || Largest > kLargestCoordinate) return;
  const std::vector<TPoint2D> Core = SampledCore(Sample);
  double Size = 0.0;
  for (const TPoint2D& P : Core) Size = std::max(Size, P.DistanceTo(Core.front()));
  if (Size < kSmallestSize) return;
  const double Margin =
      kMarginInRepeats * kLinearTolerance + kMarginInSize * Size + kMarginInCoordinates * Largest;
  TPoint2D From = Core.back();
  for (const TPoint2D& To : Core) {
    const TPoint2D Normal = (To - From).Normal().RotateCcw90();
    if (!(To == From)) FSides.push_back({Normal, Normal.DotMul(To) + Margin});
    From = To;
  }
  FCompleteTo = XFromTheLeft(Sample, kKeptOnTheLeft);
}

/// The farthest points of the sample in directions all round, counter-clockwise: a convex ring in
/// which points may repeat.
std::vector<TPoint2D> THullFilter::SampledCore(const std::vector<TPoint2D>& Sample) const {
  std::array<TPoint2D, 2 * kHalfTurnDirections> Core;
  for (std::size_t I = 0; I < kHalfTurnDirections; ++I) {
    const double Angle = kPi * static_cast<double>(I) / kHalfTurnDirections;
    const TPoint2D Direction{std::cos(Angle), std::sin(Angle)};
    double Most = -kStartOfMinimum;
    double Least = kStartOfMinimum;
    for (const TPoint2D& P : Sample) {
      const double Reach = Direction.DotMul(P);
      if (Reach > Most) {
        Most = Reach;
        Core[I] = P;
      }
      if (Reach < Least) {
        Least = Reach;
        Core[I + kHalfTurnDirections] = P;
      }
    }
  }
  return {Core.begin(), Core.end()};
}

bool THullFilter::IsDeep(const TPoint2D& P) const {
  for (const TSide& Side : FSides) {
    if (!(Side.Normal.DotMul(P) >= Side.Least)) return false;
  }
  return true;
}

std::vector<TPoint2D> THullFilter::Candidates() const {
  std::vector<TPoint2D> Kept;
  for (const TPoint2D& P : FPoints) {
    if (P.X > FCompleteTo && IsDeep(P)) continue;
    if (TPoint2DUtils::IsFinite(P)) Kept.push_back(P);
  }
  return Kept;
}

}  // namespace tarnalgo
