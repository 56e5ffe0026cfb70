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
    int Joint = -1;  // the first
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
  return FMoved;
}

TPoint2D& TEndSnapper::PointOf(const TEnd& End) {
  std::vector<TPoint2D>& Points = CurveOf(End).Points;
  return End.IsTail ? Points.back() : Points.front();
}

void TEndSnapper::FindLooseEnds() {
  struct TJoint {
    int Count = 0;
    TEnd First;
  };
  std::vector<TJoint> Joints;
  TPlaceIndex Places(kLinearTolerance);
  const auto Add = [&](const TEnd& End) {
    const TPoint2D& P = PointOf(End);
    int Joint = -1;
    Places.VisitNear(P, [&](int Id, const TPoint2D&) {
      Joint = Id;
      return true;
    });
    if (Joint < 0) {
      Joint = static_cast<int>(Joints.size());
      Joints.push_back({0, End});
      Places.Add(P, Joint);
    }
    ++Joints[Index(Joint)].Count;
  };
  for (int I = 0; I < static_cast<int>(FCurves.size()); ++I) {
    const TScatterCurve& Curve = FCurves[Index(I)];
    if (Curve.Points.empty() || Curve.IsClosed()) continue;
    Add({I, false, false, {}});
    Add({I, true, false, {}});
  }
  for (const TJoint& Joint : Joints) {
    if (Joint.Count == 1) {
      FEnds.push_back(Joint.First);
    } else {
      FJoints.push_back(PointOf(Joint.First));
    }
  }
}

void TEndSnapper::FindFeet() {
  TRTree<int> Ends(8);
  for (int I = 0; I < static_cast<int>(FEnds.size()); ++I) {
    Ends.Insert(I, TVRect2D(PointOf(FEnds[Index(I)]), PointOf(FEnds[Index(I)])));
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
      Near.clear();
      Ends.Search(TVLine2D(Points[Index(I)], Points[Index(I) + 1]).BoundBox(), Near, FGap);
      for (const int End : Near) TryFoot(FEnds[Index(End)], C, I);
    }
  }
  for (TEnd& End : FEnds) End.IsDone = End.Foot.Distance <= kLinearTolerance;
}

void TEndSnapper::TryFoot(TEnd& End, int Curve, int Edge) {
  const std::vector<TPoint2D>& Points = FCurves[Index(Curve)].Points;
  const TVLine2D Line(Points[Index(Edge)], Points[Index(Edge) + 1]);
  double T = 0.0;
  const double Distance = Line.SegmentDistanceTo(PointOf(End), T);
  if (!(Distance <= FGap) || Distance >= End.Foot.Distance) return;
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
  return !PointOf({End.Curve, !End.IsTail, false, {}}).Equals(Place);
}

void TEndSnapper::MoveTo(TEnd& End, const TPoint2D& Place) {
  PointOf(End) = Place;
  End.IsDone = true;
  ++FMoved;
}

void TEndSnapper::Join(TEnd& A, TEnd& B) {
  A.IsDone = true;
  MoveTo(B, PointOf(A));
  FJoints.push_back(PointOf(A));
}

/// First whatever shares a cell; then no cell has more than two ends left, and the cells round an
/// end are looked at whole.
void TEndSnapper::MatchWithin(double Reach) {
  TCells Cells(Reach);
  const auto AddJoint = [&](int I) {
    int& Joint = Cells.At(FJoints[Index(I)]).Joint;
    if (Joint < 0) Joint = I;
  };
  for (int I = 0; I < static_cast<int>(FJoints.size()); ++I) AddJoint(I);
  const auto JoinBoth = [&](int A, int B) {
    Join(FEnds[Index(std::min(A, B))], FEnds[Index(std::max(A, B))]);
    AddJoint(static_cast<int>(FJoints.size()) - 1);
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
      if (Cell.Joint < 0) return;
      const double Distance = P.DistanceTo(FJoints[Index(Cell.Joint)]);
      if (Distance >= ToJoint || !MayGoTo(End, FJoints[Index(Cell.Joint)])) return;
      Joint = Cell.Joint;
      ToJoint = Distance;
    });
    if (Nearest >= 0 && ToEnd <= ToJoint) {
      JoinBoth(I, Nearest);
    } else if (Joint >= 0) {
      MoveTo(End, FJoints[Index(Joint)]);
    } else if (End.Foot.Distance <= Reach) {
      MoveTo(End, End.Foot.Cut.Point);
      FCurves[Index(End.Foot.Curve)].Cuts.push_back(End.Foot.Cut);
    }
  }
}

}  // namespace tarnalgo
