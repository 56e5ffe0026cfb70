#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "geometryAlgo/ShapeApp/ConvexHull.h"
#include "geometryAlgo/ShapeApp/ConvexRing.h"
#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

/// A counter-clockwise ring of corners: edge k runs from corner k to corner k + 1. Behind the last
/// edge stands the point that closes the ring, perhaps within a tolerance only.
class TRing {
 public:
  explicit TRing(std::size_t Capacity) { FSides.reserve(Capacity); }

  /// Adds points in their order, but none that is nearer than `LeastEdge` to the one before.
  template <class TIterator>
  void Add(TIterator First, TIterator Last, double LeastEdge) {
    for (; First != Last; ++First) {
      const TPoint2D Step = *First - FLast;
      FLast = *First;
      if (!FSides.empty() && IsShorter(Step, LeastEdge)) continue;
      FSides.push_back({*First, TPoint2D()});
    }
  }
  /// To be called when all points are there, the closing one last.
  void Close() {
    if (FSides.size() < 2) return;
    FCount = FSides.size() - 1;
    bool TurnsLeft = true;
    int Rounds = 0;
    TPoint2D Last = Edge(FCount - 1);
    for (std::size_t I = 0; I < FCount; ++I) {
      const TPoint2D Here = Edge(I);
      FSides[I].Unit = Here / Here.Mag();
      TurnsLeft = TurnsLeft && Last.CrossMul(Here) >= 0.0;
      Rounds += GoesUp(Here) && !GoesUp(Last);
      Last = Here;
    }
    FIsConvex = TurnsLeft && Rounds == 1 && FSides.front().Corner == FSides.back().Corner;
  }

  std::size_t Count() const { return FCount; }
  std::size_t Next(std::size_t I) const { return I + 1 == FCount ? 0 : I + 1; }
  const TPoint2D& Corner(std::size_t I) const { return FSides[I].Corner; }
  TPoint2D Edge(std::size_t I) const { return FSides[I + 1].Corner - FSides[I].Corner; }
  /// Along the edge; not a number where the edge has no length.
  const TPoint2D& Unit(std::size_t I) const { return FSides[I].Unit; }
  /// The ring closes exactly, never turns right and goes round once.
  bool IsConvex() const { return FIsConvex; }

 private:
  struct TSide {
    TPoint2D Corner;
    TPoint2D Unit;  // of the edge that leaves it
  };

  static bool IsShorter(const TPoint2D& Edge, double Length) {
    if (Edge.DotMul(Edge) > 2.0 * Length * Length) return false;  // plainly not
    return Edge.Mag() < Length;
  }
  static bool GoesUp(const TPoint2D& Edge) {
    return Edge.Y > 0.0 || (Edge.Y == 0.0 && Edge.X > 0.0);
  }

  std::vector<TSide> FSides;
  TPoint2D FLast;
  std::size_t FCount = 0;
  bool FIsConvex = false;
};

/// The walk of four calipers round the ring, the one that turns least first.
class TBoxWalk {
 public:
  /// Where the extents begin; a larger ring may find no support.
  static constexpr double kStartOfExtent = 2147483647.0;

  explicit TBoxWalk(const TRing& Ring)
      : FRing(Ring), FReach(ReachOfAll()), FIsTried(Ring.Count()) {}

  bool IsDone() const { return FPass > FRing.Count(); }
  /// The smallest rectangle so far, the first of equals.
  const TFramedBox& Best() const { return FBest; }

  void Run(std::size_t Passes) {
    std::size_t Base = FBase;  // copies that stay in registers
    TReach Reach = FReach;
    for (const std::size_t End = std::min(FPass + Passes, FRing.Count() + 1); FPass < End;
         ++FPass) {
      FIsTried[Base] = 1;
      const double Area = Reach.MaxV * (Reach.MaxU - Reach.MinU);
      if (Area < FBest.Area) {
        FBest = {FRing.Corner(Base), FRing.Unit(Base), Reach.MinU, Reach.MaxU, Reach.MaxV, Area};
      }
      // The support that wins becomes the base; the end of the old base edge takes its role.
      const TCaliper Winner = LeastTurned(Base, Reach.At);
      const auto [Right, Top, Left] = Reach.At;
      const std::size_t Next = FRing.Next(Base);
      TSupports Turned = Reach.At;
      switch (Winner) {
        case cBase:
          Base = Next;
          break;
        case cMaxU:
          Base = Right;
          Turned = {Top, Left, Next};
          break;
        case cMaxV:
          Base = Top;
          Turned = {Left, Next, Right};
          break;
        case cMinU:
          Base = Left;
          Turned = {Next, Right, Top};
          break;
        case cNone:
          break;
      }
      Reach = ReachTurned(Base, Turned);
      if (Reach.IsPlain) continue;
      Reach = ReachInOrder(Base, {Winner == cMaxU ? Next : Right, Winner == cMaxV ? Next : Top,
                                  Winner == cMinU ? Next : Left});
    }
    FBase = Base;
    FReach = Reach;
  }

