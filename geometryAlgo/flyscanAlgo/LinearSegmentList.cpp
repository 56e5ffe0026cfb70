#include "geometryAlgo/flyscanAlgo/LinearSegmentList.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "geometryAlgo/flyscanAlgo/FlyscanTool.h"
#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "host/Cadtypes/Tolerance.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// Appends the pieces of one pass to the caller's list, each on a host curve of its own.
class TPassBuilder {
 public:
  TPassBuilder(TFlyCurves& Pass, const TPoint2D& AngVec, std::int32_t Port)
      : FPass(Pass), FAngVec(AngVec), FPort(Port) {}

  /// Cuts `Line` from its low to its high end.
  void Cut(const TLine2D& Line) { AddLine(Line.EndPoint, Line.StartPoint, false); }

  /// Joins the high end of `Previous` to the low end of `Current` where that takes a piece.
  void Connect(const TLine2D& Previous, const TLine2D& Current) {
    TBezierSegment2D Joint;
    if (TFlyscanTool::GetSmoothBezierSeg(Previous.StartPoint, Previous.GetDirection(),
                                         Current.EndPoint, Current.GetDirection(), Joint)) {
      AddJoint(Joint);
    } else if (TMathUtils::FloatGreater(GapAlong(Previous, Current.EndPoint), CamSampleLen)) {
      AddLine(Previous.StartPoint, Current.EndPoint, true);
    }
  }

 private:
  /// The gap between the high end of `Line` and `P`, measured along the line; a step to the side
  /// does not count. A line of no length has no direction of its own and takes that of the run.
  double GapAlong(const TLine2D& Line, const TPoint2D& P) const {
    if (Line.StartPoint.Equals(Line.EndPoint))
      return std::abs((P - Line.StartPoint).DotMul(FAngVec));
    const TPoint2D Foot = Line.EvalPoint(Line.ParamOfPoint(P, DefTol.EqualPoint));
    return Line.StartPoint.DistanceTo(Foot);
  }

  void AddLine(const TPoint2D& From, const TPoint2D& To, bool IsFlyGap) {
    AddPiece<TFlyLine>(std::make_unique<TGeLine2D>(From, To), IsFlyGap);
  }

  void AddJoint(const TBezierSegment2D& Joint) {
    auto Curve = std::make_unique<TGePolyBezier2D>();
    Curve->AddBezier(Joint);
    AddPiece<TFlyCurve>(std::move(Curve), true);
  }

  template <class TPiece>
  void AddPiece(std::unique_ptr<TGeCurve2D> Curve, bool IsFlyGap) {
    FPass.Add(std::make_unique<TPiece>(Curve.get(), 0.0, IsFlyGap, FPort, 0));
    static_cast<void>(Curve.release());  // the caller's from here on, through the piece
  }

  TFlyCurves& FPass;
  TPoint2D FAngVec;
  std::int32_t FPort;
};

/// The stretch of `AngVec` that `Line` covers.
TGeInterval StretchAlong(const TLine2D& Line, const TPoint2D& AngVec) {
  return {Line.EndPoint.DotMul(AngVec), Line.StartPoint.DotMul(AngVec), kLinearTolerance};
}

}  // namespace

void TLinearSegmentList::SortByDM() {
  const auto RunsUp = [this](const TLine2D& Line) {
    return Line.EndPoint.DotMul(AngVec) > Line.StartPoint.DotMul(AngVec);
  };
  // By the ends as they will be: sorting takes memory, turning does not.
  SortByKey(
      [&](const TLinearSegment& S) {
        return (RunsUp(S.Line) ? S.Line.StartPoint : S.Line.EndPoint).DotMul(AngVec);
      },
      [](double A, double B) { return CompareExact(A, B); });
  for (TLinearSegment* const Segment : *this) {
    if (RunsUp(Segment->Line)) Segment->Line = Segment->Line.ReverseParam();
  }
}

int TLinearSegmentList::CompareSegmentDM(const TLinearSegment& Left,
                                         const TLinearSegment& Right) const {
  return CompareExact(Left.Line.EndPoint.DotMul(AngVec), Right.Line.EndPoint.DotMul(AngVec));
}

bool TLinearSegmentList::CheckOverlap(const TLine2D& ALine) const {
  const TGeInterval Stretch = StretchAlong(ALine, AngVec);
  TGeInterval Common;
  for (const TLinearSegment* const Segment : *this) {
    if (Stretch.IntersectWith(StretchAlong(Segment->Line, AngVec), Common)) return true;
  }
  return false;
}

void TLinearSegmentList::BuildResult(TFlyCurves& Result) {
  if (IsEmpty()) {
    Result.Clear();
    return;
  }
  AngVec = DcsX.RotateBy(Angle);
  if (Count() > 1) SortByDM();
  TOwningFlyCurves Pass;
  Pass.Reserve(2 * Count() - 1);
  TPassBuilder Builder(Pass, AngVec, First()->ChannelPort());
  Builder.Cut(First()->Line);
  for (int I = 1; I < Count(); ++I) {
    Builder.Connect((*this)[I - 1]->Line, (*this)[I]->Line);
    Builder.Cut((*this)[I]->Line);
  }
  std::vector<std::unique_ptr<TFlyCurve>> Pieces;
  Pieces.reserve(static_cast<std::size_t>(Pass.Count()));
  Result.Reserve(Pass.Count());
  // Nothing raises from here on.
  Result.Clear();
  while (!Pass.IsEmpty()) Pieces.push_back(Pass.Extract(Pass.Count() - 1));
  for (auto Piece = Pieces.rbegin(); Piece != Pieces.rend(); ++Piece) Result.Add(std::move(*Piece));
}

}  // namespace tarnalgo
