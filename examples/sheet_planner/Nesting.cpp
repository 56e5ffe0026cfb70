#include "examples/sheet_planner/Nesting.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

#include "examples/sheet_planner/Contours.h"
#include "geometryAlgo/VedaType/RTree.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// Length: chords in place of arcs and circles.
constexpr double kChordError = 0.02;

constexpr int kNodeCapacity = 8;

/// A chord of the outer boundary of a figure, the inside to its right.
struct TChord {
  TPoint2D From;
  TPoint2D To;
  int Figure;

  /// Half open, so that a level line through a joint of two chords meets one of them.
  bool Spans(double Y) const { return (From.Y <= Y) != (To.Y <= Y); }
  /// The same bits for a chord and its reverse.
  double XAt(double Y) const {
    const TPoint2D& Low = From.Y < To.Y ? From : To;
    const TPoint2D& High = From.Y < To.Y ? To : From;
    return Low.X + (High.X - Low.X) * ((Y - Low.Y) / (High.Y - Low.Y));
  }
};

/// The outer boundaries of everything that has ends. A piece is walked once each way; at an end the
/// walk goes on with the piece next clockwise, which leads round one face of the drawing. Of the
/// faces of a figure the outer one is that whose signed area is the least.
class TBoundaries {
 public:
  TBoundaries(const TSheet& Sheet, const std::vector<TContourPiece>& Pieces,
              const std::vector<int>& FigureOfAnchor)
      : FFigureOfAnchor(FigureOfAnchor) {
    for (const TContourPiece& Piece : Pieces) {
      const TSheetPiece& Ends = SheetPiece(Sheet, Piece);
      TWay Way{PointsOf(Sheet, Piece, kChordError), Ends.FromAnchor, Ends.ToAnchor};
      TWay Back = Way;
      std::reverse(Back.Points.begin(), Back.Points.end());
      std::swap(Back.From, Back.To);
      FWays.push_back(std::move(Way));
      FWays.push_back(std::move(Back));
    }
  }

  std::vector<TChord> Run(int FigureCount) {
    FindNext();
    struct TFace {
      std::size_t First = 0;
      double Area = kStartOfMinimum;
    };
    std::vector<TFace> Outer(static_cast<std::size_t>(FigureCount));
    std::vector<char> IsWalked(FWays.size(), 0);
    for (std::size_t First = 0; First < FWays.size(); ++First) {
      if (IsWalked[First]) continue;
      double Area = 0.0;
      for (std::size_t Way = First; !IsWalked[Way]; Way = FWays[Way].Next) {
        IsWalked[Way] = 1;
        Area += AreaBelow(FWays[Way].Points, FWays[First].Points.front());
      }
      TFace& Face = Outer[static_cast<std::size_t>(FigureOf(First))];
      if (Area < Face.Area) Face = {First, Area};
    }
    std::vector<TChord> Chords;
    for (const TFace& Face : Outer) {
      std::size_t Way = Face.First;
      do {
        AppendChords(FWays[Way].Points, FigureOf(Way), Chords);
        Way = FWays[Way].Next;
      } while (Way != Face.First);
    }
    return Chords;
  }

  static void AppendChords(const std::vector<TPoint2D>& Points, int Figure,
                           std::vector<TChord>& Chords) {
    for (std::size_t I = 1; I < Points.size(); ++I) {
      Chords.push_back({Points[I - 1], Points[I], Figure});
    }
  }

 private:
  struct TWay {
    std::vector<TPoint2D> Points;
    int From;
    int To;
    std::size_t Next = 0;
  };

  int FigureOf(std::size_t Way) const {
    return FFigureOfAnchor[static_cast<std::size_t>(FWays[Way].From)];
  }

  static double AreaBelow(const std::vector<TPoint2D>& Points, const TPoint2D& Origin) {
    double Area = 0.0;
    for (std::size_t I = 1; I < Points.size(); ++I) {
      Area += (Points[I - 1] - Origin).CrossMul(Points[I] - Origin);
    }
    return Area;
  }

