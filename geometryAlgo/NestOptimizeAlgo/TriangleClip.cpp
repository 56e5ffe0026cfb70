#include "geometryAlgo/NestOptimizeAlgo/TriangleClip.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

#include "containers/TreeAlgorithm/MinHeap.h"
#include "geometryAlgo/NestOptimizeAlgo/RunBoxes.h"
#include "geometryAlgo/SweepLine/SideOfLine.h"
#include "geometryAlgo/VedaType/Line.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

constexpr int kNone = -1;
constexpr int kLeastRing = 3;

/// A vertex that may go if it still has these neighbours.
struct TCandidate {
  double Height;
  int Vertex;
  int Previous;
  int Next;
};

struct TFlattestFirst {
  int operator()(const TCandidate& A, const TCandidate& B) const {
    if (const int Sign = CompareExact(A.Height, B.Height)) return Sign;
    return CompareExact(A.Vertex, B.Vertex);
  }
};

struct TTriangle {
  const TPoint2D& A;
  const TPoint2D& B;
  const TPoint2D& C;

  int Turn() const { return SideOfLine(A, B, C); }
  bool HasInBox(const TPoint2D& P) const {
    return P.X >= std::min({A.X, B.X, C.X}) && P.X <= std::max({A.X, B.X, C.X}) &&
           P.Y >= std::min({A.Y, B.Y, C.Y}) && P.Y <= std::max({A.Y, B.Y, C.Y});
  }
  /// In it or on its sides, exactly.
  bool Holds(const TPoint2D& P) const {
    if (!HasInBox(P)) return false;
    const int Inside = Turn();
    const auto IsInside = [&](int Side) { return Side == 0 || Side == Inside; };
    return IsInside(SideOfLine(A, B, P)) && IsInside(SideOfLine(B, C, P)) &&
           IsInside(SideOfLine(C, A, P));
  }
};

/// Drops vertices of a list, the one with the flattest triangle first.
///
/// A vertex goes only if every point dropped between its neighbours so far, itself too, stays
/// within the tolerance of the new edge: the steps cannot add up. A heap holds the vertices that
/// may perhaps go; one that is not free waits for the vertex in its triangle.
class TTriangleClip {
 public:
  /// Of a ring, `First` and `Last` are its first and last point, and may go.
  TTriangleClip(std::span<const TPoint2D> Points, int First, int Last, bool IsRing, TClipKind Kind,
                double Tolerance)
      : FPoints(Points),
        FFirst(First),
        FLast(Last),
        FIsRing(IsRing),
        FKind(Kind),
        FTolerance(Tolerance),
        FBoxes(Points),
        FLinks(Points.size()),
        FLeft(Last - First + 1) {
    for (int I = First; I <= Last; ++I) {
      LinkOf(I).Previous = I == First && IsRing ? Last : I - 1;
      LinkOf(I).Next = I == Last && IsRing ? First : I + 1;
    }
    if (Kind != TClipKind::Any) NumberPlaces();
    std::vector<TCandidate> Candidates;
    for (int I = First; I <= Last; ++I) {
      if (const auto Candidate = CandidateAt(I)) Candidates.push_back(*Candidate);
    }
    FHeap = THeap(std::move(Candidates), {});
  }

  void Run() {
    const int Least = FIsRing ? kLeastRing + FRepeats : 2;
    while (FHeap.Count() > 0 && FLeft > Least) {
      const TCandidate Candidate = FHeap.Pop();
      if (!IsCurrent(Candidate) || !StaysNear(Candidate)) continue;
      if (const int Other = Blocker(Candidate); Other != kNone) {
        Wait(Candidate, Other);
      } else {
        Drop(Candidate);
      }
    }
  }

  std::vector<TPoint2D> Remaining() const {
    std::vector<TPoint2D> Result;
    Result.reserve(Slot(FLeft + 1));
    for (int I = FFirst; I <= FLast; ++I) {
      if (!LinkOf(I).IsGone) Result.push_back(FPoints[Slot(I)]);
    }
    if (FIsRing) Result.push_back(Result.front());
    return Result;
  }

