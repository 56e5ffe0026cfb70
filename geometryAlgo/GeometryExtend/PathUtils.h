#pragma once  // geometryAlgo/GeometryExtend/PathUtils.h

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "containers/TreeAlgorithm/MultiTree.h"
#include "geometryAlgo/ClipperAdditions.h"
#include "geometryAlgo/VedaType/Enums.h"
#include "geometryAlgo/VedaType/HPolygon.h"
#include "geometryAlgo/VedaType/Point.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "geometryAlgo/VedaType/Rect.h"
#include "host/Cadtypes/Constants.h"

namespace tarnalgo {

/// One entry an outer contour: the outer, then its holes.
using TPathsList = std::vector<TPaths>;

/// Bounds of integer points, closed. Valid when `Left` <= `Right` and `Bottom` <= `Top`; any other
/// box, the default one too, is empty.
struct TIntRect {
  ///@{
  /// A side, in integer units.
  std::int64_t Left = INT64_MAX;
  std::int64_t Right = INT64_MIN;
  std::int64_t Top = INT64_MIN;
  std::int64_t Bottom = INT64_MAX;
  ///@}

  /// Not empty.
  constexpr bool IsValid() const { return Left <= Right && Bottom <= Top; }
  friend constexpr bool operator==(const TIntRect&, const TIntRect&) = default;
};

/// Integer paths for the clipping library: made from model geometry and turned back, asked and
/// rearranged.
///
///     TPaths Rings = TPathUtils::CreatePaths(Contours, kIntegerScale);
///     TPathsList Regions;
///     TPathUtils::NormalizeTPaths(Rings, Regions);  // outers with their holes
///     TVPolyline2DList Back = TPathUtils::CreatePolylines(Regions[0], kIntegerScale);
///
/// An integer coordinate is the model coordinate times a scale, rounded to the nearest integer,
/// exact halves to even (`ScaledIntPoint`); back it is divided by the scale. Paths of different
/// scales must not be mixed. Operations without a scale argument that need model units use
/// `kIntegerScale`.
///
/// A closed contour does not repeat its first point unless `ConnectHeadTail` made it. "The ring"
/// of a path joins its last point to its first; "the listed edges" are those between neighbours in
/// the list alone. Counter-clockwise is positive. `TPaths` that stand for a region hold the outer
/// first.
///
/// Range: integer results (areas, turns, right angles) are exact for coordinates that the library
/// takes, ±4.6e18, which all conversions keep to. Beyond it differences wrap round; nothing is
/// undefined. A scale of 0 turns every integer back into an infinity or NaN.
/// Errors: an index out of range, `EParamError`; a failure of the clipping library (a coordinate
/// beyond its range), `Exception` "[Error] TPathUtils.Operation: text of the library". Nothing else
/// raises: what is empty answers false, 0, the origin or something empty.
/// Cost: linear unless said otherwise.
class TPathUtils {
 public:
  /// A place on a path: the point and its parameter.
  struct TTempRec {
    TPointL2D Point;     ///< The place, in integer units.
    double Param = 0.0;  ///< Its parameter on the path.
  };
  /// A vertex within an array of paths, by position; −1, −1 is none.
  struct TPointIndex {
    int Path = -1;   ///< Position of the path in the array.
    int Point = -1;  ///< Position of the vertex in that path.
    friend constexpr bool operator==(const TPointIndex&, const TPointIndex&) = default;
  };
  /// The order along a path: by parameter, exact sign.
  struct TParamComparer {
    /// −1, 0 or 1; places of equal parameter are equal.
    int operator()(const TTempRec& A, const TTempRec& B) const;
  };

  // --- Points and integer vectors (PathPoints.cpp) ---
  //
  // Results with a fraction are rounded to the nearest integer, halves to even, and held within the
  // library's range.

