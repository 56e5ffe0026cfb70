#pragma once  // geometryAlgo/VedaType/LABPolyline.h

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/Geometry.h"
#include "geometryAlgo/VedaType/LABSegline.h"
#include "geometryAlgo/VedaType/Point.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadgeometry/GeCompositeCurve.h"

namespace tarnalgo {

class TRingIndex;

/// A light-weight polyline: vertices, each with the bulge of the piece that starts there.
using TLWPolyline = std::vector<TLWPoint2D>;

/// A chain of lines, arcs and Beziers: a cut contour with its true curves.
///
///     TLABPolyline Slot;
///     Slot.Add({{0, 0}, {10, 0}});
///     Slot.Add({{10, 0}, {10, 4}, {10, 2}, 1.0});  // half a circle about (10, 2)
///     Slot.ConnectHeadTail();
///     if (Slot.RelationWithPoint(Pierce) == srIn) ...
///
/// A value. Segments are read by `const` reference and replaced by `Replace`: every change goes
/// through the list, which then drops what it had worked out (samples, the index of
/// `RelationWithPoint`). Nothing makes segments meet except `Add`. Questions about a region take
/// the chain as the ring it becomes when gaps and the two ends are joined by straight lines.
/// Vertex i is the start of segment i; an open chain has the vertex Count too, its end.
///
/// Questions that work something out keep it inside the chain although they are `const`: threads
/// that share a chain must not ask at the same time. Copies share what was worked out.
/// Errors: a position outside 0 .. Count − 1 (`Insert`: Count), `EParamError`, nothing changed;
/// those stated; everything else answers a neutral value for an empty chain.
class TLABPolyline : public IVGeometry2D {
 public:
  /// Walks the segments, which only the list may change.
  using TConstIterator = std::vector<TLABSegline>::const_iterator;

  // --- The list (LABPolyline.cpp) ---

  TLABPolyline() = default;
  /// The segments as they are: nothing is joined.
  TLABPolyline(std::initializer_list<TLABSegline> Segs) : FSegs(Segs) {}
  /// The segments as they are: nothing is joined.
  explicit TLABPolyline(std::vector<TLABSegline> Segs) : FSegs(std::move(Segs)) {}
  /// A line for each edge of the polyline.
  explicit TLABPolyline(const TVPolyline2D& Polyline);
  /// The same, an empty chain for null.
  explicit TLABPolyline(const TVPolyline2D* Polyline);
  /// A line or an arc over each chord, from the last vertex to the first too when `IsClosed`.
  /// Tolerance: an arc that bows no more than 1e-6, or than its circle rounds to, is a line, and so
  /// is every piece between equal vertices (1e-6).
  explicit TLABPolyline(const TLWPolyline& Vertices, bool IsClosed = false);
  /// What the host curve is made of, in its order: lines, arcs, Beziers, the edges of a polyline,
  /// the members of a composite; a kind of the host's own by its pieces (`AppendPieces`).
  /// `TLABPolyline(*ToGeCurve2D())` is the chain itself, to rounding.
  explicit TLABPolyline(const TGeCurve2D& Curve);

  /// A fresh empty chain.
  std::unique_ptr<TLABPolyline> New() const { return std::unique_ptr<TLABPolyline>(DoNew()); }
  /// A copy; what was worked out is shared.
  std::unique_ptr<TLABPolyline> Clone() const { return std::unique_ptr<TLABPolyline>(DoClone()); }

  int Count() const { return static_cast<int>(FSegs.size()); }  ///< Segments in the chain.
  bool IsEmpty() const { return FSegs.empty(); }                ///< No segment in the chain.
  /// Segment `Index`, to read.
  const TLABSegline& operator[](int Index) const {
    CheckIndex(Index, Count());
    return FSegs[static_cast<std::size_t>(Index)];
  }
  /// The segment at either end. An empty chain has none and raises.
  const TLABSegline& First() const { return (*this)[0]; }
  const TLABSegline& Last() const { return (*this)[Count() - 1]; }  ///< The same at the end.
  /// The segments in order; any change of the chain ends a walk.
  TConstIterator begin() const { return FSegs.begin(); }
  TConstIterator end() const { return FSegs.end(); }  ///< Behind the last.
  /// The segments as the vector they stand in, for hot loops.
  const std::vector<TLABSegline>& Segs() const { return FSegs; }

