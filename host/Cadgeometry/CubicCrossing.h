#pragma once  // host/Cadgeometry/CubicCrossing.h

#include <utility>
#include <vector>

#include "host/Cadgeometry/CurvePiece.h"

namespace tarnalgo {

/// A span of the parameter of a piece.
struct TPieceSpan {
  double From = 0.0;  ///< Parameter of the piece where the span begins.
  double To = 1.0;    ///< Where it ends, above `From`.
};

/// Places where spans of two monotone cubics come within `Tol` of each other, as parameters of the
/// first and of the second. Every crossing is among them, polished to rounding; of a stretch that
/// runs along within `Tol` one place or a few. Meant for spans that do not overlap as a whole: for
/// those the answer is some of the common places.
///
/// Both are halved together for as long as the strips round their chords meet. Where the directions
/// of the two cannot agree there is at most one crossing, and Newton's method finds it. Where they
/// run beside each other they are compared as graphs over one direction: the gap between them tells
/// that they stay apart, or together, long before they are flat. What is left is halved until both
/// are as flat as the tolerance.
/// Cost: a few dozen pairs of parts for each crossing, a few hundred for cubics that run beside
/// each other just outside the tolerance; at most 65536, whatever the input, after which the rest
/// is let go.
std::vector<std::pair<double, double>> CrossCubicSpans(const TCurvePiece& A, TPieceSpan SpanA,
                                                       const TCurvePiece& B, TPieceSpan SpanB,
                                                       double Tol);

}  // namespace tarnalgo
