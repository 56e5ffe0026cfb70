#include "geometryAlgo/VedaType/Point.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "geometryAlgo/VedaType/Line.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

std::int64_t RoundToInt64(double Value) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (Value >= kTwoTo63) return std::numeric_limits<std::int64_t>::max();
  if (Value < -kTwoTo63) return std::numeric_limits<std::int64_t>::min();
  return std::isnan(Value) ? 0 : std::llrint(Value);
}

int ClampToInt(std::int64_t Value) {
  return static_cast<int>(std::clamp<std::int64_t>(Value, std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::max()));
}

/// |A − B|, which always fits 64 bits without sign.
double ExactDistance(std::int64_t A, std::int64_t B) {
  const auto UA = static_cast<std::uint64_t>(A);
  const auto UB = static_cast<std::uint64_t>(B);
  return static_cast<double>(A < B ? UB - UA : UA - UB);
}

/// One compass direction: its step and its code with the host's window manager.
struct TDirRecord {
  TDir Dir;
  int StepX;
  int StepY;
  int WindowsDir;
};

constexpr std::array<TDirRecord, 8> kDirRecords{{
    {drLeft, -1, 0, 1},
    {drRight, 1, 0, 2},
    {drUp, 0, 1, 3},
    {drLeftUp, -1, 1, 4},
    {drRightUp, 1, 1, 5},
    {drDown, 0, -1, 6},
    {drLeftDown, -1, -1, 7},
    {drRightDown, 1, -1, 8},
}};

template <class TTest>
const TDirRecord* FindDir(TTest&& Test) {
  const auto* Found = std::find_if(kDirRecords.begin(), kDirRecords.end(), Test);
  return Found == kDirRecords.end() ? nullptr : Found;
}

const TDirRecord* FindDir(TDir Dir) {
  return FindDir([Dir](const TDirRecord& Record) { return Record.Dir == Dir; });
}

const TDirRecord* FindStep(int X, int Y) {
  return FindDir(
      [X, Y](const TDirRecord& Record) { return Record.StepX == X && Record.StepY == Y; });
}

}  // namespace

// --- TPointL2D ---

TPointL2D::TPointL2D(const TPoint2D& P) : X(RoundToInt64(P.X)), Y(RoundToInt64(P.Y)) {}

Cadtypes::TIntPoint TPointL2D::ToCADIntPoint() const {
  return {ClampToInt(X), ClampToInt(Y)};
}

double TPointL2D::DistanceTo(const TPointL2D& P) const {
  return TPoint2D(ExactDistance(X, P.X), ExactDistance(Y, P.Y)).Mag();
}

// --- TPoint2DUtils ---

double TPoint2DUtils::GetCoor(const TPoint2D& Point, int CoorId) {
  switch (CoorId) {
    case 0:
      return Point.X;
    case 1:
      return Point.Y;
    default:
      RaiseError<EParamError>("TPoint2DUtils.GetCoor", "参数错误");
  }
}

int TPoint2DUtils::CompareByYX(const TPoint2D& A, const TPoint2D& B) {
  if (const int Sign = CompareExact(A.Y, B.Y)) return Sign;
  return CompareExact(A.X, B.X);
}

int TPoint2DUtils::Quadrant(const TPoint2D& Vector) {
  if (Vector.X > 0.0 && Vector.Y >= 0.0) return 1;
  if (Vector.X <= 0.0 && Vector.Y > 0.0) return 2;
  if (Vector.X < 0.0 && Vector.Y <= 0.0) return 3;
  if (Vector.X >= 0.0 && Vector.Y < 0.0) return 4;
  return 0;
}

TPoint2D TPoint2DUtils::Mirror(const TPoint2D& P, const TVLine2D& Axis) {
  const TPoint2D Normal = Axis.Vector().Normal().RotateCcw90();
  return P - Normal * (2.0 * Normal.DotMul(P - Axis.StartPoint));
}

TPoint2D TPoint2DUtils::Stretch(const TPoint2D& Vector, double Length) {
  return Vector.Normal() * Length;
}

double TPoint2DUtils::AbsAngle(const TPoint2D& Vec1, const TPoint2D& Vec2) {
  return Vec1.AngleBetween(Vec2);
}

double TPoint2DUtils::TriangleArea(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C,
                                   bool IsAbs) {
  const double Area = 0.5 * IsLeft(A, B, C);
  return IsAbs ? std::abs(Area) : Area;
}

TPoint2D TPoint2DUtils::InCenter(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
  // Each corner weighs as much as the side opposite to it is long. Relative to A, so that far from
  // the origin no digits are lost.
  const double SideB = A.DistanceTo(C);
  const double SideC = A.DistanceTo(B);
  const double Perimeter = B.DistanceTo(C) + SideB + SideC;
  if (!(Perimeter > 0.0)) return A;
  return A + (B - A) * (SideB / Perimeter) + (C - A) * (SideC / Perimeter);
}

void TPoint2DUtils::WriteToFile(const TPoint2D& P, const std::string& FileName,
                                std::string_view Colour) {
  WriteDebugFile("TPoint2DUtils.WriteToFile", FileName, DebugDrawing({P}, Colour));
}

// --- TDirUtils ---

TDir TDirUtils::WindowsDirToDir(int WindowsDir) {
  const TDirRecord* Record = FindDir(
      [WindowsDir](const TDirRecord& Candidate) { return Candidate.WindowsDir == WindowsDir; });
  if (!Record) RaiseError("TDirUtils.WindowsDirToDir", "参数错误");
  return Record->Dir;
}

int TDirUtils::DirToWindowsDir(TDir Dir) {
  const TDirRecord* Record = FindDir(Dir);
  if (!Record) RaiseError("TDirUtils.DirToWindowsDir", "参数错误");
  return Record->WindowsDir;
}

TPoint2D TDirUtils::DirToVec(TDir Dir) {
  const TDirRecord* Record = FindDir(Dir);
  if (!Record) RaiseError("TDirUtils.DirToVec", "参数错误");
  return {static_cast<double>(Record->StepX), static_cast<double>(Record->StepY)};
}

int TDirUtils::ModWithDivisor(int Dividend, int Divisor) {
  if (Divisor == 0) return 0;
  const long long Rest = static_cast<long long>(Dividend) % Divisor;
  const bool OtherSign = Rest != 0 && (Rest < 0) != (Divisor < 0);
  return static_cast<int>(OtherSign ? Rest + Divisor : Rest);
}

TDir TDirUtils::Reverse(TDir Dir) {
  const TDirRecord* Record = FindDir(Dir);
  if (!Record) RaiseError("TDirUtils.Reverse", "参数错误");
  return FindStep(-Record->StepX, -Record->StepY)->Dir;
}

TDir TDirUtils::RotateN90Degrees(TDir OriDir, int N) {
  const TDirRecord* Record = FindDir(OriDir);
  if (!Record) RaiseError("TDirUtils.RotateN90Degrees", "参数错误");
  for (int Turns = ModWithDivisor(N, 4); Turns > 0; --Turns) {
    Record = FindStep(-Record->StepY, Record->StepX);
    // The table holds every quarter turn of each of its steps.
    if (!Record) RaiseError("TDirUtils.RotateN90Degrees", "计算错误");
  }
  return Record->Dir;
}

}  // namespace tarnalgo
