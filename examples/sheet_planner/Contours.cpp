#include "examples/sheet_planner/Contours.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <tuple>
#include <utility>

namespace sheet_planner {

using namespace tarnalgo;

namespace {

using TPieceKind = TContourPiece::TKind;

/// Ends are sorted by place, so that the ends that meet are neighbours.
struct TEnd {
  int Anchor;
  int Port;
  std::size_t Piece;
  bool IsTail;  // the end of the piece rather than its start

  friend bool operator<(const TEnd& A, const TEnd& B) {
    return std::tie(A.Anchor, A.Port, A.Piece, A.IsTail) <
           std::tie(B.Anchor, B.Port, B.Piece, B.IsTail);
  }
};

class TJoiner {
 public:
  TJoiner(const TSheet& Sheet, const std::vector<TContourPiece>& Pieces)
      : FSheet(Sheet), FPieces(Pieces), FIsUsed(Pieces.size(), 0) {
    for (std::size_t I = 0; I < Pieces.size(); ++I) {
      const TSheetPiece& Piece = SheetPiece(Sheet, Pieces[I]);
      FEnds.push_back({Piece.FromAnchor, Piece.Port, I, false});
      FEnds.push_back({Piece.ToAnchor, Piece.Port, I, true});
    }
    std::sort(FEnds.begin(), FEnds.end());
    FCursor.assign(FEnds.size(), 0);
  }

  std::vector<TOrdinaryContour> Run() {
    std::size_t First = 0;
    while (First < FEnds.size()) {
      const std::size_t Last = PlaceEnd(First);
      if (Last - First != 2) {
        for (std::size_t I = First; I < Last; ++I) Start(FEnds[I].Piece, FEnds[I].IsTail);
      }
      First = Last;
    }
    for (std::size_t Piece = 0; Piece < FPieces.size(); ++Piece) Start(Piece, false);
    return std::move(FContours);
  }

 private:
  /// One past the ends that share the place of the end at `First`.
  std::size_t PlaceEnd(std::size_t First) const {
    std::size_t Last = First;
    while (Last < FEnds.size() && FEnds[Last].Anchor == FEnds[First].Anchor &&
           FEnds[Last].Port == FEnds[First].Port) {
      ++Last;
    }
    return Last;
  }

  /// The first end at the place whose piece is unused, `FEnds.size()` when there is none.
  std::size_t NextAt(int Anchor, int Port) {
    const auto Place = static_cast<std::size_t>(
        std::lower_bound(FEnds.begin(), FEnds.end(), TEnd{Anchor, Port, 0, false}) - FEnds.begin());
    std::size_t& Cursor = FCursor[Place];  // what lies before it is used up
    while (Place + Cursor < FEnds.size()) {
      const TEnd& End = FEnds[Place + Cursor];
      if (End.Anchor != Anchor || End.Port != Port) break;
      if (!FIsUsed[End.Piece]) return Place + Cursor;
      ++Cursor;
    }
    return FEnds.size();
  }

  void Start(std::size_t Piece, bool IsReversed) {
    if (FIsUsed[Piece]) return;
    TOrdinaryContour Contour;
    const TSheetPiece& First = SheetPiece(FSheet, FPieces[Piece]);
    const int StartAnchor = IsReversed ? First.ToAnchor : First.FromAnchor;
    Contour.Port = First.Port;
    for (;;) {
      FIsUsed[Piece] = 1;
      TContourPiece Cut = FPieces[Piece];
      Cut.IsReversed = IsReversed;
      Contour.Pieces.push_back(Cut);
      const TSheetPiece& Here = SheetPiece(FSheet, Cut);
      const int At = IsReversed ? Here.FromAnchor : Here.ToAnchor;
      Contour.IsClosed = At == StartAnchor;
      if (Contour.IsClosed) break;
      const std::size_t Next = NextAt(At, Contour.Port);
      if (Next == FEnds.size()) break;
      Piece = FEnds[Next].Piece;
      IsReversed = FEnds[Next].IsTail;
    }
    Contour.Chain = ChainOf(FSheet, Contour.Pieces);
    FContours.push_back(std::move(Contour));
  }

