#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "host/Cadgeometry/BoxTree.h"
#include "host/Cadgeometry/CurvePiece.h"
#include "host/Cadgeometry/GeCurve.h"
#include "host/Cadgeometry/PieceCrossing.h"

namespace tarnalgo {

namespace {

using TPieces = std::vector<TCurvePiece>;

/// Count: up to so many pairs of pieces a box test each is cheaper than a tree.
constexpr std::size_t kFewPairs = 256;

/// Binary exponent of coordinates whose fourth powers neither overflow nor vanish.
constexpr int kSafeExponent = 200;

const TCurvePiece& PieceAt(const TPieces& Pieces, int Index) {
  return Pieces[static_cast<std::size_t>(Index)];
}

/// The parameter at which one member ends and the next one starts belongs to the latter. Where that
/// starts elsewhere, the end of the former is the last parameter before. A single point stands at
/// the parameter where it starts.
void PartSharedParams(TPieces& Pieces) {
  for (std::size_t I = 1; I < Pieces.size(); ++I) {
    TCurvePiece& Former = Pieces[I - 1];
    if (Former.To == Former.From || Former.End.Equals(Pieces[I].Start)) continue;
    Former.To = std::nextafter(Former.To, Former.From);
  }
}

/// The pieces of a curve without those that are not finite and without points that lie on the end
/// of the piece before: a million equal points come down to one piece.
TPieces GatherPieces(const TGeCurve2D& Curve) {
  TPieces Pieces;
  Curve.AppendPieces(Pieces);
  PartSharedParams(Pieces);
  std::size_t Kept = 0;
  for (std::size_t I = 0; I < Pieces.size(); ++I) {
    if (!Pieces[I].IsFinite()) continue;
    if (Kept > 0 && Pieces[I].IsPoint() && Pieces[I].Start == Pieces[Kept - 1].End) continue;
    if (Kept == 1 && Pieces[0].IsPoint() && Pieces[0].End == Pieces[I].Start) Kept = 0;
    Pieces[Kept++] = Pieces[I];
  }
  Pieces.resize(Kept);
  return Pieces;
}

double LargestMagnitude(const TPieces& Pieces) {
  double Largest = 0.0;
  for (const TCurvePiece& Piece : Pieces) Largest = std::max(Largest, Piece.Magnitude());
  return Largest;
}

TPieces ScaledPieces(const TPieces& Pieces, double Factor) {
  TPieces Result;
  Result.reserve(Pieces.size());
  for (const TCurvePiece& Piece : Pieces) Result.push_back(Piece.Scaled(Factor));
  return Result;
}

/// Points of which no two are as near as the tolerance. A grid of cells as wide as the tolerance:
/// what is near to a point lies in its cell or in one of the eight round it.
class TDistinctPoints {
 public:
  explicit TDistinctPoints(double Tol) : FTol(Tol), FCell(Tol > 0.0 ? 2.0 * Tol : 1.0) {}

  bool Holds(const TPoint2D& P) const {
    return AnyNear(P, [&](const TPoint2D& Q) { return Q.Equals(P, FTol); });
  }

  /// One point is as near to every place of the box, and these are as near to each other: nothing
  /// new can be added there.
  bool Cover(const TRect2D& Box) const {
    if (!Box.Min.Equals(Box.Max, FTol)) return false;
    const TPoint2D Corners[] = {Box.Min, Box.Max, {Box.Min.X, Box.Max.Y}, {Box.Max.X, Box.Min.Y}};
    return AnyNear(Box.Min, [&](const TPoint2D& Q) {
      return std::all_of(std::begin(Corners), std::end(Corners),
                         [&](const TPoint2D& P) { return Q.Equals(P, FTol); });
    });
  }

  /// False when a point as near is there already.
  bool Add(const TPoint2D& P) {
    if (Holds(P)) return false;
    FPoints.push_back(P);
    if (FPoints.size() == kFew + 1) {
      for (const TPoint2D& Q : FPoints) FGrid.emplace(CellOf(Q), Q);
    } else if (FPoints.size() > kFew) {
      FGrid.emplace(CellOf(P), P);
    }
    return true;
  }