 private:
  using THeap = TMinHeap<TCandidate, TFlattestFirst>;

  /// A vertex in its list.
  struct TLink {
    int Previous = kNone;
    int Next = kNone;
    int Place = kNone;         // the first vertex of the run of repeats it belongs to
    int FirstWaiting = kNone;  // in FWaiting: what waits for this vertex to go
    double Deviation = 0.0;    // bound for what was dropped between this vertex and the next
    bool IsGone = false;
  };
  struct TWaiting {
    TCandidate Candidate;
    int After;  // in FWaiting: what waits for the same vertex
  };

  static std::size_t Slot(int I) { return static_cast<std::size_t>(I); }
  const TPoint2D& At(int I) const { return FPoints[Slot(I)]; }
  TLink& LinkOf(int I) { return FLinks[Slot(I)]; }
  const TLink& LinkOf(int I) const { return FLinks[Slot(I)]; }
  TTriangle TriangleOf(const TCandidate& Candidate) const {
    return {At(Candidate.Previous), At(Candidate.Vertex), At(Candidate.Next)};
  }
  bool IsCurrent(const TCandidate& Candidate) const {
    const TLink& Link = LinkOf(Candidate.Vertex);
    return !Link.IsGone && Link.Previous == Candidate.Previous && Link.Next == Candidate.Next;
  }

  /// Consecutive equal points are one place, round a closed list too.
  void NumberPlaces() {
    const int Count = static_cast<int>(FPoints.size());
    for (int I = 0; I < Count; ++I) {
      const bool IsRepeat = I > 0 && At(I) == At(I - 1);  // exact: any other place can block
      LinkOf(I).Place = IsRepeat ? LinkOf(I - 1).Place : I;
    }
    for (int I = Count - 1; I >= 0 && At(I) == At(0); --I) LinkOf(I).Place = 0;
    // The first of a run of repeats does not turn, so it stays, and stands for all of them.
    for (int I = 0; I < Count; ++I) {
      if (LinkOf(I).Place == I) continue;
      FBoxes.TakeOut(I);
      ++FRepeats;
    }
  }

  bool MayTurn(int Turn) const {
    switch (FKind) {
      case TClipKind::Right:
        return Turn < 0;
      case TClipKind::RightOrStraight:
        return Turn <= 0;
      default:  // to the left: of `Any` nobody asks
        return Turn > 0;
    }
  }

  /// The vertex as a candidate, unless what lies about it need not be looked at.
  std::optional<TCandidate> CandidateAt(int Vertex) const {
    if (!FIsRing && (Vertex == FFirst || Vertex == FLast)) return {};
    const TLink& Link = LinkOf(Vertex);
    const TVLine2D Base(At(Link.Previous), At(Link.Next));
    if (!(Base.SegmentDistanceTo(At(Vertex)) <= FTolerance)) return {};
    TCandidate Candidate{Base.LineDistanceTo(At(Vertex)), Vertex, Link.Previous, Link.Next};
    if (FKind != TClipKind::Any && !MayTurn(TriangleOf(Candidate).Turn())) return {};
    return Candidate;
  }

  /// The edges that meet in the vertex lie within its distance of the new edge, at most, which
  /// bounds what was dropped along them; where the bound does not do, the points are looked at.
  bool StaysNear(const TCandidate& Candidate) {
    const TVLine2D Base(At(Candidate.Previous), At(Candidate.Next));
    FNewDeviation =
        Base.SegmentDistanceTo(At(Candidate.Vertex)) +
        std::max(LinkOf(Candidate.Previous).Deviation, LinkOf(Candidate.Vertex).Deviation);
    if (FNewDeviation <= FTolerance) return true;
    FNewDeviation = FTolerance;
    const int First = Candidate.Previous + 1;
    const int Last = Candidate.Next - 1;
    if (Candidate.Previous < Candidate.Next) return FBoxes.AllNear(First, Last, Base, FTolerance);
    return FBoxes.AllNear(First, FLast, Base, FTolerance) &&
           FBoxes.AllNear(FFirst, Last, Base, FTolerance);
  }

