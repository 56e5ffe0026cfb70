#include "geometryAlgo/NestOptimizeAlgo/ChordScan.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

constexpr int kRunUnit = 32;  // the length of a run is a multiple
constexpr int kFew = 8;       // points are looked at one by one
constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
// Within these the squares of products are normal numbers, and their comparisons right but for the
// slack.
constexpr double kLargestCoordinate = 1e70;
constexpr double kLeastSquare = 1e-280;
constexpr double kSquareSlack = 32.0 * kEpsilon;

/// Two doubles at once; any compiler of ours turns it into its own instructions.
typedef double TPair __attribute__((vector_size(16)));
static_assert(sizeof(TPoint2D) == sizeof(TPair));

inline TPair Load(const TPoint2D& P) {
  TPair Pair;
  std::memcpy(&Pair, &P, sizeof(Pair));
  return Pair;
}

inline TPair Greater(TPair Value, TPair Bound) {
  return Value > Bound ? Value : Bound;
}
inline TPair Less(TPair Value, TPair Bound) {
  return Value < Bound ? Value : Bound;
}

/// The products `Factor` · P of some points, less that of `Origin`.
class TProducts {
 public:
  TProducts(const TPoint2D& Origin, const TPoint2D& Factor)
      : FOfOrigin(Factor.DotMul(Origin)), FFactor(Load(Factor)) {}

  struct TRange {
    double Least = 0.0;
    double Greatest = 0.0;
  };

  /// The least and the greatest product of `Count` > 0 points, 0 among them.
  template <bool kWithLeast>
  TRange Range(const TPoint2D* Points, int Count) const {
    TPair MostA{FOfOrigin, FOfOrigin};
    TPair MostB = MostA;  // in turns: a maximum waits for the one before
    TPair LeastA = MostA;
    TPair LeastB = MostA;
    const TPoint2D* const End = Points + Count;
    for (; End - Points >= 4; Points += 4) {
      const TPair A = OfTwo(Points[0], Points[1]);
      const TPair B = OfTwo(Points[2], Points[3]);
      MostA = Greater(A, MostA);
      if constexpr (kWithLeast) LeastA = Less(A, LeastA);
      MostB = Greater(B, MostB);
      if constexpr (kWithLeast) LeastB = Less(B, LeastB);
    }
    for (; Points < End; ++Points) {
      const TPair A = OfTwo(*Points, *Points);
      MostA = Greater(A, MostA);
      if constexpr (kWithLeast) LeastA = Less(A, LeastA);
    }
    const TPair Most = Greater(MostA, MostB);
    const TPair Least = Less(LeastA, LeastB);
    return {std::min(Least[0], Least[1]) - FOfOrigin, std::max(Most[0], Most[1]) - FOfOrigin};
  }

 private:
  TPair OfTwo(const TPoint2D& P, const TPoint2D& Q) const {
    const TPair A = Load(P) * FFactor;
    const TPair B = Load(Q) * FFactor;
    return TPair{A[0], B[0]} + TPair{A[1], B[1]};
  }

  double FOfOrigin;
  TPair FFactor;
};

}  // namespace

void TChordScan::Enter(int First, int Last) {
  TPair Low = {};
  TPair High = {};
  TPair ZeroA = {};  // NaN once a coordinate is not finite
  TPair ZeroB = {};
  for (int I = First; I <= Last; I += 2) {
    const TPair A = Load(At(I));
    const TPair B = Load(At(std::min(I + 1, Last)));
    Low = Less(Less(A, B), Low);
    High = Greater(Greater(A, B), High);
    ZeroA += A * 0.0;
    ZeroB += B * 0.0;
  }
  const TPair Largest = Greater(High, -Low);
  const TPair Zero = ZeroA + ZeroB;
  FLargest = {Largest[0], Largest[1]};
  FCanFilter = Zero[0] + Zero[1] == 0.0 && std::max(FLargest.X, FLargest.Y) < kLargestCoordinate;
}

int TChordScan::SplitOf(int F, int L) const {
  if (L - F < 2) return F;
  if (!HasDirection(F, L)) return FSide == TSide::Both ? FarFromPoint(F, L) : F;
  const int Far = FCanFilter ? FarFromLineFiltered(F, L) : FarFromLine(F, L);
  return Far == F && FSide == TSide::Both ? FarBeyondEnds(F, L) : Far;
}

/// Of the runs in which the points between `F` and `L` are looked at.
int TChordScan::RunLength(int F, int L) {
  return kRunUnit * (1 + (L - F) / (kRunUnit * static_cast<int>(TRuns().size())));
}

bool TChordScan::HasDirection(int F, int L) const {
  if (At(F) == At(L)) return false;  // exact: any two different points
  return FCanFilter || (TPoint2DUtils::IsFinite(At(F)) && TPoint2DUtils::IsFinite(At(L)));
}

/// A bound of the difference between a product in doubles, cross or dot, and the true one (the
/// length of the chord times the distance as it is rounded): ten roundings; sixteen are allowed.
double TChordScan::ProductError(const TPoint2D& Factor) const {
  return 8.0 * kEpsilon * (std::abs(Factor.X) * FLargest.X + std::abs(Factor.Y) * FLargest.Y) +
         std::numeric_limits<double>::min();
}

inline double TChordScan::Product(int F, int I, const TPoint2D& Normal) const {
  const double Signed = Normal.DotMul(At(I) - At(F));
  return FSide == TSide::Left ? Signed : std::abs(Signed);
}