 private:
  static constexpr std::size_t kFew = 16;  // a list is faster up to here

  struct TCell {
    double X = 0.0;
    double Y = 0.0;
    friend bool operator==(const TCell&, const TCell&) = default;
  };
  struct THash {
    std::size_t operator()(const TCell& Cell) const {
      return std::hash<double>()(Cell.X) * 1000003u ^ std::hash<double>()(Cell.Y);
    }
  };

  TCell CellOf(const TPoint2D& P) const {
    return {std::floor(P.X / FCell) + 0.0, std::floor(P.Y / FCell) + 0.0};
  }
  /// Whether any of the points that may be as near to `P` fulfils `Test`.
  template <class TTest>
  bool AnyNear(const TPoint2D& P, TTest Test) const {
    if (FPoints.size() <= kFew) return std::any_of(FPoints.begin(), FPoints.end(), Test);
    const TCell Cell = CellOf(P);
    for (int DX = -1; DX <= 1; ++DX) {
      for (int DY = -1; DY <= 1; ++DY) {
        const auto [First, Last] = FGrid.equal_range({Cell.X + DX, Cell.Y + DY});
        const bool IsFound =
            std::any_of(First, Last, [&](const auto& Entry) { return Test(Entry.second); });
        if (IsFound) return true;
      }
    }
    return false;
  }

  double FTol;
  double FCell;
  std::vector<TPoint2D> FPoints;
  std::unordered_multimap<TCell, TPoint2D, THash> FGrid;
};

/// A contact or an overlap with the pieces it lies on.
struct TPlace {
  int Piece1 = 0;
  int Piece2 = 0;
  TPieceContact At;
};

/// An overlap, along which the second curve keeps its sense.
struct TStretch {
  TPlace From;
  TPlace To;
  TPlace Best;  // what names it if it is one place
  bool IsForward = true;
};

/// Gathers what the pieces of two curves have in common and puts it together again as meetings of
/// the curves.
class TCurveMeeting {
 public:
  TCurveMeeting(const TGeCurve2D& First, const TGeCurve2D& Second, const TGeTolerance& Tol)
      : FFirst(GatherPieces(First)), FSecond(GatherPieces(Second)), FTol(Tol.EqualPoint) {}

  void CrossPieces() {
    if (FFirst.empty() || FSecond.empty()) return;
    const double Magnitude = std::max(LargestMagnitude(FFirst), LargestMagnitude(FSecond));
    FTol = ToleranceWithRounding(FTol, Magnitude);
    FPlaces = TDistinctPoints(FTol);
    FOverlapEnds = TDistinctPoints(FTol);
    int Exponent = 0;  // of 0, too
    std::frexp(Magnitude, &Exponent);
    if (std::abs(Exponent) <= kSafeExponent) {
      return CrossAll(FFirst, FSecond, FTol);
    }
    const double Factor = std::ldexp(1.0, std::clamp(-Exponent, -1000, 1000));
    CrossAll(ScaledPieces(FFirst, Factor), ScaledPieces(FSecond, Factor), FTol * Factor);
  }

  /// Contacts on either side of a joint with nothing wider than the tolerance in between are one:
  /// the place where the curves come nearer.
  void JoinContacts() {
    if (FContacts.size() < 2) return;
    std::stable_sort(FContacts.begin(), FContacts.end(), IsEarlierOnFirst);
    std::vector<TPlace> Joined;
    const TPlace* Last = nullptr;  // from place to place: the best one may be pieces behind
    for (const TPlace& Place : FContacts) {
      if (Last == nullptr || !StaysClose(*Last, Place)) {
        Joined.push_back(Place);
      } else if (Gap(Place) < Gap(Joined.back())) {
        Joined.back() = Place;
      }
      Last = &Place;
    }
    FContacts = std::move(Joined);
  }

