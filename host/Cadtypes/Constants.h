#pragma once  // host/Cadtypes/Constants.h

namespace tarnalgo {

/// @file
/// The tolerances and fixed values of the library, each with its unit and what depends on it.
/// `docs/tolerances.md` tells why each has its value.

/// Length (model units), also slack of parameters: point coincidence, closure of contours,
/// parameter within a segment, collinearity. Default of every `Eps` and `Tolerance` argument.
inline constexpr double kLinearTolerance = 1e-6;

/// Parameter: filter of the roots of Bezier against segment.
inline constexpr double kRootTolerance = 1e-15;

/// Product of lengths (not normalised): corner classification of a polyline vertex.
inline constexpr double kCornerTolerance = 1e-12;

/// Length: slack of the convex hull of a polyline.
inline constexpr double kHullSlack = 1.1e-5;

/// Length: by how much a hull routine moves the second of three collinear leading points, so that
/// the first turn has a sign.
inline constexpr double kCollinearShiftX = 1.1e-5;
inline constexpr double kCollinearShiftY = -1e-5;  ///< The same along Y.

/// Length: shorter edges have no direction for the calipers about a polygon and no angle between
/// them.
inline constexpr double kLeastEdge = 1e-8;

/// Share of a polygon's size by which a vertex may stand out of its smallest rectangle.
inline constexpr double kBoxSlack = 1e-6;
/// Share of its area by which another rectangle must be smaller to take its place.
inline constexpr double kBoxGain = 1e-9;

/// Sine of the angle between two directions: below it two host lines count as parallel, and two
/// curves as touching where one of them turns back. Far above the rounding of a direction, far
/// below any angle that is drawn.
inline constexpr double kParallelSine = 1e-12;

/// Parameter: places where a Bezier turns back in X or Y that are nearer to each other, or to an
/// end, are one; where it was cut already the turn is the rounding of the cut.
inline constexpr double kLeastBezierCut = 1e-9;

/// Tolerances: how far the corner of a box moves when each of its sides moves by one (√2), with a
/// little to spare for rounding.
inline constexpr double kCornerReach = 1.5;
/// The same of a place that is three quarters corner (0.75 along both axes).
inline constexpr double kMarkReach = 1.1;

/// Tolerances: length of the shortest loop that trimming keeps. Edges shorter than the tolerance
/// make their neighbours touch without any crossing.
inline constexpr double kLeastLoop = 4.0;

/// Bulge: from this absolute value on an arc of a segment chain is a full circle through its start.
inline constexpr double kCircleBulge = 3.3e38;

/// Parameter: step in which a Bezier segment of a chain is sampled unless another one is given.
inline constexpr double kBezierStep = 0.01;

/// Length: chord error of the sampled polyline that a segment chain keeps.
inline constexpr double kChainChordError = 0.01;

/// Length: the least chord error to which a curve is sampled; a smaller one, 0, a negative one and
/// NaN count as this.
inline constexpr double kLeastChordError = 1e-9;

/// Count: the most chords for one arc or Bezier segment, whatever the chord error asked for. A full
/// circle is then within 1.2e-9 of its radius.
inline constexpr int kMostChords = 65536;

/// Angle (radians), π − 0.001: a flying-cut edge that points beyond is turned round. The margin
/// keeps edges that are horizontal but for rounding in one group.
inline constexpr double kTurnRoundAngle = 3.1405926535897932;

/// Angle (radians): the sharpest corner a cam follows when both legs run along one axis.
inline constexpr double kCamCornerAngle = 1.0;
/// Angle (radians): the sharpest one that changes the dominant axis.
inline constexpr double kCamAxisChangeAngle = 0.5;

/// Length: a connection may touch a hole this near to its own start point. Wider than the point
/// tolerance because the crossings of sampled curves come with the error of the sampling.
inline constexpr double kCrossTouchTolerance = 1e-4;

/// Length: margin around a connection within which holes are looked for.
inline constexpr double kHoleSearchMargin = 0.01;

/// Length: chord error of the sampling where a hole has no exact crossing test.
inline constexpr double kHoleChordTolerance = 0.1;

/// Integer units per model unit: the standard scale of integer paths.
inline constexpr double kIntegerScale = 100000.0;

/// Decimals to which a place is rounded before it becomes a node on which chains meet.
inline constexpr int kNodeDecimals = 5;
/// Integer units per model unit: the grid of those nodes.
inline constexpr double kNodeScale = 1000.0;

/// Length: ends of chains this near to each other become one node. A little more than a cell of the
/// node grid measures across, so that two nodes never share a cell.
inline constexpr double kNodeReach = 1.5e-3;

/// Integer units per model unit in the test whether a polygon is simple.
inline constexpr double kSimpleScale = 1000000.0;

/// Area (model units squared): below it an outline has none.
inline constexpr double kNoArea = 1e-12;
/// Area: two that differ by less are the same.
inline constexpr double kSameArea = 1e-9;
inline constexpr double kLargeArea = 1e-6;         ///< Area: from here on a share may be lost too.
inline constexpr double kMostAreaLost = 0.1;       ///< Area: the most that this share comes to.
inline constexpr double kShareOfAreaLost = 1e-12;  ///< Share of a large area that may be lost.

/// Length (integer units): two roundings of half a unit on each axis, with a little to spare. What
/// a turned and shifted integer path is off its place.
inline constexpr double kCongruenceTolerance = 2.0;

/// Angle (radians), about 60.12 degrees: the most that a smooth joint turns at either end, measured
/// from its control to the other end's.
inline constexpr double kSmoothJointTurn = 1.049291946298991;

/// Length: nearer ends get no smooth joint.
inline constexpr double kSmoothJointGap = 0.3;

/// Length: the middle of a connection is pushed aside where the second control lies nearer than
/// this to the line of the first lead and the directions are as parallel as `kFacingCosine`.
inline constexpr double kFacingDistance = 0.1;
/// Cosine of the angle between those directions.
inline constexpr double kFacingCosine = 0.999;

/// Length: centres nearer than this have no common tangent.
inline constexpr double kLeastCenterDistance = 1e-4;

/// Length: how far before and behind its point a pose is extended to find the corner of a fillet.
inline constexpr double kFilletReach = 50000.0;

/// Cosine, and near a right angle an angle (radians): slack of the largest turn of a fillet. A
/// right angle, the commonest corner, would hang on rounding otherwise.
inline constexpr double kFilletTurnSlack = 1e-9;

/// Length: an arc of a transition with ends nearer than this is made about its centre, not over its
/// chord: rounding at coordinates of 1000 turns a shorter chord by more than 1e-9.
inline constexpr double kShortArcChord = 1e-3;

/// Length: transitions are not looked for beyond; squares of lengths stay within a double.
inline constexpr double kLargestPoseCoordinate = 1e150;

/// Length: a tolerance of the segment sweep counts as this at most; its products stay within a
/// double.
inline constexpr double kGreatestTolerance = 1e100;

/// Binary exponent: coordinates beyond 2^300 or below 2^-300 are scaled by the segment sweep, so
/// that products of three stay far within a double.
inline constexpr int kUnscaledExponent = 300;

/// Count: how many segments the segment sweep looks at, for each that has started or met another,
/// before it seeks all pairs in exact order.
inline constexpr int kMostLooks = 32;
/// Count: how many it looks at in vain besides.
inline constexpr int kMostLooksInVain = 16384;

/// Binary exponent, share of the greatest coordinate: by how much further the sweep in exact order
/// looks, for what rounding may have put out of order.
inline constexpr int kOrderSlackExponent = -44;
/// Binary exponent, share of a segment's run in X: by how much it expects a crossing too early.
inline constexpr int kEarlyCrossingExponent = -26;

/// Element of a simplex tableau: at most this is no pivot, at least its negative is not negative.
/// Absolute: programs should be scaled.
inline constexpr double kPivotTolerance = 1e-6;
/// Margin within which two candidates for a pivot are equal.
inline constexpr double kPivotTieMargin = 1e-10;

/// Distance of a variable from a whole number within which it is one.
inline constexpr double kIntegralTolerance = 1e-6;

/// Relative: pivots that bring the objective no further than this are getting nowhere. Above the
/// rounding that a run of small pivots leaves in it.
inline constexpr double kStallTolerance = 1e-9;

/// Relative to what is summed up: a tableau that is further off its own equations is formed anew.
inline constexpr double kDriftTolerance = 1e-9;

/// An element of a program that is no larger is no pivot when its tableau is formed anew.
inline constexpr double kSingularPivot = 1e-11;

/// Squared residual (the square of the unit of the right-hand side): conjugate gradients end here.
inline constexpr double kGradientEnd = 1e-20;

/// Change of an unknown in one sweep: relaxation ends here.
inline constexpr double kSweepEnd = 1e-10;

/// Relative to the right-hand side of a normal system: a larger residual is solved again.
inline constexpr double kNormalResidualTolerance = 1e-6;

/// Length: a point whose coordinates both differ by less from its predecessor's repeats it, for the
/// radial clean-up of a dense list.
inline constexpr double kRadialThreshold = 0.00035;

/// Length: a decimation tolerance up to this counts as none and becomes `kDecimationTolerance`.
inline constexpr double kNoDecimation = 1e-12;
/// Length: the tolerance of a decimation that was given none.
inline constexpr double kDecimationTolerance = 0.01;

/// Count: the points of a block, from its start to that of the next, that is decimated by itself.
inline constexpr int kDecimationBlock = 5000;

/// Length: in lists that reach beyond no triangle is clipped. Products of three coordinates stay
/// within a double, and their signs are exact.
inline constexpr double kLargestListCoordinate = 1e100;

/// Counts: the most items that a call makes because a number says so (a size, not a list), and the
/// most that a reservation makes room for, which is only a hint. A wild number then raises, or does
/// nothing, where it would take the memory of the whole machine.
inline constexpr int kMostItems = 1 << 28;
inline constexpr int kMostReserved = 1 << 24;  ///< of a reservation

/// Start of every running minimum, replaced on strict `<`.
inline constexpr double kStartOfMinimum = 1.7e308;

inline constexpr double kFullTurn = 6.283185307179586;      ///< Angle (radians): one turn.
inline constexpr double kPi = 3.141592653589793;            ///< Half a turn.
inline constexpr double kQuarterTurn = 1.5707963267948966;  ///< A quarter turn.

}  // namespace tarnalgo
