#include "geometryAlgo/SweepLine/OrderSearch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "containers/TreeAlgorithm/GeneralSBTree.h"
#include "containers/TreeAlgorithm/MinHeap.h"
#include "geometryAlgo/SweepLine/SegmentEnds.h"
#include "geometryAlgo/SweepLine/SegmentOrder.h"
#include "geometryAlgo/SweepLine/SideOfLine.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

/// One sweep, from least X to greatest X.
class TOrderSweep {
 public:
  /// Segments with their mark in `Stands` stand in the order, of the others only the ends are
  /// looked at. All run forward by X, then Y.
  TOrderSweep(const std::vector<TVLine2D>& Lines, const std::vector<bool>& Stands, double Reach,
              const TOrderSearch::TVisitor& Visit);
  TOrderSweep(const TOrderSweep&) = delete;
  TOrderSweep& operator=(const TOrderSweep&) = delete;

  void Run();

 private:
  using TSpot = TSegmentOrder::TSpot;
  using TRecent = TGeneralSBTree<double, int, TExactComparer<double>>;

  /// Neighbours that change places.
  struct TChange {
    int Below;
    int Above;
  };

  /// On which side of the segment the point of the sweep lies.
  int SideOfPoint(const TVLine2D& Line) const {
    return SideOfLine(Line.StartPoint, Line.EndPoint, FPoint);
  }
  long double YOf(const TVLine2D& Line) const;

  void Enter(int Seg);
  void Leave(int Seg);
  void Settle();
  bool HaveChanged(const TVLine2D& Below, const TVLine2D& Above) const;
  void Exchange(const TSpot& Below, const TSpot& Above);
  void ExpectChange(const TSpot& Below, const TSpot& Above);
  void VisitOrderNear(int Seg, bool IsStart);
  void VisitEndsNear(std::size_t End);

  const std::vector<TVLine2D>& FLines;
  const std::vector<bool>& FStands;
  const TOrderSearch::TVisitor& FVisit;
  double FReach;
  long double FRounding = 0.0L;  // length: more than the rounding of `YOf`
  double FSlack = 0.0;           // length: more than that adds up to among many neighbours
  std::vector<TSegmentEnd> FEnds;
  TPoint2D FPoint;  // of the sweep

  TSegmentOrder FOrder;
  TMinHeap<TChange> FChanges;  // by an X at which neighbours have not yet changed places
  std::vector<std::pair<TChange, double>> FHeld;
  TRecent FRecent;  // the ends within the reach behind the sweep, by Y
  std::vector<TRecent::TNode*> FRecentNodes;
  std::size_t FFirstRecent = 0;
};

TOrderSweep::TOrderSweep(const std::vector<TVLine2D>& Lines, const std::vector<bool>& Stands,
                         double Reach, const TOrderSearch::TVisitor& Visit)
    : FLines(Lines), FStands(Stands), FVisit(Visit), FReach(Reach), FOrder(Lines.size()) {
  double Greatest = 0.0;
  FEnds.reserve(2 * Lines.size());
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    for (const TPoint2D& P : {Lines[I].StartPoint, Lines[I].EndPoint}) {
      Greatest = std::max({Greatest, std::abs(P.X), std::abs(P.Y)});
      FEnds.push_back({P, static_cast<int>(2 * I + FEnds.size() % 2)});
    }
  }
  FRounding = 64.0L * std::numeric_limits<long double>::epsilon() * Greatest;
  FSlack = std::ldexp(Greatest, kOrderSlackExponent);
  SortSegmentEnds(FEnds);
  FRecentNodes.resize(FEnds.size(), nullptr);
}

void TOrderSweep::Run() {
  for (std::size_t I = 0; I < FEnds.size(); ++I) {
    const int Seg = FEnds[I].Id / 2;
    const bool IsStart = FEnds[I].Id % 2 == 0;
    const bool Stands = FStands[static_cast<std::size_t>(Seg)];
    FPoint = FEnds[I].P;
    Settle();
    if (Stands && IsStart) Enter(Seg);
    VisitOrderNear(Seg, IsStart);
    VisitEndsNear(I);
    if (Stands && !IsStart) Leave(Seg);
  }
}

