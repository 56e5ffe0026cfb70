#include "geometryAlgo/ClipperAdditions.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <polyclipping/clipper.hpp>

namespace ClipperLib {

namespace {

cInt Wrap(std::uint64_t Bits) {
  return static_cast<cInt>(Bits);
}

std::uint64_t Bits(cInt Value) {
  return static_cast<std::uint64_t>(Value);
}

}  // namespace

IntPoint operator+(const IntPoint& A, const IntPoint& B) {
  return IntPoint(Wrap(Bits(A.X) + Bits(B.X)), Wrap(Bits(A.Y) + Bits(B.Y)));
}

IntPoint operator-(const IntPoint& A, const IntPoint& B) {
  return IntPoint(Wrap(Bits(A.X) - Bits(B.X)), Wrap(Bits(A.Y) - Bits(B.Y)));
}

}  // namespace ClipperLib

namespace tarnalgo {

namespace {

using ClipperLib::cInt;

constexpr bool kHasExtended =
    std::numeric_limits<long double>::digits > std::numeric_limits<double>::digits;

/// The exact product, rounded, where there is no format wider than double: what the double product
/// leaves decides halves, and counts itself where doubles lie more than 1 apart.
cInt RoundedByRest(double Value, double Scale) {
  const double Near = Value * Scale;
  const double Rest = std::fma(Value, Scale, -Near);
  const double Whole = std::floor(Near);
  if (Near - Whole != 0.5 || Rest == 0.0) return std::llrint(Near) + std::llrint(Rest);
  return std::llrint(Rest > 0.0 ? Whole + 1.0 : Whole);
}

/// The product in extended precision, rounded.
cInt RoundedProduct(double Value, double Scale) {
  constexpr long double kGreatest = static_cast<long double>(ClipperLib::hiRange);
  const long double Product = static_cast<long double>(Value) * Scale;
  if (std::isnan(Product)) return 0;
  if (!(std::abs(Product) < kGreatest)) {
    return Product < 0.0L ? -ClipperLib::hiRange : ClipperLib::hiRange;
  }
  return kHasExtended ? std::llrintl(Product) : RoundedByRest(Value, Scale);
}

/// Adding 1.5 · 2^52 leaves no bits for a fraction: the sum is rounded to an integer, halves to
/// even, and that integer stands in its low bits.
constexpr double kRounder = 6755399441055744.0;
constexpr double kRounderReach = 2251799813685248.0;  // 2^51

/// The rounded double product is also the rounded exact one unless it lies on a half: halves are
/// doubles below 2^52, and rounding a product to double never carries it across one.
inline cInt RoundedFast(double Value, double Scale) {
  const double Product = Value * Scale;
  const double Sum = Product + kRounder;
  const double Rest = Product - (Sum - kRounder);
  if (std::abs(Rest) == 0.5 || !(std::abs(Product) < kRounderReach)) [[unlikely]] {
    return RoundedProduct(Value, Scale);
  }
  return std::bit_cast<std::int64_t>(Sum) - std::bit_cast<std::int64_t>(kRounder);
}

/// Both coordinates of a point at once; any compiler of ours turns it into its own instructions.
typedef double TPair __attribute__((vector_size(16)));
typedef unsigned long long TPairBits __attribute__((vector_size(16)));  // wrap round
static_assert(sizeof(TPoint2D) == sizeof(TPair) && sizeof(TIntPoint) == sizeof(TPair));

/// `RoundedFast` for a run of points, without a branch or a comparison for each: bits that only
/// the others have are collected and looked at when the run is through.
class TRunScaler {
 public:
  explicit TRunScaler(double Scale) : FScale(Scale) {}

  void Add(const TPoint2D& P, TIntPoint& Result) {
    TPair Product;
    std::memcpy(&Product, &P, sizeof(TPair));
    Product *= FScale;
    const TPair Sum = Product + kRounders;
    const TPair Rest = Product - (Sum - kRounders);
    FRests |= (TPairBits)(4.0 * Rest);
    FSums |= (TPairBits)Sum ^ (TPairBits)kRounders;
    const TPairBits Integers = (TPairBits)Sum - (TPairBits)kRounders;
    std::memcpy(static_cast<void*>(&Result), &Integers, sizeof(TPair));
  }
  /// False, and the results not all right, when one of them needs the extended product.
  bool HasOnlySimple() const {
    return ((FRests[0] | FRests[1]) & kTwoOrMore) == 0 && (FSums[0] | FSums[1]) >> kFraction == 0;
  }

 private:
  static constexpr TPair kRounders = {kRounder, kRounder};
  /// The highest bit of an exponent, which numbers below 2 do not have, NaN and infinity do: set in
  /// four times a rest of a half.
  static constexpr unsigned long long kTwoOrMore = 1ULL << 62;
  /// Sums of products in reach have the sign and the exponent of the rounder.
  static constexpr int kFraction = 52;

  double FScale;
  TPairBits FRests = {0, 0};
  TPairBits FSums = {0, 0};
};

bool ScaleRun(const TPoint2D* Points, std::size_t Count, double Scale, TIntPoint* Result) {
  TRunScaler Scaler(Scale);
  std::size_t I = 0;
  for (; I + 1 < Count; I += 2) {  // two in flight
    Scaler.Add(Points[I], Result[I]);
    Scaler.Add(Points[I + 1], Result[I + 1]);
  }
  if (I < Count) Scaler.Add(Points[I], Result[I]);
  return Scaler.HasOnlySimple();
}

/// The ring of the vertices that are left, for `CleanPolygonEx`.
class TRingCleaner {
 public:
  TRingCleaner(const TPath& Path, double DistSqrd)
      : FPath(Path),
        FDistSqrd(DistSqrd),
        FKeep(Path.size(), true),
        FSeen(Path.size(), false),
        FPrev(Path.size()),
        FNext(Path.size()) {
    for (std::size_t I = 0; I < Path.size(); ++I) {
      FNext[I] = (I + 1) % Path.size();
      FPrev[FNext[I]] = I;
    }
  }

