#pragma once  // geometryAlgo/flyscanAlgo/FlyCurves.h

#include "containers/Container/ObjectList.h"
#include "geometryAlgo/flyscanAlgo/FlyCurve.h"

namespace tarnalgo {

class TOwningFlyCurves;

/// A flying-cut pass: its pieces in cutting order.
///
/// Ownership: owns the pieces, never their host curves. Pieces on curves of the host's own belong
/// here; for curves that live and die with the pass, such as `BuildResult` makes, use
/// `TOwningFlyCurves`.
class TFlyCurves : public TObjectList<TFlyCurve> {
 public:
  TFlyCurves() : TObjectList<TFlyCurve>(true) {}
  TFlyCurves(TFlyCurves&&) = default;
  TFlyCurves& operator=(TFlyCurves&&) = default;
  // The pieces of an owning pass cannot move here: nobody would free their curves.
  TFlyCurves(TOwningFlyCurves&&) = delete;
  TFlyCurves& operator=(TOwningFlyCurves&&) = delete;

  /// Start of the first piece's curve and end of the last one's (the curves' own ends, not where
  /// cutting starts). The zero point for an empty pass or a piece without a curve.
  TPoint2D StartPoint() const;
  TPoint2D EndPoint() const;  ///< End of the last one's.

  /// Runs the pass backwards: reverses the order of the pieces and each host curve in place. Each
  /// piece keeps the point at which its cutting starts.
  /// Errors: when memory runs out all is as before, unless to turn a composite back there is none
  /// either.
  void ReverseDir();
};

/// A pass that owns the host curves of its pieces as well.
///
///     TOwningFlyCurves Pass;
///     Run.BuildResult(Pass);  // a second call frees the curves of the first
///
/// Ownership: removing a piece frees it and its curve; an extracted piece takes the duty to free
/// its curve along. Each curve belongs to one piece of one such pass; nothing checks that.
class TOwningFlyCurves : public TFlyCurves {
 public:
  TOwningFlyCurves() = default;
  ///@{
  /// Pieces and curves change hands. What an assigned pass held before is freed, curves too.
  TOwningFlyCurves(TOwningFlyCurves&& Other) noexcept
      : TFlyCurves(static_cast<TFlyCurves&&>(Other)) {}
  TOwningFlyCurves& operator=(TOwningFlyCurves&& Other) noexcept;
  ///@}
  ~TOwningFlyCurves() override;

 protected:
  void Notify(TFlyCurve& Item, TListChange Change) override;
};

}  // namespace tarnalgo
