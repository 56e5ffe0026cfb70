#pragma once  // examples/sheet_planner/Moves.h

#include <memory>
#include <vector>

#include "examples/sheet_planner/Planner.h"

namespace sheet_planner {

/// One curve that the head follows.
struct TMove {
  enum class TKind { Rapid, Gap, Connection, Cut };

  TKind Kind = TKind::Rapid;
  std::unique_ptr<tarnalgo::TGeCurve2D> Curve;  // a line, an arc, a full circle or a Bezier joint;
                                                // a flattened curve is a polyline
  TPlanStep Step;                               // that it leads to or belongs to
  int Port = 0;

  bool IsBeamOn() const { return Kind == TKind::Cut; }
};

/// Everything the head does, in order, from the corner of least X and Y of the sheet. Each move
/// begins where the one before it ends, but where pieces of an ordinary contour meet off their
/// common end: at most twice the snap gap apart, and the head goes straight on.
std::vector<TMove> MovesOf(const TSheet& Sheet, const TPlan& Plan);

}  // namespace sheet_planner
