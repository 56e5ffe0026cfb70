#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>

#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/GeometryExtend/WideInteger.h"

namespace tarnalgo {

namespace {

using ClipperLib::cInt;
using TPointIndex = TPathUtils::TPointIndex;

void Expand(TIntRect& Box, const TPath& Path) {
  for (const TIntPoint& P : Path) {
    Box.Left = std::min<std::int64_t>(Box.Left, P.X);
    Box.Right = std::max<std::int64_t>(Box.Right, P.X);
    Box.Top = std::max<std::int64_t>(Box.Top, P.Y);
    Box.Bottom = std::min<std::int64_t>(Box.Bottom, P.Y);
  }
}

TVRect2D Scaled(const TIntRect& Box, double Scale) {
  if (!Box.IsValid()) return {};
  return {static_cast<double>(Box.Left) / Scale, static_cast<double>(Box.Right) / Scale,
          static_cast<double>(Box.Top) / Scale, static_cast<double>(Box.Bottom) / Scale};
}

/// The other coordinate of the first listed edge that reaches `At`; `Along` and `Across` are the
/// members of the point.
bool CalcAcross(const TPath& Path, cInt TIntPoint::*Along, cInt TIntPoint::*Across, double At,
                double& Result) {
  for (std::size_t I = 0; I < Path.size(); ++I) {
    const TIntPoint& P = Path[I];
    if (I + 1 == Path.size() && I > 0) break;  // the end belongs to the edge before
    const TIntPoint& Q = Path[std::min(I + 1, Path.size() - 1)];
    const auto From = static_cast<double>(P.*Along);
    const auto To = static_cast<double>(Q.*Along);
    if (!(At >= std::min(From, To) && At <= std::max(From, To))) continue;
    const double T = From == To ? 0.0 : (At - From) / (To - From);
    const auto Start = static_cast<double>(P.*Across);
    const auto End = static_cast<double>(Q.*Across);
    Result = T == 1.0 ? End : Start + (End - Start) * T;
    return true;
  }
  return false;
}

bool CalcAcross(const TPaths& Paths, cInt TIntPoint::*Along, cInt TIntPoint::*Across, double At,
                double& Result) {
  return std::any_of(Paths.begin(), Paths.end(), [&](const TPath& Path) {
    return CalcAcross(Path, Along, Across, At, Result);
  });
}

/// A pair of directions: which coordinate decides first, and the wanted signs.
struct TExtreme {
  bool YFirst;
  bool GreatestX;
  bool GreatestY;

