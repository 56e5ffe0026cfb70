#include "examples/sheet_planner/Nesting.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>
#include <tuple>
#include <utility>

#include "examples/sheet_planner/Contours.h"
#include "geometryAlgo/VedaType/RTree.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// Length: how far the chord by which an arc leaves an anchor may be off it.
constexpr double kFirstChordError = 0.02;

constexpr int kNodeCapacity = 8;

/// The outlines of everything that has ends. A piece is walked once each way; at an end the walk
/// goes on with the piece next clockwise, which leads round one face of the drawing. Of the faces
/// of a figure the outer one is that whose signed area is the least.
class TOutlines {
 public:
  TOutlines(const TSheet& Sheet, const std::vector<TContourPiece>& Pieces,
            const std::vector<int>& FigureOfAnchor)
      : FSheet(Sheet), FFigureOfAnchor(FigureOfAnchor) {
    FWays.reserve(2 * Pieces.size());
    for (TContourPiece Piece : Pieces) {
      const TSheetPiece& Ends = SheetPiece(Sheet, Piece);
      FWays.push_back({Piece, Ends.FromAnchor});
      Piece.IsReversed = true;
      FWays.push_back({Piece, Ends.ToAnchor});
    }
  }

  std::vector<TLABPolyline> Run(int FigureCount) {
    FindNext();
    struct TFace {
      TLABPolyline Ring;
      double Area = kStartOfMinimum;
    };
    std::vector<TFace> Outer(static_cast<std::size_t>(FigureCount));
    std::vector<char> IsWalked(FWays.size(), 0);
    for (std::size_t First = 0; First < FWays.size(); ++First) {
      if (IsWalked[First]) continue;
      std::vector<TLABSegline> Segs;
      for (std::size_t Way = First; !IsWalked[Way]; Way = FWays[Way].Next) {
        IsWalked[Way] = 1;
        AppendSegs(FSheet, FWays[Way].Piece, Segs);
      }
      TLABPolyline Ring(std::move(Segs));
      TFace& Face = Outer[static_cast<std::size_t>(FigureOf(First))];
      if (const double Area = Ring.Area(); Area < Face.Area) Face = {std::move(Ring), Area};
    }
    std::vector<TLABPolyline> Rings;
    Rings.reserve(Outer.size());
    for (TFace& Face : Outer) Rings.push_back(std::move(Face.Ring));
    return Rings;
  }

 private:
  struct TWay {
    TContourPiece Piece;
    int From;
    std::size_t Next = 0;
  };

  int FigureOf(std::size_t Way) const {
    return FFigureOfAnchor[static_cast<std::size_t>(FWays[Way].From)];
  }

  /// Where the way leaves its anchor: an arc by its first chord, which tells arcs apart that have a
  /// common tangent there.
  double LeavingAngle(const TContourPiece& Piece) {
    FSegs.clear();
    AppendSegs(FSheet, Piece, FSegs);
    const TLABSegline& Seg = FSegs.front();
    const TPoint2D Reached = Seg.SegType == stArc ? Seg.Sample(kFirstChordError)[1] : Seg.P4;
    return (Reached - Seg.P1).Angle();
  }

