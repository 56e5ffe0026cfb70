#include "geometryAlgo/ShapeApp/ConvexHull.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "geometryAlgo/ShapeApp/HullFilter.h"
#include "geometryAlgo/VedaType/LexicographicSort.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

// From this many points on a look at a sample pays.
constexpr int kWorthFiltering = 1000;
// Sine of the angle at the first point below which the first three count as nearly collinear: far
// above the rounding of a turn.
constexpr double kFlatStart = 1e-9;

/// Melkman's deque of positions: read from bottom to top it is the hull so far, counter-clockwise,
/// the latest vertex at both ends.
class TMelkmanDeque {
 public:
  /// Begins with vertices 0, 1, 2 of a course of `Count` vertices.
  TMelkmanDeque(TVPolyline2D::TConstIterator Points, int Count, bool TurnsLeft)
      : FPoints(Points),
        FCells(2 * static_cast<std::size_t>(Count) + 1),
        FBottom(FCells.data() + Count - 1),
        FTop(FBottom + 3) {
    FBottom[0] = 2;
    FBottom[1] = TurnsLeft ? 0 : 1;
    FBottom[2] = TurnsLeft ? 1 : 0;
    FTop[0] = 2;
    ReadEnds();
  }

  void Take(int Vertex) {
    const TPoint2D& P = FPoints[Vertex];
    double BottomTurn = TPoint2DUtils::IsLeft(FBottomEdge[0], FBottomEdge[1], P);
    double TopTurn = TPoint2DUtils::IsLeft(FTopEdge[0], FTopEdge[1], P);
    if (BottomTurn > 0.0 && TopTurn > 0.0) return;  // inside
    while (BottomTurn <= 0.0 && FBottom[0] != 0) {
      ++FBottom;
      BottomTurn = Turn(FBottom[0], FBottom[1], P);
    }
    *--FBottom = Vertex;
    while (TopTurn <= 0.0) {
      // The order matters: the first stop keeps an edge under the vertex that comes.
      if (FTop[-1] == 0 && FTop - FBottom == 2) break;
      if (FTop[0] == 0) break;
      --FTop;
      TopTurn = Turn(FTop[-1], FTop[0], P);
    }
    *++FTop = Vertex;
    ReadEnds();
  }

  /// The ring without its lower end, closed.
  std::vector<int> Ring() const {
    std::vector<int> Result(FBottom + 1, FTop + 1);
    Result.push_back(Result.front());
    return Result;
  }

 private:
  double Turn(int A, int B, const TPoint2D& P) const {
    return TPoint2DUtils::IsLeft(FPoints[A], FPoints[B], P);
  }
  void ReadEnds() {
    FBottomEdge[0] = FPoints[FBottom[0]];
    FBottomEdge[1] = FPoints[FBottom[1]];
    FTopEdge[0] = FPoints[FTop[-1]];
    FTopEdge[1] = FPoints[FTop[0]];
  }

  TVPolyline2D::TConstIterator FPoints;
  // Each vertex takes a cell at each end, and vertex 0 is popped from neither end: the deque can
  // neither run over nor run dry.
  std::vector<int> FCells;
  int* FBottom;
  int* FTop;
  TPoint2D FBottomEdge[2];
  TPoint2D FTopEdge[2];
};

/// The hull of points in lexicographic order, no two of them in one place.
TVPolyline2D HullOfSequence(std::vector<TPoint2D> Points) {
  TVPolyline2D Sequence(std::move(Points));
  TVPolyline2D Hull;
  for (const int I : TConvexHullCalculator::CalcSimplePolylineConvexHull(Sequence)) {
    Hull.Add(Sequence[I]);
  }
  return Hull;
}

/// The segments cross in one inner point of both.
bool DoCross(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C, const TPoint2D& D) {
  const auto IsParted = [](double First, double Second) {
    return (First < 0.0 && Second > 0.0) || (First > 0.0 && Second < 0.0);
  };
  return IsParted(TPoint2DUtils::IsLeft(A, B, C), TPoint2DUtils::IsLeft(A, B, D)) &&
         IsParted(TPoint2DUtils::IsLeft(C, D, A), TPoint2DUtils::IsLeft(C, D, B));
}

/// How many of the sorted points from the second on must go because the second one, moved off a
/// line with its neighbours, would set its edges across the way that follows: all on that line but
/// the outermost. No corner is among them.
std::ptrdiff_t PointsInTheWay(const std::vector<TPoint2D>& Points) {
  if (Points.size() < 4 || TPoint2DUtils::IsLeft(Points[0], Points[1], Points[2]) != 0.0) return 0;
  const TPoint2D Moved = Points[1] + TPoint2D(kCollinearShiftX, kCollinearShiftY);
  const auto IsCut = [&](const TPoint2D& From, const TPoint2D& To) {
    return DoCross(Points[0], Moved, From, To) || DoCross(Moved, Points[2], From, To);
  };
  std::size_t I = 2;
  while (I + 1 < Points.size() && Points[I].X <= Moved.X && !IsCut(Points[I], Points[I + 1])) ++I;
  if (I + 1 == Points.size() || Points[I].X > Moved.X) return 0;
  const auto IsOther = [&](const TPoint2D& P) { return !(P == Points[0]); };
  const auto Along = std::find_if(Points.begin(), Points.end(), IsOther);
  const auto Turns = [&](const TPoint2D& P) {
    return TPoint2DUtils::IsLeft(Points[0], *Along, P) != 0.0;
  };
  return std::find_if(Along, Points.end(), Turns) - Points.begin() - 2;
}

