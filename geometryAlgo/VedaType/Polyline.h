#pragma once  // geometryAlgo/VedaType/Polyline.h

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "geometryAlgo/ClipperAdditions.h"
#include "geometryAlgo/VedaType/DebugText.h"
#include "geometryAlgo/VedaType/Enums.h"
#include "geometryAlgo/VedaType/Geometry.h"
#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// A list of points: the base of the polyline, of use on its own for point sets and results.
///
/// A value: copied and moved like the vector it wraps. Points are reached by position; `Points()`
/// gives the vector itself for hot loops.
/// Errors: a position outside 0 .. Count − 1 (`Insert`: Count), `EParamError`, nothing changed.
class TVPoint2DList : public IVGeometry2D {
 public:
  /// Walks points that may be moved.
  using TIterator = std::vector<TPoint2D>::iterator;
  /// Walks points to read.
  using TConstIterator = std::vector<TPoint2D>::const_iterator;

  TVPoint2DList() = default;
  ///@{
  /// The points as they are, repeats included.
  TVPoint2DList(std::initializer_list<TPoint2D> Points) : FPoints(Points) {}
  explicit TVPoint2DList(std::vector<TPoint2D> Points) : FPoints(std::move(Points)) {}
  ///@}

  /// A fresh empty list of the same class.
  std::unique_ptr<TVPoint2DList> New() const { return std::unique_ptr<TVPoint2DList>(DoNew()); }
  /// A copy of the same class.
  std::unique_ptr<TVPoint2DList> Clone() const { return std::unique_ptr<TVPoint2DList>(DoClone()); }

  /// Points in the list, closing repeats included.
  int Count() const { return static_cast<int>(FPoints.size()); }
  bool IsEmpty() const { return FPoints.empty(); }  ///< No point in the list.
  ///@{
  /// The point at `Index`.
  const TPoint2D& operator[](int Index) const {
    CheckIndex(Index, Count());
    return FPoints[static_cast<std::size_t>(Index)];
  }
  TPoint2D& operator[](int Index) {
    CheckIndex(Index, Count());
    return FPoints[static_cast<std::size_t>(Index)];
  }
  ///@}
  /// The point at either end. An empty list has none and raises.
  const TPoint2D& First() const { return (*this)[0]; }
  const TPoint2D& Last() const { return (*this)[Count() - 1]; }  ///< The same at the end.
  ///@{
  /// The points in order; an addition ends a walk.
  TIterator begin() { return FPoints.begin(); }
  TIterator end() { return FPoints.end(); }
  TConstIterator begin() const { return FPoints.begin(); }
  TConstIterator end() const { return FPoints.end(); }
  ///@}
  /// All points; valid until the list changes.
  const std::vector<TPoint2D>& Points() const { return FPoints; }

  /// Room for `Capacity` points in all, at most `kMostReserved`.
  void Reserve(int Capacity);
  /// Appends and returns the position.
  int Add(const TPoint2D& P);
  /// Appends all points of `Other`, which may be this list.
  void AddRange(const TVPoint2DList& Other);
  void AddRange(const std::vector<TPoint2D>& Points);  ///< The same.
  /// Puts `P` before the point at `Index`, or at the end for `Index` = Count.
  void Insert(int Index, const TPoint2D& P);
  /// Takes out the point at `Index`.
  void Delete(int Index);
  /// Takes out all points, keeps the memory.
  void Clear() { FPoints.clear(); }
  /// The last point comes first.
  void Reverse();
  /// Takes over the points of `Other`, which may be this list.
  void Assign(const TVPoint2DList& Other);
  /// Takes the vector over.
  void Assign(std::vector<TPoint2D> Points) { FPoints = std::move(Points); }
  /// Cuts `ACount` points out, beginning with point `Index`, and hands them over in their order.
  /// A stretch that reaches beyond an end of the list is cut where the list ends.
  std::vector<TPoint2D> Snip(int Index, int ACount);

  /// Signed area of the ring through the points, last to first joined: counter-clockwise positive,
  /// 0 for fewer than three points. A closing repeat of the first point changes nothing.
  /// Summed relative to the first point: far from the origin only the size of the contour counts.
  double Area() const override;
  TVRect2D BoundBox() const override;
  void RoundTo(int Accuracy) override;
  void Translate(const TPoint2D& Vector) override;
  void Rotate(double Angle) override;
  void Rotate(double Angle, const TPoint2D& Centre) override;
  void RotateBy90() override;
  void RotateBy_90() override;
  void YMirror() override;
  void Transform(const TMatrix2D& Matrix) override;
  /// Scaled by `K` about `Centre`; a negative factor turns by half a turn as well.
  void Zoom(double K, const TPoint2D& Centre = TPoint2D::FZero);

