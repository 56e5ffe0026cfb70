#pragma once  // geometryAlgo/UPolygonGetter/ChainExtend.h

#include <memory>
#include <vector>

#include "containers/Container/ObjectList.h"
#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

/// The stretch of a drawn curve that a chain was cut from. Parameters are those of the curve's
/// polyline; `From` > `To` when the chain runs against the curve. A plain value.
struct TChainSource {
  int Curve = -1;     ///< The number of the curve, −1: from no curve.
  double From = 0.0;  ///< Parameter where the chain starts.
  double To = 0.0;    ///< Parameter where the chain ends.

  friend constexpr bool operator==(const TChainSource&, const TChainSource&) = default;
};

/// A chain of points from one node of a drawing to another (or back to the same one), with what the
/// tracing of outlines needs to know of it. It meets other chains at its two ends only.
///
/// A chain starts available. A copy has the flags and the source of the original.
class TMChainExtend : public TVPolyline2D {
 public:
  /// As a polyline is made: available, no bridge, not dangling, from no curve.
  using TVPolyline2D::TVPolyline2D;

  /// A fresh empty chain.
  std::unique_ptr<TMChainExtend> New() const { return std::unique_ptr<TMChainExtend>(DoNew()); }
  /// A copy with the flags, the source and the angle.
  std::unique_ptr<TMChainExtend> Clone() const { return std::unique_ptr<TMChainExtend>(DoClone()); }
  /// A copy that runs the other way: points and source turned round, flags as here.
  std::unique_ptr<TMChainExtend> CloneReverse() const;

  /// The chain may still be walked.
  bool IsAvailable() const { return FIsAvailable; }
  /// Lets walks use the chain, or keeps them off.
  void SetIsAvailable(bool Value) { FIsAvailable = Value; }
  /// Without the chain its drawing would fall in two, each part with outlines of its own.
  bool IsBridge() const { return FIsBridge; }
  /// Set by `TTopoLinks` for the chains it sets apart.
  void SetIsBridge(bool Value) { FIsBridge = Value; }
  /// The chain leads to a loose end: no outline runs over it.
  bool IsDangling() const { return FIsDangling; }
  /// Set by `TTopoLinks` for the chains it sets apart.
  void SetIsDangling(bool Value) { FIsDangling = Value; }
  /// Neither bridge nor dangling, and at least two points.
  bool IsLawful() const { return !FIsBridge && !FIsDangling && Count() > 1; }

  /// The stretch of the drawing that the chain stands for.
  const TChainSource& Source() const { return FSource; }
  /// Nothing checks it against the points.
  void SetSource(const TChainSource& Value) { FSource = Value; }

  /// The angle of the first segment from the X axis, counter-clockwise in [0, 2π); kept as `Angle`.
  /// 0 for a first segment without direction and for fewer than two points.
  double AngleToXAxis() const;
  /// What the last `AngleToXAxis` answered, 0 before the first.
  double Angle() const { return FAngle; }

  /// As many points as `Other`, equal one by one, in the same or in reverse order.
  /// Tolerance: 1e-6 for each point.
  bool EqualsTo(const TMChainExtend& Other) const;

 protected:
  /// The empty chain that `New` starts from; a derived class answers its own.
  TMChainExtend* DoNew() const override { return new TMChainExtend; }
  TMChainExtend* DoClone() const override { return new TMChainExtend(*this); }

 private:
  TChainSource FSource;
  mutable double FAngle = 0.0;
  bool FIsAvailable = true;
  bool FIsBridge = false;
  bool FIsDangling = false;
};

/// Chains of a drawing, owned; or chains that a node table owns, referred to (`OwnsObjects` tells).
using TMChainExtends = TObjectList<TMChainExtend>;

}  // namespace tarnalgo
