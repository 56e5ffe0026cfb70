#pragma once  // fuzz/GridOutline.h

#include <algorithm>
#include <vector>

#include "fuzz/Bytes.h"
#include "tests/NestOptimizeAlgo/Outlines.h"

namespace tarnalgo::fuzz {

/// Points of a grid, any number below `Bound`.
inline std::vector<TPoint2D> GridPoints(TBytes& Bytes, int Bound, int Side) {
  std::vector<TPoint2D> Points;
  for (int Count = Bytes.Below(Bound); Count > 0; --Count) Points.push_back(Bytes.GridPoint(Side));
  return Points;
}

/// Twice the signed area of a closed list.
inline double DoubleArea(const std::vector<TPoint2D>& Ring) {
  double Sum = 0.0;
  for (std::size_t I = 1; I < Ring.size(); ++I) Sum += Ring[I - 1].CrossMul(Ring[I]);
  return Sum;
}

inline bool DoTouch(const test::TGridSegment& S, const test::TGridSegment& T) {
  const auto Parts = [](const test::TGridSegment& A, const test::TGridSegment& B) {
    const auto First = test::Turn(A.A, A.B, B.A);
    const auto Second = test::Turn(A.A, A.B, B.B);
    return (First < 0 && Second > 0) || (First > 0 && Second < 0);
  };
  return test::IsOnSegment(S.A, T) || test::IsOnSegment(S.B, T) || test::IsOnSegment(T.A, S) ||
         test::IsOnSegment(T.B, S) || (Parts(S, T) && Parts(T, S));
}

/// The way from `Old` over `New` meets the edge nowhere but in `Old`, if that is an end of it.
inline bool IsClear(const test::TGridPoint& Old, const test::TGridPoint& New,
                    const test::TGridSegment& Edge) {
  if (Old != Edge.A && Old != Edge.B) return !DoTouch({Old, New}, Edge);
  const test::TGridPoint& Other = Old == Edge.A ? Edge.B : Edge.A;
  return !test::IsOnSegment(New, Edge) && !test::IsOnSegment(Other, {Old, New});
}

/// A simple closed outline stays simple when `P` comes between two neighbours.
inline bool StaysSimple(const std::vector<TPoint2D>& Ring, int Place, const TPoint2D& P) {
  const auto Edges = test::GridEdges(Ring);
  const test::TGridSegment& Split = Edges[static_cast<std::size_t>(Place) - 1];
  const test::TGridPoint New(P);
  if (!IsClear(New, Split.A, {New, Split.B})) return false;
  return std::all_of(Edges.begin(), Edges.end(), [&](const test::TGridSegment& Edge) {
    return Edge == Split || (IsClear(Split.A, New, Edge) && IsClear(Split.B, New, Edge));
  });
}

/// A simple outline, closed and counter-clockwise: a triangle that takes in vertex after vertex,
/// each wherever the bytes say, if it stays simple. Empty when there is no triangle.
inline std::vector<TPoint2D> GridOutline(TBytes& Bytes, int Bound, int Side) {
  std::vector<TPoint2D> Ring{Bytes.GridPoint(Side), Bytes.GridPoint(Side), Bytes.GridPoint(Side)};
  Ring.push_back(Ring.front());
  if (DoubleArea(Ring) == 0.0) return {};
  for (int Count = Bytes.Below(Bound); Count > 0; --Count) {
    const int Place = 1 + Bytes.Below(static_cast<int>(Ring.size()) - 1);
    const TPoint2D P = Bytes.GridPoint(Side);
    if (StaysSimple(Ring, Place, P)) Ring.insert(Ring.begin() + Place, P);
  }
  if (DoubleArea(Ring) < 0.0) std::reverse(Ring.begin(), Ring.end());
  return Ring;
}

}  // namespace tarnalgo::fuzz
