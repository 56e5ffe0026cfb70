#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "geometryAlgo/ShapeApp/ConvexHull.h"
#include "geometryAlgo/ShapeApp/ConvexRing.h"
#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"
#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

/// A counter-clockwise ring of corners: edge k runs from corner k to the next one round the ring.
struct TRing {
  /// From the corners and a last point that repeats the first, perhaps within a tolerance only.
  explicit TRing(std::vector<TPoint2D> Closed) : Corners(std::move(Closed)) {
    Edges.reserve(Corners.size());
    for (std::size_t I = 1; I < Corners.size(); ++I) Edges.push_back(Corners[I] - Corners[I - 1]);
    if (!Corners.empty()) Corners.pop_back();
  }
  std::size_t Count() const { return Corners.size(); }
  std::size_t Next(std::size_t I) const { return I + 1 == Corners.size() ? 0 : I + 1; }

  std::vector<TPoint2D> Corners;
  std::vector<TPoint2D> Edges;
};

/// The walk of four calipers round the ring, the one that turns least first.
class TBoxWalk {
 public:
  explicit TBoxWalk(const TRing& Ring) : FRing(Ring) {
    FLengths.reserve(Ring.Count());
    FReciprocals.reserve(Ring.Count());
    for (const TPoint2D& Edge : Ring.Edges) {
      FLengths.push_back(Edge.Mag());
      FReciprocals.push_back(1.0 / FLengths.back());
    }
  }

  TFramedBox Run() {
    TakeBase(0);
    for (std::size_t I = 0; I < FRing.Count(); ++I) Project(I);
    TFramedBox Best;
    for (std::size_t Pass = 0; Pass <= FRing.Count(); ++Pass) {
      const double Area = FMaxV * (FMaxU - FMinU);
      if (Area < Best.Area) Best = {FRing.Corners[FBase], FU, FMinU, FMaxU, FMaxV, Area};
      Advance(LeastTurned());
    }
    return Best;
  }

 private:
  // The roles in the table of supports; the base edge's own end comes as a fourth caliper.
  enum TCaliper { cMaxU, cMaxV, cMinU, cBase, cNone };
  static constexpr double kSureCosine = 1e-14;  // several roundings of a cosine
  static constexpr double kStartOfExtent = 2147483647.0;

  void TakeBase(std::size_t Edge) {
    FBase = Edge;
    FU = FRing.Edges[Edge] / FLengths[Edge];
    FMaxU = -kStartOfExtent;
    FMaxV = -kStartOfExtent;
    FMinU = kStartOfExtent;
  }

  /// A corner takes over an extent by more than the tolerance only.
  void Project(std::size_t I) {
    const TPoint2D Offset = FRing.Corners[I] - FRing.Corners[FBase];
    const double A = FU.DotMul(Offset);
    const double B = FU.RotateCcw90().DotMul(Offset);
    if (A - FMaxU > kLinearTolerance) {
      FMaxU = A;
      FSupports[cMaxU] = I;
    }
    if (A - FMinU < -kLinearTolerance) {
      FMinU = A;
      FSupports[cMinU] = I;
    }
    if (B - FMaxV > kLinearTolerance) {
      FMaxV = B;
      FSupports[cMaxV] = I;
    }
  }

  /// Direction and edge of a caliper.
  struct TCandidate {
    TCaliper Caliper;
    TPoint2D Direction;
    std::size_t Edge;
  };

  /// Ties: the base edge first, then the roles in the order of the table; exact cosines.
  TCaliper LeastTurned() const {
    const TCandidate Candidates[] = {{cBase, FU, FRing.Next(FBase)},
                                     {cMaxU, FU.RotateCcw90(), FSupports[cMaxU]},
                                     {cMaxV, -FU, FSupports[cMaxV]},
                                     {cMinU, FU.RotateCw90(), FSupports[cMinU]}};
    // Most often products with reciprocal lengths tell; quotients are for what is nearly equal.
    double Greatest = -kStartOfExtent;
    double Second = -kStartOfExtent;
    TCaliper Winner = cNone;
    for (const TCandidate& C : Candidates) {
      const double Cosine = C.Direction.DotMul(FRing.Edges[C.Edge]) * FReciprocals[C.Edge];
      Second = std::max(Second, std::min(Greatest, Cosine));
      if (!(Cosine > Greatest)) continue;
      Greatest = Cosine;
      Winner = C.Caliper;
    }
    if (Greatest - Second > kSureCosine) return Winner;
    return LeastTurned(Candidates);
  }

