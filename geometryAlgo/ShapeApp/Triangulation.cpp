#include <algorithm>
#include <cmath>
#include <deque>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <utility>
#include <vector>

#include "geometryAlgo/ShapeApp/PolygonBasicAlgo.h"
#include "geometryAlgo/ShapeApp/SimpleRing.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadtypes/ExtendedPoint.h"

namespace tarnalgo {

namespace {

long double Turn(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  const TExtPoint2D From(A);
  return (TExtPoint2D(B) - From).CrossMul(TExtPoint2D(C) - From);
}

struct TTriangle {
  TPoint2D A;
  TPoint2D B;
  TPoint2D C;

  /// Inside or on the boundary.
  bool Covers(const TPoint2D& P) const {
    return Turn(A, B, P) >= 0.0L && Turn(B, C, P) >= 0.0L && Turn(C, A, P) >= 0.0L;
  }
  /// The way from corner B to the point begins inside.
  bool IsEnteredTo(const TPoint2D& P) const { return Turn(A, B, P) > 0.0L && Turn(B, C, P) > 0.0L; }
  /// The whole box lies beyond one side, whatever is rounded.
  bool IsPlainlyApartFrom(const TVRect2D& Box) const {
    return IsPlainlyRight(A, B, Box) || IsPlainlyRight(B, C, Box) || IsPlainlyRight(C, A, Box);
  }

 private:
  static bool IsPlainlyRight(const TPoint2D& From, const TPoint2D& To, const TVRect2D& Box) {
    constexpr double kRounding = 1e-14;
    const TPoint2D Edge = To - From;
    const double Across = Edge.X * ((Edge.X > 0.0 ? Box.Top : Box.Bottom) - From.Y);
    const double Along = Edge.Y * ((Edge.Y > 0.0 ? Box.Left : Box.Right) - From.X);
    return Across - Along < -kRounding * (std::abs(Across) + std::abs(Along));
  }
};

/// The places of some corners, halved again and again across the longer side of their box: node 1
/// is the root, nodes 2k and 2k + 1 are under node k.
class TPlaceTree {
 public:
  TPlaceTree(const std::vector<TPoint2D>& Points, std::vector<int> Corners)
      : FPoints(Points), FCorners(std::move(Corners)), FSlots(Points.size(), -1) {
    std::size_t Leaves = 1;
    while (Leaves * kLeafSize < FCorners.size()) Leaves *= 2;
    FNodes.resize(2 * Leaves);
    Build(1, 0, Count());
    for (int I = 0; I < Count(); ++I) FSlots[Cell(FCorners[Cell(I)])] = I;
  }

  bool Has(int Corner) const { return FSlots[Cell(Corner)] >= 0; }
  void Remove(int Corner) {
    const int Slot = std::exchange(FSlots[Cell(Corner)], -1);
    int First = 0;
    int Last = Count();
    std::size_t Node = 1;
    --FNodes[Node].Alive;
    while (!IsLeaf(Node)) {
      const int Middle = First + (Last - First) / 2;
      const bool IsUpper = Slot >= Middle;
      (IsUpper ? First : Last) = Middle;
      Node = 2 * Node + (IsUpper ? 1 : 0);
      --FNodes[Node].Alive;
    }
  }

  /// A corner that `IsSought` among those that the triangle may cover, −1 when there is none.
  template <class TPredicate>
  int Find(const TTriangle& Triangle, const TPredicate& IsSought) const {
    TVRect2D Box(Triangle.A, Triangle.B);
    Box.ExpandInPlace(Triangle.C);
    return Find(Triangle, Box, IsSought, 1, 0, Count());
  }

 private:
  static constexpr std::size_t kLeafSize = 8;
  struct TNode {
    TVRect2D Box;
    int Alive = 0;
  };

  static std::size_t Cell(int I) { return static_cast<std::size_t>(I); }
  int Count() const { return static_cast<int>(FCorners.size()); }
  bool IsLeaf(std::size_t Node) const { return 2 * Node >= FNodes.size(); }
  const TPoint2D& At(int Corner) const { return FPoints[Cell(Corner)]; }

  void Build(std::size_t Node, int First, int Last) {
    TVRect2D Box;
    for (int I = First; I < Last; ++I) Box.ExpandInPlace(At(FCorners[Cell(I)]));
    FNodes[Node] = {Box, Last - First};
    if (IsLeaf(Node)) return;
    const int Middle = First + (Last - First) / 2;
    const bool ByX = Box.Width() >= Box.Height();
    std::nth_element(FCorners.begin() + First, FCorners.begin() + Middle, FCorners.begin() + Last,
                     [&](int I, int J) { return ByX ? At(I).X < At(J).X : At(I).Y < At(J).Y; });
    Build(2 * Node, First, Middle);
    Build(2 * Node + 1, Middle, Last);
  }

