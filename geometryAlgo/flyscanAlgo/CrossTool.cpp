#include "geometryAlgo/flyscanAlgo/CrossTool.h"

#include "geometryAlgo/VedaType/Polyline.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "geometryAlgo/flyscanAlgo/FlyscanTool.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

/// The lattice cell of 1e-6 that holds `P`.
TPointL2D CellOf(const TPoint2D& P) {
  return TPointL2D(P / kLinearTolerance);
}

void CollectCrossings(const TGeCurve2D& TransLine, const TGeCurve2D& Other,
                      std::vector<TPoint2D>& Points, std::vector<TVLine2D>& Lines) {
  std::vector<TIntersect2D> Meetings;
  TransLine.IntersectCurve(Other, Meetings, {kLinearTolerance, kLinearTolerance});
  TCollection<TPointL2D> Keys;
  for (const TPoint2D& P : Points) Keys.Add(CellOf(P));
  TAppendGuard PointGuard(Points);
  TAppendGuard LineGuard(Lines);
  for (const TIntersect2D& Meeting : Meetings) {
    if (Meeting.IsOverlap) {
      Lines.emplace_back(Meeting.OnFirst.Point, Meeting.EndOnFirst.Point);
    } else {
      TCrossTool::AddPoint(Keys, Points, Meeting.Point());
    }
  }
  PointGuard.Keep();
  LineGuard.Keep();
}

/// `Samples` is `TransLine` as a polyline, for holes without an exact test.
void CrossWithHole(const TGeCompositeCurve2D& TransLine, const TVPolyline2D& Samples,
                   const TGeCurve2D& Hole, std::vector<TPoint2D>& Points,
                   std::vector<TVLine2D>& Lines) {
  if (const auto* const Composite = dynamic_cast<const TGeCompositeCurve2D*>(&Hole)) {
    TCrossTool::Cross(TransLine, *Composite, Points, Lines);
  } else if (const auto* const Arc = dynamic_cast<const TGeCircularArc2D*>(&Hole)) {
    TCrossTool::Cross(TransLine, *Arc, Points, Lines);
  } else {
    Samples.CrossWith(TFlyscanTool::GetPolyline2D(Hole, kHoleChordTolerance), Points, Lines);
  }
}

}  // namespace

void TCrossTool::AddPoint(TCollection<TPointL2D>& Keys, std::vector<TPoint2D>& Points,
                          const TPoint2D& P) {
  const TPointL2D Cell = CellOf(P);
  if (Keys.Contains(Cell)) return;
  TAppendGuard Guard(Points);
  Points.push_back(P);
  Keys.Add(Cell);
  Guard.Keep();
}

void TCrossTool::Cross(const TGeCompositeCurve2D& TransLine, const TGeCircularArc2D& Arc,
                       std::vector<TPoint2D>& Points, std::vector<TVLine2D>& Lines) {
  CollectCrossings(TransLine, Arc, Points, Lines);
}

void TCrossTool::Cross(const TGeCompositeCurve2D& TransLine, const TGeCompositeCurve2D& Other,
                       std::vector<TPoint2D>& Points, std::vector<TVLine2D>& Lines) {
  CollectCrossings(TransLine, Other, Points, Lines);
}

bool TCrossTool::CheckCross(const TPoint2D& P, std::vector<TPoint2D>& Points) {
  std::erase_if(Points, [&P](const TPoint2D& Q) { return Q.Equals(P, kCrossTouchTolerance); });
  return !Points.empty();
}

bool TCrossTool::CheckCrossWithHoles(const TGeCompositeCurve2D& TransLine,
                                     const TRTree<TGeCurve2D*>& HoleRTree) {
  const TRect2D Box = TransLine.GetBoundBox().Inflate(kHoleSearchMargin, kHoleSearchMargin);
  const std::vector<TGeCurve2D*> Candidates = HoleRTree.Search(TVRect2D(Box), kLinearTolerance);
  if (Candidates.empty()) return false;
  const TVPolyline2D Samples = TFlyscanTool::GetPolyline2D(TransLine, kHoleChordTolerance);
  const TPoint2D Start = TransLine.StartPoint();
  for (const TGeCurve2D* const Hole : Candidates) {
    std::vector<TPoint2D> Points;
    std::vector<TVLine2D> Lines;
    CrossWithHole(TransLine, Samples, *Hole, Points, Lines);
    if (!Lines.empty() || CheckCross(Start, Points)) return true;
  }
  return false;
}

}  // namespace tarnalgo