  /// Overlaps that go on from piece to piece on both curves are one, and contacts at their ends are
  /// part of them. What begins or ends where a cubic was merely cut is a contact.
  void JoinOverlaps() {
    JoinStretches();
    std::erase_if(FContacts,
                  [&](const TPlace& Place) { return FOverlapEnds.Holds(PointOnFirst(Place)); });
    const auto IsContact = [&](const TStretch& Stretch) {
      return !IsAtAnEnd(Stretch.From) || !IsAtAnEnd(Stretch.To);
    };
    if (std::none_of(FStretches.begin(), FStretches.end(), IsContact)) return;
    TDistinctPoints Places(FTol);
    for (const TPlace& Place : FContacts) Places.Add(PointOnFirst(Place));
    for (const TStretch& Stretch : FStretches) {
      if (IsContact(Stretch) && Places.Add(PointOnFirst(Stretch.Best))) {
        FContacts.push_back(Stretch.Best);
      }
    }
    std::erase_if(FStretches, IsContact);
  }

  /// One record for each place, ascending along the first curve.
  void Give(std::vector<TIntersect2D>& Results) const {
    std::vector<TIntersect2D> Found;
    Found.reserve(FContacts.size() + FStretches.size());
    for (const TPlace& Place : FContacts) {
      Found.push_back({OnFirst(Place), OnSecond(Place), false, OnFirst(Place), OnSecond(Place)});
    }
    for (const TStretch& Stretch : FStretches) {
      Found.push_back({OnFirst(Stretch.From), OnSecond(Stretch.From), true, OnFirst(Stretch.To),
                       OnSecond(Stretch.To)});
    }
    std::stable_sort(Found.begin(), Found.end(), [](const TIntersect2D& L, const TIntersect2D& R) {
      return L.OnFirst.Param != R.OnFirst.Param ? L.OnFirst.Param < R.OnFirst.Param
                                                : L.OnSecond.Param < R.OnSecond.Param;
    });
    Results.insert(Results.end(), Found.begin(), Found.end());
  }

 private:
  /// `First` and `Second` are the pieces, or the pieces brought into the range of safe squares.
  void CrossAll(const TPieces& First, const TPieces& Second, double Tol) {
    if (First.size() * Second.size() <= kFewPairs) {
      for (int I = 0; I < static_cast<int>(First.size()); ++I) {
        for (int J = 0; J < static_cast<int>(Second.size()); ++J) {
          CrossPair(First, I, Second, J, Tol);
        }
      }
      return;
    }
    const TBoxTree Tree(Second);
    std::vector<int> Near;
    for (int I = 0; I < static_cast<int>(First.size()); ++I) {
      // A piece shorter than the tolerance has no overlaps, and contacts there would be known.
      if (FPlaces.Cover(PieceAt(FFirst, I).Box)) continue;
      Near.clear();
      Tree.Search(PieceAt(First, I).Box, Tol, Near);
      for (const int J : Near) CrossPair(First, I, Second, J, Tol);
    }
  }

  void CrossPair(const TPieces& First, int I, const TPieces& Second, int J, double Tol) {
    const TPieceCrossing Crossing(PieceAt(First, I), PieceAt(Second, J), Tol);
    for (const TPieceContact& Contact : Crossing.Contacts()) {
      const TPlace Place{I, J, Contact};
      if (FPlaces.Add(PointOnFirst(Place))) FContacts.push_back(Place);
    }
    for (const TPieceOverlap& Overlap : Crossing.Overlaps()) {
      const TStretch Stretch{{I, J, Overlap.From},
                             {I, J, Overlap.To},
                             {I, J, Overlap.Best},
                             Overlap.From.U2 <= Overlap.To.U2};
      FOverlapEnds.Add(PointOnFirst(Stretch.From));
      FOverlapEnds.Add(PointOnFirst(Stretch.To));
      FStretches.push_back(Stretch);
    }
  }

  static bool IsEarlierOnFirst(const TPlace& L, const TPlace& R) {
    return L.Piece1 != R.Piece1 ? L.Piece1 < R.Piece1 : L.At.U1 < R.At.U1;
  }

  /// Distance between the curves there. Where they are flat against each other the root wanders by
  /// roundings magnified, so the end of a piece is preferred to a root that is hardly nearer.
  double Gap(const TPlace& Place) const {
    const auto IsEnd = [](double U) { return U == 0.0 || U == 1.0; };
    const double Handicap = IsEnd(Place.At.U1) || IsEnd(Place.At.U2) ? 0.0 : FTol * 1e-3;
    return PointOnFirst(Place).DistanceTo(OnSecond(Place).Point) + Handicap;
  }

