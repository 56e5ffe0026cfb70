#include "host/Cadutils.h"

#include <algorithm>

namespace tarnalgo {

bool TMathUtils::IsInFloatCircleRange(double X, double Low, double High, double Eps) {
  if (!std::isfinite(X) || !std::isfinite(Low) || !std::isfinite(High)) return false;
  if (High - Low >= kFullTurn) return true;
  const double Width = CycInc(High, -Low, kFullTurn);
  const double Offset = CycInc(X, -Low, kFullTurn);
  return Offset <= Width + Eps || Offset >= kFullTurn - Eps;
}

double TMathUtils::DistToRange(double X, double Low, double High, double Eps) {
  if (IsInFloatRange(X, Low, High, true, true, Eps)) return 0.0;
  return std::min(std::abs(X - Low), std::abs(X - High));
}

int TMathUtils::CycInc(int I, int Step, int Count) {
  if (Count <= 0) return 0;
  const long long Sum = (static_cast<long long>(I) + Step) % Count;
  return static_cast<int>(Sum < 0 ? Sum + Count : Sum);
}

double TMathUtils::CycInc(double X, double Step, double Period) {
  if (!(Period > 0.0) || !std::isfinite(Period)) return 0.0;
  const double Sum = X + Step;
  if (!std::isfinite(Sum)) return 0.0;
  if (Sum >= 0.0 && Sum < Period) return Sum;
  double Rest = std::fmod(Sum, Period);  // exact, sign of Sum
  if (Rest < 0.0) Rest += Period;        // may round up to Period itself
  return Rest < Period ? Rest : 0.0;
}

double TMathUtils::CycDist(double A, double B, double Period, double Eps) {
  const double Dist = CycInc(B, -A, Period);
  return Dist >= Period - Eps ? 0.0 : Dist;
}

int TMathUtils::CalcQuadraticEquation(double A, double B, double C, double& X1, double& X2) {
  if (!std::isfinite(A) || !std::isfinite(B) || !std::isfinite(C)) return 0;
  const auto GiveOne = [&](long double Root) {
    const auto R = static_cast<double>(Root);
    if (!std::isfinite(R)) return 0;
    X1 = X2 = R;
    return 1;
  };
  // Extended precision: the products neither overflow nor lose the digits of a small difference.
  const long double ExtB = B;
  // exact: any other leading coefficient makes a quadratic
  if (A == 0.0) return B == 0.0 ? 0 : GiveOne(-C / ExtB);
  const long double Discriminant = ExtB * B - 4.0L * A * C;
  if (!(Discriminant >= 0.0L)) return 0;
  if (Discriminant == 0.0L) return GiveOne(-ExtB / (2.0L * A));
  // Adds numbers of one sign, then takes the other root, the smaller one, from their product.
  const long double Sum = ExtB + std::copysign(std::sqrt(Discriminant), ExtB);
  const auto Large = static_cast<double>(Sum / (-2.0L * A));
  const long double Small = -2.0L * C / Sum;
  if (!std::isfinite(Large)) return GiveOne(Small);
  X1 = std::min(Large, static_cast<double>(Small));
  X2 = std::max(Large, static_cast<double>(Small));
  return 2;
}

}  // namespace tarnalgo
