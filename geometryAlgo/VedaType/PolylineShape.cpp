#include <algorithm>
#include <cmath>
#include <limits>

#include "geometryAlgo/VedaType/Point.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "geometryAlgo/VedaType/StrictHull.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// The corners of the ring, closed exactly: no vertex on a straight way is left.
TVPolyline2D CornersOfRing(const TVPolyline2D& Contour, double Eps) {
  TVPolyline2D Ring = Contour;
  Ring.ConnectHeadTail(Eps);
  if (!Ring.IsEmpty()) Ring[Ring.Count() - 1] = Ring.First();
  Ring.CollinearSmooth(Eps);
  return Ring;
}

/// Compares the first `Count` points of two courses, the second one begun anywhere and perhaps run
/// backwards.
class TCourseComparer {
 public:
  TCourseComparer(const std::vector<TPoint2D>& A, const std::vector<TPoint2D>& B, std::size_t Count,
                  bool Backwards, double Eps)
      : FA(A), FB(B), FCount(Count), FBackwards(Backwards), FEps(Eps) {}

  /// B taken from position `Start` on, cyclically, agrees with A.
  bool AgreesFrom(std::size_t Start) {
    // A place that only one of two courses has disagrees wherever they begin. The points that
    // disagreed last go first, so that rings which repeat themselves do not cost their square.
    if (!AgreesAt(FSuspectOfA, Start) || !AgreesAt(PositionInA(FSuspectOfB, Start), Start)) {
      return false;
    }
    for (std::size_t I = 0; I < FCount; ++I) {
      if (AgreesAt(I, Start)) continue;
      FSuspectOfA = I;
      FSuspectOfB = PositionInB(I, Start);
      return false;
    }
    return true;
  }

 private:
  bool AgreesAt(std::size_t I, std::size_t Start) const {
    return FB[PositionInB(I, Start)].Equals(FA[I], FEps);
  }
  /// The positions that stand against each other when B is taken from `Start` on.
  std::size_t PositionInB(std::size_t I, std::size_t Start) const {
    return (FBackwards ? Start + FCount - I : Start + I) % FCount;
  }
  std::size_t PositionInA(std::size_t J, std::size_t Start) const {
    return (FBackwards ? Start + FCount - J : J + FCount - Start) % FCount;
  }

  const std::vector<TPoint2D>& FA;
  const std::vector<TPoint2D>& FB;
  std::size_t FCount;
  bool FBackwards;
  double FEps;
  std::size_t FSuspectOfA = 0;
  std::size_t FSuspectOfB = 0;
};

bool IsSameCourse(const TVPolyline2D& A, const TVPolyline2D& B, bool Backwards, double Eps) {
  const std::size_t Count = A.Points().size();
  if (B.Points().size() != Count) return false;
  if (Count == 0) return true;
  if (!A.IsClosed(Eps) || !B.IsClosed(Eps)) {
    return TCourseComparer(A.Points(), B.Points(), Count, Backwards, Eps)
        .AgreesFrom(Backwards ? Count - 1 : 0);
  }
  const std::size_t Corners = std::max<std::size_t>(Count - 1, 1);
  TCourseComparer Comparer(A.Points(), B.Points(), Corners, Backwards, Eps);
  for (std::size_t Start = 0; Start < Corners; ++Start) {
    if (Comparer.AgreesFrom(Start)) return true;
  }
  return false;
}

/// Centroid of the edges as wires; the first point when they have no length.
TPoint2D GravityOfEdges(const std::vector<TPoint2D>& Points) {
  const TPoint2D Origin = Points.front();
  TPoint2D Moment;
  double Total = 0.0;
  for (std::size_t I = 1; I < Points.size(); ++I) {
    const TPoint2D From = Points[I - 1] - Origin;
    const TPoint2D To = Points[I] - Origin;
    const double Length = From.DistanceTo(To);
    Moment = Moment + (From + To) * (0.5 * Length);
    Total += Length;
  }
  return Total > 0.0 ? Origin + Moment / Total : Origin;
}

}  // namespace

bool TVPolyline2D::IsEqualTo(const TVPolyline2D& Other, double Eps) const {
  return IsSameCourse(*this, Other, false, Eps);
}

bool TVPolyline2D::IsEqualToReverse(const TVPolyline2D& Other, double Eps) const {
  return IsSameCourse(*this, Other, true, Eps);
}