  /// No support has been left behind: the ring goes the caliper's way before it and not after it.
  bool IsOnTrack() const {
    const TPoint2D& U = FRing.Unit(FBase);
    const auto IsExtreme = [&](std::size_t I, const TPoint2D& Way) {
      const std::size_t Previous = I == 0 ? FRing.Count() - 1 : I - 1;
      return Way.DotMul(FRing.Unit(I)) < kOffTrack && Way.DotMul(FRing.Unit(Previous)) > -kOffTrack;
    };
    return IsExtreme(FReach.At.MaxU, U) && IsExtreme(FReach.At.MaxV, U.RotateCcw90()) &&
           IsExtreme(FReach.At.MinU, -U);
  }
  /// The edges that have not been the base, `Most` of them at most.
  std::vector<std::size_t> Untried(std::size_t Most) const {
    std::vector<std::size_t> Edges;
    for (std::size_t I = 0; I < FIsTried.size() && Edges.size() < Most; ++I) {
      if (FIsTried[I] == 0) Edges.push_back(I);
    }
    return Edges;
  }

 private:
  // The roles of the supports; the base edge's own end comes as a fourth caliper.
  enum TCaliper { cBase, cMaxU, cMaxV, cMinU, cNone };
  static constexpr double kSureCosine = 1e-14;  // several roundings of a cosine
  static constexpr double kOffTrack = 1e-9;     // a sine

  /// Corners in the order of their roles: the farthest along the base edge, across it, against it.
  struct TSupports {
    std::size_t MaxU = 0;
    std::size_t MaxV = 0;
    std::size_t MinU = 0;
  };

  struct TReach {
    double MaxU = -kStartOfExtent;
    double MaxV = -kStartOfExtent;
    double MinU = kStartOfExtent;
    TSupports At;
    bool IsPlain = true;
  };

  /// Along the base edge and across it, from where it begins.
  TPoint2D Place(std::size_t Base, std::size_t I) const {
    const TPoint2D Offset = FRing.Corner(I) - FRing.Corner(Base);
    return {FRing.Unit(Base).DotMul(Offset), FRing.Unit(Base).CrossMul(Offset)};
  }

  /// A corner takes over an extent by more than the tolerance only.
  void Take(std::size_t Base, std::size_t I, TReach& Reach) const {
    const TPoint2D At = Place(Base, I);
    if (At.X - Reach.MaxU > kLinearTolerance) {
      Reach.MaxU = At.X;
      Reach.At.MaxU = I;
    }
    if (At.X - Reach.MinU < -kLinearTolerance) {
      Reach.MinU = At.X;
      Reach.At.MinU = I;
    }
    if (At.Y - Reach.MaxV > kLinearTolerance) {
      Reach.MaxV = At.Y;
      Reach.At.MaxV = I;
    }
  }

  TReach ReachOfAll() const {
    TReach Reach;
    for (std::size_t I = 0; I < FRing.Count(); ++I) Take(0, I, Reach);
    return Reach;
  }

  TReach ReachInOrder(std::size_t Base, TSupports Table) const {
    TReach Reach;
    Reach.At = Table;
    for (const std::size_t I : {Table.MaxU, Table.MaxV, Table.MinU}) Take(Base, I, Reach);
    return Reach;
  }

  /// The corners in the roles to which the turn brings them; plain when each is so by more than the
  /// tolerance, whatever the order in which they are taken.
  TReach ReachTurned(std::size_t Base, TSupports Turned) const {
    const TPoint2D Right = Place(Base, Turned.MaxU);
    const TPoint2D Top = Place(Base, Turned.MaxV);
    const TPoint2D Left = Place(Base, Turned.MinU);
    const bool IsPlain = Right.X - Top.X > kLinearTolerance && Top.X - Left.X > kLinearTolerance &&
                         Top.Y - Right.Y > kLinearTolerance && Top.Y - Left.Y > kLinearTolerance &&
                         Right.X < kStartOfExtent && Left.X > -kStartOfExtent && Top.Y > 0.0;
    return {Right.X, Top.Y, Left.X, Turned, IsPlain};
  }

