#include "host/Cadtypes/Tolerance.h"

#include <algorithm>

namespace tarnalgo {

bool TGeInterval::IntersectWith(const TGeInterval& I, TGeInterval& Result) const {
  if (!(Lower <= Upper && I.Lower <= I.Upper)) return false;
  const double Low = std::max(Lower, I.Lower);
  const double High = std::min(Upper, I.Upper);
  const double Slack = std::max(Tol, I.Tol);
  if (Low <= High) {
    Result = {Low, High, Slack};
    return true;
  }
  if (!(Low - High <= Slack)) return false;
  const double Middle = High + (Low - High) / 2;
  Result = {Middle, Middle, Slack};
  return true;
}

}  // namespace tarnalgo
