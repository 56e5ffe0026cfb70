#include "geometryAlgo/ShapeApp/SimpleRing.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <set>

#include "geometryAlgo/SweepLine/SideOfLine.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

int CompareXY(const TPoint2D& A, const TPoint2D& B) {
  if (const int Sign = CompareExact(A.X, B.X)) return Sign;
  return CompareExact(A.Y, B.Y);
}

/// A sweep over the vertices by X, then Y, that looks at neighbours only (after Shamos and Hoey):
/// up to the first place where the ring meets itself the edges keep one order, and the two that
/// meet there have been neighbours before.
///
/// Edge i runs from corner i to the next one round the ring.
class TTouchSweep {
 public:
  explicit TTouchSweep(const std::vector<TPoint2D>& Corners)
      : FCorners(Corners), FStatus(TOrder{this}), FPlaces(Corners.size(), FStatus.end()) {}

  bool FindsTouch() {
    std::vector<int> Vertices(FCorners.size());
    std::iota(Vertices.begin(), Vertices.end(), 0);
    std::sort(Vertices.begin(), Vertices.end(),
              [this](int A, int B) { return CompareXY(At(A), At(B)) < 0; });
    for (std::size_t I = 1; I < Vertices.size(); ++I) {
      if (At(Vertices[I - 1]) == At(Vertices[I])) return true;
    }
    return std::any_of(Vertices.begin(), Vertices.end(), [this](int V) { return Passes(V); });
  }

 private:
  /// From below at the sweep; two edges in it at the same time.
  struct TOrder {
    const TTouchSweep* Sweep;
    bool operator()(int A, int B) const { return Sweep->IsBelow(A, B); }
  };
  using TStatus = std::set<int, TOrder>;

  int Next(int I) const { return I + 1 == static_cast<int>(FCorners.size()) ? 0 : I + 1; }
  int Previous(int I) const { return I == 0 ? static_cast<int>(FCorners.size()) - 1 : I - 1; }
  const TPoint2D& At(int I) const { return FCorners[static_cast<std::size_t>(I)]; }
  bool GoesRight(int Edge) const { return CompareXY(At(Edge), At(Next(Edge))) < 0; }
  const TPoint2D& Left(int Edge) const { return At(GoesRight(Edge) ? Edge : Next(Edge)); }
  const TPoint2D& Right(int Edge) const { return At(GoesRight(Edge) ? Next(Edge) : Edge); }
  TStatus::iterator& Place(int Edge) { return FPlaces[static_cast<std::size_t>(Edge)]; }

  bool IsBelow(int A, int B) const {
    // Whichever begins later is on one side of the other there, or both begin in one corner.
    if (Left(A) == Left(B)) return SideOfLine(Left(A), Right(A), Right(B)) > 0;
    if (CompareXY(Left(A), Left(B)) < 0) return SideOfLine(Left(A), Right(A), Left(B)) > 0;
    return SideOfLine(Left(B), Right(B), Left(A)) < 0;
  }

  /// The sweep passes a corner: the edges that end there leave, those that begin enter.
  bool Passes(int Corner) {
    const int Edges[] = {Previous(Corner), Corner};
    for (const int Edge : Edges) {
      if (Right(Edge) == At(Corner) && Leaves(Edge)) return true;
    }
    for (const int Edge : Edges) {
      if (Left(Edge) == At(Corner) && Enters(Edge)) return true;
    }
    return false;
  }

  bool Leaves(int Edge) {
    const auto After = FStatus.erase(Place(Edge));
    return After != FStatus.begin() && After != FStatus.end() && Meet(*std::prev(After), *After);
  }

  bool Enters(int Edge) {
    const auto [Position, IsNew] = FStatus.insert(Edge);
    if (!IsNew) return true;  // on another edge
    Place(Edge) = Position;
    const auto After = std::next(Position);
    return (After != FStatus.end() && Meet(Edge, *After)) ||
           (Position != FStatus.begin() && Meet(*std::prev(Position), Edge));
  }

  /// Two edges in the sweep have a place in common; two that follow each other another one than
  /// their corner. None lie on one line: the second would have been found to be on the first.
  bool Meet(int A, int B) const {
    if (Next(A) == B || Next(B) == A) return false;
    return SideOfLine(Left(B), Right(B), Left(A)) * SideOfLine(Left(B), Right(B), Right(A)) <= 0 &&
           SideOfLine(Left(A), Right(A), Left(B)) * SideOfLine(Left(A), Right(A), Right(B)) <= 0;
  }

  const std::vector<TPoint2D>& FCorners;
  TStatus FStatus;
  std::vector<TStatus::iterator> FPlaces;
};

}  // namespace

bool TouchesItself(const std::vector<TPoint2D>& Corners) {
  return Corners.size() < 3 || TTouchSweep(Corners).FindsTouch();
}

}  // namespace tarnalgo