void TChordScan::Measure(const TLine2D& Chord, int I, TFarthest& Farthest) const {
  const double Signed = Chord.DistanceDirect(At(I));
  const double Distance = FSide == TSide::Left ? Signed : std::abs(Signed);
  if (Distance > Farthest.Distance) Farthest = {I, Distance};
}

int TChordScan::FarFromLine(int F, int L) const {
  const TLine2D Chord(At(F), At(L));
  TFarthest Farthest{F};
  for (int I = F + 1; I < L; ++I) Measure(Chord, I, Farthest);
  return Farthest.Distance > FTolerance ? Farthest.Index : F;
}

int TChordScan::FarFromLineFiltered(int F, int L) const {
  const TPoint2D Normal = (At(L) - At(F)).RotateCcw90();
  const double Error = ProductError(Normal);
  TRuns Runs;
  const double Greatest = GreatestProduct(F, L, Normal, Runs);
  // Squares compare without a root. Below the least square worth it nothing is decided.
  const double Reach = std::max(FTolerance, 0.0);
  const double Limit = Reach * Reach * Normal.DotMul(Normal);
  const double Most = Greatest + Error;
  if (Limit > kLeastSquare && Most * Most <= Limit * (1.0 - kSquareSlack)) return F;

  const double Least = Greatest - 2.0 * Error;  // below it no point is the farthest
  const double Fewest = std::max(Greatest - Error, 0.0);
  const bool IsFar = Fewest * Fewest > std::max(Limit * (1.0 + kSquareSlack), kLeastSquare);
  int First = F;
  int Candidates = 0;
  VisitCandidates(F, L, Normal, Least, Runs, [&](int I) {
    if (++Candidates == 1) First = I;
  });
  if (IsFar && Candidates == 1) return First;
  const TLine2D Chord(At(F), At(L));
  TFarthest Farthest{F};
  VisitCandidates(F, L, Normal, Least, Runs, [&](int I) { Measure(Chord, I, Farthest); });
  return Farthest.Distance > FTolerance ? Farthest.Index : F;
}

/// The greatest product of the points between `F` and `L`, 0 when none is above it; `Runs` receives
/// that of each run.
double TChordScan::GreatestProduct(int F, int L, const TPoint2D& Normal, TRuns& Runs) const {
  double Greatest = 0.0;
  if (L - F <= kFew) {
    for (int I = F + 1; I < L; ++I) Greatest = std::max(Greatest, Product(F, I, Normal));
    Runs[0] = Greatest;
    return Greatest;
  }
  const TProducts Cross(At(F), Normal);
  std::size_t Run = 0;
  for (int Start = F + 1; Start < L; Start += RunLength(F, L)) {
    const int Count = std::min(RunLength(F, L), L - Start);
    double& OfRun = Runs[Run++];
    if (FSide == TSide::Left) {
      OfRun = Cross.Range<false>(&At(Start), Count).Greatest;
    } else {
      const auto Range = Cross.Range<true>(&At(Start), Count);
      OfRun = std::max(Range.Greatest, -Range.Least);
    }
    Greatest = std::max(Greatest, OfRun);
  }
  return Greatest;
}

/// Visits, in their order, the points between `F` and `L` whose product is at least `Least`.
template <class TVisitor>
void TChordScan::VisitCandidates(int F, int L, const TPoint2D& Normal, double Least,
                                 const TRuns& Runs, TVisitor Visit) const {
  std::size_t Run = 0;
  for (int Start = F + 1; Start < L; Start += RunLength(F, L)) {
    if (Runs[Run++] < Least) continue;
    const int End = std::min(Start + RunLength(F, L), L);
    for (int I = Start; I < End; ++I) {
      if (Product(F, I, Normal) >= Least) Visit(I);
    }
  }
}

/// Certainly so, up to a rounding; false may mean that it is not known.
bool TChordScan::IsBetweenEnds(int F, int L) const {
  const TPoint2D Way = At(L) - At(F);
  const double Error = ProductError(Way);
  const TProducts::TRange Range = TProducts(At(F), Way).Range<true>(&At(F + 1), L - F - 1);
  return Range.Least >= -Error && Range.Greatest <= Way.DotMul(Way) + Error;
}

int TChordScan::FarBeyondEnds(int F, int L) const {
  if (FCanFilter && IsBetweenEnds(F, L)) return F;
  const TLine2D Chord(At(F), At(L));
  TFarthest Farthest{F};
  for (int I = F + 1; I < L; ++I) {
    const double Param = Chord.ParamOfPoint(At(I), 0.0);
    if (Param >= 0.0 && Param <= 1.0) continue;
    const double Distance = At(I).DistanceTo(Param < 0.0 ? Chord.StartPoint : Chord.EndPoint);
    if (Distance > Farthest.Distance) Farthest = {I, Distance};
  }
  return Farthest.Distance > FTolerance ? Farthest.Index : F;
}

int TChordScan::FarFromPoint(int F, int L) const {
  const TPoint2D& Anchor = TPoint2DUtils::IsFinite(At(F)) ? At(F) : At(L);
  const bool HasAnchor = TPoint2DUtils::IsFinite(Anchor);
  TFarthest Farthest{F};
  for (int I = F + 1; I < L; ++I) {
    if (!TPoint2DUtils::IsFinite(At(I))) continue;
    const double Distance = HasAnchor ? At(I).DistanceTo(Anchor) : kStartOfMinimum;
    if (Distance > Farthest.Distance) Farthest = {I, Distance};
  }
  return Farthest.Distance > FTolerance ? Farthest.Index : F;
}

}  // namespace tarnalgo