  template <class TPredicate>
  int Find(const TTriangle& Triangle, const TVRect2D& Around, const TPredicate& IsSought,
           std::size_t Node, int First, int Last) const {
    const auto& [Box, Alive] = FNodes[Node];
    if (Alive == 0 || !Around.Intersect(Box).IsValid() || Triangle.IsPlainlyApartFrom(Box)) {
      return -1;
    }
    if (IsLeaf(Node)) {
      const auto End = FCorners.begin() + Last;
      const auto Found = std::find_if(FCorners.begin() + First, End,
                                      [&](int Corner) { return Has(Corner) && IsSought(Corner); });
      return Found == End ? -1 : *Found;
    }
    const int Middle = First + (Last - First) / 2;
    const int Lower = Find(Triangle, Around, IsSought, 2 * Node, First, Middle);
    return Lower >= 0 ? Lower : Find(Triangle, Around, IsSought, 2 * Node + 1, Middle, Last);
  }

  const std::vector<TPoint2D>& FPoints;
  std::vector<int> FCorners;  // in the order of the leaves
  std::vector<int> FSlots;    // of each corner in FCorners, −1 when it is not there any more
  std::vector<TNode> FNodes;
};

/// Cuts triangles off a counter-clockwise ring, corner by corner.
///
/// The boundaries of the triangles add up to that of the ring, so triangles that all turn
/// counter-clockwise cover a simple ring exactly once, whatever was rounded on the way.
///
/// Whatever stands in the way of a corner is one of the blockers, the corners that do not turn
/// left. A corner waits for one of those in its way and is looked at again when that is gone, or
/// when one of its own neighbours is: nobody goes round the ring in search of the next ear.
class TEarClipper {
 public:
  explicit TEarClipper(std::vector<TPoint2D> Corners)
      : FCorners(std::move(Corners)),
        FNext(FCorners.size()),
        FPrevious(FCorners.size()),
        FStates(FCorners.size(), 0),
        FWaiting(FCorners.size()),
        FBlockers(FCorners, LinkedBlockers()) {}

  /// The triangles; none when the ring cannot be cut up so.
  TVPolyline2DList Run() {
    for (int I = 0; I < static_cast<int>(FCorners.size()); ++I) Offer(I);
    TVPolyline2DList Triangles;
    while (Triangles.Count() + 2 < static_cast<int>(FCorners.size())) {
      // A corner without a turn waits until no other can be cut.
      std::deque<TOffer>& Offers = FReady.empty() ? FStraight : FReady;
      if (Offers.empty()) return {};
      const TOffer Offer = Offers.front();
      Offers.pop_front();
      if (!IsCurrent(Offer)) continue;
      const TTriangle Ear = EarAt(Offer.Corner);
      if (&Offers == &FReady) {
        const int Blocker = FBlockers.Find(Ear, [&](int Other) { return Blocks(Ear, Other); });
        if (Blocker >= 0) {
          FWaiting[Cell(Blocker)].push_back(Offer);
          continue;
        }
      }
      Triangles.Add(std::make_unique<TVPolyline2D>(std::vector<TPoint2D>{Ear.A, Ear.B, Ear.C}));
      Cut(Offer.Corner);
    }
    return Triangles;
  }

 private:
  /// A corner as it was with its neighbours of then.
  struct TOffer {
    int Corner;
    int State;
  };

  static std::size_t Cell(int I) { return static_cast<std::size_t>(I); }
  const TPoint2D& At(int I) const { return FCorners[Cell(I)]; }
  TTriangle EarAt(int I) const { return {At(FPrevious[Cell(I)]), At(I), At(FNext[Cell(I)])}; }
  long double TurnAt(int I) const {
    const TTriangle Ear = EarAt(I);
    return Turn(Ear.A, Ear.B, Ear.C);
  }
  /// Where the ring touches itself in the corner to be cut, what it comes and goes by may lie in
  /// the way. At the other two corners it needs a corner in the way, which tells.
  bool Blocks(const TTriangle& Ear, int Other) const {
    const TPoint2D& P = At(Other);
    if (P == Ear.A || P == Ear.C) return false;
    if (!(P == Ear.B)) return Ear.Covers(P);
    return Ear.IsEnteredTo(At(FPrevious[Cell(Other)])) || Ear.IsEnteredTo(At(FNext[Cell(Other)]));
  }
  bool IsCurrent(const TOffer& Offer) const { return FStates[Cell(Offer.Corner)] == Offer.State; }