/// Among segments through its start the new one stands as it goes on. Where lines zigzag between
/// two borders, half of them would otherwise wait to change places at every end along the border.
void TOrderSweep::Enter(int Seg) {
  const TVLine2D& New = FLines[static_cast<std::size_t>(Seg)];
  const TSpot Spot = FOrder.Insert(Seg, New, [&](const TVLine2D& Line) {
    const int Side = SideOfPoint(Line);
    if (Side != 0) return Side > 0;
    return SideOfLine(Line.StartPoint, Line.EndPoint, New.EndPoint) >= 0;
  });
  ExpectChange(Spot.Below(), Spot);
  ExpectChange(Spot, Spot.Above());
}

void TOrderSweep::Leave(int Seg) {
  const TSpot Spot = FOrder.SpotOf(Seg);
  ExpectChange(Spot.Below(), Spot.Above());
  FOrder.Remove(Spot);
}

/// Neighbours between which the point lies, or that are plainly out of order above it, have changed
/// places before: afterwards the point has one place in the order.
void TOrderSweep::Settle() {
  while (FChanges.Count() > 0 && FChanges.TopKey() <= FPoint.X) {
    const double X = FChanges.TopKey();
    const TChange Change = FChanges.Pop();
    if (!FOrder.Has(Change.Below)) continue;
    const TSpot Below = FOrder.SpotOf(Change.Below);
    const TSpot Above = Below.Above();
    if (!Above || Above.Segment() != Change.Above) continue;  // neighbours no longer
    if (HaveChanged(Below.Line(), Above.Line())) {
      FVisit(Change.Below, Change.Above);
      Exchange(Below, Above);
    } else {
      FHeld.push_back({Change, X});
    }
  }
  for (const auto& [Change, X] : FHeld) FChanges.Add(Change, X);
  FHeld.clear();
}

bool TOrderSweep::HaveChanged(const TVLine2D& Below, const TVLine2D& Above) const {
  const long double Y1 = YOf(Below);
  const long double Y2 = YOf(Above);
  if (std::abs(Y1 - Y2) > FRounding) return Y1 > Y2;
  return SideOfPoint(Below) < SideOfPoint(Above);
}

void TOrderSweep::Exchange(const TSpot& Below, const TSpot& Above) {
  FOrder.Exchange(Below, Above);
  ExpectChange(Below.Below(), Below);
  ExpectChange(Above, Above.Above());
}

/// Neighbours change places when the lower one is above at the end of the one that ends first. The
/// X of that place is taken a little too small.
void TOrderSweep::ExpectChange(const TSpot& Below, const TSpot& Above) {
  if (!Below || !Above) return;
  const TVLine2D& A = Below.Line();
  const TVLine2D& B = Above.Line();
  const bool Change = A.EndPoint.X <= B.EndPoint.X
                          ? SideOfLine(B.StartPoint, B.EndPoint, A.EndPoint) > 0
                          : SideOfLine(A.StartPoint, A.EndPoint, B.EndPoint) < 0;
  if (!Change) return;
  const double Side1 = RoundedSide(B.StartPoint, B.EndPoint, A.StartPoint);
  const double Side2 = RoundedSide(B.StartPoint, B.EndPoint, A.EndPoint);
  const double Run = A.EndPoint.X - A.StartPoint.X;
  const double X = A.StartPoint.X + (Side1 < 0.0 ? Run * (Side1 / (Side1 - Side2)) : 0.0);
  FChanges.Add({Below.Segment(), Above.Segment()},
               X - std::ldexp(Run, kEarlyCrossingExponent) - FSlack);
}

/// In the order of the segments but for rounding.
long double TOrderSweep::YOf(const TVLine2D& Line) const {
  const long double T = (static_cast<long double>(FPoint.X) - Line.StartPoint.X) /
                        (static_cast<long double>(Line.EndPoint.X) - Line.StartPoint.X);
  return Line.StartPoint.Y + (static_cast<long double>(Line.EndPoint.Y) - Line.StartPoint.Y) * T;
}