  /// Ties: the base edge first, then the roles in the order of the table; exact cosines.
  TCaliper LeastTurned(std::size_t Base, TSupports At) const {
    // Most often products of unit vectors tell; quotients are for what is nearly equal.
    const TPoint2D& U = FRing.Unit(Base);
    const double OfBase = U.DotMul(FRing.Unit(FRing.Next(Base)));
    const double OfMaxU = U.CrossMul(FRing.Unit(At.MaxU));
    const double OfMaxV = -U.DotMul(FRing.Unit(At.MaxV));
    const double OfMinU = -U.CrossMul(FRing.Unit(At.MinU));
    const double Near = std::max(std::max(OfBase, OfMaxU), std::max(OfMaxV, OfMinU)) - kSureCosine;
    const int Candidates =
        (OfBase >= Near) + (OfMaxU >= Near) + (OfMaxV >= Near) + (OfMinU >= Near);
    if (Candidates != 1) return LeastTurnedByQuotients(Base, At, Near);
    return OfBase >= Near ? cBase : OfMaxU >= Near ? cMaxU : OfMaxV >= Near ? cMaxV : cMinU;
  }

  /// The same among the calipers whose cosines may be above `Near`.
  TCaliper LeastTurnedByQuotients(std::size_t Base, TSupports At, double Near) const {
    const TPoint2D U = FRing.Unit(Base);
    const double UnitLength = U.Mag();  // one but for rounding, which decides ties
    TCaliper Winner = cNone;
    double Greatest = -kStartOfExtent;
    const auto Try = [&](TCaliper Caliper, const TPoint2D& Direction, std::size_t Edge) {
      if (Direction.DotMul(FRing.Unit(Edge)) < Near) return;
      const TPoint2D Leaving = FRing.Edge(Edge);
      const double Cosine = Direction.DotMul(Leaving) / (UnitLength * Leaving.Mag());
      if (!(Cosine > Greatest)) return;
      Greatest = Cosine;
      Winner = Caliper;
    };
    Try(cBase, U, FRing.Next(Base));
    Try(cMaxU, U.RotateCcw90(), At.MaxU);
    Try(cMaxV, -U, At.MaxV);
    Try(cMinU, U.RotateCw90(), At.MinU);
    return Winner;
  }

  const TRing& FRing;
  TFramedBox FBest;
  std::size_t FPass = 0;
  std::size_t FBase = 0;
  TReach FReach;
  std::vector<int> FIsTried;  // no chars: a store of one could be a store to anything
};

/// The step at which a support comes to rest that moves on from `Step`, up to `Last`, while the
/// edge ahead of it gains. Steps count corners from corner 0 on, over the end of the ring.
template <class TGains>
std::size_t Followed(const TRing& Ring, std::size_t Step, std::size_t Last, TGains Gains) {
  constexpr std::size_t kStride = 4;
  for (;;) {
    const std::size_t Corner = Step < Ring.Count() ? Step : Step - Ring.Count();
    if (Corner + kStride < Ring.Count() && Step + kStride <= Last) {
      // Several edges at once: where a support rests cannot be foreseen, so a branch would stall.
      std::size_t Gained = 0;
      std::size_t Goes = 1;
      for (std::size_t I = 0; I < kStride; ++I) {
        Goes &= static_cast<std::size_t>(Gains(Ring.Edge(Corner + I)));
        Gained += Goes;
      }
      Step += Gained;
      if (Gained < kStride) return Step;
    } else {
      if (Step >= Last || !Gains(Ring.Edge(Corner))) return Step;
      ++Step;
    }
  }
}

