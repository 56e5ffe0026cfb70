#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>

#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/GeometryExtend/WideInteger.h"
#include "host/Cadtypes/ExtendedPoint.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// A ring relative to the mean of its vertices, for `IsCongruent`.
class TCentredRing {
 public:
  explicit TCentredRing(const TPath& Path) {
    const std::size_t Count =
        Path.size() > 1 && TPathUtils::IsClosed(Path) ? Path.size() - 1 : Path.size();
    TExtPoint2D Sum;
    for (std::size_t I = 0; I < Count; ++I) Sum = Sum + At(Path[I]);
    for (std::size_t I = 0; I < Count; ++I) {
      FVertices.push_back(At(Path[I]) - Sum * (1.0L / static_cast<long double>(Count)));
      FRadii.push_back(FVertices.back().Mag());
    }
  }

  std::size_t Count() const { return FVertices.size(); }
  const TExtPoint2D& Vertex(std::size_t I) const { return FVertices[I]; }
  long double Radius(std::size_t I) const { return FRadii[I]; }
  void Reverse() {
    std::reverse(FVertices.begin(), FVertices.end());
    std::reverse(FRadii.begin(), FRadii.end());
  }

  /// Some turn about the centre brings the vertices onto those of `Other`, pairwise from some
  /// vertex of it on.
  bool FitsOnto(const TCentredRing& Other, long double Tolerance) const {
    for (std::size_t Start = 0; Start < Count(); ++Start) {
      if (HasRadiiOf(Other, Start, Tolerance) && FitsFrom(Other, Start, Tolerance)) return true;
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

  /// Quick refusal: a turn keeps every vertex at its distance from the centre.
  bool HasRadiiOf(const TCentredRing& Other, std::size_t Start, long double Tolerance) const {
    for (std::size_t I = 0; I < Count(); ++I) {
      if (!(std::abs(FRadii[I] - Other.FRadii[Partner(I, Start)]) <= Tolerance)) return false;
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
  if (RingA.Count() != RingB.Count()) return false;
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