  TCaliper LeastTurned(std::span<const TCandidate> Candidates) const {
    const double UnitLength = FU.Mag();  // one but for rounding, which decides ties
    TCaliper Winner = cNone;
    double Greatest = -kStartOfExtent;
    for (const TCandidate& C : Candidates) {
      const double Length = UnitLength * FLengths[C.Edge];
      const double Cosine = C.Direction.DotMul(FRing.Edges[C.Edge]) / Length;
      if (!(Cosine > Greatest)) continue;
      Greatest = Cosine;
      Winner = C.Caliper;
    }
    return Winner;
  }

  /// The support that won becomes the base; the end of the old base edge takes its role.
  void Advance(TCaliper Winner) {
    if (Winner == cNone) return;
    std::size_t Base = FRing.Next(FBase);
    if (Winner != cBase) std::swap(Base, FSupports[Winner]);
    TakeBase(Base);
    for (const std::size_t Support : std::array(FSupports)) Project(Support);
  }

  const TRing& FRing;
  std::vector<double> FLengths;
  std::vector<double> FReciprocals;
  std::size_t FBase = 0;
  TPoint2D FU;
  double FMaxU = 0.0;
  double FMaxV = 0.0;
  double FMinU = 0.0;
  std::array<std::size_t, 3> FSupports{};
};

/// The smallest rectangle with a side on an edge, by exact signs: each support moves on while the
/// edge that leaves it still goes its way.
TFramedBox SmallestByExactSigns(const TRing& Ring) {
  const std::size_t Count = Ring.Count();
  std::size_t Right = 0;
  std::size_t Top = 0;
  std::size_t Left = 0;
  std::size_t RightSteps = 0;  // counted on from corner 0, so that each stops after its round
  std::size_t TopSteps = 0;
  std::size_t LeftSteps = 0;
  const auto Follow = [&Ring](std::size_t& Corner, std::size_t& Steps, std::size_t Last,
                              auto Gains) {
    while (Steps < Last && Gains(Ring.Edges[Corner])) {
      Corner = Ring.Next(Corner);
      ++Steps;
    }
  };
  const auto CatchUp = [](std::size_t& Corner, std::size_t& Steps, std::size_t AheadCorner,
                          std::size_t AheadSteps) {
    if (Steps >= AheadSteps) return;
    Steps = AheadSteps;
    Corner = AheadCorner;
  };
  double Area = kStartOfMinimum;
  std::array<std::size_t, 4> Best{};
  for (std::size_t Base = 0; Base < Count; ++Base) {
    const TPoint2D Edge = Ring.Edges[Base];
    const double Squared = Edge.DotMul(Edge);
    if (!(Squared > 0.0)) continue;
    const std::size_t Last = Base + Count;
    CatchUp(Right, RightSteps, Ring.Next(Base), Base + 1);
    Follow(Right, RightSteps, Last, [&](const TPoint2D& E) { return Edge.DotMul(E) > 0.0; });
    CatchUp(Top, TopSteps, Right, RightSteps);
    Follow(Top, TopSteps, Last, [&](const TPoint2D& E) { return Edge.CrossMul(E) > 0.0; });
    CatchUp(Left, LeftSteps, Top, TopSteps);
    Follow(Left, LeftSteps, Last, [&](const TPoint2D& E) { return Edge.DotMul(E) < 0.0; });
    const double Width = Edge.DotMul(Ring.Corners[Right] - Ring.Corners[Left]);
    const double Height = Edge.CrossMul(Ring.Corners[Top] - Ring.Corners[Base]);
    if (!(Width * Height < Area * Squared)) continue;
    Area = Width * Height / Squared;
    Best = {Base, Right, Top, Left};
  }
  if (!(Area < kStartOfMinimum)) return {};
  TFramedBox Box;
  Box.Origin = Ring.Corners[Best[0]];
  Box.U = Ring.Edges[Best[0]].Normal();
  Box.MaxU = Box.U.DotMul(Ring.Corners[Best[1]] - Box.Origin);
  Box.MaxV = Box.V().DotMul(Ring.Corners[Best[2]] - Box.Origin);
  Box.MinU = Box.U.DotMul(Ring.Corners[Best[3]] - Box.Origin);
  Box.Area = Box.MaxV * (Box.MaxU - Box.MinU);
  return Box;
}

