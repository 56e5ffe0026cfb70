#include "geometryAlgo/SweepLine/OrderSearch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "containers/TreeAlgorithm/GeneralSBTree.h"
#include "containers/TreeAlgorithm/MinHeap.h"
#include "geometryAlgo/SweepLine/SegmentEnds.h"
#include "geometryAlgo/SweepLine/SideOfLine.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/tarnds/SBTree.h"

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
  /// A segment that stands in the order. It carries its own copy: a descent waits for memory.
  struct TNode : TSBTree {
    TVLine2D Line;
    int Seg = -1;

    TNode* Below() { return static_cast<TNode*>(PreviousTree()); }
    TNode* Above() { return static_cast<TNode*>(NextTree()); }
  };
  using TRecent = TGeneralSBTree<double, int, TExactComparer<double>>;

  /// Neighbours that change places.
  struct TChange {
    int Below;
    int Above;
  };

  TNode*& PlaceOf(int Seg) { return FPlaces[static_cast<std::size_t>(Seg)]; }
  /// On which side of the segment the point of the sweep lies.
  int SideOfPoint(const TNode& Node) const {
    return SideOfLine(Node.Line.StartPoint, Node.Line.EndPoint, FPoint);
  }
  long double YOf(const TNode& Node) const;

  void Enter(int Seg);
  void Leave(int Seg);
  void Settle();
  bool HaveChanged(const TNode& Below, const TNode& Above) const;
  void Exchange(TNode& Below, TNode& Above);
  void ExpectChange(const TNode* Below, const TNode* Above);
  void FindNeighbours(TNode*& Below, TNode*& Above);
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

  // The order. A segment enters with the node of its number and may go on to that of a neighbour.
  std::vector<TNode> FNodes;
  std::vector<TNode*> FPlaces;  // of each segment, null outside the order
  TSBTree* FTop = nullptr;
  TMinHeap<TChange> FChanges;  // by an X at which neighbours have not yet changed places
  std::vector<std::pair<TChange, double>> FHeld;
  TRecent FRecent;  // the ends within the reach behind the sweep, by Y
  std::vector<TRecent::TNode*> FRecentNodes;
  std::size_t FFirstRecent = 0;
};

