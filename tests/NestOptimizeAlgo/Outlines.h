#pragma once  // tests/NestOptimizeAlgo/Outlines.h

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "tests/support/Generate.h"
#include "tests/support/GridGeometry.h"

namespace tarnalgo::test {

/// `Count` points counter-clockwise along that share of a circle about the origin, from (`R`, 0).
inline std::vector<TPoint2D> Circle(int Count, double R, double Share) {
  std::vector<TPoint2D> Points;
  for (int I = 0; I < Count; ++I) {
    Points.push_back(TPoint2D(R, 0.0).RotateBy(kFullTurn * Share * I / Count));
  }
  return Points;
}

/// A closed counter-clockwise outline on a grid, star-shaped but for the rounding to it, without
/// repeats in a row.
inline std::vector<TPoint2D> NoisyOutline(std::mt19937& Random, int Count) {
  const double Noise = RandomDouble(Random, 0.0, 0.6);
  std::vector<TPoint2D> Points;
  for (const TPoint2D& P : Circle(Count, 60.0, 1.0)) {
    const TPoint2D OnGrid = (P * (1.0 + Noise * RandomDouble(Random, -1.0, 1.0))).RoundTo(0);
    if (Points.empty() || !(OnGrid == Points.back())) Points.push_back(OnGrid);
  }
  if (!(Points.front() == Points.back())) Points.push_back(Points.front());
  return Points;
}

/// The greatest distance of a point from the polyline.
inline double FarthestFrom(const std::vector<TPoint2D>& Polyline,
                           const std::vector<TPoint2D>& Points) {
  double Farthest = 0.0;
  for (const TPoint2D& P : Points) {
    double Nearest = kStartOfMinimum;
    for (std::size_t I = 1; I < Polyline.size(); ++I) {
      const TPoint2D Way = Polyline[I] - Polyline[I - 1];
      const double Square = Way.DotMul(Way);
      const double T = Square > 0.0 ? Way.DotMul(P - Polyline[I - 1]) / Square : 0.0;
      const TPoint2D Foot = Polyline[I - 1] + Way * std::clamp(T, 0.0, 1.0);
      Nearest = std::min(Nearest, P.DistanceTo(Foot));
    }
    Farthest = std::max(Farthest, Nearest);
  }
  return Farthest;
}

/// The closed grid outline has an area, its edges a length, and they meet only where one follows
/// the other, in one point.
inline bool IsSimple(const std::vector<TPoint2D>& Outline) {
  const std::vector<TGridSegment> Edges = GridEdges(Outline);
  if (Edges.size() < 3) return false;
  for (std::size_t I = 0; I < Edges.size(); ++I) {
    for (std::size_t J = I + 1; J < Edges.size(); ++J) {
      const TGridMeeting Meeting = Meet(Edges[I], Edges[J]);
      const bool IsNext = J == I + 1 || (I == 0 && J + 1 == Edges.size());
      if (Meeting.Stretch || (Meeting.Place && !IsNext)) return false;
    }
  }
  return true;
}

/// −1 outside the closed grid outline, 0 on it, 1 inside.
inline int SideOf(const std::vector<TPoint2D>& Outline, const TPoint2D& Point) {
  const TGridPoint P(Point);
  bool IsIn = false;
  for (const TGridSegment& Edge : GridEdges(Outline)) {
    if (IsOnSegment(P, Edge)) return 0;
    const bool IsUp = Edge.A.Y <= P.Y && P.Y < Edge.B.Y;
    const bool IsDown = Edge.B.Y <= P.Y && P.Y < Edge.A.Y;
    const auto Side = Turn(Edge.A, Edge.B, P);
    if ((IsUp && Side > 0) || (IsDown && Side < 0)) IsIn = !IsIn;
  }
  return IsIn ? 1 : -1;
}

/// The region of one simple grid outline holds that of the other: no vertex lies on the wrong side,
/// no two edges cross inside both.
inline bool Holds(const std::vector<TPoint2D>& Outer, const std::vector<TPoint2D>& Inner) {
  const auto IsOut = [&](const TPoint2D& P) { return SideOf(Outer, P) < 0; };
  const auto IsDeep = [&](const TPoint2D& P) { return SideOf(Inner, P) > 0; };
  if (std::any_of(Inner.begin(), Inner.end(), IsOut)) return false;
  if (std::any_of(Outer.begin(), Outer.end(), IsDeep)) return false;
  for (const TGridSegment& A : GridEdges(Outer)) {
    for (const TGridSegment& B : GridEdges(Inner)) {
      const auto IsCut = [](const TGridSegment& S, const TGridSegment& T) {
        const auto First = Turn(S.A, S.B, T.A);
        const auto Second = Turn(S.A, S.B, T.B);
        return (First < 0 && Second > 0) || (First > 0 && Second < 0);
      };
      if (IsCut(A, B) && IsCut(B, A)) return false;
    }
  }
  return true;
}

}  // namespace tarnalgo::test
