#pragma once  // geometryAlgo/flyscanAlgo/FlyCurve.h

#include <cstdint>
#include <memory>

#include "host/Cadgeometry.h"

namespace tarnalgo {

class TFlyCurve;

/// The class of a piece, as a value: makes an empty piece of it.
using TFlyCurveClass = std::unique_ptr<TFlyCurve> (*)();

/// One piece of a flying-cut pass: a host curve with what the pass needs to know of it.
///
/// Also the tag of an edge that takes part in the planning (`TLinearSegment::RefCurve`).
/// Ownership: refers to the host curve, never frees it; the curve must outlive every use of the
/// piece. `TOwningFlyCurves` frees both together.
class TFlyCurve {
 public:
  TFlyCurve() = default;
  /// `ARefShape` is accepted for the host's sake and deliberately not kept.
  TFlyCurve(TGeCurve2D* ACurve, double APathStartParam, bool AIsFlyGap, std::int32_t AChannelPort,
            int ARefShape);
  virtual ~TFlyCurve() = default;
  TFlyCurve(const TFlyCurve&) = delete;
  TFlyCurve& operator=(const TFlyCurve&) = delete;

  /// The host curve that is cut along; null for none.
  TGeCurve2D* GeCurve() const { return FGeCurve; }
  /// Refers to another curve; the former one is not freed.
  void SetGeCurve(TGeCurve2D* Value) { FGeCurve = Value; }
  /// The parameter of the curve at which cutting starts; matters for closed curves.
  double PathStartParam() const { return FPathStartParam; }
  /// Sets where cutting starts; nothing checks that the curve has the parameter.
  void SetPathStartParam(double Value) { FPathStartParam = Value; }
  /// A connection (gap line or Bezier joint) rather than a cut of a part's edge.
  bool IsFlyGap() const { return FIsFlyGap; }
  /// Marks the piece as a connection, or as a cut.
  void SetIsFlyGap(bool Value) { FIsFlyGap = Value; }
  /// The channel that cuts the piece; the first key of the segment order.
  std::int32_t ChannelPort() const { return FChannelPort; }
  /// Hands the piece to another channel.
  void SetChannelPort(std::int32_t Value) { FChannelPort = Value; }

  /// Copies the four properties; the curve by reference. The class of `Dest` stays what it is.
  void AssignTo(TFlyCurve& Dest) const;
  /// A piece of the same class with the same properties, on the same curve.
  std::unique_ptr<TFlyCurve> Clone() const;
  /// The class of this object. A derived class that does not override it is cloned as its base.
  virtual TFlyCurveClass ClassType() const;

  /// The point at which cutting starts; the zero point without a curve.
  TPoint2D GetPathStart() const;
  /// Starts cutting at the point of the curve nearest to `AStart`. On a closed curve the seam has
  /// two parameters; either may be taken. Without a curve nothing happens.
  /// Tolerance: the host's default.
  void SetPathStart(const TPoint2D& AStart);

 private:
  TGeCurve2D* FGeCurve = nullptr;
  double FPathStartParam = 0.0;
  bool FIsFlyGap = false;
  std::int32_t FChannelPort = 0;
};

/// A straight piece: its curve must be a `TGeLine2D`, which is checked on access.
class TFlyLine : public TFlyCurve {
 public:
  using TFlyCurve::TFlyCurve;
  TFlyCurveClass ClassType() const override;

  /// The curve as a line.
  /// Errors: any other curve, or none, "FlyLine Create Error!".
  TGeLine2D* GeLine() const;
  /// From the start to the end of the line.
  /// Errors: as `GeLine`.
  TLine2D Line2D() const;
};

/// A full circle cut as one piece: its curve must be a `TGeCircularArc2D`, which is checked on
/// access.
class TFlyCircle : public TFlyCurve {
 public:
  using TFlyCurve::TFlyCurve;
  TFlyCurveClass ClassType() const override;

  /// The curve as an arc.
  /// Errors: any other curve, or none, "FlyCircle Create Error!".
  TGeCircularArc2D* GeCircle() const;
  /// The circle that carries the arc.
  /// Errors: as `GeCircle`.
  TCircle2D Circle2D() const;
};

}  // namespace tarnalgo
