#pragma once  // host/Cadgeometry/GePolyBezier.h

#include "host/Cadgeometry/GeCurve.h"
#include "host/Cadtypes/Bezier.h"

namespace tarnalgo {

/// A sequence of cubic Bezier segments as a host curve. Nothing checks that a segment starts where
/// the one before it ends; at a whole parameter the curve is then at the start of the later one.
/// Errors: an index outside 0 .. count − 1 raises `EParamError`.
class TGePolyBezier2D : public TGeCurve2D {
 public:
  TGePolyBezier2D() = default;

  /// An independent curve.
  std::unique_ptr<TGePolyBezier2D> Clone() const {
    return std::unique_ptr<TGePolyBezier2D>(NewClone());
  }

  /// Appends a segment; it need not start where the last one ends.
  void AddBezier(const TBezierSegment2D& Segment) { FSegments.push_back(Segment); }
  /// Number of segments.
  int GetBezierCount() const { return static_cast<int>(FSegments.size()); }
  /// The segment over the parameters `Index` .. `Index` + 1.
  const TBezierSegment2D& GetBezier(int Index) const;

  bool IsEmpty() const override { return FSegments.empty(); }
  TPoint2D StartPoint() const override;
  TPoint2D EndPoint() const override;
  double ParamTo() const override { return GetBezierCount(); }
  TPoint2D PointAtParam(double T) const override;
  /// Cost: linear; segments whose controls are further than the best so far are passed over.
  double NearestParam(const TPoint2D& P, double& Distance) const override;
  void Reverse() override;
  TRect2D GetBoundBox() const override;
  double CurveLength() const override;
  void AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const override;
  void AppendPieces(std::vector<TCurvePiece>& Pieces) const override;

 protected:
  TGePolyBezier2D* NewClone() const override { return new TGePolyBezier2D(*this); }

 private:
  std::vector<TBezierSegment2D> FSegments;
};

}  // namespace tarnalgo