  /// Position of the first point at (X, Y), −1 when there is none.
  /// Tolerance: at most `Eps` away.
  int IndexOfByXY(double X, double Y, double Eps = kLinearTolerance) const;
  /// Position of the point that lies farthest in a direction: `drLeft` the least X, `drUp` the
  /// greatest Y, and so on; a diagonal direction decides by X, then by Y. −1 for an empty list and
  /// for `drAny`. Exact.
  /// Ties: the first in the list.
  int FindMostValueId(TDir Dir) const;

 protected:
  /// The empty list that `New` starts from; a derived class answers its own.
  virtual TVPoint2DList* DoNew() const { return new TVPoint2DList; }
  TVPoint2DList* DoClone() const override { return new TVPoint2DList(*this); }

  /// The points, within reach of derived classes.
  std::vector<TPoint2D> FPoints;

 private:
  static void CheckIndex(int Index, int Bound) {
    if (Index < 0 || Index >= Bound) RaiseError<EParamError>("TVPoint2DList", "index out of range");
  }
};

/// How a polyline turns at a vertex: straight on, to the left (convex on a counter-clockwise
/// contour), to the right, back the way it came.
enum class TCornerType { ctStraight, ctLeft, ctRight, ctReverse };
using enum TCornerType;

/// A contour: points joined by straight edges. Edge i runs from vertex i to vertex i + 1.
///
///     TVPolyline2D Part(TVRect2D({0, 0}, {100, 50}));  // closed, counter-clockwise, five points
///     if (Part.RelationWithPoint(Pierce) == srIn) ...
///
/// Closed when the last point repeats the first (`IsClosed`); there is no flag. A closed polyline
/// of n corners holds n + 1 points. Questions about a region (`Area`, `IsClockwise`, `Gravity`,
/// `RelationWithPoint` and the like) take an open polyline as the ring it becomes when its ends are
/// joined; questions about the curve take the edges that are there.
///
/// Parameter: a real u in [0, Count − 1], its integer part the edge and its fraction the place on
/// that edge. Tolerances are lengths, 1e-6 unless given.
///
/// Errors: `Line` and `SubCurve` raise; everything else answers a neutral value for arguments
/// without a meaning: 0, false, the origin, an empty polyline. Empty and one-point polylines are
/// valid everywhere.
class TVPolyline2D : public TVPoint2DList {
 public:
  // --- Making and handing over (Polyline.cpp) ---

  TVPolyline2D() = default;
  /// The points as they are; closed only where the last repeats the first.
  TVPolyline2D(std::initializer_list<TPoint2D> Points) : TVPoint2DList(Points) {}
  /// A polyline of one point.
  explicit TVPolyline2D(const TPoint2D& Point) : TVPoint2DList{Point} {}
  /// The two ends of a segment.
  explicit TVPolyline2D(const TVLine2D& Line) : TVPoint2DList{Line.StartPoint, Line.EndPoint} {}
  /// Top right, top left, bottom left, bottom right, top right: closed and counter-clockwise.
  explicit TVPolyline2D(const TVRect2D& Rect);
  /// The points as they are; closed only where the last repeats the first.
  explicit TVPolyline2D(std::vector<TPoint2D> Points) : TVPoint2DList(std::move(Points)) {}
  /// The points of a list.
  explicit TVPolyline2D(const TVPoint2DList& Points) : TVPoint2DList(Points) {}
  /// Each integer point divided by `Scale`.
  TVPolyline2D(const TPath& Path, double Scale);

  /// A fresh empty polyline.
  std::unique_ptr<TVPolyline2D> New() const { return std::unique_ptr<TVPolyline2D>(DoNew()); }
  /// A copy of the same class.
  std::unique_ptr<TVPolyline2D> Clone() const { return std::unique_ptr<TVPolyline2D>(DoClone()); }