  void FindNext() {
    struct TLeaving {
      int Anchor;
      double Angle;
      std::size_t Way;
    };
    std::vector<TLeaving> Leaving;
    for (std::size_t I = 0; I < FWays.size(); ++I) {
      const std::vector<TPoint2D>& Points = FWays[I].Points;
      Leaving.push_back({FWays[I].From, (Points[1] - Points[0]).Angle(), I});
    }
    std::sort(Leaving.begin(), Leaving.end(), [](const TLeaving& A, const TLeaving& B) {
      return std::tie(A.Anchor, A.Angle, A.Way) < std::tie(B.Anchor, B.Angle, B.Way);
    });
    std::size_t First = 0;
    for (std::size_t I = 0; I < Leaving.size(); ++I) {
      if (Leaving[I].Anchor != Leaving[First].Anchor) First = I;
      std::size_t Last = I;  // found for the first of the anchor only
      if (I == First) {
        while (Last + 1 < Leaving.size() && Leaving[Last + 1].Anchor == Leaving[I].Anchor) ++Last;
      }
      const std::size_t Clockwise = I == First ? Last : I - 1;
      // Ways and their reverse are neighbours in the list: what comes in by the reverse goes on.
      FWays[Leaving[I].Way ^ 1U].Next = Leaving[Clockwise].Way;
    }
  }

  const std::vector<int>& FFigureOfAnchor;
  std::vector<TWay> FWays;
};

/// Looks from places to the left for the nearest chord of another figure.
class TLeftwardView {
 public:
  explicit TLeftwardView(const std::vector<TChord>& Chords) : FChords(Chords) {
    for (std::size_t I = 0; I < Chords.size(); ++I) {
      const TLine2D Line{Chords[I].From, Chords[I].To};
      FTree.Insert(static_cast<int>(I), TVRect2D(Line.GetBoundBox()));
      FBox = FBox.Union(Line.GetBoundBox());
    }
    const double Size = std::max(FBox.Width(), FBox.Height());
    FStep = std::max(Size / std::sqrt(static_cast<double>(Chords.size()) + 1.0), 1e-3);
  }

  struct TSight {
    int Figure = -1;
    double X = 0.0;
    int Side = 0;  // above 0: the place is inside
  };

  TSight Look(const TPoint2D& P, int OwnFigure) const {
    TSight Best;
    double Right = P.X;
    for (double Step = FStep; Best.Figure < 0 && Right >= FBox.Min.X; Step *= 2.0) {
      const double Left = Right - Step;
      for (const int I : FTree.Search(TVRect2D(TRect2D({Left, P.Y}, {Right, P.Y})))) {
        const TChord& Chord = FChords[static_cast<std::size_t>(I)];
        if (Chord.Figure == OwnFigure || !Chord.Spans(P.Y)) continue;
        const double X = Chord.XAt(P.Y);
        if (X >= P.X || X < Left) continue;
        const int Side = Chord.To.Y > Chord.From.Y ? 1 : -1;
        if (Best.Figure < 0 || X > Best.X) {
          Best = {Chord.Figure, X, Side};
        } else if (X == Best.X && Chord.Figure == Best.Figure) {
          Best.Side += Side;  // there and back: no inside between
        }
      }
      Right = Left;
    }
    return Best;
  }

 private:
  const std::vector<TChord>& FChords;
  TRTree<int> FTree{kNodeCapacity};
  TRect2D FBox;
  double FStep = 1.0;
};

