#pragma once  // host/Cadgeometry/GeLine.h

#include "host/Cadgeometry/GeCurve.h"
#include "host/Cadtypes/Line.h"

namespace tarnalgo {

/// A straight segment as a host curve. Its ends may coincide.
class TGeLine2D : public TGeCurve2D {
 public:
  TGeLine2D() = default;
  /// The segment from `StartPoint` to `EndPoint`.
  TGeLine2D(const TPoint2D& StartPoint, const TPoint2D& EndPoint) : FLine(StartPoint, EndPoint) {}
  /// The segment of a record.
  explicit TGeLine2D(const TLine2D& Line) : FLine(Line) {}

  /// An independent line.
  std::unique_ptr<TGeLine2D> Clone() const { return std::unique_ptr<TGeLine2D>(NewClone()); }

  TPoint2D GetLineStart() const { return FLine.StartPoint; }  ///< `StartPoint`, not virtual.
  TPoint2D GetLineEnd() const { return FLine.EndPoint; }      ///< `EndPoint`, not virtual.
  /// Moves the start; the end stays.
  void SetLineStart(const TPoint2D& P) { FLine.StartPoint = P; }
  void SetLineEnd(const TPoint2D& P) { FLine.EndPoint = P; }  ///< Moves the end; the start stays.
  /// The segment as a record.
  const TLine2D& Line2D() const { return FLine; }

  TPoint2D StartPoint() const override { return FLine.StartPoint; }
  TPoint2D EndPoint() const override { return FLine.EndPoint; }
  double ParamTo() const override { return 1.0; }
  TPoint2D PointAtParam(double T) const override;
  double NearestParam(const TPoint2D& P, double& Distance) const override;
  void Reverse() override { FLine = FLine.ReverseParam(); }
  TRect2D GetBoundBox() const override { return FLine.GetBoundBox(); }
  double CurveLength() const override { return FLine.Length(); }
  void AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const override;
  void AppendPieces(std::vector<TCurvePiece>& Pieces) const override;

 protected:
  TGeLine2D* NewClone() const override { return new TGeLine2D(*this); }

 private:
  TLine2D FLine;
};

}  // namespace tarnalgo