  /// One integer point a vertex: coordinates times `Scale`, rounded as `ScaledIntPoint` does.
  TPath ToPath(double Scale) const;
  /// A copy of the points, as the host exchanges them.
  TDynPoints2D ToTDynPoints2D() const { return FPoints; }
  std::vector<TPoint2D> ToTPoint2DList() const { return FPoints; }  ///< The same copy.
  /// For inspection: every point as "(%.16f, %.16f), ", one after another.
  std::string ToString() const;
  /// For inspection: a line with the colour, then a line "(%.16f, %.16f)" for each point.
  /// Errors: the file cannot be written, `EInOutError`.
  void WriteToFile(const std::string& FileName, std::string_view Colour = kDrawingColour) const;

  // --- Edges, closure, sense of rotation (Polyline.cpp) ---

  /// Edge `I` from vertex `I` to vertex `I` + 1.
  /// Errors: unless 0 <= `I` < Count − 1, "[Error] TVPolyline2D.Line: 下标越界".
  TVLine2D Line(int I) const;
  /// The last point is the first one within `Eps`; true for a single point, false when empty.
  bool IsClosed(double Eps = kLinearTolerance) const;
  /// `Area` < 0, exact: a contour without area is not clockwise.
  bool IsClockwise() const { return Area() < 0.0; }
  /// Reverses the points when `Clockwise` differs from `IsClockwise`, so also when `Clockwise` is
  /// wanted of a contour without area (which stays not clockwise). Nothing for an empty polyline.
  void SetIsClockwise(bool Clockwise);
  /// Reverses the order of the points.
  void Negative() { Reverse(); }

  // --- Lengths, distances and parameters (PolylineParam.cpp) ---

  /// Sum of the edge lengths, 0 for fewer than two points.
  double TotalLength() const;
  /// Length walked from vertex `From` forward to vertex `To`. A closed polyline walks on past its
  /// last point to its first one, so `From` may be greater than `To`; an open one answers 0 then.
  /// 0 for equal positions and for positions that do not exist.
  double RangeLength(int From, int To) const;
  /// Least distance from `P` to an edge, `Nearest` the foot point there. 1.7e308 and the origin for
  /// an empty polyline.
  /// Ties: the first edge.
  double DistTo(const TPoint2D& P, TPoint2D& Nearest) const;
  /// The same without the foot point.
  double DistTo(const TPoint2D& P) const;
  /// The point at parameter `U`, the origin outside [0, Count − 1]. Exact bounds, no slack: who
  /// adds up parameters clamps them.
  TPoint2D CalcPointByParam(double U) const;
  /// Parameter of the place nearest to `P` on the edges less than `MaxDist` away. 0 when there is
  /// none, which is also the parameter of the first vertex.
  /// Ties: the first edge, so a point at vertex k answers k as the end of edge k − 1.
  double CalcParamByPoint(const TPoint2D& P, double MaxDist = kStartOfMinimum) const;
  /// Parameter of `P` on the first edge that holds it, −1 when none does. A single point holds
  /// itself at parameter 0.
  /// Tolerance: at most `Eps` from the edge.
  double CalcFirstParamByPoint(const TPoint2D& P, double Eps = kLinearTolerance) const;
  /// The place reached after `Length` from the first vertex, held within the ends. The origin for
  /// an empty polyline.
  TPoint2D CalcTravelPos(double Length) const;
  ///@{
  /// Direction of the polyline at parameter `U`: the vector of the edge, its length kept (the
  /// derivative by the parameter). At a vertex `CalcLeftDerivative` takes the edge that arrives and
  /// `CalcRightDerivative` the one that leaves, round the joint of a closed polyline;
  /// `CalcDerivative` takes the one that leaves, at the end of an open polyline the one that
  /// arrives. Edges without length have no direction: the next one on that side is used. The zero
  /// vector where there is no such edge and outside [0, Count − 1].
  TPoint2D CalcDerivative(double U) const;
  TPoint2D CalcLeftDerivative(double U) const;
  TPoint2D CalcRightDerivative(double U) const;
  ///@}
  /// The part from parameter `ParamFrom` to `ParamTo`: the two end points interpolated, between
  /// them the vertices strictly between the two parameters. Equal parameters give that point twice,
  /// a parameter outside [0, Count − 1] the origin as end. An empty polyline has empty parts.
  /// Errors: `ParamTo` < `ParamFrom`, "[Error] TVPolyline2D.SubCurve: ParamTo < ParamFrom".
  TVPolyline2D SubCurve(double ParamFrom, double ParamTo) const;
  /// Drops from `Params` what names a place named before: less than or exactly `Eps` away, measured
  /// along the polyline, round the joint of a closed one. What lies outside [0, Count − 1] is
  /// dropped too; the rest keeps its order. Two passes through one place stay two places.
  /// Cost: O(n + p log p).
  void RemoveDuplicate(std::vector<double>& Params, double Eps = kLinearTolerance) const;
  /// `U` lies in one of the closed ranges (Low, High). Exact; the first hit ends the search.
  static bool IsPointParamInLineParams(double U,
                                       const std::vector<std::pair<double, double>>& Ranges);

