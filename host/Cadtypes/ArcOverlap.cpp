#include "host/Cadtypes/ArcOverlap.h"

#include "host/Cadutils.h"

namespace tarnalgo {

TArcOverlap::TArcOverlap(double Radius, double Turn, double OtherStart, double OtherTurn,
                         double Eps) {
  if (!(Turn >= 0.0) || !(OtherTurn >= 0.0)) return;  // not a number: covers nothing
  if (IsFull(Radius, OtherTurn, Eps)) {
    Add(Radius, {0.0, Turn, true, true}, Eps);
    return;
  }
  if (IsFull(Radius, Turn, Eps)) {  // no seam to cut the second arc in two
    Add(Radius, {OtherStart, OtherStart + OtherTurn, false, false}, Eps);
    return;
  }
  // Unrolled from the start of the first arc, the second one begins within the first turn and may
  // run on into the next.
  for (const double Start : {OtherStart - kFullTurn, OtherStart}) {
    const double End = Start + OtherTurn;
    const bool IsLowOwn = !(Start > 0.0);
    const bool IsHighOwn = !(End < Turn);
    Add(Radius, {IsLowOwn ? 0.0 : Start, IsHighOwn ? Turn : End, IsLowOwn, IsHighOwn}, Eps);
  }
}

bool TArcOverlap::IsFull(double Radius, double Turn, double Eps) {
  return Turn >= kFullTurn || TMathUtils::FloatLessEquals((kFullTurn - Turn) * Radius, 0.0, Eps);
}

void TArcOverlap::Add(double Radius, const TPart& Part, double Eps) {
  const double Length = Part.Width() * Radius;
  if (!TMathUtils::FloatGreaterEquals(Length, 0.0, Eps)) return;
  FParts[FCount] = Part;
  FParts[FCount++].IsStretch = TMathUtils::FloatGreater(Length, 0.0, Eps);
}

}  // namespace tarnalgo
