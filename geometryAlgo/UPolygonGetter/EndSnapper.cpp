#include "geometryAlgo/UPolygonGetter/EndSnapper.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <unordered_map>
#include <utility>

#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/PlaceIndex.h"
#include "geometryAlgo/VedaType/RTree.h"
#include "geometryAlgo/VedaType/Rect.h"

namespace tarnalgo {

/// Loose ends and joints by the cell of a grid, half the reach wide: whatever shares a cell is
/// within reach, and whatever is within reach is at most two cells off.
class TEndSnapper::TCells {
 public:
  struct TCell {
    std::vector<int> Ends;
    std::vector<int> Joints;
  };

  explicit TCells(double Reach) : FWidth(Reach / 2.0) {}

  TCell& At(const TPoint2D& P) { return FCells[{Column(P.X), Column(P.Y)}]; }
  template <class TVisitor>
  void VisitRound(const TPoint2D& P, TVisitor Visit) {
    for (int DX = -2; DX <= 2; ++DX) {
      for (int DY = -2; DY <= 2; ++DY) {
        const auto Found = FCells.find({Column(P.X) + DX, Column(P.Y) + DY});
        if (Found != FCells.end()) Visit(Found->second);
      }
    }
  }

 private:
  struct TPlace {
    double X;
    double Y;
    friend bool operator==(const TPlace&, const TPlace&) = default;
  };
  struct THash {
    std::size_t operator()(const TPlace& P) const {
      const std::size_t Seed = std::hash<double>()(P.X);
      return (Seed ^ (Seed >> 29)) * 0x9E3779B97F4A7C15u + std::hash<double>()(P.Y);
    }
  };

  double Column(double X) const { return std::floor(X / FWidth); }

