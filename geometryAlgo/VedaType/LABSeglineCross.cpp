#include <algorithm>
#include <cmath>
#include <vector>

#include "geometryAlgo/VedaType/GeometryUtils.h"
#include "geometryAlgo/VedaType/LABSegline.h"
#include "host/Cadgeometry/PieceCrossing.h"
#include "host/Cadutils.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

/// `Eps`, or what the circle of the arc rounds to.
double ToleranceOn(const TVArc2D& Arc, double Eps) {
  const double Extent = std::max(std::abs(Arc.Center.X), std::abs(Arc.Center.Y)) + Arc.Radius();
  return ToleranceWithRounding(Eps, Extent);
}

/// On the way from `P` to `Q`, both of them on the arc's circle within `Eps`, so is every point.
bool StaysOnCircle(const TVArc2D& Arc, const TPoint2D& P, const TPoint2D& Q, double Eps) {
  const TVLine2D Way(P, Q);  // the distance from the centre is least at one place, greatest at ends
  return TMathUtils::FloatEquals(Way.SegmentDistanceTo(Arc.Center), Arc.Radius(), Eps);
}

/// The segment lies outside the circle of the arc or inside it as a whole: no angle is needed.
bool IsClearOfCircle(const TVLine2D& Line, const TVArc2D& Arc, double Eps) {
  const double Radius = Arc.Radius();
  const double Slack = Eps + kLinearTolerance;
  return Line.SegmentDistanceTo(Arc.Center) > Radius + Slack ||
         std::max(Line.StartPoint.DistanceTo(Arc.Center), Line.EndPoint.DistanceTo(Arc.Center)) <
             Radius - Slack;
}

void CrossLines(const TVLine2D& A, const TVLine2D& B, std::vector<TPoint2D>& Points,
                std::vector<TVLine2D>& Lines, double Eps) {
  TPoint2D P1;
  TPoint2D P2;
  const int Code = A.RelationWithSegLine(B, P1, P2, Eps);
  if (Code == 1) Points.push_back(P1);
  if (Code == 2) Lines.emplace_back(P1, P2);
}

void CrossArcWithLine(const TVArc2D& Arc, const TVLine2D& Line, std::vector<TPoint2D>& Points,
                      double Eps) {
  if (IsClearOfCircle(Line, Arc, Eps)) return;
  const double Length = Line.Length();
  TPoint2D Found[4];
  // The slack of the parameter that is `Eps` as a length.
  TPoint2D OnLine[2];
  int Count = Arc.CrossWithLine(Line, OnLine[0], OnLine[1], Eps);
  Count = Line.PointsWithin(Count, OnLine[0], OnLine[1], Found[0], Found[1],
                            Length > 0.0 ? Eps / Length : Eps);
  // An end of the line may touch the arc at so flat an angle that the crossing lies far beyond it.
  for (const TPoint2D& End : {Line.StartPoint, Line.EndPoint}) {
    const auto IsSameContact = [&](const TPoint2D& P) {
      return P.Equals(End, Eps) || StaysOnCircle(Arc, End, P, Eps);
    };
    if (!Arc.IsPointOn(End, Eps) || std::any_of(Found, Found + Count, IsSameContact)) continue;
    Found[Count++] = End;
  }
  Points.insert(Points.end(), Found, Found + Count);
}

void CrossArcs(const TVArc2D& A, const TVArc2D& B, std::vector<TPoint2D>& Points,
               std::vector<TVArc2D>& Arcs, double Eps) {
  TPoint2D Found[2];
  TVArc2D Overlaps[2];
  const int Code = A.CrossWithArc(B, Found[0], Found[1], Overlaps[0], Overlaps[1], Eps);
  TAppendGuard Guard(Points);
  Points.insert(Points.end(), Found, Found + (Code & 3));
  Arcs.insert(Arcs.end(), Overlaps, Overlaps + (Code >> 2));
  Guard.Keep();
}

/// A pair of which one is a Bezier.
void CrossCurves(const TLABSegline& A, const TLABSegline& B, std::vector<TPoint2D>& Points,
                 std::vector<TVLine2D>& Lines, std::vector<TBezierSegment2D>& Beziers, double Eps) {
  const bool IsFirst = A.SegType == stBezier;
  const TBezierSegment2D Bezier = (IsFirst ? A : B).ToBezierSegment();
  const TLABSegline& Other = IsFirst ? B : A;
  if (Other.SegType == stBezier) {
    TGeometryUtils::BezierCrossWithBezier(Bezier, Other.ToBezierSegment(), Eps, Points, Lines,
                                          Beziers);
  } else if (Other.SegType == stLine) {
    TGeometryUtils::BezierCrossWithSegline(Bezier, Other.ToLine(), Eps, Points, Lines);
  } else {
    std::vector<double> Params;
    TGeometryUtils::BezierCrossWithArc(Bezier, Other.ToArc(), Eps, Points, Params);
  }
}

}  // namespace

bool TLABSegline::CrossWithSegLine(const TVLine2D& Line, std::vector<TPoint2D>& Points,
                                   std::vector<TVLine2D>& Lines, double Eps) const {
  std::vector<TVArc2D> NoArcs;  // a line has neither in common with anything
  std::vector<TBezierSegment2D> NoBeziers;
  return CrossWithLABSegline(TLABSegline(Line), Points, Lines, NoArcs, NoBeziers, Eps);
}

bool TLABSegline::CrossWithLABSegline(const TLABSegline& Other, std::vector<TPoint2D>& Points,
                                      std::vector<TVLine2D>& Lines, std::vector<TVArc2D>& Arcs,
                                      std::vector<TBezierSegment2D>& Beziers, double Eps) const {
  const std::size_t Before = Points.size() + Lines.size() + Arcs.size() + Beziers.size();
  if (SegType == stBezier || Other.SegType == stBezier) {
    CrossCurves(*this, Other, Points, Lines, Beziers, Eps);
  } else if (SegType == stArc && Other.SegType == stArc) {
    const TVArc2D A = ToArc();
    const TVArc2D B = Other.ToArc();
    CrossArcs(A, B, Points, Arcs, std::max(ToleranceOn(A, Eps), ToleranceOn(B, Eps)));
  } else if (SegType == stArc || Other.SegType == stArc) {
    const TVArc2D Arc = SegType == stArc ? ToArc() : Other.ToArc();
    const TVLine2D Line = SegType == stArc ? Other.ToLine() : ToLine();
    CrossArcWithLine(Arc, Line, Points, ToleranceOn(Arc, Eps));
  } else {
    CrossLines(ToLine(), Other.ToLine(), Points, Lines, Eps);
  }
  return Points.size() + Lines.size() + Arcs.size() + Beziers.size() > Before;
}

}  // namespace tarnalgo
