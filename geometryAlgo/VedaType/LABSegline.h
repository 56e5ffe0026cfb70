#pragma once  // geometryAlgo/VedaType/LABSegline.h

#include <cstdint>
#include <memory>
#include <vector>

#include "geometryAlgo/VedaType/Arc.h"
#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadgeometry/GeCurve.h"
#include "host/Cadtypes/Bezier.h"
#include "host/Cadtypes/Matrix.h"

namespace tarnalgo {

class TVPolyline2D;

/// What a piece of a contour is: `stLine` straight, `stArc` circular, `stBezier` a cubic.
enum class TSegType : std::uint8_t { stLine, stArc, stBezier };
using enum TSegType;

/// One piece of a cut contour: a straight line, a circular arc or a cubic Bezier.
///
/// | | line | arc | Bezier |
/// |---|---|---|---|
/// | `P1`, `P4` | start, end | start, end | start, end |
/// | `P2` | | centre | first control point |
/// | `P3` | | | second control point |
/// | `Bulge` | 0 | tan(sweep / 4), negative for clockwise | 0 |
///
/// A bulge of ±`kCircleBulge` or beyond marks a full circle. A plain value; fields that a type does
/// not use are zero. Of an arc the centre and the sign of the bulge count, the radius is the
/// distance from the centre to `P1`; an arc whose ends are equal within 1e-6 is a full circle
/// whatever its bulge. Nothing makes the fields agree with each other.
/// Parameter: a real T from 0 at `P1` to 1 at the end. Tolerances are lengths unless said
/// otherwise.
struct TLABSegline {
  TSegType SegType = stLine;  ///< Which of the fields count.
  TPoint2D P1;                ///< Start.
  TPoint2D P2;                ///< Centre of an arc, first control point of a Bezier.
  TPoint2D P3;                ///< Second control point of a Bezier.
  TPoint2D P4;                ///< End.
  double Bulge = 0.0;  ///< Tan of a quarter of an arc's signed sweep; its sign tells the sense.

  constexpr TLABSegline() = default;
  /// The fields as they are.
  constexpr TLABSegline(TSegType ASegType, const TPoint2D& AP1, const TPoint2D& AP2,
                        const TPoint2D& AP3, const TPoint2D& AP4, double ABulge)
      : SegType(ASegType), P1(AP1), P2(AP2), P3(AP3), P4(AP4), Bulge(ABulge) {}
  /// A line.
  constexpr TLABSegline(const TPoint2D& StartPoint, const TPoint2D& EndPoint)
      : P1(StartPoint), P4(EndPoint) {}
  /// An arc.
  constexpr TLABSegline(const TPoint2D& StartPoint, const TPoint2D& EndPoint,
                        const TPoint2D& Center, double ABulge)
      : SegType(stArc), P1(StartPoint), P2(Center), P4(EndPoint), Bulge(ABulge) {}
  /// A Bezier.
  constexpr TLABSegline(const TPoint2D& AP1, const TPoint2D& AP2, const TPoint2D& AP3,
                        const TPoint2D& AP4)
      : SegType(stBezier), P1(AP1), P2(AP2), P3(AP3), P4(AP4) {}
  /// A line.
  constexpr explicit TLABSegline(const TVLine2D& Line) : P1(Line.StartPoint), P4(Line.EndPoint) {}
  /// An arc; a full circle from a full turn on, or where ends within 1e-6 leave less than that
  /// open. An arc shorter than that is a line: its ends would make a circle of it.
  explicit TLABSegline(const TArc2D& Arc);

  // --- What it is ---

  /// All points that count lie within 1e-6 of `P1`.
  bool IsPoint() const;
  /// An arc that is a full circle.
  bool IsCircle() const;
  /// Line: its ends are apart by more than 1e-6. Bezier: both control points lie within `Eps` of
  /// the infinite line through the ends, which are more than `Eps` apart; control points beyond the
  /// ends do not matter. Arc: never.
  bool IsLine(double Eps = kLinearTolerance) const;
  /// Makes a line of a segment that `IsLine(Eps)`; `Bulge` stays. False when it is none.
  bool TryToLine(double Eps = kLinearTolerance);

  // --- As other types ---

  /// From `P1` to `P4`: of a Bezier its chord.
  /// Errors: an arc, "[Error] TLABSegline.ToLine: 将“非直线段混合线段”转为“直线段”".
  TVLine2D ToLine() const;
  /// Errors: no arc, "[Error] TLABSegline.ToArc: 将“非弧线混合线段”转为“弧线”".
  TVArc2D ToArc() const;
  /// Errors: no Bezier, "[Error] TLABSegline.ToBezierSegment: 将“非贝塞尔混合线段”转为“贝塞尔”".
  TBezierSegment2D ToBezierSegment() const;
  /// The host curve of the same shape: `TGeLine2D`, `TGeCircularArc2D`, `TGePolyBezier2D`. The ends
  /// of an arc are kept exactly where they lie on its circle (1e-6).
  /// Errors: an arc that is not finite, `EParamError`.
  std::unique_ptr<TGeCurve2D> ToGeCurve2D() const;