/// Drops every point within 1e-6 of the last one kept.
void DropRepeats(std::vector<TPoint2D>& Points) {
  Points.erase(std::unique(Points.begin(), Points.end(),
                           [](const TPoint2D& Kept, const TPoint2D& P) { return P.Equals(Kept); }),
               Points.end());
}

bool IsFlatStart(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  const double Turn = TPoint2DUtils::IsLeft(A, B, C);
  return std::abs(Turn) <= kFlatStart * A.DistanceTo(B) * A.DistanceTo(C);
}

/// Among the points up to `MostX` there are three different ones, and the first three in the order
/// turn. A point that moves may stand out of the order; a start without a turn leaves the next ones
/// to rounding.
bool HasTurningStart(const std::vector<TPoint2D>& Points, double MostX) {
  std::vector<TPoint2D> Least;  // the first three different ones, in the order
  Least.reserve(4);
  for (const TPoint2D& P : Points) {
    if (!(P.X <= MostX) || !TPoint2DUtils::IsFinite(P)) continue;
    const auto Place = std::lower_bound(Least.begin(), Least.end(), P, IsLessByXY);
    if (Place != Least.end() && *Place == P) continue;
    Least.insert(Place, P);
    if (Least.size() > 3) Least.pop_back();
  }
  return Least.size() == 3 && !IsFlatStart(Least[0], Least[1], Least[2]);
}

/// The hull from the points near the rim alone; nothing where these cannot tell what the steps make
/// of all points.
std::optional<TVPolyline2D> HullOfRim(const std::vector<TPoint2D>& Points) {
  const THullFilter Filter(Points);
  if (!Filter.IsUseful() || !HasTurningStart(Points, Filter.CompleteTo())) return std::nullopt;
  std::vector<TPoint2D> Rim = Filter.Candidates();
  // Most of a set that lies on its rim has near neighbours there: not worth a first try.
  if (Rim.size() > Points.size() / 2) return std::nullopt;
  SortByXY(Rim, [](const TPoint2D& P) { return P; });
  Rim.erase(std::unique(Rim.begin(), Rim.end()), Rim.end());
  // Of two near points the second is kept if a third one, dropped perhaps, comes between them.
  const auto IsRepeat = [](const TPoint2D& A, const TPoint2D& B) { return B.Equals(A); };
  if (std::adjacent_find(Rim.begin(), Rim.end(), IsRepeat) != Rim.end()) return std::nullopt;
  return HullOfSequence(std::move(Rim));
}

std::vector<int> FinitePositions(const std::vector<TPoint2D>& Points) {
  std::vector<int> Positions = TListUtils::CreateOrderList(static_cast<int>(Points.size()));
  std::erase_if(Positions, [&Points](int I) {
    return !TPoint2DUtils::IsFinite(Points[static_cast<std::size_t>(I)]);
  });
  return Positions;
}

}  // namespace

std::vector<int> TConvexHullCalculator::CalcSimplePolylineConvexHull(TVPolyline2D& Polyline) {
  if (Polyline.Count() <= 2) return TListUtils::CreateOrderList(Polyline.Count());
  const int Count = Polyline.Count() - (Polyline.First() == Polyline.Last() ? 1 : 0);
  if (Count == 2) return {0, 1};
  const auto Points = Polyline.begin();
  const TPoint2D Second = Points[1];
  double Turn = TPoint2DUtils::IsLeft(Points[0], Points[1], Points[2]);
  if (Turn == 0.0) {
    Points[1] = Points[1] + TPoint2D(kCollinearShiftX, kCollinearShiftY);
    Turn = TPoint2DUtils::IsLeft(Points[0], Points[1], Points[2]);
  }
  try {
    TMelkmanDeque Deque(Points, Count, Turn > 0.0);
    for (int I = 3; I < Count; ++I) Deque.Take(I);
    return Deque.Ring();
  } catch (...) {
    Points[1] = Second;
    throw;
  }
}

TVPolyline2D TConvexHullCalculator::CalcConvexHull(const TVPoint2DList& Points) {
  if (Points.Count() >= kWorthFiltering) {
    if (std::optional<TVPolyline2D> Hull = HullOfRim(Points.Points())) return *std::move(Hull);
  }
  std::vector<TPoint2D> Kept = Points.Points();
  std::erase_if(Kept, [](const TPoint2D& P) { return !TPoint2DUtils::IsFinite(P); });
  SortByXY(Kept, [](const TPoint2D& P) { return P; });
  DropRepeats(Kept);
  if (const std::ptrdiff_t Count = PointsInTheWay(Kept); Count > 0) {
    Kept.erase(Kept.begin() + 1, Kept.begin() + 1 + Count);
  }
  return HullOfSequence(std::move(Kept));
}

std::vector<int> TConvexHullCalculator::CalcConvexHullPtIds(const TVPoint2DList& Points) {
  const std::vector<TPoint2D>& All = Points.Points();
  std::vector<int> Order = FinitePositions(All);
  SortByXY(Order, [&All](int I) { return All[static_cast<std::size_t>(I)]; });
  std::vector<TPoint2D> Sorted;
  Sorted.reserve(Order.size());
  for (const int I : Order) Sorted.push_back(All[static_cast<std::size_t>(I)]);
  if (const std::ptrdiff_t Count = PointsInTheWay(Sorted); Count > 0) {
    Order.erase(Order.begin() + 1, Order.begin() + 1 + Count);
    Sorted.erase(Sorted.begin() + 1, Sorted.begin() + 1 + Count);
  }
  TVPolyline2D Sequence(std::move(Sorted));
  std::vector<int> Ids = CalcSimplePolylineConvexHull(Sequence);
  for (int& Id : Ids) Id = Order[static_cast<std::size_t>(Id)];
  return Ids;
}

}  // namespace tarnalgo