bool HoldsAll(const TFramedBox& Box, const std::vector<TPoint2D>& Points, double Slack) {
  for (const TPoint2D& P : Points) {
    const TPoint2D Offset = P - Box.Origin;
    const double A = Box.U.DotMul(Offset);
    const double B = Box.V().DotMul(Offset);
    if (!(A >= Box.MinU - Slack && A <= Box.MaxU + Slack && B >= -Slack && B <= Box.MaxV + Slack)) {
      return false;
    }
  }
  return true;
}

/// The walk's rectangle, unless it misses a corner or a smaller one is found.
TFramedBox SmallestBox(const TRing& Ring, double Size) {
  const double Slack = kBoxSlack * Size;
  const TFramedBox Walked = TBoxWalk(Ring).Run();
  const bool IsSound = Walked.Exists() && HoldsAll(Walked, Ring.Corners, Slack);
  const auto IsAnswer = [&](const TFramedBox& Other) {
    return IsSound && !(Other.Area < Walked.Area * (1.0 - kBoxGain));
  };
  const TFramedBox Found = SmallestByExactSigns(Ring);
  if (IsAnswer(Found)) return Walked;
  if (HoldsAll(Found, Ring.Corners, Slack)) return Found;
  // The ring is not convex, by rounding perhaps: a support stopped on a dent.
  std::vector<TPoint2D> Hull = StrictHull(Ring.Corners);
  Hull.push_back(Hull.front());
  const TFramedBox OfHull = SmallestByExactSigns(TRing(std::move(Hull)));
  return IsAnswer(OfHull) ? Walked : OfHull;
}

bool IsShort(const TPoint2D& Edge) {
  if (Edge.DotMul(Edge) > 2.0 * kLeastEdge * kLeastEdge) return false;  // plainly not
  return Edge.Mag() < kLeastEdge;
}

/// The corners closed by a repeat of the first, counter-clockwise, no edge shorter than the least.
std::vector<TPoint2D> CornersOf(const TVPolyline2D& Polygon) {
  TVPolyline2D Ring = Polygon;
  Ring.ConnectHeadTail();
  if (Ring.Count() < 4) return {};
  if (Ring.IsClockwise()) Ring.Reverse();
  const std::vector<TPoint2D>& Points = Ring.Points();
  std::vector<TPoint2D> Corners{Points.front()};
  Corners.reserve(Points.size());
  for (std::size_t I = 1; I < Points.size(); ++I) {
    if (!IsShort(Points[I] - Points[I - 1])) Corners.push_back(Points[I]);
  }
  return Corners;
}

}  // namespace

double TPolygonBasicAlgo::ConvexMABB(const TVPolyline2D& ConvexPoly, TVPoint2DList& MABB) {
  const TVRect2D Around = ConvexPoly.BoundBox();
  std::vector<TPoint2D> Corners = CornersOf(ConvexPoly);
  MABB.Clear();
  if (Corners.size() < 2) return 0.0;
  if (!std::all_of(Corners.begin(), Corners.end(), TPoint2DUtils::IsFinite)) return 0.0;
  const TFramedBox Box =
      SmallestBox(TRing(std::move(Corners)), std::hypot(Around.Width(), Around.Height()));
  if (!Box.Exists()) return 0.0;
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
