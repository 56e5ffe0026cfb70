#include "geometryAlgo/NestOptimizeAlgo/PolyDecimator.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "geometryAlgo/NestOptimizeAlgo/ChordScan.h"
#include "geometryAlgo/NestOptimizeAlgo/ListRange.h"
#include "geometryAlgo/NestOptimizeAlgo/TriangleClip.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

std::size_t Slot(int I) {
  return static_cast<std::size_t>(I);
}

/// Marks which of some points are kept. Points and marks count from 0 alike.
class TDecimation {
 public:
  TDecimation(std::span<const TPoint2D> Points, std::span<bool> Keep, double Tolerance,
              bool Restrict)
      : FScan(Points, Restrict ? TChordScan::TSide::Both : TChordScan::TSide::Left, Tolerance),
        FKeep(Keep) {}

  /// Marks the points that matter between two kept ones.
  void Step(int First, int Last) {
    FScan.Enter(First, Last);
    FOpen.assign(1, {First, Last});
    while (!FOpen.empty()) {
      const auto [F, L] = FOpen.back();
      FOpen.pop_back();
      const int Far = FScan.SplitOf(F, L);
      if (Far == F) continue;
      FKeep[Slot(Far)] = true;
      if (L - Far > 1) FOpen.push_back({Far, L});
      if (Far - F > 1) FOpen.push_back({F, Far});  // the first half is treated first
    }
  }

  /// `Step` in blocks that share their ends, which are kept.
  void Blocks(int First, int Last) {
    const int Count = Last - First + 1;
    const int Blocks = std::max(RoundedShare(Count), 1);
    for (int K = 0; K < Blocks; ++K) {
      const int Start = First + K * kDecimationBlock;
      const int End = K == Blocks - 1 ? Last : std::min(Last, Start + kDecimationBlock);
      FKeep[Slot(Start)] = FKeep[Slot(End)] = true;
      Step(Start, End);
    }
  }

 private:
  /// `Count` / 5000 to the nearest integer, halves to the even one.
  static int RoundedShare(int Count) {
    const int Share = Count / kDecimationBlock;
    const int TwiceRest = 2 * (Count % kDecimationBlock);
    const bool IsUp =
        TwiceRest > kDecimationBlock || (TwiceRest == kDecimationBlock && Share % 2 == 1);
    return Share + (IsUp ? 1 : 0);
  }

  TChordScan FScan;
  std::span<bool> FKeep;
  std::vector<std::pair<int, int>> FOpen;  // ranges to be treated, the next one last
};

}  // namespace

bool TPolyDecimator::IsClosed() const {
  return !FPoints->empty() && FPoints->front() == FPoints->back();  // exact: the stated closure
}

void TPolyDecimator::UseTolerance() {
  if (TMathUtils::FloatEquals(FTolerance, 0.0, kNoDecimation)) FTolerance = kDecimationTolerance;
}

std::vector<TPoint2D> TPolyDecimator::Decimate(int First, int Last, const std::vector<int>& Fixed,
                                               double ATolerance, bool Restrict) {
  const std::span<const TPoint2D> Range = ListRange(*FPoints, First, Last);
  const auto Marks = std::make_unique<bool[]>(Range.size());
  const std::span<bool> Keep(Marks.get(), Range.size());
  std::vector<int> Ends{0, Last - First};
  for (const int I : Fixed) {
    if (I >= First && I <= Last) Ends.push_back(I - First);
  }
  std::sort(Ends.begin(), Ends.end());
  TDecimation Decimation(Range, Keep, ATolerance, Restrict);
  for (std::size_t I = 1; I < Ends.size(); ++I) Decimation.Blocks(Ends[I - 1], Ends[I]);
  std::vector<TPoint2D> Result;
  Result.reserve(Range.size() + 1);  // and the point that closes an outline again
  for (std::size_t I = 0; I < Range.size(); ++I) {
    if (Keep[I]) Result.push_back(Range[I]);
  }
  FBaseIndex = First;
  return Result;
}

std::vector<TPoint2D> TPolyDecimator::DecimateWhole(const std::vector<int>& Fixed,
                                                    double ATolerance, bool Restrict) {
  const int Last = Count() - (IsClosed() ? 2 : 1);
  std::vector<TPoint2D> Result = Decimate(0, Last, Fixed, ATolerance, Restrict);
  if (IsClosed()) Result.push_back(FPoints->front());
  return Result;
}

std::vector<TPoint2D> TPolyDecimator::DouglasPeucker(bool Restrict) {
  UseTolerance();
  return DecimateWhole({}, FTolerance, Restrict);
}

std::vector<TPoint2D> TPolyDecimator::DouglasPeucker(int First, int Last, bool Restrict) {
  UseTolerance();
  return Decimate(First, Last, {}, FTolerance, Restrict);
}

std::vector<TPoint2D> TPolyDecimator::DecimateWithRestrictions(const std::vector<int>& Fixed) {
  UseTolerance();
  return DecimateWhole(Fixed, FTolerance, true);
}

std::vector<TPoint2D> TPolyDecimator::HybridDecimate() {
  UseTolerance();
  const std::vector<TPoint2D> Left = DecimateWhole({}, FTolerance / 2, true);
  return ClipRange(Left, 0, static_cast<int>(Left.size()) - 1, TClipKind::Any, FTolerance / 2);
}

void TPolyDecimator::DPDecimate(int First, int Last, std::span<bool> Keep) const {
  Step(First, Last, Keep, false);
}

void TPolyDecimator::DPDecimateRestrict(int First, int Last, std::span<bool> Keep) const {
  Step(First, Last, Keep, true);
}

void TPolyDecimator::Step(int First, int Last, std::span<bool> Keep, bool Restrict) const {
  const std::span<const TPoint2D> Range = ListRange(*FPoints, First, Last);
  if (First < FBaseIndex || Slot(Last - FBaseIndex) >= Keep.size()) {
    RaiseError<EParamError>("TPolyDecimator", "a point has no keep entry");
  }
  const std::span<bool> Entries = Keep.subspan(Slot(First - FBaseIndex), Range.size());
  TDecimation(Range, Entries, FTolerance, Restrict).Step(0, Last - First);
}

}  // namespace tarnalgo