  void FindNext() {
    struct TLeaving {
      int Anchor;
      double Angle;
      std::size_t Way;
    };
    std::vector<TLeaving> Leaving;
    Leaving.reserve(FWays.size());
    for (std::size_t I = 0; I < FWays.size(); ++I) {
      Leaving.push_back({FWays[I].From, LeavingAngle(FWays[I].Piece), I});
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

  const TSheet& FSheet;
  const std::vector<int>& FFigureOfAnchor;
  std::vector<TWay> FWays;
  std::vector<TLABSegline> FSegs;  // of the way that is looked at
};

int LeftmostJoint(const TLABPolyline& Ring) {
  const auto Found =
      std::min_element(Ring.begin(), Ring.end(), [](const TLABSegline& A, const TLABSegline& B) {
        return std::pair(A.P1.X, A.P1.Y) < std::pair(B.P1.X, B.P1.Y);
      });
  return static_cast<int>(Found - Ring.begin());
}

/// `Inner` lies within `Outer`: told by its joint `From`, or the first after it off `Outer`; where
/// all are on it (a line from edge to edge), by the first such middle of a segment.
bool Holds(const TLABPolyline& Outer, const TLABPolyline& Inner, int From) {
  for (const double Place : {0.0, 0.5}) {
    for (int I = 0; I < Inner.Count(); ++I) {
      const TPoint2D P = Inner[(From + I) % Inner.Count()].PointByParam(Place);
      const TShapeRelation Relation = Outer.RelationWithPoint(P);
      if (Relation != srOn) return Relation == srIn;
    }
  }
  return false;
}

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
  FOfEnd.reserve(2 * Sheet.Edges.size());
  for (const TSheetEdge& Edge : Sheet.Edges) {
    FOfEnd[Edge.Line.StartPoint] = OfAnchor(Edge.FromAnchor);
    FOfEnd[Edge.Line.EndPoint] = OfAnchor(Edge.ToAnchor);
  }
  FOutlines = TOutlines(Sheet, Pieces, FOfAnchor).Run(FFirstCircle);
  for (const TSheetCircle& Circle : Sheet.Circles) {
    const TPoint2D Left = Circle.Circle.Center - TPoint2D(Circle.Circle.Radius, 0.0);
    FOutlines.push_back({{Left, Left, Circle.Circle.Center, -kCircleBulge}});
  }
  FindParents();
  FindLevels();
}

void TNesting::FindParents() {
  TRTree<int> Tree(kNodeCapacity);
  for (int Figure = 0; Figure < static_cast<int>(FOutlines.size()); ++Figure) {
    const TLABPolyline& Ring = Outline(Figure);
    const TVRect2D Box = Ring.BoundBox();
    const double Area = std::abs(Ring.Area());
    const bool HasInside = Area > kLinearTolerance * Box.HypotLength();
    FAreas.push_back(HasInside ? Area : 0.0);
    if (HasInside) Tree.Insert(Figure, Box);
  }
  const auto AreaOf = [this](int Figure) { return FAreas[static_cast<std::size_t>(Figure)]; };
  FFromLargest.resize(FOutlines.size());
  std::iota(FFromLargest.begin(), FFromLargest.end(), 0);
  std::stable_sort(FFromLargest.begin(), FFromLargest.end(),
                   [&](int A, int B) { return AreaOf(A) > AreaOf(B); });

  FParents.assign(FOutlines.size(), -1);
  std::vector<int> Round;
  for (int Figure = 0; Figure < Count(); ++Figure) {
    const TLABPolyline& Ring = Outline(Figure);
    const int Left = LeftmostJoint(Ring);
    Round.clear();
    Tree.Search(TVRect2D(Ring[Left].P1, Ring[Left].P1), Round);
    std::erase_if(Round, [&](int Other) { return AreaOf(Other) <= AreaOf(Figure); });
    std::sort(Round.begin(), Round.end(),
              [&](int A, int B) { return std::pair(AreaOf(A), A) < std::pair(AreaOf(B), B); });
    const auto Found = std::find_if(Round.begin(), Round.end(),
                                    [&](int Other) { return Holds(Outline(Other), Ring, Left); });
    if (Found != Round.end()) FParents[static_cast<std::size_t>(Figure)] = *Found;
  }
}

void TNesting::FindLevels() {
  FLevels.assign(FOutlines.size(), 0);
  for (auto Here = FFromLargest.rbegin(); Here != FFromLargest.rend(); ++Here) {
    if (Parent(*Here) < 0) continue;
    int& Outside = FLevels[static_cast<std::size_t>(Parent(*Here))];
    Outside = std::max(Outside, Level(*Here) + 1);
  }
}

TLABHPolygonList TNesting::Regions() const {
  TLABHPolygonList Regions;
  std::vector<TLABHPolygon*> RegionOf(FOutlines.size(), nullptr);  // of those that are no holes
  for (const int Figure : FFromLargest) {
    const auto I = static_cast<std::size_t>(Figure);
    if (FAreas[I] == 0.0) continue;  // exact: set above
    TLABHPolygon* Region =
        Parent(Figure) < 0 ? nullptr : RegionOf[static_cast<std::size_t>(Parent(Figure))];
    if (Region == nullptr) {
      Region = RegionOf[I] = Regions[Regions.Add(std::make_unique<TLABHPolygon>())];
    }
    Region->Add(FOutlines[I].Clone());
  }
  return Regions;
}

int TNesting::OfEdgeEnd(const TPoint2D& P) const {
  const auto Found = FOfEnd.find(P);
  return Found == FOfEnd.end() ? -1 : Found->second;
}

}  // namespace sheet_planner
