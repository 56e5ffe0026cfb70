#include "geometryAlgo/SweepLine/StripSearch.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace tarnalgo {

namespace {

/// A segment with X ascending. A gentle one rises by at most 45°.
struct TPiece {
  TPoint2D Start;
  TPoint2D End;
  double Slope = 0.0;
  int Segment = 0;
  bool IsGentle = false;

  double LineY(double X) const { return Start.Y + Slope * (X - Start.X); }
};

struct TStrip {
  double Left;
  double Right;
};

/// A gentle piece that runs through a strip, with its Y on both sides.
struct TStair {
  double LeftY;
  double RightY;
  int Piece;
};

using TSet = std::vector<int>;  // positions in the list of pieces

/// Finds the pairs with at least one gentle piece.
class TSearch {
 public:
  TSearch(std::vector<TPiece> Pieces, double Width, const TStripSearch::TVisitor& Visit)
      : FPieces(std::move(Pieces)), FWidth(Width), FMargin(8.0 * Width), FVisit(Visit) {}

  void Run() {
    if (FPieces.empty()) return;
    TStrip All{FPieces[0].Start.X, FPieces[0].End.X};
    TSet Set;
    for (const TPiece& Piece : FPieces) {
      All = {std::min(All.Left, Piece.Start.X), std::max(All.Right, Piece.End.X)};
      Set.push_back(static_cast<int>(Set.size()));
    }
    SearchStrip(All, Set);
  }

 private:
  static constexpr std::size_t kFew = 24;  // compared with one another rather than halved
  static constexpr int kRounds = 8;        // flights of stairs in a strip that can be halved

  const TPiece& Piece(int I) const { return FPieces[static_cast<std::size_t>(I)]; }
  void Visit(int A, int B) const { FVisit(Piece(A).Segment, Piece(B).Segment); }

  void SearchStrip(const TStrip& Strip, const TSet& Set);
  std::vector<TStair> TakeFlight(std::vector<TStair>& Through, TSet& Blocked) const;
  void VisitNearStairs(const std::vector<TStair>& Flight) const;
  void VisitStairsMet(const TStrip& Strip, const std::vector<TStair>& Flight, int Other) const;
  void VisitAll(const TStrip& Strip, const TSet& Set) const;
  bool FindMiddle(const TStrip& Strip, const TSet& Set, double& Middle) const;
  /// The part of the piece in the strip, which is `FWidth` wider on both sides.
  std::pair<TPoint2D, TPoint2D> PartIn(const TStrip& Strip, int I) const;