  bool IsBetter(const TIntPoint& A, const TIntPoint& B) const {
    const bool ByX = GreatestX ? A.X > B.X : A.X < B.X;
    const bool ByY = GreatestY ? A.Y > B.Y : A.Y < B.Y;
    if (YFirst) return A.Y != B.Y ? ByY : ByX;
    return A.X != B.X ? ByX : ByY;
  }
};

TIntPoint FindExtreme(const TPath& Path, const TExtreme& Wanted, int& Index) {
  Index = -1;
  if (Path.empty()) return {};
  std::size_t Best = 0;
  for (std::size_t I = 1; I < Path.size(); ++I) {
    if (Wanted.IsBetter(Path[I], Path[Best])) Best = I;
  }
  Index = static_cast<int>(Best);
  return Path[Best];
}

TIntPoint FindExtreme(const TPath& Path, const TExtreme& Wanted) {
  int Index = -1;
  return FindExtreme(Path, Wanted, Index);
}

TIntPoint FindExtreme(const TPaths& Paths, const TExtreme& Wanted, TPointIndex& Index) {
  Index = {};
  TIntPoint Best;
  for (std::size_t I = 0; I < Paths.size(); ++I) {
    int Point = -1;
    const TIntPoint P = FindExtreme(Paths[I], Wanted, Point);
    if (Point < 0 || (Index.Path >= 0 && !Wanted.IsBetter(P, Best))) continue;
    Index = {static_cast<int>(I), Point};
    Best = P;
  }
  return Best;
}

TIntPoint FindExtreme(const TPaths& Paths, const TExtreme& Wanted) {
  TPointIndex Index;
  return FindExtreme(Paths, Wanted, Index);
}

constexpr TExtreme kLeftTop{false, false, true};
constexpr TExtreme kLeftBottom{false, false, false};
constexpr TExtreme kRightBottom{false, true, false};
constexpr TExtreme kRightTop{false, true, true};
constexpr TExtreme kBottomLeft{true, false, false};
constexpr TExtreme kBottomRight{true, true, false};
constexpr TExtreme kTopLeft{true, false, true};
constexpr TExtreme kTopRight{true, true, true};

}  // namespace

std::int64_t TPathUtils::GetPathsPointCount(const TPaths& Paths) {
  std::int64_t Count = 0;
  for (const TPath& Path : Paths) Count += static_cast<std::int64_t>(Path.size());
  return Count;
}

std::size_t TPathUtils::MemoryUse(const TPath& Path) {
  return Path.capacity() * sizeof(TIntPoint);
}

std::size_t TPathUtils::MemoryUse(const TPaths& Paths) {
  std::size_t Bytes = Paths.capacity() * sizeof(TPath);
  for (const TPath& Path : Paths) Bytes += MemoryUse(Path);
  return Bytes;
}

TIntRect TPathUtils::IntBoundbox(const TPath& Path) {
  TIntRect Box;
  Expand(Box, Path);
  return Box;
}

TIntRect TPathUtils::IntBoundbox(const TPaths& Paths) {
  TIntRect Box;
  for (const TPath& Path : Paths) Expand(Box, Path);
  return Box;
}

TVRect2D TPathUtils::BoundBox(const TPath& Path, double Scale) {
  return Scaled(IntBoundbox(Path), Scale);
}

TVRect2D TPathUtils::BoundBox(const TPaths& Paths, double Scale) {
  return Scaled(IntBoundbox(Paths), Scale);
}

double TPathUtils::Perimeter(const TPath& Path) {
  if (Path.empty()) return 0.0;
  return TotalLength(Path) + tarnalgo::DistanceTo(Path.back(), Path.front());
}

double TPathUtils::Perimeter(const TPaths& Paths) {
  double Sum = 0.0;
  for (const TPath& Path : Paths) Sum += Perimeter(Path);
  return Sum;
}

double TPathUtils::TotalLength(const TPath& Path) {
  double Sum = 0.0;
  for (std::size_t I = 1; I < Path.size(); ++I) {
    Sum += tarnalgo::DistanceTo(Path[I - 1], Path[I]);
  }
  return Sum;
}

double TPathUtils::TotalLength(const TPaths& Paths) {
  double Sum = 0.0;
  for (const TPath& Path : Paths) Sum += TotalLength(Path);
  return Sum;
}

double TPathUtils::Area(const TPath& Path, bool Absolute) {
  if (Path.size() < 3) return 0.0;
  TWideSum Twice;
  Twice.Add(Cross(Path.back(), Path.front()));
  for (std::size_t I = 1; I < Path.size(); ++I) Twice.Add(Cross(Path[I - 1], Path[I]));
  const double Result = Twice.Value() * 0.5;
  return Absolute ? std::abs(Result) : Result;
}

bool TPathUtils::IsRectangle(const TPath& Path) {
  if (Path.size() != 4 && !(Path.size() == 5 && IsClosed(Path))) return false;
  const TIntPoint Edges[] = {Path[1] - Path[0], Path[2] - Path[1], Path[3] - Path[2],
                             Path[0] - Path[3]};
  return Dot(Edges[0], Edges[1]) == 0 && Dot(Edges[2], Edges[1]) == 0 &&
         Dot(Edges[3], Edges[2]) == 0;
}

bool TPathUtils::CalcYByX(const TPath& Path, double X, double& Y) {
  return CalcAcross(Path, &TIntPoint::X, &TIntPoint::Y, X, Y);
}

bool TPathUtils::CalcYByX(const TPaths& Paths, double X, double& Y) {
  return CalcAcross(Paths, &TIntPoint::X, &TIntPoint::Y, X, Y);
}

bool TPathUtils::CalcXByY(const TPath& Path, double Y, double& X) {
  return CalcAcross(Path, &TIntPoint::Y, &TIntPoint::X, Y, X);
}

bool TPathUtils::CalcXByY(const TPaths& Paths, double Y, double& X) {
  return CalcAcross(Paths, &TIntPoint::Y, &TIntPoint::X, Y, X);
}

TIntPoint TPathUtils::LeftTopPoint(const TPath& Path) {
  return FindExtreme(Path, kLeftTop);
}

TIntPoint TPathUtils::LeftTopPoint(const TPath& Path, int& Index) {
  return FindExtreme(Path, kLeftTop, Index);
}

TIntPoint TPathUtils::LeftTopPoint(const TPaths& Paths) {
  return FindExtreme(Paths, kLeftTop);
}

TIntPoint TPathUtils::LeftTopPoint(const TPaths& Paths, TPointIndex& Index) {
  return FindExtreme(Paths, kLeftTop, Index);
}

TIntPoint TPathUtils::LeftBottomPoint(const TPath& Path) {
  return FindExtreme(Path, kLeftBottom);
}

TIntPoint TPathUtils::LeftBottomPoint(const TPath& Path, int& Index) {
  return FindExtreme(Path, kLeftBottom, Index);
}

TIntPoint TPathUtils::LeftBottomPoint(const TPaths& Paths) {
  return FindExtreme(Paths, kLeftBottom);
}

TIntPoint TPathUtils::LeftBottomPoint(const TPaths& Paths, TPointIndex& Index) {
  return FindExtreme(Paths, kLeftBottom, Index);
}

TIntPoint TPathUtils::RightBottomPoint(const TPath& Path) {
  return FindExtreme(Path, kRightBottom);
}

TIntPoint TPathUtils::RightBottomPoint(const TPath& Path, int& Index) {
  return FindExtreme(Path, kRightBottom, Index);
}

TIntPoint TPathUtils::RightBottomPoint(const TPaths& Paths) {
  return FindExtreme(Paths, kRightBottom);
}

TIntPoint TPathUtils::RightBottomPoint(const TPaths& Paths, TPointIndex& Index) {
  return FindExtreme(Paths, kRightBottom, Index);
}

TIntPoint TPathUtils::RightTopPoint(const TPath& Path) {
  return FindExtreme(Path, kRightTop);
}

TIntPoint TPathUtils::RightTopPoint(const TPath& Path, int& Index) {
  return FindExtreme(Path, kRightTop, Index);
}

TIntPoint TPathUtils::RightTopPoint(const TPaths& Paths) {
  return FindExtreme(Paths, kRightTop);
}

TIntPoint TPathUtils::RightTopPoint(const TPaths& Paths, TPointIndex& Index) {
  return FindExtreme(Paths, kRightTop, Index);
}

TIntPoint TPathUtils::BottomLeftPoint(const TPath& Path) {
  return FindExtreme(Path, kBottomLeft);
}

TIntPoint TPathUtils::BottomLeftPoint(const TPath& Path, int& Index) {
  return FindExtreme(Path, kBottomLeft, Index);
}

TIntPoint TPathUtils::BottomLeftPoint(const TPaths& Paths) {
  return FindExtreme(Paths, kBottomLeft);
}

TIntPoint TPathUtils::BottomLeftPoint(const TPaths& Paths, TPointIndex& Index) {
  return FindExtreme(Paths, kBottomLeft, Index);
}

TIntPoint TPathUtils::BottomRightPoint(const TPath& Path) {
  return FindExtreme(Path, kBottomRight);
}

TIntPoint TPathUtils::BottomRightPoint(const TPath& Path, int& Index) {
  return FindExtreme(Path, kBottomRight, Index);
}

TIntPoint TPathUtils::BottomRightPoint(const TPaths& Paths) {
  return FindExtreme(Paths, kBottomRight);
}

TIntPoint TPathUtils::BottomRightPoint(const TPaths& Paths, TPointIndex& Index) {
  return FindExtreme(Paths, kBottomRight, Index);
}

TIntPoint TPathUtils::TopLeftPoint(const TPath& Path) {
  return FindExtreme(Path, kTopLeft);
}

TIntPoint TPathUtils::TopLeftPoint(const TPath& Path, int& Index) {
  return FindExtreme(Path, kTopLeft, Index);
}

TIntPoint TPathUtils::TopLeftPoint(const TPaths& Paths) {
  return FindExtreme(Paths, kTopLeft);
}

TIntPoint TPathUtils::TopLeftPoint(const TPaths& Paths, TPointIndex& Index) {
  return FindExtreme(Paths, kTopLeft, Index);
}

TIntPoint TPathUtils::TopRightPoint(const TPath& Path) {
  return FindExtreme(Path, kTopRight);
}

TIntPoint TPathUtils::TopRightPoint(const TPath& Path, int& Index) {
  return FindExtreme(Path, kTopRight, Index);
}

TIntPoint TPathUtils::TopRightPoint(const TPaths& Paths) {
  return FindExtreme(Paths, kTopRight);
}

TIntPoint TPathUtils::TopRightPoint(const TPaths& Paths, TPointIndex& Index) {
  return FindExtreme(Paths, kTopRight, Index);
}

TShapeRelation TPathUtils::RelationWithPoint(const TPath& Path, const TIntPoint& P) {
  switch (ClipperLib::PointInPolygon(P, Path)) {
    case 0:
      return srOut;
    case 1:
      return srIn;
    default:
      return srOn;
  }
}

TShapeRelation TPathUtils::RelationWithPoint(const TPaths& Paths, const TIntPoint& P) {
  if (Paths.empty()) return srOut;
  const TShapeRelation Outer = RelationWithPoint(Paths.front(), P);
  if (Outer != srIn) return Outer;
  for (std::size_t I = 1; I < Paths.size(); ++I) {
    const TShapeRelation Hole = RelationWithPoint(Paths[I], P);
    if (Hole == srOn) return srOn;
    if (Hole == srIn) return srOut;
  }
  return srIn;
}

bool TPathUtils::PointInPolygon(const TPath& Path, const TIntPoint& P) {
  return RelationWithPoint(Path, P) != srOut;
}

bool TPathUtils::PointInPolygons(const TPaths& Paths, const TIntPoint& P) {
  return RelationWithPoint(Paths, P) != srOut;
}

}  // namespace tarnalgo