  /// Appends and returns the position. A segment that does not start at the end of the chain (1e-6)
  /// is appended with its `P1` moved there and nothing else changed: an arc keeps its centre and so
  /// gets another radius.
  int Add(const TLABSegline& Seg);
  /// `Add` for each segment of `Other`, which may be this chain.
  void AddRange(const TLABPolyline& Other);
  /// These take the segment as it is.
  void Insert(int Index, const TLABSegline& Seg);
  void Replace(int Index, const TLABSegline& Seg);  ///< Takes the segment as it is.
  /// Takes a segment out; its neighbours stay as they are, so that a gap may remain.
  void Delete(int Index);
  /// Takes all segments out.
  void Clear();
  /// Room for `Capacity` segments in all, at most `kMostReserved`.
  void Reserve(int Capacity);
  /// Drops the sampled polyline and the index; every change of the list does.
  void ClearSamplePolyline();

  // --- Closure and sense (LABPolyline.cpp) ---

  /// The end of the last segment is the start of the first within `Eps`; false when empty.
  bool IsClosed(double Eps = kLinearTolerance) const;
  /// Every segment is a point, and all in the place of the first (1e-6); false when empty.
  bool IsPoint() const;
  /// One single segment, an arc that is a full circle.
  bool IsCircle() const { return Count() == 1 && FSegs.front().IsCircle(); }
  /// `Area` < 0, exact.
  bool GetIsClockwise() const { return Area() < 0.0; }
  /// Reverses the chain when `Clockwise` differs from `GetIsClockwise`.
  void SetIsClockwise(bool Clockwise);
  /// The direction arriving at vertex `Index`, and the one leaving it: as `TangentVector` of the
  /// segment before and behind, not normalised. A closed chain (1e-6) has the vertices 0 .. Count −
  /// 1 and wraps round. Where a control point lies on the end of a Bezier it is the limit
  /// direction. Segments that are points have none: the next one on that side is used, or the way
  /// to where a run of them has led more than 1e-6 from the vertex; the zero vector when there is
  /// neither.
  /// Errors, in this order: no such vertex (always for an empty chain) "[Error]
  /// TLABPolyline.LeftTangentVector: 参数不在作用域内"; `IsPoint` "...: 混合多段线为一个点"; the
  /// start of an open chain "...: 不封闭混合多段线起点没有左切向量", for `RightTangentVector` its
  /// end "...: 不封闭混合多段线终点没有右切向量".
  TPoint2D LeftTangentVector(int Index) const;
  TPoint2D RightTangentVector(int Index) const;  ///< The direction leaving it.

  // --- Shape (LABPolylineShape.cpp) ---

  /// The chain as points, ends of segments exact.
  /// Tolerance: no chord is farther than `ChordError` from its arc or Bezier; bounds as
  /// `ArcChordCount`, `BezierChordCount`.
  TVPolyline2D Sample(double ChordError = kChainChordError) const;
  /// The same, kept by the chain until it changes or is asked for another error.
  const TVPolyline2D& SampleWithoutClone(double ChordError = kChainChordError) const;
  /// Signed area of the ring, counter-clockwise positive: closed form for arcs, the polynomial's
  /// integral for Beziers. Summed relative to the first point.
  double Area() const override;
  /// Centroid of the region of the ring, as exactly; that of the sample as wires where the region
  /// is thinner than 1e-6. The origin for an empty chain.
  TPoint2D Gravity() const;
  TVRect2D BoundBox() const override;
  /// The straight segments in their order, lines and Beziers that are (`IsLine`) as chords.
  std::vector<TVLine2D> GetLines() const;
  /// Where `P` lies: `srOn` within `Eps` of the ring, else `srIn` or `srOut` by even-odd. True to
  /// arcs and Beziers.
  /// Cost: O(log n) for contours as they occur, after O(n) at the first question since a change.
  TShapeRelation RelationWithPoint(const TPoint2D& P, double Eps = kLinearTolerance) const;
  /// Everything the chain has in common with a segment, appended in the order of the chain: the
  /// single points into `Points`, the stretches into `Lines`. Each place is reported once, however
  /// many segments meet there, and no point that lies on a stretch; every segment of the chain has
  /// its own stretch. True when anything was found (LABPolylineCross.cpp).
  /// Tolerance: as `TLABSegline::CrossWithLABSegline`.
  /// Cost: O(n + k log k), k common places.
  bool CrossWithSegLine(const TVLine2D& Line, std::vector<TPoint2D>& Points,
                        std::vector<TVLine2D>& Lines, double Eps = kLinearTolerance) const;
  /// The chain as one host curve, a member for each segment.
  /// Errors: an arc that is not finite, `EParamError`.
  std::unique_ptr<TGeCompositeCurve2D> ToGeCurve2D() const;
  /// For inspection: a line with the colour, then a line for each segment with numbers that read
  /// back exactly: "line (0, 0) (1, 0)", "arc (1, 0) (0, 1) centre (0, 0) bulge 0.5", "bezier (0,
  /// 0) (0, 1) (1, 1) (1, 0)".
  /// Errors: the file cannot be written, `EInOutError`.
  void WriteToFile(const std::string& FileName, std::string_view Colour = kDrawingColour) const;
  /// What `WriteToFile` writes.
  std::string ToString(std::string_view Colour = kDrawingColour) const;