  const TSheet& FSheet;
  const std::vector<TContourPiece>& FPieces;
  std::vector<char> FIsUsed;
  std::vector<TEnd> FEnds;
  std::vector<std::size_t> FCursor;
  std::vector<TOrdinaryContour> FContours;
};

}  // namespace

double TOrdinaryContour::Length() const {
  return std::accumulate(Chain.begin(), Chain.end(), 0.0,
                         [](double Sum, const TLABSegline& Seg) { return Sum + Seg.Length(); });
}

const TSheetPiece& SheetPiece(const TSheet& Sheet, const TContourPiece& Piece) {
  const auto Index = static_cast<std::size_t>(Piece.Index);
  if (Piece.Kind == TPieceKind::Chain) return Sheet.Chains[Index];
  return Sheet.Edges[Index];
}

std::vector<TContourPiece> AllPieces(const TSheet& Sheet) {
  std::vector<TContourPiece> Pieces;
  const auto Add = [&Pieces](TPieceKind Kind, std::size_t Count) {
    for (std::size_t I = 0; I < Count; ++I) Pieces.push_back({Kind, static_cast<int>(I), false});
  };
  Add(TPieceKind::Edge, Sheet.Edges.size());
  Add(TPieceKind::Chain, Sheet.Chains.size());
  return Pieces;
}

TPoint2D StartOf(const TSheet& Sheet, const TContourPiece& Piece) {
  const auto Index = static_cast<std::size_t>(Piece.Index);
  if (Piece.Kind == TPieceKind::Edge) {
    const TLine2D& Line = Sheet.Edges[Index].Line;
    return Piece.IsReversed ? Line.EndPoint : Line.StartPoint;
  }
  const TLABPolyline& Chain = Sheet.Chains[Index].Chain;
  return Piece.IsReversed ? Chain.Last().P4 : Chain.First().P1;
}

TPoint2D EndOf(const TSheet& Sheet, const TContourPiece& Piece) {
  return StartOf(Sheet, {Piece.Kind, Piece.Index, !Piece.IsReversed});
}

std::vector<TOrdinaryContour> JoinPieces(const TSheet& Sheet,
                                         const std::vector<TContourPiece>& Pieces) {
  return TJoiner(Sheet, Pieces).Run();
}

void AppendSegs(const TSheet& Sheet, const TContourPiece& Piece, std::vector<TLABSegline>& Segs) {
  if (Piece.Kind == TPieceKind::Edge) {
    Segs.emplace_back(StartOf(Sheet, Piece), EndOf(Sheet, Piece));
    return;
  }
  const std::vector<TLABSegline>& Own =
      Sheet.Chains[static_cast<std::size_t>(Piece.Index)].Chain.Segs();
  if (Piece.IsReversed) {
    std::transform(Own.rbegin(), Own.rend(), std::back_inserter(Segs),
                   [](const TLABSegline& Seg) { return Seg.Reverse(); });
  } else {
    Segs.insert(Segs.end(), Own.begin(), Own.end());
  }
}

TLABPolyline ChainOf(const TSheet& Sheet, const std::vector<TContourPiece>& Pieces) {
  std::vector<TLABSegline> Segs;
  for (const TContourPiece& Piece : Pieces) AppendSegs(Sheet, Piece, Segs);
  return TLABPolyline(std::move(Segs));
}

int SegCountOf(const TSheet& Sheet, const TContourPiece& Piece) {
  if (Piece.Kind == TPieceKind::Edge) return 1;
  return Sheet.Chains[static_cast<std::size_t>(Piece.Index)].Chain.Count();
}

}  // namespace sheet_planner
