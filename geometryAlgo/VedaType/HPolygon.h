#pragma once  // geometryAlgo/VedaType/HPolygon.h

#include <memory>

#include "geometryAlgo/VedaType/Enums.h"
#include "geometryAlgo/VedaType/Geometry.h"
#include "geometryAlgo/VedaType/Line.h"
#include "geometryAlgo/VedaType/Polyline.h"

namespace ClipperLib {
class PolyTree;
}

namespace tarnalgo {

/// A region: item 0 is its outline, the other items are holes in it. Owns its contours.
///
///     TVHPolygon Plate(false);  // the outline counter-clockwise, so the holes clockwise
///     Plate.Add(std::make_unique<TVPolyline2D>(TVRect2D({0, 0}, {100, 50})));
///     Plate.Add(std::make_unique<TVPolyline2D>(TVRect2D({10, 10}, {20, 20})));
///     if (Plate.RelationWithPoint(Pierce) == srIn) ...
///
/// The outline runs in the sense `IsClockwise`, every closed hole in the opposite one. The list
/// sees to that itself, whenever a contour comes or goes:
///
/// - the first contour is turned into the sense of an outline if it is closed (1e-6);
/// - a contour inserted as item 0 is turned into the sense of an outline, the former outline, now
///   item 1, into that of a hole, closed or not;
/// - any other contour added is turned into the sense of a hole if it is closed;
/// - when a contour leaves (deleted or extracted) and others remain, item 0 is turned into the
///   sense of an outline, closed or not; the holes stay as they are;
/// - `SetItem` is a removal and an insertion.
///
/// Transforms keep the sense of the outline and of closed holes, mirrorings too. Who edits a
/// contour in place or changes the order of the list (`Exchange`, `Reverse`, `Sort`) calls
/// `SetIsClockwise` afterwards.
///
/// Measures count an open contour as the ring it becomes when its ends are joined, as those of
/// `TVPolyline2D` do. Nothing raises but what `TObjectList` raises.
class TVHPolygon : public TVGeometry2DList<TVPolyline2D> {
 public:
  /// An empty region whose outline will run in that sense.
  explicit TVHPolygon(bool IsClockwise = false) : FIsClockwise(IsClockwise) {}

  /// A fresh empty polygon of the same sense.
  std::unique_ptr<TVHPolygon> New() const { return std::unique_ptr<TVHPolygon>(DoNew()); }
  /// A true copy: contours that run against the rule stay so.
  std::unique_ptr<TVHPolygon> Clone() const { return std::unique_ptr<TVHPolygon>(DoClone()); }
  /// Frees all contours.
  void Clear();

  /// The sense that is wanted of the outline.
  bool IsClockwise() const { return FIsClockwise; }
  /// Sets the wanted sense and turns the contours that run against it: the outline, closed or not,
  /// and the closed holes. Also when the sense is what it was.
  void SetIsClockwise(bool B);

  /// Points of all contours, the closing repeats included.
  int PtCount() const;
  /// All contours are closed; true when there is none.
  bool CheckClosed(double Eps = kLinearTolerance) const;
  /// Absolute area of the outline less that of each hole: negative when the holes exceed the
  /// outline. 0 when empty.
  double Area() const override;
  /// Centroid of the region, and its X. Where no more area is left than the tolerance (1e-6) times
  /// the diagonal of the outline's box, that of the outline; the origin when empty.
  TPoint2D Gravity() const;
  double XGravity() const { return Gravity().X; }  ///< X of `Gravity`.
  /// The same region: the same outline and the same holes in any order, each with the same vertices
  /// within `Eps`. Neither the sense of a contour nor where a closed one begins matters.
  /// Ties: each hole takes the first hole of `Other` that is equal and still free.
  /// Cost: O(n) as long as few different holes share the corner of their boxes.
  bool IsEqualTo(const TVHPolygon& Other, double Eps = kLinearTolerance) const;

  /// Where `P` lies: `srOn` within `Eps` of the outline or of a hole, `srOut` outside the outline
  /// or inside a hole, else `srIn`.
  /// Ties: the outline goes first, then the holes in their order; the first that tells decides. So
  /// inside one hole and on the edge of a later one is `srOut`.
  /// Cost: O(n), `TVPolyline2D::RelationWithPoint` for each contour looked at: contours may change
  /// in place, so nothing is kept. A `TLABHPolygon` made of the polygon answers many questions in
  /// O(log n) for each chain looked at.
  TShapeRelation RelationWithPoint(const TPoint2D& P, double Eps = kLinearTolerance) const;
  ///@{
  /// Some contour meets the other shape (some contour of it) within `Eps`; touching counts, lying
  /// inside without touching does not. Cost as `TVPolyline2D::IsCrossWith` for pairs of contours
  /// whose boxes meet.
  bool IsCrossWith(const TVLine2D& Line, double Eps = kLinearTolerance) const;
  bool IsCrossWith(const TVPolyline2D& Other, double Eps = kLinearTolerance) const;
  bool IsCrossWith(const TVHPolygon& Other, double Eps = kLinearTolerance) const;
  ///@}