  // --- Edits and transforms, in place (LABPolylineEdit.cpp) ---

  void RoundTo(int Accuracy) override;
  void Translate(const TPoint2D& Vector) override;
  void Rotate(double Angle) override;
  void Rotate(double Angle, const TPoint2D& Centre) override;
  void RotateBy90() override;
  void RotateBy_90() override;
  void YMirror() override;
  void Transform(const TMatrix2D& Matrix) override;
  /// The same chain run the other way.
  void Reverse();
  /// Closes an open chain by a line from its end to its start; nothing when closed within `Eps` or
  /// empty.
  void ConnectHeadTail(double Eps = kLinearTolerance);
  /// Makes one line of lines that follow each other on a straight way: every vertex dropped lies
  /// within `Eps` of the line that replaces it, and the way does not turn back (as
  /// `TVPolyline2D::CollinearSmooth`). Arcs and Beziers stay as they are, and so do the ends of an
  /// open chain; a closed chain whose joint lies within a straight way begins at the next vertex
  /// that stays.
  /// Cost: O(n).
  void MergeCollinearLines(double Eps = kLinearTolerance);
  /// `MergeCollinearLines` after Beziers that run straight along their chord (1e-6) have become
  /// lines and segments that are points have gone, but for the last of a chain of nothing else. A
  /// run of them that leads more than 1e-6 away stays as lines of at least that length.
  void CollinearSmooth(double Eps = kLinearTolerance);

 protected:
  /// The empty chain that `New` starts from; a derived class answers its own.
  virtual TLABPolyline* DoNew() const { return new TLABPolyline; }
  TLABPolyline* DoClone() const override { return new TLABPolyline(*this); }

 private:
  static void CheckIndex(int Index, int Bound) {
    if (Index < 0 || Index >= Bound) RaiseError<EParamError>("TLABPolyline", "index out of range");
  }
  template <class TMap>
  void MapEach(TMap Map);

  std::vector<TLABSegline> FSegs;
  // Not changed once made, so that copies can share them.
  mutable std::shared_ptr<const TVPolyline2D> FSample;
  mutable double FSampleError = -1.0;
  mutable std::shared_ptr<const TRingIndex> FIndex;
};

/// A list of chains that it owns (`TObjectList`).
class TLABPolylineList : public TVGeometry2DList<TLABPolyline> {
 public:
  using TVGeometry2DList::TVGeometry2DList;

  /// A fresh empty list.
  std::unique_ptr<TLABPolylineList> New() const {
    return std::unique_ptr<TLABPolylineList>(DoNew());
  }
  /// Deep copies of all chains, in the same order.
  std::unique_ptr<TLABPolylineList> Clone() const {
    return std::unique_ptr<TLABPolylineList>(DoClone());
  }

  /// `TLABPolyline::CollinearSmooth` of every chain.
  void CollinearSmooth(double Eps = kLinearTolerance);
  /// There is a first chain, and it is a circle.
  bool FirstIsCircle() const { return !IsEmpty() && First()->IsCircle(); }
  /// For inspection: the chains as `TLABPolyline::WriteToFile` writes them, one after another.
  /// Errors: the file cannot be written, `EInOutError`.
  void WriteToFile(const std::string& FileName, std::string_view Colour = kDrawingColour) const;

 protected:
  TLABPolylineList* DoNew() const override { return new TLABPolylineList; }
  TLABPolylineList* DoClone() const override {
    return static_cast<TLABPolylineList*>(TVGeometry2DList::DoClone());  // begun by DoNew
  }
};

}  // namespace tarnalgo
