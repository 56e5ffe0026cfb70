#include <algorithm>
#include <polyclipping/clipper.hpp>

#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/GeometryExtend/RoundedPoint.h"
#include "host/Exceptions.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

template <class T>
void DeleteAt(std::vector<T>& Items, int Index) {
  if (Index < 0 || static_cast<std::size_t>(Index) >= Items.size()) {
    RaiseError<EParamError>("TPathUtils.Delete", "index out of range");
  }
  Items.erase(Items.begin() + Index);
}

/// A linear map about a centre: (X, Y) to (A·X − B·Y, B·X + A·Y).
void MapAbout(TPath& Path, const TIntPoint& Centre, long double A, long double B) {
  const auto CX = static_cast<long double>(Centre.X);
  const auto CY = static_cast<long double>(Centre.Y);
  for (TIntPoint& P : Path) {
    const long double X = static_cast<long double>(P.X) - CX;
    const long double Y = static_cast<long double>(P.Y) - CY;
    P = RoundedPoint(CX + (A * X - B * Y), CY + (B * X + A * Y));
  }
}

}  // namespace

bool TPathUtils::GetIsClockwise(const TPath& Path) {
  return !ClipperLib::Orientation(Path);
}

void TPathUtils::SetIsClockwise(TPath& Path, bool Clockwise) {
  if (GetIsClockwise(Path) != Clockwise) Reverse(Path);
}

void TPathUtils::SetIsClockwise(TPaths& Paths, bool Clockwise, bool EachPath) {
  if (Paths.empty()) return;
  if (EachPath) {
    for (TPath& Path : Paths) SetIsClockwise(Path, Clockwise);
  } else if (GetIsClockwise(Paths.front()) != Clockwise) {
    Reverse(Paths);
  }
}

void TPathUtils::ConnectHeadTail(TPath& Path) {
  if (Path.empty() || Path.back() == Path.front()) return;
  const TIntPoint First = Path.front();
  Path.push_back(First);
}

void TPathUtils::ConnectHeadTail(TPaths& Paths) {
  // Room for all before the first one is closed.
  for (TPath& Path : Paths) {
    if (!Path.empty() && Path.back() != Path.front()) Path.reserve(Path.size() + 1);
  }
  for (TPath& Path : Paths) ConnectHeadTail(Path);
}

TPath TPathUtils::CollinearSmooth(const TPath& Path) {
  TVPolyline2D Polyline = CreatePolyline(Path, kIntegerScale);
  Polyline.CollinearSmooth(kLinearTolerance);
  return CreatePath(Polyline, kIntegerScale);
}

bool TPathUtils::IsClosed(const TPath& Path) {
  return !Path.empty() && Path.front() == Path.back();
}

bool TPathUtils::IsClosed(const TPaths& Paths) {
  return !Paths.empty() &&
         std::all_of(Paths.begin(), Paths.end(), [](const TPath& Path) { return IsClosed(Path); });
}

void TPathUtils::Delete(TPath& Path, int Index) {
  DeleteAt(Path, Index);
}

void TPathUtils::Delete(TPaths& Paths, int Index) {
  DeleteAt(Paths, Index);
}

TPath TPathUtils::Clone(const TPath& Path) {
  return Path;
}

TPaths TPathUtils::Clone(const TPaths& Paths) {
  return Paths;
}

void TPathUtils::Reverse(TPath& Path) {
  std::reverse(Path.begin(), Path.end());
}

void TPathUtils::Reverse(TPaths& Paths) {
  for (TPath& Path : Paths) Reverse(Path);
}

void TPathUtils::Negative(TPath& Path) {
  for (TIntPoint& P : Path) P = Negative(P);
}

void TPathUtils::Negative(TPaths& Paths) {
  for (TPath& Path : Paths) Negative(Path);
}

void TPathUtils::Rotate(TPath& Path, double A) {
  Rotate(Path, A, TIntPoint());
}

void TPathUtils::Rotate(TPath& Path, double A, const TIntPoint& Centre) {
  const auto Angle = static_cast<long double>(A);
  MapAbout(Path, TIntPoint(Centre), std::cos(Angle), std::sin(Angle));
}

void TPathUtils::Rotate(TPaths& Paths, double A) {
  Rotate(Paths, A, TIntPoint());
}

void TPathUtils::Rotate(TPaths& Paths, double A, const TIntPoint& Centre) {
  const TIntPoint Fixed = Centre;  // may be a point of one of the paths
  for (TPath& Path : Paths) Rotate(Path, A, Fixed);
}

void TPathUtils::Translate(TPath& Path, const TIntPoint& V) {
  const TIntPoint Shift = V;  // may be a point of the path
  for (TIntPoint& P : Path) P = P + Shift;
}

void TPathUtils::Translate(TPaths& Paths, const TIntPoint& V) {
  const TIntPoint Shift = V;
  for (TPath& Path : Paths) Translate(Path, Shift);
}

void TPathUtils::Zoom(TPath& Path, double K) {
  Zoom(Path, K, TIntPoint());
}

void TPathUtils::Zoom(TPath& Path, double K, const TIntPoint& Centre) {
  MapAbout(Path, TIntPoint(Centre), K, 0.0L);
}

void TPathUtils::Zoom(TPaths& Paths, double K) {
  Zoom(Paths, K, TIntPoint());
}

void TPathUtils::Zoom(TPaths& Paths, double K, const TIntPoint& Centre) {
  const TIntPoint Fixed = Centre;
  for (TPath& Path : Paths) Zoom(Path, K, Fixed);
}

void TPathUtils::Free(TPath& Path) {
  TPath().swap(Path);
}

void TPathUtils::Free(TPaths& Paths) {
  FreePaths(Paths);
}

void TPathUtils::PathsAdd(TPaths& Paths, const TPath& Path) {
  Paths.push_back(Path);
}

void TPathUtils::PathsAddRange(TPaths& Paths, const TPaths& Other) {
  const std::size_t Count = Other.size();  // grows with `Paths` when it is the same array
  TAppendGuard Guard(Paths);
  for (std::size_t I = 0; I < Count; ++I) Paths.push_back(Other[I]);
  Guard.Keep();
}

}  // namespace tarnalgo