/// A segment of 45° that passes the point within the reach stands within twice that above or below
/// it. An upright one is met by all that stand between its ends.
void TOrderSweep::VisitOrderNear(int Seg, bool IsStart) {
  TSpot Below = TSegmentOrder::None();
  TSpot Above = Below;
  if (FOrder.Has(Seg)) {
    const TSpot Spot = FOrder.SpotOf(Seg);
    Below = Spot.Below();
    Above = Spot.Above();
  } else {
    FOrder.FindNeighbours([this](const TVLine2D& Line) { return SideOfPoint(Line) >= 0; }, Below,
                          Above);
  }
  const TVLine2D& Line = FLines[static_cast<std::size_t>(Seg)];
  const bool IsUpright = IsStart && Line.StartPoint.X == Line.EndPoint.X;  // exact
  const double Low = FPoint.Y - 2.0 * FReach - FSlack;
  const double High = (IsUpright ? Line.EndPoint.Y : FPoint.Y) + 2.0 * FReach + FSlack;
  for (; Below && YOf(Below.Line()) >= Low; Below = Below.Below()) FVisit(Seg, Below.Segment());
  for (; Above && YOf(Above.Line()) <= High; Above = Above.Above()) FVisit(Seg, Above.Segment());
}

/// Visits the segments with ends near this one, of those that the sweep has come to before.
void TOrderSweep::VisitEndsNear(std::size_t End) {
  const double Behind = FPoint.X - FReach - FSlack;
  for (; FFirstRecent < End && FEnds[FFirstRecent].P.X < Behind; ++FFirstRecent) {
    FRecent.RemoveNode(FRecentNodes[FFirstRecent]);
  }
  if (FFirstRecent < End) {
    TRecent::TNode* Below = nullptr;
    TRecent::TNode* Above = nullptr;
    FRecent.SearchNearby(FPoint.Y, Below, Above);
    if (Below == Above) Below = TRecent::PreviousNode(Above);
    const double Range = 2.0 * FReach + FSlack;
    const int Seg = FEnds[End].Id / 2;
    for (; Below != nullptr && Below->Key >= FPoint.Y - Range;
         Below = TRecent::PreviousNode(Below)) {
      if (Below->Value != Seg) FVisit(Seg, Below->Value);
    }
    for (; Above != nullptr && Above->Key <= FPoint.Y + Range; Above = TRecent::NextNode(Above)) {
      if (Above->Value != Seg) FVisit(Seg, Above->Value);
    }
  }
  FRecentNodes[End] = FRecent.Insert(FPoint.Y, FEnds[End].Id / 2);
}

TVLine2D Exchanged(const TVLine2D& Line) {
  const TVLine2D Result({Line.StartPoint.Y, Line.StartPoint.X}, {Line.EndPoint.Y, Line.EndPoint.X});
  const bool IsForward = TPoint2DUtils::CompareByXY(Result.StartPoint, Result.EndPoint) <= 0;
  return IsForward ? Result : Result.ReverseDirection();
}

}  // namespace

void TOrderSearch::VisitPairs(const std::vector<TVLine2D>& Lines, double Reach,
                              const TVisitor& Visit) {
  std::vector<TVLine2D> Turned;
  Turned.reserve(Lines.size());
  std::vector<bool> IsSteep(Lines.size());
  std::size_t SteepCount = 0;
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    const TPoint2D V = Lines[I].Vector();
    IsSteep[I] = std::abs(V.Y) > std::abs(V.X);
    SteepCount += IsSteep[I] ? 1 : 0;
    Turned.push_back(Exchanged(Lines[I]));
  }
  // Mostly one sweep does: it runs along the greater part.
  const bool SteepFirst = SteepCount > Lines.size() / 2;
  const std::vector<TVLine2D>& First = SteepFirst ? Turned : Lines;
  const std::vector<TVLine2D>& Second = SteepFirst ? Lines : Turned;
  std::vector<bool> Stands(Lines.size());
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    Stands[I] = First[I].StartPoint.X < First[I].EndPoint.X;
  }
  TOrderSweep(First, Stands, Reach, Visit).Run();
  const std::size_t Left = SteepFirst ? Lines.size() - SteepCount : SteepCount;
  if (Left == 0) return;
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    Stands[I] = IsSteep[I] != SteepFirst && Second[I].StartPoint.X < Second[I].EndPoint.X;
  }
  TOrderSweep(Second, Stands, Reach, Visit).Run();
}

}  // namespace tarnalgo
