#include "host/Cadtypes/Rect.h"

#include <algorithm>

#include "host/Cadutils.h"

namespace tarnalgo {

TRect2D TRect2D::Union(const TRect2D& R) const {
  if (!R.IsValid()) return *this;
  if (!IsValid()) return R;
  return {{std::min(Min.X, R.Min.X), std::min(Min.Y, R.Min.Y)},
          {std::max(Max.X, R.Max.X), std::max(Max.Y, R.Max.Y)}};
}

TRect2D TRect2D::Union(const TPoint2D& P) const {
  return Union(TRect2D(P, P));
}

TRect2D TRect2D::Inflate(double DX, double DY) const {
  if (!IsValid()) return *this;
  return {{Min.X - DX, Min.Y - DY}, {Max.X + DX, Max.Y + DY}};
}

bool TRect2D::Contains(const TRect2D& R, double Eps) const {
  if (!R.IsValid()) return true;
  return Contains(R.Min, Eps) && Contains(R.Max, Eps);
}

bool TRect2D::Contains(const TPoint2D& P, double Eps) const {
  return IsValid() && TMathUtils::IsInFloatRange(P.X, Min.X, Max.X, true, true, Eps) &&
         TMathUtils::IsInFloatRange(P.Y, Min.Y, Max.Y, true, true, Eps);
}

}  // namespace tarnalgo