  // --- Measures ---

  /// Of a line and an arc exact; of a Bezier that of `Sample(Eps)`.
  double Length(double Eps = kBezierStep) const;
  /// A segment that `IsLine(1e-6)`, and a line shrunk to a point, gives its two ends; an arc what
  /// `TVArc2D::SampleToPolyline(Eps)` gives; a Bezier its ends and between them the points at
  /// `Eps`, 2 · `Eps`, ..., Round(1 / `Eps`) − 1 of them, exact halves to even.
  /// Tolerance: `Eps` is a chord error for an arc, but a step of the parameter for a Bezier. A step
  /// below 1e-6, 0, a negative one and NaN count as 1e-6.
  TVPolyline2D Sample(double Eps = kBezierStep) const;
  /// Tight box of the piece itself.
  TVRect2D BoundBox() const;
  /// Distance from the segment.
  /// Errors: lines only; an arc "[Error] TLABSegline.DistanceTo: 圆弧距离未实现", a Bezier, also a
  /// straight one, "[Error] TLABSegline.DistanceTo: 贝塞尔距离未实现".
  double DistanceTo(const TPoint2D& P) const;
  /// Direction at `T`, not normalised: the vector of a line, a vector as long as the radius for an
  /// arc, the derivative of a Bezier (zero where a control point lies on its end).
  TPoint2D TangentVector(double T) const;
  /// The point at `T`, exactly `P1` at 0 and the end at 1; beyond them the piece goes on.
  TPoint2D PointByParam(double T) const;
  /// Parameter of the nearest point of the piece; a point within 1e-6 of the start answers 0
  /// exactly, of the end 1.
  /// Errors: `P` more than 1e-6 off, "[Error] TLABSegline.ParamByPoint: 点不在线段上".
  double ParamByPoint(const TPoint2D& P) const;

  // --- Crossings (LABSeglineCross.cpp) ---

  /// What the two pieces have in common, appended: the single points into `Points`, the stretches
  /// along which they run together into `Lines`, `Arcs` (of one circle) and `Beziers`. True when
  /// anything was found. Lines follow `TVLine2D::RelationWithSegLine`, an arc and a line
  /// `TVArc2D::CrossWithSegline` (points in the order of the line), arcs `TVArc2D::CrossWithArc`,
  /// pairs with a Bezier `TGeometryUtils`. Stretches are directed as this piece, between a Bezier
  /// and a line as the Bezier; of one between a Bezier and an arc there are the two ends.
  /// Tolerance: `Eps` is a length: what comes as near is a common point, ends included. With
  /// arcs it is never below what their circles round to.
  /// Cost: constant and without allocation, but for room in the lists, when no Bezier is involved.
  bool CrossWithLABSegline(const TLABSegline& Other, std::vector<TPoint2D>& Points,
                           std::vector<TVLine2D>& Lines, std::vector<TVArc2D>& Arcs,
                           std::vector<TBezierSegment2D>& Beziers,
                           double Eps = kLinearTolerance) const;
  /// The same with a segment, which has no stretch but lines in common with anything.
  bool CrossWithSegLine(const TVLine2D& Line, std::vector<TPoint2D>& Points,
                        std::vector<TVLine2D>& Lines, double Eps = kLinearTolerance) const;

  // --- New segments: the operation applied to every point field ---

  /// Every point rounded to `Digits` decimals, halves to even; the bulge stays.
  TLABSegline RoundTo(int Digits) const;
  /// Moved by `V`.
  TLABSegline Translate(const TPoint2D& V) const;
  /// Moves this very segment.
  void TranslateInplace(const TPoint2D& V) { *this = Translate(V); }
  /// Turned by `A` radians about the origin, or about `Centre`.
  TLABSegline Rotate(double A) const;
  TLABSegline Rotate(double A, const TPoint2D& Centre) const;  ///< The same about `Centre`.
  /// A quarter turn counter-clockwise about the origin, exact.
  TLABSegline RotateBy90() const;
  /// A quarter turn clockwise about the origin, exact.
  TLABSegline RotateBy_90() const;
  /// (X, Y) becomes (−X, Y); the bulge changes its sign.
  TLABSegline YMirror() const;
  /// A map that mirrors changes the sign of the bulge. One that does not keep shapes makes another
  /// arc, not an ellipse.
  TLABSegline Transform(const TMatrix2D& Matrix) const;
  /// The same shape run the other way. Twice is the identity.
  TLABSegline Reverse() const;
  /// Turns this very segment round.
  void ReverseInplace() { *this = Reverse(); }
};

}  // namespace tarnalgo