  // --- Crossings and relations (PolylineCross.cpp) ---
  //
  // Edges meet where they come within `Eps` of each other, touching ends included. Cost, unless
  // said otherwise: O(n + m + k) for contours as they occur, k pairs of edges that meet, by boxes
  // over runs of edges; a hatch of long parallel edges at any angle keeps to it too. O(n m) where
  // the boxes of most edges overlap.

  ///@{
  /// Everything this polyline has in common with the other, appended to the lists in the order in
  /// which this polyline runs: the single points into `Points`, the stretches where edges run along
  /// each other into `Lines`, directed as this polyline. Each place is reported once, however many
  /// edges meet there, and no point that lies on a stretch. Each pair of edges has its own stretch,
  /// but of several with exactly the same two ends, where edges are run more than once, there is
  /// only the first. True when anything was found.
  /// Ties: a vertex within `Eps` of a crossing is reported itself, bit for bit.
  bool CrossWith(const TVLine2D& Line, std::vector<TPoint2D>& Points, std::vector<TVLine2D>& Lines,
                 double Eps = kLinearTolerance) const;
  bool CrossWith(const TVPolyline2D& Other, std::vector<TPoint2D>& Points,
                 std::vector<TVLine2D>& Lines, double Eps = kLinearTolerance) const;
  ///@}
  ///@{
  /// The last place that this polyline has in common with the other on its way; false, `LastPt`
  /// untouched, when there is none.
  bool CrossWithLastPt(const TVLine2D& Line, TPoint2D& LastPt, double Eps = kLinearTolerance) const;
  bool CrossWithLastPt(const TVPolyline2D& Other, TPoint2D& LastPt,
                       double Eps = kLinearTolerance) const;
  ///@}
  ///@{
  /// The common place nearest to `From`; on a stretch its nearest point. False, `Nearest`
  /// untouched, when there is none.
  /// Ties: points before stretches, then the first along this polyline.
  bool NearestCrossPoint(const TVLine2D& Line, const TPoint2D& From, TPoint2D& Nearest,
                         double Eps = kLinearTolerance) const;
  bool NearestCrossPoint(const TVPolyline2D& Other, const TPoint2D& From, TPoint2D& Nearest,
                         double Eps = kLinearTolerance) const;
  ///@}
  /// There is a common place; stops at the first one found.
  bool IsCrossWith(const TVLine2D& Line, double Eps = kLinearTolerance) const;
  /// The same with a polyline.
  bool IsCrossWith(const TVPolyline2D& Other, double Eps = kLinearTolerance) const;
  /// Two edges meet that do not follow each other, or two that do run back over one another.
  /// Touching is meeting: a contour that comes back to one of its vertices intersects itself. The
  /// joint of a closed polyline does not count. Edges shorter than `Eps` are passed over.
  bool IsSelfIntersect(double Eps = kLinearTolerance) const;
  /// Where `P` lies: `srOn` within `Eps` of the ring, else `srIn` or `srOut`, told by the number of
  /// edges between the point and infinity (even-odd: what a self-crossing ring encloses twice is
  /// outside).
  /// Cost: O(n): points may change at any time, so nothing is kept from one question to the next. A
  /// `TLABPolyline` made of the polyline answers many questions in O(log n) each.
  TShapeRelation RelationWithPoint(const TPoint2D& P, double Eps = kLinearTolerance) const;
  /// Where the region of `Other` lies, `Other` being the subject: `srEqual` the same ring, whatever
  /// its vertices; `srContained` in this region, `srContain` around it, both also where the rings
  /// touch or share edges; `srOn` where only the rings meet, touching from outside, and without
  /// area on this ring; `srDeviate` more than `Eps` apart, or one of them empty; otherwise
  /// `srCross`. Regions are meant to be free of self-intersections. What is no wider than `Eps` has
  /// no inside: two strokes that meet, even across each other, are `srOn`.
  /// Cost: as above, times O(log n) for each common place.
  TShapeRelation RelationWith(const TVPolyline2D& Other, double Eps = kLinearTolerance) const;
  /// Cuts off the ends of an open polyline that overshoot: where it crosses or touches itself, or
  /// runs on along itself, the loop is kept, closed exactly, and the two tails are dropped. Of
  /// several loops the one that drops least; no tail longer than `MaxTail` is dropped. False,
  /// nothing changed, when there is no such loop or the polyline is closed already.
  bool Trim(double MaxTail = kStartOfMinimum, double Eps = kLinearTolerance);

