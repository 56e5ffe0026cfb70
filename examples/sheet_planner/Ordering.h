#pragma once  // examples/sheet_planner/Ordering.h

#include "examples/sheet_planner/Nesting.h"
#include "examples/sheet_planner/Planner.h"

namespace sheet_planner {

/// Puts passes, circles and contours in the order they are cut in and fills `TPlan::Order`.
///
/// - What lies inside a figure of the drawing comes before the first cut of it (`TNesting`).
/// - A port is finished as far as that allows before the next one begins, the lower first.
/// - A group of passes goes on with its nearest pass while that is within `MaxConnectDistance`,
///   which leads through its rows to and fro; then comes whatever begins nearest. Passes and open
///   contours begin at either end, closed contours where two pieces meet, circles at the nearest of
///   their points to the head.
/// Everything is turned and started as it is cut: passes reversed, contours reversed or rotated,
/// circles by `TFlyCircle::SetPathStart`. The head comes from the corner of least X and Y.
/// `Progress` hears of every hundredth of the work; it may be empty.
/// Cost: O(n log n) as a rule.
void OrderPlan(const TSheet& Sheet, const TNesting& Nesting, TPlan& Plan,
               const tarnalgo::TProgressEvent& Progress);

}  // namespace sheet_planner