  /// The point of these integers.
  static TIntPoint CreateIntPoint(std::int64_t X, std::int64_t Y);
  /// Coordinates that are not integers need a scale.
  template <class TY, TNotIntegers<TY> TX>
  static TIntPoint CreateIntPoint(TX X, TY Y) = delete;
  /// `ScaledIntPoint`.
  static TIntPoint CreateIntPoint(const TPoint2D& P, double Scale);
  /// The integers divided by `Scale`.
  static TPoint2D CreatePoint2D(const TIntPoint& P, double Scale);
  /// The same integers, no scaling.
  static TPointL2D CreatePointL2D(const TIntPoint& P);
  static bool Equal(const TIntPoint& A, const TIntPoint& B);     ///< The same integers.
  static TIntPoint Sub(const TIntPoint& A, const TIntPoint& B);  ///< The vector from `B` to `A`.
  /// Scalar product, formed exactly and rounded once: 0 only at a right angle.
  static double PointMul(const TIntPoint& A, const TIntPoint& B);
  /// The vector times a factor, or divided by one.
  static TIntPoint PointMul(const TIntPoint& V, double K);
  static TIntPoint Divide(const TIntPoint& V, double K);  ///< Divided by a number.
  static TIntPoint Negative(const TIntPoint& V);          ///< The opposite vector.
  /// Turned by `A` radians counter-clockwise about the origin.
  static TIntPoint Rotate(const TIntPoint& V, double A);
  /// Brought to `Length` integer units, turned round by a negative one; the zero vector stays.
  static TIntPoint Strech(const TIntPoint& V, double Length);
  /// The vectors have the same direction, exactly; lengths do not matter. The zero vector is like
  /// itself alone.
  static bool SameVector(const TIntPoint& A, const TIntPoint& B);
  /// Counter-clockwise angle from vector `A` to vector `B` in [0, 2π), both in model units; 0 when
  /// one of them is zero.
  static double Angle(const TIntPoint& A, const TIntPoint& B);
  /// `P` lies in the closed box, exactly; never in an empty one.
  static bool PointInRect(const TIntPoint& P, const TIntRect& Rect);

  // --- From the model and back (PathConvert.cpp) ---

  /// One integer point a vertex, in vertex order. Who wants arcs approximated flattens them first.
  static TPath CreatePath(const TVPolyline2D& Polyline, double Scale);
  /// Nothing gives an empty path.
  static TPath CreatePath(const TVPolyline2D* Polyline, double Scale);
  /// One integer point a point of the list.
  static TPath CreatePath(std::span<const TPoint2D> Points, double Scale);
  static TPath CreatePath(const std::vector<TPoint2D>& Points, double Scale);  ///< The same.
  /// Top left, bottom left, bottom right, top right: counter-clockwise. An empty box is taken by
  /// its sides as they are.
  static TPath CreatePath(const TVRect2D& Rect, double Scale);
  /// A path for each polyline; nothing gives no path.
  static TPaths CreatePaths(const TVPolyline2DList& List, double Scale);
  /// The same of a list that may be absent.
  static TPaths CreatePaths(const TVPolyline2DList* List, double Scale);

  /// The contours of all polygons, one polygon after the other, each outline before its holes.
  static TPaths CreatePaths(const TVHPolygonList& List, double Scale);
  /// The same of a list that may be absent.
  static TPaths CreatePaths(const TVHPolygonList* List, double Scale);

  /// The points of the path in model units.
  static std::vector<TPoint2D> CreatePoint2DList(const TPath& Path, double Scale);
  /// One vertex a point, open unless the path repeats its first point.
  static TVPolyline2D CreatePolyline(const TPath& Path, double Scale);
  /// A polyline for each path.
  static TVPolyline2DList CreatePolylines(const TPaths& Paths, double Scale);
  ///@{
  /// Replaces the vertices (the polylines of the list) by those of the path (the paths).
  static void AssignToPolyline(const TPath& Path, TVPolyline2D& Polyline, double Scale);
  static void AssignToPolylines(const TPaths& Paths, TVPolyline2DList& List, double Scale);
  ///@}

