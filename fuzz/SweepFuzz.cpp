// The pairs of segments that a sweep finds: all of them, each once, whatever the order of the
// input, against every pair tested in integers; coordinates that may be anything.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "fuzz/Bytes.h"
#include "geometryAlgo/SweepLine.h"
#include "tests/support/IntegerSegments.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;
using test::TIntegerSegment;
using test::TPairs;

using TInfos = std::vector<TSeglineIntersectInfo>;

TInfos Sweep(const std::vector<TVLine2D>& Lines, double Tolerance) {
  return TSeglinesIntersector::GetIntersectInfosBySweepline(Lines, Tolerance, kLinearTolerance);
}

/// The pairs found, ascending, in the numbers that the segments had before `Order` moved them.
TPairs PairsOf(const TInfos& Infos, const std::vector<int>& Order) {
  const auto Was = [&](int I) { return Order[static_cast<std::size_t>(I)]; };
  TPairs Result;
  for (const auto& Info : Infos) {
    Result.push_back(std::minmax(Was(Info.LowerSegment), Was(Info.HigherSegment)));
  }
  std::sort(Result.begin(), Result.end());
  return Result;
}

void CheckRecords(const std::vector<TVLine2D>& Lines, const TInfos& Infos, double Reach) {
  for (const TSeglineIntersectInfo& Info : Infos) {
    Require(Info.LowerSegment < Info.HigherSegment, "the lower segment comes first");
    for (const double T :
         {Info.LowerParam1, Info.HigherParam1, Info.LowerParam2, Info.HigherParam2}) {
      Require(T >= 0.0 && T <= 1.0, "a parameter lies in [0, 1]");
    }
    if (!Info.Flag) Require(Info.FirstPoint == Info.SecondPoint, "one point stands in both");
    for (const int Segment : {Info.LowerSegment, Info.HigherSegment}) {
      const TVLine2D& Line = Lines[static_cast<std::size_t>(Segment)];
      for (const TPoint2D& P : {Info.FirstPoint, Info.SecondPoint}) {
        Require(!(Line.SegmentDistanceTo(P) > Reach), "a meeting lies on both segments");
      }
    }
  }
}

/// Swaps ends and places as the bytes have it: the same pairs must come of it.
void CheckOrder(TBytes& Bytes, std::vector<TVLine2D> Lines, double Tolerance,
                const TPairs& Expected) {
  std::vector<int> Order;
  for (std::size_t I = 0; I < Lines.size(); ++I) Order.push_back(static_cast<int>(I));
  for (std::size_t I = Lines.size(); I-- > 1;) {
    const auto Other = static_cast<std::size_t>(Bytes.Below(static_cast<int>(I) + 1));
    std::swap(Lines[I], Lines[Other]);
    std::swap(Order[I], Order[Other]);
    if (Bytes.Below(2) == 1) Lines[I] = Lines[I].ReverseDirection();
  }
  Require(PairsOf(Sweep(Lines, Tolerance), Order) == Expected, "the order changes nothing");
}

/// Coordinates of a small grid of steps that are far above, about and below the tolerance, with
/// noise of a few units.
TIntegerSegment MakeSegment(TBytes& Bytes, std::int64_t Step, int Noise) {
  const auto Coordinate = [&] { return Bytes.Below(16) * Step + Bytes.Around(Noise); };
  const std::int64_t X = Coordinate();
  const std::int64_t Y = Coordinate();
  switch (Bytes.Below(6)) {
    case 0:
      return {X, Y, X, Coordinate()};
    case 1:
      return {X, Y, Coordinate(), Y};
    case 2:
      return {X, Y, X + Bytes.Around(20), Y + Bytes.Around(20)};
    default: {
      const std::int64_t ToX = Coordinate();
      return {X, Y, ToX, Coordinate()};
    }
  }
}

void CheckIntegers(TBytes& Bytes) {
  constexpr std::int64_t kSteps[] = {7, 1000, std::int64_t{1} << 24, std::int64_t{25} << 44};
  constexpr int kNoises[] = {0, 2, 20, 60};
  const std::int64_t Step = kSteps[Bytes.Below(4)];
  const int Noise = kNoises[Bytes.Below(4)];
  std::vector<TIntegerSegment> Segments;
  std::vector<TVLine2D> Lines;
  std::vector<int> Order;
  for (int Count = Bytes.Below(48); Count > 0; --Count) {
    Order.push_back(static_cast<int>(Segments.size()));
    Segments.push_back(MakeSegment(Bytes, Step, Noise));
    Lines.push_back(Segments.back().Line());
  }
  const double Tolerance = test::kReach * test::kUnit;
  const TInfos Infos = Sweep(Lines, Tolerance);
  const TPairs Pairs = PairsOf(Infos, Order);
  Require(Pairs == test::ExactPairs(Segments), "the pairs of the oracle, each once");
  const double Rounding = 1e-15 * 16 * static_cast<double>(Step) * test::kUnit;
  CheckRecords(Lines, Infos, Tolerance + Rounding);
  CheckOrder(Bytes, std::move(Lines), Tolerance, Pairs);
}

/// Any coordinates: each pair once, the same in any order, none with what is not finite.
void CheckAnything(TBytes& Bytes) {
  const double Tolerance = Bytes.Anything();
  std::vector<TVLine2D> Lines;
  std::vector<int> Order;
  for (int Count = Bytes.Below(16); Count > 0; --Count) {
    Order.push_back(static_cast<int>(Lines.size()));
    const TPoint2D From = Bytes.AnyPoint();
    Lines.emplace_back(From, Bytes.AnyPoint());
  }
  const TInfos Infos = Sweep(Lines, Tolerance);
  CheckRecords(Lines, Infos, std::numeric_limits<double>::infinity());
  const TPairs Pairs = PairsOf(Infos, Order);
  Require(std::adjacent_find(Pairs.begin(), Pairs.end()) == Pairs.end(), "each pair once");
  for (const auto& [A, B] : Pairs) {
    for (const int I : {A, B}) {
      const TVLine2D& Line = Lines[static_cast<std::size_t>(I)];
      const bool IsFinite = std::isfinite(Line.StartPoint.X) && std::isfinite(Line.StartPoint.Y) &&
                            std::isfinite(Line.EndPoint.X) && std::isfinite(Line.EndPoint.Y);
      Require(IsFinite, "what is not finite meets nothing");
    }
  }
  CheckOrder(Bytes, std::move(Lines), Tolerance, Pairs);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  if (Bytes.Below(4) == 0) {
    CheckAnything(Bytes);
  } else {
    CheckIntegers(Bytes);
  }
  return 0;
}