  /// Goes round until a whole round has removed nothing; each removal steps back one vertex.
  void Walk() {
    std::size_t I = 0;
    while (!FSeen[I] && FNext[I] != FPrev[I]) {
      const TIntPoint& Before = FPath[FPrev[I]];
      const TIntPoint& After = FPath[FNext[I]];
      // The pair of neighbours comes between two cases of one kind, and the order counts.
      // NOLINTNEXTLINE(bugprone-branch-clone)
      if (IsNear(FPath[I], Before)) {
        I = Remove(I);
      } else if (IsNear(Before, After)) {
        Remove(FNext[I]);
        I = Remove(I);
      } else if (IsNearLine(Before, FPath[I], After)) {
        I = Remove(I);
      } else {
        FSeen[I] = true;
        I = FNext[I];
      }
    }
  }

  TPath Kept() const {
    TPath Result;
    for (std::size_t I = 0; I < FPath.size(); ++I) {
      if (FKeep[I]) Result.push_back(FPath[I]);
    }
    return Result;
  }

 private:
  struct TVector {
    double X;
    double Y;
  };

  static TVector Between(const TIntPoint& From, const TIntPoint& To) {
    return {static_cast<double>(To.X) - static_cast<double>(From.X),
            static_cast<double>(To.Y) - static_cast<double>(From.Y)};
  }

  bool IsNear(const TIntPoint& A, const TIntPoint& B) const {
    const TVector D = Between(A, B);
    return D.X * D.X + D.Y * D.Y <= FDistSqrd;
  }

  /// Of the three the one in the middle, along the greater extent of A to B, is measured against
  /// the line through the other two.
  bool IsNearLine(const TIntPoint& A, const TIntPoint& B, const TIntPoint& C) const {
    const TVector D = Between(A, B);
    const bool ByX = std::abs(D.X) > std::abs(D.Y);
    const auto Along = [ByX](const TIntPoint& P) { return ByX ? P.X : P.Y; };
    const auto IsBetween = [&](const TIntPoint& P, const TIntPoint& Q, const TIntPoint& R) {
      return (Along(P) > Along(Q)) == (Along(P) < Along(R));
    };
    if (IsBetween(A, B, C)) return IsWithin(A, B, C);
    if (IsBetween(B, A, C)) return IsWithin(B, A, C);
    return IsWithin(C, A, B);
  }

  bool IsWithin(const TIntPoint& P, const TIntPoint& LineStart, const TIntPoint& LineEnd) const {
    const TVector V = Between(LineStart, LineEnd);
    const TVector W = Between(LineStart, P);
    const double Cross = V.X * W.Y - V.Y * W.X;
    return Cross * Cross / (V.X * V.X + V.Y * V.Y) < FDistSqrd;
  }

  /// Takes the vertex out; the one before it has to be looked at again and is the answer.
  std::size_t Remove(std::size_t I) {
    FKeep[I] = false;
    FNext[FPrev[I]] = FNext[I];
    FPrev[FNext[I]] = FPrev[I];
    FSeen[FPrev[I]] = false;
    return FPrev[I];
  }

  const TPath& FPath;
  double FDistSqrd;
  std::vector<bool> FKeep;
  std::vector<bool> FSeen;
  std::vector<std::size_t> FPrev;
  std::vector<std::size_t> FNext;
};

}  // namespace

TIntPoint ScaledIntPoint(const TPoint2D& P, double Scale) {
  return TIntPoint(RoundedFast(P.X, Scale), RoundedFast(P.Y, Scale));
}

void ScaleIntPoints(const TPoint2D* Points, std::size_t Count, double Scale, TIntPoint* Result) {
  constexpr std::size_t kRun = 32;
  for (std::size_t First = 0; First < Count; First += kRun) {
    const std::size_t Run = std::min(kRun, Count - First);
    if (ScaleRun(Points + First, Run, Scale, Result + First)) continue;
    for (std::size_t I = First; I < First + Run; ++I) Result[I] = ScaledIntPoint(Points[I], Scale);
  }
}

double DistanceTo(const TIntPoint& A, const TIntPoint& B) {
  const auto Apart = [](cInt P, cInt Q) {  // fits into 64 bits without a sign
    const auto Low = static_cast<std::uint64_t>(std::min(P, Q));
    return static_cast<double>(static_cast<std::uint64_t>(std::max(P, Q)) - Low);
  };
  return std::hypot(Apart(A.X, B.X), Apart(A.Y, B.Y));
}

TPath CleanPolygonEx(const TPath& Path, double Distance) {
  if (Path.empty()) return {};
  const long double Square = static_cast<long double>(Distance) * Distance;
  TRingCleaner Cleaner(Path, static_cast<double>(std::rint(Square)));
  Cleaner.Walk();
  return Cleaner.Kept();
}

void FreePaths(TPaths& Paths) {
  TPaths().swap(Paths);
}

void FreeAllPaths(TPaths& Paths) {
  FreePaths(Paths);
}

}  // namespace tarnalgo