  // --- Sense, closure, edits (PathEdit.cpp) ---

  /// Not the library's `Orientation`, which is true for a signed area of 0 and more.
  static bool GetIsClockwise(const TPath& Path);
  /// Reverses the path when `GetIsClockwise` is not what is wanted; a path without area, never
  /// clockwise, is reversed by every wish for clockwise.
  static void SetIsClockwise(TPath& Path, bool Clockwise);
  /// With `EachPath` every path for itself. Without, only the first path is asked, and when it runs
  /// the wrong way all are reversed, so that holes keep running against their outer.
  static void SetIsClockwise(TPaths& Paths, bool Clockwise, bool EachPath);
  /// Appends a copy of the first point unless the path is empty or ends in it already.
  static void ConnectHeadTail(TPath& Path);
  static void ConnectHeadTail(TPaths& Paths);  ///< The same of every path.
  /// Without the vertices that lie on straight ways: `TVPolyline2D::CollinearSmooth` with 1e-6
  /// model units. The ends of a path that does not repeat its first point stay.
  static TPath CollinearSmooth(const TPath& Path);
  /// The last point repeats the first, exactly; an array when it is not empty and all its paths do.
  static bool IsClosed(const TPath& Path);
  static bool IsClosed(const TPaths& Paths);  ///< There are paths, all closed.
  /// Takes out the point (the path) at that position.
  static void Delete(TPath& Path, int Index);
  static void Delete(TPaths& Paths, int Index);  ///< Takes out a whole path.
  /// An independent copy.
  static TPath Clone(const TPath& Path);
  static TPaths Clone(const TPaths& Paths);  ///< Copies of all paths.
  /// The other way round. Paths of an array keep their places.
  static void Reverse(TPath& Path);
  static void Reverse(TPaths& Paths);  ///< Every path, in its place.
  /// Every point negated: turned by half a turn about the origin, as the moving part of a no-fit
  /// polygon is.
  static void Negative(TPath& Path);
  static void Negative(TPaths& Paths);  ///< The same of every path.
  ///@{
  /// Turned by `A` radians counter-clockwise about `Centre`; exact for 0.
  static void Rotate(TPath& Path, double A);
  static void Rotate(TPath& Path, double A, const TIntPoint& Centre);
  static void Rotate(TPaths& Paths, double A);
  static void Rotate(TPaths& Paths, double A, const TIntPoint& Centre);
  ///@}
  /// Shifted by `V` integer units.
  static void Translate(TPath& Path, const TIntPoint& V);
  static void Translate(TPaths& Paths, const TIntPoint& V);  ///< The same of every path.
  ///@{
  /// Scaled by `K` about `Centre`.
  static void Zoom(TPath& Path, double K);
  static void Zoom(TPath& Path, double K, const TIntPoint& Centre);
  static void Zoom(TPaths& Paths, double K);
  static void Zoom(TPaths& Paths, double K, const TIntPoint& Centre);
  ///@}
  /// Empties and gives the memory back.
  static void Free(TPath& Path);
  static void Free(TPaths& Paths);  ///< All paths and the array.
  /// Appends a path, or all paths of `Other`, which may be the array itself.
  static void PathsAdd(TPaths& Paths, const TPath& Path);
  static void PathsAddRange(TPaths& Paths, const TPaths& Other);  ///< All paths of `Other`.

  // --- Measures and places (PathQuery.cpp) ---