/// Numbers for what hangs together: the figure of each anchor, −1 where nothing ends.
std::vector<int> FiguresOfAnchors(const TSheet& Sheet, const std::vector<TContourPiece>& Pieces,
                                  int& Count) {
  int AnchorCount = 0;
  for (const TContourPiece& Piece : Pieces) {
    const TSheetPiece& Ends = SheetPiece(Sheet, Piece);
    AnchorCount = std::max({AnchorCount, Ends.FromAnchor + 1, Ends.ToAnchor + 1});
  }
  std::vector<int> Next(static_cast<std::size_t>(AnchorCount));
  std::iota(Next.begin(), Next.end(), 0);
  const auto At = [&Next](int Anchor) -> int& { return Next[static_cast<std::size_t>(Anchor)]; };
  const auto Root = [&At](int Anchor) {
    while (At(Anchor) != Anchor) Anchor = At(Anchor) = At(At(Anchor));  // halves the way
    return Anchor;
  };
  for (const TContourPiece& Piece : Pieces) {
    const TSheetPiece& Ends = SheetPiece(Sheet, Piece);
    const int A = Root(Ends.FromAnchor);
    const int B = Root(Ends.ToAnchor);
    At(std::max(A, B)) = std::min(A, B);
  }
  std::vector<int> Figures(Next.size(), -1);
  const auto FigureAt = [&Figures](int Anchor) -> int& {
    return Figures[static_cast<std::size_t>(Anchor)];
  };
  for (const TContourPiece& Piece : Pieces) {
    const TSheetPiece& Ends = SheetPiece(Sheet, Piece);
    int& Figure = FigureAt(Root(Ends.FromAnchor));
    if (Figure < 0) Figure = Count++;
    FigureAt(Ends.FromAnchor) = FigureAt(Ends.ToAnchor) = Figure;
  }
  return Figures;
}

}  // namespace

TNesting::TNesting(const TSheet& Sheet) {
  const std::vector<TContourPiece> Pieces = AllPieces(Sheet);
  FOfAnchor = FiguresOfAnchors(Sheet, Pieces, FFirstCircle);
  for (const TSheetEdge& Edge : Sheet.Edges) {
    FOfEnd[{Edge.Line.StartPoint.X, Edge.Line.StartPoint.Y}] = OfAnchor(Edge.FromAnchor);
    FOfEnd[{Edge.Line.EndPoint.X, Edge.Line.EndPoint.Y}] = OfAnchor(Edge.ToAnchor);
  }
  std::vector<TChord> Chords = TBoundaries(Sheet, Pieces, FOfAnchor).Run(FFirstCircle);
  int Figure = FFirstCircle;
  for (const TSheetCircle& Circle : Sheet.Circles) {
    const TGeCircularArc2D Clockwise(Circle.Circle.Center, Circle.Circle.Radius, 0.0, -kFullTurn);
    TBoundaries::AppendChords(Clockwise.Sample(kChordError), Figure++, Chords);
  }
  const auto Size = static_cast<std::size_t>(Figure);
  FParents.assign(Size, -1);
  FLevels.assign(Size, 0);

  const auto IsFurtherLeft = [](const TPoint2D& A, const TPoint2D& B) {
    return std::pair(A.X, A.Y) < std::pair(B.X, B.Y);
  };
  std::vector<TPoint2D> Leftmost(Size, {kStartOfMinimum, 0.0});
  for (const TChord& Chord : Chords) {
    TPoint2D& Place = Leftmost[static_cast<std::size_t>(Chord.Figure)];
    Place = std::min({Place, Chord.From, Chord.To}, IsFurtherLeft);
  }
  // What is seen to the left of a figure begins further left, so its parent is known already.
  std::vector<int> Order(Size);
  std::iota(Order.begin(), Order.end(), 0);
  std::stable_sort(Order.begin(), Order.end(), [&](int A, int B) {
    return IsFurtherLeft(Leftmost[static_cast<std::size_t>(A)],
                         Leftmost[static_cast<std::size_t>(B)]);
  });
  const TLeftwardView View(Chords);
  for (const int Here : Order) {
    const auto Sight = View.Look(Leftmost[static_cast<std::size_t>(Here)], Here);
    if (Sight.Figure < 0) continue;
    FParents[static_cast<std::size_t>(Here)] = Sight.Side > 0 ? Sight.Figure : Parent(Sight.Figure);
  }
  for (auto Here = Order.rbegin(); Here != Order.rend(); ++Here) {
    const int Outside = Parent(*Here);
    if (Outside < 0) continue;
    int& Level = FLevels[static_cast<std::size_t>(Outside)];
    Level = std::max(Level, this->Level(*Here) + 1);
  }
}

int TNesting::OfEdgeEnd(const TPoint2D& P) const {
  const auto Found = FOfEnd.find({P.X, P.Y});
  return Found == FOfEnd.end() ? -1 : Found->second;
}

}  // namespace sheet_planner