  /// Links the ring; the corners that do not turn left.
  std::vector<int> LinkedBlockers() {
    const int Count = static_cast<int>(FCorners.size());
    for (int I = 0; I < Count; ++I) {
      FNext[Cell(I)] = I + 1 == Count ? 0 : I + 1;
      FPrevious[Cell(I)] = I == 0 ? Count - 1 : I - 1;
    }
    std::vector<int> Blockers;
    for (int I = 0; I < Count; ++I) {
      if (!(TurnAt(I) > 0.0L)) Blockers.push_back(I);
    }
    return Blockers;
  }

  /// Lines the corner up, behind all others: neighbours of a cut come last, no fans of slivers.
  void Offer(int I) {
    const TOffer Offer{I, ++FStates[Cell(I)]};
    const long double Turn = TurnAt(I);
    if (Turn == 0.0L) FStraight.push_back(Offer);
    if (!(Turn > 0.0L)) return;
    FReady.push_back(Offer);
    Unblock(I);
  }

  void Unblock(int I) {
    if (!FBlockers.Has(I)) return;
    FBlockers.Remove(I);
    for (const TOffer& Offer : std::exchange(FWaiting[Cell(I)], {})) {
      if (IsCurrent(Offer)) FReady.push_back(Offer);
    }
  }

  void Cut(int I) {
    const int Previous = FPrevious[Cell(I)];
    const int Next = FNext[Cell(I)];
    FNext[Cell(Previous)] = Next;
    FPrevious[Cell(Next)] = Previous;
    ++FStates[Cell(I)];
    Unblock(I);
    Offer(Previous);
    Offer(Next);
  }

  std::vector<TPoint2D> FCorners;
  std::vector<int> FNext;
  std::vector<int> FPrevious;
  std::vector<int> FStates;  // grows with each change of the neighbours
  std::deque<TOffer> FReady;
  std::deque<TOffer> FStraight;
  std::vector<std::vector<TOffer>> FWaiting;  // by the blocker they wait for
  TPlaceTree FBlockers;
};

/// The corners of a ring on the grid on which `IsSimple` looks at it, neighbours in one place as
/// one; none when they are too large for a double to hold them.
std::vector<TPoint2D> GridCorners(const TVPolyline2D& Ring) {
  constexpr double kLargest = 0x1p53;
  std::vector<TPoint2D> Corners;
  Corners.reserve(Ring.Points().size());
  for (const TIntPoint& P : Ring.ToPath(kSimpleScale)) {
    const TPoint2D Corner(static_cast<double>(P.X), static_cast<double>(P.Y));
    if (std::max(std::abs(Corner.X), std::abs(Corner.Y)) > kLargest) return {};
    if (Corners.empty() || !(Corner == Corners.back())) Corners.push_back(Corner);
  }
  if (Corners.size() > 1 && Corners.back() == Corners.front()) Corners.pop_back();
  return Corners;
}

/// What `IsSimple` answers. A ring that does not touch itself on its grid does not need the
/// clipping library, which is quadratic in edges that lie abreast.
bool IsSimpleRing(const TVPolyline2D& Ring) {
  const TVPoint2DList Corners(GridCorners(Ring));
  const bool HasArea = std::abs(Corners.Area()) >= kNoArea * kSimpleScale * kSimpleScale;
  return (HasArea && !TouchesItself(Corners.Points())) || TPolygonBasicAlgo::IsSimple(Ring);
}

}  // namespace

TVPolyline2DList TPolygonBasicAlgo::TriangleDivide(const TVPolyline2D& Poly) {
  std::vector<TPoint2D> Corners = Poly.Points();
  while (Corners.size() > 1 && Corners.back().Equals(Corners.front())) Corners.pop_back();
  if (Corners.size() < 3 || !std::all_of(Corners.begin(), Corners.end(), TPoint2DUtils::IsFinite)) {
    return {};
  }
  if (!IsSimpleRing(TVPolyline2D(Corners))) return {};
  if (Poly.IsClockwise()) std::reverse(Corners.begin(), Corners.end());
  return TEarClipper(std::move(Corners)).Run();
}

}  // namespace tarnalgo