  /// Points of all paths together.
  static std::int64_t GetPathsPointCount(const TPaths& Paths);
  /// Bytes that the arrays occupy, capacity not yet used included.
  static std::size_t MemoryUse(const TPath& Path);
  static std::size_t MemoryUse(const TPaths& Paths);  ///< The same of array and paths.
  ///@{
  /// Integer bounds, empty when there is no point; `BoundBox` is the same divided by `Scale`.
  static TIntRect IntBoundbox(const TPath& Path);
  static TIntRect IntBoundbox(const TPaths& Paths);
  static TVRect2D BoundBox(const TPath& Path, double Scale = 1.0);
  static TVRect2D BoundBox(const TPaths& Paths, double Scale = 1.0);
  ///@}
  ///@{
  /// Length of the ring, of the listed edges, in integer units; of an array the sum.
  static double Perimeter(const TPath& Path);
  static double Perimeter(const TPaths& Paths);
  static double TotalLength(const TPath& Path);
  static double TotalLength(const TPaths& Paths);
  ///@}
  /// Area of the ring in integer units squared, counter-clockwise positive or without sign; 0 for
  /// fewer than three points. Summed exactly and rounded once.
  static double Area(const TPath& Path, bool Absolute);
  /// Four points, or five of which the last repeats the first, whose neighbouring edges are all at
  /// right angles, exactly. Edges of no length pass: four equal points are a rectangle.
  static bool IsRectangle(const TPath& Path);
  ///@{
  /// Where the first of the listed edges that reaches `X` has it; at the start of an edge along the
  /// Y axis. Of an array the first path that reaches it. False, `Y` untouched, when none does.
  static bool CalcYByX(const TPath& Path, double X, double& Y);
  static bool CalcYByX(const TPaths& Paths, double X, double& Y);
  static bool CalcXByY(const TPath& Path, double Y, double& X);
  static bool CalcXByY(const TPaths& Paths, double Y, double& X);
  ///@}

  ///@{
  /// The vertex that lies farthest in the direction named first, of those the farthest in the
  /// second one: `LeftTopPoint` the highest of the leftmost, `TopLeftPoint` the leftmost of the
  /// highest. `Index` names it. The origin and −1 when there is no vertex.
  /// Ties: the first.
  static TIntPoint LeftTopPoint(const TPath& Path);
  static TIntPoint LeftTopPoint(const TPath& Path, int& Index);
  static TIntPoint LeftTopPoint(const TPaths& Paths);
  static TIntPoint LeftTopPoint(const TPaths& Paths, TPointIndex& Index);
  static TIntPoint LeftBottomPoint(const TPath& Path);
  static TIntPoint LeftBottomPoint(const TPath& Path, int& Index);
  static TIntPoint LeftBottomPoint(const TPaths& Paths);
  static TIntPoint LeftBottomPoint(const TPaths& Paths, TPointIndex& Index);
  static TIntPoint RightBottomPoint(const TPath& Path);
  static TIntPoint RightBottomPoint(const TPath& Path, int& Index);
  static TIntPoint RightBottomPoint(const TPaths& Paths);
  static TIntPoint RightBottomPoint(const TPaths& Paths, TPointIndex& Index);
  static TIntPoint RightTopPoint(const TPath& Path);
  static TIntPoint RightTopPoint(const TPath& Path, int& Index);
  static TIntPoint RightTopPoint(const TPaths& Paths);
  static TIntPoint RightTopPoint(const TPaths& Paths, TPointIndex& Index);
  static TIntPoint BottomLeftPoint(const TPath& Path);
  static TIntPoint BottomLeftPoint(const TPath& Path, int& Index);
  static TIntPoint BottomLeftPoint(const TPaths& Paths);
  static TIntPoint BottomLeftPoint(const TPaths& Paths, TPointIndex& Index);
  static TIntPoint BottomRightPoint(const TPath& Path);
  static TIntPoint BottomRightPoint(const TPath& Path, int& Index);
  static TIntPoint BottomRightPoint(const TPaths& Paths);
  static TIntPoint BottomRightPoint(const TPaths& Paths, TPointIndex& Index);
  static TIntPoint TopLeftPoint(const TPath& Path);
  static TIntPoint TopLeftPoint(const TPath& Path, int& Index);
  static TIntPoint TopLeftPoint(const TPaths& Paths);
  static TIntPoint TopLeftPoint(const TPaths& Paths, TPointIndex& Index);
  static TIntPoint TopRightPoint(const TPath& Path);
  static TIntPoint TopRightPoint(const TPath& Path, int& Index);
  static TIntPoint TopRightPoint(const TPaths& Paths);
  static TIntPoint TopRightPoint(const TPaths& Paths, TPointIndex& Index);
  ///@}