  // --- Edits (PolylineEdit.cpp) ---

  /// Deletes vertices at most `Eps` from the vertex kept before them. The first and the last point
  /// stay what they are, so a closed polyline stays closed; of a polyline all in one place one
  /// point is left.
  void DeleteNeighbourClosed(double Eps = kLinearTolerance);
  /// Deletes vertices on straight ways: each lies within `Eps` of the edge that replaces it, and
  /// the polyline does not turn back there by more. The ends of an open polyline stay. A closed one
  /// whose joint lies on a straight way itself begins at its next corner afterwards.
  /// Cost: O(n). Each edge reaches as far as it can, which need not give the fewest vertices.
  void CollinearSmooth(double Eps = kLinearTolerance);
  /// Deletes vertices after Douglas and Peucker: each lies within `Eps` of the edge that replaces
  /// it, and the vertices that stand out farthest are the ones that stay. Meant for greater
  /// tolerances than `CollinearSmooth`: it keeps the shape with fewer and better vertices. The
  /// first and the last point stay, and the vertex of a closed polyline farthest from them.
  /// Ties: the first of several farthest vertices.
  /// Cost: O(n log n) for contours as they occur. Long zigzags keep to it too: the farthest vertex
  /// of the middle is as good there.
  void Simplify(double Eps = kLinearTolerance);
  /// Joins `Other` on where an end of it meets an end of this polyline within `Eps`; true when it
  /// did. The joint keeps this polyline's point. Tried in this order: its start at this end, its
  /// end at this end, its end at this start, its start at this start; this polyline keeps its
  /// direction, the other one is turned where necessary. False when one of them is closed or has
  /// fewer than two points.
  bool TryConnect(const TVPolyline2D& Other, double Eps = kLinearTolerance);
  /// Closes an open polyline by a last point that repeats the first; nothing when it is closed
  /// within `Eps` or empty.
  void ConnectHeadTail(double Eps = kLinearTolerance);

  // --- Shape (PolylineShape.cpp) ---

  ///@{
  /// The same vertices in the same order within `Eps`. Where a closed polyline begins does not
  /// matter. `IsEqualToReverse` compares with the reversed other polyline.
  /// Cost: O(n), times the visits of a closed polyline to its first point at worst.
  bool IsEqualTo(const TVPolyline2D& Other, double Eps = kLinearTolerance) const;
  bool IsEqualToReverse(const TVPolyline2D& Other, double Eps = kLinearTolerance) const;
  ///@}
  /// The ring is a rectangle, at any angle and in either sense: four corners, diagonals that halve
  /// each other and are of one length, each within `Eps`. Vertices on its sides do not matter.
  bool IsRect(double Eps = kLinearTolerance) const;
  /// The ring turns in one sense only and goes round once. Vertices within `Eps` of a straight way
  /// count as straight; a ring nowhere wider than `Eps` is no polygon.
  bool IsConvexPolygon(double Eps = kLinearTolerance) const;
  /// The convex hull of the points: closed, counter-clockwise, from the leftmost point on (of
  /// several the lowest; the next corner where that is none). This polyline is not changed.
  /// Tolerance: a hull vertex that stands out less than `kHullSlack` (1.1e-5, a length) from the
  /// hull without it is left out, so no point lies farther outside the result than that.
  /// Points all on one line give that stretch to and fro, points all in one place that place.
  /// Points that are not finite are ignored.
  /// Cost: O(n log n).
  TVPolyline2D ConvexHull() const;
  /// Centroid of the region of the ring; of the edges as wires where the region is thinner than
  /// 1e-6. Computed relative to the first point. The origin for an empty polyline.
  TPoint2D Gravity() const;
  /// The turn at vertex `I`, at the joint of a closed polyline as well. `ctStraight` at the ends of
  /// an open one and for vertices that do not exist. Repeated points are passed over.
  /// Tolerance: the cross product of the two edges against `kCornerTolerance` (1e-12, a product of
  /// lengths, not normalised).
  TCornerType CornerType(int I) const;
  /// Radius of the circle through vertex `I` and its neighbours (as in `CornerType`): infinite
  /// where the three are in line, 0 where the polyline turns back, −1 where there is no corner.
  double CurvatureRadius(int I) const;

