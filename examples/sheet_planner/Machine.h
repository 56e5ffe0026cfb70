#pragma once  // examples/sheet_planner/Machine.h

#include <vector>

#include "examples/sheet_planner/Moves.h"

namespace sheet_planner {

/// A simple machine, to compare plans with; lengths in model units, times in seconds.
///
/// The head moves from halt to halt. It halts before and after every rapid move and where the path
/// turns by more than `CornerAngle`; between two halts it speeds up by `Acceleration`, goes on at
/// `RapidSpeed` (rapid moves) or `CutSpeed` (cuts, gaps and connections) and slows down again,
/// however the path is curved. Where the beam goes on at a halt, piercing takes `PierceTime`; in
/// flight it takes nothing.
struct TMachine {
  double CutSpeed = 400.0;  // thin sheet, as flying cut is for
  double RapidSpeed = 1000.0;
  double Acceleration = 10000.0;
  double PierceTime = 0.1;
  double CornerAngle = 0.35;  // radians, 20 degrees
};

/// What a list of moves costs.
struct TWork {
  double CutLength = 0.0;
  double GapLength = 0.0;         // flown with the beam off
  double ConnectionLength = 0.0;  // the same, between passes
  double RapidLength = 0.0;
  int RapidMoves = 0;
  int Halts = 0;         // at the end of a rapid move, of a path or at a corner
  int Pierces = 0;       // the beam goes on at a halt
  int FlyingStarts = 0;  // the beam goes on in flight
  double Time = 0.0;
};

TWork Measure(const std::vector<TMove>& Moves, const TMachine& Machine);

}  // namespace sheet_planner