  /// Where `P` lies, `srIn`, `srOn` or `srOut`, by the library's `PointInPolygon`. Of an outer with
  /// holes: on the edge of a hole is `srOn`, inside one is `srOut`, the first hole that tells
  /// decides.
  static TShapeRelation RelationWithPoint(const TPath& Path, const TIntPoint& P);
  /// The same of an outer with holes.
  static TShapeRelation RelationWithPoint(const TPaths& Paths, const TIntPoint& P);
  /// The relation is `srIn` or `srOn`.
  static bool PointInPolygon(const TPath& Path, const TIntPoint& P);
  /// The same of an outer with holes.
  static bool PointInPolygons(const TPaths& Paths, const TIntPoint& P);

  // --- Parameters and nearness (PathParam.cpp) ---
  //
  // The parameter of a place is the index of its listed edge plus the position on it, 0 to 1.

  /// Parameter of `P` on the first edge that holds it (`TVLine2D::IsPointOnSegLine`, `Tolerance` in
  /// model units); a vertex belongs to the edge that arrives there. Not held within the edge: it
  /// may leave [i, i + 1] by 1e-6. Edges of no length are passed over; a path of one point holds
  /// that point, exactly, at 0. False, `Param` untouched, when no edge does.
  static bool ParamByPoint(const TPath& Path, const TIntPoint& P, double& Param,
                           double Tolerance = kLinearTolerance);
  /// The same on the nearest of the edges that hold it.
  /// Ties: the first.
  static bool AccurateParamByPoint(const TPath& Path, const TIntPoint& P, double& Param,
                                   double Tolerance = kLinearTolerance);
  /// The point at a parameter, rounded. Outside [0, last index] by more than 1e-6: the origin.
  static TIntPoint PointByParam(const TPath& Path, double Param);
  /// Least distance from the listed edges, in integer units; 1.7e308 for an empty path.
  static double DistanceTo(const TPath& Path, const TIntPoint& P);
  /// `P` lies at most `MaxDist` integer units from the listed edges. `Nearest` is the nearest point
  /// of the path, rounded, also where that is too far away; untouched for an empty path.
  /// Ties: the first edge.
  static bool IsNearByPoint(const TPath& Path, const TPointL2D& P, double MaxDist,
                            TPointL2D& Nearest);

  // --- Comparisons and corners (PathCompare.cpp) ---

  /// The same points in the same order.
  static bool Equal(const TPath& A, const TPath& B);
  /// A total order for sorting and searching, −1, 0 or 1: fewer points first, then by the first
  /// points that differ, X then Y. 0 only for equal paths.
  static int ComparePath(const TPath& A, const TPath& B);
  /// The rings are one shape in two places: a turn and a shift bring each vertex of `A` within
  /// `Tolerance` (integer units) of its partner in `B`. Start, sense and repeated points do not
  /// matter; a mirror image is not congruent (sheet has a good side), and vertices on straight ways
  /// count. The fit is the one of least squares.
  /// Cost: O(n log n) for shapes as they occur, O(n²) where many vertices and their edges look
  /// alike and none fits.
  static bool IsCongruent(const TPath& A, const TPath& B, double Tolerance = kCongruenceTolerance);
  /// The turn of the ring at a vertex in (−π, π], left positive, π where it goes back the way it
  /// came. Equal neighbours are passed over; 0 when all points are equal.
  static double CornerRadian(const TPath& Path, int Index);

  // --- Cutting (PathCut.cpp) ---