/// The smallest rectangle with a side on an edge, by exact signs: each support moves on while the
/// edge that leaves it still goes its way.
TFramedBox SmallestByExactSigns(const TRing& Ring) {
  const std::size_t Count = Ring.Count();
  const auto Corner = [&](std::size_t Step) {
    return Ring.Corner(Step < Count ? Step : Step - Count);
  };
  std::size_t Right = 0;
  std::size_t Top = 0;
  std::size_t Left = 0;
  double Area = kStartOfMinimum;
  std::array<std::size_t, 4> Best{};
  for (std::size_t Base = 0; Base < Count; ++Base) {
    const TPoint2D Edge = Ring.Edge(Base);
    const double Squared = Edge.DotMul(Edge);
    if (!(Squared > 0.0)) continue;
    const std::size_t Last = Base + Count;
    Right = Followed(Ring, std::max(Right, Base + 1), Last,
                     [&](const TPoint2D& E) { return Edge.DotMul(E) > 0.0; });
    Top = Followed(Ring, std::max(Top, Right), Last,
                   [&](const TPoint2D& E) { return Edge.CrossMul(E) > 0.0; });
    Left = Followed(Ring, std::max(Left, Top), Last,
                    [&](const TPoint2D& E) { return Edge.DotMul(E) < 0.0; });
    const double Width = Edge.DotMul(Corner(Right) - Corner(Left));
    const double Height = Edge.CrossMul(Corner(Top) - Corner(Base));
    if (!(Width * Height < Area * Squared)) continue;
    Area = Width * Height / Squared;
    Best = {Base, Right, Top, Left};
  }
  if (!(Area < kStartOfMinimum)) return {};
  TFramedBox Box;
  Box.Origin = Corner(Best[0]);
  Box.U = Ring.Edge(Best[0]).Normal();
  Box.MaxU = Box.U.DotMul(Corner(Best[1]) - Box.Origin);
  Box.MaxV = Box.V().DotMul(Corner(Best[2]) - Box.Origin);
  Box.MinU = Box.U.DotMul(Corner(Best[3]) - Box.Origin);
  Box.Area = Box.MaxV * (Box.MaxU - Box.MinU);
  return Box;
}

/// Area of the rectangle on an edge that holds every corner.
double AreaOn(const TRing& Ring, std::size_t Base) {
  double MaxU = 0.0;
  double MinU = 0.0;
  double MaxV = 0.0;
  for (std::size_t I = 0; I < Ring.Count(); ++I) {
    const TPoint2D Offset = Ring.Corner(I) - Ring.Corner(Base);
    const double A = Ring.Unit(Base).DotMul(Offset);
    MaxU = std::max(MaxU, A);
    MinU = std::min(MinU, A);
    MaxV = std::max(MaxV, Ring.Unit(Base).CrossMul(Offset));
  }
  return MaxV * (MaxU - MinU);
}

/// The walk's rectangle, unless it misses a point or a smaller one is found.
class TBoxSearch {
 public:
  TBoxSearch(const TRing& Ring, const std::vector<TPoint2D>& Points, double Size)
      : FRing(Ring), FPoints(Points), FSize(Size), FWalk(Ring) {}

  TFramedBox Run() {
    WalkWhileOpen();
    const TFramedBox& Walked = FWalk.Best();
    FIsSound = FWalk.IsDone() && Walked.Exists() && Walked.MaxV >= 0.0 && HoldsAll(Walked);
    if (FIsSound && IsLeast(Walked)) return Walked;
    if (!FFound) FFound = SmallestByExactSigns(FRing);
    if (IsNoGain(*FFound)) return Walked;
    if (FRing.IsConvex() && HoldsAll(*FFound)) return *FFound;
    // A ring that is not convex, by rounding or where it closes: a support may rest on a dent, and
    // what it measures then is less than what holds all.
    const std::vector<TPoint2D> Hull = StrictHull(FPoints);
    TRing Closed(Hull.size() + 1);
    Closed.Add(Hull.begin(), Hull.end(), 0.0);
    Closed.Add(Hull.begin(), Hull.begin() + 1, 0.0);
    Closed.Close();
    const TFramedBox OfHull = SmallestByExactSigns(Closed);
    return IsNoGain(OfHull) ? Walked : OfHull;
  }

 private:
  static constexpr std::size_t kStages = 32;
  static constexpr std::size_t kFew = 8;
  // Share of the squared size: about thinner boxes rounding weighs more than a gain that counts.
  static constexpr double kNeedle = 1e-5;

  /// Walks on until it is over or has gone astray, so that its rectangle is too small to hold all.
  void WalkWhileOpen() {
    const std::size_t Stage = FRing.Count() / kStages + kStages;
    while (!FWalk.IsDone()) {
      FWalk.Run(Stage);
      if (!FRing.IsConvex()) continue;
      if (!FFound && !FWalk.IsOnTrack()) FFound = SmallestByExactSigns(FRing);
      // The slack on four sides, none longer than the size, is what it can make good.
      if (FFound && FWalk.Best().Area < FFound->Area - 5.0 * kBoxSlack * FSize * FSize) return;
    }
  }