  /// A vertex, still there, in the triangle or on its sides; `kNone` when the triangle is free.
  int Blocker(const TCandidate& Candidate) const {
    if (FKind == TClipKind::Any) return kNone;
    const TTriangle Triangle = TriangleOf(Candidate);
    const auto IsOther = [&](int I) {
      const int Place = LinkOf(I).Place;
      return Place != LinkOf(Candidate.Previous).Place && Place != LinkOf(Candidate.Vertex).Place &&
             Place != LinkOf(Candidate.Next).Place && Triangle.Holds(At(I));
    };
    const auto BlockerIn = [&](int First, int Last) {
      return FBoxes.FindAbout(First, Last, Triangle.A, Triangle.B, Triangle.C, IsOther);
    };
    // Between the neighbours all is gone.
    if (Candidate.Previous > Candidate.Next) {
      return BlockerIn(Candidate.Next + 1, Candidate.Previous - 1);
    }
    const int Before = BlockerIn(0, Candidate.Previous - 1);
    if (Before != kNone) return Before;
    return BlockerIn(Candidate.Next + 1, static_cast<int>(FPoints.size()) - 1);
  }

  void Wait(const TCandidate& Candidate, int Other) {
    int& First = LinkOf(Other).FirstWaiting;
    FWaiting.push_back({Candidate, First});
    First = static_cast<int>(FWaiting.size()) - 1;
  }

  void Drop(const TCandidate& Candidate) {
    TLink& Link = LinkOf(Candidate.Vertex);
    Link.IsGone = true;
    --FLeft;
    FBoxes.TakeOut(Candidate.Vertex);
    LinkOf(Candidate.Previous).Next = Candidate.Next;
    LinkOf(Candidate.Previous).Deviation = FNewDeviation;
    LinkOf(Candidate.Next).Previous = Candidate.Previous;
    for (int I = Link.FirstWaiting; I != kNone; I = FWaiting[Slot(I)].After) {
      FHeap.Add(FWaiting[Slot(I)].Candidate);
    }
    for (const int Neighbour : {Candidate.Previous, Candidate.Next}) {
      if (const auto Changed = CandidateAt(Neighbour)) FHeap.Add(*Changed);
    }
  }

  const std::span<const TPoint2D> FPoints;
  const int FFirst;
  const int FLast;
  const bool FIsRing;
  const TClipKind FKind;
  const double FTolerance;
  TRunBoxes FBoxes;
  std::vector<TLink> FLinks;
  int FLeft;         // vertices of the range that are still there
  int FRepeats = 0;  // in the list, which stay; counted where a turn matters
  THeap FHeap;
  std::vector<TWaiting> FWaiting;
  double FNewDeviation = 0.0;  // of the edge that the last candidate looked at would leave
};

bool CanBeClipped(std::span<const TPoint2D> Points) {
  return std::all_of(Points.begin(), Points.end(), [](const TPoint2D& P) {
    return std::abs(P.X) <= kLargestListCoordinate && std::abs(P.Y) <= kLargestListCoordinate;
  });
}

}  // namespace

std::vector<TPoint2D> ClipRange(std::span<const TPoint2D> Points, int First, int Last,
                                TClipKind Kind, double Tolerance) {
  if (!CanBeClipped(Points)) return {Points.begin() + First, Points.begin() + Last + 1};
  TTriangleClip Clip(Points, First, Last, false, Kind, Tolerance);
  Clip.Run();
  return Clip.Remaining();
}

std::vector<TPoint2D> ClipRing(std::span<const TPoint2D> Ring, TClipKind Kind, double Tolerance) {
  if (!CanBeClipped(Ring)) {
    std::vector<TPoint2D> Result(Ring.begin(), Ring.end());
    Result.push_back(Ring.front());
    return Result;
  }
  TTriangleClip Clip(Ring, 0, static_cast<int>(Ring.size()) - 1, true, Kind, Tolerance);
  Clip.Run();
  return Clip.Remaining();
}

}  // namespace tarnalgo
