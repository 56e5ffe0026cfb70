#pragma once  // geometryAlgo/VedaType/GeometryUtils.h

#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/Arc.h"
#include "geometryAlgo/VedaType/Line.h"
#include "host/Cadtypes/Bezier.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Crossings of Bezier segments, and what else of small geometry has no type of its own.
///
/// Curves meet wherever they come within `Eps` of each other, ends included. A stretch along which
/// they stay within `Eps` is one place, reported as one point; it is an overlap when it is longer
/// than `Eps` and both its ends are ends of one of the curves (or places where a curve turns back
/// in X or Y). Each place is reported once, and no point that lies on an overlap; where the Bezier
/// passes through one place several times the first parameter stands for it.
///
/// Results are appended, in the order of the Bezier's parameter. Curves that are not finite meet
/// nothing. Nothing raises.
/// Tolerance: `Eps` is a length; the rounding of the coordinates is added to it.
/// Cost: no more than five parts of each curve, see `DoBezierCrossWithBezier`.
class TGeometryUtils {
 public:
  /// A crossing found on a curve that is to be cut.
  struct TCrossRec {
    TPoint2D Pt;         ///< The place.
    double Param = 0.0;  ///< of the curve being cut
    double Dist = 0.0;   ///< of `Pt` from the other curve
  };
  /// A stretch of the curve being cut, from one parameter to a greater one.
  using TStretch = std::pair<double, double>;

  // --- Crossings ---

  /// Common points into `Points`, their parameters into `Params` if it is given, common stretches
  /// into `Lines`, directed as the Bezier runs. A straight Bezier that turns back on the segment
  /// gives the way that is covered once.
  static void BezierCrossWithSegline(const TBezierSegment2D& Bezier, const TVLine2D& Line,
                                     double Eps, std::vector<TPoint2D>& Points,
                                     std::vector<TVLine2D>& Lines,
                                     std::vector<double>* Params = nullptr);
  /// Common points into `Points`, their parameters on the Bezier into `Params`. Of a stretch along
  /// the arc these are its two ends.
  static void BezierCrossWithArc(const TBezierSegment2D& Bezier, const TVArc2D& Arc, double Eps,
                                 std::vector<TPoint2D>& Points, std::vector<double>& Params);
  /// Common points into `Points`, common stretches into `Lines` where `A` runs straight there, else
  /// into `Overlaps`, as parts of `A`. Curves with the same control points (`IsBezierOverlap`)
  /// give `A` itself and nothing else.
  static void BezierCrossWithBezier(const TBezierSegment2D& A, const TBezierSegment2D& B,
                                    double Eps, std::vector<TPoint2D>& Points,
                                    std::vector<TVLine2D>& Lines,
                                    std::vector<TBezierSegment2D>& Overlaps);
  /// The control points of `B` are those of `A`, in order or in reverse order, each within `Eps`.
  /// Appends `A` to `Overlaps` then. Curves of the same shape with other controls, and parts of one
  /// curve, are not found.
  static bool IsBezierOverlap(const TBezierSegment2D& A, const TBezierSegment2D& B, double Eps,
                              std::vector<TBezierSegment2D>& Overlaps);

  // --- Their workers ---

  ///@{
  /// Everything that the part `Bezier` of a longer curve has in common with the other shape:
  /// crossings into `List` and stretches into `Stretches`, in parameters of the longer curve, of
  /// which the part spans `From` to `To`. Not in order, and a place may be named several times.
  ///
  /// A part whose control points are apart from the other shape is dropped; one that turns back in
  /// X or Y is cut there, and its two parts are looked at one by one, `Depth` levels at most; what
  /// is monotone crosses the other shape in a few places that are isolated one by one (two cubics:
  /// by halving them together, at most 65536 pairs of parts whatever the input). Parameters within
  /// `kRootTolerance` (1e-15) of an end of the longer curve are that end; ends of both shapes are
  /// tested on their own with `Eps`. Four levels are enough for any cubic, and more are not taken.
  /// Coordinates should keep their fourth powers finite.
  static void DoBezierCrossWithSegline(const TBezierSegment2D& Bezier, double From, double To,
                                       const TVLine2D& Line, int Depth, double Eps,
                                       std::vector<TCrossRec>& List,
                                       std::vector<TStretch>& Stretches);
  static void DoBezierCrossWithArc(const TBezierSegment2D& Bezier, double From, double To,
                                   const TVArc2D& Arc, int Depth, double Eps,
                                   std::vector<TCrossRec>& List, std::vector<TStretch>& Stretches);
  static void DoBezierCrossWithBezier(const TBezierSegment2D& A, double FromA, double ToA,
                                      const TBezierSegment2D& B, double FromB, double ToB,
                                      int Depth, double Eps, std::vector<TCrossRec>& List,
                                      std::vector<TStretch>& Stretches);
  ///@}
  /// Appends a record of these three.
  static void AddCrossPt(std::vector<TCrossRec>& List, const TPoint2D& Pt, double Param,
                         double Dist) {
    List.push_back({Pt, Param, Dist});
  }
  /// Appends the places of `List` to `Points` and `Params`, by ascending parameter; of records at
  /// most `Eps` apart only one. `List` is left with these.
  /// Ties: the least `Dist` stays, of equal ones the least parameter.
  /// Cost: O(n log n).
  static void RemoveCloseCrossPts(std::vector<TCrossRec>& List, std::vector<TPoint2D>& Points,
                                  std::vector<double>& Params, double Eps);

  // --- Small geometry ---

  /// The parts before and after parameter `T`, which share the point there exactly.
  static void SplitBezier(const TBezierSegment2D& Bezier, double T, TBezierSegment2D& Left,
                          TBezierSegment2D& Right);
  /// The curve cut at all these parameters: parts that follow each other, the outer ends exact.
  /// Parameters may come in any order; repeated ones and those outside (0, 1) cut nothing.
  static std::vector<TBezierSegment2D> SplitBezier(const TBezierSegment2D& Bezier,
                                                   std::vector<double> Params);
  /// The rotation about the origin by `Angle`, in (−π, π], and the translation after it that bring
  /// each point of `From` to the point of `To` at the same position, best in the sense of least
  /// squares. False, the results untouched, when the numbers of points differ or one would be left
  /// more than `Eps` away. A list of one place is only moved; empty lists match by the identity.
  static bool CalcEqualRotateAndTrans(const std::vector<TPoint2D>& From,
                                      const std::vector<TPoint2D>& To, double& Angle,
                                      TPoint2D& Trans, double Eps = kLinearTolerance);
  /// The unit vector from `Vertex` that halves the angle below π between the directions to `P1` and
  /// to `P2`. Of a straight angle the one to the left of the way `P1`, `Vertex`, `P2`; zero when an
  /// arm has no length.
  static TPoint2D CalcAngleBisector(const TPoint2D& P1, const TPoint2D& Vertex, const TPoint2D& P2);
};

}  // namespace tarnalgo