  std::vector<TPiece> FPieces;
  double FWidth;   // the reach and a slack for rounding
  double FMargin;  // between heights: the reach along a gentle line, and what
                   // `FWidth` changes
  const TStripSearch::TVisitor& FVisit;
};

void TSearch::SearchStrip(const TStrip& Strip, const TSet& Set) {
  if (Set.size() <= kFew) return VisitAll(Strip, Set);
  std::vector<TStair> Through;
  TSet Rest;
  for (const int I : Set) {
    const TPiece& P = Piece(I);
    if (P.IsGentle && P.Start.X <= Strip.Left && P.End.X >= Strip.Right) {
      Through.push_back({P.LineY(Strip.Left), P.LineY(Strip.Right), I});
    } else {
      Rest.push_back(I);
    }
  }
  std::sort(Through.begin(), Through.end(),
            [](const TStair& A, const TStair& B) { return A.LeftY < B.LeftY; });
  double Middle = 0.0;
  const bool CanHalve = FindMiddle(Strip, Rest, Middle);
  // Where stairs block one another they cross: that pays for another flight.
  for (int Round = 0; !Through.empty() && (Round < kRounds || !CanHalve); ++Round) {
    TSet Blocked;
    const std::vector<TStair> Flight = TakeFlight(Through, Blocked);
    VisitNearStairs(Flight);
    for (const int Other : Blocked) VisitStairsMet(Strip, Flight, Other);
    for (const int Other : Rest) VisitStairsMet(Strip, Flight, Other);
  }
  if (!CanHalve) return VisitAll(Strip, Rest);
  for (const TStair& Stair : Through) Rest.push_back(Stair.Piece);
  TSet Left;
  TSet Right;
  for (const int I : Rest) {
    if (Piece(I).Start.X <= Middle + FWidth) Left.push_back(I);
    if (Piece(I).End.X >= Middle - FWidth) Right.push_back(I);
  }
  SearchStrip({Strip.Left, Middle}, Left);
  SearchStrip({Middle, Strip.Right}, Right);
}

/// The median of the ends strictly inside the strip; false when there is none.
bool TSearch::FindMiddle(const TStrip& Strip, const TSet& Set, double& Middle) const {
  std::vector<double> Ends;
  for (const int I : Set) {
    for (const double X : {Piece(I).Start.X, Piece(I).End.X}) {
      if (X > Strip.Left && X < Strip.Right) Ends.push_back(X);
    }
  }
  if (Ends.empty()) return false;
  const auto Median = Ends.begin() + static_cast<std::ptrdiff_t>(Ends.size() / 2);
  std::nth_element(Ends.begin(), Median, Ends.end());
  Middle = *Median;
  return true;
}

/// Stairs in ascending order on the left, and on the right up to `FWidth`. What
/// is left over stays in `Through`, in its order.
std::vector<TStair> TSearch::TakeFlight(std::vector<TStair>& Through, TSet& Blocked) const {
  std::vector<TStair> Flight;
  std::vector<TStair> LeftOver;
  double Top = 0.0;
  for (const TStair& Stair : Through) {
    if (!Flight.empty() && Stair.RightY < Top - FWidth) {
      LeftOver.push_back(Stair);
      Blocked.push_back(Stair.Piece);
      continue;
    }
    Top = Flight.empty() ? Stair.RightY : std::max(Top, Stair.RightY);
    Flight.push_back(Stair);
  }
  Through.swap(LeftOver);
  return Flight;
}

/// Two stairs are nearest on one side of the strip.
void TSearch::VisitNearStairs(const std::vector<TStair>& Flight) const {
  for (std::size_t I = 0; I < Flight.size(); ++I) {
    for (std::size_t J = I + 1; J < Flight.size(); ++J) {
      if (Flight[J].LeftY > Flight[I].LeftY + FMargin) break;
      Visit(Flight[I].Piece, Flight[J].Piece);
    }
    for (std::size_t J = I + 1; J < Flight.size(); ++J) {
      if (Flight[J].RightY > Flight[I].RightY + FMargin) break;
      if (Flight[J].LeftY > Flight[I].LeftY + FMargin) Visit(Flight[I].Piece, Flight[J].Piece);
    }
  }
}

std::pair<TPoint2D, TPoint2D> TSearch::PartIn(const TStrip& Strip, int I) const {
  const TPiece& P = Piece(I);
  const double Left = Strip.Left - FWidth;
  const double Right = Strip.Right + FWidth;
  return {P.Start.X >= Left ? P.Start : TPoint2D(Left, P.LineY(Left)),
          P.End.X <= Right ? P.End : TPoint2D(Right, P.LineY(Right))};
}

/// The stairs between the places of the two ends of the part that lies in the
/// strip.
void TSearch::VisitStairsMet(const TStrip& Strip, const std::vector<TStair>& Flight,
                             int Other) const {
  const auto [From, To] = PartIn(Strip, Other);
  const auto CountBelow = [&](const TPoint2D& P, double Shift) {
    return std::partition_point(Flight.begin(), Flight.end(), [&](const TStair& Stair) {
      return Piece(Stair.Piece).LineY(P.X) < P.Y + Shift;
    });
  };
  const auto First = std::min(CountBelow(From, -FMargin), CountBelow(To, -FMargin));
  const auto Last = std::max(CountBelow(From, FMargin), CountBelow(To, FMargin));
  for (auto Stair = First; Stair < Last; ++Stair) Visit(Stair->Piece, Other);
}

/// Pairs whose parts in the strip come near each other in Y.
void TSearch::VisitAll(const TStrip& Strip, const TSet& Set) const {
  struct TRange {
    double Low;
    double High;
    int Piece;
  };
  std::vector<TRange> Ranges;
  for (const int I : Set) {
    const auto [From, To] = PartIn(Strip, I);
    Ranges.push_back({std::min(From.Y, To.Y), std::max(From.Y, To.Y) + FMargin, I});
  }
  std::sort(Ranges.begin(), Ranges.end(),
            [](const TRange& A, const TRange& B) { return A.Low < B.Low; });
  for (std::size_t I = 0; I < Ranges.size(); ++I) {
    for (std::size_t J = I + 1; J < Ranges.size() && Ranges[J].Low <= Ranges[I].High; ++J) {
      const int A = Ranges[I].Piece;
      const int B = Ranges[J].Piece;
      if (Piece(A).IsGentle || Piece(B).IsGentle) Visit(A, B);
    }
  }
}

TPiece PieceOf(const TVLine2D& Line, int Segment) {
  const TPoint2D V = Line.Vector();
  return {Line.StartPoint, Line.EndPoint, V.X != 0.0 ? V.Y / V.X : 0.0, Segment,
          std::abs(V.Y) <= std::abs(V.X)};
}

}  // namespace

void TStripSearch::VisitPairs(const std::vector<TVLine2D>& Lines, const std::vector<int>& Segments,
                              double Reach, const TVisitor& Visit) {
  std::vector<TPiece> All;
  std::vector<TPiece> Steep;
  double Greatest = 0.0;
  for (const int Segment : Segments) {
    const TVLine2D& Line = Lines[static_cast<std::size_t>(Segment)];
    All.push_back(PieceOf(Line, Segment));
    for (const TPoint2D& P : {Line.StartPoint, Line.EndPoint}) {
      Greatest = std::max({Greatest, std::abs(P.X), std::abs(P.Y)});
    }
    if (All.back().IsGentle) continue;
    TPoint2D From(Line.StartPoint.Y, Line.StartPoint.X);
    TPoint2D To(Line.EndPoint.Y, Line.EndPoint.X);
    if (From.X > To.X) std::swap(From, To);
    Steep.push_back(PieceOf({From, To}, Segment));
  }
  const double Width = Reach + std::ldexp(Greatest, -48);  // a few dozen roundings
  TSearch(std::move(All), Width, Visit).Run();
  TSearch(std::move(Steep), Width, Visit).Run();
}

}  // namespace tarnalgo