  /// The places lie on neighbouring pieces, and on its way between them each curve keeps within the
  /// tolerance of those of the other. Within one pair of pieces that is settled already.
  bool StaysClose(const TPlace& L, const TPlace& R) const {
    const int Steps1 = R.Piece1 - L.Piece1;
    const int Steps2 = R.Piece2 - L.Piece2;
    if (Steps1 > 1 || std::abs(Steps2) > 1 || (Steps1 == 0 && Steps2 == 0)) return false;
    const auto OnSecondIsClose = [&](const TPlace& From, const TPlace& To) {
      return IsCloseBetween(FSecond, From.Piece2, From.At.U2, To.Piece2, To.At.U2, FFirst, L.Piece1,
                            R.Piece1);
    };
    return IsCloseBetween(FFirst, L.Piece1, L.At.U1, R.Piece1, R.At.U1, FSecond, L.Piece2,
                          R.Piece2) &&
           (Steps2 < 0 ? OnSecondIsClose(R, L) : OnSecondIsClose(L, R));
  }

  /// From one place to another, on the same piece or the next, the curve keeps within the tolerance
  /// of two pieces of the other.
  bool IsCloseBetween(const TPieces& Pieces, int Piece1, double U1, int Piece2, double U2,
                      const TPieces& Others, int Other1, int Other2) const {
    const auto IsCloseAlong = [&](int Piece, double From, double To) {
      for (const double Step : {1.0, 0.5, 0.25, 0.75, 0.0}) {
        const TPoint2D P = PieceAt(Pieces, Piece).Eval(std::lerp(From, To, Step));
        double ToFirst = 0.0;
        double ToSecond = 0.0;
        PieceAt(Others, Other1).Nearest(P, ToFirst);
        PieceAt(Others, Other2).Nearest(P, ToSecond);
        if (!(std::min(ToFirst, ToSecond) <= FTol)) return false;
      }
      return true;
    };
    if (Piece1 == Piece2) return IsCloseAlong(Piece1, U1, U2);
    return PieceAt(Pieces, Piece1).End.Equals(PieceAt(Pieces, Piece2).Start, FTol) &&
           IsCloseAlong(Piece1, U1, 1.0) && IsCloseAlong(Piece2, 0.0, U2);
  }

  TPoint2D PointOnFirst(const TPlace& Place) const {
    return PieceAt(FFirst, Place.Piece1).Eval(Place.At.U1);
  }
  TPointOnCurve2D OnFirst(const TPlace& Place) const {
    return {PointOnFirst(Place), PieceAt(FFirst, Place.Piece1).CurveParam(Place.At.U1)};
  }
  TPointOnCurve2D OnSecond(const TPlace& Place) const {
    const TCurvePiece& Piece = PieceAt(FSecond, Place.Piece2);
    return {Piece.Eval(Place.At.U2), Piece.CurveParam(Place.At.U2)};
  }

  /// An end of a stretch, which stands at `Index`; by pair of pieces.
  struct TEnd {
    TPlace At;
    std::size_t Index = 0;
  };
  using TEnds = std::unordered_multimap<std::uint64_t, TEnd>;

  static std::uint64_t PairKey(int Piece1, int Piece2) {
    return static_cast<std::uint64_t>(Piece1) << 32 | static_cast<std::uint32_t>(Piece2);
  }