TOrderSweep::TOrderSweep(const std::vector<TVLine2D>& Lines, const std::vector<bool>& Stands,
                         double Reach, const TOrderSearch::TVisitor& Visit)
    : FLines(Lines),
      FStands(Stands),
      FVisit(Visit),
      FReach(Reach),
      FNodes(Lines.size()),
      FPlaces(Lines.size(), nullptr) {
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

void TOrderSweep::Enter(int Seg) {
  TNode* const Node = PlaceOf(Seg) = &FNodes[static_cast<std::size_t>(Seg)];
  Node->Line = FLines[static_cast<std::size_t>(Seg)];
  Node->Seg = Seg;
  FTop = Node->InsertInto(
      FTop, [&](const TSBTree& Tree) { return SideOfPoint(static_cast<const TNode&>(Tree)) >= 0; });
  ExpectChange(Node->Below(), Node);
  ExpectChange(Node, Node->Above());
}

void TOrderSweep::Leave(int Seg) {
  TNode* const Node = std::exchange(PlaceOf(Seg), nullptr);
  ExpectChange(Node->Below(), Node->Above());
  FTop = Node->Delete();
}

/// Neighbours between which the point lies, or that are plainly out of order above it, have changed
/// places before: afterwards the point has one place in the order.
void TOrderSweep::Settle() {
  while (FChanges.Count() > 0 && FChanges.TopKey() <= FPoint.X) {
    const double X = FChanges.TopKey();
    const TChange Change = FChanges.Pop();
    TNode* const Below = PlaceOf(Change.Below);
    if (Below == nullptr) continue;
    TNode* const Above = Below->Above();
    if (Above == nullptr || Above->Seg != Change.Above) continue;  // neighbours no longer
    if (HaveChanged(*Below, *Above)) {
      FVisit(Change.Below, Change.Above);
      Exchange(*Below, *Above);
    } else {
      FHeld.push_back({Change, X});
    }
  }
  for (const auto& [Change, X] : FHeld) FChanges.Add(Change, X);
  FHeld.clear();
}

bool TOrderSweep::HaveChanged(const TNode& Below, const TNode& Above) const {
  const long double Y1 = YOf(Below);
  const long double Y2 = YOf(Above);
  if (std::abs(Y1 - Y2) > FRounding) return Y1 > Y2;
  return SideOfPoint(Below) < SideOfPoint(Above);
}

void TOrderSweep::Exchange(TNode& Below, TNode& Above) {
  std::swap(Below.Line, Above.Line);
  std::swap(Below.Seg, Above.Seg);
  PlaceOf(Below.Seg) = &Below;
  PlaceOf(Above.Seg) = &Above;
  ExpectChange(Below.Below(), &Below);
  ExpectChange(&Above, Above.Above());
}

/// Neighbours change places when the lower one is above at the end of the one that ends first. The
/// X of that place is taken a little too small.
void TOrderSweep::ExpectChange(const TNode* Below, const TNode* Above) {
  if (Below == nullptr || Above == nullptr) return;
  const TVLine2D& A = Below->Line;
  const TVLine2D& B = Above->Line;
  const bool Change = A.EndPoint.X <= B.EndPoint.X
                          ? SideOfLine(B.StartPoint, B.EndPoint, A.EndPoint) > 0
                          : SideOfLine(A.StartPoint, A.EndPoint, B.EndPoint) < 0;
  if (!Change) return;
  const double Side1 = RoundedSide(B.StartPoint, B.EndPoint, A.StartPoint);
  const double Side2 = RoundedSide(B.StartPoint, B.EndPoint, A.EndPoint);
  const double Run = A.EndPoint.X - A.StartPoint.X;
  const double X = A.StartPoint.X + (Side1 < 0.0 ? Run * (Side1 / (Side1 - Side2)) : 0.0);
  FChanges.Add({Below->Seg, Above->Seg}, X - std::ldexp(Run, kEarlyCrossingExponent) - FSlack);
}

/// In the order of the segments but for rounding.
long double TOrderSweep::YOf(const TNode& Node) const {
  const TPoint2D& Start = Node.Line.StartPoint;
  const TPoint2D& End = Node.Line.EndPoint;
  const long double T =
      (static_cast<long double>(FPoint.X) - Start.X) / (static_cast<long double>(End.X) - Start.X);
  return Start.Y + (static_cast<long double>(End.Y) - Start.Y) * T;
}

/// Of the point of the sweep, which is no end of a segment in the order.
void TOrderSweep::FindNeighbours(TNode*& Below, TNode*& Above) {
  for (auto* Node = static_cast<TNode*>(FTop); Node != nullptr;) {
    const bool IsAbove = SideOfPoint(*Node) >= 0;
    (IsAbove ? Below : Above) = Node;
    Node = static_cast<TNode*>(IsAbove ? Node->RightChild() : Node->LeftChild());
  }
}

/// A segment of 45° that passes the point within the reach stands within twice that above or below
/// it. An upright one is met by all that stand between its ends.
void TOrderSweep::VisitOrderNear(int Seg, bool IsStart) {
  TNode* Below = nullptr;
  TNode* Above = nullptr;
  if (TNode* const Node = PlaceOf(Seg)) {
    Below = Node->Below();
    Above = Node->Above();
  } else {
    FindNeighbours(Below, Above);
  }
  const TVLine2D& Line = FLines[static_cast<std::size_t>(Seg)];
  const bool IsUpright = IsStart && Line.StartPoint.X == Line.EndPoint.X;  // exact
  const double Low = FPoint.Y - 2.0 * FReach - FSlack;
  const double High = (IsUpright ? Line.EndPoint.Y : FPoint.Y) + 2.0 * FReach + FSlack;
  for (; Below != nullptr && YOf(*Below) >= Low; Below = Below->Below()) FVisit(Seg, Below->Seg);
  for (; Above != nullptr && YOf(*Above) <= High; Above = Above->Above()) FVisit(Seg, Above->Seg);
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

/// The segments from low to high, as they stand where their line passes the middle of all, or
/// would.
std::vector<int> FromLowToHigh(const std::vector<TVLine2D>& Lines) {
  double Left = Lines[0].StartPoint.X;
  double Right = Lines[0].EndPoint.X;
  for (const TVLine2D& Line : Lines) {
    Left = std::min(Left, Line.StartPoint.X);
    Right = std::max(Right, Line.EndPoint.X);
  }
  std::vector<TSegmentEnd> Heights;
  Heights.reserve(Lines.size());
  for (const TVLine2D& Line : Lines) {
    const TPoint2D V = Line.Vector();
    const bool IsGentle = std::abs(V.Y) <= std::abs(V.X) && V.X != 0.0;
    const double Y = IsGentle ? Line.CalculateY(0.5 * (Left + Right)) : Line.StartPoint.Y;
    Heights.push_back({{Y, 0.0}, static_cast<int>(Heights.size())});
  }
  SortSegmentEnds(Heights);
  std::vector<int> Result;
  Result.reserve(Lines.size());
  for (const TSegmentEnd& Height : Heights) Result.push_back(Height.Id);
  return Result;
}

/// A sweep over `Lines`. The segments are numbered from low to high: what stands side by side then
/// lies side by side in memory too.
void SweepInOrder(const std::vector<TVLine2D>& Lines, const std::vector<bool>& Stands, double Reach,
                  const TOrderSearch::TVisitor& Visit) {
  const std::vector<int> Numbers = FromLowToHigh(Lines);
  std::vector<TVLine2D> Sorted;
  std::vector<bool> SortedStands;
  Sorted.reserve(Lines.size());
  SortedStands.reserve(Lines.size());
  for (const int I : Numbers) {
    Sorted.push_back(Lines[static_cast<std::size_t>(I)]);
    SortedStands.push_back(Stands[static_cast<std::size_t>(I)]);
  }
  TOrderSweep(Sorted, SortedStands, Reach, [&](int A, int B) {
    Visit(Numbers[static_cast<std::size_t>(A)], Numbers[static_cast<std::size_t>(B)]);
  }).Run();
}

void TOrderSearch::VisitPairs(const std::vector<TVLine2D>& Lines, double Reach,
                              const TVisitor& Visit) {
  if (Lines.empty()) return;
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
  SweepInOrder(First, Stands, Reach, Visit);
  const std::size_t Left = SteepFirst ? Lines.size() - SteepCount : SteepCount;
  if (Left == 0) return;
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    Stands[I] = IsSteep[I] != SteepFirst && Second[I].StartPoint.X < Second[I].EndPoint.X;
  }
  SweepInOrder(Second, Stands, Reach, Visit);
}

}  // namespace tarnalgo