  bool HoldsAll(const TFramedBox& Box) const {
    const double Slack = kBoxSlack * FSize;
    return std::all_of(FPoints.begin(), FPoints.end(), [&](const TPoint2D& P) {
      const TPoint2D Offset = P - Box.Origin;
      const double A = Box.U.DotMul(Offset);
      const double B = Box.V().DotMul(Offset);
      return A >= Box.MinU - Slack && A <= Box.MaxU + Slack && B >= -Slack && B <= Box.MaxV + Slack;
    });
  }

  /// No rectangle is smaller, as can be seen without a second way round. The supports are corners,
  /// so what the walk measured on an edge is at most what holds all.
  bool IsLeast(const TFramedBox& Walked) const {
    if (!FRing.IsConvex() || FSize > TBoxWalk::kStartOfExtent) return false;
    if (!(Walked.Area > kNeedle * FSize * FSize)) return false;
    const std::vector<std::size_t> Untried = FWalk.Untried(kFew);
    return Untried.size() < kFew &&
           std::none_of(Untried.begin(), Untried.end(), [&](std::size_t Edge) {
             return AreaOn(FRing, Edge) < Walked.Area * (1.0 - kBoxGain);
           });
  }

  bool IsNoGain(const TFramedBox& Other) const {
    return FIsSound && !(Other.Area < FWalk.Best().Area * (1.0 - kBoxGain));
  }

  const TRing& FRing;
  const std::vector<TPoint2D>& FPoints;
  double FSize;
  TBoxWalk FWalk;
  bool FIsSound = false;
  std::optional<TFramedBox> FFound;  // by exact signs
};

/// Diagonal of the box around the points; not a number unless all are finite.
double SizeOf(const std::vector<TPoint2D>& Points) {
  double Left = kStartOfMinimum;
  double Right = -kStartOfMinimum;
  double Bottom = kStartOfMinimum;
  double Top = -kStartOfMinimum;
  for (const TPoint2D& P : Points) {
    if (!std::isfinite(P.X) || !std::isfinite(P.Y)) return std::nan("");
    Left = std::min(Left, P.X);
    Right = std::max(Right, P.X);
    Bottom = std::min(Bottom, P.Y);
    Top = std::max(Top, P.Y);
  }
  return std::hypot(Right - Left, Top - Bottom);
}

/// The ring of a polygon, counter-clockwise; empty for fewer than three corners.
TRing RingOf(const TVPolyline2D& Polygon) {
  const std::vector<TPoint2D>& Points = Polygon.Points();
  const std::size_t Repeats = Polygon.IsClosed() ? 0 : 1;
  TRing Ring(Points.size() + Repeats);
  if (Points.size() + Repeats < 4) return Ring;
  const auto Closing = Points.begin() + static_cast<std::ptrdiff_t>(Repeats);
  if (Polygon.IsClockwise()) {
    Ring.Add(Points.begin(), Closing, kLeastEdge);
    Ring.Add(Points.rbegin(), Points.rend(), kLeastEdge);
  } else {
    Ring.Add(Points.begin(), Points.end(), kLeastEdge);
    Ring.Add(Points.begin(), Closing, kLeastEdge);
  }
  Ring.Close();
  return Ring;
}

}  // namespace

double TPolygonBasicAlgo::ConvexMABB(const TVPolyline2D& ConvexPoly, TVPoint2DList& MABB) {
  const double Size = SizeOf(ConvexPoly.Points());
  TFramedBox Box;
  if (!std::isnan(Size)) {
    const TRing Ring = RingOf(ConvexPoly);
    if (Ring.Count() > 0) Box = TBoxSearch(Ring, ConvexPoly.Points(), Size).Run();
  }
  if (!Box.Exists()) {
    MABB.Clear();
    return 0.0;
  }
  MABB.Assign(std::vector<TPoint2D>{Box.Corner(Box.MinU, 0.0), Box.Corner(Box.MaxU, 0.0),
                                    Box.Corner(Box.MaxU, Box.MaxV),
                                    Box.Corner(Box.MinU, Box.MaxV)});
  return Box.Area;
}

double TPolygonBasicAlgo::SimpleMABB(const TVPolyline2D& SimplePoly, TVPoint2DList& MABB) {
  return ConvexMABB(ClosedStrictHull(SimplePoly), MABB);
}

double TPolygonBasicAlgo::PointSetMABB(const TVPolyline2D& Points, TVPoint2DList& MABB) {
  return ConvexMABB(TConvexHullCalculator::CalcConvexHull(Points), MABB);
}

}  // namespace tarnalgo