 protected:
  /// The empty polyline that `New` starts from; a derived class answers its own.
  TVPolyline2D* DoNew() const override { return new TVPolyline2D; }
  TVPolyline2D* DoClone() const override { return new TVPolyline2D(*this); }

 private:
  /// Travelled length at each vertex.
  std::vector<double> VertexLengths() const;
  /// Vector of the first edge with a length met from edge `Edge` on, going by `Step`, once round a
  /// closed polyline.
  TPoint2D FirstDirection(int Edge, int Step) const;
};

/// What counts as a repetition of a polyline: only the same direction, or the reverse too.
enum class TRepeatKind { rkSameDirection, rkAnyDirection };
using enum TRepeatKind;

/// A list of polylines that it owns (`TObjectList`).
///
/// The operations that join work in place: the first polyline of a chain, in the order of the
/// list, takes over the points of the others and keeps its place and direction; the others leave
/// the list. A chain whose ends meet becomes a ring, closed exactly. Closed polylines and those of
/// fewer than two points stay as they are. Each answers the number of polylines that left.
class TVPolyline2DList : public TVGeometry2DList<TVPolyline2D> {
 public:
  using TVGeometry2DList::TVGeometry2DList;

  /// A fresh empty list.
  std::unique_ptr<TVPolyline2DList> New() const {
    return std::unique_ptr<TVPolyline2DList>(DoNew());
  }
  /// Deep copies of all polylines, in the same order.
  std::unique_ptr<TVPolyline2DList> Clone() const {
    return std::unique_ptr<TVPolyline2DList>(DoClone());
  }

  /// One path a polyline, in the order of the list.
  TPaths ToPaths(double Scale) const;
  /// Least distance from `P` to a polyline, `Nearest` the foot point there. 1.7e308 and the origin
  /// when there is no point at all.
  /// Ties: the first polyline.
  double DistanceTo(const TPoint2D& P, TPoint2D& Nearest) const;
  /// The same without the foot point.
  double DistanceTo(const TPoint2D& P) const;
  /// Deletes polylines that repeat an earlier one (`IsEqualTo`, `IsEqualToReverse`); the number
  /// deleted.
  /// Cost: O(n) in the points of all, as long as few different polylines have the same box.
  int DeleteRepeat(TRepeatKind Kind = rkAnyDirection, double Eps = kLinearTolerance);
  /// Joins polylines whose ends meet within `Eps`, in the order of the list: each end takes the
  /// first free end before it.
  /// Cost: O(n).
  int Connect(double Eps = kLinearTolerance);
  /// Joins polylines whose ends meet within `Eps` so that ways go on as straight as they can: where
  /// more than two ends meet, the pair with the least turn is joined first.
  /// Ties: the first pair in the list. Of more than 64 ends in one place not all pairs are tried.
  /// Cost: O(n log n).
  int ConnectOptimize(double Eps = kLinearTolerance);
  /// Joins each polyline to those just before it in the list where an end of it meets an end of
  /// what they have become (as `TVPolyline2D::TryConnect`, in its order of trying), else begins
  /// anew with it.
  /// Cost: O(n).
  int TryConnectByOrder(double Eps = kLinearTolerance);
  /// One polyline through all members in their order and direction, straight edges across the gaps
  /// between them. Where one begins within `Eps` of the end before it the point stands once.
  TVPolyline2D ConnectPolylines(double Eps = kLinearTolerance) const;
  /// Sorts by the absolute area, the largest first. Exact and stable.
  void SortByArea();
  /// For inspection: the polylines as `TVPolyline2D::WriteToFile` writes them, one after another,
  /// each with its colour line.
  /// Errors: the file cannot be written, `EInOutError`.
  void WriteToFile(const std::string& FileName, std::string_view Colour = kDrawingColour) const;

 protected:
  TVPolyline2DList* DoNew() const override { return new TVPolyline2DList; }
  TVPolyline2DList* DoClone() const override {
    return static_cast<TVPolyline2DList*>(TVGeometry2DList::DoClone());  // begun by DoNew
  }
};

}  // namespace tarnalgo
