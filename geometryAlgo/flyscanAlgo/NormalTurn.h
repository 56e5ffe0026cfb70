#pragma once  // geometryAlgo/flyscanAlgo/NormalTurn.h

#include "host/Cadtypes/Numeric.h"
#include "host/Cadutils.h"

namespace tarnalgo {

/// `Angle` brought into [0, 2π); one that is not finite comes back as it is.
/// Tolerance: 1e-6; an angle as near below a full turn is 0.
inline double NormalTurn(double Angle) {
  double Turn = Angle < 0.0 ? Angle + kFullTurn : Angle;
  if (!(Turn >= 0.0 && Turn < kFullTurn)) {
    Turn = static_cast<double>(NormalAngle(Angle, false, 0.0L));
  }
  return TMathUtils::FloatEquals(Turn, kFullTurn) ? 0.0 : Turn;
}

}  // namespace tarnalgo
