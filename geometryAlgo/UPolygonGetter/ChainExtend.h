#pragma once  // geometryAlgo/UPolygonGetter/ChainExtend.h

#include <memory>
#include <vector>

#include "containers/Container/ObjectList.h"
#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

/// The stretch of a drawn curve that a chain was cut from. Parameters are those of the curve's
/// polyline; `From` > `To` when the chain runs against the curve. A plain value.
struct TChainSource {
  int Curve = -1;  // the number of the curve, −1: from no curve
  double From = 0.0;
  double To = 0.0;

  friend constexpr bool operator==(const TChainSource&, const TChainSource&) = default;
};

/// A chain of points from one node of a drawing to another (or back to the same one), with what the
/// tracing of outlines needs to know of it. It meets other chains at its two ends only.
///
/// A chain starts available. A copy has the flags and the source of the original.
class TMChainExtend : public TVPolyline2D {
 public:
  using TVPolyline2D::TVPolyline2D;

  std::unique_ptr<TMChainExtend> New() const { return std::unique_ptr<TMChainExtend>(DoNew()); }
  std::unique_ptr<TMChainExtend> Clone() const { return std::unique_ptr<TMChainExtend>(DoClone()); }
  /// A copy that runs the other way: points and source turned round, flags as here.
  std::unique_ptr<TMChainExtend> CloneReverse() const;

  /// The chain may still be walked.
  bool IsAvailable() const { return FIsAvailable; }
  void SetIsAvailable(bool Value) { FIsAvailable = Value; }
  /// Without the chain its drawing would fall in two, each part with outlines of its own.
  bool IsBridge() const { return FIsBridge; }
  void SetIsBridge(bool Value) { FIsBridge = Value; }
  /// The chain leads to a loose end: no outline runs over it.
  bool IsDangling() const { return FIsDangling; }
  void SetIsDangling(bool Value) { FIsDangling = Value; }
  /// Neither bridge nor dangling, and at least two points.
  bool IsLawful() const { return !FIsBridge && !FIsDangling && Count() > 1; }

  const TChainSource& Source() const { return FSource; }
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
