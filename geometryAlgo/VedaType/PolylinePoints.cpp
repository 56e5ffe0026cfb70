#include <algorithm>
#include <cmath>

#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

void TVPoint2DList::Reserve(int Capacity) {
  if (Capacity > 0) FPoints.reserve(static_cast<std::size_t>(std::min(Capacity, kMostReserved)));
}

int TVPoint2DList::Add(const TPoint2D& P) {
  FPoints.push_back(P);
  return Count() - 1;
}

void TVPoint2DList::AddRange(const TVPoint2DList& Other) {
  if (&Other == this) return AddRange(std::vector<TPoint2D>(FPoints));
  AddRange(Other.FPoints);
}

void TVPoint2DList::AddRange(const std::vector<TPoint2D>& Points) {
  if (&Points == &FPoints) return AddRange(std::vector<TPoint2D>(FPoints));
  FPoints.insert(FPoints.end(), Points.begin(), Points.end());
}

void TVPoint2DList::Insert(int Index, const TPoint2D& P) {
  CheckIndex(Index, Count() + 1);
  FPoints.insert(FPoints.begin() + Index, P);
}

void TVPoint2DList::Delete(int Index) {
  CheckIndex(Index, Count());
  FPoints.erase(FPoints.begin() + Index);
}

void TVPoint2DList::Reverse() {
  std::reverse(FPoints.begin(), FPoints.end());
}

void TVPoint2DList::Assign(const TVPoint2DList& Other) {
  if (&Other != this) FPoints = Other.FPoints;
}

std::vector<TPoint2D> TVPoint2DList::Snip(int Index, int ACount) {
  const long long End = std::min<long long>(static_cast<long long>(Index) + ACount, Count());
  const int Begin = std::max(Index, 0);
  if (Begin >= End) return {};
  const auto From = FPoints.begin() + Begin;
  const auto To = FPoints.begin() + End;
  std::vector<TPoint2D> Piece(From, To);
  FPoints.erase(From, To);
  return Piece;
}

double TVPoint2DList::Area() const {
  if (FPoints.size() < 3) return 0.0;
  const TPoint2D Origin = FPoints.front();
  double Doubled = 0.0;
  TPoint2D Previous;
  for (const TPoint2D& P : FPoints) {
    const TPoint2D Current = P - Origin;
    Doubled += Previous.CrossMul(Current);
    Previous = Current;
  }
  return 0.5 * Doubled;
}

TVRect2D TVPoint2DList::BoundBox() const {
  TVRect2D Box;
  for (const TPoint2D& P : FPoints) Box.ExpandInPlace(P);
  return Box;
}

void TVPoint2DList::RoundTo(int Accuracy) {
  for (TPoint2D& P : FPoints) P = P.RoundTo(Accuracy);
}

void TVPoint2DList::Translate(const TPoint2D& Vector) {
  for (TPoint2D& P : FPoints) P = P + Vector;
}

void TVPoint2DList::Rotate(double Angle) {
  const double Cos = std::cos(Angle);
  const double Sin = std::sin(Angle);
  for (TPoint2D& P : FPoints) P = {P.X * Cos - P.Y * Sin, P.X * Sin + P.Y * Cos};
}

void TVPoint2DList::Rotate(double Angle, const TPoint2D& Centre) {
  const double Cos = std::cos(Angle);
  const double Sin = std::sin(Angle);
  for (TPoint2D& P : FPoints) {
    const TPoint2D V = P - Centre;
    P = Centre + TPoint2D(V.X * Cos - V.Y * Sin, V.X * Sin + V.Y * Cos);
  }
}

void TVPoint2DList::RotateBy90() {
  for (TPoint2D& P : FPoints) P = P.RotateCcw90();
}

void TVPoint2DList::RotateBy_90() {
  for (TPoint2D& P : FPoints) P = P.RotateCw90();
}

void TVPoint2DList::YMirror() {
  for (TPoint2D& P : FPoints) P.X = -P.X;
}

void TVPoint2DList::Transform(const TMatrix2D& Matrix) {
  for (TPoint2D& P : FPoints) P = Matrix.Transform(P);
}

void TVPoint2DList::Zoom(double K, const TPoint2D& Centre) {
  for (TPoint2D& P : FPoints) P = Centre + (P - Centre) * K;
}

int TVPoint2DList::IndexOfByXY(double X, double Y, double Eps) const {
  const TPoint2D Wanted(X, Y);
  const auto Found = std::find_if(FPoints.begin(), FPoints.end(),
                                  [&](const TPoint2D& P) { return P.Equals(Wanted, Eps); });
  return Found == FPoints.end() ? -1 : static_cast<int>(Found - FPoints.begin());
}

int TVPoint2DList::FindMostValueId(TDir Dir) const {
  const bool HasRight = Dir == drRight || Dir == drRightDown || Dir == drRightUp;
  const bool HasLeft = Dir == drLeft || Dir == drLeftDown || Dir == drLeftUp;
  const bool HasUp = Dir == drUp || Dir == drLeftUp || Dir == drRightUp;
  const bool HasDown = Dir == drDown || Dir == drLeftDown || Dir == drRightDown;
  const int SignX = static_cast<int>(HasRight) - static_cast<int>(HasLeft);
  const int SignY = static_cast<int>(HasUp) - static_cast<int>(HasDown);
  if (FPoints.empty() || (SignX == 0 && SignY == 0)) return -1;
  const auto LiesFarther = [&](const TPoint2D& P, const TPoint2D& Best) {
    if (SignX != 0 && P.X != Best.X) return SignX > 0 ? P.X > Best.X : P.X < Best.X;
    return SignY != 0 && (SignY > 0 ? P.Y > Best.Y : P.Y < Best.Y);
  };
  std::size_t Most = 0;
  for (std::size_t I = 1; I < FPoints.size(); ++I) {
    if (LiesFarther(FPoints[I], FPoints[Most])) Most = I;
  }
  return static_cast<int>(Most);
}

}  // namespace tarnalgo
