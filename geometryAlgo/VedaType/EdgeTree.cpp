#include "geometryAlgo/VedaType/EdgeTree.h"

#include <cmath>

#include "geometryAlgo/VedaType/Point.h"

namespace tarnalgo {

namespace {

/// Share of the total length that must run along or across a direction to make boxes follow it.
constexpr double kClearShare = 0.7;
/// Edges of a long course that are asked for their direction: enough to tell a clear one.
constexpr std::size_t kSampledEdges = 256;
/// Sine of the angle up to which upright boxes are as good as turned ones.
constexpr double kUprightSine = 0.01;
/// Rounding of a turned coordinate, relative to the sum of both: three roundings of 2^-53, and the
/// square root of 2 by which turning may make the sum smaller.
constexpr double kTurnRounding = 5e-16;

}  // namespace

TEdgeTree::TEdgeTree(const std::vector<TPoint2D>& Points, const TPoint2D& Axis)
    : FPoints(Points), FAxis(Axis), FIsPlain(HasPlainEdges()) {
  const int PointCount = static_cast<int>(Points.size());
  FEdgeCount = PointCount > 1 ? PointCount - 1 : PointCount;
  if (FEdgeCount == 0) return;
  const bool IsOnePlace = std::all_of(Points.begin(), Points.end(),
                                      [&](const TPoint2D& P) { return P == Points.front(); });
  FPlaceEdge = IsOnePlace ? 0 : -1;
  const std::size_t LeafCount = (static_cast<std::size_t>(FEdgeCount) - 1) / kLeafEdges + 1;
  FLevels.emplace_back(LeafCount);
  for (int Leaf = 0; Leaf < NodeCount(0); ++Leaf) {
    TBox Box;
    for (int I = Leaf * kLeafEdges; I < EndOfEdges(Leaf); ++I) Box.Expand(EdgeBox(I));
    FLevels[0][static_cast<std::size_t>(Leaf)] = Box;
  }
  while (FLevels.back().size() > 1) {
    const std::vector<TBox>& Lower = FLevels.back();
    const std::size_t UpperCount = (Lower.size() - 1) / kBranches + 1;
    std::vector<TBox> Upper(UpperCount);
    for (std::size_t I = 0; I < Lower.size(); ++I) Upper[I / kBranches].Expand(Lower[I]);
    FLevels.push_back(std::move(Upper));
  }
}

TPoint2D TEdgeTree::HatchAxis(const std::vector<TPoint2D>& Points) {
  // Directions as complex numbers to the fourth power: the four directions of a cross become one.
  TPoint2D Sum;
  double Total = 0.0;
  // Odd, so that strokes and the steps between them are both met.
  const std::size_t Stride = Points.size() / kSampledEdges | 1;
  for (std::size_t I = 1; I < Points.size(); I += Stride) {
    const TPoint2D V = Points[I] - Points[I - 1];
    const double Length = V.Mag();
    if (!(Length > 0.0) || !std::isfinite(Length)) continue;
    const TPoint2D U = V / Length;
    const TPoint2D Squared(U.X * U.X - U.Y * U.Y, 2.0 * U.X * U.Y);
    Sum =
        Sum + TPoint2D(Squared.X * Squared.X - Squared.Y * Squared.Y, 2.0 * Squared.X * Squared.Y) *
                  Length;
    Total += Length;
  }
  if (!(Sum.Mag() > kClearShare * Total)) return DcsX;
  const double Angle = std::atan2(Sum.Y, Sum.X) / 4.0;
  const TPoint2D Axis(std::cos(Angle), std::sin(Angle));
  return std::abs(Axis.Y) > kUprightSine ? Axis : DcsX;
}

bool TEdgeTree::HasPlainEdges() const {
  if (FAxis != DcsX || FPoints.size() < 2) return false;
  for (std::size_t I = 1; I < FPoints.size(); ++I) {
    const TPoint2D V = FPoints[I] - FPoints[I - 1];
    if (V == TPoint2D::FZero || !TPoint2DUtils::IsFinite(V)) return false;
  }
  return true;
}

TVLine2D TEdgeTree::TurnedByAxis(const TVLine2D& Upright) const {
  const auto Turned = [this](const TPoint2D& P) {
    return TPoint2D(FAxis.DotMul(P), FAxis.CrossMul(P));
  };
  return {Turned(Upright.StartPoint), Turned(Upright.EndPoint)};
}

TEdgeTree::TBox TEdgeTree::CarefulBox(int I) const {
  const TVLine2D Upright = Edge(I);
  if (Upright.StartPoint == Upright.EndPoint && I != FPlaceEdge) {
    return {};  // exact: the neighbours have the place as their end
  }
  if (!TPoint2DUtils::IsFinite(Upright.StartPoint) || !TPoint2DUtils::IsFinite(Upright.EndPoint)) {
    return {};
  }
  const auto [P, Q] = TurnedEdge(I);
  const TBox Box{std::min(P.X, Q.X), std::max(P.X, Q.X), std::min(P.Y, Q.Y), std::max(P.Y, Q.Y)};
  if (FAxis == DcsX) return Box;  // exact: nothing was turned
  // Each edge has the slack of its own coordinates: one far away must not make all neighbours.
  const double Slack = kTurnRounding * (std::max(std::abs(Box.Left), std::abs(Box.Right)) +
                                        std::max(std::abs(Box.Bottom), std::abs(Box.Top)));
  return {Box.Left - Slack, Box.Right + Slack, Box.Bottom - Slack, Box.Top + Slack};
}

int TEdgeTree::FirstEdge(int Level, int Index) const {
  for (; Level > 0; --Level) {
    Index *= kBranches;
    while (Node(Level - 1, Index).IsEmpty()) ++Index;
  }
  int I = Index * kLeafEdges;
  while (EdgeBox(I).IsEmpty()) ++I;
  return I;
}

TEdgeTree::TWayLevels TEdgeTree::WaysOfRuns() const {
  TWayLevels Runs;
  for (const std::vector<TBox>& Level : FLevels) Runs.emplace_back(Level.size(), kAllWays);
  for (int Leaf = 0; Leaf < NodeCount(0); ++Leaf) {
    TWays Common = kAllWays;
    for (int I = Leaf * kLeafEdges; I < EndOfEdges(Leaf); ++I) Common &= WaysOf(I);
    Runs[0][static_cast<std::size_t>(Leaf)] = Common;
  }
  for (std::size_t Level = 1; Level < Runs.size(); ++Level) {
    const std::vector<TWays>& Lower = Runs[Level - 1];
    for (std::size_t I = 0; I < Lower.size(); ++I) Runs[Level][I / kBranches] &= Lower[I];
  }
  return Runs;
}

}  // namespace tarnalgo
