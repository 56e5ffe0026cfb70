#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadtypes/ExtendedPoint.h"

namespace tarnalgo {

namespace {

long double Turn(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  const TExtPoint2D From(A);
  return (TExtPoint2D(B) - From).CrossMul(TExtPoint2D(C) - From);
}

/// The places of some vertices in square cells, about one vertex to a cell.
class TVertexGrid {
 public:
  TVertexGrid(const std::vector<TPoint2D>& Points, const std::vector<int>& Vertices)
      : FBox(TVPoint2DList(Points).BoundBox()),
        FSide(std::clamp(static_cast<int>(std::sqrt(Vertices.size())), 1, 2000)),
        FFirst(static_cast<std::size_t>(FSide) * static_cast<std::size_t>(FSide) + 1),
        FVertices(Vertices.size()) {
    for (const int I : Vertices) ++FFirst[CellOf(Points[static_cast<std::size_t>(I)]) + 1];
    for (std::size_t I = 1; I < FFirst.size(); ++I) FFirst[I] += FFirst[I - 1];
    std::vector<std::size_t> Next(FFirst.begin(), FFirst.end() - 1);
    for (const int I : Vertices) {
      FVertices[Next[CellOf(Points[static_cast<std::size_t>(I)])]++] = I;
    }
  }

  /// Visits the vertices in the cells that the box meets, until one answers true.
  template <class TVisitor>
  bool Visit(const TVRect2D& Box, TVisitor IsFound) const {
    for (int Row = RowOf(Box.Bottom); Row <= RowOf(Box.Top); ++Row) {
      const auto Start = static_cast<std::size_t>(Row) * static_cast<std::size_t>(FSide);
      const std::size_t First = FFirst[Start + static_cast<std::size_t>(ColumnOf(Box.Left))];
      const std::size_t Last = FFirst[Start + static_cast<std::size_t>(ColumnOf(Box.Right)) + 1];
      for (std::size_t I = First; I < Last; ++I) {
        if (IsFound(FVertices[I])) return true;
      }
    }
    return false;
  }

 private:
  int Stripe(double Offset, double Extent) const {
    // Also 0 where the extent leaves the range of a double.
    const double Share = Extent > 0.0 && std::isfinite(Extent) ? Offset / Extent : 0.0;
    return std::clamp(static_cast<int>(Share * FSide), 0, FSide - 1);
  }
  int ColumnOf(double X) const { return Stripe(X - FBox.Left, FBox.Width()); }
  int RowOf(double Y) const { return Stripe(Y - FBox.Bottom, FBox.Height()); }
  std::size_t CellOf(const TPoint2D& P) const {
    return static_cast<std::size_t>(RowOf(P.Y)) * static_cast<std::size_t>(FSide) +
           static_cast<std::size_t>(ColumnOf(P.X));
  }

  TVRect2D FBox;
  int FSide;
  std::vector<std::size_t> FFirst;  // of each cell in FVertices, cells by row
  std::vector<int> FVertices;
};

/// Cuts triangles off a counter-clockwise ring, corner by corner.
///
/// The boundaries of the triangles add up to that of the ring, so triangles that all turn
/// counter-clockwise cover a simple ring exactly once, whatever was rounded on the way.
class TEarClipper {
 public:
  explicit TEarClipper(std::vector<TPoint2D> Corners)
      : FCorners(std::move(Corners)),
        FNext(FCorners.size()),
        FPrevious(FCorners.size()),
        FIsCut(FCorners.size(), false),
        FBlockers(FCorners, LinkedBlockers()) {}

  /// The triangles; none when the ring cannot be cut up so.
  TVPolyline2DList Run() {
    TVPolyline2DList Triangles;
    int Here = 0;
    int Left = static_cast<int>(FCorners.size());
    int Refused = 0;  // corners in a row
    while (Left > 2) {
      const bool IsStuck = Refused > Left;
      if (IsStuck && Refused > 2 * Left) return {};
      // A corner without a turn waits until no other can be cut.
      if (!(IsStuck ? TurnAt(Here) == 0.0L : IsEar(Here))) {
        ++Refused;
        Here = NextOf(Here);
        continue;
      }
      Triangles.Add(std::make_unique<TVPolyline2D>(
          std::vector<TPoint2D>{At(PreviousOf(Here)), At(Here), At(NextOf(Here))}));
      Cut(Here);
      --Left;
      Refused = 0;
      Here = NextOf(NextOf(Here));  // not its neighbour: no fans of slivers
    }
    return Triangles;
  }

 private:
  static std::size_t Cell(int I) { return static_cast<std::size_t>(I); }
  const TPoint2D& At(int I) const { return FCorners[Cell(I)]; }
  int NextOf(int I) const { return FNext[Cell(I)]; }
  int PreviousOf(int I) const { return FPrevious[Cell(I)]; }
  long double TurnAt(int I) const { return Turn(At(PreviousOf(I)), At(I), At(NextOf(I))); }

  /// Links the ring; the corners that can lie in an ear: those that do not turn left.
  std::vector<int> LinkedBlockers() {
    const int Count = static_cast<int>(FCorners.size());
    for (int I = 0; I < Count; ++I) {
      FNext[Cell(I)] = I + 1 == Count ? 0 : I + 1;
      FPrevious[Cell(I)] = I == 0 ? Count - 1 : I - 1;
    }
    std::vector<int> Blockers;
    for (int I = 0; I < Count; ++I) {
      if (TurnAt(I) <= 0.0L) Blockers.push_back(I);
    }
    return Blockers;
  }

  bool IsEar(int I) const {
    if (!(TurnAt(I) > 0.0L)) return false;
    const TPoint2D& A = At(PreviousOf(I));
    const TPoint2D& B = At(I);
    const TPoint2D& C = At(NextOf(I));
    TVRect2D Box(A, B);
    Box.ExpandInPlace(C);
    return !FBlockers.Visit(Box, [&](int Other) {
      const TPoint2D& P = At(Other);
      if (FIsCut[Cell(Other)] || P == A || P == B || P == C) return false;
      return Turn(A, B, P) >= 0.0L && Turn(B, C, P) >= 0.0L && Turn(C, A, P) >= 0.0L &&
             TurnAt(Other) <= 0.0L;
    });
  }

  void Cut(int I) {
    FIsCut[Cell(I)] = true;
    FNext[Cell(PreviousOf(I))] = NextOf(I);
    FPrevious[Cell(NextOf(I))] = PreviousOf(I);
  }

  std::vector<TPoint2D> FCorners;
  std::vector<int> FNext;
  std::vector<int> FPrevious;
  std::vector<bool> FIsCut;
  TVertexGrid FBlockers;
};

}  // namespace

TVPolyline2DList TPolygonBasicAlgo::TriangleDivide(const TVPolyline2D& Poly) {
  std::vector<TPoint2D> Corners = Poly.Points();
  while (Corners.size() > 1 && Corners.back().Equals(Corners.front())) Corners.pop_back();
  if (Corners.size() < 3 || !std::all_of(Corners.begin(), Corners.end(), TPoint2DUtils::IsFinite)) {
    return {};
  }
  if (!IsSimple(TVPolyline2D(Corners))) return {};
  if (Poly.IsClockwise()) std::reverse(Corners.begin(), Corners.end());
  return TEarClipper(std::move(Corners)).Run();
}

}  // namespace tarnalgo
