#include <algorithm>
#include <cmath>
#include <iterator>
#include <polyclipping/clipper.hpp>

#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/GeometryExtend/WideInteger.h"
#include "host/Cadtypes/ExtendedPoint.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// The path as a ring: of equal neighbours, round the end too, one.
TPath WithoutRepeats(const TPath& Path) {
  TPath Ring;
  std::unique_copy(Path.begin(), Path.end(), std::back_inserter(Ring));
  while (Ring.size() > 1 && Ring.back() == Ring.front()) Ring.pop_back();
  return Ring;
}

/// A ring relative to the mean of its vertices, for `IsCongruent`.
class TCentredRing {
 public:
  explicit TCentredRing(const TPath& Path) {
    const TPath Ring = WithoutRepeats(Path);
    TExtPoint2D Sum;
    for (const TIntPoint& P : Ring) Sum = Sum + At(P);
    for (const TIntPoint& P : Ring) {
      FVertices.push_back(At(P) - Sum * (1.0L / static_cast<long double>(Ring.size())));
      FRadii.push_back(FVertices.back().Mag());
    }
    MeasureEdges();
  }

  std::size_t Count() const { return FVertices.size(); }
  void Reverse() {
    std::reverse(FVertices.begin(), FVertices.end());
    std::reverse(FRadii.begin(), FRadii.end());
    MeasureEdges();
  }

  /// The vertices can be paired so that each is as far from the centre as its partner: by size.
  bool HasSizesOf(const TCentredRing& Other, long double Tolerance) const {
    std::vector<long double> Mine = FRadii;
    std::vector<long double> Others = Other.FRadii;
    std::sort(Mine.begin(), Mine.end());
    std::sort(Others.begin(), Others.end());
    return std::equal(Mine.begin(), Mine.end(), Others.begin(), Others.end(),
                      [Tolerance](long double A, long double B) {  // NaN is no match
                        return std::abs(A - B) <= Tolerance;
                      });
  }

  /// Some turn about the centre brings the vertices onto those of `Other`, pairwise from some
  /// vertex of it on.
  bool FitsOnto(const TCentredRing& Other, long double Tolerance) const {
    for (std::size_t Start = 0; Start < Count(); ++Start) {
      if (HasLengthsOf(Other, Start, Tolerance) && FitsFrom(Other, Start, Tolerance)) return true;
    }
    return false;
  }

 private:
  static TExtPoint2D At(const TIntPoint& P) {
    return {static_cast<long double>(P.X), static_cast<long double>(P.Y)};
  }
  std::size_t Partner(std::size_t I, std::size_t Start) const {
    return I + Start < Count() ? I + Start : I + Start - Count();
  }

  void MeasureEdges() {
    FEdges.clear();
    for (std::size_t I = 0; I < Count(); ++I) {
      FEdges.push_back((FVertices[Partner(I, 1)] - FVertices[I]).Mag());
    }
  }

  /// Quick refusal: a turn keeps every vertex at its distance from the centre, and from the next.
  bool HasLengthsOf(const TCentredRing& Other, std::size_t Start, long double Tolerance) const {
    for (std::size_t I = 0; I < Count(); ++I) {
      const std::size_t J = Partner(I, Start);
      if (!(std::abs(FRadii[I] - Other.FRadii[J]) <= Tolerance)) return false;
      if (!(std::abs(FEdges[I] - Other.FEdges[J]) <= 2.0L * Tolerance)) return false;
    }
    return true;
  }

  bool FitsFrom(const TCentredRing& Other, std::size_t Start, long double Tolerance) const {
    long double Cos = 0.0L;
    long double Sin = 0.0L;
    for (std::size_t I = 0; I < Count(); ++I) {
      Cos += FVertices[I].DotMul(Other.FVertices[Partner(I, Start)]);
      Sin += FVertices[I].CrossMul(Other.FVertices[Partner(I, Start)]);
    }
    const long double Length = std::hypot(Cos, Sin);
    Cos = Length > 0.0L ? Cos / Length : 1.0L;
    Sin = Length > 0.0L ? Sin / Length : 0.0L;
    for (std::size_t I = 0; I < Count(); ++I) {
      const TExtPoint2D& V = FVertices[I];
      const TExtPoint2D Turned(V.X * Cos - V.Y * Sin, V.X * Sin + V.Y * Cos);
      if (!((Turned - Other.FVertices[Partner(I, Start)]).Mag() <= Tolerance)) return false;
    }
    return true;
  }

  std::vector<TExtPoint2D> FVertices;
  std::vector<long double> FRadii;
  std::vector<long double> FEdges;  // lengths, each from the vertex of its position
};

}  // namespace

bool TPathUtils::Equal(const TPath& A, const TPath& B) {
  return A == B;
}

int TPathUtils::ComparePath(const TPath& A, const TPath& B) {
  if (const int Order = CompareExact(A.size(), B.size())) return Order;
  for (std::size_t I = 0; I < A.size(); ++I) {
    if (const int Order = CompareExact(A[I].X, B[I].X)) return Order;
    if (const int Order = CompareExact(A[I].Y, B[I].Y)) return Order;
  }
  return 0;
}

bool TPathUtils::IsCongruent(const TPath& A, const TPath& B, double Tolerance) {
  const TCentredRing RingA(A);
  TCentredRing RingB(B);
  if (!RingA.HasSizesOf(RingB, Tolerance)) return false;
  if (RingA.Count() == 0 || RingA.FitsOnto(RingB, Tolerance)) return true;
  RingB.Reverse();
  return RingA.FitsOnto(RingB, Tolerance);
}

double TPathUtils::CornerRadian(const TPath& Path, int Index) {
  if (Index < 0 || static_cast<std::size_t>(Index) >= Path.size()) {
    RaiseError<EParamError>("TPathUtils.CornerRadian", "index out of range");
  }
  const std::size_t Count = Path.size();
  const auto Corner = static_cast<std::size_t>(Index);
  std::size_t Steps = 1;
  while (Steps < Count && Path[(Corner + Steps) % Count] == Path[Corner]) ++Steps;
  if (Steps >= Count) return 0.0;
  const TIntPoint Leaving = Path[(Corner + Steps) % Count] - Path[Corner];
  Steps = 1;
  while (Path[(Corner + Count - Steps) % Count] == Path[Corner]) ++Steps;
  const TIntPoint Arriving = Path[Corner] - Path[(Corner + Count - Steps) % Count];
  const TInt128 Sine = Cross(Arriving, Leaving);
  const TInt128 Cosine = Dot(Arriving, Leaving);
  // The sign of a 0 must not turn π into −π.
  return Sine == 0 ? (Cosine < 0 ? kPi : 0.0)
                   : std::atan2(static_cast<double>(Sine), static_cast<double>(Cosine));
}

}  // namespace tarnalgo
