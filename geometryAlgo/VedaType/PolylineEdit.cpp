#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <utility>

#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

namespace {

/// How many points past the last end of a straight way are tried for a farther end: noise within
/// the tolerance may refuse one point and admit a later one.
constexpr std::size_t kLookAhead = 64;

/// The straight ways from a fixed point that pass within a tolerance of every point added: a wedge
/// of directions, and the distance that such a way must reach not to fall short of a point.
class TSleeve {
 public:
  TSleeve(const TPoint2D& Origin, double Eps) : FOrigin(Origin), FEps(Eps) {}

  /// The segment from the origin to `P` passes within the tolerance of every point added.
  bool Reaches(const TPoint2D& P) const {
    const TPoint2D Way = P - FOrigin;
    return Way.Mag() >= FReach && (!FIsBounded || IsInside(Way));
  }

  /// Adds a point to pass. False, nothing changed, when no straight way passes all points any more
  /// or the course has turned back.
  bool Add(const TPoint2D& P) {
    const TPoint2D Way = P - FOrigin;
    const double Length = Way.Mag();
    if (!(Length >= FReach - FEps)) return false;
    if (Length > FEps && !Narrow(Way, FEps / Length)) return false;
    FReach = std::max(FReach, Length);
    return true;  // near the origin every way passes it
  }

 private:
  /// The wedge is narrower than half a turn, so two signs tell; behind it they may both be 0.
  bool IsInside(const TPoint2D& Way) const {
    return FRight.CrossMul(Way) >= 0.0 && Way.CrossMul(FLeft) >= 0.0 && IsAhead(Way);
  }
  bool IsAhead(const TPoint2D& Way) const {
    return FRight.DotMul(Way) >= 0.0 || FLeft.DotMul(Way) >= 0.0;
  }

  /// Narrows the wedge to the directions that differ from `Way` by an angle of at most that sine.
  bool Narrow(const TPoint2D& Way, double Sine) {
    const double Cosine = std::sqrt(1.0 - Sine * Sine);
    const TPoint2D Right(Way.X * Cosine + Way.Y * Sine, Way.Y * Cosine - Way.X * Sine);
    const TPoint2D Left(Way.X * Cosine - Way.Y * Sine, Way.Y * Cosine + Way.X * Sine);
    if (FIsBounded && !IsInside(Way)) {
      const bool Overlaps =
          FRight.CrossMul(Way) < 0.0 ? FRight.CrossMul(Left) >= 0.0 : Right.CrossMul(FLeft) >= 0.0;
      if (!Overlaps || !IsAhead(Way)) return false;
    }
    if (!FIsBounded || FRight.CrossMul(Right) > 0.0) FRight = Right;
    if (!FIsBounded || Left.CrossMul(FLeft) > 0.0) FLeft = Left;
    FIsBounded = true;
    return true;
  }