  ///@{
  /// The parts of `Path`, in its order and direction, between the places where its listed edges
  /// meet those of the cutter, cross or touch; along a common stretch it is cut at both ends. The
  /// parts join end to end and make up the path. Of a path that repeats its first point the last
  /// and the first part are one unless it is cut there. Uncut: the path itself; empty: nothing.
  /// Tolerance: `Tolerance` in model units; places that round to one integer point are one, cuts at
  /// the ends of the path do not count.
  /// Cost: O((n + m + k) log n) for paths as they occur, k places.
  static TPaths CutByPath(const TPath& Path, const TPath& Cutter,
                          double Tolerance = kLinearTolerance);
  static TPaths CutByPaths(const TPath& Path, const TPaths& Cutters,
                           double Tolerance = kLinearTolerance);
  ///@}

  // --- Outers and holes (PathGroups.cpp) ---

  /// Copies of the paths after the first whose orientation (the library's) is not
  /// `OuterOrientation`.
  static TPaths ExtractHoles(const TPaths& Paths, bool OuterOrientation);
  /// Groups closed paths into outers with their holes; `List` is replaced.
  ///
  /// Fewer than 13 paths: by first vertices, in the order given. A path looks back for the nearest
  /// earlier one that holds its first vertex, inside or on the edge; if that is an outer the path
  /// is its hole, otherwise an outer (so an island in a hole is one, and so is a hole listed before
  /// its outer). Orientation plays no role. Empty paths are outers.
  ///
  /// 13 and more: the union (non-zero), so that overlapping outers merge; order plays no role, but
  /// holes must run against their outers. Islands within holes are dropped.
  /// Errors: a coordinate beyond the library's range on the second route; `List` stays as it was.
  /// Cost: the library's.
  static void NormalizeTPaths(const TPaths& Paths, TPathsList& List);
  /// The outer nodes of a clipping result, each followed by its children (holes); islands within
  /// holes are entries of their own. A node before what lies in it. Empty contours and open paths
  /// are passed over.
  static TPathsList PolyTreeToPathsList(const TPolyTree& Tree);
  /// The whole nesting as trees of polylines, one for each outermost node.
  static TMultiTreeList<TVPolyline2D> CreatePolylineTreeList(const TPolyTree& Tree, double Scale);

  // --- Regions (PathRegions.cpp) ---
  //
  // Contours are taken as they are and not closed, a vertex for each point of the path, so that
  // `CreatePaths` gives the paths back. Regions that are to be asked for crossings come closed from
  // `TVHPolygonList(Tree, Scale)`, or of paths after `ConnectHeadTail`.

  /// The polygon of an outer and its holes: the first path keeps its sense, which becomes that of
  /// the polygon, and every other one is set to run against it. No path, an empty polygon.
  static TVHPolygon CreateHPolygon(const TPaths& Paths, double Scale);
  /// The same of a node and its direct children.
  static TVHPolygon CreateHPolygon(const TPolyNode& Node, double Scale);
  /// A polygon for each outer node, islands within holes too, as `PolyTreeToPathsList` has them.
  static TVHPolygonList CreateHPolygons(const TPolyTree& Tree, double Scale);
  /// The region of a node and its direct children in pieces none of whose contours touches itself:
  /// each contour goes through the library's `SimplifyPolygon` (even-odd), is parted where it still
  /// comes back to itself, and each hole goes to the smallest piece around it; one without such a
  /// piece is dropped. Where a contour leaves out a part of itself that is a hole, where a hole
  /// does, a piece. The largest piece first, all counter-clockwise. Crossings that come of the
  /// library's rounding, within a unit, may remain.
  /// Cost: the library's, O(p²) boxes for the p loops of a contour, and O(q) for each vertex of a
  /// hole or loop looked at, q the points of those whose box it lies in.
  static TVHPolygonList CreateStrictSimpleHPolygon(const TPolyNode& Node,
                                                   double Scale = kIntegerScale);
};

}  // namespace tarnalgo
