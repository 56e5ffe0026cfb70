#pragma once  // host/Cadtypes/ArcOverlap.h

#include <cstddef>
#include <span>

#include "host/Cadtypes/Constants.h"

namespace tarnalgo {

/// What two arcs of one circle have in common: at most two parts, in the order of the first arc.
///
/// Places are angles turned from the start of the first arc in its sense; the second arc is given
/// in the same sense. Whoever asks makes points of them in his own way.
/// Tolerance: `Eps`, a length. A longer part is a stretch; a shorter one, or a gap of up to that,
/// is a place where two ends touch. An arc with no longer gap between its ends is a full circle.
class TArcOverlap {
 public:
  /// One stretch, or one place, in which both arcs lie.
  struct TPart {
    double Low = 0.0;  ///< Where it begins.
    /// Where it ends; beyond 2π for a stretch over the seam of a full first arc.
    double High = 0.0;
    bool IsLowOwn = false;   ///< Bounded by the start of the first arc, else by that of the second.
    bool IsHighOwn = false;  ///< Bounded by the end of the first arc, else by that of the second.
    bool IsStretch = false;  ///< Longer than the tolerance.

    /// Radians that the part covers.
    double Width() const { return High - Low; }
  };

  /// Of a first arc of `Turn` radians and a second one of `OtherTurn` that begins `OtherStart`, in
  /// [0, 2π), behind the start of the first; both turns in [0, 2π].
  TArcOverlap(double Radius, double Turn, double OtherStart, double OtherTurn,
              double Eps = kLinearTolerance);

  /// None, one or two parts.
  std::span<const TPart> Parts() const { return {FParts, static_cast<std::size_t>(FCount)}; }

  /// An arc of that turn is a full circle.
  static bool IsFull(double Radius, double Turn, double Eps = kLinearTolerance);

 private:
  void Add(double Radius, const TPart& Part, double Eps);

  TPart FParts[2];
  int FCount = 0;
};

}  // namespace tarnalgo
