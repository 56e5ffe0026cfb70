#include "geometryAlgo/VedaType/Circle.h"

#include "geometryAlgo/VedaType/Arc.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadutils.h"

namespace tarnalgo {

TVPolyline2D TVCircle2D::SampleToPolyline(double ChordError) const {
  return TVArc2D(Center, CalcPointByRadian(0.0), false).SampleToPolyline(ChordError);
}

int TVCircle2D::RelationWithLine(const TVLine2D& Line, TPoint2D& P1, TPoint2D& P2) const {
  return IntersectInPoints(ToCircle2D(), Line.ToLine2D(), P1, P2);
}

int TVCircle2D::RelationWithSegLine(const TVLine2D& Segment, TPoint2D& P1, TPoint2D& P2,
                                    double Eps) const {
  TPoint2D Q1;
  TPoint2D Q2;
  const int Count = RelationWithLine(Segment, Q1, Q2);
  return Segment.PointsWithin(Count, Q1, Q2, P1, P2, Eps);
}

int TVCircle2D::CrossWithCircle(const TVCircle2D& Other, TPoint2D& P1, TPoint2D& P2) const {
  return IntersectInPoints(ToCircle2D(), Other.ToCircle2D(), P1, P2);
}

TShapeRelation TVCircle2D::RelationWithPoint(const TPoint2D& P, double Eps) const {
  if (!(Radius >= 0.0)) return srOut;
  const double Dist = P.DistanceTo(Center);
  if (TMathUtils::FloatEquals(Dist, Radius, Eps)) return srOn;
  return Dist < Radius ? srIn : srOut;
}

TShapeRelation TVCircle2D::RelationWithCircle(const TVCircle2D& Other, double Eps) const {
  if (!(Radius >= 0.0) || !(Other.Radius >= 0.0)) return srDeviate;
  const double Dist = Center.DistanceTo(Other.Center);
  if (Center.Equals(Other.Center, Eps) && TMathUtils::FloatEquals(Radius, Other.Radius, Eps)) {
    return srEqual;
  }
  if (TMathUtils::FloatLessEquals(Dist + Other.Radius, Radius, Eps)) return srContained;
  if (TMathUtils::FloatLessEquals(Dist + Radius, Other.Radius, Eps)) return srContain;
  if (TMathUtils::FloatEquals(Dist, Radius + Other.Radius, Eps)) return srOn;
  return Dist < Radius + Other.Radius ? srCross : srDeviate;
}

}  // namespace tarnalgo
