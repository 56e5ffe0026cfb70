// Integer paths: conversion, questions and cutting, against whole numbers and plain scans.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <polyclipping/clipper.hpp>
#include <set>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/GridOutline.h"
#include "geometryAlgo/GeometryExtend.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

using TPoints = std::vector<TPoint2D>;

/// Twice the area, coordinates below 2^31.
std::int64_t DoubleArea(const TPath& Path) {
  std::int64_t Sum = 0;
  for (std::size_t I = 0; I < Path.size(); ++I) {
    const TIntPoint& P = Path[I];
    const TIntPoint& Q = Path[(I + 1) % Path.size()];
    Sum += P.X * Q.Y - P.Y * Q.X;
  }
  return Sum;
}

/// Any coordinate at any scale: the extended product, rounded, within the library's range.
void CheckConversion(TBytes& Bytes) {
  const double X = Bytes.Anything();
  const double Scale = Bytes.Below(2) == 0 ? kIntegerScale : Bytes.Anything();
  constexpr long double kMost = 0x3FFFFFFFFFFFFFFFLL;
  const long double Product = static_cast<long double>(X) * Scale;
  const long double Held = std::isnan(Product) ? 0.0L : std::clamp(Product, -kMost, kMost);
  Require(TPathUtils::CreateIntPoint(TPoint2D(X, 1.0), Scale).X == std::llrint(Held),
          "a coordinate is the rounded product");
  Require(TPathUtils::CreatePath(TPoints(9, TPoint2D(X, X)), Scale).back().Y == std::llrint(Held),
          "of many points too");
}

void CheckMeasures(const TPath& Path, const TPoints& Points) {
  Require(TPathUtils::CreatePoint2DList(Path, kIntegerScale) == Points, "there and back");
  const TPath Small = TPathUtils::CreatePath(Points, 1.0);
  const auto Area = static_cast<double>(DoubleArea(Small)) / 2;
  Require(TPathUtils::Area(Small, false) == Area, "the area is that of whole numbers");
  Require(TPathUtils::GetIsClockwise(Small) == (Area < 0.0), "clockwise is a negative area");
  TPath Turned = Small;
  TPathUtils::SetIsClockwise(Turned, Area >= 0.0);
  Require(TPathUtils::Area(Turned, false) == -Area, "the other sense is the other sign");
  int Place = 0;
  TPathUtils::BottomRightPoint(Small, Place);
  const auto IsBelow = [](const TIntPoint& P, const TIntPoint& Q) {
    return P.Y < Q.Y || (P.Y == Q.Y && P.X > Q.X);
  };
  Require(Place == std::min_element(Small.begin(), Small.end(), IsBelow) - Small.begin(),
          "the first of the lowest, then rightmost");
  TPath Moved = Small;
  TPathUtils::Rotate(Moved, kQuarterTurn);
  TPathUtils::Translate(Moved, {100, -7});
  std::rotate(Moved.begin(), Moved.begin() + Place, Moved.end());
  if (Place % 2 == 1) TPathUtils::Reverse(Moved);
  Require(TPathUtils::IsCongruent(Small, Moved), "a moved path is congruent");
  Require(TPathUtils::ComparePath(Small, Moved) == -TPathUtils::ComparePath(Moved, Small) &&
              (TPathUtils::ComparePath(Small, Moved) == 0) == TPathUtils::Equal(Small, Moved),
          "paths have an order");
  Require(DoubleArea(CleanPolygonEx(Small, 0.5)) == DoubleArea(Small), "cleaning keeps the area");
}

/// Where a point lies, how far it is, and the way back from its parameter.
void CheckPlace(const TPath& Path, const TPoints& Points, const TPoint2D& P) {
  TPoints Ring = Points;
  Ring.push_back(Ring.front());
  const TIntPoint Place = TPathUtils::CreateIntPoint(P, kIntegerScale);
  const TShapeRelation Due[] = {srOut, srOn, srIn};
  Require(Points.size() < 3 ||
              TPathUtils::RelationWithPoint(Path, Place) == Due[test::SideOf(Ring, P) + 1],
          "a point lies where whole numbers say");
  const double Distance = test::FarthestFrom(Points, {P}) * kIntegerScale;
  if (Points.size() > 1) {
    Require(std::abs(TPathUtils::DistanceTo(Path, Place) - Distance) <= 1e-3, "the distance");
    TPointL2D Nearest;
    Require(
        TPathUtils::IsNearByPoint(Path, TPathUtils::CreatePointL2D(Place), Distance + 1.0, Nearest),
        "within its distance a point is near");
  }
  double Param = -1.0;
  const bool IsOn = TPathUtils::ParamByPoint(Path, Place, Param);
  Require(TPathUtils::TotalLength(Path) == 0.0 || IsOn == (Distance == 0.0),
          "a point on the path has a parameter");
  if (IsOn) {
    Require(DistanceTo(TPathUtils::PointByParam(Path, Param), Place) <= 1.0, "the way back");
  }
}