  void YMirror() override;
  void Transform(const TMatrix2D& Matrix) override;

 protected:
  void Notify(TVPolyline2D& Item, TListChange Change) override;
  TVHPolygon* DoNew() const override { return new TVHPolygon(FIsClockwise); }
  TVHPolygon* DoClone() const override;

 private:
  /// The rule speaks of this contour whatever happens: the outline, or a closed hole.
  bool HasWantedSense(const TVPolyline2D& Item) const;
  void TurnAfterAddition(TVPolyline2D& Item);

  bool FIsClockwise;
  bool FKeepsSense = true;  // off while a copy is filled and while the list is cleared
};

/// A list of regions that it owns. As a region itself it is the union of its members; none of them
/// is asked whether they overlap.
class TVHPolygonList : public TVGeometry2DList<TVHPolygon> {
 public:
  using TVGeometry2DList::TVGeometry2DList;
  /// The regions of a clipping result: one for each outer node of the tree, its children as holes,
  /// coordinates divided by `Scale`; islands within holes are regions of their own. In the order of
  /// the tree, a node before what lies within it. Contours are closed (the first point repeated),
  /// so that crossings see the last edge and the list keeps the sense of the holes;
  /// `TPathUtils::CreateHPolygons` answers the vertices of the paths and no more. Each region has
  /// the sense of its outer node. Nodes without points and open paths are passed over.
  TVHPolygonList(const ClipperLib::PolyTree& PolyTree, double Scale);

  /// A fresh empty list.
  std::unique_ptr<TVHPolygonList> New() const { return std::unique_ptr<TVHPolygonList>(DoNew()); }
  /// Deep copies of all regions, in the same order.
  std::unique_ptr<TVHPolygonList> Clone() const {
    return std::unique_ptr<TVHPolygonList>(DoClone());
  }

  /// Calls `SetIsClockwise(B)` on every member.
  void SetIsClockwise(bool B);
  /// Points of all members, the closing repeats included.
  int PtCount() const;
  /// All contours of all members are closed.
  bool CheckClosed(double Eps = kLinearTolerance) const;
  ///@{
  /// Centroid of the members together, each weighted with its area (with that of its outline for
  /// `GravityOutline`, which takes the members without their holes), and its X. Where all areas
  /// together are nothing, the mean of the members' centroids; the origin when empty.
  TPoint2D Gravity() const;
  TPoint2D GravityOutline() const;
  double XGravity() const { return Gravity().X; }
  double XGravityOutline() const { return GravityOutline().X; }
  ///@}

  /// Where `P` lies: `srIn` when it lies in a member, else `srOn` when on the edge of one, else
  /// `srOut`.
  TShapeRelation RelationWithPoint(const TPoint2D& P, double Eps = kLinearTolerance) const;
  ///@{
  /// Some member meets the other shape (some member of it), as `TVHPolygon::IsCrossWith`.
  bool IsCrossWith(const TVLine2D& Line, double Eps = kLinearTolerance) const;
  bool IsCrossWith(const TVPolyline2D& Other, double Eps = kLinearTolerance) const;
  bool IsCrossWith(const TVHPolygon& Other, double Eps = kLinearTolerance) const;
  bool IsCrossWith(const TVHPolygonList& Other, double Eps = kLinearTolerance) const;
  ///@}
  /// Some contour intersects itself (`TVPolyline2D::IsSelfIntersect`), or two contours, of one
  /// member or of two, meet. Touching is meeting; one inside the other is not.
  /// Cost: as `TVPolyline2D::IsCrossWith` for each pair of contours whose boxes meet, and
  /// O(c log c + p), p the pairs of the c contours that lie above each other.
  bool IntersectSelf(double Eps = kLinearTolerance) const;

  /// Sorts by `Area`, holes subtracted, the largest first. Exact and stable.
  void SortByArea();
  /// Sorts by the area of the region that the outline encloses, holes counted in (the material that
  /// a part takes from the sheet), the largest first. Exact and stable.
  void SortByRegArea();

 protected:
  TVHPolygonList* DoNew() const override { return new TVHPolygonList; }
  TVHPolygonList* DoClone() const override {
    return static_cast<TVHPolygonList*>(TVGeometry2DList::DoClone());  // begun by DoNew
  }
};

}  // namespace tarnalgo
