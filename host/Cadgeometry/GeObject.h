#pragma once  // host/Cadgeometry/GeObject.h

#include <memory>

namespace tarnalgo {

/// Root of the host's geometric objects.
///
/// A class of the family says `Clone()` with its own type, so that a clone needs no cast:
///
///     std::unique_ptr<TGeLine2D> Copy = Line.Clone();
///
/// Which kind a curve is asks `dynamic_cast`; there is no enumeration beside the class to disagree
/// with it, and a class that a host derives is handled as the kind it derives from.
class TGeObject {
 public:
  virtual ~TGeObject() = default;

  /// A deep copy of the same class and content.
  /// Ownership: the caller's.
  std::unique_ptr<TGeObject> Clone() const { return std::unique_ptr<TGeObject>(NewClone()); }

 protected:
  TGeObject() = default;
  // Copied only as part of a concrete class: never sliced.
  TGeObject(const TGeObject&) = default;
  TGeObject& operator=(const TGeObject&) = default;

  /// The virtual factory behind every `Clone`. A raw pointer, so that an override can narrow its
  /// type; each caller wraps it at once.
  virtual TGeObject* NewClone() const = 0;
};

}  // namespace tarnalgo