/// The height at `X`: on the first edge that reaches it, at its start where it is upright.
void CheckHeight(const TPoints& Points, double X) {
  double Y = -1.0;
  const bool IsReached = TPathUtils::CalcYByX(TPathUtils::CreatePath(Points, 1.0), X, Y);
  for (std::size_t I = 1; I < Points.size(); ++I) {
    const TPoint2D& P = Points[I - 1];
    const TPoint2D& Q = Points[I];
    if (X < std::min(P.X, Q.X) || X > std::max(P.X, Q.X)) continue;
    const double Off = P.X == Q.X ? Y - P.Y : (Q - P).CrossMul(TPoint2D(X, Y) - P);
    return Require(IsReached && std::abs(Off) <= 1e-9, "the height on the first edge there");
  }
  Require(Points.size() == 1 || !IsReached, "no height beside the path");
}

/// The parameters, inner ones only, where the path meets the cutter; exact until they are doubles.
std::set<std::int64_t> CutsOf(const TPoints& Points, const TPoints& Cutter) {
  std::set<std::int64_t> Cuts;
  const auto Edges = test::GridEdges(Points);
  for (std::size_t I = 0; I < Edges.size(); ++I) {
    const TPoint2D Way = Points[I + 1] - Points[I];
    const auto Add = [&](const TPoint2D& P) {
      if (Way == TPoint2D()) return;  // its neighbours tell
      const double T = Way.DotMul(P - Points[I]) / Way.DotMul(Way);
      Cuts.insert(std::llround((static_cast<double>(I) + T) * 1e6));
    };
    for (const test::TGridSegment& Other : test::GridEdges(Cutter)) {
      const test::TGridMeeting Meeting = test::Meet(Edges[I], Other);
      if (Meeting.Place) Add(Meeting.Place->Point());
      if (!Meeting.Stretch) continue;
      for (const test::TGridPoint& P : {Meeting.Stretch->A, Meeting.Stretch->B}) {
        Add({static_cast<double>(P.X), static_cast<double>(P.Y)});
      }
    }
  }
  return Cuts;
}

void CheckCutting(const TPath& Path, const TPoints& Points, const TPoints& Cutter) {
  const TPaths Parts = TPathUtils::CutByPath(Path, TPathUtils::CreatePath(Cutter, kIntegerScale));
  double Length = 0.0;
  for (const TPath& Part : Parts) Length += TPathUtils::TotalLength(Part);
  Require(std::abs(Length - TPathUtils::TotalLength(Path)) <= 100.0, "cutting keeps the length");
  for (std::size_t K = 1; K < Parts.size(); ++K) {
    Require(TPathUtils::Equal(Parts[K - 1].back(), Parts[K].front()), "parts join end to end");
  }
  std::set<std::int64_t> Cuts = CutsOf(Points, Cutter);
  const auto Last = static_cast<std::int64_t>(Points.size() - 1) * 1000000;
  const bool IsCutAtEnds = Cuts.count(0) + Cuts.count(Last) > 0;
  Cuts.erase(0);
  Cuts.erase(Last);
  const bool IsRing = Points.front() == Points.back();
  const std::size_t Joined = IsRing && !IsCutAtEnds && !Cuts.empty() ? 1 : 0;
  Require(Parts.size() == Cuts.size() + 1 - Joined, "as many parts as the path is cut into");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  CheckConversion(Bytes);
  const TPoint2D P = Bytes.GridPoint(8);
  TPoints Points = fuzz::GridPoints(Bytes, 10, 8);
  if (Points.empty()) return 0;
  if (Bytes.Below(2) == 1) Points.push_back(Points.front());
  const TPath Path = TPathUtils::CreatePath(Points, kIntegerScale);
  CheckMeasures(Path, Points);
  CheckPlace(Path, Points, P);
  CheckHeight(Points, P.X);
  Points.erase(std::unique(Points.begin(), Points.end()), Points.end());
  const TPoints Cutter = fuzz::GridPoints(Bytes, 6, 8);
  if (Points.size() > 1 && Cutter.size() > 1) {
    CheckCutting(TPathUtils::CreatePath(Points, kIntegerScale), Points, Cutter);
  }
  return 0;
}
