#pragma once  // tests/support/GridGeometry.h

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

#include "host/Cadtypes/Point.h"

namespace tarnalgo::test {

/// Exact geometry of segments between points of a small integer grid, in integers: the oracle for
/// everything that finds crossings.
struct TGridPoint {
  std::int64_t X;
  std::int64_t Y;

  explicit TGridPoint(const TPoint2D& P)
      : X(static_cast<std::int64_t>(P.X)), Y(static_cast<std::int64_t>(P.Y)) {}
  friend auto operator<=>(const TGridPoint&, const TGridPoint&) = default;
};

struct TGridSegment {
  TGridPoint A;
  TGridPoint B;

  friend auto operator<=>(const TGridSegment&, const TGridSegment&) = default;
};

inline std::int64_t Turn(const TGridPoint& A, const TGridPoint& B, const TGridPoint& C) {
  return (B.X - A.X) * (C.Y - A.Y) - (B.Y - A.Y) * (C.X - A.X);
}

inline bool IsOnSegment(const TGridPoint& P, const TGridSegment& S) {
  return Turn(S.A, S.B, P) == 0 && P.X >= std::min(S.A.X, S.B.X) && P.X <= std::max(S.A.X, S.B.X) &&
         P.Y >= std::min(S.A.Y, S.B.Y) && P.Y <= std::max(S.A.Y, S.B.Y);
}

/// A place with rational coordinates X / W, Y / W in lowest terms, W > 0.
struct TGridPlace {
  std::int64_t X;
  std::int64_t Y;
  std::int64_t W;

  TGridPlace(std::int64_t AX, std::int64_t AY, std::int64_t AW) : X(AX), Y(AY), W(AW) {
    const std::int64_t Common =
        std::gcd(std::gcd(std::abs(X), std::abs(Y)), std::abs(W)) * (W < 0 ? -1 : 1);
    X /= Common;
    Y /= Common;
    W /= Common;
  }
  explicit TGridPlace(const TGridPoint& P) : X(P.X), Y(P.Y), W(1) {}
  friend auto operator<=>(const TGridPlace&, const TGridPlace&) = default;

  TPoint2D Point() const {
    return {static_cast<double>(X) / static_cast<double>(W),
            static_cast<double>(Y) / static_cast<double>(W)};
  }
};

/// `P` lies on the segment; all products stay far below 2^63 for a grid of a few hundred.
inline bool IsOnSegment(const TGridPlace& P, const TGridSegment& S) {
  const std::int64_t Side =
      (S.B.X - S.A.X) * (P.Y - S.A.Y * P.W) - (S.B.Y - S.A.Y) * (P.X - S.A.X * P.W);
  return Side == 0 && P.X >= std::min(S.A.X, S.B.X) * P.W && P.X <= std::max(S.A.X, S.B.X) * P.W &&
         P.Y >= std::min(S.A.Y, S.B.Y) * P.W && P.Y <= std::max(S.A.Y, S.B.Y) * P.W;
}

/// What two segments have in common: nothing, one place, or the stretch between two places.
struct TGridMeeting {
  std::optional<TGridPlace> Place;
  std::optional<TGridSegment> Stretch;

  bool Exists() const { return Place || Stretch; }
};

inline TGridMeeting Meet(const TGridSegment& S, const TGridSegment& T) {
  std::set<TGridPoint> Touches;
  for (const TGridPoint& P : {S.A, S.B}) {
    if (IsOnSegment(P, T)) Touches.insert(P);
  }
  for (const TGridPoint& P : {T.A, T.B}) {
    if (IsOnSegment(P, S)) Touches.insert(P);
  }
  if (Touches.size() > 1) return {{}, TGridSegment{*Touches.begin(), *Touches.rbegin()}};
  if (Touches.size() == 1) return {TGridPlace(*Touches.begin()), {}};
  const std::int64_t SideA = Turn(T.A, T.B, S.A);
  const std::int64_t SideB = Turn(T.A, T.B, S.B);
  const bool CutsS = (SideA > 0) != (SideB > 0) && SideA != 0 && SideB != 0;
  const std::int64_t SideC = Turn(S.A, S.B, T.A);
  const std::int64_t SideD = Turn(S.A, S.B, T.B);
  const bool CutsT = (SideC > 0) != (SideD > 0) && SideC != 0 && SideD != 0;
  if (!CutsS || !CutsT) return {};
  const std::int64_t W = SideA - SideB;
  return {TGridPlace(S.A.X * W + (S.B.X - S.A.X) * SideA, S.A.Y * W + (S.B.Y - S.A.Y) * SideA, W),
          {}};
}

inline std::vector<TGridSegment> GridEdges(const std::vector<TPoint2D>& Points) {
  std::vector<TGridSegment> Edges;
  for (std::size_t I = 1; I < Points.size(); ++I) {
    Edges.push_back({TGridPoint(Points[I - 1]), TGridPoint(Points[I])});
  }
  if (Points.size() == 1) Edges.push_back({TGridPoint(Points[0]), TGridPoint(Points[0])});
  return Edges;
}

/// All that two courses of the grid have in common, exactly.
struct TGridCommon {
  std::set<TGridPlace> Places;
  std::vector<TGridSegment> Stretches;  // each once

  TGridCommon(const std::vector<TPoint2D>& A, const std::vector<TPoint2D>& B) {
    for (const auto& S : GridEdges(A)) {
      for (const auto& T : GridEdges(B)) {
        const TGridMeeting Meeting = Meet(S, T);
        if (Meeting.Place) Places.insert(*Meeting.Place);
        if (Meeting.Stretch) Stretches.push_back(*Meeting.Stretch);
      }
    }
    std::sort(Stretches.begin(), Stretches.end());
    Stretches.erase(std::unique(Stretches.begin(), Stretches.end()), Stretches.end());
    std::erase_if(Places, [this](const TGridPlace& Place) {
      return std::any_of(Stretches.begin(), Stretches.end(),
                         [&](const TGridSegment& S) { return IsOnSegment(Place, S); });
    });
  }
};

/// Two edges of a course of the grid meet that do not follow each other, or two that do run back
/// over one another. Where the ends are equal the last edge is followed by the first.
inline bool IsSelfIntersect(const std::vector<TPoint2D>& Points) {
  std::vector<TPoint2D> Course;
  for (const TPoint2D& P : Points) {
    if (Course.empty() || P != Course.back()) Course.push_back(P);
  }
  if (Course.size() < 2) return false;
  const auto Edges = GridEdges(Course);
  const bool IsRing = Course.front() == Course.back();
  for (std::size_t I = 0; I < Edges.size(); ++I) {
    for (std::size_t J = 0; J < I; ++J) {
      const bool AreNeighbours = I == J + 1 || (IsRing && J == 0 && I + 1 == Edges.size());
      const TGridMeeting Meeting = Meet(Edges[J], Edges[I]);
      if (AreNeighbours ? Meeting.Stretch.has_value() : Meeting.Exists()) return true;
    }
  }
  return false;
}

}  // namespace tarnalgo::test
