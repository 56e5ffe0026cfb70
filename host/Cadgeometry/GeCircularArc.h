#pragma once  // host/Cadgeometry/GeCircularArc.h

#include "host/Cadgeometry/GeCurve.h"
#include "host/Cadtypes/Arc.h"
#include "host/Cadtypes/Circle.h"

namespace tarnalgo {

/// A circular arc as a host curve: centre, radius, start angle and signed sweep (counter-clockwise
/// positive). A sweep of ±2π is the full circle; larger ones count as that. A sweep or radius of 0
/// makes a single point.
///
/// The end points are kept as given where the arc was made from them, so that chains of arcs join
/// exactly.
class TGeCircularArc2D : public TGeCurve2D {
 public:
  /// Errors: a radius that is negative or not finite, an angle that is not finite, `EParamError`.
  TGeCircularArc2D(const TPoint2D& Center, double Radius, double StartAngle, double SweepAngle);
  /// From the two ends; `Bulge` = tan(sweep / 4), negative for clockwise. Mind the order: the bulge
  /// stands in the middle.
  /// Errors: a bulge that is 0 or not finite, or ends that coincide (1e-6), `EParamError`.
  TGeCircularArc2D(const TPoint2D& StartPoint, double Bulge, const TPoint2D& EndPoint);
  /// Through three points. `Flag` set: from `P1` through `P2` to `P3`; not set: the other arc of
  /// the same circle from `P1` to `P3`.
  /// Errors: collinear or coinciding points, `EGeometry`.
  TGeCircularArc2D(const TPoint2D& P1, const TPoint2D& P2, const TPoint2D& P3, bool Flag);
  /// The same arc, its ends computed from centre and angles.
  explicit TGeCircularArc2D(const TArc2D& Arc);

  /// An independent arc.
  std::unique_ptr<TGeCircularArc2D> Clone() const {
    return std::unique_ptr<TGeCircularArc2D>(NewClone());
  }

  TPoint2D GetCenter() const { return FCenter; }  ///< Centre of the circle.
  double GetRadius() const { return FRadius; }    ///< Radius of the circle.
  /// Direction from the centre to the start, radians.
  double GetStartAngle() const { return FStartAngle; }
  /// Direction to the end; differs from start plus sweep by whole turns at most.
  double GetEndAngle() const { return FEndAngle; }
  /// Radians turned from start to end, negative for clockwise.
  double GetSweepAngle() const { return FSweepAngle; }
  /// tan(sweep / 4). Of a full circle a huge number of no use.
  double Bulge() const { return Arc2D().Bulge(); }
  /// A full turn.
  bool IsCircle() const;
  /// The arc and its circle as records.
  TArc2D Arc2D() const { return {FCenter, FRadius, FStartAngle, FSweepAngle}; }
  /// The whole circle of the arc, whatever its sweep.
  TCircle2D Circle2D() const { return {FCenter, FRadius}; }

  /// Moves one end along the circle; the other end and the sense stay. An end moved onto the other
  /// (1e-6, a length) makes the full circle.
  /// Errors: an angle that is not finite, `EParamError`.
  void SetStartAngle(double Angle);
  void SetEndAngle(double Angle);  ///< The same for the end.
  /// The start stays.
  /// Errors: a sweep that is not finite, `EParamError`.
  void SetSweepAngle(double Sweep);

  TPoint2D StartPoint() const override { return FStartPoint; }
  TPoint2D EndPoint() const override { return FEndPoint; }
  double ParamTo() const override { return 1.0; }
  TPoint2D PointAtParam(double T) const override;
  double NearestParam(const TPoint2D& P, double& Distance) const override;
  void Reverse() override;
  TRect2D GetBoundBox() const override;
  double CurveLength() const override { return Arc2D().CurveLength(); }
  void AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const override;
  void AppendPieces(std::vector<TCurvePiece>& Pieces) const override;

 protected:
  TGeCircularArc2D* NewClone() const override { return new TGeCircularArc2D(*this); }

 private:
  TPoint2D PointAtAngle(double Angle) const { return Circle2D().PointAtAngle(Angle); }
  /// Sweep from angle `From` to `To` in the present sense: in (0, 2π], times the sense.
  double SweepBetween(double From, double To) const;

  TPoint2D FCenter;
  double FRadius;
  double FStartAngle;
  double FEndAngle;  // up to whole turns FStartAngle + FSweepAngle; reversing swaps the two
  double FSweepAngle;
  TPoint2D FStartPoint;
  TPoint2D FEndPoint;
};

}  // namespace tarnalgo
