#pragma once  // geometryAlgo/flyscanAlgo/Tunables.h

#include <cstdint>
#include <functional>

namespace tarnalgo {

/// @file
/// The tunables of flying-cut planning: process-wide variables, read by the algorithms at each
/// call.
///
/// The host may set them at any time between calls; nothing is locked. Lengths in model units. What
/// is marked "host" is read by the host's planner alone: the library exports it with its default so
/// that planner and library agree on one place.

/// Length, host: intercepts of one pass may differ by this much when the host merges runs.
inline double InterceptTolerance = 0.1;

/// Angle (radians), 3 degrees. Half of it is the band within which `CompareAngleIntercept` takes
/// two angles for equal; the whole of it decides whether `TLinearSegment` takes a line for
/// vertical.
inline double AngleTolerance = 0.05235987755982989;

/// Length, host: a run is split where the gap between two edges is longer.
inline double MaxConnectDistance = 20.0;

/// Length, host: longer edges are not cut flying.
inline double MaxScanLineLength = 50.0;
/// Length, host: shorter edges are not cut flying.
inline double MinScanLineLength = 0.5;

/// Length: the straight lead of a connection at either end.
inline double ScanConnectSegLength = 0.5;

/// Length: from the end of a lead to the control point beyond it; `TFlyscanTool::AngleTooSharp`.
inline double BezierControlLength = 1.0;

/// Angle (degrees): the sharpest corner `TFlyscanTool::AngleTooSharp` lets pass.
inline double MaxSharpAngle = 30.0;

/// The kind of connection between passes: 1 asks for straight pieces.
inline std::int32_t ConnectStyle = 0;

/// Length: `TLinearSegmentList::BuildResult` bridges only a gap that is longer along the line.
inline double CamSampleLen = 0.3;

/// Tells the host's planner how far it is. `Sender` is whoever reports.
using TProgressEvent = std::function<void(void* Sender, int Total, int Current)>;

/// Hands the host's planner something that cannot be cut flying, with a code of the host's own.
using TCollectInvalidEvent = std::function<void(void* Sender, int AType)>;

}  // namespace tarnalgo
