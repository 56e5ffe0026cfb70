#pragma once  // examples/sheet_planner/Connections.h

#include "examples/sheet_planner/Planner.h"

namespace sheet_planner {

enum class TConnect {
  Stop,        // the head halts after each pass
  Curves,      // `TFlyscanTool::CreateConnectCurve`
  Transitions  // `TTransitionLineFunc::CalcTransitionLine`
};

struct TConnectOptions {
  TConnect Connect = TConnect::Curves;
  double MinRadius = 1.0;              // length: transitions keep above it
  double MaxAngle = 4.71238898038469;  // radians: transitions turn by no more
};

/// Joins passes and circles of one port that follow each other in the order at most
/// `MaxConnectDistance` apart, so that the head flies on with the beam off: fills
/// `TPlan::Connections` and their counts.
///
/// A connection meets no cut of the sheet but at its two ends; where none does, the head halts.
/// Circles start where they can be entered and left along the way to the next one.
/// Transitions begin with half the distance as their radius and shrink it while they cross a cut.
void ConnectPasses(const TSheet& Sheet, const TConnectOptions& Options, TPlan& Plan);

}  // namespace sheet_planner