  double FWidth;
  std::unordered_map<TPlace, TCell, THash> FCells;
};

int TEndSnapper::Run() {
  if (!(FGap > kLinearTolerance)) return 0;
  FindLooseEnds();
  FindFeet();
  constexpr int kLevels = 6;  // each reaches twice as far as the one before: the nearest come first
  for (int Level = kLevels - 1; Level >= 0; --Level) MatchWithin(std::ldexp(FGap, -Level));
  FollowCurves();
  return FMoved;
}

TPoint2D& TEndSnapper::PointOf(const TEnd& End) {
  std::vector<TPoint2D>& Points = CurveOf(End).Points;
  return End.IsTail ? Points.back() : Points.front();
}

void TEndSnapper::FindLooseEnds() {
  TPlaceIndex Places(kLinearTolerance);
  const auto Add = [&](TEnd End) {
    const TPoint2D P = PointOf(End);
    const int I = static_cast<int>(FEnds.size());
    Places.VisitNear(P, [&](int Id, const TPoint2D&) {
      End.First = Id;
      return true;
    });
    if (End.First < 0) {
      End.First = I;
      Places.Add(P, I);
    } else {
      End.IsDone = FEnds[Index(End.First)].IsDone = true;
    }
    FEnds.push_back(End);
  };
  for (int I = 0; I < static_cast<int>(FCurves.size()); ++I) {
    const TScatterCurve& Curve = FCurves[Index(I)];
    if (Curve.Points.empty() || Curve.IsClosed()) continue;
    Add({.Curve = I, .IsTail = false});
    Add({.Curve = I, .IsTail = true});
  }
  for (int I = 0; I < static_cast<int>(FEnds.size()); ++I) {
    if (FEnds[Index(I)].IsDone && FEnds[Index(I)].First == I) FJoints.push_back(I);
  }
}

/// Of ends in one place the first one is tried, and its foot is that of all.
void TEndSnapper::FindFeet() {
  TRTree<int> Loose(8);
  TRTree<int> Joints(8);
  for (int I = 0; I < static_cast<int>(FEnds.size()); ++I) {
    const TEnd& End = FEnds[Index(I)];
    if (End.First != I) continue;
    (End.IsDone ? Joints : Loose).Insert(I, TVRect2D(PointOf(End), PointOf(End)));
  }
  std::vector<int> Near;
  for (int C = 0; C < static_cast<int>(FCurves.size()); ++C) {
    const std::vector<TPoint2D>& Points = FCurves[Index(C)].Points;
    FLengths.emplace_back(Points.size(), 0.0);
    for (int I = 0; I + 1 < static_cast<int>(Points.size()); ++I) {
      const TVLine2D Edge(Points[Index(I)], Points[Index(I) + 1]);
      FLengths.back()[Index(I) + 1] = FLengths.back()[Index(I)] + Edge.Length();
    }
    for (int I = 0; I + 1 < static_cast<int>(Points.size()); ++I) {
      const TVRect2D Box = TVLine2D(Points[Index(I)], Points[Index(I) + 1]).BoundBox();
      Near.clear();
      Loose.Search(Box, Near, FGap);
      Joints.Search(Box, Near, kLinearTolerance);
      for (const int End : Near) TryFoot(FEnds[Index(End)], C, I);
    }
  }
  for (TEnd& End : FEnds) {
    End.Foot = FEnds[Index(End.First)].Foot;
    End.IsSet = End.Foot.Distance <= kLinearTolerance;
    End.IsDone = End.IsDone || End.IsSet;
  }
}

void TEndSnapper::TryFoot(TEnd& End, int Curve, int Edge) {
  const std::vector<TPoint2D>& Points = FCurves[Index(Curve)].Points;
  const TVLine2D Line(Points[Index(Edge)], Points[Index(Edge) + 1]);
  double T = 0.0;
  const double Distance = Line.SegmentDistanceTo(PointOf(End), T);
  const double Reach = End.IsDone ? kLinearTolerance : FGap;
  if (!(Distance <= Reach) || Distance >= End.Foot.Distance) return;
  const double Param = Edge + T;
  const bool IsEnd = Param == 0.0 || Param == FCurves[Index(Curve)].EdgeCount();  // exact: the ends
  if (IsEnd && !FCurves[Index(Curve)].IsClosed()) return;  // ends are matched as ends
  if (Curve == End.Curve) {
    const std::vector<double>& Lengths = FLengths[Index(Curve)];
    const double At = std::lerp(Lengths[Index(Edge)], Lengths[Index(Edge) + 1], T);
    const double Way = End.IsTail ? Lengths.back() - At : At;
    if (!(Way > 2.0 * FGap)) return;
  }
  End.Foot = {Curve, {Param, Lerp(Line.StartPoint, Line.EndPoint, T)}, Distance};
}

bool TEndSnapper::MayJoin(const TEnd& A, const TEnd& B) const {
  return A.Curve != B.Curve || FLengths[Index(A.Curve)].back() > 2.0 * FGap;
}

/// A short curve does not shrink to its other end.
bool TEndSnapper::MayGoTo(const TEnd& End, const TPoint2D& Place) {
  if (FLengths[Index(End.Curve)].back() > 2.0 * FGap) return true;
  return !PointOf({.Curve = End.Curve, .IsTail = !End.IsTail}).Equals(Place);
}

void TEndSnapper::MoveTo(TEnd& End, const TPoint2D& Place) {
  PointOf(End) = Place;
  End.IsDone = true;
  End.WasMoved = true;
  ++FMoved;
}

void TEndSnapper::Join(int A, int B) {
  FEnds[Index(A)].IsDone = true;
  MoveTo(FEnds[Index(B)], PointOf(FEnds[Index(A)]));
  FJoints.push_back(A);
}

/// Where the end of a curve has moved, its edge leans: what lies on that edge follows, round by
/// round, since what follows is an end too. Each round's way is shorter than the last one's by the
/// ratio of the gap to the length of an edge.
void TEndSnapper::FollowCurves() {
  constexpr int kMostRounds = 8;
  bool HasMoved = true;
  for (int Round = 0; HasMoved && Round < kMostRounds; ++Round) {
    HasMoved = false;
    for (TEnd& End : FEnds) HasMoved |= End.IsSet && Follow(End);
  }
  for (const TEnd& End : FEnds) {
    if (End.IsSet && End.WasMoved) FCurves[Index(End.Foot.Curve)].Cuts.push_back(End.Foot.Cut);
  }
}

bool TEndSnapper::Follow(TEnd& End) {
  const TScatterCurve& Curve = FCurves[Index(End.Foot.Curve)];
  const int Edge = std::min(static_cast<int>(End.Foot.Cut.Param), Curve.EdgeCount() - 1);
  const TVLine2D Line(Curve.Points[Index(Edge)], Curve.Points[Index(Edge) + 1]);
  double T = 0.0;
  const double Distance = Line.SegmentDistanceTo(PointOf(End), T);
  if (!(Distance > kLinearTolerance && Distance <= FGap)) return false;
  End.Foot.Cut = {Edge + T, Line.EvalPoint(T)};
  PointOf(End) = End.Foot.Cut.Point;
  return End.WasMoved = true;
}

/// First whatever shares a cell; then no cell has more than two ends left, so that the cells round
/// an end can be looked at whole, and no joint is looked at by more than fifty ends.
void TEndSnapper::MatchWithin(double Reach) {
  TCells Cells(Reach);
  const auto AddJoint = [&](int End) {
    Cells.At(PointOf(FEnds[Index(End)])).Joints.push_back(End);
  };
  for (const int End : FJoints) AddJoint(End);
  const auto JoinBoth = [&](int A, int B) {
    Join(std::min(A, B), std::max(A, B));
    AddJoint(FJoints.back());
  };
  for (int I = 0; I < static_cast<int>(FEnds.size()); ++I) {
    if (FEnds[Index(I)].IsDone) continue;
    std::vector<int>& Here = Cells.At(PointOf(FEnds[Index(I)])).Ends;
    const auto Other = std::find_if(
        Here.begin(), Here.end(), [&](int J) { return MayJoin(FEnds[Index(I)], FEnds[Index(J)]); });
    if (Other == Here.end()) {
      Here.push_back(I);
    } else {
      const int J = *Other;
      Here.erase(Other);
      JoinBoth(I, J);
    }
  }
  for (int I = 0; I < static_cast<int>(FEnds.size()); ++I) {
    TEnd& End = FEnds[Index(I)];
    if (End.IsDone) continue;
    const TPoint2D P = PointOf(End);
    int Nearest = -1;
    int Joint = -1;
    double ToEnd = std::nextafter(Reach, kStartOfMinimum);
    double ToJoint = ToEnd;
    Cells.VisitRound(P, [&](const TCells::TCell& Cell) {
      for (const int J : Cell.Ends) {
        const double Distance = P.DistanceTo(PointOf(FEnds[Index(J)]));
        if (J == I || FEnds[Index(J)].IsDone || Distance >= ToEnd) continue;
        if (!MayJoin(End, FEnds[Index(J)])) continue;
        Nearest = J;
        ToEnd = Distance;
      }
      for (const int J : Cell.Joints) {
        const TPoint2D& There = PointOf(FEnds[Index(J)]);
        const double Distance = P.DistanceTo(There);
        if (Distance > ToJoint || (Distance == ToJoint && J > Joint)) continue;
        if (!MayGoTo(End, There)) continue;
        Joint = J;
        ToJoint = Distance;
      }
    });
    if (Nearest >= 0 && ToEnd <= ToJoint) {
      JoinBoth(I, Nearest);
    } else if (Joint >= 0) {
      MoveTo(End, PointOf(FEnds[Index(Joint)]));
      End.IsSet = FEnds[Index(Joint)].IsSet;
      End.Foot = FEnds[Index(Joint)].Foot;
    } else if (End.Foot.Curve >= 0 && End.Foot.Distance <= Reach) {  // an endless gap reaches all
      MoveTo(End, End.Foot.Cut.Point);
      End.IsSet = true;
    }
  }
}

}  // namespace tarnalgo