bool TVPolyline2D::IsRect(double Eps) const {
  const TVPolyline2D Corners = CornersOfRing(*this, Eps);
  if (Corners.Count() != 5) return false;
  if (Corners[0].Equals(Corners[1], Eps) || Corners[1].Equals(Corners[2], Eps)) return false;
  const TPoint2D Skew = (Corners[1] - Corners[0]) - (Corners[2] - Corners[3]);
  return Skew.Mag() <= 2.0 * Eps &&  // the diagonals halve each other within Eps
         TMathUtils::FloatEquals(Corners[0].DistanceTo(Corners[2]),
                                 Corners[1].DistanceTo(Corners[3]), Eps);
}

bool TVPolyline2D::IsConvexPolygon(double Eps) const {
  const TVPolyline2D Corners = CornersOfRing(*this, Eps);
  const int Size = Corners.Count() - 1;
  if (Size < 3) return false;
  int Sense = 0;
  double Turned = 0.0;
  for (int I = 0; I < Size; ++I) {
    const TPoint2D In = Corners[I] - Corners[TMathUtils::CycInc(I, -1, Size)];
    const TPoint2D Out = Corners[I + 1] - Corners[I];
    const double Cross = In.CrossMul(Out);
    const double Height = Cross / (In + Out).Mag();  // of the corner over its neighbours
    Turned += std::atan2(Cross, In.DotMul(Out));
    const int Side = TMathUtils::CompareFloat(Height, 0.0, Eps);
    if (Side == 0 && In.DotMul(Out) >= 0.0) continue;  // straight, as far as the tolerance tells
    if (Side == 0 || Side == -Sense) return false;     // back over itself, or to the other side
    Sense = Side;
  }
  return Sense != 0 && std::abs(Turned) < 1.5 * kFullTurn;  // else it winds round more than once
}

TVPolyline2D TVPolyline2D::ConvexHull() const {
  TVPolyline2D Hull = ClosedStrictHull(*this);
  Hull.CollinearSmooth(kHullSlack);
  return Hull;
}

TPoint2D TVPolyline2D::Gravity() const {
  if (FPoints.empty()) return TPoint2D::FZero;
  const TPoint2D Origin = FPoints.front();
  TPoint2D Moment;
  double Doubled = 0.0;
  TPoint2D From = FPoints.back() - Origin;
  double Perimeter = 0.0;
  for (const TPoint2D& P : FPoints) {
    const TPoint2D To = P - Origin;
    const double Cross = From.CrossMul(To);
    Moment = Moment + (From + To) * Cross;
    Doubled += Cross;
    Perimeter += From.DistanceTo(To);
    From = To;
  }
  // Thinner than the tolerance all along: as good as wires.
  if (!(std::abs(Doubled) > kLinearTolerance * Perimeter)) return GravityOfEdges(FPoints);
  return Origin + Moment / (3.0 * Doubled);
}

TCornerType TVPolyline2D::CornerType(int I) const {
  if (I < 0 || I >= Count()) return ctStraight;
  const TPoint2D In = FirstDirection(I - 1, -1);
  const TPoint2D Out = FirstDirection(I, 1);
  switch (TMathUtils::CompareFloat(In.CrossMul(Out), 0.0, kCornerTolerance)) {
    case 1:
      return ctLeft;
    case -1:
      return ctRight;
    default:
      return In.DotMul(Out) < 0.0 ? ctReverse : ctStraight;
  }
}

double TVPolyline2D::CurvatureRadius(int I) const {
  if (I < 0 || I >= Count()) return -1.0;
  const TPoint2D In = FirstDirection(I - 1, -1);
  const TPoint2D Out = FirstDirection(I, 1);
  if (In == TPoint2D::FZero || Out == TPoint2D::FZero) return -1.0;  // exact: the neutral value
  const TPoint2D InUnit = In.Normal();
  const TPoint2D OutUnit = Out.Normal();
  const double Sine = std::abs(InUnit.CrossMul(OutUnit));
  if (Sine > 0.0) return 0.5 * (In + Out).Mag() / Sine;
  return InUnit.DotMul(OutUnit) < 0.0 ? 0.0 : std::numeric_limits<double>::infinity();
}

}  // namespace tarnalgo