  void JoinStretches() {
    if (FStretches.size() < 2) return;
    std::stable_sort(
        FStretches.begin(), FStretches.end(),
        [](const TStretch& L, const TStretch& R) { return IsEarlierOnFirst(L.From, R.From); });
    std::vector<TStretch> Joined;
    // Where each ended before it went on, too: at a bend no longer than the tolerance two go on
    // from there, and one of them leads nowhere.
    TEnds Ends;
    for (const TStretch& Stretch : FStretches) {
      TStretch* const Former = FormerOf(Stretch, Joined, Ends);
      if (Former) {
        if (!IsEarlierOnFirst(Stretch.To, Former->To)) Former->To = Stretch.To;
        if (Gap(Stretch.Best) < Gap(Former->Best)) Former->Best = Stretch.Best;
      } else {
        Joined.push_back(Stretch);
      }
      const TStretch* const Grown = Former ? Former : &Joined.back();
      const auto Index = static_cast<std::size_t>(Grown - Joined.data());
      Ends.emplace(PairKey(Stretch.To.Piece1, Stretch.To.Piece2), TEnd{Stretch.To, Index});
    }
    FStretches = std::move(Joined);
  }

  /// One of the curves' pieces ends there, and was not merely cut, or cut so near to another end
  /// that no overlap can be told in between.
  bool IsAtAnEnd(const TPlace& Place) const {
    const auto IsEnd = [&](const TPieces& Pieces, int Index, double U) {
      if (U > 0.0 && U < 1.0) return false;
      const TCurvePiece& Piece = PieceAt(Pieces, Index);
      if (!(U == 0.0 ? Piece.StartIsCut : Piece.EndIsCut)) return true;
      const int Next = Index + (U == 0.0 ? -1 : 1);
      if (Next < 0 || Next == static_cast<int>(Pieces.size())) return true;
      const TRect2D& Box = PieceAt(Pieces, Next).Box;
      return Box.Min.Equals(Box.Max, FTol);
    };
    return IsEnd(FFirst, Place.Piece1, Place.At.U1) || IsEnd(FSecond, Place.Piece2, Place.At.U2);
  }

  /// The stretch that `Next` continues, nullptr where it starts afresh.
  TStretch* FormerOf(const TStretch& Next, std::vector<TStretch>& Joined, const TEnds& Ends) const {
    for (int Piece1 = Next.From.Piece1 - 1; Piece1 <= Next.From.Piece1; ++Piece1) {
      for (int Step = -1; Step <= 1; ++Step) {
        const auto [First, Last] = Ends.equal_range(PairKey(Piece1, Next.From.Piece2 + Step));
        for (auto It = First; It != Last; ++It) {
          TStretch& Former = Joined[It->second.Index];
          if (GoesOn(Former.IsForward, It->second.At, Next)) return &Former;
        }
      }
    }
    return nullptr;
  }

  bool GoesOn(bool IsForward, const TPlace& End, const TStretch& Next) const {
    return IsForward == Next.IsForward &&
           IsSamePlace(FFirst, End.Piece1, End.At.U1, Next.From.Piece1, Next.From.At.U1) &&
           IsSamePlace(FSecond, End.Piece2, End.At.U2, Next.From.Piece2, Next.From.At.U2);
  }

  /// One place of a curve, seen from one piece or from two neighbours. The two ends of a circle are
  /// not one place.
  bool IsSamePlace(const TPieces& Pieces, int Piece1, double U1, int Piece2, double U2) const {
    const bool IsNeighbour = (Piece2 == Piece1 + 1 && U1 == 1.0 && U2 == 0.0) ||
                             (Piece2 == Piece1 - 1 && U1 == 0.0 && U2 == 1.0);
    const bool IsWithin = Piece1 == Piece2 && std::abs(U1 - U2) < 0.5;
    return (IsNeighbour || IsWithin) &&
           PieceAt(Pieces, Piece1).Eval(U1).Equals(PieceAt(Pieces, Piece2).Eval(U2), FTol);
  }

  const TPieces FFirst;
  const TPieces FSecond;
  double FTol;
  TDistinctPoints FPlaces{0.0};
  TDistinctPoints FOverlapEnds{0.0};
  std::vector<TPlace> FContacts;
  std::vector<TStretch> FStretches;
};

}  // namespace

void TGeCurve2D::IntersectCurve(const TGeCurve2D& Other, std::vector<TIntersect2D>& Results,
                                const TGeTolerance& Tol) const {
  TCurveMeeting Meeting(*this, Other, Tol);
  Meeting.CrossPieces();
  Meeting.JoinOverlaps();
  Meeting.JoinContacts();
  Meeting.Give(Results);
}

}  // namespace tarnalgo
