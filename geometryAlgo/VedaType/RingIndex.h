#pragma once  // geometryAlgo/VedaType/RingIndex.h

#include <vector>

#include "geometryAlgo/VedaType/Enums.h"
#include "geometryAlgo/VedaType/LABSegline.h"
#include "host/Cadgeometry/CurvePiece.h"

namespace tarnalgo {

/// The ring of a segment chain, arranged to tell quickly where points lie. Internal to the pages of
/// this unit.
///
/// The chain is cut into pieces monotone in X and Y; gaps, and the one from the end to the start,
/// are closed by straight pieces, so that every run of pieces is one connected way. Runs lie under
/// a pyramid of boxes. Whether a ray to the right passes an odd number of times through a run whose
/// box lies beyond the point follows from the two ends of the run; only boxes that hold the point
/// are opened. The lower end of a piece belongs to it and the upper one does not, so vertices and
/// level pieces are counted right.
/// Ownership: keeps copies.
/// Cost: construction O(n). A question O(log n), times the runs whose boxes hold the point.
class TRingIndex {
 public:
  explicit TRingIndex(const std::vector<TLABSegline>& Segs);

  TShapeRelation RelationWithPoint(const TPoint2D& P, double Eps) const;

 private:
  static constexpr int kBranches = 4;

  /// A run of pieces, or one piece.
  struct TNode {
    TRect2D Box;
    double StartY = 0.0;
    double EndY = 0.0;
  };
  enum class TSide { Even, Odd, On };

  void AppendSegment(const TLABSegline& Seg);
  void AppendArc(const TVArc2D& Arc);
  void AppendLine(const TPoint2D& From, const TPoint2D& To);
  /// A line from the end of the last piece to `P`, unless it is there exactly.
  void Bridge(const TPoint2D& P);
  void BuildLevels();
  TSide SideOfNode(std::size_t Level, std::size_t Index, const TPoint2D& P, double Eps) const;
  static TSide SideOfPiece(const TCurvePiece& Piece, const TPoint2D& P, double Eps);

  std::vector<TCurvePiece> FPieces;
  std::vector<std::vector<TNode>> FLevels;  // a node a piece, then runs of kBranches nodes
};

}  // namespace tarnalgo