  TPoint2D FOrigin;
  double FEps;
  double FReach = 0.0;
  bool FIsBounded = false;
  TPoint2D FRight;  // the wedge runs counter-clockwise from FRight to FLeft
  TPoint2D FLeft;
};

/// The last point to which a straight way from point `Start` passes within `Eps` of all between.
std::size_t EndOfStraightWay(const std::vector<TPoint2D>& Points, std::size_t Start, double Eps) {
  TSleeve Sleeve(Points[Start], Eps);
  std::size_t End = Start + 1;
  for (std::size_t I = Start + 1; I < Points.size() && I - End < kLookAhead; ++I) {
    if (Sleeve.Reaches(Points[I])) End = I;
    if (!Sleeve.Add(Points[I])) break;
  }
  return End;
}

/// The points that must stay so that every other one lies within `Eps` of the edge that replaces
/// it. The first and the last point stay.
std::vector<TPoint2D> Straightened(const std::vector<TPoint2D>& Points, double Eps) {
  std::vector<TPoint2D> Kept{Points.front()};
  for (std::size_t I = 0; I + 1 < Points.size();) {
    I = EndOfStraightWay(Points, I, Eps);
    Kept.push_back(Points[I]);
  }
  return Kept;
}

/// Moves the joint of a closed contour to its first vertex off the straight way between its
/// neighbours, when it lies on one itself. A contour without such a vertex begins at its leftmost
/// point, which no straight way can contain.
void MoveJointToCorner(std::vector<TPoint2D>& Ring, double Eps) {
  const std::size_t Count = Ring.size() - 1;
  const auto IsStraight = [&](std::size_t I) {
    const TVLine2D Way(Ring[(I + Count - 1) % Count], Ring[I + 1]);
    return Way.SegmentDistanceTo(Ring[I]) <= Eps;
  };
  std::size_t Corner = 0;
  while (Corner < Count && IsStraight(Corner)) ++Corner;
  if (Corner == 0) return;
  if (Corner == Count) {
    Corner = static_cast<std::size_t>(TVPoint2DList(Ring).FindMostValueId(drLeftDown)) % Count;
  }
  Ring.pop_back();
  std::rotate(Ring.begin(), Ring.begin() + static_cast<std::ptrdiff_t>(Corner), Ring.end());
  Ring.push_back(Ring.front());
}

/// Marks the vertices that Douglas and Peucker keep between two kept ones: where some vertex lies
/// farther than `Eps` from the edge between them, the farthest one, and so on in both halves.
///
/// On a zigzag the farthest vertex is always one of the first or the last. Where the halves have
/// become that uneven, only those near the middle are considered as long as there are any.
class TDecimator {
 public:
  TDecimator(const std::vector<TPoint2D>& Points, double Eps)
      : FPoints(Points), FEps(Eps > 0.0 ? Eps : 0.0), FIsKept(Points.size(), false) {}

  void Keep(std::size_t I) { FIsKept[I] = true; }
  void Refine(std::size_t From, std::size_t To) {
    const int MostHalvings = kUnevenHalvings * static_cast<int>(std::bit_width(FPoints.size()));
    std::vector<TRange> Open{{From, To, 0}};
    while (!Open.empty()) {
      const TRange Range = Open.back();
      Open.pop_back();
      const std::size_t Kept = Range.Halvings < MostHalvings || Range.Last - Range.First < kShort
                                   ? FarthestOf(Range.First, Range.Last, Range.First, Range.Last)
                                   : FarthestNearMiddle(Range.First, Range.Last);
      if (Kept == Range.First) continue;
      Keep(Kept);
      Open.push_back({Range.First, Kept, Range.Halvings + 1});
      Open.push_back({Kept, Range.Last, Range.Halvings + 1});
    }
  }
  std::vector<TPoint2D> TakeKept() const {
    std::vector<TPoint2D> Kept;
    for (std::size_t I = 0; I < FPoints.size(); ++I) {
      if (FIsKept[I]) Kept.push_back(FPoints[I]);
    }
    return Kept;
  }

 private:
  /// How many times more halvings than even halves would need count as uneven.
  static constexpr int kUnevenHalvings = 4;
  /// Vertices of a range so short that uneven halves cost nothing.
  static constexpr std::size_t kShort = 64;

  /// The vertices strictly between two kept ones, and how often the course was cut to get there.
  struct TRange {
    std::size_t First;
    std::size_t Last;
    int Halvings;
  };

  /// Of the vertices `Low` .. `High`, but the ends of the edge, the one farthest from the edge, the
  /// first of several; `First` when all are near enough.
  std::size_t FarthestOf(std::size_t First, std::size_t Last, std::size_t Low,
                         std::size_t High) const {
    const TVLine2D Edge(FPoints[First], FPoints[Last]);
    std::size_t Farthest = First;
    double Most = FEps;
    for (std::size_t I = std::max(Low, First + 1); I <= High && I < Last; ++I) {
      const double Dist = Edge.SegmentDistanceTo(FPoints[I]);
      if (Dist <= Most) continue;  // a NaN is kept: nothing is known to replace it
      if (std::isnan(Dist)) return I;
      Most = Dist;
      Farthest = I;
    }
    return Farthest;
  }

  /// The same, of the middle half of the vertices if it has one that is too far, else the one
  /// nearest to that half.
  std::size_t FarthestNearMiddle(std::size_t First, std::size_t Last) const {
    const std::size_t Quarter = (Last - First) / 4;
    const std::size_t Low = First + Quarter;
    const std::size_t High = Last - Quarter;
    std::size_t Kept = FarthestOf(First, Last, Low, High);
    for (std::size_t Step = 1; Step < Quarter && Kept == First; ++Step) {
      Kept = FarthestOf(First, Last, Low - Step, Low - Step);
      if (Kept == First) Kept = FarthestOf(First, Last, High + Step, High + Step);
    }
    return Kept;
  }

  const std::vector<TPoint2D>& FPoints;
  double FEps;
  std::vector<bool> FIsKept;
};

std::size_t FarthestFromFirst(const std::vector<TPoint2D>& Points) {
  std::size_t Farthest = 0;
  double Most = 0.0;
  for (std::size_t I = 1; I < Points.size(); ++I) {
    const double Dist = Points[I].DistanceTo(Points.front());
    if (!(Dist > Most)) continue;
    Most = Dist;
    Farthest = I;
  }
  return Farthest;
}

}  // namespace

void TVPolyline2D::DeleteNeighbourClosed(double Eps) {
  if (FPoints.size() < 2) return;
  const TPoint2D End = FPoints.back();
  std::vector<TPoint2D> Kept{FPoints.front()};
  for (const TPoint2D& P : FPoints) {
    if (!P.Equals(Kept.back(), Eps)) Kept.push_back(P);
  }
  // The end replaces whatever lies within the tolerance before it.
  while (Kept.size() > 1 && Kept.back().Equals(End, Eps)) Kept.pop_back();
  if (Kept.size() > 1 || !Kept.back().Equals(End, Eps)) Kept.push_back(End);
  FPoints = std::move(Kept);
}

void TVPolyline2D::CollinearSmooth(double Eps) {
  // A repeated point has no way of its own and would hide the corner it stands on.
  std::vector<TPoint2D> Course;
  Course.reserve(FPoints.size());
  std::unique_copy(FPoints.begin(), FPoints.end(), std::back_inserter(Course));
  if (Course.size() > 3 && IsClosed()) MoveJointToCorner(Course, Eps);
  FPoints = Course.size() < 3 ? std::move(Course) : Straightened(Course, Eps);
}

void TVPolyline2D::Simplify(double Eps) {
  if (FPoints.size() < 3) return;
  TDecimator Decimator(FPoints, Eps);
  const std::size_t Last = FPoints.size() - 1;
  // The ends of a closed contour are one place, which says nothing about the way between.
  const std::size_t Middle = IsClosed(Eps) ? FarthestFromFirst(FPoints) : Last;
  Decimator.Keep(0);
  Decimator.Keep(Middle);
  Decimator.Keep(Last);
  Decimator.Refine(0, Middle);
  Decimator.Refine(Middle, Last);
  FPoints = Decimator.TakeKept();
}

bool TVPolyline2D::TryConnect(const TVPolyline2D& Other, double Eps) {
  if (Count() < 2 || Other.Count() < 2 || IsClosed(Eps) || Other.IsClosed(Eps)) return false;
  const std::vector<TPoint2D>& Tail = Other.FPoints;
  if (Last().Equals(Tail.front(), Eps)) {
    FPoints.insert(FPoints.end(), Tail.begin() + 1, Tail.end());
  } else if (Last().Equals(Tail.back(), Eps)) {
    FPoints.insert(FPoints.end(), Tail.rbegin() + 1, Tail.rend());
  } else if (First().Equals(Tail.back(), Eps)) {
    FPoints.insert(FPoints.begin(), Tail.begin(), Tail.end() - 1);
  } else if (First().Equals(Tail.front(), Eps)) {
    FPoints.insert(FPoints.begin(), Tail.rbegin(), Tail.rend() - 1);
  } else {
    return false;
  }
  return true;
}

void TVPolyline2D::ConnectHeadTail(double Eps) {
  if (!FPoints.empty() && !IsClosed(Eps)) Add(FPoints.front());
}

}  // namespace tarnalgo
